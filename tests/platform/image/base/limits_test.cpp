// The sizes that pictures may have.
#include "src/platform/image/base/limits.h"

#include <algorithm>
#include <cstdlib>

// Sets the limit of the environment for one test.
class LimitSetting
{
public:
    explicit LimitSetting(const char* sValue) { setenv("VARNEL_MAX_MEGAPIXELS", sValue, 1); }
    ~LimitSetting() { unsetenv("VARNEL_MAX_MEGAPIXELS"); }
    LimitSetting(const LimitSetting&) = delete;
    LimitSetting& operator=(const LimitSetting&) = delete;
};

TEST(SizeAllowed, IsOneToTheLongestSide)
{
    EXPECT_TRUE(bSizeAllowed(1, 1));
    EXPECT_TRUE(bSizeAllowed(65500, 1));
    EXPECT_TRUE(bSizeAllowed(1, 65500));
    EXPECT_FALSE(bSizeAllowed(65501, 1));
    EXPECT_FALSE(bSizeAllowed(1, 65501));
    EXPECT_FALSE(bSizeAllowed(0, 1));
    EXPECT_FALSE(bSizeAllowed(1, 0));
    EXPECT_FALSE(bSizeAllowed(UINT64_MAX, UINT64_MAX)) << "nor does the product wrap round";
}

TEST(SizeAllowed, IsFiveHundredAndTwelveMegapixels)
{
    EXPECT_TRUE(bSizeAllowed(51200, 10000));
    EXPECT_FALSE(bSizeAllowed(51201, 10000));
}

TEST(SizeAllowed, IsWhatTheEnvironmentSays)
{
    {
        const LimitSetting objSetting("1");
        EXPECT_TRUE(bSizeAllowed(1000, 1000));
        EXPECT_FALSE(bSizeAllowed(1001, 1000));
    }
    {
        const LimitSetting objSetting("4096");
        EXPECT_TRUE(bSizeAllowed(64000, 64000));
    }
    EXPECT_FALSE(bSizeAllowed(64000, 64000));
}

TEST(SizeAllowed, IsTheUsualOneWhenTheEnvironmentSaysNothingThatCanBe)
{
    for (const char* sValue : {"", "0", "-1", "4097", "many", "99999999999999999999"}) {
        const LimitSetting objSetting(sValue);
        EXPECT_TRUE(bSizeAllowed(51200, 10000)) << sValue;
        EXPECT_FALSE(bSizeAllowed(51201, 10000)) << sValue;
    }
}

TEST(Allocate, GivesAPictureItsSizeAndEmptiesTheRest)
{
    ImageBuffer aImage;
    aImage.icc_profile = {1, 2, 3};
    aImage.dots_per_inch_x = 300;
    aImage.metadata.exif = {1};

    ASSERT_TRUE(bAllocate(aImage, 3, 5, 4));

    EXPECT_EQ(aImage.width, 3);
    EXPECT_EQ(aImage.height, 5);
    EXPECT_EQ(aImage.channels, 4);
    EXPECT_EQ(aImage.bytes.size(), 60u);
    EXPECT_TRUE(aImage.icc_profile.empty());
    EXPECT_EQ(aImage.dots_per_inch_x, 0);
    EXPECT_TRUE(aImage.metadata.exif.empty());
}

TEST(Allocate, LeavesThePictureAloneWhenTheSizeIsNotAllowed)
{
    ImageBuffer aImage;
    aImage.width = 7;
    aImage.bytes = {1, 2, 3};

    EXPECT_FALSE(bAllocate(aImage, 65501, 5, 3));

    EXPECT_EQ(aImage.width, 7);
    EXPECT_EQ(aImage.bytes.size(), 3u);
}

TEST(Allocate, GivesLargePicturesMemoryThatCanBeWrittenFromEndToEnd)
{
    ImageBuffer aImage;
    ASSERT_TRUE(bAllocate(aImage, 4001, 1001, 3));

    std::fill(aImage.bytes.begin(), aImage.bytes.end(), std::uint8_t{5});
    ImageBuffer aCopy = aImage;

    EXPECT_TRUE(aCopy.bytes == aImage.bytes);
}

TEST(LargestFile, GrowsWithTheLimit)
{
    const std::uint64_t nUsual = nLargestFile();
    const LimitSetting objSetting("1");

    EXPECT_EQ(nUsual, 512'000'000u * 8 + (64u << 20));
    EXPECT_EQ(nLargestFile(), 1'000'000u * 8 + (64u << 20));
}
