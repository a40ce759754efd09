// The user's locale, from the environment.
// Room: platform/posix.
#pragma once

#include "src/platform/locale.h"

/// Reads the environment on each call; no locale needs to be installed. "C", "POSIX", unknown languages and
/// English of any country but Great Britain mean American English.
class PosixLocale : public Locale
{
public:
    std::int32_t GetUserDefaultLCID() const override;  ///< from LC_ALL, LC_MESSAGES, LANG
    char cDecimalSign() const override;                ///< from LC_ALL, LC_NUMERIC, LANG
};
