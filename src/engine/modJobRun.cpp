// Runs, pauses and rewinds jobs.
#include "src/engine/modJobRun.h"

#include <set>
#include <string>
#include <utility>

#include "src/base/clsConversionOptions.h"
#include "src/base/raised_error.h"
#include "src/base/text.h"
#include "src/commands/modMenuToolbar.h"
#include "src/commands/modRunState.h"
#include "src/dispatch/modDispatcher.h"
#include "src/engine/modConversionTask.h"
#include "src/engine/modRunLog.h"
#include "src/engine/modSpecialTask.h"
#include "src/forms/Application.h"
#include "src/forms/scope_guards.h"
#include "src/job/modFileHelpers.h"
#include "src/job/modJobFiles.h"
#include "src/job/modTaskTables.h"
#include "src/platform/clock.h"
#include "src/platform/file_system.h"
#include "src/platform/processes.h"
#include "src/platform/window_services.h"
#include "src/translator/modTranslator.h"

constexpr std::int32_t kErrNotReloaded = -10000;

void FindStartPoint(Application& app, Grid& fgToDo, std::int32_t& lRow)
{
    const RedrawLock objLock(fgToDo);
    const InternalChange objChange(app);
    for (lRow = 1; lRow <= fgToDo.Rows() - 2; ++lRow) {
        fgToDo.SetRow(lRow);
        if (fgToDo.TextMatrix(lRow, kColPass).empty())
            break;
    }
}

void bCheckToUpdateDirtyConversionItem(Application& app, const JobRunHooks& objHooks, bool& bGoOn)
{
    bGoOn = true;
    frmMain& frm = app.frmMain;
    if (frm.bRunning || app.frmScheduler.Timer1.Enabled())
        return;
    const bool bOnMarker = frm.fgToDo.TextMatrix(frm.fgToDo.Row(), kColNumber) == "*";
    const bool bNoTask = frm.fgToDo.TextMatrix(1, kColNumber) == "*";
    if (frm.bDirtyConversionItem && !bOnMarker && !bNoTask) {
        // Not translated: with the row number in it, every row would be a different translation key.
        const BoxAnswer eAnswer = app.svc.objWindows.MsgBox(
            "You've changed the current conversion item #" + std::to_string(frm.fgToDo.Row()) +
                "\r\rDo you want to update your changes?",
            "Update Conversion Item", BoxIcon::Information, BoxButtons::YesNoCancel);
        if (eAnswer == BoxAnswer::Cancel) {
            bGoOn = false;
            return;
        }
        if (eAnswer == BoxAnswer::Yes) {
            bGoOn = !objHooks.ConversionJobUpdate || objHooks.ConversionJobUpdate(app);
            return;
        }
    }
    frm.bDirtyConversionItem = false;
}

void bCheckToZeroConversionItems(Application& app, bool& bNone)
{
    bNone = false;
    frmMain& frm = app.frmMain;
    if (frm.bRunning || !frm.Visible() || app.frmScheduler.Timer1.Enabled() || frm.fgToDo.Rows() != 2)
        return;
    app.svc.objWindows.MsgBox(sTranslate(app, "Please click the ADD (+) button first, then click Convert"),
                              sTranslate(app, "Information"), BoxIcon::Information, BoxButtons::Ok);
    bNone = true;
}

void PerformBlock(Application& app, std::int32_t lRow, clsConversionOptions& objOptions, std::int32_t& lErr)
{
    objOptions.lErr = lErr = 0;
    objOptions.sErr.clear();
    // "C" wins: an action with both letters is a conversion.
    if (bContains(objOptions.sActionToDo, "C"))
        PerformBlockConversion(app, lRow, objOptions, lErr);
    else if (bContains(objOptions.sActionToDo, "S"))
        PerformBlockSpecialized(app, lRow, objOptions, lErr);
}

/// Slices loaded by a run, as job file (its real path: links may lead to it by several) and first task.
using Slices = std::set<std::pair<std::string, std::int32_t>>;

// True if the reload loads a new slice. Reloading a missing file or a slice that was run already would loop
// forever.
static bool bReloadsAnotherSlice(Application& app, const clsConversionOptions& objOptions, Slices& aSlices)
{
    return bFileExists(app, objOptions.sTargetFile) &&
           aSlices
               .emplace(app.svc.objFileSystem.sRealPath(objOptions.sTargetFile), objOptions.lTargetFileType)
               .second;
}

static void FailReload(Application& app, std::int32_t lRow, clsConversionOptions& objOptions,
                       std::int32_t& lErr)
{
    objOptions.lErr = lErr = kErrNotReloaded;
    objOptions.sErr = sTranslate(app, "Unable to load the rest of the job.");
    LogConversionError(app, lRow, objOptions);
}

static void RunTasks(Application& app, std::int32_t lStart)
{
    frmMain& frm = app.frmMain;
    Grid& fgToDo = frm.fgToDo;
    std::int32_t lLast = fgToDo.Rows() - 2;
    std::int32_t lCount = 1;
    Slices aSlices;
    clsConversionOptions objOptions;  // shared by all rows: an empty cell keeps the previous row's value
    for (std::int32_t lRow = lStart; lRow <= lLast && lRow <= fgToDo.Rows() - 2; ++lRow, ++lCount) {
        app.frmMainMDI.sbMain.SetPanel(kPanelTask, std::to_string(lCount));
        app.svc.objProcessLauncher.CollectEnded();
        LoadRequestFromGridRow(app, objOptions, lRow);
        std::int32_t lErr = 0;
        const bool bReload =
            objOptions.lSpecialProcess == kProcessReload && bContains(objOptions.sActionToDo, "S");
        const bool bNextSlice = bReload && bReloadsAnotherSlice(app, objOptions, aSlices);
        if (bReload && !bNextSlice)
            FailReload(app, lRow, objOptions, lErr);
        else
            PerformBlock(app, lRow, objOptions, lErr);
        if (!frm.bRunning)
            break;  // the row stays unmarked, so the next start resumes with it
        if (bNextSlice) {
            lRow = 0;  // a new table: start at its top
            lLast = fgToDo.Rows() - 2;
        } else {
            UpdatePassedCell(app, fgToDo, lRow, lErr);
        }
    }
}

namespace
{

/// A run of the job from its begin to its end, however it ends.
class JobRun
{
public:
    explicit JobRun(Application& app) : m_app(app), m_objRun(app), m_objChange(app) {}
    ~JobRun()
    {
        m_app.svc.objProcessLauncher.CollectEnded();
        (void)m_app.svc.objFileSystem.SyncSaves();  // after an error, which is what gets reported
        try {
            m_app.frmMainMDI.sbMain.SetPanel(kPanelTask, "-");
        } catch (...) {
            // Out of memory in a view, which may be what ends the run.
        }
    }
    JobRun(const JobRun&) = delete;
    JobRun& operator=(const JobRun&) = delete;

private:
    Application& m_app;
    const RunScope m_objRun;
    const InternalChange m_objChange;
};

}  // namespace

void ConversionJobBegin(Application& app, const JobRunHooks& objHooks)
{
    frmMain& frm = app.frmMain;
    if (bCloseWaits(app))
        return;
    bool bGoOn = true;
    bCheckToUpdateDirtyConversionItem(app, objHooks, bGoOn);
    bool bNone = false;
    if (bGoOn)
        bCheckToZeroConversionItems(app, bNone);
    if (!bGoOn || bNone)
        return;
    const JobRun objRun(app);
    SetUpLogGrid(app);
    std::int32_t lStart = 0;
    FindStartPoint(app, frm.fgToDo, lStart);
    if (lStart > frm.fgToDo.Rows() - 2 && !app.bCommandLineMode)
        app.svc.objWindows.MsgBox(
            sTranslate(app, "Please click the ADD (+) button first, then click Convert") + ". " +
                sTranslate(app, "Or click REWIND, then click CONVERT"),
            sTranslate(app, "Information"), BoxIcon::Information, BoxButtons::Ok);
    frm.lJobStartTick = app.svc.objClock.GetTickCount();
    RunTasks(app, lStart);
    SyncRun(app);
}

void SyncRun(Application& app)
{
    if (!app.svc.objFileSystem.SyncSaves())
        throw clsRaisedError(
            kErrPathFileAccess,
            "Path/File access error: some saved files may be lost (the disk did not confirm them)");
}

void ConversionJobPause(Application& app)
{
    if (!app.frmMain.keyPause.Enabled())
        return;
    PauseRun(app);
    app.frmMain.fgToDo.SetFocus();
}

void ConversionJobRewind(Application& app)
{
    Grid& fgToDo = app.frmMain.fgToDo;
    app.frmMain.lResumeFileIndex = 0;
    {
        const RedrawLock objLock(fgToDo);
        const InternalChange objChange(app);
        for (std::int32_t lRow = fgToDo.Rows() - 1; lRow >= 1; --lRow) {
            fgToDo.SetRow(lRow);
            CellFormat objFormat = fgToDo.Format(lRow, kColPass);
            objFormat.ePicture = CellPicture::None;
            fgToDo.SetFormat(lRow, kColPass, objFormat);
            fgToDo.SetTextMatrix(lRow, kColPass, "");
        }
    }
    SetUpLogGrid(app);
    UpdateMenuToolbar(app);
    SelectGridRow(app, fgToDo);
    fgToDo.SetTopRow(fgToDo.Row());
}
