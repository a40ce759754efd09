// What the program asks of the player module, and what it lends it.
// Room: platform/image/metafile/device.
#pragma once

#include <cstdint>

#include "src/platform/image/base/byte_reader.h"
#include "src/platform/image_buffer.h"

/// Changes with every change of the structures below: a module of another build is not used.
constexpr std::uint32_t kMetafileApiVersion = 1;

struct MetafileRequest {
    std::uint32_t nVersion = kMetafileApiVersion;
    bool bEnhanced = false;  ///< EMF; otherwise WMF
    /// The records, the first one first: an EMF from its header on, a WMF after its headers. They have been
    /// walked: each lies within, and the last is the end record.
    Bytes aRecords;
    std::uint32_t nObjects = 0;  ///< how many objects the header announces

    /// The picture: lWidth * lHeight * 3 bytes of B, G, R from pPixels on, filled whole.
    std::int32_t lWidth = 0;
    std::int32_t lHeight = 0;
    std::uint8_t* pPixels = nullptr;

    /// EMF: a point of the reference device is at (x * dScaleX + dOffsetX, y * dScaleY + dOffsetY) of the
    /// picture, and has dDotsPerMillimetre of these units.
    double dScaleX = 1;
    double dScaleY = 1;
    double dOffsetX = 0;
    double dOffsetY = 0;
    double dDotsPerMillimetreX = 0;
    double dDotsPerMillimetreY = 0;

    /// WMF: the window that fills the picture until the file sets another.
    double dWindowLeft = 0;
    double dWindowTop = 0;
    double dWindowWidth = 1;
    double dWindowHeight = 1;

    /// Decodes a bitmap whose header (with palette) and bits lie apart. May throw std::bad_alloc.
    bool (*DecodeDib)(Bytes aHeader, Bytes aBits, ImageBuffer& aImage) = nullptr;
};

/// Whole logical units of a WMF.
struct MetafileBounds {
    std::int32_t lLeft = 0;
    std::int32_t lTop = 0;
    std::int32_t lRight = 0;  ///< excluded, like lBottom
    std::int32_t lBottom = 0;
};

/// The entry points of the module, by the names under which they are looked up. Neither throws.
///
/// VarnelPlayMetafile draws the picture on white. False, with pPixels of no particular content, when a record
/// is broken, the file asks for more work than a picture can be worth, or memory or fonts are missing.
///
/// VarnelMeasureMetafile finds out what a WMF without a window would draw on, a unit being a pixel. False as
/// above, and when nothing is drawn.
using PlayMetafile = bool(const MetafileRequest* pRequest);
using MeasureMetafile = bool(const MetafileRequest* pRequest, MetafileBounds* pBounds);
constexpr char kPlayMetafile[] = "VarnelPlayMetafile";
constexpr char kMeasureMetafile[] = "VarnelMeasureMetafile";
