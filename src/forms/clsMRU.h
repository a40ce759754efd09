// The most recently used texts of one combo box. settings/modMRU.h has the routines.
// Room: forms.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct clsMRU {
    std::vector<std::string> colMRU;  ///< oldest first, unique ignoring case; may exceed lMaxCount
    std::int32_t lMaxCount = 0;       ///< stored only; saving has its own limit
    std::string sKeyStem;             ///< section name and prefix of the keys
    std::string sIniFile;             ///< path of the settings file
};
