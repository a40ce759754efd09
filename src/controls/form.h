// A form: its controls, caption, place, and the acts of a window as a whole.
// Room: controls.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "src/controls/observers.h"

class Control;

constexpr std::int32_t kWindowNormal = 0;
constexpr std::int32_t kWindowMinimized = 1;
constexpr std::int32_t kWindowMaximized = 2;

/// The place is that of the normal state, in twips.
struct WindowPlace {
    std::int32_t lWindowState = kWindowNormal;
    std::int32_t lLeft = 0;
    std::int32_t lTop = 0;
    std::int32_t lWidth = 0;
    std::int32_t lHeight = 0;

    bool operator==(const WindowPlace&) const = default;
};

/// Who wants a form to be unloaded.
enum class CloseReason { Program, User };

class FormObserver
{
public:
    virtual void CaptionChanged() {}
    virtual void VisibleChanged() {}
    virtual void EnabledChanged() {}
    virtual void FontChanged() {}
    virtual void PlaceChanged() {}
    virtual void HourglassChanged() {}
    virtual void BroughtToFront() {}

protected:
    virtual ~FormObserver() = default;
};

/// A form owns its controls as members; each enters itself here, in the order of declaration. Forms and
/// controls stay where they were made: neither is copied or moved.
class Form
{
public:
    using Observer = FormObserver;
    explicit Form(std::string sName) : m_sName(std::move(sName)) {}
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;

    const std::string& sName() const { return m_sName; }
    const std::vector<Control*>& Controls() const { return m_aControls; }
    /// The control of that name, or null.
    Control* pControl(const std::string& sControlName) const;

    const std::string& Caption() const { return m_sCaption; }
    void SetCaption(const std::string& sCaption) { Set(m_sCaption, sCaption, &FormObserver::CaptionChanged); }
    const std::string& Tag() const { return m_sTag; }
    void SetTag(const std::string& sTag) { m_sTag = sTag; }
    const std::string& FontName() const { return m_sFontName; }
    void SetFontName(const std::string& sFont) { Set(m_sFontName, sFont, &FormObserver::FontChanged); }
    bool Visible() const { return m_bVisible; }
    void SetVisible(bool bVisible) { Set(m_bVisible, bVisible, &FormObserver::VisibleChanged); }
    bool Enabled() const { return m_bEnabled; }
    /// While it is disabled, a person can act on none of its controls.
    void SetEnabled(bool bEnabled) { Set(m_bEnabled, bEnabled, &FormObserver::EnabledChanged); }
    const WindowPlace& Place() const { return m_objPlace; }
    void SetPlace(const WindowPlace& objPlace) { Set(m_objPlace, objPlace, &FormObserver::PlaceChanged); }
    /// The mouse pointer shows that work goes on.
    bool Hourglass() const { return m_bHourglass; }
    void SetHourglass(bool bHourglass) { Set(m_bHourglass, bHourglass, &FormObserver::HourglassChanged); }
    void BringToFront() { m_objObservers.Tell(&FormObserver::BroughtToFront); }
    /// Closes the form for the program. False if OnQueryUnload refused.
    bool Unload() { return bClose(CloseReason::Program); }

    // A person's acts.
    bool UserCloses() { return bClose(CloseReason::User); }
    /// The window was moved, resized, minimised or maximised; OnResize follows.
    void UserPlaces(const WindowPlace& objPlace);
    /// A key that no control took, written as "Ctrl+N", "F5", "Esc". It goes to OnKeyDown, then to the action
    /// that has it as its shortcut. True if it did something.
    bool UserPresses(const std::string& sKey);

    // The logic's handlers.
    std::function<bool(CloseReason)> OnQueryUnload;          ///< False: the form stays
    std::function<void()> OnUnload;                          ///< the form is about to go
    std::function<void()> OnResize;                          ///< a person gave the window another place
    std::function<bool(const std::string& sKey)> OnKeyDown;  ///< True: the key is used up

    /// For Observation.
    [[nodiscard]] std::shared_ptr<void> Watch(FormObserver& objObserver)
    {
        return m_objObservers.Add(objObserver);
    }

protected:
    ~Form() = default;

private:
    friend class Control;
    bool bClose(CloseReason eReason);
    template <typename T>
    void Set(T& tField, const T& tValue, void (FormObserver::*pAspect)())
    {
        if (tField == tValue)
            return;
        tField = tValue;
        m_objObservers.Tell(pAspect);
    }

    std::string m_sName;
    std::string m_sCaption;
    std::string m_sTag;
    std::string m_sFontName;
    WindowPlace m_objPlace;
    bool m_bVisible = false;
    bool m_bEnabled = true;
    bool m_bHourglass = false;
    std::vector<Control*> m_aControls;
    Observers<FormObserver> m_objObservers;
};
