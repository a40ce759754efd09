// Walks the boxes of a JP2 file.
#include "src/platform/image/codecs/j2k/j2k_boxes.h"

#include <array>
#include <cmath>
#include <cstring>

static constexpr std::uint8_t kSignature[] = {0, 0, 0, 12, 'j', 'P', ' ', ' ', 0x0D, 0x0A, 0x87, 0x0A};
static constexpr std::uint8_t kFirstMarkers[] = {0xFF, 0x4F, 0xFF, 0x51};  // SOC, SIZ

using Uuid = std::array<std::uint8_t, 16>;
static constexpr Uuid kXmp = {0xBE, 0x7A, 0xCF, 0xCB, 0x97, 0xA9, 0x42, 0xE8,
                              0x9C, 0x71, 0x99, 0x94, 0x91, 0xE3, 0xAF, 0xAC};
static constexpr Uuid kExif = {'J', 'p', 'g', 'T', 'i', 'f', 'f', 'E',
                               'x', 'i', 'f', '-', '>', 'J', 'P', '2'};
static constexpr Uuid kIptc = {0x33, 0xC7, 0xA4, 0xD2, 0xB8, 0x1D, 0x47, 0x23,
                               0xA0, 0xBA, 0xF1, 0xA3, 0xE0, 0x97, 0xAD, 0x38};

static constexpr std::uint32_t BoxType(const char (&sType)[5])
{
    std::uint32_t nType = 0;
    for (std::size_t i = 0; i < 4; ++i)
        nType = nType << 8 | static_cast<std::uint8_t>(sType[i]);
    return nType;
}

bool bIsCodestream(Bytes aHead)
{
    return aHead.size() >= sizeof kFirstMarkers &&
           std::memcmp(aHead.data(), kFirstMarkers, sizeof kFirstMarkers) == 0;
}

bool bIsJp2(Bytes aHead)
{
    return aHead.size() >= sizeof kSignature && std::memcmp(aHead.data(), kSignature, sizeof kSignature) == 0;
}

struct Box {
    std::uint32_t nType = 0;
    bool bWhole = false;  ///< False where the file ends before the box
    Bytes aContent;
};

// A length of 1 means that the true one follows in 8 bytes, 0 that the box is the last one.
static bool bNextBox(ByteReader& rd, Box& objBox)
{
    std::uint64_t nLength = rd.U32Be();
    objBox.nType = rd.U32Be();
    std::uint64_t nHeader = 8;
    if (nLength == 1) {
        nLength = std::uint64_t{rd.U32Be()} << 32;
        nLength |= rd.U32Be();
        nHeader = 16;
    } else if (nLength == 0) {
        nLength = nHeader + rd.Left();
    }
    if (rd.Failed() || nLength < nHeader)
        return false;
    objBox.bWhole = nLength - nHeader <= rd.Left();
    objBox.aContent = rd.Take(objBox.bWhole ? nLength - nHeader : rd.Left());
    return true;
}

// A resolution box gives numerator, denominator and exponent of the dots per metre, down and across.
static void ReadResolution(Bytes aContent, J2kFile& objFile)
{
    ByteReader rd(aContent);
    const double dDownOver = rd.U16Be(), dDownUnder = rd.U16Be(), dAcrossOver = rd.U16Be(),
                 dAcrossUnder = rd.U16Be();
    const int nDownPower = static_cast<std::int8_t>(rd.U8()),
              nAcrossPower = static_cast<std::int8_t>(rd.U8());
    if (rd.Failed() || dDownOver == 0 || dDownUnder == 0 || dAcrossOver == 0 || dAcrossUnder == 0)
        return;
    objFile.dDotsPerInchX = dAcrossOver / dAcrossUnder * std::pow(10, nAcrossPower) * 0.0254;
    objFile.dDotsPerInchY = dDownOver / dDownUnder * std::pow(10, nDownPower) * 0.0254;
}

// The header box holds, among what the library reads, a box of resolutions: how the picture was taken
// ("resc"), and how it is to be shown ("resd"). The latter counts if both are there.
static void ReadHeaderBox(Bytes aContent, J2kFile& objFile)
{
    ByteReader rd(aContent);
    Box objBox;
    while (bNextBox(rd, objBox)) {
        if (objBox.nType != BoxType("res "))
            continue;
        ByteReader rdInner(objBox.aContent);
        Box objInner;
        bool bToShow = false;
        while (bNextBox(rdInner, objInner)) {
            const bool bShow = objInner.nType == BoxType("resd");
            if (bShow || (objInner.nType == BoxType("resc") && !bToShow))
                ReadResolution(objInner.aContent, objFile);
            bToShow = bToShow || bShow;
        }
    }
}

static void ReadUuidBox(Bytes aContent, ImageMetadata& objMetadata)
{
    if (aContent.size() <= sizeof(Uuid))
        return;
    const auto bIs = [&](const Uuid& aUuid) {
        return std::memcmp(aContent.data(), aUuid.data(), aUuid.size()) == 0;
    };
    Bytes aBlock = aContent.subspan(sizeof(Uuid));
    if (bIs(kExif)) {
        // Some writers keep the header that the block has in JPEG files.
        static constexpr std::uint8_t kJpegHeader[] = {'E', 'x', 'i', 'f', 0, 0};
        if (aBlock.size() > sizeof kJpegHeader &&
            std::memcmp(aBlock.data(), kJpegHeader, sizeof kJpegHeader) == 0)
            aBlock = aBlock.subspan(sizeof kJpegHeader);
        objMetadata.exif.assign(aBlock.begin(), aBlock.end());
    } else if (bIs(kXmp)) {
        objMetadata.xmp.assign(aBlock.begin(), aBlock.end());
    } else if (bIs(kIptc) && aBlock[0] == 0x1C) {
        objMetadata.iptc.assign(aBlock.begin(), aBlock.end());
    }
}

bool bReadBoxes(Bytes aFile, J2kFile& objFile)
{
    if (bIsCodestream(aFile)) {
        objFile.aCodestream = aFile;
        return true;
    }
    if (!bIsJp2(aFile))
        return false;
    objFile.bBoxes = true;
    ByteReader rd(aFile);
    Box objBox;
    while (bNextBox(rd, objBox)) {
        if (objBox.nType == BoxType("jp2c") && objFile.aCodestream.empty()) {
            if (!objBox.bWhole || !bIsCodestream(objBox.aContent))
                return false;
            objFile.aCodestream = objBox.aContent;
        } else if (objBox.nType == BoxType("jp2h")) {
            ReadHeaderBox(objBox.aContent, objFile);
        } else if (objBox.nType == BoxType("uuid") && objBox.bWhole) {
            ReadUuidBox(objBox.aContent, objFile.objMetadata);
        }
    }
    return !objFile.aCodestream.empty();
}
