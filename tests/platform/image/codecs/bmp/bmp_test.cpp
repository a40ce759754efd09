// Tests of BMP files: pixel offset, profiles, embedded files, resolution, writing.
#include "src/platform/image/codecs/bmp/bmp.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/codecs/png/png.h"
#include "tests/platform/image/support/byte_maker.h"
#include "tests/platform/image/support/raster_checks.h"

using Levels = std::vector<int>;

// A file with one row of two 24-bit pixels.
static ByteMaker SmallFile(std::uint32_t bits_offset)
{
    ByteMaker maker;
    maker.Text("BM")
        .U32Le({62, 0, bits_offset})
        .U32Le({40, 2, 1})
        .U16Le({1, 24})
        .U32Le({0, 0, 11811, 5906, 0, 0});
    return maker;
}

static Levels LevelsOf(const std::optional<ImageBuffer>& image)
{
    return image ? Levels{image->bytes.begin(), image->bytes.end()} : Levels{};
}

static ByteMaker Version5File(std::uint32_t profile_offset, std::uint32_t profile_size,
                              std::string_view space)
{
    ByteMaker maker;
    maker.Text("BM").U32Le({0, 0, 138}).U32Le({124, 1, 1}).U16Le({1, 24}).U32Le({0, 4, 0, 0, 0, 0});
    maker.Zeros(16)
        .U32Le({0x4D424544})
        .Zeros(48)
        .U32Le({4, profile_offset, profile_size, 0})
        .U8({1, 2, 3, 0});
    maker.Zeros(16).Text(space).Zeros(16).Text("acsp").Zeros(88);
    return maker;
}

TEST(BmpDecoder, ReadsPixelsAtOffsetFromHeader)
{
    EXPECT_EQ(LevelsOf(Decoded(kBmpCodec, SmallFile(54).U8({1, 2, 3, 4, 5, 6, 0, 0}).Data())),
              (Levels{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(LevelsOf(Decoded(kBmpCodec, SmallFile(60).Zeros(6).U8({1, 2, 3, 4, 5, 6}).Data())),
              (Levels{1, 2, 3, 4, 5, 6}));
    EXPECT_FALSE(Decoded(kBmpCodec, SmallFile(63).U8({1, 2, 3, 4, 5, 6, 0, 0}).Data()));
    EXPECT_FALSE(Decoded(kBmpCodec, SmallFile(0xFFFFFFFF).U8({1, 2, 3, 4, 5, 6, 0, 0}).Data()));
}

TEST(BmpDecoder, ReadsPixelsAfterPaletteIfOffsetIsInvalid)
{
    EXPECT_EQ(LevelsOf(Decoded(kBmpCodec, SmallFile(0).U8({1, 2, 3, 4, 5, 6, 0, 0}).Data())),
              (Levels{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(LevelsOf(Decoded(kBmpCodec, SmallFile(20).U8({1, 2, 3, 4, 5, 6, 0, 0}).Data())),
              (Levels{1, 2, 3, 4, 5, 6}));
}

TEST(BmpDecoder, EndsPaletteWherePixelsBegin)
{
    // The header announces 256 colours, but there is room for two.
    ByteMaker maker;
    maker.Text("BM").U32Le({0, 0, 62}).U32Le({40, 2, 1}).U16Le({1, 8}).U32Le({0, 0, 0, 0, 0, 0});
    maker.U8({9, 8, 7, 0, 6, 5, 4, 0}).U8({1, 0, 0, 0});

    EXPECT_EQ(LevelsOf(Decoded(kBmpCodec, maker.Data())), (Levels{6, 5, 4, 9, 8, 7}));
}

TEST(BmpDecoder, ReadsResolutionOfEachAxis)
{
    const auto image = Decoded(kBmpCodec, SmallFile(54).U8({1, 2, 3, 4, 5, 6, 0, 0}).Data());

    ASSERT_TRUE(image);
    EXPECT_NEAR(image->dots_per_inch_x, 300, 0.01);
    EXPECT_NEAR(image->dots_per_inch_y, 150, 0.02);
}

TEST(BmpDecoder, ReadsEmbeddedProfile)
{
    const auto image = Decoded(kBmpCodec, Version5File(128, 128, "RGB ").Data());

    ASSERT_TRUE(image);
    EXPECT_EQ(image->icc_profile.size(), 128u);
    EXPECT_EQ(LevelsOf(image), (Levels{1, 2, 3}));
}

TEST(BmpDecoder, IgnoresUnsuitableOrMissingProfile)
{
    for (const auto& maker : {Version5File(128, 128, "GRAY"), Version5File(128, 129, "RGB "),
                              Version5File(0xFFFFFFFF, 128, "RGB "), Version5File(128, 0xFFFFFFFF, "RGB "),
                              Version5File(129, 127, "RGB "), Version5File(0, 0, "RGB ")}) {
        const auto image = Decoded(kBmpCodec, maker.Data());

        ASSERT_TRUE(image);
        EXPECT_TRUE(image->icc_profile.empty());
    }
}

// A bitmap that contains a whole file of another format.
static ByteMaker Embedding(std::uint32_t compression, const std::vector<std::uint8_t>& inner)
{
    ByteMaker maker;
    maker.Text("BM")
        .U32Le({0, 0, 54})
        .U32Le({40, 1, 1})
        .U16Le({1, 0})
        .U32Le({compression, 0, 0, 0, 0, 0})
        .All(inner);
    return maker;
}

TEST(BmpDecoder, DecodesEmbeddedJpeg)
{
    const auto jpeg = FileContent(SamplePath("jpeg/good/cjpeg-baseline.jpg"));

    const auto image = Decoded(kBmpCodec, Embedding(4, jpeg).Data());

    ASSERT_TRUE(image);
    EXPECT_GT(image->width, 1);
    EXPECT_FALSE(Decoded(kBmpCodec, Embedding(5, jpeg).Data())) << "the header promised PNG";
}

TEST(BmpDecoder, DecodesEmbeddedPng)
{
    const ImageBuffer inner = Pattern(9, 5, 3);

    const auto image = Decoded(kBmpCodec, Embedding(5, Encoded(kPngCodec, inner)).Data());

    ASSERT_TRUE(image);
    EXPECT_TRUE(image->bytes == inner.bytes);
}

TEST(BmpDecoder, ReadsRleDataAtItsOffset)
{
    ByteMaker maker;
    maker.Text("BM").U32Le({0, 0, 70}).U32Le({40, 3, 2}).U16Le({1, 8}).U32Le({1, 0, 0, 0, 2, 0});
    maker.U8({9, 9, 9, 0, 6, 6, 6, 0}).Zeros(8).U8({3, 1, 0, 0, 2, 0, 1, 1, 0, 1});

    EXPECT_EQ(LevelsOf(Decoded(kBmpCodec, maker.Data())), (Levels{9, 9, 6, 6, 6, 6}));
}

TEST(BmpDecoder, FailsIfFileIsTruncatedMeanwhile)
{
    const TestFolder folder;
    const std::string path = folder.Path("cut.bmp");
    WriteFileContent(path, Encoded(kBmpCodec, Pattern(200, 2000, 3)));
    const auto file = InputFile::Open(path);
    ASSERT_TRUE(file);
    const auto decoder = kBmpCodec.open(*file);
    ASSERT_TRUE(decoder);
    ASSERT_EQ(truncate(path.c_str(), 700000), 0);
    ImageBuffer image;

    EXPECT_FALSE(decoder->DecodeFrame(0, image));

    EXPECT_EQ(image.width, 0);
    EXPECT_TRUE(image.bytes.empty());
}

TEST(BmpDecoder, HasSinglePage)
{
    const auto bytes = Encoded(kBmpCodec, Pattern(3, 3, 3));
    InputFile file(bytes);
    const auto decoder = kBmpCodec.open(file);
    ASSERT_TRUE(decoder);
    ImageBuffer image;

    EXPECT_EQ(decoder->FrameCount(), 1);
    EXPECT_FALSE(decoder->DecodeFrame(1, image));
    EXPECT_FALSE(decoder->DecodeFrame(-1, image));
}

TEST(BmpEncoder, WritesHeadersWithSizesAndResolution)
{
    ImageBuffer image = Pattern(5, 3, 3);
    image.dots_per_inch_x = 300;
    image.dots_per_inch_y = 150;

    const auto bytes = Encoded(kBmpCodec, image);

    ByteReader reader(bytes);
    EXPECT_EQ(reader.U16Le(), 'B' | 'M' << 8);
    EXPECT_EQ(reader.U32Le(), bytes.size());
    reader.U32Le();
    EXPECT_EQ(reader.U32Le(), 54u);
    EXPECT_EQ(reader.U32Le(), 40u);
    EXPECT_EQ(reader.U32Le(), 5u);
    EXPECT_EQ(reader.U32Le(), 3u) << "bottom row first";
    EXPECT_EQ(reader.U32Le(), 1u | 24u << 16);
    EXPECT_EQ(reader.U32Le(), 0u);
    EXPECT_EQ(reader.U32Le(), 16u * 3);
    EXPECT_EQ(reader.U32Le(), 11811u);
    EXPECT_EQ(reader.U32Le(), 5906u);
    EXPECT_EQ(bytes.size(), 54u + 16 * 3);
    EXPECT_EQ(bytes[54 + 15], 0) << "the filling of a row";
}

TEST(BmpEncoder, OmitsResolutionThatOverflowsItsField)
{
    ImageBuffer image = Pattern(1, 1, 3);
    image.dots_per_inch_x = 1e300;
    image.dots_per_inch_y = -5;

    const auto back = Decoded(kBmpCodec, Encoded(kBmpCodec, image));

    ASSERT_TRUE(back);
    EXPECT_EQ(back->dots_per_inch_x, 0);
    EXPECT_EQ(back->dots_per_inch_y, 0);
}
