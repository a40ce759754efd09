// What an EMF says of itself before it draws.
// Room: platform/image/codecs/metafile.
#pragma once

#include <cstdint>
#include <optional>

#include "src/platform/image/base/byte_reader.h"

struct EmfHeader {
    std::uint32_t nSize = 0;  ///< bytes of the header record
    std::uint32_t nObjects = 0;
    double dFrameLeft = 0;  ///< hundredths of a millimetre
    double dFrameTop = 0;
    double dFrameWidth = 0;
    double dFrameHeight = 0;
    double dDotsPerMillimetreX = 0;  ///< of the reference device
    double dDotsPerMillimetreY = 0;
    std::int32_t lWidth = 0;  ///< pixels at 96 an inch; not yet held against any limit
    std::int32_t lHeight = 0;
};

bool bIsEmf(Bytes aHead);
/// Nothing for a header that is cut short or gives the picture no size.
std::optional<EmfHeader> objReadEmfHeader(Bytes aFile);

/// True when the records follow one another within the file up to the end record. What comes after it doesn't
/// count, neither does what the header says of lengths: writers that can't go back leave it open.
bool bEmfIsWhole(Bytes aFile);
