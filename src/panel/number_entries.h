// The panel's four number entries, each with its step bar and label.
// Room: panel.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "src/catalogue/modSpecialProcessCatalogue.h"
#include "src/forms/frmMain.h"

struct NumberEntry {
    InputSlot eSlot;
    TextBox& txt;
    ScrollBar& VScroll;
    Label& lblDescription;
    std::int32_t& lLastStep;  ///< value of VScroll after its last change
};

/// Text1, Text1b, Text1c and Text2. The first three share a place and a label: a tab shows one of them.
std::array<NumberEntry, 4> NumberEntries(frmMain& frm);

/// The entry of a slot, or null for another kind of slot.
const NumberEntry* pNumberEntry(const std::array<NumberEntry, 4>& aEntries, InputSlot eSlot);
