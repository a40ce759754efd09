// Tests of writing GIF files.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <array>
#include <set>

#include "src/platform/image/codecs/gif/gif.h"
#include "tests/platform/image/support/image_tools.h"
#include "tests/support/paths.h"

namespace
{
using Block = std::vector<std::uint8_t>;

ImageBuffer aBlank(std::int32_t lWidth, std::int32_t lHeight, std::int32_t lChannels)
{
    ImageBuffer aImage;
    aImage.width = lWidth;
    aImage.height = lHeight;
    aImage.channels = lChannels;
    aImage.bytes.assign(static_cast<std::size_t>(lWidth) * static_cast<std::size_t>(lHeight) *
                            static_cast<std::size_t>(lChannels),
                        0);
    return aImage;
}

// A picture of nColours colours, each of which occurs.
ImageBuffer aOfColours(std::int32_t lWidth, std::int32_t lHeight, unsigned nColours)
{
    ImageBuffer aImage = aBlank(lWidth, lHeight, 3);
    unsigned nSeed = 1;
    for (std::size_t i = 0; i < aImage.bytes.size(); i += 3) {
        nSeed = nSeed * 1103515245 + 12345;
        const unsigned nColour = i / 3 < nColours ? static_cast<unsigned>(i / 3) : (nSeed >> 16) % nColours;
        aImage.bytes[i] = static_cast<std::uint8_t>(nColour * 7);
        aImage.bytes[i + 1] = static_cast<std::uint8_t>(nColour);
        aImage.bytes[i + 2] = static_cast<std::uint8_t>(nColour / 256 * 50);
    }
    return aImage;
}

// What another program makes of the file, opaque.
ImageBuffer aBy(const std::string& sProgram, const Block& aFile)
{
    const TestFolder objFolder;
    WriteFileContent(objFolder.sPath("in.gif"), aFile);
    std::string sOutput;
    EXPECT_TRUE(bRun(sProgram + " " + objFolder.sPath("in.gif") + " " + objFolder.sPath("out.ppm"), &sOutput))
        << sOutput;
    EXPECT_EQ(sOutput, "");
    return aReadPnm(objFolder.sPath("out.ppm")).value_or(ImageBuffer{});
}

const std::string kPillow =
    "/usr/bin/python3 -c 'import sys; from PIL import Image; "
    "Image.open(sys.argv[1]).convert(\"RGB\").save(sys.argv[2])'";

std::string sIdentified(const Block& aFile, const std::string& sFormat)
{
    const TestFolder objFolder;
    WriteFileContent(objFolder.sPath("in.gif"), aFile);
    std::string sOutput;
    EXPECT_TRUE(
        bRun(ImageMagick("identify") + " -format '" + sFormat + "' " + objFolder.sPath("in.gif"), &sOutput))
        << sOutput;
    return sOutput;
}
}  // namespace

class GifColourCounts : public testing::TestWithParam<unsigned>
{
};

TEST_P(GifColourCounts, UpTo256AreKeptExactlyAsOtherProgramsFindToo)
{
    const ImageBuffer aImage = aOfColours(61, 43, GetParam());

    const Block aFile = aEncoded(codecGif, aImage);

    ASSERT_FALSE(aFile.empty());
    const auto aBack = aDecoded(codecGif, aFile);
    ASSERT_TRUE(aBack);
    if (GetParam() == 1)
        EXPECT_EQ(aBack->channels, 1);  // the one colour is black
    else
        EXPECT_EQ(objDifference(*aBack, aImage).lGreatest, 0);
    EXPECT_EQ(objDifference(aBy(ImageMagick("convert"), aFile), aImage).lGreatest, 0);
    EXPECT_EQ(objDifference(aBy("gm convert", aFile), aImage).lGreatest, 0);
    EXPECT_EQ(objDifference(aBy(kPillow, aFile), aImage).lGreatest, 0);
}

INSTANTIATE_TEST_SUITE_P(Colours, GifColourCounts,
                         testing::Values(1, 2, 3, 4, 5, 8, 9, 16, 17, 33, 65, 128, 129, 255, 256));

TEST(GifEncoder, KeepsAll256Greys)
{
    ImageBuffer aImage = aBlank(256, 3, 1);
    for (std::size_t i = 0; i < aImage.bytes.size(); ++i)
        aImage.bytes[i] = static_cast<std::uint8_t>(i * 5);

    const auto aBack = aDecoded(codecGif, aEncoded(codecGif, aImage));

    ASSERT_TRUE(aBack);
    EXPECT_EQ(objDifference(*aBack, aImage).lGreatest, 0);
}

TEST(GifEncoder, WritesNoLargerTableThanThePictureNeeds)
{
    EXPECT_EQ(aEncoded(codecGif, aOfColours(10, 10, 2))[10] & 7, 0);
    EXPECT_EQ(aEncoded(codecGif, aOfColours(10, 10, 5))[10] & 7, 2);
    EXPECT_EQ(aEncoded(codecGif, aOfColours(40, 10, 256))[10] & 7, 7);
}

TEST(GifEncoder, FitsAPaletteToAPictureOfMoreColours)
{
    const ImageBuffer aImage = aPattern(200, 150, 3);

    const auto aBack = aDecoded(codecGif, aEncoded(codecGif, aImage));

    ASSERT_TRUE(aBack);
    EXPECT_LT(objDifference(*aBack, aImage).dMean, 6);
    std::set<std::array<std::uint8_t, 3>> colColours;
    for (std::size_t i = 0; i < aBack->bytes.size(); i += 3)
        colColours.insert({aBack->bytes[i], aBack->bytes[i + 1], aBack->bytes[i + 2]});
    EXPECT_GT(colColours.size(), 240u);
    EXPECT_LE(colColours.size(), 256u);
}

TEST(GifEncoder, MakesPixelsBelowHalfAlphaTransparentAndOthersOpaque)
{
    for (const std::int32_t lWidth : {6, 200}) {  // few colours and many
        const ImageBuffer aImage = aPattern(lWidth, lWidth, 4);
        const auto aBack = aDecoded(codecGif, aEncoded(codecGif, aImage));
        ASSERT_TRUE(aBack);
        ASSERT_EQ(aBack->channels, 4);
        double dSum = 0;
        for (std::size_t i = 0; i < aImage.bytes.size(); i += 4) {
            ASSERT_EQ(aBack->bytes[i + 3], aImage.bytes[i + 3] < 128 ? 0 : 255);
            for (std::size_t c = 0; c < 3 && aImage.bytes[i + 3] >= 128; ++c)
                dSum += std::abs(aBack->bytes[i + c] - aImage.bytes[i + c]);
        }
        EXPECT_LT(dSum / static_cast<double>(aImage.bytes.size()), 6);
    }
}

TEST(GifEncoder, SpendsNoColourOnTransparencyThatIsNotThere)
{
    ImageBuffer aImage = aOfColours(61, 43, 256), aWithAlpha = aBlank(61, 43, 4);
    for (std::size_t i = 0; i < aImage.bytes.size() / 3; ++i) {
        std::copy_n(&aImage.bytes[i * 3], 3, &aWithAlpha.bytes[i * 4]);
        aWithAlpha.bytes[i * 4 + 3] = 128;
    }

    const auto aBack = aDecoded(codecGif, aEncoded(codecGif, aWithAlpha));

    ASSERT_TRUE(aBack);
    EXPECT_EQ(objDifference(*aBack, aImage).lGreatest, 0);
}

TEST(GifEncoder, KeepsAPictureThatIsTransparentThroughout)
{
    const auto aBack = aDecoded(codecGif, aEncoded(codecGif, aBlank(5, 4, 4)));

    ASSERT_TRUE(aBack);
    EXPECT_EQ(aBack->channels, 4);
    EXPECT_EQ(aBack->bytes, PixelBytes(80, 0));
}

TEST(GifEncoder, WritesTheTextsAsAComment)
{
    SaveSettings objSettings;
    objSettings.objTexts.sTitle = "A title";
    objSettings.objTexts.sAuthor = "K\xC3\xA4the";
    objSettings.objTexts.sCopyright = std::string(700, 'c');

    const Block aFile = aEncoded(codecGif, aOfColours(4, 4, 3), objSettings);

    EXPECT_EQ(std::string(aFile.begin(), aFile.begin() + 6), "GIF89a");
    EXPECT_EQ(sIdentified(aFile, "%c"),
              "Title: A title\nAuthor: K\xC3\xA4the\nCopyright: " + std::string(700, 'c'));
    EXPECT_TRUE(aDecoded(codecGif, aFile));
}

TEST(GifEncoder, WritesNoCommentWithoutTexts)
{
    const Block aFile = aEncoded(codecGif, aOfColours(4, 4, 3));

    EXPECT_EQ(std::string(aFile.begin(), aFile.begin() + 6), "GIF87a");
    EXPECT_EQ(sIdentified(aFile, "%c"), "");
}

TEST(GifEncoder, WritesTheLargestSides)
{
    for (const auto& [lWidth, lHeight] : {std::pair{65500, 1}, {1, 65500}, {1, 1}}) {
        const ImageBuffer aImage = aPattern(lWidth, lHeight, 1);
        const auto aBack = aDecoded(codecGif, aEncoded(codecGif, aImage));
        ASSERT_TRUE(aBack);
        EXPECT_EQ(objDifference(*aBack, aImage).lGreatest, 0);
    }
}

RC_GTEST_PROP(GifEncoder, GivesBackAnyPictureOfFewColours, ())
{
    const auto lWidth = *rc::gen::inRange(1, 60), lHeight = *rc::gen::inRange(1, 60);
    const auto lChannels = *rc::gen::element(1, 3);
    const auto aColours = *rc::gen::nonEmpty(rc::gen::container<Block>(rc::gen::arbitrary<std::uint8_t>()));
    ImageBuffer aImage = aBlank(lWidth, lHeight, lChannels);
    // Runs of all lengths, for strings of all lengths.
    const auto aRuns = *rc::gen::nonEmpty(rc::gen::container<std::vector<int>>(rc::gen::inRange(1, 400)));
    std::size_t nPixel = 0;
    const auto nStep = static_cast<std::size_t>(lChannels);
    for (std::size_t nRun = 0; nPixel * nStep < aImage.bytes.size(); ++nRun)
        for (int i = 0; i < aRuns[nRun % aRuns.size()] && nPixel * nStep < aImage.bytes.size(); ++i, ++nPixel)
            std::fill_n(&aImage.bytes[nPixel * nStep], nStep,
                        aColours[(nRun * 7) % std::min<std::size_t>(aColours.size(), 200)]);
    // Grey in every channel would be read as grey; 255 - x is never x.
    if (lChannels == 3)
        for (std::size_t i = 0; i < aImage.bytes.size(); i += 3)
            aImage.bytes[i] = static_cast<std::uint8_t>(255 - aImage.bytes[i + 1]);

    const auto aBack = aDecoded(codecGif, aEncoded(codecGif, aImage));

    RC_ASSERT(aBack.has_value());
    RC_ASSERT(objDifference(*aBack, aImage).lGreatest == 0);
}
