// Opens the help.
#include "src/commands/modHelp.h"

#include "src/forms/Application.h"
#include "src/platform/window_services.h"

void InitializeHelpFile(Application& app)
{
    app.sHelpFile = "Varnel.HLP";
}

void LaunchHelp(Application& app, std::int32_t lTopic)
{
    const bool bHasTopics = app.objTranslator.sLanguage != "Japanese";
    app.svc.objWindows.LaunchHelp(app.sHelpFile, bHasTopics ? lTopic : kHelpNoTopic);
}
