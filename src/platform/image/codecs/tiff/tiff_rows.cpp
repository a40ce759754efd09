// Unpacks rows and turns their colours into grey, BGR or BGRA.
#include "src/platform/image/codecs/tiff/tiff_rows.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

#include "src/platform/image/codecs/tiff/tiff_pixels.h"
#include "src/platform/image/codecs/tiff/tiff_sample.h"
#include "src/platform/image/colour/colour_profile.h"
#include "src/platform/image/pixels/pixel_rows.h"

static constexpr std::size_t kBlock = 4096;  // pixels that are turned at a time where a copy is needed

static TiffSampleForm objFormOf(const TiffLayout& objLayout)
{
    return {objLayout.nBits, objLayout.nFormat, objLayout.dLowest, objLayout.dHighest, false};
}

TiffRows::TiffRows(TIFF* pTiff, const TiffLayout& objLayout, Bytes aProfile) : m_objLayout(objLayout)
{
    const bool bAlpha = objLayout.enAlpha != TiffAlpha::kNone;
    std::uint32_t nLevels = 3;
    m_nChannels = bAlpha ? 4 : 3;
    switch (objLayout.enColour) {
        case TiffColour::kGrey:
            m_nChannels = bAlpha ? 4 : 1;
            nLevels = m_nChannels;
            break;
        case TiffColour::kPalette:
            if (objLayout.bSeparate || !bReadPalette(pTiff, bAlpha || !aProfile.empty()))
                return;
            nLevels = m_nChannels;
            break;
        case TiffColour::kYCbCr:
            if (!bReadYCbCr(pTiff))
                return;
            nLevels = m_nChannels;
            break;
        case TiffColour::kCmyk:
            m_pInks = std::make_unique<CmykToBgr>(aProfile);
            nLevels = bAlpha ? 5 : 4;
            break;
        default:
            nLevels = m_nChannels;
    }
    const bool bInks = objLayout.enColour == TiffColour::kCmyk;
    const bool bLab = objLayout.enColour == TiffColour::kLab || objLayout.enColour == TiffColour::kIccLab;
    m_bFinishesRows = !bInks && !bLab;
    m_bInPlace = objLayout.nBits == 8 && objLayout.nFormat == SAMPLEFORMAT_UINT && !objLayout.bSeparate &&
                 !objLayout.bSubsampled() && objLayout.enColour != TiffColour::kPalette &&
                 objLayout.nSamples == nLevels && (!bAlpha || objLayout.nAlphaSample == nLevels - 1);
    m_bBits = objLayout.nBits == 1 && objLayout.nSamples == 1 && nLevels == 1;
    m_nLevels = nLevels;
}

TiffRows::~TiffRows() = default;

// Palettes have 16-bit levels, by rule n * 257. As common are writers that shift (n * 256) and those that put
// 8-bit levels there.
static unsigned nPaletteLevel(unsigned nStored, bool bAllNarrow, bool bAllShifted)
{
    if (bAllNarrow)
        return nStored;
    return bAllShifted ? nStored >> 8 : (nStored * 255 + 32895) >> 16;
}

bool TiffRows::bReadPalette(TIFF* pTiff, bool bKeepColours)
{
    std::array<std::uint16_t*, 3> aMaps{};
    if (!TIFFGetField(pTiff, TIFFTAG_COLORMAP, &aMaps[0], &aMaps[1], &aMaps[2]))
        return false;
    const std::size_t nColours = std::size_t{1} << m_objLayout.nBits;
    bool bAllNarrow = true;
    bool bAllShifted = true;
    bool bGrey = !bKeepColours;
    for (std::size_t i = 0; i < nColours; ++i) {
        bAllNarrow = bAllNarrow && std::max({aMaps[0][i], aMaps[1][i], aMaps[2][i]}) < 256;
        bAllShifted = bAllShifted && (aMaps[0][i] | aMaps[1][i] | aMaps[2][i]) % 256 == 0;
        bGrey = bGrey && aMaps[0][i] == aMaps[1][i] && aMaps[1][i] == aMaps[2][i];
    }
    if (bGrey)
        m_nChannels = 1;
    m_aPalette.assign(nColours * m_nChannels, 255);
    for (std::size_t i = 0; i < nColours; ++i)
        for (std::uint32_t c = 0; c < std::min(m_nChannels, 3u); ++c)
            m_aPalette[i * m_nChannels + c] =
                static_cast<std::uint8_t>(nPaletteLevel(aMaps[2 - c][i], bAllNarrow, bAllShifted));
    return true;
}

bool TiffRows::bReadYCbCr(TIFF* pTiff)
{
    float* pLuma = nullptr;
    float* pRange = nullptr;
    if (!TIFFGetFieldDefaulted(pTiff, TIFFTAG_YCBCRCOEFFICIENTS, &pLuma) ||
        !TIFFGetFieldDefaulted(pTiff, TIFFTAG_REFERENCEBLACKWHITE, &pRange))
        return false;
    // Numbers that can't be meant would overflow the tables.
    const auto bUsable = [](float dValue) { return std::abs(dValue) < 1e6f; };
    if (!std::all_of(pLuma, pLuma + 3, bUsable) || !std::all_of(pRange, pRange + 6, bUsable) ||
        std::abs(pLuma[1]) < 1e-3f)
        return false;
    // libtiff wants its tables in one block behind the structure.
    constexpr std::size_t kTables =
        4 * 256 * sizeof(TIFFRGBValue) + 2 * 256 * sizeof(int) + 3 * 256 * sizeof(std::int32_t);
    m_aYCbCr.resize((sizeof(TIFFYCbCrToRGB) + sizeof(long) + kTables) / sizeof(std::uint64_t) + 2);
    return TIFFYCbCrToRGBInit(reinterpret_cast<TIFFYCbCrToRGB*>(m_aYCbCr.data()), pLuma, pRange) >= 0;
}

// Where a sample goes among the levels of its pixel, and in which form it is read.
void TiffRows::UnpackSample(std::uint32_t nSample, std::uint32_t nStoredSamples, const std::uint8_t* pStored,
                            std::size_t nPixels, std::uint8_t* pOut) const
{
    TiffSampleForm objForm = objFormOf(m_objLayout);
    const bool bAlpha = m_objLayout.enAlpha != TiffAlpha::kNone && nSample == m_objLayout.nAlphaSample;
    if (!bAlpha && nSample >= m_objLayout.nColours())
        return;
    const std::uint32_t nFrom = nStoredSamples == 1 ? 0 : nSample;
    const auto Put = [&](std::uint32_t nLevel) {
        LevelsOfSample(objForm, pStored, nFrom, nStoredSamples, nPixels, pOut + nLevel, m_nLevels);
    };
    if (bAlpha) {
        Put(m_nLevels - 1);
    } else if (m_objLayout.enColour == TiffColour::kRgb) {
        Put(2 - nSample);
    } else if (m_objLayout.enColour == TiffColour::kGrey && m_nLevels == 4) {
        Put(0);
        for (std::uint8_t* p = pOut; p != pOut + nPixels * 4; p += 4)
            p[1] = p[2] = p[0];
    } else {
        // a and b have a sign in one of the two forms, whatever the file says of its samples.
        const bool bLab = m_objLayout.enColour == TiffColour::kLab;
        const bool bShifted = m_objLayout.enColour == TiffColour::kIccLab;
        if (bLab || bShifted)
            objForm.nFormat = bLab && nSample > 0 ? SAMPLEFORMAT_INT : SAMPLEFORMAT_UINT;
        objForm.bInSteps = bShifted || (bLab && nSample > 0);
        Put(nSample);
    }
}

void TiffRows::UnpackPalette(const std::uint8_t* pStored, std::size_t nPixels, std::uint8_t* pLevels) const
{
    std::array<std::uint16_t, kBlock> aIndexes;
    const std::uint32_t nStored = m_objLayout.nSamples;
    const std::size_t nBitsAPixel = std::size_t{m_objLayout.nBits} * nStored;
    // A block begins on a byte, since it is a multiple of 8 pixels.
    for (std::size_t nDone = 0; nDone < nPixels; nDone += kBlock) {
        const std::size_t nNow = std::min(kBlock, nPixels - nDone);
        const std::uint8_t* pFrom = pStored + nDone * nBitsAPixel / 8;
        std::uint8_t* pTo = pLevels + nDone * m_nLevels;
        IndexesOfSample(m_objLayout.nBits, pFrom, 0, nStored, nNow, aIndexes.data());
        if (m_nChannels == 1)
            for (std::size_t i = 0; i < nNow; ++i)
                pTo[i] = m_aPalette[aIndexes[i]];
        else
            for (std::size_t i = 0; i < nNow; ++i)
                std::memcpy(pTo + i * m_nChannels, m_aPalette.data() + aIndexes[i] * m_nChannels,
                            m_nChannels);
        if (m_objLayout.enAlpha != TiffAlpha::kNone)
            LevelsOfSample(objFormOf(m_objLayout), pFrom, m_objLayout.nAlphaSample, nStored, nNow, pTo + 3,
                           4);
    }
}

void TiffRows::Unpack(const std::uint8_t* pStored, std::size_t nPixels, std::uint8_t* pLevels) const
{
    if (m_bBits) {
        const bool bPalette = m_objLayout.enColour == TiffColour::kPalette;
        const std::uint8_t nZero = m_objLayout.bMinIsWhite ? 255 : 0;
        const auto nOne = static_cast<std::uint8_t>(~nZero);
        ExpandBits(pStored, nPixels, bPalette ? m_aPalette[0] : nZero, bPalette ? m_aPalette[1] : nOne,
                   pLevels);
    } else if (m_objLayout.enColour == TiffColour::kPalette) {
        UnpackPalette(pStored, nPixels, pLevels);
    } else if (m_bInPlace && m_objLayout.enColour == TiffColour::kRgb) {
        (m_nLevels == 3 ? SwapRedAndBlue : SwapRedAndBlueOfFour)(pStored, pLevels, nPixels);
    } else if (m_bInPlace) {
        if (pStored != pLevels)
            std::memcpy(pLevels, pStored, nPixels * m_nLevels);
        if (m_objLayout.enColour == TiffColour::kLab)
            for (std::uint8_t* p = pLevels; p != pLevels + nPixels * m_nLevels; p += m_nLevels) {
                p[1] ^= 0x80;
                p[2] ^= 0x80;
            }
    } else {
        for (std::uint32_t nSample = 0; nSample < m_objLayout.nSamples; ++nSample)
            UnpackSample(nSample, m_objLayout.nSamples, pStored, nPixels, pLevels);
    }
}

void TiffRows::UnpackPlane(std::uint32_t nPlane, const std::uint8_t* pStored, std::size_t nPixels,
                           std::uint8_t* pLevels) const
{
    UnpackSample(nPlane, 1, pStored, nPixels, pLevels);
}

void TiffRows::UnpackSubsampled(const std::uint8_t* pStored, std::uint32_t nStoredColumns,
                                std::uint32_t nColumns, std::uint32_t nRows, std::uint8_t* pLevels,
                                std::size_t nPitch) const
{
    const std::uint32_t nAcross = m_objLayout.nSubsamplingX;
    const std::uint32_t nDown = m_objLayout.nSubsamplingY;
    const std::uint32_t nUnits = (nStoredColumns + nAcross - 1) / nAcross;
    const std::size_t nUnitSize = nAcross * nDown + 2;
    for (std::uint32_t y = 0; y < nRows; ++y) {
        const std::uint8_t* pUnits = pStored + std::size_t{y / nDown} * nUnits * nUnitSize;
        std::uint8_t* pOut = pLevels + y * nPitch;
        for (std::uint32_t x = 0; x < nColumns; ++x, pOut += 3) {
            const std::uint8_t* pUnit = pUnits + x / nAcross * nUnitSize;
            pOut[0] = pUnit[y % nDown * nAcross + x % nAcross];
            pOut[1] = pUnit[nUnitSize - 2];
            pOut[2] = pUnit[nUnitSize - 1];
        }
    }
}

// Colours of three or four samples and perhaps alpha, a block at a time, since the input may lie where the
// output goes.
template <typename TurnBlock>
static bool bTurnBlocks(const std::uint8_t* pLevels, std::size_t nPixels, std::uint32_t nLevels, bool bAlpha,
                        std::size_t nBlock, std::uint8_t* pOut, TurnBlock Turn)
{
    const std::uint32_t nColours = bAlpha ? nLevels - 1 : nLevels;
    std::vector<std::uint8_t> aIn(std::min(nBlock, nPixels) * nColours);
    std::vector<std::uint8_t> aOut(std::min(nBlock, nPixels) * 3);
    for (std::size_t nDone = 0; nDone < nPixels; nDone += nBlock) {
        const std::size_t nNow = std::min(nBlock, nPixels - nDone);
        const std::uint8_t* pFrom = pLevels + nDone * nLevels;
        std::uint8_t* pTo = pOut + nDone * (bAlpha ? 4 : 3);
        for (std::size_t i = 0; i < nNow; ++i)
            std::memcpy(aIn.data() + i * nColours, pFrom + i * nLevels, nColours);
        if (!Turn(aIn.data(), aOut.data(), nNow))
            return false;
        if (!bAlpha) {
            std::memcpy(pTo, aOut.data(), nNow * 3);
            continue;
        }
        for (std::size_t i = 0; i < nNow; ++i) {
            const std::uint8_t nAlpha = pFrom[i * nLevels + nLevels - 1];
            std::memcpy(pTo + i * 4, aOut.data() + i * 3, 3);
            pTo[i * 4 + 3] = nAlpha;
        }
    }
    return true;
}

bool TiffRows::bFinish(const std::uint8_t* pLevels, std::size_t nPixels, std::uint8_t* pOut) const
{
    const bool bAlpha = m_objLayout.enAlpha != TiffAlpha::kNone;
    bool bDone = true;
    switch (m_objLayout.enColour) {
        case TiffColour::kCmyk:
            bDone = bTurnBlocks(pLevels, nPixels, m_nLevels, bAlpha, kBlock, pOut,
                                [this](const std::uint8_t* pIn, std::uint8_t* pBgr, std::size_t nCount) {
                                    m_pInks->Convert(pIn, pBgr, nCount);
                                    return true;
                                });
            break;
        case TiffColour::kLab:
        case TiffColour::kIccLab:
            // Large blocks: each builds the way to sRGB anew.
            bDone = bTurnBlocks(pLevels, nPixels, m_nLevels, bAlpha, 256 * kBlock, pOut,
                                [](const std::uint8_t* pIn, std::uint8_t* pBgr, std::size_t nCount) {
                                    return LabToBgr(pIn, pBgr, nCount);
                                });
            break;
        case TiffColour::kYCbCr: {
            auto* pTables = reinterpret_cast<TIFFYCbCrToRGB*>(const_cast<std::uint64_t*>(m_aYCbCr.data()));
            const std::uint8_t* pIn = pLevels;
            std::uint8_t* pTo = pOut;
            for (std::size_t i = 0; i < nPixels; ++i, pIn += m_nLevels, pTo += m_nLevels) {
                std::uint32_t nRed = 0;
                std::uint32_t nGreen = 0;
                std::uint32_t nBlue = 0;
                TIFFYCbCrtoRGB(pTables, pIn[0], pIn[1], pIn[2], &nRed, &nGreen, &nBlue);
                pTo[0] = static_cast<std::uint8_t>(nBlue);
                pTo[1] = static_cast<std::uint8_t>(nGreen);
                pTo[2] = static_cast<std::uint8_t>(nRed);
                if (bAlpha)
                    pTo[3] = pIn[3];
            }
            break;
        }
        default:
            if (pOut != pLevels)
                std::memmove(pOut, pLevels, nPixels * m_nLevels);
            if (m_objLayout.enColour == TiffColour::kGrey && m_objLayout.bMinIsWhite && !m_bBits)
                for (std::size_t i = 0; i < nPixels * m_nLevels; ++i)
                    pOut[i] = m_nLevels == 4 && i % 4 == 3 ? pOut[i] : static_cast<std::uint8_t>(~pOut[i]);
    }
    if (bDone && m_objLayout.enAlpha == TiffAlpha::kAssociated)
        Unpremultiply(pOut, nPixels);
    return bDone;
}
