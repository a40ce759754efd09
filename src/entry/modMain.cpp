// Starts the program.
#include "src/entry/modMain.h"

#include "src/base/clsConversionOptions.h"
#include "src/base/path_text.h"
#include "src/commands/modHelp.h"
#include "src/commands/modRunState.h"
#include "src/dialogs/modDialogs.h"
#include "src/dialogs/modLanguageDialog.h"
#include "src/dialogs/modNotices.h"
#include "src/dispatch/modDispatcher.h"
#include "src/entry/modCommandLineParser.h"
#include "src/entry/modCommandLineRun.h"
#include "src/forms/Application.h"
#include "src/job/modJobFiles.h"
#include "src/platform/clock.h"
#include "src/platform/program_folders.h"
#include "src/platform/window_services.h"
#include "src/report/modReportMessage.h"
#include "src/scheduler/modSchedulerLink.h"
#include "src/shell/modClosing.h"
#include "src/shell/modHelpMenu.h"
#include "src/shell/modJobProgress.h"
#include "src/shell/modMainForms.h"
#include "src/translator/modTranslator.h"
#include "src/viewer/modImageViewer.h"

std::string sSettingsFile(const ProgramFolders& objFolders)
{
    return sWithSeparator(objFolders.sSettingsFolder()) + "VL_SearchHistory.INI";
}

void InitializeProcess(Application& app, const SelectLanguage& fnSelectLanguage)
{
    app.sIniFile = sSettingsFile(app.svc.objProgramFolders);
    InitializeHelpFile(app);
    InitializeTranslator(app, fnSelectLanguage);
}

void ShowMainWindows(Application& app)
{
    if (!app.svc.objWindows.bHasDisplay()) {
        app.svc.objWindows.MsgBox(sTranslate(app, "There is no display to show the main window on."),
                                  sTranslate(app, "Error"), BoxIcon::Information, BoxButtons::Ok);
        return;
    }
    frmPleaseWait_Load(app);
    app.frmPleaseWait.SetVisible(true);
    app.svc.objWindows.DoEvents();
    LoadMainForms(app);
    LinkScheduler(app);
    ConnectDialogs(app);
    ConnectImageViewer(app);
    ConnectHelpMenu(app);
    ConnectClosing(app);
    ConnectJobProgress(app);
    app.frmMainMDI.SetVisible(true);
    app.frmMain.SetVisible(true);
    app.frmPleaseWait.SetVisible(false);
}

static void RunOrOpen(Application& app, clsConversionOptions& objOptions)
{
    app.frmMainMDI.SetVisible(false);
    LoadMainForms(app);
    app.frmMain.lJobStartTick = app.svc.objClock.GetTickCount();
    if (!objOptions.sCLBatchJobFile.empty() && objOptions.bOpenButDoNotRun) {
        const std::string sFailure = ConversionJobOpen(app, objOptions.sCLBatchJobFile);
        ShowMainWindows(app);
        if (!sFailure.empty())
            app.svc.objWindows.MsgBox(sFailure, sTranslate(app, "Error"), BoxIcon::Information,
                                      BoxButtons::Ok);
    } else {
        const RunScope objRun(app);
        lRunFromCommandLine(app, objOptions);
    }
}

static void ParseAndRun(Application& app, const std::string& sCommandLine, clsConversionOptions& objOptions)
{
    const bool bValid = bParseCommandLine(app, sCommandLine, objOptions);
    if (objOptions.bVerbose || objOptions.bOpenButDoNotRun)
        app.svc.objWindows.LetBoxesOpenWindows();
    if (bValid) {
        RunOrOpen(app, objOptions);
    } else if (sCommandLine.empty()) {
        ShowMainWindows(app);
    } else {
        ReportMessage(app, sTranslate(app, "Missing required or invalid command line argument(s)"),
                      objOptions.sLogFile, objOptions.bVerbose);
    }
}

static void ReportRaisedError(Application& app, const clsConversionOptions& objOptions,
                              const std::string& sCommandLine, const std::string& sDescription)
{
    const bool bWindowRun = sCommandLine.empty() || app.frmMain.Visible();
    if (!bWindowRun)
        ReportMessage(app, sDescription, objOptions.sLogFile, objOptions.bVerbose);
    // A run that has neither a report file nor boxes tells it on standard error.
    if (bWindowRun || (objOptions.sLogFile.empty() && !objOptions.bVerbose))
        app.svc.objWindows.MsgBox(sDescription, sTranslate(app, "Error"), BoxIcon::Information,
                                  BoxButtons::Ok);
}

void Main(Application& app, const std::string& sCommandLine)
{
    clsConversionOptions objOptions;
    Dispatch(
        app, Act::Ordinary,
        [&] {
            if (sCommandLine.empty())
                app.svc.objWindows.LetBoxesOpenWindows();
            const bool bMainWindow = sCommandLine.empty() && app.svc.objWindows.bHasDisplay();
            InitializeProcess(app, bMainWindow ? SelectFirstLanguage : SelectLanguage());
            ParseAndRun(app, sCommandLine, objOptions);
        },
        [&](const std::string& sDescription) {
            ReportRaisedError(app, objOptions, sCommandLine, sDescription);
        });
}
