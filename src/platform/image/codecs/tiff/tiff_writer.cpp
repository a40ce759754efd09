// Puts a page together: strips, metadata, directory.
#include "src/platform/image/codecs/tiff/tiff_writer.h"

#include <tiff.h>

#include <algorithm>
#include <vector>

#include "src/platform/image/base/output_file.h"
#include "src/platform/image/codecs/codec.h"
#include "src/platform/image/codecs/tiff/directory/tiff_directory_writer.h"
#include "src/platform/image/codecs/tiff/directory/tiff_metadata.h"
#include "src/platform/image/codecs/tiff/tiff_strips.h"

std::uint64_t nMostPageBytes(const ImageBuffer& aImage)
{
    const ImageMetadata& objMetadata = aImage.metadata;
    const std::uint64_t nBeside = objMetadata.exif.size() + objMetadata.xmp.size() + objMetadata.iptc.size() +
                                  aImage.icc_profile.size();
    // LZW makes noise half as large again, and a code of group 3 or 4 is shorter than the levels that it
    // stands for; a strip costs two numbers, and no text is longer than a MB.
    return aImage.bytes.size() / 2 * 3 + aImage.bytes.size() / 500 + 2 * nBeside + 8 * 1024 * 1024 +
           16 * static_cast<std::uint64_t>(aImage.height);
}

static std::uint16_t nCompressionOf(std::int32_t lTIFFCompression)
{
    switch (lTIFFCompression) {
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

// What says how the strips are to be read.
static std::vector<TiffTag> aLayoutTags(const ImageBuffer& aImage, std::uint16_t nCompression,
                                        const TiffStrips& objStrips, std::uint64_t nFirstStrip,
                                        const TiffPageForm& objForm)
{
    const bool bFax = nCompression != COMPRESSION_NONE && nCompression != COMPRESSION_LZW;
    const std::uint64_t nSamples = bFax ? 1 : static_cast<std::uint64_t>(aImage.channels);
    const std::uint16_t nOffsetType = objForm.bBigTiff ? 16 : 4;
    std::vector<std::uint64_t> aOffsets;
    for (const std::uint64_t nSize : objStrips.aSizes) {
        aOffsets.push_back(nFirstStrip);
        nFirstStrip += nSize;
    }
    const std::uint64_t nPhotometric = bFax            ? PHOTOMETRIC_MINISWHITE
                                       : nSamples == 1 ? PHOTOMETRIC_MINISBLACK
                                                       : PHOTOMETRIC_RGB;
    std::vector<TiffTag> aTags = {
        objNumberTag(TIFFTAG_SUBFILETYPE, 4, {objForm.bOneOfSeveral ? FILETYPE_PAGE : 0u}),
        objNumberTag(TIFFTAG_IMAGEWIDTH, 4, {static_cast<std::uint64_t>(aImage.width)}),
        objNumberTag(TIFFTAG_IMAGELENGTH, 4, {static_cast<std::uint64_t>(aImage.height)}),
        objNumberTag(TIFFTAG_BITSPERSAMPLE, 3, std::vector<std::uint64_t>(nSamples, bFax ? 1 : 8)),
        objNumberTag(TIFFTAG_COMPRESSION, 3, {nCompression}),
        objNumberTag(TIFFTAG_PHOTOMETRIC, 3, {nPhotometric}),
        objNumberTag(TIFFTAG_STRIPOFFSETS, nOffsetType, aOffsets),
        objNumberTag(TIFFTAG_ORIENTATION, 3, {ORIENTATION_TOPLEFT}),
        objNumberTag(TIFFTAG_SAMPLESPERPIXEL, 3, {nSamples}),
        objNumberTag(TIFFTAG_ROWSPERSTRIP, 4, {objStrips.nRowsAStrip}),
        objNumberTag(TIFFTAG_STRIPBYTECOUNTS, 4, objStrips.aSizes),
        objNumberTag(TIFFTAG_PLANARCONFIG, 3, {PLANARCONFIG_CONTIG}),
    };
    if (bFax)
        aTags.push_back(objNumberTag(TIFFTAG_FILLORDER, 3, {FILLORDER_MSB2LSB}));
    if (nCompression == COMPRESSION_CCITTFAX3)
        aTags.push_back(objNumberTag(TIFFTAG_GROUP3OPTIONS, 4, {GROUP3OPT_FILLBITS}));
    if (nCompression == COMPRESSION_CCITTFAX4)
        aTags.push_back(objNumberTag(TIFFTAG_GROUP4OPTIONS, 4, {0}));
    if (nCompression == COMPRESSION_LZW)
        aTags.push_back(objNumberTag(TIFFTAG_PREDICTOR, 3, {2}));
    if (nSamples == 4)
        aTags.push_back(objNumberTag(TIFFTAG_EXTRASAMPLES, 3, {EXTRASAMPLE_UNASSALPHA}));
    if (objForm.bOneOfSeveral)  // how many pages there will be isn't known yet: 0
        aTags.push_back(objNumberTag(TIFFTAG_PAGENUMBER, 3, {objForm.nPage, 0}));
    return aTags;
}

static bool bWriteStrips(TiffSink& objSink, const ImageBuffer& aImage, std::uint16_t nCompression,
                         TiffStrips& objStrips)
{
    const TakeBytes fnTake = [&objSink](Bytes aBytes) { return objSink.Write(aBytes); };
    switch (nCompression) {
        case COMPRESSION_NONE:
            return bPlainStrips(aImage, fnTake, objStrips);
        case COMPRESSION_LZW:
            return bLzwStrips(aImage, fnTake, objStrips);
        default:
            return bFaxStrip(aImage, nCompression, fnTake, objStrips);
    }
}

bool bWriteTiffPage(TiffSink& objSink, const ImageBuffer& aImage, const SaveSettings& objSettings,
                    const TiffPageForm& objForm, TiffPagePlace& objPlace)
{
    const std::uint16_t nCompression = nCompressionOf(objSettings.lTIFFCompression);
    const bool bFax = nCompression != COMPRESSION_NONE && nCompression != COMPRESSION_LZW;
    const std::uint64_t nFirstStrip = objSink.Position();
    TiffStrips objStrips;
    if (!bWriteStrips(objSink, aImage, nCompression, objStrips))
        return false;

    std::vector<TiffTag> aTags = aLayoutTags(aImage, nCompression, objStrips, nFirstStrip, objForm);
    std::vector<TiffTag> aBeside = aTiffMetadataTags(aImage, objSettings.objTexts, !bFax);
    std::move(aBeside.begin(), aBeside.end(), std::back_inserter(aTags));
    std::sort(aTags.begin(), aTags.end(),
              [](const TiffTag& objLeft, const TiffTag& objRight) { return objLeft.nTag < objRight.nTag; });
    if (objSink.Position() % 2 != 0) {
        const std::uint8_t nFill = 0;
        if (!objSink.Write({&nFill, 1}))
            return false;
    }
    const TiffDirectoryBytes objBytes = objDirectoryBytes(aTags, objSink.Position(), objForm.bBigTiff);
    objPlace = {objBytes.nDirectory, objBytes.nNextPointer};
    return objSink.Write(objBytes.aBytes);
}

namespace
{
class OutputFileSink : public TiffSink
{
public:
    explicit OutputFileSink(OutputFile& objOut) : m_objOut(objOut) {}
    bool Write(Bytes aBytes) override { return m_objOut.Write(aBytes); }
    std::uint64_t Position() const override { return m_objOut.Position(); }

private:
    OutputFile& m_objOut;
};
}  // namespace

bool bWriteTiffFile(OutputFile& objOut, const ImageBuffer& aImage, const SaveSettings& objSettings,
                    const TiffPageForm& objForm, TiffPagePlace& objPlace)
{
    OutputFileSink objSink(objOut);
    return objOut.Write(aTiffHeaderBytes(0, objForm.bBigTiff)) &&
           bWriteTiffPage(objSink, aImage, objSettings, objForm, objPlace) && objOut.Seek(0) &&
           objOut.Write(aTiffHeaderBytes(objPlace.nDirectory, objForm.bBigTiff));
}
