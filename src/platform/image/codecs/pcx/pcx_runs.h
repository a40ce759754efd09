// PCX run-length coding.
// Room: platform/image/codecs/pcx.
#pragma once

#include <cstdint>
#include <span>

#include "src/platform/image/base/byte_reader.h"

/// A byte of 0xC0 or more is a count of 0 to 63 for the byte after it; any other byte represents itself. Runs
/// may cross rows, as some writers produce them.
class PcxRuns
{
public:
    /// data must outlive this object. If packed is false, the bytes are taken literally.
    PcxRuns(Bytes data, bool packed) : left_(data), packed_(packed) {}

    /// Fills row. False if the data ends too early.
    bool NextRow(std::span<std::uint8_t> row);

private:
    Bytes left_;
    bool packed_;
    std::size_t run_ = 0;  ///< rest of a run that continues in the next row
    std::uint8_t run_value_ = 0;
};

/// Packs a row, or one plane of it, and returns the packed size. out needs room for 2 * row.size() bytes and
/// must not overlap row.
std::size_t PackPcxRow(Bytes row, std::uint8_t* out);
