// A row of tabs, one of which is selected.
// Room: controls.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "src/controls/control.h"

class TabStripObserver : public ControlObserver
{
public:
    virtual void TabsChanged() {}  ///< tabs came or went, or show another text
    virtual void SelectedTabChanged() {}
};

/// Tabs count from 1.
class TabStrip : public Control
{
public:
    using Observer = TabStripObserver;
    using Control::Control;
    ControlKind eKind() const override { return ControlKind::TabStrip; }

    std::int32_t TabCount() const { return static_cast<std::int32_t>(m_aTabs.size()); }
    /// "" for a tab that isn't there.
    const std::string& TabCaption(std::int32_t lTab) const;
    void SetTabCaption(std::int32_t lTab, const std::string& sCaption);
    const std::string& TabToolTipText(std::int32_t lTab) const;
    void SetTabToolTipText(std::int32_t lTab, const std::string& sText);
    std::vector<std::string> Tabs() const;  ///< their captions
    void SetTabs(const std::vector<std::string>& aCaptions);
    void AddTab(const std::string& sCaption);
    /// If the last tab was selected and goes, the one before it is selected, without a click.
    void RemoveTab(std::int32_t lTab);

    std::int32_t SelectedTab() const { return m_lSelected; }
    void SelectTab(std::int32_t lTab);  ///< raises OnClick, also when it was selected already

    void UserChooses(std::int32_t lTab);  ///< likewise; a tab that isn't there can't be chosen

    std::function<void()> OnClick;  ///< belongs to the logic

private:
    struct Tab {
        std::string sCaption;
        std::string sToolTipText;
        bool operator==(const Tab&) const = default;
    };
    Tab* pTab(std::int32_t lTab);
    const Tab& TabAt(std::int32_t lTab) const;

    std::vector<Tab> m_aTabs;
    std::int32_t m_lSelected = 1;
};
