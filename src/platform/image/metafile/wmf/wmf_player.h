// Plays the records of a WMF.
// Room: platform/image/metafile/wmf.
#pragma once

#include <vector>

#include "src/platform/image/metafile/device/device_context.h"
#include "src/platform/image/metafile/emf/emf_player.h"

/// A record: function and parameters. The low byte of function identifies the record, the high byte is the
/// minimal number of parameter words.
struct WmfRecord {
    std::uint16_t function = 0;
    Bytes parameters;

    std::uint8_t Number() const { return static_cast<std::uint8_t>(function); }
    ByteReader Data() const { return ByteReader(parameters); }
    /// True for a blit without a bitmap, whose source is the picture itself.
    bool HasNoBitmap() const { return parameters.size() == (function >> 8) * 2u; }
};

struct WmfPlay {
    explicit WmfPlay(DeviceContext& target) : dc(target) {}

    DeviceContext& dc;
    std::vector<Object> objects;  ///< a new object takes the first free slot
};

/// Each plays one family of records.
Outcome PlayWmfState(WmfPlay& play, const WmfRecord& record);
Outcome PlayWmfObject(WmfPlay& play, const WmfRecord& record);
Outcome PlayWmfShape(WmfPlay& play, const WmfRecord& record);
Outcome PlayWmfBitmap(WmfPlay& play, const WmfRecord& record);
Outcome PlayWmfText(WmfPlay& play, const WmfRecord& record);

/// Plays all records up to the end record, skipping those that can't be drawn. False as for PlayEmf().
bool PlayWmf(DeviceContext& dc, const MetafileRequest& request);

// Shared between the families. Coordinates are stored in reverse order: y before x, bottom first.
Point ReadPointYx(ByteReader& reader);
Rect ReadReversedRect(ByteReader& reader);
const Object& ObjectAt(const WmfPlay& play, std::uint32_t index);
