// What one process has: the services of the platform, the forms, and the state that all routines share.
// Room: forms.
#pragma once

#include <string>

#include "src/forms/frmMain.h"
#include "src/forms/frmMainMDI.h"
#include "src/forms/frmPleaseWait.h"
#include "src/forms/frmScheduler.h"
#include "src/forms/frmTypeMatchNotification.h"
#include "src/forms/translator_state.h"

class Clock;
class FileSystem;
class ImageFile;
class ImageTransform;
class ImageUtility;
class IniFile;
class Locale;
class NamedMutex;
class ProcessLauncher;
class ProgramFolders;
class WindowServices;

/// The platform's services, lent for the life of the Application.
struct Services {
    FileSystem& objFileSystem;
    IniFile& objIniFile;
    Clock& objClock;
    Locale& objLocale;
    NamedMutex& objNamedMutex;
    ProgramFolders& objProgramFolders;
    WindowServices& objWindows;
    ImageFile& ImageFile1;
    ImageUtility& ImageUtility1;
    ImageTransform& ImageTransform1;
    ProcessLauncher& objProcessLauncher;
};

/// Made once by main (or by a test, with services in memory) and handed to the routines as their first
/// argument.
struct Application {
    explicit Application(Services objServices) : svc(objServices) {}

    Services svc;

    std::string sIniFile;           ///< path of the settings file
    std::string sHelpFile;          ///< name of the help file
    bool bCommandLineMode = false;  ///< the run loop and the validation show no box of their own
    bool bInternalGridChange =
        false;  ///< code, not the user, is changing a grid or a field: its handlers do nothing
    bool bMainFormsLoaded = false;     ///< frame and main form have their lists, tables and settings
    bool bReportFailureShown = false;  ///< one box about an unwritable report file is enough
    bool bDoubleByteLocale = false;  ///< the locale's letters are wide: no bold headers, a wider "Do" column

    TranslatorState objTranslator;
    ::frmMainMDI frmMainMDI;
    ::frmMain frmMain;
    ::frmPleaseWait frmPleaseWait;
    ::frmTypeMatchNotification frmTypeMatchNotification;
    ::frmScheduler frmScheduler;
};
