// Names, captions and observers of forms and controls.
#include "src/controls/control.h"

#include <algorithm>
#include <utility>

Control* Form::pControl(const std::string& sControlName) const
{
    const auto itFound = std::find_if(m_aControls.begin(), m_aControls.end(),
                                      [&](const Control* p) { return p->sName() == sControlName; });
    return itFound == m_aControls.end() ? nullptr : *itFound;
}

void Form::SetCaption(const std::string& sCaption)
{
    m_sCaption = sCaption;
    if (OnChanged)
        OnChanged();
}

void Form::SetVisible(bool bVisible)
{
    m_bVisible = bVisible;
    if (OnChanged)
        OnChanged();
}

Control::Control(Form& frm, std::string sName) : m_sName(std::move(sName))
{
    frm.m_aControls.push_back(this);
}

void Control::SetFocus()
{
    if (OnSetFocus)
        OnSetFocus();
}

void Control::RaiseChanged()
{
    if (OnChanged)
        OnChanged();
}
