// Pens, brushes, fonts, palettes and regions of metafile records.
// Room: platform/image/metafile/device.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "src/platform/image/base/byte_reader.h"
#include "src/platform/image/metafile/canvas/geometry.h"

/// A colour as stored: red in the low byte, or a palette index, depending on the high byte.
using ColorRef = std::uint32_t;

struct Palette {
    std::vector<std::uint32_t> colors;  ///< red, green, blue from the high byte down
};

/// A device-independent bitmap; its bytes belong to the file.
struct DibSource {
    Bytes header;  ///< BITMAPINFOHEADER or BITMAPCOREHEADER, with the palette
    Bytes bits;
    bool indexes_palette = false;  ///< its colour table holds indexes into the selected palette

    bool Empty() const { return header.empty(); }
};

/// A device-dependent bitmap of old WMF records, without a palette.
struct Bitmap16Source {
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::uint32_t bytes_per_row = 0;
    std::uint32_t bits_per_pixel = 0;
    Bytes bits;
};

enum class BrushKind { kNull, kSolid, kHatched, kDib, kMonoDib, kBitmap16 };

struct Brush {
    BrushKind kind = BrushKind::kSolid;
    ColorRef color = 0xFFFFFF;
    std::uint32_t hatch = 0;  ///< 0 horizontal, 1 vertical, 2 falling, 3 rising, 4 cross, 5 diagonal cross
    DibSource dib;            ///< kMonoDib: its two colours are the text and background colours
    Bitmap16Source bitmap16;
};

namespace PenStyle
{
constexpr std::uint32_t kDashMask = 0x0F;
constexpr std::uint32_t kNull = 5;
constexpr std::uint32_t kInsideFrame = 6;
constexpr std::uint32_t kUserStyle = 7;
constexpr std::uint32_t kAlternate = 8;
constexpr std::uint32_t kCapMask = 0x0F00;
constexpr std::uint32_t kCapSquare = 0x0100;
constexpr std::uint32_t kCapFlat = 0x0200;
constexpr std::uint32_t kJoinMask = 0xF000;
constexpr std::uint32_t kJoinBevel = 0x1000;
constexpr std::uint32_t kJoinMiter = 0x2000;
constexpr std::uint32_t kGeometric = 0x10000;
}  // namespace PenStyle

struct Pen {
    std::uint32_t style = 0;
    double width = 0;  ///< logical; up to 0 means one pixel
    /// Extended pens say in their style whether they are geometric; of the others, those wider than 1 are.
    bool extended = false;
    Brush brush{BrushKind::kSolid, 0, 0, {}, {}};
    std::vector<double> dashes;  ///< for kUserStyle: lengths of dash, gap, dash...
};

struct Font {
    double height = 0;      ///< logical; positive: cell height, negative: em height, 0: default size
    double width = 0;       ///< mean character width; 0 for the font's own
    double escapement = 0;  ///< tenths of a degree, counter-clockwise
    std::int32_t weight = 400;
    bool italic = false;
    bool underline = false;
    bool strike_out = false;
    std::uint8_t char_set = 0;
    std::uint8_t pitch_and_family = 0;
    std::string face;  ///< UTF-8
};

struct Region {
    std::vector<Rect> rects;
};

using Object =
    std::variant<std::monostate, std::shared_ptr<const Pen>, std::shared_ptr<const Brush>,
                 std::shared_ptr<const Font>, std::shared_ptr<const Palette>, std::shared_ptr<const Region>>;

/// Stock object 0 to 19, as records number them; monostate for any other index.
Object StockObject(std::uint32_t index);

/// The initial palette: the twenty static colours of every device.
std::shared_ptr<const Palette> DefaultPalette();
