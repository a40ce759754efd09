// libtiff on our files: opened without a message to anybody, read where it asks, written into memory.
// Room: platform/image/codecs/tiff.
#pragma once

#include <tiffio.h>

#include <cstdint>
#include <memory>
#include <vector>

#include "src/platform/image/base/byte_reader.h"

class InputFile;

/// A file open for reading. Only its header has been read; a page is chosen by its directory's offset.
class TiffInput
{
public:
    /// objFile is lent for the life of this object. Handle() is null for a file that libtiff doesn't take.
    explicit TiffInput(InputFile& objFile);
    TIFF* Handle() const { return m_pTiff.get(); }

private:
    struct Close {
        void operator()(TIFF* pTiff) const { TIFFClose(pTiff); }
    };
    static tmsize_t Read(thandle_t pThis, void* pOut, tmsize_t nCount);
    static tmsize_t Write(thandle_t pThis, void* pBytes, tmsize_t nCount);
    static toff_t Seek(thandle_t pThis, toff_t nOffset, int nWhence);
    static toff_t Size(thandle_t pThis);

    InputFile& m_objFile;
    std::uint64_t m_nPosition = 0;
    std::unique_ptr<TIFF, Close> m_pTiff;
};

/// What libtiff's encoders make of a picture's strips, without a file around them.
class TiffStripEncoder
{
public:
    TiffStripEncoder();
    /// To set the tags that the encoder goes by; null without memory.
    TIFF* Handle() const { return m_pTiff.get(); }
    /// The encoded bytes of strip nStrip; empty after a failure. aStrip is changed.
    std::vector<std::uint8_t> aEncoded(std::uint32_t nStrip, std::vector<std::uint8_t>& aStrip);

private:
    struct Forget {
        void operator()(TIFF* pTiff) const { TIFFCleanup(pTiff); }  // TIFFClose would add a directory
    };
    static tmsize_t Read(thandle_t pThis, void* pOut, tmsize_t nCount);
    static tmsize_t Write(thandle_t pThis, void* pBytes, tmsize_t nCount);
    static toff_t Seek(thandle_t pThis, toff_t nOffset, int nWhence);
    static toff_t Size(thandle_t pThis);

    std::vector<std::uint8_t> m_aWritten;
    std::uint64_t m_nPosition = 0;
    bool m_bFailed = false;
    std::unique_ptr<TIFF, Forget> m_pTiff;
};
