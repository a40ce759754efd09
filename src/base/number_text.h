// Numbers and truth values read from text and written as text.
// Room: base.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// A decimal number with optional blanks around it, sign, decimals and exponent. "," is the decimal sign
/// where the locale says so (cDecimalSign); a text with one "." and no "," is read with "." as the decimal
/// sign in every locale. Where "," is not the decimal sign it may separate thousands.
bool bIsNumeric(std::string_view sText, char cDecimalSign = '.');

/// The number of such a text. Raises kErrTypeMismatch "Type mismatch" for any other text.
double dToDouble(std::string_view sText, char cDecimalSign = '.');

/// The same rounded to a whole number, halves to even. Raises kErrOverflow "Overflow" beyond 32 bits.
std::int32_t lToLong(std::string_view sText, char cDecimalSign = '.');

/// "True" and "False" without regard to case, or a number, of which 0 alone is False. Raises kErrTypeMismatch
/// else.
bool bToBoolean(std::string_view sText, char cDecimalSign = '.');

/// The number that the text begins with, 0 if there is none; never raises. Beyond 32 bits it stays at the
/// limit.
std::int32_t lLeadingNumber(std::string_view sText);

/// One decimal, at least one digit before it, halves away from zero: the formats "##0.0" and "#0.0".
std::string sFormatOneDecimal(double dValue, char cDecimalSign = '.');

/// The number as plain text, as short as still gives the same number when it is read. Only the very large and
/// the very small have an exponent.
std::string sFromDouble(double dValue, char cDecimalSign = '.');
