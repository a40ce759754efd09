// Walks over rows that a file holds one after the other, uncompressed.
#include "src/platform/image/pixels/stored_rows.h"

#include <algorithm>

static constexpr std::uint64_t kPiece = 256 * 1024;

bool bHoldsRows(const InputFile& objFile, const StoredRows& objRows)
{
    // Rows and strides come from pictures of a size that is allowed, so that the product fits in 64 bits.
    const std::uint64_t nNeeded =
        objRows.nRows == 0 ? 0 : objRows.nStride * (objRows.nRows - 1) + objRows.nRowBytes;
    return objRows.nOffset <= objFile.Size() && nNeeded <= objFile.Size() - objRows.nOffset;
}

bool bReadRows(InputFile& objFile, const StoredRows& objRows,
               const std::function<void(std::uint64_t, const std::uint8_t*)>& fnRow)
{
    if (objRows.nStride == 0)
        return false;
    const std::uint64_t nRowsPerPiece =
        std::clamp<std::uint64_t>(kPiece / objRows.nStride, 1, std::max<std::uint64_t>(objRows.nRows, 1));
    PixelBytes aPiece(nRowsPerPiece * objRows.nStride);
    for (std::uint64_t y = 0; y < objRows.nRows;) {
        const std::uint64_t nRows = std::min(nRowsPerPiece, objRows.nRows - y);
        const std::size_t nRead = objFile.ReadAt(objRows.nOffset + y * objRows.nStride,
                                                 std::span(aPiece).first(nRows * objRows.nStride));
        for (std::uint64_t i = 0; i < nRows; ++i, ++y) {
            if (i * objRows.nStride + objRows.nRowBytes > nRead)
                return false;
            fnRow(y, aPiece.data() + i * objRows.nStride);
        }
    }
    return true;
}
