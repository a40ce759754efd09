// Bounds-checked reading of numbers and blocks from the bytes of a file.
// Room: platform/image/base.
#pragma once

#include <cstdint>
#include <span>

using Bytes = std::span<const std::uint8_t>;

/// The first read past the end sets Failed() for good; later reads return nothing or 0. So a codec can read a
/// whole header and check once.
class ByteReader
{
public:
    explicit ByteReader(Bytes file) : left_(file) {}

    bool Failed() const { return failed_; }
    std::uint64_t Left() const { return left_.size(); }

    Bytes Take(std::uint64_t count)
    {
        failed_ = failed_ || count > left_.size();
        const Bytes taken = failed_ ? Bytes{} : left_.first(count);
        left_ = failed_ ? Bytes{} : left_.subspan(taken.size());
        return taken;
    }

    std::uint8_t U8() { return static_cast<std::uint8_t>(Little(1)); }
    std::uint16_t U16Le() { return static_cast<std::uint16_t>(Little(2)); }
    std::uint32_t U32Le() { return static_cast<std::uint32_t>(Little(4)); }
    std::int16_t I16Le() { return static_cast<std::int16_t>(Little(2)); }
    std::int32_t I32Le() { return static_cast<std::int32_t>(Little(4)); }
    std::uint16_t U16Be() { return static_cast<std::uint16_t>(Big(2)); }
    std::uint32_t U32Be() { return static_cast<std::uint32_t>(Big(4)); }

private:
    std::uint64_t Little(std::uint32_t count)
    {
        std::uint64_t value = 0;
        std::uint32_t shift = 0;
        for (const std::uint8_t byte : Take(count)) {
            value |= static_cast<std::uint64_t>(byte) << shift;
            shift += 8;
        }
        return value;
    }
    std::uint64_t Big(std::uint32_t count)
    {
        std::uint64_t value = 0;
        for (const std::uint8_t byte : Take(count))
            value = value << 8 | byte;
        return value;
    }

    Bytes left_;
    bool failed_ = false;
};
