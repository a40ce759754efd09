// What the plain controls do when they are set.
#include "src/controls/controls.h"

#include <algorithm>

#include "src/base/raised_error.h"
#include "src/base/text.h"

void TextControl::SelectFromStart(std::int32_t lLength)
{
    m_lSelStart = 0;
    m_lSelLength = std::clamp(lLength, 0, lLetters(m_sText));
    if (OnSelect)
        OnSelect();
}

bool TextControl::SetNewText(const std::string& sText)
{
    if (sText == m_sText)
        return false;
    m_sText = sText;
    m_lSelStart = m_lSelLength = 0;
    return true;
}

void TextBox::SetText(const std::string& sText)
{
    if (!SetNewText(sText))
        return;
    RaiseChanged();
    if (OnChange)
        OnChange();
}

void ComboBox::Clear()
{
    m_aItems.clear();
    m_lListIndex = -1;
    SetNewText("");
    RaiseChanged();
}

void ComboBox::AddItem(const std::string& sText, std::int32_t lItemData)
{
    m_aItems.emplace_back(sText, lItemData);
    RaiseChanged();
}

void ComboBox::SetListIndex(std::int32_t lIndex)
{
    if (lIndex < -1 || lIndex >= ListCount())
        throw clsRaisedError(kErrInvalidProcedureCall, "Invalid property value");
    m_lListIndex = lIndex;
    SetNewText(lIndex < 0 ? std::string() : List(lIndex));
    RaiseChanged();
    if (OnClick)
        OnClick();
}

void ComboBox::SetText(const std::string& sText)
{
    const bool bDeselected = m_lListIndex >= 0;
    m_lListIndex = -1;
    const bool bNewText = SetNewText(sText);
    if (bNewText || bDeselected)
        RaiseChanged();
    if (bNewText && OnChange)
        OnChange();
}

void CheckBox::SetValue(std::int32_t lValue)
{
    if (Set(m_lValue, lValue) && OnClick)
        OnClick();
}

void OptionButton::SetValue(bool bValue)
{
    if (bValue)
        for (OptionButton* pSibling : m_aGroup)
            if (pSibling != this)
                pSibling->Set(pSibling->m_bValue, false);
    if (Set(m_bValue, bValue) && bValue && OnClick)
        OnClick();
}

void CommandButton::Click()
{
    if (Enabled() && OnClick)
        OnClick();
}

void Action::Choose()
{
    if (Enabled() && OnClick)
        OnClick();
}

void TabStrip::SelectTab(std::int32_t lTab)
{
    m_lSelected = lTab;
    RaiseChanged();
    if (OnClick)
        OnClick();
}

const std::string& StatusBar::Panel(std::int32_t lPanel) const
{
    static const std::string sNone;
    const auto nIndex = static_cast<std::size_t>(lPanel - 1);
    return nIndex < m_aPanels.size() ? m_aPanels[nIndex] : sNone;
}

void StatusBar::SetPanel(std::int32_t lPanel, const std::string& sText)
{
    if (lPanel < 1)
        return;
    if (m_aPanels.size() < static_cast<std::size_t>(lPanel))
        m_aPanels.resize(lPanel);
    Set(m_aPanels[lPanel - 1], sText);
}
