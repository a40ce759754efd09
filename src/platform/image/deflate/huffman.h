// Huffman codes as deflate has them, and the bits that they become.
// Room: platform/image/deflate.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

/// A code is at most this long, so that four literals and the seven bits that may be left from before fit
/// into 64.
constexpr std::uint32_t kPngLongestCode = 14;

/// One symbol's code: the bits in the order in which they are written, the first the lowest.
struct PngCode {
    std::uint16_t bits = 0;
    std::uint16_t length = 0;  ///< 0 = the symbol has no code
};

/// Gives each symbol that occurs a code, so that the sum of counts[i] * length is least, or nearly, among
/// codes of at most longest bits (7 to 15). At least two symbols get one, since not every reader takes a
/// code of one. The counts, at most 288 of them, are below 2^22.
void MakePngCodes(std::span<const std::uint32_t> counts, std::uint32_t longest, std::span<PngCode> codes);

/// Gives codes to lengths that are set already.
void FillPngCodes(std::span<PngCode> codes);

/// Writes bits, the lowest first. Who calls sees to it that there is room.
class PngBitWriter
{
public:
    PngBitWriter(std::uint8_t* out, std::uint64_t bits, std::uint32_t count)
        : out_(out), bits_(bits), count_(count)
    {
    }

    /// count bits, at most 57 together with those since the last Flush.
    void Put(std::uint64_t bits, std::uint32_t count)
    {
        bits_ |= bits << count_;
        count_ += count;
    }
    void Put(PngCode code) { Put(code.bits, code.length); }

    /// Moves whole bytes out; at most 7 bits stay. Writes 8 bytes and may leave part of them to be written
    /// again.
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

    /// Fills up to a whole byte with zeros.
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
