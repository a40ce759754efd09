// Loads the notices.
#include "src/dialogs/modNotices.h"

#include "src/commands/modHelp.h"
#include "src/dispatch/modDialog.h"
#include "src/dispatch/modDispatcher.h"
#include "src/forms/Application.h"
#include "src/translator/modTranslateForm.h"
#include "src/translator/modTranslator.h"

static void Leave(Application& app, bool bContinue)
{
    app.frmTypeMatchNotification.bContinue = bContinue;
    app.frmTypeMatchNotification.SetVisible(false);
}

// Inverts rather than copies: the tick counts from the settings on, also when they began with True.
static void InvertDontShowAgain(Application& app)
{
    bool& bDontShowAgain = app.frmTypeMatchNotification.bDontShowAgain;
    bDontShowAgain = !bDontShowAgain;
}

void frmTypeMatchNotification_Load(Application& app)
{
    frmTypeMatchNotification& frm = app.frmTypeMatchNotification;
    frm.SetCaption("File Type Mismatch");
    frm.lblNotification.SetCaption(
        "'Original File Format' and 'Original File' do not match.  For example, you may have chosen JPG for "
        "the file format, but specified \".BMP\" for the file extension.  Do you want to continue?");
    frm.chkDontShowAgain.SetCaption("Never show this message again");
    frm.cmdContinue.SetCaption("&Continue");
    frm.cmdCancel.SetCaption("Ca&ncel");
    frm.chkDontShowAgain.OnClick = Handler(app, InvertDontShowAgain);
    frm.cmdContinue.OnClick = Handler(app, [](Application& a) { Leave(a, true); });
    frm.cmdCancel.OnClick = Handler(app, [](Application& a) { Leave(a, false); });
    ConnectDialog(app, frm, frm.cmdCancel, kHelpTypeMatch);
}

void frmPleaseWait_Load(Application& app)
{
    frmPleaseWait& frm = app.frmPleaseWait;
    frm.SetCaption("Varnel");
    frm.lblLine2.SetCaption("Please wait...");
    TranslateForm(app, frm);
    frm.lblHeader.SetCaption(sTranslate(app, "Varnel!"));
    frm.lblLine1.SetCaption("Orbelan, Inc.");
}
