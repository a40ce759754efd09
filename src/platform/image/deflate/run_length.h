// Finds runs in a PNG's filtered rows: the copies that photographs have.
// Room: platform/image/deflate.
#pragma once

#include "src/platform/image/deflate/tokens.h"

/// Makes tokens of nBytes bytes at pBytes that copy from one byte or one pixel (nPixelBytes, 1 to 4) before,
/// where by objCosts that is cheaper than literals. Nothing further away is looked at: in filtered rows of a
/// photograph a copy from afar mostly costs more than the few bits that its literals take, and finding it
/// costs most of the time. nBefore bytes in front of pBytes belong to the same stream. 16 bytes behind the
/// last may be read.
void FindPngRuns(const std::uint8_t* pBytes, std::size_t nBytes, std::size_t nBefore,
                 std::uint32_t nPixelBytes, const PngCosts& objCosts, PngTokens& aTokens);
