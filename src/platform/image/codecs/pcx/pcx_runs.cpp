// The run-length coding of PCX files.
#include "src/platform/image/codecs/pcx/pcx_runs.h"

#include <algorithm>
#include <bit>
#include <cstring>

static constexpr std::uint8_t kCountMark = 0xC0;
static constexpr std::size_t kLongestRun = 63;
static constexpr std::uint64_t kHighBits = 0x8080808080808080;
static constexpr std::ptrdiff_t kRoom = 8 + 64;

static std::uint64_t EightIndexes(const std::uint8_t* bytes)
{
    std::uint64_t byte_count = 0;
    std::memcpy(&byte_count, bytes, 8);
    return byte_count;
}

// The high bit of each of the eight bytes that has both high bits set, and so can't stand for itself.
static std::uint64_t MarkCount(std::uint64_t bytes)
{
    return bytes & bytes << 1 & kHighBits;
}

// The first of the eight bytes, as they lie in memory, that isn't 0. bits is not 0.
static std::size_t FirstOf(std::uint64_t bits)
{
    const int zeros =
        std::endian::native == std::endian::little ? std::countr_zero(bits) : std::countl_zero(bits);
    return static_cast<std::size_t>(zeros) / 8;
}

// The high bit of each of the eight bytes that is 0. Every bit is exact: no borrow passes from byte to byte.
static std::uint64_t ZeroBytes(std::uint64_t bytes)
{
    return ~(((bytes & ~kHighBits) + ~kHighBits) | bytes) & kHighBits;
}

bool PcxRuns::NextRow(std::span<std::uint8_t> row)
{
    std::uint8_t* out = row.data();
    std::uint8_t* const end = out + row.size();
    if (!packed_) {
        const std::size_t taken = std::min(row.size(), left_.size());
        std::copy_n(left_.begin(), taken, out);
        left_ = left_.subspan(taken);
        return taken == row.size();
    }
    const std::uint8_t* in = left_.data();
    const std::uint8_t* const in_end = in + left_.size();
    while (out < end) {
        if (run_ > 0) {
            const std::size_t count = std::min(run_, static_cast<std::size_t>(end - out));
            std::memset(out, run_value_, count);
            out += count;
            run_ -= count;
            continue;
        }
        // Where there is room for the longest run: eight bytes at once, of which those before the first mark
        // count, and then the run.
        while (end - out >= kRoom && in_end - in >= 10) {
            const std::uint64_t bytes = EightIndexes(in);
            std::memcpy(out, &bytes, 8);
            const std::uint64_t found = MarkCount(bytes);
            const std::size_t plain = found == 0 ? 8 : FirstOf(found);
            out += plain;
            in += plain;
            if (found == 0)
                continue;
            const std::size_t count = *in & kLongestRun;
            std::memset(out, in[1], 8);
            if (count > 8)
                std::memset(out + 8, in[1], kLongestRun - 8);
            out += count;
            in += 2;
        }
        if (in == in_end || (*in >= kCountMark && in + 1 == in_end)) {
            left_ = {};
            return false;
        }
        if (*in < kCountMark) {
            *out++ = *in++;
        } else {
            run_ = *in++ & kLongestRun;
            run_value_ = *in++;
        }
    }
    left_ = left_.last(static_cast<std::size_t>(in_end - in));
    return true;
}

// How often the first byte comes in a row, up to max times.
static std::size_t RunAt(const std::uint8_t* bytes, std::size_t max)
{
    std::uint64_t all_first = 0;
    std::memset(&all_first, *bytes, 8);
    std::size_t count = 1;
    for (; count + 8 <= max; count += 8) {
        const std::uint64_t change = EightIndexes(bytes + count) ^ all_first;
        if (change != 0)
            return count + FirstOf(change);
    }
    while (count < max && bytes[count] == *bytes)
        ++count;
    return count;
}

std::size_t PackPcxRow(Bytes row, std::uint8_t* out)
{
    const std::uint8_t* in = row.data();
    const std::uint8_t* const end = in + row.size();
    std::uint8_t* const start = out;
    while (in < end) {
        // Eight bytes at once, of which those before the first one that needs a mark or is repeated count.
        if (end - in > 8) {
            const std::uint64_t bytes = EightIndexes(in);
            const std::uint64_t change = bytes ^ EightIndexes(in + 1);
            const std::uint64_t found = MarkCount(bytes) | ZeroBytes(change);
            const std::size_t plain = found == 0 ? 8 : FirstOf(found);
            std::memcpy(out, &bytes, 8);
            out += plain;
            in += plain;
            if (found == 0)
                continue;
        }
        const std::uint8_t value = *in;
        const std::size_t count =
            RunAt(in, std::min<std::size_t>(static_cast<std::size_t>(end - in), kLongestRun));
        in += count;
        if (count > 1 || value >= kCountMark)
            *out++ = static_cast<std::uint8_t>(kCountMark | count);
        *out++ = value;
    }
    return static_cast<std::size_t>(out - start);
}
