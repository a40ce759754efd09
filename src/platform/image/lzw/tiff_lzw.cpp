// LZW encoder for TIFF strips.
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
/// Writes a bit stream. The caller makes sure that there is room at out.
struct CodeStream {
    std::uint8_t* out;
    std::uint64_t bits = 0;   ///< pending bits, the last ones lowest
    std::uint32_t count = 0;  ///< number of pending bits: 0 to 7 between codes
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
    // Any patternless numbers will do; these come from a linear congruential generator.
    std::uint32_t state = 12345;
    for (std::uint32_t& spread : spread_) {
        state = state * 1664525u + 1013904223u;
        spread = state >> 8;
    }
}

void TiffLzwEncoder::Encode(Bytes strip, std::vector<std::uint8_t>& codes)
{
    // Worst case: a 12-bit code per byte, a clear code per table, and the overhang of the last store.
    codes.resize(strip.size() * 3 / 2 + strip.size() / 1000 + 64);
    CodeStream out{codes.data()};
    table_.fill(kEmptySlot);
    out.Put(kClear);
    std::uint32_t next_code = kFirstString;
    // Counts a new string; true if the table was full and has been cleared.
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
        ++out.out;  // the last store has left the remaining bits there, zero-padded
    codes.resize(static_cast<std::size_t>(out.out - codes.data()));
}
