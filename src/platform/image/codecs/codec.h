// What every format offers: recognise a file, decode its pages, encode a picture.
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

/// An open file of one format. It keeps what makes the next page cheap: pages asked for in order cost one
/// pass.
class ImageDecoder
{
public:
    virtual ~ImageDecoder() = default;
    /// At least 1 for a file that was opened.
    [[nodiscard]] virtual std::int32_t FrameCount() = 0;
    /// Page frame, 0 to FrameCount() - 1. False, with image untouched, when the page is broken, cut short
    /// or over the limits. Throws only std::bad_alloc. Pixels are 8 bits a channel and, where the format has
    /// a profile, as the profile means them; a turn that EXIF asks for is left to the caller (see
    /// metadata.h), any other turn is done.
    [[nodiscard]] virtual bool DecodeFrame(std::int32_t frame, ImageBuffer& image) = 0;
};

/// The formats. The values are the file type codes that the logic uses.
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

/// What a save may need beside the picture.
struct SaveSettings {
    std::int32_t jpeg_quality = 75;  ///< 1..100
    std::int32_t tiff_compression = 0;
    ImageInfoTexts texts;
};

struct Codec {
    FileType type;
    /// What the format can hold. A picture is brought to it before encode is called: alpha is laid on white
    /// where the format has none, pixels are turned to sRGB where it has no place for a profile.
    bool holds_alpha;
    bool holds_profile;
    /// True when head, the first 4096 bytes or fewer, begins a file of this format. extension is lower case
    /// and counts only for a format without a signature.
    bool (*sniff)(Bytes head, std::string_view extension);
    /// Null for a file whose header is broken or foreign. file outlives the decoder.
    std::unique_ptr<ImageDecoder> (*open)(InputFile& file);
    /// Writes the whole file; the caller commits it. Null for a format that is only read. image has 1 to
    /// kMaxSide pixels on each side.
    bool (*encode)(const ImageBuffer& image, const SaveSettings& settings, OutputFile& out);
};
