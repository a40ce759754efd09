// Builds the bytes of files that no program writes.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string_view>
#include <vector>

/// Appends numbers and texts; every call gives the maker back, so that a header reads as one line.
class ByteMaker
{
public:
    ByteMaker& U8(std::initializer_list<int> aValues)
    {
        for (const int lValue : aValues)
            m_aBytes.push_back(static_cast<std::uint8_t>(lValue));
        return *this;
    }
    ByteMaker& U16Le(std::initializer_list<std::uint32_t> aValues) { return Little(aValues, 2); }
    ByteMaker& U32Le(std::initializer_list<std::uint32_t> aValues) { return Little(aValues, 4); }
    ByteMaker& U32Be(std::initializer_list<std::uint32_t> aValues)
    {
        for (const std::uint32_t nValue : aValues)
            for (int lShift = 24; lShift >= 0; lShift -= 8)
                m_aBytes.push_back(static_cast<std::uint8_t>(nValue >> lShift));
        return *this;
    }
    ByteMaker& Text(std::string_view sText)
    {
        m_aBytes.insert(m_aBytes.end(), sText.begin(), sText.end());
        return *this;
    }
    ByteMaker& Zeros(std::size_t nCount)
    {
        m_aBytes.insert(m_aBytes.end(), nCount, 0);
        return *this;
    }
    ByteMaker& All(const std::vector<std::uint8_t>& aBytes)
    {
        m_aBytes.insert(m_aBytes.end(), aBytes.begin(), aBytes.end());
        return *this;
    }
    const std::vector<std::uint8_t>& aBytes() const { return m_aBytes; }
    std::size_t nSize() const { return m_aBytes.size(); }

private:
    ByteMaker& Little(std::initializer_list<std::uint32_t> aValues, int lBytes)
    {
        for (const std::uint32_t nValue : aValues)
            for (int i = 0; i < lBytes; ++i)
                m_aBytes.push_back(static_cast<std::uint8_t>(nValue >> (8 * i)));
        return *this;
    }
    std::vector<std::uint8_t> m_aBytes;
};
