// Decodes run-length encoded DIB pixels.
// Room: platform/image/dib.
#pragma once

#include <cstdint>
#include <span>

#include "src/platform/image/dib/dib.h"

/// Decodes a kRle4, kRle8 or kRle24 bitmap row by row. Every call terminates, whatever the data.
class DibRuns
{
public:
    /// bits must outlive this object.
    DibRuns(const DibHeader& header, Bytes bits);

    /// Fills row with the next stored row: an 8-bit palette index per pixel, or BGR for kRle24. Skipped
    /// pixels are 0; runs are clipped at the right edge.
    void NextRow(std::span<std::uint8_t> row);

    /// False if the data ended early without an end marker.
    bool IsComplete() const { return !cut_; }

private:
    void CopyAbsolute(std::uint32_t count, std::span<std::uint8_t> row);
    void FillRun(std::uint32_t count, std::span<std::uint8_t> row);
    void Put(std::span<std::uint8_t> row, Bytes pixel);

    DibStorage storage_;
    std::uint64_t width_;
    ByteReader reader_;
    std::uint64_t column_ = 0;
    std::uint32_t rows_to_go_ = 0;  ///< rows that the last delta still skips
    bool ended_ = false;
    bool cut_ = false;
};
