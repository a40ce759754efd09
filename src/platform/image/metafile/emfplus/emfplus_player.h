// Plays the EMF+ records in the comments of an EMF.
// Room: platform/image/metafile/emfplus.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "src/platform/image/metafile/device/device_context.h"
#include "src/platform/image/metafile/emfplus/graphics.h"
#include "src/platform/image/metafile/emfplus/objects.h"

/// What the comments of a file say about its EMF+ records.
struct EmfPlusSummary {
    bool present = false;  ///< there is a header record
    bool dual = false;     ///< the EMF records draw the same picture
    bool whole = false;    ///< all records are complete, up to the end record
};

/// The EMF+ records of a comment record's data; empty for other comments.
Bytes EmfPlusRecords(Bytes comment);
/// Takes the records of the next comment into account.
void Summarise(Bytes records, EmfPlusSummary& summary);

/// A record: the low byte of flags is often an object's number.
struct PlusRecord {
    std::uint16_t type = 0;
    std::uint16_t flags = 0;
    Bytes data;

    ByteReader Data() const { return ByteReader(data); }
    bool Has(std::uint16_t flag) const { return (flags & flag) != 0; }
    std::uint32_t Id() const { return flags & 0xFF; }
};

/// Plays the file of a metafile image, whose device is mapped to the picture, within a clip. False if it
/// can't be drawn.
using NestedPlayer = std::function<bool(Bytes file, const Affine& device_to_picture, const Clip& clip)>;

/// State kept between records.
struct PlusPlay {
    PlusPlay(DeviceContext& dc, NestedPlayer player) : graphics(dc), play_metafile(std::move(player)) {}

    PlusGraphics graphics;
    NestedPlayer play_metafile;
    std::array<PlusObject, 64> objects;
    bool exhausted = false;  ///< a limit is exceeded

    /// The object of a number if it is of the type; null otherwise.
    template <typename T>
    const T* Find(std::uint32_t id) const
    {
        const auto* object =
            id < objects.size() ? std::get_if<std::shared_ptr<const T>>(&objects[id]) : nullptr;
        return object ? object->get() : nullptr;
    }
    /// The brush of a record: a number, or with color_flag set, a colour.
    const PlusBrush* BrushOf(const PlusRecord& record, std::uint32_t stored);

private:
    PlusBrush color_brush_;
};

enum class PlusOutcome { kNotMine, kDone, kBroken };

inline PlusOutcome PlusOutcomeOf(bool good)
{
    return good ? PlusOutcome::kDone : PlusOutcome::kBroken;
}

/// Each plays one family of records.
PlusOutcome PlayPlusState(PlusPlay& play, const PlusRecord& record);
PlusOutcome PlayPlusShape(PlusPlay& play, const PlusRecord& record);
PlusOutcome PlayPlusImage(PlusPlay& play, const PlusRecord& record);
PlusOutcome PlayPlusText(PlusPlay& play, const PlusRecord& record);

/// Plays the comments of one file in order.
class EmfPlusPlayer
{
public:
    EmfPlusPlayer(DeviceContext& dc, NestedPlayer play_metafile);

    /// Plays the records of a comment. False once a limit is exceeded.
    bool Play(Bytes records);
    /// True while the EMF records that follow are part of the drawing.
    bool InGdi() const { return in_gdi_; }
    /// The number of records that couldn't be drawn.
    std::uint64_t Skipped() const { return skipped_; }

private:
    PlusOutcome PlayRecord(const PlusRecord& record);
    PlusOutcome PlayObject(const PlusRecord& record);
    PlusOutcome FinishObject(std::uint16_t flags, Bytes data);

    DeviceContext& dc_;
    PlusPlay play_;
    bool in_gdi_ = false;
    std::uint64_t skipped_ = 0;
    /// An object that comes in several records, and its expected size.
    std::vector<std::uint8_t> pending_;
    std::uint32_t pending_size_ = 0;
    std::uint16_t pending_flags_ = 0;
    /// Joined objects that others refer to.
    std::vector<std::shared_ptr<const std::vector<std::uint8_t>>> joined_;
};
