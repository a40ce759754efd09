// Dates and times of day as floating point days: parts, differences, sums and texts.
// Room: scheduler.
//
// A date-time counts days from 30 December 1899; the fraction is the time of day. One with whole part 0 is a
// bare time of day. Results are rounded to whole seconds, so that sums don't drift. Nothing here knows a time
// zone: all times are those of the wall clock.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

struct CalendarDate {
    std::int32_t lYear = 0;
    std::int32_t lMonth = 0;  ///< 1 to 12
    std::int32_t lDay = 0;    ///< 1 to 31

    bool operator==(const CalendarDate&) const = default;
};

struct ClockTime {
    std::int32_t lHour = 0;  ///< 0 to 23
    std::int32_t lMinute = 0;
    std::int32_t lSecond = 0;

    bool operator==(const ClockTime&) const = default;
};

CalendarDate objDateOf(double dtValue);
ClockTime objTimeOf(double dtValue);

/// The date at midnight. Raises kErrTypeMismatch if the calendar has no such day.
double dtFromDate(const CalendarDate& objDate);
double dtFromTime(const ClockTime& objTime);

/// The date at midnight, and the time of day without a date.
double dtDatePart(double dtValue);
double dtTimePart(double dtValue);

/// The date of the one with the time of day of the other.
double dtJoin(double dtDate, double dtTime);

/// dtTo minus dtFrom, counted in minute boundaries passed: from 9:00:00 it is 0 until 9:00:59, and -1 at
/// 8:59:59.
std::int64_t lDiffMinutes(double dtFrom, double dtTo);
/// dtTo minus dtFrom in seconds.
std::int64_t lDiffSeconds(double dtFrom, double dtTo);

double dtAddDays(double dtValue, std::int64_t lDays);
double dtAddMinutes(double dtValue, std::int64_t lMinutes);
double dtAddSeconds(double dtValue, std::int64_t lSeconds);
/// The same day of a later month, or that month's last day if it is shorter.
double dtAddMonths(double dtValue, std::int32_t lMonths);

/// 1 for Sunday to 7 for Saturday.
std::int16_t iWeekday(double dtValue);

/// "07:05:09 PM": the time of day alone.
std::string sTimeText(double dtValue);

/// "7/9/2009 7:05:09 PM", in every locale; a bare time of day is "7:05:09 PM".
std::string sDateTimeText(double dtValue);

/// Parses "M/D/YYYY", a time of day (with or without seconds, AM and PM), or both with a space between. The
/// month comes first in every locale. Nothing if the text is something else or the calendar has no such day.
std::optional<double> dtParsed(std::string_view sText);

bool bIsDateText(std::string_view sText);

/// Same as dtParsed, but raises kErrTypeMismatch "Type mismatch".
double dtFromText(std::string_view sText);
