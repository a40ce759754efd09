// Plays the records of a WMF.
// Room: platform/image/metafile/wmf.
#pragma once

#include <vector>

#include "src/platform/image/metafile/device/device_context.h"
#include "src/platform/image/metafile/emf/emf_player.h"

/// A record: its function and its parameters. The low byte of a function is its number, the high byte says
/// how many words of parameters it has at least.
struct WmfRecord {
    std::uint16_t nFunction = 0;
    Bytes aParameters;

    std::uint8_t Number() const { return static_cast<std::uint8_t>(nFunction); }
    ByteReader Data() const { return ByteReader(aParameters); }
    /// True for a transfer that has no bitmap with it, and takes its source from the picture.
    bool WithoutBitmap() const { return aParameters.size() == (nFunction >> 8) * 2u; }
};

struct WmfPlay {
    explicit WmfPlay(DeviceContext& dcTarget) : dc(dcTarget) {}

    DeviceContext& dc;
    std::vector<Object> aObjects;  ///< a new object takes the first free place
};

/// Each plays its family of records.
Outcome ePlayWmfState(WmfPlay& objPlay, const WmfRecord& objRecord);
Outcome ePlayWmfObject(WmfPlay& objPlay, const WmfRecord& objRecord);
Outcome ePlayWmfShape(WmfPlay& objPlay, const WmfRecord& objRecord);
Outcome ePlayWmfBitmap(WmfPlay& objPlay, const WmfRecord& objRecord);
Outcome ePlayWmfText(WmfPlay& objPlay, const WmfRecord& objRecord);

/// All records up to the end record. False when one is broken or the work isn't granted.
bool bPlayWmf(DeviceContext& dc, const MetafileRequest& objRequest);

// What several families read. Coordinates stand in the file in the reverse order: y before x, bottom first.
Point ptReadYX(ByteReader& rd);
Rect rcReadReversed(ByteReader& rd);
const Object& objNumbered(const WmfPlay& objPlay, std::uint32_t nIndex);
