// From the samples that a TIFF page stores to the levels of a picture.
// Room: platform/image/codecs/tiff.
#pragma once

#include <tiffio.h>

#include <cstdint>
#include <memory>
#include <vector>

#include "src/platform/image/base/byte_reader.h"
#include "src/platform/image/codecs/tiff/tiff_layout.h"

class CmykToBgr;

/// Two steps, since some colours need all samples of a pixel and others come a sample at a time. First a
/// pixel's samples become Levels() bytes: for grey, RGB and palettes the picture's own channels, for other
/// colours the samples as bytes. Then Finish makes Channels() bytes of them.
class TiffRows
{
public:
    /// Reads the palette and the other tables of the page that tiff is at; profile is the page's, for pages
    /// of inks.
    TiffRows(TIFF* tiff, const TiffLayout& layout, Bytes profile);
    ~TiffRows();
    TiffRows(const TiffRows&) = delete;
    TiffRows& operator=(const TiffRows&) = delete;

    /// False for a page without the table that its colours need.
    bool Ready() const { return levels_ > 0; }
    std::uint32_t Levels() const { return levels_; }
    std::uint32_t Channels() const { return channels_; }
    /// True when a stored row needs as many bytes as its levels: it may be decoded where the levels are to
    /// be, and Unpack be called with stored equal to levels.
    bool InPlace() const { return in_place_; }
    /// True when Finish is cheap enough for a row at a time, and may be given levels as out.
    bool FinishesRows() const { return finishes_rows_; }

    /// A row of all samples, or with plane of that sample alone.
    void Unpack(const std::uint8_t* stored, std::size_t pixels, std::uint8_t* levels) const;
    void UnpackPlane(std::uint32_t plane, const std::uint8_t* stored, std::size_t pixels,
                     std::uint8_t* levels) const;
    /// Rows of YCbCr in which several pixels share a colour. The first columns of stored_columns pixels of
    /// rows rows go to levels, whose rows are pitch bytes apart.
    void UnpackSubsampled(const std::uint8_t* stored, std::uint32_t stored_columns, std::uint32_t columns,
                          std::uint32_t rows, std::uint8_t* levels, std::size_t pitch) const;

    /// False without memory. out may be levels or before it.
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
    bool is_bilevel_ = false;            ///< one bit a pixel, brought to its final level when it is unpacked
    std::vector<std::uint8_t> palette_;  ///< channels_ bytes for each index
    std::vector<std::uint64_t> ycbcr_;   ///< libtiff's tables
    std::unique_ptr<CmykToBgr> inks_;
};
