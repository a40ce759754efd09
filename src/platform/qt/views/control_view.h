// Mirrors what all controls have in common: visible, enabled, tool tip, font, colours, focus.
// Room: platform/qt/views.
#pragma once

#include <QAbstractButton>
#include <QEvent>
#include <QObject>
#include <QWidget>

#include "src/controls/control.h"

/// Ties a control to the widget that shows it, as long as it lives. It must go before either of them.
class ControlBinding : public QObject
{
};

void ShowVisible(const Control& control, QWidget& widget);
void ShowEnabled(const Control& control, QWidget& widget);
void ShowToolTip(const Control& control, QWidget& widget);
void ShowFont(const Control& control, QWidget& widget);
void ShowColours(const Control& control, QWidget& widget);
/// Shows a caption, unless the control has none: then the widget keeps the text of its layout.
void ShowCaption(const Control& control, QAbstractButton& widget);
/// Gives a widget that takes the focus a name for screen readers: its caption, else the text of the label
/// whose buddy it is, else its tool tip. One without any of these keeps the name that its layout gave it.
void NameForScreenReaders(const QString& caption, QWidget& widget);
/// Passes on leaving and dropped files. True if the event is used up.
bool PassOnEvent(Control& control, QEvent& event);

/// Base of all views. TWidget is the widget's class.
template <typename TControl, typename TWidget>
class ControlView : public ControlBinding, public TControl::Observer
{
public:
    ControlView(TControl& control, TWidget& widget) : control_(control), widget_(widget)
    {
        ShowVisible(control_, widget_);
        ShowEnabled(control_, widget_);
        ShowToolTip(control_, widget_);
        ShowFont(control_, widget_);
        ShowColours(control_, widget_);
        if (control_.OnDrop)
            widget_.setAcceptDrops(true);
        widget_.installEventFilter(this);
        watch_ = Observation(control_, static_cast<typename TControl::Observer&>(*this));
    }
    ControlView(const ControlView&) = delete;
    ControlView& operator=(const ControlView&) = delete;

    void VisibleChanged() override { ShowVisible(control_, widget_); }
    void EnabledChanged() override { ShowEnabled(control_, widget_); }
    void ToolTipTextChanged() override { ShowToolTip(control_, widget_); }
    void FontChanged() override { ShowFont(control_, widget_); }
    void ColorsChanged() override { ShowColours(control_, widget_); }
    void FocusRequested() override { widget_.setFocus(Qt::OtherFocusReason); }
    void BroughtToFront() override { widget_.raise(); }

    bool eventFilter(QObject*, QEvent* event) override { return PassOnEvent(control_, *event); }

protected:
    TControl& control_;
    TWidget& widget_;

private:
    Observation watch_;
};
