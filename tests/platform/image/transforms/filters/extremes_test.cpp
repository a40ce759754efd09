// Tests of the least and the greatest value around each pixel.
#include "src/platform/image/transforms/filters/extremes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

#include "src/platform/image/transforms/colour/levels.h"
#include "tests/platform/image/support/kernel_pictures.h"

using namespace transforms;

static int nLeastAround(const ImageBuffer& aImage, int x, int y, int c, int nSize)
{
    int nLeast = 255;
    for (int dy = -(nSize / 2); dy < nSize - nSize / 2; ++dy)
        for (int dx = -(nSize / 2); dx < nSize - nSize / 2; ++dx)
            nLeast = std::min(nLeast, nValueAt(aImage, x + dx, y + dy, c));
    return nLeast;
}

TEST(FilterMinimal, TakesTheLeastOfTheSquareForEverySizeOfItAndOfThePicture)
{
    for (const int lChannels : kChannelCounts)
        for (const auto& [lWidth, lHeight] : kSizes)
            for (const int nSize : {2, 3, 4, 5, 8, 9, 16, 33}) {
                const ImageBuffer aBefore = aRandomPicture(lWidth, lHeight, lChannels);
                ImageBuffer aImage = aBefore;
                ASSERT_TRUE(FilterMinimal(aImage, nSize));
                ASSERT_TRUE(bSameAlpha(aImage, aBefore));
                for (int y = 0; y < lHeight; ++y)
                    for (int x = 0; x < lWidth; ++x)
                        for (int c = 0; c < std::min(lChannels, 3); ++c)
                            ASSERT_EQ(nValueAt(aImage, x, y, c), nLeastAround(aBefore, x, y, c, nSize))
                                << lWidth << "x" << lHeight << "x" << lChannels << " size " << nSize << " at "
                                << x << " " << y;
            }
}

TEST(FilterMinimal, WorksInBandsAndStripsAsInOnePiece)
{
    ImageBuffer aImage = aPicture(1100, 400, 3, {});
    aImage.bytes.assign(1100 * 400 * 3, 200);
    const auto nPlace = [](int x, int y) { return static_cast<std::size_t>((y * 1100 + x) * 3 + 1); };
    for (const auto& [x, y] : {std::pair{0, 0}, {682, 199}, {683, 200}, {1099, 399}})
        aImage.bytes[nPlace(x, y)] = 5;
    const ImageBuffer aBefore = aImage;

    EXPECT_TRUE(FilterMinimal(aImage, 7));

    for (int y = 0; y < 400; ++y)
        for (int x = 0; x < 1100; ++x) {
            int nExpected = 200;
            for (const auto& [px, py] : {std::pair{0, 0}, {682, 199}, {683, 200}, {1099, 399}})
                if (std::abs(x - px) <= 3 && std::abs(y - py) <= 3)
                    nExpected = 5;
            ASSERT_EQ(aImage.bytes[nPlace(x, y)], nExpected) << x << " " << y;
            ASSERT_EQ(aImage.bytes[nPlace(x, y) + 1], 200);
        }
}

TEST(FilterMinimal, CoversAPictureThatIsSmallerThanTheSquare)
{
    ImageBuffer aImage = aRandomPicture(3, 3, 1);
    const std::uint8_t nLeast = *std::min_element(aImage.bytes.begin(), aImage.bytes.end());
    for (const std::int32_t lSize : {256, 257, 2147483647}) {
        ImageBuffer aCovered = aImage;
        EXPECT_TRUE(FilterMinimal(aCovered, lSize));
        EXPECT_EQ(aCovered.bytes, PixelBytes(9, nLeast));
    }
}

TEST(FilterMaximal, IsTheNegativeOfTheLeastOfTheNegative)
{
    for (const int lChannels : kChannelCounts)
        for (const int nSize : {2, 5, 12, 256}) {
            ImageBuffer aGreatest = aRandomPicture(67, 41, lChannels), aLeast = aGreatest;
            EXPECT_TRUE(FilterMaximal(aGreatest, nSize));
            EXPECT_TRUE(Invert(aLeast) && FilterMinimal(aLeast, nSize) && Invert(aLeast));
            EXPECT_EQ(aGreatest.bytes, aLeast.bytes);
        }
}

TEST(Extremes, ChangeNothingForASquareOfOneOrLess)
{
    for (const std::int32_t lSize : {1, 0, -1, -2147483647 - 1}) {
        ImageBuffer aImage = aRandomPicture(9, 8, 4);
        const PixelBytes aBefore = aImage.bytes;
        EXPECT_TRUE(FilterMinimal(aImage, lSize) && FilterMaximal(aImage, lSize));
        EXPECT_EQ(aImage.bytes, aBefore);
    }
}
