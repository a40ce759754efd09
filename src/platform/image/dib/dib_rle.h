// Unpacks the run-length encoded pixels of device-independent bitmaps.
// Room: platform/image/dib.
#pragma once

#include <cstdint>
#include <span>

#include "src/platform/image/dib/dib.h"

/// Hands out the rows of one bitmap of kRle4, kRle8 or kRle24. Whatever the bytes are, every call ends.
class DibRuns
{
public:
    /// bits must outlive the object.
    DibRuns(const DibHeader& header, Bytes bits);

    /// Fills row, width items, with the next row in stored order: one palette index of 8 bits a pixel, or
    /// B, G, R for kRle24. Pixels that the runs pass over are 0; what runs lay beyond the right edge is cut.
    void NextRow(std::span<std::uint8_t> row);

    /// False when the bytes were at an end before the rows and there was no mark to say that this is so.
    bool IsComplete() const { return !cut_; }

private:
    void CopyAbsolute(std::uint32_t count, std::span<std::uint8_t> row);
    void FillRun(std::uint32_t count, std::span<std::uint8_t> row);
    void Put(std::span<std::uint8_t> row, Bytes pixel);

    DibStorage storage_;
    std::uint64_t width_;
    ByteReader reader_;
    std::uint64_t column_ = 0;
    std::uint32_t rows_to_go_ = 0;  ///< how many rows on a delta has put the place of the next pixel
    bool ended_ = false;
    bool cut_ = false;
};
