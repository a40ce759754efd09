// Makes a picture of JPEG 2000 components.
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

enum class Colours { Grey, Rgb, Ycc, Inks, Lab };

/// Which components are which.
struct Roles {
    Colours objColours = Colours::Grey;
    std::array<std::size_t, 4> aColour{};  ///< as many as the colours have
    std::int32_t nAlpha = -1;
    bool bPremultiplied = false;
};

static std::size_t nColourComponents(Colours objColours)
{
    return objColours == Colours::Grey ? 1 : objColours == Colours::Inks ? 4 : 3;
}

static Bytes aProfileOf(const opj_image_t& objImage)
{
    return {objImage.icc_profile_buf, objImage.icc_profile_buf ? objImage.icc_profile_len : 0};
}

// The four letters of an ICC profile's colour space.
static bool bProfileOfInks(Bytes aProfile)
{
    return aProfile.size() > 20 && std::memcmp(aProfile.data() + 16, "CMYK", 4) == 0;
}

// The library keeps the parameters of L*a*b* where otherwise the profile is, and says so by a length of 0.
static bool bIsLab(const opj_image_t& objImage)
{
    return objImage.icc_profile_buf && objImage.icc_profile_len == 0;
}

static bool bFindRoles(const opj_image_t& objImage, Roles& objRoles)
{
    std::vector<std::size_t> aColour;
    for (std::size_t i = 0; i < objImage.numcomps; ++i) {
        const OPJ_UINT16 nAlpha = objImage.comps[i].alpha;
        if (nAlpha == 0) {
            aColour.push_back(i);
        } else if (objRoles.nAlpha < 0 && nAlpha <= 2) {
            objRoles.nAlpha = static_cast<std::int32_t>(i);
            objRoles.bPremultiplied = nAlpha == 2;
        }
    }
    if (aColour.empty())
        return false;
    const bool bInks = objImage.color_space == OPJ_CLRSPC_CMYK || bProfileOfInks(aProfileOf(objImage));
    const bool bAlphaByPlace = objRoles.nAlpha < 0 && !bInks && (aColour.size() == 2 || aColour.size() == 4);
    if (bAlphaByPlace) {
        objRoles.nAlpha = static_cast<std::int32_t>(aColour.back());
        aColour.pop_back();
    }
    if (bInks)
        objRoles.objColours = Colours::Inks;
    else if (objImage.color_space == OPJ_CLRSPC_GRAY || aColour.size() < 3)
        objRoles.objColours = Colours::Grey;
    else if (bIsLab(objImage))
        objRoles.objColours = Colours::Lab;
    else if (objImage.color_space == OPJ_CLRSPC_SYCC || objImage.color_space == OPJ_CLRSPC_EYCC)
        objRoles.objColours = Colours::Ycc;
    else
        objRoles.objColours = Colours::Rgb;
    if (aColour.size() < nColourComponents(objRoles.objColours))
        return false;
    std::copy_n(aColour.begin(), nColourComponents(objRoles.objColours), objRoles.aColour.begin());
    // Nobody stores R and B of fewer samples than G; a bare codestream that looks so holds YCC.
    const auto& objFirst = objImage.comps[objRoles.aColour[0]];
    const auto& objSecond = objImage.comps[objRoles.aColour[1]];
    if (objRoles.objColours == Colours::Rgb && objImage.color_space != OPJ_CLRSPC_SRGB &&
        (objSecond.dx > objFirst.dx || objSecond.dy > objFirst.dy))
        objRoles.objColours = Colours::Ycc;
    return true;
}

// The picture has the pixels of its finest component. False if a component that counts has no samples.
static bool bFindGrid(const opj_image_t& objImage, const Roles& objRoles, PixelGrid& objGrid)
{
    std::uint32_t nStepX = 256, nStepY = 256;
    const auto Take = [&](std::size_t nComponent) {
        const opj_image_comp_t& o = objImage.comps[nComponent];
        nStepX = std::min(nStepX, o.dx);
        nStepY = std::min(nStepY, o.dy);
        return o.data && o.w > 0 && o.h > 0 && o.dx > 0 && o.dy > 0 && o.prec >= 1 && o.prec <= 38;
    };
    bool bSound = objRoles.nAlpha < 0 || Take(static_cast<std::size_t>(objRoles.nAlpha));
    for (std::size_t i = 0; i < nColourComponents(objRoles.objColours); ++i)
        bSound = Take(objRoles.aColour[i]) && bSound;
    if (bSound)
        objGrid = objPixelGrid(objImage, nStepX, nStepY);
    return bSound;
}

// Y, Cb, Cr in B, G, R's places to B, G, R (IEC 61966-2-1, annex F, the inverse of ITU-R BT.601 in full
// range).
static void YccRow(std::uint8_t* pPixels, std::uint32_t nPixels, std::size_t nStride)
{
    const auto nByte = [](float fValue) {
        return static_cast<std::uint8_t>(std::clamp(fValue + 0.5F, 0.F, 255.F));
    };
    for (std::uint32_t x = 0; x < nPixels; ++x, pPixels += nStride) {
        const float fY = pPixels[2], fCb = pPixels[1] - 128.F, fCr = pPixels[0] - 128.F;
        pPixels[2] = nByte(fY + 1.402F * fCr);
        pPixels[1] = nByte(fY - 0.344136F * fCb - 0.714136F * fCr);
        pPixels[0] = nByte(fY + 1.772F * fCb);
    }
}

using LabLevels =
    std::array<std::array<std::uint8_t, 256>, 3>;  ///< L*, a*, b* in bytes: 0..100 as 0..255, and plus 128

// How the library hands on the parameters of L*a*b*: whether the defaults hold, then range and offset of
// each.
static LabLevels aLabLevels(const opj_image_t& objImage, const Roles& objRoles)
{
    std::array<std::uint32_t, 9> aParameters{};
    std::memcpy(aParameters.data(), objImage.icc_profile_buf, sizeof aParameters);
    constexpr std::uint32_t kDefault = 0x44454600;  // "DEF"
    LabLevels aLevels{};
    for (std::size_t c = 0; c < 3; ++c) {
        const double dMost = std::pow(2, objImage.comps[objRoles.aColour[c]].prec) - 1;
        double dRange = c == 0 ? 100 : c == 1 ? 170 : 200;
        double dOffset = c == 0 ? 0 : c == 1 ? (dMost + 1) / 2 : (dMost + 1) * 3 / 8;
        if (aParameters[1] != kDefault) {
            dRange = aParameters[2 + 2 * c];
            dOffset = aParameters[3 + 2 * c];
        }
        for (std::size_t i = 0; i < 256; ++i) {
            const double dValue = (static_cast<double>(i) / 255 * dMost - dOffset) * dRange / dMost;
            aLevels[c][i] =
                static_cast<std::uint8_t>(std::clamp(c == 0 ? dValue * 2.55 : dValue + 128, 0., 255.) + 0.5);
        }
    }
    return aLevels;
}

// Inks and L*a*b* go some rows at a time through bytes of their own into the picture, which has 3 channels
// or 4.
static bool bThroughRows(const opj_image_t& objImage, const Roles& objRoles, const PixelGrid& objGrid,
                         const std::vector<SampleRows>& aColours, ImageBuffer& aImage)
{
    constexpr std::uint32_t kPixelsAtOnce = 1 << 20;
    const std::uint32_t nRowsAtOnce = std::max(1u, kPixelsAtOnce / objGrid.nWidth);
    const std::size_t nComponents = aColours.size();
    const auto nChannels = static_cast<std::size_t>(aImage.channels);
    std::vector<std::uint8_t> aIn, aOut;
    const bool bLab = objRoles.objColours == Colours::Lab;
    const CmykToBgr objInks(bLab ? Bytes{} : aProfileOf(objImage));
    const auto aLevels = bLab ? aLabLevels(objImage, objRoles) : LabLevels{};
    std::uint8_t* pOut = aImage.bytes.data();
    for (std::uint32_t nFirst = 0; nFirst < objGrid.nHeight; nFirst += nRowsAtOnce) {
        const std::uint32_t nRows = std::min(nRowsAtOnce, objGrid.nHeight - nFirst);
        const std::size_t nPixels = std::size_t{nRows} * objGrid.nWidth;
        aIn.resize(nPixels * nComponents);
        aOut.resize(nPixels * 3);
        for (std::uint32_t y = 0; y < nRows; ++y)
            for (std::size_t c = 0; c < nComponents; ++c)
                aColours[c].Read(nFirst + y, &aIn[std::size_t{y} * objGrid.nWidth * nComponents + c],
                                 nComponents);
        if (bLab) {
            for (std::size_t i = 0; i < aIn.size(); ++i)
                aIn[i] = aLevels[i % 3][aIn[i]];
            if (!LabToBgr(aIn.data(), aOut.data(), nPixels))
                return false;
        } else {
            objInks.Convert(aIn.data(), aOut.data(), nPixels);
        }
        for (std::size_t i = 0; i < nPixels; ++i, pOut += nChannels)
            std::memcpy(pOut, &aOut[i * 3], 3);
    }
    return true;
}

// Colour that was multiplied by its alpha, divided by it again.
static void DivideByAlpha(ImageBuffer& aImage)
{
    for (std::size_t i = 0; i < aImage.bytes.size(); i += 4) {
        const unsigned nAlpha = aImage.bytes[i + 3];
        for (std::size_t c = 0; c < 3 && nAlpha > 0; ++c)
            aImage.bytes[i + c] =
                static_cast<std::uint8_t>(std::min(255u, (aImage.bytes[i + c] * 255u + nAlpha / 2) / nAlpha));
    }
}

// A profile counts for the components as they are stored, so it is used or kept before grey gets three
// channels.
static void TakeProfile(const opj_image_t& objImage, const Roles& objRoles, ImageBuffer& aImage)
{
    const Bytes aProfile = aProfileOf(objImage);
    const bool bStored = objRoles.objColours == Colours::Rgb || objRoles.objColours == Colours::Grey;
    if (bStored && ProfileFits(aProfile, aImage.channels))
        aImage.icc_profile.assign(aProfile.begin(), aProfile.end());
}

bool bMakePicture(const opj_image_t& objImage, ImageBuffer& aImage)
{
    Roles objRoles;
    PixelGrid objGrid{};
    if (!bFindRoles(objImage, objRoles) || !bFindGrid(objImage, objRoles, objGrid))
        return false;
    const Colours objColours = objRoles.objColours;
    std::vector<SampleRows> aColours;
    for (std::size_t i = 0; i < nColourComponents(objColours); ++i)
        aColours.emplace_back(objImage.comps[objRoles.aColour[i]], objGrid);

    const bool bGrey = objColours == Colours::Grey;
    ImageBuffer aResult;
    if (!Allocate(aResult, objGrid.nWidth, objGrid.nHeight, bGrey ? 1 : objRoles.nAlpha >= 0 ? 4 : 3))
        return false;
    const auto nChannels = static_cast<std::size_t>(aResult.channels);
    const std::size_t nRowBytes = objGrid.nWidth * nChannels;
    if (objColours == Colours::Inks || objColours == Colours::Lab) {
        if (!bThroughRows(objImage, objRoles, objGrid, aColours, aResult))
            return false;
    } else {
        for (std::uint32_t y = 0; y < objGrid.nHeight; ++y) {
            std::uint8_t* pRow = aResult.bytes.data() + y * nRowBytes;
            for (std::size_t c = 0; c < aColours.size(); ++c)
                aColours[c].Read(y, pRow + aColours.size() - 1 - c, nChannels);
            if (objColours == Colours::Ycc)
                YccRow(pRow, objGrid.nWidth, nChannels);
        }
    }
    TakeProfile(objImage, objRoles, aResult);
    if (objRoles.nAlpha >= 0) {
        if (bGrey) {
            ConvertToSrgb(aResult);  // a grey profile says nothing about the three channels that come now
            if (!AddAlpha(aResult))
                return false;
        }
        const SampleRows objAlpha(objImage.comps[objRoles.nAlpha], objGrid);
        for (std::uint32_t y = 0; y < objGrid.nHeight; ++y)
            objAlpha.Read(y, aResult.bytes.data() + std::size_t{y} * objGrid.nWidth * 4 + 3, 4);
        if (objRoles.bPremultiplied)
            DivideByAlpha(aResult);
    }
    aImage = std::move(aResult);
    return true;
}
