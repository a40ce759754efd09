// Recognises WMF files, determines their size, and passes them to the player.
#include "src/platform/image/codecs/metafile/wmf.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/base/limits.h"
#include "src/platform/image/codecs/metafile/emf.h"
#include "src/platform/image/codecs/metafile/metafile_dib.h"
#include "src/platform/image/codecs/metafile/metafile_module.h"
#include "src/platform/image/codecs/metafile/wmf_header.h"
#include "src/platform/image/codecs/single_page.h"
#include "src/platform/image/dib/dib.h"

static constexpr double kPixelsPerInch = 96;
/// Windows without a physical unit are often 20,000 units wide, just to place points precisely. Most of these
/// files are formulas and small drawings.
static constexpr double kMaxPixelsWithoutUnit = 1024;

static constexpr std::uint16_t kStretchDib = 0x0F43;
static constexpr std::uint32_t kSourceCopy = 0x00CC0020;

static bool Sniff(Bytes head, std::string_view)
{
    return IsWmf(head);
}

// Units per inch of the map modes that have some.
static double UnitsPerInch(int map_mode)
{
    static constexpr std::array<double, 7> kUnits{0, 0, 254, 2540, 100, 1000, 1440};
    return map_mode > 0 && map_mode < 7 ? kUnits[static_cast<std::size_t>(map_mode)] : 0;
}

namespace
{
/// Pixels per unit of a window.
struct Scale {
    double x = 1;
    double y = 1;
};
}  // namespace

// Sets the size in pixels of a window.
static void SetSize(double width, double height, const Scale& scale, MetafileRequest& request)
{
    const auto pixels = [](double d) {
        return static_cast<std::int32_t>(std::clamp(std::floor(std::abs(d) + 0.5), 1.0, 1e9));
    };
    request.width = pixels(width * scale.x);
    request.height = pixels(height * scale.y);
    request.window_width = width;
    request.window_height = height;
}

// For a window without a physical unit.
static double ScaleWithoutUnit(double width, double height)
{
    return std::min(1.0, kMaxPixelsWithoutUnit / std::max(std::abs(width), std::abs(height)));
}

// Determines size and window: from the placeable header, the first window set, or the extent of what is
// drawn.
static bool FindSize(const WmfHeader& header, const WmfRecords& walk, MetafileRequest& request)
{
    if (header.placeable) {
        request.window_left = header.left;
        request.window_top = header.top;
        const double scale = header.units_per_inch > 0 ? kPixelsPerInch / header.units_per_inch
                                                       : ScaleWithoutUnit(header.width, header.height);
        SetSize(header.width, header.height, {scale, scale}, request);
        return true;
    }
    const double units_per_inch = UnitsPerInch(walk.map_mode.value_or(0));
    if (walk.window_width) {
        const double width = *walk.window_width;
        const double height = *walk.window_height;
        request.window_left = walk.window_left.value_or(0);
        request.window_top = walk.window_top.value_or(0);
        const double scale =
            units_per_inch > 0 ? kPixelsPerInch / units_per_inch : ScaleWithoutUnit(width, height);
        Scale scales{scale, scale};
        // A viewport is in pixels of the screen.
        if (units_per_inch <= 0 && walk.viewport_width)
            scales = {std::abs(*walk.viewport_width / width), std::abs(*walk.viewport_height / height)};
        SetSize(width, height, scales, request);
        return true;
    }
    const MetafileModule module = LoadMetafileModule();
    MetafileBounds bounds;
    if (!module.measure || !module.measure(&request, &bounds))
        return false;
    request.window_left = bounds.left;
    request.window_top = bounds.top;
    const double width = bounds.right - bounds.left;
    const double height = bounds.bottom - bounds.top;
    double scale = ScaleWithoutUnit(width, height);
    if (units_per_inch > 0) {
        // The bounds are in pixels then, and the y axis points up.
        request.window_left *= units_per_inch / kPixelsPerInch;
        request.window_top *= -units_per_inch / kPixelsPerInch;
        scale = 1;
    }
    SetSize(width, height, {scale, scale}, request);
    return true;
}

// Decodes a metafile that only sets its window and draws one bitmap over it, without the player.
static bool DecodeIfOnlyBitmap(const MetafileRequest& request, ImageBuffer& image)
{
    Bytes picture;
    double left = request.window_left, top = request.window_top;
    double width = request.window_width, height = request.window_height;
    Bytes rest = request.records;
    for (;;) {
        ByteReader reader(rest);
        const std::uint64_t size = std::uint64_t{reader.U32Le()} * 2;
        const std::uint16_t function = reader.U16Le();
        if (function == 0)
            break;
        const std::int16_t first = reader.I16Le();
        const std::int16_t second = reader.I16Le();
        if (function == kStretchDib && picture.empty())
            picture = rest.first(size).subspan(6);
        else if (function == 0x020B && size >= 10 && picture.empty()) {
            top = first;
            left = second;
        } else if (function == 0x020C && size >= 10 && picture.empty()) {
            height = first;
            width = second;
        } else if (function != 0x0107 && !(function == 0x0103 && first == 8))
            return false;
        rest = rest.subspan(size);
    }
    ByteReader reader(picture);
    const bool is_copy = reader.U32Le() == kSourceCopy && reader.U16Le() == 0;
    const std::int16_t source_height = reader.I16Le();
    const std::int16_t source_width = reader.I16Le();
    const bool from_corner = reader.I16Le() == 0 && reader.I16Le() == 0;
    const double target_height = reader.I16Le(), target_width = reader.I16Le();
    const double target_top = reader.I16Le(), target_left = reader.I16Le();
    if (reader.Failed() || !is_copy || !from_corner || source_width != request.width ||
        source_height != request.height || target_width != width || target_height != height ||
        target_top != top || target_left != left)
        return false;
    const Bytes dib = reader.Take(reader.Left());
    DibHeader header;
    return ReadDibHeader(dib, header) && header.bits_offset <= dib.size() &&
           DecodeOnlyBitmap(dib.first(header.bits_offset), dib.subspan(header.bits_offset), request.width,
                            request.height, image);
}

static bool Decode(InputFile& file, const WmfHeader& header, ImageBuffer& image)
{
    const Bytes bytes = file.All();
    if (header.records_offset > bytes.size())
        return false;
    MetafileRequest request;
    request.records = bytes.subspan(header.records_offset);
    request.objects = header.objects;
    request.decode_dib = DecodeDib;
    const WmfRecords walk = WalkWmf(request.records);
    if (!walk.whole)
        return false;
    // The embedded file is what the program drew; the rest is for readers of old.
    if (const std::vector<std::uint8_t> emf = EmbeddedEmf(request.records);
        !emf.empty() && DecodeEmf(emf, image))
        return true;
    if (!FindSize(header, walk, request))
        return false;
    const auto width = static_cast<std::uint64_t>(request.width);
    const auto height = static_cast<std::uint64_t>(request.height);
    if (!IsSizeAllowed(width, height))
        return false;
    ImageBuffer result;
    if (!DecodeIfOnlyBitmap(request, result)) {
        const MetafileModule module = LoadMetafileModule();
        if (!module.play || !Allocate(result, width, height, 3))
            return false;
        request.pixels = result.bytes.data();
        if (!module.play(&request))
            return false;
    }
    const double dots = header.units_per_inch > 0 ? kPixelsPerInch : 0;
    result.dots_per_inch_x = result.dots_per_inch_y = dots;
    image = std::move(result);
    return true;
}

static std::unique_ptr<ImageDecoder> Open(InputFile& file)
{
    const auto header = ReadWmfHeader(file.Head());
    if (!header)
        return nullptr;
    return SinglePage([&file, header](ImageBuffer& image) { return Decode(file, *header, image); });
}

const Codec kWmfCodec{FileType::kWmf, false, false, Sniff, Open, EncodeWmf};
