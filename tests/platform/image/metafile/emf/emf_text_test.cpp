// Text of EMF records. Fonts differ from machine to machine, so these look at where there is ink, not at its
// shape.
#include "tests/platform/image/support/metafile_maker.h"

using Box = std::array<std::int32_t, 4>;

static EmfMaker Writing(std::int32_t lHeight = -20)
{
    EmfMaker objMaker(200, 100);
    return objMaker.Record(Emr::SetBkMode, {1}).Font(1, lHeight, u"Arial");
}

static std::int32_t lWidth(const Box& box)
{
    return box[2] - box[0];
}

static std::int32_t lHeight(const Box& box)
{
    return box[3] - box[1];
}

TEST(EmfText, StandsBelowItsReferencePoint)
{
    const Box box = aInk(aPlayed(Writing().Text(50, 30, u"Hg")));

    EXPECT_GE(box[0], 49);
    EXPECT_LE(box[0], 54);
    EXPECT_GE(box[1], 30);
    EXPECT_LE(box[1], 38);
    EXPECT_NEAR(lWidth(box), 25, 6);
    EXPECT_NEAR(lHeight(box), 19, 4);
}

TEST(EmfText, IsAlignedToTheRightTheMiddleAndTheBaseLine)
{
    const auto boxOf = [](std::int32_t lAlign) {
        return aInk(aPlayed(Writing().Record(Emr::SetTextAlign, {lAlign}).Text(100, 50, u"HHHH")));
    };

    EXPECT_NEAR(boxOf(2)[2], 100, 4);
    EXPECT_NEAR(boxOf(6)[0] + boxOf(6)[2], 200, 4);
    EXPECT_NEAR(boxOf(24)[3], 50, 1);
    EXPECT_LT(boxOf(8)[3], 50);
    EXPECT_GE(boxOf(0)[1], 50);
}

TEST(EmfText, TakesTheHeightOfTheCellOrOfTheLetters)
{
    const std::int32_t lLetters = lHeight(aInk(aPlayed(Writing(-40).Text(10, 10, u"H"))));
    const std::int32_t lCell = lHeight(aInk(aPlayed(Writing(40).Text(10, 10, u"H"))));

    EXPECT_NEAR(lLetters, 29, 3);
    EXPECT_LT(lCell, lLetters - 1);
}

TEST(EmfText, FollowsTheDistancesOfTheRecord)
{
    const Box boxWide = aInk(aPlayed(Writing().Text(10, 10, u"lll", {50, 50, 10})));
    const Box boxOwn = aInk(aPlayed(Writing().Text(10, 10, u"lll")));

    EXPECT_NEAR(lWidth(boxWide), lWidth(boxOwn) + 2 * 50 - 2 * 4, 6);
}

TEST(EmfText, IsDrawnInItsColour)
{
    EmfMaker objMaker = Writing(-60);
    objMaker.Record(Emr::SetTextColor, {static_cast<std::int32_t>(kRed)}).Text(10, 10, u"H");

    EXPECT_GT(nCountOf(aPlayed(objMaker), kRed, {0, 0, 200, 100}), 100);
}

TEST(EmfText, LaysItsBackgroundWhenThatIsOpaque)
{
    EmfMaker objMaker = Writing();
    objMaker.Record(Emr::SetBkMode, {2}).Record(Emr::SetBkColor, {static_cast<std::int32_t>(kYellow)});
    const ImageBuffer aImage = aPlayed(objMaker.Text(10, 10, u"il", {40, 40}));

    EXPECT_EQ(aInk(aImage)[0], 10);
    EXPECT_EQ(aInk(aImage)[2], 90);
    EXPECT_EQ(aInk(aImage)[1], 10);
    EXPECT_EQ(nColorAt(aImage, 80, 20), kYellow);
}

TEST(EmfText, FillsAndClipsToItsBox)
{
    EmfMaker objMaker = Writing(-60);
    objMaker.Record(Emr::SetBkColor, {static_cast<std::int32_t>(kGreen)});
    const ImageBuffer aImage = aPlayed(objMaker.Text(0, 0, u"HHHHH", {}, 6, {20, 20, 60, 40}));

    EXPECT_EQ(aInk(aImage), (Box{20, 20, 60, 40}));
    EXPECT_GT(nCountOf(aImage, kGreen, {20, 20, 60, 40}), 50);
    EXPECT_GT(nCountOf(aImage, kBlack, {20, 20, 60, 40}), 50);
}

TEST(EmfText, ClimbsByItsEscapement)
{
    EmfMaker objMaker(200, 100);
    objMaker.Record(Emr::SetBkMode, {1}).Font(1, -20, u"Arial", 900);
    const Box box = aInk(aPlayed(objMaker.Text(50, 90, u"HHHH")));

    EXPECT_GT(lHeight(box), 40);
    EXPECT_LT(lWidth(box), 20);
    EXPECT_GE(box[0], 50);
    EXPECT_LE(box[3], 90);
}

TEST(EmfText, StaysUprightWhenThePageIsMirrored)
{
    EmfMaker objPlain = Writing(-40);
    objPlain.Text(20, 20, u"L");
    EmfMaker objMirrored(200, 100);
    objMirrored.Record(Emr::SetMapMode, {8}).Record(Emr::SetWindowExt, {200, -100});
    objMirrored.Record(Emr::SetViewportExt, {200, 100}).Record(Emr::SetViewportOrg, {0, 100});
    objMirrored.Record(Emr::SetBkMode, {1}).Font(1, -40, u"Arial").Text(20, 80, u"L");

    EXPECT_EQ(aPlayed(objMirrored).bytes, aPlayed(objPlain).bytes);
}

TEST(EmfText, TurnsWithTheWorld)
{
    EmfMaker objMaker = Writing();
    objMaker.World(0, 0, 1, -1, 0, 100, 10);

    EXPECT_GT(lHeight(aInk(aPlayed(objMaker.Text(0, 0, u"HHHH")))), 40);
}

TEST(EmfText, MovesThePositionWhenTheAlignmentSaysSo)
{
    EmfMaker objMaker = Writing();
    objMaker.Record(Emr::SetTextAlign, {1}).Record(Emr::MoveTo, {10, 10});
    objMaker.Text(150, 80, u"H", {50}).Text(150, 80, u"H", {50});
    const Box box = aInk(aPlayed(objMaker));

    EXPECT_LT(box[0], 15);
    EXPECT_NEAR(box[2], 75, 4);
    EXPECT_LT(box[3], 35);
}

TEST(EmfText, CanBeUnderlinedAndStruckOut)
{
    const auto nInk = [](std::uint32_t nStyles) {
        EmfMaker objMaker(200, 100);
        objMaker.Record(Emr::SetBkMode, {1})
            .Font(1, -40, u"Arial", 0, 400, nStyles)
            .Text(10, 10, u"i", {150});
        return lWidth(aInk(aPlayed(objMaker)));
    };

    EXPECT_LT(nInk(0), 10);
    EXPECT_NEAR(nInk(0x000100), 150, 1);
    EXPECT_NEAR(nInk(0x010000), 150, 1);
}

TEST(EmfText, CanBeBold)
{
    const auto nInk = [](std::int32_t lWeight) {
        EmfMaker objMaker(200, 100);
        objMaker.Record(Emr::SetBkMode, {1}).Font(1, -60, u"Arial", 0, lWeight).Text(10, 10, u"HI");
        return nCountOf(aPlayed(objMaker), kBlack, {0, 0, 200, 100});
    };

    EXPECT_GT(nInk(700), nInk(400) * 5 / 4);
}

TEST(EmfText, FindsAFontThatHasTheCharacter)
{
    // Arial's substitutes have no such arrow or have it: in either case there must be ink.
    EXPECT_GT(lWidth(aInk(aPlayed(Writing().Text(10, 10, u"\u21d4")))), 5);
}

TEST(EmfText, OfTheSymbolFontIsGreek)
{
    EmfMaker objSymbol(200, 100);
    objSymbol.Record(Emr::SetBkMode, {1}).Font(1, -40, u"Symbol").Text(10, 10, u"l");
    const Box boxLambda = aInk(aPlayed(objSymbol));

    EXPECT_GT(lWidth(boxLambda), 12);  // a Latin l is a third of that
}

TEST(EmfText, MayNameGlyphsOfAFontThatIsNotThere)
{
    // Glyph 43 of the fonts of that system is H.
    const Box boxGlyph = aInk(aPlayed(Writing().Text(10, 10, u"\u002b", {}, 0x10)));
    const Box boxLetter = aInk(aPlayed(Writing().Text(10, 10, u"H")));

    EXPECT_EQ(boxGlyph, boxLetter);
}

TEST(EmfText, CanBeSmallRecordsAndManyInOne)
{
    ByteMaker objSmall;
    objSmall.U32Le({10, 10, 2, 0x300, 1, 0, 0}).Text("HH");
    ByteMaker objMany;
    objMany.Zeros(16).U32Le({1, 0, 0, 2});
    objMany.U32Le({10, 10, 1, 120, 0}).Zeros(16).U32Le({0});
    objMany.U32Le({24, 10, 1, 120, 0}).Zeros(16).U32Le({0});
    objMany.U16Le({'H', 0});

    const Box boxTwo = aInk(aPlayed(Writing().Text(10, 10, u"HH")));
    EXPECT_EQ(aInk(aPlayed(Writing().Record(Emr::SmallTextOut, objSmall))), boxTwo);
    EXPECT_NEAR(lWidth(aInk(aPlayed(Writing().Record(Emr::PolyTextOutW, objMany)))), lWidth(boxTwo), 2);
}

TEST(EmfText, OfBytesGoesThroughTheCodePageOfItsFont)
{
    EmfMaker objMaker(200, 100);
    objMaker.Record(Emr::SetBkMode, {1}).Font(1, -40, u"Arial", 0, 400, 204u << 24);  // Russian
    ByteMaker objData;
    objData.Zeros(16).U32Le({1, 0, 0, 10, 10, 1, 76, 0}).Zeros(16).U32Le({0}).U8({0xC6});  // Zhe
    objMaker.Record(Emr::ExtTextOutA, objData);

    EXPECT_EQ(aInk(aPlayed(objMaker)), aInk(aPlayed(Writing(-40).Text(10, 10, u"\u0416"))));
}

TEST(EmfText, BecomesPartOfAPath)
{
    EmfMaker objMaker = Writing(-60);
    objMaker.Record(Emr::BeginPath).Text(10, 10, u"H").Record(Emr::EndPath).Record(Emr::SelectClipPath, {5});
    objMaker.Brush(2, kRed).Select(kNullPen).Record(Emr::Rectangle, {0, 0, 200, 100});
    const ImageBuffer aImage = aPlayed(objMaker);

    EXPECT_GT(nCountOf(aImage, kRed, {0, 0, 200, 100}), 300);
    EXPECT_GT(nCountOf(aImage, kWhite, {0, 0, 200, 100}), 15000);
}
