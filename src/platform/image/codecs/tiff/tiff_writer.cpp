// Assembles a page: strips, metadata, directory.
#include "src/platform/image/codecs/tiff/tiff_writer.h"

#include <tiff.h>

#include <algorithm>
#include <vector>

#include "src/platform/files/output_file.h"
#include "src/platform/image/codecs/codec.h"
#include "src/platform/image/codecs/tiff/directory/tiff_directory_writer.h"
#include "src/platform/image/codecs/tiff/directory/tiff_metadata.h"
#include "src/platform/image/codecs/tiff/tiff_strips.h"

std::uint64_t MaxPageBytes(const ImageBuffer& image)
{
    const ImageMetadata& metadata = image.metadata;
    const std::uint64_t beside =
        metadata.exif.size() + metadata.xmp.size() + metadata.iptc.size() + image.icc_profile.size();
    // LZW expands noise by up to a half, and a group 3 or 4 code is never longer than the 8-bit levels it
    // encodes. Each strip needs two numbers, and no text exceeds 1 MB.
    return image.bytes.size() / 2 * 3 + image.bytes.size() / 500 + 2 * beside + 8 * 1024 * 1024 +
           16 * static_cast<std::uint64_t>(image.height);
}

static std::uint16_t CompressionOf(std::int32_t tiff_compression)
{
    switch (tiff_compression) {
        case 1:
            return COMPRESSION_LZW;
        case 2:
            return COMPRESSION_CCITTRLE;
        case 3:
            return COMPRESSION_CCITTFAX3;
        case 4:
            return COMPRESSION_CCITTFAX4;
        default:
            return COMPRESSION_NONE;
    }
}

// The tags needed to read the strips.
static std::vector<TiffTag> LayoutTags(const ImageBuffer& image, std::uint16_t compression,
                                       const TiffStrips& strips, std::uint64_t first_strip,
                                       const TiffPageForm& form)
{
    const bool fax = compression != COMPRESSION_NONE && compression != COMPRESSION_LZW;
    const std::uint64_t samples = fax ? 1 : static_cast<std::uint64_t>(image.channels);
    const std::uint16_t offset_type = form.big_tiff ? 16 : 4;
    std::vector<std::uint64_t> offsets;
    for (const std::uint64_t size : strips.sizes) {
        offsets.push_back(first_strip);
        first_strip += size;
    }
    const std::uint64_t photometric = fax            ? PHOTOMETRIC_MINISWHITE
                                      : samples == 1 ? PHOTOMETRIC_MINISBLACK
                                                     : PHOTOMETRIC_RGB;
    std::vector<TiffTag> tags = {
        NumberTag(TIFFTAG_SUBFILETYPE, 4, {form.one_of_several ? FILETYPE_PAGE : 0u}),
        NumberTag(TIFFTAG_IMAGEWIDTH, 4, {static_cast<std::uint64_t>(image.width)}),
        NumberTag(TIFFTAG_IMAGELENGTH, 4, {static_cast<std::uint64_t>(image.height)}),
        NumberTag(TIFFTAG_BITSPERSAMPLE, 3, std::vector<std::uint64_t>(samples, fax ? 1 : 8)),
        NumberTag(TIFFTAG_COMPRESSION, 3, {compression}),
        NumberTag(TIFFTAG_PHOTOMETRIC, 3, {photometric}),
        NumberTag(TIFFTAG_STRIPOFFSETS, offset_type, offsets),
        NumberTag(TIFFTAG_ORIENTATION, 3, {ORIENTATION_TOPLEFT}),
        NumberTag(TIFFTAG_SAMPLESPERPIXEL, 3, {samples}),
        NumberTag(TIFFTAG_ROWSPERSTRIP, 4, {strips.rows_per_strip}),
        NumberTag(TIFFTAG_STRIPBYTECOUNTS, 4, strips.sizes),
        NumberTag(TIFFTAG_PLANARCONFIG, 3, {PLANARCONFIG_CONTIG}),
    };
    if (fax)
        tags.push_back(NumberTag(TIFFTAG_FILLORDER, 3, {FILLORDER_MSB2LSB}));
    if (compression == COMPRESSION_CCITTFAX3)
        tags.push_back(NumberTag(TIFFTAG_GROUP3OPTIONS, 4, {GROUP3OPT_FILLBITS}));
    if (compression == COMPRESSION_CCITTFAX4)
        tags.push_back(NumberTag(TIFFTAG_GROUP4OPTIONS, 4, {0}));
    if (compression == COMPRESSION_LZW)
        tags.push_back(NumberTag(TIFFTAG_PREDICTOR, 3, {2}));
    if (samples == 4)
        tags.push_back(NumberTag(TIFFTAG_EXTRASAMPLES, 3, {EXTRASAMPLE_UNASSALPHA}));
    if (form.one_of_several)  // the page count isn't known yet: 0
        tags.push_back(NumberTag(TIFFTAG_PAGENUMBER, 3, {form.page, 0}));
    return tags;
}

static bool WriteStrips(TiffSink& sink, const ImageBuffer& image, std::uint16_t compression,
                        TiffStrips& strips)
{
    const TakeBytes take = [&sink](Bytes bytes) { return sink.Write(bytes); };
    switch (compression) {
        case COMPRESSION_NONE:
            return EncodePlainStrips(image, take, strips);
        case COMPRESSION_LZW:
            return EncodeLzwStrips(image, take, strips);
        default:
            return EncodeFaxStrip(image, compression, take, strips);
    }
}

bool WriteTiffPage(TiffSink& sink, const ImageBuffer& image, const SaveSettings& settings,
                   const TiffPageForm& form, TiffPagePlace& place)
{
    const std::uint16_t compression = CompressionOf(settings.tiff_compression);
    const bool fax = compression != COMPRESSION_NONE && compression != COMPRESSION_LZW;
    const std::uint64_t first_strip = sink.Position();
    TiffStrips strips;
    if (!WriteStrips(sink, image, compression, strips))
        return false;

    std::vector<TiffTag> tags = LayoutTags(image, compression, strips, first_strip, form);
    std::vector<TiffTag> beside = TiffMetadataTags(image, settings.texts, !fax);
    std::move(beside.begin(), beside.end(), std::back_inserter(tags));
    std::sort(tags.begin(), tags.end(),
              [](const TiffTag& left, const TiffTag& right) { return left.tag < right.tag; });
    if (sink.Position() % 2 != 0) {
        const std::uint8_t fill = 0;
        if (!sink.Write({&fill, 1}))
            return false;
    }
    const TiffDirectoryBytes bytes = DirectoryBytes(tags, sink.Position(), form.big_tiff);
    place = {bytes.directory, bytes.next_pointer};
    return sink.Write(bytes.bytes);
}

namespace
{
class OutputFileSink : public TiffSink
{
public:
    explicit OutputFileSink(OutputFile& out) : out_(out) {}
    bool Write(Bytes bytes) override { return out_.Write(bytes); }
    std::uint64_t Position() const override { return out_.Position(); }

private:
    OutputFile& out_;
};
}  // namespace

bool WriteTiffFile(OutputFile& out, const ImageBuffer& image, const SaveSettings& settings,
                   const TiffPageForm& form, TiffPagePlace& place)
{
    OutputFileSink sink(out);
    return out.Write(TiffHeaderBytes(0, form.big_tiff)) &&
           WriteTiffPage(sink, image, settings, form, place) && out.Seek(0) &&
           out.Write(TiffHeaderBytes(place.directory, form.big_tiff));
}
