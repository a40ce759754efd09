// Deflates a PNG's filtered rows.
#include "src/platform/image/codecs/png/png_deflate.h"

#include <libdeflate.h>

#include <algorithm>

#include "src/platform/image/base/output_file.h"
#include "src/platform/image/codecs/png/png_chunks.h"
#include "src/platform/image/deflate/run_length.h"

static constexpr std::size_t kStripSize = 128 * 1024;
static constexpr std::size_t kSampleSize = 8 * 1024;
static constexpr std::size_t kSampleReach = 16 * 1024;
static constexpr std::size_t kChunkSize = 128 * 1024;
// Copies must save this share of what runs leave: they take three times the time.
static constexpr std::uint64_t kWorthShare = 10;
// A strip that runs bring to this share of its bytes is no photograph: it is searched thoroughly, which is
// soon done. So is a small one, which is all there is of an icon.
static constexpr std::uint64_t kPlainShare = 8;
static constexpr std::size_t kSmallStrip = 64 * 1024;
// One that is brought to this share is all but empty, and teaches nothing about what comes after it.
static constexpr std::uint64_t kEmptyShare = 128;
// After a strip in which copies didn't pay, its successors do without asking, ever more of them but at
// most these.
static constexpr std::uint32_t kMostSkipped = 6;

PngDeflater::PngDeflater(OutputFile& objOut, std::size_t nRowBytes, std::size_t nRows,
                         std::uint32_t nPixelBytes, PngContent objContent)
    : m_objOut(objOut),
      m_nRowBytes(nRowBytes),
      m_nRowsLeft(nRows),
      m_nPixelBytes(nPixelBytes),
      m_objContent(objContent),
      m_nStripSize(nRowBytes * std::clamp<std::size_t>(kStripSize / nRowBytes, 1, nRows)),
      m_objBits(nullptr, 0, 0)
{
    m_aBuffer.resize(PngQuickCopies::kFrontSlack + kPngWindow + m_nStripSize + kSlack);
    std::fill_n(m_aBuffer.begin(), PngQuickCopies::kFrontSlack, std::uint8_t{0});
    // Room for a chunk, and for the block that completes it.
    m_aPacked.resize(std::min(nRowBytes * nRows, kChunkSize + kStripSize * 3 / 2) + 1024);
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
    std::memmove(pBuffer(), pBuffer() + nMoved, nKept);
    m_objQuick.Moved(nMoved);
    m_objThorough.Moved(nMoved);
    m_nBegin = m_nFilled = nKept;
    return true;
}

// Each strip is one block: a block's codes take room, so that smaller ones would gain nothing.
bool PngDeflater::CompressStrip(bool bLast)
{
    const std::uint8_t* const pBytes = pBuffer() + m_nBegin;
    const std::size_t nBytes = m_nFilled - m_nBegin;
    m_nAdler = libdeflate_adler32(m_nAdler, pBytes, nBytes);
    if (m_objContent == PngContent::Scan)
        m_objQuick.Find(pBuffer(), m_nBegin, m_nFilled, false, m_aCopies);
    else if (m_objContent == PngContent::Drawing)
        m_objThorough.Find(pBuffer(), m_nBegin, m_nFilled, m_aCopies);
    else
        return CompressByTrial(bLast);
    return WriteBlock(PngBlock(m_aCopies, pBytes, nBytes), bLast);
}

bool PngDeflater::CompressByTrial(bool bLast)
{
    const std::uint8_t* const pBytes = pBuffer() + m_nBegin;
    const std::size_t nBytes = m_nFilled - m_nBegin;
    FindPngRuns(pBytes, nBytes, m_nBegin, m_nPixelBytes, m_objCosts, m_aRuns);
    const PngBlock objRuns(m_aRuns, pBytes, nBytes);
    m_objCosts = objRuns.Costs();

    const bool bEmpty = objRuns.Bits() < 8 * nBytes / kEmptyShare;
    const bool bSmall = m_nStripSize <= kSmallStrip;
    const bool bPlain = m_objContent == PngContent::Graphic
                            ? bSmall || objRuns.Bits() < 8 * nBytes / kPlainShare
                            : m_objContent == PngContent::Flat && bSmall;
    const bool bSkip = m_nSkip > 0 && !bEmpty;
    m_nSkip -= bSkip ? 1 : 0;
    if (bSkip || (!bPlain && !bSamplePays()))
        return WriteBlock(objRuns, bLast);

    if (bPlain)
        m_objThorough.Find(pBuffer(), m_nBegin, m_nFilled, m_aCopies);
    else
        m_objQuick.Find(pBuffer(), m_nBegin, m_nFilled, m_bNoise, m_aCopies);
    const PngBlock objCopies(m_aCopies, pBytes, nBytes);
    if (bPlain && !bEmpty)
        Learn(objCopies.Bits() < objRuns.Bits() - objRuns.Bits() / kWorthShare);
    return WriteBlock(objCopies.Bits() < objRuns.Bits() ? objCopies : objRuns, bLast);
}

// Tries both ways on the middle of the strip and compares what would be written.
bool PngDeflater::bSamplePays()
{
    const std::size_t nSample = std::min(kSampleSize, m_nFilled - m_nBegin);
    const std::size_t nBegin = m_nBegin + (m_nFilled - m_nBegin - nSample) / 2;
    const std::uint8_t* const pSample = pBuffer() + nBegin;
    FindPngRuns(pSample, nSample, nBegin, m_nPixelBytes, m_objCosts, m_aCopies);
    const std::uint64_t nRuns = PngBlock(m_aCopies, pSample, nSample).Bits();
    m_bNoise = nRuns > 4 * nSample;
    m_objQuick.Find(pBuffer(), nBegin, nBegin + nSample, m_bNoise, m_aCopies, kSampleReach);
    m_objQuick.Forget();
    Learn(PngBlock(m_aCopies, pSample, nSample).Bits() < nRuns - nRuns / kWorthShare);
    return m_nSkip == 0;
}

void PngDeflater::Learn(bool bPaid)
{
    m_nSkipMost = bPaid ? 0 : std::min(m_nSkipMost + 2, kMostSkipped);
    m_nSkip = m_nSkipMost;
}

bool PngDeflater::WriteBlock(const PngBlock& objBlock, bool bLast)
{
    const auto nUsed = static_cast<std::size_t>(m_objBits.Out() - m_aPacked.data());
    if (m_aPacked.size() < nUsed + objBlock.MaxBytes()) {
        m_aPacked.resize(nUsed + objBlock.MaxBytes());
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
    const auto nUsed = static_cast<std::size_t>(m_objBits.Out() - m_aPacked.data());
    if (!bEnd && nUsed < kChunkSize)
        return true;
    m_objBits.SetOut(m_aPacked.data());
    return WritePngChunk(m_objOut, nPngType("IDAT"), Bytes(m_aPacked).first(nUsed));
}
