// Parses dates as people type them.
#include <array>
#include <charconv>
#include <cstdio>
#include <optional>

#include "src/platform/image/metadata/metadata.h"

namespace
{
// Scans a text from the left; after the first mismatch everything fails.
class DateScanner
{
public:
    explicit DateScanner(std::string_view text) : left_(text) {}
    bool End() const { return left_.empty(); }
    /// A number of min to max digits.
    bool Number(int& value, std::size_t min, std::size_t max)
    {
        std::size_t digits = 0;
        while (digits < left_.size() && digits < max && left_[digits] >= '0' && left_[digits] <= '9')
            ++digits;
        if (digits < min)
            return false;
        std::from_chars(left_.data(), left_.data() + digits, value);
        left_.remove_prefix(digits);
        return true;
    }
    bool Sign(char sign)
    {
        const bool exists = left_.starts_with(sign);
        if (exists)
            left_.remove_prefix(1);
        return exists;
    }
    bool AcceptWord(std::string_view lower)
    {
        if (left_.size() < lower.size())
            return false;
        for (std::size_t i = 0; i < lower.size(); ++i)
            if ((left_[i] | 0x20) != lower[i])
                return false;
        left_.remove_prefix(lower.size());
        return true;
    }

private:
    std::string_view left_;
};

struct DateAndTime {
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
};
}  // namespace

static bool IsPossible(const DateAndTime& date)
{
    static constexpr std::array<int, 12> kDays = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (date.year < 1 || date.month < 1 || date.month > 12 || date.day < 1)
        return false;
    const bool leap = date.year % 4 == 0 && (date.year % 100 != 0 || date.year % 400 == 0);
    const int days = kDays[static_cast<std::size_t>(date.month - 1)] + (leap && date.month == 2 ? 1 : 0);
    return date.day <= days && date.hour <= 23 && date.minute <= 59 && date.second <= 59;
}

static bool ReadDate(DateScanner& scanner, DateAndTime& date)
{
    int first = 0;
    if (!scanner.Number(first, 1, 4))
        return false;
    if (scanner.Sign('/')) {
        date.month = first;
        return scanner.Number(date.day, 1, 2) && scanner.Sign('/') && scanner.Number(date.year, 4, 4);
    }
    date.year = first;
    const char sign = scanner.Sign('-') ? '-' : ':';
    return first >= 1000 && (sign == '-' || scanner.Sign(':')) && scanner.Number(date.month, 1, 2) &&
           scanner.Sign(sign) && scanner.Number(date.day, 1, 2);
}

static bool ReadTime(DateScanner& scanner, DateAndTime& date)
{
    if (!scanner.Number(date.hour, 1, 2) || !scanner.Sign(':') || !scanner.Number(date.minute, 2, 2))
        return false;
    if (scanner.Sign(':') && !scanner.Number(date.second, 2, 2))
        return false;
    scanner.Sign(' ');
    const bool morning = scanner.AcceptWord("am");
    const bool evening = !morning && scanner.AcceptWord("pm");
    if (!morning && !evening)
        return true;
    if (date.hour < 1 || date.hour > 12)
        return false;
    date.hour = date.hour % 12 + (evening ? 12 : 0);
    return true;
}

std::string ExifDate(std::string_view text)
{
    const std::string as_it_stands(text);
    const std::size_t first = text.find_first_not_of(' ');
    const std::size_t last = text.find_last_not_of(' ');
    if (first == std::string_view::npos)
        return as_it_stands;
    DateScanner scanner(text.substr(first, last - first + 1));
    DateAndTime date;
    if (!ReadDate(scanner, date))
        return as_it_stands;
    if (!scanner.End() && !((scanner.Sign(' ') || scanner.Sign('T')) && ReadTime(scanner, date)))
        return as_it_stands;
    if (!scanner.End() || !IsPossible(date))
        return as_it_stands;
    std::array<char, 80> form{};
    std::snprintf(form.data(), form.size(), "%04d:%02d:%02d %02d:%02d:%02d", date.year, date.month, date.day,
                  date.hour, date.minute, date.second);
    return form.data();
}
