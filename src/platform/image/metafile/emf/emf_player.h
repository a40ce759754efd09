// Plays the records of an EMF.
// Room: platform/image/metafile/emf.
#pragma once

#include <optional>
#include <vector>

#include "src/platform/image/metafile/device/device_context.h"

/// A record: its bytes from the type field on, and a reader that stands behind type and size.
struct EmfRecord {
    std::uint32_t type = 0;
    Bytes all;
    ByteReader Data() const { return ByteReader(all.subspan(8)); }
};

/// What is carried from record to record.
struct EmfPlay {
    explicit EmfPlay(DeviceContext& target) : dc(target) {}

    DeviceContext& dc;
    std::vector<Object> objects;
    /// The file says that its records of the other kind (EMF+, within comments) are all there is.
    bool only_emf_plus = false;
};

enum class Outcome { kNotMine, kDone, kBroken };

inline Outcome OutcomeOf(bool good)
{
    return good ? Outcome::kDone : Outcome::kBroken;
}

/// Each plays its family of records.
Outcome PlayState(EmfPlay& play, const EmfRecord& record);
Outcome PlayClip(EmfPlay& play, const EmfRecord& record);
Outcome PlayObject(EmfPlay& play, const EmfRecord& record);
Outcome PlayShape(EmfPlay& play, const EmfRecord& record);
Outcome PlayPoints(EmfPlay& play, const EmfRecord& record);
Outcome PlayBitmap(EmfPlay& play, const EmfRecord& record);
Outcome PlayText(EmfPlay& play, const EmfRecord& record);

/// All records up to the end record. False when one is broken, the work isn't granted, or nothing could be
/// drawn of a file that is made for EMF+ alone.
bool PlayEmf(DeviceContext& dc, const MetafileRequest& request);

// What several families read.
Point ReadPoint(ByteReader& reader);
Rect ReadRect(ByteReader& reader);
Affine ReadTransform(ByteReader& reader);
/// Where a record says that its bitmap lies, in bytes from its own begin.
struct EmfDibPlace {
    std::uint32_t header_offset = 0;
    std::uint32_t header_size = 0;  ///< 0: there is no bitmap
    std::uint32_t bits_offset = 0;
    std::uint32_t bits_size = 0;
};
EmfDibPlace ReadDibPlace(ByteReader& reader);
/// The bitmap at that place; empty if there is none, nothing if the place leads outside. usage 1: its
/// palette holds indexes.
std::optional<DibSource> DibAt(const EmfRecord& record, const EmfDibPlace& place, std::uint32_t usage);
/// Region data; nothing if it is broken.
std::optional<Region> ReadRegion(ByteReader& reader);
/// Object index, of the table or the stock; monostate if there is none.
const Object& ObjectAt(const EmfPlay& play, std::uint32_t index);
