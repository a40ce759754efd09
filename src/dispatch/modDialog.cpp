// Connects the keys and the closing of dialogs.
#include "src/dispatch/modDialog.h"

#include "src/commands/modHelp.h"
#include "src/controls/command_button.h"
#include "src/dispatch/modDispatcher.h"
#include "src/forms/Application.h"

void ConnectDialog(Application& app, Form& frm, CommandButton& cmdLeave, std::int32_t lHelpTopic)
{
    const std::function<void()> fnHelp =
        Handler(app, [lHelpTopic](Application& a) { LaunchHelp(a, lHelpTopic); });
    frm.OnKeyDown = [&cmdLeave, fnHelp](const std::string& sKey) {
        if (sKey == "Esc")
            cmdLeave.UserClicks();
        else if (sKey == "F1")
            fnHelp();
        else
            return false;
        return true;
    };
    frm.OnQueryUnload = [&cmdLeave](CloseReason eReason) {
        if (eReason == CloseReason::User)
            cmdLeave.UserClicks();
        return eReason == CloseReason::Program;
    };
}
