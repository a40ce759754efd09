// Compresses a strip of a TIFF file by LZW.
// Room: platform/image/lzw.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "src/platform/image/base/byte_reader.h"

/// Holds the table of strings between strips, so that it isn't allocated for each. One object a thread.
///
/// The form is that of TIFF 6.0, section 13: codes of 9 to 12 bits, the highest bit first, widened one code
/// early, a clear code at the beginning and whenever 4094 strings are known. The table is open-addressed and
/// takes a third of the time of a chained one.
class TiffLzwEncoder
{
public:
    TiffLzwEncoder();
    /// Puts the strip's codes in place of what is in codes. strip is not empty.
    void Encode(Bytes strip, std::vector<std::uint8_t>& codes);

private:
    static constexpr std::uint32_t kSlots = 1 << 14;

    std::array<std::uint32_t, 256> spread_;  ///< where strings that end in a byte begin to be looked for
    /// String (code of all but the last byte, last byte) and its code: 12 + 8 + 12 bits.
    std::array<std::uint32_t, kSlots> table_;
};
