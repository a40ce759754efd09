// Reads JPEG 2000 files with OpenJPEG.
#include <algorithm>
#include <utility>
#include <vector>

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
    J2kDecoder(Bytes bytes, J2kFile file, J2kLayout layout)
        : bytes_(bytes), file_(std::move(file)), layout_(std::move(layout))
    {
    }
    std::int32_t FrameCount() override { return 1; }
    bool DecodeFrame(std::int32_t frame, ImageBuffer& image) override;

private:
    Bytes bytes_;
    J2kFile file_;
    J2kLayout layout_;
};
}  // namespace

// A copy of the file without what OpenJPEG can't read although the picture is whole. Markers without
// parameters become padding at the end of their tile-parts: OpenJPEG would take what follows such a marker
// for its length. A missing end marker is added.
static std::vector<std::uint8_t> RepairedCopy(Bytes bytes, std::uint64_t codestream, const J2kLayout& layout)
{
    std::vector<std::uint8_t> copy(bytes.begin(), bytes.end());
    const auto at = [&copy, codestream](std::uint64_t offset) {
        return copy.begin() + static_cast<std::ptrdiff_t>(codestream + offset);
    };
    // From the last to the first, so that moving one doesn't change the offsets of the others.
    for (auto marker = layout.bare_markers.rbegin(); marker != layout.bare_markers.rend(); ++marker) {
        std::copy(at(marker->offset + 2), at(marker->part_end), at(marker->offset));
        std::fill(at(marker->part_end - 2), at(marker->part_end), std::uint8_t{0});
    }
    if (!layout.has_end) {
        copy.resize(codestream + layout.parts_end);
        copy.insert(copy.end(), {0xFF, 0xD9});
    }
    return copy;
}

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
    Bytes bytes = file_.is_jp2 ? bytes_ : file_.codestream;
    std::vector<std::uint8_t> repaired;
    if (!layout_.bare_markers.empty() || !layout_.has_end) {
        const auto codestream = static_cast<std::uint64_t>(file_.codestream.data() - bytes.data());
        repaired = RepairedCopy(bytes, codestream, layout_);
        bytes = repaired;
    }
    // The reference grid's size is a measure of the work.
    const std::uint64_t width = layout_.right - layout_.left, height = layout_.bottom - layout_.top;
    const J2kImage decoded = DecodeImage(file_.is_jp2, bytes, width * height);
    ImageBuffer result;
    if (!decoded || !MakePicture(*decoded, result))
        return false;
    result.dots_per_inch_x = file_.dots_per_inch_x;
    result.dots_per_inch_y = file_.dots_per_inch_y;
    result.metadata = file_.metadata;
    result.lossy = layout_.lossy;
    image = std::move(result);
    return true;
}

std::unique_ptr<ImageDecoder> OpenJ2k(InputFile& input)
{
    const Bytes bytes = input.All();
    J2kFile file;
    J2kLayout layout;
    if (!ReadBoxes(bytes, file) || !MayDecode(file.codestream, layout))
        return nullptr;
    return std::make_unique<J2kDecoder>(bytes, std::move(file), std::move(layout));
}
