// Writes GIF files.
#include <algorithm>

#include "src/platform/image/base/output_file.h"
#include "src/platform/image/codecs/gif/gif.h"
#include "src/platform/image/lzw/lzw_encoder.h"
#include "src/platform/image/metadata/info_lines.h"
#include "src/platform/image/quantiser/quantiser.h"

static constexpr std::size_t kBlock = 255;

// How many bits an index of nColours colours has.
static unsigned nIndexBits(std::size_t nColours)
{
    unsigned nBits = 1;
    while (std::size_t{1} << nBits < nColours)
        ++nBits;
    return nBits;
}

static void WriteComment(const std::string& sComment, OutputFile& objOut)
{
    if (sComment.empty())
        return;
    objOut.WriteU8(0x21);
    objOut.WriteU8(0xFE);
    for (std::size_t i = 0; i < sComment.size(); i += kBlock) {
        const std::string sBlock = sComment.substr(i, kBlock);
        objOut.WriteU8(static_cast<std::uint8_t>(sBlock.size()));
        objOut.Write({reinterpret_cast<const std::uint8_t*>(sBlock.data()), sBlock.size()});
    }
    objOut.WriteU8(0);
}

// A graphic control that does nothing but name the transparent colour.
static void WriteTransparency(std::int32_t nTransparent, OutputFile& objOut)
{
    if (nTransparent < 0)
        return;
    const std::uint8_t aControl[] = {0x21, 0xF9, 4, 1, 0, 0, static_cast<std::uint8_t>(nTransparent), 0};
    objOut.Write(aControl);
}

bool bEncodeGif(const ImageBuffer& aImage, const SaveSettings& objSettings, OutputFile& objOut)
{
    const IndexedImage objIndexed = Quantise(aImage);
    const std::string sComment = InfoLines(objSettings.objTexts);
    const unsigned nBits = nIndexBits(objIndexed.palette.size());
    const auto nWidth = static_cast<std::uint16_t>(aImage.width);
    const auto nHeight = static_cast<std::uint16_t>(aImage.height);

    const bool b89a = !sComment.empty() || objIndexed.transparent >= 0;
    const std::uint8_t aSignature[] = {'G', 'I', 'F', '8', static_cast<std::uint8_t>(b89a ? '9' : '7'), 'a'};
    objOut.Write(aSignature);
    objOut.WriteU16Le(nWidth);
    objOut.WriteU16Le(nHeight);
    objOut.WriteU8(
        static_cast<std::uint8_t>(0x80 | 7 << 4 | (nBits - 1)));  // a table of colours of 8 bits a channel
    objOut.WriteU8(static_cast<std::uint8_t>(std::max(objIndexed.transparent, 0)));  // background
    objOut.WriteU8(0);                                                               // pixels are square
    for (std::size_t i = 0; i < std::size_t{1} << nBits; ++i) {
        const PaletteColour aColour = i < objIndexed.palette.size() ? objIndexed.palette[i] : PaletteColour{};
        const std::uint8_t aRgb[] = {aColour[2], aColour[1], aColour[0]};
        objOut.Write(aRgb);
    }
    WriteComment(sComment, objOut);
    WriteTransparency(objIndexed.transparent, objOut);
    objOut.WriteU8(0x2C);
    objOut.WriteU16Le(0);
    objOut.WriteU16Le(0);
    objOut.WriteU16Le(nWidth);
    objOut.WriteU16Le(nHeight);
    objOut.WriteU8(0);
    return WriteLzw(objIndexed.indexes, nBits, objOut) && objOut.WriteU8(0x3B) && !objOut.Failed();
}
