// Gaussian, motion, radial and zoom blur.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "src/platform/image/transforms/effects/motion_blur.h"
#include "src/platform/image/transforms/filters/gaussian.h"
#include "tests/platform/image/support/kernel_pictures.h"

static constexpr double kToRadians = 3.14159265358979323846 / 180;

// What all four blurs keep: the size, alpha, and flat pictures.
template <typename Operation>
static void ExpectABlur(const Operation& blur)
{
    for (const auto& [width, height, channels] : Shapes()) {
        ImageBuffer image = Plain(width, height, channels, 201);
        ASSERT_TRUE(blur(image));
        ASSERT_TRUE(Equal(image, Plain(width, height, channels, 201)));

        const ImageBuffer before = RandomPicture(width, height, channels);
        image = before;
        ASSERT_TRUE(blur(image));
        ASSERT_TRUE(Sound(image));
        ASSERT_EQ(image.width, width);
        ASSERT_EQ(image.channels, channels);
        for (std::size_t i = 3; channels == 4 && i < image.bytes.size(); i += 4)
            ASSERT_EQ(image.bytes[i], before.bytes[i]);
    }
}

TEST(GaussianBlur, KeepsSizeAlphaAndFlatPictures)
{
    for (const std::int32_t fuzziness : {1, 5, 7, 255, INT32_MAX})
        ExpectABlur(
            [&](ImageBuffer& image) { return ApplyKernel(transforms::GaussianBlur, image, fuzziness); });
}

TEST(GaussianBlur, WithoutFuzzinessChangesNothing)
{
    const ImageBuffer before = RandomPicture(9, 8, 3);
    for (const std::int32_t fuzziness : {0, -1, INT32_MIN}) {
        ImageBuffer image = before;
        ASSERT_TRUE(ApplyKernel(transforms::GaussianBlur, image, fuzziness));
        EXPECT_TRUE(Equal(image, before));
    }
}

// The kernel sampled up to three deviations, with a replicated border.
static std::vector<double> Gaussian(const ImageBuffer& image, double deviation)
{
    const int reach = static_cast<int>(std::ceil(3 * deviation));
    std::vector<double> weights, across(image.bytes.size()), result(image.bytes.size());
    double sum = 0;
    for (int i = -reach; i <= reach; ++i) {
        weights.push_back(std::exp(-i * i / (2 * deviation * deviation)));
        sum += weights.back();
    }
    for (int y = 0; y < image.height; ++y)
        for (int x = 0; x < image.width; ++x)
            for (int i = -reach; i <= reach; ++i)
                across[static_cast<std::size_t>(y * image.width + x)] +=
                    weights[static_cast<std::size_t>(i + reach)] / sum * ValueAt(image, x + i, y);
    for (int y = 0; y < image.height; ++y)
        for (int x = 0; x < image.width; ++x)
            for (int i = -reach; i <= reach; ++i)
                result[static_cast<std::size_t>(y * image.width + x)] +=
                    weights[static_cast<std::size_t>(i + reach)] / sum *
                    across[static_cast<std::size_t>(std::clamp(y + i, 0, image.height - 1) * image.width +
                                                    x)];
    return result;
}

static void ExpectGaussian(const ImageBuffer& before, std::int32_t fuzziness, double tolerance)
{
    const std::vector<double> expected = Gaussian(before, fuzziness);
    ImageBuffer image = before;
    ASSERT_TRUE(ApplyKernel(transforms::GaussianBlur, image, fuzziness));
    for (std::size_t i = 0; i < expected.size(); ++i)
        ASSERT_NEAR(image.bytes[i], expected[i], tolerance) << fuzziness << " at " << i;
}

TEST(GaussianBlur, MatchesSampledKernelForSmallDeviations)
{
    for (const std::int32_t fuzziness : {1, 2, 5})
        ExpectGaussian(RandomPicture(47, 31, 1), fuzziness, 1.5);
}

TEST(GaussianBlur, ApproximatesKernelForLargeDeviations)
{
    // Gradients and an edge, as in photographs, and large enough to be blurred on a reduced picture.
    ImageBuffer image = Plain(181, 167, 1, 0);
    for (int y = 0; y < 167; ++y)
        for (int x = 0; x < 181; ++x)
            image.bytes[static_cast<std::size_t>(y * 181 + x)] =
                static_cast<std::uint8_t>(x > 90 ? 255 - y : (x + y) / 2);
    for (const std::int32_t fuzziness : {7, 12, 25})
        ExpectGaussian(image, fuzziness, 5);
    ExpectGaussian(RandomPicture(150, 150, 1), 10, 3);
}

TEST(MotionBlur, KeepsSizeAlphaAndFlatPictures)
{
    for (const auto& [angle, amount] : {std::pair{0.0, 10}, {33.0, 255}, {90.0, 2}, {-1e9, INT32_MAX}})
        ExpectABlur([&, turn = angle, count = amount](ImageBuffer& image) {
            return ApplyKernel(transforms::MotionBlur, image, turn, count);
        });
}

TEST(MotionBlur, AveragesAlongRowAtZeroDegrees)
{
    ImageBuffer image = GreyOf(5, 1, {0, 0, 90, 0, 0});
    ASSERT_TRUE(ApplyKernel(transforms::MotionBlur, image, 0, 3));
    EXPECT_EQ(BytesOf(image), (std::vector<int>{0, 30, 30, 30, 0}));
}

TEST(MotionBlur, RunsUpAt90DegreesAndCounterclockwise)
{
    ImageBuffer image = Plain(5, 5, 1, 0);
    image.bytes[12] = 90;
    ImageBuffer up = image, slant = image;
    ASSERT_TRUE(ApplyKernel(transforms::MotionBlur, up, 90, 3));
    EXPECT_EQ(ValueAt(up, 2, 1), 30);
    EXPECT_EQ(ValueAt(up, 2, 3), 30);
    EXPECT_EQ(ValueAt(up, 1, 2), 0);
    ASSERT_TRUE(ApplyKernel(transforms::MotionBlur, slant, 45, 3));
    EXPECT_EQ(ValueAt(slant, 3, 1), 30);
    EXPECT_EQ(ValueAt(slant, 1, 3), 30);
    EXPECT_EQ(ValueAt(slant, 3, 3), 0);
}

TEST(MotionBlur, MatchesFormula)
{
    for (const std::int32_t channels : {1, 3, 4}) {
        const ImageBuffer before = RandomPicture(31, 23, channels);
        for (const double angle : {0.0, 20.0, 90.0, 117.0}) {
            for (const std::int32_t amount : {2, 3, 10, 100, 255}) {
                ImageBuffer image = before;
                ASSERT_TRUE(ApplyKernel(transforms::MotionBlur, image, angle, amount));
                for (int y = 0; y < 23; y += 3)
                    for (int x = 0; x < 31; x += 2) {
                        int sum = 0;
                        for (int k = 0; k < amount; ++k) {
                            const int t = k - (amount - 1) / 2;
                            const double cos = angle == 90 ? 0 : std::cos(angle * kToRadians);
                            sum += ValueAt(
                                before, x + static_cast<int>(std::floor(t * cos + 0.5)),
                                y - static_cast<int>(std::floor(t * std::sin(angle * kToRadians) + 0.5)));
                        }
                        ASSERT_EQ(ValueAt(image, x, y), (2 * sum + amount) / (2 * amount))
                            << angle << " " << amount;
                    }
            }
        }
    }
}

TEST(MotionBlur, TakesAngleModulo180)
{
    ImageBuffer one = RandomPicture(30, 20, 3), other = one;
    ASSERT_TRUE(ApplyKernel(transforms::MotionBlur, one, 30, 12));
    ASSERT_TRUE(ApplyKernel(transforms::MotionBlur, other, 30 - 720, 12));
    EXPECT_TRUE(Equal(one, other));
}

TEST(MotionBlur, WithoutAmountOrAngleChangesNothing)
{
    const ImageBuffer before = RandomPicture(9, 8, 3);
    ImageBuffer image = before;
    for (const std::int32_t amount : {1, 0, -5, INT32_MIN})
        ASSERT_TRUE(ApplyKernel(transforms::MotionBlur, image, 10, amount));
    ASSERT_TRUE(ApplyKernel(transforms::MotionBlur, image, std::nan(""), 10));
    EXPECT_TRUE(Equal(image, before));
}

TEST(RadialBlur, KeepsSizeAlphaAndFlatPictures)
{
    for (const double displacement : {0.1, 50.0, 1e300})
        ExpectABlur(
            [&](ImageBuffer& image) { return ApplyKernel(transforms::RadialBlur, image, displacement); });
}

TEST(ZoomBlur, KeepsSizeAlphaAndFlatPictures)
{
    for (const double intensity : {0.1, 50.0, 1e300})
        ExpectABlur([&](ImageBuffer& image) { return ApplyKernel(transforms::ZoomBlur, image, intensity); });
}

TEST(RadialAndZoomBlur, ChangeNothingAtNeutralValues)
{
    const ImageBuffer before = RandomPicture(9, 8, 3);
    ImageBuffer image = before;
    for (const double d : {0.0, -1.0, std::nan(""), -1e300}) {
        ASSERT_TRUE(ApplyKernel(transforms::RadialBlur, image, d));
        ASSERT_TRUE(ApplyKernel(transforms::ZoomBlur, image, d));
    }
    EXPECT_TRUE(Equal(image, before));
}

// Interpolates bilinearly with a replicated border.
static double Between(const ImageBuffer& image, double x, double y)
{
    const int left = static_cast<int>(std::floor(x)), top = static_cast<int>(std::floor(y));
    const double right_share = x - left, bottom_share = y - top;
    return (ValueAt(image, left, top) * (1 - right_share) + ValueAt(image, left + 1, top) * right_share) *
               (1 - bottom_share) +
           (ValueAt(image, left, top + 1) * (1 - right_share) +
            ValueAt(image, left + 1, top + 1) * right_share) *
               bottom_share;
}

// A smooth hill, on which repeated interpolation loses hardly anything.
static ImageBuffer Hill(int side)
{
    ImageBuffer image = Plain(side, side, 1, 0);
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x)
            image.bytes[static_cast<std::size_t>(y * side + x)] = static_cast<std::uint8_t>(
                std::lround(127 + 60 * std::sin(x / 9.0) + 60 * std::cos(y / 7.0 + x / 20.0)));
    return image;
}

TEST(RadialBlur, AveragesOverArc)
{
    const ImageBuffer before = Hill(121);
    ImageBuffer image = before;
    ASSERT_TRUE(ApplyKernel(transforms::RadialBlur, image, 50));
    for (int y = 20; y < 101; y += 5) {
        for (int x = 20; x < 101; x += 5) {
            double mean = 0;
            for (int k = 0; k <= 100; ++k) {
                const double turn = (k / 100.0 - 0.5) * 18 * kToRadians;
                mean += Between(before, 60 + (x - 60) * std::cos(turn) + (y - 60) * std::sin(turn),
                                60 + (y - 60) * std::cos(turn) - (x - 60) * std::sin(turn)) /
                        101;
            }
            ASSERT_NEAR(ValueAt(image, x, y), mean, 3) << x << "," << y;
        }
    }
}

TEST(ZoomBlur, AveragesTowardsCentre)
{
    const ImageBuffer before = Hill(121);
    ImageBuffer image = before;
    ASSERT_TRUE(ApplyKernel(transforms::ZoomBlur, image, 50));
    for (int y = 0; y < 121; y += 5) {
        for (int x = 0; x < 121; x += 5) {
            double mean = 0;
            for (int k = 0; k <= 100; ++k) {
                const double scale = std::pow(0.75, k / 100.0);
                mean += Between(before, 60 + (x - 60) * scale, 60 + (y - 60) * scale) / 101;
            }
            ASSERT_NEAR(ValueAt(image, x, y), mean, 3) << x << "," << y;
        }
    }
    EXPECT_EQ(ValueAt(image, 60, 60), ValueAt(before, 60, 60));
}
