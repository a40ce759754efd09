// Runs a request without windows.
#include "src/entry/modCommandLineRun.h"

#include <string>

#include "src/base/clsConversionOptions.h"
#include "src/engine/modJobRun.h"
#include "src/engine/modRunLog.h"
#include "src/forms/Application.h"
#include "src/job/modJobFiles.h"
#include "src/job/modTaskTables.h"
#include "src/report/modReportMessage.h"
#include "src/translator/modTranslator.h"

static std::int32_t lRun(Application& app, clsConversionOptions& objOptions)
{
    if (objOptions.sCLBatchJobFile.empty()) {
        std::int32_t lErr = 0;
        PerformBlock(app, 1, objOptions, lErr);
        return lErr;
    }
    const std::string sFailure = ConversionJobOpen(app, objOptions.sCLBatchJobFile);
    if (!sFailure.empty()) {
        const bool bSilent = objOptions.sLogFile.empty() && !objOptions.bVerbose;
        ReportMessage(app, sFailure, objOptions.sLogFile, objOptions.bVerbose || bSilent);
        return -1;
    }
    ConversionJobBegin(app);
    // Any row counts as a failure, even a success logged because of a report file. This is intentional.
    return app.frmMain.fgLog.Rows() >= 3 ? -1 : 0;
}

static void ReportFailures(Application& app, const clsConversionOptions& objOptions)
{
    const Grid& fgLog = app.frmMain.fgLog;
    for (std::int32_t l = 1; l <= fgLog.Rows() - 2; ++l)
        ReportMessage(app,
                      sTranslate(app, "Job # ") + fgLog.TextMatrix(l, kColNumber) + "  " +
                          fgLog.TextMatrix(l, kColStatus) + " - " + fgLog.TextMatrix(l, kColOriginal),
                      objOptions.sLogFile, objOptions.bVerbose);
}

std::int32_t lRunFromCommandLine(Application& app, clsConversionOptions& objOptions)
{
    const std::int32_t lFailed = lRun(app, objOptions);
    SyncRun(app);
    app.frmMain.bRunning = false;
    const std::string sSeconds = sSecondsOfRun(app);
    if (lFailed != 0)
        ReportFailures(app, objOptions);
    else
        ReportMessage(app, sTranslate(app, "Conversion Successful"), objOptions.sLogFile,
                      objOptions.bVerbose);
    ReportMessage(app, sTranslate(app, "Time to complete job: ") + sSeconds, objOptions.sLogFile,
                  objOptions.bVerbose);
    if (lFailed != 0 && !objOptions.sLogAsConversionJobFile.empty())
        WriteLogAsJobFile(app, objOptions.sLogAsConversionJobFile, app.frmMain.fgLog);
    return lFailed;
}
