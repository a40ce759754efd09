// Converts JPEG 2000 components to a picture.
#include "src/platform/image/codecs/j2k/j2k_pixels.h"

#include <openjpeg.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <vector>

#include "src/platform/image/base/limits.h"
#include "src/platform/image/codecs/j2k/j2k_samples.h"
#include "src/platform/image/colour/colour_profile.h"
#include "src/platform/image/pixels/pixel_rows.h"

namespace
{
enum class Colours { kGrey, kRgb, kYcc, kCmyk, kLab };

/// Assigns components to channels.
struct Roles {
    Colours colours = Colours::kGrey;
    std::array<std::size_t, 4> colour{};  ///< one per colour channel
    std::int32_t alpha = -1;
    bool premultiplied = false;
};
}  // namespace

static std::size_t ColourComponents(Colours colours)
{
    return colours == Colours::kGrey ? 1 : colours == Colours::kCmyk ? 4 : 3;
}

static Bytes ProfileOf(const opj_image_t& image)
{
    return {image.icc_profile_buf, image.icc_profile_buf ? image.icc_profile_len : 0};
}

// True if the ICC profile's colour space is CMYK.
static bool IsCmykProfile(Bytes profile)
{
    return profile.size() > 20 && std::memcmp(profile.data() + 16, "CMYK", 4) == 0;
}

// OpenJPEG stores the CIELab parameters in place of the profile and marks that with a length of 0.
static bool IsLab(const opj_image_t& image)
{
    return image.icc_profile_buf && image.icc_profile_len == 0;
}

static bool FindRoles(const opj_image_t& image, Roles& roles)
{
    std::vector<std::size_t> colour;
    for (std::size_t i = 0; i < image.numcomps; ++i) {
        const OPJ_UINT16 alpha = image.comps[i].alpha;
        if (alpha == 0) {
            colour.push_back(i);
        } else if (roles.alpha < 0 && alpha <= 2) {
            roles.alpha = static_cast<std::int32_t>(i);
            roles.premultiplied = alpha == 2;
        }
    }
    if (colour.empty())
        return false;
    const bool has_inks = image.color_space == OPJ_CLRSPC_CMYK || IsCmykProfile(ProfileOf(image));
    const bool alpha_by_place = roles.alpha < 0 && !has_inks && (colour.size() == 2 || colour.size() == 4);
    if (alpha_by_place) {
        roles.alpha = static_cast<std::int32_t>(colour.back());
        colour.pop_back();
    }
    if (has_inks)
        roles.colours = Colours::kCmyk;
    else if (image.color_space == OPJ_CLRSPC_GRAY || colour.size() < 3)
        roles.colours = Colours::kGrey;
    else if (IsLab(image))
        roles.colours = Colours::kLab;
    else if (image.color_space == OPJ_CLRSPC_SYCC || image.color_space == OPJ_CLRSPC_EYCC)
        roles.colours = Colours::kYcc;
    else
        roles.colours = Colours::kRgb;
    if (colour.size() < ColourComponents(roles.colours))
        return false;
    std::copy_n(colour.begin(), ColourComponents(roles.colours), roles.colour.begin());
    // R and B are never subsampled relative to G, so a bare codestream that looks like that holds YCC.
    const auto& first = image.comps[roles.colour[0]];
    const auto& second = image.comps[roles.colour[1]];
    if (roles.colours == Colours::kRgb && image.color_space != OPJ_CLRSPC_SRGB &&
        (second.dx > first.dx || second.dy > first.dy))
        roles.colours = Colours::kYcc;
    return true;
}

// The picture's resolution is that of its finest component. False if a component in use has no samples.
static bool FindGrid(const opj_image_t& image, const Roles& roles, PixelGrid& grid)
{
    std::uint32_t step_x = 256, step_y = 256;
    const auto take = [&](std::size_t component) {
        const opj_image_comp_t& samples = image.comps[component];
        step_x = std::min(step_x, samples.dx);
        step_y = std::min(step_y, samples.dy);
        return samples.data && samples.w > 0 && samples.h > 0 && samples.dx > 0 && samples.dy > 0 &&
               samples.prec >= 1 && samples.prec <= 38;
    };
    bool sound = roles.alpha < 0 || take(static_cast<std::size_t>(roles.alpha));
    for (std::size_t i = 0; i < ColourComponents(roles.colours); ++i)
        sound = take(roles.colour[i]) && sound;
    if (sound)
        grid = PixelGridOf(image, step_x, step_y);
    return sound;
}

// Converts Y, Cb, Cr, stored in the places of B, G, R, to BGR (IEC 61966-2-1, annex F, the inverse of
// full-range ITU-R BT.601).
static void YccRow(std::uint8_t* pixels, std::uint32_t pixel_count, std::size_t stride)
{
    const auto byte = [](float value) {
        return static_cast<std::uint8_t>(std::clamp(value + 0.5F, 0.F, 255.F));
    };
    for (std::uint32_t x = 0; x < pixel_count; ++x, pixels += stride) {
        const float y = pixels[2], cb = pixels[1] - 128.F, cr = pixels[0] - 128.F;
        pixels[2] = byte(y + 1.402F * cr);
        pixels[1] = byte(y - 0.344136F * cb - 0.714136F * cr);
        pixels[0] = byte(y + 1.772F * cb);
    }
}

using LabLevels = std::array<std::array<std::uint8_t, 256>,
                             3>;  ///< L*, a*, b* as bytes: 0..100 scaled to 0..255, and offset by 128

// OpenJPEG's encoding of the CIELab parameters: a flag for the defaults, then range and offset of each
// component.
static LabLevels ReadLabLevels(const opj_image_t& image, const Roles& roles)
{
    std::array<std::uint32_t, 9> parameters{};
    std::memcpy(parameters.data(), image.icc_profile_buf, sizeof parameters);
    constexpr std::uint32_t kDefault = 0x44454600;  // "DEF"
    LabLevels levels{};
    for (std::size_t c = 0; c < 3; ++c) {
        const double max = std::pow(2, image.comps[roles.colour[c]].prec) - 1;
        double range = c == 0 ? 100 : c == 1 ? 170 : 200;
        double offset = c == 0 ? 0 : c == 1 ? (max + 1) / 2 : (max + 1) * 3 / 8;
        if (parameters[1] != kDefault) {
            range = parameters[2 + 2 * c];
            offset = parameters[3 + 2 * c];
        }
        for (std::size_t i = 0; i < 256; ++i) {
            const double value = (static_cast<double>(i) / 255 * max - offset) * range / max;
            levels[c][i] =
                static_cast<std::uint8_t>(std::clamp(c == 0 ? value * 2.55 : value + 128, 0., 255.) + 0.5);
        }
    }
    return levels;
}

// Converts CMYK or L*a*b* to the picture's 3 or 4 channels, a few rows at a time through a buffer.
static bool ConvertRows(const opj_image_t& decoded, const Roles& roles, const PixelGrid& grid,
                        const std::vector<SampleRows>& colours, ImageBuffer& image)
{
    constexpr std::uint32_t kPixelsAtOnce = 1 << 20;
    const std::uint32_t rows_at_once = std::max(1u, kPixelsAtOnce / grid.width);
    const std::size_t components = colours.size();
    const auto channels = static_cast<std::size_t>(image.channels);
    std::vector<std::uint8_t> in_row, out_row;
    const bool is_lab = roles.colours == Colours::kLab;
    const CmykToBgr inks(is_lab ? Bytes{} : ProfileOf(decoded));
    const auto levels = is_lab ? ReadLabLevels(decoded, roles) : LabLevels{};
    std::uint8_t* out = image.bytes.data();
    for (std::uint32_t first = 0; first < grid.height; first += rows_at_once) {
        const std::uint32_t rows = std::min(rows_at_once, grid.height - first);
        const std::size_t pixels = std::size_t{rows} * grid.width;
        in_row.resize(pixels * components);
        out_row.resize(pixels * 3);
        for (std::uint32_t y = 0; y < rows; ++y)
            for (std::size_t c = 0; c < components; ++c)
                colours[c].Read(first + y, &in_row[std::size_t{y} * grid.width * components + c], components);
        if (is_lab) {
            for (std::size_t i = 0; i < in_row.size(); ++i)
                in_row[i] = levels[i % 3][in_row[i]];
            if (!LabToBgr(in_row.data(), out_row.data(), pixels))
                return false;
        } else {
            inks.Convert(in_row.data(), out_row.data(), pixels);
        }
        for (std::size_t i = 0; i < pixels; ++i, out += channels)
            std::memcpy(out, &out_row[i * 3], 3);
    }
    return true;
}

// Undoes premultiplied alpha.
static void DivideByAlpha(ImageBuffer& image)
{
    for (std::size_t i = 0; i < image.bytes.size(); i += 4) {
        const unsigned alpha = image.bytes[i + 3];
        for (std::size_t c = 0; c < 3 && alpha > 0; ++c)
            image.bytes[i + c] =
                static_cast<std::uint8_t>(std::min(255u, (image.bytes[i + c] * 255u + alpha / 2) / alpha));
    }
}

// A profile describes the stored components, so apply or keep it before grey is expanded to three channels.
static void TakeProfile(const opj_image_t& decoded, const Roles& roles, ImageBuffer& image)
{
    const Bytes profile = ProfileOf(decoded);
    const bool stored = roles.colours == Colours::kRgb || roles.colours == Colours::kGrey;
    if (stored && ProfileFits(profile, image.channels))
        image.icc_profile.assign(profile.begin(), profile.end());
}

bool MakePicture(const opj_image_t& decoded, ImageBuffer& image)
{
    Roles roles;
    PixelGrid grid{};
    if (!FindRoles(decoded, roles) || !FindGrid(decoded, roles, grid))
        return false;
    const Colours colour_model = roles.colours;
    std::vector<SampleRows> colours;
    for (std::size_t i = 0; i < ColourComponents(colour_model); ++i)
        colours.emplace_back(decoded.comps[roles.colour[i]], grid);

    const bool is_grey = colour_model == Colours::kGrey;
    ImageBuffer result;
    if (!Allocate(result, grid.width, grid.height, is_grey ? 1 : roles.alpha >= 0 ? 4 : 3))
        return false;
    const auto channels = static_cast<std::size_t>(result.channels);
    const std::size_t row_bytes = grid.width * channels;
    if (colour_model == Colours::kCmyk || colour_model == Colours::kLab) {
        if (!ConvertRows(decoded, roles, grid, colours, result))
            return false;
    } else {
        for (std::uint32_t y = 0; y < grid.height; ++y) {
            std::uint8_t* row = result.bytes.data() + y * row_bytes;
            for (std::size_t c = 0; c < colours.size(); ++c)
                colours[c].Read(y, row + colours.size() - 1 - c, channels);
            if (colour_model == Colours::kYcc)
                YccRow(row, grid.width, channels);
        }
    }
    TakeProfile(decoded, roles, result);
    if (roles.alpha >= 0) {
        if (is_grey) {
            ConvertToSrgb(result);  // a grey profile doesn't fit the three channels it gets now
            if (!AddAlpha(result))
                return false;
        }
        const SampleRows alpha(decoded.comps[roles.alpha], grid);
        for (std::uint32_t y = 0; y < grid.height; ++y)
            alpha.Read(y, result.bytes.data() + std::size_t{y} * grid.width * 4 + 3, 4);
        if (roles.premultiplied)
            DivideByAlpha(result);
    }
    image = std::move(result);
    return true;
}
