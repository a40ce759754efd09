// The main form: task and log tables, the fields of both actions, and the state of a run.
// Room: forms.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>

#include "src/controls/controls.h"
#include "src/controls/grid.h"
#include "src/forms/clsMRU.h"
#include "src/forms/window_place.h"

/// Tasks are rows 1 to Rows() - 2 of fgToDo, between the header and the marker row.
constexpr std::int32_t kToDoColumns = 11;
constexpr std::int32_t kLogColumns = 12;
/// Details strings are stored for process numbers 0 to 100.
constexpr std::int32_t kSpecialProcessSlots = 101;

struct frmMain : Form {
    frmMain() : Form("frmMain") {}

    // Tables
    Grid fgToDo{*this, "fgToDo", kToDoColumns};
    Grid fgLog{*this, "fgLog", kLogColumns};
    TabStrip ts{*this, "ts"};

    // Choice of action
    OptionButton rbActionToDoConversion{*this, "rbActionToDo(0)"};
    OptionButton rbActionToDoSpecialized{*this, "rbActionToDo(1)"};
    Frame frameSpecializedAction{*this, "frameSpecializedAction"};
    Frame frameCF{*this, "frameCF"};
    Frame frameSpecialProcessParameters{*this, "frameSpecialProcessParameters"};
    TabStrip tsSpecialProcessParameters{*this, "tsSpecialProcessParameters"};
    Frame frameTargetFile{*this, "frameTargetFile"};
    Frame frameTargetFileSpecialized{*this, "frameTargetFileSpecialized"};
    Frame frameImageViewer{*this, "frameImageViewer"};
    Frame frameZoomPercentage{*this, "frameZoomPercentage"};

    // Conversion
    ComboBox cbOriginalFile{*this, "cbOriginalFile"};
    ComboBox cbFileTypeOriginal{*this, "cbFileTypeOriginal"};
    Label lblFileTypeOriginal{*this, "lblFileTypeOriginal"};
    CheckBox cbDoSubfolders{*this, "cbDoSubfolders"};
    ComboBox cbTargetFile{*this, "cbTargetFile"};
    ComboBox cbFileTypeTarget{*this, "cbFileTypeTarget"};
    CheckBox cbSaveToOriginalFolder{*this, "cbSaveToOriginalFolder"};
    CommandButton cmdSelectSourceFile{*this, "cmdSelectSourceFile"};
    CommandButton cmdSelectTargetFile{*this, "cmdSelectTargetFile"};
    CommandButton picSelectTargetFile{*this, "picSelectTargetFile"};
    CommandButton cmdLaunchOriginal{*this, "cmdLaunchOriginal"};
    CommandButton cmdLaunchTarget{*this, "cmdLaunchTarget"};
    CommandButton cmdImageConversionAdvancedOptions{*this, "cmdImageConversionAdvancedOptions"};

    // Special process
    ComboBox cbSpecialProcesses{*this, "cbSpecialProcesses"};
    ComboBox cbOriginalFileSpecialized{*this, "cbOriginalFileSpecialized"};
    ComboBox cbFileTypeOriginalSpecialized{*this, "cbFileTypeOriginalSpecialized"};
    CheckBox cbDoSubfoldersSpecialized{*this, "cbDoSubfoldersSpecialized"};
    ComboBox cbTargetFileSpecialized{*this, "cbTargetFileSpecialized"};
    CheckBox cbSaveToOriginalFolderSpecialized{*this, "cbSaveToOriginalFolderSpecialized"};
    CommandButton cmdSelectTargetFileSpecialized{*this, "cmdSelectTargetFileSpecialized"};

    // Launch
    ComboBox cbCommandLine{*this, "cbCommandLine"};
    ComboBox cbCommandLineArguments{*this, "cbCommandLineArguments"};
    ComboBox cbCommandLineWindowState{*this, "cbCommandLineWindowState"};
    ComboBox cbCommandLineThreadPriority{*this, "cbCommandLineThreadPriority"};
    TextBox txtCommandLineWaitTimeInSeconds{*this, "txtCommandLineWaitTimeInSeconds"};

    // Buttons of the form, of the toolbar tbMain and of its drop-down
    CommandButton cmdAdd{*this, "cmdAdd"};
    CommandButton cmdUpdate{*this, "cmdUpdate"};
    CommandButton cmdRemove{*this, "cmdRemove"};
    CommandButton cmdPause{*this, "cmdPause"};
    Action keyNew{*this, "keyNew"};
    Action keyOpen{*this, "keyOpen"};
    Action keyAdd{*this, "keyAdd"};
    Action keyRemove{*this, "keyRemove"};
    Action keyUpdate{*this, "keyUpdate"};
    Action keyRewind{*this, "keyRewind"};
    Action keyConvert{*this, "keyConvert"};
    Action keyPause{*this, "keyPause"};
    Action KeySave{*this, "KeySave"};
    Action KeySaveAs{*this, "KeySaveAs"};
    Action KeyOpen{*this, "KeyOpen"};
    Action KeySaveLogAsConversionJob{*this, "KeySaveLogAsConversionJob"};

    // State of a run
    bool bRunning = false;              ///< a pause clears it; the run ends when it sees that
    std::int32_t lRunsInProgress = 0;   ///< runs that were begun and haven't ended, one inside the other
    bool bRunStopped = false;           ///< the run is to end without finishing its file
    std::int64_t lJobStartTick = 0;     ///< in milliseconds of the tick counter
    std::int32_t lResumeFileIndex = 0;  ///< position in a wildcard task's file list, from 1; 0 for none
    std::string sCurrentFile;           ///< file being processed

    // Last values passed to the image library: a malformed details field keeps them
    std::int32_t lTIFFCompression = 0;
    std::int32_t lJPEGQuality = 75;

    // Editing state
    std::string sActionToDo = "C";       ///< "C" or "S": selects the set of fields in use
    std::int32_t lConversionMethod = 1;  ///< 1 for "C", 4 for "S"
    bool bDirtyConversionItem = false;   ///< the fields differ from their row
    std::string sImageConversionOptions;
    std::string sCurrentJobFile;     ///< "" at start, "*" after New, else the job file's path
    bool bToDoGridWasSetUp = false;  ///< the first setup formats the table differently from later ones

    // Settings
    bool bAutoLoadImages = true;
    bool bDeleteOriginalFileAfterProcessing = false;
    bool bTryAutodetectIfFailed = true;
    std::string sLogFile;                                        ///< report file
    std::array<std::string, kSpecialProcessSlots> asSP_Details;  ///< last details string of each process

    WindowPlace objPlace;

    // Most recently used texts of the combo boxes
    clsMRU mruSource;
    clsMRU mruTarget;
    clsMRU mruSourceSpecialized;
    clsMRU mruTargetSpecialized;
    clsMRU mruCommandLine;
    clsMRU mruCommandLineArguments;

    // Lower-case extension to list index, filled together with the two combo boxes
    std::map<std::string, std::int32_t> colExtensionsOriginal;
    std::map<std::string, std::int32_t> colExtensionsTarget;
};
