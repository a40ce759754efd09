// Finds runs in filtered PNG rows, the kind of match that photographs have.
// Room: platform/image/deflate.
#pragma once

#include "src/platform/image/deflate/tokens.h"

/// Tokenises byte_count bytes using only matches at a distance of one byte or one pixel (pixel_bytes, 1 to
/// 4), and only where they cost less than literals. In filtered photographs, distant matches mostly cost more
/// than the few bits of their literals, and searching for them takes most of the time. The `before` bytes in
/// front of bytes belong to the same stream; 16 bytes past the end may be read.
void FindPngRuns(const std::uint8_t* bytes, std::size_t byte_count, std::size_t before,
                 std::uint32_t pixel_bytes, const PngCosts& costs, PngTokens& tokens);
