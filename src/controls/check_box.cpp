// Ticks and clears check boxes.
#include "src/controls/check_box.h"

void CheckBox::SetValue(std::int32_t lValue)
{
    if (Set(m_lValue, lValue, &CheckBoxObserver::ValueChanged))
        Raise(OnClick);
}

void CheckBox::UserToggles()
{
    if (bAccepts(&CheckBoxObserver::ValueChanged))
        SetValue(m_lValue == 0 ? 1 : 0);
}
