// What an EMF says of itself before it draws.
// Room: platform/image/codecs/metafile.
#pragma once

#include <cstdint>
#include <optional>

#include "src/platform/image/base/byte_reader.h"

struct EmfHeader {
    std::uint32_t size = 0;  ///< bytes of the header record
    std::uint32_t objects = 0;
    double frame_left = 0;  ///< hundredths of a millimetre
    double frame_top = 0;
    double frame_width = 0;
    double frame_height = 0;
    double dots_per_millimetre_x = 0;  ///< of the reference device
    double dots_per_millimetre_y = 0;
    std::int32_t width = 0;  ///< pixels at 96 an inch; not yet held against any limit
    std::int32_t height = 0;
};

bool IsEmf(Bytes head);
/// Nothing for a header that is cut short or gives the picture no size.
std::optional<EmfHeader> ReadEmfHeader(Bytes file);

/// True when the records follow one another within the file up to the end record. What comes after it doesn't
/// count, neither does what the header says of lengths: writers that can't go back leave it open.
bool IsWholeEmf(Bytes file);
