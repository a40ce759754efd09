// Reads uncompressed rows that follow each other in a file.
#include "src/platform/image/pixels/stored_rows.h"

#include <algorithm>

static constexpr std::uint64_t kPiece = 256 * 1024;

bool HoldsRows(const InputFile& file, const StoredRows& rows)
{
    // Rows and strides belong to pictures within the limits, so the product fits in 64 bits.
    const std::uint64_t needed = rows.rows == 0 ? 0 : rows.stride * (rows.rows - 1) + rows.row_bytes;
    return rows.offset <= file.Size() && needed <= file.Size() - rows.offset;
}

bool ReadRows(InputFile& file, const StoredRows& rows,
              const std::function<void(std::uint64_t, const std::uint8_t*)>& row)
{
    if (rows.stride == 0)
        return false;
    const std::uint64_t rows_per_piece =
        std::clamp<std::uint64_t>(kPiece / rows.stride, 1, std::max<std::uint64_t>(rows.rows, 1));
    PixelBytes piece(rows_per_piece * rows.stride);
    for (std::uint64_t y = 0; y < rows.rows;) {
        const std::uint64_t row_count = std::min(rows_per_piece, rows.rows - y);
        const std::size_t got =
            file.ReadAt(rows.offset + y * rows.stride, std::span(piece).first(row_count * rows.stride));
        for (std::uint64_t i = 0; i < row_count; ++i, ++y) {
            if (i * rows.stride + rows.row_bytes > got)
                return false;
            row(y, piece.data() + i * rows.stride);
        }
    }
    return true;
}
