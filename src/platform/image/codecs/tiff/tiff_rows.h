// Converts the stored samples of a TIFF page to pixels.
// Room: platform/image/codecs/tiff.
#pragma once

#include <tiffio.h>

#include <cstdint>
#include <memory>
#include <vector>

#include "src/platform/image/base/byte_reader.h"
#include "src/platform/image/codecs/tiff/tiff_layout.h"
#include "src/platform/image/codecs/tiff/tiff_sample.h"

class CmykToBgr;

/// Converts in two steps, because some colour models need all samples of a pixel while separate planes
/// deliver one at a time. Unpacking turns a pixel's samples into Levels() bytes: the buffer's own channels
/// for grey, RGB and palettes, the 8-bit samples for other models. Finish() turns these into Channels()
/// bytes.
class TiffRows
{
public:
    /// Reads the palette and other tables of tiff's current page. profile is the page's, used for CMYK.
    TiffRows(TIFF* tiff, const TiffLayout& layout, Bytes profile);
    ~TiffRows();
    TiffRows(const TiffRows&) = delete;
    TiffRows& operator=(const TiffRows&) = delete;

    /// False if the page lacks a table that its colours need.
    bool Ready() const { return levels_ > 0; }
    std::uint32_t Levels() const { return levels_; }
    std::uint32_t Channels() const { return channels_; }
    /// True if a stored row takes as many bytes as its levels: Unpack() then also works in place.
    bool InPlace() const { return in_place_; }
    /// True if Finish() is cheap row by row and works in place.
    bool FinishesRows() const { return finishes_rows_; }

    /// Unpacks a row of all samples, or of the one sample in a separate plane.
    void Unpack(const std::uint8_t* stored, std::size_t pixels, std::uint8_t* levels) const;
    void UnpackPlane(std::uint32_t plane, const std::uint8_t* stored, std::size_t pixels,
                     std::uint8_t* levels) const;
    /// Widens range to the colours in a row of all samples, or of the one sample in a separate plane. Only
    /// for signed samples.
    void WidenRange(const std::uint8_t* stored, std::size_t pixels, TiffRange& range) const;
    void WidenRangeByPlane(std::uint32_t plane, const std::uint8_t* stored, std::size_t pixels,
                           TiffRange& range) const;
    /// Unpacks rows of subsampled YCbCr. Stores the first `columns` of stored_columns pixels; the rows of
    /// levels are pitch bytes apart.
    void UnpackSubsampled(const std::uint8_t* stored, std::uint32_t stored_columns, std::uint32_t columns,
                          std::uint32_t rows, std::uint8_t* levels, std::size_t pitch) const;

    /// False if memory runs out. out may equal levels or precede it.
    bool Finish(const std::uint8_t* levels, std::size_t pixels, std::uint8_t* out) const;

private:
    void UnpackSample(std::uint32_t sample, std::uint32_t stored_samples, const std::uint8_t* stored,
                      std::size_t pixels, std::uint8_t* out) const;
    void UnpackPalette(const std::uint8_t* stored, std::size_t pixels, std::uint8_t* levels) const;
    bool ReadPalette(TIFF* tiff, bool keep_colours);
    bool ReadYCbCr(TIFF* tiff);

    TiffLayout layout_;
    std::uint32_t levels_ = 0;
    std::uint32_t channels_ = 0;
    bool in_place_ = false;
    bool finishes_rows_ = true;
    bool is_bilevel_ = false;            ///< one bit per pixel, expanded to the final level when unpacked
    std::vector<std::uint8_t> palette_;  ///< channels_ bytes per index
    std::vector<std::uint64_t> ycbcr_;   ///< libtiff's conversion tables
    std::unique_ptr<CmykToBgr> inks_;
};
