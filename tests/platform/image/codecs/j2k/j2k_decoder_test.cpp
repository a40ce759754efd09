// Tests of reading JPEG 2000 files.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>

#include "src/platform/image/codecs/j2k/j2k.h"
#include "src/platform/image/codecs/j2k/j2k_codestream.h"
#include "tests/platform/image/support/image_tools.h"
#include "tests/platform/image/support/jp2_maker.h"
#include "tests/platform/image/support/profiles.h"
#include "tests/support/paths.h"

namespace
{
using Block = std::vector<std::uint8_t>;

Block aSample(const std::string& sName)
{
    return aFileContent(sSamplePath("j2k/" + sName));
}

ImageBuffer aScene(const std::string& sName = "scene.ppm")
{
    return aReadPnm(sSamplePath("j2k/" + sName)).value();
}

// A codestream of the picture without loss.
Block aStream(const ImageBuffer& aImage)
{
    SaveSettings objSettings;
    objSettings.lJPEGQuality = 100;
    return aEncoded(codecJ2k, aImage, objSettings);
}

ImageBuffer aOfPixel(const PixelBytes& aPixel)
{
    ImageBuffer aImage;
    aImage.width = 5;
    aImage.height = 3;
    aImage.channels = static_cast<std::int32_t>(aPixel.size());
    for (int i = 0; i < 15; ++i)
        aImage.bytes.insert(aImage.bytes.end(), aPixel.begin(), aPixel.end());
    return aImage;
}

// The first pixel of a JP2 file whose components all have one value.
PixelBytes aShown(const PixelBytes& aComponents, const Block& aHeaderBoxes)
{
    // The encoder takes B, G, R, which are the components 2, 1 and 0.
    PixelBytes aPixel = aComponents;
    if (aPixel.size() >= 3)
        std::swap(aPixel[0], aPixel[2]);
    const auto aImage = aDecoded(
        codecJ2k, Jp2File(5, 3, static_cast<int>(aPixel.size()), aHeaderBoxes, aStream(aOfPixel(aPixel))));
    if (!aImage)
        return {};
    return {aImage->bytes.begin(), aImage->bytes.begin() + aImage->channels};
}

void ExpectNear(const PixelBytes& aOne, const PixelBytes& aOther, int lWithin)
{
    ASSERT_EQ(aOne.size(), aOther.size());
    for (std::size_t i = 0; i < aOne.size(); ++i)
        EXPECT_NEAR(aOne[i], aOther[i], lWithin) << i;
}

// Where a marker stands in a file.
std::size_t nMarkerAt(const Block& aFile, int nSecond)
{
    for (std::size_t i = 0; i + 1 < aFile.size(); ++i)
        if (aFile[i] == 0xFF && aFile[i + 1] == nSecond)
            return i;
    return aFile.size();
}

const Block kResolution = Jp2Box("res ", Jp2Box("resc", {0, 100, 0, 1, 0, 200, 0, 1, 1, 1}));
}  // namespace

struct J2kSample {
    const char* sName;
    const char* sScene;
    int lWithin;
};

class J2kKinds : public testing::TestWithParam<J2kSample>
{
};

TEST_P(J2kKinds, ShowTheScene)
{
    const auto aImage = aDecoded(codecJ2k, aSample(GetParam().sName));

    ASSERT_TRUE(aImage);
    EXPECT_LE(objDifference(*aImage, aScene(GetParam().sScene)).lGreatest, GetParam().lWithin);
}

INSTANTIATE_TEST_SUITE_P(
    Samples, J2kKinds,
    testing::Values(J2kSample{"plain.j2k", "scene.ppm", 0}, J2kSample{"plain.jp2", "scene.ppm", 0},
                    J2kSample{"tiles.j2k", "scene.ppm", 0}, J2kSample{"offset.j2k", "scene.ppm", 0},
                    J2kSample{"packets.jp2", "scene.ppm", 0}, J2kSample{"parts.j2k", "scene.ppm", 0},
                    J2kSample{"pillow.jp2", "scene.ppm", 0}, J2kSample{"lossy.j2k", "scene.ppm", 60},
                    J2kSample{"magick.jp2", "scene.ppm", 40}, J2kSample{"grey.jp2", "scene-grey.pgm", 0},
                    J2kSample{"bit1.j2k", "scene-bit1.pgm", 0}, J2kSample{"bits12.j2k", "scene.ppm", 0},
                    J2kSample{"bits16.j2k", "scene.ppm", 0}, J2kSample{"signed.j2k", "scene.ppm", 0}),
    [](const auto& objInfo) {
        std::string sName = objInfo.param.sName;
        std::erase_if(sName, [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); });
        return sName;
    });

TEST(J2kDecoder, GivesThePixelsThatTheReferenceProgramGives)
{
    const TestFolder objFolder;
    for (const char* sName : {"lossy.j2k", "magick.jp2"}) {
        ASSERT_TRUE(bRun("opj_decompress -i " + sSamplePath(std::string("j2k/") + sName) + " -o " +
                         objFolder.sPath("out.png") + " && " + ImageMagick("convert") + " " +
                         objFolder.sPath("out.png") + " " + objFolder.sPath("out.ppm")));
        EXPECT_EQ(objDifference(*aDecoded(codecJ2k, aSample(sName)), *aReadPnm(objFolder.sPath("out.ppm")))
                      .lGreatest,
                  0)
            << sName;
    }
}

TEST(J2kDecoder, TakesComponentsOfFewerSamplesThanTheFirstForChroma)
{
    const auto aImage = aDecoded(codecJ2k, aSample("ycc420.j2k"));

    ASSERT_TRUE(aImage);
    EXPECT_EQ(aImage->channels, 3);
    EXPECT_LT(objDifference(*aImage, aScene("scene-even.ppm")).dMean, 4);
}

TEST(J2kDecoder, FindsAlphaThatTheFileNames)
{
    const auto aColour = aDecoded(codecJ2k, aSample("alpha.jp2")),
               aGrey = aDecoded(codecJ2k, aSample("grey-alpha.jp2"));
    ASSERT_TRUE(aColour && aGrey);
    ASSERT_EQ(aColour->channels, 4);
    ASSERT_EQ(aGrey->channels, 4);
    const ImageBuffer aWanted = aScene(), aWantedGrey = aScene("scene-grey.pgm"),
                      aWantedAlpha = aScene("scene-alpha.pgm");

    for (std::size_t i = 0; i < aWantedAlpha.bytes.size(); ++i) {
        ASSERT_EQ(aColour->bytes[i * 4 + 3], aWantedAlpha.bytes[i]);
        ASSERT_EQ(aGrey->bytes[i * 4 + 3], aWantedAlpha.bytes[i]);
        for (std::size_t c = 0; c < 3; ++c) {
            ASSERT_EQ(aColour->bytes[i * 4 + c], aWanted.bytes[i * 3 + c]);
            ASSERT_EQ(aGrey->bytes[i * 4 + c], aWantedGrey.bytes[i]);
        }
    }
}

TEST(J2kDecoder, DividesColourThatWasMultipliedByItsAlpha)
{
    const Block aAlpha =
        Jp2Box("cdef", {0, 4, 0, 0, 0, 0, 0, 1, 0, 1, 0, 0, 0, 2, 0, 2, 0, 0, 0, 3, 0, 3, 0, 2, 0, 0});

    EXPECT_EQ(aShown({100, 50, 20, 128}, ByteMaker().All(Jp2Colours(16)).All(aAlpha).aBytes()),
              (PixelBytes{40, 100, 199, 128}));
}

TEST(J2kDecoder, PutsComponentsIntoTheOrderThatTheFileNames)
{
    // Component 0 is blue (association 3), 1 green and 2 red.
    const Block aOrder = Jp2Box("cdef", {0, 3, 0, 0, 0, 0, 0, 3, 0, 1, 0, 0, 0, 2, 0, 2, 0, 0, 0, 1});

    EXPECT_EQ(aShown({10, 20, 30}, ByteMaker().All(Jp2Colours(16)).All(aOrder).aBytes()),
              (PixelBytes{10, 20, 30}));
    EXPECT_EQ(aShown({10, 20, 30}, Jp2Colours(16)), (PixelBytes{30, 20, 10}));
}

TEST(J2kDecoder, TurnsYccIntoRgb)
{
    for (const std::uint32_t nSpace : {18u, 24u}) {
        EXPECT_EQ(aShown({76, 85, 255}, Jp2Colours(nSpace)), (PixelBytes{0, 0, 254}));
        EXPECT_EQ(aShown({90, 128, 128}, Jp2Colours(nSpace)), (PixelBytes{90, 90, 90}));
    }
}

TEST(J2kDecoder, TurnsInksIntoRgb)
{
    EXPECT_EQ(aShown({0, 255, 0, 0}, Jp2Colours(12)), (PixelBytes{255, 0, 255}));
    EXPECT_EQ(aShown({0, 0, 255, 128}, Jp2Colours(12)), (PixelBytes{0, 127, 127}));
}

TEST(J2kDecoder, TurnsLabIntoRgb)
{
    // L* 54.3, a* 80.8, b* 69.9 is sRGB's red, seen by the white of print. In bytes: a over -85..85, b over
    // -75..125.
    const Block aDefaults = Jp2Colours(14);
    ExpectNear(aShown({138, 249, 185}, aDefaults), {0, 0, 255}, 6);
    ExpectNear(aShown({255, 128, 96}, aDefaults), {255, 255, 255}, 2);
    // The same with ranges and offsets of the file's own: a and b over -128..127.
    const Block aOwn = Jp2Colours(14, ByteMaker().U32Be({100, 0, 255, 128, 255, 128, 0x00443530}).aBytes());
    ExpectNear(aShown({138, 209, 198}, aOwn), {0, 0, 255}, 6);
}

TEST(J2kDecoder, LooksPaletteIndexesUp)
{
    ImageBuffer aIndexes = aOfPixel({0});
    aIndexes.bytes[1] = 1;
    const Block aPalette = Jp2Box("pclr", {0, 2, 3, 7, 7, 7, 10, 20, 30, 40, 50, 60});
    const Block aMapping = Jp2Box("cmap", {0, 0, 1, 0, 0, 0, 1, 1, 0, 0, 1, 2});

    const auto aImage = aDecoded(
        codecJ2k, Jp2File(5, 3, 1, ByteMaker().All(Jp2Colours(16)).All(aPalette).All(aMapping).aBytes(),
                          aStream(aIndexes)));

    ASSERT_TRUE(aImage);
    EXPECT_EQ(PixelBytes(aImage->bytes.begin(), aImage->bytes.begin() + 6),
              (PixelBytes{30, 20, 10, 60, 50, 40}));
}

TEST(J2kDecoder, KeepsAProfileThatFitsThePixels)
{
    const auto aColour =
        aDecoded(codecJ2k, Jp2File(5, 3, 3, Jp2Profile(aSwappedProfile()), aStream(aOfPixel({1, 2, 3}))));
    const auto aGrey =
        aDecoded(codecJ2k, Jp2File(5, 3, 1, Jp2Profile(aGreyProfile(1.0)), aStream(aOfPixel({7}))));
    const auto aWrong =
        aDecoded(codecJ2k, Jp2File(5, 3, 3, Jp2Profile(aGreyProfile(1.0)), aStream(aOfPixel({1, 2, 3}))));

    ASSERT_TRUE(aColour && aGrey && aWrong);
    EXPECT_EQ(aColour->icc_profile, aSwappedProfile());
    EXPECT_EQ(aColour->bytes[0], 1);
    EXPECT_EQ(aGrey->icc_profile, aGreyProfile(1.0));
    EXPECT_TRUE(aWrong->icc_profile.empty());
}

TEST(J2kDecoder, TurnsInksThroughTheFilesProfile)
{
    // The profile has cyan and yellow exchanged: full cyan is yellow to see.
    ExpectNear(aShown({255, 0, 0, 0}, Jp2Profile(aCmykProfile())), {0, 255, 255}, 12);
}

TEST(J2kDecoder, TellsResolutionAndMetadata)
{
    const Block aExif = {'I', 'I', 42, 0, 8, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    const auto Uuid = [](const std::string& sUuid, const Block& aContent) {
        return Jp2Box("uuid", ByteMaker().Text(sUuid).All(aContent).aBytes());
    };
    const Block aBoxes =
        ByteMaker()
            .All(Uuid("JpgTiffExif->JP2", aExif))
            .All(Uuid("\xBE\x7A\xCF\xCB\x97\xA9\x42\xE8\x9C\x71\x99\x94\x91\xE3\xAF\xAC", {'<', 'x', '>'}))
            .All(Uuid("\x33\xC7\xA4\xD2\xB8\x1D\x47\x23\xA0\xBA\xF1\xA3\xE0\x97\xAD\x38", {0x1C, 2}))
            .All(Uuid("0123456789abcdef", {1, 2, 3}))
            .aBytes();

    const auto aImage =
        aDecoded(codecJ2k, Jp2File(5, 3, 1, ByteMaker().All(Jp2Colours(17)).All(kResolution).aBytes(),
                                   aStream(aOfPixel({7})), aBoxes));

    ASSERT_TRUE(aImage);
    EXPECT_DOUBLE_EQ(aImage->dots_per_inch_x, 2000 * 0.0254);
    EXPECT_DOUBLE_EQ(aImage->dots_per_inch_y, 1000 * 0.0254);
    EXPECT_EQ(aImage->metadata.exif, aExif);
    EXPECT_EQ(aImage->metadata.xmp, (Block{'<', 'x', '>'}));
    EXPECT_EQ(aImage->metadata.iptc, (Block{0x1C, 2}));
}

TEST(J2kDecoder, RefusesAFileThatIsCutWhereverItIsCut)
{
    for (const char* sName : {"plain.j2k", "packets.jp2", "parts.j2k"}) {
        const Block aFile = aSample(sName);
        for (std::size_t nSize = 0; nSize < aFile.size(); ++nSize)
            ASSERT_FALSE(aDecoded(codecJ2k, Bytes(aFile).first(nSize))) << sName << " " << nSize;
    }
}

TEST(J2kDecoder, ReadsALastPartWithoutALengthIfTheEndMarkerIsThere)
{
    Block aFile = aSample("plain.j2k");
    const std::size_t nPart = nMarkerAt(aFile, 0x90);
    std::fill_n(aFile.begin() + static_cast<std::ptrdiff_t>(nPart) + 6, 4, std::uint8_t{0});

    const auto aImage = aDecoded(codecJ2k, aFile);

    ASSERT_TRUE(aImage);
    EXPECT_EQ(objDifference(*aImage, aScene()).lGreatest, 0);
    EXPECT_FALSE(aDecoded(codecJ2k, Bytes(aFile).first(aFile.size() - 2)));
    EXPECT_FALSE(aDecoded(codecJ2k, Bytes(aFile).first(aFile.size() * 2 / 3)));
}

TEST(J2kDecoder, RefusesFilesThatLackATile)
{
    Block aFile = aSample("tiles.j2k");
    // The first tile's part is taken out.
    const std::size_t nPart = nMarkerAt(aFile, 0x90);
    const std::size_t nLength = aFile[nPart + 8] * 256u + aFile[nPart + 9];
    aFile.erase(aFile.begin() + static_cast<std::ptrdiff_t>(nPart),
                aFile.begin() + static_cast<std::ptrdiff_t>(nPart + nLength));

    EXPECT_FALSE(aDecoded(codecJ2k, aFile));
}

TEST(J2kDecoder, RefusesFilesThatLieOrAreSomethingElse)
{
    for (const char* sName : {"cut.j2k", "cut.jp2", "lies-about-size.jp2", "too-large.j2k", "foreign.j2k"})
        EXPECT_FALSE(aDecoded(codecJ2k, aSample(sName))) << sName;
    EXPECT_FALSE(codecJ2k.Sniff(aSample("foreign.j2k"), "j2k"));
    EXPECT_TRUE(codecJ2k.Sniff(aSample("plain.j2k"), ""));
    EXPECT_TRUE(codecJ2k.Sniff(aSample("plain.jp2"), ""));
}

TEST(J2kCodestream, IsRefusedWhenItsTilesOrPacketsAreMoreThanItsBytes)
{
    const Block aGood = aSample("plain.j2k");
    const std::size_t nSiz = nMarkerAt(aGood, 0x51), nCod = nMarkerAt(aGood, 0x52);
    J2kSize objSize;
    ASSERT_TRUE(bMayDecode(aGood, objSize));
    EXPECT_EQ(objSize.aComponents.size(), 3u);
    const auto With = [&](std::size_t nAt, const Block& aBytes) {
        Block aFile = aGood;
        std::copy(aBytes.begin(), aBytes.end(), aFile.begin() + static_cast<std::ptrdiff_t>(nAt));
        J2kSize objIgnored;
        return bMayDecode(aFile, objIgnored);
    };

    EXPECT_FALSE(With(nSiz + 22, {0, 0, 0, 1, 0, 0, 0, 1}));  // tiles of 1 x 1
    EXPECT_FALSE(With(nSiz + 22, {0, 0, 0, 0, 0, 0, 0, 1}));  // of 0
    EXPECT_FALSE(With(nSiz + 14, {0, 0, 0, 83}));             // nothing between the edges
    EXPECT_FALSE(With(nSiz + 38, {0, 0}));                    // no component
    EXPECT_FALSE(With(nSiz + 38, {0xFF, 0xFF}));              // more than the segment holds
    EXPECT_FALSE(With(nSiz + 41, {0}));                       // a component of no step
    EXPECT_FALSE(With(nCod + 6, {0xFF, 0xFF}));               // layers
    EXPECT_FALSE(With(nCod + 9, {33}));                       // levels
    EXPECT_FALSE(With(nCod + 10, {20}));                      // size of the code blocks
}

TEST(J2kDecoder, SurvivesAnyByteOfAFileBeingAnother)
{
    for (const char* sName : {"packets.jp2", "bit1.j2k"}) {
        const Block aFile = aSample(sName);
        for (std::size_t i = 0; i < aFile.size(); i += i < 400 ? 1 : 4) {  // beyond are packets alone
            Block aBroken = aFile;
            aBroken[i] = static_cast<std::uint8_t>(aBroken[i] ^ (i % 3 == 0   ? 0x01
                                                                 : i % 3 == 1 ? 0x80
                                                                              : 0xFF));
            if (const auto aImage = aDecoded(codecJ2k, aBroken)) {
                EXPECT_EQ(aImage->bytes.size(), static_cast<std::size_t>(aImage->width) *
                                                    static_cast<std::size_t>(aImage->height) *
                                                    static_cast<std::size_t>(aImage->channels));
            }
        }
    }
}
