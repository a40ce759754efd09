// The TIFF codec: recognises files, hands on to the decoder and the writer.
#include "src/platform/image/codecs/tiff/tiff.h"

#include "src/platform/image/codecs/tiff/tiff_decoder.h"
#include "src/platform/image/codecs/tiff/tiff_writer.h"

static bool Sniff(Bytes aHead, std::string_view)
{
    if (aHead.size() < 4)
        return false;
    const bool bLittle =
        aHead[0] == 'I' && aHead[1] == 'I' && (aHead[2] == 42 || aHead[2] == 43) && aHead[3] == 0;
    const bool bBig =
        aHead[0] == 'M' && aHead[1] == 'M' && aHead[2] == 0 && (aHead[3] == 42 || aHead[3] == 43);
    return bLittle || bBig;
}

static bool Encode(const ImageBuffer& aImage, const SaveSettings& objSettings, OutputFile& objOut)
{
    TiffPageForm objForm;
    objForm.bBigTiff = nMostPageBytes(aImage) > kClassicEnd;
    TiffPagePlace objPlace;
    return bWriteTiffFile(objOut, aImage, objSettings, objForm, objPlace);
}

const Codec codecTiff{3, true, true, Sniff, pOpenTiff, Encode};
