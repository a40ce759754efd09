// The interface between the program and the player module.
// Room: platform/image/metafile/device.
#pragma once

#include <cstdint>

#include "src/platform/image/base/byte_reader.h"
#include "src/platform/image_buffer.h"

/// Increment this with every change of the structures below: modules of other builds are rejected.
constexpr std::uint32_t kMetafileApiVersion = 2;

struct MetafileRequest {
    std::uint32_t version = kMetafileApiVersion;
    bool enhanced = false;  ///< EMF; otherwise WMF
    /// The records: of an EMF from its header on, of a WMF after its headers. The caller has validated their
    /// sizes: each is within bounds, and the last is the end record.
    Bytes records;
    std::uint32_t objects = 0;  ///< number of objects announced in the header

    /// The output picture: width * height * 3 bytes of B, G, R. Every pixel is written.
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::uint8_t* pixels = nullptr;

    /// EMF: maps a point of the reference device to (x * scale_x + offset_x, y * scale_y + offset_y) on the
    /// picture. dots_per_millimetre counts device units.
    double scale_x = 1;
    double scale_y = 1;
    double offset_x = 0;
    double offset_y = 0;
    double dots_per_millimetre_x = 0;
    double dots_per_millimetre_y = 0;

    /// WMF: the initial window, which fills the picture.
    double window_left = 0;
    double window_top = 0;
    double window_width = 1;
    double window_height = 1;

    /// Decodes a bitmap given as header (with palette) and bits. May throw std::bad_alloc.
    bool (*decode_dib)(Bytes header, Bytes bits, ImageBuffer& image) = nullptr;
    /// Decodes a whole file in any format but a metafile's. May throw std::bad_alloc.
    bool (*decode_image)(Bytes file, ImageBuffer& image) = nullptr;
};

/// Bounds in whole logical units of a WMF.
struct MetafileBounds {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t right = 0;  ///< exclusive, like bottom
    std::int32_t bottom = 0;
};

/// The module's entry points, looked up by name. Neither throws.
///
/// VarnelPlayMetafile draws the picture on white, without the records that can't be drawn. False if these are
/// all, the file exceeds its work budget, or memory or fonts are missing; the pixels are then undefined.
///
/// VarnelMeasureMetafile finds the bounds of what a WMF without a window draws, at one pixel per unit. False
/// in the same cases, and if nothing is drawn.
using PlayMetafile = bool(const MetafileRequest* request);
using MeasureMetafile = bool(const MetafileRequest* request, MetafileBounds* bounds);
constexpr char kPlayMetafile[] = "VarnelPlayMetafile";
constexpr char kMeasureMetafile[] = "VarnelMeasureMetafile";
