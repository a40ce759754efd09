// Calculates with dates and times of day, and reads and writes them as text.
#include "src/scheduler/modDateTime.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <vector>

#include "src/base/raised_error.h"
#include "src/base/text.h"

namespace
{
constexpr std::int64_t kSecondsPerDay = 86400;
constexpr std::int64_t kSecondsPerMinute = 60;
constexpr std::int32_t kMonthsPerYear = 12;
/// Days from 30 December 1899 to 1 January 1970.
constexpr std::int64_t kDaysToUnixEpoch = 25569;
constexpr std::int32_t kFirstYear = 100;
constexpr std::int32_t kLastYear = 9999;
}  // namespace

static std::int64_t lFloorDiv(std::int64_t lValue, std::int64_t lBy)
{
    return lValue / lBy - (lValue % lBy < 0 ? 1 : 0);
}

static std::int64_t lSeconds(double dtValue)
{
    return std::llround(dtValue * static_cast<double>(kSecondsPerDay));
}

static double dtOfSeconds(std::int64_t lValue)
{
    return static_cast<double>(lValue) / static_cast<double>(kSecondsPerDay);
}

static std::int64_t lDay(double dtValue)
{
    return lFloorDiv(lSeconds(dtValue), kSecondsPerDay);
}

static std::int64_t lSecondOfDay(double dtValue)
{
    return lSeconds(dtValue) - lDay(dtValue) * kSecondsPerDay;
}

static std::chrono::year_month_day objCivil(const CalendarDate& objDate)
{
    return std::chrono::year(objDate.lYear) / std::chrono::month(static_cast<unsigned>(objDate.lMonth)) /
           std::chrono::day(static_cast<unsigned>(objDate.lDay));
}

static bool bIsDate(const CalendarDate& objDate)
{
    // The constructors of std::chrono truncate what doesn't fit, so the range is checked first.
    return objDate.lYear >= kFirstYear && objDate.lYear <= kLastYear && objDate.lMonth >= 1 &&
           objDate.lMonth <= kMonthsPerYear && objDate.lDay >= 1 && objDate.lDay <= 31 &&
           objCivil(objDate).ok();
}

CalendarDate objDateOf(double dtValue)
{
    const std::chrono::year_month_day objDate(
        std::chrono::sys_days(std::chrono::days(lDay(dtValue) - kDaysToUnixEpoch)));
    return {static_cast<int>(objDate.year()),
            static_cast<std::int32_t>(static_cast<unsigned>(objDate.month())),
            static_cast<std::int32_t>(static_cast<unsigned>(objDate.day()))};
}

ClockTime objTimeOf(double dtValue)
{
    const auto lSecond = static_cast<std::int32_t>(lSecondOfDay(dtValue));
    return {lSecond / 3600, lSecond / 60 % 60, lSecond % 60};
}

double dtFromDate(const CalendarDate& objDate)
{
    if (!bIsDate(objDate))
        throw clsRaisedError(kErrTypeMismatch, "Type mismatch");
    const auto objDays = std::chrono::sys_days(objCivil(objDate)).time_since_epoch();
    return static_cast<double>(objDays.count() + kDaysToUnixEpoch);
}

double dtFromTime(const ClockTime& objTime)
{
    return dtOfSeconds((std::int64_t{objTime.lHour} * 60 + objTime.lMinute) * 60 + objTime.lSecond);
}

double dtDatePart(double dtValue)
{
    return static_cast<double>(lDay(dtValue));
}

double dtTimePart(double dtValue)
{
    return dtOfSeconds(lSecondOfDay(dtValue));
}

double dtJoin(double dtDate, double dtTime)
{
    return dtOfSeconds(lDay(dtDate) * kSecondsPerDay + lSecondOfDay(dtTime));
}

std::int64_t lDiffMinutes(double dtFrom, double dtTo)
{
    return lFloorDiv(lSeconds(dtTo), kSecondsPerMinute) - lFloorDiv(lSeconds(dtFrom), kSecondsPerMinute);
}

std::int64_t lDiffSeconds(double dtFrom, double dtTo)
{
    return lSeconds(dtTo) - lSeconds(dtFrom);
}

double dtAddDays(double dtValue, std::int64_t lDays)
{
    return dtAddSeconds(dtValue, lDays * kSecondsPerDay);
}

double dtAddMinutes(double dtValue, std::int64_t lMinutes)
{
    return dtAddSeconds(dtValue, lMinutes * kSecondsPerMinute);
}

double dtAddSeconds(double dtValue, std::int64_t lSecondsMore)
{
    return dtOfSeconds(lSeconds(dtValue) + lSecondsMore);
}

double dtAddMonths(double dtValue, std::int32_t lMonths)
{
    CalendarDate objDate = objDateOf(dtValue);
    const std::int64_t lMonth = std::int64_t{objDate.lYear} * kMonthsPerYear + objDate.lMonth - 1 + lMonths;
    objDate.lYear = static_cast<std::int32_t>(lFloorDiv(lMonth, kMonthsPerYear));
    objDate.lMonth = static_cast<std::int32_t>(lMonth - std::int64_t{objDate.lYear} * kMonthsPerYear) + 1;
    while (objDate.lDay > 28 && !bIsDate(objDate))
        --objDate.lDay;
    return dtJoin(dtFromDate(objDate), dtValue);
}

std::int16_t iWeekday(double dtValue)
{
    // Day 1, 31 December 1899, was a Sunday.
    const std::int64_t lDays = lDay(dtValue) - 1;
    return static_cast<std::int16_t>(lDays - lFloorDiv(lDays, 7) * 7 + 1);
}

static std::string sFormattedTime(const char* sFormat, const ClockTime& objTime)
{
    std::array<char, 32> aText{};
    std::snprintf(aText.data(), aText.size(), sFormat, (objTime.lHour + 11) % 12 + 1, objTime.lMinute,
                  objTime.lSecond, objTime.lHour < 12 ? "AM" : "PM");
    return aText.data();
}

std::string sTimeText(double dtValue)
{
    return sFormattedTime("%02d:%02d:%02d %s", objTimeOf(dtValue));
}

std::string sDateTimeText(double dtValue)
{
    const std::string sTime = sFormattedTime("%d:%02d:%02d %s", objTimeOf(dtValue));
    if (lDay(dtValue) == 0)
        return sTime;
    const CalendarDate objDate = objDateOf(dtValue);
    return std::to_string(objDate.lMonth) + "/" + std::to_string(objDate.lDay) + "/" +
           std::to_string(objDate.lYear) + " " + sTime;
}

// Digits only, with spaces around them; nothing for any other text.
static std::optional<std::int32_t> lNumber(std::string_view sText)
{
    const std::string sDigits = sTrim(sText);
    std::int32_t lValue = 0;
    const auto [pEnd, nError] = std::from_chars(sDigits.data(), sDigits.data() + sDigits.size(), lValue);
    if (sDigits.empty() || sDigits.front() == '-' || nError != std::errc() ||
        pEnd != sDigits.data() + sDigits.size())
        return std::nullopt;
    return lValue;
}

static std::optional<double> dtParsedDate(std::string_view sText)
{
    const std::vector<std::string> aParts = aSplit(sText, '/');
    if (aParts.size() != 3)
        return std::nullopt;
    const std::optional<std::int32_t> lMonth = lNumber(aParts[0]);
    const std::optional<std::int32_t> lDayOfMonth = lNumber(aParts[1]);
    const std::optional<std::int32_t> lYear = lNumber(aParts[2]);
    if (!lMonth || !lDayOfMonth || !lYear || !bIsDate({*lYear, *lMonth, *lDayOfMonth}))
        return std::nullopt;
    return dtFromDate({*lYear, *lMonth, *lDayOfMonth});
}

static std::optional<double> dtParsedTime(std::string_view sText)
{
    std::string sClock = sLower(sTrim(sText));
    const bool bAfternoon = sClock.ends_with("pm");
    const bool bTwelveHours = bAfternoon || sClock.ends_with("am");
    if (bTwelveHours)
        sClock.resize(sClock.size() - 2);
    const std::vector<std::string> aParts = aSplit(sClock, ':');
    if (aParts.size() < 2 || aParts.size() > 3)
        return std::nullopt;
    const std::optional<std::int32_t> lHour = lNumber(aParts[0]);
    const std::optional<std::int32_t> lMinute = lNumber(aParts[1]);
    const std::optional<std::int32_t> lSecond = aParts.size() == 3 ? lNumber(aParts[2]) : 0;
    if (!lHour || !lMinute || !lSecond || *lHour > (bTwelveHours ? 12 : 23) || *lMinute > 59 || *lSecond > 59)
        return std::nullopt;
    const std::int32_t lHourOfDay = bTwelveHours ? *lHour % 12 + (bAfternoon ? 12 : 0) : *lHour;
    return dtFromTime({lHourOfDay, *lMinute, *lSecond});
}

std::optional<double> dtParsed(std::string_view sText)
{
    const std::size_t nLastSlash = sText.rfind('/');
    if (nLastSlash == std::string_view::npos)
        return dtParsedTime(sText);
    const std::size_t nYear = sText.find_first_not_of(' ', nLastSlash + 1);
    const std::size_t nYearEnd = std::min(sText.find(' ', std::min(nYear, sText.size())), sText.size());
    const std::optional<double> dtDate = dtParsedDate(sText.substr(0, nYearEnd));
    if (!dtDate || sTrim(sText.substr(nYearEnd)).empty())
        return dtDate;
    const std::optional<double> dtTime = dtParsedTime(sText.substr(nYearEnd));
    return dtTime ? std::optional(dtJoin(*dtDate, *dtTime)) : std::nullopt;
}

bool bIsDateText(std::string_view sText)
{
    return dtParsed(sText).has_value();
}

double dtFromText(std::string_view sText)
{
    const std::optional<double> dtValue = dtParsed(sText);
    if (!dtValue)
        throw clsRaisedError(kErrTypeMismatch, "Type mismatch");
    return *dtValue;
}
