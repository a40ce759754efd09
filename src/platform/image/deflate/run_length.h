// Finds runs in a PNG's filtered rows: the copies that photographs have.
// Room: platform/image/deflate.
#pragma once

#include "src/platform/image/deflate/tokens.h"

/// Makes tokens of byte_count bytes at bytes that copy from one byte or one pixel (pixel_bytes, 1 to 4)
/// before, where by costs that is cheaper than literals. Nothing further away is looked at: in filtered rows
/// of a photograph a copy from afar mostly costs more than the few bits that its literals take, and finding
/// it costs most of the time. before bytes in front of bytes belong to the same stream. 16 bytes behind the
/// last may be read.
void FindPngRuns(const std::uint8_t* bytes, std::size_t byte_count, std::size_t before,
                 std::uint32_t pixel_bytes, const PngCosts& costs, PngTokens& tokens);
