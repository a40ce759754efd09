// Where a form's window stands, and in which state it is.
// Room: forms.
#pragma once

#include <cstdint>

constexpr std::int32_t kWindowNormal = 0;
constexpr std::int32_t kWindowMinimized = 1;
constexpr std::int32_t kWindowMaximized = 2;

/// Kept by whoever draws the form; the place is that of the normal state, in twips.
struct WindowPlace {
    std::int32_t lWindowState = kWindowNormal;
    std::int32_t lLeft = 0;
    std::int32_t lTop = 0;
    std::int32_t lWidth = 0;
    std::int32_t lHeight = 0;
};
