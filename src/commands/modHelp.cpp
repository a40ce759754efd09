// Opens the help.
#include "src/commands/modHelp.h"

#include "src/base/path_text.h"
#include "src/forms/Application.h"
#include "src/platform/file_system.h"
#include "src/platform/program_folders.h"
#include "src/platform/window_services.h"

void InitializeHelpFile(Application& app)
{
    app.sHelpFile = "Varnel.HLP";
}

// The help document in the program's own folder. If it is missing there, the window services fall back to the
// installed one.
static std::string sHelpDocument(const Application& app)
{
    const std::string sFolder = sWithSeparator(app.svc.objProgramFolders.sOwnFolder()) + "Help";
    const std::string sDocument = sWithSeparator(sFolder) + sGetBaseName(app.sHelpFile) + ".html";
    return app.svc.objFileSystem.FileExists(sDocument) ? sDocument : app.sHelpFile;
}

void LaunchHelp(Application& app, std::int32_t lTopic)
{
    const bool bHasTopics = app.objTranslator.sLanguage != "Japanese";
    app.svc.objWindows.LaunchHelp(sHelpDocument(app), bHasTopics ? lTopic : kHelpNoTopic);
}
