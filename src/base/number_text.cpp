// Parses and formats numbers.
#include "src/base/number_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <string>

#include "src/base/raised_error.h"
#include "src/base/text.h"

// Normalises a number for std::from_chars: "." as decimal sign, no thousands separators, no leading "+".
static std::optional<std::string> sPlainNumber(std::string_view sText, char cDecimalSign)
{
    std::string sPlain = sTrim(sText);
    const bool bComma = bContains(sPlain, ",");
    const bool bOnePoint = sPlain.find('.') != std::string::npos && sPlain.find('.') == sPlain.rfind('.');
    if (cDecimalSign == ',' && !(bOnePoint && !bComma)) {
        sPlain = sReplaceAll(sPlain, ".", "");
        sPlain = sReplaceAll(sPlain, ",", ".");
    } else {
        sPlain = sReplaceAll(sPlain, ",", "");
    }
    if (sPlain.starts_with("+-"))
        return std::nullopt;
    if (sPlain.starts_with("+"))
        sPlain.erase(0, 1);
    // from_chars would also accept "inf", "nan" and "nan(1)".
    if (sPlain.find_first_not_of("0123456789.eE+-") != std::string::npos)
        return std::nullopt;
    return sPlain;
}

static std::optional<double> dParse(std::string_view sText, char cDecimalSign)
{
    const std::optional<std::string> sPlain = sPlainNumber(sText, cDecimalSign);
    if (!sPlain)
        return std::nullopt;
    double dValue = 0;
    const auto [pEnd, nError] = std::from_chars(sPlain->data(), sPlain->data() + sPlain->size(), dValue);
    if (nError == std::errc::invalid_argument || pEnd != sPlain->data() + sPlain->size())
        return std::nullopt;
    if (nError != std::errc::result_out_of_range)
        return dValue;
    if (bContains(sLower(*sPlain), "e-"))
        return 0;  // underflow
    throw clsRaisedError(kErrOverflow, "Overflow");
}

bool bIsNumeric(std::string_view sText, char cDecimalSign)
{
    try {
        return dParse(sText, cDecimalSign).has_value();
    } catch (const clsRaisedError&) {
        return false;
    }
}

double dToDouble(std::string_view sText, char cDecimalSign)
{
    const std::optional<double> dValue = dParse(sText, cDecimalSign);
    if (!dValue)
        throw clsRaisedError(kErrTypeMismatch, "Type mismatch");
    return *dValue;
}

std::int32_t lToLong(std::string_view sText, char cDecimalSign)
{
    const double dRounded = std::nearbyint(dToDouble(sText, cDecimalSign));
    if (!(dRounded >= std::numeric_limits<std::int32_t>::min() &&
          dRounded <= std::numeric_limits<std::int32_t>::max()))
        throw clsRaisedError(kErrOverflow, "Overflow");
    return static_cast<std::int32_t>(dRounded);
}

bool bToBoolean(std::string_view sText, char cDecimalSign)
{
    if (bEqualIgnoringCase(sTrim(sText), "true"))
        return true;
    if (bEqualIgnoringCase(sTrim(sText), "false"))
        return false;
    return dToDouble(sText, cDecimalSign) != 0;
}

std::int32_t lLeadingNumber(std::string_view sText)
{
    const std::string sPlain = sTrim(sText);
    const bool bNegative = !sPlain.empty() && sPlain.front() == '-';
    const std::int64_t nLimit = std::numeric_limits<std::int32_t>::max() + std::int64_t{bNegative};
    std::int64_t nValue = 0;
    for (std::size_t i = bNegative ? 1 : 0; i < sPlain.size() && sPlain[i] >= '0' && sPlain[i] <= '9'; ++i)
        nValue = std::min(nValue * 10 + (sPlain[i] - '0'), nLimit);
    return static_cast<std::int32_t>(bNegative ? -nValue : nValue);
}

double dLeadingNumber(std::string_view sText)
{
    std::string sPlain = sTrim(sText);
    if (sPlain.starts_with("+") && !sPlain.starts_with("+-"))
        sPlain.erase(0, 1);
    // from_chars would also accept "inf" and "nan".
    const std::size_t nFirst = sPlain.starts_with("-") ? 1 : 0;
    if (sPlain.find_first_of("0123456789.", nFirst) != nFirst)
        return 0;
    double dValue = 0;
    const auto [pEnd, nError] = std::from_chars(sPlain.data(), sPlain.data() + sPlain.size(), dValue);
    if (nError != std::errc::result_out_of_range)
        return dValue;
    const std::string_view sNumber(sPlain.data(), static_cast<std::size_t>(pEnd - sPlain.data()));
    const std::size_t nExponent = sNumber.find_first_of("eE");
    const bool bUnderflow = nExponent != std::string_view::npos
                                ? sNumber[nExponent + 1] == '-'
                                : sNumber.find('.') < sNumber.find_first_of("123456789");
    const double dLimit = bUnderflow ? 0 : std::numeric_limits<double>::max();
    return nFirst == 1 ? -dLimit : dLimit;
}

// Adds one to the last digit of a decimal number, carrying to the left.
static void RoundUp(std::string& sDigits)
{
    for (std::size_t i = sDigits.size(); i-- > 0;) {
        if (sDigits[i] == '.')
            continue;
        if (sDigits[i] != '9') {
            ++sDigits[i];
            return;
        }
        sDigits[i] = '0';
    }
    sDigits.insert(0, "1");
}

// Rounds the shortest decimal form rather than the binary value: 1.005 is a half to the eye, and just below
// one in memory.
static std::string sWithDecimals(double dValue, std::size_t nDecimals, char cDecimalSign)
{
    char aBuffer[400];
    const auto [pEnd, nError] =
        std::to_chars(aBuffer, aBuffer + sizeof aBuffer, std::fabs(dValue), std::chars_format::fixed);
    std::string sDigits(aBuffer, nError == std::errc() ? pEnd : aBuffer);
    if (!std::isfinite(dValue))
        return dValue < 0 ? "-" + sDigits : sDigits;
    if (sDigits.find('.') == std::string::npos)
        sDigits += '.';
    const std::size_t nEnd = sDigits.find('.') + 1 + nDecimals;
    const bool bUp = nEnd < sDigits.size() && sDigits[nEnd] >= '5';
    sDigits.resize(nEnd, '0');
    if (bUp)
        RoundUp(sDigits);
    const bool bZero = sDigits.find_first_of("123456789") == std::string::npos;
    sDigits = sReplaceAll(sDigits, ".", std::string_view(&cDecimalSign, 1));
    return dValue < 0 && !bZero ? "-" + sDigits : sDigits;
}

std::string sFormatOneDecimal(double dValue, char cDecimalSign)
{
    return sWithDecimals(dValue, 1, cDecimalSign);
}

std::string sFormatTwoDecimals(double dValue, char cDecimalSign)
{
    return sWithDecimals(dValue, 2, cDecimalSign);
}

std::string sFromDouble(double dValue, char cDecimalSign)
{
    const double dSize = std::fabs(dValue);
    const bool bPlain = dSize == 0 || (dSize >= 1e-5 && dSize < 1e15);
    char aBuffer[64];
    const auto [pEnd, nError] =
        std::to_chars(aBuffer, aBuffer + sizeof aBuffer, dValue,
                      bPlain ? std::chars_format::fixed : std::chars_format::scientific);
    const std::string sResult(aBuffer, nError == std::errc() ? pEnd : aBuffer);
    return sReplaceAll(sResult, ".", std::string_view(&cDecimalSign, 1));
}
