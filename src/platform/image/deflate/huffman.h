// Huffman codes for deflate, and the bit writer.
// Room: platform/image/deflate.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

/// Code length limit: four literals and up to seven pending bits must fit in 64 bits.
constexpr std::uint32_t kPngLongestCode = 14;

/// A symbol's code, in writing order: the first bit is the lowest.
struct PngCode {
    std::uint16_t bits = 0;
    std::uint16_t length = 0;  ///< 0 = unused symbol
};

/// Assigns a code to each symbol that occurs so that the sum of counts[i] * length is minimal, or nearly so
/// under the limit of longest (7 to 15) bits. At least two symbols get a code, since some decoders reject a
/// single one. Takes at most 288 counts, each below 2^22.
void MakePngCodes(std::span<const std::uint32_t> counts, std::uint32_t longest, std::span<PngCode> codes);

/// Assigns canonical codes to the given lengths.
void FillPngCodes(std::span<PngCode> codes);

/// Writes bits, lowest first. The caller makes sure that there is room.
class PngBitWriter
{
public:
    PngBitWriter(std::uint8_t* out, std::uint64_t bits, std::uint32_t count)
        : out_(out), bits_(bits), count_(count)
    {
    }

    /// Appends count bits, at most 57 including those since the last Flush().
    void Put(std::uint64_t bits, std::uint32_t count)
    {
        bits_ |= bits << count_;
        count_ += count;
    }
    void Put(PngCode code) { Put(code.bits, code.length); }

    /// Writes the whole bytes; up to 7 bits remain. Stores 8 bytes, some of which the next call may
    /// overwrite.
    void Flush()
    {
        if constexpr (kLittleEndian) {
            std::memcpy(out_, &bits_, 8);
        } else {
            for (int i = 0; i < 8; ++i)
                out_[i] = static_cast<std::uint8_t>(bits_ >> 8 * i);
        }
        out_ += count_ >> 3;
        bits_ >>= count_ & ~7U;
        count_ &= 7;
    }

    /// Pads to a whole byte with zeros.
    void Align()
    {
        count_ = (count_ + 7) & ~7U;
        Flush();
    }

    std::uint8_t* Out() const { return out_; }
    std::uint64_t Bits() const { return bits_; }
    std::uint32_t Count() const { return count_; }
    void SetOut(std::uint8_t* out) { out_ = out; }

private:
    static constexpr bool kLittleEndian = __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__;

    std::uint8_t* out_;
    std::uint64_t bits_;
    std::uint32_t count_;
};
