// Messages for validation errors, for the form and for the command line.
#include "src/job/modValidation.h"

#include <limits>
#include <vector>

#include "src/base/path_text.h"
#include "src/base/text.h"
#include "src/forms/Application.h"
#include "src/job/modFileHelpers.h"
#include "src/job/modFileLists.h"
#include "src/platform/window_services.h"
#include "src/report/modReportMessage.h"
#include "src/translator/modTranslator.h"

namespace
{

/// Part of a message: text to translate, or a path.
struct Piece {
    std::string sText;
    bool bPath = false;
};
using Pieces = std::vector<Piece>;

}  // namespace

static Piece objPath(const std::string& sPath)
{
    return {sPath, true};
}

static std::string sJoinPieces(Application& app, const Pieces& aPieces)
{
    std::vector<std::string> aTexts;
    for (const Piece& objPiece : aPieces)
        aTexts.push_back(objPiece.bPath ? sPrintable(objPiece.sText) : sTranslate(app, objPiece.sText));
    return sJoin(aTexts, "\r\r");
}

// Messages shared by the form and the command line; empty for a code that belongs to only one.
static Pieces aSharedWords(const clsConversionOptions& objOptions)
{
    const Piece objOriginal = objPath(objOptions.sOriginalFile);
    const Piece objTarget = objPath(objOptions.sTargetFile);
    switch (objOptions.lErr) {
        case kErrOriginalFolder:
            return {{"Original Folder"},
                    objPath(sGetParentFolderName(objOptions.sOriginalFile)),
                    {"does not exist."}};
        case kErrTargetWildcard:
            return {{"Target File"},
                    objTarget,
                    {"cannot have a wildcard (*) in it unless the Original file does."}};
        case kErrEmptyFile:
            return {{"The Original or the Target file is empty"}};
        case kErrSpecialTargetWildcard:
            return {{"Target File"}, objTarget, {"cannot have a wildcard (*)."}};
        case kErrSpecialOriginalWildcard:
            return {{"Original File"}, objOriginal, {"cannot have a wildcard (*)."}};
        case kErrProcessNumber:
            return {{"Invalid Special Process Identifier specified"}};
        case kErrProcessOriginal:
            return {{"Invalid original file format/type for the Special Process specified."}};
        case kErrProcessTargetWildcard:
            return {{"Target File"}, objTarget, {"cannot have a wildcard (*) for this special process"}};
        case kErrTargetIsFolder:
            return {{"Target must be a specific file. Not a folder."}};
        case kErrNegativeWait:
            return {{"Wait time cannot be negative"}};
        case kErrTextOnly:
            return {
                {"Invalid original file format/type for the Special Process specified. Text Format only."}};
        case kErrSize:
            return {{"Invalid Width or Height"}};
        case kErrInterpolation:
            return {{"Unrecognized interpolation method"}};
        default:
            return {};
    }
}

// Keep the differing example paths and the double space in one of the folder questions: translations use
// these texts as keys.
static Pieces aFormWords(const clsConversionOptions& objOptions)
{
    switch (objOptions.lErr) {
        case kErrTargetNeedsWildcard:
            return {{"'Target File' must have wild card (*) since Original file has a wildcard."},
                    {"For example: 'C:\\MyFiles\\*.PDF'"}};
        case kErrTargetFolderOfPattern:
            return {{"Target Folder"},
                    objPath(sFolderOfPattern(objOptions.sTargetFile)),
                    {"does not exist. Create it?"}};
        case kErrOriginalFile:
            return {{"Original File"}, objPath(objOptions.sOriginalFile), {"does not exist."}};
        case kErrTargetFolder:
            return {{"Target Folder"},
                    objPath(sGetParentFolderName(objOptions.sTargetFile)),
                    {"does not exist.  Create it?"},
                    {"Create it?"}};
        case kErrTargetType:
            return {{"Invalid Target File type specified"}};
        default:
            return aSharedWords(objOptions);
    }
}

static Pieces aCommandLineWords(const clsConversionOptions& objOptions)
{
    switch (objOptions.lErr) {
        case kErrTargetNeedsWildcard:
            return {{"'Target File' must have wild card (*) since Original file has a wildcard."},
                    {"For example: 'C:\\MyFiles\\*.CSV'"}};
        case kErrTargetFolderOfPattern:
            return {
                {"Target Folder"}, objPath(sFolderOfPattern(objOptions.sTargetFile)), {"does not exist."}};
        case kErrTargetFolder:
            return {{"Target Folder"},
                    objPath(sGetParentFolderName(objOptions.sTargetFile)),
                    {"does not exist."},
                    {"Create it?"}};
        case kErrOriginalFile:
            return {{"Original File"}, objPath(objOptions.sOriginalFile), {"does not exist."}};
        case kErrTargetType:
            return {{"Invalid Target File type specified (/C# switch)."}};
        case kErrJobFile:
            return {{"Conversion Job File (*.VJB) specified in the command line (/J) does not exist."}};
        case kErrEmptyDetails:
            return {{"'Select Worksheets' cannot be empty. Please specify."}};
        case kErrConcatenateWithItself:
            return {{"Cannot concatenate a file with itself."}};
        case kErrNothingToReplace:
            return {{"String to find and replace is empty."}};
        case kErrReplacementLetter:
            return {{"Please select a valid character to replace the comma with."}};
        case kErrTypesMissing:
            return {{"Original or Target file type not properly specified. Specify /F# and /C#"}};
        default:
            return aSharedWords(objOptions);
    }
}

void ReportValidationErrorCommandLine(Application& app, clsConversionOptions& objOptions)
{
    const Pieces aPieces = aCommandLineWords(objOptions);
    const std::string sWords = sJoinPieces(app, aPieces);
    // The two target folder errors have no message here; the failed line is the only sign. Their words are
    // translated all the same, so that the language file learns them.
    const bool bSilent = objOptions.lErr == kErrTargetFolderOfPattern || objOptions.lErr == kErrTargetFolder;
    if (aPieces.empty() || bSilent)
        return;
    objOptions.sErr = sWords;
    ReportMessage(app, objOptions.sErr, objOptions.sLogFile, objOptions.bVerbose);
}

static void ShowError(Application& app, const std::string& sText)
{
    app.svc.objWindows.MsgBox(sText, sTranslate(app, "Error"), BoxIcon::Information, BoxButtons::Ok);
}

static bool bAsk(Application& app, const std::string& sText)
{
    return app.svc.objWindows.MsgBox(sText, sTranslate(app, "Error"), BoxIcon::Information,
                                     BoxButtons::YesNo) == BoxAnswer::Yes;
}

static void Focus(TextControl& txt, std::int32_t lLength = std::numeric_limits<std::int32_t>::max())
{
    if (!txt.Enabled())
        return;
    txt.SetFocus();
    txt.SelectFromStart(lLength);
}

// Selects as many characters as the target has. This oddity is intentional.
static void FocusOriginalFile(frmMain& frm)
{
    Focus(frm.cbOriginalFile, lLetters(frm.cbTargetFile.Text()));
}

static std::string sUnable(Application& app, const std::string& sText)
{
    return sTranslate(app, "Unable to add/update: ") + "\r\r" + sText;
}

static bool bOfferFolder(Application& app, const std::string& sWords, const std::string& sFolder)
{
    if (bAsk(app, sWords)) {
        CreateFolderPath(app, sFolder);
        return true;
    }
    Focus(app.frmMain.cbTargetFile);
    return false;
}

static bool bOfferMissingSource(Application& app, const std::string& sWords, const std::string& sSource)
{
    FocusOriginalFile(app.frmMain);
    if (sSource.empty()) {
        ShowError(app, sUnable(app, sTranslate(app, "Original File has not been specified.")));
        return false;
    }
    return bAsk(app, sUnable(app, sWords) + "\n\n" + sTranslate(app, "Add anyway?"));
}

static void AskAboutMismatch(Application& app, clsConversionOptions& objOptions)
{
    frmTypeMatchNotification& frm = app.frmTypeMatchNotification;
    frm.bContinue = false;  // the default if the notice is closed without a button
    app.svc.objWindows.ShowModal(frm);
    if (frm.bContinue)
        objOptions.lErr = 0;
    else
        Focus(app.frmMain.cbOriginalFile);
}

// Codes that only show a message box and set the focus.
static void ShowAndFocus(Application& app, std::int32_t lErr, const std::string& sWords)
{
    frmMain& frm = app.frmMain;
    if (lErr == kErrProcessOriginal || lErr == kErrTextOnly)
        Focus(frm.cbFileTypeOriginalSpecialized);
    if (lErr == kErrSize || lErr == kErrInterpolation)
        frm.tsSpecialProcessParameters.SelectTab(2);
    ShowError(app, sWords);
    if (lErr == kErrTargetWildcard)
        Focus(frm.cbTargetFile);
    else if (lErr == kErrSpecialOriginalWildcard)
        Focus(frm.cbOriginalFileSpecialized);
    else if (lErr == kErrSpecialTargetWildcard || lErr == kErrProcessTargetWildcard ||
             lErr == kErrTargetIsFolder)
        Focus(frm.cbTargetFileSpecialized);
    else if (lErr == kErrNegativeWait)
        Focus(frm.txtCommandLineWaitTimeInSeconds);
}

bool bReportValidationErrorGUI(Application& app, clsConversionOptions& objOptions)
{
    const std::string sWords = sJoinPieces(app, aFormWords(objOptions));
    switch (objOptions.lErr) {
        case kErrTargetFolderOfPattern:
            return bOfferFolder(app, sWords, sFolderOfPattern(objOptions.sTargetFile));
        case kErrTargetFolder:
            return bOfferFolder(app, sWords, sGetParentFolderName(objOptions.sTargetFile));
        case kErrOriginalFile:
            return bOfferMissingSource(app, sWords, objOptions.sOriginalFile);
        case kErrTypeMismatchNotice:
            AskAboutMismatch(app, objOptions);
            return false;
        case kErrOriginalFolder:
            ShowError(app, sWords);
            FocusOriginalFile(app.frmMain);
            ShowError(app, sUnable(app, sWords));
            return false;
        case kErrTargetNeedsWildcard:
            ShowError(app, sWords);
            Focus(app.frmMain.cbTargetFile);
            ShowError(app, sUnable(app, sWords));
            return false;
        default:
            if (sWords.empty())
                ShowError(app, sUnable(app, ""));
            else
                ShowAndFocus(app, objOptions.lErr, sWords);
            return false;
    }
}
