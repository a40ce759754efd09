// GIF's LZW encoder, with the strings in a hash table.
#include "src/platform/image/lzw/lzw_encoder.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

#include "src/platform/files/output_file.h"

static constexpr std::uint32_t kCodes = 4096;
static constexpr std::size_t kBlock = 255;
static constexpr std::size_t kGathered = 256 * kBlock;

namespace
{
// Packs variable-width codes into bytes and these into sub-blocks.
class CodeWriter
{
public:
    explicit CodeWriter(OutputFile& out) : out_(out), bytes_(kGathered + sizeof(bits_)) {}

    void Write(std::uint32_t code, unsigned width)
    {
        // At most 7 bits are pending and a code has at most 12. Stores all 8 bytes but counts only the full
        // ones.
        bits_ |= std::uint64_t{code} << waiting_;
        waiting_ += width;
        for (std::size_t i = 0; i < 4; ++i)
            bytes_[filled_ + i] = static_cast<std::uint8_t>(bits_ >> (8 * i));
        filled_ += waiting_ / 8;
        bits_ >>= waiting_ / 8 * 8;
        waiting_ %= 8;
        if (filled_ >= kGathered)
            WriteBlocks(kGathered);
    }

    bool Finish()
    {
        if (waiting_ > 0)
            bytes_[filled_++] = static_cast<std::uint8_t>(bits_);
        WriteBlocks(filled_);
        return out_.WriteU8(0);
    }

private:
    void WriteBlocks(std::size_t bytes)
    {
        blocks_.clear();
        for (std::size_t i = 0; i < bytes; i += kBlock) {
            const std::size_t block = std::min(kBlock, bytes - i);
            blocks_.push_back(static_cast<std::uint8_t>(block));
            blocks_.insert(blocks_.end(), &bytes_[i], &bytes_[i] + block);
        }
        out_.Write(blocks_);
        std::copy(bytes_.begin() + static_cast<std::ptrdiff_t>(bytes),
                  bytes_.begin() + static_cast<std::ptrdiff_t>(filled_), bytes_.begin());
        filled_ -= bytes;
    }

    OutputFile& out_;
    std::vector<std::uint8_t> bytes_;
    std::vector<std::uint8_t> blocks_;
    std::size_t filled_ = 0;
    std::uint64_t bits_ = 0;
    unsigned waiting_ = 0;
};
}  // namespace

bool WriteLzw(Bytes indexes, unsigned bits, OutputFile& out)
{
    // GIF has no 1-bit codes: two-colour pictures use 2.
    const unsigned code_size = std::max(bits, 2u);
    const std::uint32_t clear = 1u << code_size, end = clear + 1;
    out.WriteU8(static_cast<std::uint8_t>(code_size));
    CodeWriter writer(out);

    // A string is its prefix's code plus its last index, held in a slot's upper 20 bits; the lower 12 are the
    // string's own code. At most 4096 of the 8192 slots are used, so probing is short.
    constexpr std::uint32_t kFree = 0xFFFFFFFF;
    constexpr unsigned kHashBits = 13;
    std::array<std::uint32_t, 1u << kHashBits> places;
    places.fill(kFree);
    std::uint32_t next = end + 1;
    unsigned width = code_size + 1;

    writer.Write(clear, width);
    std::uint32_t code = indexes[0];
    for (const std::uint8_t index : indexes.subspan(1)) {
        const std::uint32_t string = code << 8 | index;
        std::uint32_t place = string * 0x9E3779B1u >> (32 - kHashBits);
        while (places[place] >> 12 != string && places[place] != kFree)
            place = (place + 1) % places.size();
        if (places[place] != kFree) {
            code = places[place] & (kCodes - 1);
            continue;
        }
        writer.Write(code, width);
        code = index;
        if (next == kCodes) {
            writer.Write(clear, width);
            places.fill(kFree);
            next = end + 1;
            width = code_size + 1;
        } else {
            // The decoder learns each code one step later, so the width grows after the code's first use.
            if (next == 1u << width)
                ++width;
            places[place] = string << 12 | next++;
        }
    }
    writer.Write(code, width);
    // The decoder still adds a code after the last one, and may then expect the end code to be wider.
    if (next == 1u << width && width < 12)
        ++width;
    writer.Write(end, width);
    return writer.Finish();
}
