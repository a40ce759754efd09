// Reads JPEG 2000 files with OpenJPEG.
#include "src/platform/image/base/input_file.h"
#include "src/platform/image/codecs/j2k/j2k.h"
#include "src/platform/image/codecs/j2k/j2k_boxes.h"
#include "src/platform/image/codecs/j2k/j2k_codestream.h"
#include "src/platform/image/codecs/j2k/j2k_library.h"
#include "src/platform/image/codecs/j2k/j2k_pixels.h"

namespace
{
class J2kDecoder : public ImageDecoder
{
public:
    J2kDecoder(Bytes aFile, J2kFile objFile, std::uint64_t nPixels)
        : m_aFile(aFile), m_objFile(std::move(objFile)), m_nPixels(nPixels)
    {
    }
    std::int32_t FrameCount() override { return 1; }
    bool DecodeFrame(std::int32_t lFrame, ImageBuffer& aImage) override;

private:
    Bytes m_aFile;
    J2kFile m_objFile;
    std::uint64_t m_nPixels;  ///< of the reference grid: how much work it is
};
}  // namespace

static J2kImage pDecoded(bool bBoxes, Bytes aBytes, std::uint64_t nPixels)
{
    const J2kCodec objCodec(opj_create_decompress(bBoxes ? OPJ_CODEC_JP2 : OPJ_CODEC_J2K));
    const J2kStream objStream(aBytes);
    opj_dparameters_t objParameters;
    opj_set_default_decoder_parameters(&objParameters);
    if (!opj_setup_decoder(objCodec.get(), &objParameters) ||
        !opj_decoder_set_strict_mode(objCodec.get(), OPJ_TRUE))
        return nullptr;
    objCodec.UseThreads(nPixels);
    // The library may give a picture and fail, and the picture is the caller's nevertheless.
    opj_image_t* pRaw = nullptr;
    const bool bHeader = opj_read_header(objStream.get(), objCodec.get(), &pRaw) != OPJ_FALSE;
    J2kImage pImage(pRaw);
    const bool bDone = bHeader && pImage && opj_decode(objCodec.get(), objStream.get(), pImage.get()) &&
                       opj_end_decompress(objCodec.get(), objStream.get());
    return bDone ? std::move(pImage) : nullptr;
}

bool J2kDecoder::DecodeFrame(std::int32_t lFrame, ImageBuffer& aImage)
{
    if (lFrame != 0)
        return false;
    const J2kImage pImage =
        pDecoded(m_objFile.bBoxes, m_objFile.bBoxes ? m_aFile : m_objFile.aCodestream, m_nPixels);
    ImageBuffer aResult;
    if (!pImage || !bMakePicture(*pImage, aResult))
        return false;
    aResult.dots_per_inch_x = m_objFile.dDotsPerInchX;
    aResult.dots_per_inch_y = m_objFile.dDotsPerInchY;
    aResult.metadata = m_objFile.objMetadata;
    aImage = std::move(aResult);
    return true;
}

std::unique_ptr<ImageDecoder> pOpenJ2k(InputFile& objInput)
{
    const Bytes aFile = objInput.All();
    J2kFile objFile;
    J2kSize objSize;
    if (!bReadBoxes(aFile, objFile) || !bMayDecode(objFile.aCodestream, objSize))
        return nullptr;
    const std::uint64_t nWidth = objSize.nRight - objSize.nLeft, nHeight = objSize.nBottom - objSize.nTop;
    return std::make_unique<J2kDecoder>(aFile, std::move(objFile), nWidth * nHeight);
}
