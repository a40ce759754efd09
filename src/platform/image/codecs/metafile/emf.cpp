// Recognises EMF files, passes them to the player, and decodes those that only hold a bitmap.
#include "src/platform/image/codecs/metafile/emf.h"

#include <algorithm>
#include <cmath>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/base/limits.h"
#include "src/platform/image/codecs/metafile/embedded_image.h"
#include "src/platform/image/codecs/metafile/emf_header.h"
#include "src/platform/image/codecs/metafile/metafile_dib.h"
#include "src/platform/image/codecs/metafile/metafile_module.h"
#include "src/platform/image/codecs/single_page.h"
#include "src/platform/image/dib/dib.h"

static constexpr double kPixelsPerInch = 96;
static constexpr std::int32_t kMaxDrawingSide = 8192;
// A frame of more than 50 metres is a corrupt header.
static constexpr std::int32_t kMaxFrameSide = 200'000;

static constexpr std::uint32_t kEndRecord = 14;
static constexpr std::uint32_t kSetStretchBltMode = 21;
static constexpr std::uint32_t kComment = 70;
static constexpr std::uint32_t kStretchDibits = 81;
static constexpr std::uint32_t kSourceCopy = 0x00CC0020;

static bool Sniff(Bytes head, std::string_view)
{
    return IsEmf(head);
}

// Maps device pixels to picture pixels.
static void SetMapping(const EmfHeader& header, MetafileRequest& request)
{
    const double pixel_x = header.width / header.frame_width;
    const double pixel_y = header.height / header.frame_height;
    request.scale_x = 100 / header.dots_per_millimetre_x * pixel_x;
    request.scale_y = 100 / header.dots_per_millimetre_y * pixel_y;
    request.offset_x = -header.frame_left * pixel_x;
    request.offset_y = -header.frame_top * pixel_y;
    request.dots_per_millimetre_x = header.dots_per_millimetre_x;
    request.dots_per_millimetre_y = header.dots_per_millimetre_y;
}

// Decodes the bitmap of a record that draws all of it over the whole picture.
static bool DecodeCoveringBitmap(Bytes record, const EmfHeader& header, const MetafileRequest& request,
                                 ImageBuffer& image)
{
    ByteReader reader(record);
    reader.Take(8 + 16);  // type, size, bounds
    const double left = reader.I32Le();
    const double top = reader.I32Le();
    const std::int32_t source_x = reader.I32Le();
    const std::int32_t source_y = reader.I32Le();
    const std::int32_t source_width = reader.I32Le();
    const std::int32_t source_height = reader.I32Le();
    const std::uint64_t header_offset = reader.U32Le();
    const std::uint64_t header_size = reader.U32Le();
    const std::uint64_t bits_offset = reader.U32Le();
    const std::uint64_t bits_size = reader.U32Le();
    const std::uint32_t usage = reader.U32Le();
    const std::uint32_t rop = reader.U32Le();
    const double width = reader.I32Le();
    const double height = reader.I32Le();
    const auto at = [](double scale, double offset, double d, double wanted) {
        return std::floor(d * scale + offset + 0.5) == wanted;
    };
    const bool placed = at(request.scale_x, request.offset_x, left, 0) &&
                        at(request.scale_y, request.offset_y, top, 0) &&
                        at(request.scale_x, request.offset_x, left + width, header.width) &&
                        at(request.scale_y, request.offset_y, top + height, header.height);
    const bool whole =
        source_x == 0 && source_y == 0 && source_width == header.width && source_height == header.height;
    if (reader.Failed() || !placed || !whole || usage != 0 || rop != kSourceCopy ||
        header_offset + header_size > record.size() || bits_offset + bits_size > record.size())
        return false;
    return DecodeOnlyBitmap(record.subspan(header_offset, header_size),
                            record.subspan(bits_offset, bits_size), header.width, header.height, image);
}

// Decodes a metafile that only draws one bitmap without the player; a grey bitmap stays grey.
static bool DecodeIfOnlyBitmap(Bytes file, const EmfHeader& header, const MetafileRequest& request,
                               ImageBuffer& image)
{
    Bytes picture;
    Bytes left = file.subspan(header.size);
    for (;;) {
        ByteReader reader(left);
        const std::uint32_t type = reader.U32Le();
        const std::uint32_t size = reader.U32Le();
        if (type == kEndRecord)
            break;
        if (type == kStretchDibits && picture.empty())
            picture = left.first(size);
        else if (type != kSetStretchBltMode && type != kComment)
            return false;
        left = left.subspan(size);
    }
    return !picture.empty() && DecodeCoveringBitmap(picture, header, request, image);
}

// The longer side of the largest bitmap that is drawn.
static std::int32_t LongestBitmapSide(Bytes file)
{
    std::int32_t longest = 0;
    for (Bytes left = file;;) {
        ByteReader reader(left);
        const std::uint32_t type = reader.U32Le();
        const std::uint32_t size = reader.U32Le();
        if (type == kEndRecord)
            return longest;
        if (type == kStretchDibits) {
            reader.Take(32);  // bounds, target and source corners
            const std::int32_t width = reader.I32Le();
            longest = std::max({longest, width, reader.I32Le()});
        }
        left = left.subspan(size);
    }
}

// Some programs give drawings a frame of several metres. More pixels show no more of lines and texts, but do
// of bitmaps.
static void LimitSize(Bytes file, EmfHeader& header)
{
    const std::int32_t longer = std::max(header.width, header.height);
    const std::int32_t limit = std::max(kMaxDrawingSide, LongestBitmapSide(file));
    if (longer <= limit)
        return;
    const double scale = static_cast<double>(limit) / longer;
    header.width = std::max(1, static_cast<std::int32_t>(std::lround(header.width * scale)));
    header.height = std::max(1, static_cast<std::int32_t>(std::lround(header.height * scale)));
}

bool DecodeEmf(Bytes bytes, ImageBuffer& image)
{
    auto found = ReadEmfHeader(bytes);
    if (!found || std::max(found->width, found->height) > kMaxFrameSide || !IsWholeEmf(bytes))
        return false;
    EmfHeader& header = *found;
    LimitSize(bytes, header);
    const auto width = static_cast<std::uint64_t>(header.width);
    const auto height = static_cast<std::uint64_t>(header.height);
    if (!IsSizeAllowed(width, height))
        return false;
    MetafileRequest request;
    request.enhanced = true;
    request.records = bytes;
    request.objects = header.objects;
    request.width = header.width;
    request.height = header.height;
    request.decode_dib = DecodeDib;
    request.decode_image = DecodeEmbeddedImage;
    SetMapping(header, request);
    ImageBuffer result;
    if (!DecodeIfOnlyBitmap(bytes, header, request, result)) {
        const MetafileModule module = LoadMetafileModule();
        if (!module.play || !Allocate(result, width, height, 3))
            return false;
        request.pixels = result.bytes.data();
        if (!module.play(&request))
            return false;
    }
    result.dots_per_inch_x = result.dots_per_inch_y = kPixelsPerInch;
    image = std::move(result);
    return true;
}

static std::unique_ptr<ImageDecoder> Open(InputFile& file)
{
    if (!ReadEmfHeader(file.Head()))
        return nullptr;
    return SinglePage([&file](ImageBuffer& image) { return DecodeEmf(file.All(), image); });
}

const Codec kEmfCodec{FileType::kEmf, false, false, Sniff, Open, EncodeEmf};
