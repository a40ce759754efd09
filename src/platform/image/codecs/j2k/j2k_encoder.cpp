// Writes JPEG 2000 codestreams with OpenJPEG.
#include <algorithm>
#include <string>

#include "src/platform/files/output_file.h"
#include "src/platform/image/codecs/j2k/j2k.h"
#include "src/platform/image/codecs/j2k/j2k_library.h"
#include "src/platform/image/metadata/info_lines.h"

// Tile sizes in pixels. Tiles keep memory small, and smaller ones are slightly faster; lossy tiles are
// larger, so that there are fewer visible seams.
static constexpr std::int32_t kLosslessTile = 1024;
static constexpr std::int32_t kLossyTile = 4096;
// On tiny pictures OpenJPEG misses the target PSNR by far, and lossy coding saves nothing.
static constexpr std::size_t kPixelsWorthLoss = 1024;
static constexpr std::size_t kMaxComment = 65000;  // bytes; the segment length has 16 bits

// One more than the number of times a tile's shorter side can be halved, at most 6.
static int Resolutions(std::int32_t width, std::int32_t height)
{
    int count = 1;
    for (std::int32_t side = std::min(width, height); side > 1 && count < 6; side /= 2)
        ++count;
    return count;
}

static J2kImage DescribeImage(const ImageBuffer& image)
{
    opj_image_cmptparm_t components[4] = {};
    for (auto& component : components) {
        component.dx = component.dy = 1;
        component.w = static_cast<OPJ_UINT32>(image.width);
        component.h = static_cast<OPJ_UINT32>(image.height);
        component.prec = 8;
    }
    const auto channels = static_cast<OPJ_UINT32>(image.channels);
    J2kImage description(
        opj_image_tile_create(channels, components, channels == 1 ? OPJ_CLRSPC_GRAY : OPJ_CLRSPC_SRGB));
    if (description) {
        description->x1 = static_cast<OPJ_UINT32>(image.width);
        description->y1 = static_cast<OPJ_UINT32>(image.height);
    }
    return description;
}

// Copies a tile's samples into planes: R, G, B, A.
static void FillTile(const ImageBuffer& image, std::int32_t left, std::int32_t top, std::int32_t width,
                     std::int32_t height, std::vector<std::uint8_t>& tile)
{
    const auto channels = static_cast<std::size_t>(image.channels);
    const auto columns = static_cast<std::size_t>(width), rows = static_cast<std::size_t>(height);
    tile.resize(columns * rows * channels);
    std::uint8_t* out = tile.data();
    for (std::size_t component = 0; component < channels; ++component) {
        const std::size_t channel = component < 3 && channels >= 3 ? 2 - component : component;
        for (std::size_t y = 0; y < rows; ++y, out += columns) {
            const std::size_t first =
                (static_cast<std::size_t>(top) + y) * static_cast<std::size_t>(image.width) +
                static_cast<std::size_t>(left);
            const std::uint8_t* in = image.bytes.data() + first * channels + channel;
            for (std::size_t x = 0; x < columns; ++x)
                out[x] = in[x * channels];
        }
    }
}

bool EncodeJ2k(const ImageBuffer& image, const SaveSettings& settings, OutputFile& out)
{
    const auto pixels = static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height);
    const bool lossless = settings.jpeg_quality >= 100 || pixels < kPixelsWorthLoss;
    const std::int32_t tile_side = lossless ? kLosslessTile : kLossyTile;
    const std::int32_t tile_width = std::min(tile_side, image.width),
                       tile_height = std::min(tile_side, image.height);

    opj_cparameters_t parameters;
    opj_set_default_encoder_parameters(&parameters);
    parameters.tile_size_on = OPJ_TRUE;
    parameters.cp_tdx = tile_width;
    parameters.cp_tdy = tile_height;
    parameters.numresolution = Resolutions(tile_width, tile_height);
    parameters.tcp_mct = image.channels >= 3 ? 1 : 0;
    parameters.tcp_numlayers = 1;
    if (lossless) {
        parameters.cp_disto_alloc = 1;
        parameters.tcp_rates[0] = 0;
    } else {
        parameters.irreversible = 1;
        parameters.cp_fixed_quality = 1;
        parameters.tcp_distoratio[0] = static_cast<float>(TargetPsnr(image, settings.jpeg_quality));
    }
    std::string comment = InfoLines(settings.texts).substr(0, kMaxComment);
    if (!comment.empty())
        parameters.cp_comment = comment.data();  // OpenJPEG copies it

    const J2kImage description = DescribeImage(image);
    const J2kCodec codec(opj_create_compress(OPJ_CODEC_J2K));
    if (!description || !opj_setup_encoder(codec.get(), &parameters, description.get()))
        return false;
    codec.UseThreads(static_cast<std::uint64_t>(tile_width) * static_cast<std::uint64_t>(tile_height));
    const J2kStream stream(out);
    if (!opj_start_compress(codec.get(), description.get(), stream.get()))
        return false;
    std::vector<std::uint8_t> tile;
    OPJ_UINT32 tile_index = 0;
    for (std::int32_t top = 0; top < image.height; top += tile_height)
        for (std::int32_t left = 0; left < image.width; left += tile_width) {
            FillTile(image, left, top, std::min(tile_width, image.width - left),
                     std::min(tile_height, image.height - top), tile);
            if (!opj_write_tile(codec.get(), tile_index++, tile.data(), static_cast<OPJ_UINT32>(tile.size()),
                                stream.get()))
                return false;
        }
    return opj_end_compress(codec.get(), stream.get()) && !out.Failed();
}
