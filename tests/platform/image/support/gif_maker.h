// Builds GIF files block by block, including invalid ones.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "tests/platform/image/support/byte_maker.h"

using GifColours = std::vector<std::array<int, 3>>;  ///< R, G, B; 2, 4, 8 ... of them

/// Pictures are written as plain 3-bit codes without strings, so the reader's table doesn't matter. Indexes
/// are 0 to 3.
class GifMaker
{
public:
    GifMaker(std::uint32_t width, std::uint32_t height, const GifColours& colours, int background = 0)
    {
        bytes_.Text("GIF89a").U16Le({width, height});
        bytes_.U8({colours.empty() ? 0 : 0x80 | TableSize(colours), background, 0});
        Table(colours);
    }
    /// disposal is 0 to 7; transparent is -1 for none.
    GifMaker& Control(int disposal, int transparent = -1)
    {
        bytes_.U8({0x21, 0xF9, 4, disposal << 2 | (transparent >= 0 ? 1 : 0), 10, 0,
                   transparent >= 0 ? transparent : 0, 0});
        return *this;
    }
    GifMaker& Comment(const std::string& text)
    {
        bytes_.U8({0x21, 0xFE, static_cast<int>(text.size())}).Text(text).U8({0});
        return *this;
    }
    GifMaker& PlainText()
    {
        bytes_.U8({0x21, 0x01, 12}).Zeros(12).U8({1, 'x', 0});
        return *this;
    }
    GifMaker& Descriptor(std::uint32_t left, std::uint32_t top, std::uint32_t width, std::uint32_t height,
                         const GifColours& local = {}, bool interlaced = false)
    {
        bytes_.U8({0x2C}).U16Le({left, top, width, height});
        bytes_.U8({(local.empty() ? 0 : 0x80 | TableSize(local)) | (interlaced ? 0x40 : 0)});
        Table(local);
        return *this;
    }
    GifMaker& Pixels(const std::vector<int>& indexes)
    {
        std::vector<std::uint8_t> data;
        unsigned bit_count = 0, waiting = 0;
        const auto put_code = [&](unsigned bits) {
            bit_count |= bits << waiting;
            waiting += 3;
            if (waiting >= 8) {
                data.push_back(static_cast<std::uint8_t>(bit_count));
                bit_count >>= 8;
                waiting -= 8;
            }
        };
        for (std::size_t i = 0; i < indexes.size(); ++i) {
            if (i % 2 == 0)
                put_code(4);  // clear before the reader's codes exceed 3 bits
            put_code(static_cast<unsigned>(indexes[i]));
        }
        put_code(5);
        data.push_back(static_cast<std::uint8_t>(bit_count));
        return Data(2, data);
    }
    GifMaker& Data(int code_size, const std::vector<std::uint8_t>& data)
    {
        bytes_.U8({code_size});
        for (std::size_t i = 0; i < data.size(); i += 255) {
            const std::size_t end = std::min(data.size(), i + 255);
            bytes_.U8({static_cast<int>(end - i)});
            bytes_.All({data.begin() + static_cast<long>(i), data.begin() + static_cast<long>(end)});
        }
        bytes_.U8({0});
        return *this;
    }
    GifMaker& Frame(std::uint32_t left, std::uint32_t top, std::uint32_t width, std::uint32_t height,
                    const std::vector<int>& indexes, const GifColours& local = {})
    {
        return Descriptor(left, top, width, height, local).Pixels(indexes);
    }
    GifMaker& Raw(std::initializer_list<int> values)
    {
        bytes_.U8(values);
        return *this;
    }
    GifMaker& End() { return Raw({0x3B}); }
    const std::vector<std::uint8_t>& File() const { return bytes_.Data(); }

private:
    static int TableSize(const GifColours& colours)
    {
        int bits = 1;
        while (1u << bits < colours.size())
            ++bits;
        return bits - 1;
    }
    void Table(const GifColours& colours)
    {
        for (const auto& colour : colours)
            bytes_.U8({colour[0], colour[1], colour[2]});
    }
    ByteMaker bytes_;
};
