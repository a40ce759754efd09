// Shows menus, commands and status texts, and lets timers tick.
#include "src/platform/qt/views/frame_views.h"

#include <QKeySequence>

#include "src/platform/qt/views/qt_text.h"

ActionView::ActionView(Action& control, QAction& action)
    : control_(control), action_(action), watch_(control, *this)
{
    CaptionChanged();
    ToolTipTextChanged();
    VisibleChanged();
    EnabledChanged();
    if (!control.Shortcut().empty())
        action.setShortcut(QKeySequence(ToQt(control.Shortcut()), QKeySequence::PortableText));
    connect(&action, &QAction::triggered, this, [this] { control_.UserClicks(); });
}

void ActionView::CaptionChanged()
{
    if (!control_.Caption().empty())
        action_.setText(ToQt(control_.Caption()));
}

void ActionView::ToolTipTextChanged()
{
    if (!control_.ToolTipText().empty())
        action_.setToolTip(ToQt(control_.ToolTipText()));
}

MenuView::MenuView(Menu& control, QMenu& menu) : control_(control), menu_(menu), watch_(control, *this)
{
    CaptionChanged();
    EnabledChanged();
    VisibleChanged();
}

void MenuView::CaptionChanged()
{
    if (!control_.Caption().empty())
        menu_.setTitle(ToQt(control_.Caption()));
}

StatusBarView::StatusBarView(StatusBar& control, QStatusBar& widget) : ControlView(control, widget)
{
    constexpr std::int32_t kMostPanels = 20;
    for (std::int32_t panel = 1; panel <= kMostPanels; ++panel)
        PanelChanged(panel);
}

void StatusBarView::PanelChanged(std::int32_t panel)
{
    const std::string name = control_.sName() + '(' + std::to_string(panel) + ')';
    auto* label = widget_.findChild<QLabel*>(ToQt(name));
    if (!label)
        return;
    label->setText(ToQt(control_.Panel(panel)).simplified());
    // A panel without a fixed width takes no room while empty.
    label->setVisible(!label->text().isEmpty() || label->minimumWidth() > 0);
    const std::string& tip = control_.PanelToolTipText(panel);
    label->setToolTip(ToQt(tip.empty() ? control_.Panel(panel) : tip));
}

TimerView::TimerView(Timer& control) : control_(control), watch_(control, *this)
{
    connect(&timer_, &QTimer::timeout, this, [this] { control_.Tick(); });
    Follow();
}

void TimerView::Follow()
{
    if (!control_.Enabled() || control_.Interval() <= 0)
        timer_.stop();
    else if (!timer_.isActive() || timer_.interval() != control_.Interval())
        timer_.start(control_.Interval());
}
