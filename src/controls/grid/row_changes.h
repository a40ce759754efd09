// Row changes made under a redraw lock, for the views to learn of at its end.
// Room: controls/grid.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

/// From lFirst to lLast, both included.
struct RowRange {
    std::int32_t lFirst = 0;
    std::int32_t lLast = 0;
    bool operator==(const RowRange&) const = default;
};

/// Follows insertions and removals, however many, and sums them up as removals from the rows that the views
/// know, followed by insertions.
class RowChanges
{
public:
    explicit RowChanges(std::int32_t lRows);

    void Insert(std::int32_t lAt, std::int32_t lCount);
    void Remove(std::int32_t lAt, std::int32_t lCount);
    /// Gives up: rows changed places.
    void Scramble() { m_bScrambled = true; }

    /// Too much happened to sum it up; a view has to read the whole table again.
    bool bScrambled() const { return m_bScrambled; }
    /// In the numbering that the views know, last range first.
    std::vector<RowRange> aRemoved() const;
    /// In the present numbering, first range first.
    std::vector<RowRange> aInserted() const;
    /// True for a row of the present numbering that the views don't know.
    bool bIsNew(std::int32_t lRow) const;

private:
    struct Piece {
        std::int32_t lOld = 0;  ///< number of its first row before the changes; kNew for rows that are new
        std::int32_t lCount = 0;
    };
    static constexpr std::int32_t kNew = -1;
    static constexpr std::size_t kMostPieces = 1000;
    std::size_t nPieceAt(std::int32_t lRow);

    std::int32_t m_lRowsBefore;
    std::vector<Piece> m_aPieces;  ///< the present rows; old ones in their old order
    bool m_bScrambled = false;
};
