// Inflates the IDAT stream of a PNG.
#include "src/platform/image/codecs/png/png_inflate.h"

#include <isa-l/igzip_lib.h>
#include <libdeflate.h>

#include <algorithm>
#include <array>

static constexpr std::uint32_t kData = PngType("IDAT");
static constexpr std::uint32_t kAll = 0xFFFFFFFF;
static constexpr std::array<std::uint8_t, 4> kDataLetters = {'I', 'D', 'A', 'T'};

PngInflater::PngInflater(PngChunkReader& reader, const PngChunk& first_chunk)
    : reader_(reader), chunk_(first_chunk), state_(new inflate_state)
{
    sum_ = libdeflate_crc32(0, kDataLetters.data(), kDataLetters.size());
    isal_inflate_init(state_.get());
    // Only the method matters in the two-byte zlib header, which may be split across chunks.
    const Bytes method_byte = TakeInput(1);
    const int method = method_byte.empty() ? 0 : method_byte[0];
    const Bytes flags_byte = TakeInput(1);
    const int flags = flags_byte.empty() ? 0 : flags_byte[0];
    broken_ = broken_ || (method & 15) != 8 || (method * 256 + flags) % 31 != 0 || (flags & 0x20) != 0;
}

PngInflater::~PngInflater() = default;

// Checks the exhausted chunk's CRC and moves to the next chunk.
bool PngInflater::NextChunk()
{
    if (broken_ || end_)
        return false;
    std::uint32_t sum = 0;
    for (std::uint64_t i = 0; i < 4; ++i) {
        const Bytes piece = reader_.SomeAt(chunk_.data + chunk_.length + i, 1);
        sum = sum << 8 | (piece.empty() ? 0U : piece[0]);
    }
    const auto next = reader_.ChunkAt(PlaceAfter());
    broken_ = sum != sum_ || !next;
    end_ = !broken_ && next->type != kData;
    if (broken_ || end_)
        return false;
    chunk_ = *next;
    taken_ = 0;
    sum_ = libdeflate_crc32(0, kDataLetters.data(), kDataLetters.size());
    return true;
}

Bytes PngInflater::TakeInput(std::uint32_t max)
{
    while (taken_ == chunk_.length)
        if (!NextChunk())
            return {};
    const Bytes piece = reader_.SomeAt(chunk_.data + taken_, std::min(max, chunk_.length - taken_));
    broken_ = broken_ || piece.empty();
    if (broken_)
        return {};
    taken_ += static_cast<std::uint32_t>(piece.size());
    sum_ = libdeflate_crc32(sum_, piece.data(), piece.size());
    return piece;
}

bool PngInflater::Fill(std::span<std::uint8_t> out)
{
    inflate_state& state = *state_;
    state.next_out = out.data();
    state.avail_out = static_cast<std::uint32_t>(out.size());
    while (state.avail_out > 0 && !broken_) {
        if (state.avail_in == 0) {
            const Bytes piece = TakeInput(kAll);
            // zlib's input pointer isn't const, but the data is only read.
            state.next_in = const_cast<std::uint8_t*>(piece.data());
            state.avail_in = static_cast<std::uint32_t>(piece.size());
        }
        const std::uint32_t in_before = state.avail_in;
        const std::uint32_t out_before = state.avail_out;
        if (isal_inflate(&state) != ISAL_DECOMP_OK)
            broken_ = true;
        // No progress: either the stream has ended or its input has.
        if (state.avail_in == in_before && state.avail_out == out_before)
            break;
    }
    return !broken_ && state.avail_out == 0;
}

bool PngInflater::Finish()
{
    while (!TakeInput(kAll).empty())
        ;
    return end_ && !broken_;
}
