// Converts EMF+ brushes to ink.
// Room: platform/image/metafile/emfplus.
#pragma once

#include "src/platform/image/metafile/emfplus/objects.h"

/// A colour with its channels multiplied by alpha.
std::uint32_t PremultipliedColor(ArgbColor color);

/// The ink of a brush whose units world_to_picture maps to pixels. Hatches repeat from origin.
Ink InkOf(const PlusBrush& brush, const Affine& world_to_picture, Point origin);
/// The cost of making it in budget units.
std::uint64_t InkWork(const PlusBrush& brush);

/// True if the pixel (x, y) of an 8 by 8 hatch pattern has the foreground colour. Unknown styles are all
/// foreground.
bool IsOnPlusHatch(std::uint32_t style, std::int32_t x, std::int32_t y);
