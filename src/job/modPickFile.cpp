// Shows file and folder dialogs.
#include "src/job/modPickFile.h"

#include "src/base/path_text.h"
#include "src/base/text.h"
#include "src/forms/Application.h"
#include "src/platform/file_system.h"
#include "src/platform/window_services.h"
#include "src/translator/modTranslator.h"

// Dialogs know nothing of drives, separators and letters in another case, so they get the host's path.
static std::string sHostFolder(const Application& app, const std::string& sFolder)
{
    if (sFolder.empty() || !app.svc.objFileSystem.FolderExists(sFolder))
        return "";
    return app.svc.objFileSystem.sHostPathOfExisting(sFolder).value_or("");
}

std::string sPickFile(Application& app, const std::string& sTitle, const std::string& sFilter,
                      std::int32_t& lFilterIndex)
{
    return sPickFileInFolder(app, sTitle, sFilter, lFilterIndex, "");
}

std::string sPickFileInFolder(Application& app, const std::string& sTitle, const std::string& sFilter,
                              std::int32_t& lFilterIndex, const std::string& sStartPath)
{
    FilePicker objPicker{sTitle, sFilter, lFilterIndex, bTitleSaves(app, sTitle),
                         sHostFolder(app, sFolderOfPath(sStartPath))};
    const std::string sPath = app.svc.objWindows.sPickFile(objPicker);
    lFilterIndex = objPicker.lFilterIndex;
    return sPath;
}

std::string sPickFolder(Application& app, const std::string& sStartFolder)
{
    return app.svc.objWindows.sPickFolder(
        sTranslate(app, "Browse For Folder"),
        sHostFolder(app, std::string(sWithoutTrailingSeparators(sStartFolder))));
}

bool bTitleSaves(Application& app, const std::string& sTitle)
{
    return bContainsIgnoringCase(sTitle, sTranslate(app, "save"));
}
