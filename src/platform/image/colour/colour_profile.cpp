// Colour conversion by ICC profiles, using Little CMS.
#include "src/platform/image/colour/colour_profile.h"

#include <lcms2.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <utility>
#include <vector>

static constexpr std::size_t kProfileLimit = 16 * 1024 * 1024;
static constexpr std::size_t kProfileHeader = 128;

namespace
{
struct CloseProfile {
    void operator()(void* profile) const { cmsCloseProfile(profile); }
};
using Profile = std::unique_ptr<void, CloseProfile>;
struct DeleteTransform {
    void operator()(void* transform) const { cmsDeleteTransform(transform); }
};
using ColourTransform = std::unique_ptr<void, DeleteTransform>;
}  // namespace

// The colour space signature in a profile's header; 0 if the profile isn't usable.
static std::uint32_t ColourSpace(Bytes profile)
{
    if (profile.size() < kProfileHeader + 4 || profile.size() > kProfileLimit)
        return 0;
    ByteReader header(profile);
    const std::uint32_t size = header.U32Be();
    header.Take(8);
    const std::uint32_t device_class = header.U32Be();
    const std::uint32_t space = header.U32Be();
    const std::uint32_t connection_space = header.U32Be();
    header.Take(12);
    const std::uint32_t magic = header.U32Be();
    const bool known_class = device_class == cmsSigInputClass || device_class == cmsSigDisplayClass ||
                             device_class == cmsSigOutputClass || device_class == cmsSigColorSpaceClass;
    const bool known_connection = connection_space == cmsSigXYZData || connection_space == cmsSigLabData;
    return size <= profile.size() && magic == cmsMagicNumber && known_class && known_connection ? space : 0;
}

bool ProfileFits(Bytes profile, std::int32_t channels)
{
    const std::uint32_t space = ColourSpace(profile);
    return channels == 1 ? space == cmsSigGrayData : space == cmsSigRgbData;
}

static Profile OpenProfile(Bytes profile)
{
    return Profile(cmsOpenProfileFromMem(profile.data(), static_cast<cmsUInt32Number>(profile.size())));
}

// The sRGB transfer function (IEC 61966-2-1): device value 0..1 to linear light 0..1.
static double SrgbToLinear(double d)
{
    return d <= 0.04045 ? d / 12.92 : std::pow((d + 0.055) / 1.055, 2.4);
}

// True if a tone curve agrees with the sRGB curve to within half a level everywhere.
static bool IsSrgbCurve(void* profile, cmsTagSignature tag)
{
    const auto* curve = static_cast<const cmsToneCurve*>(cmsReadTag(profile, tag));
    if (!curve)
        return false;
    for (int i = 0; i <= 255; i += 5) {
        const double value = i / 255.0;
        const double light = static_cast<double>(cmsEvalToneCurveFloat(curve, static_cast<float>(value)));
        if (light < SrgbToLinear(value - 0.5 / 255) - 1e-5 || light > SrgbToLinear(value + 0.5 / 255) + 1e-5)
            return false;
    }
    return true;
}

static bool ColorantIs(void* profile, cmsTagSignature tag, const std::array<double, 3>& expected)
{
    const auto* colorant = static_cast<const cmsCIEXYZ*>(cmsReadTag(profile, tag));
    constexpr double kTolerance = 0.001;  // sRGB profiles differ from each other by about this much
    return colorant && std::abs(colorant->X - expected[0]) < kTolerance &&
           std::abs(colorant->Y - expected[1]) < kTolerance &&
           std::abs(colorant->Z - expected[2]) < kTolerance;
}

bool IsSrgbProfile(Bytes bytes)
{
    const std::uint32_t space = ColourSpace(bytes);
    const Profile profile = space == 0 ? nullptr : OpenProfile(bytes);
    // Lookup tables take precedence over curves and colorants.
    if (!profile || cmsIsTag(profile.get(), cmsSigAToB0Tag) || cmsIsTag(profile.get(), cmsSigDToB0Tag))
        return false;
    if (space == cmsSigGrayData)
        return IsSrgbCurve(profile.get(), cmsSigGrayTRCTag);
    return space == cmsSigRgbData &&
           ColorantIs(profile.get(), cmsSigRedColorantTag, {0.43607, 0.22249, 0.01392}) &&
           ColorantIs(profile.get(), cmsSigGreenColorantTag, {0.38515, 0.71687, 0.09708}) &&
           ColorantIs(profile.get(), cmsSigBlueColorantTag, {0.14307, 0.06061, 0.71410}) &&
           IsSrgbCurve(profile.get(), cmsSigRedTRCTag) && IsSrgbCurve(profile.get(), cmsSigGreenTRCTag) &&
           IsSrgbCurve(profile.get(), cmsSigBlueTRCTag);
}

// The rendering intent in the header; absolute colorimetric would reproduce the paper's tint.
static cmsUInt32Number Intent(void* profile)
{
    const cmsUInt32Number wished = cmsGetHeaderRenderingIntent(profile);
    if (wished == INTENT_ABSOLUTE_COLORIMETRIC)
        return INTENT_RELATIVE_COLORIMETRIC;
    return wished <= INTENT_SATURATION ? wished : INTENT_PERCEPTUAL;
}

static ColourTransform TransformBetween(void* from, cmsUInt32Number from_format, void* to,
                                        cmsUInt32Number to_format, cmsUInt32Number flags = 0)
{
    if (!from || !to)
        return nullptr;
    return ColourTransform(cmsCreateTransform(from, from_format, to, to_format, Intent(from),
                                              cmsFLAGS_BLACKPOINTCOMPENSATION | cmsFLAGS_COPY_ALPHA | flags));
}

// A grey profile with the sRGB curve, so that grey pictures keep one channel.
static Profile GreyOfSrgb()
{
    // Parametric curve of the standard: Y = (aX + b)^g above d, cX below.
    constexpr std::array<cmsFloat64Number, 5> kParameters = {2.4, 1 / 1.055, 0.055 / 1.055, 1 / 12.92,
                                                             0.04045};
    cmsToneCurve* curve = cmsBuildParametricToneCurve(nullptr, 4, kParameters.data());
    if (!curve)
        return nullptr;
    Profile grey(cmsCreateGrayProfile(cmsD50_xyY(), curve));
    cmsFreeToneCurve(curve);
    return grey;
}

// Converts 256 greys and uses them as a LUT for the picture.
static bool ConvertGrey(void* from, PixelBytes& bytes)
{
    const Profile to = GreyOfSrgb();
    const ColourTransform transform = TransformBetween(from, TYPE_GRAY_8, to.get(), TYPE_GRAY_8);
    if (!transform)
        return false;
    std::array<std::uint8_t, 256> table{};
    for (std::size_t i = 0; i < table.size(); ++i)
        table[i] = static_cast<std::uint8_t>(i);
    cmsDoTransform(transform.get(), table.data(), table.data(), 256);
    std::transform(bytes.begin(), bytes.end(), bytes.begin(), [&](std::uint8_t n) { return table[n]; });
    return true;
}

static bool ConvertColours(void* from, ImageBuffer& image)
{
    const Profile to(cmsCreate_sRGBProfile());
    const cmsUInt32Number format = image.channels == 3 ? TYPE_BGR_8 : TYPE_BGRA_8;
    const ColourTransform transform = TransformBetween(from, format, to.get(), format);
    if (!transform)
        return false;
    const auto width = static_cast<cmsUInt32Number>(image.width);
    const std::size_t stride =
        static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.channels);
    std::uint8_t* row = image.bytes.data();
    for (std::int32_t y = 0; y < image.height; ++y, row += stride)
        cmsDoTransform(transform.get(), row, row, width);
    return true;
}

bool ConvertToSrgb(ImageBuffer& image)
{
    const std::vector<std::uint8_t> profile = std::move(image.icc_profile);
    image.icc_profile.clear();
    if (profile.empty() || IsSrgbProfile(profile))
        return true;
    if (!ProfileFits(profile, image.channels))
        return false;
    const Profile from = OpenProfile(profile);
    return image.channels == 1 ? ConvertGrey(from.get(), image.bytes) : ConvertColours(from.get(), image);
}

CmykToBgr::CmykToBgr(Bytes profile, bool inverted) : inverted_(inverted)
{
    if (ColourSpace(profile) != cmsSigCmykData)
        return;
    const Profile from = OpenProfile(profile);
    const Profile to(cmsCreate_sRGBProfile());
    const cmsUInt32Number format = inverted ? TYPE_CMYK_8_REV : TYPE_CMYK_8;
    transform_ = TransformBetween(from.get(), format, to.get(), TYPE_BGR_8).release();
}

CmykToBgr::~CmykToBgr()
{
    if (transform_)
        cmsDeleteTransform(transform_);
}

void CmykToBgr::Convert(const std::uint8_t* inks, std::uint8_t* bgr, std::size_t pixels) const
{
    if (transform_) {
        cmsDoTransform(transform_, inks, bgr, static_cast<cmsUInt32Number>(pixels));
        return;
    }
    const unsigned invert = inverted_ ? 0 : 255;
    for (std::size_t i = 0; i < pixels; ++i, inks += 4, bgr += 3) {
        const unsigned light = inks[3] ^ invert;
        for (int c = 0; c < 3; ++c) {
            // x / 255, rounded; exact for every product of two bytes.
            const unsigned mixed = (inks[2 - c] ^ invert) * light + 128u;
            bgr[c] = static_cast<std::uint8_t>((mixed + (mixed >> 8)) >> 8);
        }
    }
}

// Created once, since that costs more than converting a few rows. Without the one-colour cache it is
// immutable and can be shared by threads.
static const ColourTransform& LabTransform()
{
    static const ColourTransform kTransform = [] {
        const Profile from(cmsCreateLab4Profile(nullptr));
        const Profile to(cmsCreate_sRGBProfile());
        return TransformBetween(from.get(), TYPE_Lab_8, to.get(), TYPE_BGR_8, cmsFLAGS_NOCACHE);
    }();
    return kTransform;
}

bool LabToBgr(const std::uint8_t* lab, std::uint8_t* bgr, std::size_t pixels)
{
    const ColourTransform& transform = LabTransform();
    if (!transform)
        return false;
    cmsDoTransform(transform.get(), lab, bgr, static_cast<cmsUInt32Number>(pixels));
    return true;
}
