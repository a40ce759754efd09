// Reads the boxes of a JP2 file.
#include "src/platform/image/codecs/j2k/j2k_boxes.h"

#include <array>
#include <cmath>
#include <cstring>

static constexpr std::uint8_t kSignature[] = {0, 0, 0, 12, 'j', 'P', ' ', ' ', 0x0D, 0x0A, 0x87, 0x0A};
static constexpr std::uint8_t kFirstMarkers[] = {0xFF, 0x4F, 0xFF, 0x51};  // SOC, SIZ

using Uuid = std::array<std::uint8_t, 16>;
static constexpr Uuid kXmp = {0xBE, 0x7A, 0xCF, 0xCB, 0x97, 0xA9, 0x42, 0xE8,
                              0x9C, 0x71, 0x99, 0x94, 0x91, 0xE3, 0xAF, 0xAC};
static constexpr Uuid kExif = {'J', 'p', 'g', 'T', 'i', 'f', 'f', 'E',
                               'x', 'i', 'f', '-', '>', 'J', 'P', '2'};
static constexpr Uuid kIptc = {0x33, 0xC7, 0xA4, 0xD2, 0xB8, 0x1D, 0x47, 0x23,
                               0xA0, 0xBA, 0xF1, 0xA3, 0xE0, 0x97, 0xAD, 0x38};

static constexpr std::uint32_t BoxType(const char (&name)[5])
{
    std::uint32_t result = 0;
    for (std::size_t i = 0; i < 4; ++i)
        result = result << 8 | static_cast<std::uint8_t>(name[i]);
    return result;
}

bool IsCodestream(Bytes head)
{
    return head.size() >= sizeof kFirstMarkers &&
           std::memcmp(head.data(), kFirstMarkers, sizeof kFirstMarkers) == 0;
}

bool IsJp2(Bytes head)
{
    return head.size() >= sizeof kSignature && std::memcmp(head.data(), kSignature, sizeof kSignature) == 0;
}

namespace
{
struct Box {
    std::uint32_t type = 0;
    bool whole = false;  ///< false if the box is truncated
    Bytes content;
};
}  // namespace

// A length of 1 means that an 8-byte length follows; 0 means that the box extends to the end of the file.
static bool NextBox(ByteReader& reader, Box& box)
{
    std::uint64_t length = reader.U32Be();
    box.type = reader.U32Be();
    std::uint64_t header = 8;
    if (length == 1) {
        length = std::uint64_t{reader.U32Be()} << 32;
        length |= reader.U32Be();
        header = 16;
    } else if (length == 0) {
        length = header + reader.Left();
    }
    if (reader.Failed() || length < header)
        return false;
    box.whole = length - header <= reader.Left();
    box.content = reader.Take(box.whole ? length - header : reader.Left());
    return true;
}

// A resolution box stores numerator, denominator and exponent of the dots per metre, vertically and
// horizontally.
static void ReadResolution(Bytes content, J2kFile& file)
{
    ByteReader reader(content);
    const double down_over = reader.U16Be(), down_under = reader.U16Be(), across_over = reader.U16Be(),
                 across_under = reader.U16Be();
    const int down_power = static_cast<std::int8_t>(reader.U8()),
              across_power = static_cast<std::int8_t>(reader.U8());
    if (reader.Failed() || down_over == 0 || down_under == 0 || across_over == 0 || across_under == 0)
        return;
    file.dots_per_inch_x = across_over / across_under * std::pow(10, across_power) * 0.0254;
    file.dots_per_inch_y = down_over / down_under * std::pow(10, down_power) * 0.0254;
}

// OpenJPEG reads most of the header box, but not the resolutions: as captured ("resc") and for display
// ("resd"). The latter wins if both are present.
static void ReadHeaderBox(Bytes content, J2kFile& file)
{
    ByteReader reader(content);
    Box box;
    while (NextBox(reader, box)) {
        if (box.type != BoxType("res "))
            continue;
        ByteReader inner_reader(box.content);
        Box inner;
        bool to_show = false;
        while (NextBox(inner_reader, inner)) {
            const bool show = inner.type == BoxType("resd");
            if (show || (inner.type == BoxType("resc") && !to_show))
                ReadResolution(inner.content, file);
            to_show = to_show || show;
        }
    }
}

static void ReadUuidBox(Bytes content, ImageMetadata& metadata)
{
    if (content.size() <= sizeof(Uuid))
        return;
    const auto is = [&](const Uuid& uuid) {
        return std::memcmp(content.data(), uuid.data(), uuid.size()) == 0;
    };
    Bytes block = content.subspan(sizeof(Uuid));
    if (is(kExif)) {
        // Some writers keep the prefix that the block has in JPEG files.
        static constexpr std::uint8_t kJpegHeader[] = {'E', 'x', 'i', 'f', 0, 0};
        if (block.size() > sizeof kJpegHeader &&
            std::memcmp(block.data(), kJpegHeader, sizeof kJpegHeader) == 0)
            block = block.subspan(sizeof kJpegHeader);
        metadata.exif.assign(block.begin(), block.end());
    } else if (is(kXmp)) {
        metadata.xmp.assign(block.begin(), block.end());
    } else if (is(kIptc) && block[0] == 0x1C) {
        metadata.iptc.assign(block.begin(), block.end());
    }
}

bool ReadBoxes(Bytes bytes, J2kFile& file)
{
    if (IsCodestream(bytes)) {
        file.codestream = bytes;
        return true;
    }
    if (!IsJp2(bytes))
        return false;
    file.is_jp2 = true;
    ByteReader reader(bytes);
    Box box;
    while (NextBox(reader, box)) {
        if (box.type == BoxType("jp2c") && file.codestream.empty()) {
            if (!IsCodestream(box.content))
                return false;
            file.codestream = box.content;
        } else if (box.type == BoxType("jp2h")) {
            ReadHeaderBox(box.content, file);
        } else if (box.type == BoxType("uuid") && box.whole) {
            ReadUuidBox(box.content, file.metadata);
        }
    }
    return !file.codestream.empty();
}
