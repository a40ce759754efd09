// The LZW encoder of TIFF strips.
#include "src/platform/image/lzw/tiff_lzw.h"

#include <bit>
#include <cstring>

static constexpr std::uint32_t kClear = 256;
static constexpr std::uint32_t kEnd = 257;
static constexpr std::uint32_t kFirstString = 258;
static constexpr std::uint32_t kFull = 4094;
static constexpr std::uint32_t kEmptySlot = 0xFFFFFFFF;
static constexpr std::uint32_t kCodeBits = 12;

namespace
{
/// Codes as a stream of bits. The room behind out is seen to by the caller.
struct CodeStream {
    std::uint8_t* out;
    std::uint64_t bits = 0;   ///< the last of them not yet written
    std::uint32_t count = 0;  ///< how many are not yet written: 0 to 7 between two codes
    std::uint32_t width = 9;

    void Put(std::uint32_t code)
    {
        bits = bits << width | code;
        count += width;
        std::uint64_t bytes = bits << (64 - count);
        if constexpr (std::endian::native == std::endian::little)
            bytes = __builtin_bswap64(bytes);
        std::memcpy(out, &bytes, 8);
        out += count / 8;
        count %= 8;
    }
};
}  // namespace

TiffLzwEncoder::TiffLzwEncoder()
{
    // Any numbers without a pattern do; these are a linear congruential generator's.
    std::uint32_t state = 12345;
    for (std::uint32_t& spread : spread_) {
        state = state * 1664525u + 1013904223u;
        spread = state >> 8;
    }
}

void TiffLzwEncoder::Encode(Bytes strip, std::vector<std::uint8_t>& codes)
{
    // At worst a code of 12 bits for each byte and a clear code for each table, and what the last store
    // touches.
    codes.resize(strip.size() * 3 / 2 + strip.size() / 1000 + 64);
    CodeStream out{codes.data()};
    table_.fill(kEmptySlot);
    out.Put(kClear);
    std::uint32_t next_code = kFirstString;
    // After a new string: true when the table is full, and was cleared.
    const auto count = [&] {
        ++next_code;
        if (next_code == kFull) {
            out.Put(kClear);
            out.width = 9;
            next_code = kFirstString;
            return true;
        }
        if (std::has_single_bit(next_code))
            ++out.width;
        return false;
    };
    std::uint32_t string = strip[0];
    for (const std::uint8_t byte : strip.subspan(1)) {
        const std::uint32_t key = string << 8 | byte;
        std::uint32_t slot = (string << 2 ^ spread_[byte]) % kSlots;
        std::uint32_t found = table_[slot];
        while (found >> kCodeBits != key && found != kEmptySlot) {
            slot = (slot + 1) % kSlots;
            found = table_[slot];
        }
        if (found != kEmptySlot) {
            string = found & ((1u << kCodeBits) - 1);
            continue;
        }
        out.Put(string);
        table_[slot] = key << kCodeBits | next_code;
        string = byte;
        if (count())
            table_.fill(kEmptySlot);
    }
    out.Put(string);
    count();
    out.Put(kEnd);
    if (out.count > 0)
        ++out.out;  // the last store left the remaining bits, then zeros, there
    codes.resize(static_cast<std::size_t>(out.out - codes.data()));
}
