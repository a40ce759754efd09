// Tests of the size limits of pictures.
#include "src/platform/image/base/limits.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

// Sets the limit in the environment for one test.
class LimitSetting
{
public:
    explicit LimitSetting(const char* value) { setenv("VARNEL_MAX_MEGAPIXELS", value, 1); }
    ~LimitSetting() { unsetenv("VARNEL_MAX_MEGAPIXELS"); }
    LimitSetting(const LimitSetting&) = delete;
    LimitSetting& operator=(const LimitSetting&) = delete;
};

TEST(SizeLimit, AllowsSidesUpToMaximum)
{
    EXPECT_TRUE(IsSizeAllowed(1, 1));
    EXPECT_TRUE(IsSizeAllowed(65500, 1));
    EXPECT_TRUE(IsSizeAllowed(1, 65500));
    EXPECT_FALSE(IsSizeAllowed(65501, 1));
    EXPECT_FALSE(IsSizeAllowed(1, 65501));
    EXPECT_FALSE(IsSizeAllowed(0, 1));
    EXPECT_FALSE(IsSizeAllowed(1, 0));
    EXPECT_FALSE(IsSizeAllowed(UINT64_MAX, UINT64_MAX)) << "the product must not overflow";
}

TEST(SizeLimit, Is512MegapixelsByDefault)
{
    EXPECT_TRUE(IsSizeAllowed(51200, 10000));
    EXPECT_FALSE(IsSizeAllowed(51201, 10000));
}

TEST(SizeLimit, FollowsEnvironment)
{
    {
        const LimitSetting setting("1");
        EXPECT_TRUE(IsSizeAllowed(1000, 1000));
        EXPECT_FALSE(IsSizeAllowed(1001, 1000));
    }
    {
        const LimitSetting setting("4096");
        EXPECT_TRUE(IsSizeAllowed(64000, 64000));
    }
    EXPECT_FALSE(IsSizeAllowed(64000, 64000));
}

TEST(SizeLimit, IgnoresInvalidEnvironment)
{
    for (const char* value : {"", "0", "-1", "4097", "many", "99999999999999999999"}) {
        const LimitSetting setting(value);
        EXPECT_TRUE(IsSizeAllowed(51200, 10000)) << value;
        EXPECT_FALSE(IsSizeAllowed(51201, 10000)) << value;
    }
}

TEST(Allocate, SetsSizeAndClearsOtherFields)
{
    ImageBuffer image;
    image.icc_profile = {1, 2, 3};
    image.dots_per_inch_x = 300;
    image.metadata.exif = {1};

    ASSERT_TRUE(Allocate(image, 3, 5, 4));

    EXPECT_EQ(image.width, 3);
    EXPECT_EQ(image.height, 5);
    EXPECT_EQ(image.channels, 4);
    EXPECT_EQ(image.bytes.size(), 60u);
    EXPECT_TRUE(image.icc_profile.empty());
    EXPECT_EQ(image.dots_per_inch_x, 0);
    EXPECT_TRUE(image.metadata.exif.empty());
}

TEST(Allocate, LeavesImageUntouchedIfSizeIsNotAllowed)
{
    ImageBuffer image;
    image.width = 7;
    image.bytes = {1, 2, 3};

    EXPECT_FALSE(Allocate(image, 65501, 5, 3));

    EXPECT_EQ(image.width, 7);
    EXPECT_EQ(image.bytes.size(), 3u);
}

TEST(Allocate, ProvidesWritableMemoryForLargePictures)
{
    ImageBuffer image;
    ASSERT_TRUE(Allocate(image, 4001, 1001, 3));

    std::fill(image.bytes.begin(), image.bytes.end(), std::uint8_t{5});
    ImageBuffer copy = image;

    EXPECT_TRUE(copy.bytes == image.bytes);
}

TEST(LargestFile, GrowsWithSizeLimit)
{
    const std::uint64_t usual = LargestFile();
    const LimitSetting setting("1");

    EXPECT_EQ(usual, 512'000'000u * 8 + (64u << 20));
    EXPECT_EQ(LargestFile(), 1'000'000u * 8 + (64u << 20));
}
