// Lays out TIFF directories: the values first, then the directory that points to them.
#include "src/platform/image/codecs/tiff/directory/tiff_directory_writer.h"

#include <algorithm>
#include <cmath>
#include <limits>

void AppendNumber(std::vector<std::uint8_t>& aBytes, std::uint64_t nValue, std::uint32_t nSize)
{
    for (std::uint32_t i = 0; i < nSize; ++i)
        aBytes.push_back(static_cast<std::uint8_t>(nValue >> (8 * i)));
}

TiffTag objNumberTag(std::uint16_t nTag, std::uint16_t nType, const std::vector<std::uint64_t>& aNumbers)
{
    TiffTag objTag{nTag, nType, aNumbers.size(), {}, {}};
    const std::uint32_t nSize = nTiffTypeSize(nType);
    objTag.aValue.reserve(aNumbers.size() * nSize);
    for (const std::uint64_t nNumber : aNumbers)
        AppendNumber(objTag.aValue, nNumber, nSize);
    return objTag;
}

// A denominator of 1000 keeps the resolutions that files have (72, 300, 118.11 a centimetre) exact.
TiffTag objRationalTag(std::uint16_t nTag, double dValue)
{
    const double dDenominator = dValue < 4'000'000 ? 1000 : 1;
    const double dNumerator = std::clamp(std::round(dValue * dDenominator), 0.0, 4294967295.0);
    TiffTag objTag{nTag, 5, 1, {}, {}};
    AppendNumber(objTag.aValue, static_cast<std::uint64_t>(dNumerator), 4);
    AppendNumber(objTag.aValue, static_cast<std::uint64_t>(dDenominator), 4);
    return objTag;
}

TiffTag objTextTag(std::uint16_t nTag, std::string_view sText)
{
    sText = sText.substr(0, sText.find('\0'));
    TiffTag objTag{nTag, 2, sText.size() + 1, {}, {}};
    objTag.aValue.assign(sText.begin(), sText.end());
    objTag.aValue.push_back(0);
    return objTag;
}

TiffTag objBytesTag(std::uint16_t nTag, std::uint16_t nType, Bytes aBytes)
{
    return {
        nTag, nType, aBytes.size() / std::max(1u, nTiffTypeSize(nType)), {aBytes.begin(), aBytes.end()}, {}};
}

static std::uint64_t nNumberOf(const std::uint8_t* pBytes, std::uint32_t nSize)
{
    std::uint64_t nValue = 0;
    for (std::uint32_t i = nSize; i > 0; --i)
        nValue = nValue << 8 | pBytes[i - 1];
    return nValue;
}

// The tag in 32 bits, as a classic file wants it; False if that can't be.
static bool bMakeClassic(TiffTag& objTag)
{
    const bool bSigned = objTag.nType == 17;
    if (objTag.nType != 16 && objTag.nType != 18 && !bSigned)
        return true;
    std::vector<std::uint8_t> aNarrow;
    for (std::size_t i = 0; i + 8 <= objTag.aValue.size(); i += 8) {
        const std::uint64_t nValue = nNumberOf(objTag.aValue.data() + i, 8);
        const auto nSigned = static_cast<std::int64_t>(nValue);
        if (bSigned ? nSigned != static_cast<std::int32_t>(nSigned)
                    : nValue > std::numeric_limits<std::uint32_t>::max())
            return false;
        AppendNumber(aNarrow, nValue, 4);
    }
    objTag.nType = bSigned ? 9 : objTag.nType == 18 ? 13 : 4;
    objTag.aValue = std::move(aNarrow);
    return true;
}

// Appends the directories that aTags points to, then the values, then the directory itself.
static TiffDirectoryBytes objAppended(std::vector<std::uint8_t> aBytes, std::vector<TiffTag> aTags,
                                      std::uint64_t nPlace, bool bBigTiff)
{
    const std::uint32_t nOffsetSize = bBigTiff ? 8 : 4;
    const auto nAlignedEnd = [&] {
        aBytes.resize((aBytes.size() + 1) / 2 * 2);
        return nPlace + aBytes.size();
    };
    if (!bBigTiff)
        std::erase_if(aTags, [](TiffTag& objTag) { return !bMakeClassic(objTag); });
    std::vector<std::uint8_t> aDirectory;
    AppendNumber(aDirectory, aTags.size(), bBigTiff ? 8 : 2);
    for (TiffTag& objTag : aTags) {
        if (!objTag.aDirectory.empty()) {
            TiffDirectoryBytes objInner =
                objAppended(std::move(aBytes), std::move(objTag.aDirectory), nPlace, bBigTiff);
            aBytes = std::move(objInner.aBytes);
            objTag.nType = 4;
            objTag.nCount = 1;
            objTag.aValue.clear();
            AppendNumber(objTag.aValue, objInner.nDirectory, 4);
            if (objInner.nDirectory > std::numeric_limits<std::uint32_t>::max()) {
                objTag.nType = 18;
                objTag.aValue.clear();
                AppendNumber(objTag.aValue, objInner.nDirectory, 8);
            }
        }
        AppendNumber(aDirectory, objTag.nTag, 2);
        AppendNumber(aDirectory, objTag.nType, 2);
        AppendNumber(aDirectory, objTag.nCount, nOffsetSize);
        if (objTag.aValue.size() <= nOffsetSize) {
            objTag.aValue.resize(nOffsetSize);
            aDirectory.insert(aDirectory.end(), objTag.aValue.begin(), objTag.aValue.end());
        } else {
            AppendNumber(aDirectory, nAlignedEnd(), nOffsetSize);
            aBytes.insert(aBytes.end(), objTag.aValue.begin(), objTag.aValue.end());
        }
    }
    const std::uint64_t nDirectory = nAlignedEnd();
    aBytes.insert(aBytes.end(), aDirectory.begin(), aDirectory.end());
    const std::uint64_t nNextPointer = nPlace + aBytes.size();
    AppendNumber(aBytes, 0, nOffsetSize);
    return {std::move(aBytes), nDirectory, nNextPointer};
}

TiffDirectoryBytes objDirectoryBytes(const std::vector<TiffTag>& aTags, std::uint64_t nPlace, bool bBigTiff)
{
    return objAppended({}, aTags, nPlace, bBigTiff);
}

std::vector<std::uint8_t> aTiffHeaderBytes(std::uint64_t nFirstDirectory, bool bBigTiff)
{
    std::vector<std::uint8_t> aBytes = {'I', 'I'};
    AppendNumber(aBytes, bBigTiff ? 43 : 42, 2);
    if (bBigTiff)
        AppendNumber(aBytes, 8, 4);  // size of an offset, then a zero
    AppendNumber(aBytes, nFirstDirectory, bBigTiff ? 8 : 4);
    aBytes.resize(16);
    return aBytes;
}
