// Tests of the operations of CodecImageFile on files of several pages.
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

#include "src/platform/image/codec_image_file.h"
#include "tests/platform/image/support/host_files.h"
#include "tests/platform/image/support/image_tools.h"
#include "tests/platform/image/support/io_count.h"

namespace
{
ImageBuffer aPage(int nPage)
{
    ImageBuffer aImage = aPattern(20, 10, 1);
    aImage.bytes[0] = static_cast<std::uint8_t>(nPage);
    return aImage;
}

class Pages : public testing::Test
{
protected:
    std::string sPath(const std::string& sName) const { return m_objFolder.sPath(sName); }
    // Which pages the file has, by what aPage put into them.
    std::vector<int> aPagesIn(const std::string& sName)
    {
        CodecImageFile objOther(m_objFiles);
        std::vector<int> aFound;
        for (std::int32_t i = 0; i < objOther.GetFrameCount(sPath(sName)); ++i) {
            ImageBuffer aImage;
            aFound.push_back(objOther.LoadFrame(sPath(sName), i, aImage) ? aImage.bytes[0] : -1);
        }
        return aFound;
    }

    TestFolder m_objFolder;
    HostFiles m_objFiles;
    CodecImageFile m_objImageFile{m_objFiles};
};

using ints = std::vector<int>;
}  // namespace

TEST_F(Pages, AreAppendedToTheFileThatSaveTiffBegan)
{
    m_objImageFile.SetMultiFrameSave(true);

    ASSERT_TRUE(m_objImageFile.SaveTIFF(aPage(1), sPath("a.tif")));
    EXPECT_EQ(aPagesIn("a.tif"), (ints{1}));
    ASSERT_TRUE(m_objImageFile.AppendFrame(aPage(2), false));
    EXPECT_EQ(aPagesIn("a.tif"), (ints{1, 2}));
    ASSERT_TRUE(m_objImageFile.AppendFrame(aPage(3), true));

    EXPECT_EQ(aPagesIn("a.tif"), (ints{1, 2, 3}));
    EXPECT_FALSE(m_objImageFile.AppendFrame(aPage(4), false));
    EXPECT_EQ(aPagesIn("a.tif"), (ints{1, 2, 3}));
}

TEST_F(Pages, AreRefusedWhileNoFileIsOpen)
{
    EXPECT_FALSE(m_objImageFile.AppendFrame(aPage(1), false));
    EXPECT_FALSE(m_objImageFile.AppendFrame(aPage(1), true));
    EXPECT_FALSE(m_objImageFile.AppendFrame({}, true));

    m_objImageFile.SetMultiFrameSave(false);
    ASSERT_TRUE(m_objImageFile.SaveTIFF(aPage(1), sPath("a.tif")));
    EXPECT_FALSE(m_objImageFile.AppendFrame(aPage(2), true));
    EXPECT_EQ(aPagesIn("a.tif"), (ints{1}));
}

TEST_F(Pages, EndWithAnEmptyOne)
{
    m_objImageFile.SetMultiFrameSave(true);
    ASSERT_TRUE(m_objImageFile.SaveTIFF(aPage(1), sPath("a.tif")));

    EXPECT_FALSE(m_objImageFile.AppendFrame({}, false));
    EXPECT_TRUE(m_objImageFile.AppendFrame({}, true));

    EXPECT_FALSE(m_objImageFile.AppendFrame(aPage(2), false));
    EXPECT_EQ(aPagesIn("a.tif"), (ints{1}));
}

TEST_F(Pages, EndWhenMultiFrameSaveIsTurnedOff)
{
    m_objImageFile.SetMultiFrameSave(true);
    ASSERT_TRUE(m_objImageFile.SaveTIFF(aPage(1), sPath("a.tif")));
    m_objImageFile.SetMultiFrameSave(true);
    ASSERT_TRUE(m_objImageFile.AppendFrame(aPage(2), false));

    m_objImageFile.SetMultiFrameSave(false);
    m_objImageFile.SetMultiFrameSave(true);

    EXPECT_FALSE(m_objImageFile.AppendFrame(aPage(3), false));
    EXPECT_EQ(aPagesIn("a.tif"), (ints{1, 2}));
}

TEST_F(Pages, GoToTheFileBegunLast)
{
    m_objImageFile.SetMultiFrameSave(true);
    ASSERT_TRUE(m_objImageFile.SaveTIFF(aPage(1), sPath("a.tif")));
    ASSERT_TRUE(m_objImageFile.SaveTIFF(aPage(2), sPath("b.tif")));
    ASSERT_TRUE(m_objImageFile.AppendFrame(aPage(3), true));

    EXPECT_EQ(aPagesIn("a.tif"), (ints{1}));
    EXPECT_EQ(aPagesIn("b.tif"), (ints{2, 3}));
}

TEST_F(Pages, AreRefusedAfterABeginningThatFailed)
{
    m_objImageFile.SetMultiFrameSave(true);
    ASSERT_TRUE(m_objImageFile.SaveTIFF(aPage(1), sPath("a.tif")));

    EXPECT_FALSE(m_objImageFile.SaveTIFF(aPage(2), sPath("no such folder/b.tif")));
    EXPECT_FALSE(m_objImageFile.SaveTIFF({}, sPath("c.tif")));

    EXPECT_FALSE(m_objImageFile.AppendFrame(aPage(3), false));
    EXPECT_EQ(aPagesIn("a.tif"), (ints{1}));
    EXPECT_FALSE(std::filesystem::exists(sPath("c.tif")));
}

TEST_F(Pages, AreCopiedFromTheFileThatIsReplacedAfterwards)
{
    m_objImageFile.SetMultiFrameSave(true);
    ASSERT_TRUE(m_objImageFile.SaveTIFF(aPage(1), sPath("a.tif")));
    ASSERT_TRUE(m_objImageFile.AppendFrame(aPage(2), true));

    // What an append to an existing file does.
    m_objImageFile.SetMultiFrameSave(true);
    const std::int32_t lPages = m_objImageFile.GetFrameCount(sPath("a.tif"));
    ASSERT_EQ(lPages, 2);
    for (std::int32_t i = 0; i < lPages; ++i) {
        ImageBuffer aImage;
        ASSERT_TRUE(m_objImageFile.LoadFrame(sPath("a.tif"), i, aImage));
        ASSERT_TRUE(i == 0 ? m_objImageFile.SaveTIFF(aImage, sPath("a.tif.TIF"))
                           : m_objImageFile.AppendFrame(aImage, false));
    }
    ASSERT_TRUE(m_objImageFile.AppendFrame(aPage(3), true));
    std::filesystem::rename(sPath("a.tif.TIF"), sPath("a.tif"));

    EXPECT_EQ(aPagesIn("a.tif"), (ints{1, 2, 3}));
    EXPECT_EQ(m_objImageFile.GetFrameCount(sPath("a.tif")), 3);
}

TEST_F(Pages, ThatWereReadAreReadAnewWhenTheFileHasGrown)
{
    m_objImageFile.SetMultiFrameSave(true);
    ASSERT_TRUE(m_objImageFile.SaveTIFF(aPage(1), sPath("a.tif")));
    ASSERT_TRUE(m_objImageFile.AppendFrame(aPage(2), false));
    EXPECT_EQ(m_objImageFile.GetFrameCount(sPath("a.tif")), 2);

    ASSERT_TRUE(m_objImageFile.AppendFrame(aPage(3), false));

    EXPECT_EQ(m_objImageFile.GetFrameCount(sPath("a.tif")), 3);
    ImageBuffer aImage;
    ASSERT_TRUE(m_objImageFile.LoadFrame(sPath("a.tif"), 2, aImage));
    EXPECT_EQ(aImage.bytes[0], 3);
    EXPECT_FALSE(m_objImageFile.LoadFrame(sPath("a.tif"), 3, aImage));
    EXPECT_FALSE(m_objImageFile.LoadFrame(sPath("a.tif"), -1, aImage));
}

TEST_F(Pages, CostOnePassOverTheFileWhenTheyAreAskedForOneByOne)
{
    constexpr int kPages = 300;
    m_objImageFile.SetMultiFrameSave(true);
    ASSERT_TRUE(m_objImageFile.SaveTIFF(aPage(0), sPath("a.tif")));
    for (int i = 1; i < kPages; ++i)
        ASSERT_TRUE(m_objImageFile.AppendFrame(aPage(i), i == kPages - 1));
    const IoCount objBefore = objIoSoFar();

    for (int i = 0; i < kPages; ++i) {
        ImageBuffer aImage;
        ASSERT_TRUE(m_objImageFile.LoadFrame(sPath("a.tif"), i, aImage));
        ASSERT_EQ(aImage.bytes[0], i & 255);
    }

    // Opening the file anew for each page would read the chain of 300 directories 300 times.
    EXPECT_LT(objIoSoFar().nRead - objBefore.nRead, 3 * std::filesystem::file_size(sPath("a.tif")));
}

TEST_F(Pages, TakeTheSettingsThatHoldWhenTheyAreWritten)
{
    m_objImageFile.SetMultiFrameSave(true);
    m_objImageFile.SetTIFFCompression(4);
    ASSERT_TRUE(m_objImageFile.SaveTIFF(aPage(1), sPath("a.tif")));
    m_objImageFile.SetTIFFCompression(1);
    ASSERT_TRUE(m_objImageFile.AppendFrame(aPage(2), true));

    std::string sInfo;
    ASSERT_TRUE(bRun("tiffinfo " + sPath("a.tif") + " | grep Scheme", &sInfo));
    EXPECT_EQ(sInfo, "  Compression Scheme: CCITT Group 4\n  Compression Scheme: LZW\n");
}
