// Unpacks rows and converts their colours to grey, BGR or BGRA.
#include "src/platform/image/codecs/tiff/tiff_rows.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

#include "src/platform/image/codecs/tiff/tiff_pixels.h"
#include "src/platform/image/colour/colour_profile.h"
#include "src/platform/image/pixels/pixel_rows.h"

static constexpr std::size_t kBlock = 4096;  // pixels converted at a time where a copy is needed

static TiffSampleForm FormOf(const TiffLayout& layout)
{
    return {layout.bits, layout.format, layout.lowest, layout.highest, false, false};
}

TiffRows::TiffRows(TIFF* tiff, const TiffLayout& layout, Bytes profile) : layout_(layout)
{
    const bool has_alpha = layout.alpha != TiffAlpha::kNone;
    std::uint32_t levels = 3;
    channels_ = has_alpha ? 4 : 3;
    switch (layout.colour) {
        case TiffColour::kGrey:
            channels_ = has_alpha ? 4 : 1;
            levels = channels_;
            break;
        case TiffColour::kPalette:
            if (layout.separate || !ReadPalette(tiff, has_alpha || !profile.empty()))
                return;
            levels = channels_;
            break;
        case TiffColour::kYCbCr:
            if (!ReadYCbCr(tiff))
                return;
            levels = channels_;
            break;
        case TiffColour::kCmyk:
            inks_ = std::make_unique<CmykToBgr>(profile);
            levels = has_alpha ? 5 : 4;
            break;
        default:
            levels = channels_;
    }
    const bool has_inks = layout.colour == TiffColour::kCmyk;
    const bool is_lab = layout.colour == TiffColour::kLab || layout.colour == TiffColour::kIccLab;
    finishes_rows_ = !has_inks && !is_lab;
    in_place_ = layout.bits == 8 && layout.format == SAMPLEFORMAT_UINT && !layout.separate &&
                !layout.IsSubsampled() && layout.colour != TiffColour::kPalette && layout.samples == levels &&
                (!has_alpha || layout.alpha_sample == levels - 1);
    is_bilevel_ = layout.bits == 1 && layout.samples == 1 && levels == 1;
    levels_ = levels;
}

TiffRows::~TiffRows() = default;

// Palette entries have 16 bits and should be n * 257. Writers that shift (n * 256) or store 8-bit values are
// just as common.
static unsigned PaletteLevel(unsigned stored, bool all_narrow, bool all_shifted)
{
    if (all_narrow)
        return stored;
    return all_shifted ? stored >> 8 : (stored * 255 + 32895) >> 16;
}

bool TiffRows::ReadPalette(TIFF* tiff, bool keep_colours)
{
    std::array<std::uint16_t*, 3> maps{};
    if (!TIFFGetField(tiff, TIFFTAG_COLORMAP, &maps[0], &maps[1], &maps[2]))
        return false;
    const std::size_t colours = std::size_t{1} << layout_.bits;
    bool all_narrow = true;
    bool all_shifted = true;
    bool is_grey = !keep_colours;
    for (std::size_t i = 0; i < colours; ++i) {
        all_narrow = all_narrow && std::max({maps[0][i], maps[1][i], maps[2][i]}) < 256;
        all_shifted = all_shifted && (maps[0][i] | maps[1][i] | maps[2][i]) % 256 == 0;
        is_grey = is_grey && maps[0][i] == maps[1][i] && maps[1][i] == maps[2][i];
    }
    if (is_grey)
        channels_ = 1;
    palette_.assign(colours * channels_, 255);
    for (std::size_t i = 0; i < colours; ++i)
        for (std::uint32_t c = 0; c < std::min(channels_, 3u); ++c)
            palette_[i * channels_ + c] =
                static_cast<std::uint8_t>(PaletteLevel(maps[2 - c][i], all_narrow, all_shifted));
    return true;
}

bool TiffRows::ReadYCbCr(TIFF* tiff)
{
    float* luma = nullptr;
    float* range = nullptr;
    if (!TIFFGetFieldDefaulted(tiff, TIFFTAG_YCBCRCOEFFICIENTS, &luma) ||
        !TIFFGetFieldDefaulted(tiff, TIFFTAG_REFERENCEBLACKWHITE, &range))
        return false;
    // Absurd coefficients would overflow the tables.
    const auto usable = [](float value) { return std::abs(value) < 1e6f; };
    if (!std::all_of(luma, luma + 3, usable) || !std::all_of(range, range + 6, usable) ||
        std::abs(luma[1]) < 1e-3f)
        return false;
    // libtiff expects its tables in one block right after the structure.
    constexpr std::size_t kTables =
        4 * 256 * sizeof(TIFFRGBValue) + 2 * 256 * sizeof(int) + 3 * 256 * sizeof(std::int32_t);
    ycbcr_.resize((sizeof(TIFFYCbCrToRGB) + sizeof(long) + kTables) / sizeof(std::uint64_t) + 2);
    return TIFFYCbCrToRGBInit(reinterpret_cast<TIFFYCbCrToRGB*>(ycbcr_.data()), luma, range) >= 0;
}

// Unpacks one sample into its place among the levels of each pixel.
void TiffRows::UnpackSample(std::uint32_t sample, std::uint32_t stored_samples, const std::uint8_t* stored,
                            std::size_t pixels, std::uint8_t* out) const
{
    TiffSampleForm form = FormOf(layout_);
    if (!layout_.IsUsed(sample))
        return;
    const bool is_alpha = sample >= layout_.ColourCount();
    const std::uint32_t from = stored_samples == 1 ? 0 : sample;
    const auto put = [&](std::uint32_t level) {
        LevelsOfSample(form, stored, from, stored_samples, pixels, out + level, levels_);
    };
    if (is_alpha) {
        put(levels_ - 1);
    } else if (layout_.colour == TiffColour::kRgb) {
        put(2 - sample);
    } else if (layout_.colour == TiffColour::kGrey && levels_ == 4) {
        put(0);
        for (std::uint8_t* p = out; p != out + pixels * 4; p += 4)
            p[1] = p[2] = p[0];
    } else {
        // a* and b* are signed in CIELAB but offset in ICCLAB, whatever the sample format tag says.
        const bool is_lab = layout_.colour == TiffColour::kLab;
        const bool shifted = layout_.colour == TiffColour::kIccLab;
        if (is_lab || shifted)
            form.format = SAMPLEFORMAT_UINT;
        form.flip_sign = is_lab && sample > 0;
        form.in_steps = shifted || (is_lab && sample > 0);
        put(sample);
    }
}

void TiffRows::UnpackPalette(const std::uint8_t* stored, std::size_t pixels, std::uint8_t* levels) const
{
    std::array<std::uint16_t, kBlock> indexes;
    const std::uint32_t samples = layout_.samples;
    const std::size_t bits_per_pixel = std::size_t{layout_.bits} * samples;
    // Blocks start on a byte boundary, since kBlock is a multiple of 8.
    for (std::size_t done = 0; done < pixels; done += kBlock) {
        const std::size_t now = std::min(kBlock, pixels - done);
        const std::uint8_t* from = stored + done * bits_per_pixel / 8;
        std::uint8_t* to = levels + done * levels_;
        IndicesOfSample(layout_.bits, from, 0, samples, now, indexes.data());
        if (channels_ == 1)
            for (std::size_t i = 0; i < now; ++i)
                to[i] = palette_[indexes[i]];
        else
            for (std::size_t i = 0; i < now; ++i)
                std::memcpy(to + i * channels_, palette_.data() + indexes[i] * channels_, channels_);
        if (layout_.alpha != TiffAlpha::kNone)
            LevelsOfSample(FormOf(layout_), from, layout_.alpha_sample, samples, now, to + 3, 4);
    }
}

void TiffRows::Unpack(const std::uint8_t* stored, std::size_t pixels, std::uint8_t* levels) const
{
    if (is_bilevel_) {
        const bool has_palette = layout_.colour == TiffColour::kPalette;
        const std::uint8_t zero = layout_.min_is_white ? 255 : 0;
        const auto one = static_cast<std::uint8_t>(~zero);
        ExpandBits(stored, pixels, has_palette ? palette_[0] : zero, has_palette ? palette_[1] : one, levels);
    } else if (layout_.colour == TiffColour::kPalette) {
        UnpackPalette(stored, pixels, levels);
    } else if (in_place_ && layout_.colour == TiffColour::kRgb) {
        (levels_ == 3 ? SwapRedAndBlue : SwapRedAndBlueOfFour)(stored, levels, pixels);
    } else if (in_place_) {
        if (stored != levels)
            std::memcpy(levels, stored, pixels * levels_);
        if (layout_.colour == TiffColour::kLab)
            for (std::uint8_t* p = levels; p != levels + pixels * levels_; p += levels_) {
                p[1] ^= 0x80;
                p[2] ^= 0x80;
            }
    } else {
        for (std::uint32_t sample = 0; sample < layout_.samples; ++sample)
            UnpackSample(sample, layout_.samples, stored, pixels, levels);
    }
}

void TiffRows::UnpackPlane(std::uint32_t plane, const std::uint8_t* stored, std::size_t pixels,
                           std::uint8_t* levels) const
{
    UnpackSample(plane, 1, stored, pixels, levels);
}

void TiffRows::WidenRange(const std::uint8_t* stored, std::size_t pixels, TiffRange& range) const
{
    for (std::uint32_t sample = 0; sample < layout_.ColourCount(); ++sample)
        ::WidenRange(FormOf(layout_), stored, sample, layout_.samples, pixels, range);
}

void TiffRows::WidenRangeByPlane(std::uint32_t plane, const std::uint8_t* stored, std::size_t pixels,
                                 TiffRange& range) const
{
    if (plane < layout_.ColourCount())
        ::WidenRange(FormOf(layout_), stored, 0, 1, pixels, range);
}

void TiffRows::UnpackSubsampled(const std::uint8_t* stored, std::uint32_t stored_columns,
                                std::uint32_t columns, std::uint32_t rows, std::uint8_t* levels,
                                std::size_t pitch) const
{
    const std::uint32_t across = layout_.subsampling_x;
    const std::uint32_t down = layout_.subsampling_y;
    const std::uint32_t unit_count = (stored_columns + across - 1) / across;
    const std::size_t unit_size = across * down + 2;
    for (std::uint32_t y = 0; y < rows; ++y) {
        const std::uint8_t* units = stored + std::size_t{y / down} * unit_count * unit_size;
        std::uint8_t* out = levels + y * pitch;
        for (std::uint32_t x = 0; x < columns; ++x, out += 3) {
            const std::uint8_t* unit = units + x / across * unit_size;
            out[0] = unit[y % down * across + x % across];
            out[1] = unit[unit_size - 2];
            out[2] = unit[unit_size - 1];
        }
    }
}

// Converts colours of three or four samples, with or without alpha. Works in blocks with a copy, since input
// and output may overlap.
template <typename ConvertBlock>
static bool ConvertBlocks(const std::uint8_t* levels, std::size_t pixels, std::uint32_t level_count,
                          bool has_alpha, std::size_t block, std::uint8_t* out, ConvertBlock convert)
{
    const std::uint32_t colours = has_alpha ? level_count - 1 : level_count;
    std::vector<std::uint8_t> in(std::min(block, pixels) * colours);
    std::vector<std::uint8_t> turned(std::min(block, pixels) * 3);
    for (std::size_t done = 0; done < pixels; done += block) {
        const std::size_t now = std::min(block, pixels - done);
        const std::uint8_t* from = levels + done * level_count;
        std::uint8_t* to = out + done * (has_alpha ? 4 : 3);
        for (std::size_t i = 0; i < now; ++i)
            std::memcpy(in.data() + i * colours, from + i * level_count, colours);
        if (!convert(in.data(), turned.data(), now))
            return false;
        if (!has_alpha) {
            std::memcpy(to, turned.data(), now * 3);
            continue;
        }
        for (std::size_t i = 0; i < now; ++i) {
            const std::uint8_t alpha = from[i * level_count + level_count - 1];
            std::memcpy(to + i * 4, turned.data() + i * 3, 3);
            to[i * 4 + 3] = alpha;
        }
    }
    return true;
}

bool TiffRows::Finish(const std::uint8_t* levels, std::size_t pixels, std::uint8_t* out) const
{
    const bool has_alpha = layout_.alpha != TiffAlpha::kNone;
    bool done = true;
    switch (layout_.colour) {
        case TiffColour::kCmyk:
            done = ConvertBlocks(levels, pixels, levels_, has_alpha, kBlock, out,
                                 [this](const std::uint8_t* in, std::uint8_t* bgr, std::size_t count) {
                                     inks_->Convert(in, bgr, count);
                                     return true;
                                 });
            break;
        case TiffColour::kLab:
        case TiffColour::kIccLab:
            // Large blocks, because each one sets up the transform to sRGB again.
            done = ConvertBlocks(levels, pixels, levels_, has_alpha, 256 * kBlock, out,
                                 [](const std::uint8_t* in, std::uint8_t* bgr, std::size_t count) {
                                     return LabToBgr(in, bgr, count);
                                 });
            break;
        case TiffColour::kYCbCr: {
            auto* tables = reinterpret_cast<TIFFYCbCrToRGB*>(const_cast<std::uint64_t*>(ycbcr_.data()));
            const std::uint8_t* in = levels;
            std::uint8_t* to = out;
            for (std::size_t i = 0; i < pixels; ++i, in += levels_, to += levels_) {
                std::uint32_t red = 0;
                std::uint32_t green = 0;
                std::uint32_t blue = 0;
                TIFFYCbCrtoRGB(tables, in[0], in[1], in[2], &red, &green, &blue);
                to[0] = static_cast<std::uint8_t>(blue);
                to[1] = static_cast<std::uint8_t>(green);
                to[2] = static_cast<std::uint8_t>(red);
                if (has_alpha)
                    to[3] = in[3];
            }
            break;
        }
        default:
            if (out != levels)
                std::memmove(out, levels, pixels * levels_);
            if (layout_.colour == TiffColour::kGrey && layout_.min_is_white && !is_bilevel_)
                for (std::size_t i = 0; i < pixels * levels_; ++i)
                    out[i] = levels_ == 4 && i % 4 == 3 ? out[i] : static_cast<std::uint8_t>(~out[i]);
    }
    if (done && layout_.alpha == TiffAlpha::kAssociated)
        Unpremultiply(out, pixels);
    return done;
}
