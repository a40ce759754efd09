// Writes Targa files.
#include "src/platform/image/codecs/tga/tga_encode.h"

#include <algorithm>
#include <vector>

#include "src/platform/image/base/output_file.h"
#include "src/platform/image/codecs/tga/tga_extension.h"
#include "src/platform/image/codecs/tga/tga_runs.h"

static constexpr std::uint8_t kTrueColour = 2;
static constexpr std::uint8_t kGrey = 3;
static constexpr std::uint8_t kPacked = 8;  // added to the kind
static constexpr std::uint8_t kFromTop = 32;

static Bytes aRowOf(const ImageBuffer& aImage, std::size_t y)
{
    const std::size_t nRowSize =
        static_cast<std::size_t>(aImage.width) * static_cast<std::size_t>(aImage.channels);
    return Bytes(aImage.bytes).subspan(y * nRowSize, nRowSize);
}

// Packs up to 64 rows from all over the picture.
static bool bWorthPacking(const ImageBuffer& aImage, std::vector<std::uint8_t>& aPacked)
{
    const auto nHeight = static_cast<std::size_t>(aImage.height);
    const std::size_t nStep = std::max<std::size_t>(nHeight / 64, 1);
    std::uint64_t nPlain = 0;
    std::uint64_t nPacked = 0;
    for (std::size_t y = nStep / 2; y < nHeight; y += nStep) {
        const Bytes aRow = aRowOf(aImage, y);
        nPlain += aRow.size();
        nPacked += nPackTgaRow(aRow, static_cast<std::size_t>(aImage.channels), aPacked.data());
    }
    return nPacked * 5 <= nPlain * 4;
}

static void WriteHeader(const ImageBuffer& aImage, bool bPacked, OutputFile& objOut)
{
    const std::uint8_t nKind = aImage.channels == 1 ? kGrey : kTrueColour;
    objOut.WriteU8(0);
    objOut.WriteU8(0);
    objOut.WriteU8(bPacked ? nKind | kPacked : nKind);
    objOut.Write(std::array<std::uint8_t, 9>{});  // no colour map, at no place of a screen
    objOut.WriteU16Le(static_cast<std::uint16_t>(aImage.width));
    objOut.WriteU16Le(static_cast<std::uint16_t>(aImage.height));
    objOut.WriteU8(static_cast<std::uint8_t>(aImage.channels * 8));
    objOut.WriteU8(aImage.channels == 4 ? kFromTop | 8 : kFromTop);
}

bool bEncodeTga(const ImageBuffer& aImage, const SaveSettings& objSettings, OutputFile& objOut)
{
    const auto nChannels = static_cast<std::size_t>(aImage.channels);
    std::vector<std::uint8_t> aPacked(nMostPackedTga(static_cast<std::size_t>(aImage.width), nChannels));
    const bool bPacked = bWorthPacking(aImage, aPacked);
    WriteHeader(aImage, bPacked, objOut);
    if (!bPacked)
        objOut.Write(aImage.bytes);
    for (std::size_t y = 0; bPacked && y < static_cast<std::size_t>(aImage.height) && !objOut.Failed(); ++y)
        objOut.Write(Bytes(aPacked).first(nPackTgaRow(aRowOf(aImage, y), nChannels, aPacked.data())));

    // The footer can't point to what lies beyond 4 GB: then there is no area.
    const std::uint64_t nEnd = objOut.Position();
    const bool bExtension = nEnd <= UINT32_MAX;
    if (bExtension)
        objOut.Write(aTgaExtension(objSettings.objTexts, nChannels == 4));
    objOut.WriteU32Le(bExtension ? static_cast<std::uint32_t>(nEnd) : 0);
    objOut.WriteU32Le(0);  // no developer area
    objOut.Write({reinterpret_cast<const std::uint8_t*>(kTgaSignature.data()), kTgaSignature.size()});
    return !objOut.Failed();
}
