// A timer for the logic. A view, or a test, makes it tick.
// Room: controls.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>

#include "src/controls/control.h"

class TimerObserver : public ControlObserver
{
public:
    virtual void IntervalChanged() {}
};

/// Ticks while it is enabled, which it isn't when new, and its interval is above 0.
class Timer : public Control
{
public:
    using Observer = TimerObserver;
    Timer(Form& frmOwner, std::string sName) : Control(frmOwner, std::move(sName)) { SetEnabled(false); }
    ControlKind eKind() const override { return ControlKind::Timer; }

    std::int32_t Interval() const { return m_lInterval; }  ///< milliseconds
    void SetInterval(std::int32_t lMilliseconds)
    {
        Set(m_lInterval, lMilliseconds, &TimerObserver::IntervalChanged);
    }

    /// The interval is over. A tick that comes after the timer was stopped is lost.
    void Tick()
    {
        if (Enabled() && m_lInterval > 0)
            Raise(OnTimer);
    }
    std::function<void()> OnTimer;  ///< belongs to the logic

private:
    std::int32_t m_lInterval = 0;
};
