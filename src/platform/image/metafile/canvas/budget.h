// The work that a metafile may cost.
// Room: platform/image/metafile/canvas.
#pragma once

#include <cstdint>

/// A few bytes can ask for a whole page to be painted, and a file can say so a million times. So work is
/// counted, in units of about one painted pixel, before it is done; a file that wants more than it was
/// granted is refused.
class Budget
{
public:
    explicit Budget(std::uint64_t nUnits) : m_nLeft(nUnits) {}

    /// Takes nUnits off. False, from then on, when there weren't enough.
    bool Spend(std::uint64_t nUnits)
    {
        m_bSpent = m_bSpent || nUnits > m_nLeft;
        m_nLeft = m_bSpent ? 0 : m_nLeft - nUnits;
        return !m_bSpent;
    }
    bool Spent() const { return m_bSpent; }

private:
    std::uint64_t m_nLeft;
    bool m_bSpent = false;
};
