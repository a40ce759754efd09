// Shows, hides and enables the fields of each action.
#include "src/editing/modRefreshGUI.h"

#include "src/base/text.h"
#include "src/forms/Application.h"
#include "src/job/modFileLists.h"
#include "src/job/modFileTypes.h"

void RefreshFileFolderStandard(Application& app)
{
    frmMain& frm = app.frmMain;
    const bool bWildcard = bHasWildcard(frm.cbOriginalFile.Text());
    frm.cbSaveToOriginalFolder.SetEnabled(bWildcard);
    frm.cbDoSubfolders.SetEnabled(bWildcard);
    frm.cmdSelectTargetFile.SetVisible(!bWildcard);
    frm.picSelectTargetFile.SetVisible(!bWildcard);
}

void RefreshFileFolderGUISpecialized(Application& app)
{
    frmMain& frm = app.frmMain;
    const bool bWildcard = bHasWildcard(frm.cbOriginalFileSpecialized.Text());
    frm.cbSaveToOriginalFolderSpecialized.SetEnabled(bWildcard);
    frm.cbDoSubfoldersSpecialized.SetEnabled(bWildcard);
    frm.cmdSelectTargetFileSpecialized.SetVisible(!bWildcard);
}

void RefreshGUIConvertOptions(Application& app)
{
    frmMain& frm = app.frmMain;
    RefreshFileFolderStandard(app);
    frm.frameImageViewer.SetVisible(frm.bAutoLoadImages);
    frm.cbFileTypeOriginal.SetVisible(true);
    frm.lblFileTypeOriginal.SetVisible(true);
    FillInFileTypeComboBoxOriginal(app);
    FillInFileTypeComboBoxTarget(app);
    frm.rbActionToDo(0).SetValue(true);
    frm.frameSpecializedAction.SetVisible(false);
}

void RefreshGUIOptions(Application& app)
{
    if (bContains(app.frmMain.sActionToDo, "C"))
        RefreshGUIConvertOptions(app);
    else if (bContains(app.frmMain.sActionToDo, "S"))
        RefreshFileFolderGUISpecialized(app);
}
