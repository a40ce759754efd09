// Lets acts in, catches what they raise, and closes when they have ended.
#include "src/dispatch/modDispatcher.h"

#include <cstdio>
#include <exception>
#include <new>
#include <utility>

#include "src/base/raised_error.h"
#include "src/commands/modMenuToolbar.h"
#include "src/commands/modRunState.h"
#include "src/forms/Application.h"
#include "src/platform/window_services.h"
#include "src/translator/modTranslator.h"

namespace
{

/// Enters an act for a scope.
class ActInProgress
{
public:
    explicit ActInProgress(Application& app) : m_app(app)
    {
        m_app.objDispatch.aPumpsAtEntry.push_back(m_app.svc.objWindows.Pumps().size());
    }
    ~ActInProgress() { m_app.objDispatch.aPumpsAtEntry.pop_back(); }
    ActInProgress(const ActInProgress&) = delete;
    ActInProgress& operator=(const ActInProgress&) = delete;

private:
    Application& m_app;
};

/// Sets a flag for a scope.
class FlagScope
{
public:
    explicit FlagScope(bool& bFlag) : m_bFlag(bFlag) { m_bFlag = true; }
    ~FlagScope() { m_bFlag = false; }
    FlagScope(const FlagScope&) = delete;
    FlagScope& operator=(const FlagScope&) = delete;

private:
    bool& m_bFlag;
};

}  // namespace

static std::size_t nPumpsAtEntry(const Application& app)
{
    const DispatchState& objState = app.objDispatch;
    return objState.aPumpsAtEntry.empty() ? 0 : objState.aPumpsAtEntry.back();
}

static bool bIsIdle(const Application& app)
{
    return app.objDispatch.aPumpsAtEntry.empty() && app.svc.objWindows.Pumps().empty();
}

static bool bMayHappen(const Application& app, Act eAct)
{
    const auto& aPumps = app.svc.objWindows.Pumps();
    if (aPumps.size() <= nPumpsAtEntry(app))
        return true;
    switch (aPumps.back()) {
        case WindowServices::Pump::Form:
            return eAct != Act::Unattended;
        case WindowServices::Pump::Events:
            return eAct == Act::MidRun;
        default:
            return false;  // a box waits for its answer and for nothing else
    }
}

// Scope guards have already restored this state while the error passed through them; this catches anything
// set without a guard.
static void PutRunStateBack(Application& app)
{
    app.frmMain.bRunning = false;
    app.bInternalGridChange = false;
    app.frmMainMDI.SetHourglass(false);
    UpdateMenuToolbar(app);
}

static void ShowError(Application& app, const std::string& sDescription)
{
    app.svc.objWindows.MsgBox(sDescription, sTranslate(app, "Error"), BoxIcon::Information, BoxButtons::Ok);
}

static void Report(Application& app, const ReportError& fnReport, const std::string& sDescription)
{
    try {
        // An act inside another one that goes on leaves the state to it.
        if (app.objDispatch.aPumpsAtEntry.size() == 1)
            PutRunStateBack(app);
        if (fnReport)
            fnReport(sDescription);
        else
            ShowError(app, sDescription);
    } catch (...) {
        std::fprintf(stderr, "Error: %s\n", sDescription.c_str());
    }
}

static Outcome Perform(Application& app, const std::function<void()>& fnAct, const ReportError& fnReport)
{
    try {
        fnAct();
        return Outcome::Done;
    } catch (const clsRunStopped&) {
        return Outcome::Done;  // the user knows
    } catch (const clsRaisedError& objError) {
        Report(app, fnReport, objError.sDescription());
    } catch (const std::bad_alloc&) {
        Report(app, fnReport, "Out of memory");
    } catch (const std::exception& objError) {
        Report(app, fnReport, objError.what());
    } catch (...) {
        Report(app, fnReport, "Unexpected error");
    }
    return Outcome::Raised;
}

static void PerformWaitingClose(Application& app)
{
    if (!bIsIdle(app) || !app.objDispatch.fnClose)
        return;
    const std::function<void()> fnClose = std::exchange(app.objDispatch.fnClose, nullptr);
    Dispatch(app, Act::Ordinary, fnClose);
}

Outcome Dispatch(Application& app, Act eAct, const std::function<void()>& fnAct, const ReportError& fnReport)
{
    if (!bMayHappen(app, eAct))
        return Outcome::Refused;
    Outcome eOutcome = Outcome::Done;
    {
        const ActInProgress objAct(app);
        eOutcome = Perform(app, fnAct, fnReport);
    }
    PerformWaitingClose(app);
    return eOutcome;
}

// False for an event that the program's own code raises within an act.
static bool bComesFromOutside(const Application& app)
{
    return app.objDispatch.aPumpsAtEntry.empty() || app.svc.objWindows.Pumps().size() > nPumpsAtEntry(app);
}

void HandleEvent(Application& app, Act eAct, bool& bInProgress, const std::function<void()>& fnAct)
{
    if (!bComesFromOutside(app)) {
        fnAct();
        return;
    }
    if (bInProgress)
        return;
    Dispatch(app, eAct, [&] {
        const FlagScope objFlag(bInProgress);
        fnAct();
    });
}

std::function<void()> Handler(Application& app, std::function<void(Application&)> fnRoutine, Act eAct)
{
    return [&app, fnRoutine = std::move(fnRoutine), eAct, pInProgress = std::make_shared<bool>(false)] {
        HandleEvent(app, eAct, *pInProgress, [&] { fnRoutine(app); });
    };
}

void CloseWhenIdle(Application& app, std::function<void(Application&)> fnClose)
{
    app.objDispatch.fnClose = [&app, fnClose = std::move(fnClose)] { fnClose(app); };
    PerformWaitingClose(app);
}

void CloseAfterRun(Application& app, Closing eClosing, std::function<void(Application&)> fnClose)
{
    if (bRunInProgress(app) && eClosing == Closing::StopNow)
        StopRun(app);
    else if (bRunInProgress(app))
        PauseRun(app);
    CloseWhenIdle(app, std::move(fnClose));
}

bool bCloseWaits(const Application& app)
{
    return static_cast<bool>(app.objDispatch.fnClose);
}
