// Walks the records of a WMF and dispatches them; plays text records.
#include "src/platform/image/metafile/wmf/wmf_player.h"

#include "src/platform/image/metafile/device/device_text.h"

static constexpr std::uint64_t kCostOfRecord = 20;

static constexpr std::uint8_t kTextOut = 0x21;
static constexpr std::uint8_t kExtTextOut = 0x32;

static constexpr std::uint16_t kOptionOpaque = 2;
static constexpr std::uint16_t kOptionClipped = 4;
static constexpr std::uint16_t kOptionSteps2D = 0x2000;

Point ReadPointYx(ByteReader& reader)
{
    const double y = reader.I16Le();
    return {static_cast<double>(reader.I16Le()), y};
}

Rect ReadReversedRect(ByteReader& reader)
{
    const Point end = ReadPointYx(reader);
    const Point start = ReadPointYx(reader);
    return {start.x, start.y, end.x, end.y};
}

const Object& ObjectAt(const WmfPlay& play, std::uint32_t index)
{
    static const Object kNone;
    return index < play.objects.size() ? play.objects[index] : kNone;
}

static std::uint8_t CharSet(const DeviceContext& dc)
{
    return dc.state.font ? dc.state.font->char_set : 0;
}

static Outcome TextOut(DeviceContext& dc, ByteReader& reader)
{
    const std::uint64_t count = reader.U16Le();
    const Bytes text = reader.Take(count);
    reader.Take(count & 1);
    TextRun run;
    run.reference = ReadPointYx(reader);
    if (reader.Failed())
        return Outcome::kBroken;
    run.text = DecodeBytes(text, CharSet(dc));
    return DrawText(dc, run) ? Outcome::kDone : Outcome::kGivingUp;
}

static Outcome ExtTextOut(DeviceContext& dc, ByteReader& reader)
{
    TextRun run;
    run.reference = ReadPointYx(reader);
    const std::uint64_t count = reader.U16Le();
    const std::uint16_t options = reader.U16Le();
    run.fill_box = (options & kOptionOpaque) != 0;
    run.clip_to_box = (options & kOptionClipped) != 0;
    if (run.fill_box || run.clip_to_box) {
        // Unlike others, this rectangle is stored left to right.
        const double left = reader.I16Le();
        const double top = reader.I16Le();
        const double right = reader.I16Le();
        run.box = Rect{left, top, right, static_cast<double>(reader.I16Le())};
    }
    const Bytes text = reader.Take(count);
    if (reader.Failed())
        return Outcome::kBroken;
    run.text = DecodeBytes(text, CharSet(dc));
    reader.Take(std::min<std::uint64_t>(count & 1, reader.Left()));
    // The distances are optional.
    const bool two_dimensional = (options & kOptionSteps2D) != 0;
    if (reader.Left() >= count * (two_dimensional ? 4 : 2))
        for (std::uint64_t n = 0; n < count; ++n) {
            const double along = reader.I16Le();
            run.steps.push_back({along, two_dimensional ? -static_cast<double>(reader.I16Le()) : 0});
        }
    return DrawText(dc, run) ? Outcome::kDone : Outcome::kGivingUp;
}

Outcome PlayWmfText(WmfPlay& play, const WmfRecord& record)
{
    ByteReader reader = record.Data();
    switch (record.Number()) {
        case kTextOut:
            return TextOut(play.dc, reader);
        case kExtTextOut:
            return ExtTextOut(play.dc, reader);
        default:
            return Outcome::kNotMine;
    }
}

static Outcome Play(WmfPlay& play, const WmfRecord& record)
{
    for (const auto family : {PlayWmfShape, PlayWmfState, PlayWmfObject, PlayWmfText, PlayWmfBitmap}) {
        const Outcome result = family(play, record);
        if (result != Outcome::kNotMine)
            return result;
    }
    return Outcome::kDone;  // skip unknown records and those that draw nothing
}

bool PlayWmf(DeviceContext& dc, const MetafileRequest& request)
{
    WmfPlay play(dc);
    Bytes left = request.records;
    bool skipped = false;
    for (;;) {
        ByteReader reader(left);
        const std::uint64_t size = std::uint64_t{reader.U32Le()} * 2;
        WmfRecord record;
        record.function = reader.U16Le();
        if (reader.Failed() || size < 6 || size > left.size() || !dc.Work().Spend(kCostOfRecord + size / 16))
            return false;
        if (record.function == 0)  // an empty page is fine unless its contents were skipped
            return !skipped || !dc.Target().Touched().Empty();
        record.parameters = left.subspan(6, size - 6);
        left = left.subspan(size);
        const Outcome outcome = Play(play, record);
        if (outcome == Outcome::kGivingUp || dc.Work().Spent() || dc.Target().Failed())
            return false;
        skipped = skipped || outcome == Outcome::kBroken;
    }
}
