// Decodes the pages of a TIFF file.
#include "src/platform/image/codecs/tiff/tiff.h"

#include <optional>
#include <utility>
#include <vector>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/codecs/tiff/directory/tiff_directory.h"
#include "src/platform/image/codecs/tiff/directory/tiff_metadata.h"
#include "src/platform/image/codecs/tiff/tiff_handle.h"
#include "src/platform/image/codecs/tiff/tiff_layout.h"
#include "src/platform/image/codecs/tiff/tiff_pixel_reader.h"
#include "src/platform/image/colour/colour_profile.h"

namespace
{
class TiffDecoder : public ImageDecoder
{
public:
    TiffDecoder(InputFile& file, const TiffHeader& header, TiffPages pages)
        : file_(file), header_(header), pages_(std::move(pages)), input_(file)
    {
    }
    bool Ready() const { return input_.Handle() != nullptr; }
    // Counts the page that is missing where the chain breaks off: a caller that wants all pages then hears
    // that it can't have one of them.
    std::int32_t FrameCount() override
    {
        return static_cast<std::int32_t>(pages_.directories.size()) + (pages_.breaks_off ? 1 : 0);
    }
    bool DecodeFrame(std::int32_t frame, ImageBuffer& image) override;

private:
    InputFile& file_;
    TiffHeader header_;
    TiffPages pages_;
    TiffInput input_;
};
}  // namespace

// For a grey picture that alpha turned into BGRA: converts the grey to sRGB, since a grey profile no longer
// fits.
static void ApplyGreyProfile(std::vector<std::uint8_t> profile, ImageBuffer& image)
{
    ImageBuffer grey;
    grey.width = image.width;
    grey.height = image.height;
    grey.channels = 1;
    grey.icc_profile = std::move(profile);
    grey.bytes.resize(image.bytes.size() / 4);
    for (std::size_t i = 0; i < grey.bytes.size(); ++i)
        grey.bytes[i] = image.bytes[i * 4];
    if (!ConvertToSrgb(grey))
        return;
    for (std::size_t i = 0; i < grey.bytes.size(); ++i)
        image.bytes[i * 4] = image.bytes[i * 4 + 1] = image.bytes[i * 4 + 2] = grey.bytes[i];
}

bool TiffDecoder::DecodeFrame(std::int32_t frame, ImageBuffer& image)
{
    if (static_cast<std::size_t>(frame) >= pages_.directories.size())
        return false;
    const std::uint64_t directory = pages_.directories[static_cast<std::size_t>(frame)];
    if (!IsPlausibleDirectory(file_, header_, directory) || !TIFFSetSubDirectory(input_.Handle(), directory))
        return false;
    const std::optional<TiffLayout> layout = ReadLayout(input_.Handle(), file_);
    if (!layout)
        return false;
    const std::vector<TiffEntry> entries = ReadEntries(file_, header_, directory);
    std::vector<std::uint8_t> profile = ReadTiffProfile(file_, header_, entries);
    ImageBuffer result;
    if (!ReadTiffPixels(input_.Handle(), *layout, file_, profile, result))
        return false;
    ReadTiffMetadata(file_, header_, entries, layout->orientation, result);
    const bool own_colours = layout->colour == TiffColour::kGrey || layout->colour == TiffColour::kRgb ||
                             layout->colour == TiffColour::kPalette || layout->colour == TiffColour::kYCbCr;
    if (own_colours && ProfileFits(profile, result.channels))
        result.icc_profile = std::move(profile);
    else if (layout->colour == TiffColour::kGrey && result.channels == 4 && ProfileFits(profile, 1))
        ApplyGreyProfile(std::move(profile), result);
    image = std::move(result);
    return true;
}

std::unique_ptr<ImageDecoder> OpenTiff(InputFile& file)
{
    const std::optional<TiffHeader> header = ReadTiffHeader(file);
    if (!header)
        return nullptr;
    TiffPages pages = FindTiffPages(file, *header);
    if (pages.directories.empty())
        return nullptr;
    auto decoder = std::make_unique<TiffDecoder>(file, *header, std::move(pages));
    if (!decoder->Ready())
        return nullptr;
    return decoder;
}
