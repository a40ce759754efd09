// Reads and writes job files; implements the commands New, Open, Save and Save As.
#include "src/job/modJobFiles.h"

#include <exception>
#include <string>
#include <utility>
#include <vector>

#include "src/base/path_text.h"
#include "src/base/text.h"
#include "src/commands/modMenuToolbar.h"
#include "src/commands/modRunState.h"
#include "src/forms/Application.h"
#include "src/forms/scope_guards.h"
#include "src/job/modFileHelpers.h"
#include "src/job/modPickFile.h"
#include "src/job/modTaskTables.h"
#include "src/platform/file_system.h"
#include "src/platform/window_services.h"
#include "src/translator/modTranslator.h"

constexpr const char* kExtension = ".VJB";
constexpr std::int32_t kPanelLoading = 2;
constexpr std::int32_t kLinesBetweenEvents = 1000;
constexpr std::size_t kFixedRows = 2;  ///< header and marker row
/// A longer line isn't the log's empty last row (while its number has one digit).
constexpr std::size_t kEmptyLogLine = 9;

void WriteJobFile(Application& app, const std::string& sPath, const Grid& fgToDo)
{
    const std::unique_ptr<TextWriter> pWriter = app.svc.objFileSystem.OpenForOutput(sPath);
    for (std::int32_t lRow = 1; lRow < fgToDo.Rows(); ++lRow)
        pWriter->WriteLine(sTabbedRow(fgToDo, lRow));
    pWriter->Commit();
}

void WriteLogAsJobFile(Application& app, const std::string& sPath, const Grid& fgLog)
{
    const std::unique_ptr<TextWriter> pWriter = app.svc.objFileSystem.OpenForOutput(sPath);
    for (std::int32_t lRow = 1; lRow < fgLog.Rows(); ++lRow) {
        // The details column holds the row number: this file is a list of files, not a job to run unchanged.
        std::string sLine = fgLog.TextMatrix(lRow, kColFlags) + "\t" + std::to_string(lRow) + "\t";
        for (std::int32_t lCol = kColNumber; lCol <= kColTarget; ++lCol)
            sLine += fgLog.TextMatrix(lRow, lCol) + "\t";
        if (sLine.size() > kEmptyLogLine)
            pWriter->WriteLine(sLine);
    }
    pWriter->Commit();
}

static void SetCurrentJobFile(Application& app, const std::string& sPath)
{
    app.frmMain.sCurrentJobFile = sPath;
    app.frmMain.SetCaption(sPath);
}

void ConversionJobNew(Application& app)
{
    SetUpToDoGrid(app);
    SetUpLogGrid(app);
    SetCurrentJobFile(app, "*");
    UpdateMenuToolbar(app);
}

// True if the table holds one slice of a long file: it ends with a reload row, or starts after the file's
// first task.
static bool bHoldsPartOfFile(const Grid& fgToDo)
{
    const std::string sNumber = fgToDo.TextMatrix(1, kColNumber);
    return fgToDo.TextMatrix(fgToDo.Rows() - 2, kColAction) == "S" + std::to_string(kProcessReload) ||
           (fgToDo.Rows() > 2 && sNumber != "1");
}

// True if the file has more lines than the table would write, or can't be read to its end.
static bool bFileIsLonger(Application& app, const std::string& sPath, const Grid& fgToDo)
{
    try {
        const std::unique_ptr<TextReader> pReader = app.svc.objFileSystem.OpenForInput(sPath);
        std::string sLine;
        for (std::int32_t lLine = 0; lLine < fgToDo.Rows(); ++lLine)
            if (!pReader->ReadLine(sLine))
                return false;
        return true;
    } catch (const std::exception&) {
        return true;
    }
}

// An earlier backup may hold the only copy of some tasks.
static std::string sFreeBackupName(Application& app, const std::string& sPath)
{
    std::string sName = sPath + ".bak";
    for (std::int32_t l = 2; bFileExists(app, sName); ++l)
        sName = sPath + ".bak" + std::to_string(l);
    return sName;
}

void ConversionJobSave(Application& app)
{
    const std::string sPath = app.frmMain.sCurrentJobFile;
    if (sPath.empty() || sPath == "*") {
        ConversionJobSaveAs(app);
        return;
    }
    // Saving replaces the whole file, even if the table holds only part of it. Keep a backup of the longer
    // file so that no task is lost.
    if (bHoldsPartOfFile(app.frmMain.fgToDo) && bFileExists(app, sPath) &&
        bFileIsLonger(app, sPath, app.frmMain.fgToDo))
        app.svc.objFileSystem.CopyFile(sPath, sFreeBackupName(app, sPath));
    WriteJobFile(app, sPath, app.frmMain.fgToDo);
}

// The path to save to; "" if cancelled. The dialog confirms overwriting the name as typed, but not the name
// with the extension added.
static std::string sPickJobFileToSave(Application& app, const std::string& sFilter)
{
    std::int32_t lFilterIndex = 1;
    std::string sPath = sPickFile(app, sTranslate(app, "Save"), sTranslate(app, sFilter), lFilterIndex);
    if (sPath.empty() || !sGetExtensionName(sPath).empty())
        return sPath;
    sPath += kExtension;
    if (!bFileExists(app, sPath))
        return sPath;
    const BoxAnswer eAnswer =
        app.svc.objWindows.MsgBox(sPath + "\r\r" + sTranslate(app, "already exists. Replace it?"),
                                  sTranslate(app, "Save"), BoxIcon::Information, BoxButtons::YesNo);
    return eAnswer == BoxAnswer::Yes ? sPath : "";
}

void ConversionJobSaveAs(Application& app)
{
    const std::string sPath = sPickJobFileToSave(app, "Varnel (*.VJB)|*.VJB");
    if (sPath.empty())
        return;
    WriteJobFile(app, sPath, app.frmMain.fgToDo);
    SetCurrentJobFile(app, sPath);
}

void SaveLogAsConversionJob(Application& app)
{
    // The filter's name intentionally differs from Save As.
    const std::string sPath = sPickJobFileToSave(app, "Tarnis (*.VJB)|*.VJB");
    if (!sPath.empty())
        WriteLogAsJobFile(app, sPath, app.frmMain.fgLog);
}

static void RestorePassMarks(Grid& fgToDo)
{
    const RedrawLock objLock(fgToDo);
    for (std::int32_t lRow = 1; lRow < fgToDo.Rows(); ++lRow)
        RestorePassMark(fgToDo, lRow);
}

std::string ConversionJobOpen(Application& app, std::string& sPath)
{
    Grid& fgToDo = app.frmMain.fgToDo;
    std::int32_t lFilterIndex = 1;
    if (sPath.empty())
        sPath = sPickFile(app, sTranslate(app, "Open Conversion Job"),
                          sTranslate(app, "Tarnis (*.VJB)|*.VJB"), lFilterIndex);
    app.frmMain.sCurrentJobFile = sPath;
    if (sPath.empty())
        return "";
    const bool bFound = bFileExists(app, sPath);
    std::string sFailure;
    {
        const InternalChange objChange(app);
        sFailure = LoadJobFile(app, sPath, 1, fgToDo);
        RestorePassMarks(fgToDo);
    }
    if (bFound)
        SetUpLogGrid(app);
    UpdateMenuToolbar(app);
    fgToDo.SetRow(1);
    SetCurrentJobFile(app, sPath);
    return sFailure;
}

// True for the marker row. A task whose third character is "*" is dropped as well.
static bool bIsMarkerLine(const std::string& sLine)
{
    // The third character, not the third byte.
    std::size_t nAt = 0;
    for (int lLetter = 0; lLetter < 2 && nAt < sLine.size(); ++lLetter)
        for (++nAt; nAt < sLine.size() && (static_cast<unsigned char>(sLine[nAt]) & 0xC0) == 0x80;)
            ++nAt;
    return nAt < sLine.size() && sLine[nAt] == '*';
}

static void ShowProgress(Application& app, const std::string& sText)
{
    app.frmMainMDI.sbMain.SetPanel(kPanelLoading, sText);
}

static void LetEventsThrough(Application& app, std::int64_t lLine)
{
    ShowProgress(app, sTranslate(app, "Loading Conversion Task: ") + std::to_string(lLine));
    app.svc.objWindows.DoEvents();
}

// A task that loads the file from line lNext on. It repurposes the columns.
static std::string sReloadRow(const std::string& sPath, std::int64_t lNext)
{
    const std::string sNext = std::to_string(lNext);
    return " \t \t" + sNext + "\tS" + std::to_string(kProcessReload) +
           "\tReload conversion job start at task " + sNext + "\t0\t0\t" + sPath + "\t" + sNext;
}

// The rows read stay in aRows when reading fails.
static void ReadTasks(Application& app, const std::string& sPath, std::int32_t lStart,
                      std::vector<std::string>& aRows)
{
    const std::unique_ptr<TextReader> pReader = app.svc.objFileSystem.OpenForInput(sPath);
    ShowProgress(app, sTranslate(app, "Loading Conversion Job: ") + sPath);
    std::string sLine;
    std::int64_t lLine = 0;
    bool bFull = false;
    while (app.frmMain.bRunning && !bFull && pReader->ReadLine(sLine)) {
        ++lLine;
        if (lLine >= lStart) {
            if (!bIsMarkerLine(sLine) && sLine.find_first_not_of(' ') != std::string::npos)
                aRows.push_back(sLine);
            bFull = aRows.size() + kFixedRows >= kMostRowsLoaded;
        }
        if (lLine % kLinesBetweenEvents == 0 && !bFull)
            LetEventsThrough(app, lLine);
    }
    // A paused load stays as far as it got, and the next start goes on with the rest.
    const bool bPaused = !bFull && !app.frmMain.bRunning && pReader->ReadLine(sLine);
    if (bFull || bPaused)
        aRows.push_back(sReloadRow(sPath, lLine + 1));
    ShowProgress(app, sTranslate(app, "Completed loading conversion job: ") + sPath);
}

// Returns an error message, or "".
static std::string sReadTasksOrFail(Application& app, const std::string& sPath, std::int32_t lStart,
                                    std::vector<std::string>& aRows)
{
    try {
        ReadTasks(app, sPath, lStart, aRows);
        return "";
    } catch (const std::exception& objError) {
        return objError.what();
    }
}

static void NumberTasks(Grid& fgToDo, std::int32_t lStart)
{
    for (std::int32_t lRow = 1; lRow <= fgToDo.Rows() - 2; ++lRow)
        fgToDo.SetTextMatrix(lRow, kColNumber, std::to_string(std::int64_t{lStart} + lRow - 1));
}

// Replaces the table by the tasks of the file; returns "" or what went wrong.
static std::string sFillTable(Application& app, const std::string& sPath, std::int32_t lStart, Grid& fgToDo)
{
    const RunScope objRun(app);  // a pause ends the load, and the run that the load is part of
    const BusyPointer objPointer(app);
    SetUpToDoGrid(app, fgToDo);
    std::vector<std::string> aRows;
    const std::string sFailure = sReadTasksOrFail(app, sPath, lStart, aRows);
    const RedrawLock objLock(fgToDo);
    fgToDo.AddItems(std::move(aRows), 1);
    if (sFailure.empty())
        NumberTasks(fgToDo, lStart);
    return sFailure;
}

std::string LoadJobFile(Application& app, const std::string& sJobFile, std::int32_t lStart, Grid& fgToDo)
{
    const std::string sPath = sJobFile;  // copy: sJobFile may be a cell that loading overwrites
    if (!bFileExists(app, sPath))
        return "";
    std::string sFailure;
    {
        const InternalChange objChange(app);
        sFailure = sFillTable(app, sPath, lStart, fgToDo);
        fgToDo.SetRow(fgToDo.Rows() - 1);
        SelectGridRow(app, fgToDo);
    }
    if (!sFailure.empty() && !app.bCommandLineMode)
        app.svc.objWindows.MsgBox(sFailure, sTranslate(app, "Error"), BoxIcon::Information, BoxButtons::Ok);
    return sFailure;
}
