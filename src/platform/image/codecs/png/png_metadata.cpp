// Reads and writes the metadata chunks of a PNG.
#include "src/platform/image/codecs/png/png_metadata.h"

#include <libdeflate.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

#include "src/platform/image/base/output_file.h"
#include "src/platform/image/codecs/png/png_chunks.h"
#include "src/platform/image/colour/colour_profile.h"
#include "src/platform/image/metadata/metadata.h"
#include "src/platform/image/metadata/raw_profile.h"

static constexpr std::string_view kXmpKeyword = "XML:com.adobe.xmp";
static constexpr std::string_view kExifMark("Exif\0\0", 6);
static constexpr int kLevel = 9;  // profiles and packets are small

static std::string_view sOf(Bytes aBytes)
{
    return {reinterpret_cast<const char*>(aBytes.data()), aBytes.size()};
}

static Bytes aOf(std::string_view sText)
{
    return {reinterpret_cast<const std::uint8_t*>(sText.data()), sText.size()};
}

// Nothing says how long the unpacked block is, so the room for it grows as it proves too small.
static std::vector<std::uint8_t> aInflated(Bytes aPacked)
{
    const std::unique_ptr<libdeflate_decompressor, void (*)(libdeflate_decompressor*)> pInflater(
        libdeflate_alloc_decompressor(), &libdeflate_free_decompressor);
    if (!pInflater)
        return {};
    std::vector<std::uint8_t> aResult;
    for (std::size_t nRoom = 32 * 1024; nRoom <= kPngMetadataMost; nRoom *= 4) {
        aResult.resize(nRoom);
        std::size_t nLength = 0;
        const auto nOutcome = libdeflate_zlib_decompress(pInflater.get(), aPacked.data(), aPacked.size(),
                                                         aResult.data(), aResult.size(), &nLength);
        if (nOutcome == LIBDEFLATE_SUCCESS) {
            aResult.resize(nLength);
            return aResult;
        }
        if (nOutcome != LIBDEFLATE_INSUFFICIENT_SPACE)
            break;
    }
    return {};
}

static std::vector<std::uint8_t> aDeflated(Bytes aPlain)
{
    const std::unique_ptr<libdeflate_compressor, void (*)(libdeflate_compressor*)> pDeflater(
        libdeflate_alloc_compressor(kLevel), &libdeflate_free_compressor);
    if (!pDeflater)
        return {};
    std::vector<std::uint8_t> aResult(libdeflate_zlib_compress_bound(pDeflater.get(), aPlain.size()));
    aResult.resize(libdeflate_zlib_compress(pDeflater.get(), aPlain.data(), aPlain.size(), aResult.data(),
                                            aResult.size()));
    return aResult;
}

// Takes the text before the next zero byte, and that byte. Nothing is left of aRest when there is none.
static std::string_view sTakeField(Bytes& aRest)
{
    const auto itEnd = std::find(aRest.begin(), aRest.end(), 0);
    const std::string_view sField = sOf(aRest).substr(0, static_cast<std::size_t>(itEnd - aRest.begin()));
    aRest = itEnd == aRest.end() ? Bytes{} : aRest.subspan(sField.size() + 1);
    return sField;
}

std::vector<std::uint8_t> aPngProfile(Bytes aChunk)
{
    sTakeField(aChunk);  // a name for people
    if (aChunk.empty() || aChunk[0] != 0)
        return {};
    return aInflated(aChunk.subspan(1));
}

void ReadPngExif(Bytes aChunk, ImageMetadata& objMetadata)
{
    if (sOf(aChunk).starts_with(kExifMark))
        aChunk = aChunk.subspan(kExifMark.size());
    const std::string_view sBlock = sOf(aChunk);
    const bool bTiff =
        sBlock.starts_with(std::string_view("II*\0", 4)) || sBlock.starts_with(std::string_view("MM\0*", 4));
    if (bTiff && objMetadata.exif.empty())
        objMetadata.exif.assign(aChunk.begin(), aChunk.end());
}

static void ReadXmp(Bytes aPacket, ImageMetadata& objMetadata)
{
    if (objMetadata.xmp.empty())
        objMetadata.xmp.assign(aPacket.begin(), aPacket.end());
}

static void ReadRawProfile(std::string_view sKind, Bytes aText, ImageMetadata& objMetadata)
{
    static constexpr std::string_view kXmpMark("http://ns.adobe.com/xap/1.0/\0", 29);
    const std::vector<std::uint8_t> aBlock = FromRawProfile(sOf(aText));
    if (sKind == "exif" || (sKind == "APP1" && sOf(aBlock).starts_with(kExifMark)))
        ReadPngExif(aBlock, objMetadata);
    else if (sKind == "APP1" && sOf(aBlock).starts_with(kXmpMark))
        ReadXmp(Bytes(aBlock).subspan(kXmpMark.size()), objMetadata);
    else if (sKind == "xmp")
        ReadXmp(aBlock, objMetadata);
    else if (sKind == "iptc" && objMetadata.iptc.empty())
        objMetadata.iptc = IptcOfResources(aBlock);
}

void ReadPngText(std::uint32_t nType, Bytes aChunk, ImageMetadata& objMetadata)
{
    const std::string_view sKeyword = sTakeField(aChunk);
    const bool bXmp = sKeyword == kXmpKeyword;
    if (!bXmp && !sKeyword.starts_with(kRawProfilePrefix))
        return;
    bool bPacked = nType == nPngType("zTXt");
    if (nType == nPngType("iTXt")) {
        if (aChunk.size() < 2)
            return;
        bPacked = aChunk[0] == 1;
        aChunk = aChunk.subspan(1);
    }
    if (bPacked || nType == nPngType("iTXt")) {
        if (aChunk.empty() || aChunk[0] != 0)  // the only method is 0
            return;
        aChunk = aChunk.subspan(1);
    }
    if (nType == nPngType("iTXt")) {
        sTakeField(aChunk);  // language
        sTakeField(aChunk);  // translated keyword
    }
    std::vector<std::uint8_t> aPlain;
    if (bPacked) {
        aPlain = aInflated(aChunk);
        aChunk = aPlain;
    }
    if (bXmp)
        ReadXmp(aChunk, objMetadata);
    else
        ReadRawProfile(sKeyword.substr(kRawProfilePrefix.size()), aChunk, objMetadata);
}

// The text in Latin-1, which is what tEXt holds; False when it has other letters, or isn't UTF-8.
static bool bLatin1(std::string_view sText, std::string& sLatin1)
{
    sLatin1.clear();
    for (std::size_t i = 0; i < sText.size(); ++i) {
        const auto nByte = static_cast<std::uint8_t>(sText[i]);
        if (nByte < 0x80) {
            sLatin1 += sText[i];
            continue;
        }
        const bool bShort =
            (nByte == 0xC2 || nByte == 0xC3) && i + 1 < sText.size() && (sText[i + 1] & 0xC0) == 0x80;
        if (!bShort)
            return false;
        ++i;
        sLatin1 += static_cast<char>((nByte & 3) << 6 | (sText[i] & 0x3F));
    }
    return true;
}

static bool WriteInternational(OutputFile& objOut, std::string_view sKeyword, std::string_view sText)
{
    std::string sChunk(sKeyword);
    sChunk.append(5, '\0');  // the keyword's end, not packed, method 0, no language, no translated keyword
    sChunk += sText;
    return WritePngChunk(objOut, nPngType("iTXt"), aOf(sChunk));
}

static bool WriteText(OutputFile& objOut, std::string_view sKeyword, std::string sText)
{
    std::erase(sText, '\0');  // it would end the text
    if (sText.empty())
        return true;
    std::string sLatin1;
    if (!bLatin1(sText, sLatin1))
        return WriteInternational(objOut, sKeyword, sText);
    return WritePngChunk(objOut, nPngType("tEXt"), aOf(std::string(sKeyword) + '\0' + sLatin1));
}

static bool WriteTexts(OutputFile& objOut, const ImageInfoTexts& objTexts)
{
    std::string sEquipment = objTexts.sEquipmentType;
    if (!sEquipment.empty() && !objTexts.sEquipmentModel.empty())
        sEquipment += ' ';
    sEquipment += objTexts.sEquipmentModel;
    return WriteText(objOut, "Title", objTexts.sTitle) && WriteText(objOut, "Author", objTexts.sAuthor) &&
           WriteText(objOut, "Description", objTexts.sDescription) &&
           WriteText(objOut, "Copyright", objTexts.sCopyright) &&
           WriteText(objOut, "Creation Time", objTexts.sDateTime) && WriteText(objOut, "Source", sEquipment);
}

static bool WriteProfile(OutputFile& objOut, Bytes aProfile)
{
    const std::vector<std::uint8_t> aPacked = aDeflated(aProfile);
    std::string sChunk("ICC profile\0\0", 13);
    sChunk += sOf(aPacked);
    return WritePngChunk(objOut, nPngType("iCCP"), aOf(sChunk));
}

static bool WriteResolution(OutputFile& objOut, const ImageBuffer& aImage)
{
    const double dPerMetreX = std::round(aImage.dots_per_inch_x / 0.0254);
    const double dPerMetreY = std::round(aImage.dots_per_inch_y / 0.0254);
    const auto bWritable = [](double dPerMetre) { return dPerMetre >= 1 && dPerMetre < 0x7FFFFFFF; };
    if (!bWritable(dPerMetreX) || !bWritable(dPerMetreY))
        return true;
    std::uint8_t aChunk[9] = {0, 0, 0, 0, 0, 0, 0, 0, 1};
    for (int i = 0; i < 4; ++i) {
        aChunk[i] = static_cast<std::uint8_t>(static_cast<std::uint32_t>(dPerMetreX) >> (24 - 8 * i));
        aChunk[4 + i] = static_cast<std::uint8_t>(static_cast<std::uint32_t>(dPerMetreY) >> (24 - 8 * i));
    }
    return WritePngChunk(objOut, nPngType("pHYs"), aChunk);
}

static bool WriteIptc(OutputFile& objOut, Bytes aIptc)
{
    const std::string sText = ToRawProfile("iptc", IptcAsResource(aIptc));
    const std::vector<std::uint8_t> aPacked = aDeflated(aOf(sText));
    const std::string sChunk = std::string(kRawProfilePrefix) + "iptc" + std::string(2, '\0');
    return WritePngChunk(objOut, nPngType("zTXt"), aOf(sChunk + std::string(sOf(aPacked))));
}

bool WritePngMetadata(OutputFile& objOut, const ImageBuffer& aImage, bool bGrey,
                      const ImageInfoTexts& objTexts)
{
    const ImageMetadata& objMetadata = aImage.metadata;
    const bool bProfile = !aImage.icc_profile.empty() && ProfileFits(aImage.icc_profile, bGrey ? 1 : 3);
    if (bProfile && !WriteProfile(objOut, aImage.icc_profile))
        return false;
    const std::vector<std::uint8_t> aExif = ExifForSave(aImage, objTexts);
    return WriteResolution(objOut, aImage) &&
           (aExif.empty() || WritePngChunk(objOut, nPngType("eXIf"), aExif)) &&
           WriteTexts(objOut, objTexts) &&
           (objMetadata.xmp.empty() || WriteInternational(objOut, kXmpKeyword, sOf(objMetadata.xmp))) &&
           (objMetadata.iptc.empty() || WriteIptc(objOut, objMetadata.iptc));
}
