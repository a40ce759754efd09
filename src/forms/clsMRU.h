// The list of texts that the user entered last in one combo box. Its routines are in shell/modMRU.h.
// Room: forms.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct clsMRU {
    std::vector<std::string>
        colMRU;                  ///< oldest first, no two equal without regard to case; may outgrow the limit
    std::int32_t lMaxCount = 0;  ///< kept, but writing has its own limit
    std::string sKeyStem;        ///< name of the section, and head of the keys' names
    std::string sIniFile;        ///< path of the settings file
};
