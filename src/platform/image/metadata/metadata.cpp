// Carries metadata from a load to a save.
#include "src/platform/image/metadata/metadata.h"

#include <algorithm>
#include <cstddef>
#include <optional>

#include "src/platform/image/metadata/metadata_edit.h"
#include "src/platform/image/metadata/metadata_ifd.h"
#include "src/platform/image/pixels/orientation.h"

static std::vector<ExifText> aTextsToWrite(const ImageInfoTexts& objTexts)
{
    const std::vector<ExifText> aAll = {
        {kTagDocumentName, objTexts.sTitle},           {kTagImageDescription, objTexts.sDescription},
        {kTagMake, objTexts.sEquipmentType},           {kTagModel, objTexts.sEquipmentModel},
        {kTagDateTime, sExifDate(objTexts.sDateTime)}, {kTagArtist, objTexts.sAuthor},
        {kTagCopyright, objTexts.sCopyright},
    };
    std::vector<ExifText> aTexts;
    for (ExifText objText : aAll) {
        objText.sText.erase(std::min(objText.sText.find('\0'), objText.sText.size()));
        if (!objText.sText.empty())
            aTexts.push_back(objText);
    }
    return aTexts;
}

// The orientation tag of the first directory, if it holds one of the eight numbers.
static std::optional<IfdEntry> objOrientation(const IfdReader& objReader)
{
    const auto aFirst = objReader.aEntries(objReader.nFirstDirectory());
    const IfdEntry* pEntry = pEntryWithTag(aFirst, kTagOrientation);
    const std::uint32_t nValue = pEntry ? objReader.nNumber(*pEntry).value_or(0) : 0;
    if (nValue < 1 || nValue > 8)
        return std::nullopt;
    return *pEntry;
}

static void SetResolution(std::vector<std::uint8_t>& aExif, double dDotsPerInchX, double dDotsPerInchY)
{
    const IfdReader objReader(aExif);
    const auto aFirst = objReader.aEntries(objReader.nFirstDirectory());
    const IfdEntry* pX = pEntryWithTag(aFirst, kTagXResolution);
    const IfdEntry* pY = pEntryWithTag(aFirst, kTagYResolution);
    const IfdEntry* pUnit = pEntryWithTag(aFirst, kTagResolutionUnit);
    if (!pX || !pY || dDotsPerInchX <= 0 || dDotsPerInchY <= 0)
        return;
    SetExifRational(aExif, *pX, dDotsPerInchX);
    SetExifRational(aExif, *pY, dDotsPerInchY);
    if (pUnit)
        SetExifNumber(aExif, *pUnit, 2);  // inches; also what a reader takes a missing unit for
}

static void SetPixelSize(std::vector<std::uint8_t>& aExif, std::int32_t lWidth, std::int32_t lHeight)
{
    const IfdReader objReader(aExif);
    const auto aFirst = objReader.aEntries(objReader.nFirstDirectory());
    const IfdEntry* pPointer = pEntryWithTag(aFirst, kTagExifDirectory);
    const auto aInner = objReader.aEntries(pPointer ? objReader.nNumber(*pPointer).value_or(0) : 0);
    if (const IfdEntry* pWidth = pEntryWithTag(aInner, kTagPixelXDimension))
        SetExifNumber(aExif, *pWidth, static_cast<std::uint32_t>(lWidth));
    if (const IfdEntry* pHeight = pEntryWithTag(aInner, kTagPixelYDimension))
        SetExifNumber(aExif, *pHeight, static_cast<std::uint32_t>(lHeight));
}

std::vector<std::uint8_t> aExifForSave(const ImageBuffer& aImage, const ImageInfoTexts& objTexts)
{
    const std::vector<ExifText> aTexts = aTextsToWrite(objTexts);
    std::vector<std::uint8_t> aExif = aImage.metadata.exif;
    if (IfdReader(aExif).nEntryCount(IfdReader(aExif).nFirstDirectory()) == 0)
        aExif.clear();
    if (aExif.empty() && aTexts.empty())
        return {};
    DropExifThumbnail(aExif);
    if (const auto objEntry = objOrientation(IfdReader(aExif)))
        SetExifNumber(aExif, *objEntry, 1);
    SetResolution(aExif, aImage.dots_per_inch_x, aImage.dots_per_inch_y);
    SetPixelSize(aExif, aImage.width, aImage.height);
    RewriteExif(aExif, aTexts);
    return aExif;
}

// Sets the number of tiff:Orientation to 1, written as an attribute or as an element.
static void SetXmpOrientation(std::vector<std::uint8_t>& aXmp)
{
    for (const std::string_view sBefore :
         {"tiff:Orientation=\"", "tiff:Orientation='", "<tiff:Orientation>"}) {
        const auto itFound = std::search(aXmp.begin(), aXmp.end(), sBefore.begin(), sBefore.end());
        if (std::distance(itFound, aXmp.end()) < static_cast<std::ptrdiff_t>(sBefore.size() + 2))
            continue;
        const auto itDigit = itFound + static_cast<std::ptrdiff_t>(sBefore.size());
        const std::uint8_t nAfter = itDigit[1];
        if (*itDigit >= '1' && *itDigit <= '8' && (nAfter == '"' || nAfter == '\'' || nAfter == '<'))
            *itDigit = '1';
    }
}

void FinishLoaded(ImageBuffer& aImage)
{
    std::vector<std::uint8_t>& aExif = aImage.metadata.exif;
    if (aExif.empty())
        return;
    const IfdReader objReader(aExif);
    if (const auto objEntry = objOrientation(objReader)) {
        ApplyOrientation(aImage, static_cast<std::int32_t>(objReader.nNumber(*objEntry).value_or(1)));
        SetExifNumber(aExif, *objEntry, 1);
        SetXmpOrientation(aImage.metadata.xmp);
    }
    DropExifThumbnail(aExif);
}

ExifResolution objExifResolution(Bytes aExif)
{
    const IfdReader objReader(aExif);
    const auto aFirst = objReader.aEntries(objReader.nFirstDirectory());
    const IfdEntry* pX = pEntryWithTag(aFirst, kTagXResolution);
    const IfdEntry* pY = pEntryWithTag(aFirst, kTagYResolution);
    const IfdEntry* pUnit = pEntryWithTag(aFirst, kTagResolutionUnit);
    const std::uint32_t nUnit = pUnit ? objReader.nNumber(*pUnit).value_or(2) : 2;
    const double dInch = nUnit == 2 ? 1 : nUnit == 3 ? 2.54 : 0;  // 1 is no absolute unit
    const double dX = pX ? objReader.dRational(*pX).value_or(0) * dInch : 0;
    const double dY = pY ? objReader.dRational(*pY).value_or(0) * dInch : 0;
    return dX > 0 && dY > 0 ? ExifResolution{dX, dY} : ExifResolution{};
}
