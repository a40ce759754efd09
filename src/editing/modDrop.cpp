// Turns what is dropped into tasks.
#include "src/editing/modDrop.h"

#include <algorithm>

#include "src/base/path_text.h"
#include "src/base/text.h"
#include "src/editing/file_fields.h"
#include "src/editing/modTaskCommands.h"
#include "src/forms/Application.h"
#include "src/job/modFileHelpers.h"
#include "src/job/modFileTypes.h"
#include "src/job/modJobFiles.h"
#include "src/job/modTargetNaming.h"

static bool bIsJobFile(const std::string& sPath)
{
    return bEqualIgnoringCase(sGetExtensionName(sPath), "vjb");
}

void fgToDo_Drop(Application& app, const std::vector<std::string>& aPaths)
{
    if (aPaths.size() == 1 && bIsJobFile(aPaths.front())) {
        std::string sPath = aPaths.front();
        ConversionJobOpen(app, sPath);
        return;
    }
    const FileFields objFields = FieldsOfAction(app.frmMain);
    std::vector<std::string> aSorted = aPaths;
    std::sort(aSorted.begin(), aSorted.end());
    for (const std::string& sPath : aSorted) {
        const bool bFolder = bFolderExists(app, sPath);
        objFields.cbOriginalFile.SetText(
            bFolder ? sPatternInFolder(sPath, lSelectedFileType(objFields.cbFileTypeOriginal)) : sPath);
        AddFileToConvertGUI(app);
    }
}
