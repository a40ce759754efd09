// Everything a process owns: platform services, forms and shared state.
// Room: forms.
#pragma once

#include <string>

#include "src/forms/dispatch_state.h"
#include "src/forms/editing_hooks.h"
#include "src/forms/frmAbout.h"
#include "src/forms/frmConversionOptions.h"
#include "src/forms/frmImageViewer.h"
#include "src/forms/frmLanguage.h"
#include "src/forms/frmMain.h"
#include "src/forms/frmMainMDI.h"
#include "src/forms/frmOptions.h"
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

/// References to the platform services, which must outlive the Application.
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

/// Created once by main (in tests, with in-memory services) and passed to routines as their first argument.
struct Application {
    explicit Application(Services objServices) : svc(objServices) {}

    Services svc;

    std::string sIniFile;              ///< path of the settings file
    std::string sHelpFile;             ///< name of the help file
    bool bCommandLineMode = false;     ///< the run loop and the validation show no message boxes
    bool bInternalGridChange = false;  ///< code is changing a grid or field: its handlers do nothing
    bool bMainFormsLoaded = false;     ///< the frame and main form are loaded: lists, tables and settings
    bool bReportFailureShown = false;  ///< the unwritable report file has been reported
    bool bDoubleByteLocale = false;    ///< East Asian locale: no bold headers, a wider "Do" column

    TranslatorState objTranslator;
    DispatchState objDispatch;
    EditingHooks objHooks;
    ::frmMainMDI frmMainMDI;
    ::frmMain frmMain;
    ::frmPleaseWait frmPleaseWait;
    ::frmTypeMatchNotification frmTypeMatchNotification;
    ::frmScheduler frmScheduler;
    ::frmConversionOptions frmConversionOptions;
    ::frmOptions frmOptions;
    ::frmLanguage frmLanguage;
    ::frmImageViewer frmImageViewer;
    ::frmAbout frmAbout;
};
