// Tests of text in EMF records. Fonts differ between machines, so these check where there is ink, not its
// shape.
// shape.
#include <gtest/gtest.h>

#include "tests/platform/image/support/metafile_maker.h"

using Box = std::array<std::int32_t, 4>;

static EmfMaker WithFont(std::int32_t height = -20)
{
    EmfMaker maker(200, 100);
    return maker.Record(Emr::kSetBkMode, {1}).Font(1, height, u"Arial");
}

static std::int32_t Width(const Box& box)
{
    return box[2] - box[0];
}

static std::int32_t Height(const Box& box)
{
    return box[3] - box[1];
}

TEST(EmfText, IsDrawnBelowItsReferencePoint)
{
    const Box box = InkBounds(Render(WithFont().Text(50, 30, u"Hg")));

    EXPECT_GE(box[0], 49);
    EXPECT_LE(box[0], 54);
    EXPECT_GE(box[1], 30);
    EXPECT_LE(box[1], 38);
    EXPECT_NEAR(Width(box), 25, 6);
    EXPECT_NEAR(Height(box), 19, 4);
}

TEST(EmfText, AlignsToRightCentreAndBaseline)
{
    const auto of = [](std::int32_t align) {
        return InkBounds(Render(WithFont().Record(Emr::kSetTextAlign, {align}).Text(100, 50, u"HHHH")));
    };

    EXPECT_NEAR(of(2)[2], 100, 4);
    EXPECT_NEAR(of(6)[0] + of(6)[2], 200, 4);
    EXPECT_NEAR(of(24)[3], 50, 1);
    EXPECT_LT(of(8)[3], 50);
    EXPECT_GE(of(0)[1], 50);
}

TEST(EmfText, UsesCellHeightOrEmHeight)
{
    const std::int32_t letters = Height(InkBounds(Render(WithFont(-40).Text(10, 10, u"H"))));
    const std::int32_t cell = Height(InkBounds(Render(WithFont(40).Text(10, 10, u"H"))));

    EXPECT_NEAR(letters, 29, 3);
    EXPECT_LT(cell, letters - 1);
}

TEST(EmfText, FollowsDistancesOfRecord)
{
    const Box wide = InkBounds(Render(WithFont().Text(10, 10, u"lll", {50, 50, 10})));
    const Box own = InkBounds(Render(WithFont().Text(10, 10, u"lll")));

    EXPECT_NEAR(Width(wide), Width(own) + 2 * 50 - 2 * 4, 6);
}

TEST(EmfText, RisesByDistancesInTwoDimensions)
{
    EmfMaker maker(200, 60);
    maker.Font(1, -20, u"Arial").Record(Emr::kSetBkMode, {1});
    ByteMaker data;
    data.Zeros(16).U32Le({1, 0, 0, 20, 30, 2, 76, 0x2000}).Zeros(16).U32Le({80}).U16Le({'H', 'H'});
    const ImageBuffer image = Render(maker.Record(Emr::kExtTextOutW, data.U32Le({50, 20, 50, 0})));

    EXPECT_EQ(CountOf(image, kWhite, {0, 0, 60, 30}), 1800);
    EXPECT_LT(CountOf(image, kWhite, {70, 10, 90, 30}), 400);
    EXPECT_EQ(CountOf(image, kWhite, {70, 36, 200, 60}), 130 * 24);
}

TEST(EmfText, IsDrawnInTextColour)
{
    EmfMaker maker = WithFont(-60);
    maker.Record(Emr::kSetTextColor, {static_cast<std::int32_t>(kRed)}).Text(10, 10, u"H");

    EXPECT_GT(CountOf(Render(maker), kRed, {0, 0, 200, 100}), 100);
}

TEST(EmfText, FillsOpaqueBackground)
{
    EmfMaker maker = WithFont();
    maker.Record(Emr::kSetBkMode, {2}).Record(Emr::kSetBkColor, {static_cast<std::int32_t>(kYellow)});
    const ImageBuffer image = Render(maker.Text(10, 10, u"il", {40, 40}));

    EXPECT_EQ(InkBounds(image)[0], 10);
    EXPECT_EQ(InkBounds(image)[2], 90);
    EXPECT_EQ(InkBounds(image)[1], 10);
    EXPECT_EQ(ColorAt(image, 80, 20), kYellow);
}

TEST(EmfText, FillsAndClipsToItsBox)
{
    EmfMaker maker = WithFont(-60);
    maker.Record(Emr::kSetBkColor, {static_cast<std::int32_t>(kGreen)});
    const ImageBuffer image = Render(maker.Text(0, 0, u"HHHHH", {}, 6, {20, 20, 60, 40}));

    EXPECT_EQ(InkBounds(image), (Box{20, 20, 60, 40}));
    EXPECT_GT(CountOf(image, kGreen, {20, 20, 60, 40}), 50);
    EXPECT_GT(CountOf(image, kBlack, {20, 20, 60, 40}), 50);
}

TEST(EmfText, RisesByItsEscapement)
{
    EmfMaker maker(200, 100);
    maker.Record(Emr::kSetBkMode, {1}).Font(1, -20, u"Arial", 900);
    const Box box = InkBounds(Render(maker.Text(50, 90, u"HHHH")));

    EXPECT_GT(Height(box), 40);
    EXPECT_LT(Width(box), 20);
    EXPECT_GE(box[0], 50);
    EXPECT_LE(box[3], 90);
}

TEST(EmfText, StaysUprightOnMirroredPage)
{
    EmfMaker plain = WithFont(-40);
    plain.Text(20, 20, u"L");
    EmfMaker mirrored(200, 100);
    mirrored.Record(Emr::kSetMapMode, {8}).Record(Emr::kSetWindowExt, {200, -100});
    mirrored.Record(Emr::kSetViewportExt, {200, 100}).Record(Emr::kSetViewportOrg, {0, 100});
    mirrored.Record(Emr::kSetBkMode, {1}).Font(1, -40, u"Arial").Text(20, 80, u"L");

    EXPECT_EQ(Render(mirrored).bytes, Render(plain).bytes);
}

TEST(EmfText, RotatesWithWorldTransform)
{
    EmfMaker maker = WithFont();
    maker.World(0, 0, 1, -1, 0, 100, 10);

    EXPECT_GT(Height(InkBounds(Render(maker.Text(0, 0, u"HHHH")))), 40);
}

TEST(EmfText, UpdatesPositionIfAlignmentSaysSo)
{
    EmfMaker maker = WithFont();
    maker.Record(Emr::kSetTextAlign, {1}).Record(Emr::kMoveTo, {10, 10});
    maker.Text(150, 80, u"H", {50}).Text(150, 80, u"H", {50});
    const Box box = InkBounds(Render(maker));

    EXPECT_LT(box[0], 15);
    EXPECT_NEAR(box[2], 75, 4);
    EXPECT_LT(box[3], 35);
}

TEST(EmfText, CanBeUnderlinedAndStruckOut)
{
    const auto ink = [](std::uint32_t styles) {
        EmfMaker maker(200, 100);
        maker.Record(Emr::kSetBkMode, {1}).Font(1, -40, u"Arial", 0, 400, styles).Text(10, 10, u"i", {150});
        return Width(InkBounds(Render(maker)));
    };

    EXPECT_LT(ink(0), 10);
    EXPECT_NEAR(ink(0x000100), 150, 1);
    EXPECT_NEAR(ink(0x010000), 150, 1);
}

TEST(EmfText, CanBeBold)
{
    const auto ink = [](std::int32_t weight) {
        EmfMaker maker(200, 100);
        maker.Record(Emr::kSetBkMode, {1}).Font(1, -60, u"Arial", 0, weight).Text(10, 10, u"HI");
        return CountOf(Render(maker), kBlack, {0, 0, 200, 100});
    };

    EXPECT_GT(ink(700), ink(400) * 5 / 4);
}

TEST(EmfText, FallsBackToFontWithCharacter)
{
    // There must be ink whether or not Arial's substitute has this arrow.
    EXPECT_GT(Width(InkBounds(Render(WithFont().Text(10, 10, u"\u21d4")))), 5);
}

TEST(EmfText, MapsSymbolFontToGreek)
{
    EmfMaker symbol(200, 100);
    symbol.Record(Emr::kSetBkMode, {1}).Font(1, -40, u"Symbol").Text(10, 10, u"l");
    const Box lambda = InkBounds(Render(symbol));

    EXPECT_GT(Width(lambda), 12);  // a Latin l is a third of that
}

TEST(EmfText, MapsGlyphIndexesOfMissingFont)
{
    // In the usual fonts of that system, glyph 43 is H.
    const Box glyph = InkBounds(Render(WithFont().Text(10, 10, u"\u002b", {}, 0x10)));
    const Box letter = InkBounds(Render(WithFont().Text(10, 10, u"H")));

    EXPECT_EQ(glyph, letter);
}

TEST(EmfText, ReadsSmallAndPolyTextRecords)
{
    ByteMaker small;
    small.U32Le({10, 10, 2, 0x300, 1, 0, 0}).Text("HH");
    ByteMaker many;
    many.Zeros(16).U32Le({1, 0, 0, 2});
    many.U32Le({10, 10, 1, 120, 0}).Zeros(16).U32Le({0});
    many.U32Le({24, 10, 1, 120, 0}).Zeros(16).U32Le({0});
    many.U16Le({'H', 0});

    const Box two = InkBounds(Render(WithFont().Text(10, 10, u"HH")));
    EXPECT_EQ(InkBounds(Render(WithFont().Record(Emr::kSmallTextOut, small))), two);
    EXPECT_NEAR(Width(InkBounds(Render(WithFont().Record(Emr::kPolyTextOutW, many)))), Width(two), 2);
}

TEST(EmfText, DecodesBytesByCodePageOfFont)
{
    EmfMaker maker(200, 100);
    maker.Record(Emr::kSetBkMode, {1}).Font(1, -40, u"Arial", 0, 400, 204u << 24);  // Russian character set
    ByteMaker data;
    data.Zeros(16).U32Le({1, 0, 0, 10, 10, 1, 76, 0}).Zeros(16).U32Le({0}).U8({0xC6});  // Zhe
    maker.Record(Emr::kExtTextOutA, data);

    EXPECT_EQ(InkBounds(Render(maker)), InkBounds(Render(WithFont(-40).Text(10, 10, u"\u0416"))));
}

TEST(EmfText, JoinsOpenPath)
{
    EmfMaker maker = WithFont(-60);
    maker.Record(Emr::kBeginPath).Text(10, 10, u"H").Record(Emr::kEndPath).Record(Emr::kSelectClipPath, {5});
    maker.Brush(2, kRed).Select(kNullPen).Record(Emr::kRectangle, {0, 0, 200, 100});
    const ImageBuffer image = Render(maker);

    EXPECT_GT(CountOf(image, kRed, {0, 0, 200, 100}), 300);
    EXPECT_GT(CountOf(image, kWhite, {0, 0, 200, 100}), 15000);
}
