// The varnel program: creates the platform services and starts the logic.
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "src/entry/modCommandText.h"
#include "src/entry/modMain.h"
#include "src/forms/Application.h"
#include "src/platform/files/file_saver.h"
#include "src/platform/image/base/picture_memory.h"
#include "src/platform/image/codec_image_file.h"
#include "src/platform/image/transform_module.h"
#include "src/platform/posix/posix_clock.h"
#include "src/platform/posix/posix_file_system.h"
#include "src/platform/posix/posix_ini_file.h"
#include "src/platform/posix/posix_locale.h"
#include "src/platform/posix/posix_named_mutex.h"
#include "src/platform/posix/posix_processes.h"
#include "src/platform/posix/posix_program_folders.h"
#include "src/platform/posix/process_setup.h"
#include "src/platform/qt/link/background_image.h"
#include "src/platform/qt/link/lazy_windows.h"

static void Run(const std::vector<std::string>& aArguments)
{
    PosixProgramFolders objFolders;
    FileSaver objSaver(IsSyncWanted());
    PosixIniFile objIniFile(objSaver);
    const std::string sIniFile = sSettingsFile(objFolders);
    PosixFileSystem objFileSystem(objSaver, [&](char cDrive) {
        return objIniFile.GetPrivateProfileString("Drives", std::string(1, cDrive), "", 4096, sIniFile);
    });
    PosixClock objClock;
    PosixLocale objLocale;
    PosixNamedMutex objNamedMutex;
    LazyWindows objWindows;
    CodecImageFile objCodecs(objFileSystem, objSaver);
    BackgroundImageFile objImageFile(objCodecs, objWindows);
    BufferImageUtility objImageUtility;
    LazyImageTransform objOperations;
    BackgroundImageTransform objImageTransform(objOperations, objWindows);
    LazyImageTransform objPreviewTransform;
    PosixProcessLauncher objProcessLauncher(objFileSystem);
    Application app(Services{objFileSystem, objIniFile, objClock, objLocale, objNamedMutex, objFolders,
                             objWindows, objImageFile, objImageUtility, objImageTransform,
                             objProcessLauncher});
    objWindows.Attach(app, objPreviewTransform);
    Main(app, sCommandText(aArguments));
    if (app.frmMain.Visible())
        objWindows.RunWindow();
    objWindows.Detach();
}

// The exit status is always 0, even on failure; callers read the report file.
int main(int nArguments, char** aArguments)
try {
    SetUpProcess();
    KeepPictureMemory();
    Run({aArguments + 1, aArguments + nArguments});
    return 0;
} catch (const std::exception& objError) {
    std::fprintf(stderr, "Error: %s\n", objError.what());
    return 0;
}
