// Option buttons, one of which is chosen.
// Room: controls.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "src/controls/control.h"
#include "src/controls/family.h"

class OptionButton;

/// Ties buttons together: choosing one takes the choice from the others. Declared in front of its buttons.
class OptionGroup
{
public:
    const std::vector<OptionButton*>& Members() const { return m_aMembers; }

private:
    friend class OptionButton;
    std::vector<OptionButton*> m_aMembers;
};

class OptionButtonObserver : public ControlObserver
{
public:
    virtual void ValueChanged() {}
};

class OptionButton : public Control
{
public:
    using Observer = OptionButtonObserver;
    OptionButton(Form& frm, std::string sName, OptionGroup& objGroup);
    OptionButton(Frame& frame, std::string sName, OptionGroup& objGroup);
    ControlKind eKind() const override { return ControlKind::OptionButton; }
    const OptionGroup& Group() const { return m_objGroup; }

    bool Value() const { return m_bValue; }
    /// True takes the choice away from the others of its group and, if it wasn't chosen, raises OnClick.
    void SetValue(bool bValue);

    void UserClicks();

    std::function<void()> OnClick;  ///< belongs to the logic

private:
    OptionGroup& m_objGroup;
    bool m_bValue = false;
};

/// Buttons of one name that are a group.
class OptionButtonFamily
{
public:
    template <typename TParent>
    OptionButtonFamily(TParent& objParent, const std::string& sName, std::int32_t lCount)
        : m_objButtons(objParent, sName, lCount, m_objGroup)
    {
        RaiseOnClick();
    }
    std::int32_t Count() const { return m_objButtons.Count(); }
    OptionButton& operator()(std::int32_t lIndex) { return m_objButtons(lIndex); }
    const OptionButton& operator()(std::int32_t lIndex) const { return m_objButtons(lIndex); }
    std::int32_t lChosen() const;  ///< the first chosen button's index, or -1

    std::function<void(std::int32_t lIndex)> OnClick;  ///< belongs to the logic

private:
    void RaiseOnClick();
    OptionGroup m_objGroup;
    Family<OptionButton> m_objButtons;
};
