// Reads and validates the tags that describe the pixels.
#include "src/platform/image/codecs/tiff/tiff_layout.h"

#include <algorithm>
#include <array>
#include <limits>
#include <vector>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/base/limits.h"
#include "src/platform/image/codecs/tiff/directory/tiff_directory.h"

static constexpr std::uint64_t kMaxSamples = 64;
static constexpr std::uint64_t kMaxChunks = 4'000'000;
static constexpr std::uint64_t kAnyTileBytes =
    16 * 1024 * 1024;  // a tile may be this large even if the page is tiny

std::uint32_t TiffLayout::ColourCount() const
{
    switch (colour) {
        case TiffColour::kGrey:
        case TiffColour::kPalette:
            return 1;
        case TiffColour::kCmyk:
            return 4;
        default:
            return 3;
    }
}

static std::uint64_t TagNumber(InputFile& file, const TiffHeader& header,
                               const std::vector<TiffEntry>& entries, std::uint16_t tag,
                               std::uint64_t missing)
{
    const TiffEntry* entry = EntryOf(entries, tag);
    return entry ? ReadNumber(file, header, *entry).value_or(missing) : missing;
}

static std::uint16_t ReadShort(TIFF* tiff, std::uint32_t tag, std::uint16_t missing)
{
    std::uint16_t value = missing;
    return TIFFGetFieldDefaulted(tiff, tag, &value) ? value : missing;
}

static std::uint64_t PartCount(std::uint64_t whole, std::uint64_t part)
{
    return (whole + part - 1) / part;
}

bool IsPlausibleDirectory(InputFile& file, const TiffHeader& header, std::uint64_t directory)
{
    const std::vector<TiffEntry> entries = ReadEntries(file, header, directory);
    const auto number = [&](std::uint16_t tag, std::uint64_t missing) {
        return TagNumber(file, header, entries, tag, missing);
    };
    const std::uint64_t width = number(TIFFTAG_IMAGEWIDTH, 0);
    const std::uint64_t height = number(TIFFTAG_IMAGELENGTH, 0);
    const std::uint64_t samples = number(TIFFTAG_SAMPLESPERPIXEL, 1);
    if (!IsSizeAllowed(width, height) || samples < 1 || samples > kMaxSamples)
        return false;
    // A truncated file may have lost its palette; libtiff would show the indices as greys.
    if (number(TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK) == PHOTOMETRIC_PALETTE &&
        !EntryOf(entries, TIFFTAG_COLORMAP))
        return false;

    const TiffEntry* offsets = EntryOf(entries, TIFFTAG_TILEOFFSETS);
    const bool tiled = offsets != nullptr || EntryOf(entries, TIFFTAG_TILEWIDTH) != nullptr;
    if (!offsets)
        offsets = EntryOf(entries, TIFFTAG_STRIPOFFSETS);
    if (!offsets)  // old-style JPEG has a tag for its stream instead
        return number(TIFFTAG_COMPRESSION, 1) == COMPRESSION_OJPEG &&
               EntryOf(entries, TIFFTAG_JPEGIFOFFSET) != nullptr;
    const std::uint64_t chunk_width = tiled ? number(TIFFTAG_TILEWIDTH, 0) : width;
    std::uint64_t chunk_height =
        number(tiled ? TIFFTAG_TILELENGTH : TIFFTAG_ROWSPERSTRIP, tiled ? 0 : height);
    if (chunk_width < 1 || chunk_height < 1)
        return false;
    const std::uint64_t planes = number(TIFFTAG_PLANARCONFIG, 1) == PLANARCONFIG_SEPARATE ? samples : 1;
    const std::uint64_t chunks = PartCount(width, chunk_width) * PartCount(height, chunk_height) * planes;
    return chunks <= kMaxChunks && chunks <= offsets->count;
}

// The most pixels that one byte of the file can decode to; 0 if unlimited. Worst cases: LZW strings growing
// by one each, deflate's 258 bytes from 2 bits, PackBits' 128 bytes from 2, JPEG's 64-sample block from 2
// bits.
static std::uint64_t MaxPixelsPerByte(const TiffLayout& layout)
{
    switch (layout.compression) {
        case COMPRESSION_NONE:
            return 1;
        case COMPRESSION_LZW:
        case COMPRESSION_JPEG:
        case COMPRESSION_OJPEG:
            return 2048;
        case COMPRESSION_ADOBE_DEFLATE:
        case COMPRESSION_DEFLATE:
            return 1100;
        case COMPRESSION_PACKBITS:
            return 64;
        case COMPRESSION_CCITTRLE:
        case COMPRESSION_CCITTRLEW:
        case COMPRESSION_CCITTFAX3:
        case COMPRESSION_CCITTFAX4:
            return layout.chunk_width + 8;  // one bit may encode a whole row
        default:
            return 0;
    }
}

// libjbig allocates by the stream's own header, so it must agree with the page's size.
static bool JbigHeaderFits(TIFF* tiff, InputFile& file, std::uint64_t offset, const TiffLayout& layout)
{
    std::array<std::uint8_t, 20> header{};
    if (file.ReadAt(offset, header) != header.size())
        return false;
    // If the file's fill order is libtiff's own, the stream is stored with its bits reversed.
    const std::uint16_t own_order = TIFFIsMSB2LSB(tiff) ? FILLORDER_MSB2LSB : FILLORDER_LSB2MSB;
    if (ReadShort(tiff, TIFFTAG_FILLORDER, FILLORDER_MSB2LSB) == own_order)
        TIFFReverseBits(header.data(), static_cast<tmsize_t>(header.size()));
    ByteReader reader(header);
    const std::uint8_t first_layer = reader.U8();
    const std::uint8_t last_layer = reader.U8();
    const std::uint8_t planes = reader.U8();
    reader.Take(1);
    const std::uint32_t width = reader.U32Be();
    const std::uint32_t height = reader.U32Be();
    return first_layer == 0 && last_layer == 0 && planes == 1 && width == layout.chunk_width && height >= 1 &&
           height <= layout.chunk_height;
}

// True if the file's chunks are large enough for the pixels that the tags claim.
static bool ChunksSuffice(TIFF* tiff, const TiffLayout& layout, InputFile& file)
{
    const std::uint64_t chunk_bytes = layout.tiled ? TIFFTileSize64(tiff) : TIFFStripSize64(tiff);
    const std::uint32_t chunks = layout.tiled ? TIFFNumberOfTiles(tiff) : TIFFNumberOfStrips(tiff);
    if (chunk_bytes == 0 || chunks == 0 || chunk_bytes > std::numeric_limits<std::uint32_t>::max())
        return false;
    const std::uint64_t page_bytes = std::uint64_t{layout.width} * layout.height *
                                     PartCount(std::uint64_t{layout.bits} * layout.samples, 8);
    if (layout.tiled && chunk_bytes > std::max(kAnyTileBytes, 4 * page_bytes))
        return false;
    if (layout.compression == COMPRESSION_OJPEG)
        return true;  // the stream needn't be at the strip offsets
    std::uint64_t stored = 0;
    for (std::uint32_t i = 0; i < chunks; ++i) {
        const std::uint64_t offset = TIFFGetStrileOffset(tiff, i);
        const std::uint64_t bytes = TIFFGetStrileByteCount(tiff, i);
        if (offset < 8 || offset >= file.Size() || bytes == 0)
            return false;
        if (layout.compression == COMPRESSION_JBIG && !JbigHeaderFits(tiff, file, offset, layout))
            return false;
        stored += std::min(bytes, file.Size() - offset);
    }
    const std::uint64_t max = MaxPixelsPerByte(layout);
    const std::uint64_t row_bytes = layout.tiled ? TIFFTileRowSize64(tiff) : TIFFScanlineSize64(tiff);
    const std::uint64_t planes = layout.separate ? layout.samples : 1;
    const std::uint64_t needed = layout.tiled ? chunk_bytes * chunks : row_bytes * layout.height * planes;
    return max == 0 || stored * max >= needed;
}

// Takes the first extra sample that is alpha. Unspecified extra samples are ignored: editors store masks and
// spot colours there.
static void ReadAlpha(TIFF* tiff, TiffLayout& layout)
{
    std::uint16_t extra = 0;
    std::uint16_t* kinds = nullptr;
    if (!TIFFGetField(tiff, TIFFTAG_EXTRASAMPLES, &extra, &kinds))
        return;
    for (std::uint16_t i = 0; i < extra && layout.ColourCount() + i < layout.samples; ++i) {
        if (kinds[i] != EXTRASAMPLE_ASSOCALPHA && kinds[i] != EXTRASAMPLE_UNASSALPHA)
            continue;
        layout.alpha = kinds[i] == EXTRASAMPLE_ASSOCALPHA ? TiffAlpha::kAssociated : TiffAlpha::kUnassociated;
        layout.alpha_sample = static_cast<std::uint16_t>(layout.ColourCount() + i);
        return;
    }
}

// False for an unknown colour model.
static bool ReadColour(TIFF* tiff, TiffLayout& layout)
{
    std::uint16_t photometric = 0;
    if (!TIFFGetField(tiff, TIFFTAG_PHOTOMETRIC, &photometric)) {
        const bool fax =
            layout.compression >= COMPRESSION_CCITTRLE && layout.compression <= COMPRESSION_CCITTFAX4;
        photometric = layout.samples >= 3 ? PHOTOMETRIC_RGB
                      : fax               ? PHOTOMETRIC_MINISWHITE
                                          : PHOTOMETRIC_MINISBLACK;
    }
    switch (photometric) {
        case PHOTOMETRIC_MINISWHITE:
        case PHOTOMETRIC_MINISBLACK:
        case PHOTOMETRIC_MASK:
            layout.colour = TiffColour::kGrey;
            layout.min_is_white = photometric == PHOTOMETRIC_MINISWHITE;
            break;
        case PHOTOMETRIC_RGB:
            layout.colour = layout.samples >= 3 ? TiffColour::kRgb : TiffColour::kGrey;
            break;
        case PHOTOMETRIC_PALETTE:
            layout.colour = TiffColour::kPalette;
            break;
        case PHOTOMETRIC_SEPARATED:
            layout.colour = TiffColour::kCmyk;
            break;
        case PHOTOMETRIC_YCBCR:
            layout.colour = TiffColour::kYCbCr;
            break;
        case PHOTOMETRIC_CIELAB:
            layout.colour = TiffColour::kLab;
            break;
        case PHOTOMETRIC_ICCLAB:
            layout.colour = TiffColour::kIccLab;
            break;
        case PHOTOMETRIC_LOGL:
        case PHOTOMETRIC_LOGLUV:
            if (!TIFFSetField(tiff, TIFFTAG_SGILOGDATAFMT, SGILOGDATAFMT_8BIT))
                return false;
            layout.colour = photometric == PHOTOMETRIC_LOGL ? TiffColour::kGrey : TiffColour::kRgb;
            break;
        default:
            return false;
    }
    return layout.samples >= layout.ColourCount();
}

static void ReadYCbCr(TIFF* tiff, TiffLayout& layout)
{
    if (layout.compression == COMPRESSION_JPEG && !layout.separate) {
        TIFFSetField(tiff, TIFFTAG_JPEGCOLORMODE, JPEGCOLORMODE_RGB);
        layout.colour = TiffColour::kRgb;
        return;
    }
    TIFFGetFieldDefaulted(tiff, TIFFTAG_YCBCRSUBSAMPLING, &layout.subsampling_x, &layout.subsampling_y);
}

// The range of integers of this type.
static void SetFullRange(TiffLayout& layout)
{
    double span = 1;
    for (int i = 0; i < layout.bits; ++i)
        span *= 2;
    layout.lowest = layout.format == SAMPLEFORMAT_INT ? -span / 2 : 0;
    layout.highest = layout.lowest + span - 1;
}

// The range in the file's tags. The older pair of tags can't hold negative numbers, so a greatest value
// beyond the type's is not meant for signed samples.
static bool ReadRangeTags(TIFF* tiff, TiffLayout& layout)
{
    double lowest = 0;
    double highest = 0;
    std::uint16_t least = 0;
    std::uint16_t greatest = 0;
    if (TIFFGetField(tiff, TIFFTAG_SMINSAMPLEVALUE, &lowest) &&
        TIFFGetField(tiff, TIFFTAG_SMAXSAMPLEVALUE, &highest) && highest > lowest) {
        layout.lowest = lowest;
        layout.highest = highest;
        return true;
    }
    if (layout.format != SAMPLEFORMAT_INT || !TIFFGetField(tiff, TIFFTAG_MINSAMPLEVALUE, &least) ||
        !TIFFGetField(tiff, TIFFTAG_MAXSAMPLEVALUE, &greatest) || greatest <= least ||
        greatest > layout.highest)
        return false;
    layout.lowest = least;
    layout.highest = greatest;
    return true;
}

// The range of floats, signed integers and integers wider than 16 bits: from the file's tags if present.
// Signed samples rarely use all of their type, so otherwise their range is that of the data.
static void ReadRange(TIFF* tiff, TiffLayout& layout)
{
    if (layout.format == SAMPLEFORMAT_UINT && layout.bits <= 16)
        return;
    if (layout.format != SAMPLEFORMAT_IEEEFP)
        SetFullRange(layout);
    if (ReadRangeTags(tiff, layout))
        return;
    const bool is_scalable = layout.colour == TiffColour::kGrey || layout.colour == TiffColour::kRgb ||
                             layout.colour == TiffColour::kCmyk;
    layout.range_from_data = layout.format == SAMPLEFORMAT_INT && layout.bits > 1 && is_scalable;
}

static bool HasKnownDepth(const TiffLayout& layout)
{
    if (layout.format == SAMPLEFORMAT_IEEEFP && layout.colour != TiffColour::kPalette)
        return layout.bits == 16 || layout.bits == 24 || layout.bits == 32 || layout.bits == 64;
    if (layout.format != SAMPLEFORMAT_UINT && layout.format != SAMPLEFORMAT_INT)
        return false;
    if (layout.colour == TiffColour::kPalette && layout.bits > 16)
        return false;
    if (layout.colour == TiffColour::kLab || layout.colour == TiffColour::kIccLab)
        return layout.bits == 8 || layout.bits == 16;
    return (layout.bits >= 1 && layout.bits <= 16) || layout.bits == 24 || layout.bits == 32 ||
           layout.bits == 64;
}

std::optional<TiffLayout> ReadLayout(TIFF* tiff, InputFile& file)
{
    TiffLayout layout;
    TIFFGetField(tiff, TIFFTAG_IMAGEWIDTH, &layout.width);
    TIFFGetField(tiff, TIFFTAG_IMAGELENGTH, &layout.height);
    layout.samples = ReadShort(tiff, TIFFTAG_SAMPLESPERPIXEL, 1);
    layout.compression = ReadShort(tiff, TIFFTAG_COMPRESSION, COMPRESSION_NONE);
    layout.orientation = ReadShort(tiff, TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
    layout.separate = layout.samples > 1 &&
                      ReadShort(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG) == PLANARCONFIG_SEPARATE;
    layout.tiled = TIFFIsTiled(tiff) != 0;
    if (!IsSizeAllowed(layout.width, layout.height) || layout.samples < 1 || layout.samples > kMaxSamples ||
        !TIFFIsCODECConfigured(layout.compression) || !ReadColour(tiff, layout))
        return std::nullopt;

    if (layout.colour == TiffColour::kYCbCr)
        ReadYCbCr(tiff, layout);
    // Read these last: the decoder output options above change both.
    layout.bits = ReadShort(tiff, TIFFTAG_BITSPERSAMPLE, 1);
    layout.format = ReadShort(tiff, TIFFTAG_SAMPLEFORMAT, SAMPLEFORMAT_UINT);
    if (layout.format == SAMPLEFORMAT_VOID)
        layout.format = SAMPLEFORMAT_UINT;
    if (!HasKnownDepth(layout))
        return std::nullopt;
    const bool powers = layout.subsampling_x >= 1 && layout.subsampling_x <= 4 && layout.subsampling_y >= 1 &&
                        layout.subsampling_y <= 4;
    if (!powers || (layout.IsSubsampled() && (layout.separate || layout.bits != 8 || layout.samples != 3)))
        return std::nullopt;
    ReadAlpha(tiff, layout);
    ReadRange(tiff, layout);

    layout.chunk_width = layout.width;
    if (layout.tiled) {
        TIFFGetField(tiff, TIFFTAG_TILEWIDTH, &layout.chunk_width);
        TIFFGetField(tiff, TIFFTAG_TILELENGTH, &layout.chunk_height);
    } else {
        TIFFGetFieldDefaulted(tiff, TIFFTAG_ROWSPERSTRIP, &layout.chunk_height);
        layout.chunk_height = std::min(layout.chunk_height, layout.height);
    }
    if (layout.chunk_width < 1 || layout.chunk_height < 1 || !ChunksSuffice(tiff, layout, file))
        return std::nullopt;
    return layout;
}
