// Plays the records of an EMF.
// Room: platform/image/metafile/emf.
#pragma once

#include <optional>
#include <vector>

#include "src/platform/image/metafile/device/device_context.h"

/// A record: all its bytes, starting with the type field. Data() reads the bytes after type and size.
struct EmfRecord {
    std::uint32_t type = 0;
    Bytes all;
    ByteReader Data() const { return ByteReader(all.subspan(8)); }
};

/// State kept between records.
struct EmfPlay {
    explicit EmfPlay(DeviceContext& target) : dc(target) {}

    DeviceContext& dc;
    std::vector<Object> objects;
};

enum class Outcome {
    kNotMine,
    kDone,
    kBroken,   ///< the record can't be drawn: skip it
    kGivingUp  ///< the file can't be drawn: a limit is exceeded, or no font is installed
};

inline Outcome OutcomeOf(bool good)
{
    return good ? Outcome::kDone : Outcome::kBroken;
}

/// Each plays one family of records.
Outcome PlayState(EmfPlay& play, const EmfRecord& record);
Outcome PlayClip(EmfPlay& play, const EmfRecord& record);
Outcome PlayObject(EmfPlay& play, const EmfRecord& record);
Outcome PlayShape(EmfPlay& play, const EmfRecord& record);
Outcome PlayPoints(EmfPlay& play, const EmfRecord& record);
Outcome PlayBitmap(EmfPlay& play, const EmfRecord& record);
Outcome PlayText(EmfPlay& play, const EmfRecord& record);

/// Plays all records up to the end record, skipping those that can't be drawn. False if a limit is exceeded,
/// no font is installed, or records were skipped and nothing was drawn.
///
/// A file with EMF+ records is drawn by these. A dual file holds the same picture as EMF records, too: a copy
/// for older programs, with gradients in steps and without alpha. It is used if an EMF+ record is missing or
/// can't be drawn.
bool PlayEmf(DeviceContext& dc, const MetafileRequest& request);

// Shared between the families.
Point ReadPoint(ByteReader& reader);
Rect ReadRect(ByteReader& reader);
Affine ReadTransform(ByteReader& reader);
/// The position of a record's bitmap, in bytes from the start of the record.
struct EmfDibPlace {
    std::uint32_t header_offset = 0;
    std::uint32_t header_size = 0;  ///< 0 if there is no bitmap
    std::uint32_t bits_offset = 0;
    std::uint32_t bits_size = 0;
};
EmfDibPlace ReadDibPlace(ByteReader& reader);
/// The bitmap at that position; empty if there is none, nothing if the position is out of bounds. With usage
/// 1 its colour table holds palette indexes.
std::optional<DibSource> DibAt(const EmfRecord& record, const EmfDibPlace& place, std::uint32_t usage);
/// Reads region data; nothing if it is invalid.
std::optional<Region> ReadRegion(ByteReader& reader);
/// Returns an object of the table or a stock object; monostate if there is none.
const Object& ObjectAt(const EmfPlay& play, std::uint32_t index);
