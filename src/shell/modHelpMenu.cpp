// Opens the help and the product's web pages.
#include "src/shell/modHelpMenu.h"

#include <string>
#include <utility>

#include "src/commands/modDesktop.h"
#include "src/commands/modHelp.h"
#include "src/dialogs/modAbout.h"
#include "src/dispatch/modDispatcher.h"
#include "src/forms/Application.h"
#include "src/platform/window_services.h"
#include "src/translator/modTranslator.h"

static void OpenPage(Application& app, const std::string& sAddress)
{
    if (!bOpenAddress(app, sAddress))
        app.svc.objWindows.MsgBox(sTranslate(app, "Unable to open:") + "\r\n\r\n" + sAddress,
                                  sTranslate(app, "Error"), BoxIcon::Information, BoxButtons::Ok);
}

static void ConnectPage(Application& app, Action& mnuPage, const char* sAddress)
{
    mnuPage.OnClick = Handler(app, [sAddress](Application& a) { OpenPage(a, sAddress); });
}

static void ConnectTopic(Application& app, Action& mnuTopic, HelpTopic eTopic)
{
    mnuTopic.OnClick = Handler(app, [eTopic](Application& a) { LaunchHelp(a, eTopic); });
}

static bool bHelpKey(Application& app, const std::string& sKey)
{
    if (sKey != "F1")
        return false;
    LaunchHelp(app, kHelpMainWindow);
    return true;
}

void ConnectHelpMenu(Application& app)
{
    frmMainMDI& frm = app.frmMainMDI;
    ConnectTopic(app, frm.mnuLaunchHelpFile, kHelpNoTopic);
    ConnectTopic(app, frm.cmdHelpCommandLine, kHelpCommandLine);
    frm.mnuAbout.OnClick = Handler(app, mnuAbout_Click);
    ConnectPage(app, frm.mnuHelpOnLine, "https://www.orbelan.example/varnel/help");
    ConnectPage(app, frm.mnuHelpProductHomePage, "https://www.orbelan.example/varnel");
    ConnectPage(app, frm.mnuHelpProductUpdates, "https://www.orbelan.example/varnel/history");
    ConnectPage(app, frm.mnuOrbelanHomePage, "https://www.orbelan.example");
    ConnectPage(app, frm.mnuAdditionalImageConversionTools, "https://www.orbelan.example/tools");
    for (Form* pForm : {static_cast<Form*>(&app.frmMainMDI), static_cast<Form*>(&app.frmMain)})
        pForm->OnKeyDown = [fnKey = Handler(app, bHelpKey)](const std::string& sKey) { return fnKey(sKey); };
}
