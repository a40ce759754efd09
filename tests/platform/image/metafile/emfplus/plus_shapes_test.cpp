// Tests of EMF+ shapes, pens and text.
#include <gtest/gtest.h>

#include "tests/platform/image/support/emf_plus_maker.h"

using Box = std::array<std::int32_t, 4>;

static constexpr Box kAll{0, 0, 60, 60};

static EmfPlusMaker Page()
{
    return {60, 60};
}

/// Draws a line from (10, 30) to (50, 30) with a pen of width 6.
static ImageBuffer LineWith(std::uint32_t flags, const PlusBytes& options)
{
    PlusBytes pen;
    pen.U({Plus::kVersion, 0, flags, 0}).F({6}).With(options).With(SolidBrush(kPlusBlue));
    EmfPlusMaker maker = Page();
    maker.Object(Plus::kPen, 1, pen);
    return Render(maker.Record(Plus::kDrawLines, 1, PlusBytes().U({2}).F({10, 30, 50, 30})));
}

TEST(EmfPlusShapes, FillsPolygonsPiesAndCurves)
{
    EmfPlusMaker maker = Page();
    maker.Record(Plus::kFillPolygon, 0xC000,
                 PlusBytes().U({kPlusRed, 3, 0x00000000, 0x0000001E, 0x001E0000}));
    maker.Record(Plus::kFillPie, Plus::kColor, PlusBytes().U({kPlusGreen}).F({0, 90, 30, 0, 30, 30}));
    maker.Record(Plus::kFillClosedCurve, Plus::kColor,
                 PlusBytes().U({kPlusBlue}).F({0.5}).U({4}).F({0, 45, 15, 32, 30, 45, 15, 58}));
    const ImageBuffer image = Render(maker);

    EXPECT_EQ(ColorAt(image, 5, 5), kRed);
    EXPECT_EQ(ColorAt(image, 25, 25), kWhite);
    EXPECT_EQ(ColorAt(image, 50, 20), kGreen);  // clockwise from the right: the lower right quarter
    EXPECT_EQ(ColorAt(image, 40, 20), kWhite);
    EXPECT_EQ(ColorAt(image, 15, 45), kBlue);
    EXPECT_EQ(ColorAt(image, 3, 33), kWhite);
}

TEST(EmfPlusShapes, FillsPathWithHole)
{
    EmfPlusMaker maker = Page();
    maker.Object(
        Plus::kPath, 5,
        PathOf({0, 0, 40, 0, 40, 40, 0, 40, 10, 10, 30, 10, 30, 30, 10, 30}, {0, 1, 1, 0x81, 0, 1, 1, 0x81}));
    maker.Record(Plus::kFillPath, 0x8005, PlusBytes().U({kPlusRed}));
    const ImageBuffer image = Render(maker);

    EXPECT_EQ(CountOf(image, kRed, kAll), 1200);
    EXPECT_EQ(ColorAt(image, 20, 20), kWhite);
}

TEST(EmfPlusShapes, ReadRelativePoints)
{
    PlusBytes lines;
    lines.U({3}).U8({10, 10, 0x80, 40, 0, 0, 0x80, 40});
    EmfPlusMaker maker = Page();
    maker.Object(Plus::kPen, 1, SolidPen(kPlusRed, 1)).Record(Plus::kDrawLines, 0x0801, lines);

    EXPECT_EQ(InkBounds(Render(maker)), (Box{10, 10, 51, 51}));
}

TEST(EmfPlusPen, CentresLineOnPixels)
{
    EmfPlusMaker maker = Page();
    maker.Object(Plus::kPen, 1, SolidPen(kPlusRed, 1));
    maker.Record(Plus::kDrawRects, 1, PlusBytes().U({1}).F({10, 10, 20, 20}));
    const ImageBuffer image = Render(maker);

    EXPECT_EQ(InkBounds(image), (Box{10, 10, 31, 31}));
    EXPECT_EQ(CountOf(image, kRed, kAll), 80);
}

TEST(EmfPlusPen, EndsLineAsItsCapsSay)
{
    const ImageBuffer flat = LineWith(0, {});
    const ImageBuffer square = LineWith(0x6, PlusBytes().U({1, 1}));
    const ImageBuffer round = LineWith(0x4, PlusBytes().U({2}));
    const ImageBuffer arrow = LineWith(0x4, PlusBytes().U({0x14}));

    EXPECT_NEAR(InkBounds(flat)[0], 10, 1);
    EXPECT_NEAR(InkBounds(flat)[2], 50, 1);
    EXPECT_NEAR(InkBounds(square)[0], 7, 1);
    EXPECT_NEAR(InkBounds(square)[2], 53, 1);
    EXPECT_NEAR(InkBounds(round)[0], 10, 1);
    EXPECT_NEAR(InkBounds(round)[2], 53, 1);
    EXPECT_GT(ColorAt(round, 52, 27) & 255, 200u);
    EXPECT_NEAR(InkBounds(arrow)[1], 24, 1);
    EXPECT_NEAR(InkBounds(arrow)[2], 51, 1);
    EXPECT_EQ(ColorAt(arrow, 48, 26), kWhite);
}

TEST(EmfPlusPen, DashesInUnitsOfItsWidth)
{
    const ImageBuffer named = LineWith(0x20, PlusBytes().U({1}));
    const ImageBuffer own = LineWith(0x100, PlusBytes().U({2}).F({1, 2}));

    EXPECT_EQ(ColorAt(named, 20, 30), kBlue);
    EXPECT_EQ(ColorAt(named, 31, 30), kWhite);
    EXPECT_EQ(ColorAt(named, 40, 30), kBlue);
    EXPECT_EQ(ColorAt(own, 13, 30), kBlue);
    EXPECT_EQ(ColorAt(own, 22, 30), kWhite);
    EXPECT_EQ(ColorAt(own, 31, 30), kBlue);
}

TEST(EmfPlusPen, DrawsParallelLines)
{
    const ImageBuffer image = LineWith(0x400, PlusBytes().U({4}).F({0, 0.33, 0.67, 1}));

    EXPECT_EQ(ColorAt(image, 30, 30) & 0xFFFF, 0xFFFFu);
    EXPECT_LT(ColorAt(image, 30, 28) & 255, 100u);
    EXPECT_LT(ColorAt(image, 30, 32) & 255, 100u);
}

TEST(EmfPlusPen, JoinsCornersAsItSays)
{
    const auto corner = [](std::uint32_t join) {
        PlusBytes pen;
        pen.U({Plus::kVersion, 0, 8, 0}).F({10}).U({join}).With(SolidBrush(kPlusBlue));
        EmfPlusMaker maker = Page();
        maker.Object(Plus::kPen, 1, pen);
        maker.Record(Plus::kDrawLines, 1, PlusBytes().U({3}).F({10, 50, 50, 10, 50, 50}));
        return Render(maker);
    };

    EXPECT_LT(InkBounds(corner(0))[1], 1);
    EXPECT_NEAR(InkBounds(corner(2))[1], 5, 1);
    EXPECT_GT(InkBounds(corner(1))[1], 5);
}

/// A page with a font of the given size as object 3.
static EmfPlusMaker TextPage(double size, std::uint32_t style = 0)
{
    PlusBytes font;
    font.U({Plus::kVersion}).F({size}).U({2, style, 0, 5}).Utf16(u"Arial");
    EmfPlusMaker maker(200, 100);
    return maker.Object(Plus::kFont, 3, font);
}

static PlusBytes StringRecord(std::u16string_view text, std::initializer_list<double> box)
{
    PlusBytes record;
    record.U({0xFF000000, 9, static_cast<std::uint32_t>(text.size())}).F(box).Utf16(text);
    return record;
}

static PlusBytes Format(std::uint32_t align, std::uint32_t line_align)
{
    return PlusBytes()
        .U({Plus::kVersion, 0, 0, align, line_align, 0, 0})
        .F({0})
        .U({0})
        .F({0, 0, 1})
        .U({0, 0, 0});
}

TEST(EmfPlusText, AlignsInItsBox)
{
    const auto bounds = [](std::uint32_t align, std::uint32_t line_align) {
        EmfPlusMaker maker = TextPage(20);
        maker.Object(Plus::kFormat, 9, Format(align, line_align));
        return InkBounds(
            Render(maker.Record(Plus::kDrawString, 0x8003, StringRecord(u"HH", {0, 0, 200, 100}))));
    };

    EXPECT_LT(bounds(0, 0)[0], 4);
    EXPECT_LT(bounds(0, 0)[1], 8);
    EXPECT_NEAR(bounds(1, 1)[0], 200 - bounds(1, 1)[2], 2);
    EXPECT_NEAR(bounds(1, 1)[1], 100 - bounds(1, 1)[3], 3);
    EXPECT_GT(bounds(2, 2)[2], 196);
    EXPECT_GT(bounds(2, 2)[3], 90);
}

TEST(EmfPlusText, WrapsAtSpaces)
{
    EmfPlusMaker maker = TextPage(20);
    maker.Object(Plus::kFormat, 9, Format(0, 0));
    const ImageBuffer image =
        Render(maker.Record(Plus::kDrawString, 0x8003, StringRecord(u"HHH HHH HHH", {0, 0, 100, 100})));

    EXPECT_EQ(CountOf(image, kWhite, {102, 0, 200, 100}), 9800);
    EXPECT_GT(InkBounds(image)[3], 35);
    EXPECT_LT(InkBounds(image)[3], 50);
}

TEST(EmfPlusText, PlacesGlyphsOfDriverString)
{
    PlusBytes record;
    record.U({0xFF000000, 1, 0, 2}).Utf16(u"HH").F({20, 50, 120, 80});
    const ImageBuffer image = Render(TextPage(20).Record(Plus::kDrawDriverString, 0x8003, record));

    EXPECT_LT(CountOf(image, kWhite, {20, 35, 36, 50}), 200);
    EXPECT_EQ(CountOf(image, kWhite, {0, 51, 110, 100}), 110 * 49);
    EXPECT_LT(CountOf(image, kWhite, {120, 65, 136, 80}), 200);
}

TEST(EmfPlusText, IsTurnedByWorldTransform)
{
    EmfPlusMaker maker = TextPage(20);
    maker.Record(Plus::kTranslateWorld, 0, PlusBytes().F({50, 90}));
    maker.Record(Plus::kRotateWorld, 0, PlusBytes().F({-90}));
    const Box box =
        InkBounds(Render(maker.Record(Plus::kDrawString, 0x8003, StringRecord(u"HHHH", {0, 0, 0, 0}))));

    EXPECT_LT(box[2] - box[0], 20);
    EXPECT_GT(box[3] - box[1], 45);
    EXPECT_GE(box[0], 50);
    EXPECT_LE(box[3], 90);
}
