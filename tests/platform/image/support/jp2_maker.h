// Wraps JPEG 2000 codestreams in JP2 boxes, including unusual ones.
#pragma once

#include <string>
#include <vector>

#include "tests/platform/image/support/byte_maker.h"

using Jp2Block = std::vector<std::uint8_t>;

inline Jp2Block Jp2Box(const std::string& type, const Jp2Block& content)
{
    return ByteMaker().U32Be({static_cast<std::uint32_t>(content.size() + 8)}).Text(type).All(content).Data();
}

/// A colour box with an enumerated colour space: 16 sRGB, 17 grey, 18 sYCC, 12 CMYK, 14 L*a*b*, 24 e-sYCC.
inline Jp2Block Jp2Colours(std::uint32_t space, const Jp2Block& parameters = {})
{
    return Jp2Box("colr", ByteMaker().U8({1, 0, 0}).U32Be({space}).All(parameters).Data());
}

inline Jp2Block Jp2Profile(const Jp2Block& profile)
{
    return Jp2Box("colr", ByteMaker().U8({2, 0, 0}).All(profile).Data());
}

/// Builds the file: header_boxes follow the image header box, boxes precede the codestream.
inline Jp2Block Jp2File(std::uint32_t width, std::uint32_t height, int components,
                        const Jp2Block& header_boxes, const Jp2Block& codestream, const Jp2Block& boxes = {})
{
    const Jp2Block size =
        Jp2Box("ihdr", ByteMaker().U32Be({height, width}).U8({0, components, 7, 7, 0, 0}).Data());
    return ByteMaker()
        .All(Jp2Box("jP  ", {0x0D, 0x0A, 0x87, 0x0A}))
        .All(Jp2Box("ftyp", ByteMaker().Text("jp2 ").U32Be({0}).Text("jp2 ").Data()))
        .All(Jp2Box("jp2h", ByteMaker().All(size).All(header_boxes).Data()))
        .All(boxes)
        .All(Jp2Box("jp2c", codestream))
        .Data();
}
