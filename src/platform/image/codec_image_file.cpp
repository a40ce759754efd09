// Loads and saves through the codec table.
#include "src/platform/image/codec_image_file.h"

#include <algorithm>
#include <new>
#include <utility>

#include "src/base/path_text.h"
#include "src/base/text.h"
#include "src/platform/file_system.h"
#include "src/platform/image/base/limits.h"
#include "src/platform/image/base/output_file.h"
#include "src/platform/image/codecs/registry.h"
#include "src/platform/image/codecs/tiff/tiff_document.h"
#include "src/platform/image/colour/colour_profile.h"
#include "src/platform/image/metadata/metadata.h"
#include "src/platform/image/pixels/alpha.h"

/// The file whose pages are being asked for.
struct CodecImageFile::OpenDocument {
    std::string sHostPath;
    std::unique_ptr<InputFile> pFile;
    std::unique_ptr<ImageDecoder> pDecoder;
};

CodecImageFile::CodecImageFile(const FileSystem& objFileSystem) : m_objFileSystem(objFileSystem) {}
CodecImageFile::~CodecImageFile() = default;

CodecImageFile::OpenDocument* CodecImageFile::pOpen(const std::string& sFile)
{
    const auto sHostPath = m_objFileSystem.sHostPathOfExisting(sFile);
    if (m_pDocument && sHostPath && m_pDocument->sHostPath == *sHostPath &&
        InputFile::IdentityOf(*sHostPath) == m_pDocument->pFile->Identity())
        return m_pDocument.get();
    m_pDocument.reset();
    auto pDocument = std::make_unique<OpenDocument>();
    pDocument->pFile = sHostPath ? InputFile::Open(*sHostPath) : nullptr;
    if (!pDocument->pFile)
        return nullptr;
    const Codec* pCodec = pCodecOfContent(pDocument->pFile->Head(), sLower(sExtensionOfPath(sFile)));
    pDocument->pDecoder = pCodec ? pCodec->Open(*pDocument->pFile) : nullptr;
    if (!pDocument->pDecoder)
        return nullptr;
    pDocument->sHostPath = *sHostPath;
    m_pDocument = std::move(pDocument);
    return m_pDocument.get();
}

bool CodecImageFile::LoadImage(const std::string& sFile, ImageBuffer& aImage)
{
    return LoadFrame(sFile, 0, aImage);
}

bool CodecImageFile::LoadFrame(const std::string& sFile, std::int32_t lFrameIndex, ImageBuffer& aImage)
try {
    OpenDocument* pDocument = pOpen(sFile);
    if (!pDocument)
        return false;
    const std::int32_t lFrames = pDocument->pDecoder->FrameCount();
    ImageBuffer aPage;
    const bool bDone =
        lFrameIndex >= 0 && lFrameIndex < lFrames && pDocument->pDecoder->DecodeFrame(lFrameIndex, aPage);
    if (lFrames == 1)
        m_pDocument.reset();  // nobody asks for more of it, and its bytes are memory
    if (!bDone)
        return false;
    FinishLoaded(aPage);
    aImage = std::move(aPage);
    return true;
} catch (const std::bad_alloc&) {
    m_pDocument.reset();
    return false;
}

std::int32_t CodecImageFile::GetFrameCount(const std::string& sFile)
try {
    OpenDocument* pDocument = pOpen(sFile);
    return pDocument ? pDocument->pDecoder->FrameCount() : 0;
} catch (const std::bad_alloc&) {
    m_pDocument.reset();
    return 0;
}

bool CodecImageFile::Save(std::int32_t lType, const ImageBuffer& aImage, const std::string& sFile)
try {
    const Codec* pCodec = pCodecOfType(lType);
    const auto sHostPath = m_objFileSystem.sHostPathToWrite(sFile);
    if (!pCodec || !pCodec->Encode || !sHostPath || aImage.width < 1 || aImage.height < 1)
        return false;
    const bool bFlatten = aImage.channels == 4 && !pCodec->bHoldsAlpha;
    const bool bConvert =
        !aImage.icc_profile.empty() && !pCodec->bHoldsProfile && !IsSrgbProfile(aImage.icc_profile);
    ImageBuffer aOwn;
    if (bFlatten)
        aOwn = LayOnWhite(aImage);
    else if (bConvert)
        aOwn = aImage;
    if (bConvert)
        ConvertToSrgb(aOwn);  // colours of a profile that can't be used are taken as they are
    const ImageBuffer& aPicture = bFlatten || bConvert ? aOwn : aImage;
    SaveSettings objSettings = m_objSettings;
    objSettings.lJPEGQuality = std::clamp(objSettings.lJPEGQuality, 1, 100);
    OutputFile objOut(*sHostPath);
    return !objOut.Failed() && pCodec->Encode(aPicture, objSettings, objOut) && objOut.Commit();
} catch (const std::bad_alloc&) {
    return false;
}

// The file type codes, by the operation that saves them.
bool CodecImageFile::SaveJPEG(const ImageBuffer& aImage, const std::string& sFile)
{
    return Save(1, aImage, sFile);
}
bool CodecImageFile::SaveBMP(const ImageBuffer& aImage, const std::string& sFile)
{
    return Save(2, aImage, sFile);
}
bool CodecImageFile::SaveTIFF(const ImageBuffer& aImage, const std::string& sFile)
try {
    m_pGrowing.reset();
    if (!m_bMultiFrameSave)
        return Save(3, aImage, sFile);
    const auto sHostPath = m_objFileSystem.sHostPathToWrite(sFile);
    if (!sHostPath || aImage.width < 1 || aImage.height < 1)
        return false;
    m_pGrowing = TiffDocument::Begin(*sHostPath, aImage, m_objSettings);
    return m_pGrowing != nullptr;
} catch (const std::bad_alloc&) {
    return false;
}
bool CodecImageFile::SaveGIF(const ImageBuffer& aImage, const std::string& sFile)
{
    return Save(4, aImage, sFile);
}
bool CodecImageFile::SaveEMF(const ImageBuffer& aImage, const std::string& sFile)
{
    return Save(5, aImage, sFile);
}
bool CodecImageFile::SaveJ2K(const ImageBuffer& aImage, const std::string& sFile)
{
    return Save(6, aImage, sFile);
}
bool CodecImageFile::SavePCX(const ImageBuffer& aImage, const std::string& sFile)
{
    return Save(7, aImage, sFile);
}
bool CodecImageFile::SavePNG(const ImageBuffer& aImage, const std::string& sFile)
{
    return Save(8, aImage, sFile);
}
bool CodecImageFile::SaveRAS(const ImageBuffer& aImage, const std::string& sFile)
{
    return Save(9, aImage, sFile);
}
bool CodecImageFile::SaveTGA(const ImageBuffer& aImage, const std::string& sFile)
{
    return Save(10, aImage, sFile);
}
bool CodecImageFile::SaveWMF(const ImageBuffer& aImage, const std::string& sFile)
{
    return Save(11, aImage, sFile);
}

bool CodecImageFile::AppendFrame(const ImageBuffer& aImage, bool bFinish)
{
    bool bDone = false;
    try {
        const bool bNothing = aImage.width < 1 || aImage.height < 1;
        bDone = m_pGrowing && (bNothing ? bFinish : m_pGrowing->Append(aImage, m_objSettings));
    } catch (const std::bad_alloc&) {
    }
    if (bFinish)
        m_pGrowing.reset();
    return bDone;
}

void CodecImageFile::SetJPEGQuality(std::int32_t lQuality)
{
    m_objSettings.lJPEGQuality = lQuality;
}

void CodecImageFile::SetTIFFCompression(std::int32_t lCompression)
{
    m_objSettings.lTIFFCompression = lCompression;
}

void CodecImageFile::SetMultiFrameSave(bool bMultiFrameSave)
{
    m_bMultiFrameSave = bMultiFrameSave;
    if (!bMultiFrameSave)
        m_pGrowing.reset();
}

void CodecImageFile::SetInfo(const ImageInfoTexts& objTexts)
{
    m_objSettings.objTexts = objTexts;
}
