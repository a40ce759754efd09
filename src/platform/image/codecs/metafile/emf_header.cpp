// Reads the header of an EMF and counts through its records.
#include "src/platform/image/codecs/metafile/emf_header.h"

#include <cmath>

static constexpr std::uint32_t kHeaderRecord = 1;
static constexpr std::uint32_t kEndRecord = 14;
static constexpr std::uint32_t kMark = 0x464D4520;  // " EMF"
static constexpr std::uint32_t kLeastHeader = 88;
static constexpr std::uint32_t kHeaderWithMicrometres = 108;
static constexpr std::uint64_t kMarkOffset = 40;

static constexpr double kHundredthsPerInch = 2540;
static constexpr double kPixelsPerInch = 96;

bool bIsEmf(Bytes aHead)
{
    ByteReader rd(aHead);
    const bool bRecord = rd.U32Le() == kHeaderRecord && rd.U32Le() >= kLeastHeader;
    rd.Take(kMarkOffset - 8);
    return bRecord && rd.U32Le() == kMark;
}

static std::int32_t lPixels(double dHundredths)
{
    const double d = std::floor(dHundredths / kHundredthsPerInch * kPixelsPerInch + 0.5);
    return d < 1 ? 1 : d > 1e9 ? 1'000'000'000 : static_cast<std::int32_t>(d);
}

std::optional<EmfHeader> objReadEmfHeader(Bytes aFile)
{
    if (!bIsEmf(aFile))
        return std::nullopt;
    ByteReader rd(aFile);
    EmfHeader objHeader;
    rd.U32Le();
    objHeader.nSize = rd.U32Le();
    double aBounds[4], aFrame[4];
    for (double& d : aBounds)
        d = rd.I32Le();
    for (double& d : aFrame)
        d = rd.I32Le();
    rd.Take(4 + 4 + 4 + 4);  // mark, version, bytes, records
    objHeader.nObjects = rd.U16Le();
    rd.Take(2 + 4 + 4 + 4);  // reserved, description, palette
    const double dDeviceX = rd.I32Le();
    const double dDeviceY = rd.I32Le();
    double dMillimetresX = rd.I32Le();
    double dMillimetresY = rd.I32Le();
    if (rd.Failed())
        return std::nullopt;
    if (objHeader.nSize >= kHeaderWithMicrometres && (dMillimetresX <= 0 || dMillimetresY <= 0)) {
        rd.Take(12);  // pixel format
        dMillimetresX = rd.I32Le() / 1000.0;
        dMillimetresY = rd.I32Le() / 1000.0;
    }
    const auto dDots = [](double dDevice, double dMillimetres) {
        return dDevice > 0 && dMillimetres > 0 ? dDevice / dMillimetres : kPixelsPerInch / 25.4;
    };
    objHeader.dDotsPerMillimetreX = dDots(dDeviceX, dMillimetresX);
    objHeader.dDotsPerMillimetreY = dDots(dDeviceY, dMillimetresY);
    if (aFrame[2] <= aFrame[0] || aFrame[3] <= aFrame[1]) {
        // No frame: the bounds of what is drawn, whose last row and column count in.
        for (int n = 0; n < 4; ++n)
            aFrame[n] = (aBounds[n] + (n >= 2 ? 1 : 0)) * 100 /
                        (n % 2 == 0 ? objHeader.dDotsPerMillimetreX : objHeader.dDotsPerMillimetreY);
        if (aBounds[2] < aBounds[0] || aBounds[3] < aBounds[1])
            return std::nullopt;
    }
    objHeader.dFrameLeft = aFrame[0];
    objHeader.dFrameTop = aFrame[1];
    objHeader.dFrameWidth = aFrame[2] - aFrame[0];
    objHeader.dFrameHeight = aFrame[3] - aFrame[1];
    objHeader.lWidth = lPixels(objHeader.dFrameWidth);
    objHeader.lHeight = lPixels(objHeader.dFrameHeight);
    return objHeader;
}

bool bEmfIsWhole(Bytes aFile)
{
    Bytes aLeft = aFile;
    for (;;) {
        ByteReader rd(aLeft);
        const std::uint32_t nType = rd.U32Le();
        const std::uint32_t nSize = rd.U32Le();
        if (rd.Failed() || nSize < 8 || nSize > aLeft.size())
            return false;
        if (nType == kEndRecord)
            return true;
        aLeft = aLeft.subspan(nSize);
    }
}
