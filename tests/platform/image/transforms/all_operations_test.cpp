// Guarantees of all operations: valid results for any number, no change after a failure, no hidden colours.
#include "tests/platform/image/support/all_operations.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "src/platform/image/transforms/kernel_image_transform.h"
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
            for (const Arguments& numbers : arguments) {
                for (const OperationCall& call : AllOperations(numbers)) {
                    ImageBuffer image = before;
                    const bool done = ApplyOperation(call, image);
                    ASSERT_TRUE(done ? Sound(image) : Equal(image, before))
                        << call.sName << " " << numbers.number << " " << numbers.other << " "
                        << numbers.whole_number << " " << numbers.other_whole;
                }
            }
        }
    }
}

TEST(AllOperations, AcceptEveryByte)
{
    const ImageBuffer before = RandomPicture(7, 5, 3);
    for (int n = 0; n < 256; ++n) {
        for (const OperationCall& call :
             AllOperations({1, 1, 2, 2, static_cast<std::uint8_t>(n), n % 2 > 0})) {
            ImageBuffer image = before;
            ASSERT_TRUE(ApplyOperation(call, image) && Sound(image)) << call.sName << " " << n;
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
static void ExpectSafety(const OperationCall& call, const ImageBuffer& before)
{
    ImageBuffer expected = before;
    ASSERT_TRUE(ApplyOperation(call, expected)) << call.sName;
    for (std::size_t successes = 0;; ++successes) {
        ASSERT_LT(successes, 2000U) << call.sName << " never has enough";
        ImageBuffer image = before;
        bool done = false, failed = false;
        {
            const FailingMemory memory(successes);
            done = ApplyOperation(call, image);
            failed = FailingMemory::HasFailed();
        }
        ASSERT_TRUE(Equal(image, done ? expected : before)) << call.sName << " after " << successes;
        ASSERT_TRUE(done || image.icc_profile == before.icc_profile) << call.sName << " after " << successes;
        ASSERT_TRUE(done || failed) << call.sName;
        if (!failed)
            return;
    }
}

static const Arguments kTelling{33, 7, 3, 40, 100, true};  // as a colour, 40 is a dark red

TEST(AllOperations, LeavePictureUnchangedWhenMemoryRunsOut)
{
    for (const std::int32_t channels : {1, 3, 4}) {
        const ImageBuffer before = PartlyHidden(37, 23, channels);
        for (const OperationCall& call : AllOperations(kTelling))
            ExpectSafety(call, before);
        ExpectSafety(operations::Resize(20, 30, 0, 0), before);
        ExpectSafety(operations::GaussianBlur(20), before);
        ExpectSafety(operations::Skew(false, 20), before);
        ExpectSafety(operations::Rotate(90, 0), before);
    }
}

TEST(AllOperations, LeaveLargePictureUnchangedWhenMemoryRunsOut)
{
    // Large enough for several threads.
    const ImageBuffer before = PartlyHidden(600, 300, 3);
    for (const OperationCall& call : AllOperations(kTelling))
        ExpectSafety(call, before);
}

TEST(AllOperations, HideColoursOfTransparentPixels)
{
    const ImageBuffer one = PartlyHidden(37, 23, 4);
    ImageBuffer other = one;
    for (std::size_t i = 3; i < other.bytes.size(); i += 28)
        for (std::size_t c = 1; c <= 3; ++c)
            other.bytes[i - c] = static_cast<std::uint8_t>(other.bytes[i - c] + 100);

    for (const OperationCall& call : AllOperations(kTelling)) {
        if (call.sName == "AddNoise")
            continue;  // seeded by all of the picture's bytes
        ImageBuffer first = one, second = other;
        ASSERT_TRUE(ApplyOperation(call, first) && ApplyOperation(call, second));
        ASSERT_TRUE(SameAlpha(first, second)) << call.sName;
        for (std::size_t i = 0; i < first.bytes.size(); i += 4) {
            const bool same = std::equal(&first.bytes[i], &first.bytes[i] + 4, &second.bytes[i]);
            ASSERT_TRUE(same || first.bytes[i + 3] == 0) << call.sName << " at " << i / 4;
        }
    }
}

TEST(AllOperations, GiveSameResultWithoutVectorInstructions)
{
    for (const std::int32_t channels : {1, 3, 4}) {
        const ImageBuffer before = RandomOpaque(141, 67, channels);
        for (const Arguments& numbers : {Arguments{33, 7, 3, 40, 100, true},
                                         {0.4, 0.5, 1, 90, 30, false},
                                         {-71, 15, 17, 5, 200, true}}) {
            for (const OperationCall& call : AllOperations(numbers)) {
                ImageBuffer quick = before, plain = before;
                const bool done = ApplyOperation(call, quick);
                transforms::DoWithoutAvx2(true);
                EXPECT_EQ(ApplyOperation(call, plain), done) << call.sName;
                transforms::DoWithoutAvx2(false);
                ASSERT_TRUE(SameAlpha(quick, plain)) << call.sName;
                for (std::size_t i = 0; i < quick.bytes.size(); ++i)
                    ASSERT_NEAR(quick.bytes[i], plain.bytes[i], 1) << call.sName << " at " << i;
            }
        }
    }
}

TEST(AllOperations, KeepTransparentPictureTransparent)
{
    ImageBuffer before = RandomPicture(12, 9, 4);
    for (std::size_t i = 3; i < before.bytes.size(); i += 4)
        before.bytes[i] = 0;
    for (const OperationCall& call : AllOperations({20, 5, 3, 4, 90, false})) {
        if (call.sName == "Rotate" || call.sName == "Shift")
            continue;  // the background is opaque
        ImageBuffer image = before;
        ASSERT_TRUE(ApplyOperation(call, image)) << call.sName;
        for (std::size_t i = 3; i < image.bytes.size(); i += 4)
            ASSERT_EQ(image.bytes[i], 0) << call.sName;
    }
}

static ImageBuffer WithAttributes(ImageBuffer image)
{
    image.icc_profile = {1, 2, 3};
    image.dots_per_inch_x = 300;
    image.dots_per_inch_y = 200;
    image.metadata = {{4, 5}, {6}, {7, 8, 9}};
    return image;
}

TEST(AllOperations, ReadConstSourceAndGiveSameResultAsInPlace)
{
    for (const std::int32_t channels : {1, 3, 4}) {
        const ImageBuffer before = WithAttributes(PartlyHidden(141, 67, channels));
        for (const OperationCall& call : AllOperations(kTelling)) {
            const ImageBuffer source = before;
            ImageBuffer in_place = before, result;
            const OperationResult outcome = KernelImageTransform().Apply(call, source, result);
            ASSERT_EQ(KernelImageTransform().Apply(call, in_place, in_place), outcome) << call.sName;
            ASSERT_TRUE(Equal(source, before)) << call.sName;
            ExpectAgreement(before, in_place, result, outcome);
            ASSERT_FALSE(HasFailure()) << call.sName;
        }
    }
}

TEST(AllOperations, LeaveSourceAndResultUnchangedWhenMemoryRunsOut)
{
    const ImageBuffer before = WithAttributes(PartlyHidden(37, 23, 4)), old = Plain(2, 3, 1, 9);
    for (const OperationCall& call : AllOperations(kTelling)) {
        bool failed = true;
        for (std::size_t successes = 0; failed; ++successes) {
            ASSERT_LT(successes, 2000U) << call.sName << " never has enough";
            const ImageBuffer source = before;
            ImageBuffer result = old;
            OperationResult outcome = OperationResult::Failed;
            {
                const FailingMemory memory(successes);
                outcome = KernelImageTransform().Apply(call, source, result);
                failed = FailingMemory::HasFailed();
            }
            ASSERT_TRUE(Equal(source, before)) << call.sName;
            ASSERT_TRUE(outcome == OperationResult::Changed || Equal(result, old)) << call.sName;
            ASSERT_TRUE(failed || outcome != OperationResult::Failed) << call.sName;
        }
    }
}

TEST(AllOperations, TreatGreyPictureLikeItsColourTwin)
{
    for (const Arguments& numbers :
         {kTelling, Arguments{0.4, 0.5, 1, 90, 30, false}, Arguments{-71, 15, 17, 5, 200, true}}) {
        for (const OperationCall& call : AllOperations(numbers)) {
            ImageBuffer grey = RandomPicture(141, 67, 1), colour = Widened(grey);
            ASSERT_TRUE(ApplyOperation(call, grey) && ApplyOperation(call, colour)) << call.sName;
            if (grey.channels == 1)
                grey = Widened(grey);
            ASSERT_EQ(grey.width, colour.width) << call.sName;
            ASSERT_EQ(grey.height, colour.height) << call.sName;
            for (std::size_t i = 0; i < grey.bytes.size(); ++i)  // rounding of ties may differ
                ASSERT_NEAR(grey.bytes[i], colour.bytes[i], 1) << call.sName << " at " << i;
        }
    }
}

TEST(AllOperations, AllocateNothingIfTheyChangeNothing)
{
    using namespace operations;
    const ImageBuffer source = WithAttributes(RandomPicture(50, 40, 3));
    const OperationCall neutral[] = {
        Brightness(0),    Contrast(0),     Gamma(1),          Hue(360),         Lightness(0),
        Saturation(0),    Red(0),          Green(0),          Blue(0),          BalanceHLS(0, 0, 0),
        Equalize(0),      Posterize(256),  FilterReserved(5), FilterMinimal(1), Colorize(255, 255, 255),
        FilterMaximal(1), FilterBlur(0),   FilterSharpen(0),  MotionBlur(9, 1), GaussianBlur(0),
        RadialBlur(0),    ZoomBlur(0),     AddNoise(0, true), Diffuse(0, 1),    Emboss(0, 0, 10),
        Relief(0, 0, 10), Mosaic(1, true), Halftones(1, 0),   Rotate(360, 9),   Texturize(0, 0, 1),
        Shift(0, 0, 9),   Skew(true, 0),   Perspective(1, 0), Twirl(0),         Resize(50, 40, 2, 0),
        Reproduce(1),     Autocrop()};
    for (const OperationCall& call : neutral) {
        ImageBuffer result;
        const FailingMemory memory(0);
        ASSERT_EQ(KernelImageTransform().Apply(call, source, result), OperationResult::Unchanged)
            << call.sName;
        ASSERT_TRUE(result.bytes.empty()) << call.sName;
    }
}

// Operations that need no more than the result's pixels and some rows.
static std::vector<OperationCall> SinglePassOperations()
{
    using namespace operations;
    return {Autocontrast(),
            AutoLevel(),
            Brightness(9),
            Contrast(0.3),
            Gamma(2),
            Hue(30),
            Lightness(0.2),
            Saturation(0.4),
            BalanceHLS(9, 0.1, 0.1),
            Red(9),
            Green(9),
            Blue(9),
            Colorize(9, 99, 200),
            Desaturate(),
            Intensity(),
            Invert(),
            Equalize(0.5),
            Threshold(99),
            Posterize(5),
            FilterDifference(1),
            FilterHighPass(0),
            FilterLowPass(0),
            FilterLaplas(0),
            FilterSobel(0),
            FilterPrewitt(0),
            FilterRoberts(0),
            FilterIsotropic(0),
            FilterMinimal(3),
            FilterMaximal(3),
            FilterLineDetection(0),
            FilterBlur(0.5),
            FilterSharpen(0.5),
            Deinterlace(true, true),
            AddNoise(20, false),
            Emboss(30, 2, 10),
            Mosaic(6, false),
            Dilation(100, 50, true),
            Erosion(100, 50, true),
            Halftones(4, 1),
            Flip(true),
            Flip(false),
            Shift(3, 4, 0)};
}

TEST(SinglePassOperations, WorkInPlaceWithoutCopyingPicture)
{
    const ImageBuffer before = RandomPicture(600, 500, 3);
    for (const OperationCall& call : SinglePassOperations()) {
        ImageBuffer image = before;
        const std::uint8_t* bytes = image.bytes.data();
        const AllocatedMemory memory;
        ASSERT_EQ(KernelImageTransform().Apply(call, image, image), OperationResult::Changed) << call.sName;
        EXPECT_LT(memory.Bytes(), before.bytes.size() / 2) << call.sName;
        EXPECT_EQ(image.bytes.data(), bytes) << call.sName;
    }
}

TEST(SinglePassOperations, AllocateOnlyResultIfSourceIsConst)
{
    const ImageBuffer source = RandomPicture(600, 500, 3);
    for (const OperationCall& call : SinglePassOperations()) {
        ImageBuffer result;
        const AllocatedMemory memory;
        ASSERT_EQ(KernelImageTransform().Apply(call, source, result), OperationResult::Changed) << call.sName;
        EXPECT_LT(memory.Bytes(), source.bytes.size() * 3 / 2) << call.sName;
    }
}
