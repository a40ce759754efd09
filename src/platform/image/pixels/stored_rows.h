// Reads uncompressed rows that follow each other in a file.
// Room: platform/image/pixels.
#pragma once

#include <cstdint>
#include <functional>

#include "src/platform/image/base/input_file.h"

/// Layout of the rows in the file.
struct StoredRows {
    std::uint64_t offset = 0;  ///< of the first row in the file
    std::uint64_t stride = 0;  ///< bytes from one row to the next
    std::uint64_t row_bytes =
        0;  ///< bytes of pixel data per row, at most stride; the last row may end after them
    std::uint64_t rows = 0;
};

/// True if the file is long enough; check this before allocating the picture.
bool HoldsRows(const InputFile& file, const StoredRows& rows);

/// Calls row(y, bytes) for each row in order. Reads in cache-sized chunks, so the callback's picture is the
/// only large memory touched. False if the file was truncated meanwhile; the complete rows were delivered.
bool ReadRows(InputFile& file, const StoredRows& rows,
              const std::function<void(std::uint64_t, const std::uint8_t*)>& row);
