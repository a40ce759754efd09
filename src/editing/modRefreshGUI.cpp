// Shows and hides the fields of the two actions.
#include "src/editing/modRefreshGUI.h"

#include "src/base/text.h"
#include "src/catalogue/modSpecialProcessCatalogue.h"
#include "src/editing/file_fields.h"
#include "src/editing/modFileFields.h"
#include "src/forms/Application.h"
#include "src/forms/scope_guards.h"
#include "src/job/modFileTypes.h"
#include "src/translator/modTranslator.h"

constexpr std::int32_t kPreviewTab = 3;

void RefreshFileFolderStandard(Application& app)
{
    RefreshFileFolder(ConversionFields(app.frmMain));
}

void RefreshFileFolderGUISpecialized(Application& app)
{
    RefreshFileFolder(SpecializedFields(app.frmMain));
}

// The viewer shows the tab that is selected then; its file is loaded with the fields.
static void RemovePreviewTab(Application& app)
{
    TabStrip& tsImageViewer = app.frmMain.tsImageViewer;
    if (tsImageViewer.TabCount() < kPreviewTab)
        return;
    const InternalChange objChange(app);
    tsImageViewer.RemoveTab(kPreviewTab);
    tsImageViewer.SelectTab(tsImageViewer.SelectedTab());
}

void RefreshGUIConvertOptions(Application& app)
{
    frmMain& frm = app.frmMain;
    RefreshFileFolderStandard(app);
    RemovePreviewTab(app);
    frm.frameImageViewer.SetVisible(frm.bAutoLoadImages);
    frm.cbFileTypeOriginal.SetVisible(true);
    frm.lblFileTypeOriginal.SetVisible(true);
    FillInFileTypeComboBoxOriginal(app);
    FillInFileTypeComboBoxTarget(app);
    frm.rbActionToDo(0).SetValue(true);
    frm.frameSpecializedAction.SetVisible(false);
}

static bool bIsLaunch(const ComboBox& cbSpecialProcesses)
{
    return cbSpecialProcesses.ListIndex() >= 0 &&
           cbSpecialProcesses.ItemData(cbSpecialProcesses.ListIndex()) == SP_LAUNCH;
}

void RefreshGUISpecializedProcess(Application& app)
{
    frmMain& frm = app.frmMain;
    const bool bLaunch = bIsLaunch(frm.cbSpecialProcesses);
    RefreshFileFolderGUISpecialized(app);
    frm.frameCommandLine.SetVisible(bLaunch);
    frm.frameSelectFilesForSpecialProcessing.SetVisible(!bLaunch);
    // Also without automatic loading: the viewer's own button loads then.
    frm.frameImageViewer.SetVisible(!bLaunch);
    if (!bLaunch && frm.tsImageViewer.TabCount() < kPreviewTab)
        frm.tsImageViewer.AddTab(sTranslate(app, "Preview"));
    if (app.objHooks.ShowProcessPanel)
        app.objHooks.ShowProcessPanel(app);
    frm.rbActionToDo(1).SetValue(true);
    frm.frameSpecializedAction.SetVisible(true);
    frm.frameSpecializedAction.BringToFront();
}

void RefreshGUIOptions(Application& app)
{
    if (bContains(app.frmMain.sActionToDo, "C"))
        RefreshGUIConvertOptions(app);
    else if (bContains(app.frmMain.sActionToDo, "S"))
        RefreshGUISpecializedProcess(app);
}
