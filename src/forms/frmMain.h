// The main form: the task and log tables, the fields of both actions, and the state of a run.
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

/// Task rows stand in fgToDo from row 1 to Rows() - 2, between the header and the marker row.
constexpr std::int32_t kToDoColumns = 11;
constexpr std::int32_t kLogColumns = 12;
/// Details strings are kept for the process numbers 0 to 100.
constexpr std::int32_t kSpecialProcessSlots = 101;

struct frmMain : Form {
    frmMain() : Form("frmMain") {}

    // Tables
    Grid fgToDo{*this, "fgToDo", kToDoColumns};
    Grid fgLog{*this, "fgLog", kLogColumns};
    TabStrip ts{*this, "ts"};

    // Which set of fields counts
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

    // Commands of the form, the toolbar tbMain and its drop-down
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
    bool bRunning = false;
    std::int64_t lJobStartTick = 0;     ///< milliseconds of the tick counter
    std::int32_t lResumeFileIndex = 0;  ///< position in a wildcard task's file list, from 1; 0 for none
    std::string sCurrentFile;           ///< the file in work

    // What the image library was last told: a details field that is no number leaves its value
    std::int32_t lTIFFCompression = 0;
    std::int32_t lJPEGQuality = 75;

    // State of the editing
    std::string sActionToDo = "C";       ///< "C" or "S": which set of fields counts
    std::int32_t lConversionMethod = 1;  ///< 1 for "C", 4 for "S"
    bool bDirtyConversionItem = false;   ///< the fields differ from their row
    std::string sImageConversionOptions;
    std::string sCurrentJobFile;     ///< "" at start, "*" after New, else the job file's path
    bool bToDoGridWasSetUp = false;  ///< the first set-up of the table formats it differently from later ones

    // Settings
    bool bAutoLoadImages = true;
    bool bDeleteOriginalFileAfterProcessing = false;
    bool bTryAutodetectIfFailed = true;
    std::string sLogFile;                                        ///< report file of the settings
    std::array<std::string, kSpecialProcessSlots> asSP_Details;  ///< the last details string of each process

    WindowPlace objPlace;

    // The texts last entered into the combo boxes of these names
    clsMRU mruSource;
    clsMRU mruTarget;
    clsMRU mruSourceSpecialized;
    clsMRU mruTargetSpecialized;
    clsMRU mruCommandLine;
    clsMRU mruCommandLineArguments;

    // Extension in lower case to the index of its entry, filled with the two combo boxes
    std::map<std::string, std::int32_t> colExtensionsOriginal;
    std::map<std::string, std::int32_t> colExtensionsTarget;
};
