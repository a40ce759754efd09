// Reads a WMF's headers and checks its records.
// Room: platform/image/codecs/metafile.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

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

/// Result of checking the records, and the first window, viewport and map mode they set.
struct WmfRecords {
    bool whole = false;  ///< the records are complete up to the end record
    std::optional<double> window_left, window_top, window_width, window_height;
    std::optional<double> viewport_width, viewport_height;
    std::optional<int> map_mode;
};
WmfRecords WalkWmf(Bytes records);

/// The EMF that some programs store in comments of a WMF's records, in pieces: the same picture, drawn
/// better. Empty if there is none, or if a piece is missing.
std::vector<std::uint8_t> EmbeddedEmf(Bytes records);
