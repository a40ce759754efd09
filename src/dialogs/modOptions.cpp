// Fills the dialog of general options and applies it.
#include "src/dialogs/modOptions.h"

#include <cstdint>
#include <string>
#include <utility>

#include "src/base/text.h"
#include "src/commands/modHelp.h"
#include "src/dispatch/modDialog.h"
#include "src/dispatch/modDispatcher.h"
#include "src/forms/Application.h"
#include "src/job/modPickFile.h"
#include "src/platform/window_services.h"
#include "src/translator/modTranslateForm.h"
#include "src/translator/modTranslator.h"

static void SetCaptions(frmOptions& frm)
{
    const std::pair<Control*, const char*> aCaptions[] = {
        {&frm.fraGeneralOptions, "General Options"},
        {&frm.cbAutoLoadImages, "Automatically load image files into viewer"},
        {&frm.cbTryAutodetectIfFailed, "If conversion fails, try using Autodetecting Original File Type"},
        {&frm.cbDeleteAfterProcessing, "Delete ORIGINAL files after processing"},
        // The missing "if" is part of the key of the translations.
        {&frm.lblDeleteWarning,
         "Please be VERY careful when enabling this option. Back up critical data first.  "
         "No deletion will occur Original and Target are exactly the same file."},
        {&frm.fraLogFile, "Create Log of Files Processed (Leave empty for none)"},
        {&frm.lblLogFile, "Select the file name of the report (e.g. c:\\myoutput\\Report.TXT)"},
        {&frm.cmdSelectScheduledJobFile, "  File.."},
        {&frm.cmdApply, "&Apply"},
        {&frm.cmdCancel, "&Cancel"},
        {&frm.cmdHelpRegularExpression, "&Help"},
    };
    frm.SetCaption("Options");
    for (const auto& [pControl, sCaption] : aCaptions)
        pControl->SetCaption(sCaption);
    frm.cmdHelpRegularExpression.SetToolTipText("Press for help");
    frm.txtLogFile.SetTag(kTranslateFalse);
}

static void PickLogFile(Application& app)
{
    std::int32_t lFilterIndex = 1;
    const std::string sPath =
        sPickFile(app, sTranslate(app, "Report File Path"),
                  "Log File(*.LOG)|*.LOG|Text Files (*.TXT)|*.TXT|All Files (*.*)|*.*", lFilterIndex);
    if (!sPath.empty())
        app.frmOptions.txtLogFile.SetText(sPath);
}

static void Apply(Application& app)
{
    frmOptions& frm = app.frmOptions;
    frmMain& frmCaller = app.frmMain;
    frmCaller.bAutoLoadImages = frm.cbAutoLoadImages.Value() == 1;
    frmCaller.bTryAutodetectIfFailed = frm.cbTryAutodetectIfFailed.Value() == 1;
    frmCaller.bDeleteOriginalFileAfterProcessing = frm.cbDeleteAfterProcessing.Value() == 1;
    frmCaller.sLogFile = sTrim(frm.txtLogFile.Text());
    frm.Unload();
}

static void Cancel(Application& app)
{
    app.frmOptions.Unload();
}

static void Help(Application& app)
{
    LaunchHelp(app, kHelpOptions);
}

void frmOptions_Load(Application& app)
{
    frmOptions& frm = app.frmOptions;
    const frmMain& frmCaller = app.frmMain;
    SetCaptions(frm);
    frm.cmdSelectScheduledJobFile.OnClick = Handler(app, PickLogFile);
    frm.cmdApply.OnClick = Handler(app, Apply);
    frm.cmdCancel.OnClick = Handler(app, Cancel);
    frm.cmdHelpRegularExpression.OnClick = Handler(app, Help);
    ConnectDialog(app, frm, frm.cmdCancel, kHelpOptions);
    TranslateForm(app, frm);
    frm.cbAutoLoadImages.SetValue(frmCaller.bAutoLoadImages ? 1 : 0);
    frm.cbTryAutodetectIfFailed.SetValue(frmCaller.bTryAutodetectIfFailed ? 1 : 0);
    frm.cbDeleteAfterProcessing.SetValue(frmCaller.bDeleteOriginalFileAfterProcessing ? 1 : 0);
    frm.txtLogFile.SetText(frmCaller.sLogFile);
}

void mnuOptions_Click(Application& app)
{
    frmOptions_Load(app);
    app.svc.objWindows.ShowModal(app.frmOptions);
    // A conversion has a viewer only if pictures are loaded into it by themselves.
    if (bContains(app.frmMain.sActionToDo, "C"))
        app.frmMain.frameImageViewer.SetVisible(app.frmMain.bAutoLoadImages);
}
