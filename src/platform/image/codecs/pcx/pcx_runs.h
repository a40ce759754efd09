// The run-length coding of PCX files.
// Room: platform/image/codecs/pcx.
#pragma once

#include <cstdint>
#include <span>

#include "src/platform/image/base/byte_reader.h"

/// A byte of 0xC0 and more is a count of 0 to 63, and the byte that is repeated follows; any other byte is
/// itself. Runs may go on from one row to the next, as some writers had it.
class PcxRuns
{
public:
    /// data must outlive the object. Without packed the bytes are taken as they are.
    PcxRuns(Bytes data, bool packed) : left_(data), packed_(packed) {}

    /// Fills all of row; False when the data ended before.
    bool NextRow(std::span<std::uint8_t> row);

private:
    Bytes left_;
    bool packed_;
    std::size_t run_ = 0;  ///< what is left of a run that the last row ended in
    std::uint8_t run_value_ = 0;
};

/// Packs one row (or one plane of it) and returns how many bytes it took; out has room for 2 * row.size().
/// out must not lie in row.
std::size_t PackPcxRow(Bytes row, std::uint8_t* out);
