// Controls that hold a number between two limits: scroll bar, slider, progress bar.
// Room: controls.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>

#include "src/controls/control.h"

class RangeObserver : public ControlObserver
{
public:
    virtual void RangeChanged() {}  ///< the limits; the value may have followed them
    virtual void ValueChanged() {}
};

class RangeControl : public Control
{
public:
    using Observer = RangeObserver;
    RangeControl(Form& frm, std::string sName, std::int32_t lMin = 0, std::int32_t lMax = 32767)
        : Control(frm, std::move(sName)), m_lMin(lMin), m_lMax(lMax), m_lValue(lMin)
    {
    }
    RangeControl(Frame& frame, std::string sName, std::int32_t lMin = 0, std::int32_t lMax = 32767)
        : Control(frame, std::move(sName)), m_lMin(lMin), m_lMax(lMax), m_lValue(lMin)
    {
    }
    std::int32_t Min() const { return m_lMin; }
    std::int32_t Max() const { return m_lMax; }
    /// A value beyond the new limits goes to the nearest, which raises OnChange.
    void SetRange(std::int32_t lMin, std::int32_t lMax);
    std::int32_t Value() const { return m_lValue; }
    /// A value out of range goes to the nearest limit. A new one raises OnChange.
    void SetValue(std::int32_t lValue);

    std::function<void()> OnChange;  ///< belongs to the logic: a new value, by the program or a person

protected:
    /// Stores a value, put into the range; True if it is a new one.
    bool StoreValue(std::int32_t lValue);

private:
    std::int32_t m_lMin;
    std::int32_t m_lMax;
    std::int32_t m_lValue;
};

class ScrollBar : public RangeControl
{
public:
    using RangeControl::RangeControl;
    ControlKind eKind() const override { return ControlKind::ScrollBar; }

    void UserDrags(std::int32_t lValue);    ///< the thumb is held: OnScroll only
    void UserScrolls(std::int32_t lValue);  ///< a step, or the thumb was let go: OnChange

    std::function<void()> OnScroll;  ///< belongs to the logic

private:
    bool m_bDragged = false;
};

/// A scroll bar in another shape.
class Slider : public ScrollBar
{
public:
    using ScrollBar::ScrollBar;
    ControlKind eKind() const override { return ControlKind::Slider; }
};

class ProgressBar : public RangeControl
{
public:
    using RangeControl::RangeControl;
    ControlKind eKind() const override { return ControlKind::ProgressBar; }
};
