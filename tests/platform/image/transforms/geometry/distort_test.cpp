// Perspective, skew and twirl: sizes, directions, formulas, and any angle at all.
#include "src/platform/image/transforms/geometry/distort.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "tests/platform/image/support/kernel_pictures.h"

static constexpr double kToRadians = 3.14159265358979323846 / 180;

TEST(Perspective, OfNoAngleChangesNothing)
{
    const ImageBuffer aBefore = aRandomPicture(9, 6, 4);
    for (const double dAngle : {0.0, -0.0, std::nan("")}) {
        ImageBuffer aImage = aBefore;
        ASSERT_TRUE(transforms::Perspective(aImage, true, dAngle));
        EXPECT_TRUE(bEqual(aImage, aBefore));
    }
}

// How many pixels of a row or a column of a white picture are still white.
static int nWhite(const ImageBuffer& aImage, int nLine, bool bRow)
{
    int n = 0;
    for (int i = 0; i < (bRow ? aImage.width : aImage.height); ++i)
        n += nValueAt(aImage, bRow ? i : nLine, bRow ? nLine : i) >= 128;
    return n;
}

TEST(Perspective, ShortensTheTopAboveZeroAndTheBottomBelow)
{
    ImageBuffer aUp = aPlain(200, 100, 1, 255), aDown = aUp;
    ASSERT_TRUE(transforms::Perspective(aUp, true, 60));
    ASSERT_TRUE(transforms::Perspective(aDown, true, -60));
    EXPECT_NEAR(nWhite(aUp, 0, true), 100, 2);  // cos 60 = 0.5
    EXPECT_NEAR(nWhite(aUp, 99, true), 200, 2);
    EXPECT_NEAR(nWhite(aUp, 50, true), 150, 2);
    EXPECT_NEAR(nWhite(aDown, 0, true), 200, 2);
    EXPECT_NEAR(nWhite(aDown, 99, true), 100, 2);
}

TEST(Perspective, ShortensTheRightAboveZeroOtherwise)
{
    ImageBuffer aImage = aPlain(100, 200, 3, 255);
    ASSERT_TRUE(transforms::Perspective(aImage, false, 60));
    EXPECT_NEAR(nWhite(aImage, 99, false), 100, 2);
    EXPECT_NEAR(nWhite(aImage, 0, false), 200, 2);
    EXPECT_EQ(aImage.width, 100);
    EXPECT_EQ(aImage.height, 200);
}

TEST(Perspective, KeepsStraightLinesStraight)
{
    // A diagonal from corner to corner runs, after the tilt, from the short top's left end to the right
    // bottom corner.
    ImageBuffer aImage = aPlain(200, 200, 1, 0);
    for (int y = 0; y < 200; ++y)
        for (int x = 0; x < y; ++x)
            aImage.bytes[static_cast<std::size_t>(y * 200 + x)] = 255;
    ASSERT_TRUE(transforms::Perspective(aImage, true, 60));
    for (int y = 10; y < 190; y += 20) {
        const double dLine = 50 + (200 - 50) * (y + 0.5) / 200;
        EXPECT_GE(nValueAt(aImage, static_cast<int>(dLine) - 3, y), 200) << y;
        EXPECT_LE(nValueAt(aImage, static_cast<int>(dLine) + 3, y), 55) << y;
    }
}

TEST(Perspective, LeavesNothingWhereItUncoversAPictureWithAlpha)
{
    ImageBuffer aImage = aPlain(50, 50, 4, 255);
    ASSERT_TRUE(transforms::Perspective(aImage, true, 45));
    EXPECT_EQ(nValueAt(aImage, 0, 0, 3), 0);
    EXPECT_EQ(nValueAt(aImage, 25, 25, 3), 255);
    for (std::size_t i = 0; i < aImage.bytes.size(); i += 4)
        ASSERT_TRUE(aImage.bytes[i] == 255 || aImage.bytes[i + 3] == 0);  // no dark fringe
}

TEST(Skew, OfNoAngleChangesNothing)
{
    const ImageBuffer aBefore = aRandomPicture(9, 6, 3);
    for (const double dAngle : {0.0, std::nan("")}) {
        ImageBuffer aImage = aBefore;
        ASSERT_TRUE(transforms::Skew(aImage, false, dAngle));
        EXPECT_TRUE(bEqual(aImage, aBefore));
    }
}

TEST(Skew, MovesTheTopBorderToTheRightByTheHeightAtFortyFiveDegrees)
{
    ImageBuffer aImage = aPlain(40, 20, 1, 255);
    ASSERT_TRUE(transforms::Skew(aImage, false, 45));
    EXPECT_EQ(aImage.width, 60);
    EXPECT_EQ(aImage.height, 20);
    EXPECT_EQ(nValueAt(aImage, 18, 0), 0);
    EXPECT_EQ(nValueAt(aImage, 21, 0), 255);
    EXPECT_EQ(nValueAt(aImage, 1, 19), 255);
    EXPECT_EQ(nValueAt(aImage, 42, 19), 0);
}

TEST(Skew, MovesTheRightBorderDownWhenVertical)
{
    ImageBuffer aImage = aPlain(20, 40, 4, 255);
    ASSERT_TRUE(transforms::Skew(aImage, true, 45));
    EXPECT_EQ(aImage.width, 20);
    EXPECT_EQ(aImage.height, 60);
    EXPECT_EQ(nValueAt(aImage, 0, 1, 3), 255);
    EXPECT_EQ(nValueAt(aImage, 19, 0, 3), 0);
    EXPECT_EQ(nValueAt(aImage, 19, 58, 3), 255);
}

TEST(Skew, MovesTheOtherWayBelowZero)
{
    for (const auto& [lWidth, lHeight, lChannels] : aShapes()) {
        ImageBuffer aLeft = aRandomOpaque(lWidth, lHeight, 3), aRight = aLeft;
        ASSERT_TRUE(transforms::Skew(aRight, false, 45));
        for (auto* p = aLeft.bytes.data(); p < aLeft.bytes.data() + aLeft.bytes.size(); p += 3 * lWidth)
            for (int x = 0; x < lWidth / 2; ++x)
                for (int c = 0; c < 3; ++c)
                    std::swap(p[3 * x + c], p[3 * (lWidth - 1 - x) + c]);
        ASSERT_TRUE(transforms::Skew(aLeft, false, -45));
        ASSERT_EQ(aLeft.width, aRight.width);
        for (int y = 0; y < aLeft.height; ++y)
            for (int x = 0; x < aLeft.width; ++x)
                ASSERT_NEAR(nValueAt(aLeft, x, y), nValueAt(aRight, aLeft.width - 1 - x, y), 2);
    }
}

TEST(Skew, StaysWithinWhatAPictureMayBe)
{
    ImageBuffer aImage = aPlain(100, 5000, 1, 255);
    setenv("VARNEL_MAX_MEGAPIXELS", "1", 1);
    const bool bSkewed = transforms::Skew(aImage, false, 80);
    unsetenv("VARNEL_MAX_MEGAPIXELS");
    EXPECT_TRUE(bSkewed);
    EXPECT_EQ(aImage.width, 200);
    EXPECT_EQ(aImage.height, 5000);
    EXPECT_EQ(nValueAt(aImage, 150, 1), 255);
    EXPECT_EQ(nValueAt(aImage, 50, 4998), 255);
}

TEST(Twirl, OfNoAngleChangesNothing)
{
    const ImageBuffer aBefore = aRandomPicture(9, 6, 3);
    for (const double dAngle : {0.0, std::nan("")}) {
        ImageBuffer aImage = aBefore;
        ASSERT_TRUE(transforms::Twirl(aImage, dAngle));
        EXPECT_TRUE(bEqual(aImage, aBefore));
    }
}

TEST(Twirl, TurnsTheMiddleClockwiseAndLeavesTheBorder)
{
    // A white upper half: next to the middle a quarter of a turn clockwise brings it to the right.
    ImageBuffer aImage = aPlain(101, 101, 1, 0);
    std::fill_n(aImage.bytes.begin(), 50 * 101, std::uint8_t{255});
    ASSERT_TRUE(transforms::Twirl(aImage, 90));
    EXPECT_EQ(nValueAt(aImage, 53, 50), 255);
    EXPECT_EQ(nValueAt(aImage, 47, 50), 0);
    EXPECT_EQ(nValueAt(aImage, 0, 20), 255);
    EXPECT_EQ(nValueAt(aImage, 100, 80), 0);
}

TEST(Twirl, AgreesWithTheFormula)
{
    // A slope, so that a place's error of a few hundredths of a pixel is a level at most.
    ImageBuffer aImage = aPlain(120, 80, 1, 0);
    for (int y = 0; y < 80; ++y)
        for (int x = 0; x < 120; ++x)
            aImage.bytes[static_cast<std::size_t>(y * 120 + x)] = static_cast<std::uint8_t>(x + y);
    for (const double dAngle : {50.0, -200.0, 360.0}) {
        ImageBuffer aTwirled = aImage;
        ASSERT_TRUE(transforms::Twirl(aTwirled, dAngle));
        for (int y = 0; y < 80; ++y) {
            for (int x = 0; x < 120; ++x) {
                const double dX = (x - 59.5) / 60, dY = (y - 39.5) / 40;
                const double d = std::min(1.0, std::hypot(dX, dY));
                const double dTurn = dAngle * kToRadians * (1 - d) * (1 - d);
                const double dFromX = 59.5 + 60 * (dX * std::cos(dTurn) + dY * std::sin(dTurn));
                const double dFromY = 39.5 + 40 * (dY * std::cos(dTurn) - dX * std::sin(dTurn));
                ASSERT_NEAR(nValueAt(aTwirled, x, y), dFromX + dFromY, 1.1) << x << "," << y;
            }
        }
    }
}

TEST(Twirl, MovesNothingOutsideTheEllipse)
{
    const ImageBuffer aBefore = aRandomPicture(301, 97, 3);
    ImageBuffer aImage = aBefore;
    ASSERT_TRUE(transforms::Twirl(aImage, 300));
    for (int i = 0; i < 10; ++i)
        for (int j = 0; j < 5; ++j)
            EXPECT_EQ(nValueAt(aImage, i, j, 1), nValueAt(aBefore, i, j, 1));
}

TEST(Distortions, ArePicturesForAnyAngle)
{
    for (const double dAngle : aHostileDoubles()) {
        for (const auto& [lWidth, lHeight, lChannels] : aShapes()) {
            for (const bool bVertical : {false, true}) {
                ImageBuffer aOne = aRandomPicture(lWidth, lHeight, lChannels), aTwo = aOne, aThree = aOne;
                ASSERT_TRUE(transforms::Perspective(aOne, bVertical, dAngle));
                ASSERT_TRUE(transforms::Skew(aTwo, bVertical, dAngle));
                ASSERT_TRUE(transforms::Twirl(aThree, dAngle));
                ASSERT_TRUE(bSound(aOne) && bSound(aTwo) && bSound(aThree));
                ASSERT_EQ(aOne.width, lWidth);
                ASSERT_EQ(aThree.height, lHeight);
            }
        }
    }
}
