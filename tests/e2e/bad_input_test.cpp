// Malformed, empty or inaccessible input and output: a clear failure, and nothing lost.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <filesystem>

#include "tests/e2e/support/program.h"
#include "tests/support/paths.h"

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
std::string sWholeFile(const ScratchFolder& objFolder, const Format& objFormat)
{
    const std::string sExtension = objFormat.sExtension;
    if (!objFormat.bWrites)
        return "";
    const std::string sSource = objFolder.sCopySample("landscape-small.bmp", "source-" + sExtension + ".bmp");
    objVarnel(objFolder, {"/S", sSource, "/T", objFolder.sPath("whole." + sExtension)});
    return objFolder.sPath("whole." + sExtension);
}

// No partial and no temporary file was left behind.
void ExpectNoNewFile(const ScratchFolder& objFolder, const std::vector<std::string>& aBefore)
{
    EXPECT_EQ(objFolder.aFiles(), aBefore);
}

}  // namespace

TEST(BadInput, IsRejectedByEveryFormat)
{
    for (const Format& objFormat : kFormats) {
        const ScratchFolder objFolder;
        const std::string sExtension = objFormat.sExtension;
        objFolder.sWrite("in/empty." + sExtension, "");
        objFolder.sWrite("in/text." + sExtension, "This is no picture at all, whatever its name says.\n");
        const std::string sWhole = sWholeFile(objFolder, objFormat);
        if (!sWhole.empty()) {
            const std::string sBytes = objFolder.sRead("whole." + sExtension);
            ASSERT_GT(sBytes.size(), 60u) << sExtension;
            if (sExtension != "jpg")  // see BadInput.ShowsTheUpperHalfOfAJpeg
                objFolder.sWrite("in/half." + sExtension, sBytes.substr(0, sBytes.size() / 2));
            objFolder.sWrite("in/head." + sExtension, sBytes.substr(0, 20));
        }
        fs::create_directories(objFolder.Root() / "out");

        const Outcome objOutcome = objVarnel(
            objFolder, {"/S", objFolder.sPath("in/*." + sExtension), "/T", objFolder.sPath("out/*.png")});

        EXPECT_EQ(objOutcome.lStatus, 0) << sExtension;
        EXPECT_TRUE(fs::is_empty(objFolder.Root() / "out")) << sExtension;
    }
}

TEST(BadInput, ShowsTheUpperHalfOfAJpeg)
{
    const ScratchFolder objFolder;
    sWholeFile(objFolder, kFormats[0]);
    const std::string sBytes = objFolder.sRead("whole.jpg");
    objFolder.sWrite("half.jpg", sBytes.substr(0, sBytes.size() / 2));

    objVarnel(objFolder, {"/S", objFolder.sPath("whole.jpg"), "/T", objFolder.sPath("whole.ras")});
    objVarnel(objFolder, {"/S", objFolder.sPath("half.jpg"), "/T", objFolder.sPath("half.ras")});

    const std::string sWhole = objFolder.sRead("whole.ras"), sHalf = objFolder.sRead("half.ras");
    ASSERT_EQ(sHalf.size(), sWhole.size());
    EXPECT_EQ(sHalf.substr(0, sHalf.size() / 4), sWhole.substr(0, sWhole.size() / 4));
    EXPECT_NE(sHalf, sWhole);
}

TEST(BadInput, NeverOverwritesATargetThatIsAFolder)
{
    const ScratchFolder objFolder;
    const std::string sBmp = objFolder.sCopySample("landscape-small.bmp", "a.bmp");
    objFolder.sWrite("a.png/inside.txt", "mine");

    objVarnel(objFolder, {"/S", sBmp, "/T", objFolder.sPath("a.png"), "/L", objFolder.sPath("r.txt")});

    EXPECT_EQ(objFolder.sRead("a.png/inside.txt"), "mine");
    EXPECT_NE(objFolder.sRead("r.txt").find("Unable to convert"), std::string::npos);
}

TEST(BadInput, NeverOverwritesAReadOnlyTarget)
{
    const ScratchFolder objFolder;
    const std::string sBmp = objFolder.sCopySample("landscape-small.bmp", "a.bmp");
    objFolder.sWrite("a.png", "mine");
    fs::permissions(objFolder.Root() / "a.png", fs::perms::owner_read);

    objVarnel(objFolder, {"/S", sBmp, "/T", objFolder.sPath("a.png"), "/L", objFolder.sPath("r.txt")});

    EXPECT_EQ(objFolder.sRead("a.png"), "mine");
    EXPECT_NE(objFolder.sRead("r.txt").find("Unable to convert"), std::string::npos);
}

TEST(BadInput, KeepsTheOldFileIfTheDiskIsFull)
{
    const ScratchFolder objFolder;
    const std::string sBmp = objFolder.sCopySample("landscape-small.bmp", "a.bmp");
    objFolder.sWrite("a.ras", "mine");
    const std::vector<std::string> aBefore = objFolder.aFiles();

    // Exceeding the file size limit fails a write like a full disk.
    objRun({"sh", "-c", "ulimit -f 8; exec \"$0\" \"$@\"", ProgramPath(), "/S", sBmp, "/T",
            objFolder.sPath("a.ras")},
           {{"VARNEL_SETTINGS_DIR", objFolder.sPath(".varnel-home")},
            {"VARNEL_HOME", objFolder.sPath(".varnel-home")}});

    ExpectNoNewFile(objFolder, aBefore);
    EXPECT_EQ(objFolder.sRead("a.ras"), "mine");
}

TEST(BadInput, ReportsAMissingSourceFolder)
{
    const ScratchFolder objFolder;

    objVarnel(objFolder, {"/S", objFolder.sPath("none/*.bmp"), "/T", objFolder.sPath("out/*.png"), "/L",
                          objFolder.sPath("r.txt")});

    EXPECT_EQ(objFolder.sRead("r.txt").substr(0, 15), "Original Folder");
}

TEST(BadInput, RedirectsAnUnwritableReportToStandardError)
{
    const ScratchFolder objFolder;
    const std::string sBmp = objFolder.sCopySample("landscape-small.bmp", "a.bmp");
    fs::create_directories(objFolder.Root() / "report.txt");

    const Outcome objOutcome = objVarnel(
        objFolder, {"/S", sBmp, "/T", objFolder.sPath("a.ras"), "/L", objFolder.sPath("report.txt")});

    EXPECT_TRUE(objFolder.bHas("a.ras"));
    EXPECT_NE(objOutcome.sErrors.find("Conversion Successful"), std::string::npos);
}

TEST(BadInput, ReportsAnUnreadableJobFile)
{
    const ScratchFolder objFolder;
    fs::create_directories(objFolder.Root() / "job.vjb");

    const Outcome objOutcome =
        objVarnel(objFolder, {"/J", objFolder.sPath("job.vjb"), "/L", objFolder.sPath("r.txt")});

    EXPECT_EQ(objOutcome.lStatus, 0);
    EXPECT_NE(objFolder.sRead("r.txt").find("does not exist"), std::string::npos);
}

TEST(BadInput, FallsBackToDefaultsForUnreadableSettings)
{
    for (const bool bFolder : {false, true}) {
        const ScratchFolder objFolder;
        const std::string sBmp = objFolder.sCopySample("landscape-small.bmp", "a.bmp");
        if (bFolder)
            fs::create_directories(objFolder.Root() / ".varnel-home/VL_SearchHistory.INI");
        else
            objFolder.sWrite(".varnel-home/VL_SearchHistory.INI",
                             std::string("\x00\xFF[frmMain\n]]==\n\x01", 16));

        objVarnel(objFolder, {"/S", sBmp, "/T", objFolder.sPath("a.ras")});

        EXPECT_TRUE(objFolder.bHas("a.ras"));
    }
}

TEST(BadInput, ReportsAMalformedNumberInTheSettings)
{
    const ScratchFolder objFolder;
    const std::string sBmp = objFolder.sCopySample("landscape-small.bmp", "a.bmp");
    objFolder.sWrite(".varnel-home/VL_SearchHistory.INI", "[frmMain]\ncbFileTypeTarget.ListIndex=many\n");

    const Outcome objOutcome =
        objVarnel(objFolder, {"/S", sBmp, "/T", objFolder.sPath("a.ras"), "/L", objFolder.sPath("r.txt")});

    EXPECT_EQ(objOutcome.lStatus, 0);
    EXPECT_EQ(objFolder.sRead("r.txt"), "Type mismatch: [frmMain] cbFileTypeTarget.ListIndex\n");
}

TEST(BadInput, RejectsPipesAsSourceAndTarget)
{
    const ScratchFolder objFolder;
    const std::string sBmp = objFolder.sCopySample("landscape-small.bmp", "a.bmp");
    objRun({"mkfifo", objFolder.sPath("pipe.bmp"), objFolder.sPath("pipe.ras")});

    objVarnel(objFolder, {"/S", objFolder.sPath("pipe.bmp"), "/T", objFolder.sPath("b.ras")});
    objVarnel(objFolder, {"/S", sBmp, "/T", objFolder.sPath("pipe.ras")});

    EXPECT_FALSE(objFolder.bHas("b.ras"));
    EXPECT_TRUE(fs::is_fifo(objFolder.Root() / "pipe.ras"));
}

TEST(BadInput, RejectsAHeaderWithAnExcessiveSize)
{
    const ScratchFolder objFolder;
    // A 54-byte bitmap that claims 60,000 x 60,000 pixels.
    std::string sHeader(
        "BM\x36\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\x60\xEA\0\0\x60\xEA\0\0\x01\0\x18\0\0\0\0\0", 34);
    sHeader.resize(54, '\0');
    const std::string sBmp = objFolder.sWrite("huge.bmp", sHeader);

    objVarnel(objFolder, {"/S", sBmp, "/T", objFolder.sPath("huge.ras"), "/L", objFolder.sPath("r.txt")});

    EXPECT_FALSE(objFolder.bHas("huge.ras"));
    EXPECT_NE(objFolder.sRead("r.txt").find("Unable to load image"), std::string::npos);
}
