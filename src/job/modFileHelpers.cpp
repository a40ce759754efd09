// Checks for files and folders; creates and deletes them.
#include "src/job/modFileHelpers.h"

#include <vector>

#include "src/base/path_text.h"
#include "src/base/text.h"
#include "src/commands/modRunState.h"
#include "src/forms/Application.h"
#include "src/platform/clock.h"
#include "src/platform/file_system.h"
#include "src/platform/window_services.h"

/// The host takes no longer path: reject it before its first folders are made.
constexpr std::size_t kLongestPath = 4096;
constexpr int kFurtherTries = 20;
constexpr std::int32_t kMillisecondsBetweenTries = 1000;
// How often a wait handles events: often enough for a click to feel immediate, rarely enough to use no CPU.
constexpr std::int32_t kEventIntervalMilliseconds = 20;

void CreateFolderPath(Application& app, const std::string& sFolder)
{
    // Climb to the first existing ancestor, then create the rest top-down. Iterative, because paths from job
    // files can be arbitrarily deep.
    std::vector<std::string> aMissing;
    std::string sPath(sWithoutTrailingSeparators(sFolder));
    if (sPath.size() > kLongestPath)
        return;
    while (!sPath.empty() && !bFolderExists(app, sPath)) {
        aMissing.push_back(sPath);
        sPath = sGetParentFolderName(sPath);
    }
    for (auto it = aMissing.rbegin(); it != aMissing.rend(); ++it)
        app.svc.objFileSystem.CreateFolder(*it);
}

bool bFolderExists(Application& app, const std::string& sFolder)
{
    return app.svc.objFileSystem.FolderExists(sFolder);
}

bool bFileExists(Application& app, const std::string& sPath)
{
    const std::string sTrimmed = sTrim(sPath);
    return !sTrimmed.empty() && app.svc.objFileSystem.FileExists(sTrimmed);
}

bool bDeleteFileOnce(Application& app, const std::string& sFile)
{
    return app.svc.objFileSystem.ClearReadOnly(sFile) && app.svc.objFileSystem.DeleteFile(sFile);
}

// Waits while handling events. Ends early if the run is stopped.
static void Wait(Application& app, std::int32_t lMilliseconds)
{
    const std::int64_t lStartTick = app.svc.objClock.GetTickCount();
    do {
        app.svc.objClock.Sleep(kEventIntervalMilliseconds);
        app.svc.objWindows.DoEvents();
        RaiseIfStopped(app);
    } while (app.svc.objClock.GetTickCount() - lStartTick < lMilliseconds);
}

bool bDeleteFileRetrying(Application& app, const std::string& sFile, const std::function<bool()>& bMay)
{
    for (int lTry = 0; lTry <= kFurtherTries; ++lTry) {
        if (!bFileExists(app, sFile))
            return true;
        if (bMay && !bMay())
            return false;
        if (bDeleteFileOnce(app, sFile))
            return true;
        Wait(app, kMillisecondsBetweenTries);
    }
    return false;
}

bool bFolderHasEntries(Application& app, const std::string& sPath)
{
    FolderListing objListing;
    return !sPath.empty() && app.svc.objFileSystem.ListFolder(sPath, objListing) &&
           !(objListing.aFiles.empty() && objListing.aSubfolders.empty());
}
