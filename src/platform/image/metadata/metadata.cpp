// Carries metadata from a load to a save.
#include "src/platform/image/metadata/metadata.h"

#include <algorithm>
#include <cstddef>
#include <optional>

#include "src/platform/image/metadata/metadata_edit.h"
#include "src/platform/image/metadata/metadata_ifd.h"
#include "src/platform/image/pixels/orientation.h"

static std::vector<ExifText> TextsToWrite(const ImageInfoTexts& texts)
{
    const std::vector<ExifText> all = {
        {kTagDocumentName, texts.sTitle},          {kTagImageDescription, texts.sDescription},
        {kTagMake, texts.sEquipmentType},          {kTagModel, texts.sEquipmentModel},
        {kTagDateTime, ExifDate(texts.sDateTime)}, {kTagArtist, texts.sAuthor},
        {kTagCopyright, texts.sCopyright},
    };
    std::vector<ExifText> result;
    for (ExifText text : all) {
        text.text.erase(std::min(text.text.find('\0'), text.text.size()));
        if (!text.text.empty())
            result.push_back(text);
    }
    return result;
}

// The first directory's orientation tag, if it is 1 to 8.
static std::optional<IfdEntry> Orientation(const IfdReader& reader)
{
    const auto first = reader.Entries(reader.FirstDirectory());
    const IfdEntry* entry = EntryWithTag(first, kTagOrientation);
    const std::uint32_t value = entry ? reader.Number(*entry).value_or(0) : 0;
    if (value < 1 || value > 8)
        return std::nullopt;
    return *entry;
}

static void SetResolution(std::vector<std::uint8_t>& exif, double dots_per_inch_x, double dots_per_inch_y)
{
    const IfdReader reader(exif);
    const auto first = reader.Entries(reader.FirstDirectory());
    const IfdEntry* x = EntryWithTag(first, kTagXResolution);
    const IfdEntry* y = EntryWithTag(first, kTagYResolution);
    const IfdEntry* unit = EntryWithTag(first, kTagResolutionUnit);
    if (!x || !y || dots_per_inch_x <= 0 || dots_per_inch_y <= 0)
        return;
    SetExifRational(exif, *x, dots_per_inch_x);
    SetExifRational(exif, *y, dots_per_inch_y);
    if (unit)
        SetExifNumber(exif, *unit, 2);  // inches, also the default without the tag
}

static void SetPixelSize(std::vector<std::uint8_t>& exif, std::int32_t width, std::int32_t height)
{
    const IfdReader reader(exif);
    const auto first = reader.Entries(reader.FirstDirectory());
    const IfdEntry* pointer = EntryWithTag(first, kTagExifDirectory);
    const auto inner = reader.Entries(pointer ? reader.Number(*pointer).value_or(0) : 0);
    if (const IfdEntry* width_entry = EntryWithTag(inner, kTagPixelXDimension))
        SetExifNumber(exif, *width_entry, static_cast<std::uint32_t>(width));
    if (const IfdEntry* height_entry = EntryWithTag(inner, kTagPixelYDimension))
        SetExifNumber(exif, *height_entry, static_cast<std::uint32_t>(height));
}

std::vector<std::uint8_t> ExifForSave(const ImageBuffer& image, const ImageInfoTexts& texts)
{
    const std::vector<ExifText> exif_texts = TextsToWrite(texts);
    std::vector<std::uint8_t> exif = image.metadata.exif;
    if (IfdReader(exif).EntryCount(IfdReader(exif).FirstDirectory()) == 0)
        exif.clear();
    if (exif.empty() && exif_texts.empty())
        return {};
    DropExifThumbnail(exif);
    if (const auto entry = Orientation(IfdReader(exif)))
        SetExifNumber(exif, *entry, 1);
    SetResolution(exif, image.dots_per_inch_x, image.dots_per_inch_y);
    SetPixelSize(exif, image.width, image.height);
    RewriteExif(exif, exif_texts);
    return exif;
}

// Sets tiff:Orientation to 1, whether it is an attribute or an element.
static void SetXmpOrientation(std::vector<std::uint8_t>& xmp)
{
    for (const std::string_view before :
         {"tiff:Orientation=\"", "tiff:Orientation='", "<tiff:Orientation>"}) {
        const auto found = std::search(xmp.begin(), xmp.end(), before.begin(), before.end());
        if (std::distance(found, xmp.end()) < static_cast<std::ptrdiff_t>(before.size() + 2))
            continue;
        const auto digit = found + static_cast<std::ptrdiff_t>(before.size());
        const std::uint8_t after = digit[1];
        if (*digit >= '1' && *digit <= '8' && (after == '"' || after == '\'' || after == '<'))
            *digit = '1';
    }
}

bool OrientationSwapsSides(Bytes exif)
{
    const IfdReader reader(exif);
    const auto entry = Orientation(reader);
    return entry && reader.Number(*entry).value_or(1) >= 5;
}

void FinishLoaded(ImageBuffer& image)
{
    std::vector<std::uint8_t>& exif = image.metadata.exif;
    if (exif.empty())
        return;
    const IfdReader reader(exif);
    if (const auto entry = Orientation(reader)) {
        ApplyOrientation(image, static_cast<std::int32_t>(reader.Number(*entry).value_or(1)));
        SetExifNumber(exif, *entry, 1);
        SetXmpOrientation(image.metadata.xmp);
    }
    DropExifThumbnail(exif);
}

ExifResolution ReadExifResolution(Bytes exif)
{
    const IfdReader reader(exif);
    const auto first = reader.Entries(reader.FirstDirectory());
    const IfdEntry* x_entry = EntryWithTag(first, kTagXResolution);
    const IfdEntry* y_entry = EntryWithTag(first, kTagYResolution);
    const IfdEntry* unit_entry = EntryWithTag(first, kTagResolutionUnit);
    const std::uint32_t unit = unit_entry ? reader.Number(*unit_entry).value_or(2) : 2;
    const double inch = unit == 2 ? 1 : unit == 3 ? 2.54 : 0;  // 1 means no absolute unit
    const double x = x_entry ? reader.Rational(*x_entry).value_or(0) * inch : 0;
    const double y = y_entry ? reader.Rational(*y_entry).value_or(0) * inch : 0;
    return x > 0 && y > 0 ? ExifResolution{x, y} : ExifResolution{};
}
