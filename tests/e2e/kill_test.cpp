// Killing a run in the middle of a write must leave only complete files.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "tests/e2e/support/picture.h"
#include "tests/e2e/support/program.h"
#include "tests/support/paths.h"

namespace fs = std::filesystem;

namespace
{

constexpr int kPictures = 30;
// Large enough that a write takes milliseconds and several system calls.
constexpr int kWidth = 700;
constexpr int kHeight = 500;

// Noise, so that every target format makes a large file of it.
std::string sLargeBmp()
{
    unsigned nSeed = 1;
    return sBmpOf(objPicture(kWidth, kHeight, [&](int, int) {
        Rgb aPixel{};
        for (int& lLevel : aPixel) {
            nSeed = nSeed * 1664525 + 1013904223;
            lLevel = static_cast<int>(nSeed >> 24);
        }
        return aPixel;
    }));
}

// Starts Varnel with its settings in the folder.
pid_t nStart(const ScratchFolder& objFolder, std::vector<std::string> aWords)
{
    const std::string sProgram = ProgramPath();
    aWords.insert(aWords.begin(), sProgram);
    std::vector<std::string> aVariables = {"VARNEL_SETTINGS_DIR=" + objFolder.sPath(".varnel-home"),
                                           "VARNEL_HOME=" + objFolder.sPath(".varnel-home"), "LC_ALL=C"};
    std::vector<char*> aArguments, aEnvironment;
    for (std::string& sWord : aWords)
        aArguments.push_back(sWord.data());
    for (std::string& sVariable : aVariables)
        aEnvironment.push_back(sVariable.data());
    aArguments.push_back(nullptr);
    aEnvironment.push_back(nullptr);
    pid_t nChild = -1;
    EXPECT_EQ(
        posix_spawn(&nChild, sProgram.c_str(), nullptr, nullptr, aArguments.data(), aEnvironment.data()), 0);
    return nChild;
}

// True if the process has a file in the folder open for writing that contains at least nBytes, whether or not
// the file has a name yet.
bool bWriting(pid_t nProcess, const fs::path& objTarget, std::uintmax_t nBytes)
{
    const std::string sProcess = "/proc/" + std::to_string(nProcess);
    std::error_code objClosed;  // the descriptor may be closed while we look at it
    for (const auto& objEntry : fs::directory_iterator(sProcess + "/fd", objClosed)) {
        if (fs::read_symlink(objEntry, objClosed).parent_path() != objTarget)
            continue;
        std::string sField;
        unsigned nFlags = 0;
        std::ifstream objInfo(sProcess + "/fdinfo/" + objEntry.path().filename().string());
        while (objInfo >> sField && sField != "flags:") {
        }
        objInfo >> std::oct >> nFlags;
        const std::uintmax_t nSize = fs::file_size(objEntry, objClosed);
        if (!objClosed && (nFlags & O_ACCMODE) != O_RDONLY && nSize >= nBytes)
            return true;
    }
    return false;
}

std::size_t nFilesIn(const fs::path& objTarget)
{
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(objTarget), fs::directory_iterator{}));
}

// Kills the process in the middle of a write, once the folder contains nFiles and nBytes of another file have
// been written. The process is stopped before the check, so a kill is known to hit a write. False if the
// process ended first.
bool bKillDuringWrite(pid_t nProcess, const fs::path& objTarget, std::size_t nFiles, std::uintmax_t nBytes)
{
    int nStatus = 0;
    while (waitpid(nProcess, &nStatus, WNOHANG) == 0) {
        if (nFilesIn(objTarget) < nFiles || !bWriting(nProcess, objTarget, nBytes))
            continue;
        kill(nProcess, SIGSTOP);
        waitpid(nProcess, &nStatus, WUNTRACED);
        if (!WIFSTOPPED(nStatus))
            return false;
        if (bWriting(nProcess, objTarget, nBytes)) {
            kill(nProcess, SIGKILL);
            waitpid(nProcess, &nStatus, 0);
            return true;
        }
        kill(nProcess, SIGCONT);
    }
    return false;
}

struct Moment {
    std::size_t nFiles;     ///< complete files
    std::uintmax_t nBytes;  ///< bytes written of the next one
};
constexpr Moment kMoments[] = {{0, 0}, {0, 1}, {1, 128 * 1024}, {3, 1}, {8, 256 * 1024}, {15, 1}};
// On a busy machine a run may end unobserved.
constexpr std::size_t kLeastHits = std::size(kMoments) - 2;

// A folder `in` with copies of one image, an empty folder `out`, and the file that Varnel makes of the image.
struct KillFolder : ScratchFolder {
    explicit KillFolder(const std::string& sExtension)
    {
        const std::string sBmp = sLargeBmp();
        for (int l = 0; l < kPictures; ++l)
            sWrite("in/" + std::to_string(l) + ".bmp", sBmp);
        fs::create_directories(Target());
        objVarnel(*this, {"/S", sPath("in/0.bmp"), "/T", sPath("whole." + sExtension)});
        sWhole = sRead("whole." + sExtension);
    }
    fs::path Target() const { return Root() / "out"; }

    std::string sWhole;
};

class Kill : public testing::TestWithParam<const char*>
{
};

}  // namespace

TEST_P(Kill, LeavesOnlyCompleteFilesAtAnyMoment)
{
    const std::string sExtension = GetParam();
    const KillFolder objFolder(sExtension);
    ASSERT_NE(sReferenceDecode(objFolder.sPath("whole." + sExtension)), "");
    std::size_t nHits = 0;
    for (const Moment& objMoment : kMoments) {
        fs::remove_all(objFolder.Target());
        fs::create_directories(objFolder.Target());

        nHits += bKillDuringWrite(nStart(objFolder, {"/S", objFolder.sPath("in/*.bmp"), "/T",
                                                     objFolder.sPath("out/*." + sExtension)}),
                                  objFolder.Target(), objMoment.nFiles, objMoment.nBytes);

        for (const auto& objEntry : fs::directory_iterator(objFolder.Target())) {
            EXPECT_EQ(objEntry.path().extension(), "." + sExtension) << objEntry.path();
            EXPECT_TRUE(objFolder.sRead("out/" + objEntry.path().filename().string()) == objFolder.sWhole)
                << objEntry.path();
        }
        EXPECT_GE(nFilesIn(objFolder.Target()), objMoment.nFiles);
    }
    EXPECT_GE(nHits, kLeastHits);
}

INSTANTIATE_TEST_SUITE_P(Formats, Kill, testing::Values("png", "jpg", "bmp", "tif", "tga"),
                         [](const auto& objInfo) { return std::string(objInfo.param); });

TEST(KillWhileReplacing, LeavesTheOldOrTheNewFile)
{
    const KillFolder objFolder("png");
    const std::string sOld = "an older file";
    std::size_t nHits = 0;
    for (const Moment& objMoment : kMoments) {
        for (int l = 0; l < kPictures; ++l)
            objFolder.sWrite("out/" + std::to_string(l) + ".png", sOld);

        nHits += bKillDuringWrite(
            nStart(objFolder, {"/S", objFolder.sPath("in/*.bmp"), "/T", objFolder.sPath("out/*.png")}),
            objFolder.Target(), 0, objMoment.nBytes);

        std::size_t nFiles = 0;
        for (const auto& objEntry : fs::directory_iterator(objFolder.Target())) {
            const std::string sName = objEntry.path().filename().string();
            const std::string sFile = objFolder.sRead("out/" + sName);
            // A complete file that was about to be renamed keeps its temporary name.
            const bool bTemporary = sName.starts_with(".varnel-");
            EXPECT_TRUE(sFile == objFolder.sWhole || (sFile == sOld && !bTemporary)) << sName;
            nFiles += !bTemporary;
        }
        EXPECT_EQ(nFiles, std::size_t{kPictures});
    }
    EXPECT_GE(nHits, kLeastHits);
}

TEST(KillWhileAppending, LeavesATiffOfCompletePages)
{
    const KillFolder objFolder("tif");
    const std::string sPage = sReferenceDecode(objFolder.sPath("in/0.bmp"));
    const auto nPage = static_cast<std::uintmax_t>(objFolder.sWhole.size());
    const std::string sTarget = objFolder.sPath("out/all.tif");
    std::size_t nHits = 0;
    for (const std::uintmax_t nBytes : {nPage, nPage + 1, 2 * nPage + 1, 5 * nPage + nPage / 2}) {
        fs::remove(sTarget);

        nHits += bKillDuringWrite(
            nStart(objFolder, {"/S", objFolder.sPath("in/*.bmp"), "/T", sTarget, "/2", "1", "/3", "TRUE"}),
            objFolder.Target(), 1, nBytes);

        const Outcome objPages = objRun({ImageMagick("identify"), "-format", "%p ", sTarget});
        EXPECT_EQ(objPages.lStatus, 0);
        EXPECT_EQ(objPages.sErrors, "");
        const auto nPages = std::count(objPages.sOutput.begin(), objPages.sOutput.end(), ' ');
        EXPECT_GE(nPages, 1);
        const std::string sLast = objFolder.sPath("last.bmp");
        objRun({ImageMagick("convert"), sTarget + "[" + std::to_string(nPages - 1) + "]", sLast});
        EXPECT_TRUE(sReferenceDecode(sLast) == sPage) << nBytes;
    }
    EXPECT_GE(nHits, 3u);
}
