// Writes deflate's blocks.
#include "src/platform/image/deflate/blocks.h"

#include <algorithm>

static constexpr std::uint32_t kLongestDistanceCode = 15;
static constexpr std::uint32_t kLongestRunCode = 7;
static constexpr std::size_t kMostStored = 65535;
static constexpr std::uint32_t kStoredHead = 40;  // bits, the filling before it not counted
// The order in which the lengths of the code for lengths stand: those that are 0 most often come last.
static constexpr std::array<std::uint8_t, 19> kRunOrder = {16, 17, 18, 0, 8,  7, 9,  6, 10, 5,
                                                           11, 4,  12, 3, 13, 2, 14, 1, 15};
static constexpr std::array<std::uint8_t, 3> kRunExtraBits = {2, 3, 7};  // of 16, 17 and 18

PngCosts objFirstPngCosts()
{
    PngCosts objCosts;
    objCosts.aLiteral.fill(6);
    objCosts.aLength.fill(7);
    for (std::size_t i = 0; i < objCosts.aDistance.size(); ++i)
        objCosts.aDistance[i] =
            static_cast<std::uint8_t>(2 + nPngDistanceExtraBits(static_cast<std::uint32_t>(i)));
    objCosts.nLeastLiteral = 2;  // too little costs time, too much costs copies
    objCosts.nLeastCopy = 8;
    return objCosts;
}

PngBlock::PngBlock(const PngTokens& aTokens, const std::uint8_t* pBytes, std::size_t nBytes)
    : m_aTokens(aTokens), m_pBytes(pBytes), m_nBytes(nBytes)
{
    Count();
    MakePngCodes(m_objCounts.aLiterals, kPngLongestCode, std::span(m_aLiterals).first(kPngLiteralCodes));
    MakePngCodes(m_objCounts.aDistances, kLongestDistanceCode, m_aDistances);
    PlanHeader();
    m_nBits += nBitsWith(m_aLiterals, m_aDistances);

    const std::uint64_t nStored = 8 * nBytes + (nBytes / kMostStored + 1) * kStoredHead;
    if (nStored < m_nBits) {
        m_objForm = Form::Stored;
        m_nBits = nStored;
    }
    // The fixed codes have no header; they can only win where that is a good part of the block.
    if (nBytes > 2048)
        return;
    std::array<PngCode, kPngLiteralCodes + 2> aLiterals{};
    std::array<PngCode, kPngDistanceCodes> aDistances{};
    for (std::size_t i = 0; i < aLiterals.size(); ++i)
        aLiterals[i].nLength = i < 144 ? 8 : i < 256 ? 9 : i < 280 ? 7 : 8;
    for (PngCode& objCode : aDistances)
        objCode.nLength = 5;
    const std::uint64_t nFixed = 3 + nBitsWith(aLiterals, aDistances);
    if (nFixed < m_nBits) {
        m_objForm = Form::Fixed;
        m_nBits = nFixed;
        FillPngCodes(aLiterals);
        FillPngCodes(aDistances);
        m_aLiterals = aLiterals;
        m_aDistances = aDistances;
    }
}

void PngBlock::Count()
{
    // Neighbours are often alike, and a counter that was just written is slow to read: four counters take
    // turns.
    std::array<std::array<std::uint32_t, 256>, 4> aTurns{};
    const std::uint8_t* p = m_pBytes;
    for (const PngToken& objToken : m_aTokens) {
        const std::uint8_t* const pEnd = p + objToken.nLiterals;
        for (; pEnd - p >= 8; p += 8) {
            std::uint64_t nEight = 0;
            std::memcpy(&nEight, p, 8);
            for (std::size_t i = 0; i < 8; ++i, nEight >>= 8)
                ++aTurns[i & 3][nEight & 0xFF];
        }
        for (; p != pEnd; ++p)
            ++aTurns[0][*p];
        if (objToken.nLength == 0)
            continue;
        const std::uint32_t nSymbol = kPngLengthCodes.aSymbol[objToken.nLength - kPngShortestCopy];
        const std::uint32_t nDistance = nPngDistanceSymbol(objToken.nDistance);
        ++m_objCounts.aLiterals[kPngBlockEnd + 1 + nSymbol];
        ++m_objCounts.aDistances[nDistance];
        m_objCounts.nExtraBits += kPngLengthCodes.aExtraBits[nSymbol] + nPngDistanceExtraBits(nDistance);
        p += objToken.nLength;
    }
    for (std::size_t i = 0; i < 256; ++i)
        m_objCounts.aLiterals[i] = aTurns[0][i] + aTurns[1][i] + aTurns[2][i] + aTurns[3][i];
    m_objCounts.aLiterals[kPngBlockEnd] = 1;
}

std::uint64_t PngBlock::nBitsWith(const std::array<PngCode, kPngLiteralCodes + 2>& aLiterals,
                                  const std::array<PngCode, kPngDistanceCodes>& aDistances) const
{
    std::uint64_t nBits = m_objCounts.nExtraBits;
    for (std::size_t i = 0; i < kPngLiteralCodes; ++i)
        nBits += std::uint64_t{m_objCounts.aLiterals[i]} * aLiterals[i].nLength;
    for (std::size_t i = 0; i < kPngDistanceCodes; ++i)
        nBits += std::uint64_t{m_objCounts.aDistances[i]} * aDistances[i].nLength;
    return nBits;
}

// The lengths of all codes, themselves shortened by repeats (16 the one before, 17 and 18 zeros) and Huffman
// codes.
void PngBlock::PlanHeader()
{
    std::array<std::uint8_t, kPngLiteralCodes + kPngDistanceCodes> aLengths{};
    m_nLiteralCodes = kPngLiteralCodes;
    while (m_nLiteralCodes > 257 && m_aLiterals[m_nLiteralCodes - 1].nLength == 0)
        --m_nLiteralCodes;
    m_nDistanceCodes = kPngDistanceCodes;
    while (m_nDistanceCodes > 1 && m_aDistances[m_nDistanceCodes - 1].nLength == 0)
        --m_nDistanceCodes;
    std::size_t nLengths = 0;
    for (std::size_t i = 0; i < m_nLiteralCodes; ++i)
        aLengths[nLengths++] = static_cast<std::uint8_t>(m_aLiterals[i].nLength);
    for (std::size_t i = 0; i < m_nDistanceCodes; ++i)
        aLengths[nLengths++] = static_cast<std::uint8_t>(m_aDistances[i].nLength);

    std::array<std::uint32_t, 19> aCounts{};
    std::uint64_t nExtraBits = 0;
    const auto Add = [&](std::size_t nSymbol, std::size_t nExtra) {
        m_aRuns[m_nRuns++] = {static_cast<std::uint8_t>(nSymbol), static_cast<std::uint8_t>(nExtra)};
        ++aCounts[nSymbol];
        nExtraBits += nSymbol >= 16 ? kRunExtraBits[nSymbol - 16] : 0U;
    };
    for (std::size_t i = 0; i < nLengths;) {
        std::size_t nSame = 1;
        while (i + nSame < nLengths && aLengths[i + nSame] == aLengths[i])
            ++nSame;
        i += nSame;
        const std::uint8_t nLength = aLengths[i - 1];
        if (nLength == 0) {
            for (; nSame >= 11; nSame -= std::min<std::size_t>(nSame, 138))
                Add(18, std::min<std::size_t>(nSame, 138) - 11);
            if (nSame >= 3) {
                Add(17, nSame - 3);
                nSame = 0;
            }
        } else {
            Add(nLength, 0);
            --nSame;
            for (; nSame >= 3; nSame -= std::min<std::size_t>(nSame, 6))
                Add(16, std::min<std::size_t>(nSame, 6) - 3);
        }
        for (; nSame > 0; --nSame)
            Add(nLength, 0);
    }
    MakePngCodes(aCounts, kLongestRunCode, m_aRunCodes);
    m_nRunCodes = kRunOrder.size();
    while (m_nRunCodes > 4 && m_aRunCodes[kRunOrder[m_nRunCodes - 1]].nLength == 0)
        --m_nRunCodes;
    m_nBits = 3 + 5 + 5 + 4 + 3 * m_nRunCodes + nExtraBits;
    for (std::size_t i = 0; i < aCounts.size(); ++i)
        m_nBits += std::uint64_t{aCounts[i]} * m_aRunCodes[i].nLength;
}

PngCosts PngBlock::objCosts() const
{
    // What did not occur gets about what a single one would have cost.
    constexpr std::uint32_t kRareLiteral = 13;
    constexpr std::uint32_t kRareLength = 10;
    constexpr std::uint32_t kRareDistance = 8;
    if (m_objForm == Form::Stored)
        return objFirstPngCosts();
    PngCosts objCosts;
    objCosts.nLeastLiteral = kRareLiteral;
    for (std::size_t i = 0; i < objCosts.aLiteral.size(); ++i) {
        const std::uint32_t nCost = m_aLiterals[i].nLength ? m_aLiterals[i].nLength : kRareLiteral;
        objCosts.aLiteral[i] = static_cast<std::uint8_t>(nCost);
        objCosts.nLeastLiteral = std::min(objCosts.nLeastLiteral, nCost);
    }
    std::uint32_t nLeastLength = kRareLength;
    for (std::uint32_t nLength = kPngShortestCopy; nLength <= kPngLongestCopy; ++nLength) {
        const std::uint32_t nSymbol = kPngLengthCodes.aSymbol[nLength - kPngShortestCopy];
        const std::uint32_t nBits = m_aLiterals[kPngBlockEnd + 1 + nSymbol].nLength;
        const std::uint32_t nCost = (nBits ? nBits : kRareLength) + kPngLengthCodes.aExtraBits[nSymbol];
        objCosts.aLength[nLength] = static_cast<std::uint8_t>(nCost);
        nLeastLength = std::min(nLeastLength, nCost);
    }
    for (std::uint32_t i = 0; i < kPngDistanceCodes; ++i)
        objCosts.aDistance[i] = static_cast<std::uint8_t>(
            (m_aDistances[i].nLength ? m_aDistances[i].nLength : kRareDistance) + nPngDistanceExtraBits(i));
    objCosts.nLeastCopy =
        nLeastLength + *std::min_element(objCosts.aDistance.begin(), objCosts.aDistance.end());
    return objCosts;
}

void PngBlock::WriteStored(PngBitWriter& objWriter, bool bLast) const
{
    for (std::size_t nDone = 0; nDone < m_nBytes;) {
        const std::size_t nHere = std::min(m_nBytes - nDone, kMostStored);
        objWriter.Put(bLast && nDone + nHere == m_nBytes ? 1 : 0, 3);
        objWriter.Align();
        objWriter.Put(nHere, 16);
        objWriter.Put(~nHere & 0xFFFF, 16);
        objWriter.Flush();
        std::memcpy(objWriter.pOut(), m_pBytes + nDone, nHere);
        objWriter.SetOut(objWriter.pOut() + nHere);
        nDone += nHere;
    }
}

void PngBlock::WriteHeader(PngBitWriter& objWriter) const
{
    objWriter.Put(m_nLiteralCodes - 257, 5);
    objWriter.Put(m_nDistanceCodes - 1, 5);
    objWriter.Put(m_nRunCodes - 4, 4);
    for (std::size_t i = 0; i < m_nRunCodes; ++i) {
        objWriter.Put(m_aRunCodes[kRunOrder[i]].nLength, 3);
        objWriter.Flush();
    }
    for (std::size_t i = 0; i < m_nRuns; ++i) {
        const LengthRun objRun = m_aRuns[i];
        objWriter.Put(m_aRunCodes[objRun.nSymbol]);
        if (objRun.nSymbol >= 16)
            objWriter.Put(objRun.nExtra, kRunExtraBits[objRun.nSymbol - 16U]);
        objWriter.Flush();
    }
}

void PngBlock::WriteTokens(PngBitWriter& objWriter) const
{
    // A length's code and extra bits in one, since runs come by the thousand.
    struct LengthBits {
        std::uint32_t nBits;
        std::uint32_t nCount;
    };
    std::array<LengthBits, 256> aLengths;
    for (std::uint32_t i = 0; i < aLengths.size(); ++i) {
        const std::uint32_t nSymbol = kPngLengthCodes.aSymbol[i];
        const PngCode objCode = m_aLiterals[kPngBlockEnd + 1 + nSymbol];
        const std::uint32_t nExtra = i - kPngLengthCodes.aFirst[nSymbol];
        aLengths[i] = {objCode.nBits | nExtra << objCode.nLength,
                       objCode.nLength + std::uint32_t{kPngLengthCodes.aExtraBits[nSymbol]}};
    }
    // A literal's code and its length in one number, and the writer in a copy of its own, stay in registers.
    std::array<std::uint32_t, 256> aLiterals;
    for (std::size_t i = 0; i < aLiterals.size(); ++i)
        aLiterals[i] = std::uint32_t{m_aLiterals[i].nBits} << 8 | m_aLiterals[i].nLength;
    PngBitWriter objOut = objWriter;
    const std::uint8_t* p = m_pBytes;
    for (const PngToken& objToken : m_aTokens) {
        const std::uint8_t* const pEnd = p + objToken.nLiterals;
        for (; pEnd - p >= 4; p += 4) {
            for (std::size_t i = 0; i < 4; ++i) {
                const std::uint32_t nLiteral = aLiterals[p[i]];
                objOut.Put(nLiteral >> 8, nLiteral & 0xFF);
            }
            objOut.Flush();
        }
        for (; p != pEnd; ++p)
            objOut.Put(aLiterals[*p] >> 8, aLiterals[*p] & 0xFF);
        objOut.Flush();
        if (objToken.nLength == 0)
            continue;
        const LengthBits objLength = aLengths[objToken.nLength - kPngShortestCopy];
        const std::uint32_t nSymbol = nPngDistanceSymbol(objToken.nDistance);
        const std::uint32_t nExtraBits = nPngDistanceExtraBits(nSymbol);
        objOut.Put(objLength.nBits, objLength.nCount);
        objOut.Put(m_aDistances[nSymbol]);
        objOut.Put((objToken.nDistance - 1U) & ((1U << nExtraBits) - 1), nExtraBits);
        objOut.Flush();
        p += objToken.nLength;
    }
    objOut.Put(m_aLiterals[kPngBlockEnd]);
    objOut.Flush();
    objWriter = objOut;
}

void PngBlock::Write(PngBitWriter& objWriter, bool bLast) const
{
    if (m_objForm == Form::Stored) {
        WriteStored(objWriter, bLast);
        return;
    }
    objWriter.Put((bLast ? 1U : 0U) | (m_objForm == Form::Fixed ? 1U : 2U) << 1, 3);
    if (m_objForm == Form::Own)
        WriteHeader(objWriter);
    objWriter.Flush();
    WriteTokens(objWriter);
}
