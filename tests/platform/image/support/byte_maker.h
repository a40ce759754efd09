// Builds byte sequences that no program writes.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string_view>
#include <vector>

/// Appends numbers and texts. Calls return *this, so that a header fits one line.
class ByteMaker
{
public:
    ByteMaker& U8(std::initializer_list<int> values)
    {
        for (const int value : values)
            bytes_.push_back(static_cast<std::uint8_t>(value));
        return *this;
    }
    ByteMaker& U16Le(std::initializer_list<std::uint32_t> values) { return Little(values, 2); }
    ByteMaker& U32Le(std::initializer_list<std::uint32_t> values) { return Little(values, 4); }
    ByteMaker& U32Be(std::initializer_list<std::uint32_t> values)
    {
        for (const std::uint32_t value : values)
            for (int shift = 24; shift >= 0; shift -= 8)
                bytes_.push_back(static_cast<std::uint8_t>(value >> shift));
        return *this;
    }
    ByteMaker& Text(std::string_view text)
    {
        bytes_.insert(bytes_.end(), text.begin(), text.end());
        return *this;
    }
    ByteMaker& Zeros(std::size_t count)
    {
        bytes_.insert(bytes_.end(), count, 0);
        return *this;
    }
    ByteMaker& All(const std::vector<std::uint8_t>& bytes)
    {
        bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
        return *this;
    }
    const std::vector<std::uint8_t>& Data() const { return bytes_; }
    std::size_t Size() const { return bytes_.size(); }

private:
    ByteMaker& Little(std::initializer_list<std::uint32_t> values, int bytes)
    {
        for (const std::uint32_t value : values)
            for (int i = 0; i < bytes; ++i)
                bytes_.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
        return *this;
    }
    std::vector<std::uint8_t> bytes_;
};
