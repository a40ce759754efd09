// Details strings of special processes: the parameters joined by "^".
// Room: catalogue.
//
// The details of an image process start with the eleven fields of a conversion (the prefix), since it saves a
// file as well. Its own fields follow; the catalogue defines their types and order. Numbers use the user's
// decimal sign.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "src/catalogue/modSpecialProcessCatalogue.h"

/// One value per field of the process, in order.
using DetailsValues = std::vector<DetailsValue>;

/// 0 or False for each field, in the type its reader produces.
DetailsValues aFreshValues(const SpecialProcessRow& objRow);

/// The prefix unchanged, then each value followed by "^".
std::string WriteDetails(const SpecialProcessRow& objRow, const std::string& sPrefix,
                         const DetailsValues& aValues, char cDecimalSign = '.');

/// Parses sDetails into the prefix and the values. aValues must have one element per field, as from
/// aFreshValues. A text without "^" changes nothing. A field that is missing or doesn't convert keeps its
/// value and parsing goes on; errors are never reported. If the prefix has lost a field, all later fields
/// shift.
void ReadDetails(const SpecialProcessRow& objRow, const std::string& sDetails, std::string& sPrefix,
                 DetailsValues& aValues, char cDecimalSign = '.');

/// Parameters of a launch. Launch details have no prefix.
struct LaunchDetails {
    std::int32_t lPriority = 0;
    std::int32_t lWindowState = 0;
    std::int32_t lWaitSeconds = 0;  ///< -1 for no limit
};

/// The three numbers joined by "^", none at the end.
std::string WriteLaunchDetails(const LaunchDetails& objDetails);

/// A field that is missing or doesn't convert is 0. A text without "^" gives three zeros.
LaunchDetails ReadLaunchDetails(const std::string& sDetails, char cDecimalSign = '.');
