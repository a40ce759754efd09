// Reads animated Windows cursors.
#include "src/platform/image/codecs/ico/ani.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <utility>
#include <vector>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/codecs/ico/icon_directory.h"
#include "src/platform/image/codecs/ico/riff.h"
#include "src/platform/image/codecs/registry.h"
#include "src/platform/image/dib/dib.h"
#include "src/platform/image/pixels/pixel_rows.h"

static constexpr std::size_t kFormHeaderSize = 12;  // "RIFF", size, "ACON"
static constexpr std::uint32_t kFramesAreIcons = 1;

namespace
{
/// The "anih" chunk's description of frames without a header.
struct AniHeader {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint32_t bits = 0;
    std::uint32_t flags = kFramesAreIcons;
};

struct AniFile {
    AniHeader header;
    std::vector<Bytes> frames;
    std::vector<std::uint32_t> steps;  ///< frame indices; may be out of range
};
}  // namespace

static bool Sniff(Bytes head, std::string_view)
{
    ByteReader reader(head);
    const bool is_riff = reader.U32Le() == RiffId("RIFF");
    reader.U32Le();  // size; truncated files are read as far as they go
    return is_riff && reader.U32Le() == RiffId("ACON");
}

static AniHeader ReadHeader(Bytes data)
{
    AniHeader header;
    ByteReader reader(data);
    reader.Take(12);  // size, frame and step counts: we count ourselves
    header.width = reader.U32Le();
    header.height = reader.U32Le();
    header.bits = reader.U32Le();
    reader.Take(8);  // planes, rate
    const std::uint32_t flags = reader.U32Le();
    if (!reader.Failed())
        header.flags = flags;
    return header;
}

static void ReadList(Bytes data, AniFile& ani)
{
    ByteReader reader(data);
    if (reader.U32Le() != RiffId("fram"))
        return;
    for (const RiffChunk& chunk : RiffChunks(reader.Take(reader.Left()))) {
        if (chunk.id == RiffId("icon"))
            ani.frames.push_back(chunk.data);
    }
}

static AniFile ReadChunks(Bytes file)
{
    AniFile ani;
    for (const RiffChunk& chunk : RiffChunks(file.subspan(kFormHeaderSize))) {
        if (chunk.id == RiffId("anih")) {
            ani.header = ReadHeader(chunk.data);
        } else if (chunk.id == RiffId("seq ")) {
            ByteReader reader(chunk.data);
            while (reader.Left() >= 4)
                ani.steps.push_back(reader.U32Le());
        } else if (chunk.id == RiffId("LIST")) {
            ReadList(chunk.data, ani);
        }
    }
    if (ani.steps.empty()) {
        ani.steps.resize(ani.frames.size());
        std::iota(ani.steps.begin(), ani.steps.end(), 0u);
    }
    return ani;
}

// Decodes a bitmap with its own header, or bare bits described by the animation's header.
static bool DecodeBareFrame(const AniHeader& header, Bytes frame, ImageBuffer& image)
{
    ByteReader reader(frame);
    const std::uint32_t start = reader.U32Le();
    if ((start & 0xFFFF) == ('B' | 'M' << 8)) {
        InputFile file(frame);
        const Codec* bitmap = CodecOfContent(file.Head(), "");
        const std::unique_ptr<ImageDecoder> decoder = bitmap ? bitmap->open(file) : nullptr;
        return decoder && decoder->DecodeFrame(0, image);
    }
    constexpr std::uint32_t kInfoHeaderSize = 40;
    DibHeader own;
    if (start == kInfoHeaderSize && ReadDibHeader(frame, own) && own.bits_offset <= frame.size())
        return DecodeDibBits(own, frame.subspan(own.bits_offset), image);
    std::array<std::uint8_t, kInfoHeaderSize> made{};
    const auto put = [&made](std::size_t place, std::uint32_t value) {
        for (std::size_t i = 0; i < 4; ++i)
            made[place + i] = static_cast<std::uint8_t>(value >> (8 * i));
    };
    put(0, kInfoHeaderSize);
    put(4, header.width);
    put(8, header.height);
    put(12, 1 | (header.bits & 0xFFFF) << 16);
    return DecodeDib(made, frame, image);
}

static bool IsIcon(Bytes frame)
{
    return IsIconFile(frame, IconKind::kIcon) || IsIconFile(frame, IconKind::kCursor);
}

// The largest picture of a frame. That of a bare bitmap counts as 0: all of them have the animation's size.
static IconSize SizeOfFrame(Bytes frame)
{
    if (!IsIcon(frame))
        return {};
    const std::vector<IconEntry> entries = IconEntries(frame);
    return SizeOfIconEntry(frame, entries[LargestIconEntry(frame, entries)]);
}

static bool DecodeStep(const AniHeader& header, Bytes frame, ImageBuffer& image)
{
    if (IsIcon(frame)) {
        const std::vector<IconEntry> entries = IconEntries(frame);
        return DecodeIconEntry(frame, entries[LargestIconEntry(frame, entries)], image);
    }
    ImageBuffer result;
    if ((header.flags & kFramesAreIcons) != 0 || !DecodeBareFrame(header, frame, result) || !AddAlpha(result))
        return false;
    image = std::move(result);
    return true;
}

namespace
{
/// An open animation. Frames refer to the bytes that the InputFile keeps.
class AniDecoder : public ImageDecoder
{
public:
    explicit AniDecoder(AniFile ani) : ani_(std::move(ani)) {}

    std::int32_t FrameCount() override { return static_cast<std::int32_t>(ani_.steps.size()); }

    std::int32_t MainFrame() override
    {
        std::vector<IconSize> sizes;
        for (const Bytes frame : ani_.frames)
            sizes.push_back(SizeOfFrame(frame));
        const auto size_of_step = [&sizes](std::uint32_t step) {
            return step < sizes.size() ? sizes[step] : IconSize{};
        };
        const auto largest = std::max_element(
            ani_.steps.begin(), ani_.steps.end(),
            [&](std::uint32_t a, std::uint32_t b) { return size_of_step(a) < size_of_step(b); });
        return static_cast<std::int32_t>(largest - ani_.steps.begin());
    }

    bool DecodeFrame(std::int32_t frame, ImageBuffer& image) override
    {
        if (frame < 0 || frame >= FrameCount())
            return false;
        const std::uint32_t frame_index = ani_.steps[static_cast<std::size_t>(frame)];
        return frame_index < ani_.frames.size() && DecodeStep(ani_.header, ani_.frames[frame_index], image);
    }

private:
    AniFile ani_;
};
}  // namespace

static std::unique_ptr<ImageDecoder> Open(InputFile& file)
{
    const Bytes bytes = file.All();
    if (!Sniff(bytes, ""))
        return nullptr;
    AniFile ani = ReadChunks(bytes);
    if (ani.frames.empty())
        return nullptr;
    return std::make_unique<AniDecoder>(std::move(ani));
}

const Codec kAniCodec{FileType::kAni, true, false, Sniff, Open, nullptr};
