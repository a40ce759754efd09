// The main window over an application with in-memory services.
// Room: tests/platform/qt/support.
#pragma once

#include <QTest>
#include <memory>

#include "src/dialogs/modAbout.h"
#include "src/dialogs/modConversionOptions.h"
#include "src/dialogs/modLanguageDialog.h"
#include "src/dialogs/modOptions.h"
#include "src/entry/modMain.h"
#include "src/platform/qt/views/qt_text.h"
#include "src/platform/qt/window_mirror.h"
#include "src/viewer/modImageViewerDialog.h"
#include "tests/fakes/test_application.h"

/// Shows the main forms as the program does.
class ShownApplication
{
public:
    ShownApplication()
    {
        app.windows.display = true;
        mirror = std::make_unique<WindowMirror>(app, [](const char* text) { return QString(text); });
        ShowMainWindows(app);
        frmOptions_Load(app);
        frmImageViewer_Load(app);
        frmConversionOptions_Load(app);
        mnuLanguage_Click(app);
        mnuAbout_Click(app);
        (void)QTest::qWaitForWindowExposed(&Window());
    }

    QWidget& Window() { return mirror->Window(app.frmMainMDI)->Widget(); }
    template <typename T = QWidget>
    T& Get(const char* name)
    {
        T* found = Window().findChild<T*>(name);
        if (!found)
            throw std::runtime_error(std::string("no ") + name);
        return *found;
    }

    TestApplication app;
    std::unique_ptr<WindowMirror> mirror;
};
