// Converts samples of any width to 8 bits.
#include "src/platform/image/codecs/tiff/tiff_sample.h"

#include <algorithm>
#include <cmath>
#include <cstring>

template <typename T>
static T LoadAs(const std::uint8_t* bytes)
{
    T value;
    std::memcpy(&value, bytes, sizeof(T));
    return value;
}

// Up to 16 bits at any bit offset; they span at most three bytes.
static unsigned BitsAt(const std::uint8_t* stored, std::size_t first_bit, unsigned bits)
{
    const std::uint8_t* p = stored + first_bit / 8;
    const unsigned used = static_cast<unsigned>(first_bit % 8) + bits;
    unsigned value = static_cast<unsigned>(p[0]) << 16;
    if (used > 8)
        value |= static_cast<unsigned>(p[1]) << 8;
    if (used > 16)
        value |= p[2];
    return value >> (24 - used) & ((1u << bits) - 1);
}

static float HalfToFloat(std::uint16_t half)
{
    const int exponent = half >> 10 & 31;
    const int fraction = half & 1023;
    float value = 0;
    if (exponent == 31)
        value = fraction ? NAN : INFINITY;
    else
        value = exponent ? std::ldexp(static_cast<float>(fraction + 1024), exponent - 25)
                         : std::ldexp(static_cast<float>(fraction), -24);
    return half & 0x8000 ? -value : value;
}

static std::uint32_t LoadU24(const std::uint8_t* p)
{
    constexpr bool kLittle = __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__;
    return static_cast<std::uint32_t>(p[1]) << 8 | static_cast<std::uint32_t>(p[kLittle ? 2 : 0]) << 16 |
           p[kLittle ? 0 : 2];
}

// A 24-bit float: 7-bit exponent (bias 63), 16-bit mantissa.
static double Float24ToDouble(std::uint32_t bits)
{
    const int exponent = static_cast<int>(bits >> 16 & 127);
    const double fraction = static_cast<double>(bits & 0xFFFF) / 65536;
    double value = 0;
    if (exponent == 127)
        value = bits & 0xFFFF ? NAN : INFINITY;
    else
        value = exponent ? std::ldexp(1 + fraction, exponent - 63) : std::ldexp(fraction, -62);
    return bits & 0x800000 ? -value : value;
}

static double ReadFloat(std::uint32_t bits, const std::uint8_t* p)
{
    switch (bits) {
        case 16:
            return static_cast<double>(HalfToFloat(LoadAs<std::uint16_t>(p)));
        case 24:
            return Float24ToDouble(LoadU24(p));
        case 32:
            return static_cast<double>(LoadAs<float>(p));
        default:
            return LoadAs<double>(p);
    }
}

static double ReadSigned(std::uint32_t bits, const std::uint8_t* stored, std::size_t place)
{
    switch (bits) {
        case 8:
            return static_cast<std::int8_t>(stored[place]);
        case 16:
            return LoadAs<std::int16_t>(stored + place * 2);
        case 24:
            return static_cast<std::int32_t>(LoadU24(stored + place * 3) << 8) / 256;
        case 32:
            return LoadAs<std::int32_t>(stored + place * 4);
        case 64:
            return static_cast<double>(LoadAs<std::int64_t>(stored + place * 8));
        default: {
            const auto value = static_cast<int>(BitsAt(stored, place * bits, bits));
            return value >> (bits - 1) ? value - (1 << bits) : value;
        }
    }
}

// The sample at a place counted in samples: a float, a signed one, or one of more than 16 bits.
static double ReadValue(const TiffSampleForm& form, const std::uint8_t* stored, std::size_t place)
{
    if (form.format == SAMPLEFORMAT_IEEEFP)
        return ReadFloat(form.bits, stored + place * (form.bits / 8));
    if (form.format == SAMPLEFORMAT_INT)
        return ReadSigned(form.bits, stored, place);
    switch (form.bits) {
        case 24:
            return LoadU24(stored + place * 3);
        case 32:
            return LoadAs<std::uint32_t>(stored + place * 4);
        default:
            return static_cast<double>(LoadAs<std::uint64_t>(stored + place * 8));
    }
}

void WidenRange(const TiffSampleForm& form, const std::uint8_t* stored, std::uint32_t sample,
                std::uint32_t stored_samples, std::size_t pixels, TiffRange& range)
{
    for (std::size_t i = 0; i < pixels; ++i) {
        const double value = ReadSigned(form.bits, stored, i * stored_samples + sample);
        range.lowest = std::min(range.lowest, value);
        range.highest = std::max(range.highest, value);
    }
}

void LevelsOfSample(const TiffSampleForm& form, const std::uint8_t* stored, std::uint32_t sample,
                    std::uint32_t stored_samples, std::size_t pixels, std::uint8_t* out, std::uint32_t pitch)
{
    const unsigned bits = form.bits;
    if (bits > 16 || form.format != SAMPLEFORMAT_UINT) {
        const double scale = 255 / (form.highest - form.lowest);
        for (std::size_t i = 0; i < pixels; ++i) {
            const double value = ReadValue(form, stored, i * stored_samples + sample);
            const double level = (value - form.lowest) * scale;
            // The comparisons are written so that NaN becomes 0.
            out[i * pitch] = level >= 254.5 ? 255 : level > 0 ? static_cast<std::uint8_t>(level + 0.5) : 0;
        }
        return;
    }
    const unsigned flip = form.flip_sign ? 1u << (bits - 1) : 0;
    if (bits == 8) {
        for (std::size_t i = 0; i < pixels; ++i)
            out[i * pitch] = static_cast<std::uint8_t>(stored[i * stored_samples + sample] ^ flip);
        return;
    }
    if (bits == 16) {
        for (std::size_t i = 0; i < pixels; ++i) {
            const unsigned value = LoadAs<std::uint16_t>(stored + (i * stored_samples + sample) * 2) ^ flip;
            const unsigned level = form.in_steps ? std::min(255u, (value + 128) >> 8)
                                                 : (value * 255 + 32895) >> 16;  // n / 257, rounded
            out[i * pitch] = static_cast<std::uint8_t>(level);
        }
        return;
    }
    const unsigned highest = (1u << bits) - 1;
    for (std::size_t i = 0; i < pixels; ++i) {
        const unsigned value = BitsAt(stored, (i * stored_samples + sample) * bits, bits);
        out[i * pitch] = static_cast<std::uint8_t>((value * 255 + highest / 2) / highest);
    }
}

void IndicesOfSample(std::uint16_t bits, const std::uint8_t* stored, std::uint32_t sample,
                     std::uint32_t stored_samples, std::size_t pixels, std::uint16_t* out)
{
    for (std::size_t i = 0; i < pixels; ++i) {
        const std::size_t at = i * stored_samples + sample;
        out[i] = bits == 8    ? stored[at]
                 : bits == 16 ? LoadAs<std::uint16_t>(stored + at * 2)
                              : static_cast<std::uint16_t>(BitsAt(stored, at * bits, bits));
    }
}
