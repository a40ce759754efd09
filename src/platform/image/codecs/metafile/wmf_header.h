// Reads a WMF's headers and checks its records.
// Room: platform/image/codecs/metafile.
#pragma once

#include <cstdint>
#include <optional>

#include "src/platform/image/base/byte_reader.h"

struct WmfHeader {
    std::uint64_t records_offset = 0;  ///< offset of the first record
    std::uint32_t objects = 0;
    bool placeable = false;
    double left = 0;  ///< logical units; placeable files only
    double top = 0;
    double width = 0;  ///< may be negative
    double height = 0;
    double units_per_inch = 0;  ///< 0 = unknown
};

bool IsWmf(Bytes head);
std::optional<WmfHeader> ReadWmfHeader(Bytes file);

/// Result of checking the records, and the first window they set.
struct WmfRecords {
    bool whole = false;  ///< the records are complete up to the end record
    std::optional<double> window_left, window_top, window_width, window_height;
};
WmfRecords WalkWmf(Bytes records);
