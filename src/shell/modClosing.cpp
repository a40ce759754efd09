// Closes the main windows.
#include "src/shell/modClosing.h"

#include <cstddef>
#include <vector>

#include "src/commands/modRunState.h"
#include "src/dispatch/modDispatcher.h"
#include "src/forms/Application.h"
#include "src/platform/window_services.h"
#include "src/settings/modSettings.h"
#include "src/translator/modTranslator.h"

static void CloseMainWindows(Application& app)
{
    app.frmMainMDI.Unload();
}

static void AskRunInTheWay(Application& app)
{
    const std::vector<ChoiceButton> aButtons = {{sTranslate(app, "Finish this file"), ButtonRole::Accept},
                                                {sTranslate(app, "Stop now"), ButtonRole::Destructive},
                                                {sTranslate(app, "Go on"), ButtonRole::Reject}};
    switch (app.svc.objWindows.nChooseButton(sTranslate(app, "A conversion is running."),
                                             sTranslate(app, "Information"), BoxIcon::Question, aButtons)) {
        case 0:
            CloseAfterRun(app, Closing::FinishThisFile, CloseMainWindows);
            break;
        case 1:
            CloseAfterRun(app, Closing::StopNow, CloseMainWindows);
            break;
        default:
            break;
    }
}

bool frmMainMDI_QueryUnload(Application& app, CloseReason eReason)
{
    if (eReason == CloseReason::Program || app.svc.objWindows.Pumps().empty())
        return true;
    if (bRunInProgress(app))
        AskRunInTheWay(app);
    else
        CloseWhenIdle(app, CloseMainWindows);
    return false;
}

void frmMainMDI_Unload(Application& app)
{
    app.frmScheduler.Unload();
    app.frmMain.Unload();
    SaveIniFile(app, app.frmMainMDI);
}

static bool frmMain_QueryUnload(Application& app, CloseReason eReason)
{
    if (eReason == CloseReason::User)
        app.frmMainMDI.UserCloses();
    return eReason == CloseReason::Program;
}

static void mnuExit_Click(Application& app)
{
    app.frmMainMDI.UserCloses();
}

static void frmMain_Unload(Application& app)
{
    SaveIniFile(app);
}

void ConnectClosing(Application& app)
{
    app.frmMainMDI.OnQueryUnload = Handler(app, frmMainMDI_QueryUnload, Act::MidRun);
    app.frmMainMDI.OnUnload = Handler(app, frmMainMDI_Unload);
    app.frmMain.OnQueryUnload = Handler(app, frmMain_QueryUnload, Act::MidRun);
    app.frmMain.OnUnload = Handler(app, frmMain_Unload);
    app.frmMainMDI.mnuExit.OnClick = Handler(app, mnuExit_Click, Act::MidRun);
}
