// Hue, lightness and saturation.
#include "src/platform/image/transforms/colour/hls.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "tests/platform/image/support/kernel_pictures.h"

using namespace transforms;

struct Hls {
    double hue = 0, lightness = 0, saturation = 0;  // sixths of a turn, 0 to 1, 0 to 1
};

// The textbook conversions (Foley and van Dam), which the kernels don't use.
static Hls HlsOf(double b, double g, double r)
{
    const double max = std::max({b, g, r}) / 255, min = std::min({b, g, r}) / 255;
    Hls hls;
    hls.lightness = (max + min) / 2;
    const double chroma = max - min;
    if (chroma == 0)
        return hls;
    hls.saturation = hls.lightness <= 0.5 ? chroma / (max + min) : chroma / (2 - max - min);
    if (r >= g && r >= b)
        hls.hue = (g - b) / 255 / chroma;
    else if (g >= b)
        hls.hue = 2 + (b - r) / 255 / chroma;
    else
        hls.hue = 4 + (r - g) / 255 / chroma;
    return hls;
}

static double ChannelOf(const Hls& hls, double offset)
{
    const double high = hls.lightness <= 0.5
                            ? hls.lightness * (1 + hls.saturation)
                            : hls.lightness + hls.saturation - hls.lightness * hls.saturation;
    const double low = 2 * hls.lightness - high;
    double hue = std::fmod(hls.hue + offset + 24, 6);
    if (hue < 1)
        return 255 * (low + (high - low) * hue);
    if (hue < 3)
        return 255 * high;
    return 255 * (hue < 4 ? low + (high - low) * (4 - hue) : low);
}

// Compares an operation with the textbook pixel by pixel, optionally skipping the few pixels near black and
// white whose saturation isn't kept.
template <typename Operation, typename Change>
static void ExpectLikeTheTextbook(const Operation& operation, const Change& change, double min_room)
{
    for (const int channels : {3, 4}) {
        const ImageBuffer before = RandomPicture(67, 41, channels, 5);
        ImageBuffer image = before;
        ASSERT_TRUE(operation(image));
        ASSERT_TRUE(SameAlpha(image, before));
        for (int y = 0; y < 41; ++y)
            for (int x = 0; x < 67; ++x) {
                Hls hls = HlsOf(ValueAt(before, x, y, 0), ValueAt(before, x, y, 1), ValueAt(before, x, y, 2));
                if (1 - std::fabs(2 * hls.lightness - 1) < min_room)
                    continue;
                change(hls);
                ASSERT_NEAR(ValueAt(image, x, y, 0), ChannelOf(hls, -2), 0.51) << x << " " << y;
                ASSERT_NEAR(ValueAt(image, x, y, 1), ChannelOf(hls, 0), 0.51) << x << " " << y;
                ASSERT_NEAR(ValueAt(image, x, y, 2), ChannelOf(hls, 2), 0.51) << x << " " << y;
            }
    }
}

TEST(Hue, RotatesRedThroughYellowToGreen)
{
    ImageBuffer sixty = TestPicture(1, 1, 3, {0, 0, 255}), hundred_twenty = sixty, back = sixty;

    EXPECT_TRUE(ApplyKernel(Hue, sixty, 60) && ApplyKernel(Hue, hundred_twenty, 120) &&
                ApplyKernel(Hue, back, -120));

    EXPECT_EQ(sixty.bytes, (PixelBytes{0, 255, 255}));
    EXPECT_EQ(hundred_twenty.bytes, (PixelBytes{0, 255, 0}));
    EXPECT_EQ(back.bytes, (PixelBytes{255, 0, 0}));
}

TEST(Hue, MatchesTextbookAtEveryAngle)
{
    for (const double angle : {1.0, 30.0, 59.5, 60.0, 119.0, 180.0, 233.0, 300.0, 359.0, -45.0, 1000.0})
        ExpectLikeTheTextbook([=](ImageBuffer& a) { return ApplyKernel(Hue, a, angle); },
                              [=](Hls& hls) { hls.hue += std::fmod(angle, 360) / 60; }, 0);
}

TEST(Hue, IsReversibleWithinOneLevel)
{
    for (const double angle : {0.3, 17.0, 60.0, 100.0, 181.0, 345.0, 1e9 + 1}) {
        const ImageBuffer before = RandomPicture(100, 50, 3);
        ImageBuffer image = before;
        EXPECT_TRUE(ApplyKernel(Hue, image, angle) && ApplyKernel(Hue, image, -angle));
        for (std::size_t i = 0; i < image.bytes.size(); ++i)
            ASSERT_NEAR(image.bytes[i], before.bytes[i], 1);
    }
}

TEST(Lightness, MovesTowardsBlackOrWhite)
{
    ImageBuffer lighter = TestPicture(2, 1, 3, {0, 0, 255, 100, 100, 100}), darker = lighter;

    EXPECT_TRUE(ApplyKernel(Lightness, lighter, 0.2) && ApplyKernel(Lightness, darker, -0.2));

    EXPECT_EQ(lighter.bytes, (PixelBytes{51, 51, 255, 131, 131, 131}));
    EXPECT_EQ(darker.bytes, (PixelBytes{0, 0, 204, 80, 80, 80}));
}

TEST(Lightness, MatchesTextbook)
{
    for (const double share : {-0.9, -0.5, -0.1, 0.2, 0.5, 0.75})
        ExpectLikeTheTextbook([=](ImageBuffer& a) { return ApplyKernel(Lightness, a, share); },
                              [=](Hls& hls) {
                                  hls.lightness = share > 0 ? hls.lightness + (1 - hls.lightness) * share
                                                            : hls.lightness * (1 + share);
                              },
                              1.0 / 8);
}

TEST(Lightness, CausesNoSpeckleInShadows)
{
    ImageBuffer image = TestPicture(1, 1, 3, {1, 0, 2});

    EXPECT_TRUE(ApplyKernel(Lightness, image, 0.2));

    // Keeping the saturation of 1 would give 51, 0, 103.
    EXPECT_EQ(*std::min_element(image.bytes.begin(), image.bytes.end()), 49);
    EXPECT_EQ(*std::max_element(image.bytes.begin(), image.bytes.end()), 55);
}

TEST(Lightness, EndsAtBlackAndWhite)
{
    for (const int channels : {1, 3})
        for (const double end : {1.0, 7.0, std::numeric_limits<double>::infinity()}) {
            ImageBuffer white = RandomPicture(20, 20, channels), black = white;
            EXPECT_TRUE(ApplyKernel(Lightness, white, end) && ApplyKernel(Lightness, black, -end));
            EXPECT_EQ(white.bytes, PixelBytes(white.bytes.size(), 255));
            EXPECT_EQ(black.bytes, PixelBytes(black.bytes.size(), 0));
        }
}

TEST(Saturation, MatchesTextbook)
{
    for (const double share : {-1.0, -0.5, -0.1, 0.2, 0.5, 0.9, 1.0})
        ExpectLikeTheTextbook([=](ImageBuffer& a) { return ApplyKernel(Saturation, a, share); },
                              [=](Hls& hls) {
                                  const double gain = share < 1 ? 1 / (1 - share) : 1e9;
                                  hls.saturation = share < 0 ? hls.saturation * (1 + share)
                                                             : std::min(1.0, hls.saturation * gain);
                              },
                              0);
}

TEST(Saturation, KeepsGreysAtMaximum)
{
    ImageBuffer image = Widened(RandomPicture(16, 16, 1));
    const PixelBytes before = image.bytes;
    EXPECT_TRUE(ApplyKernel(Saturation, image, 1));
    EXPECT_EQ(image.bytes, before);
}

TEST(Desaturate, AveragesMaximumAndMinimumChannel)
{
    ImageBuffer image = TestPicture(2, 1, 4, {10, 200, 100, 7, 255, 0, 0, 255});
    ImageBuffer other = image;

    EXPECT_TRUE(ApplyKernel(Desaturate, image) && ApplyKernel(Saturation, other, -1));

    EXPECT_EQ(image.bytes, (PixelBytes{105, 105, 105, 7, 128, 128, 128, 255}));
    EXPECT_EQ(other.bytes, image.bytes);
}

TEST(BalanceHLS, AppliesAllThreeInOneStep)
{
    ExpectLikeTheTextbook([](ImageBuffer& a) { return ApplyKernel(BalanceHLS, a, 100, 0.25, -0.5); },
                          [](Hls& hls) {
                              hls.hue += 100.0 / 60;
                              hls.lightness += (1 - hls.lightness) * 0.25;
                              hls.saturation /= 2;
                          },
                          1.0 / 8);
}

TEST(BalanceHLS, ChangesNothingAtNeutralValuesAndForNaN)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    for (const int channels : kChannelCounts) {
        const ImageBuffer before = RandomPicture(33, 17, channels);
        ImageBuffer image = before;
        EXPECT_TRUE(ApplyKernel(Hue, image, 0) && ApplyKernel(Hue, image, 360) &&
                    ApplyKernel(Hue, image, -720) && ApplyKernel(Hue, image, infinity) &&
                    ApplyKernel(Hue, image, nan) && ApplyKernel(Lightness, image, 0) &&
                    ApplyKernel(Lightness, image, nan) && ApplyKernel(Saturation, image, 0) &&
                    ApplyKernel(Saturation, image, nan) && ApplyKernel(BalanceHLS, image, 360, 0, 0));
        EXPECT_EQ(image.bytes, before.bytes);
    }
}
