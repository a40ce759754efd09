// Keeps the panels of a status bar.
#include "src/controls/status_bar.h"

#include <cstddef>

const StatusBar::PanelTexts& StatusBar::At(std::int32_t lPanel) const
{
    static const PanelTexts objNone;
    const auto nIndex = static_cast<std::size_t>(lPanel - 1);
    return nIndex < m_aPanels.size() ? m_aPanels[nIndex] : objNone;
}

const std::string& StatusBar::Panel(std::int32_t lPanel) const
{
    return At(lPanel).sText;
}

const std::string& StatusBar::PanelToolTipText(std::int32_t lPanel) const
{
    return At(lPanel).sToolTipText;
}

void StatusBar::SetOf(std::int32_t lPanel, std::string PanelTexts::*pWhich, const std::string& sText)
{
    if (lPanel < 1)
        return;
    if (m_aPanels.size() < static_cast<std::size_t>(lPanel))
        m_aPanels.resize(static_cast<std::size_t>(lPanel));
    std::string& sField = m_aPanels[static_cast<std::size_t>(lPanel - 1)].*pWhich;
    if (sField == sText)
        return;
    sField = sText;
    Tell(&StatusBarObserver::PanelChanged, lPanel);
}

void StatusBar::SetPanel(std::int32_t lPanel, const std::string& sText)
{
    SetOf(lPanel, &PanelTexts::sText, sText);
}

void StatusBar::SetPanelToolTipText(std::int32_t lPanel, const std::string& sText)
{
    SetOf(lPanel, &PanelTexts::sToolTipText, sText);
}
