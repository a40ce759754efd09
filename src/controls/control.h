// Base of all controls: name, texts, state, the user actions that all share, and observers.
// Room: controls.
//
// A control's contents are the field: logic reads and writes it with no toolkit present. It has two doors.
// SetText, SetValue and the like are for the program. UserTypes, UserClicks and the like are for a person
// acting through a view; while the control, an enclosing frame or its form is disabled or hidden, they only
// make the views show the current state again. Both raise the logic's handlers (OnClick, OnChange) after
// notifying the views. Whatever a view reports during a notification is an echo and is ignored.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "src/controls/form.h"
#include "src/controls/observers.h"

class Frame;

enum class ControlKind {
    Action,
    CheckBox,
    ComboBox,
    CommandButton,
    Frame,
    Grid,
    ImageView,
    Label,
    ListBox,
    Menu,
    OptionButton,
    ProgressBar,
    ScrollBar,
    Slider,
    StatusBar,
    TabStrip,
    TextBox,
    Timer,
    ToolBar
};

/// What can change about any control. A view overrides what it shows.
class ControlObserver
{
public:
    virtual void CaptionChanged() {}
    virtual void ToolTipTextChanged() {}
    virtual void TagChanged() {}
    virtual void FontChanged() {}
    virtual void ColorsChanged() {}
    virtual void VisibleChanged() {}
    virtual void EnabledChanged() {}
    virtual void FocusRequested() {}
    virtual void BroughtToFront() {}

protected:
    virtual ~ControlObserver() = default;
};

class Control
{
public:
    using Observer = ControlObserver;
    Control(Form& frm, std::string sName);
    Control(Frame& frame, std::string sName);
    virtual ~Control() = default;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    virtual ControlKind eKind() const = 0;
    const std::string& sName() const { return m_sName; }
    Form& frm() const { return m_frm; }
    Frame* pFrame() const { return m_pFrame; }  ///< the frame around it, or null

    const std::string& Caption() const { return m_sCaption; }
    void SetCaption(const std::string& sCaption)
    {
        Set(m_sCaption, sCaption, &ControlObserver::CaptionChanged);
    }
    const std::string& ToolTipText() const { return m_sToolTipText; }
    void SetToolTipText(const std::string& s)
    {
        Set(m_sToolTipText, s, &ControlObserver::ToolTipTextChanged);
    }
    const std::string& Tag() const { return m_sTag; }
    void SetTag(const std::string& sTag) { Set(m_sTag, sTag, &ControlObserver::TagChanged); }
    const std::string& FontName() const { return m_sFontName; }
    void SetFontName(const std::string& sFont) { Set(m_sFontName, sFont, &ControlObserver::FontChanged); }
    /// A colour's low byte is red, then green, then blue; none is the view's own.
    using Color = std::optional<std::int32_t>;
    Color ForeColor() const { return m_lForeColor; }
    void SetForeColor(Color lColor) { Set(m_lForeColor, lColor, &ControlObserver::ColorsChanged); }
    Color BackColor() const { return m_lBackColor; }
    void SetBackColor(Color lColor) { Set(m_lBackColor, lColor, &ControlObserver::ColorsChanged); }
    bool Visible() const { return m_bVisible; }
    void SetVisible(bool bVisible) { Set(m_bVisible, bVisible, &ControlObserver::VisibleChanged); }
    bool Enabled() const { return m_bEnabled; }
    void SetEnabled(bool bEnabled) { Set(m_bEnabled, bEnabled, &ControlObserver::EnabledChanged); }
    /// Asks for the keyboard focus; a view gives it.
    void SetFocus() { Tell(&ControlObserver::FocusRequested); }
    void BringToFront() { Tell(&ControlObserver::BroughtToFront); }

    /// True if a person can act on it: it and all enclosing frames are visible and enabled, and its form is
    /// enabled.
    bool bTakesActs() const;

    // User actions that any control may have a handler for.
    void UserLeaves();  ///< the focus moves elsewhere
    void UserDoubleClicks();
    void UserDrops(const std::vector<std::string>& aPaths);  ///< files and folders
    /// A key, written as "Ctrl+N", "Del", "Esc"; the form gets those that OnKeyDown doesn't handle. True if
    /// either handled it.
    bool UserPresses(const std::string& sKey);

    // The logic's handlers.
    std::function<void()> OnLostFocus;
    std::function<void()> OnDblClick;
    std::function<void(const std::vector<std::string>& aPaths)> OnDrop;
    std::function<bool(const std::string& sKey)> OnKeyDown;  ///< True if handled

    /// For Observation.
    [[nodiscard]] std::shared_ptr<void> Watch(ControlObserver& objObserver);

protected:
    template <typename TKnows, typename... TParameters, typename... TArguments>
    void Tell(void (TKnows::*pAspect)(TParameters...), const TArguments&... aArguments) const
    {
        m_objObservers.Tell(pAspect, aArguments...);
    }
    template <typename TKnows, typename... TParameters, typename... TArguments>
    void TellBefore(void (TKnows::*pAspect)(TParameters...), const TArguments&... aArguments) const
    {
        m_objObservers.TellBefore(pAspect, aArguments...);
    }
    /// Stores a value; if it differs from the old one, notifies pAspect and returns True.
    template <typename T, typename TKnows>
    bool Set(T& tField, const T& tValue, void (TKnows::*pAspect)())
    {
        if (tField == tValue)
            return false;
        tField = tValue;
        Tell(pAspect);
        return true;
    }
    /// Whether a user action may go ahead; every one asks this first. If refused, the views are notified of
    /// pAspect, so that they show the current state again.
    template <typename TKnows>
    bool bAccepts(void (TKnows::*pAspect)()) const
    {
        if (m_objObservers.bTelling())
            return false;
        if (!bTakesActs())
            Tell(pAspect);
        return bTakesActs();
    }
    bool bAccepts() const { return !m_objObservers.bTelling() && bTakesActs(); }
    static void Raise(const std::function<void()>& fnHandler)
    {
        if (fnHandler)
            fnHandler();
    }

    bool bWatched() const { return !m_objObservers.bEmpty(); }
    bool bRedrawLocked() const { return m_lRedrawLocks > 0; }
    /// Sends the notifications that a RedrawLock held back.
    virtual void TellHeldBack() {}
    /// Notifies an aspect now, or under a RedrawLock sets bHeld for TellHeldBack.
    template <typename TKnows>
    void TellOrHold(bool& bHeld, void (TKnows::*pAspect)())
    {
        if (bRedrawLocked())
            bHeld = true;
        else
            Tell(pAspect);
    }
    template <typename TKnows>
    void TellIfHeld(bool& bHeld, void (TKnows::*pAspect)())
    {
        if (std::exchange(bHeld, false))
            Tell(pAspect);
    }

private:
    friend class RedrawLock;
    Form& m_frm;
    Frame* m_pFrame = nullptr;
    std::string m_sName;
    std::string m_sCaption;
    std::string m_sToolTipText;
    std::string m_sTag;
    std::string m_sFontName;
    Color m_lForeColor;
    Color m_lBackColor;
    bool m_bVisible = true;
    bool m_bEnabled = true;
    std::int32_t m_lRedrawLocks = 0;
    Observers<ControlObserver> m_objObservers;
};

/// Holds back notifications about texts, entries, rows and pictures while it lives; the end of the outermost
/// lock sends them, one for each aspect. For filling lists and tables.
class RedrawLock
{
public:
    explicit RedrawLock(Control& objControl) : m_objControl(objControl) { ++m_objControl.m_lRedrawLocks; }
    ~RedrawLock();
    RedrawLock(const RedrawLock&) = delete;
    RedrawLock& operator=(const RedrawLock&) = delete;

private:
    Control& m_objControl;
};
