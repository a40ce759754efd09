// Understands the date texts that people type.
#include <array>
#include <charconv>
#include <cstdio>
#include <optional>

#include "src/platform/image/metadata/metadata.h"

namespace
{
// Reads a text from the left; the first thing that isn't there spoils the rest.
class DateScanner
{
public:
    explicit DateScanner(std::string_view sText) : m_sLeft(sText) {}
    bool bEnd() const { return m_sLeft.empty(); }
    /// A number of nLeast to nMost digits.
    bool Number(int& nValue, std::size_t nLeast, std::size_t nMost)
    {
        std::size_t nDigits = 0;
        while (nDigits < m_sLeft.size() && nDigits < nMost && m_sLeft[nDigits] >= '0' &&
               m_sLeft[nDigits] <= '9')
            ++nDigits;
        if (nDigits < nLeast)
            return false;
        std::from_chars(m_sLeft.data(), m_sLeft.data() + nDigits, nValue);
        m_sLeft.remove_prefix(nDigits);
        return true;
    }
    bool Sign(char cSign)
    {
        const bool bThere = m_sLeft.starts_with(cSign);
        if (bThere)
            m_sLeft.remove_prefix(1);
        return bThere;
    }
    bool Word(std::string_view sLower)
    {
        if (m_sLeft.size() < sLower.size())
            return false;
        for (std::size_t i = 0; i < sLower.size(); ++i)
            if ((m_sLeft[i] | 0x20) != sLower[i])
                return false;
        m_sLeft.remove_prefix(sLower.size());
        return true;
    }

private:
    std::string_view m_sLeft;
};

struct DateAndTime {
    int nYear = 0, nMonth = 0, nDay = 0, nHour = 0, nMinute = 0, nSecond = 0;
};
}  // namespace

static bool bPossible(const DateAndTime& objDate)
{
    static constexpr std::array<int, 12> kDays = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (objDate.nYear < 1 || objDate.nMonth < 1 || objDate.nMonth > 12 || objDate.nDay < 1)
        return false;
    const bool bLeap = objDate.nYear % 4 == 0 && (objDate.nYear % 100 != 0 || objDate.nYear % 400 == 0);
    const int nDays =
        kDays[static_cast<std::size_t>(objDate.nMonth - 1)] + (bLeap && objDate.nMonth == 2 ? 1 : 0);
    return objDate.nDay <= nDays && objDate.nHour <= 23 && objDate.nMinute <= 59 && objDate.nSecond <= 59;
}

static bool bReadDate(DateScanner& objScanner, DateAndTime& objDate)
{
    int nFirst = 0;
    if (!objScanner.Number(nFirst, 1, 4))
        return false;
    if (objScanner.Sign('/')) {
        objDate.nMonth = nFirst;
        return objScanner.Number(objDate.nDay, 1, 2) && objScanner.Sign('/') &&
               objScanner.Number(objDate.nYear, 4, 4);
    }
    objDate.nYear = nFirst;
    const char cSign = objScanner.Sign('-') ? '-' : ':';
    return nFirst >= 1000 && (cSign == '-' || objScanner.Sign(':')) &&
           objScanner.Number(objDate.nMonth, 1, 2) && objScanner.Sign(cSign) &&
           objScanner.Number(objDate.nDay, 1, 2);
}

static bool bReadTime(DateScanner& objScanner, DateAndTime& objDate)
{
    if (!objScanner.Number(objDate.nHour, 1, 2) || !objScanner.Sign(':') ||
        !objScanner.Number(objDate.nMinute, 2, 2))
        return false;
    if (objScanner.Sign(':') && !objScanner.Number(objDate.nSecond, 2, 2))
        return false;
    objScanner.Sign(' ');
    const bool bMorning = objScanner.Word("am");
    const bool bEvening = !bMorning && objScanner.Word("pm");
    if (!bMorning && !bEvening)
        return true;
    if (objDate.nHour < 1 || objDate.nHour > 12)
        return false;
    objDate.nHour = objDate.nHour % 12 + (bEvening ? 12 : 0);
    return true;
}

std::string sExifDate(std::string_view sText)
{
    const std::string sAsItStands(sText);
    const std::size_t nFirst = sText.find_first_not_of(' ');
    const std::size_t nLast = sText.find_last_not_of(' ');
    if (nFirst == std::string_view::npos)
        return sAsItStands;
    DateScanner objScanner(sText.substr(nFirst, nLast - nFirst + 1));
    DateAndTime objDate;
    if (!bReadDate(objScanner, objDate))
        return sAsItStands;
    if (!objScanner.bEnd() &&
        !((objScanner.Sign(' ') || objScanner.Sign('T')) && bReadTime(objScanner, objDate)))
        return sAsItStands;
    if (!objScanner.bEnd() || !bPossible(objDate))
        return sAsItStands;
    std::array<char, 80> aForm{};
    std::snprintf(aForm.data(), aForm.size(), "%04d:%02d:%02d %02d:%02d:%02d", objDate.nYear, objDate.nMonth,
                  objDate.nDay, objDate.nHour, objDate.nMinute, objDate.nSecond);
    return aForm.data();
}
