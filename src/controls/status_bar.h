// A bar of panels with short texts.
// Room: controls.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "src/controls/control.h"

class StatusBarObserver : public ControlObserver
{
public:
    virtual void PanelChanged(std::int32_t /*lPanel*/) {}  ///< its text or tool tip
};

/// Panels count from 1; writing to one beyond the last makes it.
class StatusBar : public Control
{
public:
    using Observer = StatusBarObserver;
    using Control::Control;
    ControlKind eKind() const override { return ControlKind::StatusBar; }

    std::int32_t PanelCount() const { return static_cast<std::int32_t>(m_aPanels.size()); }
    const std::string& Panel(std::int32_t lPanel) const;
    void SetPanel(std::int32_t lPanel, const std::string& sText);
    const std::string& PanelToolTipText(std::int32_t lPanel) const;
    void SetPanelToolTipText(std::int32_t lPanel, const std::string& sText);

private:
    struct PanelTexts {
        std::string sText;
        std::string sToolTipText;
    };
    const PanelTexts& At(std::int32_t lPanel) const;
    void SetOf(std::int32_t lPanel, std::string PanelTexts::*pWhich, const std::string& sText);

    std::vector<PanelTexts> m_aPanels;
};
