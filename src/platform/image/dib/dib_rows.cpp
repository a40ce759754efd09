// Converts uncompressed DIB rows to pixels.
#include "src/platform/image/dib/dib_rows.h"

#include <bit>
#include <cstring>

#include "src/platform/image/pixels/pixel_rows.h"

// Default masks.
static constexpr std::array<std::uint32_t, 3> kPlainMasks32 = {0xFF0000, 0xFF00, 0xFF};

DibRows::DibRows(const DibHeader& header) : header_(header), channels_(DibChannels(header))
{
    if (header.bits <= 8) {
        bool identity = header.bits == 8;
        for (std::size_t i = 0; i < 256; ++i) {
            greys_[i] = header.palette[i][0];
            identity = identity && greys_[i] == i;
        }
        plain_ = channels_ == 1 && identity;
        if (header.bits == 1 && channels_ == 1) {
            eight_greys_.resize(256);
            for (std::size_t i = 0; i < 256 * 8; ++i)
                eight_greys_[i / 8][i % 8] = greys_[i / 8 >> (7 - i % 8) & 1];
        }
        return;
    }
    const auto& masks = header.masks;
    const bool byte_aligned = header.bits == 32 && masks[0] == kPlainMasks32[0] &&
                              masks[1] == kPlainMasks32[1] && masks[2] == kPlainMasks32[2];
    plain_ = header.bits == 24 || (byte_aligned && masks[3] == 0xFF000000);
    plain32_ = byte_aligned && masks[3] == 0;
    for (std::size_t c = 0; c < 4 && !plain_ && !plain32_; ++c) {
        Channel& channel = masked_channels_[c];
        channel.mask = masks[c == 3 ? 3 : 2 - c];
        if (channel.mask == 0)
            continue;
        channel.shift = static_cast<std::uint32_t>(std::countr_zero(channel.mask));
        channel.max = channel.mask >> channel.shift;
        if (channel.max <= 255) {
            for (std::uint64_t value = 0; value <= channel.max; ++value)
                channel.levels.push_back(
                    static_cast<std::uint8_t>((value * 255 + channel.max / 2) / channel.max));
        }
    }
}

std::uint8_t DibRows::LevelOf(const Channel& channel, std::uint32_t pixel) const
{
    const std::uint64_t value = (pixel & channel.mask) >> channel.shift;
    if (!channel.levels.empty())
        return channel.levels[value];
    return channel.max == 0 ? 0 : static_cast<std::uint8_t>((value * 255 + channel.max / 2) / channel.max);
}

void DibRows::ConvertIndexes(const std::uint8_t* in, std::uint8_t* out, std::uint64_t pixels) const
{
    const std::uint32_t bits = header_.bits;
    if (bits == 8 && channels_ == 1) {
        for (std::uint64_t x = 0; x < pixels; ++x)
            out[x] = greys_[in[x]];
        return;
    }
    if (bits == 8) {
        for (std::uint64_t x = 0; x < pixels; ++x)
            std::memcpy(out + x * 3, header_.palette[in[x]].data(), 3);
        return;
    }
    std::uint64_t x = 0;
    if (bits == 1 && channels_ == 1) {
        for (; x + 8 <= pixels; x += 8, ++in, out += 8)
            std::memcpy(out, eight_greys_[*in].data(), 8);
    }
    const std::uint32_t per_byte = 8 / bits;
    const std::uint32_t mask = (1u << bits) - 1;
    for (; x < pixels; ++in) {
        std::uint32_t byte = *in;
        for (std::uint32_t i = 0; i < per_byte && x < pixels; ++i, ++x) {
            const std::uint32_t index = (byte >> (8 - bits)) & mask;
            byte <<= bits;
            if (channels_ == 1) {
                *out++ = greys_[index];
            } else {
                std::memcpy(out, header_.palette[index].data(), 3);
                out += 3;
            }
        }
    }
}

void DibRows::ConvertMasked(const std::uint8_t* in, std::uint8_t* out, std::uint64_t pixels) const
{
    const std::uint32_t size = header_.bits / 8;
    for (std::uint64_t x = 0; x < pixels; ++x, in += size, out += channels_) {
        std::uint32_t pixel = static_cast<std::uint32_t>(in[0] | in[1] << 8);
        if (size == 4)
            pixel |= static_cast<std::uint32_t>(in[2]) << 16 | static_cast<std::uint32_t>(in[3]) << 24;
        for (std::int32_t c = 0; c < channels_; ++c)
            out[c] = LevelOf(masked_channels_[static_cast<std::size_t>(c)], pixel);
    }
}

void DibRows::Convert(const std::uint8_t* in, std::uint8_t* out, std::uint64_t pixels) const
{
    if (plain_)
        std::memcpy(out, in, pixels * static_cast<std::uint64_t>(channels_));
    else if (plain32_)
        PackRowFromFourBytes(in, out, pixels);
    else if (header_.bits <= 8)
        ConvertIndexes(in, out, pixels);
    else
        ConvertMasked(in, out, pixels);
}
