// Turns a user's list of pages, as "2,5-10,3", into sorted page numbers.
// Room: conversion.
#pragma once

#include <cstdint>
#include <string>

constexpr std::int32_t kRangeEmpty = 1;             ///< nothing came in, or nothing was left
constexpr std::int32_t kRangeInvalidCharacter = 2;  ///< at least one character was dropped

/// Rewrites sRange to its distinct numbers in ascending order, joined by ",", and returns the sum of what was
/// met of the above; 0 for a clean list. An empty entry counts as page 0. Raises kErrTypeMismatch for a range
/// without one of its bounds ("5-") and kErrOverflow for a bound beyond 32 bits. Pages that no file can have
/// are fine; a list of more than 20 million of them raises kErrOutOfMemory rather than take the machine's
/// memory.
std::int32_t lParseRangeString(std::string& sRange);
