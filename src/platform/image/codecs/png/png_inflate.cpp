// Inflates the pixels' data of a PNG.
#include "src/platform/image/codecs/png/png_inflate.h"

#include <isa-l/igzip_lib.h>
#include <libdeflate.h>

#include <algorithm>
#include <array>

static constexpr std::uint32_t kData = nPngType("IDAT");
static constexpr std::uint32_t kAll = 0xFFFFFFFF;
static constexpr std::array<std::uint8_t, 4> kDataLetters = {'I', 'D', 'A', 'T'};

PngInflater::PngInflater(PngChunkReader& objReader, const PngChunk& objFirst)
    : m_objReader(objReader), m_objChunk(objFirst), m_pState(new inflate_state)
{
    m_nSum = libdeflate_crc32(0, kDataLetters.data(), kDataLetters.size());
    isal_inflate_init(m_pState.get());
    // The stream's two header bytes say no more than the method, and may lie in two chunks.
    const Bytes aFirst = TakeInput(1);
    const int nFirst = aFirst.empty() ? 0 : aFirst[0];
    const Bytes aSecond = TakeInput(1);
    const int nSecond = aSecond.empty() ? 0 : aSecond[0];
    m_bBroken =
        m_bBroken || (nFirst & 15) != 8 || (nFirst * 256 + nSecond) % 31 != 0 || (nSecond & 0x20) != 0;
}

PngInflater::~PngInflater() = default;

// Goes from a chunk that is used up to the one behind it.
bool PngInflater::NextChunk()
{
    if (m_bBroken || m_bEnd)
        return false;
    std::uint32_t nSum = 0;
    for (std::uint64_t i = 0; i < 4; ++i) {
        const Bytes aPiece = m_objReader.SomeAt(m_objChunk.nData + m_objChunk.nLength + i, 1);
        nSum = nSum << 8 | (aPiece.empty() ? 0U : aPiece[0]);
    }
    const auto objNext = m_objReader.objChunkAt(nAfter());
    m_bBroken = nSum != m_nSum || !objNext;
    m_bEnd = !m_bBroken && objNext->nType != kData;
    if (m_bBroken || m_bEnd)
        return false;
    m_objChunk = *objNext;
    m_nTaken = 0;
    m_nSum = libdeflate_crc32(0, kDataLetters.data(), kDataLetters.size());
    return true;
}

Bytes PngInflater::TakeInput(std::uint32_t nMost)
{
    while (m_nTaken == m_objChunk.nLength)
        if (!NextChunk())
            return {};
    const Bytes aPiece =
        m_objReader.SomeAt(m_objChunk.nData + m_nTaken, std::min(nMost, m_objChunk.nLength - m_nTaken));
    m_bBroken = m_bBroken || aPiece.empty();
    if (m_bBroken)
        return {};
    m_nTaken += static_cast<std::uint32_t>(aPiece.size());
    m_nSum = libdeflate_crc32(m_nSum, aPiece.data(), aPiece.size());
    return aPiece;
}

bool PngInflater::Fill(std::span<std::uint8_t> aOut)
{
    inflate_state& objState = *m_pState;
    objState.next_out = aOut.data();
    objState.avail_out = static_cast<std::uint32_t>(aOut.size());
    while (objState.avail_out > 0 && !m_bBroken) {
        if (objState.avail_in == 0) {
            const Bytes aPiece = TakeInput(kAll);
            // The library reads through a pointer that it calls writable.
            objState.next_in = const_cast<std::uint8_t*>(aPiece.data());
            objState.avail_in = static_cast<std::uint32_t>(aPiece.size());
        }
        const std::uint32_t nInBefore = objState.avail_in;
        const std::uint32_t nOutBefore = objState.avail_out;
        if (isal_inflate(&objState) != ISAL_DECOMP_OK)
            m_bBroken = true;
        // Neither bytes taken nor given: the stream is over, or its input is.
        if (objState.avail_in == nInBefore && objState.avail_out == nOutBefore)
            break;
    }
    return !m_bBroken && objState.avail_out == 0;
}

bool PngInflater::Finish()
{
    while (!TakeInput(kAll).empty())
        ;
    return m_bEnd && !m_bBroken;
}
