// What every control and every form has: a name, a caption, a state, and observers.
// Room: controls.
//
// A control's contents are the field: logic reads and writes it with no toolkit present. A toolkit's binder
// mirrors it by setting OnChanged and by calling the setters when the user acts.
#pragma once

#include <functional>
#include <string>
#include <vector>

class Control;

/// A form owns its controls as members; each enters itself here, in the order of declaration. Forms and
/// controls stay where they were made: neither is copied or moved.
class Form
{
public:
    explicit Form(std::string sName) : m_sName(std::move(sName)) {}
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;

    const std::string& sName() const { return m_sName; }
    const std::vector<Control*>& Controls() const { return m_aControls; }
    /// The control of that name, or null.
    Control* pControl(const std::string& sControlName) const;

    const std::string& Caption() const { return m_sCaption; }
    void SetCaption(const std::string& sCaption);
    const std::string& Tag() const { return m_sTag; }
    void SetTag(const std::string& sTag) { m_sTag = sTag; }
    bool Visible() const { return m_bVisible; }
    void SetVisible(bool bVisible);

    std::function<void()> OnChanged;  ///< belongs to the binder: the caption or the visibility changed

protected:
    ~Form() = default;

private:
    friend class Control;
    std::string m_sName;
    std::string m_sCaption;
    std::string m_sTag;
    bool m_bVisible = false;
    std::vector<Control*> m_aControls;
};

/// The common half of all controls. Every setter that changes something raises OnChanged, whoever calls it.
class Control
{
public:
    Control(Form& frm, std::string sName);
    virtual ~Control() = default;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    const std::string& sName() const { return m_sName; }
    const std::string& Caption() const { return m_sCaption; }
    void SetCaption(const std::string& sCaption) { Set(m_sCaption, sCaption); }
    const std::string& ToolTipText() const { return m_sToolTipText; }
    void SetToolTipText(const std::string& sText) { Set(m_sToolTipText, sText); }
    const std::string& Tag() const { return m_sTag; }
    void SetTag(const std::string& sTag) { Set(m_sTag, sTag); }
    const std::string& FontName() const { return m_sFontName; }
    void SetFontName(const std::string& sFontName) { Set(m_sFontName, sFontName); }
    bool Visible() const { return m_bVisible; }
    void SetVisible(bool bVisible) { Set(m_bVisible, bVisible); }
    bool Enabled() const { return m_bEnabled; }
    void SetEnabled(bool bEnabled) { Set(m_bEnabled, bEnabled); }
    /// Asks for the keyboard focus; a binder that shows the control gives it.
    void SetFocus();

    std::function<void()> OnChanged;   ///< belongs to the binder
    std::function<void()> OnSetFocus;  ///< belongs to the binder

protected:
    /// Stores a value and raises OnChanged if it is a new one; True in that case.
    template <typename T>
    bool Set(T& tField, const T& tValue)
    {
        if (tField == tValue)
            return false;
        tField = tValue;
        RaiseChanged();
        return true;
    }
    void RaiseChanged();

private:
    std::string m_sName;
    std::string m_sCaption;
    std::string m_sToolTipText;
    std::string m_sTag;
    std::string m_sFontName;
    bool m_bVisible = true;
    bool m_bEnabled = true;
};
