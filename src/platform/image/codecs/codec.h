// The interface of every format: recognise a file, decode its pages, encode a picture.
// Room: platform/image/codecs.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "src/platform/image/base/byte_reader.h"
#include "src/platform/image_buffer.h"
#include "src/platform/image_library.h"

class InputFile;
class OutputFile;

/// The least size that a decoder may reduce a picture to; 0 for a side that isn't considered, both 0 if
/// pictures must not be reduced.
struct SmallestSize {
    std::int32_t width = 0;
    std::int32_t height = 0;
};

/// An open file. It keeps what makes the next page cheap: reading all pages in order costs one pass.
class ImageDecoder
{
public:
    virtual ~ImageDecoder() = default;
    /// At least 1.
    [[nodiscard]] virtual std::int32_t FrameCount() = 0;
    /// The page to load when none is named.
    [[nodiscard]] virtual std::int32_t MainFrame() { return 0; }
    /// Allows DecodeFrame to reduce pictures (see ImageBuffer::reduction). upright is the smallest size after
    /// EXIF's orientation is applied. Formats that can't reduce cheaply ignore it.
    virtual void SetSmallestSize(SmallestSize /*upright*/) {}
    /// Decodes page `frame`, 0 to FrameCount() - 1. False if the page is broken, truncated or over the
    /// limits; image is then unchanged. Throws only std::bad_alloc. Pixels have 8 bits per channel and
    /// are in the colour space of the profile, if any. Any orientation is applied except EXIF's, which is
    /// left to the caller (see metadata.h).
    [[nodiscard]] virtual bool DecodeFrame(std::int32_t frame, ImageBuffer& image) = 0;
};

/// File formats. The values are the file type codes that the logic uses.
enum class FileType : std::int32_t {
    kJpeg = 1,
    kBmp = 2,
    kTiff = 3,
    kGif = 4,
    kEmf = 5,
    kJ2k = 6,
    kPcx = 7,
    kPng = 8,
    kRas = 9,
    kTga = 10,
    kWmf = 11,
    kIco = 12,
    kCur = 13,
    kAni = 14
};

/// What a save needs besides the picture.
struct SaveSettings {
    std::int32_t jpeg_quality = 75;  ///< 1 to 100
    std::int32_t tiff_compression = 0;
    ImageInfoTexts texts;
};

struct Codec {
    FileType type;
    /// What the format supports. Pictures are adapted before encode() is called: alpha is composited over
    /// white, and pixels are converted to sRGB, for formats that can't hold them otherwise.
    bool holds_alpha;
    bool holds_profile;
    /// True if head, the first 4096 bytes or fewer, starts a file of this format. extension is lower case and
    /// only matters for formats without a signature.
    bool (*sniff)(Bytes head, std::string_view extension);
    /// Null if the header is broken or of another format. file must outlive the decoder.
    std::unique_ptr<ImageDecoder> (*open)(InputFile& file);
    /// Writes the whole file; the caller commits it. Null for read-only formats. image has 1 to kMaxSide
    /// pixels per side.
    bool (*encode)(const ImageBuffer& image, const SaveSettings& settings, OutputFile& out);
};
