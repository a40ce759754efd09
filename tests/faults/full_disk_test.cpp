// Runs on a small file system that gets full.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <memory>

#include "tests/e2e/support/picture.h"
#include "tests/e2e/support/program.h"
#include "tests/support/paths.h"

using testing::HasSubstr;
using testing::Not;

namespace fs = std::filesystem;

namespace
{

/// A file system of a few pages in memory. Mounted() is false if this user may not mount.
class SmallDisk
{
public:
    SmallDisk(const std::string& path, const std::string& size) : path_(path)
    {
        fs::create_directories(path);
        mounted_ = mount("tmpfs", path.c_str(), "tmpfs", 0, ("size=" + size).c_str()) == 0;
    }
    ~SmallDisk()
    {
        if (mounted_)
            umount2(path_.c_str(), MNT_DETACH);
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    bool Mounted() const { return mounted_; }

private:
    const std::string path_;
    bool mounted_ = false;
};

std::string NoiseBmp(unsigned seed)
{
    return sBmpOf(objPicture(100, 100, [&](int, int) {
        Rgb pixel{};
        for (int& level : pixel) {
            seed = seed * 1664525 + 1013904223;
            level = static_cast<int>(seed >> 24);
        }
        return pixel;
    }));
}

constexpr int kPictures = 12;  // of 30 KB

void PrepareSources(const ScratchFolder& folder)
{
    for (int i = 0; i < kPictures; ++i)
        folder.sWrite("in/" + std::to_string(i) + ".bmp", NoiseBmp(static_cast<unsigned>(i)));
    folder.sWrite(".varnel-home/VL_SearchHistory.INI",
                  "[frmMain]\nbDeleteOriginalFileAfterProcessing=TRUE\n");
}

}  // namespace

TEST(FullDisk, LosesNoSourceOfNewFiles)
{
    const ScratchFolder folder;
    PrepareSources(folder);
    const SmallDisk disk(folder.sPath("out"), "200k");
    if (!disk.Mounted())
        GTEST_SKIP() << "may not mount";

    objVarnel(folder, {"/S", folder.sPath("in/*.bmp"), "/T", folder.sPath("out/*.tga"), "/L",
                       folder.sPath("report.txt")});

    int saved = 0;
    for (int i = 0; i < kPictures; ++i) {
        const std::string number = std::to_string(i);
        const bool has_target = folder.bHas("out/" + number + ".tga");
        saved += has_target;
        EXPECT_NE(folder.bHas("in/" + number + ".bmp"), has_target) << number;
        folder.sWrite("again.bmp", NoiseBmp(static_cast<unsigned>(i)));
        if (has_target) {
            EXPECT_TRUE(objReferenceDecode(folder.sPath("out/" + number + ".tga")) ==
                        objReferenceDecode(folder.sPath("again.bmp")));
        }
    }
    EXPECT_GT(saved, 0);
    EXPECT_LT(saved, kPictures);
    EXPECT_THAT(folder.sRead("report.txt"), HasSubstr("Unable to convert"));
}

TEST(FullDisk, LeavesAnAppendedTiffWithoutHalfAPage)
{
    const ScratchFolder folder;
    PrepareSources(folder);
    const SmallDisk disk(folder.sPath("out"), "300k");
    if (!disk.Mounted())
        GTEST_SKIP() << "may not mount";

    objVarnel(folder, {"/S", folder.sPath("in/*.bmp"), "/T", folder.sPath("out/all.tif"), "/3", "TRUE", "/L",
                       folder.sPath("report.txt")});

    const Outcome pages = objRun({ImageMagick("identify"), "-format", "%p\n", folder.sPath("out/all.tif")});
    EXPECT_EQ(pages.sErrors, "");
    const auto count = std::count(pages.sOutput.begin(), pages.sOutput.end(), '\n');
    const auto left = std::distance(fs::directory_iterator(folder.Root() / "in"), {});
    EXPECT_GT(count, 0);
    EXPECT_EQ(count + left, kPictures);
    EXPECT_THAT(folder.sRead("report.txt"), HasSubstr("Unable to convert"));
    EXPECT_THAT(folder.sRead("report.txt"), Not(HasSubstr("Conversion Successful")));
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.Root() / "out"), {}), 1);
}
