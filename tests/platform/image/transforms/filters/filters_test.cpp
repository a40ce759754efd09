// Filters with 3 x 3 kernels.
#include "src/platform/image/transforms/filters/filters.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <limits>

#include "tests/platform/image/support/kernel_pictures.h"

using namespace transforms;

using Mask = std::array<double, 9>;
using Kernel = std::function<bool(ImageBuffer&)>;

// Compares an operation with a plain implementation of its declared formula, for all sizes and channels.
static void ExpectMask(const Kernel& operation, const Mask& mask, const std::function<double(double)>& shown,
                       double tolerance = 0.5000001)
{
    for (const int channels : kChannelCounts)
        for (const auto& [width, height] : kSizes) {
            const ImageBuffer before = RandomPicture(width, height, channels);
            ImageBuffer image = before;
            ASSERT_TRUE(operation(image));
            ASSERT_TRUE(SameAlpha(image, before));
            for (int y = 0; y < height; ++y)
                for (int x = 0; x < width; ++x)
                    for (int c = 0; c < std::min(channels, 3); ++c) {
                        double sum = 0;
                        for (int n = 0; n < 9; ++n)
                            sum += mask[static_cast<std::size_t>(n)] *
                                   ValueAt(before, x + n % 3 - 1, y + n / 3 - 1, c);
                        ASSERT_NEAR(ValueAt(image, x, y, c), std::clamp(shown(sum), 0.0, 255.0), tolerance)
                            << width << "x" << height << "x" << channels << " at " << x << " " << y;
                    }
        }
}

static double Clipped(double d)
{
    return d;
}

static double Amount(double d)
{
    return std::fabs(d);
}

static Mask Divided(Mask mask, double by)
{
    for (double& d : mask)
        d /= by;
    return mask;
}

TEST(FilterDifference, ShowsRisesInEachOfEightDirections)
{
    const std::array<Mask, 8> masks{{{1, 1, 1, 1, -2, 1, -1, -1, -1},
                                     {1, 1, 1, 1, -2, -1, 1, -1, -1},
                                     {1, 1, -1, 1, -2, -1, 1, 1, -1},
                                     {1, -1, -1, 1, -2, -1, 1, 1, 1},
                                     {-1, -1, -1, 1, -2, 1, 1, 1, 1},
                                     {-1, -1, 1, -1, -2, 1, 1, 1, 1},
                                     {-1, 1, 1, -1, -2, 1, -1, 1, 1},
                                     {1, 1, 1, -1, -2, 1, -1, -1, 1}}};
    for (int n = 0; n < 8; ++n)
        ExpectMask([=](ImageBuffer& a) { return ApplyKernel(FilterDifference, a, n); },
                   masks[static_cast<std::size_t>(n)], Clipped);
}

TEST(FilterDifference, FindsOppositeEdgesInOppositeDirections)
{
    ImageBuffer up = TestPicture(1, 4, 1, {90, 90, 20, 20}), down = up;
    EXPECT_TRUE(ApplyKernel(FilterDifference, up, 0) && ApplyKernel(FilterDifference, down, 4));
    EXPECT_EQ(up.bytes, (PixelBytes{0, 210, 210, 0}));
    EXPECT_EQ(down.bytes, (PixelBytes{0, 0, 0, 0}));
}

TEST(FilterHighPass, SharpensByKernelOfItsKind)
{
    const std::array<Mask, 3> masks{{{0, -1, 0, -1, 5, -1, 0, -1, 0},
                                     {-1, -1, -1, -1, 9, -1, -1, -1, -1},
                                     {0, -0.5, 0, -0.5, 3, -0.5, 0, -0.5, 0}}};
    for (int n = 0; n < 3; ++n)
        ExpectMask([=](ImageBuffer& a) { return ApplyKernel(FilterHighPass, a, n); },
                   masks[static_cast<std::size_t>(n)], Clipped);
}

// How much an operation changes a picture with soft and hard edges and some noise.
static double ChangeBy(const Kernel& kernel)
{
    ImageBuffer before = RandomPicture(90, 70, 3);
    for (int y = 0; y < 70; ++y)
        for (int x = 0; x < 90; ++x)
            for (int c = 0; c < 3; ++c) {
                std::uint8_t& byte = before.bytes[static_cast<std::size_t>((y * 90 + x) * 3 + c)];
                byte = static_cast<std::uint8_t>(50 + x + (x + y > 80 ? 60 : 0) + byte / 16);
            }
    ImageBuffer image = before;
    EXPECT_TRUE(kernel(image));
    double sum = 0;
    for (std::size_t i = 0; i < image.bytes.size(); ++i)
        sum += std::abs(image.bytes[i] - before.bytes[i]);
    return sum;
}

TEST(FilterHighPass, ChangesMoreFromWeakToStrong)
{
    const auto change = [](std::int32_t kind) {
        return ChangeBy([=](ImageBuffer& a) { return ApplyKernel(FilterHighPass, a, kind); });
    };
    EXPECT_LT(1.3 * change(2), change(0));
    EXPECT_LT(1.3 * change(0), change(1));
}

TEST(FilterLowPass, ChangesMoreFromWeakToStrong)
{
    const auto change = [](std::int32_t kind) {
        return ChangeBy([=](ImageBuffer& a) { return ApplyKernel(FilterLowPass, a, kind); });
    };
    EXPECT_LT(change(2), change(1));
    EXPECT_LT(change(1), change(0));
}

TEST(FilterLowPass, SmoothsByKernelOfItsKind)
{
    ExpectMask([](ImageBuffer& a) { return ApplyKernel(FilterLowPass, a, 0); },
               Divided({1, 1, 1, 1, 1, 1, 1, 1, 1}, 9), Clipped);
    ExpectMask([](ImageBuffer& a) { return ApplyKernel(FilterLowPass, a, 1); },
               Divided({1, 1, 1, 1, 2, 1, 1, 1, 1}, 10), Clipped);
    ExpectMask([](ImageBuffer& a) { return ApplyKernel(FilterLowPass, a, 2); },
               Divided({1, 2, 1, 2, 4, 2, 1, 2, 1}, 16), Clipped);
}

TEST(FilterLaplas, ShowsMagnitudeOfLaplacian)
{
    ExpectMask([](ImageBuffer& a) { return ApplyKernel(FilterLaplas, a, 0); },
               {-1, -1, -1, -1, 8, -1, -1, -1, -1}, Amount);
    ExpectMask([](ImageBuffer& a) { return ApplyKernel(FilterLaplas, a, 1); },
               {0, -1, 0, -1, 4, -1, 0, -1, 0}, Amount);
}

TEST(GradientFilters, ShowMagnitudeOfGradient)
{
    ExpectMask([](ImageBuffer& a) { return ApplyKernel(FilterSobel, a, 0); }, {-1, 0, 1, -2, 0, 2, -1, 0, 1},
               Amount);
    ExpectMask([](ImageBuffer& a) { return ApplyKernel(FilterSobel, a, 1); }, {-1, -2, -1, 0, 0, 0, 1, 2, 1},
               Amount);
    ExpectMask([](ImageBuffer& a) { return ApplyKernel(FilterPrewitt, a, 0); },
               {-1, 0, 1, -1, 0, 1, -1, 0, 1}, Amount);
    ExpectMask([](ImageBuffer& a) { return ApplyKernel(FilterPrewitt, a, 1); },
               {-1, -1, -1, 0, 0, 0, 1, 1, 1}, Amount);
    ExpectMask([](ImageBuffer& a) { return ApplyKernel(FilterRoberts, a, 0); }, {0, 0, 0, 0, 0, 1, 0, -1, 0},
               Amount);
    ExpectMask([](ImageBuffer& a) { return ApplyKernel(FilterRoberts, a, 1); }, {0, 0, 0, 0, 1, 0, 0, 0, -1},
               Amount);
    const double root = std::sqrt(2.0);
    ExpectMask([](ImageBuffer& a) { return ApplyKernel(FilterIsotropic, a, 0); },
               {-1, 0, 1, -root, 0, root, -1, 0, 1}, Amount, 0.65);
    ExpectMask([](ImageBuffer& a) { return ApplyKernel(FilterIsotropic, a, 1); },
               {-1, -root, -1, 0, 0, 0, 1, root, 1}, Amount, 0.65);
}

TEST(GradientFilters, FindVerticalEdgeOnlyInVerticalDirection)
{
    const ImageBuffer edge = TestPicture(4, 3, 1, {10, 10, 30, 30, 10, 10, 30, 30, 10, 10, 30, 30});
    ImageBuffer vertical = edge, horizontal = edge;

    EXPECT_TRUE(ApplyKernel(FilterSobel, vertical, 0) && ApplyKernel(FilterSobel, horizontal, 1));

    EXPECT_EQ(vertical.bytes, (PixelBytes{0, 80, 80, 0, 0, 80, 80, 0, 0, 80, 80, 0}));
    EXPECT_EQ(horizontal.bytes, PixelBytes(12, 0));
}

TEST(FilterRoberts, FindsEdgesAlongItsDiagonalAsLineDetectionDoes)
{
    // A line and an edge that fall to the right.
    ImageBuffer line = Plain(16, 16, 1, 0), edge = line;
    for (int y = 0; y < 16; ++y)
        for (int x = 0; x < 16; ++x) {
            line.bytes[static_cast<std::size_t>(16 * y + x)] = x == y ? 100 : 0;
            edge.bytes[static_cast<std::size_t>(16 * y + x)] = x > y ? 100 : 0;
        }
    ImageBuffer along = edge, across = edge, line_along = line, line_across = line;

    EXPECT_TRUE(ApplyKernel(FilterRoberts, along, 0) && ApplyKernel(FilterRoberts, across, 1));
    EXPECT_TRUE(ApplyKernel(FilterLineDetection, line_along, 2) &&
                ApplyKernel(FilterLineDetection, line_across, 3));

    EXPECT_EQ(ValueAt(along, 8, 8), 100);
    EXPECT_EQ(ValueAt(across, 8, 8), 0);
    EXPECT_EQ(ValueAt(line_along, 8, 8), 255);
    EXPECT_EQ(ValueAt(line_across, 8, 8), 0);
}

TEST(FilterLineDetection, ShowsLinesOfItsDirection)
{
    const std::array<Mask, 4> masks{{{-1, 2, -1, -1, 2, -1, -1, 2, -1},
                                     {-1, -1, -1, 2, 2, 2, -1, -1, -1},
                                     {2, -1, -1, -1, 2, -1, -1, -1, 2},
                                     {-1, -1, 2, -1, 2, -1, 2, -1, -1}}};
    for (int n = 0; n < 4; ++n)
        ExpectMask([=](ImageBuffer& a) { return ApplyKernel(FilterLineDetection, a, n); },
                   masks[static_cast<std::size_t>(n)], Amount);
}

TEST(FilterBlur, MovesValuesTowardsMean)
{
    for (const double share : {0.1, 0.5, 1.0}) {
        Mask mask;
        mask.fill(share / 9);
        mask[4] += 1 - share;
        ExpectMask([=](ImageBuffer& a) { return ApplyKernel(FilterBlur, a, share); }, mask, Clipped, 0.52);
    }
}

TEST(FilterSharpen, AddsShareOfLaplacian)
{
    for (const double d : {0.1, 0.5, 1.0})
        ExpectMask([=](ImageBuffer& a) { return ApplyKernel(FilterSharpen, a, d); },
                   {0, -d, 0, -d, 1 + 4 * d, -d, 0, -d, 0}, Clipped, 0.52);
}

TEST(Filters, ChangeNothingAtNeutralValues)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const int channels : kChannelCounts) {
        const ImageBuffer before = RandomPicture(33, 17, channels);
        ImageBuffer image = before;
        EXPECT_TRUE(ApplyKernel(FilterBlur, image, 0) && ApplyKernel(FilterBlur, image, -5) &&
                    ApplyKernel(FilterBlur, image, nan) && ApplyKernel(FilterSharpen, image, 0) &&
                    ApplyKernel(FilterSharpen, image, -5) && ApplyKernel(FilterSharpen, image, nan) &&
                    ApplyKernel(FilterReserved, image, 7));
        EXPECT_EQ(image.bytes, before.bytes);
    }
}

TEST(Filters, KeepFlatAreaOrMakeItBlack)
{
    const ImageBuffer flat = TestPicture(2, 2, 1, {201, 201, 201, 201});
    const auto after = [&](const Kernel& operation) {
        ImageBuffer image = flat;
        EXPECT_TRUE(operation(image));
        return image.bytes;
    };
    for (int n = 0; n < 8; ++n) {
        EXPECT_EQ(after([=](ImageBuffer& a) { return ApplyKernel(FilterHighPass, a, n); }), flat.bytes);
        EXPECT_EQ(after([=](ImageBuffer& a) { return ApplyKernel(FilterLowPass, a, n); }), flat.bytes);
        EXPECT_EQ(after([=](ImageBuffer& a) { return ApplyKernel(FilterBlur, a, n / 7.0); }), flat.bytes);
        EXPECT_EQ(after([=](ImageBuffer& a) { return ApplyKernel(FilterSharpen, a, n / 7.0); }), flat.bytes);
        EXPECT_EQ(after([=](ImageBuffer& a) { return ApplyKernel(FilterDifference, a, n); }),
                  PixelBytes(4, 0));
        EXPECT_EQ(after([=](ImageBuffer& a) { return ApplyKernel(FilterLaplas, a, n); }), PixelBytes(4, 0));
        EXPECT_EQ(after([=](ImageBuffer& a) { return ApplyKernel(FilterIsotropic, a, n); }),
                  PixelBytes(4, 0));
        EXPECT_EQ(after([=](ImageBuffer& a) { return ApplyKernel(FilterLineDetection, a, n); }),
                  PixelBytes(4, 0));
    }
}

TEST(Filters, ClampNumbersAndGivePicture)
{
    const ImageBuffer before = RandomPicture(3, 3, 4);
    for (const std::int32_t l : HostileLongs())
        for (const auto& fn : {FilterDifference, FilterHighPass, FilterLowPass, FilterLaplas, FilterSobel,
                               FilterPrewitt, FilterRoberts, FilterIsotropic, FilterLineDetection}) {
            ImageBuffer image = before, nearest = before;
            EXPECT_TRUE(ApplyKernel(fn, image, l) && ApplyKernel(fn, nearest, std::clamp(l, 0, 7)));
            EXPECT_EQ(image.bytes, nearest.bytes);
        }
    for (const double d : HostileDoubles()) {
        ImageBuffer image = before;
        EXPECT_TRUE(ApplyKernel(FilterBlur, image, d) && ApplyKernel(FilterSharpen, image, d));
        EXPECT_TRUE(SameAlpha(image, before));
    }
}

TEST(Filters, ShowNoSeamsBetweenBands)
{
    const ImageBuffer before = RandomPicture(500, 700, 3);
    ImageBuffer image = before;
    EXPECT_TRUE(ApplyKernel(FilterLowPass, image, 0));
    for (int y = 0; y < 700; ++y)
        for (int x = 0; x < 500; x += 7) {
            int sum = 4;
            for (int n = 0; n < 9; ++n)
                sum += ValueAt(before, x + n % 3 - 1, y + n / 3 - 1, 1);
            ASSERT_EQ(ValueAt(image, x, y, 1), sum / 9) << x << " " << y;
        }
}
