// Plays the records of an EMF.
// Room: platform/image/metafile/emf.
#pragma once

#include <optional>
#include <vector>

#include "src/platform/image/metafile/device/device_context.h"

/// A record: its bytes from the type field on, and a reader that stands behind type and size.
struct EmfRecord {
    std::uint32_t nType = 0;
    Bytes aAll;
    ByteReader Data() const { return ByteReader(aAll.subspan(8)); }
};

/// What is carried from record to record.
struct EmfPlay {
    explicit EmfPlay(DeviceContext& dcTarget) : dc(dcTarget) {}

    DeviceContext& dc;
    std::vector<Object> aObjects;
    /// The file says that its records of the other kind (EMF+, within comments) are all there is.
    bool bOnlyEmfPlus = false;
};

enum class Outcome { NotMine, Done, Broken };

inline Outcome eOutcome(bool bGood)
{
    return bGood ? Outcome::Done : Outcome::Broken;
}

/// Each plays its family of records.
Outcome ePlayState(EmfPlay& objPlay, const EmfRecord& objRecord);
Outcome ePlayClip(EmfPlay& objPlay, const EmfRecord& objRecord);
Outcome ePlayObject(EmfPlay& objPlay, const EmfRecord& objRecord);
Outcome ePlayShape(EmfPlay& objPlay, const EmfRecord& objRecord);
Outcome ePlayPoints(EmfPlay& objPlay, const EmfRecord& objRecord);
Outcome ePlayBitmap(EmfPlay& objPlay, const EmfRecord& objRecord);
Outcome ePlayText(EmfPlay& objPlay, const EmfRecord& objRecord);

/// All records up to the end record. False when one is broken, the work isn't granted, or nothing could be
/// drawn of a file that is made for EMF+ alone.
bool bPlayEmf(DeviceContext& dc, const MetafileRequest& objRequest);

// What several families read.
Point ptRead(ByteReader& rd);
Rect rcRead(ByteReader& rd);
Affine objReadTransform(ByteReader& rd);
/// Where a record says that its bitmap lies, in bytes from its own begin.
struct EmfDibPlace {
    std::uint32_t nHeaderOffset = 0;
    std::uint32_t nHeaderSize = 0;  ///< 0: there is no bitmap
    std::uint32_t nBitsOffset = 0;
    std::uint32_t nBitsSize = 0;
};
EmfDibPlace objReadDibPlace(ByteReader& rd);
/// The bitmap at that place; empty if there is none, nothing if the place leads outside. nUsage 1: its
/// palette holds indexes.
std::optional<DibSource> objDibAt(const EmfRecord& objRecord, const EmfDibPlace& objPlace,
                                  std::uint32_t nUsage);
/// Region data; nothing if it is broken.
std::optional<Region> objReadRegion(ByteReader& rd);
/// Object nIndex, of the table or the stock; monostate if there is none.
const Object& objNumbered(const EmfPlay& objPlay, std::uint32_t nIndex);
