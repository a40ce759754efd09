// Command lines run through the built program.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>

#include "tests/e2e/support/picture.h"
#include "tests/e2e/support/program.h"
#include "tests/support/paths.h"

namespace
{

const std::string kSuccess = "Conversion Successful\nTime to complete job: #\n";

using Files = std::vector<std::string>;

}  // namespace

TEST(CommandLine, ConvertsATreeGivenByHostPaths)
{
    const ScratchFolder objFolder;
    objFolder.sCopySample("landscape-small.bmp", "in/a.bmp");
    objFolder.sCopySample("landscape-small.bmp", "in/sub/deep/b.bmp");
    objFolder.sCopySample("landscape.jpg", "in/c.jpg");

    const Outcome objOutcome =
        objVarnel(objFolder, {"/S", objFolder.sPath("in/*.bmp"), "/T", objFolder.sPath("out/*.png"), "/R",
                              "/L", objFolder.sPath("out/report.txt")});

    EXPECT_EQ(objOutcome.lStatus, 0);
    EXPECT_EQ(objOutcome.sOutput, "");
    EXPECT_EQ(objOutcome.sErrors, "");
    EXPECT_EQ(objFolder.aFiles(), (Files{"in/a.bmp", "in/c.jpg", "in/sub/deep/b.bmp", "out/a.png",
                                         "out/report.txt", "out/sub/deep/b.png"}));
    EXPECT_EQ(sWithoutSeconds(objFolder.sRead("out/report.txt")), kSuccess);
    EXPECT_EQ(sReferenceDecode(objFolder.sPath("out/sub/deep/b.png")),
              sReferenceDecode(objFolder.sPath("in/sub/deep/b.bmp")));
}

TEST(CommandLine, ConvertsATreeGivenByBackslashPaths)
{
    const ScratchFolder objFolder;
    objFolder.sCopySample("landscape-small.bmp", "my pictures/A.BMP");
    objFolder.sCopySample("landscape-small.bmp", "my pictures/Sub/b.bmp");

    const Outcome objOutcome =
        objVarnel(objFolder, {"/S x:\\my pictures\\*.bmp /T x:\\out\\*.png /R /L x:\\out\\report.txt"},
                  {{"VARNEL_DRIVE_X", objFolder.Root().string()}});

    EXPECT_EQ(objOutcome.lStatus, 0);
    EXPECT_EQ(objFolder.aFiles(), (Files{"my pictures/A.BMP", "my pictures/Sub/b.bmp", "out/A.png",
                                         "out/Sub/b.png", "out/report.txt"}));
    EXPECT_EQ(sWithoutSeconds(objFolder.sRead("out/report.txt")), kSuccess);
}

TEST(CommandLine, MapsALeadingBackslashToTheHostsRoot)
{
    const ScratchFolder objFolder;
    objFolder.sCopySample("landscape-small.bmp", "a.bmp");
    std::string sRoot = objFolder.Root().string();
    std::replace(sRoot.begin(), sRoot.end(), '/', '\\');

    objVarnel(objFolder, {"/S " + sRoot + "\\A.BMP /T " + sRoot + "\\b.png"});

    EXPECT_TRUE(objFolder.bHas("b.png"));
}

TEST(CommandLine, SavesBesideTheSources)
{
    const ScratchFolder objFolder;
    objFolder.sCopySample("landscape-small.bmp", "in/a.bmp");
    objFolder.sCopySample("landscape-small.bmp", "in/sub/b.bmp");

    objVarnel(objFolder, {"/G", "/R", "/S", objFolder.sPath("in/*.bmp"), "/C8"});

    EXPECT_TRUE(objFolder.bHas("in/a.png"));
    EXPECT_TRUE(objFolder.bHas("in/sub/b.png"));
}

TEST(CommandLine, SplitsTheSelectedPagesOfATiff)
{
    const ScratchFolder objFolder;
    objFolder.sCopySample("form.tif", "form.tif");

    objVarnel(objFolder, {"/S", objFolder.sPath("form.tif"), "/T", objFolder.sPath("p.png"), "/1", "3,1"});
    objVarnel(objFolder, {"/S", objFolder.sPath("form.tif"), "/T", objFolder.sPath("second.png"), "/1", "2"});

    EXPECT_EQ(objFolder.aFiles(), (Files{"form.tif", "p-1.png", "p-3.png", "second.png"}));
}

TEST(CommandLine, AppendsManyFilesToOneTiff)
{
    const ScratchFolder objFolder;
    objFolder.sCopySample("landscape-small.bmp", "in/a.bmp");
    objFolder.sCopySample("landscape-small.bmp", "in/b.bmp");
    objFolder.sCopySample("landscape-small.bmp", "in/c.bmp");

    objVarnel(objFolder,
              {"/S", objFolder.sPath("in/*.bmp"), "/T", objFolder.sPath("all.tif"), "/2", "1", "/3", "TRUE"});

    const Outcome objPages =
        objRun({ImageMagick("identify"), "-format", "%p %wx%h;", objFolder.sPath("all.tif")});
    EXPECT_EQ(objPages.sOutput, "0 160x100;1 160x100;2 160x100;");
    EXPECT_FALSE(objFolder.bHas("all.tif.TIF"));
}

TEST(CommandLine, ReportsAFileThatIsNotAnImage)
{
    const ScratchFolder objFolder;
    objFolder.sWrite("x.jpg", "This is a text.\n");

    objVarnel(objFolder, {"/S", objFolder.sPath("x.jpg"), "/T", objFolder.sPath("x.png"), "/L",
                          objFolder.sPath("r.txt")});

    EXPECT_EQ(sWithoutSeconds(objFolder.sRead("r.txt")),
              "Job # 1  Unsupported source image file format. Unable to load image. - " +
                  objFolder.sPath("x.jpg") + "\nTime to complete job: #\n");
    EXPECT_FALSE(objFolder.bHas("x.png"));
}

TEST(CommandLine, WritesLogRowsToTheReportOnRequest)
{
    const ScratchFolder objFolder;
    objFolder.sWrite("x.jpg", "This is a text.\n");

    objVarnel(objFolder, {"/S", objFolder.sPath("x.jpg"), "/T", objFolder.sPath("x.png"), "/Z", "/L",
                          objFolder.sPath("r.txt")});

    const std::string sError = "Unsupported source image file format. Unable to load image.";
    EXPECT_EQ(sWithoutSeconds(objFolder.sRead("r.txt")),
              "\t^^^^^^^^^^^^^^^^^^^^\t1\tC\t" + objFolder.sPath("x.jpg") + "\t1\tjpg\t" +
                  objFolder.sPath("x.png") + "\t8\tpng\t\t" + sError + "\nJob # 1  " + sError + " - " +
                  objFolder.sPath("x.jpg") + "\nTime to complete job: #\n");
}

TEST(CommandLine, RejectsAnInvalidLineWithAReason)
{
    const ScratchFolder objFolder;

    objVarnel(objFolder, {"/S", objFolder.sPath("none.bmp"), "/T", objFolder.sPath("a.png"), "/L",
                          objFolder.sPath("r.txt")});

    EXPECT_EQ(objFolder.sRead("r.txt"), "Original File\r\r" + objFolder.sPath("none.bmp") +
                                            "\r\rdoes not exist.\nMissing required or invalid command line "
                                            "argument(s)\n");
}

TEST(CommandLine, PrintsVerboseReportsToStandardError)
{
    const ScratchFolder objFolder;
    objFolder.sCopySample("landscape-small.bmp", "a.bmp");

    const Outcome objOutcome =
        objVarnel(objFolder, {"/V", "/S", objFolder.sPath("a.bmp"), "/T", objFolder.sPath("a.png")});

    EXPECT_EQ(objOutcome.sOutput, "");
    EXPECT_EQ(sWithoutSeconds(objOutcome.sErrors),
              "Information: Conversion Successful\nInformation: Time to complete job: #\n");
}

TEST(CommandLine, ReportsAMissingDisplayAndExits)
{
    const ScratchFolder objFolder;

    const Outcome objOutcome = objVarnel(objFolder, {});

    EXPECT_EQ(objOutcome.lStatus, 0);
    EXPECT_EQ(objOutcome.sErrors, "Error: There is no display to show the main window on.\n");
}

TEST(CommandLine, PrintsTheTableOfSwitchesForAQuestionMark)
{
    const ScratchFolder objFolder;

    const Outcome objOutcome = objVarnel(objFolder, {"/?"});

    EXPECT_EQ(objOutcome.sOutput, "");
    EXPECT_TRUE(objOutcome.sErrors.starts_with("Using the command line\n")) << objOutcome.sErrors;
    EXPECT_NE(objOutcome.sErrors.find("\n/S path   source: "), std::string::npos);
}

TEST(CommandLine, WritesNoSettingsFile)
{
    const ScratchFolder objFolder;
    objFolder.sCopySample("landscape-small.bmp", "a.bmp");

    objVarnel(objFolder, {"/S", objFolder.sPath("a.bmp"), "/T", objFolder.sPath("a.png")});

    EXPECT_FALSE(objFolder.bHas(".varnel-home/VL_SearchHistory.INI"));
}

TEST(CommandLine, AcceptsUnusualFileNames)
{
    for (const std::string& sName :
         {std::string("with blank"), std::string("\xC3\x9C\x6E\xC3\xAF\xE2\x82\xAC"), std::string("quote'"),
          std::string("line\nend"), std::string("tab\tin it"), std::string(251, 'n'), std::string("^caret^"),
          std::string("percent%20"), std::string("-dash")}) {
        const ScratchFolder objFolder;
        objFolder.sCopySample("landscape-small.bmp", "in/" + sName + ".bmp");

        objVarnel(objFolder, {"/S", objFolder.sPath("in/*.bmp"), "/T", objFolder.sPath("out/*.png")});

        EXPECT_TRUE(objFolder.bHas("out/" + sName + ".png")) << sName;
    }
}

TEST(CommandLine, LetsNoValueRunAJob)
{
    const ScratchFolder objFolder;
    objFolder.sCopySample("landscape-small.bmp", "a.bmp");
    objFolder.sWrite("evil.vjb", sLaunchTaskLine("/usr/bin/touch", objFolder.sPath("evil")) + kMarkerLine);
    std::string sJob = objFolder.sPath("evil.vjb");
    std::replace(sJob.begin(), sJob.end(), '/', '\\');

    objVarnel(objFolder,
              {"/S", objFolder.sPath("a.bmp"), "/T", objFolder.sPath("a.png"), "/6", "Title /J " + sJob});

    EXPECT_TRUE(objFolder.bHas("a.png"));
    EXPECT_FALSE(objFolder.bHas("evil"));
}

TEST(CommandLine, GoesOnWithoutStandardError)
{
    for (const std::string sError : {"2>&-", "2>&- >&- <&-", "2>&1 >/dev/null | :"}) {
        const ScratchFolder objFolder;
        objFolder.sCopySample("landscape-small.bmp", "in/a.bmp");
        objFolder.sCopySample("landscape-small.bmp", "in/b.bmp");
        // A missing language is told on standard error, before anything else.
        objFolder.sWrite(".varnel-home/VL_SearchHistory.INI", "[Language]\nLanguage_Code=Klingon\n");

        objRun({"sh", "-c",
                "VARNEL_HOME=$1/.varnel-home VARNEL_SETTINGS_DIR=$1/.varnel-home DISPLAY= WAYLAND_DISPLAY= "
                "$0 /V /S \"$1/in/*.bmp\" /T \"$1/out/*.png\" /L $1/r.txt " +
                    sError,
                ProgramPath(), objFolder.Root().string()},
               {{"LC_ALL", "C"}});

        EXPECT_TRUE(objFolder.bHas("out/a.png")) << sError;
        EXPECT_TRUE(objReferenceDecode(objFolder.sPath("out/b.png")) ==
                    objReferenceDecode(objFolder.sPath("in/b.bmp")));
        EXPECT_EQ(sWithoutSeconds(objFolder.sRead("r.txt")), kSuccess) << sError;
    }
}

TEST(CommandLine, RejectsATooLongPathAtOnce)
{
    const ScratchFolder objFolder;
    objFolder.sCopySample("landscape-small.bmp", "a.bmp");
    for (const std::size_t nParts : {1990u, 2500u, 20000u}) {
        std::string sLong = objFolder.sPath("out");
        for (std::size_t n = 0; n < nParts; ++n)
            sLong += "/x";
        const auto objBegin = std::chrono::steady_clock::now();

        objVarnel(objFolder, {"/S", objFolder.sPath("a.bmp"), "/T", sLong + "/a.png"});

        EXPECT_LT(std::chrono::steady_clock::now() - objBegin, std::chrono::seconds(10)) << nParts;
        EXPECT_EQ(objFolder.bHas("out"), nParts < 2000) << nParts;
        std::filesystem::remove_all(objFolder.Root() / "out");
    }
}

TEST(CommandLine, EscapesControlCharactersOfNames)
{
    const ScratchFolder objFolder;
    objFolder.sWrite("in/a\x1B[2J\x07.bmp", "no picture");

    const Outcome objOutcome =
        objVarnel(objFolder, {"/V", "/Z", "/S", objFolder.sPath("in/a\x1B[2J\x07.bmp"), "/T",
                              objFolder.sPath("a.png"), "/L", objFolder.sPath("r.txt")});

    EXPECT_EQ(objOutcome.sErrors.find('\x1B'), std::string::npos);
    EXPECT_NE(objOutcome.sErrors.find("in/a\\x1B[2J\\x07.bmp"), std::string::npos) << objOutcome.sErrors;
    EXPECT_EQ(objFolder.sRead("r.txt").find('\x1B'), std::string::npos);
    EXPECT_NE(objFolder.sRead("r.txt").find("in/a\\x1B[2J\\x07.bmp"), std::string::npos);
}

TEST(CommandLine, TakesALanguageThatIsAPathForUnknown)
{
    const ScratchFolder objFolder;
    objFolder.sCopySample("landscape-small.bmp", "a.bmp");
    objFolder.sWrite("elsewhere/Evil-Varnel.txt", "\"Conversion Successful\",\"Evil\"\n");
    objFolder.sWrite(".varnel-home/VL_SearchHistory.INI", "[Language]\nLanguage_Code=../../elsewhere/Evil\n");
    std::filesystem::create_directories(objFolder.Root() / ".varnel-home/Languages");

    const Outcome objOutcome =
        objVarnel(objFolder, {"/V", "/S", objFolder.sPath("a.bmp"), "/T", objFolder.sPath("a.png")});

    EXPECT_NE(objOutcome.sErrors.find("Unable to locate Language file"), std::string::npos);
    EXPECT_NE(objOutcome.sErrors.find("Conversion Successful"), std::string::npos);
}
