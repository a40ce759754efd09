// The line under a picture: its size and pages.
// Room: viewer.
#pragma once

#include <cstdint>
#include <string>

struct Application;

/// The translated line for a picture of this size. With two pages or more they come first; lFrame counts from
/// 0.
std::string sViewerText(Application& app, std::int32_t lFrames, std::int32_t lFrame, std::int32_t lWidth,
                        std::int32_t lHeight);
