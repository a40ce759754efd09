// Reads JPEG 2000 files with OpenJPEG.
#include "src/platform/image/base/input_file.h"
#include "src/platform/image/codecs/j2k/j2k.h"
#include "src/platform/image/codecs/j2k/j2k_boxes.h"
#include "src/platform/image/codecs/j2k/j2k_codestream.h"
#include "src/platform/image/codecs/j2k/j2k_library.h"
#include "src/platform/image/codecs/j2k/j2k_pixels.h"

namespace
{
class J2kDecoder : public ImageDecoder
{
public:
    J2kDecoder(Bytes bytes, J2kFile file, std::uint64_t pixels)
        : bytes_(bytes), file_(std::move(file)), pixels_(pixels)
    {
    }
    std::int32_t FrameCount() override { return 1; }
    bool DecodeFrame(std::int32_t frame, ImageBuffer& image) override;

private:
    Bytes bytes_;
    J2kFile file_;
    std::uint64_t pixels_;  ///< of the reference grid: a measure of the work
};
}  // namespace

static J2kImage DecodeImage(bool is_jp2, Bytes bytes, std::uint64_t pixels)
{
    const J2kCodec codec(opj_create_decompress(is_jp2 ? OPJ_CODEC_JP2 : OPJ_CODEC_J2K));
    const J2kStream stream(bytes);
    opj_dparameters_t parameters;
    opj_set_default_decoder_parameters(&parameters);
    if (!opj_setup_decoder(codec.get(), &parameters) || !opj_decoder_set_strict_mode(codec.get(), OPJ_TRUE))
        return nullptr;
    codec.UseThreads(pixels);
    // On failure OpenJPEG may still return an image, which we must free.
    opj_image_t* raw = nullptr;
    const bool has_header = opj_read_header(stream.get(), codec.get(), &raw) != OPJ_FALSE;
    J2kImage image(raw);
    const bool done = has_header && image && opj_decode(codec.get(), stream.get(), image.get()) &&
                      opj_end_decompress(codec.get(), stream.get());
    return done ? std::move(image) : nullptr;
}

bool J2kDecoder::DecodeFrame(std::int32_t frame, ImageBuffer& image)
{
    if (frame != 0)
        return false;
    const J2kImage decoded = DecodeImage(file_.is_jp2, file_.is_jp2 ? bytes_ : file_.codestream, pixels_);
    ImageBuffer result;
    if (!decoded || !MakePicture(*decoded, result))
        return false;
    result.dots_per_inch_x = file_.dots_per_inch_x;
    result.dots_per_inch_y = file_.dots_per_inch_y;
    result.metadata = file_.metadata;
    image = std::move(result);
    return true;
}

std::unique_ptr<ImageDecoder> OpenJ2k(InputFile& input)
{
    const Bytes bytes = input.All();
    J2kFile file;
    J2kSize size;
    if (!ReadBoxes(bytes, file) || !MayDecode(file.codestream, size))
        return nullptr;
    const std::uint64_t width = size.right - size.left, height = size.bottom - size.top;
    return std::make_unique<J2kDecoder>(bytes, std::move(file), width * height);
}
