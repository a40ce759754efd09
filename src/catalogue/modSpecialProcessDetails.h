// The details of a special process: its parameters as one text, joined by "^".
// Room: catalogue.
//
// An image process's details begin with the eleven fields of a conversion, the prefix, since it ends with a
// save as well; its own fields follow. Their types and their order, which are the shape of the text, stand
// in the catalogue. Numbers are written and read in the user's decimal sign.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "src/catalogue/modSpecialProcessCatalogue.h"

/// A value for each of the process's own fields, in their order.
using DetailsValues = std::vector<DetailsValue>;

/// 0 or False for each field, in the type that its reader gives.
DetailsValues aFreshValues(const SpecialProcessRow& objRow);

/// The prefix as it stands and then the values, each followed by "^".
std::string WriteDetails(const SpecialProcessRow& objRow, const std::string& sPrefix,
                         const DetailsValues& aValues, char cDecimalSign = '.');

/// Takes the prefix and the values out of sDetails; aValues holds one for each field, as aFreshValues makes
/// them. A text without any "^" changes nothing. A field that is missing or doesn't convert keeps the value
/// that came in, and the next is still tried; nothing is ever reported. A prefix that has lost a field shifts
/// all that follows.
void ReadDetails(const SpecialProcessRow& objRow, const std::string& sDetails, std::string& sPrefix,
                 DetailsValues& aValues, char cDecimalSign = '.');

/// How a program is launched. Its details have no prefix.
struct LaunchDetails {
    std::int32_t lPriority = 0;
    std::int32_t lWindowState = 0;
    std::int32_t lWaitSeconds = 0;  ///< -1 for no limit
};

/// The three numbers with "^" between them and none at the end.
std::string WriteLaunchDetails(const LaunchDetails& objDetails);

/// A field that is missing or doesn't convert is 0; a text without any "^" gives three zeros.
LaunchDetails ReadLaunchDetails(const std::string& sDetails, char cDecimalSign = '.');
