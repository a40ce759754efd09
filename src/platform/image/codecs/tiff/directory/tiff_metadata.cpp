// Converts metadata between the tags of a TIFF page and an ImageBuffer.
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

// Tags that describe the picture rather than its storage, in ascending order: document name, description,
// make, model, page name, software, date, artist, computer, rating, copyright, sub-directories and the XP
// texts.
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

std::vector<std::uint8_t> ReadTiffProfile(InputFile& file, const TiffHeader& header,
                                          const std::vector<TiffEntry>& entries)
{
    const TiffEntry* entry = EntryOf(entries, TIFFTAG_ICCPROFILE);
    return entry ? ReadValue(file, header, *entry, kMaxBlock, true) : std::vector<std::uint8_t>{};
}

// Resolution along one axis in dots per inch; 0 if the tag is missing or meaningless.
static double ReadResolution(InputFile& file, const TiffHeader& header, const std::vector<TiffEntry>& entries,
                             std::uint16_t tag)
{
    const TiffEntry* entry = EntryOf(entries, tag);
    const TiffEntry* unit_entry = EntryOf(entries, TIFFTAG_RESOLUTIONUNIT);
    const std::uint64_t unit =
        unit_entry ? ReadNumber(file, header, *unit_entry).value_or(RESUNIT_NONE) : RESUNIT_INCH;
    if (!entry || entry->type != 5 || (unit != RESUNIT_INCH && unit != RESUNIT_CENTIMETER))
        return 0;
    const std::vector<std::uint8_t> value = ReadValue(file, header, *entry, kMaxBlock);
    ByteReader reader(value);
    const double numerator = reader.U32Le();
    const double denominator = reader.U32Le();
    if (reader.Failed() || numerator <= 0 || denominator <= 0)
        return 0;
    const double dots = numerator / denominator * (unit == RESUNIT_CENTIMETER ? 2.54 : 1);
    return dots < 1e6 ? dots : 0;
}

// IPTC is bytes, but the tag is often typed as 32-bit numbers, which some writers store in their own byte
// order.
static std::vector<std::uint8_t> ReadIptc(InputFile& file, const TiffHeader& header,
                                          const std::vector<TiffEntry>& entries)
{
    constexpr std::uint8_t kMarker = 0x1C;
    const TiffEntry* entry = EntryOf(entries, TIFFTAG_RICHTIFFIPTC);
    if (!entry) {
        const TiffEntry* resources = EntryOf(entries, TIFFTAG_PHOTOSHOP);
        return resources ? IptcOfResources(ReadValue(file, header, *resources, kMaxBlock, true))
                         : std::vector<std::uint8_t>{};
    }
    std::vector<std::uint8_t> iptc = ReadValue(file, header, *entry, kMaxBlock, true);
    if (iptc.size() >= 4 && iptc[0] != kMarker && iptc[3] == kMarker)
        for (std::size_t i = 0; i + 4 <= iptc.size(); i += 4)
            std::reverse(iptc.begin() + static_cast<std::ptrdiff_t>(i),
                         iptc.begin() + static_cast<std::ptrdiff_t>(i + 4));
    if (iptc.empty() || iptc[0] != kMarker)
        return {};
    // Strips the padding to 32 bits: at most 3 bytes, since a dataset may itself end in zeros.
    for (int i = 0; i < 3 && iptc.back() == 0; ++i)
        iptc.pop_back();
    return iptc;
}

static std::vector<std::uint8_t> ExifBlock(const std::vector<TiffTag>& tags)
{
    std::vector<std::uint8_t> block = {'I', 'I', 42, 0};
    const TiffDirectoryBytes bytes = DirectoryBytes(tags, 8, false);
    AppendNumber(block, bytes.directory, 4);
    block.insert(block.end(), bytes.bytes.begin(), bytes.bytes.end());
    return block;
}

void ReadTiffMetadata(InputFile& file, const TiffHeader& header, const std::vector<TiffEntry>& entries,
                      std::uint16_t orientation, ImageBuffer& image)
{
    image.dots_per_inch_x = ReadResolution(file, header, entries, TIFFTAG_XRESOLUTION);
    image.dots_per_inch_y = ReadResolution(file, header, entries, TIFFTAG_YRESOLUTION);
    if (const TiffEntry* xmp = EntryOf(entries, TIFFTAG_XMLPACKET))
        image.metadata.xmp = ReadValue(file, header, *xmp, kMaxBlock, true);
    image.metadata.iptc = ReadIptc(file, header, entries);

    std::vector<TiffTag> tags = ReadTags(file, header, entries, kCarried);
    // The page's own tag overrides the orientation in an XMP packet.
    if (orientation != ORIENTATION_TOPLEFT || !image.metadata.xmp.empty()) {
        const auto place = std::find_if(tags.begin(), tags.end(),
                                        [](const TiffTag& tag) { return tag.tag > TIFFTAG_ORIENTATION; });
        tags.insert(place, NumberTag(TIFFTAG_ORIENTATION, 3, {orientation}));
    }
    if (!tags.empty())
        image.metadata.exif = ExifBlock(tags);
}

std::vector<TiffTag> TiffMetadataTags(const ImageBuffer& image, const ImageInfoTexts& texts, bool has_profile)
{
    std::vector<TiffTag> tags;
    const std::vector<std::uint8_t> exif = ExifForSave(image, texts);
    if (!exif.empty()) {
        InputFile block{Bytes(exif)};
        if (const std::optional<TiffHeader> header = ReadTiffHeader(block))
            tags = ReadTags(block, *header, ReadEntries(block, *header, header->first_directory), kCarried);
    }
    if (image.dots_per_inch_x > 0 || image.dots_per_inch_y > 0) {
        const double x = image.dots_per_inch_x > 0 ? image.dots_per_inch_x : image.dots_per_inch_y;
        const double y = image.dots_per_inch_y > 0 ? image.dots_per_inch_y : image.dots_per_inch_x;
        tags.push_back(RationalTag(TIFFTAG_XRESOLUTION, x));
        tags.push_back(RationalTag(TIFFTAG_YRESOLUTION, y));
        tags.push_back(NumberTag(TIFFTAG_RESOLUTIONUNIT, 3, {RESUNIT_INCH}));
    }
    const ImageMetadata& metadata = image.metadata;
    if (!metadata.xmp.empty())
        tags.push_back(BytesTag(TIFFTAG_XMLPACKET, 1, metadata.xmp));
    if (!metadata.iptc.empty()) {
        std::vector<std::uint8_t> iptc = metadata.iptc;
        iptc.resize((iptc.size() + 3) / 4 * 4);
        tags.push_back(BytesTag(TIFFTAG_RICHTIFFIPTC, 4, iptc));
    }
    if (has_profile && !image.icc_profile.empty())
        tags.push_back(BytesTag(TIFFTAG_ICCPROFILE, 7, image.icc_profile));
    std::sort(tags.begin(), tags.end(),
              [](const TiffTag& left, const TiffTag& right) { return left.tag < right.tag; });
    return tags;
}
