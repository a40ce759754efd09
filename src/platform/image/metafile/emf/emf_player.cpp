// Walks the records of an EMF and dispatches them.
#include "src/platform/image/metafile/emf/emf_player.h"

#include <array>
#include <bit>

#include "src/platform/image/metafile/emfplus/emfplus_player.h"

static constexpr std::uint32_t kHeaderRecord = 1;
static constexpr std::uint32_t kLeastHeader = 88;
static constexpr std::uint32_t kEmfMark = 0x464D4520;  // " EMF"
static constexpr std::uint32_t kEndOfFile = 14;
static constexpr std::uint32_t kComment = 70;

static constexpr std::uint32_t kDibHeader = 40;
static constexpr std::uint32_t kDibHeaderWithMasks = 52;

// Even a no-op record must be read.
static constexpr std::uint64_t kCostOfRecord = 20;

Point ReadPoint(ByteReader& reader)
{
    const double x = reader.I32Le();
    return {x, static_cast<double>(reader.I32Le())};
}

Rect ReadRect(ByteReader& reader)
{
    const Point a = ReadPoint(reader);
    const Point b = ReadPoint(reader);
    return {a.x, a.y, b.x, b.y};
}

Affine ReadTransform(ByteReader& reader)
{
    std::array<double, 6> a{};
    for (double& d : a)
        d = std::bit_cast<float>(reader.U32Le());
    return {a[0], a[1], a[2], a[3], a[4], a[5]};
}

EmfDibPlace ReadDibPlace(ByteReader& reader)
{
    EmfDibPlace place;
    place.header_offset = reader.U32Le();
    place.header_size = reader.U32Le();
    place.bits_offset = reader.U32Le();
    place.bits_size = reader.U32Le();
    return place;
}

std::optional<DibSource> DibAt(const EmfRecord& record, const EmfDibPlace& place, std::uint32_t usage)
{
    if (place.header_size == 0)
        return DibSource{};
    const std::uint64_t record_index = record.all.size();
    if (std::uint64_t{place.header_offset} + place.header_size > record_index ||
        place.bits_offset > record_index)
        return std::nullopt;
    // Some writers give a wrong size, such as one without the last row's padding: take what is there.
    const std::uint64_t bits = std::min<std::uint64_t>(place.bits_size, record_index - place.bits_offset);
    // Others count colour masks behind the header as a part of neither the header nor the bits.
    const std::uint64_t space = std::max(place.header_offset, place.bits_offset) - place.header_offset;
    const std::uint64_t header = place.header_size == kDibHeader && space >= kDibHeaderWithMasks
                                     ? kDibHeaderWithMasks
                                     : place.header_size;
    return DibSource{record.all.subspan(place.header_offset, header),
                     record.all.subspan(place.bits_offset, bits), usage == 1};
}

std::optional<Region> ReadRegion(ByteReader& reader)
{
    const std::uint32_t header = reader.U32Le();
    reader.U32Le();  // type: always rectangles
    const std::uint32_t count = reader.U32Le();
    reader.U32Le();    // size of the rectangles
    ReadRect(reader);  // bounds
    if (header > 32)
        reader.Take(header - 32);
    if (reader.Failed() || header < 32 || reader.Left() / 16 < count)
        return std::nullopt;
    Region region;
    region.rects.reserve(count);
    for (std::uint32_t n = 0; n < count; ++n)
        region.rects.push_back(ReadRect(reader));
    return region;
}

const Object& ObjectAt(const EmfPlay& play, std::uint32_t index)
{
    static const Object kNone;
    return index < play.objects.size() ? play.objects[index] : kNone;
}

static Outcome Play(EmfPlay& play, const EmfRecord& record)
{
    for (const auto family : {PlayPoints, PlayState, PlayObject, PlayShape, PlayClip, PlayText, PlayBitmap}) {
        const Outcome result = family(play, record);
        if (result != Outcome::kNotMine)
            return result;
    }
    return Outcome::kDone;  // skip unknown records and those that draw nothing
}

// Takes the next record off records; false if it is incomplete.
static bool TakeRecord(Bytes& records, EmfRecord& record)
{
    ByteReader reader(records);
    record.type = reader.U32Le();
    const std::uint32_t size = reader.U32Le();
    if (reader.Failed() || size < 8 || size > records.size())
        return false;
    record.all = records.first(size);
    records = records.subspan(size);
    return true;
}

static EmfPlusSummary SummaryOf(Bytes records)
{
    EmfPlusSummary summary;
    EmfRecord record;
    while (TakeRecord(records, record) && record.type != kEndOfFile)
        if (record.type == kComment)
            Summarise(EmfPlusRecords(record.all.subspan(8)), summary);
    return summary;
}

namespace
{
/// How playing a file ended.
struct PlayResult {
    bool finished = false;  ///< no limit was exceeded
    bool skipped = false;   ///< records couldn't be drawn
};
}  // namespace

// Plays the EMF records; with plus, the EMF+ records and those EMF records that are part of their drawing.
static PlayResult PlayRecords(DeviceContext& dc, const MetafileRequest& request, EmfPlusPlayer* plus)
{
    EmfPlay play(dc);
    // Slot 0 is the metafile itself.
    play.objects.resize(std::min<std::uint32_t>(request.objects, 65535) + 1);
    PlayResult result;
    Bytes left = request.records;
    EmfRecord record;
    for (;;) {
        if (!TakeRecord(left, record) || !dc.Work().Spend(kCostOfRecord + record.all.size() / 16))
            return result;
        if (record.type == kEndOfFile)
            break;
        if (plus && record.type == kComment) {
            const Bytes records = EmfPlusRecords(record.all.subspan(8));
            if (!records.empty() && !plus->Play(records))
                return result;
            continue;
        }
        if (plus && !plus->InGdi())
            continue;
        const Outcome outcome = Play(play, record);
        if (outcome == Outcome::kGivingUp || dc.Work().Spent() || dc.Target().Failed())
            return result;
        result.skipped = result.skipped || outcome == Outcome::kBroken;
    }
    result.skipped = result.skipped || (plus && plus->Skipped() > 0);
    result.finished = true;
    return result;
}

// Metafiles may hold metafiles, each a part of the last one.
static constexpr int kMaxDepth = 4;

static bool PlayNested(DeviceContext& outer, Bytes file, const Affine& device_to_picture, const Clip& clip,
                       int depth);

static PlayResult PlayEmfPlus(DeviceContext& dc, const MetafileRequest& request, int depth)
{
    EmfPlusPlayer plus(dc, [&dc, depth](Bytes file, const Affine& device_to_picture, const Clip& clip) {
        return PlayNested(dc, file, device_to_picture, clip, depth + 1);
    });
    return PlayRecords(dc, request, &plus);
}

// Plays an EMF that is an image of another one. Unlike the outer file, it can't be started again.
static bool PlayNested(DeviceContext& outer, Bytes file, const Affine& device_to_picture, const Clip& clip,
                       int depth)
{
    ByteReader reader(file);
    const bool is_header = reader.U32Le() == kHeaderRecord && reader.U32Le() >= kLeastHeader;
    reader.Take(8 * 4);  // bounds, frame
    const bool is_emf = reader.U32Le() == kEmfMark;
    reader.Take(3 * 4);  // version, size, records
    MetafileRequest request = outer.Request();
    request.records = file;
    request.objects = reader.U16Le();
    reader.Take(2 + 3 * 4);  // reserved, description, palette
    const double width = reader.I32Le();
    const double height = reader.I32Le();
    const double millimetres_x = reader.I32Le();
    const double millimetres_y = reader.I32Le();
    if (depth > kMaxDepth || reader.Failed() || !is_header || !is_emf)
        return false;
    if (width > 0 && height > 0 && millimetres_x > 0 && millimetres_y > 0) {
        request.dots_per_millimetre_x = width / millimetres_x;
        request.dots_per_millimetre_y = height / millimetres_y;
    }
    DeviceContext dc(outer.Target(), request);
    dc.Nest(device_to_picture, clip);
    const EmfPlusSummary summary = SummaryOf(file);
    const PlayResult result =
        summary.whole ? PlayEmfPlus(dc, request, depth) : PlayRecords(dc, request, nullptr);
    return result.finished && !result.skipped;
}

bool PlayEmf(DeviceContext& dc, const MetafileRequest& request)
{
    const EmfPlusSummary summary = SummaryOf(request.records);
    Canvas& canvas = dc.Target();
    if (summary.present && (summary.whole || !summary.dual)) {
        DeviceContext plus_dc(canvas, request);
        const PlayResult result = PlayEmfPlus(plus_dc, request, 0);
        if (!result.finished)
            return false;
        if (summary.dual ? !result.skipped : !canvas.Touched().Empty())
            return true;
        canvas.Reset();
    }
    const PlayResult result = PlayRecords(dc, request, nullptr);
    // An empty page is fine if the file is empty, but not if nothing of its contents could be drawn.
    const bool lost = result.skipped || (summary.present && !summary.dual);
    return result.finished && (!lost || !canvas.Touched().Empty());
}
