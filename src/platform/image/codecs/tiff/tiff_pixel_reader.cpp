// Brings strips and tiles of every layout together into one picture.
#include "src/platform/image/codecs/tiff/tiff_pixel_reader.h"

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/base/picture_memory.h"
#include "src/platform/image/codecs/tiff/tiff_rows.h"
#include "src/platform/image_buffer.h"

static constexpr std::uint64_t kLargeStrip = 16 * 1024 * 1024;
static constexpr std::uint64_t kReadAtOnce = 512 * 1024;

namespace
{
/// What the functions below share while one page is read.
struct PageReading {
    TIFF* pTiff;
    const TiffLayout& objLayout;
    const TiffRows& objRows;
    std::uint8_t* pLevels;  ///< the whole page's
    std::size_t nPitch;     ///< bytes of a row of levels
    std::vector<std::uint8_t> aChunk = {};
    bool bFinishRows;  ///< the rows are brought to their end as they come

    std::uint8_t* pAt(std::uint32_t x, std::uint32_t y) const
    {
        return pLevels + y * nPitch + std::size_t{x} * objRows.Levels();
    }
};
}  // namespace

// Rows that have been unpacked, while they are still in the processor's cache.
static bool bFinishRows(const PageReading& obj, std::uint32_t x, std::uint32_t y, std::uint32_t nColumns,
                        std::uint32_t nRows)
{
    if (!obj.bFinishRows)
        return true;
    for (std::uint32_t i = 0; i < nRows; ++i)
        if (!obj.objRows.bFinish(obj.pAt(x, y + i), nColumns, obj.pAt(x, y + i)))
            return false;
    return true;
}

// Uncompressed strips in which a row is what the picture needs: several are read at once, straight to their
// place.
static bool bReadPlainStrips(PageReading& obj, InputFile& objFile)
{
    const std::uint32_t nHeight = obj.objLayout.nHeight;
    const std::uint32_t nStripRows = obj.objLayout.nChunkHeight;
    const std::uint64_t nRowsAtOnce = std::max<std::uint64_t>(1, kReadAtOnce / obj.nPitch);
    for (std::uint32_t y = 0; y < nHeight;) {
        const std::uint32_t nStrip = y / nStripRows;
        const std::uint64_t nOffset = TIFFGetStrileOffset(obj.pTiff, nStrip) + y % nStripRows * obj.nPitch;
        // As far as the strips follow each other in the file.
        std::uint32_t nRows = std::min(nHeight - y, nStripRows - y % nStripRows);
        if (TIFFGetStrileByteCount(obj.pTiff, nStrip) < (y % nStripRows + nRows) * obj.nPitch)
            return false;
        while (nRows < nRowsAtOnce && y + nRows < nHeight) {
            const std::uint32_t nNext = (y + nRows) / nStripRows;
            const std::uint32_t nMore = std::min(nHeight - y - nRows, nStripRows);
            if (TIFFGetStrileOffset(obj.pTiff, nNext) != nOffset + nRows * obj.nPitch ||
                TIFFGetStrileByteCount(obj.pTiff, nNext) < nMore * obj.nPitch)
                break;
            nRows += nMore;
        }
        nRows = static_cast<std::uint32_t>(std::min<std::uint64_t>(nRows, nRowsAtOnce));
        if (objFile.ReadAt(nOffset, {obj.pAt(0, y), nRows * obj.nPitch}) != nRows * obj.nPitch)
            return false;
        obj.objRows.Unpack(obj.pAt(0, y), std::size_t{nRows} * obj.objLayout.nWidth, obj.pAt(0, y));
        if (!bFinishRows(obj, 0, y, obj.objLayout.nWidth, nRows))
            return false;
        y += nRows;
    }
    return true;
}

// Decoders that may leave the rest of a damaged chunk as it was would show what was in memory.
static bool bMayStopEarly(std::uint16_t nCompression)
{
    return nCompression != COMPRESSION_NONE && nCompression != COMPRESSION_LZW &&
           nCompression != COMPRESSION_ADOBE_DEFLATE && nCompression != COMPRESSION_DEFLATE &&
           nCompression != COMPRESSION_PACKBITS;
}

// A strip decoded to where its levels are to be, which takes no memory of its own.
static bool bReadStripsInPlace(PageReading& obj)
{
    for (std::uint32_t y = 0, nStrip = 0; y < obj.objLayout.nHeight;
         y += obj.objLayout.nChunkHeight, ++nStrip) {
        const std::uint32_t nRows = std::min(obj.objLayout.nChunkHeight, obj.objLayout.nHeight - y);
        const auto nBytes = static_cast<tmsize_t>(nRows * obj.nPitch);
        if (bMayStopEarly(obj.objLayout.nCompression))
            std::memset(obj.pAt(0, y), 0, nRows * obj.nPitch);
        if (TIFFReadEncodedStrip(obj.pTiff, nStrip, obj.pAt(0, y), nBytes) != nBytes)
            return false;
        obj.objRows.Unpack(obj.pAt(0, y), std::size_t{nRows} * obj.objLayout.nWidth, obj.pAt(0, y));
        if (!bFinishRows(obj, 0, y, obj.objLayout.nWidth, nRows))
            return false;
    }
    return true;
}

// Unpacks nRows rows of a decoded chunk, whose first pixel is the page's (x, y).
static bool bUnpackChunk(PageReading& obj, std::uint32_t nPlane, std::uint32_t x, std::uint32_t y,
                         std::uint32_t nRows, std::size_t nStoredRow)
{
    const TiffLayout& objLayout = obj.objLayout;
    const std::uint32_t nColumns = std::min(objLayout.nChunkWidth, objLayout.nWidth - x);
    if (objLayout.bSubsampled()) {
        obj.objRows.UnpackSubsampled(obj.aChunk.data(), objLayout.nChunkWidth, nColumns, nRows, obj.pAt(x, y),
                                     obj.nPitch);
    } else {
        for (std::uint32_t i = 0; i < nRows; ++i) {
            const std::uint8_t* pStored = obj.aChunk.data() + i * nStoredRow;
            if (objLayout.bSeparate)
                obj.objRows.UnpackPlane(nPlane, pStored, nColumns, obj.pAt(x, y + i));
            else
                obj.objRows.Unpack(pStored, nColumns, obj.pAt(x, y + i));
        }
    }
    return bFinishRows(obj, x, y, nColumns, nRows);
}

// Whether the samples of a plane are asked for; those of another kind are not even read.
static bool bPlaneUsed(const TiffLayout& objLayout, std::uint32_t nPlane)
{
    return nPlane < objLayout.nColours() ||
           (objLayout.enAlpha != TiffAlpha::kNone && nPlane == objLayout.nAlphaSample);
}

static std::uint32_t nPlanesOf(const TiffLayout& objLayout)
{
    return objLayout.bSeparate ? objLayout.nSamples : 1;
}

static bool bReadStrips(PageReading& obj)
{
    const TiffLayout& objLayout = obj.objLayout;
    const std::uint32_t nStripsAPlane = (objLayout.nHeight - 1) / objLayout.nChunkHeight + 1;
    obj.aChunk.resize(TIFFStripSize64(obj.pTiff));
    const std::size_t nStoredRow = TIFFScanlineSize64(obj.pTiff);
    for (std::uint32_t nPlane = 0; nPlane < nPlanesOf(objLayout); ++nPlane) {
        if (!bPlaneUsed(objLayout, nPlane))
            continue;
        for (std::uint32_t i = 0; i < nStripsAPlane; ++i) {
            const std::uint32_t y = i * objLayout.nChunkHeight;
            const std::uint32_t nRows = std::min(objLayout.nChunkHeight, objLayout.nHeight - y);
            const auto nBytes = static_cast<tmsize_t>(TIFFVStripSize64(obj.pTiff, nRows));
            if (bMayStopEarly(objLayout.nCompression))
                std::fill(obj.aChunk.begin(), obj.aChunk.end(), std::uint8_t{0});
            if (nBytes < 1 || nBytes > static_cast<tmsize_t>(obj.aChunk.size()) ||
                TIFFReadEncodedStrip(obj.pTiff, nPlane * nStripsAPlane + i, obj.aChunk.data(), nBytes) !=
                    nBytes ||
                !bUnpackChunk(obj, nPlane, 0, y, nRows, nStoredRow))
                return false;
        }
    }
    return true;
}

// Strips too large to be held decoded beside the picture: row by row.
static bool bReadRowByRow(PageReading& obj)
{
    const TiffLayout& objLayout = obj.objLayout;
    const std::size_t nStoredRow = TIFFScanlineSize64(obj.pTiff);
    obj.aChunk.assign(nStoredRow, 0);
    for (std::uint32_t nPlane = 0; nPlane < nPlanesOf(objLayout); ++nPlane) {
        if (!bPlaneUsed(objLayout, nPlane))
            continue;
        for (std::uint32_t y = 0; y < objLayout.nHeight; ++y) {
            if (bMayStopEarly(objLayout.nCompression))
                std::fill(obj.aChunk.begin(), obj.aChunk.end(), std::uint8_t{0});
            if (TIFFReadScanline(obj.pTiff, obj.aChunk.data(), y, static_cast<std::uint16_t>(nPlane)) != 1 ||
                !bUnpackChunk(obj, nPlane, 0, y, 1, nStoredRow))
                return false;
        }
    }
    return true;
}

static bool bReadTiles(PageReading& obj)
{
    const TiffLayout& objLayout = obj.objLayout;
    obj.aChunk.resize(TIFFTileSize64(obj.pTiff));
    const std::size_t nStoredRow = TIFFTileRowSize64(obj.pTiff);
    const auto nBytes = static_cast<tmsize_t>(obj.aChunk.size());
    std::uint32_t nTile = 0;
    for (std::uint32_t nPlane = 0; nPlane < nPlanesOf(objLayout); ++nPlane) {
        for (std::uint32_t y = 0; y < objLayout.nHeight; y += objLayout.nChunkHeight) {
            for (std::uint32_t x = 0; x < objLayout.nWidth; x += objLayout.nChunkWidth, ++nTile) {
                if (!bPlaneUsed(objLayout, nPlane))
                    continue;
                if (bMayStopEarly(objLayout.nCompression))
                    std::fill(obj.aChunk.begin(), obj.aChunk.end(), std::uint8_t{0});
                const std::uint32_t nRows = std::min(objLayout.nChunkHeight, objLayout.nHeight - y);
                if (TIFFReadEncodedTile(obj.pTiff, nTile, obj.aChunk.data(), nBytes) != nBytes ||
                    !bUnpackChunk(obj, nPlane, x, y, nRows, nStoredRow))
                    return false;
            }
        }
    }
    return true;
}

static bool bReadChunks(PageReading& obj, InputFile& objFile)
{
    const TiffLayout& objLayout = obj.objLayout;
    if (objLayout.bTiled)
        return bReadTiles(obj);
    std::uint16_t nFillOrder = FILLORDER_MSB2LSB;
    TIFFGetFieldDefaulted(obj.pTiff, TIFFTAG_FILLORDER, &nFillOrder);
    if (obj.objRows.InPlace() && objLayout.nCompression == COMPRESSION_NONE &&
        nFillOrder == FILLORDER_MSB2LSB)
        return bReadPlainStrips(obj, objFile);
    if (obj.objRows.InPlace() && TIFFScanlineSize64(obj.pTiff) == obj.nPitch)
        return bReadStripsInPlace(obj);
    if (TIFFStripSize64(obj.pTiff) > kLargeStrip && !objLayout.bSubsampled() &&
        objLayout.nCompression != COMPRESSION_OJPEG)
        return bReadRowByRow(obj);
    return bReadStrips(obj);
}

bool bReadTiffPixels(TIFF* pTiff, const TiffLayout& objLayout, InputFile& objFile, Bytes aProfile,
                     ImageBuffer& aImage)
{
    const TiffRows objRows(pTiff, objLayout, aProfile);
    if (!objRows.Ready())
        return false;
    const std::size_t nPixels = std::size_t{objLayout.nWidth} * objLayout.nHeight;
    const std::size_t nPitch = std::size_t{objLayout.nWidth} * objRows.Levels();
    ImageBuffer aResult;
    aResult.width = static_cast<std::int32_t>(objLayout.nWidth);
    aResult.height = static_cast<std::int32_t>(objLayout.nHeight);
    aResult.channels = static_cast<std::int32_t>(objRows.Channels());
    ResizeFresh(aResult.bytes, nPixels * objRows.Levels());
    const bool bFinishRows = objRows.FinishesRows() && !objLayout.bSeparate;
    PageReading obj{pTiff, objLayout, objRows, aResult.bytes.data(), nPitch, {}, bFinishRows};
    if (!bReadChunks(obj, objFile))
        return false;
    if (!bFinishRows && !objRows.bFinish(aResult.bytes.data(), nPixels, aResult.bytes.data()))
        return false;
    aResult.bytes.resize(nPixels * objRows.Channels());
    aImage = std::move(aResult);
    return true;
}
