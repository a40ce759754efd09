// Deflates a PNG's filtered rows.
#include "src/platform/image/codecs/png_deflate.h"

#include <libdeflate.h>

#include <algorithm>

#include "src/platform/image/codecs/png_chunks.h"
#include "src/platform/image/codecs/png_run_length.h"
#include "src/platform/image/output_file.h"

static constexpr std::size_t kStripSize = 128 * 1024;
static constexpr std::size_t kSampleSize = 8 * 1024;
static constexpr std::size_t kChunkSize = 128 * 1024;
// Copies must save this share of what runs leave: they take three times the time.
static constexpr std::uint64_t kWorthShare = 11;
// A strip that runs shrink this far is no photograph, and looking for copies in all of it is soon done.
static constexpr std::size_t kPlainShare = 10;
// And one that shrinks this far, to so many bytes for a bit, teaches nothing about what comes after it.
static constexpr std::size_t kBlankShare = 16;
// After a strip in which copies were no better, its successors do without asking, ever more of them but at
// most these.
static constexpr std::uint32_t kMostSkipped = 5;
// Where little repeats, what there is to find is found first; where bytes are few and alike, there are many
// places to choose from.
static constexpr PngSearch kInNoise = {2, 32, false};
static constexpr PngSearch kInSmoothness = {8, 48, false};
static constexpr PngSearch kInDrawings = {32, 128, true};

PngDeflater::PngDeflater(OutputFile& objOut, std::size_t nRowBytes, std::size_t nRows,
                         std::uint32_t nPixelBytes, bool bDrawing)
    : m_objOut(objOut),
      m_nRowBytes(nRowBytes),
      m_nRowsLeft(nRows),
      m_nPixelBytes(nPixelBytes),
      m_bDrawing(bDrawing),
      m_nStripSize(nRowBytes * std::clamp<std::size_t>(kStripSize / nRowBytes, 1, nRows)),
      m_objSearch(kInDrawings),
      m_objBits(nullptr, 0, 0)
{
    m_aBuffer.resize(kPngWindow + m_nStripSize + kSlack);
    // Room for a chunk, and for the block that completes it.
    m_aPacked.resize(std::min(nRowBytes * nRows, kChunkSize + kStripSize * 3 / 2) + 1024);
    m_aRuns.reserve(4096);
    // The stream's head: deflate with the largest window, no dictionary, the compressor's default.
    m_objBits.SetOut(m_aPacked.data());
    m_objBits.Put(0x78, 8);
    m_objBits.Put(0x9C, 8);
    m_objBits.Flush();
}

bool PngDeflater::RowDone()
{
    m_nFilled += m_nRowBytes;
    --m_nRowsLeft;
    if (m_nRowsLeft > 0 && m_nFilled - m_nBegin < m_nStripSize)
        return true;
    if (!CompressStrip(m_nRowsLeft == 0))
        return false;
    const std::size_t nKept = std::min<std::size_t>(m_nFilled, kPngWindow);
    const std::size_t nMoved = m_nFilled - nKept;
    std::memmove(m_aBuffer.data(), m_aBuffer.data() + nMoved, nKept);
    m_objMatcher.Moved(nMoved);
    m_nRemembered -= std::min(m_nRemembered, nMoved);
    m_nBegin = m_nFilled = nKept;
    return true;
}

// One block for each strip: a block's codes take room, so that smaller ones gain nothing.
bool PngDeflater::CompressStrip(bool bLast)
{
    const std::uint8_t* const pBytes = m_aBuffer.data() + m_nBegin;
    const std::size_t nBytes = m_nFilled - m_nBegin;
    m_nAdler = libdeflate_adler32(m_nAdler, pBytes, nBytes);
    if (m_bDrawing) {
        FindCopies(m_nBegin, m_nFilled, m_aCopies);
        return WriteBlock(PngBlock(m_aCopies, pBytes, nBytes), bLast);
    }
    FindPngRuns(pBytes, nBytes, m_nBegin, m_nPixelBytes, m_objCosts, m_aRuns);
    const PngBlock objRuns(m_aRuns, pBytes, nBytes);
    m_objCosts = objRuns.objCosts();
    if (bTryCopies(objRuns.nBits())) {
        FindCopies(m_nBegin, m_nFilled, m_aCopies);
        const PngBlock objCopies(m_aCopies, pBytes, nBytes);
        if (objCopies.nBits() < objRuns.nBits() * 7 / 10)
            m_objSearch = kInDrawings;
        Learn(objRuns.nBits(), objCopies.nBits());
        if (objCopies.nBits() < objRuns.nBits())
            return WriteBlock(objCopies, bLast);
    }
    return WriteBlock(objRuns, bLast);
}

void PngDeflater::FindCopies(std::size_t nBegin, std::size_t nEnd, PngTokens& aTokens)
{
    const std::size_t nReach = nBegin - std::min<std::size_t>(nBegin, kPngWindow);
    m_objMatcher.Remember(m_aBuffer.data(), std::max(m_nRemembered, nReach), nBegin);
    m_objMatcher.Find(m_aBuffer.data(), nBegin, nEnd, m_objSearch, aTokens);
    m_nRemembered = nEnd;
}

// Whether to look for copies in all of the strip, which runs bring to nRuns bits.
bool PngDeflater::bTryCopies(std::uint64_t nRuns)
{
    const std::size_t nBytes = m_nFilled - m_nBegin;
    if (nRuns < nBytes / kBlankShare)
        return true;
    if (m_nSkip > 0) {
        --m_nSkip;
        return m_bPaid;
    }
    if (nRuns < 8 * nBytes / kPlainShare)
        return true;
    // Both ways are tried on the middle of the strip.
    const std::size_t nSample = std::min(kSampleSize, nBytes);
    const std::size_t nBegin = m_nBegin + (nBytes - nSample) / 2;
    const std::uint8_t* const pSample = m_aBuffer.data() + nBegin;
    FindPngRuns(pSample, nSample, nBegin, m_nPixelBytes, m_objCosts, m_aCopies);
    const std::uint64_t nSampleRuns = PngBlock(m_aCopies, pSample, nSample).nBits();
    m_objSearch = nSampleRuns > 4 * nSample ? kInNoise : kInSmoothness;
    FindCopies(nBegin, nBegin + nSample, m_aCopies);
    m_objMatcher.Forget();
    m_nRemembered = 0;
    Learn(nSampleRuns, PngBlock(m_aCopies, pSample, nSample).nBits());
    return m_bPaid;
}

void PngDeflater::Learn(std::uint64_t nRuns, std::uint64_t nCopies)
{
    m_nSkipMost = nCopies < nRuns ? 0 : std::min(m_nSkipMost + 1, kMostSkipped);
    m_nSkip = m_nSkipMost;
    m_bPaid = nCopies < nRuns - nRuns / kWorthShare;
}

bool PngDeflater::WriteBlock(const PngBlock& objBlock, bool bLast)
{
    const auto nUsed = static_cast<std::size_t>(m_objBits.pOut() - m_aPacked.data());
    if (m_aPacked.size() < nUsed + objBlock.nMostBytes()) {
        m_aPacked.resize(nUsed + objBlock.nMostBytes());
        m_objBits.SetOut(m_aPacked.data() + nUsed);
    }
    objBlock.Write(m_objBits, bLast);
    return FlushChunk(bLast);
}

// Hands what is packed to the file as a chunk once there is enough of it, or at the end.
bool PngDeflater::FlushChunk(bool bEnd)
{
    if (bEnd) {
        m_objBits.Align();
        for (int nShift = 24; nShift >= 0; nShift -= 8)
            m_objBits.Put(m_nAdler >> nShift & 0xFF, 8);
        m_objBits.Flush();
    }
    const auto nUsed = static_cast<std::size_t>(m_objBits.pOut() - m_aPacked.data());
    if (!bEnd && nUsed < kChunkSize)
        return true;
    m_objBits.SetOut(m_aPacked.data());
    return WritePngChunk(m_objOut, nPngType("IDAT"), Bytes(m_aPacked).first(nUsed));
}
