// Makes the windows of an Application's forms and keeps them.
// Room: platform/qt.
#pragma once

#include <QWidget>
#include <map>
#include <memory>
#include <vector>

#include "src/forms/Application.h"
#include "src/platform/qt/forms/form_view.h"
#include "src/platform/qt/forms/layout.h"
#include "src/platform/qt/forms/main_window.h"

/// A form's window is made when the form is first shown. Timers tick from the beginning.
class WindowMirror
{
public:
    WindowMirror(Application& app, Translate translate);
    ~WindowMirror();

    /// Makes the window of a form if need be. Null for a form that has none.
    FormWindow* Window(Form& form);
    /// Shows a form and handles events until it is hidden.
    void ShowModal(Form& form);
    MainWindow* Main() { return main_.get(); }
    /// All forms that have a window.
    std::vector<Form*> Forms() const;

private:
    class FormWatch;
    using MakeWindow = std::unique_ptr<QWidget> (*)(QWidget* parent, const Translate& translate);

    Application& app_;
    Translate translate_;
    std::map<Form*, MakeWindow> makers_;
    std::vector<std::unique_ptr<FormWatch>> watches_;
    std::vector<std::unique_ptr<ControlBinding>> timers_;
    std::unique_ptr<MainWindow> main_;
    std::map<Form*, std::unique_ptr<FormWindow>> windows_;
};
