// Connects menu items and hooks with the dialogs.
#include "src/dialogs/modDialogs.h"

#include "src/dialogs/modAbout.h"
#include "src/dialogs/modConversionOptions.h"
#include "src/dialogs/modLanguageDialog.h"
#include "src/dialogs/modNotices.h"
#include "src/dialogs/modOptions.h"
#include "src/dispatch/modDispatcher.h"
#include "src/forms/Application.h"

void ConnectDialogs(Application& app)
{
    app.objHooks.EditConversionOptions = sEditConversionOptions;
    app.frmMainMDI.mnuOptions.OnClick = Handler(app, mnuOptions_Click);
    app.frmMainMDI.mnuLanguage.OnClick = Handler(app, mnuLanguage_Click);
    app.frmMainMDI.mnuAbout.OnClick = Handler(app, mnuAbout_Click);
    frmTypeMatchNotification_Load(app);
}
