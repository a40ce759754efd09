// Shows a row.
#include "src/editing/modItemToGUI.h"

#include <cstddef>
#include <cstdint>
#include <string>

#include "src/base/number_text.h"
#include "src/base/raised_error.h"
#include "src/base/text.h"
#include "src/catalogue/modSpecialProcessDetails.h"
#include "src/editing/file_fields.h"
#include "src/editing/modFileFields.h"
#include "src/editing/modRefreshGUI.h"
#include "src/forms/Application.h"
#include "src/forms/scope_guards.h"
#include "src/job/modFileLists.h"
#include "src/job/modFileTypes.h"
#include "src/job/modTaskTables.h"
#include "src/platform/locale.h"

constexpr std::int32_t kPreviewTab = 3;

static std::string sCell(const Application& app, TaskColumn eColumn)
{
    return app.frmMain.fgToDo.TextMatrix(app.frmMain.fgToDo.Row(), eColumn);
}

// A type that the list doesn't offer leaves the selection, and so does a cell that holds no number.
static void SelectType(const Application& app, ComboBox& cb, TaskColumn eColumn)
{
    const char cSign = app.svc.objLocale.cDecimalSign();
    if (bIsNumeric(sCell(app, eColumn), cSign))
        bSelectFileType(cb, lToLong(sCell(app, eColumn), cSign));
}

static void ShowFlags(const Application& app, const FileFields& objFields)
{
    const std::string sFlags = sCell(app, kColFlags);
    objFields.cbDoSubfolders.SetValue(bFlagIsSet(sFlags, 'R') ? 1 : 0);
    objFields.cbSaveToOriginalFolder.SetValue(bFlagIsSet(sFlags, 'G') ? 1 : 0);
    objFields.frameTargetFile.SetEnabled(!bFlagIsSet(sFlags, 'G'));
}

static void ShowFiles(const Application& app, const FileFields& objFields)
{
    objFields.cbOriginalFile.SetText(sCell(app, kColOriginal));
    SelectType(app, objFields.cbFileTypeOriginal, kColOriginalType);
    objFields.cbTargetFile.SetText(sCell(app, kColTarget));
    if (&objFields.cbFileTypeTarget != &objFields.cbFileTypeOriginal)
        SelectType(app, objFields.cbFileTypeTarget, kColTargetType);
    objFields.sProposedTarget.clear();
    RefreshFileFolder(objFields);
    const bool bWildcard = bHasWildcard(objFields.cbOriginalFile.Text());
    objFields.cmdLaunchOriginal.SetVisible(!bWildcard);
    objFields.cmdLaunchTarget.SetVisible(!bHasWildcard(objFields.cbTargetFile.Text()));
    if (!bWildcard)
        objFields.cbSaveToOriginalFolder.SetValue(0);
}

// A preview belongs to a special process.
static void RemovePreviewTab(frmMain& frm)
{
    if (frm.tsImageViewer.TabCount() < kPreviewTab)
        return;
    frm.tsImageViewer.RemoveTab(kPreviewTab);
    frm.tsImageViewer.SelectTab(1);
}

void UpdateGUI_ConversionItemViaCellContents(Application& app)
{
    frmMain& frm = app.frmMain;
    const InternalChange objChange(app, InternalChange::After::Clear);
    const FileFields objFields = ConversionFields(frm);
    frm.rbActionToDo(0).SetValue(true);
    frm.frameSpecializedAction.SetVisible(false);
    RemovePreviewTab(frm);
    ShowFlags(app, objFields);
    frm.lConversionMethod = 1;
    frm.lblFileTypeOriginal.SetVisible(true);
    FillInFileTypeComboBoxOriginal(app);
    FillInFileTypeComboBoxTarget(app);
    frm.sImageConversionOptions = sCell(app, kColDetails);
    ShowFiles(app, objFields);
}

// A number that no entry carries leaves the selection.
static void SelectItemData(ComboBox& cb, std::int32_t lItemData)
{
    for (std::int32_t l = 0; l < cb.ListCount(); ++l) {
        if (cb.ItemData(l) == lItemData) {
            cb.SetListIndex(l);
            return;
        }
    }
}

static void ShowLaunch(Application& app)
{
    frmMain& frm = app.frmMain;
    const LaunchDetails objDetails =
        ReadLaunchDetails(sCell(app, kColDetails), app.svc.objLocale.cDecimalSign());
    frm.cbCommandLine.SetText(sCell(app, kColOriginal));
    frm.cbCommandLineArguments.SetText(sCell(app, kColTarget));
    SelectItemData(frm.cbCommandLineThreadPriority, objDetails.lPriority);
    SelectItemData(frm.cbCommandLineWindowState, objDetails.lWindowState);
    frm.txtCommandLineWaitTimeInSeconds.SetText(std::to_string(objDetails.lWaitSeconds));
}

void UpdateGUI_SpecializedToDOItemViaCellContents(Application& app)
{
    frmMain& frm = app.frmMain;
    const InternalChange objChange(app, InternalChange::After::Clear);
    const std::int32_t lSpecialProcess =
        lToLong(sReplaceAll(sCell(app, kColAction), "S", ""), app.svc.objLocale.cDecimalSign());
    if (lSpecialProcess < 0 || lSpecialProcess >= kSpecialProcessSlots)
        throw clsRaisedError(kErrSubscript, "Subscript out of range");
    const FileFields objFields = SpecializedFields(frm);
    frm.rbActionToDo(1).SetValue(true);
    SelectItemData(frm.cbSpecialProcesses, lSpecialProcess);
    if (lSpecialProcess == SP_LAUNCH) {
        ShowLaunch(app);
    } else {
        frm.asSP_Details.at(static_cast<std::size_t>(lSpecialProcess)) = sCell(app, kColDetails);
        ShowFlags(app, objFields);
        ShowFiles(app, objFields);
    }
    RefreshGUISpecializedProcess(app);
}

void ShowCurrentTask(Application& app)
{
    const std::string sAction = sCell(app, kColAction);
    if (bContains(sAction, "C"))
        UpdateGUI_ConversionItemViaCellContents(app);
    else if (bContains(sAction, "S"))
        UpdateGUI_SpecializedToDOItemViaCellContents(app);
    app.frmMain.bDirtyConversionItem = false;
}
