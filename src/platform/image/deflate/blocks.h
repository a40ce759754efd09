// Deflate's blocks: from tokens to bits.
// Room: platform/image/deflate.
#pragma once

#include "src/platform/image/deflate/huffman.h"
#include "src/platform/image/deflate/tokens.h"

/// The codes of one block, made for its tokens, and its length in bits.
class PngBlock
{
public:
    /// tokens stand for the bytes at bytes, all of them. Both are kept by reference.
    PngBlock(const PngTokens& tokens, const std::uint8_t* bytes, std::size_t byte_count);

    std::uint64_t Bits() const { return bits_; }  ///< of the form in which it will be written
    PngCosts Costs() const;

    /// What Write takes at most, in bytes, with what the writer still holds.
    std::size_t MaxBytes() const { return bits_ / 8 + byte_count_ / 16384 + 32; }
    void Write(PngBitWriter& writer, bool last) const;

private:
    enum class Form { kStored, kFixed, kOwn };

    void Count();
    void PlanHeader();
    std::uint64_t BitsWith(const std::array<PngCode, kPngLiteralCodes + 2>& literals,
                           const std::array<PngCode, kPngDistanceCodes>& distances) const;
    void WriteStored(PngBitWriter& writer, bool last) const;
    void WriteHeader(PngBitWriter& writer) const;
    void WriteTokens(PngBitWriter& writer) const;

    struct LengthRun {
        std::uint8_t symbol;  ///< of the code that the codes' lengths are written in
        std::uint8_t extra;
    };

    const PngTokens& tokens_;
    const std::uint8_t* bytes_;
    std::size_t byte_count_;
    PngCounts counts_;
    Form form_ = Form::kOwn;
    std::uint64_t bits_ = 0;
    std::array<PngCode, kPngLiteralCodes + 2> literals_{};  ///< the fixed code has two more that never occur
    std::array<PngCode, kPngDistanceCodes> distances_{};

    std::array<LengthRun, kPngLiteralCodes + kPngDistanceCodes> runs_{};
    std::size_t run_count_ = 0;
    std::size_t literal_codes_ = 0;  ///< written ones
    std::size_t distance_codes_ = 0;
    std::array<PngCode, 19> run_codes_{};
    std::size_t run_code_count_ = 0;
};
