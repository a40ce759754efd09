// Decodes wide LZW codes.
#include "src/platform/image/codecs/gif/gif_wide_codes.h"

#include <algorithm>

GifWideCodes::GifWideCodes(unsigned pixel_bits)
    : pixel_bits_(pixel_bits), code_bits_(pixel_bits + 1), next_code_((std::size_t{1} << pixel_bits) + 2)
{
    for (std::size_t i = 0; i < std::size_t{1} << pixel_bits; ++i)
        last_index_[i] = static_cast<std::uint16_t>(i);
}

bool GifWideCodes::ReadCode(Bytes& left, unsigned& code)
{
    while (bit_count_ < code_bits_) {
        if (block_.empty()) {
            const std::size_t size = left.empty() ? 0 : left[0];
            if (size == 0 || size >= left.size())
                return false;
            block_ = left.subspan(1, size);
            left = left.subspan(1 + size);
        }
        bits_ |= static_cast<std::uint32_t>(block_[0]) << bit_count_;
        bit_count_ += 8;
        block_ = block_.subspan(1);
    }
    code = bits_ & ((1u << code_bits_) - 1);
    bits_ >>= code_bits_;
    bit_count_ -= code_bits_;
    return true;
}

// Decodes the next code other than a clear code into string_.
bool GifWideCodes::NextString(Bytes& left)
{
    const std::size_t clear = std::size_t{1} << pixel_bits_;
    unsigned code = 0;
    do {
        if (!ReadCode(left, code))
            return false;
        if (code == clear) {
            code_bits_ = pixel_bits_ + 1;
            next_code_ = clear + 2;
            last_code_ = kCodes;
        }
    } while (code == clear);

    const bool is_first = last_code_ == kCodes;
    const bool is_new = !is_first && next_code_ < kCodes && code == next_code_;
    if (code == clear + 1 || (is_first ? code > clear : code >= next_code_ && !is_new))
        return false;
    // A string that is just being defined is the last one and its own first index.
    std::size_t at = is_new ? last_code_ : code;
    if (is_new)
        ++string_left_;
    while (at > clear) {
        string_[string_left_++] = last_index_[at];
        at = prefix_[at];
    }
    const std::uint16_t first = last_index_[at];
    string_[string_left_++] = first;
    if (is_new)
        string_[0] = first;
    if (!is_first && next_code_ < kCodes) {
        prefix_[next_code_] = static_cast<std::uint16_t>(last_code_);
        last_index_[next_code_] = first;
        ++next_code_;
        if (next_code_ == std::size_t{1} << code_bits_ && code_bits_ < kMaxBits)
            ++code_bits_;
    }
    last_code_ = code;
    return true;
}

bool GifWideCodes::ReadRow(Bytes& left, std::span<std::uint8_t> row)
{
    for (std::size_t x = 0; x < row.size();) {
        if (string_left_ == 0 && !NextString(left))
            return false;
        for (; x < row.size() && string_left_ > 0; ++x)
            row[x] = static_cast<std::uint8_t>(std::min<std::uint16_t>(string_[--string_left_], 255));
    }
    return true;
}
