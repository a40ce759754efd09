// Reads an EMF's header and checks its records.
// Room: platform/image/codecs/metafile.
#pragma once

#include <cstdint>
#include <optional>

#include "src/platform/image/base/byte_reader.h"

struct EmfHeader {
    std::uint32_t size = 0;  ///< bytes of the header record
    std::uint32_t objects = 0;
    double frame_left = 0;  ///< in units of 0.01 mm
    double frame_top = 0;
    double frame_width = 0;
    double frame_height = 0;
    double dots_per_millimetre_x = 0;  ///< of the reference device
    double dots_per_millimetre_y = 0;
    std::int32_t width = 0;  ///< pixels at 96 dpi; not checked against the limits
    std::int32_t height = 0;
};

bool IsEmf(Bytes head);
/// Nothing if the header is truncated or gives no size.
std::optional<EmfHeader> ReadEmfHeader(Bytes file);

/// True if the records are complete up to the end record. Data after it and lengths in the header are
/// ignored: writers that can't seek leave those unset.
bool IsWholeEmf(Bytes file);
