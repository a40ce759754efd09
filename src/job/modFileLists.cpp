// Walks folders and collects the files that match a pattern.
#include "src/job/modFileLists.h"

#include <algorithm>
#include <set>
#include <string_view>

#include "src/base/path_text.h"
#include "src/base/text.h"
#include "src/forms/Application.h"
#include "src/forms/scope_guards.h"
#include "src/job/modFileHelpers.h"
#include "src/platform/file_system.h"
#include "src/platform/window_services.h"
#include "src/translator/modTranslator.h"

constexpr std::int32_t kPanelLoading = 2;

namespace
{

/// State shared by all folders of a walk.
struct Walk {
    Application& app;
    const std::string& sPattern;
    std::vector<std::string>& colFiles;
    bool bRecurse;
    std::vector<std::string>* pUnreadable;
    std::set<std::string> aRealPaths;  ///< folders visited so far

    bool bPaused() const
    {
        app.svc.objWindows.DoEvents();
        return !app.frmMain.bRunning;
    }
};

}  // namespace

// The folder's path with links resolved. Only links need to be looked up on disk.
static std::string sRealPathOf(const Walk& objWalk, const std::string& sParentReal,
                               const std::string& sFolder, const std::string& sName, bool bLink)
{
    if (bLink)
        return objWalk.app.svc.objFileSystem.sRealPath(sFolder);
    return (sParentReal == "/" ? "" : sParentReal) + "/" + sName;
}

static std::int32_t lWalkFolder(Walk& objWalk, std::string& sFolder, const std::string& sReal);

// False if the run was paused. Real folders are always walked; a linked folder is skipped if its target was
// already visited.
static bool bWalkSubfolders(Walk& objWalk, const std::string& sFolder, const std::string& sReal,
                            const FolderListing& objListing)
{
    objWalk.aRealPaths.insert(sReal);
    for (const std::string& sName : objListing.aSubfolders) {
        if (objWalk.bPaused())
            return false;
        std::string sSubfolder = sFolder + sName;
        const bool bLink = objListing.aLinks.contains(sName);
        const std::string sSubfolderReal = sRealPathOf(objWalk, sReal, sSubfolder, sName, bLink);
        if (bLink && objWalk.aRealPaths.contains(sSubfolderReal))
            continue;
        if (lWalkFolder(objWalk, sSubfolder, sSubfolderReal) == kListNoFolder && objWalk.pUnreadable &&
            bFolderExists(objWalk.app, sSubfolder))
            objWalk.pUnreadable->push_back(sSubfolder);
    }
    return true;
}

// A pause leaves the hourglass on; the caller restores the pointer.
static std::int32_t lWalkFolder(Walk& objWalk, std::string& sFolder, const std::string& sReal)
{
    Application& app = objWalk.app;
    FolderListing objListing;
    if (!app.svc.objFileSystem.ListFolder(sFolder, objListing))
        return kListNoFolder;
    if (!bEndsInSeparator(sFolder))
        sFolder += cSeparatorOf(sFolder);
    BusyPointer objPointer(app);
    const auto lPaused = [&objPointer] {
        objPointer.LeaveOn();
        return kListPaused;
    };
    app.frmMainMDI.sbMain.SetPanel(kPanelLoading, sTranslate(app, "Creating File List: ") + sFolder);
    app.svc.objWindows.DoEvents();
    for (const std::string& sName : objListing.aFiles) {
        if (objWalk.bPaused())
            return lPaused();
        if (bMatchesPattern(objWalk.sPattern, sGetExtensionName(sName)))
            objWalk.colFiles.push_back(sFolder + sName);
    }
    if (objWalk.bRecurse && !bWalkSubfolders(objWalk, sFolder, sReal, objListing))
        return lPaused();
    return 0;
}

std::string sUnreadableFolder(Application& app, const std::string& sFolder)
{
    return sTranslate(app, "Unable to read folder") + ": " + sFolder;
}

static bool bListWildcard(Application& app, clsConversionOptions& objOptions,
                          std::vector<std::string>& colFiles, std::vector<std::string>* pUnreadable)
{
    const std::string sFolderAsGiven = sFolderOfPattern(objOptions.sOriginalFile);
    std::string sFolder = sFolderAsGiven;
    const std::string sPattern = sPatternOfSource(objOptions.sOriginalFile);
    if (lAddFolderFiles(app, sFolder, sPattern, colFiles, objOptions.bDoSubfolders, pUnreadable) !=
        kListNoFolder)
        return true;
    objOptions.sErr = bFolderExists(app, sFolderAsGiven)
                          ? sUnreadableFolder(app, sFolderAsGiven)
                          : sTranslate(app, "Folder: ") + sFolderAsGiven + sTranslate(app, " does not exist");
    return false;
}

static bool bListOneFile(Application& app, clsConversionOptions& objOptions,
                         std::vector<std::string>& colFiles)
{
    if (app.svc.objFileSystem.FileExists(objOptions.sOriginalFile)) {
        colFiles.push_back(objOptions.sOriginalFile);
        return true;
    }
    objOptions.sErr =
        sTranslate(app, "File: ") + objOptions.sOriginalFile + sTranslate(app, " does not exist");
    return false;
}

bool bCreateFileList(Application& app, clsConversionOptions& objOptions, std::vector<std::string>& colFiles,
                     std::vector<std::string>* pUnreadable)
{
    const BusyPointer objPointer(app);
    return bHasWildcard(objOptions.sOriginalFile) ? bListWildcard(app, objOptions, colFiles, pUnreadable)
                                                  : bListOneFile(app, objOptions, colFiles);
}

std::int32_t lAddFolderFiles(Application& app, std::string& sFolder, const std::string& sPattern,
                             std::vector<std::string>& colFiles, bool bRecurse,
                             std::vector<std::string>* pUnreadable)
{
    Walk objWalk{app, sPattern, colFiles, bRecurse, pUnreadable, {}};
    return lWalkFolder(objWalk, sFolder, bRecurse ? app.svc.objFileSystem.sRealPath(sFolder) : "");
}

bool bMatchesPattern(const std::string& sPattern, const std::string& sExtension)
{
    return sPattern == "*.*" || (sPattern.size() == sExtension.size() + 2 && sPattern.starts_with("*.") &&
                                 bEqualIgnoringCase(std::string_view(sPattern).substr(2), sExtension));
}

std::string sFolderOfPattern(const std::string& sSource)
{
    return sSource.substr(0, sSource.find('*'));
}

std::string sPatternOfSource(const std::string& sSource)
{
    return sSource.substr(std::min(sSource.find('*'), sSource.size()));
}

bool bHasWildcard(const std::string& sPath)
{
    return bContains(sPath, "*");
}
