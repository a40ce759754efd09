// Picks and opens files.
#include "src/editing/modFileCommands.h"

#include <cstdint>

#include "src/base/path_text.h"
#include "src/commands/modDesktop.h"
#include "src/editing/file_fields.h"
#include "src/forms/Application.h"
#include "src/job/modFileHelpers.h"
#include "src/job/modFileLists.h"
#include "src/job/modFileTypes.h"
#include "src/job/modPickFile.h"
#include "src/job/modTargetNaming.h"
#include "src/platform/processes.h"
#include "src/platform/window_services.h"
#include "src/translator/modTranslator.h"

constexpr std::int32_t kViewOriginal = 0;
constexpr std::int32_t kViewTarget = 1;
constexpr std::int32_t kNormalPriority = 32;
constexpr std::int32_t kNormalWindow = 1;

static void ShowPathError(Application& app, const std::string& sText, const std::string& sPath)
{
    app.svc.objWindows.MsgBox(sTranslate(app, sText) + "\r\n\r\n" + sPath, sTranslate(app, "Error"),
                              BoxIcon::Information, BoxButtons::Ok);
}

void LaunchFileOrFolder(Application& app, const std::string& sPath)
{
    if (!bFileExists(app, sPath) && !bFolderHasEntries(app, sPath))
        ShowPathError(app, "File/Folder does not exist:", sPath);
    else if (!bOpenPath(app, sPath))
        ShowPathError(app, "Unable to open:", sPath);
}

void LaunchCommandLine(Application& app)
{
    const std::string sProgram = app.frmMain.cbCommandLine.Text();
    if (!bFileExists(app, sProgram)) {
        ShowPathError(app, "File does not exist:", sProgram);
        return;
    }
    const std::string sArguments = app.frmMain.cbCommandLineArguments.Text();
    // A document isn't a program: the desktop knows the one for it.
    if (!app.svc.objProcessLauncher.pStart({sProgram, sArguments, kNormalPriority, kNormalWindow}) &&
        !bOpenPath(app, sProgram))
        ShowPathError(app, "Unable to open:", sProgram);
}

static void LoadView(Application& app, std::int32_t lView)
{
    if (app.frmMain.bAutoLoadImages && app.objHooks.LoadImageViewer)
        app.objHooks.LoadImageViewer(app, lView);
}

// True if a file was picked.
static bool bPickInto(Application& app, ComboBox& cb, const std::string& sTitle, const std::string& sFilter)
{
    std::int32_t lFilterIndex = 1;
    const std::string sPath =
        sPickFileInFolder(app, sTranslate(app, sTitle), sFilter, lFilterIndex, cb.Text());
    if (sPath.empty())
        return false;
    cb.SetText(sPath);
    return true;
}

void SelectSourceFile(Application& app, const FileFields& objFields)
{
    const std::string sFilter = sFileFilterForType(lSelectedFileType(objFields.cbFileTypeOriginal));
    if (bPickInto(app, objFields.cbOriginalFile, "Select Original", sFilter))
        LoadView(app, kViewOriginal);
}

void SelectTargetFile(Application& app, const FileFields& objFields)
{
    const std::string sFilter = sFileFilterForType(lSelectedFileType(objFields.cbFileTypeTarget));
    if (bPickInto(app, objFields.cbTargetFile, "Select Target", sFilter))
        LoadView(app, kViewTarget);
}

void SelectCommandLine(Application& app)
{
    bPickInto(app, app.frmMain.cbCommandLine, "Select Program", "All files (*.*)|*.*");
}

static void PickFolderInto(Application& app, ComboBox& cb, std::int32_t lType)
{
    const std::string sFolder = sPickFolder(app, sFolderOfPath(cb.Text()));
    if (!sFolder.empty())
        cb.SetText(sPatternInFolder(sFolder, lType));
}

void SelectSourceFolder(Application& app, const FileFields& objFields)
{
    PickFolderInto(app, objFields.cbOriginalFile, lSelectedFileType(objFields.cbFileTypeOriginal));
}

void SelectTargetFolder(Application& app, const FileFields& objFields)
{
    PickFolderInto(app, objFields.cbTargetFile, lSelectedFileType(objFields.cbFileTypeTarget));
}
