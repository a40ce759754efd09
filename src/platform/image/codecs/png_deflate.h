// The pixels' data of a PNG that is written: filtered rows go in, IDAT chunks come out.
// Room: platform_image. May use: platform.
#pragma once

#include <cstddef>
#include <cstdint>

#include "src/platform/image/codecs/png_blocks.h"
#include "src/platform/image/codecs/png_lz77.h"
#include "src/platform/image_buffer.h"

class OutputFile;

/// One zlib stream, made in strips: the filtered rows of a strip and the 32 KB before it are all that is kept
/// of the picture. Each strip is sampled: where repetitions from afar don't make it clearly smaller, which is
/// so in most photographs, only runs are looked for.
class PngDeflater
{
public:
    /// For nRows rows of nRowBytes each, the filter's byte included; nPixelBytes is 1 to 4. With bDrawing few
    /// colours are to be expected, and repetitions are looked for from the start. Throws std::bad_alloc.
    PngDeflater(OutputFile& objOut, std::size_t nRowBytes, std::size_t nRows, std::uint32_t nPixelBytes,
                bool bDrawing);

    /// Where the next row is to be put. kSlack bytes behind it may be written too.
    std::uint8_t* pNextRow() { return m_aBuffer.data() + m_nFilled; }
    static constexpr std::size_t kSlack = 64;

    /// The row is there. After the last one the stream is finished. False when the file has failed.
    [[nodiscard]] bool RowDone();

private:
    bool CompressStrip(bool bLast);
    void FindCopies(std::size_t nBegin, std::size_t nEnd, PngTokens& aTokens);
    bool bTryCopies(std::uint64_t nRuns);
    void Learn(std::uint64_t nRuns, std::uint64_t nCopies);
    bool WriteBlock(const PngBlock& objBlock, bool bLast);
    bool FlushChunk(bool bEnd);

    OutputFile& m_objOut;
    std::size_t m_nRowBytes;
    std::size_t m_nRowsLeft;
    std::uint32_t m_nPixelBytes;
    bool m_bDrawing;
    std::size_t m_nStripSize;

    PixelBytes m_aBuffer;       ///< what copies may reach back to, then the strip
    std::size_t m_nBegin = 0;   ///< where the strip begins
    std::size_t m_nFilled = 0;  ///< where it ends so far

    PngTokens m_aRuns;
    PngCosts m_objCosts = objFirstPngCosts();  ///< by the runs of the strip before
    PngTokens m_aCopies;
    PngMatcher m_objMatcher;
    PngSearch m_objSearch;
    std::size_t m_nRemembered = 0;    ///< up to where the matcher knows the buffer
    bool m_bPaid = false;             ///< what the last sample said
    std::uint32_t m_nSkip = 0;        ///< strips that go by it
    std::uint32_t m_nSkipMost = 0;

    PixelBytes m_aPacked;  ///< a chunk's head, then its data so far
    PngBitWriter m_objBits;
    std::uint32_t m_nAdler = 1;
};
