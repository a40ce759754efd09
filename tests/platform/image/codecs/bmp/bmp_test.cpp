// Windows bitmaps as files: where the bits lie, profiles, embedded files, resolution, what is written.
#include "src/platform/image/codecs/bmp/bmp.h"

#include <unistd.h>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/codecs/png/png.h"
#include "tests/platform/image/support/byte_maker.h"
#include "tests/platform/image/support/raster_checks.h"

using Levels = std::vector<int>;

// A file of one row of two pixels, 24 bits.
static ByteMaker objSmallFile(std::uint32_t nBitsOffset)
{
    ByteMaker mk;
    mk.Text("BM")
        .U32Le({62, 0, nBitsOffset})
        .U32Le({40, 2, 1})
        .U16Le({1, 24})
        .U32Le({0, 0, 11811, 5906, 0, 0});
    return mk;
}

static Levels aLevels(const std::optional<ImageBuffer>& aImage)
{
    return aImage ? Levels{aImage->bytes.begin(), aImage->bytes.end()} : Levels{};
}

static ByteMaker objVersion5File(std::uint32_t nProfileOffset, std::uint32_t nProfileSize,
                                 std::string_view sSpace)
{
    ByteMaker mk;
    mk.Text("BM").U32Le({0, 0, 138}).U32Le({124, 1, 1}).U16Le({1, 24}).U32Le({0, 4, 0, 0, 0, 0});
    mk.Zeros(16).U32Le({0x4D424544}).Zeros(48).U32Le({4, nProfileOffset, nProfileSize, 0}).U8({1, 2, 3, 0});
    mk.Zeros(16).Text(sSpace).Zeros(16).Text("acsp").Zeros(88);
    return mk;
}

TEST(BmpReads, TheBitsWhereTheFileSaysThatTheyAre)
{
    EXPECT_EQ(aLevels(aDecoded(codecBmp, objSmallFile(54).U8({1, 2, 3, 4, 5, 6, 0, 0}).aBytes())),
              (Levels{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(aLevels(aDecoded(codecBmp, objSmallFile(60).Zeros(6).U8({1, 2, 3, 4, 5, 6}).aBytes())),
              (Levels{1, 2, 3, 4, 5, 6}));
    EXPECT_FALSE(aDecoded(codecBmp, objSmallFile(63).U8({1, 2, 3, 4, 5, 6, 0, 0}).aBytes()));
    EXPECT_FALSE(aDecoded(codecBmp, objSmallFile(0xFFFFFFFF).U8({1, 2, 3, 4, 5, 6, 0, 0}).aBytes()));
}

TEST(BmpReads, TheBitsBehindThePaletteWhenTheFileSaysNothingThatCanBe)
{
    EXPECT_EQ(aLevels(aDecoded(codecBmp, objSmallFile(0).U8({1, 2, 3, 4, 5, 6, 0, 0}).aBytes())),
              (Levels{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(aLevels(aDecoded(codecBmp, objSmallFile(20).U8({1, 2, 3, 4, 5, 6, 0, 0}).aBytes())),
              (Levels{1, 2, 3, 4, 5, 6}));
}

TEST(BmpReads, APaletteThatEndsWhereTheBitsBegin)
{
    // The header means 256 colours; there is room for two.
    ByteMaker mk;
    mk.Text("BM").U32Le({0, 0, 62}).U32Le({40, 2, 1}).U16Le({1, 8}).U32Le({0, 0, 0, 0, 0, 0});
    mk.U8({9, 8, 7, 0, 6, 5, 4, 0}).U8({1, 0, 0, 0});

    EXPECT_EQ(aLevels(aDecoded(codecBmp, mk.aBytes())), (Levels{6, 5, 4, 9, 8, 7}));
}

TEST(BmpReads, TheResolutionOfEachDirection)
{
    const auto aImage = aDecoded(codecBmp, objSmallFile(54).U8({1, 2, 3, 4, 5, 6, 0, 0}).aBytes());

    ASSERT_TRUE(aImage);
    EXPECT_NEAR(aImage->dots_per_inch_x, 300, 0.01);
    EXPECT_NEAR(aImage->dots_per_inch_y, 150, 0.02);
}

TEST(BmpReads, AProfileThatItEmbeds)
{
    const auto aImage = aDecoded(codecBmp, objVersion5File(128, 128, "RGB ").aBytes());

    ASSERT_TRUE(aImage);
    EXPECT_EQ(aImage->icc_profile.size(), 128u);
    EXPECT_EQ(aLevels(aImage), (Levels{1, 2, 3}));
}

TEST(BmpReads, WithoutAProfileThatDoesNotFitOrIsNotThere)
{
    for (const auto& mk : {objVersion5File(128, 128, "GRAY"), objVersion5File(128, 129, "RGB "),
                           objVersion5File(0xFFFFFFFF, 128, "RGB "), objVersion5File(128, 0xFFFFFFFF, "RGB "),
                           objVersion5File(129, 127, "RGB "), objVersion5File(0, 0, "RGB ")}) {
        const auto aImage = aDecoded(codecBmp, mk.aBytes());

        ASSERT_TRUE(aImage);
        EXPECT_TRUE(aImage->icc_profile.empty());
    }
}

// A bitmap whose bits are a whole file of another format.
static ByteMaker objEmbedding(std::uint32_t nCompression, const std::vector<std::uint8_t>& aInner)
{
    ByteMaker mk;
    mk.Text("BM")
        .U32Le({0, 0, 54})
        .U32Le({40, 1, 1})
        .U16Le({1, 0})
        .U32Le({nCompression, 0, 0, 0, 0, 0})
        .All(aInner);
    return mk;
}

TEST(BmpReads, AJpegFileInThePlaceOfTheBits)
{
    const auto aJpeg = aFileContent(sSamplePath("jpeg/baseline.jpg"));

    const auto aImage = aDecoded(codecBmp, objEmbedding(4, aJpeg).aBytes());

    ASSERT_TRUE(aImage);
    EXPECT_GT(aImage->width, 1);
    EXPECT_FALSE(aDecoded(codecBmp, objEmbedding(5, aJpeg).aBytes())) << "the header promised PNG";
}

TEST(BmpReads, APngFileInThePlaceOfTheBits)
{
    const ImageBuffer aInner = aPattern(9, 5, 3);

    const auto aImage = aDecoded(codecBmp, objEmbedding(5, aEncoded(codecPng, aInner)).aBytes());

    ASSERT_TRUE(aImage);
    EXPECT_TRUE(aImage->bytes == aInner.bytes);
}

TEST(BmpReads, RunsFromTheirPlaceInTheFile)
{
    ByteMaker mk;
    mk.Text("BM").U32Le({0, 0, 70}).U32Le({40, 3, 2}).U16Le({1, 8}).U32Le({1, 0, 0, 0, 2, 0});
    mk.U8({9, 9, 9, 0, 6, 6, 6, 0}).Zeros(8).U8({3, 1, 0, 0, 2, 0, 1, 1, 0, 1});

    EXPECT_EQ(aLevels(aDecoded(codecBmp, mk.aBytes())), (Levels{9, 9, 6, 6, 6, 6}));
}

TEST(BmpReads, NothingWhenTheFileBecomesShorterMeanwhile)
{
    const TestFolder objFolder;
    const std::string sPath = objFolder.sPath("cut.bmp");
    WriteFileContent(sPath, aEncoded(codecBmp, aPattern(200, 2000, 3)));
    const auto pFile = InputFile::Open(sPath);
    ASSERT_TRUE(pFile);
    const auto pDecoder = codecBmp.Open(*pFile);
    ASSERT_TRUE(pDecoder);
    ASSERT_EQ(truncate(sPath.c_str(), 700000), 0);
    ImageBuffer aImage;

    EXPECT_FALSE(pDecoder->DecodeFrame(0, aImage));

    EXPECT_EQ(aImage.width, 0);
    EXPECT_TRUE(aImage.bytes.empty());
}

TEST(BmpReads, OnlyTheOnePage)
{
    const auto aFile = aEncoded(codecBmp, aPattern(3, 3, 3));
    InputFile objFile(aFile);
    const auto pDecoder = codecBmp.Open(objFile);
    ASSERT_TRUE(pDecoder);
    ImageBuffer aImage;

    EXPECT_EQ(pDecoder->FrameCount(), 1);
    EXPECT_FALSE(pDecoder->DecodeFrame(1, aImage));
    EXPECT_FALSE(pDecoder->DecodeFrame(-1, aImage));
}

TEST(BmpWrites, HeadersWithSizesAndResolution)
{
    ImageBuffer aImage = aPattern(5, 3, 3);
    aImage.dots_per_inch_x = 300;
    aImage.dots_per_inch_y = 150;

    const auto aFile = aEncoded(codecBmp, aImage);

    ByteReader rd(aFile);
    EXPECT_EQ(rd.U16Le(), 'B' | 'M' << 8);
    EXPECT_EQ(rd.U32Le(), aFile.size());
    rd.U32Le();
    EXPECT_EQ(rd.U32Le(), 54u);
    EXPECT_EQ(rd.U32Le(), 40u);
    EXPECT_EQ(rd.U32Le(), 5u);
    EXPECT_EQ(rd.U32Le(), 3u) << "bottom row first";
    EXPECT_EQ(rd.U32Le(), 1u | 24u << 16);
    EXPECT_EQ(rd.U32Le(), 0u);
    EXPECT_EQ(rd.U32Le(), 16u * 3);
    EXPECT_EQ(rd.U32Le(), 11811u);
    EXPECT_EQ(rd.U32Le(), 5906u);
    EXPECT_EQ(aFile.size(), 54u + 16 * 3);
    EXPECT_EQ(aFile[54 + 15], 0) << "the filling of a row";
}

TEST(BmpWrites, NoResolutionThatTheFieldCannotHold)
{
    ImageBuffer aImage = aPattern(1, 1, 3);
    aImage.dots_per_inch_x = 1e300;
    aImage.dots_per_inch_y = -5;

    const auto aBack = aDecoded(codecBmp, aEncoded(codecBmp, aImage));

    ASSERT_TRUE(aBack);
    EXPECT_EQ(aBack->dots_per_inch_x, 0);
    EXPECT_EQ(aBack->dots_per_inch_y, 0);
}
