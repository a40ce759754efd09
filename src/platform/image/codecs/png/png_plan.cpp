// Plans how a picture is written as PNG.
#include "src/platform/image/codecs/png/png_plan.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "src/platform/image/codecs/png/filters/png_filter.h"
#include "src/platform/image/deflate/run_length.h"

static constexpr std::size_t kSamples = 3;
static constexpr std::size_t kMaxSampleBytes = 24 * 1024;  // bytes of rows per sample
static constexpr std::size_t kSampleShare = 48;            // of the picture, unless it is small
static constexpr std::size_t kMinSampleBytes = 4 * 1024;
// Percentage of pixels equal to their neighbours. The sky and shadows of a photograph may have many.
static constexpr std::size_t kFlat = 40;
static constexpr std::size_t kGraphic = 65;
// A graphic repeats if matches save at least 1/kRepeatShare of what runs alone take.
static constexpr std::uint64_t kRepeatShare = 5;

PngRowSource::PngRowSource(const ImageBuffer& image, PngPlan& plan)
    : image_(image), plan_(plan), bytes_(plan.layout.Header(image).RowBytes())
{
    here_.resize(bytes_ + 2 * kPngRowSlack, 0);
    above_.resize(bytes_ + 2 * kPngRowSlack, 0);
}

void PngRowSource::Make(std::size_t y, std::uint8_t* out)
{
    if (!plan_.filtered) {
        *out = static_cast<std::uint8_t>(PngFilter::kNone);
        MakePngRow(plan_.layout, image_, y, out + 1);
        return;
    }
    std::swap(here_, above_);
    if (y != next_ || y == 0)
        std::fill(above_.begin(), above_.end(), std::uint8_t{0});
    next_ = y + 1;
    MakePngRow(plan_.layout, image_, y, here_.data() + kPngRowSlack);
    const PngFilterRow row = {here_.data() + kPngRowSlack, above_.data() + kPngRowSlack, bytes_,
                              plan_.layout.PixelSize()};
    const PngFilters& filters = PngFiltersFor();
    filters.apply(filters.choose(row), row, out);
}

namespace
{
/// Estimated bits of the picture, coded with runs only and with matches, each including its palette.
struct SampleBits {
    std::uint64_t with_runs = 0;
    std::uint64_t with_matches = 0;
    std::uint64_t best = 0;  ///< of each sample's better one
};
}  // namespace

// Estimates the bits the picture takes with this plan from samples deflated independently. A small picture is
// one sample.
static SampleBits EstimateBits(const ImageBuffer& image, PngPlan& plan)
{
    const auto height = static_cast<std::size_t>(image.height);
    PngRowSource source(image, plan);
    const std::size_t row_bytes = source.FilteredBytes();
    // Sample the same rows for every plan, whatever their row size.
    const std::size_t pixel_row =
        std::size_t{static_cast<std::uint32_t>(image.width)} * static_cast<std::size_t>(image.channels);
    const std::size_t sample =
        std::clamp(pixel_row * height / kSampleShare, kMinSampleBytes, kMaxSampleBytes);
    const std::size_t row_count = std::min(std::max<std::size_t>(sample / pixel_row, 2), height);
    PixelBytes buffer;
    buffer.resize(PngMatchFinder::kFrontSlack + row_count * row_bytes + 2 * kPngRowSlack, 0);
    std::uint8_t* const rows = buffer.data() + PngMatchFinder::kFrontSlack;
    const std::size_t bytes = row_count * row_bytes;
    PngTokens tokens;
    PngMatchFinder finder;
    const std::size_t samples = row_count < height ? kSamples : 1;
    SampleBits bits;
    for (std::size_t i = 0; i < samples; ++i) {
        const std::size_t first = (height - row_count) * (2 * i + 1) / (2 * samples);
        for (std::size_t y = 0; y < row_count; ++y)
            source.Make(first + y, rows + y * row_bytes);
        finder.Forget();
        finder.Find(rows, 0, bytes, false, tokens);
        const std::uint64_t with_matches = PngBlock(tokens, rows, bytes).Bits();
        FindPngRuns(rows, bytes, 0, plan.layout.PixelSize(), FirstPngCosts(), tokens);
        const std::uint64_t with_runs = PngBlock(tokens, rows, bytes).Bits();
        bits.with_runs += with_runs;
        bits.with_matches += with_matches;
        bits.best += std::min(with_matches, with_runs);
    }
    for (std::uint64_t* sum : {&bits.with_runs, &bits.with_matches, &bits.best})
        *sum = *sum * height / (samples * row_count) +
               8 * (plan.layout.palette.size() + plan.layout.transparency.size());
    return bits;
}

// The percentage of sampled pixels that equal their left neighbour.
static std::size_t Flatness(const ImageBuffer& image)
{
    constexpr std::size_t kRows = 16;
    const auto width = static_cast<std::size_t>(image.width);
    const auto height = static_cast<std::size_t>(image.height);
    const auto channels = static_cast<std::size_t>(image.channels);
    std::size_t same = 0;
    for (std::size_t i = 0; i < kRows; ++i) {
        const std::uint8_t* const p =
            image.bytes.data() + height * (2 * i + 1) / (2 * kRows) * width * channels;
        for (std::size_t x = 1; x < width; ++x)
            same += std::memcmp(p + x * channels, p + (x - 1) * channels, channels) == 0 ? 1 : 0;
    }
    return same * 100 / (kRows * width);
}

static PngContent ContentOf(const ImageBuffer& image, const PngLayout& layout)
{
    if (layout.colour == PngColour::kGrey && layout.depth == 1)
        return PngContent::kScan;
    if (layout.colour == PngColour::kPalette || layout.depth < 8)
        return PngContent::kDrawing;
    const std::size_t flat = Flatness(image);
    return flat > kGraphic ? PngContent::kGraphic
           : flat > kFlat  ? PngContent::kFlat
                           : PngContent::kPhotograph;
}

PngPlan PlanFor(const ImageBuffer& image)
{
    std::vector<PngLayout> layouts = PngLayouts(image);
    const PngContent content = ContentOf(image, layouts[0]);
    std::vector<PngPlan> plans;
    for (PngLayout& layout : layouts) {
        // With several pixels per byte, differences mean nothing: don't filter.
        if (layout.depth == 8)
            plans.push_back({layout, true, content});
        if (content != PngContent::kPhotograph)
            plans.push_back({layout, false, content});
    }
    std::size_t best = 0;
    std::uint64_t min = ~std::uint64_t{0};
    for (std::size_t i = 0; i < plans.size() && plans.size() > 1; ++i) {
        const SampleBits bits = EstimateBits(image, plans[i]);
        if (bits.best >= min)
            continue;
        min = bits.best;
        best = i;
        // Smooth areas of a photograph look flat, but only graphics repeat.
        const bool repeats = bits.with_matches < bits.with_runs - bits.with_runs / kRepeatShare;
        if (content == PngContent::kGraphic)
            plans[i].content = repeats ? PngContent::kGraphic : PngContent::kFlat;
    }
    return std::move(plans[best]);
}
