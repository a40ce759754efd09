// Makes windows when forms are shown.
#include "src/platform/qt/window_mirror.h"

#include <QApplication>
#include <utility>

#include "src/platform/qt/forms/dialogs.h"

/// Makes a form's window when the form is shown for the first time.
class WindowMirror::FormWatch final : FormObserver
{
public:
    FormWatch(WindowMirror& mirror, Form& form) : mirror_(mirror), form_(form), watch_(form, *this) {}
    void VisibleChanged() override
    {
        if (form_.Visible())
            mirror_.Window(form_);
    }

private:
    WindowMirror& mirror_;
    Form& form_;
    Observation watch_;
};

WindowMirror::WindowMirror(Application& app, Translate translate)
    : app_(app),
      translate_(std::move(translate)),
      makers_{
          {&app.frmAbout, MakeAbout},
          {&app.frmPleaseWait, MakePleaseWait},
          {&app.frmTypeMatchNotification, MakeTypeMatchNotification},
          {&app.frmOptions, MakeOptions},
          {&app.frmConversionOptions, MakeConversionOptions},
          {&app.frmImageViewer, MakeImageViewer},
          {&app.frmLanguage, MakeLanguage},
          {&app.frmScheduler, MakeScheduler},
      }
{
    for (Form* form : Forms()) {
        watches_.push_back(std::make_unique<FormWatch>(*this, *form));
        for (auto& timer : BindTimers(*form))
            timers_.push_back(std::move(timer));
        if (form->Visible())
            Window(*form);
    }
}

WindowMirror::~WindowMirror()
{
    // Dialogs are children of the main window.
    windows_.clear();
}

std::vector<Form*> WindowMirror::Forms() const
{
    std::vector<Form*> forms{&app_.frmMainMDI};
    for (const auto& maker : makers_)
        forms.push_back(maker.first);
    return forms;
}

FormWindow* WindowMirror::Window(Form& form)
{
    if (&form == &app_.frmMainMDI) {
        if (!main_)
            main_ = std::make_unique<MainWindow>(app_.frmMainMDI, app_.frmMain, translate_);
        return &main_->Frame();
    }
    const auto maker = makers_.find(&form);
    if (maker == makers_.end())
        return nullptr;
    std::unique_ptr<FormWindow>& window = windows_[&form];
    if (!window) {
        QWidget* parent = main_ ? &main_->Frame().Widget() : nullptr;
        window = std::make_unique<FormWindow>(form, maker->second(parent, translate_));
    }
    return window.get();
}

void WindowMirror::ShowModal(Form& form)
{
    FormWindow* window = Window(form);
    if (!window)
        return;
    QWidget* before = QApplication::activeWindow();
    window->Widget().setWindowModality(Qt::ApplicationModal);
    form.SetVisible(true);
    window->RunUntilHidden();
    if (before)
        before->activateWindow();
}
