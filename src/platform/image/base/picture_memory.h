// Memory of pictures, taken so that touching it for the first time is cheap.
// Room: platform/image/base.
#pragma once

#include <cstddef>
#include <cstdint>

#include "src/platform/image_buffer.h"

/// bytes with byte_count of no particular value; what it held is gone. Throws std::bad_alloc, with bytes as
/// it was.
///
/// Memory of many megabytes comes fresh from the system, page by page as it is touched, and a page of 4 KB
/// costs as much there as decoding what it holds into it. So the system is asked for its large pages (2 MB),
/// an eighth of the cost; where it has none, nothing changes. Everything of the size of a picture should be
/// allocated by this.
void ResizeFresh(PixelBytes& bytes, std::size_t byte_count);

/// Lets the process keep up to 256 MB of freed memory for the next picture, instead of giving it back and
/// having it cleared anew, for what libraries allocate too. For a program's start; a library doesn't ask that
/// of its host.
void KeepPictureMemory();

/// Says that a library is about to take bytes in large parts by malloc, so that they come in large pages
/// too. Only a hint, and of use only after KeepPictureMemory.
void ExpectLibraryMemory(std::size_t bytes);

/// Gives whole large pages from begin on, up to end at most, back to the system: their bytes are 0 from
/// then on. Returns up to where it did so, which is begin where there is no whole one.
std::uint8_t* ReleasePages(std::uint8_t* begin, std::uint8_t* end);
