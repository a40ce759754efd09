// Tests of what holds for every operation: a picture for any number, its own one after a failure, and no
// hidden colours.
#include "tests/platform/image/support/all_operations.h"

#include <algorithm>

#include "src/platform/image/transforms/rows/processor.h"
#include "tests/platform/image/support/failing_memory.h"
#include "tests/platform/image/support/kernel_pictures.h"

// Every argument hostile in turn, and some at once.
static std::vector<Arguments> aHostileArguments()
{
    std::vector<Arguments> aResult;
    for (const double d : aHostileDoubles()) {
        aResult.push_back({d, d, 5, 9, 100, true});
        aResult.push_back({30, d, 5, 9, 100, false});
    }
    for (const std::int32_t l : aHostileLongs()) {
        aResult.push_back({0.6, 7, l, l, 100, false});
        aResult.push_back({45, 2, l, 3, 0, true});
        aResult.push_back({45, 2, 2, l, 255, true});
    }
    return aResult;
}

TEST(AllOperations, GiveAPictureOrFalseForAnyNumber)
{
    const std::vector<Arguments> aArguments = aHostileArguments();
    for (const auto& [lWidth, lHeight] : {std::pair{1, 1}, {3, 3}, {1, 9}, {11, 1}}) {
        for (const std::int32_t lChannels : {1, 3, 4}) {
            const ImageBuffer aBefore = aRandomPicture(lWidth, lHeight, lChannels);
            for (const Arguments& objArguments : aArguments) {
                for (const NamedOperation& obj : aAllOperations(objArguments)) {
                    ImageBuffer aImage = aBefore;
                    const bool bDone = bApply(obj, aImage);
                    ASSERT_TRUE(bDone ? bSound(aImage) : bEqual(aImage, aBefore))
                        << obj.sName << " " << objArguments.dNumber << " " << objArguments.dOther << " "
                        << objArguments.lNumber << " " << objArguments.lOther;
                }
            }
        }
    }
}

TEST(AllOperations, TakeEveryByte)
{
    const ImageBuffer aBefore = aRandomPicture(7, 5, 3);
    for (int n = 0; n < 256; ++n) {
        for (const NamedOperation& obj :
             aAllOperations({1, 1, 2, 2, static_cast<std::uint8_t>(n), n % 2 > 0})) {
            ImageBuffer aImage = aBefore;
            ASSERT_TRUE(bApply(obj, aImage) && bSound(aImage)) << obj.sName << " " << n;
        }
    }
}

// With every seventh pixel hidden, and a profile that some operations drop.
static ImageBuffer aPartlyHidden(std::int32_t lWidth, std::int32_t lHeight, std::int32_t lChannels)
{
    ImageBuffer aImage = aRandomPicture(lWidth, lHeight, lChannels);
    aImage.icc_profile = {1, 2, 3};
    for (std::size_t i = 3; lChannels == 4 && i < aImage.bytes.size(); i += 28)
        aImage.bytes[i] = 0;
    return aImage;
}

// Makes one allocation after the other fail until none is left to.
static void ExpectSafety(const NamedOperation& obj, const ImageBuffer& aBefore)
{
    ImageBuffer aExpected = aBefore;
    ASSERT_TRUE(bApply(obj, aExpected)) << obj.sName;
    for (std::size_t nBefore = 0;; ++nBefore) {
        ASSERT_LT(nBefore, 2000U) << obj.sName << " never has enough";
        ImageBuffer aImage = aBefore;
        bool bDone = false, bFailed = false;
        {
            const FailingMemory objMemory(nBefore);
            bDone = bApply(obj, aImage);
            bFailed = FailingMemory::bHasFailed();
        }
        ASSERT_TRUE(bEqual(aImage, bDone ? aExpected : aBefore)) << obj.sName << " after " << nBefore;
        ASSERT_TRUE(bDone || aImage.icc_profile == aBefore.icc_profile) << obj.sName << " after " << nBefore;
        ASSERT_TRUE(bDone || bFailed) << obj.sName;
        if (!bFailed)
            return;
    }
}

static const Arguments kTelling{33, 7, 3, 40, 100, true};  // 40 is a dark red where it is a colour

TEST(AllOperations, LeaveThePictureAsItWasWhenMemoryRunsOut)
{
    for (const std::int32_t lChannels : {1, 3, 4}) {
        const ImageBuffer aBefore = aPartlyHidden(37, 23, lChannels);
        for (const NamedOperation& obj : aAllOperations(kTelling))
            ExpectSafety(obj, aBefore);
        ExpectSafety({"Resize", [](ImageTransform& t) { return t.Resize(20, 30, 0, 0); }}, aBefore);
        ExpectSafety({"GaussianBlur", [](ImageTransform& t) { return t.GaussianBlur(20); }}, aBefore);
        ExpectSafety({"Skew", [](ImageTransform& t) { return t.Skew(false, 20); }}, aBefore);
        ExpectSafety({"Rotate", [](ImageTransform& t) { return t.Rotate(90, 0); }}, aBefore);
    }
}

TEST(AllOperations, LeaveALargePictureAsItWasToo)
{
    // Large enough for several threads.
    const ImageBuffer aBefore = aPartlyHidden(600, 300, 3);
    for (const NamedOperation& obj : aAllOperations(kTelling))
        ExpectSafety(obj, aBefore);
}

TEST(AllOperations, DontShowTheColoursBehindTransparentPixels)
{
    const ImageBuffer aOne = aPartlyHidden(37, 23, 4);
    ImageBuffer aOther = aOne;
    for (std::size_t i = 3; i < aOther.bytes.size(); i += 28)
        for (std::size_t c = 1; c <= 3; ++c)
            aOther.bytes[i - c] = static_cast<std::uint8_t>(aOther.bytes[i - c] + 100);

    for (const NamedOperation& obj : aAllOperations(kTelling)) {
        if (obj.sName == "AddNoise")
            continue;  // seeded by all of the picture's bytes
        ImageBuffer aFirst = aOne, aSecond = aOther;
        ASSERT_TRUE(bApply(obj, aFirst) && bApply(obj, aSecond));
        ASSERT_TRUE(bSameAlpha(aFirst, aSecond)) << obj.sName;
        for (std::size_t i = 0; i < aFirst.bytes.size(); i += 4) {
            const bool bSame = std::equal(&aFirst.bytes[i], &aFirst.bytes[i] + 4, &aSecond.bytes[i]);
            ASSERT_TRUE(bSame || aFirst.bytes[i + 3] == 0) << obj.sName << " at " << i / 4;
        }
    }
}

TEST(AllOperations, DoTheSameWithoutVectorInstructions)
{
    for (const std::int32_t lChannels : {1, 3, 4}) {
        const ImageBuffer aBefore = aRandomOpaque(141, 67, lChannels);
        for (const Arguments& objArguments : {Arguments{33, 7, 3, 40, 100, true},
                                              {0.4, 0.5, 1, 90, 30, false},
                                              {-71, 15, 17, 5, 200, true}}) {
            for (const NamedOperation& obj : aAllOperations(objArguments)) {
                ImageBuffer aQuick = aBefore, aPlain = aBefore;
                const bool bDone = bApply(obj, aQuick);
                transforms::DoWithoutAvx2(true);
                EXPECT_EQ(bApply(obj, aPlain), bDone) << obj.sName;
                transforms::DoWithoutAvx2(false);
                ASSERT_TRUE(bSameAlpha(aQuick, aPlain)) << obj.sName;
                for (std::size_t i = 0; i < aQuick.bytes.size(); ++i)
                    ASSERT_NEAR(aQuick.bytes[i], aPlain.bytes[i], 1) << obj.sName << " at " << i;
            }
        }
    }
}

TEST(AllOperations, KeepAWhollyTransparentPictureTransparent)
{
    ImageBuffer aBefore = aRandomPicture(12, 9, 4);
    for (std::size_t i = 3; i < aBefore.bytes.size(); i += 4)
        aBefore.bytes[i] = 0;
    for (const NamedOperation& obj : aAllOperations({20, 5, 3, 4, 90, false})) {
        if (obj.sName == "Rotate" || obj.sName == "Shift")
            continue;  // their background is opaque
        ImageBuffer aImage = aBefore;
        ASSERT_TRUE(bApply(obj, aImage)) << obj.sName;
        for (std::size_t i = 3; i < aImage.bytes.size(); i += 4)
            ASSERT_EQ(aImage.bytes[i], 0) << obj.sName;
    }
}
