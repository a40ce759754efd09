// Parses numbers and Booleans from text and formats them.
// Room: base.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// True for a decimal number, optionally with surrounding spaces, a sign, decimals and an exponent. "," is
/// the decimal sign if the locale says so (cDecimalSign), and otherwise may separate thousands. A text with
/// exactly one "." and no "," is read with "." as the decimal sign in every locale.
bool bIsNumeric(std::string_view sText, char cDecimalSign = '.');

/// Parses such a number. Raises kErrTypeMismatch "Type mismatch" for any other text.
double dToDouble(std::string_view sText, char cDecimalSign = '.');

/// Same, rounded to an integer, ties to even. Raises kErrOverflow "Overflow" if the result doesn't fit 32
/// bits.
std::int32_t lToLong(std::string_view sText, char cDecimalSign = '.');

/// Accepts "True" and "False" in any case, or a number, where only 0 is False. Raises kErrTypeMismatch for
/// anything else.
bool bToBoolean(std::string_view sText, char cDecimalSign = '.');

/// Parses the digits that sText starts with; 0 if there are none. Never raises; clamps to 32 bits.
std::int32_t lLeadingNumber(std::string_view sText);

/// Parses the number that sText starts with, with decimals and an exponent; 0 if there is none. "." is the
/// decimal sign in every locale, so "0,5" is 0. Never raises; clamps to the range of a double.
double dLeadingNumber(std::string_view sText);

/// Formats with one decimal and at least one digit before it, rounding half away from zero: the formats
/// "##0.0" and "#0.0".
std::string sFormatOneDecimal(double dValue, char cDecimalSign = '.');

/// The same with two decimals: the format "0.00".
std::string sFormatTwoDecimals(double dValue, char cDecimalSign = '.');

/// The shortest text that parses back to the same number. Only very large and very small numbers get an
/// exponent.
std::string sFromDouble(double dValue, char cDecimalSign = '.');
