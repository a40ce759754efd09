// Mirrors a form as a whole: title, place, visibility, keys, closing.
// Room: platform/qt/forms.
#pragma once

#include <QEventLoop>
#include <QObject>
#include <QWidget>
#include <functional>
#include <memory>

#include "src/controls/form.h"
#include "src/platform/qt/forms/bind_controls.h"

/// A form and the widget that bears its name. Its controls are bound to the objects at or below root.
class FormView : public QObject, public FormObserver
{
public:
    FormView(Form& form, QWidget& widget, QWidget& root);
    FormView(const FormView&) = delete;
    FormView& operator=(const FormView&) = delete;

    QWidget& Widget() const { return widget_; }
    const std::vector<std::string>& Missing() const { return bindings_.missing; }
    /// Makes the window's title from the form's caption; without it, the title is the caption.
    void ComposeTitle(std::function<QString(const QString& caption)> compose);

    void CaptionChanged() override;
    void EnabledChanged() override { widget_.setEnabled(form_.Enabled()); }
    void FontChanged() override;
    void HourglassChanged() override;

protected:
    /// Call this before the widgets go.
    void Unbind() { bindings_.views.clear(); }

    Form& form_;
    QWidget& widget_;

private:
    std::function<QString(const QString&)> compose_;
    Bindings bindings_;
    Observation watch_;
};

/// A form in its own window; owns the window.
class FormWindow final : public FormView
{
public:
    FormWindow(Form& form, std::unique_ptr<QWidget> window);
    ~FormWindow() override;

    void VisibleChanged() override;
    void PlaceChanged() override;
    void BroughtToFront() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

    /// Handles events until the form is hidden.
    void RunUntilHidden();

private:
    void TellPlace();
    bool PassOnKey(const QKeyEvent& event);

    std::unique_ptr<QWidget> window_;
    QEventLoop* loop_ = nullptr;  ///< the innermost loop that waits for the form to be hidden
    bool placing_ = false;
};
