// Tests of the filters of 3 x 3 neighbours.
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
using Operation = std::function<bool(ImageBuffer&)>;

// Compares an operation with the weighted sum as its declaration gives it, slowly, for all sizes and
// channels.
static void ExpectMask(const Operation& fnOperation, const Mask& aMask,
                       const std::function<double(double)>& fnShown, double dTolerance = 0.5000001)
{
    for (const int lChannels : kChannelCounts)
        for (const auto& [lWidth, lHeight] : kSizes) {
            const ImageBuffer aBefore = aRandomPicture(lWidth, lHeight, lChannels);
            ImageBuffer aImage = aBefore;
            ASSERT_TRUE(fnOperation(aImage));
            ASSERT_TRUE(bSameAlpha(aImage, aBefore));
            for (int y = 0; y < lHeight; ++y)
                for (int x = 0; x < lWidth; ++x)
                    for (int c = 0; c < std::min(lChannels, 3); ++c) {
                        double dSum = 0;
                        for (int n = 0; n < 9; ++n)
                            dSum += aMask[static_cast<std::size_t>(n)] *
                                    nValueAt(aBefore, x + n % 3 - 1, y + n / 3 - 1, c);
                        ASSERT_NEAR(nValueAt(aImage, x, y, c), std::clamp(fnShown(dSum), 0.0, 255.0),
                                    dTolerance)
                            << lWidth << "x" << lHeight << "x" << lChannels << " at " << x << " " << y;
                    }
        }
}

static double dClipped(double d)
{
    return d;
}

static double dAmount(double d)
{
    return std::fabs(d);
}

static Mask aDivided(Mask aMask, double dBy)
{
    for (double& d : aMask)
        d /= dBy;
    return aMask;
}

TEST(FilterDifference, LooksForRisesInEachOfItsEightDirections)
{
    const std::array<Mask, 8> aMasks{{{1, 1, 1, 1, -2, 1, -1, -1, -1},
                                      {1, 1, 1, 1, -2, -1, 1, -1, -1},
                                      {1, 1, -1, 1, -2, -1, 1, 1, -1},
                                      {1, -1, -1, 1, -2, -1, 1, 1, 1},
                                      {-1, -1, -1, 1, -2, 1, 1, 1, 1},
                                      {-1, -1, 1, -1, -2, 1, 1, 1, 1},
                                      {-1, 1, 1, -1, -2, 1, -1, 1, 1},
                                      {1, 1, 1, -1, -2, 1, -1, -1, 1}}};
    for (int n = 0; n < 8; ++n)
        ExpectMask([=](ImageBuffer& a) { return FilterDifference(a, n); },
                   aMasks[static_cast<std::size_t>(n)], dClipped);
}

TEST(FilterDifference, FindsOppositeEdgesInOppositeDirections)
{
    ImageBuffer aUp = aPicture(1, 4, 1, {90, 90, 20, 20}), aDown = aUp;
    EXPECT_TRUE(FilterDifference(aUp, 0) && FilterDifference(aDown, 4));
    EXPECT_EQ(aUp.bytes, (PixelBytes{0, 210, 210, 0}));
    EXPECT_EQ(aDown.bytes, (PixelBytes{0, 0, 0, 0}));
}

TEST(FilterHighPass, SharpensByTheMaskOfItsKind)
{
    const std::array<Mask, 3> aMasks{{{0, -1, 0, -1, 5, -1, 0, -1, 0},
                                      {-1, -1, -1, -1, 9, -1, -1, -1, -1},
                                      {1, -2, 1, -2, 5, -2, 1, -2, 1}}};
    for (int n = 0; n < 3; ++n)
        ExpectMask([=](ImageBuffer& a) { return FilterHighPass(a, n); }, aMasks[static_cast<std::size_t>(n)],
                   dClipped);
}

TEST(FilterLowPass, SmoothsByTheMaskOfItsKind)
{
    ExpectMask([](ImageBuffer& a) { return FilterLowPass(a, 0); }, aDivided({1, 1, 1, 1, 1, 1, 1, 1, 1}, 9),
               dClipped);
    ExpectMask([](ImageBuffer& a) { return FilterLowPass(a, 1); }, aDivided({1, 1, 1, 1, 2, 1, 1, 1, 1}, 10),
               dClipped);
    ExpectMask([](ImageBuffer& a) { return FilterLowPass(a, 2); }, aDivided({1, 2, 1, 2, 4, 2, 1, 2, 1}, 16),
               dClipped);
}

TEST(FilterLaplas, ShowsTheAmountOfTheSecondDerivative)
{
    ExpectMask([](ImageBuffer& a) { return FilterLaplas(a, 0); }, {-1, -1, -1, -1, 8, -1, -1, -1, -1},
               dAmount);
    ExpectMask([](ImageBuffer& a) { return FilterLaplas(a, 1); }, {0, -1, 0, -1, 4, -1, 0, -1, 0}, dAmount);
}

TEST(GradientFilters, ShowTheAmountOfTheSlopeAcrossTheirDirection)
{
    ExpectMask([](ImageBuffer& a) { return FilterSobel(a, 0); }, {-1, 0, 1, -2, 0, 2, -1, 0, 1}, dAmount);
    ExpectMask([](ImageBuffer& a) { return FilterSobel(a, 1); }, {-1, -2, -1, 0, 0, 0, 1, 2, 1}, dAmount);
    ExpectMask([](ImageBuffer& a) { return FilterPrewitt(a, 0); }, {-1, 0, 1, -1, 0, 1, -1, 0, 1}, dAmount);
    ExpectMask([](ImageBuffer& a) { return FilterPrewitt(a, 1); }, {-1, -1, -1, 0, 0, 0, 1, 1, 1}, dAmount);
    ExpectMask([](ImageBuffer& a) { return FilterRoberts(a, 0); }, {0, 0, 0, 0, 1, 0, 0, 0, -1}, dAmount);
    ExpectMask([](ImageBuffer& a) { return FilterRoberts(a, 1); }, {0, 0, 0, 0, 0, 1, 0, -1, 0}, dAmount);
    const double dRoot = std::sqrt(2.0);
    ExpectMask([](ImageBuffer& a) { return FilterIsotropic(a, 0); }, {-1, 0, 1, -dRoot, 0, dRoot, -1, 0, 1},
               dAmount, 0.65);
    ExpectMask([](ImageBuffer& a) { return FilterIsotropic(a, 1); }, {-1, -dRoot, -1, 0, 0, 0, 1, dRoot, 1},
               dAmount, 0.65);
}

TEST(GradientFilters, FindAVerticalEdgeWhenTheyLookForVerticalOnesOnly)
{
    const ImageBuffer aEdge = aPicture(4, 3, 1, {10, 10, 30, 30, 10, 10, 30, 30, 10, 10, 30, 30});
    ImageBuffer aVertical = aEdge, aHorizontal = aEdge;

    EXPECT_TRUE(FilterSobel(aVertical, 0) && FilterSobel(aHorizontal, 1));

    EXPECT_EQ(aVertical.bytes, (PixelBytes{0, 80, 80, 0, 0, 80, 80, 0, 0, 80, 80, 0}));
    EXPECT_EQ(aHorizontal.bytes, PixelBytes(12, 0));
}

TEST(FilterLineDetection, ShowsLinesOfItsDirection)
{
    const std::array<Mask, 4> aMasks{{{-1, 2, -1, -1, 2, -1, -1, 2, -1},
                                      {-1, -1, -1, 2, 2, 2, -1, -1, -1},
                                      {2, -1, -1, -1, 2, -1, -1, -1, 2},
                                      {-1, -1, 2, -1, 2, -1, 2, -1, -1}}};
    for (int n = 0; n < 4; ++n)
        ExpectMask([=](ImageBuffer& a) { return FilterLineDetection(a, n); },
                   aMasks[static_cast<std::size_t>(n)], dAmount);
}

TEST(FilterBlur, GoesItsShareOfTheWayToTheMean)
{
    for (const double dShare : {0.1, 0.5, 1.0}) {
        Mask aMask;
        aMask.fill(dShare / 9);
        aMask[4] += 1 - dShare;
        ExpectMask([=](ImageBuffer& a) { return FilterBlur(a, dShare); }, aMask, dClipped, 0.52);
    }
}

TEST(FilterSharpen, AddsItsShareOfTheDifferenceFromTheFourBeside)
{
    for (const double d : {0.1, 0.5, 1.0})
        ExpectMask([=](ImageBuffer& a) { return FilterSharpen(a, d); },
                   {0, -d, 0, -d, 1 + 4 * d, -d, 0, -d, 0}, dClipped, 0.52);
}

TEST(Filters, ChangeNothingAtTheirNeutralValues)
{
    const double dNaN = std::numeric_limits<double>::quiet_NaN();
    for (const int lChannels : kChannelCounts) {
        const ImageBuffer aBefore = aRandomPicture(33, 17, lChannels);
        ImageBuffer aImage = aBefore;
        EXPECT_TRUE(FilterBlur(aImage, 0) && FilterBlur(aImage, -5) && FilterBlur(aImage, dNaN) &&
                    FilterSharpen(aImage, 0) && FilterSharpen(aImage, -5) && FilterSharpen(aImage, dNaN) &&
                    FilterReserved(aImage, 7));
        EXPECT_EQ(aImage.bytes, aBefore.bytes);
    }
}

TEST(Filters, LeaveAnEvenAreaOrMakeItBlack)
{
    const ImageBuffer aFlat = aPicture(2, 2, 1, {201, 201, 201, 201});
    const auto aAfter = [&](const Operation& fnOperation) {
        ImageBuffer aImage = aFlat;
        EXPECT_TRUE(fnOperation(aImage));
        return aImage.bytes;
    };
    for (int n = 0; n < 8; ++n) {
        EXPECT_EQ(aAfter([=](ImageBuffer& a) { return FilterHighPass(a, n); }), aFlat.bytes);
        EXPECT_EQ(aAfter([=](ImageBuffer& a) { return FilterLowPass(a, n); }), aFlat.bytes);
        EXPECT_EQ(aAfter([=](ImageBuffer& a) { return FilterBlur(a, n / 7.0); }), aFlat.bytes);
        EXPECT_EQ(aAfter([=](ImageBuffer& a) { return FilterSharpen(a, n / 7.0); }), aFlat.bytes);
        EXPECT_EQ(aAfter([=](ImageBuffer& a) { return FilterDifference(a, n); }), PixelBytes(4, 0));
        EXPECT_EQ(aAfter([=](ImageBuffer& a) { return FilterLaplas(a, n); }), PixelBytes(4, 0));
        EXPECT_EQ(aAfter([=](ImageBuffer& a) { return FilterIsotropic(a, n); }), PixelBytes(4, 0));
        EXPECT_EQ(aAfter([=](ImageBuffer& a) { return FilterLineDetection(a, n); }), PixelBytes(4, 0));
    }
}

TEST(Filters, TakeAnyNumberForItsNearestAndGiveAPicture)
{
    const ImageBuffer aBefore = aRandomPicture(3, 3, 4);
    for (const std::int32_t l : aHostileLongs())
        for (const auto& fn : {FilterDifference, FilterHighPass, FilterLowPass, FilterLaplas, FilterSobel,
                               FilterPrewitt, FilterRoberts, FilterIsotropic, FilterLineDetection}) {
            ImageBuffer aImage = aBefore, aNearest = aBefore;
            EXPECT_TRUE(fn(aImage, l) && fn(aNearest, std::clamp(l, 0, 7)));
            EXPECT_EQ(aImage.bytes, aNearest.bytes);
        }
    for (const double d : aHostileDoubles()) {
        ImageBuffer aImage = aBefore;
        EXPECT_TRUE(FilterBlur(aImage, d) && FilterSharpen(aImage, d));
        EXPECT_TRUE(bSameAlpha(aImage, aBefore));
    }
}

TEST(Filters, DoNotShowWhereTheBandsOfALargePictureMeet)
{
    const ImageBuffer aBefore = aRandomPicture(500, 700, 3);
    ImageBuffer aImage = aBefore;
    EXPECT_TRUE(FilterLowPass(aImage, 0));
    for (int y = 0; y < 700; ++y)
        for (int x = 0; x < 500; x += 7) {
            int nSum = 4;
            for (int n = 0; n < 9; ++n)
                nSum += nValueAt(aBefore, x + n % 3 - 1, y + n / 3 - 1, 1);
            ASSERT_EQ(nValueAt(aImage, x, y, 1), nSum / 9) << x << " " << y;
        }
}
