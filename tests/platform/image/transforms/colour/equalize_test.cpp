// Histogram equalisation.
#include "src/platform/image/transforms/colour/equalize.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "src/platform/image/transforms/rows/intensity.h"
#include "tests/platform/image/support/kernel_pictures.h"

using namespace transforms;

TEST(Equalize, SpreadsLevelsByCumulativeHistogram)
{
    ImageBuffer image = TestPicture(5, 1, 1, {10, 20, 20, 20, 30}), half = image;

    EXPECT_TRUE(ApplyKernel(Equalize, image, 1) && ApplyKernel(Equalize, half, 0.5));

    EXPECT_EQ(image.bytes, (PixelBytes{0, 191, 191, 191, 255}));
    EXPECT_EQ(half.bytes, (PixelBytes{5, 106, 106, 106, 143}));  // 20 + (191.25 - 20) / 2
}

TEST(Equalize, LeavesPictureOfOneIntensity)
{
    ImageBuffer image = TestPicture(2, 1, 3, {5, 60, 7, 5, 60, 7});
    EXPECT_TRUE(ApplyKernel(Equalize, image, 1));
    EXPECT_EQ(image.bytes, (PixelBytes{5, 60, 7, 5, 60, 7}));
}

TEST(Equalize, ChangesNothingAtZeroBelowOrForNaN)
{
    for (const int channels : kChannelCounts) {
        const ImageBuffer before = RandomPicture(33, 17, channels);
        ImageBuffer image = before;
        EXPECT_TRUE(ApplyKernel(Equalize, image, 0) && ApplyKernel(Equalize, image, -2) &&
                    ApplyKernel(Equalize, image, std::nan("")));
        EXPECT_EQ(image.bytes, before.bytes);
    }
}

// A plain implementation of the formula, which counts all pixels for each pixel.
static double Equalized(const ImageBuffer& intensities, int own)
{
    double at_most = 0, darkest = 0, all = 0;
    int min = 255;
    for (const std::uint8_t n : intensities.bytes)
        min = std::min<int>(min, n);
    for (const std::uint8_t n : intensities.bytes) {
        at_most += n <= own;
        darkest += n == min;
        ++all;
    }
    return 255 * (at_most - darkest) / (all - darkest);
}

TEST(Equalize, MatchesFormulaAndKeepsHue)
{
    for (const double level : {0.25, 1.0, 50.0}) {
        const ImageBuffer before = RandomPicture(31, 20, 3, 3);
        ImageBuffer image = before;
        ASSERT_TRUE(ApplyKernel(Equalize, image, level));
        ImageBuffer intensities = RandomPicture(31, 20, 1);
        IntensityRow(before.bytes.data(), 31 * 20, 3, intensities.bytes.data());
        for (int x = 0; x < 31 * 20; ++x) {
            const std::uint8_t* old = before.bytes.data() + 3 * x;
            const std::uint8_t* after = image.bytes.data() + 3 * x;
            const int own = intensities.bytes[static_cast<std::size_t>(x)];
            const double expected = own + std::min(level, 1.0) * (Equalized(intensities, own) - own);
            EXPECT_NEAR(IntensityOfPixel(after[0], after[1], after[2]), expected, 2);
            // Same hue: the channel differences stay in proportion.
            for (const auto& [c, d] : {std::pair{0, 1}, {1, 2}, {2, 0}}) {
                const double cross = (after[c] - after[d]) * (old[d] - old[3 - c - d]) -
                                     (after[d] - after[3 - c - d]) * (old[c] - old[d]);
                EXPECT_LE(std::fabs(cross), 2.0 * 255);
            }
        }
    }
}

TEST(Equalize, PreservesOrderAndIgnoresTransparentPixels)
{
    ImageBuffer ramp = TestPicture(256, 1, 1, {});
    for (int n = 0; n < 256; ++n)
        ramp.bytes.push_back(static_cast<std::uint8_t>(n * n / 255));
    EXPECT_TRUE(ApplyKernel(Equalize, ramp, 1));
    EXPECT_TRUE(std::is_sorted(ramp.bytes.begin(), ramp.bytes.end()));
    EXPECT_EQ(ramp.bytes.back(), 255);

    ImageBuffer cut = TestPicture(3, 1, 4, {0, 0, 0, 0, 90, 90, 90, 255, 100, 100, 100, 255});
    EXPECT_TRUE(ApplyKernel(Equalize, cut, 1));
    EXPECT_EQ(cut.bytes, (PixelBytes{0, 0, 0, 0, 0, 0, 0, 255, 255, 255, 255, 255}));
}
