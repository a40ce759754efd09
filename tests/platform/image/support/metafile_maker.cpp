// Builds EMF and WMF files record by record.
#include "tests/platform/image/support/metafile_maker.h"

#include <algorithm>
#include <bit>
#include <cmath>

#include "src/platform/image/codecs/metafile/emf.h"
#include "src/platform/image/codecs/metafile/wmf.h"
#include "tests/platform/image/support/image_tools.h"

static ByteMaker objDibHeader(std::int32_t lWidth, std::int32_t lHeight, std::uint32_t nBits)
{
    ByteMaker objResult;
    objResult.U32Le({40, static_cast<std::uint32_t>(lWidth), static_cast<std::uint32_t>(lHeight)});
    objResult.U16Le({1, nBits}).Zeros(24);
    return objResult;
}

static Dib objDibOf(std::int32_t lWidth, const std::vector<std::uint32_t>& aColors, std::uint32_t nBits)
{
    const std::int32_t lHeight = static_cast<std::int32_t>(aColors.size()) / lWidth;
    Dib objDib{objDibHeader(lWidth, lHeight, nBits), {}};
    for (std::int32_t y = lHeight; y-- > 0;) {
        for (std::int32_t x = 0; x < lWidth; ++x) {
            const auto n = static_cast<int>(aColors[static_cast<std::size_t>(y * lWidth + x)]);
            objDib.objBits.U8({n >> 16 & 255, n >> 8 & 255, n & 255});
            if (nBits == 32)
                objDib.objBits.U8({n >> 24 & 255});
        }
        while (objDib.objBits.nSize() % 4 != 0)
            objDib.objBits.U8({0});
    }
    return objDib;
}

Dib objDib24(std::int32_t lWidth, const std::vector<std::uint32_t>& aColors)
{
    return objDibOf(lWidth, aColors, 24);
}

Dib objDib32(std::int32_t lWidth, const std::vector<std::uint32_t>& aColors)
{
    return objDibOf(lWidth, aColors, 32);
}

Dib objDib1(const std::vector<std::string_view>& aRows, std::uint32_t nFirst, std::uint32_t nSecond)
{
    const auto lWidth = static_cast<std::int32_t>(aRows[0].size());
    Dib objDib{objDibHeader(lWidth, static_cast<std::int32_t>(aRows.size()), 1), {}};
    for (const std::uint32_t n : {nFirst, nSecond})
        objDib.objHeader.U8(
            {static_cast<int>(n >> 16 & 255), static_cast<int>(n >> 8 & 255), static_cast<int>(n & 255), 0});
    for (auto itRow = aRows.rbegin(); itRow != aRows.rend(); ++itRow) {
        for (std::size_t x = 0; x < itRow->size(); x += 8) {
            int lByte = 0;
            for (std::size_t n = 0; n < 8; ++n)
                lByte = lByte << 1 | (x + n < itRow->size() && (*itRow)[x + n] == '#' ? 1 : 0);
            objDib.objBits.U8({lByte});
        }
        while (objDib.objBits.nSize() % 4 != 0)
            objDib.objBits.U8({0});
    }
    return objDib;
}

static void PutFields(ByteMaker& objBytes, std::initializer_list<std::int32_t> aFields)
{
    for (const std::int32_t lField : aFields)
        objBytes.U32Le({static_cast<std::uint32_t>(lField)});
}

EmfMaker::EmfMaker(std::int32_t lWidth, std::int32_t lHeight) : m_lWidth(lWidth), m_lHeight(lHeight) {}

EmfMaker& EmfMaker::Record(std::uint32_t nType, const ByteMaker& objData)
{
    const std::size_t nFilled = (objData.nSize() + 3) / 4 * 4;
    m_objRecords.U32Le({nType, static_cast<std::uint32_t>(nFilled + 8)}).All(objData.aBytes());
    m_objRecords.Zeros(nFilled - objData.nSize());
    ++m_nRecords;
    return *this;
}

EmfMaker& EmfMaker::Record(std::uint32_t nType, std::initializer_list<std::int32_t> aFields)
{
    ByteMaker objData;
    PutFields(objData, aFields);
    return Record(nType, objData);
}

EmfMaker& EmfMaker::Bounded(std::uint32_t nType, std::initializer_list<std::int32_t> aFields)
{
    ByteMaker objData;
    objData.Zeros(16);
    PutFields(objData, aFields);
    return Record(nType, objData);
}

EmfMaker& EmfMaker::Pen(std::int32_t lIndex, std::uint32_t nStyle, std::int32_t lWidth, std::uint32_t nColor)
{
    Record(Emr::CreatePen,
           {lIndex, static_cast<std::int32_t>(nStyle), lWidth, 0, static_cast<std::int32_t>(nColor)});
    return Select(lIndex);
}

EmfMaker& EmfMaker::Brush(std::int32_t lIndex, std::uint32_t nColor, std::uint32_t nStyle,
                          std::uint32_t nHatch)
{
    Record(Emr::CreateBrush, {lIndex, static_cast<std::int32_t>(nStyle), static_cast<std::int32_t>(nColor),
                              static_cast<std::int32_t>(nHatch)});
    return Select(lIndex);
}

EmfMaker& EmfMaker::GeometricPen(std::int32_t lIndex, std::uint32_t nStyle, std::int32_t lWidth,
                                 std::uint32_t nColor, std::initializer_list<std::int32_t> aDashes)
{
    ByteMaker objData;
    PutFields(objData, {lIndex, 0, 0, 0, 0, static_cast<std::int32_t>(0x10000 | nStyle), lWidth, 0,
                        static_cast<std::int32_t>(nColor), 0, static_cast<std::int32_t>(aDashes.size())});
    PutFields(objData, aDashes);
    Record(Emr::ExtCreatePen, objData);
    return Select(lIndex);
}

EmfMaker& EmfMaker::Font(std::int32_t lIndex, std::int32_t lHeight, std::u16string_view sFace,
                         std::int32_t lEscapement, std::int32_t lWeight, std::uint32_t nStyles)
{
    ByteMaker objData;
    PutFields(objData, {lIndex, lHeight, 0, lEscapement, lEscapement, lWeight});
    objData.U32Le({nStyles, 0});  // italic, underline, strike-out, character set; precisions, quality, pitch
    for (std::size_t n = 0; n < 32; ++n)
        objData.U16Le({n < sFace.size() ? std::uint32_t{sFace[n]} : 0u});
    Record(Emr::CreateFont, objData);
    return Select(lIndex);
}

EmfMaker& EmfMaker::Text(std::int32_t x, std::int32_t y, std::u16string_view sText,
                         const std::vector<std::int32_t>& aSteps, std::uint32_t nOptions,
                         std::initializer_list<std::int32_t> aBox)
{
    constexpr std::uint32_t kTextOffset = 76;
    const auto nChars = static_cast<std::uint32_t>(sText.size());
    const std::uint32_t nStepsOffset = aSteps.empty() ? 0 : kTextOffset + (nChars * 2 + 3) / 4 * 4;
    ByteMaker objData;
    objData.Zeros(16).U32Le({1, 0, 0});
    PutFields(objData, {x, y});
    objData.U32Le({nChars, kTextOffset, nOptions});
    PutFields(objData, aBox);
    objData.U32Le({nStepsOffset});
    for (const char16_t nChar : sText)
        objData.U16Le({nChar});
    if (!aSteps.empty())
        objData.Zeros(nChars % 2 * 2);
    for (const std::int32_t lStep : aSteps)
        objData.U32Le({static_cast<std::uint32_t>(lStep)});
    return Record(Emr::ExtTextOutW, objData);
}

EmfMaker& EmfMaker::World(std::uint32_t nMode, double d11, double d12, double d21, double d22, double dX,
                          double dY)
{
    ByteMaker objData;
    for (const double d : {d11, d12, d21, d22, dX, dY})
        objData.U32Le({std::bit_cast<std::uint32_t>(static_cast<float>(d))});
    if (nMode == 0)
        return Record(Emr::SetWorldTransform, objData);
    objData.U32Le({nMode});
    return Record(Emr::ModifyWorldTransform, objData);
}

EmfMaker& EmfMaker::Region(std::uint32_t nType, std::initializer_list<std::int32_t> aBefore,
                           const std::vector<std::array<std::int32_t, 4>>& aRects)
{
    ByteMaker objData;
    const auto nSize = static_cast<std::uint32_t>(32 + aRects.size() * 16);
    if (nType != Emr::ExtSelectClipRegion)
        objData.Zeros(16);
    objData.U32Le({nSize});
    PutFields(objData, aBefore);
    objData.U32Le({32, 1, static_cast<std::uint32_t>(aRects.size()), nSize - 32}).Zeros(16);
    for (const auto& aRect : aRects)
        PutFields(objData, {aRect[0], aRect[1], aRect[2], aRect[3]});
    return Record(nType, objData);
}

EmfMaker& EmfMaker::StretchDib(const Dib& objDib, std::array<std::int32_t, 4> aDest,
                               std::array<std::int32_t, 4> aSource, std::uint32_t nRop)
{
    ByteMaker objData;
    const auto nHeader = static_cast<std::uint32_t>(objDib.objHeader.nSize());
    objData.Zeros(16);
    PutFields(objData, {aDest[0], aDest[1], aSource[0], aSource[1], aSource[2], aSource[3]});
    objData.U32Le({80, nHeader, 80 + nHeader, static_cast<std::uint32_t>(objDib.objBits.nSize()), 0, nRop});
    PutFields(objData, {aDest[2], aDest[3]});
    objData.All(objDib.objHeader.aBytes()).All(objDib.objBits.aBytes());
    return Record(Emr::StretchDibits, objData);
}

EmfMaker& EmfMaker::Transfer(std::uint32_t nType, std::array<std::int32_t, 4> aDest, std::uint32_t nHow,
                             std::array<std::int32_t, 2> aSource, const std::optional<Dib>& objDib,
                             std::initializer_list<std::int32_t> aAfter)
{
    ByteMaker objData;
    objData.Zeros(16);
    PutFields(objData, {aDest[0], aDest[1], aDest[2], aDest[3]});
    objData.U32Le({nHow});
    PutFields(objData, {aSource[0], aSource[1]});
    const auto nOne = std::bit_cast<std::uint32_t>(1.0f);
    objData.U32Le({nOne, 0, 0, nOne, 0, 0, kWhite, 0});
    const auto nStart = static_cast<std::uint32_t>(8 + objData.nSize() + 16 + aAfter.size() * 4);
    const auto nHeader = static_cast<std::uint32_t>(objDib ? objDib->objHeader.nSize() : 0);
    const auto nBits = static_cast<std::uint32_t>(objDib ? objDib->objBits.nSize() : 0);
    objData.U32Le({objDib ? nStart : 0, nHeader, objDib ? nStart + nHeader : 0, nBits});
    PutFields(objData, aAfter);
    if (objDib)
        objData.All(objDib->objHeader.aBytes()).All(objDib->objBits.aBytes());
    return Record(nType, objData);
}

std::vector<std::uint8_t> EmfMaker::aFile() const
{
    const auto nFrame = [](std::int32_t lPixels) {
        return static_cast<std::uint32_t>(std::lround(lPixels * 2540.0 / 96));
    };
    ByteMaker objFile;
    const auto nSize = static_cast<std::uint32_t>(100 + m_objRecords.nSize() + 20);
    objFile.U32Le(
        {1, 100, 0, 0, static_cast<std::uint32_t>(m_lWidth - 1), static_cast<std::uint32_t>(m_lHeight - 1)});
    objFile.U32Le({0, 0, nFrame(m_lWidth), nFrame(m_lHeight), 0x464D4520, 0x10000, nSize, m_nRecords + 1});
    objFile.U16Le({20, 0}).U32Le({0, 0, 0, 1920, 1440, 508, 381, 0, 0, 0});
    objFile.All(m_objRecords.aBytes()).U32Le({Emr::Eof, 20, 0, 16, 20});
    return objFile.aBytes();
}

WmfMaker& WmfMaker::Record(std::uint16_t nFunction, const ByteMaker& objParameters)
{
    const std::size_t nWords = (objParameters.nSize() + 1) / 2;
    m_objRecords.U32Le({static_cast<std::uint32_t>(nWords + 3)})
        .U16Le({nFunction})
        .All(objParameters.aBytes());
    m_objRecords.Zeros(nWords * 2 - objParameters.nSize());
    return *this;
}

WmfMaker& WmfMaker::Record(std::uint16_t nFunction, std::initializer_list<std::int32_t> aWords)
{
    ByteMaker objParameters;
    for (const std::int32_t lWord : aWords)
        objParameters.U16Le({static_cast<std::uint32_t>(lWord) & 0xFFFF});
    return Record(nFunction, objParameters);
}

WmfMaker& WmfMaker::Pen(std::uint16_t nStyle, std::int16_t iWidth, std::uint32_t nColor)
{
    return Record(0x02FA, {nStyle, iWidth, 0, lLow(nColor), lHigh(nColor)});
}

WmfMaker& WmfMaker::Brush(std::uint32_t nColor, std::uint16_t nStyle, std::uint16_t nHatch)
{
    return Record(0x02FC, {nStyle, lLow(nColor), lHigh(nColor), nHatch});
}

WmfMaker& WmfMaker::Font(std::int16_t iHeight, std::string_view sFace, std::uint8_t nCharSet)
{
    ByteMaker objParameters;
    objParameters.U16Le({static_cast<std::uint16_t>(iHeight), 0, 0, 0, 400});
    objParameters.U8({0, 0, 0, nCharSet, 0, 0, 0, 0}).Text(sFace).Zeros(32 - sFace.size());
    return Record(0x02FB, objParameters);
}

std::vector<std::uint8_t> WmfMaker::aFile() const
{
    ByteMaker objFile;
    if (m_iWidth != 0) {
        objFile.U32Le({0x9AC6CDD7})
            .U16Le({0, 0, 0, static_cast<std::uint16_t>(m_iWidth), static_cast<std::uint16_t>(m_iHeight),
                    m_nUnitsPerInch, 0, 0});
        std::uint32_t nCheck = 0;
        for (std::size_t n = 0; n < 20; n += 2)
            nCheck ^= objFile.aBytes()[n] | static_cast<std::uint32_t>(objFile.aBytes()[n + 1]) << 8;
        objFile.U16Le({nCheck});
    }
    const auto nWords = static_cast<std::uint32_t>(9 + m_objRecords.nSize() / 2 + 3);
    objFile.U16Le({1, 9, 0x0300}).U32Le({nWords}).U16Le({20}).U32Le({nWords}).U16Le({0});
    objFile.All(m_objRecords.aBytes()).U32Le({3}).U16Le({0});
    return objFile.aBytes();
}

static ImageBuffer aPlayed(const Codec& objCodec, const std::vector<std::uint8_t>& aFile)
{
    const std::optional<ImageBuffer> aImage = aDecoded(objCodec, aFile);
    EXPECT_TRUE(aImage.has_value());
    return aImage.value_or(ImageBuffer{});
}

ImageBuffer aPlayed(const EmfMaker& objMaker)
{
    return aPlayed(kEmfCodec, objMaker.aFile());
}

ImageBuffer aPlayed(const WmfMaker& objMaker)
{
    return aPlayed(kWmfCodec, objMaker.aFile());
}

std::uint32_t nColorAt(const ImageBuffer& aImage, std::int32_t x, std::int32_t y)
{
    if (x < 0 || y < 0 || x >= aImage.width || y >= aImage.height)
        return 0xBAD00BAD;
    const auto lChannels = static_cast<std::size_t>(aImage.channels);
    const std::uint8_t* pPixel =
        aImage.bytes.data() +
        (static_cast<std::size_t>(y) * static_cast<std::size_t>(aImage.width) + static_cast<std::size_t>(x)) *
            lChannels;
    if (lChannels == 1)
        return pPixel[0] * 0x10101u;
    return static_cast<std::uint32_t>(pPixel[0]) << 16 | static_cast<std::uint32_t>(pPixel[1]) << 8 |
           pPixel[2];
}

int nCountOf(const ImageBuffer& aImage, std::uint32_t nColor, std::array<std::int32_t, 4> aBox)
{
    int nCount = 0;
    for (std::int32_t y = aBox[1]; y < aBox[3]; ++y)
        for (std::int32_t x = aBox[0]; x < aBox[2]; ++x)
            nCount += nColorAt(aImage, x, y) == nColor ? 1 : 0;
    return nCount;
}

std::array<std::int32_t, 4> aInk(const ImageBuffer& aImage)
{
    std::array<std::int32_t, 4> aBox{aImage.width, aImage.height, 0, 0};
    for (std::int32_t y = 0; y < aImage.height; ++y)
        for (std::int32_t x = 0; x < aImage.width; ++x)
            if (nColorAt(aImage, x, y) != kWhite)
                aBox = {std::min(aBox[0], x), std::min(aBox[1], y), std::max(aBox[2], x + 1),
                        std::max(aBox[3], y + 1)};
    return aBox[2] == 0 ? std::array<std::int32_t, 4>{} : aBox;
}
