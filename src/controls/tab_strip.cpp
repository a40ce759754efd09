// Keeps tabs and the selected one.
#include "src/controls/tab_strip.h"

#include <algorithm>
#include <cstddef>

TabStrip::Tab* TabStrip::pTab(std::int32_t lTab)
{
    return lTab >= 1 && lTab <= TabCount() ? &m_aTabs[static_cast<std::size_t>(lTab - 1)] : nullptr;
}

const TabStrip::Tab& TabStrip::TabAt(std::int32_t lTab) const
{
    static const Tab objNone;
    return lTab >= 1 && lTab <= TabCount() ? m_aTabs[static_cast<std::size_t>(lTab - 1)] : objNone;
}

const std::string& TabStrip::TabCaption(std::int32_t lTab) const
{
    return TabAt(lTab).sCaption;
}

const std::string& TabStrip::TabToolTipText(std::int32_t lTab) const
{
    return TabAt(lTab).sToolTipText;
}

void TabStrip::SetTabCaption(std::int32_t lTab, const std::string& sCaption)
{
    if (Tab* p = pTab(lTab))
        Set(p->sCaption, sCaption, &TabStripObserver::TabsChanged);
}

void TabStrip::SetTabToolTipText(std::int32_t lTab, const std::string& sText)
{
    if (Tab* p = pTab(lTab))
        Set(p->sToolTipText, sText, &TabStripObserver::TabsChanged);
}

std::vector<std::string> TabStrip::Tabs() const
{
    std::vector<std::string> aCaptions;
    for (const Tab& objTab : m_aTabs)
        aCaptions.push_back(objTab.sCaption);
    return aCaptions;
}

void TabStrip::SetTabs(const std::vector<std::string>& aCaptions)
{
    std::vector<Tab> aTabs;
    for (const std::string& sCaption : aCaptions)
        aTabs.push_back({sCaption, ""});
    Set(m_aTabs, aTabs, &TabStripObserver::TabsChanged);
}

void TabStrip::AddTab(const std::string& sCaption)
{
    m_aTabs.push_back({sCaption, ""});
    Tell(&TabStripObserver::TabsChanged);
}

void TabStrip::RemoveTab(std::int32_t lTab)
{
    if (!pTab(lTab))
        return;
    m_aTabs.erase(m_aTabs.begin() + lTab - 1);
    Tell(&TabStripObserver::TabsChanged);
    Set(m_lSelected, std::clamp(m_lSelected, 1, std::max(TabCount(), 1)),
        &TabStripObserver::SelectedTabChanged);
}

void TabStrip::SelectTab(std::int32_t lTab)
{
    Set(m_lSelected, lTab, &TabStripObserver::SelectedTabChanged);
    Raise(OnClick);
}

void TabStrip::UserChooses(std::int32_t lTab)
{
    if (bAccepts(&TabStripObserver::SelectedTabChanged) && pTab(lTab))
        SelectTab(lTab);
}
