// Colour conversion by ICC profiles, on Little CMS.
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
    void operator()(void* pProfile) const { cmsCloseProfile(pProfile); }
};
using Profile = std::unique_ptr<void, CloseProfile>;
struct DeleteTransform {
    void operator()(void* pTransform) const { cmsDeleteTransform(pTransform); }
};
using ColourTransform = std::unique_ptr<void, DeleteTransform>;
}  // namespace

// The four letters of the colour space that a profile's header names; 0 for what is no profile that we use.
static std::uint32_t nColourSpace(Bytes aProfile)
{
    if (aProfile.size() < kProfileHeader + 4 || aProfile.size() > kProfileLimit)
        return 0;
    ByteReader objHeader(aProfile);
    const std::uint32_t nSize = objHeader.U32Be();
    objHeader.Take(8);
    const std::uint32_t nClass = objHeader.U32Be();
    const std::uint32_t nSpace = objHeader.U32Be();
    const std::uint32_t nConnection = objHeader.U32Be();
    objHeader.Take(12);
    const std::uint32_t nMagic = objHeader.U32Be();
    const bool bClass = nClass == cmsSigInputClass || nClass == cmsSigDisplayClass ||
                        nClass == cmsSigOutputClass || nClass == cmsSigColorSpaceClass;
    const bool bConnection = nConnection == cmsSigXYZData || nConnection == cmsSigLabData;
    return nSize <= aProfile.size() && nMagic == cmsMagicNumber && bClass && bConnection ? nSpace : 0;
}

bool bProfileFits(Bytes aProfile, std::int32_t lChannels)
{
    const std::uint32_t nSpace = nColourSpace(aProfile);
    return lChannels == 1 ? nSpace == cmsSigGrayData : nSpace == cmsSigRgbData;
}

static Profile pOpenProfile(Bytes aProfile)
{
    return Profile(cmsOpenProfileFromMem(aProfile.data(), static_cast<cmsUInt32Number>(aProfile.size())));
}

// The curve of sRGB, from its standard: device value 0..1 to linear light 0..1.
static double dSrgbToLinear(double d)
{
    return d <= 0.04045 ? d / 12.92 : std::pow((d + 0.055) / 1.055, 2.4);
}

// True when a curve shows every level within half a level of where the curve of sRGB shows it.
static bool bCurveIsSrgb(void* pProfile, cmsTagSignature nTag)
{
    const auto* pCurve = static_cast<const cmsToneCurve*>(cmsReadTag(pProfile, nTag));
    if (!pCurve)
        return false;
    for (int i = 0; i <= 255; i += 5) {
        const double dValue = i / 255.0;
        const double dLight = static_cast<double>(cmsEvalToneCurveFloat(pCurve, static_cast<float>(dValue)));
        if (dLight < dSrgbToLinear(dValue - 0.5 / 255) - 1e-5 ||
            dLight > dSrgbToLinear(dValue + 0.5 / 255) + 1e-5)
            return false;
    }
    return true;
}

static bool bColorantIs(void* pProfile, cmsTagSignature nTag, const std::array<double, 3>& aExpected)
{
    const auto* pColorant = static_cast<const cmsCIEXYZ*>(cmsReadTag(pProfile, nTag));
    constexpr double kTolerance = 0.001;  // profiles of sRGB differ from each other by about this
    return pColorant && std::abs(pColorant->X - aExpected[0]) < kTolerance &&
           std::abs(pColorant->Y - aExpected[1]) < kTolerance &&
           std::abs(pColorant->Z - aExpected[2]) < kTolerance;
}

bool bProfileIsSrgb(Bytes aProfile)
{
    const std::uint32_t nSpace = nColourSpace(aProfile);
    const Profile pProfile = nSpace == 0 ? nullptr : pOpenProfile(aProfile);
    // Tables, where there are any, win over curves and colorants.
    if (!pProfile || cmsIsTag(pProfile.get(), cmsSigAToB0Tag) || cmsIsTag(pProfile.get(), cmsSigDToB0Tag))
        return false;
    if (nSpace == cmsSigGrayData)
        return bCurveIsSrgb(pProfile.get(), cmsSigGrayTRCTag);
    return nSpace == cmsSigRgbData &&
           bColorantIs(pProfile.get(), cmsSigRedColorantTag, {0.43607, 0.22249, 0.01392}) &&
           bColorantIs(pProfile.get(), cmsSigGreenColorantTag, {0.38515, 0.71687, 0.09708}) &&
           bColorantIs(pProfile.get(), cmsSigBlueColorantTag, {0.14307, 0.06061, 0.71410}) &&
           bCurveIsSrgb(pProfile.get(), cmsSigRedTRCTag) && bCurveIsSrgb(pProfile.get(), cmsSigGreenTRCTag) &&
           bCurveIsSrgb(pProfile.get(), cmsSigBlueTRCTag);
}

// The intent that the profile's maker meant; absolute colours would show the colour of the paper.
static cmsUInt32Number nIntent(void* pProfile)
{
    const cmsUInt32Number nWished = cmsGetHeaderRenderingIntent(pProfile);
    if (nWished == INTENT_ABSOLUTE_COLORIMETRIC)
        return INTENT_RELATIVE_COLORIMETRIC;
    return nWished <= INTENT_SATURATION ? nWished : INTENT_PERCEPTUAL;
}

static ColourTransform pTransformBetween(void* pFrom, cmsUInt32Number nFromFormat, void* pTo,
                                         cmsUInt32Number nToFormat, cmsUInt32Number nFlags = 0)
{
    if (!pFrom || !pTo)
        return nullptr;
    return ColourTransform(
        cmsCreateTransform(pFrom, nFromFormat, pTo, nToFormat, nIntent(pFrom),
                           cmsFLAGS_BLACKPOINTCOMPENSATION | cmsFLAGS_COPY_ALPHA | nFlags));
}

// A grey of sRGB's curve, so that grey pixels stay one channel.
static Profile pGreyOfSrgb()
{
    // The parameters of the standard's curve: Y = (aX + b)^g above d, cX below.
    constexpr std::array<cmsFloat64Number, 5> kParameters = {2.4, 1 / 1.055, 0.055 / 1.055, 1 / 12.92,
                                                             0.04045};
    cmsToneCurve* pCurve = cmsBuildParametricToneCurve(nullptr, 4, kParameters.data());
    if (!pCurve)
        return nullptr;
    Profile pGrey(cmsCreateGrayProfile(cmsD50_xyY(), pCurve));
    cmsFreeToneCurve(pCurve);
    return pGrey;
}

// 256 greys are converted, and the picture by a table of them.
static bool bConvertGrey(void* pFrom, PixelBytes& aBytes)
{
    const Profile pTo = pGreyOfSrgb();
    const ColourTransform pTransform = pTransformBetween(pFrom, TYPE_GRAY_8, pTo.get(), TYPE_GRAY_8);
    if (!pTransform)
        return false;
    std::array<std::uint8_t, 256> aTable{};
    for (std::size_t i = 0; i < aTable.size(); ++i)
        aTable[i] = static_cast<std::uint8_t>(i);
    cmsDoTransform(pTransform.get(), aTable.data(), aTable.data(), 256);
    std::transform(aBytes.begin(), aBytes.end(), aBytes.begin(), [&](std::uint8_t n) { return aTable[n]; });
    return true;
}

static bool bConvertColours(void* pFrom, ImageBuffer& aImage)
{
    const Profile pTo(cmsCreate_sRGBProfile());
    const cmsUInt32Number nFormat = aImage.channels == 3 ? TYPE_BGR_8 : TYPE_BGRA_8;
    const ColourTransform pTransform = pTransformBetween(pFrom, nFormat, pTo.get(), nFormat);
    if (!pTransform)
        return false;
    const auto nWidth = static_cast<cmsUInt32Number>(aImage.width);
    const std::size_t nStride =
        static_cast<std::size_t>(aImage.width) * static_cast<std::size_t>(aImage.channels);
    std::uint8_t* pRow = aImage.bytes.data();
    for (std::int32_t y = 0; y < aImage.height; ++y, pRow += nStride)
        cmsDoTransform(pTransform.get(), pRow, pRow, nWidth);
    return true;
}

bool bConvertToSrgb(ImageBuffer& aImage)
{
    const std::vector<std::uint8_t> aProfile = std::move(aImage.icc_profile);
    aImage.icc_profile.clear();
    if (aProfile.empty() || bProfileIsSrgb(aProfile))
        return true;
    if (!bProfileFits(aProfile, aImage.channels))
        return false;
    const Profile pFrom = pOpenProfile(aProfile);
    return aImage.channels == 1 ? bConvertGrey(pFrom.get(), aImage.bytes)
                                : bConvertColours(pFrom.get(), aImage);
}

CmykToBgr::CmykToBgr(Bytes aProfile, bool bInverted) : m_bInverted(bInverted)
{
    if (nColourSpace(aProfile) != cmsSigCmykData)
        return;
    const Profile pFrom = pOpenProfile(aProfile);
    const Profile pTo(cmsCreate_sRGBProfile());
    const cmsUInt32Number nFormat = bInverted ? TYPE_CMYK_8_REV : TYPE_CMYK_8;
    m_pTransform = pTransformBetween(pFrom.get(), nFormat, pTo.get(), TYPE_BGR_8).release();
}

CmykToBgr::~CmykToBgr()
{
    if (m_pTransform)
        cmsDeleteTransform(m_pTransform);
}

void CmykToBgr::Convert(const std::uint8_t* pInks, std::uint8_t* pBgr, std::size_t nPixels) const
{
    if (m_pTransform) {
        cmsDoTransform(m_pTransform, pInks, pBgr, static_cast<cmsUInt32Number>(nPixels));
        return;
    }
    const unsigned nInvert = m_bInverted ? 0 : 255;
    for (std::size_t i = 0; i < nPixels; ++i, pInks += 4, pBgr += 3) {
        const unsigned nLight = pInks[3] ^ nInvert;
        for (int c = 0; c < 3; ++c) {
            // x / 255 rounded, exact for all products of two bytes.
            const unsigned nMixed = (pInks[2 - c] ^ nInvert) * nLight + 128u;
            pBgr[c] = static_cast<std::uint8_t>((nMixed + (nMixed >> 8)) >> 8);
        }
    }
}

// Made once: preparing it costs more than converting some rows. Without its cache of one colour it isn't
// changed by use.
static const ColourTransform& pLabTransform()
{
    static const ColourTransform pTransform = [] {
        const Profile pFrom(cmsCreateLab4Profile(nullptr));
        const Profile pTo(cmsCreate_sRGBProfile());
        return pTransformBetween(pFrom.get(), TYPE_Lab_8, pTo.get(), TYPE_BGR_8, cmsFLAGS_NOCACHE);
    }();
    return pTransform;
}

bool bLabToBgr(const std::uint8_t* pLab, std::uint8_t* pBgr, std::size_t nPixels)
{
    const ColourTransform& pTransform = pLabTransform();
    if (!pTransform)
        return false;
    cmsDoTransform(pTransform.get(), pLab, pBgr, static_cast<cmsUInt32Number>(nPixels));
    return true;
}
