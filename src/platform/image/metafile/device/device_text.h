// Text on a metafile's picture.
// Room: platform/image/metafile/device.
#pragma once

#include <optional>
#include <vector>

#include "src/platform/image/metafile/device/device_context.h"
#include "src/platform/image/metafile/device/text_encoding.h"

/// One text as a record gives it.
struct TextRun {
    std::vector<TextCharacter> text;
    bool glyph_numbers = false;  ///< the codes are numbers of glyphs in the font that the file names
    Point reference;  ///< logical; not used when the alignment says that the current position counts
    std::vector<Point>
        steps;  ///< by unit, logical, along the base line and across it; empty for the font's own
    std::optional<Rect> box;  ///< logical
    bool fill_box = false;
    bool clip_to_box = false;
};

/// Draws with the font, colours and alignment of the context, and moves the position on if the alignment says
/// so. False when the machine has no font, or the work isn't granted.
bool DrawText(DeviceContext& dc, const TextRun& run);
