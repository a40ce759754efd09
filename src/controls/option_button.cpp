// Keeps one button of a group chosen.
#include "src/controls/option_button.h"

#include <utility>

OptionButton::OptionButton(Form& frm, std::string sName, OptionGroup& objGroup)
    : Control(frm, std::move(sName)), m_objGroup(objGroup)
{
    m_objGroup.m_aMembers.push_back(this);
}

OptionButton::OptionButton(Frame& frame, std::string sName, OptionGroup& objGroup)
    : Control(frame, std::move(sName)), m_objGroup(objGroup)
{
    m_objGroup.m_aMembers.push_back(this);
}

void OptionButton::SetValue(bool bValue)
{
    if (bValue)
        for (OptionButton* pOther : m_objGroup.m_aMembers)
            if (pOther != this)
                pOther->Set(pOther->m_bValue, false, &OptionButtonObserver::ValueChanged);
    if (Set(m_bValue, bValue, &OptionButtonObserver::ValueChanged) && bValue)
        Raise(OnClick);
}

void OptionButton::UserClicks()
{
    if (bAccepts(&OptionButtonObserver::ValueChanged))
        SetValue(true);
}

std::int32_t OptionButtonFamily::lChosen() const
{
    for (std::int32_t l = 0; l < Count(); ++l)
        if (m_objButtons(l).Value())
            return l;
    return -1;
}

void OptionButtonFamily::RaiseOnClick()
{
    for (std::int32_t l = 0; l < Count(); ++l)
        m_objButtons(l).OnClick = [this, l] {
            if (OnClick)
                OnClick(l);
        };
}
