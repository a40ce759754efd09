// Keeps the table's rows as a list of pieces, each old or new.
#include "src/controls/grid/row_changes.h"

#include <algorithm>

RowChanges::RowChanges(std::int32_t lRows) : m_lRowsBefore(lRows)
{
    if (lRows > 0)
        m_aPieces.push_back({0, lRows});
}

// The piece that begins at a row; one that has the row in its middle is split first.
std::size_t RowChanges::nPieceAt(std::int32_t lRow)
{
    std::size_t n = 0;
    for (; n < m_aPieces.size() && lRow >= m_aPieces[n].lCount; ++n)
        lRow -= m_aPieces[n].lCount;
    if (n == m_aPieces.size() || lRow == 0)
        return n;
    Piece& objPiece = m_aPieces[n];
    const Piece objRest{objPiece.lOld == kNew ? kNew : objPiece.lOld + lRow, objPiece.lCount - lRow};
    objPiece.lCount = lRow;
    m_aPieces.insert(m_aPieces.begin() + static_cast<std::ptrdiff_t>(n + 1), objRest);
    return n + 1;
}

void RowChanges::Insert(std::int32_t lAt, std::int32_t lCount)
{
    if (m_bScrambled)
        return;
    // New rows that touch new rows are one piece: a table that only grows stays a handful of pieces.
    std::int32_t lFirst = 0;
    for (Piece& objPiece : m_aPieces) {
        if (objPiece.lOld == kNew && lAt >= lFirst && lAt <= lFirst + objPiece.lCount) {
            objPiece.lCount += lCount;
            return;
        }
        lFirst += objPiece.lCount;
        if (lFirst > lAt)
            break;
    }
    m_aPieces.insert(m_aPieces.begin() + static_cast<std::ptrdiff_t>(nPieceAt(lAt)), {kNew, lCount});
    m_bScrambled = m_aPieces.size() > kMostPieces;
}

void RowChanges::Remove(std::int32_t lAt, std::int32_t lCount)
{
    if (m_bScrambled)
        return;
    const auto nFirst = static_cast<std::ptrdiff_t>(nPieceAt(lAt));
    const auto nEnd = static_cast<std::ptrdiff_t>(nPieceAt(lAt + lCount));
    m_aPieces.erase(m_aPieces.begin() + nFirst, m_aPieces.begin() + nEnd);
    m_bScrambled = m_aPieces.size() > kMostPieces;
}

std::vector<RowRange> RowChanges::aRemoved() const
{
    std::vector<RowRange> aRanges;
    std::int32_t lNext = 0;
    for (const Piece& objPiece : m_aPieces)
        if (objPiece.lOld != kNew) {
            if (objPiece.lOld > lNext)
                aRanges.push_back({lNext, objPiece.lOld - 1});
            lNext = objPiece.lOld + objPiece.lCount;
        }
    if (m_lRowsBefore > lNext)
        aRanges.push_back({lNext, m_lRowsBefore - 1});
    std::reverse(aRanges.begin(), aRanges.end());
    return aRanges;
}

std::vector<RowRange> RowChanges::aInserted() const
{
    std::vector<RowRange> aRanges;
    std::int32_t lFirst = 0;
    for (const Piece& objPiece : m_aPieces) {
        const std::int32_t lLast = lFirst + objPiece.lCount - 1;
        if (objPiece.lOld == kNew) {
            if (!aRanges.empty() && aRanges.back().lLast == lFirst - 1)
                aRanges.back().lLast = lLast;
            else
                aRanges.push_back({lFirst, lLast});
        }
        lFirst = lLast + 1;
    }
    return aRanges;
}

bool RowChanges::bIsNew(std::int32_t lRow) const
{
    for (const Piece& objPiece : m_aPieces) {
        if (lRow < objPiece.lCount)
            return objPiece.lOld == kNew;
        lRow -= objPiece.lCount;
    }
    return false;
}
