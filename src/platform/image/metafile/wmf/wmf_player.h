// Plays the records of a WMF.
// Room: platform/image/metafile/wmf.
#pragma once

#include <vector>

#include "src/platform/image/metafile/device/device_context.h"
#include "src/platform/image/metafile/emf/emf_player.h"

/// A record: its function and its parameters. The low byte of a function is its number, the high byte says
/// how many words of parameters it has at least.
struct WmfRecord {
    std::uint16_t function = 0;
    Bytes parameters;

    std::uint8_t Number() const { return static_cast<std::uint8_t>(function); }
    ByteReader Data() const { return ByteReader(parameters); }
    /// True for a transfer that has no bitmap with it, and takes its source from the picture.
    bool WithoutBitmap() const { return parameters.size() == (function >> 8) * 2u; }
};

struct WmfPlay {
    explicit WmfPlay(DeviceContext& target) : dc(target) {}

    DeviceContext& dc;
    std::vector<Object> objects;  ///< a new object takes the first free place
};

/// Each plays its family of records.
Outcome PlayWmfState(WmfPlay& play, const WmfRecord& record);
Outcome PlayWmfObject(WmfPlay& play, const WmfRecord& record);
Outcome PlayWmfShape(WmfPlay& play, const WmfRecord& record);
Outcome PlayWmfBitmap(WmfPlay& play, const WmfRecord& record);
Outcome PlayWmfText(WmfPlay& play, const WmfRecord& record);

/// All records up to the end record. False when one is broken or the work isn't granted.
bool PlayWmf(DeviceContext& dc, const MetafileRequest& request);

// What several families read. Coordinates stand in the file in the reverse order: y before x, bottom first.
Point ReadPointYx(ByteReader& reader);
Rect ReadReversedRect(ByteReader& reader);
const Object& ObjectAt(const WmfPlay& play, std::uint32_t index);
