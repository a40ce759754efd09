// Memory for pictures, allocated so that the first touch is cheap.
// Room: platform/image/base.
#pragma once

#include <cstddef>
#include <cstdint>

#include "src/platform/image_buffer.h"

/// Resizes bytes to byte_count uninitialised bytes; the old contents are lost. Throws std::bad_alloc and
/// leaves bytes unchanged if memory runs out.
///
/// Large blocks come fresh from the system, and faulting in a 4 KB page costs as much as decoding the pixels
/// that fill it. Huge pages (2 MB) cost an eighth of that, so the system is asked for them; without them
/// nothing changes. Allocate everything that is as large as a picture with this.
void ResizeFresh(PixelBytes& bytes, std::size_t byte_count);

/// Makes malloc keep up to 256 MB of freed memory for the next picture instead of returning it to the system
/// and having it zeroed again. Call it at program start; a library shouldn't impose it on its host.
void KeepPictureMemory();

/// Announces that a library is about to malloc about this many bytes in large blocks, so that they come in
/// huge pages too. Only a hint, and only effective after KeepPictureMemory().
void ExpectLibraryMemory(std::size_t bytes);

/// Returns freed memory to the system after all. For a large block that the next step can't reuse.
void ReturnFreedMemory();

/// Returns the whole huge pages between begin and end to the system; their bytes read as 0 afterwards.
/// Returns the end of the released range, which is begin if there was no whole page.
std::uint8_t* ReleasePages(std::uint8_t* begin, std::uint8_t* end);
