// The main window: frmMainMDI around frmMain.
// Room: platform/qt/forms.
#pragma once

#include <QMainWindow>
#include <memory>

#include "src/forms/frmMain.h"
#include "src/forms/frmMainMDI.h"
#include "src/platform/qt/forms/form_view.h"
#include "src/platform/qt/forms/layout.h"

/// The frame's title is its caption, followed by the job's where there is one.
class MainWindow
{
public:
    MainWindow(frmMainMDI& mdi, frmMain& form, const Translate& translate);

    FormWindow& Frame() { return *frame_; }
    FormView& Content() { return *content_; }

private:
    std::unique_ptr<FormWindow> frame_;
    std::unique_ptr<FormView> content_;  ///< in the frame's window, so it goes first
};
