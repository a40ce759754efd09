// Guarantees of all operations: valid results for any number, no change after a failure, no hidden colours.
#include "tests/platform/image/support/all_operations.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "src/platform/image/transforms/rows/processor.h"
#include "tests/platform/image/support/failing_memory.h"
#include "tests/platform/image/support/kernel_pictures.h"

// Makes each argument hostile in turn, and some at once.
static std::vector<Arguments> HostileArguments()
{
    std::vector<Arguments> result;
    for (const double d : HostileDoubles()) {
        result.push_back({d, d, 5, 9, 100, true});
        result.push_back({30, d, 5, 9, 100, false});
    }
    for (const std::int32_t l : HostileLongs()) {
        result.push_back({0.6, 7, l, l, 100, false});
        result.push_back({45, 2, l, 3, 0, true});
        result.push_back({45, 2, 2, l, 255, true});
    }
    return result;
}

TEST(AllOperations, GivePictureOrFalseForAnyNumber)
{
    const std::vector<Arguments> arguments = HostileArguments();
    for (const auto& [width, height] : {std::pair{1, 1}, {3, 3}, {1, 9}, {11, 1}}) {
        for (const std::int32_t channels : {1, 3, 4}) {
            const ImageBuffer before = RandomPicture(width, height, channels);
            for (const Arguments& call : arguments) {
                for (const NamedOperation& named_operation : AllOperations(call)) {
                    ImageBuffer image = before;
                    const bool done = ApplyOperation(named_operation, image);
                    ASSERT_TRUE(done ? Sound(image) : Equal(image, before))
                        << named_operation.name << " " << call.number << " " << call.other << " "
                        << call.whole_number << " " << call.other_whole;
                }
            }
        }
    }
}

TEST(AllOperations, AcceptEveryByte)
{
    const ImageBuffer before = RandomPicture(7, 5, 3);
    for (int n = 0; n < 256; ++n) {
        for (const NamedOperation& named_operation :
             AllOperations({1, 1, 2, 2, static_cast<std::uint8_t>(n), n % 2 > 0})) {
            ImageBuffer image = before;
            ASSERT_TRUE(ApplyOperation(named_operation, image) && Sound(image))
                << named_operation.name << " " << n;
        }
    }
}

// Every seventh pixel is hidden, and there is a profile, which some operations drop.
static ImageBuffer PartlyHidden(std::int32_t width, std::int32_t height, std::int32_t channels)
{
    ImageBuffer image = RandomPicture(width, height, channels);
    image.icc_profile = {1, 2, 3};
    for (std::size_t i = 3; channels == 4 && i < image.bytes.size(); i += 28)
        image.bytes[i] = 0;
    return image;
}

// Makes each allocation fail in turn until the operation succeeds.
static void ExpectSafety(const NamedOperation& named_operation, const ImageBuffer& before)
{
    ImageBuffer expected = before;
    ASSERT_TRUE(ApplyOperation(named_operation, expected)) << named_operation.name;
    for (std::size_t successes = 0;; ++successes) {
        ASSERT_LT(successes, 2000U) << named_operation.name << " never has enough";
        ImageBuffer image = before;
        bool done = false, failed = false;
        {
            const FailingMemory memory(successes);
            done = ApplyOperation(named_operation, image);
            failed = FailingMemory::HasFailed();
        }
        ASSERT_TRUE(Equal(image, done ? expected : before)) << named_operation.name << " after " << successes;
        ASSERT_TRUE(done || image.icc_profile == before.icc_profile)
            << named_operation.name << " after " << successes;
        ASSERT_TRUE(done || failed) << named_operation.name;
        if (!failed)
            return;
    }
}

static const Arguments kTelling{33, 7, 3, 40, 100, true};  // as a colour, 40 is a dark red

TEST(AllOperations, LeavePictureUnchangedWhenMemoryRunsOut)
{
    for (const std::int32_t channels : {1, 3, 4}) {
        const ImageBuffer before = PartlyHidden(37, 23, channels);
        for (const NamedOperation& named_operation : AllOperations(kTelling))
            ExpectSafety(named_operation, before);
        ExpectSafety({"Resize", [](ImageTransform& t) { return t.Resize(20, 30, 0, 0); }}, before);
        ExpectSafety({"GaussianBlur", [](ImageTransform& t) { return t.GaussianBlur(20); }}, before);
        ExpectSafety({"Skew", [](ImageTransform& t) { return t.Skew(false, 20); }}, before);
        ExpectSafety({"Rotate", [](ImageTransform& t) { return t.Rotate(90, 0); }}, before);
    }
}

TEST(AllOperations, LeaveLargePictureUnchangedWhenMemoryRunsOut)
{
    // Large enough for several threads.
    const ImageBuffer before = PartlyHidden(600, 300, 3);
    for (const NamedOperation& named_operation : AllOperations(kTelling))
        ExpectSafety(named_operation, before);
}

TEST(AllOperations, HideColoursOfTransparentPixels)
{
    const ImageBuffer one = PartlyHidden(37, 23, 4);
    ImageBuffer other = one;
    for (std::size_t i = 3; i < other.bytes.size(); i += 28)
        for (std::size_t c = 1; c <= 3; ++c)
            other.bytes[i - c] = static_cast<std::uint8_t>(other.bytes[i - c] + 100);

    for (const NamedOperation& named_operation : AllOperations(kTelling)) {
        if (named_operation.name == "AddNoise")
            continue;  // seeded by all of the picture's bytes
        ImageBuffer first = one, second = other;
        ASSERT_TRUE(ApplyOperation(named_operation, first) && ApplyOperation(named_operation, second));
        ASSERT_TRUE(SameAlpha(first, second)) << named_operation.name;
        for (std::size_t i = 0; i < first.bytes.size(); i += 4) {
            const bool same = std::equal(&first.bytes[i], &first.bytes[i] + 4, &second.bytes[i]);
            ASSERT_TRUE(same || first.bytes[i + 3] == 0) << named_operation.name << " at " << i / 4;
        }
    }
}

TEST(AllOperations, GiveSameResultWithoutVectorInstructions)
{
    for (const std::int32_t channels : {1, 3, 4}) {
        const ImageBuffer before = RandomOpaque(141, 67, channels);
        for (const Arguments& call : {Arguments{33, 7, 3, 40, 100, true},
                                      {0.4, 0.5, 1, 90, 30, false},
                                      {-71, 15, 17, 5, 200, true}}) {
            for (const NamedOperation& named_operation : AllOperations(call)) {
                ImageBuffer quick = before, plain = before;
                const bool done = ApplyOperation(named_operation, quick);
                transforms::DoWithoutAvx2(true);
                EXPECT_EQ(ApplyOperation(named_operation, plain), done) << named_operation.name;
                transforms::DoWithoutAvx2(false);
                ASSERT_TRUE(SameAlpha(quick, plain)) << named_operation.name;
                for (std::size_t i = 0; i < quick.bytes.size(); ++i)
                    ASSERT_NEAR(quick.bytes[i], plain.bytes[i], 1) << named_operation.name << " at " << i;
            }
        }
    }
}

TEST(AllOperations, KeepTransparentPictureTransparent)
{
    ImageBuffer before = RandomPicture(12, 9, 4);
    for (std::size_t i = 3; i < before.bytes.size(); i += 4)
        before.bytes[i] = 0;
    for (const NamedOperation& named_operation : AllOperations({20, 5, 3, 4, 90, false})) {
        if (named_operation.name == "Rotate" || named_operation.name == "Shift")
            continue;  // the background is opaque
        ImageBuffer image = before;
        ASSERT_TRUE(ApplyOperation(named_operation, image)) << named_operation.name;
        for (std::size_t i = 3; i < image.bytes.size(); i += 4)
            ASSERT_EQ(image.bytes[i], 0) << named_operation.name;
    }
}
