// Puts JPEG 2000 codestreams into the boxes of JP2 files, for what no program writes.
#pragma once

#include <string>
#include <vector>

#include "tests/platform/image/support/byte_maker.h"

using Jp2Block = std::vector<std::uint8_t>;

inline Jp2Block Jp2Box(const std::string& sType, const Jp2Block& aContent)
{
    return ByteMaker()
        .U32Be({static_cast<std::uint32_t>(aContent.size() + 8)})
        .Text(sType)
        .All(aContent)
        .aBytes();
}

/// A colour box with one of the numbers of the standard: 16 sRGB, 17 grey, 18 sYCC, 12 CMYK, 14 L*a*b*, 24
/// e-sYCC.
inline Jp2Block Jp2Colours(std::uint32_t nSpace, const Jp2Block& aParameters = {})
{
    return Jp2Box("colr", ByteMaker().U8({1, 0, 0}).U32Be({nSpace}).All(aParameters).aBytes());
}

inline Jp2Block Jp2Profile(const Jp2Block& aProfile)
{
    return Jp2Box("colr", ByteMaker().U8({2, 0, 0}).All(aProfile).aBytes());
}

/// The file: aHeaderBoxes stand in the header after the size, aBoxes between it and the codestream.
inline Jp2Block Jp2File(std::uint32_t nWidth, std::uint32_t nHeight, int nComponents,
                        const Jp2Block& aHeaderBoxes, const Jp2Block& aCodestream,
                        const Jp2Block& aBoxes = {})
{
    const Jp2Block aSize =
        Jp2Box("ihdr", ByteMaker().U32Be({nHeight, nWidth}).U8({0, nComponents, 7, 7, 0, 0}).aBytes());
    return ByteMaker()
        .All(Jp2Box("jP  ", {0x0D, 0x0A, 0x87, 0x0A}))
        .All(Jp2Box("ftyp", ByteMaker().Text("jp2 ").U32Be({0}).Text("jp2 ").aBytes()))
        .All(Jp2Box("jp2h", ByteMaker().All(aSize).All(aHeaderBoxes).aBytes()))
        .All(aBoxes)
        .All(Jp2Box("jp2c", aCodestream))
        .aBytes();
}
