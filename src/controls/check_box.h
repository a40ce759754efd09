// A check box.
// Room: controls.
#pragma once

#include <cstdint>
#include <functional>

#include "src/controls/control.h"

class CheckBoxObserver : public ControlObserver
{
public:
    virtual void ValueChanged() {}
};

class CheckBox : public Control
{
public:
    using Observer = CheckBoxObserver;
    using Control::Control;
    ControlKind eKind() const override { return ControlKind::CheckBox; }

    std::int32_t Value() const { return m_lValue; }
    /// 0 or 1. A new value raises OnClick, whether a person or the program sets it.
    void SetValue(std::int32_t lValue);

    void UserToggles();

    std::function<void()> OnClick;  ///< belongs to the logic

private:
    std::int32_t m_lValue = 0;
};
