// Reads a WMF's headers and checks its records.
#include "src/platform/image/codecs/metafile/wmf_header.h"

static constexpr std::uint32_t kPlaceable = 0x9AC6CDD7;
static constexpr std::uint64_t kPlaceableSize = 22;
static constexpr std::uint16_t kHeaderWords = 9;
static constexpr std::uint8_t kSetMapMode = 0x03;
static constexpr std::uint8_t kSetWindowOrg = 0x0B;
static constexpr std::uint8_t kSetWindowExt = 0x0C;
static constexpr std::uint8_t kSetViewportExt = 0x0E;

static constexpr std::uint16_t kEscape = 0x0626;
static constexpr std::uint16_t kCommentEscape = 15;
static constexpr std::uint32_t kEmfCommentMark = 0x43464D57;  // "WMFC"
static constexpr std::uint32_t kEmfCommentType = 1;

static bool IsPlainHeader(Bytes head)
{
    ByteReader reader(head);
    const std::uint16_t kind = reader.U16Le();
    const std::uint16_t words = reader.U16Le();
    const std::uint16_t version = reader.U16Le();
    reader.Take(4 + 2 + 4 + 2);
    return !reader.Failed() && (kind == 1 || kind == 2) && words == kHeaderWords &&
           (version == 0x0100 || version == 0x0300);
}

bool IsWmf(Bytes head)
{
    if (ByteReader(head).U32Le() == kPlaceable)
        return head.size() > kPlaceableSize && IsPlainHeader(head.subspan(kPlaceableSize));
    return IsPlainHeader(head);
}

std::optional<WmfHeader> ReadWmfHeader(Bytes file)
{
    if (!IsWmf(file))
        return std::nullopt;
    WmfHeader header;
    ByteReader reader(file);
    header.placeable = reader.U32Le() == kPlaceable;
    if (header.placeable) {
        reader.U16Le();  // handle
        header.left = reader.I16Le();
        header.top = reader.I16Le();
        header.width = reader.I16Le() - header.left;
        header.height = reader.I16Le() - header.top;
        header.units_per_inch = reader.U16Le();
        reader.Take(4 + 2);  // reserved; checksum, which many writers get wrong
    } else
        reader = ByteReader(file);
    reader.Take(2 + 2 + 2 + 4);  // kind, words, version, size
    header.objects = reader.U16Le();
    reader.Take(4 + 2);
    header.records_offset = file.size() - reader.Left();
    if (reader.Failed() || (header.placeable && (header.width == 0 || header.height == 0)))
        return std::nullopt;
    return header;
}

WmfRecords WalkWmf(Bytes records)
{
    WmfRecords result;
    for (;;) {
        ByteReader reader(records);
        const std::uint64_t size = std::uint64_t{reader.U32Le()} * 2;
        const std::uint16_t function = reader.U16Le();
        if (reader.Failed() || size < 6 || size > records.size())
            return result;
        const auto number = static_cast<std::uint8_t>(function);
        const std::int16_t y = reader.I16Le();
        const std::int16_t x = reader.I16Le();
        if (number == kSetWindowOrg && size >= 10 && !result.window_left) {
            result.window_left = x;
            result.window_top = y;
        } else if (number == kSetWindowExt && size >= 10 && !result.window_width && x != 0 && y != 0) {
            result.window_width = x;
            result.window_height = y;
        } else if (number == kSetViewportExt && size >= 10 && !result.viewport_width && x != 0 && y != 0) {
            result.viewport_width = x;
            result.viewport_height = y;
        } else if (number == kSetMapMode && size >= 8 && !result.map_mode)
            result.map_mode = y;
        if (function == 0) {
            result.whole = true;
            return result;
        }
        records = records.subspan(size);
    }
}

std::vector<std::uint8_t> EmbeddedEmf(Bytes records)
{
    std::vector<std::uint8_t> emf;
    for (;;) {
        ByteReader reader(records);
        const std::uint64_t size = std::uint64_t{reader.U32Le()} * 2;
        const std::uint16_t function = reader.U16Le();
        if (reader.Failed() || size < 6 || size > records.size() || function == 0)
            return {};
        ByteReader comment(records.subspan(6, size - 6));
        records = records.subspan(size);
        const bool is_comment = function == kEscape && comment.U16Le() == kCommentEscape;
        comment.U16Le();  // bytes that follow
        if (!is_comment || comment.U32Le() != kEmfCommentMark || comment.U32Le() != kEmfCommentType)
            continue;
        comment.Take(4 + 2 + 4 + 4);  // version, checksum, flags, number of pieces
        const std::uint32_t piece = comment.U32Le();
        const std::uint32_t left = comment.U32Le();
        const std::uint32_t whole = comment.U32Le();
        const Bytes bytes = comment.Take(piece);
        if (comment.Failed() || emf.size() + bytes.size() + left != whole)
            return {};
        emf.insert(emf.end(), bytes.begin(), bytes.end());
        if (left == 0)
            return emf;
    }
}
