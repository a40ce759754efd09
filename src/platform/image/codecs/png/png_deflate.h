// The pixels' data of a PNG that is written: filtered rows go in, IDAT chunks come out.
// Room: platform/image/codecs/png.
#pragma once

#include <cstddef>
#include <cstdint>

#include "src/platform/image/deflate/blocks.h"
#include "src/platform/image/deflate/quick_copies.h"
#include "src/platform/image/deflate/thorough_copies.h"
#include "src/platform/image_buffer.h"

class OutputFile;

/// What the rows hold, as far as that is known beforehand.
enum class PngContent : std::uint8_t {
    Photograph,  ///< samples tell whether copies pay, and they are looked for quickly
    Flat,        ///< many pixels are as their neighbours; else as photographs
    Graphic,     ///< most pixels are as their neighbours: strips that shrink well are searched thoroughly
    Drawing,     ///< few colours: copies are looked for thoroughly
    Scan         ///< black and white in bits: copies are looked for quickly
};

/// One zlib stream, made in strips: the filtered rows of a strip and the 32 KB before it are all that is kept
/// of the picture. Where copies from afar don't make a strip clearly smaller, which is so in most
/// photographs, only runs are looked for.
class PngDeflater
{
public:
    /// For nRows rows of nRowBytes each, the filter's byte included; nPixelBytes is 1 to 4. Throws
    /// std::bad_alloc.
    PngDeflater(OutputFile& objOut, std::size_t nRowBytes, std::size_t nRows, std::uint32_t nPixelBytes,
                PngContent objContent);

    /// Where the next row is to be put. kSlack bytes behind it may be written too.
    std::uint8_t* pNextRow() { return pBuffer() + m_nFilled; }
    static constexpr std::size_t kSlack = 64;

    /// The row is there. After the last one the stream is finished. False when the file has failed.
    [[nodiscard]] bool RowDone();

private:
    std::uint8_t* pBuffer() { return m_aBuffer.data() + PngQuickCopies::kFrontSlack; }
    bool CompressStrip(bool bLast);
    bool CompressByTrial(bool bLast);
    bool bSamplePays();
    void Learn(bool bPaid);
    bool WriteBlock(const PngBlock& objBlock, bool bLast);
    bool FlushChunk(bool bEnd);

    OutputFile& m_objOut;
    std::size_t m_nRowBytes;
    std::size_t m_nRowsLeft;
    std::uint32_t m_nPixelBytes;
    PngContent m_objContent;
    std::size_t m_nStripSize;

    PixelBytes m_aBuffer;       ///< slack, what copies may reach back to, then the strip
    std::size_t m_nBegin = 0;   ///< where the strip begins
    std::size_t m_nFilled = 0;  ///< where it ends so far

    PngTokens m_aRuns;
    PngTokens m_aCopies;
    PngCosts m_objCosts = FirstPngCosts();  ///< by the runs of the strip before
    PngQuickCopies m_objQuick;
    PngThoroughCopies m_objThorough;
    bool m_bNoise = false;
    std::uint32_t m_nSkip = 0;  ///< strips that go by the last trial, in which copies did not pay
    std::uint32_t m_nSkipMost = 0;

    PixelBytes m_aPacked;  ///< a chunk's data so far
    PngBitWriter m_objBits;
    std::uint32_t m_nAdler = 1;
};
