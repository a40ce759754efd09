// Lists the number entries.
#include "src/panel/number_entries.h"

#include <algorithm>

std::array<NumberEntry, 4> NumberEntries(frmMain& frm)
{
    Label& lbl1 = frm.lblSpecialProcessTextEntryDescription1;
    Label& lbl2 = frm.lblSpecialProcessTextEntryDescription2;
    return {{{InputSlot::Text1, frm.txtSpecialProcessTextEntry1, frm.VScrollSpecialProcess1, lbl1,
              frm.alLastStep[0]},
             {InputSlot::Text1b, frm.txtSpecialProcessTextEntry1b, frm.VScrollSpecialProcess1b, lbl1,
              frm.alLastStep[1]},
             {InputSlot::Text1c, frm.txtSpecialProcessTextEntry1c, frm.VScrollSpecialProcess1c, lbl1,
              frm.alLastStep[2]},
             {InputSlot::Text2, frm.txtSpecialProcessTextEntry2, frm.VScrollSpecialProcess2, lbl2,
              frm.alLastStep[3]}}};
}

const NumberEntry* pNumberEntry(const std::array<NumberEntry, 4>& aEntries, InputSlot eSlot)
{
    const auto itFound = std::find_if(aEntries.begin(), aEntries.end(),
                                      [&](const NumberEntry& objEntry) { return objEntry.eSlot == eSlot; });
    return itFound == aEntries.end() ? nullptr : &*itFound;
}
