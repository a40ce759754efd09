// Tests of EMF+ transforms, clips and saved states.
#include <gtest/gtest.h>

#include "tests/platform/image/support/emf_plus_maker.h"

static constexpr std::array<std::int32_t, 4> kAll{0, 0, 40, 40};

static EmfPlusMaker Page()
{
    return {40, 40};
}

TEST(EmfPlusTransform, AppliesNewTransformFirst)
{
    EmfPlusMaker maker = Page();
    maker.Record(Plus::kTranslateWorld, 0, PlusBytes().F({10, 10}));
    maker.Record(Plus::kScaleWorld, 0, PlusBytes().F({2, 2})).FillRect(kPlusBlue, {0, 0, 5, 5});
    const ImageBuffer image = Render(maker);

    EXPECT_EQ(InkBounds(image), (std::array<std::int32_t, 4>{10, 10, 20, 20}));
}

TEST(EmfPlusTransform, AppendsIfFlagSaysSo)
{
    EmfPlusMaker maker = Page();
    maker.Record(Plus::kTranslateWorld, 0, PlusBytes().F({10, 10}));
    maker.Record(Plus::kScaleWorld, 0x2000, PlusBytes().F({2, 2})).FillRect(kPlusBlue, {0, 0, 5, 5});

    EXPECT_EQ(InkBounds(Render(maker)), (std::array<std::int32_t, 4>{20, 20, 30, 30}));
}

TEST(EmfPlusTransform, RotatesClockwise)
{
    EmfPlusMaker maker = Page();
    maker.Record(Plus::kTranslateWorld, 0, PlusBytes().F({20, 20}));
    maker.Record(Plus::kRotateWorld, 0, PlusBytes().F({90})).FillRect(kPlusBlue, {0, 0, 10, 4});

    EXPECT_EQ(InkBounds(Render(maker)), (std::array<std::int32_t, 4>{16, 20, 20, 30}));
}

TEST(EmfPlusPage, ScalesUnitsToDeviceResolution)
{
    EmfPlusMaker maker = Page();
    maker.Record(Plus::kSetPage, 4, PlusBytes().F({0.5})).FillRect(kPlusBlue, {0, 0, 0.5, 0.25});

    EXPECT_EQ(InkBounds(Render(maker)), (std::array<std::int32_t, 4>{0, 0, 24, 12}));
}

TEST(EmfPlusSave, RestoresStateOfItsNumber)
{
    EmfPlusMaker maker = Page();
    maker.Record(Plus::kSave, 0, PlusBytes().U({7})).Record(Plus::kTranslateWorld, 0, PlusBytes().F({20, 0}));
    maker.Record(Plus::kSave, 0, PlusBytes().U({8}))
        .Record(Plus::kSetClipRect, 0, PlusBytes().F({0, 0, 1, 1}));
    maker.Record(Plus::kRestore, 0, PlusBytes().U({7})).FillRect(kPlusBlue, {0, 0, 10, 10});

    EXPECT_EQ(InkBounds(Render(maker)), (std::array<std::int32_t, 4>{0, 0, 10, 10}));
}

TEST(EmfPlusContainer, MapsSourceToDestination)
{
    EmfPlusMaker maker = Page();
    maker.Record(Plus::kBeginContainer, 2, PlusBytes().F({10, 10, 20, 20, 0, 0, 100, 100}).U({1}));
    maker.FillRect(kPlusBlue, {0, 0, 100, 50}).Record(Plus::kEndContainer, 0, PlusBytes().U({1}));
    maker.FillRect(kPlusGreen, {0, 0, 5, 5});
    const ImageBuffer image = Render(maker);

    EXPECT_EQ(CountOf(image, kBlue, {10, 10, 30, 20}), 200);
    EXPECT_EQ(CountOf(image, kGreen, {0, 0, 5, 5}), 25);
}

TEST(EmfPlusClip, CombinesRectanglesPathsAndRegions)
{
    PlusBytes region;  // the right half without its middle
    region.U({Plus::kVersion, 2, 4, 0x10000000}).F({20, 0, 20, 40}).U({0x10000000}).F({20, 10, 20, 20});
    EmfPlusMaker maker = Page();
    maker.Object(Plus::kRegion, 3, region);
    maker.Object(Plus::kPath, 4, PathOf({0, 0, 40, 0, 40, 20, 0, 20}, {0, 1, 1, 0x81}));
    maker.Record(Plus::kSetClipRegion, 3).FillRect(kPlusBlue, {0, 0, 40, 40});
    maker.Record(Plus::kSetClipPath, 0x0104).FillRect(kPlusGreen, {0, 0, 40, 40});
    maker.Record(Plus::kResetClip, 0).Record(Plus::kSetClipRect, 0, PlusBytes().F({0, 0, 10, 10}));
    maker.Record(Plus::kSetClipRect, 0x0400, PlusBytes().F({0, 0, 5, 5})).FillRect(kPlusRed, {0, 0, 40, 40});
    const ImageBuffer image = Render(maker);

    EXPECT_EQ(CountOf(image, kGreen, {20, 0, 40, 10}), 200);
    EXPECT_EQ(CountOf(image, kBlue, {20, 30, 40, 40}), 200);
    EXPECT_EQ(CountOf(image, kRed, {0, 0, 10, 10}), 75);
    EXPECT_EQ(CountOf(image, kWhite, kAll), 1600 - 475);
}
