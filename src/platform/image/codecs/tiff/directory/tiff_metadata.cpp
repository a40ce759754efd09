// Carries metadata between the tags of a TIFF page and an ImageBuffer.
#include "src/platform/image/codecs/tiff/directory/tiff_metadata.h"

#include <tiff.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <utility>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/codecs/tiff/directory/tiff_directory_writer.h"
#include "src/platform/image/metadata/metadata.h"
#include "src/platform/image/metadata/metadata_edit.h"
#include "src/platform/image/metadata/raw_profile.h"

static constexpr std::uint64_t kMaxBlock = 16 * 1024 * 1024;

// Tags of a page that tell of the picture and not of how it is stored, ascending: name, description, make,
// model, page name, software, date, artist, computer, rating, copyright, the directories, and the texts of a
// desktop's dialog.
static constexpr std::array<std::uint16_t, 19> kCarried = {TIFFTAG_DOCUMENTNAME,
                                                           TIFFTAG_IMAGEDESCRIPTION,
                                                           TIFFTAG_MAKE,
                                                           TIFFTAG_MODEL,
                                                           TIFFTAG_PAGENAME,
                                                           TIFFTAG_SOFTWARE,
                                                           TIFFTAG_DATETIME,
                                                           TIFFTAG_ARTIST,
                                                           TIFFTAG_HOSTCOMPUTER,
                                                           18246,
                                                           18249,
                                                           TIFFTAG_COPYRIGHT,
                                                           kTagExifDirectory,
                                                           kTagGpsDirectory,
                                                           40091,
                                                           40092,
                                                           40093,
                                                           40094,
                                                           40095};

std::vector<std::uint8_t> aReadTiffProfile(InputFile& objFile, const TiffHeader& objHeader,
                                           const std::vector<TiffEntry>& aEntries)
{
    const TiffEntry* pEntry = pEntryOf(aEntries, TIFFTAG_ICCPROFILE);
    return pEntry ? aReadValue(objFile, objHeader, *pEntry, kMaxBlock, true) : std::vector<std::uint8_t>{};
}

// Dots per inch of one direction; 0 for a tag that isn't there or says nothing.
static double dReadResolution(InputFile& objFile, const TiffHeader& objHeader,
                              const std::vector<TiffEntry>& aEntries, std::uint16_t nTag)
{
    const TiffEntry* pEntry = pEntryOf(aEntries, nTag);
    const TiffEntry* pUnit = pEntryOf(aEntries, TIFFTAG_RESOLUTIONUNIT);
    const std::uint64_t nUnit =
        pUnit ? nReadNumber(objFile, objHeader, *pUnit).value_or(RESUNIT_NONE) : RESUNIT_INCH;
    if (!pEntry || pEntry->nType != 5 || (nUnit != RESUNIT_INCH && nUnit != RESUNIT_CENTIMETER))
        return 0;
    const std::vector<std::uint8_t> aValue = aReadValue(objFile, objHeader, *pEntry, kMaxBlock);
    ByteReader rd(aValue);
    const double dNumerator = rd.U32Le();
    const double dDenominator = rd.U32Le();
    if (rd.Failed() || dNumerator <= 0 || dDenominator <= 0)
        return 0;
    const double dDots = dNumerator / dDenominator * (nUnit == RESUNIT_CENTIMETER ? 2.54 : 1);
    return dDots < 1e6 ? dDots : 0;
}

// IPTC datasets are bytes, but the tag is often typed as 32-bit numbers, and some writers then store those in
// the order of their machine.
static std::vector<std::uint8_t> aReadIptc(InputFile& objFile, const TiffHeader& objHeader,
                                           const std::vector<TiffEntry>& aEntries)
{
    constexpr std::uint8_t kMarker = 0x1C;
    const TiffEntry* pEntry = pEntryOf(aEntries, TIFFTAG_RICHTIFFIPTC);
    if (!pEntry) {
        const TiffEntry* pResources = pEntryOf(aEntries, TIFFTAG_PHOTOSHOP);
        return pResources ? IptcOfResources(aReadValue(objFile, objHeader, *pResources, kMaxBlock, true))
                          : std::vector<std::uint8_t>{};
    }
    std::vector<std::uint8_t> aIptc = aReadValue(objFile, objHeader, *pEntry, kMaxBlock, true);
    if (aIptc.size() >= 4 && aIptc[0] != kMarker && aIptc[3] == kMarker)
        for (std::size_t i = 0; i + 4 <= aIptc.size(); i += 4)
            std::reverse(aIptc.begin() + static_cast<std::ptrdiff_t>(i),
                         aIptc.begin() + static_cast<std::ptrdiff_t>(i + 4));
    if (aIptc.empty() || aIptc[0] != kMarker)
        return {};
    // The padding to whole numbers isn't part of it; at most 3 bytes, since a dataset may end in zeros of its
    // own.
    for (int i = 0; i < 3 && aIptc.back() == 0; ++i)
        aIptc.pop_back();
    return aIptc;
}

static std::vector<std::uint8_t> aExifBlock(const std::vector<TiffTag>& aTags)
{
    std::vector<std::uint8_t> aBlock = {'I', 'I', 42, 0};
    const TiffDirectoryBytes objBytes = objDirectoryBytes(aTags, 8, false);
    AppendNumber(aBlock, objBytes.nDirectory, 4);
    aBlock.insert(aBlock.end(), objBytes.aBytes.begin(), objBytes.aBytes.end());
    return aBlock;
}

void ReadTiffMetadata(InputFile& objFile, const TiffHeader& objHeader, const std::vector<TiffEntry>& aEntries,
                      std::uint16_t nOrientation, ImageBuffer& aImage)
{
    aImage.dots_per_inch_x = dReadResolution(objFile, objHeader, aEntries, TIFFTAG_XRESOLUTION);
    aImage.dots_per_inch_y = dReadResolution(objFile, objHeader, aEntries, TIFFTAG_YRESOLUTION);
    if (const TiffEntry* pXmp = pEntryOf(aEntries, TIFFTAG_XMLPACKET))
        aImage.metadata.xmp = aReadValue(objFile, objHeader, *pXmp, kMaxBlock, true);
    aImage.metadata.iptc = aReadIptc(objFile, objHeader, aEntries);

    std::vector<TiffTag> aTags = aReadTags(objFile, objHeader, aEntries, kCarried);
    // The page's tag holds, whatever a packet beside it says.
    if (nOrientation != ORIENTATION_TOPLEFT || !aImage.metadata.xmp.empty()) {
        const auto itPlace = std::find_if(aTags.begin(), aTags.end(), [](const TiffTag& objTag) {
            return objTag.nTag > TIFFTAG_ORIENTATION;
        });
        aTags.insert(itPlace, objNumberTag(TIFFTAG_ORIENTATION, 3, {nOrientation}));
    }
    if (!aTags.empty())
        aImage.metadata.exif = aExifBlock(aTags);
}

std::vector<TiffTag> aTiffMetadataTags(const ImageBuffer& aImage, const ImageInfoTexts& objTexts,
                                       bool bProfile)
{
    std::vector<TiffTag> aTags;
    const std::vector<std::uint8_t> aExif = ExifForSave(aImage, objTexts);
    if (!aExif.empty()) {
        InputFile objBlock{Bytes(aExif)};
        if (const std::optional<TiffHeader> objHeader = objReadTiffHeader(objBlock))
            aTags = aReadTags(objBlock, *objHeader,
                              aReadEntries(objBlock, *objHeader, objHeader->nFirstDirectory), kCarried);
    }
    if (aImage.dots_per_inch_x > 0 || aImage.dots_per_inch_y > 0) {
        const double dX = aImage.dots_per_inch_x > 0 ? aImage.dots_per_inch_x : aImage.dots_per_inch_y;
        const double dY = aImage.dots_per_inch_y > 0 ? aImage.dots_per_inch_y : aImage.dots_per_inch_x;
        aTags.push_back(objRationalTag(TIFFTAG_XRESOLUTION, dX));
        aTags.push_back(objRationalTag(TIFFTAG_YRESOLUTION, dY));
        aTags.push_back(objNumberTag(TIFFTAG_RESOLUTIONUNIT, 3, {RESUNIT_INCH}));
    }
    const ImageMetadata& objMetadata = aImage.metadata;
    if (!objMetadata.xmp.empty())
        aTags.push_back(objBytesTag(TIFFTAG_XMLPACKET, 1, objMetadata.xmp));
    if (!objMetadata.iptc.empty()) {
        std::vector<std::uint8_t> aIptc = objMetadata.iptc;
        aIptc.resize((aIptc.size() + 3) / 4 * 4);
        aTags.push_back(objBytesTag(TIFFTAG_RICHTIFFIPTC, 4, aIptc));
    }
    if (bProfile && !aImage.icc_profile.empty())
        aTags.push_back(objBytesTag(TIFFTAG_ICCPROFILE, 7, aImage.icc_profile));
    std::sort(aTags.begin(), aTags.end(),
              [](const TiffTag& objLeft, const TiffTag& objRight) { return objLeft.nTag < objRight.nTag; });
    return aTags;
}
