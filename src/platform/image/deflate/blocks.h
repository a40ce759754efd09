// Deflate's blocks: from tokens to bits.
// Room: platform/image/deflate.
#pragma once

#include "src/platform/image/deflate/huffman.h"
#include "src/platform/image/deflate/tokens.h"

/// The codes of one block, made for its tokens, and its length in bits.
class PngBlock
{
public:
    /// aTokens stand for the bytes at pBytes, all of them. Both are kept by reference.
    PngBlock(const PngTokens& aTokens, const std::uint8_t* pBytes, std::size_t nBytes);

    std::uint64_t nBits() const { return m_nBits; }  ///< of the form in which it will be written
    PngCosts objCosts() const;

    /// What Write takes at most, in bytes, with what the writer still holds.
    std::size_t nMostBytes() const { return m_nBits / 8 + m_nBytes / 16384 + 32; }
    void Write(PngBitWriter& objWriter, bool bLast) const;

private:
    enum class Form { Stored, Fixed, Own };

    void Count();
    void PlanHeader();
    std::uint64_t nBitsWith(const std::array<PngCode, kPngLiteralCodes + 2>& aLiterals,
                            const std::array<PngCode, kPngDistanceCodes>& aDistances) const;
    void WriteStored(PngBitWriter& objWriter, bool bLast) const;
    void WriteHeader(PngBitWriter& objWriter) const;
    void WriteTokens(PngBitWriter& objWriter) const;

    struct LengthRun {
        std::uint8_t nSymbol;  ///< of the code that the codes' lengths are written in
        std::uint8_t nExtra;
    };

    const PngTokens& m_aTokens;
    const std::uint8_t* m_pBytes;
    std::size_t m_nBytes;
    PngCounts m_objCounts;
    Form m_objForm = Form::Own;
    std::uint64_t m_nBits = 0;
    std::array<PngCode, kPngLiteralCodes + 2>
        m_aLiterals{};  ///< the fixed code has two more that never occur
    std::array<PngCode, kPngDistanceCodes> m_aDistances{};

    std::array<LengthRun, kPngLiteralCodes + kPngDistanceCodes> m_aRuns{};
    std::size_t m_nRuns = 0;
    std::size_t m_nLiteralCodes = 0;  ///< written ones
    std::size_t m_nDistanceCodes = 0;
    std::array<PngCode, 19> m_aRunCodes{};
    std::size_t m_nRunCodes = 0;
};
