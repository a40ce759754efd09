// Writes deflate blocks from tokens.
// Room: platform/image/deflate.
#pragma once

#include "src/platform/image/deflate/huffman.h"
#include "src/platform/image/deflate/tokens.h"

/// A block's Huffman codes, built for its tokens, and its size in bits.
class PngBlock
{
public:
    /// tokens must cover exactly these bytes. Keeps references to both.
    PngBlock(const PngTokens& tokens, const std::uint8_t* bytes, std::size_t byte_count);

    std::uint64_t Bits() const { return bits_; }  ///< size in the cheapest of the block types
    PngCosts Costs() const;

    /// Upper bound in bytes of what Write() stores, including the writer's pending bits.
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
        std::uint8_t symbol;  ///< in the code length alphabet
        std::uint8_t extra;
    };

    const PngTokens& tokens_;
    const std::uint8_t* bytes_;
    std::size_t byte_count_;
    PngCounts counts_;
    Form form_ = Form::kOwn;
    std::uint64_t bits_ = 0;
    std::array<PngCode, kPngLiteralCodes + 2> literals_{};  ///< two more: the fixed code's
    std::array<PngCode, kPngDistanceCodes> distances_{};

    std::array<LengthRun, kPngLiteralCodes + kPngDistanceCodes> runs_{};
    std::size_t run_count_ = 0;
    std::size_t literal_codes_ = 0;  ///< number of codes written
    std::size_t distance_codes_ = 0;
    std::array<PngCode, 19> run_codes_{};
    std::size_t run_code_count_ = 0;
};
