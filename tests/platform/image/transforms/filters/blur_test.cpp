// Gaussian, motion, radial and zoom blur.
#include <algorithm>
#include <cmath>

#include "src/platform/image/transforms/effects/motion_blur.h"
#include "src/platform/image/transforms/filters/gaussian.h"
#include "tests/platform/image/support/kernel_pictures.h"

static constexpr double kToRadians = 3.14159265358979323846 / 180;

// Everything that these four have in common: no change of a plain picture, of the size, of alpha.
template <typename Operation>
static void ExpectABlur(const Operation& fnBlur)
{
    for (const auto& [lWidth, lHeight, lChannels] : aShapes()) {
        ImageBuffer aImage = aPlain(lWidth, lHeight, lChannels, 201);
        ASSERT_TRUE(fnBlur(aImage));
        ASSERT_TRUE(bEqual(aImage, aPlain(lWidth, lHeight, lChannels, 201)));

        const ImageBuffer aBefore = aRandomPicture(lWidth, lHeight, lChannels);
        aImage = aBefore;
        ASSERT_TRUE(fnBlur(aImage));
        ASSERT_TRUE(bSound(aImage));
        ASSERT_EQ(aImage.width, lWidth);
        ASSERT_EQ(aImage.channels, lChannels);
        for (std::size_t i = 3; lChannels == 4 && i < aImage.bytes.size(); i += 4)
            ASSERT_EQ(aImage.bytes[i], aBefore.bytes[i]);
    }
}

TEST(GaussianBlur, KeepsSizeAlphaAndPlainPictures)
{
    for (const std::int32_t lFuzziness : {1, 5, 7, 255, INT32_MAX})
        ExpectABlur([&](ImageBuffer& aImage) { return transforms::GaussianBlur(aImage, lFuzziness); });
}

TEST(GaussianBlur, OfNothingChangesNothing)
{
    const ImageBuffer aBefore = aRandomPicture(9, 8, 3);
    for (const std::int32_t lFuzziness : {0, -1, INT32_MIN}) {
        ImageBuffer aImage = aBefore;
        ASSERT_TRUE(transforms::GaussianBlur(aImage, lFuzziness));
        EXPECT_TRUE(bEqual(aImage, aBefore));
    }
}

// The mean under the curve, sampled as far as three deviations, with the border's pixels going on.
static std::vector<double> aGaussian(const ImageBuffer& aImage, double dDeviation)
{
    const int nReach = static_cast<int>(std::ceil(3 * dDeviation));
    std::vector<double> aWeights, aAcross(aImage.bytes.size()), aResult(aImage.bytes.size());
    double dSum = 0;
    for (int i = -nReach; i <= nReach; ++i) {
        aWeights.push_back(std::exp(-i * i / (2 * dDeviation * dDeviation)));
        dSum += aWeights.back();
    }
    for (int y = 0; y < aImage.height; ++y)
        for (int x = 0; x < aImage.width; ++x)
            for (int i = -nReach; i <= nReach; ++i)
                aAcross[static_cast<std::size_t>(y * aImage.width + x)] +=
                    aWeights[static_cast<std::size_t>(i + nReach)] / dSum * nValueAt(aImage, x + i, y);
    for (int y = 0; y < aImage.height; ++y)
        for (int x = 0; x < aImage.width; ++x)
            for (int i = -nReach; i <= nReach; ++i)
                aResult[static_cast<std::size_t>(y * aImage.width + x)] +=
                    aWeights[static_cast<std::size_t>(i + nReach)] / dSum *
                    aAcross[static_cast<std::size_t>(std::clamp(y + i, 0, aImage.height - 1) * aImage.width +
                                                     x)];
    return aResult;
}

static void ExpectGaussian(const ImageBuffer& aBefore, std::int32_t lFuzziness, double dTolerance)
{
    const std::vector<double> aExpected = aGaussian(aBefore, lFuzziness);
    ImageBuffer aImage = aBefore;
    ASSERT_TRUE(transforms::GaussianBlur(aImage, lFuzziness));
    for (std::size_t i = 0; i < aExpected.size(); ++i)
        ASSERT_NEAR(aImage.bytes[i], aExpected[i], dTolerance) << lFuzziness << " at " << i;
}

TEST(GaussianBlur, IsTheSampledCurveForSmallDeviations)
{
    for (const std::int32_t lFuzziness : {1, 2, 5})
        ExpectGaussian(aRandomPicture(47, 31, 1), lFuzziness, 1.5);
}

TEST(GaussianBlur, StaysNearTheCurveForGreatOnes)
{
    // Slopes and an edge: the shape of photographs, and large enough to be blurred on a smaller picture.
    ImageBuffer aImage = aPlain(181, 167, 1, 0);
    for (int y = 0; y < 167; ++y)
        for (int x = 0; x < 181; ++x)
            aImage.bytes[static_cast<std::size_t>(y * 181 + x)] =
                static_cast<std::uint8_t>(x > 90 ? 255 - y : (x + y) / 2);
    for (const std::int32_t lFuzziness : {7, 12, 25})
        ExpectGaussian(aImage, lFuzziness, 5);
    ExpectGaussian(aRandomPicture(150, 150, 1), 10, 3);
}

TEST(MotionBlur, KeepsSizeAlphaAndPlainPictures)
{
    for (const auto& [dAngle, lAmount] : {std::pair{0.0, 10}, {33.0, 255}, {90.0, 2}, {-1e9, INT32_MAX}})
        ExpectABlur([&, dTurn = dAngle, lCount = lAmount](ImageBuffer& aImage) {
            return transforms::MotionBlur(aImage, dTurn, lCount);
        });
}

TEST(MotionBlur, IsTheMeanAlongTheRow)
{
    ImageBuffer aImage = aGreyOf(5, 1, {0, 0, 90, 0, 0});
    ASSERT_TRUE(transforms::MotionBlur(aImage, 0, 3));
    EXPECT_EQ(aBytesOf(aImage), (std::vector<int>{0, 30, 30, 30, 0}));
}

TEST(MotionBlur, RunsUpwardsAtNinetyDegreesAndCounterclockwiseBetween)
{
    ImageBuffer aImage = aPlain(5, 5, 1, 0);
    aImage.bytes[12] = 90;
    ImageBuffer aUp = aImage, aSlant = aImage;
    ASSERT_TRUE(transforms::MotionBlur(aUp, 90, 3));
    EXPECT_EQ(nValueAt(aUp, 2, 1), 30);
    EXPECT_EQ(nValueAt(aUp, 2, 3), 30);
    EXPECT_EQ(nValueAt(aUp, 1, 2), 0);
    ASSERT_TRUE(transforms::MotionBlur(aSlant, 45, 3));
    EXPECT_EQ(nValueAt(aSlant, 3, 1), 30);
    EXPECT_EQ(nValueAt(aSlant, 1, 3), 30);
    EXPECT_EQ(nValueAt(aSlant, 3, 3), 0);
}

TEST(MotionBlur, AgreesWithTheFormula)
{
    for (const std::int32_t lChannels : {1, 3, 4}) {
        const ImageBuffer aBefore = aRandomPicture(31, 23, lChannels);
        for (const double dAngle : {0.0, 20.0, 90.0, 117.0}) {
            for (const std::int32_t lAmount : {2, 3, 10, 100, 255}) {
                ImageBuffer aImage = aBefore;
                ASSERT_TRUE(transforms::MotionBlur(aImage, dAngle, lAmount));
                for (int y = 0; y < 23; y += 3)
                    for (int x = 0; x < 31; x += 2) {
                        int nSum = 0;
                        for (int k = 0; k < lAmount; ++k) {
                            const int t = k - (lAmount - 1) / 2;
                            const double dCos = dAngle == 90 ? 0 : std::cos(dAngle * kToRadians);
                            nSum += nValueAt(
                                aBefore, x + static_cast<int>(std::floor(t * dCos + 0.5)),
                                y - static_cast<int>(std::floor(t * std::sin(dAngle * kToRadians) + 0.5)));
                        }
                        ASSERT_EQ(nValueAt(aImage, x, y), (2 * nSum + lAmount) / (2 * lAmount))
                            << dAngle << " " << lAmount;
                    }
            }
        }
    }
}

TEST(MotionBlur, TakesHalfTurnsOff)
{
    ImageBuffer aOne = aRandomPicture(30, 20, 3), aOther = aOne;
    ASSERT_TRUE(transforms::MotionBlur(aOne, 30, 12));
    ASSERT_TRUE(transforms::MotionBlur(aOther, 30 - 720, 12));
    EXPECT_TRUE(bEqual(aOne, aOther));
}

TEST(MotionBlur, OfOnePixelOrNoAngleChangesNothing)
{
    const ImageBuffer aBefore = aRandomPicture(9, 8, 3);
    ImageBuffer aImage = aBefore;
    for (const std::int32_t lAmount : {1, 0, -5, INT32_MIN})
        ASSERT_TRUE(transforms::MotionBlur(aImage, 10, lAmount));
    ASSERT_TRUE(transforms::MotionBlur(aImage, std::nan(""), 10));
    EXPECT_TRUE(bEqual(aImage, aBefore));
}

TEST(RadialBlur, KeepsSizeAlphaAndPlainPictures)
{
    for (const double dDisplacement : {0.1, 50.0, 1e300})
        ExpectABlur([&](ImageBuffer& aImage) { return transforms::RadialBlur(aImage, dDisplacement); });
}

TEST(ZoomBlur, KeepsSizeAlphaAndPlainPictures)
{
    for (const double dIntensity : {0.1, 50.0, 1e300})
        ExpectABlur([&](ImageBuffer& aImage) { return transforms::ZoomBlur(aImage, dIntensity); });
}

TEST(RadialAndZoomBlur, OfNothingChangeNothing)
{
    const ImageBuffer aBefore = aRandomPicture(9, 8, 3);
    ImageBuffer aImage = aBefore;
    for (const double d : {0.0, -1.0, std::nan(""), -1e300}) {
        ASSERT_TRUE(transforms::RadialBlur(aImage, d));
        ASSERT_TRUE(transforms::ZoomBlur(aImage, d));
    }
    EXPECT_TRUE(bEqual(aImage, aBefore));
}

// The picture between its pixels; beyond the border the border goes on.
static double dBetween(const ImageBuffer& aImage, double x, double y)
{
    const int lX = static_cast<int>(std::floor(x)), lY = static_cast<int>(std::floor(y));
    const double dX = x - lX, dY = y - lY;
    return (nValueAt(aImage, lX, lY) * (1 - dX) + nValueAt(aImage, lX + 1, lY) * dX) * (1 - dY) +
           (nValueAt(aImage, lX, lY + 1) * (1 - dX) + nValueAt(aImage, lX + 1, lY + 1) * dX) * dY;
}

// A smooth hill, on which interpolating more than once costs next to nothing.
static ImageBuffer aHill(int nSide)
{
    ImageBuffer aImage = aPlain(nSide, nSide, 1, 0);
    for (int y = 0; y < nSide; ++y)
        for (int x = 0; x < nSide; ++x)
            aImage.bytes[static_cast<std::size_t>(y * nSide + x)] = static_cast<std::uint8_t>(
                std::lround(127 + 60 * std::sin(x / 9.0) + 60 * std::cos(y / 7.0 + x / 20.0)));
    return aImage;
}

TEST(RadialBlur, IsTheMeanOverItsArc)
{
    const ImageBuffer aBefore = aHill(121);
    ImageBuffer aImage = aBefore;
    ASSERT_TRUE(transforms::RadialBlur(aImage, 50));
    for (int y = 20; y < 101; y += 5) {
        for (int x = 20; x < 101; x += 5) {
            double dMean = 0;
            for (int k = 0; k <= 100; ++k) {
                const double dTurn = (k / 100.0 - 0.5) * 18 * kToRadians;
                dMean += dBetween(aBefore, 60 + (x - 60) * std::cos(dTurn) + (y - 60) * std::sin(dTurn),
                                  60 + (y - 60) * std::cos(dTurn) - (x - 60) * std::sin(dTurn)) /
                         101;
            }
            ASSERT_NEAR(nValueAt(aImage, x, y), dMean, 3) << x << "," << y;
        }
    }
}

TEST(ZoomBlur, IsTheMeanOfTheWayToTheMiddle)
{
    const ImageBuffer aBefore = aHill(121);
    ImageBuffer aImage = aBefore;
    ASSERT_TRUE(transforms::ZoomBlur(aImage, 50));
    for (int y = 0; y < 121; y += 5) {
        for (int x = 0; x < 121; x += 5) {
            double dMean = 0;
            for (int k = 0; k <= 100; ++k) {
                const double dScale = std::pow(0.75, k / 100.0);
                dMean += dBetween(aBefore, 60 + (x - 60) * dScale, 60 + (y - 60) * dScale) / 101;
            }
            ASSERT_NEAR(nValueAt(aImage, x, y), dMean, 3) << x << "," << y;
        }
    }
    EXPECT_EQ(nValueAt(aImage, 60, 60), nValueAt(aBefore, 60, 60));
}
