// The run request: the record that carries one piece of work through the program.
// Room: base.
#pragma once

#include <cstdint>
#include <string>

/// No file type: none was given, or the extension is unknown.
constexpr std::int32_t kNoFileType = -12345678;

/// Filled in from the command line or from a row of the task table, checked by the validation, and run by the
/// engine, which leaves the outcome in lErr (0 for success) and sErr (translated). The order of the fields is
/// fixed.
struct clsConversionOptions {
    std::string sActionToDo = "C";  ///< contains "C": conversion; otherwise "S": special process or launch
    std::string sCurrentBatchJobFile;
    std::string sOriginalFile;  ///< source path, may contain "*"; for a launch, the program
    std::int32_t lOriginalFileType = kNoFileType;
    std::string sTargetFile;  ///< target path, may contain "*"; for a launch, its arguments
    std::int32_t lTargetFileType = kNoFileType;
    bool bVerbose = false;     ///< also show reports in a message box
    bool bVerboseLog = false;  ///< report log rows even if the settings name no report file
    bool bDoSubfolders = false;
    bool bSaveInOriginalFolder = false;
    bool bExportFormula = false;         ///< copied from the row's flags; never read
    std::int32_t lConversionMethod = 1;  ///< 1: use the image library; any other value converts nothing
    std::string sExtraParams = "1";      ///< details: fields joined by "^"
    bool bOpenButDoNotRun = false;
    std::int32_t lSpecialProcess = 0;
    std::int32_t lCommandLineExitCode = 0;
    std::string sLogFile;
    std::string sLogAsConversionJobFile;
    std::string sCLBatchJobFile;
    std::string sErr;
    std::int32_t lErr = 0;
    // Never read, but part of the record: the values that reach the image library come from sExtraParams.
    std::int32_t lTiffCompression = 0;
    std::int32_t lJPEGQuality = 75;
    std::string sImageInfoTitle;
    std::string sImageInfoDescription;
    std::string sImageInfoDateTime;
    std::string sImageInfoAuthor;
    std::string sImageInfoCopyright;
    std::string sImageInfoEquipmentModel;
    std::string sImageInfoEquipmentType;
};
