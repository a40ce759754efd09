// Keeps a number between its limits.
#include "src/controls/scroll_bar.h"

#include <algorithm>

void RangeControl::SetRange(std::int32_t lMin, std::int32_t lMax)
{
    lMax = std::max(lMin, lMax);
    if (lMin == m_lMin && lMax == m_lMax)
        return;
    m_lMin = lMin;
    m_lMax = lMax;
    const bool bMoved = m_lValue != std::clamp(m_lValue, lMin, lMax);
    m_lValue = std::clamp(m_lValue, lMin, lMax);
    Tell(&RangeObserver::RangeChanged);
    if (!bMoved)
        return;
    Tell(&RangeObserver::ValueChanged);
    Raise(OnChange);
}

bool RangeControl::StoreValue(std::int32_t lValue)
{
    return Set(m_lValue, std::clamp(lValue, m_lMin, m_lMax), &RangeObserver::ValueChanged);
}

void RangeControl::SetValue(std::int32_t lValue)
{
    if (StoreValue(lValue))
        Raise(OnChange);
}

void ScrollBar::UserDrags(std::int32_t lValue)
{
    if (!bAccepts(&RangeObserver::ValueChanged) || !StoreValue(lValue))
        return;
    m_bDragged = true;
    Raise(OnScroll);
}

void ScrollBar::UserScrolls(std::int32_t lValue)
{
    if (!bAccepts(&RangeObserver::ValueChanged))
        return;
    const bool bNew = StoreValue(lValue);
    if (std::exchange(m_bDragged, false) || bNew)
        Raise(OnChange);
}
