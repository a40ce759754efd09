// Parses the command text.
#include "src/entry/modCommandLineParser.h"

#include <algorithm>
#include <array>

#include "src/base/clsConversionOptions.h"
#include "src/base/number_text.h"
#include "src/base/path_text.h"
#include "src/base/raised_error.h"
#include "src/base/text.h"
#include "src/commands/modHelp.h"
#include "src/entry/modCommandText.h"
#include "src/forms/Application.h"
#include "src/job/modFileHelpers.h"
#include "src/job/modFileTypes.h"
#include "src/job/modTargetNaming.h"
#include "src/job/modValidation.h"
#include "src/platform/locale.h"
#include "src/platform/program_folders.h"
#include "src/report/modReportMessage.h"
#include "src/translator/modTranslator.h"

constexpr std::int32_t kErrTypeNotSpecified = -202;
// /0 and /j are accepted but unused: the details are slots 1 to 20.
constexpr std::int32_t kFirstDetail = 1;
constexpr std::int32_t kLastDetail = 20;

using Parameters = std::array<std::string, 22>;

std::int32_t iCountFields(const std::string& sText, char cDelimiter)
{
    return static_cast<std::int32_t>(std::count(sText.begin(), sText.end(), cDelimiter)) + 1;
}

// Length in bytes of the first UTF-8 character.
static std::size_t nFirstCharacterSize(const std::string& sText)
{
    std::size_t n = sText.empty() ? 0 : 1;
    while (n < sText.size() && (static_cast<unsigned char>(sText[n]) & 0xC0) == 0x80)
        ++n;
    return n;
}

static std::string sCutField(const std::string& sField, std::string& sFirstChar)
{
    const std::size_t nFirst = nFirstCharacterSize(sField);
    sFirstChar = sTrim(sField.substr(0, nFirst));
    return sTrim(sField.substr(nFirst));
}

std::string sGetField(std::int32_t n, const std::string& sText, char cDelimiter, std::string& sFirstChar)
{
    const std::vector<std::string> aFields = aSplit(sText + " ", cDelimiter);
    sFirstChar.clear();
    if (n < 1 || n > static_cast<std::int32_t>(aFields.size()))
        return "";
    return sCutField(aFields[static_cast<std::size_t>(n - 1)], sFirstChar);
}

// A path with a separator loses its quotes. One without is relative to the program's own folder and keeps
// them, so a quoted bare name fails unless bAlwaysUnquoted.
static std::string sPathOfArgument(const Application& app, const std::string& sArgument, bool bAlwaysUnquoted)
{
    const bool bHasSeparator =
        bContains(sArgument, "\\") || sArgument.find(kSlashOfPath) != std::string::npos;
    std::string sPath = sWithSlashes(sArgument);
    const std::string sHome = app.svc.objProgramFolders.sHomeFolder();
    if (sPath.starts_with("~/") && !sHome.empty())
        sPath = sWithSeparator(sHome) + sPath.substr(2);
    std::string sUnquoted = sReplaceAll(sPath, "\"", "");
    if (bHasSeparator)
        return sUnquoted;
    return sWithSeparator(app.svc.objProgramFolders.sOwnFolder()) + (bAlwaysUnquoted ? sUnquoted : sPath);
}

static void SetLogFile(Application& app, clsConversionOptions& objOptions, const std::string& sArgument)
{
    objOptions.sLogFile = sPathOfArgument(app, sArgument, false);
    const std::string sFolder = sGetParentFolderName(objOptions.sLogFile);
    if (!bFolderExists(app, sFolder))
        CreateFolderPath(app, sFolder);
}

// Slot of a numbered parameter: /0 to /9, two unused slots, then /a to /j; -1 for any other letter.
static std::int32_t lParameterSlot(char cLetter)
{
    if (cLetter >= '0' && cLetter <= '9')
        return cLetter - '0';
    if (cLetter >= 'a' && cLetter <= 'j')
        return 12 + (cLetter - 'a');
    return -1;
}

// Applies one switch. False if it is unknown. May raise if its argument doesn't convert.
static bool bTakeSwitch(Application& app, char cLetter, const std::string& sArgument,
                        clsConversionOptions& objOptions, Parameters& aParam)
{
    const char cDecimalSign = app.svc.objLocale.cDecimalSign();
    switch (cLetter) {
        case 'S':
            objOptions.sOriginalFile = sPathOfArgument(app, sArgument, false);
            return true;
        case 'F':
            objOptions.lOriginalFileType = lToLong(sArgument, cDecimalSign);
            return true;
        case 'T':
            objOptions.sTargetFile = sPathOfArgument(app, sArgument, false);
            return true;
        case 'C':
            objOptions.lTargetFileType = lToLong(sArgument, cDecimalSign);
            return true;
        case 'V':
            objOptions.bVerbose = true;
            return true;
        case 'Z':
            objOptions.bVerboseLog = true;
            return true;
        case 'R':
            objOptions.bDoSubfolders = true;
            return true;
        case 'G':
            objOptions.bSaveInOriginalFolder = true;
            return true;
        case 'L':
            SetLogFile(app, objOptions, sArgument);
            return true;
        case 'B':
            objOptions.sLogAsConversionJobFile = sPathOfArgument(app, sArgument, false);
            return true;
        case 'J':
            objOptions.sCLBatchJobFile = sPathOfArgument(app, sArgument, true);
            return true;
        case 'P':
            objOptions.sActionToDo = "S";
            objOptions.lSpecialProcess = lToLong(sArgument, cDecimalSign);
            return true;
        case 'O':
            objOptions.bOpenButDoNotRun = true;
            return true;
        case '?':
            LaunchHelp(app, kHelpCommandLine);
            return true;
        default:
            break;
    }
    const std::int32_t lSlot = lParameterSlot(cLetter);
    if (lSlot < 0)
        return false;
    aParam[static_cast<std::size_t>(lSlot)] = sWithSlashes(sArgument);
    return true;
}

// Applies all switches and returns the unknown ones.
static std::string sTakeSwitches(Application& app, const std::string& sCommandLine,
                                 clsConversionOptions& objOptions, Parameters& aParam)
{
    std::string sUnknown;
    // The same fields as sGetField's, cut once: a text may have thousands of them.
    const std::vector<std::string> aFields = aSplit(sCommandLine + " ", '/');
    for (std::size_t i = 1; i < aFields.size(); ++i) {
        std::string sLetter;
        const std::string sArgument = sCutField(aFields[i], sLetter);
        bool bKnown = true;
        try {
            bKnown = sLetter.size() == 1 && bTakeSwitch(app, sLetter[0], sArgument, objOptions, aParam);
        } catch (const clsRaisedError&) {
            // A malformed number leaves its field unchanged.
        }
        if (!bKnown)
            sUnknown += " /" + sLetter;
    }
    return sUnknown;
}

static void LookUpType(const std::string& sFile, std::int32_t& lType)
{
    if (lType == kNoFileType)
        lType = lFileTypeFromExtension(sExtensionOfPath(sFile));
}

static void FindMissingTypes(clsConversionOptions& objOptions)
{
    if (objOptions.lOriginalFileType != kNoFileType && objOptions.lTargetFileType != kNoFileType)
        return;
    LookUpType(objOptions.sOriginalFile, objOptions.lOriginalFileType);
    LookUpType(objOptions.sTargetFile, objOptions.lTargetFileType);
    if (objOptions.sActionToDo == "S") {
        // A special process never changes the type; this overrides even an explicit target type.
        if (objOptions.lOriginalFileType != kNoFileType)
            objOptions.lTargetFileType = objOptions.lOriginalFileType;
        else
            objOptions.lOriginalFileType = objOptions.lTargetFileType;
    }
    const bool bMissing =
        objOptions.lOriginalFileType == kNoFileType || objOptions.lTargetFileType == kNoFileType;
    if (bMissing && objOptions.sCLBatchJobFile.empty())
        objOptions.lErr = kErrTypeNotSpecified;
}

bool bParseCommandLine(Application& app, const std::string& sCommandLine, clsConversionOptions& objOptions)
{
    app.bCommandLineMode = !sCommandLine.empty();
    if (sCommandLine.empty())
        return false;
    objOptions.sExtraParams.clear();
    Parameters aParam;
    const std::string sUnknown = sTakeSwitches(app, sCommandLine, objOptions, aParam);
    FindMissingTypes(objOptions);
    if (!sUnknown.empty())
        ReportMessage(app,
                      sTranslate(app,
                                 "One or more command line arguements were not recognized. Command line IS "
                                 "case sensitive. Check:") +
                          sUnknown,
                      objOptions.sLogFile, objOptions.bVerbose);
    for (std::int32_t n = kFirstDetail; n <= kLastDetail; ++n)
        objOptions.sExtraParams += aParam[static_cast<std::size_t>(n)] + "^";
    if (objOptions.bSaveInOriginalFolder)
        objOptions.sTargetFile = sPatternBesideSource(objOptions.sOriginalFile, objOptions.lTargetFileType);
    ValidateRequest(app, objOptions);
    if (objOptions.lErr == 0)
        return true;
    ReportValidationErrorCommandLine(app, objOptions);
    return false;
}
