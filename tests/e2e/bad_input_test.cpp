// Malformed, empty or inaccessible input and output: a clear failure, and nothing lost.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <filesystem>

#include "tests/e2e/support/program.h"

namespace fs = std::filesystem;

namespace
{

struct Format {
    const char* sExtension;
    std::int32_t lType;
    bool bWrites;
};

constexpr Format kFormats[] = {{"jpg", 1, true},   {"bmp", 2, true},  {"tif", 3, true},  {"gif", 4, true},
                               {"emf", 5, true},   {"j2k", 6, true},  {"pcx", 7, true},  {"png", 8, true},
                               {"ras", 9, true},   {"tga", 10, true}, {"wmf", 11, true}, {"ico", 12, false},
                               {"cur", 13, false}, {"ani", 14, false}};

// A valid file of the format, converted from a sample by the program itself; "" for a read-only format.
std::string sWholeFile(const Workplace& objPlace, const Format& objFormat)
{
    const std::string sExtension = objFormat.sExtension;
    if (!objFormat.bWrites)
        return "";
    const std::string sSource = objPlace.sCopySample("landscape-small.bmp", "source-" + sExtension + ".bmp");
    objVarnel(objPlace, {"/S", sSource, "/T", objPlace.sPath("whole." + sExtension)});
    return objPlace.sPath("whole." + sExtension);
}

// No partial and no temporary file was left behind.
void ExpectNoNewFile(const Workplace& objPlace, const std::vector<std::string>& aBefore)
{
    EXPECT_EQ(objPlace.aFiles(), aBefore);
}

}  // namespace

TEST(BadInput, IsRejectedByEveryFormat)
{
    for (const Format& objFormat : kFormats) {
        const Workplace objPlace;
        const std::string sExtension = objFormat.sExtension;
        objPlace.sWrite("in/empty." + sExtension, "");
        objPlace.sWrite("in/text." + sExtension, "This is no picture at all, whatever its name says.\n");
        const std::string sWhole = sWholeFile(objPlace, objFormat);
        if (!sWhole.empty()) {
            const std::string sBytes = objPlace.sRead("whole." + sExtension);
            ASSERT_GT(sBytes.size(), 60u) << sExtension;
            objPlace.sWrite("in/half." + sExtension, sBytes.substr(0, sBytes.size() / 2));
            objPlace.sWrite("in/head." + sExtension, sBytes.substr(0, 20));
        }
        fs::create_directories(objPlace.Root() / "out");

        const Outcome objOutcome = objVarnel(
            objPlace, {"/S", objPlace.sPath("in/*." + sExtension), "/T", objPlace.sPath("out/*.png")});

        EXPECT_EQ(objOutcome.lStatus, 0) << sExtension;
        EXPECT_TRUE(fs::is_empty(objPlace.Root() / "out")) << sExtension;
    }
}

TEST(BadInput, NeverOverwritesATargetThatIsAFolder)
{
    const Workplace objPlace;
    const std::string sBmp = objPlace.sCopySample("landscape-small.bmp", "a.bmp");
    objPlace.sWrite("a.png/inside.txt", "mine");

    objVarnel(objPlace, {"/S", sBmp, "/T", objPlace.sPath("a.png"), "/L", objPlace.sPath("r.txt")});

    EXPECT_EQ(objPlace.sRead("a.png/inside.txt"), "mine");
    EXPECT_NE(objPlace.sRead("r.txt").find("Unable to convert"), std::string::npos);
}

TEST(BadInput, NeverOverwritesAReadOnlyTarget)
{
    const Workplace objPlace;
    const std::string sBmp = objPlace.sCopySample("landscape-small.bmp", "a.bmp");
    objPlace.sWrite("a.png", "mine");
    fs::permissions(objPlace.Root() / "a.png", fs::perms::owner_read);

    objVarnel(objPlace, {"/S", sBmp, "/T", objPlace.sPath("a.png"), "/L", objPlace.sPath("r.txt")});

    EXPECT_EQ(objPlace.sRead("a.png"), "mine");
    EXPECT_NE(objPlace.sRead("r.txt").find("Unable to convert"), std::string::npos);
}

TEST(BadInput, KeepsTheOldFileIfTheDiskIsFull)
{
    const Workplace objPlace;
    const std::string sBmp = objPlace.sCopySample("landscape-small.bmp", "a.bmp");
    objPlace.sWrite("a.ras", "mine");
    const std::vector<std::string> aBefore = objPlace.aFiles();

    // Exceeding the file size limit fails a write like a full disk.
    objRun({"sh", "-c", "ulimit -f 8; exec \"$0\" \"$@\"", VARNEL_PROGRAM, "/S", sBmp, "/T",
            objPlace.sPath("a.ras")},
           {{"VARNEL_SETTINGS_DIR", objPlace.sPath(".varnel-home")},
            {"VARNEL_HOME", objPlace.sPath(".varnel-home")}});

    ExpectNoNewFile(objPlace, aBefore);
    EXPECT_EQ(objPlace.sRead("a.ras"), "mine");
}

TEST(BadInput, ReportsAMissingSourceFolder)
{
    const Workplace objPlace;

    objVarnel(objPlace, {"/S", objPlace.sPath("none/*.bmp"), "/T", objPlace.sPath("out/*.png"), "/L",
                         objPlace.sPath("r.txt")});

    EXPECT_EQ(objPlace.sRead("r.txt").substr(0, 15), "Original Folder");
}

TEST(BadInput, RedirectsAnUnwritableReportToStandardError)
{
    const Workplace objPlace;
    const std::string sBmp = objPlace.sCopySample("landscape-small.bmp", "a.bmp");
    fs::create_directories(objPlace.Root() / "report.txt");

    const Outcome objOutcome =
        objVarnel(objPlace, {"/S", sBmp, "/T", objPlace.sPath("a.ras"), "/L", objPlace.sPath("report.txt")});

    EXPECT_TRUE(objPlace.bHas("a.ras"));
    EXPECT_NE(objOutcome.sErrors.find("Conversion Successful"), std::string::npos);
}

TEST(BadInput, ReportsAnUnreadableJobFile)
{
    const Workplace objPlace;
    fs::create_directories(objPlace.Root() / "job.vjb");

    const Outcome objOutcome =
        objVarnel(objPlace, {"/J", objPlace.sPath("job.vjb"), "/L", objPlace.sPath("r.txt")});

    EXPECT_EQ(objOutcome.lStatus, 0);
    EXPECT_NE(objPlace.sRead("r.txt").find("does not exist"), std::string::npos);
}

TEST(BadInput, FallsBackToDefaultsForUnreadableSettings)
{
    for (const bool bFolder : {false, true}) {
        const Workplace objPlace;
        const std::string sBmp = objPlace.sCopySample("landscape-small.bmp", "a.bmp");
        if (bFolder)
            fs::create_directories(objPlace.Root() / ".varnel-home/VL_SearchHistory.INI");
        else
            objPlace.sWrite(".varnel-home/VL_SearchHistory.INI",
                            std::string("\x00\xFF[frmMain\n]]==\n\x01", 16));

        objVarnel(objPlace, {"/S", sBmp, "/T", objPlace.sPath("a.ras")});

        EXPECT_TRUE(objPlace.bHas("a.ras"));
    }
}

TEST(BadInput, ReportsAMalformedNumberInTheSettings)
{
    const Workplace objPlace;
    const std::string sBmp = objPlace.sCopySample("landscape-small.bmp", "a.bmp");
    objPlace.sWrite(".varnel-home/VL_SearchHistory.INI", "[frmMain]\ncbFileTypeTarget.ListIndex=many\n");

    const Outcome objOutcome =
        objVarnel(objPlace, {"/S", sBmp, "/T", objPlace.sPath("a.ras"), "/L", objPlace.sPath("r.txt")});

    EXPECT_EQ(objOutcome.lStatus, 0);
    EXPECT_EQ(objPlace.sRead("r.txt"), "Type mismatch\n");
}

TEST(BadInput, RejectsPipesAsSourceAndTarget)
{
    const Workplace objPlace;
    const std::string sBmp = objPlace.sCopySample("landscape-small.bmp", "a.bmp");
    objRun({"mkfifo", objPlace.sPath("pipe.bmp"), objPlace.sPath("pipe.ras")});

    objVarnel(objPlace, {"/S", objPlace.sPath("pipe.bmp"), "/T", objPlace.sPath("b.ras")});
    objVarnel(objPlace, {"/S", sBmp, "/T", objPlace.sPath("pipe.ras")});

    EXPECT_FALSE(objPlace.bHas("b.ras"));
    EXPECT_TRUE(fs::is_fifo(objPlace.Root() / "pipe.ras"));
}

TEST(BadInput, RejectsAHeaderWithAnExcessiveSize)
{
    const Workplace objPlace;
    // A 54-byte bitmap that claims 60,000 x 60,000 pixels.
    std::string sHeader(
        "BM\x36\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\x60\xEA\0\0\x60\xEA\0\0\x01\0\x18\0\0\0\0\0", 34);
    sHeader.resize(54, '\0');
    const std::string sBmp = objPlace.sWrite("huge.bmp", sHeader);

    objVarnel(objPlace, {"/S", sBmp, "/T", objPlace.sPath("huge.ras"), "/L", objPlace.sPath("r.txt")});

    EXPECT_FALSE(objPlace.bHas("huge.ras"));
    EXPECT_NE(objPlace.sRead("r.txt").find("Unable to load image"), std::string::npos);
}
