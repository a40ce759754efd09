// Decodes run-length encoded DIB pixels.
#include "src/platform/image/dib/dib_rle.h"

#include <algorithm>
#include <array>

// Data is pairs of count and value. If count is 0, value is a command or, above these, a count of literal
// pixels.
static constexpr std::uint32_t kEndOfRow = 0;
static constexpr std::uint32_t kEndOfBitmap = 1;
static constexpr std::uint32_t kDelta = 2;

DibRuns::DibRuns(const DibHeader& header, Bytes bits)
    : storage_(header.storage), width_(header.width), reader_(bits)
{
}

void DibRuns::Put(std::span<std::uint8_t> row, Bytes pixel)
{
    if (column_ < width_)
        std::copy(pixel.begin(), pixel.end(),
                  row.begin() + static_cast<std::ptrdiff_t>(column_ * pixel.size()));
    ++column_;
}

// Copies `count` literal pixels, which are padded to an even number of bytes.
void DibRuns::CopyAbsolute(std::uint32_t count, std::span<std::uint8_t> row)
{
    if (storage_ == DibStorage::kRle4) {
        const Bytes pairs = reader_.Take((count + 1) / 2);
        for (std::uint32_t i = 0; i < count && !pairs.empty(); ++i) {
            const std::uint8_t pair = pairs[i / 2];
            const auto index = static_cast<std::uint8_t>(i % 2 == 0 ? pair >> 4 : pair & 15);
            Put(row, {&index, 1});
        }
        reader_.Take(std::min<std::uint64_t>(pairs.size() % 2, reader_.Left()));
        return;
    }
    const std::size_t pixel_size = storage_ == DibStorage::kRle24 ? 3 : 1;
    const Bytes pixels = reader_.Take(count * pixel_size);
    for (std::size_t i = 0; i + pixel_size <= pixels.size(); i += pixel_size)
        Put(row, pixels.subspan(i, pixel_size));
    reader_.Take(std::min<std::uint64_t>(pixels.size() % 2, reader_.Left()));
}

// Repeats one pixel, or two alternating pixels with 4 bits, `count` times.
void DibRuns::FillRun(std::uint32_t count, std::span<std::uint8_t> row)
{
    const Bytes value = reader_.Take(storage_ == DibStorage::kRle24 ? 3 : 1);
    if (value.empty())
        return;
    const std::array<std::uint8_t, 2> pair = {static_cast<std::uint8_t>(value[0] >> 4),
                                              static_cast<std::uint8_t>(value[0] & 15)};
    for (std::uint32_t i = 0; i < count; ++i)
        Put(row, storage_ == DibStorage::kRle4 ? Bytes(pair).subspan(i % 2, 1) : value);
}

void DibRuns::NextRow(std::span<std::uint8_t> row)
{
    std::fill(row.begin(), row.end(), std::uint8_t{0});
    if (ended_)
        return;
    if (rows_to_go_ > 1) {
        --rows_to_go_;
        return;
    }
    rows_to_go_ = 0;
    while (true) {
        const std::uint32_t count = reader_.U8();
        if (!reader_.Failed() && count > 0) {
            FillRun(count, row);
            continue;
        }
        const std::uint32_t command = reader_.U8();
        if (reader_.Failed()) {
            // The last row needs no end marker if it is full.
            cut_ = column_ < width_;
            ended_ = cut_;
            column_ = 0;
            return;
        }
        if (command == kEndOfRow) {
            column_ = 0;
            return;
        }
        if (command == kEndOfBitmap) {
            ended_ = true;
            return;
        }
        if (command == kDelta) {
            column_ += reader_.U8();
            rows_to_go_ = reader_.U8();
            if (rows_to_go_ > 0)
                return;
            continue;
        }
        CopyAbsolute(command, row);
    }
}
