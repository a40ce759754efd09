// Writes a page of a TIFF file: its strips, then its directory.
// Room: platform/image/codecs/tiff.
#pragma once

#include <cstdint>

#include "src/platform/image/base/byte_reader.h"
#include "src/platform/image_library.h"

class OutputFile;
struct ImageBuffer;
struct SaveSettings;

/// Where a page's bytes go: the file under its way, from its beginning or from its end on.
class TiffSink
{
public:
    virtual ~TiffSink() = default;
    virtual bool Write(Bytes bytes) = 0;
    /// Where in the file the next byte goes.
    virtual std::uint64_t Position() const = 0;
};

/// What a page is in its file.
struct TiffPageForm {
    bool big_tiff = false;
    bool one_of_several = false;
    std::uint32_t page = 0;  ///< from 0
};

/// Where its directory came to be.
struct TiffPagePlace {
    std::uint64_t directory = 0;
    std::uint64_t next_pointer = 0;  ///< where the offset of the page after it is to be put; 0 stands there
};

/// The bytes that a page takes at most, with all that belongs to it.
std::uint64_t MaxPageBytes(const ImageBuffer& image);

/// A classic file ends where 32 bits do.
constexpr std::uint64_t kClassicEnd = 0xFFFFFFFFu;

/// Appends the page to the sink: nothing in the file points to it yet. settings.tiff_compression is 0
/// none, 1 LZW, 2 CCITT run length, 3 group 3, 4 group 4, any other number none; 2 to 4 make the picture
/// black and white. False as soon as the sink refuses, or without memory. Throws only std::bad_alloc.
bool WriteTiffPage(TiffSink& sink, const ImageBuffer& image, const SaveSettings& settings,
                   const TiffPageForm& form, TiffPagePlace& place);

/// Writes a new file of that one page into out, which the caller commits.
bool WriteTiffFile(OutputFile& out, const ImageBuffer& image, const SaveSettings& settings,
                   const TiffPageForm& form, TiffPagePlace& place);
