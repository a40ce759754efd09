// Sets flags of the process for a scope and restores them at its end, even when an error leaves it.
// Room: forms.
#pragma once

#include "src/forms/Application.h"

/// Code is changing a grid or a field in this scope, so handlers do nothing. Nested scopes leave the flag set
/// until the outermost one ends.
class InternalChange
{
public:
    enum class After {
        AsBefore,
        Clear  ///< cleared even if an outer scope had set it: some routines end that way on purpose
    };

    explicit InternalChange(Application& app, After eAfter = After::AsBefore)
        : m_bFlag(app.bInternalGridChange), m_bAfter(eAfter == After::AsBefore && app.bInternalGridChange)
    {
        m_bFlag = true;
    }
    ~InternalChange() { m_bFlag = m_bAfter; }
    InternalChange(const InternalChange&) = delete;
    InternalChange& operator=(const InternalChange&) = delete;

private:
    bool& m_bFlag;
    const bool m_bAfter;
};

/// Shows the hourglass in this scope and then the pointer that was there before.
class BusyPointer
{
public:
    explicit BusyPointer(Application& app) : m_frm(app.frmMainMDI), m_bAfter(app.frmMainMDI.Hourglass())
    {
        m_frm.SetHourglass(true);
    }
    ~BusyPointer() { m_frm.SetHourglass(m_bAfter); }
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;

    /// Leaves the hourglass on at the end of the scope; the caller restores the pointer.
    void LeaveOn() { m_bAfter = true; }

private:
    frmMainMDI& m_frm;
    bool m_bAfter;
};
