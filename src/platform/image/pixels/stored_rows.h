// Walks over rows that a file holds one after the other, uncompressed.
// Room: platform/image/pixels.
#pragma once

#include <cstdint>
#include <functional>

#include "src/platform/image/base/input_file.h"

/// Where the rows lie.
struct StoredRows {
    std::uint64_t offset = 0;  ///< of the first row in the file
    std::uint64_t stride = 0;  ///< bytes from one row to the next
    std::uint64_t row_bytes =
        0;  ///< bytes of a row that matter, at most stride: the last row may end with them
    std::uint64_t rows = 0;
};

/// True when the file is long enough for them: asked before a picture is allocated.
bool HoldsRows(const InputFile& file, const StoredRows& rows);

/// Calls row(y, row_bytes bytes) for row 0, 1, 2, ... It reads in pieces that stay in the processor's
/// cache, so that row's picture is the only large memory that is touched. False, after the rows that were
/// there, when the file has become shorter.
bool ReadRows(InputFile& file, const StoredRows& rows,
              const std::function<void(std::uint64_t, const std::uint8_t*)>& row);
