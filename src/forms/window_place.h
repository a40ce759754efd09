// Position and state of a form's window.
// Room: forms.
#pragma once

#include <cstdint>

constexpr std::int32_t kWindowNormal = 0;
constexpr std::int32_t kWindowMinimized = 1;
constexpr std::int32_t kWindowMaximized = 2;

/// Maintained by the view; the position is that of the normal state, in twips.
struct WindowPlace {
    std::int32_t lWindowState = kWindowNormal;
    std::int32_t lLeft = 0;
    std::int32_t lTop = 0;
    std::int32_t lWidth = 0;
    std::int32_t lHeight = 0;
};
