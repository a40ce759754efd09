// Closes a form, and finds what a key means in it.
#include "src/controls/form.h"

#include <algorithm>

#include "src/controls/action.h"

Control* Form::pControl(const std::string& sControlName) const
{
    const auto itFound = std::find_if(m_aControls.begin(), m_aControls.end(),
                                      [&](const Control* p) { return p->sName() == sControlName; });
    return itFound == m_aControls.end() ? nullptr : *itFound;
}

bool Form::bClose(CloseReason eReason)
{
    if (eReason == CloseReason::User && m_objObservers.bTelling())
        return false;  // a view that follows the form
    if (OnQueryUnload && !OnQueryUnload(eReason))
        return false;
    if (OnUnload)
        OnUnload();
    SetVisible(false);
    return true;
}

void Form::UserPlaces(const WindowPlace& objPlace)
{
    if (m_objObservers.bTelling() || objPlace == m_objPlace)
        return;
    SetPlace(objPlace);
    if (OnResize)
        OnResize();
}

bool Form::UserPresses(const std::string& sKey)
{
    if (!m_bEnabled)
        return false;
    if (OnKeyDown && OnKeyDown(sKey))
        return true;
    for (Control* pControl : m_aControls)
        if (auto* pAction = dynamic_cast<Action*>(pControl);
            pAction && pAction->Shortcut() == sKey && pAction->bTakesActs()) {
            pAction->UserClicks();
            return true;
        }
    return false;
}
