// Brings samples of every width to 8 bits.
#include "src/platform/image/codecs/tiff/tiff_sample.h"

#include <algorithm>
#include <cmath>
#include <cstring>

template <typename T>
static T objLoad(const std::uint8_t* pBytes)
{
    T objValue;
    std::memcpy(&objValue, pBytes, sizeof(T));
    return objValue;
}

// Bits that begin anywhere; at most 16, so that they lie in three bytes.
static unsigned nBitsAt(const std::uint8_t* pStored, std::size_t nFirstBit, unsigned nBits)
{
    const std::uint8_t* p = pStored + nFirstBit / 8;
    const unsigned nUsed = static_cast<unsigned>(nFirstBit % 8) + nBits;
    unsigned nValue = static_cast<unsigned>(p[0]) << 16;
    if (nUsed > 8)
        nValue |= static_cast<unsigned>(p[1]) << 8;
    if (nUsed > 16)
        nValue |= p[2];
    return nValue >> (24 - nUsed) & ((1u << nBits) - 1);
}

static float dHalf(std::uint16_t nHalf)
{
    const int nExponent = nHalf >> 10 & 31;
    const int nFraction = nHalf & 1023;
    float dValue = 0;
    if (nExponent == 31)
        dValue = nFraction ? NAN : INFINITY;
    else
        dValue = nExponent ? std::ldexp(static_cast<float>(nFraction + 1024), nExponent - 25)
                           : std::ldexp(static_cast<float>(nFraction), -24);
    return nHalf & 0x8000 ? -dValue : dValue;
}

static std::uint32_t nThreeBytes(const std::uint8_t* p)
{
    constexpr bool bLittle = __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__;
    return static_cast<std::uint32_t>(p[1]) << 8 | static_cast<std::uint32_t>(p[bLittle ? 2 : 0]) << 16 |
           p[bLittle ? 0 : 2];
}

// A float of 24 bits: 7 of exponent (bias 63), 16 of fraction.
static double dFloat24(std::uint32_t nValue)
{
    const int nExponent = static_cast<int>(nValue >> 16 & 127);
    const double dFraction = static_cast<double>(nValue & 0xFFFF) / 65536;
    double dValue = 0;
    if (nExponent == 127)
        dValue = nValue & 0xFFFF ? NAN : INFINITY;
    else
        dValue = nExponent ? std::ldexp(1 + dFraction, nExponent - 63) : std::ldexp(dFraction, -62);
    return nValue & 0x800000 ? -dValue : dValue;
}

static double dWideSample(const TiffSampleForm& objForm, const std::uint8_t* p)
{
    if (objForm.nFormat == SAMPLEFORMAT_IEEEFP) {
        switch (objForm.nBits) {
            case 16:
                return dHalf(objLoad<std::uint16_t>(p));
            case 24:
                return dFloat24(nThreeBytes(p));
            case 32:
                return objLoad<float>(p);
            default:
                return objLoad<double>(p);
        }
    }
    const bool bSigned = objForm.nFormat == SAMPLEFORMAT_INT;
    switch (objForm.nBits) {
        case 24:
            return bSigned ? static_cast<std::int32_t>(nThreeBytes(p) << 8) / 256 : nThreeBytes(p);
        case 32:
            return bSigned ? objLoad<std::int32_t>(p) : objLoad<std::uint32_t>(p);
        default:
            return bSigned ? static_cast<double>(objLoad<std::int64_t>(p))
                           : static_cast<double>(objLoad<std::uint64_t>(p));
    }
}

static void WideLevels(const TiffSampleForm& objForm, const std::uint8_t* pStored, std::size_t nStep,
                       std::size_t nPixels, std::uint8_t* pOut, std::uint32_t nPitch)
{
    const double dScale = 255 / (objForm.dHighest - objForm.dLowest);
    for (std::size_t i = 0; i < nPixels; ++i) {
        const double dLevel = (dWideSample(objForm, pStored + i * nStep) - objForm.dLowest) * dScale;
        // Written so that what is no number becomes 0.
        pOut[i * nPitch] = dLevel >= 254.5 ? 255 : dLevel > 0 ? static_cast<std::uint8_t>(dLevel + 0.5) : 0;
    }
}

void LevelsOfSample(const TiffSampleForm& objForm, const std::uint8_t* pStored, std::uint32_t nSample,
                    std::uint32_t nStoredSamples, std::size_t nPixels, std::uint8_t* pOut,
                    std::uint32_t nPitch)
{
    const unsigned nBits = objForm.nBits;
    if (nBits > 16 || objForm.nFormat == SAMPLEFORMAT_IEEEFP) {
        const std::size_t nBytes = nBits / 8;
        WideLevels(objForm, pStored + nSample * nBytes, nStoredSamples * nBytes, nPixels, pOut, nPitch);
        return;
    }
    const unsigned nFlip = objForm.nFormat == SAMPLEFORMAT_INT ? 1u << (nBits - 1) : 0;
    if (nBits == 8) {
        for (std::size_t i = 0; i < nPixels; ++i)
            pOut[i * nPitch] = static_cast<std::uint8_t>(pStored[i * nStoredSamples + nSample] ^ nFlip);
        return;
    }
    if (nBits == 16) {
        for (std::size_t i = 0; i < nPixels; ++i) {
            const unsigned nValue =
                objLoad<std::uint16_t>(pStored + (i * nStoredSamples + nSample) * 2) ^ nFlip;
            const unsigned nLevel = objForm.bInSteps ? std::min(255u, (nValue + 128) >> 8)
                                                     : (nValue * 255 + 32895) >> 16;  // n / 257, rounded
            pOut[i * nPitch] = static_cast<std::uint8_t>(nLevel);
        }
        return;
    }
    const unsigned nHighest = (1u << nBits) - 1;
    for (std::size_t i = 0; i < nPixels; ++i) {
        const unsigned nValue = nBitsAt(pStored, (i * nStoredSamples + nSample) * nBits, nBits) ^ nFlip;
        pOut[i * nPitch] = static_cast<std::uint8_t>((nValue * 255 + nHighest / 2) / nHighest);
    }
}

void IndexesOfSample(std::uint16_t nBits, const std::uint8_t* pStored, std::uint32_t nSample,
                     std::uint32_t nStoredSamples, std::size_t nPixels, std::uint16_t* pOut)
{
    for (std::size_t i = 0; i < nPixels; ++i) {
        const std::size_t nAt = i * nStoredSamples + nSample;
        pOut[i] = nBits == 8    ? pStored[nAt]
                  : nBits == 16 ? objLoad<std::uint16_t>(pStored + nAt * 2)
                                : static_cast<std::uint16_t>(nBitsAt(pStored, nAt * nBits, nBits));
    }
}
