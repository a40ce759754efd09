// The real ImageFile: finds the codec, keeps a file open from page to page, saves whole files.
// Room: platform/image.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/codecs/codec.h"
#include "src/platform/image_library.h"

class FileSystem;
class TiffDocument;

class CodecImageFile : public ImageFile
{
public:
    /// objFileSystem turns the user's paths into the host's; it must outlive this object.
    explicit CodecImageFile(const FileSystem& objFileSystem);
    ~CodecImageFile() override;

    bool LoadImage(const std::string& sFile, ImageBuffer& aImage) override;
    bool LoadFrame(const std::string& sFile, std::int32_t lFrameIndex, ImageBuffer& aImage) override;
    std::int32_t GetFrameCount(const std::string& sFile) override;

    bool SaveBMP(const ImageBuffer& aImage, const std::string& sFile) override;
    bool SaveGIF(const ImageBuffer& aImage, const std::string& sFile) override;
    bool SaveJPEG(const ImageBuffer& aImage, const std::string& sFile) override;
    bool SavePNG(const ImageBuffer& aImage, const std::string& sFile) override;
    bool SaveTIFF(const ImageBuffer& aImage, const std::string& sFile) override;
    bool SaveWMF(const ImageBuffer& aImage, const std::string& sFile) override;
    bool SaveEMF(const ImageBuffer& aImage, const std::string& sFile) override;
    bool SavePCX(const ImageBuffer& aImage, const std::string& sFile) override;
    bool SaveTGA(const ImageBuffer& aImage, const std::string& sFile) override;
    bool SaveRAS(const ImageBuffer& aImage, const std::string& sFile) override;
    bool SaveJ2K(const ImageBuffer& aImage, const std::string& sFile) override;
    bool AppendFrame(const ImageBuffer& aImage, bool bFinish) override;

    void SetJPEGQuality(std::int32_t lQuality) override;
    void SetTIFFCompression(std::int32_t lCompression) override;
    void SetMultiFrameSave(bool bMultiFrameSave) override;
    void SetInfo(const ImageInfoTexts& objTexts) override;

private:
    struct OpenDocument;

    /// The file opened by its codec, from the call before if it is still the same; null if no codec takes it.
    OpenDocument* pOpen(const std::string& sFile);
    bool Save(std::int32_t lType, const ImageBuffer& aImage, const std::string& sFile);

    const FileSystem& m_objFileSystem;
    SaveSettings m_objSettings;
    bool m_bMultiFrameSave = false;
    std::unique_ptr<OpenDocument> m_pDocument;
    std::unique_ptr<TiffDocument> m_pGrowing;  ///< the file that AppendFrame adds to
};

/// The real ImageUtility.
class BufferImageUtility : public ImageUtility
{
public:
    std::int32_t GetWidth(const ImageBuffer& aImage) const override { return aImage.width; }
    std::int32_t GetHeight(const ImageBuffer& aImage) const override { return aImage.height; }
};
