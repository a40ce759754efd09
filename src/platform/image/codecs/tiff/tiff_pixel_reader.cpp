// Assembles strips and tiles of any layout into a picture.
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
/// State shared by the functions below while a page is read.
struct PageReading {
    TIFF* tiff;
    const TiffLayout& layout;
    const TiffRows& rows;
    std::uint8_t* levels;  ///< of the whole page
    std::size_t pitch;     ///< bytes per row of levels
    std::vector<std::uint8_t> chunk = {};
    bool finish_rows;            ///< finish rows as they are unpacked
    TiffRange* range = nullptr;  ///< if set, nothing is unpacked, only the samples' range is looked for
    bool any_whole = false;      ///< a chunk or row was complete
    bool any_damaged = false;    ///< one wasn't

    std::uint8_t* PixelAt(std::uint32_t x, std::uint32_t y) const
    {
        return levels + y * pitch + std::size_t{x} * rows.Levels();
    }
};
}  // namespace

// Finishes freshly unpacked rows while they are in the cache.
static bool FinishRows(const PageReading& reading, std::uint32_t x, std::uint32_t y, std::uint32_t columns,
                       std::uint32_t rows)
{
    if (!reading.finish_rows)
        return true;
    for (std::uint32_t i = 0; i < rows; ++i)
        if (!reading.rows.Finish(reading.PixelAt(x, y + i), columns, reading.PixelAt(x, y + i)))
            return false;
    return true;
}

// Reads uncompressed strips whose rows need no conversion, several at once, straight into the picture.
static bool ReadPlainStrips(PageReading& reading, InputFile& file)
{
    const std::uint32_t height = reading.layout.height;
    const std::uint32_t strip_rows = reading.layout.chunk_height;
    const std::uint64_t rows_at_once = std::max<std::uint64_t>(1, kReadAtOnce / reading.pitch);
    for (std::uint32_t y = 0; y < height;) {
        const std::uint32_t strip = y / strip_rows;
        const std::uint64_t offset =
            TIFFGetStrileOffset(reading.tiff, strip) + y % strip_rows * reading.pitch;
        // As many rows as are contiguous in the file.
        std::uint32_t rows = std::min(height - y, strip_rows - y % strip_rows);
        if (TIFFGetStrileByteCount(reading.tiff, strip) < (y % strip_rows + rows) * reading.pitch)
            return false;
        while (rows < rows_at_once && y + rows < height) {
            const std::uint32_t next = (y + rows) / strip_rows;
            const std::uint32_t more = std::min(height - y - rows, strip_rows);
            if (TIFFGetStrileOffset(reading.tiff, next) != offset + rows * reading.pitch ||
                TIFFGetStrileByteCount(reading.tiff, next) < more * reading.pitch)
                break;
            rows += more;
        }
        rows = static_cast<std::uint32_t>(std::min<std::uint64_t>(rows, rows_at_once));
        if (file.ReadAt(offset, {reading.PixelAt(0, y), rows * reading.pitch}) != rows * reading.pitch)
            return false;
        reading.rows.Unpack(reading.PixelAt(0, y), std::size_t{rows} * reading.layout.width,
                            reading.PixelAt(0, y));
        if (!FinishRows(reading, 0, y, reading.layout.width, rows))
            return false;
        y += rows;
    }
    return true;
}

// True for codecs that may leave part of a damaged chunk undecoded; it would show uninitialised memory.
static bool MayStopEarly(std::uint16_t compression)
{
    return compression != COMPRESSION_NONE && compression != COMPRESSION_LZW &&
           compression != COMPRESSION_ADOBE_DEFLATE && compression != COMPRESSION_DEFLATE &&
           compression != COMPRESSION_PACKBITS;
}

// Decodes strips directly to where their levels go, without extra memory.
static bool ReadStripsInPlace(PageReading& reading)
{
    for (std::uint32_t y = 0, strip = 0; y < reading.layout.height;
         y += reading.layout.chunk_height, ++strip) {
        const std::uint32_t rows = std::min(reading.layout.chunk_height, reading.layout.height - y);
        const auto bytes = static_cast<tmsize_t>(rows * reading.pitch);
        if (MayStopEarly(reading.layout.compression))
            std::memset(reading.PixelAt(0, y), 0, rows * reading.pitch);
        if (TIFFReadEncodedStrip(reading.tiff, strip, reading.PixelAt(0, y), bytes) != bytes)
            return false;
        reading.rows.Unpack(reading.PixelAt(0, y), std::size_t{rows} * reading.layout.width,
                            reading.PixelAt(0, y));
        if (!FinishRows(reading, 0, y, reading.layout.width, rows))
            return false;
    }
    return true;
}

// Unpacks `rows` rows of a decoded chunk whose first pixel is (x, y) on the page.
static bool UnpackChunk(const PageReading& reading, std::uint32_t plane, std::uint32_t x, std::uint32_t y,
                        std::uint32_t rows, std::size_t stored_row)
{
    const TiffLayout& layout = reading.layout;
    const std::uint32_t columns = std::min(layout.chunk_width, layout.width - x);
    if (layout.IsSubsampled()) {
        reading.rows.UnpackSubsampled(reading.chunk.data(), layout.chunk_width, columns, rows,
                                      reading.PixelAt(x, y), reading.pitch);
    } else {
        for (std::uint32_t i = 0; i < rows; ++i) {
            const std::uint8_t* stored = reading.chunk.data() + i * stored_row;
            if (reading.range && layout.separate)
                reading.rows.WidenRangeByPlane(plane, stored, columns, *reading.range);
            else if (reading.range)
                reading.rows.WidenRange(stored, columns, *reading.range);
            else if (layout.separate)
                reading.rows.UnpackPlane(plane, stored, columns, reading.PixelAt(x, y + i));
            else
                reading.rows.Unpack(stored, columns, reading.PixelAt(x, y + i));
        }
    }
    return reading.range || FinishRows(reading, x, y, columns, rows);
}

// A fax page without error correction shows what is left of it: the decoder gives up a damaged line, or with
// Group 4 the rest of its strip, which stays white.
static bool MayBeDamaged(std::uint16_t compression)
{
    return compression == COMPRESSION_CCITTRLE || compression == COMPRESSION_CCITTRLEW ||
           compression == COMPRESSION_CCITTFAX3 || compression == COMPRESSION_CCITTFAX4;
}

// Notes whether a chunk or row was decoded completely. False if the page is unreadable because it wasn't.
static bool NoteChunk(PageReading& reading, bool whole)
{
    (whole ? reading.any_whole : reading.any_damaged) = true;
    return whole || MayBeDamaged(reading.layout.compression);
}

static std::uint32_t PlanesOf(const TiffLayout& layout)
{
    return layout.separate ? layout.samples : 1;
}

static bool ReadStrips(PageReading& reading)
{
    const TiffLayout& layout = reading.layout;
    const std::uint32_t strips_per_plane = (layout.height - 1) / layout.chunk_height + 1;
    reading.chunk.resize(TIFFStripSize64(reading.tiff));
    const std::size_t stored_row = TIFFScanlineSize64(reading.tiff);
    for (std::uint32_t plane = 0; plane < PlanesOf(layout); ++plane) {
        if (!layout.IsUsed(plane))
            continue;
        for (std::uint32_t i = 0; i < strips_per_plane; ++i) {
            const std::uint32_t y = i * layout.chunk_height;
            const std::uint32_t rows = std::min(layout.chunk_height, layout.height - y);
            const auto bytes = static_cast<tmsize_t>(TIFFVStripSize64(reading.tiff, rows));
            if (MayStopEarly(layout.compression))
                std::fill(reading.chunk.begin(), reading.chunk.end(), std::uint8_t{0});
            if (bytes < 1 || bytes > static_cast<tmsize_t>(reading.chunk.size()))
                return false;
            const bool whole = TIFFReadEncodedStrip(reading.tiff, plane * strips_per_plane + i,
                                                    reading.chunk.data(), bytes) == bytes;
            if (!NoteChunk(reading, whole) || !UnpackChunk(reading, plane, 0, y, rows, stored_row))
                return false;
        }
    }
    return true;
}

// Reads row by row strips that are too large to decode as a whole.
static bool ReadRowByRow(PageReading& reading)
{
    const TiffLayout& layout = reading.layout;
    const std::size_t stored_row = TIFFScanlineSize64(reading.tiff);
    reading.chunk.assign(stored_row, 0);
    for (std::uint32_t plane = 0; plane < PlanesOf(layout); ++plane) {
        if (!layout.IsUsed(plane))
            continue;
        for (std::uint32_t y = 0; y < layout.height; ++y) {
            if (MayStopEarly(layout.compression))
                std::fill(reading.chunk.begin(), reading.chunk.end(), std::uint8_t{0});
            const bool whole = TIFFReadScanline(reading.tiff, reading.chunk.data(), y,
                                                static_cast<std::uint16_t>(plane)) == 1;
            if (!NoteChunk(reading, whole) || !UnpackChunk(reading, plane, 0, y, 1, stored_row))
                return false;
        }
    }
    return true;
}

static bool ReadTiles(PageReading& reading)
{
    const TiffLayout& layout = reading.layout;
    reading.chunk.resize(TIFFTileSize64(reading.tiff));
    const std::size_t stored_row = TIFFTileRowSize64(reading.tiff);
    const auto bytes = static_cast<tmsize_t>(reading.chunk.size());
    std::uint32_t tile = 0;
    for (std::uint32_t plane = 0; plane < PlanesOf(layout); ++plane) {
        for (std::uint32_t y = 0; y < layout.height; y += layout.chunk_height) {
            for (std::uint32_t x = 0; x < layout.width; x += layout.chunk_width, ++tile) {
                if (!layout.IsUsed(plane))
                    continue;
                if (MayStopEarly(layout.compression))
                    std::fill(reading.chunk.begin(), reading.chunk.end(), std::uint8_t{0});
                const std::uint32_t rows = std::min(layout.chunk_height, layout.height - y);
                const bool whole =
                    TIFFReadEncodedTile(reading.tiff, tile, reading.chunk.data(), bytes) == bytes;
                if (!NoteChunk(reading, whole) || !UnpackChunk(reading, plane, x, y, rows, stored_row))
                    return false;
            }
        }
    }
    return true;
}

static bool ReadChunks(PageReading& reading, InputFile& file)
{
    const TiffLayout& layout = reading.layout;
    if (layout.tiled)
        return ReadTiles(reading);
    std::uint16_t fill_order = FILLORDER_MSB2LSB;
    TIFFGetFieldDefaulted(reading.tiff, TIFFTAG_FILLORDER, &fill_order);
    if (reading.rows.InPlace() && layout.compression == COMPRESSION_NONE && fill_order == FILLORDER_MSB2LSB)
        return ReadPlainStrips(reading, file);
    if (reading.rows.InPlace() && TIFFScanlineSize64(reading.tiff) == reading.pitch)
        return ReadStripsInPlace(reading);
    if (TIFFStripSize64(reading.tiff) > kLargeStrip && !layout.IsSubsampled() &&
        layout.compression != COMPRESSION_OJPEG)
        return ReadRowByRow(reading);
    return ReadStrips(reading);
}

// Reads the page once for the range of its samples.
static bool FindRange(TIFF* tiff, InputFile& file, TiffLayout& layout)
{
    const TiffRows rows(tiff, layout, {});
    TiffRange range;
    PageReading reading{tiff, layout, rows, nullptr, 0, {}, false, &range};
    if (!rows.Ready() || !ReadChunks(reading, file))
        return false;
    if (range.highest > range.lowest) {
        layout.lowest = range.lowest;
        layout.highest = range.highest;
    }
    return true;
}

static bool IsUniform(const PixelBytes& levels)
{
    return std::equal(levels.begin() + 1, levels.end(), levels.begin());
}

bool ReadTiffPixels(TIFF* tiff, const TiffLayout& page, InputFile& file, Bytes profile, ImageBuffer& image)
{
    TiffLayout layout = page;
    if (layout.range_from_data && !FindRange(tiff, file, layout))
        return false;
    const TiffRows rows(tiff, layout, profile);
    if (!rows.Ready())
        return false;
    const std::size_t pixels = std::size_t{layout.width} * layout.height;
    const std::size_t pitch = std::size_t{layout.width} * rows.Levels();
    ImageBuffer result;
    result.width = static_cast<std::int32_t>(layout.width);
    result.height = static_cast<std::int32_t>(layout.height);
    result.channels = static_cast<std::int32_t>(rows.Channels());
    ResizeFresh(result.bytes, pixels * rows.Levels());
    const bool finish_rows = rows.FinishesRows() && !layout.separate;
    PageReading reading{tiff, layout, rows, result.bytes.data(), pitch, {}, finish_rows};
    if (!ReadChunks(reading, file))
        return false;
    if (reading.any_damaged && !reading.any_whole && IsUniform(result.bytes))
        return false;
    if (!finish_rows && !rows.Finish(result.bytes.data(), pixels, result.bytes.data()))
        return false;
    result.bytes.resize(pixels * rows.Channels());
    image = std::move(result);
    return true;
}
