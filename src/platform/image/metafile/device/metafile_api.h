// What the program asks of the player module, and what it lends it.
// Room: platform/image/metafile/device.
#pragma once

#include <cstdint>

#include "src/platform/image/base/byte_reader.h"
#include "src/platform/image_buffer.h"

/// Changes with every change of the structures below: a module of another build is not used.
constexpr std::uint32_t kMetafileApiVersion = 1;

struct MetafileRequest {
    std::uint32_t version = kMetafileApiVersion;
    bool enhanced = false;  ///< EMF; otherwise WMF
    /// The records, the first one first: an EMF from its header on, a WMF after its headers. They have been
    /// walked: each lies within, and the last is the end record.
    Bytes records;
    std::uint32_t objects = 0;  ///< how many objects the header announces

    /// The picture: width * height * 3 bytes of B, G, R from pixels on, filled whole.
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::uint8_t* pixels = nullptr;

    /// EMF: a point of the reference device is at (x * scale_x + offset_x, y * scale_y + offset_y) of the
    /// picture, and has dots_per_millimetre of these units.
    double scale_x = 1;
    double scale_y = 1;
    double offset_x = 0;
    double offset_y = 0;
    double dots_per_millimetre_x = 0;
    double dots_per_millimetre_y = 0;

    /// WMF: the window that fills the picture until the file sets another.
    double window_left = 0;
    double window_top = 0;
    double window_width = 1;
    double window_height = 1;

    /// Decodes a bitmap whose header (with palette) and bits lie apart. May throw std::bad_alloc.
    bool (*decode_dib)(Bytes header, Bytes bits, ImageBuffer& image) = nullptr;
};

/// Whole logical units of a WMF.
struct MetafileBounds {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t right = 0;  ///< excluded, like bottom
    std::int32_t bottom = 0;
};

/// The entry points of the module, by the names under which they are looked up. Neither throws.
///
/// VarnelPlayMetafile draws the picture on white. False, with pixels of no particular content, when a record
/// is broken, the file asks for more work than a picture can be worth, or memory or fonts are missing.
///
/// VarnelMeasureMetafile finds out what a WMF without a window would draw on, a unit being a pixel. False as
/// above, and when nothing is drawn.
using PlayMetafile = bool(const MetafileRequest* request);
using MeasureMetafile = bool(const MetafileRequest* request, MetafileBounds* bounds);
constexpr char kPlayMetafile[] = "VarnelPlayMetafile";
constexpr char kMeasureMetafile[] = "VarnelMeasureMetafile";
