// JPEGs reduced while they are decoded, for resizing.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "src/platform/image/codec_image_file.h"
#include "src/platform/image/codecs/jpeg/jpeg.h"
#include "src/platform/image/metadata/metadata.h"
#include "src/platform/image/transforms/geometry/resize.h"
#include "src/platform/image/transforms/geometry/shift.h"
#include "tests/platform/image/support/host_files.h"
#include "tests/platform/image/support/image_tools.h"

namespace
{

// Smooth areas, edges and some fine detail. The size is no multiple of 8.
ImageBuffer Photograph(std::int32_t width, std::int32_t height, std::int32_t channels)
{
    ImageBuffer image = Pattern(width, height, channels);
    for (std::int32_t y = 0; y < height; ++y)
        for (std::int32_t x = 0; x < width; ++x)
            for (std::int32_t c = 0; c < channels; ++c) {
                const double hill = std::sin(x / 97.0 + c) + std::cos(y / 71.0 - c);
                const double detail = std::sin(x / 5.0) * std::sin(y / 6.0);
                const double edge = (x + 2 * y) % 400 < 200 ? 30 : -30;
                image.bytes[static_cast<std::size_t>((y * width + x) * channels + c)] =
                    static_cast<std::uint8_t>(128 + 35 * hill + 8 * detail + edge);
            }
    return image;
}

std::vector<std::uint8_t> JpegOf(const ImageBuffer& image, std::uint8_t orientation)
{
    SaveSettings settings;
    settings.jpeg_quality = 90;
    std::vector<std::uint8_t> file = Encoded(kJpegCodec, image, settings);
    const std::vector<std::uint8_t> exif{0xFF, 0xE1, 0, 34, 'E',         'x', 'i', 'f', 0,    0, 'I', 'I',
                                         42,   0,    8, 0,  0,           0,   1,   0,   0x12, 1, 3,   0,
                                         1,    0,    0, 0,  orientation, 0,   0,   0,   0,    0, 0,   0};
    file.insert(file.begin() + 2, exif.begin(), exif.end());
    return file;
}

ImageBuffer Loaded(const std::vector<std::uint8_t>& file, SmallestSize smallest)
{
    const TestFolder folder;
    WriteFileContent(folder.Path("picture.jpg"), file);
    const auto input = InputFile::Open(folder.Path("picture.jpg"));
    const auto decoder = kJpegCodec.open(*input);
    decoder->SetSmallestSize(smallest);
    ImageBuffer image;
    EXPECT_TRUE(decoder->DecodeFrame(0, image));
    FinishLoaded(image);
    return image;
}

double Psnr(const ImageBuffer& one, const ImageBuffer& other)
{
    EXPECT_EQ(one.bytes.size(), other.bytes.size());
    double squares = 1e-9;
    for (std::size_t i = 0; i < one.bytes.size(); ++i)
        squares += std::pow(one.bytes[i] - other.bytes[i], 2);
    return 10 * std::log10(255.0 * 255.0 * static_cast<double>(one.bytes.size()) / squares);
}

}  // namespace

TEST(JpegReduction, GivesLargestFactorThatLeavesSmallestSize)
{
    const auto file = JpegOf(Photograph(803, 405, 3), 1);
    const struct {
        SmallestSize smallest;
        std::int32_t factor, width, height;
    } expected[] = {{{0, 0}, 1, 803, 405},    {{100, 50}, 8, 101, 51}, {{101, 50}, 4, 201, 102},
                    {{100, 51}, 4, 201, 102}, {{0, 50}, 8, 101, 51},   {{100, 0}, 8, 101, 51},
                    {{401, 0}, 2, 402, 203},  {{402, 0}, 1, 803, 405}, {{65534, 65534}, 1, 803, 405}};
    for (const auto& e : expected) {
        const ImageBuffer image = Loaded(file, e.smallest);
        EXPECT_EQ(image.reduction.factor, e.factor) << e.smallest.width;
        EXPECT_EQ(image.width, e.width);
        EXPECT_EQ(image.height, e.height);
        EXPECT_EQ(BufferImageUtility().GetWidth(image), 803);
        EXPECT_EQ(BufferImageUtility().GetHeight(image), 405);
    }
}

TEST(JpegReduction, MeasuresSmallestSizeOfUprightPicture)
{
    const auto file = JpegOf(Photograph(803, 405, 3), 6);

    EXPECT_EQ(Loaded(file, {50, 100}).reduction.factor, 8);
    EXPECT_EQ(Loaded(file, {100, 50}).reduction.factor, 4);
    EXPECT_EQ(BufferImageUtility().GetWidth(Loaded(file, {50, 100})), 405);
}

TEST(JpegReduction, ResizesLikeFullPictureInAllOrientations)
{
    for (const std::int32_t channels : {1, 3})
        for (std::uint8_t orientation = 1; orientation <= 8; ++orientation) {
            const auto file = JpegOf(Photograph(1003, 749, channels), orientation);
            ImageBuffer full = Loaded(file, {}), reduced = Loaded(file, {300, 300});
            ASSERT_EQ(full.reduction.factor, 1);
            ASSERT_EQ(reduced.reduction.factor, 2);
            ImageBuffer eighth = Loaded(file, {90, 90});
            ASSERT_EQ(eighth.reduction.factor, 8);
            const std::int32_t width = full.width / 24, height = full.height / 24;
            for (const std::int32_t interpolation : {1, 2}) {
                ImageBuffer expected, from_reduced, from_eighth;
                using transforms::Resize;
                ASSERT_EQ(Resize(full, expected, width, height, interpolation, 0), OperationResult::Changed);
                ASSERT_EQ(Resize(reduced, from_reduced, width, height, interpolation, 0),
                          OperationResult::Changed);
                ASSERT_EQ(Resize(eighth, from_eighth, width, height, interpolation, 0),
                          OperationResult::Changed);
                EXPECT_EQ(from_eighth.reduction.factor, 1);
                EXPECT_GT(Psnr(from_reduced, expected), 44) << int{orientation};
                EXPECT_GT(Psnr(from_eighth, expected), 38) << int{orientation};
            }
        }
}

TEST(JpegReduction, KeepsProfileAndMetadata)
{
    ImageBuffer image = Photograph(400, 300, 3);
    image.metadata.xmp = {'<', 'x', '/', '>'};
    image.dots_per_inch_x = image.dots_per_inch_y = 300;

    const ImageBuffer reduced = Loaded(Encoded(kJpegCodec, image), {50, 30});

    EXPECT_EQ(reduced.reduction.factor, 8);
    EXPECT_EQ(reduced.metadata.xmp, image.metadata.xmp);
    EXPECT_EQ(reduced.dots_per_inch_x, 300);
}

TEST(LossyPictures, AreCroppedDespiteCompressionNoise)
{
    // A picture in a white frame, as scanned slides and exported charts have it.
    const ImageBuffer inside = Photograph(200, 160, 3);
    ImageBuffer image = Pattern(256, 224, 3);
    std::fill(image.bytes.begin(), image.bytes.end(), std::uint8_t{250});
    for (std::size_t y = 0; y < 160; ++y)
        std::copy_n(inside.bytes.begin() + static_cast<std::ptrdiff_t>(y * 600), 600,
                    image.bytes.begin() + static_cast<std::ptrdiff_t>(((y + 29) * 256 + 21) * 3));
    for (const std::int32_t quality : {60, 75, 90}) {
        SaveSettings settings;
        settings.jpeg_quality = quality;
        ImageBuffer lossy = Loaded(Encoded(kJpegCodec, image, settings), {});
        ASSERT_TRUE(lossy.lossy);
        ImageBuffer exact = lossy;
        exact.lossy = false;

        ASSERT_NE(transforms::Autocrop(lossy, lossy), OperationResult::Failed);
        ASSERT_NE(transforms::Autocrop(exact, exact), OperationResult::Failed);

        EXPECT_NEAR(lossy.width, 200, 6) << quality;
        EXPECT_NEAR(lossy.height, 160, 6) << quality;
        EXPECT_GE(lossy.width, 199) << quality;
        EXPECT_GE(lossy.height, 159) << quality;
        EXPECT_GT(exact.width, lossy.width) << quality;
    }
}
