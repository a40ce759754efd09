// What the small raster formats write: the pixels come back, and other programs see the same.
#include <rapidcheck/gtest.h>

#include "src/platform/image/base/output_file.h"
#include "src/platform/image/codecs/bmp/bmp.h"
#include "src/platform/image/codecs/pcx/pcx.h"
#include "src/platform/image/codecs/ras/ras.h"
#include "src/platform/image/codecs/tga/tga.h"
#include "tests/platform/image/support/raster_checks.h"

struct Written {
    const char* sExtension;
    const Codec& objCodec;
    const char* sNetpbm;  ///< the program of netpbm that reads the format
};

static void PrintTo(const Written& objWritten, std::ostream* pStream)
{
    *pStream << objWritten.sExtension;
}

class RasterWrites : public testing::TestWithParam<Written>
{
protected:
    void ExpectSeenAlike(const ImageBuffer& aImage)
    {
        const TestFolder objFolder;
        const std::string sPath = objFolder.sPath(std::string("written.") + GetParam().sExtension);
        WriteFileContent(sPath, aEncoded(GetParam().objCodec, aImage));
        const auto aExpected = aBgraOf(aImage);

        EXPECT_TRUE(aBgraByImageMagick(sPath) == aExpected) << "ImageMagick";
        EXPECT_TRUE(aBgraByGraphicsMagick(sPath) == aExpected) << "GraphicsMagick";
        EXPECT_TRUE(aBgraByPillow(sPath) == aExpected) << "Pillow";
        if (aImage.channels == 4)
            return;
        std::string sOutput;
        const std::string sPnm = objFolder.sPath("netpbm.pnm");
        // pamdepth: a bitmap or a small depth becomes 8 bits.
        EXPECT_TRUE(
            bRun(std::string(GetParam().sNetpbm) + " " + sPath + " 2> /dev/null | pamdepth 255 > " + sPnm,
                 &sOutput))
            << sOutput;
        const auto aNetpbm = aReadPnm(sPnm);
        ASSERT_TRUE(aNetpbm) << GetParam().sNetpbm;
        EXPECT_TRUE(aBgraOf(*aNetpbm) == aExpected) << GetParam().sNetpbm;
    }
};

TEST_P(RasterWrites, AreSeenAlikeByOtherProgramsInColours)
{
    ExpectSeenAlike(aPattern(37, 23, 3));
}

TEST_P(RasterWrites, AreSeenAlikeByOtherProgramsInGreys)
{
    ExpectSeenAlike(aPattern(37, 23, 1));
}

TEST_P(RasterWrites, AreSeenAlikeByOtherProgramsWithoutAnyOrderInTheirPixels)
{
    ExpectSeenAlike(aNoise(64, 10, 3));
}

TEST_P(RasterWrites, AreSeenAlikeByOtherProgramsWithAlphaIfTheyHoldIt)
{
    if (GetParam().objCodec.bHoldsAlpha)
        ExpectSeenAlike(aPattern(37, 23, 4));
}

// How many bytes at the end aren't needed to see the pixels: the filling of the last row of BMP and RAS, the
// palette of greys of PCX, what follows the pixels of a Targa file.
static std::size_t nSpareAtEnd(std::int32_t lType, std::int32_t lChannels)
{
    switch (lType) {
        case 2:
            return 3;
        case 7:
            return lChannels == 1 ? 769 : 0;
        case 9:
            return 1;
        default:
            return 495 + 26;
    }
}

TEST_P(RasterWrites, AreRefusedWhenTheirEndIsMissing)
{
    for (const std::int32_t lChannels : {1, 3})
        ExpectCutFilesRefused(GetParam().objCodec, aEncoded(GetParam().objCodec, aPattern(11, 7, lChannels)),
                              nSpareAtEnd(GetParam().objCodec.lType, lChannels));
}

TEST_P(RasterWrites, MayLieInAnyByteAndDoNoHarm)
{
    for (const std::int32_t lChannels : {1, 3})
        ExpectAnyByteMayLie(GetParam().objCodec, aEncoded(GetParam().objCodec, aPattern(19, 11, lChannels)));
}

TEST_P(RasterWrites, KeepLargePictures)
{
    // More rows than are read at once, a row longer than most buffers, and a column.
    for (const auto& [lWidth, lHeight] : {std::pair{1000, 700}, std::pair{65500, 2}, std::pair{1, 5000}}) {
        for (const std::int32_t lChannels : {1, 3}) {
            const ImageBuffer aImage = aNoise(lWidth, lHeight, lChannels);
            const auto aBack = aDecoded(GetParam().objCodec, aEncoded(GetParam().objCodec, aImage));
            ASSERT_TRUE(aBack);
            EXPECT_TRUE(aBack->bytes == aImage.bytes) << lWidth << " x " << lHeight << " x " << lChannels;
        }
    }
}

TEST_P(RasterWrites, SayThatNothingWasWrittenWhenTheFileFailed)
{
    OutputFile objOut("/nowhere/at/all");

    EXPECT_FALSE(GetParam().objCodec.Encode(aPattern(20, 20, 3), {}, objOut));
}

INSTANTIATE_TEST_SUITE_P(Formats, RasterWrites,
                         testing::Values(Written{"bmp", kBmpCodec, "bmptopnm"},
                                         Written{"pcx", kPcxCodec, "pcxtoppm"},
                                         Written{"ras", kRasCodec, "rasttopnm"},
                                         Written{"tga", kTgaCodec, "tgatoppm"}),
                         [](const auto& objInfo) { return std::string(objInfo.param.sExtension); });

// A picture of any small size whose pixels repeat more or less often.
static ImageBuffer aAnyPicture(bool bAlphaAllowed)
{
    ImageBuffer aImage;
    aImage.width = *rc::gen::inRange(1, 300);
    aImage.height = *rc::gen::inRange(1, 12);
    const auto aKinds = bAlphaAllowed ? std::vector<std::int32_t>{1, 3, 4} : std::vector<std::int32_t>{1, 3};
    aImage.channels = *rc::gen::elementOf(aKinds);
    const auto nPixelSize = static_cast<std::size_t>(aImage.channels);
    const std::size_t nSize =
        static_cast<std::size_t>(aImage.width) * static_cast<std::size_t>(aImage.height) * nPixelSize;
    const int lRepeats = *rc::gen::inRange(0, 100);
    std::uint32_t nState = *rc::gen::arbitrary<std::uint32_t>();
    const auto nNext = [&nState] { return nState = nState * 1664525 + 1013904223, nState >> 24; };
    while (aImage.bytes.size() < nSize) {
        const std::size_t nDone = aImage.bytes.size();
        const bool bRepeat = nDone > 0 && static_cast<int>(nNext() * 100 / 256) < lRepeats;
        for (std::size_t c = 0; c < nPixelSize; ++c)
            aImage.bytes.push_back(bRepeat ? aImage.bytes[nDone - nPixelSize + c]
                                           : static_cast<std::uint8_t>(c == 3 ? nNext() | 1 : nNext()));
    }
    return aImage;
}

static void CheckRoundTrip(const Codec& objCodec)
{
    const ImageBuffer aImage = aAnyPicture(objCodec.bHoldsAlpha);
    const auto aBack = aDecoded(objCodec, aEncoded(objCodec, aImage));
    RC_ASSERT(aBack.has_value());
    RC_ASSERT(aBack->width == aImage.width);
    RC_ASSERT(aBack->height == aImage.height);
    RC_ASSERT(aBack->channels == aImage.channels);
    RC_ASSERT(aBack->bytes == aImage.bytes);
}

RC_GTEST_PROP(RasterRoundTrip, BmpGivesEveryPixelBack, ())
{
    CheckRoundTrip(kBmpCodec);
}

RC_GTEST_PROP(RasterRoundTrip, PcxGivesEveryPixelBack, ())
{
    CheckRoundTrip(kPcxCodec);
}

RC_GTEST_PROP(RasterRoundTrip, RasGivesEveryPixelBack, ())
{
    CheckRoundTrip(kRasCodec);
}

RC_GTEST_PROP(RasterRoundTrip, TgaGivesEveryPixelBack, ())
{
    CheckRoundTrip(kTgaCodec);
}
