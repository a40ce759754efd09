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
    /// Reads the palette and the other tables of the page that pTiff is at; aProfile is the page's, for pages
    /// of inks.
    TiffRows(TIFF* pTiff, const TiffLayout& objLayout, Bytes aProfile);
    ~TiffRows();
    TiffRows(const TiffRows&) = delete;
    TiffRows& operator=(const TiffRows&) = delete;

    /// False for a page without the table that its colours need.
    bool Ready() const { return m_nLevels > 0; }
    std::uint32_t Levels() const { return m_nLevels; }
    std::uint32_t Channels() const { return m_nChannels; }
    /// True when a stored row needs as many bytes as its levels: it may be decoded where the levels are to
    /// be, and Unpack be called with pStored equal to pLevels.
    bool InPlace() const { return m_bInPlace; }
    /// True when Finish is cheap enough for a row at a time, and may be given pLevels as pOut.
    bool FinishesRows() const { return m_bFinishesRows; }

    /// A row of all samples, or with nPlane of that sample alone.
    void Unpack(const std::uint8_t* pStored, std::size_t nPixels, std::uint8_t* pLevels) const;
    void UnpackPlane(std::uint32_t nPlane, const std::uint8_t* pStored, std::size_t nPixels,
                     std::uint8_t* pLevels) const;
    /// Rows of YCbCr in which several pixels share a colour. The first nColumns of nStoredColumns pixels of
    /// nRows rows go to pLevels, whose rows are nPitch bytes apart.
    void UnpackSubsampled(const std::uint8_t* pStored, std::uint32_t nStoredColumns, std::uint32_t nColumns,
                          std::uint32_t nRows, std::uint8_t* pLevels, std::size_t nPitch) const;

    /// False without memory. pOut may be pLevels or before it.
    bool bFinish(const std::uint8_t* pLevels, std::size_t nPixels, std::uint8_t* pOut) const;

private:
    void UnpackSample(std::uint32_t nSample, std::uint32_t nStoredSamples, const std::uint8_t* pStored,
                      std::size_t nPixels, std::uint8_t* pOut) const;
    void UnpackPalette(const std::uint8_t* pStored, std::size_t nPixels, std::uint8_t* pLevels) const;
    bool bReadPalette(TIFF* pTiff, bool bKeepColours);
    bool bReadYCbCr(TIFF* pTiff);

    TiffLayout m_objLayout;
    std::uint32_t m_nLevels = 0;
    std::uint32_t m_nChannels = 0;
    bool m_bInPlace = false;
    bool m_bFinishesRows = true;
    bool m_bBits = false;  ///< one bit a pixel, brought to its final level when it is unpacked
    std::vector<std::uint8_t> m_aPalette;  ///< m_nChannels bytes for each index
    std::vector<std::uint64_t> m_aYCbCr;   ///< libtiff's tables
    std::unique_ptr<CmykToBgr> m_pInks;
};
