// Logs the outcome of each file.
#include "src/engine/modRunLog.h"

#include <algorithm>
#include <vector>

#include "src/base/clsConversionOptions.h"
#include "src/base/number_text.h"
#include "src/base/text.h"
#include "src/commands/modMenuToolbar.h"
#include "src/forms/Application.h"
#include "src/job/modFileTypes.h"
#include "src/job/modTaskTables.h"
#include "src/platform/clock.h"
#include "src/platform/locale.h"
#include "src/platform/window_services.h"
#include "src/report/modReportMessage.h"
#include "src/translator/modTranslator.h"

// A log row takes its flags from the task row modulo this.
constexpr std::int32_t kFlagRowModulus = 30000;

// File names may contain the separators of cells and lines.
static std::string sOneCell(const std::string& sText)
{
    std::string sCell = sText;
    std::replace_if(
        sCell.begin(), sCell.end(), [](char c) { return c == '\t' || c == '\n' || c == '\r'; }, ' ');
    return sCell;
}

static std::string sLogRow(const Application& app, std::int32_t lFlagRow, std::int32_t lRow,
                           const clsConversionOptions& objOptions, const std::string& sOriginalExtension,
                           const std::string& sTargetExtension, const std::string& sStatus)
{
    const std::vector<std::string> aCells = {app.frmMain.fgToDo.TextMatrix(lFlagRow, kColFlags),
                                             sOneCell(objOptions.sExtraParams),
                                             std::to_string(lRow),
                                             objOptions.sActionToDo,
                                             sOneCell(objOptions.sOriginalFile),
                                             std::to_string(objOptions.lOriginalFileType),
                                             sOriginalExtension,
                                             sOneCell(objOptions.sTargetFile),
                                             std::to_string(objOptions.lTargetFileType),
                                             sTargetExtension,
                                             "",
                                             sOneCell(sStatus)};
    return sJoin(aCells, "\t");
}

static void AddLogRow(Application& app, const std::string& sRow, std::int32_t lErr)
{
    Grid& fgLog = app.frmMain.fgLog;
    fgLog.AddItem(sRow, fgLog.Rows() - 1);
    UpdatePassedCell(app, fgLog, fgLog.Rows() - 1, lErr);
}

void LogConversionError(Application& app, std::int32_t lRow, const clsConversionOptions& objOptions)
{
    const std::string sOriginalExtension =
        objOptions.lConversionMethod == 1 ? sFileTypeExtension(objOptions.lOriginalFileType, false) : "";
    const std::string sRow = sLogRow(app, lRow % kFlagRowModulus, lRow, objOptions, sOriginalExtension,
                                     sFileTypeExtension(objOptions.lTargetFileType, false), objOptions.sErr);
    AddLogRow(app, sRow, objOptions.lErr);
    if (objOptions.bVerboseLog || !app.frmMain.sLogFile.empty()) {
        if (!objOptions.sLogFile.empty())
            app.frmMain.sLogFile = objOptions.sLogFile;
        ReportMessage(app, sRow, app.frmMain.sLogFile, false);
    }
    if (app.frmMain.fgLog.Rows() < 2)
        UpdateMenuToolbar(app);
}

void LogExitCode(Application& app, std::int32_t lRow, const clsConversionOptions& objOptions)
{
    const std::string sStatus =
        sTranslate(app, "Exit Code: ") + std::to_string(objOptions.lCommandLineExitCode);
    AddLogRow(app, sLogRow(app, lRow, lRow, objOptions, "", "", sStatus), 0);
    if (app.frmMain.fgLog.Rows() < 2)
        UpdateMenuToolbar(app);
}

void UpdatePassedCell(Application& app, Grid& fgGrid, std::int32_t lRow, std::int32_t lErr)
{
    {
        const RedrawLock objLock(fgGrid);
        if (!fgGrid.SetCol(kColPass))
            return;
        FormatPassCell(fgGrid, fgGrid.Row(), lErr == 0);
        fgGrid.SetRow(lRow);
        if (!fgGrid.RowIsVisible(lRow))
            fgGrid.SetTopRow(std::max(lRow - 2, 1));
        SelectGridRow(app, fgGrid);
        fgGrid.Refresh();
    }
    app.svc.objWindows.DoEvents();
}

std::string sSecondsOfRun(const Application& app)
{
    const std::int64_t lMilliseconds = app.svc.objClock.GetTickCount() - app.frmMain.lJobStartTick;
    return sFormatOneDecimal(static_cast<double>(lMilliseconds) / 1000, app.svc.objLocale.cDecimalSign());
}
