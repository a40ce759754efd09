// A field of text, and what it shares with the combo box.
// Room: controls.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "src/controls/control.h"

class TextObserver : public ControlObserver
{
public:
    virtual void TextChanged() {}
    virtual void TextSelected() {}
};

/// A control with an editable text. OnChange is raised by every new text, a person's or the program's, that
/// doesn't come from choosing an entry.
class TextControl : public Control
{
public:
    using Observer = TextObserver;
    using Control::Control;
    const std::string& Text() const { return m_sText; }

    std::int32_t SelStart() const { return m_lSelStart; }    ///< letters before the selection
    std::int32_t SelLength() const { return m_lSelLength; }  ///< letters in it
    /// Selects lLength letters from the start of the text on, or all of it if it is shorter.
    void SelectFromStart(std::int32_t lLength);

    std::function<void()> OnChange;  ///< belongs to the logic

protected:
    /// Stores a text, with nothing selected in it; True if it is a new one. TellText follows.
    bool StoreText(const std::string& sText);
    void TellText() { TellOrHold(m_bTextHeld, &TextObserver::TextChanged); }
    void TellHeldBack() override { TellIfHeld(m_bTextHeld, &TextObserver::TextChanged); }

private:
    std::string m_sText;
    std::int32_t m_lSelStart = 0;
    std::int32_t m_lSelLength = 0;
    bool m_bTextHeld = false;
};

class TextBox : public TextControl
{
public:
    using TextControl::TextControl;
    ControlKind eKind() const override { return ControlKind::TextBox; }

    void SetText(const std::string& sText);
    bool Locked() const { return m_bLocked; }
    void SetLocked(bool bLocked) { m_bLocked = bLocked; }  ///< a person can read and select, but not type

    void UserTypes(const std::string& sText);  ///< the whole text as it is now

private:
    bool m_bLocked = false;
};
