// The user's locale, from the environment.
// Room: platform/posix.
#pragma once

#include "src/platform/locale.h"

/// Asks the variables at each call and needs no locale to be installed. "C", "POSIX", an unknown language and
/// English of any country but Great Britain are American English.
class PosixLocale : public Locale
{
public:
    std::int32_t GetUserDefaultLCID() const override;  ///< from LC_ALL, LC_MESSAGES, LANG
    char cDecimalSign() const override;                ///< from LC_ALL, LC_NUMERIC, LANG
};
