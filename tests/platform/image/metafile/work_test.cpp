// Tests with metafiles that take much work: drawn in bounded time, or refused.
#include <gtest/gtest.h>

#include <ctime>

#include "src/platform/image/codecs/metafile/emf.h"
#include "tests/platform/image/support/image_tools.h"
#include "tests/platform/image/support/metafile_maker.h"

static constexpr std::int32_t kPageWidth = 794;
static constexpr std::int32_t kPageHeight = 1123;

static EmfMaker Page()
{
    return {kPageWidth, kPageHeight};
}

/// Adds a clip along a path that is as large as the page.
static void ClipToEllipse(EmfMaker& maker)
{
    maker.Record(Emr::kBeginPath)
        .Record(Emr::kEllipse, {0, 0, kPageWidth, kPageHeight})
        .Record(Emr::kEndPath)
        .Record(Emr::kSelectClipPath, {5});
}

/// A polygon or polyline through count points all over the page.
static ByteMaker ScatteredPoints(std::uint32_t count)
{
    ByteMaker data;
    data.Zeros(16).U32Le({count});
    std::uint32_t seed = 1;
    const auto next = [&seed](std::int32_t below) {
        seed = seed * 1664525 + 1013904223;
        return (seed >> 8) % static_cast<std::uint32_t>(below);
    };
    for (std::uint32_t n = 0; n < count; ++n) {
        const std::uint32_t x = next(kPageWidth);
        data.U32Le({x, next(kPageHeight)});
    }
    return data;
}

/// CPU time in seconds.
static double Seconds()
{
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

static void ExpectLessThanTenSeconds(double start)
{
#ifndef VARNEL_SANITIZED
    EXPECT_LT(Seconds() - start, 10);
#else
    static_cast<void>(start);
#endif
}

TEST(MetafileWork, KeepsPathClipForManyTexts)
{
    EmfMaker maker = Page();
    ClipToEllipse(maker);
    maker.Font(1, -10, u"Arial").Record(Emr::kSetBkMode, {1});
    for (int n = 0; n < 1000; ++n)
        maker.Text(60 + n % 5 * 130, 5 + n, u"A line of text");
    const ImageBuffer image = Render(maker);

    EXPECT_LT(CountOf(image, kWhite, {350, 300, 450, 400}), 9000);
    EXPECT_EQ(CountOf(image, kWhite, {0, 0, 200, 50}), 10000);
}

TEST(MetafileWork, AllowsSettingSamePathClipForEachObject)
{
    EmfMaker maker = Page();
    maker.Brush(1, kRed).Select(kNullPen);
    for (int n = 0; n < 1000; ++n) {
        maker.Record(Emr::kSaveDc);
        ClipToEllipse(maker);
        maker.Record(Emr::kRectangle, {n % 700, n, n % 700 + 30, n + 30}).Record(Emr::kRestoreDc, {-1});
    }
    const ImageBuffer image = Render(maker);

    EXPECT_EQ(ColorAt(image, 410, 410), kRed);
    EXPECT_EQ(ColorAt(image, 5, 5), kWhite);
}

TEST(MetafileWork, DrawsPolygonOfManyCrossingEdges)
{
    const double start = Seconds();
    const ImageBuffer image =
        Render(Page().Brush(1, kRed).Select(kNullPen).Record(Emr::kPolygon, ScatteredPoints(50'000)));

    // By the even-odd rule, about half of a page of noise is filled.
    EXPECT_NEAR(ColorAt(image, 400, 500) & 255, 255, 0);
    std::uint64_t sum = 0;
    for (std::int32_t x = 100; x < 700; ++x)
        sum += ColorAt(image, x, 500) >> 8 & 255;
    EXPECT_NEAR(static_cast<double>(sum) / 600, 128, 20);
    ExpectLessThanTenSeconds(start);
}

TEST(MetafileWork, DrawsFatLineOfManyPoints)
{
    const double start = Seconds();
    EmfMaker maker = Page();
    maker.GeometricPen(1, 0, 50, kBlue).Record(Emr::kPolyline, ScatteredPoints(30'000));
    const ImageBuffer image = Render(maker);

    EXPECT_EQ(CountOf(image, kBlue, {50, 50, 750, 1050}), 700 * 1000);
    ExpectLessThanTenSeconds(start);
}

TEST(MetafileWork, BoundsPolygonOfAMillionCrossingEdges)
{
    const double start = Seconds();
    const EmfMaker maker = Page().Brush(1, kRed).Record(Emr::kPolygon, ScatteredPoints(1'000'000));

    Decoded(kEmfCodec, maker.File());

    ExpectLessThanTenSeconds(start);
}

TEST(MetafileWork, DrawsCoastlineOfAMillionPoints)
{
    EmfMaker maker = Page();
    ByteMaker data;
    data.Zeros(16).U32Le({1'000'000});
    for (std::uint32_t n = 0; n < 1'000'000; ++n)
        data.U32Le({n % 1400 < 700 ? n % 700 : 700 - n % 700, n / 1000 + n % 3});
    const ImageBuffer image = Render(maker.Pen(1, 0, 1, kBlue).Record(Emr::kPolyline, data));

    EXPECT_EQ(ColorAt(image, 350, 500), kBlue);
}
