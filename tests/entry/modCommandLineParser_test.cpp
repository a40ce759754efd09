// The command line grammar.
#include "src/entry/modCommandLineParser.h"

#include <gtest/gtest.h>

#include <ctime>

#include "src/base/clsConversionOptions.h"
#include "src/entry/modCommandText.h"
#include "src/job/modTaskTables.h"
#include "tests/fakes/test_application.h"

namespace
{

class Parser : public testing::Test
{
protected:
    Parser()
    {
        app.files.AddFile("c:\\my pictures\\a.bmp");
        app.files.AddFile("c:\\a.png");
        app.files.AddFile("c:\\p\\a.bmp");
        app.files.AddFile("/pics/a.bmp");
        app.files.AddFolder("c:\\out");
        app.files.AddFolder("/out");
    }
    bool bParse(const std::string& sText) { return bParseCommandLine(app, sText, objOptions); }

    TestApplication app;
    clsConversionOptions objOptions;
};

const std::string kUnknown =
    "One or more command line arguements were not recognized. Command line IS case sensitive. Check:";

}  // namespace

TEST(GetField, CountsOneMoreFieldThanDelimiters)
{
    EXPECT_EQ(iCountFields("", '/'), 1);
    EXPECT_EQ(iCountFields("/S a /T b", '/'), 3);
}

TEST(GetField, SplitsOffTheFirstCharacterAndTrimsTheRest)
{
    std::string sFirst;
    EXPECT_EQ(sGetField(2, "/S  c:\\a b.bmp  /T x", '/', sFirst), "c:\\a b.bmp");
    EXPECT_EQ(sFirst, "S");
    EXPECT_EQ(sGetField(3, "/S  c:\\a b.bmp  /T x", '/', sFirst), "x");
    EXPECT_EQ(sFirst, "T");
    EXPECT_EQ(sGetField(1, "before/S", '/', sFirst), "efore");
    EXPECT_EQ(sGetField(2, "/", '/', sFirst), "");
    EXPECT_EQ(sFirst, "");
    EXPECT_EQ(sGetField(2, "/\xC3\xA4x", '/', sFirst), "x");
    EXPECT_EQ(sFirst, "\xC3\xA4");
}

TEST_F(Parser, RejectsAnEmptyTextSilently)
{
    app.bCommandLineMode = true;

    EXPECT_FALSE(bParse(""));

    EXPECT_FALSE(app.bCommandLineMode);
    EXPECT_TRUE(app.windows.boxes.empty());
}

TEST_F(Parser, AcceptsUnquotedPathsWithSpaces)
{
    EXPECT_TRUE(bParse("/S c:\\my pictures\\a.bmp /T c:\\out\\a.png"));

    EXPECT_TRUE(app.bCommandLineMode);
    EXPECT_EQ(objOptions.sOriginalFile, "c:\\my pictures\\a.bmp");
    EXPECT_EQ(objOptions.lOriginalFileType, 2);
    EXPECT_EQ(objOptions.sTargetFile, "c:\\out\\a.png");
    EXPECT_EQ(objOptions.lTargetFileType, 8);
}

TEST_F(Parser, UnquotesPathsThatContainASeparator)
{
    EXPECT_TRUE(bParse("/S \"c:\\my pictures\\a.bmp\" /T c:\\out\\a.png"));

    EXPECT_EQ(objOptions.sOriginalFile, "c:\\my pictures\\a.bmp");
}

TEST_F(Parser, ResolvesBareNamesAgainstTheProgramsFolder)
{
    EXPECT_FALSE(bParse("/S \"x.bmp\" /T c:\\out\\a.png"));
    EXPECT_EQ(objOptions.sOriginalFile, "/program/\"x.bmp\"");

    app.folders.own = "C:\\Varnel";
    bParse("/S x.bmp /J \"x.vjb\" /L r.log /B b.vjb");
    EXPECT_EQ(objOptions.sOriginalFile, "C:\\Varnel\\x.bmp");
    EXPECT_EQ(objOptions.sCLBatchJobFile, "C:\\Varnel\\x.vjb");
    EXPECT_EQ(objOptions.sLogFile, "C:\\Varnel\\r.log");
    EXPECT_EQ(objOptions.sLogAsConversionJobFile, "C:\\Varnel\\b.vjb");
}

TEST_F(Parser, SplitsPathsOnlyAtUnprotectedSlashes)
{
    EXPECT_TRUE(bParse(sCommandText({"/S", "/pics/a.bmp", "/T", "/out/a.png", "/R"})));
    EXPECT_EQ(objOptions.sOriginalFile, "/pics/a.bmp");
    EXPECT_EQ(objOptions.sTargetFile, "/out/a.png");

    clsConversionOptions objCut;
    EXPECT_FALSE(bParseCommandLine(app, "/S /pics/a.bmp", objCut));
}

TEST_F(Parser, LetsNoValueSmuggleInASwitch)
{
    EXPECT_TRUE(bParse(sCommandText(
        {"/S", "/pics/a.bmp", "/T", "/out/a.png", "/6", "Title /J \\tmp\\evil.vjb", "/7", "1/2 /R"})));

    EXPECT_EQ(objOptions.sCLBatchJobFile, "");
    EXPECT_FALSE(objOptions.bDoSubfolders);
    EXPECT_EQ(objOptions.sExtraParams, "^^^^^Title /J \\tmp\\evil.vjb^1/2 /R^^^^^^^^^^^^^^");
}

TEST_F(Parser, TakesALeadingTildeForTheHome)
{
    app.files.AddFile("/home/me/in/a.bmp");
    EXPECT_TRUE(bParse(sCommandText({"/S", "~/in/a.bmp", "/T", "/out/~/a.png"})));
    EXPECT_EQ(objOptions.sOriginalFile, "/home/me/in/a.bmp");
    EXPECT_EQ(objOptions.sTargetFile, "/out/~/a.png");

    app.folders.home = "";
    bParse(sCommandText({"/S", "~/in/a.bmp", "/T", "/out/a.png"}));
    EXPECT_EQ(objOptions.sOriginalFile, "~/in/a.bmp");
}

TEST_F(Parser, TakesTimeInProportionToTheText)
{
    const auto fnSeconds = [&](std::size_t nSlashes) {
        const auto nBegin = std::clock();
        bParse("/S c:\\a.png /T c:\\out\\a.bmp /5 " + std::string(nSlashes, '/'));
        return static_cast<double>(std::clock() - nBegin) / CLOCKS_PER_SEC;
    };
    // Cutting the text anew for each slash took minutes.
    EXPECT_LT(fnSeconds(200'000), 5);
}

TEST_F(Parser, SetsTheFlagOfEachSwitch)
{
    EXPECT_TRUE(bParse("/S c:\\p\\*.bmp /T c:\\out\\*.png /V /Z /R /O"));

    EXPECT_TRUE(objOptions.bVerbose);
    EXPECT_TRUE(objOptions.bVerboseLog);
    EXPECT_TRUE(objOptions.bDoSubfolders);
    EXPECT_TRUE(objOptions.bOpenButDoNotRun);
    EXPECT_FALSE(objOptions.bSaveInOriginalFolder);
}

TEST_F(Parser, LetsLaterSwitchesOverrideEarlierOnes)
{
    bParse("/F1 /F9 /S c:\\a.png /T c:\\out\\1.png /T c:\\out\\2.png");

    EXPECT_EQ(objOptions.lOriginalFileType, 9);
    EXPECT_EQ(objOptions.sTargetFile, "c:\\out\\2.png");
}

TEST_F(Parser, IgnoresTextBeforeTheFirstSwitch)
{
    EXPECT_TRUE(bParse("varnel.exe /S c:\\a.png /T c:\\out\\a.bmp"));
}

TEST_F(Parser, CreatesTheFolderOfTheReportFile)
{
    bParse("/S c:\\a.png /T c:\\out\\a.bmp /L c:\\logs\\deep\\r.txt");

    EXPECT_TRUE(app.files.FolderExists("c:\\logs\\deep"));
    EXPECT_EQ(objOptions.sLogFile, "c:\\logs\\deep\\r.txt");
}

TEST_F(Parser, UsesTheExtensionIfATypeIsMalformed)
{
    EXPECT_TRUE(bParse("/S c:\\a.png /Fx /T c:\\out\\a.bmp /Cy"));

    EXPECT_EQ(objOptions.lOriginalFileType, 8);
    EXPECT_EQ(objOptions.lTargetFileType, 2);
}

TEST_F(Parser, UsesProcessZeroForAMalformedNumber)
{
    bParse("/Px /S c:\\a.png /T c:\\out\\b.png");

    EXPECT_EQ(objOptions.sActionToDo, "S");
    EXPECT_EQ(objOptions.lSpecialProcess, 0);
}

TEST_F(Parser, ForcesEqualTypesOnlyIfOneIsMissing)
{
    bParse("/P5 /S c:\\a.png /T c:\\b.jpg /C1");
    EXPECT_EQ(objOptions.lOriginalFileType, 8);
    EXPECT_EQ(objOptions.lTargetFileType, 8);
}

TEST_F(Parser, CopiesTheTargetsTypeToAnUntypedSource)
{
    bParse("/P5 /S c:\\a.unknown /T c:\\out\\b.jpg");

    EXPECT_EQ(objOptions.lOriginalFileType, 1);
    EXPECT_EQ(objOptions.lTargetFileType, 1);
}

TEST_F(Parser, RejectsAndReportsAMissingType)
{
    app.files.AddFile("c:\\x.unknown");

    EXPECT_FALSE(bParse("/S c:\\x.unknown /T c:\\out\\y.png /L c:\\out\\r.txt"));

    EXPECT_EQ(objOptions.lErr, -202);
    EXPECT_EQ(app.files.Content("c:\\out\\r.txt"),
              "Original or Target file type not properly specified. Specify /F# and /C#\n");
}

TEST_F(Parser, ReportsUnknownSwitchesAndCarriesOn)
{
    EXPECT_TRUE(bParse("/S c:\\a.png /A /s /T c:\\out\\a.bmp /L c:\\out\\r.txt"));

    EXPECT_EQ(app.files.Content("c:\\out\\r.txt"), kUnknown + " /A /s\n");
}

TEST_F(Parser, RejectsALineWithOnlyUnknownSwitches)
{
    EXPECT_FALSE(bParse("/s /V"));

    ASSERT_FALSE(app.windows.boxes.empty());
    EXPECT_EQ(app.windows.boxes[0].text, kUnknown + " /s");
}

TEST_F(Parser, OpensTheCommandLineHelpTopic)
{
    app.sHelpFile = "Varnel.HLP";

    EXPECT_FALSE(bParse("/?"));

    EXPECT_EQ(app.windows.help_calls, std::vector<std::string>{"Varnel.HLP#30"});
}

TEST_F(Parser, LeavesTwoEmptyDetailsBeforeTheLetters)
{
    bParse("/S c:\\a.png /T c:\\out\\a.bmp /01 /12 /23 /3x /4 y /55 /66 /77 /88 /99 /aA /bB /iI /jJ");

    EXPECT_EQ(objOptions.sExtraParams, "2^3^x^y^5^6^7^8^9^^^A^B^^^^^^^I^");
}

TEST_F(Parser, IgnoresTheTargetWhenSavingBesideTheSource)
{
    EXPECT_TRUE(bParse("/G /S c:\\p\\*.bmp /C8 /T c:\\out\\*.gif"));

    EXPECT_EQ(objOptions.sTargetFile, "c:\\p\\*.png");
}

TEST_F(Parser, RequiresNoFilesToRunAJob)
{
    app.files.AddFile("c:\\x.vjb");

    EXPECT_TRUE(bParse("/J \"c:\\x.vjb\""));

    EXPECT_EQ(objOptions.sCLBatchJobFile, "c:\\x.vjb");
    EXPECT_EQ(objOptions.lErr, 0);
}

TEST_F(Parser, RejectsAMissingJobFile)
{
    EXPECT_FALSE(bParse("/J c:\\missing.vjb /L c:\\out\\r.txt"));

    EXPECT_EQ(objOptions.lErr, -8);
    EXPECT_EQ(app.files.Content("c:\\out\\r.txt"),
              "Conversion Job File (*.VJB) specified in the command line (/J) does not exist.\n");
}

TEST_F(Parser, RejectsOpeningWithoutAJobFile)
{
    EXPECT_FALSE(bParse("/O"));
}
