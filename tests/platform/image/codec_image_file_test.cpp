// Tests of what a load and a save do around the codecs.
#include "src/platform/image/codec_image_file.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/platform/image/support/host_files.h"
#include "tests/platform/image/support/image_tools.h"
#include "tests/platform/image/support/profiles.h"

namespace
{
struct Library {
    HostFiles objFiles;
    CodecImageFile objImageFile{objFiles};
    TestFolder objFolder;

    ImageBuffer aLoaded(const std::string& sFile)
    {
        ImageBuffer aImage;
        EXPECT_TRUE(objImageFile.LoadImage(sFile, aImage)) << sFile;
        return aImage;
    }
};

// Half red, half green by its numbers; by its profile the other way round.
ImageBuffer aExchangedColours()
{
    ImageBuffer aImage = aPattern(32, 16, 3);
    for (std::size_t i = 0; i < aImage.bytes.size(); i += 3) {
        const bool bLeft = i / 3 % 32 < 16;
        aImage.bytes[i] = 0;
        aImage.bytes[i + 1] = bLeft ? 0 : 255;
        aImage.bytes[i + 2] = bLeft ? 255 : 0;
    }
    aImage.icc_profile = aSwappedProfile();
    return aImage;
}
}  // namespace

TEST(SaveOfAPictureWithAProfile, TurnsThePixelsToSrgbWhereTheFormatHoldsNone)
{
    Library lib;
    const ImageBuffer aImage = aExchangedColours();

    ASSERT_TRUE(lib.objImageFile.SaveBMP(aImage, lib.objFolder.sPath("out.bmp")));

    const ImageBuffer aBmp = lib.aLoaded(lib.objFolder.sPath("out.bmp"));
    EXPECT_GE(aBmp.bytes[1], 254);  // the left side is green
    EXPECT_LE(aBmp.bytes[2], 1);
    EXPECT_EQ(aImage.icc_profile, aSwappedProfile());  // what was lent is as it was
    EXPECT_EQ(aImage.bytes[2], 255);
}

TEST(SaveOfAPictureWithAProfile, KeepsThePixelsWhereTheProfileGoesAlong)
{
    Library lib;
    ASSERT_TRUE(lib.objImageFile.SaveJPEG(aExchangedColours(), lib.objFolder.sPath("out.jpg")));

    const ImageBuffer aJpeg = lib.aLoaded(lib.objFolder.sPath("out.jpg"));
    EXPECT_EQ(aJpeg.icc_profile, aSwappedProfile());
    EXPECT_GE(aJpeg.bytes[2], 250);
}

TEST(SaveOfAPictureWithAProfile, TakesTheColoursAsTheyAreWhenTheProfileCannotBeUsed)
{
    Library lib;
    ImageBuffer aImage = aExchangedColours();
    std::fill(aImage.icc_profile.begin() + 132, aImage.icc_profile.end(), std::uint8_t{0xFF});

    ASSERT_TRUE(lib.objImageFile.SaveBMP(aImage, lib.objFolder.sPath("out.bmp")));

    EXPECT_EQ(lib.aLoaded(lib.objFolder.sPath("out.bmp")).bytes[2], 255);
}

TEST(SaveOfAPictureWithAProfile, LaysAlphaOnWhiteAndTurnsTheColours)
{
    Library lib;
    ImageBuffer aImage = aPattern(2, 1, 4);
    aImage.bytes = {0, 0, 255, 255, 0, 0, 255, 0};  // red and nothing
    aImage.icc_profile = aSwappedProfile();

    ASSERT_TRUE(lib.objImageFile.SaveBMP(aImage, lib.objFolder.sPath("out.bmp")));

    const ImageBuffer aBmp = lib.aLoaded(lib.objFolder.sPath("out.bmp"));
    EXPECT_GE(aBmp.bytes[1], 254);
    EXPECT_LE(aBmp.bytes[2], 1);
    EXPECT_EQ(aBmp.bytes[3] + aBmp.bytes[4] + aBmp.bytes[5], 3 * 255);
}

TEST(Load, LeavesTheBufferWhenTheFileIsRefused)
{
    Library lib;
    ImageBuffer aImage = aPattern(5, 4, 3);
    for (const char* sName : {"jpeg/cut.jpg", "jpeg/none.jpg", "jpeg/make.py", "jpeg"})
        EXPECT_FALSE(lib.objImageFile.LoadImage(sSamplePath(sName), aImage)) << sName;
    EXPECT_EQ(objDifference(aImage, aPattern(5, 4, 3)).lGreatest, 0);
    EXPECT_EQ(lib.objImageFile.GetFrameCount(sSamplePath("jpeg/none.jpg")), 0);
}

TEST(Load, SeesAFileThatWasReplacedSinceTheLastCall)
{
    Library lib;
    const std::string sFile = lib.objFolder.sPath("picture");
    WriteFileContent(sFile, aFileContent(sSamplePath("jpeg/baseline.jpg")));
    EXPECT_EQ(lib.objImageFile.GetFrameCount(sFile), 1);
    WriteFileContent(sFile, aFileContent(sSamplePath("jpeg/grey.jpg")));

    EXPECT_EQ(lib.aLoaded(sFile).channels, 1);
}
