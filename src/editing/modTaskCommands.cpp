// Adds, updates, removes and shows tasks.
#include "src/editing/modTaskCommands.h"

#include <string>
#include <utility>

#include "src/base/clsConversionOptions.h"
#include "src/base/text.h"
#include "src/commands/modMenuToolbar.h"
#include "src/editing/modFileFields.h"
#include "src/editing/modItemFromGUI.h"
#include "src/editing/modItemToGUI.h"
#include "src/editing/modItemToGrid.h"
#include "src/editing/modRefreshGUI.h"
#include "src/engine/modJobRun.h"
#include "src/forms/Application.h"
#include "src/job/modTaskTables.h"
#include "src/job/modValidation.h"
#include "src/settings/modMRU.h"

constexpr std::int32_t kTabTasks = 1;
constexpr std::int32_t kMethodConversion = 1;
constexpr std::int32_t kMethodSpecial = 4;
constexpr const char* kMarker = "*";

namespace
{

enum class Check {
    Good,
    GoOnUnchecked,  ///< the user accepts the task as it is
    GiveUp
};

}  // namespace

static Check eCheckFields(Application& app, clsConversionOptions& objOptions)
{
    BuildRequestFromGUI(app, objOptions);
    ValidateRequest(app, objOptions);
    if (objOptions.lErr == 0)
        return Check::Good;
    if (bReportValidationErrorGUI(app, objOptions))
        return Check::GoOnUnchecked;
    return objOptions.lErr == 0 ? Check::Good : Check::GiveUp;
}

bool AddFileToConvertGUI(Application& app)
{
    clsConversionOptions objOptions;
    if (eCheckFields(app, objOptions) == Check::GiveUp)
        return false;
    app.frmMain.bDirtyConversionItem = false;
    AddTaskRow(app, objOptions);
    UpdateMRUs(app);
    UpdateMenuToolbar(app);
    app.frmMain.ts.SelectTab(kTabTasks);
    return true;
}

bool ConversionJobUpdate(Application& app)
{
    clsConversionOptions objOptions;
    if (eCheckFields(app, objOptions) == Check::GiveUp)
        return false;
    if (bContains(objOptions.sActionToDo, "C"))
        UpdateGridFromGUI_ConversionItem(app);
    else if (bContains(objOptions.sActionToDo, "S"))
        UpdateGridFromGUI_SpecializedItem(app);
    app.frmMain.bDirtyConversionItem = false;
    UpdateMenuToolbar(app);
    return true;
}

static JobRunHooks objHooks()
{
    JobRunHooks objResult;
    objResult.ConversionJobUpdate = ConversionJobUpdate;
    return objResult;
}

void BeginConversion(Application& app)
{
    ConversionJobBegin(app, objHooks());
}

static bool bByCode(const Application& app)
{
    return app.frmMain.bRunning || app.bInternalGridChange;
}

static void LoadViewOfTab(Application& app)
{
    if (app.frmMain.bAutoLoadImages && app.objHooks.tsImageViewer_Click)
        app.objHooks.tsImageViewer_Click(app);
}

static void ShowRow(Application& app)
{
    Grid& fgToDo = app.frmMain.fgToDo;
    const std::string sNumber = fgToDo.TextMatrix(fgToDo.Row(), kColNumber);
    const bool bTask = fgToDo.Row() > 0 && !sNumber.empty() && sNumber != kMarker;
    if (bTask)
        ShowCurrentTask(app);
    LoadViewOfTab(app);
    UpdateMenuToolbar(app);
    SelectGridRow(app, fgToDo);
}

bool fgToDo_BeforeRowChange(Application&, std::int32_t)
{
    return true;
}

void fgToDo_LeaveCell(Application& app)
{
    if (bByCode(app))
        return;
    bool bGoOn = true;
    bCheckToUpdateDirtyConversionItem(app, objHooks(), bGoOn);
    app.frmMain.bKeepFields = !bGoOn;
}

void fgToDo_EnterCell(Application& app)
{
    if (bByCode(app))
        return;
    if (!std::exchange(app.frmMain.bKeepFields, false)) {
        ShowRow(app);
        return;
    }
    UpdateMenuToolbar(app);
    SelectGridRow(app, app.frmMain.fgToDo);
}

void fgLog_EnterCell(Application& app)
{
    if (!bByCode(app))
        SelectGridRow(app, app.frmMain.fgLog);
}

void rbActionToDo_Click(Application& app, std::int32_t lIndex)
{
    frmMain& frm = app.frmMain;
    frm.sActionToDo = lIndex == 1 ? "S" : "C";
    frm.lConversionMethod = lIndex == 1 ? kMethodSpecial : kMethodConversion;
    if (app.bInternalGridChange)
        return;
    if (lIndex == 0) {
        clsConversionOptions objStoredAway;
        GetSpecializedItemFromGUI(app, objStoredAway);
    }
    RefreshGUIOptions(app);
    LoadViewOfTab(app);
    MarkDirty(app);
}

void ts_Click(Application& app)
{
    frmMain& frm = app.frmMain;
    const bool bTasks = frm.ts.SelectedTab() == kTabTasks;
    UpdateMenuToolbar(app);
    frm.SliderZoom.SetVisible(bTasks);
    frm.frameZoomPercentage.SetVisible(bTasks);
    if (!bTasks) {
        frm.scrollOffsetX.SetEnabled(false);
        frm.scrollOffsetY.SetEnabled(false);
    } else if (!bByCode(app) && !frm.bDirtyConversionItem) {
        ShowRow(app);
    }
}

void EditConversionOptions(Application& app)
{
    frmMain& frm = app.frmMain;
    if (!app.objHooks.EditConversionOptions)
        return;
    const std::string sOptions = app.objHooks.EditConversionOptions(app, frm.sImageConversionOptions);
    if (sOptions == frm.sImageConversionOptions)
        return;
    frm.sImageConversionOptions = sOptions;
    MarkDirty(app);
}
