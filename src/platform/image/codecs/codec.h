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
    /// Page lFrame, 0 to FrameCount() - 1. False, with aImage untouched, when the page is broken, cut short
    /// or over the limits. Throws only std::bad_alloc. Pixels are 8 bits a channel and, where the format has
    /// a profile, as the profile means them; a turn that EXIF asks for is left to the caller (see
    /// metadata.h), any other turn is done.
    [[nodiscard]] virtual bool DecodeFrame(std::int32_t lFrame, ImageBuffer& aImage) = 0;
};

/// What a save may need beside the picture.
struct SaveSettings {
    std::int32_t lJPEGQuality = 75;  ///< 1..100
    std::int32_t lTIFFCompression = 0;
    ImageInfoTexts objTexts;
};

struct Codec {
    std::int32_t lType;  ///< the file type code, 1 to 14
    /// What the format can hold. A picture is brought to it before Encode is called: alpha is laid on white
    /// where the format has none, pixels are turned to sRGB where it has no place for a profile.
    bool bHoldsAlpha;
    bool bHoldsProfile;
    /// True when aHead, the first 4096 bytes or fewer, begins a file of this format. sExtension is lower case
    /// and counts only for a format without a signature.
    bool (*Sniff)(Bytes aHead, std::string_view sExtension);
    /// Null for a file whose header is broken or foreign. objFile outlives the decoder.
    std::unique_ptr<ImageDecoder> (*Open)(InputFile& objFile);
    /// Writes the whole file; the caller commits it. Null for a format that is only read. aImage has 1 to
    /// kMaxSide pixels on each side.
    bool (*Encode)(const ImageBuffer& aImage, const SaveSettings& objSettings, OutputFile& objOut);
};
