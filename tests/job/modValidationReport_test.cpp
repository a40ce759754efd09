// Validation messages of the form and of the command line.
#include <gtest/gtest.h>

#include <list>
#include <map>

#include "src/job/modValidation.h"
#include "tests/fakes/control_watchers.h"
#include "tests/fakes/test_application.h"

static clsConversionOptions objFailed(std::int32_t lErr)
{
    clsConversionOptions objOptions;
    objOptions.sOriginalFile = "C:\\in\\*.bmp";
    objOptions.sTargetFile = "C:\\out\\*.jpg";
    objOptions.lErr = lErr;
    return objOptions;
}

/// The texts of the message boxes shown for a code.
static std::vector<std::string> aBoxesFor(std::int32_t lErr)
{
    TestApplication app;
    clsConversionOptions objOptions = objFailed(lErr);
    app.windows.answers.assign(3, BoxAnswer::No);
    EXPECT_FALSE(bReportValidationErrorGUI(app, objOptions));
    EXPECT_EQ(objOptions.lErr, lErr);
    std::vector<std::string> aTexts;
    for (const ScriptedWindows::Box& objBox : app.windows.boxes) {
        aTexts.push_back(objBox.text);
        EXPECT_EQ(objBox.title, "Error");
        EXPECT_EQ(objBox.icon, BoxIcon::Information);
    }
    return aTexts;
}

using Texts = std::vector<std::string>;

TEST(ReportValidationErrorGUI, ShowsTheMessageOfEachCode)
{
    EXPECT_EQ(aBoxesFor(-3), Texts{"Target Folder\r\rC:\\out\\\r\rdoes not exist. Create it?"});
    EXPECT_EQ(aBoxesFor(-5), Texts{"Target File\r\rC:\\out\\*.jpg\r\rcannot have a wildcard (*) in it unless "
                                   "the Original file does."});
    EXPECT_EQ(aBoxesFor(-6), Texts{"Target Folder\r\rC:\\out\r\rdoes not exist.  Create it?\r\rCreate it?"});
    EXPECT_EQ(aBoxesFor(-7), Texts{"Invalid Target File type specified"});
    EXPECT_EQ(aBoxesFor(-9), Texts{"The Original or the Target file is empty"});
    EXPECT_EQ(aBoxesFor(-11), Texts{"Target File\r\rC:\\out\\*.jpg\r\rcannot have a wildcard (*)."});
    EXPECT_EQ(aBoxesFor(-12), Texts{"Original File\r\rC:\\in\\*.bmp\r\rcannot have a wildcard (*)."});
    EXPECT_EQ(aBoxesFor(-101), Texts{"Invalid Special Process Identifier specified"});
    EXPECT_EQ(aBoxesFor(-102), Texts{"Invalid original file format/type for the Special Process specified."});
    EXPECT_EQ(aBoxesFor(-103),
              Texts{"Target File\r\rC:\\out\\*.jpg\r\rcannot have a wildcard (*) for this special process"});
    EXPECT_EQ(aBoxesFor(-105), Texts{"Target must be a specific file. Not a folder."});
    EXPECT_EQ(aBoxesFor(-106), Texts{"Wait time cannot be negative"});
    EXPECT_EQ(aBoxesFor(-112), Texts{"Invalid original file format/type for the Special Process specified. "
                                     "Text Format only."});
    EXPECT_EQ(aBoxesFor(-200), Texts{"Invalid Width or Height"});
    EXPECT_EQ(aBoxesFor(-201), Texts{"Unrecognized interpolation method"});
}

TEST(ReportValidationErrorGUI, ShowsMissingFolderAndMissingStarTwice)
{
    const std::string sFolder = "Original Folder\r\rC:\\in\r\rdoes not exist.";
    EXPECT_EQ(aBoxesFor(-1), (Texts{sFolder, "Unable to add/update: \r\r" + sFolder}));

    const std::string sStar =
        "'Target File' must have wild card (*) since Original file has a wildcard.\r\r"
        "For example: 'C:\\MyFiles\\*.PDF'";
    EXPECT_EQ(aBoxesFor(-2), (Texts{sStar, "Unable to add/update: \r\r" + sStar}));
}

TEST(ReportValidationErrorGUI, ShowsOnlyUnableForCodesWithoutAMessage)
{
    for (const std::int32_t lErr : {-8, -10, -104, -110, -111, -202, -999})
        EXPECT_EQ(aBoxesFor(lErr), Texts{"Unable to add/update: \r\r"}) << lErr;
}

TEST(ReportValidationErrorGUI, AsksWhetherToAddATaskWithoutItsSource)
{
    for (const BoxAnswer eAnswer : {BoxAnswer::Yes, BoxAnswer::No}) {
        TestApplication app;
        clsConversionOptions objOptions = objFailed(-4);
        objOptions.sOriginalFile = "C:\\in\\a.bmp";
        app.windows.answers = {eAnswer};

        EXPECT_EQ(bReportValidationErrorGUI(app, objOptions), eAnswer == BoxAnswer::Yes);

        ASSERT_EQ(app.windows.boxes.size(), 1u);
        EXPECT_EQ(app.windows.boxes[0].text,
                  "Unable to add/update: \r\rOriginal File\r\rC:\\in\\a.bmp"
                  "\r\rdoes not exist.\n\nAdd anyway?");
        EXPECT_EQ(app.windows.boxes[0].buttons, BoxButtons::YesNo);
        EXPECT_EQ(app.windows.boxes[0].icon, BoxIcon::Information);
    }
}

TEST(ReportValidationErrorGUI, ReportsAnUnspecifiedSource)
{
    TestApplication app;
    clsConversionOptions objOptions = objFailed(-4);
    objOptions.sOriginalFile = "";

    EXPECT_FALSE(bReportValidationErrorGUI(app, objOptions));

    ASSERT_EQ(app.windows.boxes.size(), 1u);
    EXPECT_EQ(app.windows.boxes[0].text, "Unable to add/update: \r\rOriginal File has not been specified.");
    EXPECT_EQ(app.windows.boxes[0].buttons, BoxButtons::Ok);
}

TEST(ReportValidationErrorGUI, CreatesTheFolderIfTheUserAgrees)
{
    for (const std::int32_t lErr : {-3, -6}) {
        TestApplication app;
        app.files.AddFolder("C:\\");
        clsConversionOptions objOptions = objFailed(lErr);
        app.windows.answers = {BoxAnswer::Yes};

        EXPECT_TRUE(bReportValidationErrorGUI(app, objOptions));

        EXPECT_TRUE(app.files.FolderExists("C:\\out"));
        EXPECT_EQ(app.windows.boxes[0].buttons, BoxButtons::YesNo);
    }
}

TEST(ReportValidationErrorGUI, CarriesOnEvenIfCreatingTheFolderFails)
{
    TestApplication app;
    app.files.AddFolder("C:\\");
    app.files.MakeReadOnly("C:\\");
    clsConversionOptions objOptions = objFailed(-6);
    app.windows.answers = {BoxAnswer::Yes};

    EXPECT_TRUE(bReportValidationErrorGUI(app, objOptions));
    EXPECT_FALSE(app.files.FolderExists("C:\\out"));
}

/// Name of the control that gets the focus for a code; "" for none.
static std::string sFocusFor(std::int32_t lErr, bool bEnabled = true)
{
    TestApplication app;
    app.windows.answers.assign(3, BoxAnswer::No);
    std::string sFocused;
    std::list<FocusWatcher> aWatchers;
    for (Control* pControl : app.frmMain.Controls()) {
        pControl->SetEnabled(bEnabled);
        aWatchers.emplace_back(*pControl, [&sFocused, pControl] { sFocused += pControl->sName(); });
    }
    clsConversionOptions objOptions = objFailed(lErr);
    bReportValidationErrorGUI(app, objOptions);
    return sFocused;
}

TEST(ReportValidationErrorGUI, FocusesTheOffendingField)
{
    const std::map<std::int32_t, std::string> aExpected{
        {-1, "cbOriginalFile"},
        {-2, "cbTargetFile"},
        {-3, "cbTargetFile"},
        {-4, "cbOriginalFile"},
        {-5, "cbTargetFile"},
        {-6, "cbTargetFile"},
        {-7, ""},
        {-9, ""},
        {-11, "cbTargetFileSpecialized"},
        {-12, "cbOriginalFileSpecialized"},
        {-13, "cbOriginalFile"},
        {-101, ""},
        {-102, "cbFileTypeOriginalSpecialized"},
        {-103, "cbTargetFileSpecialized"},
        {-105, "cbTargetFileSpecialized"},
        {-106, "txtCommandLineWaitTimeInSeconds"},
        {-112, "cbFileTypeOriginalSpecialized"},
        {-200, ""},
    };
    for (const auto& [lErr, sControl] : aExpected) {
        EXPECT_EQ(sFocusFor(lErr), sControl) << lErr;
        EXPECT_EQ(sFocusFor(lErr, false), "") << lErr;
    }
}

TEST(ReportValidationErrorGUI, SelectsTheSourceUpToTheTargetsLength)
{
    TestApplication app;
    app.frmMain.cbOriginalFile.SetText("0123456789");
    app.frmMain.cbTargetFile.SetText("\xC3\xA4 45");
    clsConversionOptions objOptions = objFailed(-1);
    bReportValidationErrorGUI(app, objOptions);
    EXPECT_EQ(app.frmMain.cbOriginalFile.SelLength(), 4);

    objOptions.lErr = -5;
    bReportValidationErrorGUI(app, objOptions);
    EXPECT_EQ(app.frmMain.cbTargetFile.SelLength(), 4);

    objOptions.lErr = -13;
    bReportValidationErrorGUI(app, objOptions);
    EXPECT_EQ(app.frmMain.cbOriginalFile.SelLength(), 10);
}

TEST(ReportValidationErrorGUI, ShowsTheSecondTabForAnInvalidSize)
{
    for (const std::int32_t lErr : {-200, -201}) {
        TestApplication app;
        clsConversionOptions objOptions = objFailed(lErr);
        bReportValidationErrorGUI(app, objOptions);
        EXPECT_EQ(app.frmMain.tsSpecialProcessParameters.SelectedTab(), 2);
    }
}

TEST(ReportValidationErrorGUI, LetsTheUserAcceptAMismatch)
{
    TestApplication app;
    clsConversionOptions objOptions = objFailed(-13);
    app.windows.on_show_modal = [&](Form& frm) {
        EXPECT_EQ(&frm, &app.frmTypeMatchNotification);
        app.frmTypeMatchNotification.bContinue = true;
    };

    EXPECT_FALSE(bReportValidationErrorGUI(app, objOptions));

    EXPECT_EQ(objOptions.lErr, 0);
    EXPECT_TRUE(app.windows.boxes.empty());
}

TEST(ReportValidationErrorGUI, TreatsAClosedNoticeAsCancelled)
{
    TestApplication app;
    app.frmTypeMatchNotification.bContinue = true;  // left over from an earlier notice
    clsConversionOptions objOptions = objFailed(-13);

    EXPECT_FALSE(bReportValidationErrorGUI(app, objOptions));
    EXPECT_EQ(objOptions.lErr, -13);
}

TEST(ReportValidationErrorGUI, TranslatesEachPartSeparately)
{
    TestApplication app;
    app.objTranslator.dictTranslations = {{"Error", "Fehler"},
                                          {"Target File", "Ziel"},
                                          {"cannot have a wildcard (*).", "darf keinen Stern haben."}};
    clsConversionOptions objOptions = objFailed(-11);

    bReportValidationErrorGUI(app, objOptions);

    EXPECT_EQ(app.windows.boxes[0].title, "Fehler");
    EXPECT_EQ(app.windows.boxes[0].text, "Ziel\r\rC:\\out\\*.jpg\r\rdarf keinen Stern haben.");
}

/// The message that the command line records for a code.
static std::string sReported(std::int32_t lErr)
{
    TestApplication app;
    app.files.AddFolder("/logs");
    clsConversionOptions objOptions = objFailed(lErr);
    objOptions.sLogFile = "/logs/report.txt";
    ReportValidationErrorCommandLine(app, objOptions);
    EXPECT_EQ(objOptions.lErr, lErr);
    EXPECT_TRUE(app.windows.boxes.empty());
    EXPECT_EQ(app.files.Content("/logs/report.txt"), objOptions.sErr.empty() ? "" : objOptions.sErr + "\n");
    return objOptions.sErr;
}

TEST(ReportValidationErrorCommandLine, RecordsTheMessageOfEachCode)
{
    const std::map<std::int32_t, std::string> aExpected{
        {-1, "Original Folder\r\rC:\\in\r\rdoes not exist."},
        {-2,
         "'Target File' must have wild card (*) since Original file has a wildcard.\r\rFor example: "
         "'C:\\MyFiles\\*.CSV'"},
        {-4, "Original File\r\rC:\\in\\*.bmp\r\rdoes not exist."},
        {-5,
         "Target File\r\rC:\\out\\*.jpg\r\rcannot have a wildcard (*) in it unless the Original file "
         "does."},
        {-7, "Invalid Target File type specified (/C# switch)."},
        {-8, "Conversion Job File (*.VJB) specified in the command line (/J) does not exist."},
        {-9, "The Original or the Target file is empty"},
        {-10, "'Select Worksheets' cannot be empty. Please specify."},
        {-11, "Target File\r\rC:\\out\\*.jpg\r\rcannot have a wildcard (*)."},
        {-12, "Original File\r\rC:\\in\\*.bmp\r\rcannot have a wildcard (*)."},
        {-101, "Invalid Special Process Identifier specified"},
        {-102, "Invalid original file format/type for the Special Process specified."},
        {-103, "Target File\r\rC:\\out\\*.jpg\r\rcannot have a wildcard (*) for this special process"},
        {-104, "Cannot concatenate a file with itself."},
        {-105, "Target must be a specific file. Not a folder."},
        {-106, "Wait time cannot be negative"},
        {-110, "String to find and replace is empty."},
        {-111, "Please select a valid character to replace the comma with."},
        {-112, "Invalid original file format/type for the Special Process specified. Text Format only."},
        {-200, "Invalid Width or Height"},
        {-201, "Unrecognized interpolation method"},
        {-202, "Original or Target file type not properly specified. Specify /F# and /C#"},
    };
    for (const auto& [lErr, sWords] : aExpected)
        EXPECT_EQ(sReported(lErr), sWords) << lErr;
}

TEST(ReportValidationErrorCommandLine, IsSilentAboutFoldersThatCannotBeCreated)
{
    for (const std::int32_t lErr : {-3, -6, -13})
        EXPECT_EQ(sReported(lErr), "") << lErr;
}

TEST(ReportValidationErrorCommandLine, ShowsAMessageBoxIfVerbose)
{
    TestApplication app;
    clsConversionOptions objOptions = objFailed(-7);
    objOptions.bVerbose = true;

    ReportValidationErrorCommandLine(app, objOptions);

    ASSERT_EQ(app.windows.boxes.size(), 1u);
    EXPECT_EQ(app.windows.boxes[0].text, "Invalid Target File type specified (/C# switch).");
    EXPECT_EQ(app.windows.boxes[0].icon, BoxIcon::Information);
}

TEST(ReportValidationErrorCommandLine, TranslatesTheWordsOfSilentErrorsToo)
{
    for (const std::int32_t lErr : {-3, -6}) {
        TestApplication app;
        clsConversionOptions objOptions = objFailed(lErr);

        ReportValidationErrorCommandLine(app, objOptions);

        EXPECT_TRUE(app.objTranslator.dictTranslations.contains("Target Folder")) << lErr;
        EXPECT_TRUE(app.objTranslator.dictTranslations.contains("does not exist.")) << lErr;
        EXPECT_EQ(app.objTranslator.dictTranslations.contains("Create it?"), lErr == -6);
        EXPECT_EQ(objOptions.sErr, "");
    }
}

TEST(ReportValidationErrorCommandLine, EscapesControlCharactersOfPaths)
{
    TestApplication app;
    clsConversionOptions objOptions = objFailed(-4);
    objOptions.sOriginalFile = "/in/a\nConversion Successful\x1B[2J.bmp";

    ReportValidationErrorCommandLine(app, objOptions);

    EXPECT_EQ(objOptions.sErr,
              "Original File\r\r/in/a\\x0AConversion Successful\\x1B[2J.bmp\r\rdoes not exist.");
}
