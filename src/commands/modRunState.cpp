// Begins, pauses, stops and ends runs.
#include "src/commands/modRunState.h"

#include "src/commands/modMenuToolbar.h"
#include "src/forms/Application.h"

RunScope::RunScope(Application& app)
    : m_app(app), m_bWasRunning(app.frmMain.bRunning), m_bHadHourglass(app.frmMainMDI.Hourglass())
{
    app.frmMain.lRunsInProgress = app.frmMain.lRunsInProgress + 1;
    app.frmMain.bRunning = true;
    UpdateMenuToolbar(app);
}

RunScope::~RunScope()
{
    frmMain& frm = m_app.frmMain;
    frm.lRunsInProgress = frm.lRunsInProgress - 1;
    if (frm.bRunning)
        frm.bRunning = m_bWasRunning;
    if (frm.lRunsInProgress == 0)
        frm.bRunStopped = false;
    m_app.frmMainMDI.SetHourglass(m_bHadHourglass);
    try {
        UpdateMenuToolbar(m_app);
    } catch (...) {
        // Out of memory in a view. The run may be ending because of that; the next update brings it right.
    }
}

bool bRunInProgress(const Application& app)
{
    return app.frmMain.lRunsInProgress > 0;
}

void PauseRun(Application& app)
{
    app.frmMain.bRunning = false;
    UpdateMenuToolbar(app);
}

void StopRun(Application& app)
{
    if (!bRunInProgress(app))
        return;
    app.frmMain.bRunStopped = true;
    PauseRun(app);
}

bool bRunStopped(const Application& app)
{
    return app.frmMain.bRunStopped;
}

void RaiseIfStopped(const Application& app)
{
    if (bRunStopped(app))
        throw clsRunStopped();
}
