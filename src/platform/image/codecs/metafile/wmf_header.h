// What a WMF says of its size before it draws.
// Room: platform/image/codecs/metafile.
#pragma once

#include <cstdint>
#include <optional>

#include "src/platform/image/base/byte_reader.h"

struct WmfHeader {
    std::uint64_t records_offset = 0;  ///< where the first record begins
    std::uint32_t objects = 0;
    bool placeable = false;
    double left = 0;  ///< logical units; of a placeable file
    double top = 0;
    double width = 0;  ///< may be below 0
    double height = 0;
    double units_per_inch = 0;  ///< 0 when the header doesn't say
};

bool IsWmf(Bytes head);
std::optional<WmfHeader> ReadWmfHeader(Bytes file);

/// The records, and the first window that they set.
struct WmfRecords {
    bool whole = false;  ///< they follow one another within the file up to the end record
    std::optional<double> window_left, window_top, window_width, window_height;
};
WmfRecords WalkWmf(Bytes records);
