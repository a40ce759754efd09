// Shows the about box.
#include "src/dialogs/modAbout.h"

#include "src/commands/modHelp.h"
#include "src/dispatch/modDialog.h"
#include "src/dispatch/modDispatcher.h"
#include "src/forms/Application.h"
#include "src/platform/window_services.h"
#include "src/translator/modTranslateForm.h"
#include "src/translator/modTranslator.h"

// Names and licences: not translated. The build sets VARNEL_VERSION.
constexpr const char* kVersion = VARNEL_VERSION;
constexpr const char* kLicenceAndLibraries =
    "Varnel: MIT License\n"
    "Copyright (c) 2026 The Varnel developers\n"
    "\n"
    "Cairo: LGPL 2.1 or MPL 1.1\n"
    "fontconfig: MIT style\n"
    "FreeType: FreeType License\n"
    "giflib: MIT\n"
    "ISA-L: BSD 3-Clause\n"
    "lcms2: MIT\n"
    "libdeflate: MIT\n"
    "libjpeg-turbo: IJG, BSD 3-Clause\n"
    "libpng: libpng License\n"
    "libtiff: libtiff License\n"
    "OpenJPEG: BSD 2-Clause\n"
    "Qt: LGPL 3";

static void OK(Application& app)
{
    app.frmAbout.Unload();
}

static void frmAbout_Load(Application& app)
{
    frmAbout& frm = app.frmAbout;
    frm.SetCaption("About");
    frm.lblProduct.SetCaption(app.objTranslator.sProductStem);
    frm.lblProduct.SetTag(kTranslateFalse);
    frm.lblDescription.SetCaption("Batch conversion of image files");
    frm.lblVersion.SetCaption(sTranslate(app, "Version") + " " + kVersion);
    frm.lblVersion.SetTag(kTranslateFalse);
    frm.txtLibraries.SetText(kLicenceAndLibraries);
    frm.txtLibraries.SetTag(kTranslateFalse);
    frm.txtLibraries.SetLocked(true);
    frm.cmdOK.SetCaption("&OK");
    frm.cmdOK.OnClick = Handler(app, OK);
    ConnectDialog(app, frm, frm.cmdOK, kHelpAbout);
    TranslateForm(app, frm);
}

void mnuAbout_Click(Application& app)
{
    frmAbout_Load(app);
    app.svc.objWindows.ShowModal(app.frmAbout);
}
