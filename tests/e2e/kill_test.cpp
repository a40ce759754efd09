// Killing a run at any moment must leave only complete files.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <filesystem>

#include "tests/e2e/support/program.h"
#include "tests/support/paths.h"

namespace fs = std::filesystem;

namespace
{

constexpr int kPictures = 40;

// Converts all images of the folder and kills the program as soon as nFiles target files exist.
void RunAndKill(const ScratchFolder& objFolder, std::size_t nFiles)
{
    const std::string sSource = objFolder.sPath("in/*.bmp");
    const std::string sTarget = objFolder.sPath("out/*.png");
    std::array<std::string, 5> aWords = {ProgramPath(), "/S", sSource, "/T", sTarget};
    std::array<char*, 6> aArguments = {aWords[0].data(), aWords[1].data(), aWords[2].data(),
                                       aWords[3].data(), aWords[4].data(), nullptr};
    pid_t nChild = 0;
    ASSERT_EQ(posix_spawn(&nChild, aWords[0].c_str(), nullptr, nullptr, aArguments.data(), environ), 0);
    int nStatus = 0;
    while (waitpid(nChild, &nStatus, WNOHANG) == 0) {
        std::error_code objIgnored;
        const auto nDone = static_cast<std::size_t>(std::distance(
            fs::directory_iterator(objFolder.Root() / "out", objIgnored), fs::directory_iterator{}));
        if (nDone < nFiles)
            continue;
        kill(nChild, SIGKILL);
        waitpid(nChild, &nStatus, 0);
        break;
    }
}

}  // namespace

TEST(Kill, LeavesOnlyCompleteFilesAtAnyMoment)
{
    for (const std::size_t nFiles : {1u, 3u, 8u, 15u, 30u}) {
        const ScratchFolder objFolder;
        for (int l = 0; l < kPictures; ++l)
            objFolder.sCopySample("landscape-small.bmp", "in/" + std::to_string(l) + ".bmp");
        fs::create_directories(objFolder.Root() / "out");
        const std::string sExpected = sReferenceDecode(objFolder.sPath("in/0.bmp"));
        ASSERT_NE(sExpected, "");

        RunAndKill(objFolder, nFiles);

        for (const auto& objEntry : fs::directory_iterator(objFolder.Root() / "out")) {
            EXPECT_EQ(objEntry.path().extension(), ".png") << objEntry.path();
            EXPECT_TRUE(sReferenceDecode(objEntry.path().string()) == sExpected) << objEntry.path();
        }
    }
}
