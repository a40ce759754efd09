// Walks EMF+ records, joins objects and dispatches the rest.
#include "src/platform/image/metafile/emfplus/emfplus_player.h"

static constexpr std::uint32_t kEmfPlusMark = 0x2B464D45;  // "EMF+"
static constexpr std::uint64_t kCostOfRecord = 50;
// Decoding a compressed image, per pixel.
static constexpr std::uint64_t kCostOfImagePixel = 20;

namespace
{
enum ControlRecord : std::uint16_t {
    kHeader = 0x4001,
    kEndOfFile = 0x4002,
    kComment = 0x4003,
    kGetDc = 0x4004,
    kObject = 0x4008,
};
}  // namespace

static constexpr std::uint16_t kDualFlag = 0x0001;
static constexpr std::uint16_t kContinues = 0x8000;
static constexpr std::uint16_t kColorFlag = 0x8000;

// Takes the next record off records; false if it is incomplete.
static bool TakeRecord(Bytes& records, PlusRecord& record)
{
    ByteReader reader(records);
    record.type = reader.U16Le();
    record.flags = reader.U16Le();
    const std::uint32_t size = reader.U32Le();
    const std::uint32_t data_size = reader.U32Le();
    if (reader.Failed() || size < 12 || size > records.size() || data_size > size - 12)
        return false;
    record.data = records.subspan(12, data_size);
    records = records.subspan(size);
    return true;
}

Bytes EmfPlusRecords(Bytes comment)
{
    ByteReader reader(comment);
    const std::uint32_t size = reader.U32Le();
    if (reader.U32Le() != kEmfPlusMark || reader.Failed() || size < 4)
        return {};
    return reader.Take(std::min<std::uint64_t>(size - 4, reader.Left()));
}

void Summarise(Bytes records, EmfPlusSummary& summary)
{
    PlusRecord record;
    while (!records.empty() && TakeRecord(records, record)) {
        if (record.type == kHeader) {
            summary.present = true;
            summary.dual = record.Has(kDualFlag);
        } else if (record.type == kEndOfFile)
            summary.whole = summary.present;
    }
    if (!records.empty())
        summary.whole = false;
}

const PlusBrush* PlusPlay::BrushOf(const PlusRecord& record, std::uint32_t stored)
{
    if (!record.Has(kColorFlag))
        return Find<PlusBrush>(stored);
    color_brush_ = PlusSolidBrush{stored};
    return &color_brush_;
}

EmfPlusPlayer::EmfPlusPlayer(DeviceContext& dc, NestedPlayer play_metafile)
    : dc_(dc), play_(dc, std::move(play_metafile))
{
}

PlusOutcome EmfPlusPlayer::FinishObject(std::uint16_t flags, Bytes data)
{
    const std::uint32_t id = flags & 0xFF;
    const auto kind = static_cast<ObjectKind>(flags >> 8 & 0x7F);
    if (id >= play_.objects.size())
        return PlusOutcome::kBroken;
    const auto decode = [this](Bytes file, ImageBuffer& image) {
        const auto decoder = dc_.Request().decode_image;
        return !dc_.Work().Spent() && decoder && decoder(file, image) &&
               dc_.Work().Spend(static_cast<std::uint64_t>(image.width) *
                                static_cast<std::uint64_t>(image.height) * kCostOfImagePixel);
    };
    auto object = ReadObject(kind, data, decode);
    if (!object) {
        play_.objects[id] = {};
        return PlusOutcome::kBroken;
    }
    play_.objects[id] = std::move(*object);
    return PlusOutcome::kDone;
}

// Large objects come in pieces, each with the size of the whole.
PlusOutcome EmfPlusPlayer::PlayObject(const PlusRecord& record)
{
    const auto flags = static_cast<std::uint16_t>(record.flags & ~kContinues);
    if (!record.Has(kContinues) && pending_.empty())
        return FinishObject(flags, record.data);
    ByteReader reader = record.Data();
    std::uint32_t size = pending_size_;
    if (record.Has(kContinues))
        size = reader.U32Le();
    if (reader.Failed())
        return PlusOutcome::kBroken;
    if (pending_.empty() || flags != pending_flags_) {
        pending_.clear();
        pending_flags_ = flags;
        pending_size_ = size;
    }
    const Bytes piece = reader.Take(reader.Left());
    pending_.insert(pending_.end(), piece.begin(), piece.end());
    if (record.Has(kContinues) && pending_.size() < pending_size_)
        return PlusOutcome::kDone;
    joined_.push_back(std::make_shared<const std::vector<std::uint8_t>>(std::exchange(pending_, {})));
    return FinishObject(flags, *joined_.back());
}

PlusOutcome EmfPlusPlayer::PlayRecord(const PlusRecord& record)
{
    switch (record.type) {
        case kHeader: {
            ByteReader reader = record.Data();
            reader.Take(8);  // version, flags
            const double dots_x = reader.U32Le();
            const double dots_y = reader.U32Le();
            if (!reader.Failed())
                play_.graphics.SetResolution(dots_x, dots_y);
            return PlusOutcomeOf(!reader.Failed());
        }
        case kEndOfFile:
        case kComment:
            return PlusOutcome::kDone;
        case kGetDc:
            in_gdi_ = true;
            return PlusOutcome::kDone;
        case kObject:
            return PlayObject(record);
        default:
            break;
    }
    for (const auto family : {PlayPlusState, PlayPlusShape, PlayPlusImage, PlayPlusText}) {
        const PlusOutcome outcome = family(play_, record);
        if (outcome != PlusOutcome::kNotMine)
            return outcome;
    }
    return PlusOutcome::kBroken;
}

bool EmfPlusPlayer::Play(Bytes records)
{
    in_gdi_ = false;
    PlusRecord record;
    while (!records.empty()) {
        if (!TakeRecord(records, record)) {
            ++skipped_;
            break;
        }
        if (!dc_.Work().Spend(kCostOfRecord + record.data.size() / 16))
            return false;
        if (PlayRecord(record) != PlusOutcome::kDone)
            ++skipped_;
        if (play_.exhausted || dc_.Work().Spent())
            return false;
    }
    return true;
}
