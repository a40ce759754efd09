// Reads and writes the metadata chunks of a PNG.
#include "src/platform/image/codecs/png/png_metadata.h"

#include <libdeflate.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

#include "src/platform/files/output_file.h"
#include "src/platform/image/codecs/png/png_chunks.h"
#include "src/platform/image/colour/colour_profile.h"
#include "src/platform/image/metadata/metadata.h"
#include "src/platform/image/metadata/raw_profile.h"

static constexpr std::string_view kXmpKeyword = "XML:com.adobe.xmp";
static constexpr std::string_view kExifMark("Exif\0\0", 6);
static constexpr int kLevel = 9;  // maximum compression: profiles and packets are small

static std::string_view AsText(Bytes bytes)
{
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

static Bytes AsBytes(std::string_view text)
{
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

// The uncompressed size isn't stored, so the buffer is enlarged until the data fits.
static std::vector<std::uint8_t> Inflate(Bytes packed)
{
    const std::unique_ptr<libdeflate_decompressor, void (*)(libdeflate_decompressor*)> inflater(
        libdeflate_alloc_decompressor(), &libdeflate_free_decompressor);
    if (!inflater)
        return {};
    std::vector<std::uint8_t> result;
    for (std::size_t room = 32 * 1024; room <= kMaxPngMetadata; room *= 4) {
        result.resize(room);
        std::size_t length = 0;
        const auto outcome = libdeflate_zlib_decompress(inflater.get(), packed.data(), packed.size(),
                                                        result.data(), result.size(), &length);
        if (outcome == LIBDEFLATE_SUCCESS) {
            result.resize(length);
            return result;
        }
        if (outcome != LIBDEFLATE_INSUFFICIENT_SPACE)
            break;
    }
    return {};
}

static std::vector<std::uint8_t> Deflate(Bytes plain)
{
    const std::unique_ptr<libdeflate_compressor, void (*)(libdeflate_compressor*)> deflater(
        libdeflate_alloc_compressor(kLevel), &libdeflate_free_compressor);
    if (!deflater)
        return {};
    std::vector<std::uint8_t> result(libdeflate_zlib_compress_bound(deflater.get(), plain.size()));
    result.resize(
        libdeflate_zlib_compress(deflater.get(), plain.data(), plain.size(), result.data(), result.size()));
    return result;
}

// Splits off the text before the next NUL, and the NUL. Without a NUL, rest becomes empty.
static std::string_view TakeField(Bytes& rest)
{
    const auto end = std::find(rest.begin(), rest.end(), 0);
    const std::string_view field = AsText(rest).substr(0, static_cast<std::size_t>(end - rest.begin()));
    rest = end == rest.end() ? Bytes{} : rest.subspan(field.size() + 1);
    return field;
}

std::vector<std::uint8_t> PngProfile(Bytes chunk)
{
    TakeField(chunk);  // profile name
    if (chunk.empty() || chunk[0] != 0)
        return {};
    return Inflate(chunk.subspan(1));
}

void ReadPngExif(Bytes chunk, ImageMetadata& metadata)
{
    if (AsText(chunk).starts_with(kExifMark))
        chunk = chunk.subspan(kExifMark.size());
    const std::string_view block = AsText(chunk);
    const bool is_tiff =
        block.starts_with(std::string_view("II*\0", 4)) || block.starts_with(std::string_view("MM\0*", 4));
    if (is_tiff && metadata.exif.empty())
        metadata.exif.assign(chunk.begin(), chunk.end());
}

static void ReadXmp(Bytes packet, ImageMetadata& metadata)
{
    if (metadata.xmp.empty())
        metadata.xmp.assign(packet.begin(), packet.end());
}

static void ReadRawProfile(std::string_view kind, Bytes text, ImageMetadata& metadata)
{
    static constexpr std::string_view kXmpMark("http://ns.adobe.com/xap/1.0/\0", 29);
    const std::vector<std::uint8_t> block = FromRawProfile(AsText(text));
    if (kind == "exif" || (kind == "APP1" && AsText(block).starts_with(kExifMark)))
        ReadPngExif(block, metadata);
    else if (kind == "APP1" && AsText(block).starts_with(kXmpMark))
        ReadXmp(Bytes(block).subspan(kXmpMark.size()), metadata);
    else if (kind == "xmp")
        ReadXmp(block, metadata);
    else if (kind == "iptc" && metadata.iptc.empty())
        metadata.iptc = IptcOfResources(block);
}

void ReadPngText(std::uint32_t type, Bytes chunk, ImageMetadata& metadata)
{
    const std::string_view keyword = TakeField(chunk);
    const bool is_xmp = keyword == kXmpKeyword;
    if (!is_xmp && !keyword.starts_with(kRawProfilePrefix))
        return;
    bool packed = type == PngType("zTXt");
    if (type == PngType("iTXt")) {
        if (chunk.size() < 2)
            return;
        packed = chunk[0] == 1;
        chunk = chunk.subspan(1);
    }
    if (packed || type == PngType("iTXt")) {
        if (chunk.empty() || chunk[0] != 0)  // method 0, deflate, is the only one
            return;
        chunk = chunk.subspan(1);
    }
    if (type == PngType("iTXt")) {
        TakeField(chunk);  // language
        TakeField(chunk);  // translated keyword
    }
    std::vector<std::uint8_t> plain;
    if (packed) {
        plain = Inflate(chunk);
        chunk = plain;
    }
    if (is_xmp)
        ReadXmp(chunk, metadata);
    else
        ReadRawProfile(keyword.substr(kRawProfilePrefix.size()), chunk, metadata);
}

// Converts to Latin-1, the encoding of tEXt. False for other characters or invalid UTF-8.
static bool ToLatin1(std::string_view text, std::string& latin1)
{
    latin1.clear();
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<std::uint8_t>(text[i]);
        if (byte < 0x80) {
            latin1 += text[i];
            continue;
        }
        const bool two_bytes =
            (byte == 0xC2 || byte == 0xC3) && i + 1 < text.size() && (text[i + 1] & 0xC0) == 0x80;
        if (!two_bytes)
            return false;
        ++i;
        latin1 += static_cast<char>((byte & 3) << 6 | (text[i] & 0x3F));
    }
    return true;
}

static bool WriteInternational(OutputFile& out, std::string_view keyword, std::string_view text)
{
    std::string chunk(keyword);
    chunk.append(5, '\0');  // keyword terminator, uncompressed, method 0, no language, no translated keyword
    chunk += text;
    return WritePngChunk(out, PngType("iTXt"), AsBytes(chunk));
}

static bool WriteText(OutputFile& out, std::string_view keyword, std::string text)
{
    std::erase(text, '\0');  // NUL would end the text
    if (text.empty())
        return true;
    std::string latin1;
    if (!ToLatin1(text, latin1))
        return WriteInternational(out, keyword, text);
    return WritePngChunk(out, PngType("tEXt"), AsBytes(std::string(keyword) + '\0' + latin1));
}

static bool WriteTexts(OutputFile& out, const ImageInfoTexts& texts)
{
    std::string equipment = texts.sEquipmentType;
    if (!equipment.empty() && !texts.sEquipmentModel.empty())
        equipment += ' ';
    equipment += texts.sEquipmentModel;
    return WriteText(out, "Title", texts.sTitle) && WriteText(out, "Author", texts.sAuthor) &&
           WriteText(out, "Description", texts.sDescription) &&
           WriteText(out, "Copyright", texts.sCopyright) &&
           WriteText(out, "Creation Time", texts.sDateTime) && WriteText(out, "Source", equipment);
}

static bool WriteProfile(OutputFile& out, Bytes profile)
{
    const std::vector<std::uint8_t> packed = Deflate(profile);
    std::string chunk("ICC profile\0\0", 13);
    chunk += AsText(packed);
    return WritePngChunk(out, PngType("iCCP"), AsBytes(chunk));
}

static bool WriteResolution(OutputFile& out, const ImageBuffer& image)
{
    const double per_metre_x = std::round(image.dots_per_inch_x / 0.0254);
    const double per_metre_y = std::round(image.dots_per_inch_y / 0.0254);
    const auto writable = [](double per_metre) { return per_metre >= 1 && per_metre < 0x7FFFFFFF; };
    if (!writable(per_metre_x) || !writable(per_metre_y))
        return true;
    std::uint8_t chunk[9] = {0, 0, 0, 0, 0, 0, 0, 0, 1};
    for (int i = 0; i < 4; ++i) {
        chunk[i] = static_cast<std::uint8_t>(static_cast<std::uint32_t>(per_metre_x) >> (24 - 8 * i));
        chunk[4 + i] = static_cast<std::uint8_t>(static_cast<std::uint32_t>(per_metre_y) >> (24 - 8 * i));
    }
    return WritePngChunk(out, PngType("pHYs"), chunk);
}

static bool WriteIptc(OutputFile& out, Bytes iptc)
{
    const std::string text = ToRawProfile("iptc", IptcAsResource(iptc));
    const std::vector<std::uint8_t> packed = Deflate(AsBytes(text));
    const std::string chunk = std::string(kRawProfilePrefix) + "iptc" + std::string(2, '\0');
    return WritePngChunk(out, PngType("zTXt"), AsBytes(chunk + std::string(AsText(packed))));
}

bool WritePngMetadata(OutputFile& out, const ImageBuffer& image, bool is_grey, const ImageInfoTexts& texts)
{
    const ImageMetadata& metadata = image.metadata;
    const bool has_profile = !image.icc_profile.empty() && ProfileFits(image.icc_profile, is_grey ? 1 : 3);
    if (has_profile && !WriteProfile(out, image.icc_profile))
        return false;
    const std::vector<std::uint8_t> exif = ExifForSave(image, texts);
    return WriteResolution(out, image) && (exif.empty() || WritePngChunk(out, PngType("eXIf"), exif)) &&
           WriteTexts(out, texts) &&
           (metadata.xmp.empty() || WriteInternational(out, kXmpKeyword, AsText(metadata.xmp))) &&
           (metadata.iptc.empty() || WriteIptc(out, metadata.iptc));
}
