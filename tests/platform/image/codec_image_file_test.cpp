// Tests of loading and saving: everything but the codecs themselves.
#include "src/platform/image/codec_image_file.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/platform/image/support/host_files.h"
#include "tests/platform/image/support/image_tools.h"
#include "tests/platform/image/support/profiles.h"
#include "tests/platform/image/support/samples.h"

namespace
{
struct Library {
    HostFiles files;
    CodecImageFile image_file{files, files.saver};
    TestFolder folder;

    ImageBuffer Loaded(const std::string& file)
    {
        ImageBuffer image;
        EXPECT_TRUE(image_file.LoadImage(file, image)) << file;
        return image;
    }
};

// Half red, half green by its values; the profile swaps these colours.
ImageBuffer ExchangedColours()
{
    ImageBuffer image = Pattern(32, 16, 3);
    for (std::size_t i = 0; i < image.bytes.size(); i += 3) {
        const bool left = i / 3 % 32 < 16;
        image.bytes[i] = 0;
        image.bytes[i + 1] = left ? 0 : 255;
        image.bytes[i + 2] = left ? 255 : 0;
    }
    image.icc_profile = SwappedProfile();
    return image;
}
}  // namespace

TEST(SaveWithProfile, ConvertsToSrgbIfFormatHasNoProfiles)
{
    Library lib;
    const ImageBuffer image = ExchangedColours();

    ASSERT_TRUE(lib.image_file.SaveBMP(image, lib.folder.Path("out.bmp")));

    const ImageBuffer bmp = lib.Loaded(lib.folder.Path("out.bmp"));
    EXPECT_GE(bmp.bytes[1], 254);  // the left half is green
    EXPECT_LE(bmp.bytes[2], 1);
    EXPECT_EQ(image.icc_profile, SwappedProfile());  // the source is unchanged
    EXPECT_EQ(image.bytes[2], 255);
}

TEST(SaveWithProfile, KeepsPixelsIfFormatEmbedsProfile)
{
    Library lib;
    ASSERT_TRUE(lib.image_file.SaveJPEG(ExchangedColours(), lib.folder.Path("out.jpg")));

    const ImageBuffer jpeg = lib.Loaded(lib.folder.Path("out.jpg"));
    EXPECT_EQ(jpeg.icc_profile, SwappedProfile());
    EXPECT_GE(jpeg.bytes[2], 250);
}

TEST(SaveWithProfile, KeepsPixelsIfProfileIsUnusable)
{
    Library lib;
    ImageBuffer image = ExchangedColours();
    std::fill(image.icc_profile.begin() + 132, image.icc_profile.end(), std::uint8_t{0xFF});

    ASSERT_TRUE(lib.image_file.SaveBMP(image, lib.folder.Path("out.bmp")));

    EXPECT_EQ(lib.Loaded(lib.folder.Path("out.bmp")).bytes[2], 255);
}

TEST(SaveWithProfile, FlattensAlphaOnWhiteAndConvertsColours)
{
    Library lib;
    ImageBuffer image = Pattern(2, 1, 4);
    image.bytes = {0, 0, 255, 255, 0, 0, 255, 0};  // red and fully transparent
    image.icc_profile = SwappedProfile();

    ASSERT_TRUE(lib.image_file.SaveBMP(image, lib.folder.Path("out.bmp")));

    const ImageBuffer bmp = lib.Loaded(lib.folder.Path("out.bmp"));
    EXPECT_GE(bmp.bytes[1], 254);
    EXPECT_LE(bmp.bytes[2], 1);
    EXPECT_EQ(bmp.bytes[3] + bmp.bytes[4] + bmp.bytes[5], 3 * 255);
}

TEST(Load, LeavesBufferUntouchedIfFileIsRefused)
{
    Library lib;
    ImageBuffer image = Pattern(5, 4, 3);
    for (const char* name : {"jpeg/cut/no-pixels.jpg", "jpeg/none.jpg", "jpeg/make.py", "jpeg"})
        EXPECT_FALSE(lib.image_file.LoadImage(SamplePath(name), image)) << name;
    EXPECT_EQ(DifferenceBetween(image, Pattern(5, 4, 3)).greatest, 0);
    EXPECT_EQ(lib.image_file.GetFrameCount(SamplePath("jpeg/none.jpg")), 0);
}

TEST(Load, TakesLargestPictureOfIconUnlessPageIsNamed)
{
    Library lib;
    ImageBuffer image;
    const std::string file = SamplePath("ico/good/hand-sizes.ico");

    ASSERT_TRUE(lib.image_file.LoadImage(file, image));
    EXPECT_EQ(image.width, 37);
    EXPECT_EQ(image.bytes, ReadExpectedImage(file, 2)->image.bytes) << "32 bits rather than 4";
    ASSERT_TRUE(lib.image_file.LoadFrame(file, 0, image));
    EXPECT_EQ(image.width, 32);
}

TEST(Load, NoticesThatFileWasReplaced)
{
    Library lib;
    const std::string file = lib.folder.Path("picture");
    WriteFileContent(file, FileContent(SamplePath("jpeg/good/cjpeg-baseline.jpg")));
    EXPECT_EQ(lib.image_file.GetFrameCount(file), 1);
    WriteFileContent(file, FileContent(SamplePath("jpeg/good/cjpeg-grey.jpg")));

    EXPECT_EQ(lib.Loaded(file).channels, 1);
}
