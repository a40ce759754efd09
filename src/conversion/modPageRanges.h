// Parses page lists such as "2,5-10,3".
// Room: conversion.
#pragma once

#include <cstdint>
#include <string>

constexpr std::int32_t kRangeEmpty = 1;             ///< the input was empty, or nothing valid was left
constexpr std::int32_t kRangeInvalidCharacter = 2;  ///< at least one character was dropped

/// Rewrites sRange as distinct page numbers in ascending order, joined by ",". Returns 0 or a sum of the
/// codes above. An empty entry counts as page 0. Raises kErrTypeMismatch if a range lacks a bound ("5-"),
/// kErrOverflow if a bound doesn't fit 32 bits, and kErrOutOfMemory for more than 20 million pages. Page
/// numbers aren't checked against any file.
std::int32_t lParseRangeString(std::string& sRange);
