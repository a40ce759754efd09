// Brushes, pens, paths, regions, images and fonts of EMF+ files, and their readers.
// Room: platform/image/metafile/emfplus.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "src/platform/image/base/byte_reader.h"
#include "src/platform/image/metafile/canvas/ink.h"
#include "src/platform/image/metafile/canvas/outline.h"
#include "src/platform/image_buffer.h"

/// Alpha, red, green and blue from the high byte down; not premultiplied.
using ArgbColor = std::uint32_t;

enum class WrapMode : std::uint32_t { kTile, kTileFlipX, kTileFlipY, kTileFlipXY, kClamp };

/// A colour per position, 0 to 1, in ascending order.
struct ColorStop {
    double position = 0;
    ArgbColor color = 0;
};

/// How much of the second colour there is at a position.
struct BlendStop {
    double position = 0;
    double factor = 0;
};

/// What linear and path gradients have in common. Stops go before blends; without either, the colours run
/// evenly.
struct GradientRun {
    std::vector<ColorStop> stops;
    std::vector<BlendStop> blends;
};

struct PlusSolidBrush {
    ArgbColor color = 0;
};

struct PlusHatchBrush {
    std::uint32_t style = 0;
    ArgbColor fore = 0;
    ArgbColor back = 0;
};

struct PlusTextureBrush {
    std::shared_ptr<const Pixels> pixels;
    WrapMode wrap = WrapMode::kTile;
    Affine transform;
};

struct PlusLinearBrush {
    Rect rect;  ///< the first colour is at its left, the second one at its right side
    ArgbColor first = 0;
    ArgbColor second = 0;
    GradientRun run;
    WrapMode wrap = WrapMode::kTile;
    Affine transform;
};

struct PlusPathBrush {
    std::vector<Point> boundary;
    std::vector<ArgbColor> boundary_colors;  ///< one per point; the last one is that of the rest
    Point center;
    ArgbColor center_color = 0;
    GradientRun run;  ///< from the boundary to the centre
    Point focus;      ///< the size of the inner area that has the centre's colour, 0 to 1
    Affine transform;
};

using PlusBrush =
    std::variant<PlusSolidBrush, PlusHatchBrush, PlusTextureBrush, PlusLinearBrush, PlusPathBrush>;

/// Points of lines and curves, in world units.
struct PlusPath {
    Outline outline;
    bool winding = false;
};

enum class PlusCap : std::uint32_t {
    kFlat = 0,
    kSquare = 1,
    kRound = 2,
    kTriangle = 3,
    kNoAnchor = 0x10,
    kSquareAnchor = 0x11,
    kRoundAnchor = 0x12,
    kDiamondAnchor = 0x13,
    kArrowAnchor = 0x14,
    kCustom = 0xFF
};

/// A line end drawn by the file, in units of the pen's width: the line comes up the y axis and ends at 0.
struct PlusCustomCap {
    Outline fill;
    Outline line;
    double line_width = 1;
    double inset = 0;  ///< how much shorter the line itself is
    double scale = 1;
};

struct PlusPen {
    double width = 1;
    std::uint32_t unit = 0;
    Affine transform;
    PlusCap start = PlusCap::kFlat;
    PlusCap end = PlusCap::kFlat;
    PlusCap dash_cap = PlusCap::kFlat;
    std::uint32_t join = 0;  ///< 0 miter, 1 bevel, 2 round, 3 clipped miter
    double miter_limit = 10;
    std::vector<double> dashes;  ///< in units of the width
    double dash_offset = 0;
    bool inset = false;            ///< closed shapes are drawn along the inner side of their outline
    std::vector<double> compound;  ///< where parallel lines begin and end across the width, 0 to 1
    std::optional<PlusCustomCap> custom_start;
    std::optional<PlusCustomCap> custom_end;
    PlusBrush brush;
};

/// A tree of areas.
struct PlusRegion {
    enum class Kind : std::uint32_t {
        kAnd = 1,
        kOr = 2,
        kXor = 3,
        kExclude = 4,
        kComplement = 5,
        kRect = 0x10000000,
        kPath = 0x10000001,
        kEmpty = 0x10000002,
        kInfinite = 0x10000003
    };
    Kind kind = Kind::kInfinite;
    Rect rect;
    Outline path;
    std::unique_ptr<PlusRegion> left;
    std::unique_ptr<PlusRegion> right;
};

/// A bitmap with premultiplied alpha, or the file of a metafile.
struct PlusImage {
    std::shared_ptr<const Pixels> pixels;
    Bytes metafile;
};

struct PlusFont {
    double size = 12;
    std::uint32_t unit = 0;
    std::uint32_t style = 0;  ///< 1 bold, 2 italic, 4 underline, 8 strike-out
    std::string family;       ///< UTF-8
};

struct PlusStringFormat {
    std::uint32_t flags = 0;
    std::uint32_t align = 0;       ///< 0 near, 1 centre, 2 far
    std::uint32_t line_align = 0;  ///< of all lines within the box
    std::uint32_t hotkey = 0;      ///< 0 shows ampersands
    double leading = 0;            ///< margins, in ems
    double trailing = 0;
};

using PlusObject = std::variant<std::monostate, std::shared_ptr<const PlusBrush>,
                                std::shared_ptr<const PlusPen>, std::shared_ptr<const PlusPath>,
                                std::shared_ptr<const PlusRegion>, std::shared_ptr<const PlusImage>,
                                std::shared_ptr<const PlusFont>, std::shared_ptr<const PlusStringFormat>>;

/// Decodes images in files (PNG, JPEG and so on) within the work budget.
using ImageFileDecoder = std::function<bool(Bytes file, ImageBuffer& image)>;

/// Reads the object of an object record. Nothing if it is invalid or of a kind that has no effect.
enum class ObjectKind : std::uint32_t {
    kBrush = 1,
    kPen = 2,
    kPath = 3,
    kRegion = 4,
    kImage = 5,
    kFont = 6,
    kStringFormat = 7,
    kImageAttributes = 8,
    kCustomLineCap = 9
};
std::optional<PlusObject> ReadObject(ObjectKind kind, Bytes data, const ImageFileDecoder& decode);

// The readers of the kinds; each starts at the object's version field and returns nothing if it is invalid.
std::optional<PlusBrush> ReadPlusBrush(ByteReader& reader, const ImageFileDecoder& decode);
std::optional<PlusPen> ReadPlusPen(ByteReader& reader, const ImageFileDecoder& decode);
std::optional<PlusPath> ReadPlusPath(ByteReader& reader);
std::optional<PlusRegion> ReadPlusRegion(ByteReader& reader);
std::optional<PlusImage> ReadPlusImage(ByteReader& reader, const ImageFileDecoder& decode);
