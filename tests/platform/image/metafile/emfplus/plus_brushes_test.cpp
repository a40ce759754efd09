// Tests of EMF+ brushes: alpha, gradients, hatches and textures.
#include <gtest/gtest.h>

#include "src/platform/image/codecs/png/png.h"
#include "tests/platform/image/support/emf_plus_maker.h"
#include "tests/platform/image/support/image_tools.h"

static constexpr std::array<std::int32_t, 4> kAll{0, 0, 40, 40};

/// Fills the page with a brush.
static ImageBuffer Filled(const PlusBytes& brush)
{
    EmfPlusMaker maker(40, 40);
    maker.Object(Plus::kBrush, 1, brush);
    return Render(maker.Record(Plus::kFillRects, 0, PlusBytes().U({1, 1}).F({0, 0, 40, 40})));
}

static int Red(const ImageBuffer& image, std::int32_t x, std::int32_t y)
{
    return static_cast<int>(ColorAt(image, x, y) & 255);
}

/// A gradient from black to white over the given rectangle.
static PlusBytes LinearBrush(std::uint32_t flags, std::uint32_t wrap, std::initializer_list<double> rect)
{
    return PlusBytes().U({Plus::kVersion, 4, flags, wrap}).F(rect).U({0xFF000000, 0xFFFFFFFF, 0, 0});
}

TEST(EmfPlusBrush, BlendsTranslucentColor)
{
    const ImageBuffer image = Filled(SolidBrush(0x800000FF));

    EXPECT_EQ(ColorAt(image, 20, 20), 0xFF7F7Fu);
}

TEST(EmfPlusBrush, HatchesWithBothColors)
{
    const ImageBuffer image = Filled(PlusBytes().U({Plus::kVersion, 1, 0, kPlusRed, kPlusBlue}));

    EXPECT_EQ(CountOf(image, kRed, kAll), 200);
    EXPECT_EQ(CountOf(image, kBlue, kAll), 1400);
}

TEST(EmfPlusLinearGradient, RunsFromLeftToRight)
{
    const ImageBuffer image = Filled(LinearBrush(0, 0, {0, 0, 40, 40}));

    EXPECT_NEAR(Red(image, 0, 20), 3, 2);
    EXPECT_NEAR(Red(image, 20, 5), 131, 2);
    EXPECT_NEAR(Red(image, 39, 20), 252, 2);
}

TEST(EmfPlusLinearGradient, RepeatsAndMirrors)
{
    const ImageBuffer repeated = Filled(LinearBrush(0, 0, {0, 0, 20, 20}));
    const ImageBuffer mirrored = Filled(LinearBrush(0, 1, {0, 0, 20, 20}));

    EXPECT_NEAR(Red(repeated, 25, 20), 70, 3);
    EXPECT_NEAR(Red(mirrored, 25, 20), 185, 3);
}

TEST(EmfPlusLinearGradient, IsTurnedByItsTransform)
{
    const ImageBuffer image = Filled(LinearBrush(2, 0, {0, 0, 40, 40}).F({0, 1, -1, 0, 40, 0}));

    EXPECT_NEAR(Red(image, 5, 0), 3, 2);
    EXPECT_NEAR(Red(image, 5, 39), 252, 2);
}

TEST(EmfPlusLinearGradient, FollowsBlendFactorsAndStops)
{
    const ImageBuffer blended = Filled(LinearBrush(8, 0, {0, 0, 40, 40}).U({3}).F({0, 0.5, 1}).F({0, 1, 0}));
    const ImageBuffer stops =
        Filled(LinearBrush(4, 0, {0, 0, 40, 40}).U({3}).F({0, 0.5, 1}).U({kPlusRed, kPlusGreen, kPlusBlue}));

    EXPECT_NEAR(Red(blended, 20, 20), 249, 3);
    EXPECT_NEAR(Red(blended, 39, 20), 6, 3);
    EXPECT_EQ(ColorAt(stops, 0, 0) >> 16, 0u);
    EXPECT_GT(ColorAt(stops, 20, 0) >> 8 & 255, 245u);
    EXPECT_GT(ColorAt(stops, 39, 0) >> 16, 245u);
}

TEST(EmfPlusPathGradient, RunsFromBoundaryToCentre)
{
    PlusBytes brush;
    brush.U({Plus::kVersion, 3, 0, 0, 0xFFFFFFFF}).F({20, 20}).U({1, 0xFF000000});
    const ImageBuffer image = Filled(brush.U({4}).F({0, 0, 40, 0, 40, 40, 0, 40}));

    EXPECT_GT(Red(image, 20, 20), 240);
    EXPECT_NEAR(Red(image, 10, 20), 131, 8);
    EXPECT_NEAR(Red(image, 30, 30), 122, 8);
    EXPECT_LT(Red(image, 20, 0), 10);
}

TEST(EmfPlusPathGradient, GivesEachCornerItsColor)
{
    PlusBytes brush;
    brush.U({Plus::kVersion, 3, 0, 0, 0xFFFFFFFF}).F({20, 20});
    brush.U({4, kPlusRed, kPlusGreen, kPlusBlue, 0xFF000000, 4}).F({0, 0, 40, 0, 40, 40, 0, 40});
    const ImageBuffer image = Filled(brush);

    EXPECT_GT(Red(image, 0, 0), 245);
    EXPECT_LT(ColorAt(image, 0, 0) >> 8, 0x2020u);
    EXPECT_GT(ColorAt(image, 39, 39) >> 16, 245u);
    EXPECT_LT(Red(image, 1, 38), 20);
}

/// An image object that holds a PNG.
static PlusBytes PngImage(const ImageBuffer& picture)
{
    PlusBytes image;
    image.U({Plus::kVersion, 1, 0, 0, 0, 0, 1});
    image.All(Encoded(kPngCodec, picture));
    return image;
}

TEST(EmfPlusTextureBrush, RepeatsItsImage)
{
    ImageBuffer picture;
    picture.width = 2;
    picture.height = 1;
    picture.channels = 3;
    picture.bytes = {0, 0, 255, 255, 0, 0};
    const ImageBuffer image = Filled(PlusBytes().U({Plus::kVersion, 2, 0, 0}).With(PngImage(picture)));

    EXPECT_EQ(CountOf(image, kRed, kAll), 800);
    EXPECT_EQ(CountOf(image, kBlue, kAll), 800);
    EXPECT_EQ(ColorAt(image, 6, 3), kRed);
}

TEST(EmfPlusImage, DrawsRawPixelsWithAlpha)
{
    PlusBytes pixels;
    pixels.U({Plus::kVersion, 1, 2, 1, 8, 0x26200A, 0, kPlusBlue, 0x80FF0000});
    EmfPlusMaker maker(40, 40);
    maker.Object(Plus::kImage, 2, pixels);
    maker.Record(Plus::kDrawImage, 2, PlusBytes().U({0, 2}).F({0, 0, 2, 1, 5, 5, 2, 1}));
    const ImageBuffer image = Render(maker);

    EXPECT_EQ(ColorAt(image, 5, 5), kBlue);
    EXPECT_EQ(ColorAt(image, 6, 5), 0x7F7FFFu);
    EXPECT_EQ(CountOf(image, kWhite, kAll), 1598);
}

TEST(EmfPlusImage, DrawsFileIntoParallelogram)
{
    EmfPlusMaker maker(40, 40);
    ImageBuffer picture;
    picture.width = picture.height = 8;
    picture.channels = 3;
    for (int n = 0; n < 64; ++n)
        picture.bytes.insert(picture.bytes.end(), {0, 255, 0});
    maker.Object(Plus::kImage, 2, PngImage(picture));
    maker.Record(Plus::kDrawImagePoints, 2,
                 PlusBytes().U({0, 2}).F({0, 0, 8, 8}).U({3}).F({10, 0, 30, 0, 0, 20}));
    const ImageBuffer image = Render(maker);

    EXPECT_EQ(ColorAt(image, 15, 10), kGreen);
    EXPECT_EQ(ColorAt(image, 2, 2), kWhite);
    EXPECT_EQ(ColorAt(image, 28, 18), kWhite);
}

TEST(EmfPlusImage, PlaysMetafileWithinItsBox)
{
    const std::vector<std::uint8_t> inner = EmfPlusMaker(20, 20)
                                                .FillRect(kPlusBlue, {0, 0, 10, 40})
                                                .FillRect(kPlusGreen, {10, -50, 50, 100})
                                                .File();
    PlusBytes image;
    image.U({Plus::kVersion, 2, 4, static_cast<std::uint32_t>(inner.size())}).All(inner);
    EmfPlusMaker maker(40, 40);
    maker.Object(Plus::kImage, 2, image);
    maker.Record(Plus::kDrawImage, 2, PlusBytes().U({0, 2}).F({0, 0, 20, 20, 10, 10, 20, 10}));
    const ImageBuffer drawn = Render(maker);

    EXPECT_EQ(CountOf(drawn, kBlue, {10, 10, 20, 20}), 100);
    EXPECT_EQ(CountOf(drawn, kGreen, {20, 10, 30, 20}), 100);
    EXPECT_EQ(CountOf(drawn, kWhite, kAll), 1400);
}
