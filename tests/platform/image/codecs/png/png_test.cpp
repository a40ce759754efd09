// Tests of reading and writing PNG files.
#include "src/platform/image/codecs/png/png.h"

#include <gtest/gtest.h>
#include <png.h>

#include <algorithm>
#include <cstring>
#include <random>

#include "src/platform/image/base/input_file.h"
#include "tests/platform/image/support/image_tools.h"
#include "tests/support/paths.h"

namespace
{

using Block = std::vector<std::uint8_t>;

// What libpng makes of a file: the very pixels as grey, RGB or RGBA of 8 bits.
std::optional<ImageBuffer> aDecodedByLibpng(const Block& aFile, std::int32_t lChannels)
{
    png_image objImage{};
    objImage.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_memory(&objImage, aFile.data(), aFile.size()))
        return std::nullopt;
    objImage.format = lChannels == 1 ? PNG_FORMAT_GRAY : lChannels == 3 ? PNG_FORMAT_BGR : PNG_FORMAT_BGRA;
    ImageBuffer aResult;
    aResult.width = static_cast<std::int32_t>(objImage.width);
    aResult.height = static_cast<std::int32_t>(objImage.height);
    aResult.channels = lChannels;
    aResult.bytes.resize(PNG_IMAGE_SIZE(objImage));
    const bool bDone = png_image_finish_read(&objImage, nullptr, aResult.bytes.data(), 0, nullptr) != 0;
    png_image_free(&objImage);
    return bDone ? std::optional(aResult) : std::nullopt;
}

// A file of one type, depth and interlace, with pixels that use the whole range, written by libpng.
Block aWrittenByLibpng(int lColourType, int lDepth, bool bInterlaced, std::uint32_t nWidth = 23,
                       std::uint32_t nHeight = 17)
{
    Block aFile;
    png_structp pPng = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop pInfo = png_create_info_struct(pPng);
    png_set_write_fn(
        pPng, &aFile,
        [](png_structp p, png_bytep pData, png_size_t n) {
            auto* pFile = static_cast<Block*>(png_get_io_ptr(p));
            pFile->insert(pFile->end(), pData, pData + n);
        },
        nullptr);
    png_set_IHDR(pPng, pInfo, nWidth, nHeight, lDepth, lColourType,
                 bInterlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    if (lColourType == PNG_COLOR_TYPE_PALETTE) {
        std::vector<png_color> aPalette(static_cast<std::size_t>(1 << lDepth));
        for (std::size_t i = 0; i < aPalette.size(); ++i)
            aPalette[i] = {static_cast<png_byte>(i * 37), static_cast<png_byte>(255 - i),
                           static_cast<png_byte>(i * 5)};
        png_set_PLTE(pPng, pInfo, aPalette.data(), static_cast<int>(aPalette.size()));
    }
    png_write_info(pPng, pInfo);
    const std::size_t nRow = png_get_rowbytes(pPng, pInfo);
    std::vector<Block> aRows(nHeight, Block(nRow));
    std::mt19937 objRandom(7);
    for (std::size_t y = 0; y < nHeight; ++y)
        for (std::size_t x = 0; x < nRow; ++x)
            aRows[y][x] = static_cast<std::uint8_t>(y % 3 == 0 ? objRandom() : x * 9 + y * 4);
    std::vector<png_bytep> aPointers;
    for (Block& aRow : aRows)
        aPointers.push_back(aRow.data());
    png_write_image(pPng, aPointers.data());
    png_write_end(pPng, nullptr);
    png_destroy_write_struct(&pPng, &pInfo);
    return aFile;
}

ImageBuffer aRandomPicture(std::int32_t lWidth, std::int32_t lHeight, std::int32_t lChannels, int lColours,
                           unsigned nSeed)
{
    std::mt19937 objRandom(nSeed);
    ImageBuffer aImage;
    aImage.width = lWidth;
    aImage.height = lHeight;
    aImage.channels = lChannels;
    Block aColours(static_cast<std::size_t>(lColours * lChannels));
    for (std::uint8_t& n : aColours)
        n = static_cast<std::uint8_t>(objRandom());
    for (std::int32_t i = 0; i < lWidth * lHeight; ++i) {
        const auto nColour =
            static_cast<std::ptrdiff_t>(objRandom() % static_cast<unsigned>(lColours)) * lChannels;
        aImage.bytes.insert(aImage.bytes.end(), aColours.begin() + nColour,
                            aColours.begin() + nColour + lChannels);
    }
    return aImage;
}

// The picture as B, G, R, A, so that pictures that were stored in fewer channels can be compared.
PixelBytes aFourChannels(const ImageBuffer& aImage)
{
    PixelBytes aResult;
    for (std::size_t i = 0; i < aImage.bytes.size(); i += static_cast<std::size_t>(aImage.channels)) {
        const std::uint8_t* p = &aImage.bytes[i];
        const bool bGrey = aImage.channels == 1;
        for (const std::uint8_t n : {p[0], bGrey ? p[0] : p[1], bGrey ? p[0] : p[2],
                                     aImage.channels == 4 ? p[3] : std::uint8_t{255}})
            aResult.push_back(n);
    }
    return aResult;
}

void ExpectRoundTrip(const ImageBuffer& aImage, const std::string& sWhat)
{
    const Block aFile = aEncoded(codecPng, aImage);
    const auto aOurs = aDecoded(codecPng, aFile);
    const auto aTheirs = aDecodedByLibpng(aFile, 4);
    ASSERT_TRUE(aOurs) << sWhat;
    ASSERT_TRUE(aTheirs) << sWhat;
    EXPECT_EQ(aOurs->width, aImage.width) << sWhat;
    EXPECT_EQ(aOurs->height, aImage.height) << sWhat;
    EXPECT_TRUE(aFourChannels(*aOurs) == aFourChannels(aImage)) << sWhat;
    EXPECT_TRUE(aTheirs->bytes == aFourChannels(aImage)) << sWhat;
}

int lColourTypeOf(const Block& aFile)
{
    return aFile.at(25);
}

int lDepthOf(const Block& aFile)
{
    return aFile.at(24);
}

}  // namespace

TEST(PngReader, ReadsEveryTypeDepthAndInterlaceAsLibpngDoes)
{
    struct Kind {
        int lColourType;
        std::vector<int> aDepths;
        std::int32_t lChannels;
    };
    const Kind aKinds[] = {{PNG_COLOR_TYPE_GRAY, {1, 2, 4, 8}, 1},
                           {PNG_COLOR_TYPE_RGB, {8}, 3},
                           {PNG_COLOR_TYPE_PALETTE, {1, 2, 4, 8}, 3},
                           {PNG_COLOR_TYPE_GRAY_ALPHA, {8}, 4},
                           {PNG_COLOR_TYPE_RGB_ALPHA, {8}, 4}};
    for (const Kind& objKind : aKinds) {
        for (const int lDepth : objKind.aDepths) {
            for (const bool bInterlaced : {false, true}) {
                const Block aFile = aWrittenByLibpng(objKind.lColourType, lDepth, bInterlaced);
                const std::string sWhat = "type " + std::to_string(objKind.lColourType) + ", depth " +
                                          std::to_string(lDepth) + (bInterlaced ? ", interlaced" : "");

                const auto aOurs = aDecoded(codecPng, aFile);

                ASSERT_TRUE(aOurs) << sWhat;
                const auto aTheirs = aDecodedByLibpng(aFile, 4);
                ASSERT_TRUE(aTheirs) << sWhat;
                EXPECT_EQ(aOurs->channels, objKind.lChannels) << sWhat;
                EXPECT_TRUE(aFourChannels(*aOurs) == aTheirs->bytes) << sWhat;
            }
        }
    }
}

TEST(PngReader, RoundsSixteenBitsToEight)
{
    for (const int lColourType :
         {PNG_COLOR_TYPE_GRAY, PNG_COLOR_TYPE_RGB, PNG_COLOR_TYPE_GRAY_ALPHA, PNG_COLOR_TYPE_RGB_ALPHA}) {
        const Block aFile = aWrittenByLibpng(lColourType, 16, false, 3, 1);
        const auto aOurs = aDecoded(codecPng, aFile);
        ASSERT_TRUE(aOurs) << lColourType;

        // libpng itself scales exactly, with png_set_scale_16, as its command line tool's reading does.
        png_structp pPng = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
        png_infop pInfo = png_create_info_struct(pPng);
        std::pair<const Block*, std::size_t> objSource{&aFile, 0};
        png_set_read_fn(pPng, &objSource, [](png_structp p, png_bytep pData, png_size_t n) {
            auto* pSource = static_cast<std::pair<const Block*, std::size_t>*>(png_get_io_ptr(p));
            std::memcpy(pData, pSource->first->data() + pSource->second, n);
            pSource->second += n;
        });
        png_read_info(pPng, pInfo);
        png_set_scale_16(pPng);
        png_set_gray_to_rgb(pPng);
        png_set_bgr(pPng);
        png_set_filler(pPng, 255, PNG_FILLER_AFTER);
        png_read_update_info(pPng, pInfo);
        Block aRow(png_get_rowbytes(pPng, pInfo));
        png_read_row(pPng, aRow.data(), nullptr);
        png_destroy_read_struct(&pPng, &pInfo, nullptr);

        const PixelBytes aExpected(aRow.begin(), aRow.end());
        EXPECT_TRUE(aFourChannels(*aOurs) == aExpected) << lColourType;
    }
}

TEST(PngReader, ReadsFilesOfOtherPrograms)
{
    const TestFolder objFolder;
    const ImageBuffer aImage = aPattern(201, 77, 3);
    WritePnm(objFolder.sPath("a.ppm"), aImage);
    const std::vector<std::string> aMakers = {
        ImageMagick("convert") + " " + objFolder.sPath("a.ppm") + " " + objFolder.sPath("o.png"),
        ImageMagick("convert") + " " + objFolder.sPath("a.ppm") + " -interlace PNG " +
            objFolder.sPath("o.png"),
        "gm convert " + objFolder.sPath("a.ppm") + " " + objFolder.sPath("o.png"),
        "pnmtopng " + objFolder.sPath("a.ppm") + " > " + objFolder.sPath("o.png") + " 2>/dev/null"};
    for (const std::string& sMaker : aMakers) {
        ASSERT_TRUE(bRun(sMaker)) << sMaker;

        const auto aOurs = aDecoded(codecPng, aFileContent(objFolder.sPath("o.png")));

        ASSERT_TRUE(aOurs) << sMaker;
        EXPECT_TRUE(aOurs->bytes == aImage.bytes) << sMaker;
    }
}

TEST(PngReader, TakesTheTransparentColoursOfTrns)
{
    const TestFolder objFolder;
    sPython(
        "import sys\n"
        "from PIL import Image\n"
        "p = Image.new('P', (4, 1)); p.putpalette([255,0,0, 0,255,0, 0,0,255] + [0]*759)\n"
        "p.putdata([0, 1, 2, 1]); p.save(sys.argv[1] + '/p.png', transparency=bytes([255, 0, 128]))\n"
        "g = Image.new('L', (3, 1)); g.putdata([5, 6, 7]); g.save(sys.argv[1] + '/g.png', transparency=6)\n"
        "c = Image.new('RGB', (2, 1)); c.putdata([(1, 2, 3), (4, 5, 6)])\n"
        "c.save(sys.argv[1] + '/c.png', transparency=(4, 5, 6))\n",
        objFolder.sPath(""));
    const auto aPalette = aDecoded(codecPng, aFileContent(objFolder.sPath("p.png")));
    const auto aGrey = aDecoded(codecPng, aFileContent(objFolder.sPath("g.png")));
    const auto aColour = aDecoded(codecPng, aFileContent(objFolder.sPath("c.png")));
    ASSERT_TRUE(aPalette && aGrey && aColour);

    EXPECT_EQ(aPalette->channels, 4);
    EXPECT_EQ(aPalette->bytes[3], 255);
    EXPECT_EQ(aPalette->bytes[7], 0);
    EXPECT_EQ(aPalette->bytes[11], 128);
    EXPECT_EQ(aGrey->channels, 4);
    EXPECT_EQ(aGrey->bytes[7], 0);
    EXPECT_EQ(aGrey->bytes[11], 255);
    EXPECT_EQ(aColour->bytes[3], 255);
    EXPECT_EQ(aColour->bytes[7], 0);
}

TEST(PngReader, RefusesWhatIsEmptyForeignOrCutShortAnywhere)
{
    EXPECT_FALSE(aDecoded(codecPng, Block{}));
    EXPECT_FALSE(aDecoded(codecPng, aFileContent(sSamplePath("README.md"))));
    const Block aWhole = aWrittenByLibpng(PNG_COLOR_TYPE_RGB, 8, false);
    const std::size_t nEndChunk = 12;
    for (std::size_t n = 0; n + nEndChunk < aWhole.size(); n += 1 + n / 40)
        EXPECT_FALSE(aDecoded(codecPng, Bytes(aWhole).first(n))) << n;
}

TEST(PngReader, RefusesAHeaderThatClaimsMoreThanTheFileHolds)
{
    Block aFile = aWrittenByLibpng(PNG_COLOR_TYPE_RGB, 8, false);
    const Block aSides = {0, 0, 0xEA, 0x60, 0, 0, 0xEA, 0x60};  // 60,000 x 60,000, over the limit
    std::copy(aSides.begin(), aSides.end(), aFile.begin() + 16);
    EXPECT_FALSE(aDecoded(codecPng, aFile));

    const Block aLarge = {0, 0, 0x40, 0, 0, 0, 0x40, 0};  // 16,384 x 16,384, within it
    std::copy(aLarge.begin(), aLarge.end(), aFile.begin() + 16);
    EXPECT_FALSE(aDecoded(codecPng, aFile));
}

TEST(PngReader, SurvivesEveryByteBeingAnother)
{
    for (const bool bInterlaced : {false, true}) {
        const Block aWhole = aWrittenByLibpng(PNG_COLOR_TYPE_PALETTE, 8, bInterlaced, 9, 7);
        for (std::size_t i = 0; i < aWhole.size(); ++i) {
            for (const int lFlip : {0x01, 0x80, 0xFF}) {
                Block aBroken = aWhole;
                aBroken[i] = static_cast<std::uint8_t>(aBroken[i] ^ lFlip);
                const auto aImage = aDecoded(codecPng, aBroken);
                if (aImage) {
                    EXPECT_EQ(aImage->bytes.size(), static_cast<std::size_t>(aImage->width) *
                                                        static_cast<std::size_t>(aImage->height) *
                                                        static_cast<std::size_t>(aImage->channels));
                }
            }
        }
    }
}

TEST(PngWriter, GivesBackThePixelsOfPicturesOfEveryKindAndSize)
{
    const std::pair<std::int32_t, std::int32_t> aSizes[] = {{1, 1}, {1, 9},   {9, 1},   {3, 2},    {8, 8},
                                                            {7, 5}, {33, 17}, {64, 64}, {257, 31}, {1000, 3}};
    for (const auto& [lWidth, lHeight] : aSizes)
        for (const std::int32_t lChannels : {1, 3, 4})
            for (const int lColours : {1, 2, 3, 16, 17, 256, 5000})
                ExpectRoundTrip(aRandomPicture(lWidth, lHeight, lChannels, lColours, 11),
                                std::to_string(lWidth) + "x" + std::to_string(lHeight) + ", " +
                                    std::to_string(lChannels) + " channels, " + std::to_string(lColours) +
                                    " colours");
}

TEST(PngWriter, GivesBackSmoothPicturesOfManyStrips)
{
    for (const std::int32_t lChannels : {1, 3, 4})
        ExpectRoundTrip(aPattern(1501, 701, lChannels), std::to_string(lChannels) + " channels");
}

TEST(PngWriter, StoresBlackAndWhiteInOneBit)
{
    ImageBuffer aPage = aRandomPicture(100, 50, 1, 1, 1);
    for (std::size_t i = 0; i < aPage.bytes.size(); ++i)
        aPage.bytes[i] = i % 7 < 3 ? 255 : 0;

    const Block aFile = aEncoded(codecPng, aPage);

    EXPECT_EQ(lDepthOf(aFile), 1);
    EXPECT_EQ(lColourTypeOf(aFile), PNG_COLOR_TYPE_GRAY);
    ExpectRoundTrip(aPage, "black and white");
}

TEST(PngWriter, StoresAGraphicOfFewColoursInAPalette)
{
    const ImageBuffer aGraphic = aRandomPicture(120, 90, 3, 9, 3);

    const Block aFile = aEncoded(codecPng, aGraphic);

    EXPECT_EQ(lColourTypeOf(aFile), PNG_COLOR_TYPE_PALETTE);
    EXPECT_EQ(lDepthOf(aFile), 4);
}

// Lines of the same few letters in shades of grey and blue, on a ground that is mostly one colour.
static ImageBuffer aScreen(std::int32_t lWidth, std::int32_t lHeight, std::int32_t lChannels)
{
    const ImageBuffer aLetters = aRandomPicture(8, 12 * 20, lChannels, 5000, 5);
    ImageBuffer aImage = aRandomPicture(lWidth, lHeight, lChannels, 1, 6);
    std::mt19937 objRandom(3);
    const auto nPixel = static_cast<std::size_t>(lChannels);
    for (std::int32_t y = 30; y + 12 <= lHeight; y += 20)
        for (std::int32_t x = 10; x + 8 <= lWidth; x += 9) {
            const auto lLetter = static_cast<std::int32_t>(objRandom() % 20);
            for (std::int32_t lRow = 0; lRow < 12; ++lRow)
                std::copy_n(
                    aLetters.bytes.data() + static_cast<std::size_t>((lLetter * 12 + lRow) * 8) * nPixel,
                    8 * nPixel,
                    aImage.bytes.data() + static_cast<std::size_t>((y + lRow) * lWidth + x) * nPixel);
        }
    return aImage;
}

TEST(PngWriter, GivesBackScreensDrawingsAndScansOfManyStrips)
{
    for (const std::int32_t lChannels : {1, 3, 4})
        ExpectRoundTrip(aScreen(900, 700, lChannels), "screen of " + std::to_string(lChannels) + " channels");
    ImageBuffer aFew = aScreen(900, 700, 3);
    for (std::uint8_t& n : aFew.bytes)
        n &= 0x80;
    ExpectRoundTrip(aFew, "drawing");
    ImageBuffer aScan = aScreen(2500, 1500, 1);
    for (std::uint8_t& n : aScan.bytes)
        n = n < 128 ? 0 : 255;
    ExpectRoundTrip(aScan, "scan");
}

TEST(PngWriter, FindsTheLettersOfAScreenAgain)
{
    const ImageBuffer aImage = aScreen(900, 700, 3);

    EXPECT_LT(aEncoded(codecPng, aImage).size(), aImage.bytes.size() / 6);
}

TEST(PngWriter, MakesTheSameFileOfTheSamePicture)
{
    for (const ImageBuffer& aImage : {aScreen(900, 700, 4), aPattern(1501, 701, 3), aScreen(48, 48, 4)}) {
        const Block aFirst = aEncoded(codecPng, aImage);
        aEncoded(codecPng, aPattern(300, 200, 3));

        EXPECT_TRUE(aEncoded(codecPng, aImage) == aFirst);
    }
}

TEST(PngWriter, SparesASmallPictureAPaletteThatIsLargerThanWhatItSaves)
{
    ImageBuffer aIcon = aRandomPicture(24, 24, 3, 1, 1);
    for (std::int32_t i = 0; i < 24 * 24; ++i)
        for (std::int32_t c = 0; c < 3; ++c)
            aIcon.bytes[static_cast<std::size_t>(i * 3 + c)] =
                static_cast<std::uint8_t>(i % 24 < 8 ? 255 : 3 * (i / 24 + i % 24) + 20 * c);

    const Block aFile = aEncoded(codecPng, aIcon);

    EXPECT_EQ(lColourTypeOf(aFile), PNG_COLOR_TYPE_RGB);
    EXPECT_LT(aFile.size(), 250U);
    ExpectRoundTrip(aIcon, "icon");
}

TEST(PngWriter, CarriesResolutionProfileAndMetadata)
{
    ImageBuffer aImage = aPattern(20, 10, 3);
    aImage.dots_per_inch_x = 300;
    aImage.dots_per_inch_y = 150;
    const std::string sXmp = "<x:xmpmeta xmlns:x='adobe:ns:meta/'/>";
    aImage.metadata.xmp.assign(sXmp.begin(), sXmp.end());

    const auto aBack = aDecoded(codecPng, aEncoded(codecPng, aImage));

    ASSERT_TRUE(aBack);
    EXPECT_NEAR(aBack->dots_per_inch_x, 300, 0.02);
    EXPECT_NEAR(aBack->dots_per_inch_y, 150, 0.02);
    EXPECT_TRUE(aBack->metadata.xmp == aImage.metadata.xmp);
}

TEST(PngWriter, WritesTheTextsThatOtherProgramsRead)
{
    const TestFolder objFolder;
    SaveSettings objSettings;
    objSettings.objTexts.sTitle = "A title";
    objSettings.objTexts.sDescription =
        "Gr\xC3\xBC\xC3\x9F"
        "e \xE2\x82\xAC";
    objSettings.objTexts.sAuthor = "Somebody";
    objSettings.objTexts.sCopyright = "2026";
    WriteFileContent(objFolder.sPath("a.png"), aEncoded(codecPng, aPattern(8, 8, 3), objSettings));

    const std::string sTexts = sPython(
        "import sys\n"
        "from PIL import Image\n"
        "t = Image.open(sys.argv[1]).text\n"
        "sys.stdout.buffer.write('|'.join([t['Title'], t['Description'], t['Author'], "
        "t['Copyright']]).encode('utf-8'))\n",
        objFolder.sPath("a.png"));

    EXPECT_EQ(sTexts,
              "A title|Gr\xC3\xBC\xC3\x9F"
              "e \xE2\x82\xAC|Somebody|2026");
}

TEST(PngWriter, WritesNoTextsWhenThereAreNone)
{
    const Block aFile = aEncoded(codecPng, aPattern(8, 8, 3));
    const std::string sFile(aFile.begin(), aFile.end());

    EXPECT_EQ(sFile.find("tEXt"), std::string::npos);
    EXPECT_EQ(sFile.find("iTXt"), std::string::npos);
    EXPECT_EQ(sFile.find("eXIf"), std::string::npos);
}
