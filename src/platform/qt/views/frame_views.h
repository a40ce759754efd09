// What belongs to the frame of a window: menus, commands, status bar; and timers.
// Room: platform/qt/views.
#pragma once

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QStatusBar>
#include <QTimer>

#include "src/controls/action.h"
#include "src/controls/status_bar.h"
#include "src/controls/timer.h"
#include "src/platform/qt/views/control_view.h"

/// One QAction shows a command in every menu and toolbar that it is in.
class ActionView final : public ControlBinding, public ControlObserver
{
public:
    ActionView(Action& control, QAction& action);
    void CaptionChanged() override;
    void ToolTipTextChanged() override;
    void VisibleChanged() override { action_.setVisible(control_.Visible()); }
    void EnabledChanged() override { action_.setEnabled(control_.Enabled()); }

private:
    Action& control_;
    QAction& action_;
    Observation watch_;
};

/// A menu's title and state. Its actions come from the layout.
class MenuView final : public ControlBinding, public ControlObserver
{
public:
    MenuView(Menu& control, QMenu& menu);
    void CaptionChanged() override;
    void EnabledChanged() override { menu_.menuAction()->setEnabled(control_.Enabled()); }
    void VisibleChanged() override { menu_.menuAction()->setVisible(control_.Visible()); }

private:
    Menu& control_;
    QMenu& menu_;
    Observation watch_;
};

/// Panel n is the label "name(n)" in the bar.
class StatusBarView final : public ControlView<StatusBar, QStatusBar>
{
public:
    StatusBarView(StatusBar& control, QStatusBar& widget);
    void PanelChanged(std::int32_t panel) override;
};

class TimerView final : public ControlBinding, public TimerObserver
{
public:
    explicit TimerView(Timer& control);
    void EnabledChanged() override { Follow(); }
    void IntervalChanged() override { Follow(); }

private:
    void Follow();

    Timer& control_;
    QTimer timer_;
    Observation watch_;
};
