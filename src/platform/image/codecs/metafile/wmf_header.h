// What a WMF says of its size before it draws.
// Room: platform/image/codecs/metafile.
#pragma once

#include <cstdint>
#include <optional>

#include "src/platform/image/base/byte_reader.h"

struct WmfHeader {
    std::uint64_t nRecordsOffset = 0;  ///< where the first record begins
    std::uint32_t nObjects = 0;
    bool bPlaceable = false;
    double dLeft = 0;  ///< logical units; of a placeable file
    double dTop = 0;
    double dWidth = 0;  ///< may be below 0
    double dHeight = 0;
    double dUnitsPerInch = 0;  ///< 0 when the header doesn't say
};

bool bIsWmf(Bytes aHead);
std::optional<WmfHeader> objReadWmfHeader(Bytes aFile);

/// The records, and the first window that they set.
struct WmfRecords {
    bool bWhole = false;  ///< they follow one another within the file up to the end record
    std::optional<double> dWindowLeft, dWindowTop, dWindowWidth, dWindowHeight;
};
WmfRecords objWalkWmf(Bytes aRecords);
