// Writes a page of a TIFF file: strips first, then its directory.
// Room: platform/image/codecs/tiff.
#pragma once

#include <cstdint>

#include "src/platform/image/base/byte_reader.h"
#include "src/platform/image_library.h"

class OutputFile;
struct ImageBuffer;
struct SaveSettings;

/// Receives a page's bytes: a new file, or the end of an existing one.
class TiffSink
{
public:
    virtual ~TiffSink() = default;
    virtual bool Write(Bytes bytes) = 0;
    /// File offset of the next byte.
    virtual std::uint64_t Position() const = 0;
};

/// How a page is stored in its file.
struct TiffPageForm {
    bool big_tiff = false;
    bool one_of_several = false;
    std::uint32_t page = 0;  ///< page number, from 0
};

/// Where the page's directory was written.
struct TiffPagePlace {
    std::uint64_t directory = 0;
    std::uint64_t next_pointer = 0;  ///< offset of the directory's link to the next one, which is 0
};

/// Upper bound of the bytes a page takes, metadata included.
std::uint64_t MaxPageBytes(const ImageBuffer& image);

/// A classic TIFF is limited to 32-bit offsets.
constexpr std::uint64_t kClassicEnd = 0xFFFFFFFFu;

/// Appends the page to the sink; nothing in the file links to it yet. settings.tiff_compression: 1 LZW, 2
/// CCITT run length, 3 group 3, 4 group 4, anything else none; 2 to 4 make the picture bilevel. False if the
/// sink fails or memory runs out. Throws only std::bad_alloc.
bool WriteTiffPage(TiffSink& sink, const ImageBuffer& image, const SaveSettings& settings,
                   const TiffPageForm& form, TiffPagePlace& place);

/// Writes a new single-page file to out; the caller commits it.
bool WriteTiffFile(OutputFile& out, const ImageBuffer& image, const SaveSettings& settings,
                   const TiffPageForm& form, TiffPagePlace& place);
