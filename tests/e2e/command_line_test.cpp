// Command lines run through the built program.
#include <gtest/gtest.h>

#include "tests/e2e/support/program.h"

namespace
{

const std::string kSuccess = "Conversion Successful\nTime to complete job: #\n";

using Files = std::vector<std::string>;

}  // namespace

TEST(CommandLine, ConvertsATreeGivenByHostPaths)
{
    const Workplace objPlace;
    objPlace.sCopySample("landscape-small.bmp", "in/a.bmp");
    objPlace.sCopySample("landscape-small.bmp", "in/sub/deep/b.bmp");
    objPlace.sCopySample("landscape.jpg", "in/c.jpg");

    const Outcome objOutcome =
        objVarnel(objPlace, {"/S", objPlace.sPath("in/*.bmp"), "/T", objPlace.sPath("out/*.png"), "/R", "/L",
                             objPlace.sPath("out/report.txt")});

    EXPECT_EQ(objOutcome.lStatus, 0);
    EXPECT_EQ(objOutcome.sOutput, "");
    EXPECT_EQ(objOutcome.sErrors, "");
    EXPECT_EQ(objPlace.aFiles(), (Files{"in/a.bmp", "in/c.jpg", "in/sub/deep/b.bmp", "out/a.png",
                                        "out/report.txt", "out/sub/deep/b.png"}));
    EXPECT_EQ(sWithoutSeconds(objPlace.sRead("out/report.txt")), kSuccess);
    EXPECT_EQ(sDecodedByOthers(objPlace.sPath("out/sub/deep/b.png")),
              sDecodedByOthers(objPlace.sPath("in/sub/deep/b.bmp")));
}

TEST(CommandLine, ConvertsATreeGivenByBackslashPaths)
{
    const Workplace objPlace;
    objPlace.sCopySample("landscape-small.bmp", "my pictures/A.BMP");
    objPlace.sCopySample("landscape-small.bmp", "my pictures/Sub/b.bmp");

    const Outcome objOutcome =
        objVarnel(objPlace, {"/S x:\\my pictures\\*.bmp /T x:\\out\\*.png /R /L x:\\out\\report.txt"},
                  {{"VARNEL_DRIVE_X", objPlace.Root().string()}});

    EXPECT_EQ(objOutcome.lStatus, 0);
    EXPECT_EQ(objPlace.aFiles(), (Files{"my pictures/A.BMP", "my pictures/Sub/b.bmp", "out/A.png",
                                        "out/Sub/b.png", "out/report.txt"}));
    EXPECT_EQ(sWithoutSeconds(objPlace.sRead("out/report.txt")), kSuccess);
}

TEST(CommandLine, MapsALeadingBackslashToTheHostsRoot)
{
    const Workplace objPlace;
    objPlace.sCopySample("landscape-small.bmp", "a.bmp");
    std::string sRoot = objPlace.Root().string();
    std::replace(sRoot.begin(), sRoot.end(), '/', '\\');

    objVarnel(objPlace, {"/S " + sRoot + "\\A.BMP /T " + sRoot + "\\b.png"});

    EXPECT_TRUE(objPlace.bHas("b.png"));
}

TEST(CommandLine, SavesBesideTheSources)
{
    const Workplace objPlace;
    objPlace.sCopySample("landscape-small.bmp", "in/a.bmp");
    objPlace.sCopySample("landscape-small.bmp", "in/sub/b.bmp");

    objVarnel(objPlace, {"/G", "/R", "/S", objPlace.sPath("in/*.bmp"), "/C8"});

    EXPECT_TRUE(objPlace.bHas("in/a.png"));
    EXPECT_TRUE(objPlace.bHas("in/sub/b.png"));
}

TEST(CommandLine, SplitsTheSelectedPagesOfATiff)
{
    const Workplace objPlace;
    objPlace.sCopySample("form.tif", "form.tif");

    objVarnel(objPlace, {"/S", objPlace.sPath("form.tif"), "/T", objPlace.sPath("p.png"), "/1", "3,1"});
    objVarnel(objPlace, {"/S", objPlace.sPath("form.tif"), "/T", objPlace.sPath("second.png"), "/1", "2"});

    EXPECT_EQ(objPlace.aFiles(), (Files{"form.tif", "p-1.png", "p-3.png", "second.png"}));
}

TEST(CommandLine, AppendsManyFilesToOneTiff)
{
    const Workplace objPlace;
    objPlace.sCopySample("landscape-small.bmp", "in/a.bmp");
    objPlace.sCopySample("landscape-small.bmp", "in/b.bmp");
    objPlace.sCopySample("landscape-small.bmp", "in/c.bmp");

    objVarnel(objPlace,
              {"/S", objPlace.sPath("in/*.bmp"), "/T", objPlace.sPath("all.tif"), "/2", "1", "/3", "TRUE"});

    const Outcome objPages = objRun({"identify-im6.q16", "-format", "%p %wx%h;", objPlace.sPath("all.tif")});
    EXPECT_EQ(objPages.sOutput, "0 160x100;1 160x100;2 160x100;");
    EXPECT_FALSE(objPlace.bHas("all.tif.TIF"));
}

TEST(CommandLine, ReportsAFileThatIsNotAnImage)
{
    const Workplace objPlace;
    objPlace.sWrite("x.jpg", "This is a text.\n");

    objVarnel(objPlace,
              {"/S", objPlace.sPath("x.jpg"), "/T", objPlace.sPath("x.png"), "/L", objPlace.sPath("r.txt")});

    EXPECT_EQ(sWithoutSeconds(objPlace.sRead("r.txt")),
              "Job # 1  Unsupported source image file format. Unable to load image. - " +
                  objPlace.sPath("x.jpg") + "\nTime to complete job: #\n");
    EXPECT_FALSE(objPlace.bHas("x.png"));
}

TEST(CommandLine, WritesLogRowsToTheReportOnRequest)
{
    const Workplace objPlace;
    objPlace.sWrite("x.jpg", "This is a text.\n");

    objVarnel(objPlace, {"/S", objPlace.sPath("x.jpg"), "/T", objPlace.sPath("x.png"), "/Z", "/L",
                         objPlace.sPath("r.txt")});

    const std::string sError = "Unsupported source image file format. Unable to load image.";
    EXPECT_EQ(sWithoutSeconds(objPlace.sRead("r.txt")),
              "\t^^^^^^^^^^^^^^^^^^^^\t1\tC\t" + objPlace.sPath("x.jpg") + "\t1\tjpg\t" +
                  objPlace.sPath("x.png") + "\t8\tpng\t\t" + sError + "\nJob # 1  " + sError + " - " +
                  objPlace.sPath("x.jpg") + "\nTime to complete job: #\n");
}

TEST(CommandLine, RejectsAnInvalidLineWithAReason)
{
    const Workplace objPlace;

    objVarnel(objPlace, {"/S", objPlace.sPath("none.bmp"), "/T", objPlace.sPath("a.png"), "/L",
                         objPlace.sPath("r.txt")});

    EXPECT_EQ(objPlace.sRead("r.txt"), "Original File\r\r" + objPlace.sPath("none.bmp") +
                                           "\r\rdoes not exist.\nMissing required or invalid command line "
                                           "argument(s)\n");
}

TEST(CommandLine, PrintsVerboseReportsToStandardError)
{
    const Workplace objPlace;
    objPlace.sCopySample("landscape-small.bmp", "a.bmp");

    const Outcome objOutcome =
        objVarnel(objPlace, {"/V", "/S", objPlace.sPath("a.bmp"), "/T", objPlace.sPath("a.png")});

    EXPECT_EQ(objOutcome.sOutput, "");
    EXPECT_EQ(sWithoutSeconds(objOutcome.sErrors),
              "Information: Conversion Successful\nInformation: Time to complete job: #\n");
}

TEST(CommandLine, ReportsAMissingDisplayAndExits)
{
    const Workplace objPlace;

    const Outcome objOutcome = objVarnel(objPlace, {});

    EXPECT_EQ(objOutcome.lStatus, 0);
    EXPECT_EQ(objOutcome.sErrors, "Error: There is no display to show the main window on.\n");
}

TEST(CommandLine, WritesNoSettingsFile)
{
    const Workplace objPlace;
    objPlace.sCopySample("landscape-small.bmp", "a.bmp");

    objVarnel(objPlace, {"/S", objPlace.sPath("a.bmp"), "/T", objPlace.sPath("a.png")});

    EXPECT_FALSE(objPlace.bHas(".varnel-home/VL_SearchHistory.INI"));
}

TEST(CommandLine, AcceptsUnusualFileNames)
{
    for (const std::string& sName :
         {std::string("with blank"), std::string("\xC3\x9C\x6E\xC3\xAF\xE2\x82\xAC"), std::string("quote'"),
          std::string("line\nend"), std::string("tab\tin it"), std::string(251, 'n'), std::string("^caret^"),
          std::string("percent%20"), std::string("-dash")}) {
        const Workplace objPlace;
        objPlace.sCopySample("landscape-small.bmp", "in/" + sName + ".bmp");

        objVarnel(objPlace, {"/S", objPlace.sPath("in/*.bmp"), "/T", objPlace.sPath("out/*.png")});

        EXPECT_TRUE(objPlace.bHas("out/" + sName + ".png")) << sName;
    }
}
