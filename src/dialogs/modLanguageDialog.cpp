// Lists the languages and handles the dialog's buttons.
#include "src/dialogs/modLanguageDialog.h"

#include <cstddef>
#include <optional>
#include <string>
#include <utility>

#include "src/base/path_text.h"
#include "src/base/text.h"
#include "src/commands/modDesktop.h"
#include "src/commands/modHelp.h"
#include "src/dispatch/modDialog.h"
#include "src/dispatch/modDispatcher.h"
#include "src/forms/Application.h"
#include "src/platform/file_system.h"
#include "src/platform/window_services.h"
#include "src/translator/modTranslateForm.h"
#include "src/translator/modTranslator.h"

constexpr const char* kEnglish = "English";
constexpr const char* kLanguagePage = "https://www.orbelan.example/FAQ/FAQ-Languages.htm";

static void SetCaptions(frmLanguage& frm)
{
    const std::pair<Control*, const char*> aCaptions[] = {
        {&frm.lblLanguage, "Select a Language:"},
        {&frm.cmdEditLanguageFile, "&Edit Language"},
        {&frm.cmdHelpLanguage, "&Help"},
        {&frm.cmdSelectFont, "&Font"},
        {&frm.cmdDone, "&Done"},
        {&frm.cmdCancel, "&Cancel"},
    };
    frm.SetCaption("Language");
    for (const auto& [pControl, sCaption] : aCaptions)
        pControl->SetCaption(sCaption);
}

static void List1_Click(Application& app)
{
    frmLanguage& frm = app.frmLanguage;
    frm.cmdEditLanguageFile.SetEnabled(frm.List1.Text() != kEnglish);
}

static void ReportUnableToOpen(Application& app, const std::string& sWhat)
{
    app.svc.objWindows.MsgBox(sTranslate(app, "Unable to open:") + "\r\n\r\n" + sWhat,
                              sTranslate(app, "Error"), BoxIcon::Information, BoxButtons::Ok);
}

static void EditLanguageFile(Application& app)
{
    const std::string sPath = sLanguageFilePath(app, app.frmLanguage.List1.Text());
    if (!bOpenPath(app, sPath))
        ReportUnableToOpen(app, sPath);
}

static void OpenLanguagePage(Application& app)
{
    if (!bOpenAddress(app, kLanguagePage))
        ReportUnableToOpen(app, kLanguagePage);
}

static void SelectFont(Application& app)
{
    frmLanguage& frm = app.frmLanguage;
    const std::optional<std::string> sFont = app.svc.objWindows.sPickFont(frm.cmdSelectFont.FontName());
    if (sFont)
        frm.sSelectedFont = *sFont;
}

static void Done(Application& app)
{
    frmLanguage& frm = app.frmLanguage;
    frm.sSelectedLanguage = frm.List1.Text();
    frm.Unload();
}

static void Cancel(Application& app)
{
    frmLanguage& frm = app.frmLanguage;
    frm.sSelectedLanguage.clear();
    frm.sSelectedFont.clear();
    frm.Unload();
}

static void frmLanguage_Load(Application& app)
{
    frmLanguage& frm = app.frmLanguage;
    frm.sSelectedLanguage.clear();
    frm.sSelectedFont.clear();
    SetCaptions(frm);
    frm.List1.OnClick = Handler(app, List1_Click);
    frm.cmdEditLanguageFile.OnClick = Handler(app, EditLanguageFile);
    frm.cmdHelpLanguage.OnClick = Handler(app, OpenLanguagePage);
    frm.cmdSelectFont.OnClick = Handler(app, SelectFont);
    frm.cmdDone.OnClick = Handler(app, Done);
    frm.cmdCancel.OnClick = Handler(app, Cancel);
    ConnectDialog(app, frm, frm.cmdCancel, kHelpNoTopic);
    TranslateForm(app, frm);
}

void FillLanguageList(Application& app, ListBox& lst)
{
    const TranslatorState& objTranslator = app.objTranslator;
    const RedrawLock objLock(lst);
    lst.Clear();
    lst.AddItem(kEnglish);
    lst.SetListIndex(0);
    FolderListing objListing;
    if (app.svc.objFileSystem.ListFolder(sFolderOfPath(sLanguageFilePath(app, "")), objListing)) {
        const std::string sEnd = sLower("-" + objTranslator.sProductStem + ".txt");
        for (const std::string& sFile : objListing.aFiles) {
            const std::size_t nEnd = sLower(sFile).find(sEnd);
            if (nEnd == std::string::npos || nEnd == 0)
                continue;
            const std::string sLanguage = sFile.substr(0, nEnd);
            lst.AddItem(sLanguage);
            if (sLanguage == objTranslator.sLanguage)
                lst.SetListIndex(lst.ListCount() - 1);
        }
    }
    app.frmLanguage.cmdEditLanguageFile.SetEnabled(lst.Text() != kEnglish);
}

static bool bIsNew(const std::string& sChosen, const std::string& sCurrent)
{
    return !sChosen.empty() && sChosen != sCurrent;
}

bool bSelectLanguage(Application& app, bool& bShowMessage)
{
    frmLanguage& frm = app.frmLanguage;
    TranslatorState& objTranslator = app.objTranslator;
    frmLanguage_Load(app);
    FillLanguageList(app, frm.List1);
    app.svc.objWindows.ShowModal(frm);

    const bool bNewLanguage = bIsNew(frm.sSelectedLanguage, objTranslator.sLanguage);
    if (bNewLanguage)
        SetLanguageCode(app, frm.sSelectedLanguage);
    else
        bShowMessage = false;
    const bool bNewFont = bIsNew(frm.sSelectedFont, objTranslator.sLanguageFont);
    if (bNewFont)
        SetLanguageFont(app, frm.sSelectedFont);
    if (bShowMessage) {
        // The blank at the end is part of the key.
        app.svc.objWindows.MsgBox(
            sTranslate(app, "Your changes will take effect next time you run ") + objTranslator.sProductStem,
            sTranslate(app, "Information"), BoxIcon::Information, BoxButtons::Ok);
    } else {
        objTranslator.sLanguage = frm.sSelectedLanguage;
        objTranslator.sLanguageFont = frm.sSelectedFont;
    }
    return bNewLanguage || bNewFont;
}

void mnuLanguage_Click(Application& app)
{
    bool bShowMessage = true;
    bSelectLanguage(app, bShowMessage);
}

void SelectFirstLanguage(Application& app)
{
    bool bShowMessage = false;
    bSelectLanguage(app, bShowMessage);
}
