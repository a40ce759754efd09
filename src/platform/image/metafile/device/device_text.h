// Draws text on a metafile's picture.
// Room: platform/image/metafile/device.
#pragma once

#include <optional>
#include <vector>

#include "src/platform/image/metafile/device/device_context.h"
#include "src/platform/image/metafile/device/text_encoding.h"

/// A text string as a record gives it.
struct TextRun {
    std::vector<TextCharacter> text;
    bool glyph_numbers = false;  ///< the codes are glyph indexes of the font that the file names
    Point reference;             ///< logical; ignored if the alignment uses the current position
    std::vector<Point>
        steps;  ///< logical, per unit, along and across the baseline; empty for the font's advances
    std::optional<Rect> box;  ///< logical
    bool fill_box = false;
    bool clip_to_box = false;
};

/// Draws the text with the context's font, colours and alignment, and advances the position if the alignment
/// says so. False if no font is installed or the budget is spent.
bool DrawText(DeviceContext& dc, const TextRun& run);
