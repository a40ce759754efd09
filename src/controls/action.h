// Menu items and toolbar buttons, and the menus and toolbars that hold them.
// Room: controls.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "src/controls/control.h"

class Menu;

/// A menu item, a toolbar button, or both: each place shows the same action.
class Action : public Control
{
public:
    using Control::Control;
    ControlKind eKind() const override { return ControlKind::Action; }

    const std::string& Shortcut() const { return m_sShortcut; }  ///< as "Ctrl+N", "F5"; "" for none
    void SetShortcut(const std::string& sShortcut) { m_sShortcut = sShortcut; }
    const Menu* pDropDown() const { return m_pDropDown; }  ///< the menu beside a toolbar button, or null
    void SetDropDown(const Menu& mnu) { m_pDropDown = &mnu; }

    /// The program clicks: nothing happens while the action is disabled.
    void Click()
    {
        if (Enabled())
            Raise(OnClick);
    }
    void UserClicks()
    {
        if (bAccepts())
            Raise(OnClick);
    }
    std::function<void()> OnClick;  ///< belongs to the logic

private:
    std::string m_sShortcut;
    const Menu* m_pDropDown = nullptr;
};

/// A menu of the menu bar, a drop-down or a context menu. Its actions are set once, before a view comes.
class Menu : public Control
{
public:
    using Control::Control;
    ControlKind eKind() const override { return ControlKind::Menu; }
    const std::vector<Action*>& Actions() const { return m_aActions; }  ///< null is a separator
    void SetActions(std::vector<Action*> aActions) { m_aActions = std::move(aActions); }

private:
    std::vector<Action*> m_aActions;
};

/// As a menu is.
class ToolBar : public Menu
{
public:
    using Menu::Menu;
    ControlKind eKind() const override { return ControlKind::ToolBar; }
};
