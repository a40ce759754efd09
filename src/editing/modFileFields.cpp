// Keeps the fields of a task's files in step while a person types.
#include "src/editing/modFileFields.h"

#include <optional>
#include <string>

#include "src/base/path_text.h"
#include "src/commands/modMenuToolbar.h"
#include "src/editing/file_fields.h"
#include "src/forms/Application.h"
#include "src/job/modFileHelpers.h"
#include "src/job/modFileLists.h"
#include "src/job/modFileTypes.h"
#include "src/job/modTargetNaming.h"

constexpr std::int32_t kViewOriginal = 0;
constexpr std::int32_t kViewTarget = 1;

void MarkDirty(Application& app)
{
    app.frmMain.bDirtyConversionItem = true;
    UpdateMenuToolbar(app);
}

void RefreshFileFolder(const FileFields& objFields)
{
    const bool bWildcard = bHasWildcard(objFields.cbOriginalFile.Text());
    objFields.cbSaveToOriginalFolder.SetEnabled(bWildcard);
    objFields.cbDoSubfolders.SetEnabled(bWildcard);
    for (Control* pPicker : objFields.aSingleTargetPickers)
        pPicker->SetVisible(!bWildcard);
}

static void LoadView(Application& app, std::int32_t lView)
{
    if (app.frmMain.bAutoLoadImages && app.objHooks.LoadImageViewer)
        app.objHooks.LoadImageViewer(app, lView);
}

// Quotes come with a pasted path. Writing the text back raises the change event once more, for the clean
// text.
static void RemoveQuotes(ComboBox& cb)
{
    const std::string sClean = sWithoutQuotes(cb.Text());
    if (sClean != cb.Text())
        cb.SetText(sClean);
}

static void Propose(const FileFields& objFields)
{
    const std::optional<std::string> sProposal = sProposedTarget(
        objFields.cbOriginalFile.Text(), lFileTypeInEntryText(objFields.cbFileTypeTarget.Text()));
    if (!sProposal)
        return;
    objFields.sProposedTarget = *sProposal;
    objFields.cbTargetFile.SetText(*sProposal);
}

void OriginalFile_Change(Application& app, const FileFields& objFields)
{
    if (app.bInternalGridChange)
        return;
    const std::string sSource = objFields.cbOriginalFile.Text();
    if (!bHasWildcard(sSource))
        objFields.cbSaveToOriginalFolder.SetValue(0);
    RefreshFileFolder(objFields);
    objFields.cmdLaunchOriginal.SetVisible(!bHasWildcard(sSource));
    if (bSelectExtension(objFields.cbFileTypeOriginal, objFields.colExtensionsOriginal,
                         sExtensionOfPath(sSource)))
        LoadView(app, kViewOriginal);
    RemoveQuotes(objFields.cbOriginalFile);
    MarkDirty(app);
    Propose(objFields);
}

void TargetFile_Change(Application& app, const FileFields& objFields)
{
    if (app.bInternalGridChange)
        return;
    MarkDirty(app);
    const std::string sTarget = objFields.cbTargetFile.Text();
    objFields.cmdLaunchTarget.SetVisible(!bHasWildcard(sTarget));
    // A proposal that doesn't exist yet leaves the viewer and its message alone.
    const bool bToBeSeen = sTarget != objFields.sProposedTarget || bFileExists(app, sTarget);
    if (bSelectExtension(objFields.cbFileTypeTarget, objFields.colExtensionsTarget,
                         sExtensionOfPath(sTarget)) &&
        bToBeSeen)
        LoadView(app, kViewTarget);
    RemoveQuotes(objFields.cbTargetFile);
}

void FileTypeOriginal_Click(Application& app, const FileFields& objFields)
{
    if (!app.bInternalGridChange && objFields.cbFileTypeOriginal.ListIndex() >= 0)
        MarkDirty(app);
}

void FileTypeTarget_Click(Application& app, const FileFields& objFields)
{
    if (app.bInternalGridChange || objFields.cbFileTypeTarget.ListIndex() < 0)
        return;
    MarkDirty(app);
    const std::string sTarget = objFields.cbTargetFile.Text();
    if (!sTarget.empty() && sTarget == objFields.sProposedTarget)
        Propose(objFields);
}

void DoSubfolders_Click(Application& app)
{
    if (!app.bInternalGridChange)
        MarkDirty(app);
}

void SaveToOriginalFolder_Click(Application& app, const FileFields& objFields)
{
    objFields.frameTargetFile.SetEnabled(objFields.cbSaveToOriginalFolder.Value() != 1);
    if (!app.bInternalGridChange)
        MarkDirty(app);
}
