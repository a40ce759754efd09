// What all controls do: enter their form, take or refuse a person's acts, hold back what they tell.
#include "src/controls/control.h"

#include "src/controls/frame.h"

Control::Control(Form& frm, std::string sName) : m_frm(frm), m_sName(std::move(sName))
{
    m_frm.m_aControls.push_back(this);
}

Control::Control(Frame& frame, std::string sName) : Control(frame.frm(), std::move(sName))
{
    m_pFrame = &frame;
}

bool Control::bTakesActs() const
{
    for (const Control* p = this; p; p = p->m_pFrame)
        if (!p->m_bVisible || !p->m_bEnabled)
            return false;
    return m_frm.Enabled();
}

void Control::UserLeaves()
{
    if (bAccepts())
        Raise(OnLostFocus);
}

void Control::UserDoubleClicks()
{
    if (bAccepts())
        Raise(OnDblClick);
}

void Control::UserDrops(const std::vector<std::string>& aPaths)
{
    if (OnDrop && !aPaths.empty() && bAccepts())
        OnDrop(aPaths);
}

bool Control::UserPresses(const std::string& sKey)
{
    if (!bAccepts())
        return false;
    return (OnKeyDown && OnKeyDown(sKey)) || m_frm.UserPresses(sKey);
}

std::shared_ptr<void> Control::Watch(ControlObserver& objObserver)
{
    // The newcomer sees what the others haven't been told yet.
    if (bRedrawLocked())
        TellHeldBack();
    return m_objObservers.Add(objObserver);
}

RedrawLock::~RedrawLock()
{
    if (--m_objControl.m_lRedrawLocks > 0)
        return;
    try {
        m_objControl.TellHeldBack();
    } catch (...) {
        // Out of memory: the views show an old state.
    }
}
