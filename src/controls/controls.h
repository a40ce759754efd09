// The plain controls: fields, choices, buttons, bars. The table is in grid.h.
// Room: controls.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "src/controls/control.h"

class Label : public Control
{
public:
    using Control::Control;
};

class Frame : public Control
{
public:
    using Control::Control;
};

/// What the two controls with a text of their own share. OnChange is raised by every new text that doesn't
/// come from choosing an entry, whether it is the user's or the program's.
class TextControl : public Control
{
public:
    using Control::Control;
    const std::string& Text() const { return m_sText; }

    std::int32_t SelStart() const { return m_lSelStart; }    ///< letters before the selection
    std::int32_t SelLength() const { return m_lSelLength; }  ///< letters in it
    /// Selects lLength letters from the start of the text on, or all of it if it is shorter.
    void SelectFromStart(std::int32_t lLength);

    std::function<void()> OnChange;  ///< belongs to the logic
    std::function<void()> OnSelect;  ///< belongs to the binder: a selection was made

protected:
    /// Stores a text, with nothing selected in it; True if it is a new one.
    bool SetNewText(const std::string& sText);

private:
    std::string m_sText;
    std::int32_t m_lSelStart = 0;
    std::int32_t m_lSelLength = 0;
};

/// A line of text.
class TextBox : public TextControl
{
public:
    using TextControl::TextControl;
    void SetText(const std::string& sText);
};

/// A list of entries, each with a number of its own (item data), and a text that may be none of them.
class ComboBox : public TextControl
{
public:
    using TextControl::TextControl;
    std::int32_t ListCount() const { return static_cast<std::int32_t>(m_aItems.size()); }
    void Clear();  ///< no entries, no selection, empty text
    void AddItem(const std::string& sText, std::int32_t lItemData = 0);
    const std::string& List(std::int32_t lIndex) const { return m_aItems.at(lIndex).first; }
    std::int32_t ItemData(std::int32_t lIndex) const { return m_aItems.at(lIndex).second; }
    std::int32_t ListIndex() const { return m_lListIndex; }  ///< -1 while no entry is selected
    /// Selects an entry, makes its text the text, and raises OnClick, also when it was selected already; -1
    /// selects none. Raises clsRaisedError (kErrInvalidProcedureCall) when there is no such entry.
    void SetListIndex(std::int32_t lIndex);
    /// A text of one's own: no entry is selected then.
    void SetText(const std::string& sText);
    std::function<void()> OnClick;  ///< belongs to the logic: an entry was selected

private:
    std::vector<std::pair<std::string, std::int32_t>> m_aItems;
    std::int32_t m_lListIndex = -1;
};

class CheckBox : public Control
{
public:
    using Control::Control;
    std::int32_t Value() const { return m_lValue; }
    /// 0 or 1. A new value raises OnClick, whether the user or the program sets it.
    void SetValue(std::int32_t lValue);
    std::function<void()> OnClick;  ///< belongs to the logic

private:
    std::int32_t m_lValue = 0;
};

/// One of a family of which one is chosen. SetGroup ties the family together.
class OptionButton : public Control
{
public:
    using Control::Control;
    bool Value() const { return m_bValue; }
    /// True takes the choice away from its siblings and raises OnClick.
    void SetValue(bool bValue);
    /// The whole family, this one included; the pointers stay the caller's.
    void SetGroup(std::vector<OptionButton*> aGroup) { m_aGroup = std::move(aGroup); }
    std::function<void()> OnClick;  ///< belongs to the logic

private:
    bool m_bValue = false;
    std::vector<OptionButton*> m_aGroup;
};

class CommandButton : public Control
{
public:
    using Control::Control;
    /// What a click does; nothing while the button is disabled.
    void Click();
    std::function<void()> OnClick;  ///< belongs to the logic
};

/// A menu item or a toolbar button: it has a key, and can be on or off.
class Action : public Control
{
public:
    using Control::Control;
    /// What choosing it does; nothing while it is disabled.
    void Choose();
    std::function<void()> OnClick;  ///< belongs to the logic
};

/// Tabs counted from 1.
class TabStrip : public Control
{
public:
    using Control::Control;
    std::int32_t SelectedTab() const { return m_lSelected; }
    void SelectTab(std::int32_t lTab);  ///< raises OnClick
    const std::vector<std::string>& Tabs() const { return m_aTabs; }
    void SetTabs(const std::vector<std::string>& aTabs) { Set(m_aTabs, aTabs); }
    std::function<void()> OnClick;  ///< belongs to the logic

private:
    std::int32_t m_lSelected = 1;
    std::vector<std::string> m_aTabs;
};

/// Panels counted from 1; writing to one beyond the last makes it.
class StatusBar : public Control
{
public:
    using Control::Control;
    const std::string& Panel(std::int32_t lPanel) const;
    void SetPanel(std::int32_t lPanel, const std::string& sText);

private:
    std::vector<std::string> m_aPanels;
};
