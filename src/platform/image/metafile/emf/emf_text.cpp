// Plays EMF text records.
#include "src/platform/image/metafile/device/device_text.h"
#include "src/platform/image/metafile/emf/emf_player.h"

namespace
{
enum TextRecord : std::uint32_t {
    kExtTextOutA = 83,
    kExtTextOutW = 84,
    kPolyTextOutA = 96,
    kPolyTextOutW = 97,
    kSmallTextOut = 108,
};
}  // namespace

static constexpr std::uint32_t kOptionOpaque = 2;
static constexpr std::uint32_t kOptionClipped = 4;
static constexpr std::uint32_t kOptionGlyphs = 0x10;
static constexpr std::uint32_t kOptionNoRect = 0x100;
static constexpr std::uint32_t kOptionSmallChars = 0x200;
static constexpr std::uint32_t kOptionSteps2D = 0x2000;

static std::vector<TextCharacter> Characters(const DeviceContext& dc, Bytes text, bool wide)
{
    return wide ? DecodeUtf16(text) : DecodeBytes(text, dc.state.font ? dc.state.font->char_set : 0);
}

// Draws one text object; its offsets count from the start of the record.
static Outcome DrawObject(DeviceContext& dc, const EmfRecord& record, ByteReader& reader, bool wide)
{
    TextRun run;
    run.reference = ReadPoint(reader);
    const std::uint64_t chars = reader.U32Le();
    const std::uint64_t text = reader.U32Le();
    const std::uint32_t options = reader.U32Le();
    if ((options & kOptionNoRect) == 0)
        run.box = ReadRect(reader);
    const std::uint64_t steps_offset = reader.U32Le();
    const Bytes all = record.all;
    const std::uint64_t text_size = chars * (wide ? 2 : 1);
    if (reader.Failed() || (chars > 0 && (text > all.size() || text_size > all.size() - text)))
        return Outcome::kBroken;
    run.fill_box = run.box && (options & kOptionOpaque) != 0;
    run.clip_to_box = run.box && (options & kOptionClipped) != 0;
    run.glyph_numbers = wide && (options & kOptionGlyphs) != 0;
    if (chars > 0)
        run.text = Characters(dc, all.subspan(text, text_size), wide);
    // Some writers omit the distances, or point past the end of the record: use the font's advances then.
    const bool two_dimensional = (options & kOptionSteps2D) != 0;
    const std::uint64_t steps_size = chars * (two_dimensional ? 8 : 4);
    if (steps_offset != 0 && steps_offset <= all.size() && steps_size <= all.size() - steps_offset) {
        ByteReader step_reader(all.subspan(steps_offset, steps_size));
        run.steps.reserve(chars);
        for (std::uint64_t n = 0; n < chars; ++n) {
            const double along = step_reader.I32Le();
            const double up = two_dimensional ? step_reader.I32Le() : 0;
            run.steps.push_back({along, -up});
        }
    }
    return DrawText(dc, run) ? Outcome::kDone : Outcome::kGivingUp;
}

static Outcome SmallText(DeviceContext& dc, ByteReader& reader)
{
    TextRun run;
    run.reference = ReadPoint(reader);
    const std::uint64_t chars = reader.U32Le();
    const std::uint32_t options = reader.U32Le();
    reader.Take(12);  // graphics mode and scales
    if ((options & kOptionNoRect) == 0)
        run.box = ReadRect(reader);
    // Small characters are the low bytes of UTF-16 units, not code page bytes.
    const bool small = (options & kOptionSmallChars) != 0;
    const Bytes text = reader.Take(chars * (small ? 1 : 2));
    if (reader.Failed())
        return Outcome::kBroken;
    run.fill_box = run.box && (options & kOptionOpaque) != 0;
    run.clip_to_box = run.box && (options & kOptionClipped) != 0;
    run.glyph_numbers = (options & kOptionGlyphs) != 0;
    if (small)
        for (const std::uint8_t byte : text)
            run.text.push_back({byte, 1});
    else
        run.text = DecodeUtf16(text);
    return DrawText(dc, run) ? Outcome::kDone : Outcome::kGivingUp;
}

Outcome PlayText(EmfPlay& play, const EmfRecord& record)
{
    ByteReader reader = record.Data();
    const bool wide = record.type == kExtTextOutW || record.type == kPolyTextOutW;
    switch (record.type) {
        case kExtTextOutA:
        case kExtTextOutW:
            reader.Take(16 + 12);  // bounds, graphics mode, scales
            return DrawObject(play.dc, record, reader, wide);
        case kPolyTextOutA:
        case kPolyTextOutW: {
            reader.Take(16 + 12);
            const std::uint32_t count = reader.U32Le();
            if (reader.Left() / 40 < count)
                return Outcome::kBroken;
            for (std::uint32_t n = 0; n < count; ++n)
                if (const Outcome outcome = DrawObject(play.dc, record, reader, wide);
                    outcome != Outcome::kDone)
                    return outcome;
            return Outcome::kDone;
        }
        case kSmallTextOut:
            return SmallText(play.dc, reader);
        default:
            return Outcome::kNotMine;
    }
}
