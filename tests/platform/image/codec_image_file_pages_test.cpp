// Tests of CodecImageFile with multi-page files.
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

#include "src/platform/image/codec_image_file.h"
#include "tests/platform/image/support/host_files.h"
#include "tests/platform/image/support/image_tools.h"
#include "tests/platform/image/support/io_count.h"

namespace
{
ImageBuffer Page(int page)
{
    ImageBuffer image = Pattern(20, 10, 1);
    image.bytes[0] = static_cast<std::uint8_t>(page);
    return image;
}

class Pages : public testing::Test
{
protected:
    std::string Path(const std::string& name) const { return folder_.Path(name); }
    // The pages in the file, identified by the values that Page stores in them.
    std::vector<int> PagesIn(const std::string& name)
    {
        CodecImageFile other(files_, files_.saver);
        std::vector<int> found;
        for (std::int32_t i = 0; i < other.GetFrameCount(Path(name)); ++i) {
            ImageBuffer image;
            found.push_back(other.LoadFrame(Path(name), i, image) ? image.bytes[0] : -1);
        }
        return found;
    }

    TestFolder folder_;
    HostFiles files_;
    CodecImageFile image_file_{files_, files_.saver};
};

using ints = std::vector<int>;
}  // namespace

TEST_F(Pages, AreAppendedToFileOfLastSaveTiff)
{
    image_file_.SetMultiFrameSave(true);

    ASSERT_TRUE(image_file_.SaveTIFF(Page(1), Path("a.tif")));
    ASSERT_TRUE(image_file_.AppendFrame(Page(2), false));
    EXPECT_EQ(PagesIn("a.tif"), ints{});
    ASSERT_TRUE(image_file_.AppendFrame(Page(3), true));

    EXPECT_EQ(PagesIn("a.tif"), (ints{1, 2, 3}));
    EXPECT_FALSE(image_file_.AppendFrame(Page(4), false));
    EXPECT_EQ(PagesIn("a.tif"), (ints{1, 2, 3}));
}

TEST_F(Pages, AreRefusedIfNoFileIsOpen)
{
    EXPECT_FALSE(image_file_.AppendFrame(Page(1), false));
    EXPECT_FALSE(image_file_.AppendFrame(Page(1), true));
    EXPECT_FALSE(image_file_.AppendFrame({}, true));

    image_file_.SetMultiFrameSave(false);
    ASSERT_TRUE(image_file_.SaveTIFF(Page(1), Path("a.tif")));
    EXPECT_FALSE(image_file_.AppendFrame(Page(2), true));
    EXPECT_EQ(PagesIn("a.tif"), (ints{1}));
}

TEST_F(Pages, EndWithEmptyFrame)
{
    image_file_.SetMultiFrameSave(true);
    ASSERT_TRUE(image_file_.SaveTIFF(Page(1), Path("a.tif")));

    EXPECT_FALSE(image_file_.AppendFrame({}, false));
    EXPECT_TRUE(image_file_.AppendFrame({}, true));

    EXPECT_FALSE(image_file_.AppendFrame(Page(2), false));
    EXPECT_EQ(PagesIn("a.tif"), (ints{1}));
}

TEST_F(Pages, AreDiscardedWhenMultiFrameSaveIsTurnedOff)
{
    image_file_.SetMultiFrameSave(true);
    ASSERT_TRUE(image_file_.SaveTIFF(Page(1), Path("a.tif")));
    ASSERT_TRUE(image_file_.AppendFrame({}, true));
    ASSERT_TRUE(image_file_.SaveTIFF(Page(2), Path("a.tif")));
    image_file_.SetMultiFrameSave(true);
    ASSERT_TRUE(image_file_.AppendFrame(Page(3), false));

    image_file_.SetMultiFrameSave(false);
    image_file_.SetMultiFrameSave(true);

    EXPECT_FALSE(image_file_.AppendFrame(Page(4), true));
    EXPECT_EQ(PagesIn("a.tif"), (ints{1}));
}

TEST_F(Pages, GoToFileThatWasBegunLast)
{
    image_file_.SetMultiFrameSave(true);
    ASSERT_TRUE(image_file_.SaveTIFF(Page(1), Path("a.tif")));
    ASSERT_TRUE(image_file_.SaveTIFF(Page(2), Path("b.tif")));
    ASSERT_TRUE(image_file_.AppendFrame(Page(3), true));

    EXPECT_FALSE(std::filesystem::exists(Path("a.tif")));
    EXPECT_EQ(PagesIn("b.tif"), (ints{2, 3}));
}

TEST_F(Pages, AreRefusedAfterFailedStart)
{
    image_file_.SetMultiFrameSave(true);
    ASSERT_TRUE(image_file_.SaveTIFF(Page(1), Path("a.tif")));

    EXPECT_FALSE(image_file_.SaveTIFF(Page(2), Path("no such folder/b.tif")));
    EXPECT_FALSE(image_file_.SaveTIFF({}, Path("c.tif")));

    EXPECT_FALSE(image_file_.AppendFrame(Page(3), true));
    EXPECT_FALSE(std::filesystem::exists(Path("a.tif")));
    EXPECT_FALSE(std::filesystem::exists(Path("c.tif")));
}

TEST_F(Pages, AreAddedToFileWhilePagesOfItAreLoaded)
{
    image_file_.SetMultiFrameSave(true);
    ASSERT_TRUE(image_file_.SaveTIFF(Page(1), Path("a.tif")));
    ASSERT_TRUE(image_file_.AppendFrame(Page(2), true));

    // The steps of appending to an existing file.
    image_file_.SetMultiFrameSave(true);
    const std::int32_t pages = image_file_.GetFrameCount(Path("a.tif"));
    ASSERT_EQ(pages, 2);
    for (std::int32_t i = 0; i < pages; ++i) {
        ImageBuffer image;
        ASSERT_TRUE(image_file_.LoadFrame(Path("a.tif"), i, image));
        ASSERT_TRUE(i == 0 ? image_file_.SaveTIFF(image, Path("a.tif"))
                           : image_file_.AppendFrame(image, false));
    }
    ASSERT_TRUE(image_file_.AppendFrame(Page(3), true));

    EXPECT_EQ(PagesIn("a.tif"), (ints{1, 2, 3}));
    EXPECT_EQ(image_file_.GetFrameCount(Path("a.tif")), 3);
    ImageBuffer image;
    ASSERT_TRUE(image_file_.LoadFrame(Path("a.tif"), 2, image));
    EXPECT_EQ(image.bytes[0], 3);
    EXPECT_FALSE(image_file_.LoadFrame(Path("a.tif"), 3, image));
    EXPECT_FALSE(image_file_.LoadFrame(Path("a.tif"), -1, image));
}

TEST_F(Pages, TakeSinglePassWhenReadOneByOne)
{
    constexpr int kPages = 300;
    image_file_.SetMultiFrameSave(true);
    ASSERT_TRUE(image_file_.SaveTIFF(Page(0), Path("a.tif")));
    for (int i = 1; i < kPages; ++i)
        ASSERT_TRUE(image_file_.AppendFrame(Page(i), i == kPages - 1));
    const IoCount before = IoSoFar();

    for (int i = 0; i < kPages; ++i) {
        ImageBuffer image;
        ASSERT_TRUE(image_file_.LoadFrame(Path("a.tif"), i, image));
        ASSERT_EQ(image.bytes[0], i & 255);
    }

    // Reopening the file for each page would read the chain of 300 directories 300 times.
    EXPECT_LT(IoSoFar().read - before.read, 3 * std::filesystem::file_size(Path("a.tif")));
}

TEST_F(Pages, UseSettingsAtTimeOfWriting)
{
    image_file_.SetMultiFrameSave(true);
    image_file_.SetTIFFCompression(4);
    ASSERT_TRUE(image_file_.SaveTIFF(Page(1), Path("a.tif")));
    image_file_.SetTIFFCompression(1);
    ASSERT_TRUE(image_file_.AppendFrame(Page(2), true));

    std::string info;
    ASSERT_TRUE(RunCommand("tiffinfo " + Path("a.tif") + " | grep Scheme", &info));
    EXPECT_EQ(info, "  Compression Scheme: CCITT Group 4\n  Compression Scheme: LZW\n");
}
