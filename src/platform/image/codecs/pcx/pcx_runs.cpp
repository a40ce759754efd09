// PCX run-length coding.
#include "src/platform/image/codecs/pcx/pcx_runs.h"

#include <algorithm>
#include <bit>
#include <cstring>

static constexpr std::uint8_t kCountMark = 0xC0;
static constexpr std::size_t kLongestRun = 63;
static constexpr std::uint64_t kHighBits = 0x8080808080808080;
static constexpr std::ptrdiff_t kRoom = 8 + 64;

static std::uint64_t LoadEight(const std::uint8_t* bytes)
{
    std::uint64_t byte_count = 0;
    std::memcpy(&byte_count, bytes, 8);
    return byte_count;
}

// Sets the high bit of each of the eight bytes whose top two bits are set: such a byte needs a count.
static std::uint64_t EscapeMarks(std::uint64_t bytes)
{
    return bytes & bytes << 1 & kHighBits;
}

// Index in memory order of the first byte that isn't 0. bits must not be 0.
static std::size_t FirstNonzero(std::uint64_t bits)
{
    const int zeros =
        std::endian::native == std::endian::little ? std::countr_zero(bits) : std::countl_zero(bits);
    return static_cast<std::size_t>(zeros) / 8;
}

// Sets the high bit of each of the eight bytes that is 0. Exact: no borrow crosses bytes.
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
        // While there is room for the longest run: copy eight bytes at once, keep those before the first
        // count, then expand that run.
        while (end - out >= kRoom && in_end - in >= 10) {
            const std::uint64_t bytes = LoadEight(in);
            std::memcpy(out, &bytes, 8);
            const std::uint64_t found = EscapeMarks(bytes);
            const std::size_t plain = found == 0 ? 8 : FirstNonzero(found);
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

// The length of the run at bytes, up to max.
static std::size_t RunAt(const std::uint8_t* bytes, std::size_t max)
{
    std::uint64_t all_first = 0;
    std::memset(&all_first, *bytes, 8);
    std::size_t count = 1;
    for (; count + 8 <= max; count += 8) {
        const std::uint64_t change = LoadEight(bytes + count) ^ all_first;
        if (change != 0)
            return count + FirstNonzero(change);
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
        // Copy eight bytes at once and keep those before the first one that needs a count or starts a run.
        if (end - in > 8) {
            const std::uint64_t bytes = LoadEight(in);
            const std::uint64_t change = bytes ^ LoadEight(in + 1);
            const std::uint64_t found = EscapeMarks(bytes) | ZeroBytes(change);
            const std::size_t plain = found == 0 ? 8 : FirstNonzero(found);
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
