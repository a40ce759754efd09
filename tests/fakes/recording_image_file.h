// An in-memory image library that records calls.
// Room: tests/fakes.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "src/platform/image_library.h"

class FakeFileSystem;

/// Each page is one number, stored as a byte of a file in the given file system, so that the logic can find,
/// copy and delete image files. A loaded buffer is one pixel wide; its only byte is the page number.
class RecordingImageFile : public ImageFile
{
public:
    explicit RecordingImageFile(FakeFileSystem& objFiles) : m_objFiles(objFiles) {}

    /// Adds an image file with these pages to the file system.
    void AddImage(const std::string& sFile, const std::vector<std::uint8_t>& aPages = {1});
    std::vector<std::uint8_t> aPagesOf(const std::string& sFile) const;

    std::vector<std::string>
        aCalls;  ///< all calls, such as "LoadFrame /a.tif 0", "SavePNG /a.png" or "JPEGQuality 75", in order
    std::set<std::string> aBroken;      ///< files that fail to load
    std::set<std::string> aUnwritable;  ///< targets that fail to save
    std::int32_t lBrokenPage = -1;      ///< page, from 0, that fails to load in any file
    ImageInfoTexts objTexts;            ///< last value passed to SetInfo

    bool LoadImage(const std::string& sFile, ImageBuffer& aImage) override;
    bool LoadFrame(const std::string& sFile, std::int32_t lFrameIndex, ImageBuffer& aImage) override;
    std::int32_t GetFrameCount(const std::string& sFile) override;
    bool SaveBMP(const ImageBuffer& a, const std::string& s) override { return bSave("SaveBMP", a, s); }
    bool SaveGIF(const ImageBuffer& a, const std::string& s) override { return bSave("SaveGIF", a, s); }
    bool SaveJPEG(const ImageBuffer& a, const std::string& s) override { return bSave("SaveJPEG", a, s); }
    bool SavePNG(const ImageBuffer& a, const std::string& s) override { return bSave("SavePNG", a, s); }
    bool SaveTIFF(const ImageBuffer& a, const std::string& s) override { return bSave("SaveTIFF", a, s); }
    bool SaveWMF(const ImageBuffer& a, const std::string& s) override { return bSave("SaveWMF", a, s); }
    bool SaveEMF(const ImageBuffer& a, const std::string& s) override { return bSave("SaveEMF", a, s); }
    bool SavePCX(const ImageBuffer& a, const std::string& s) override { return bSave("SavePCX", a, s); }
    bool SaveTGA(const ImageBuffer& a, const std::string& s) override { return bSave("SaveTGA", a, s); }
    bool SaveRAS(const ImageBuffer& a, const std::string& s) override { return bSave("SaveRAS", a, s); }
    bool SaveJ2K(const ImageBuffer& a, const std::string& s) override { return bSave("SaveJ2K", a, s); }
    bool AppendFrame(const ImageBuffer& aImage, bool bFinish) override;
    void SetJPEGQuality(std::int32_t lQuality) override;
    void SetTIFFCompression(std::int32_t lCompression) override;
    void SetMultiFrameSave(bool bMultiFrameSave) override;
    void SetInfo(const ImageInfoTexts& objInfo) override;

private:
    bool bSave(const std::string& sOperation, const ImageBuffer& aImage, const std::string& sFile);

    FakeFileSystem& m_objFiles;
    bool m_bMultiFrameSave = false;
    std::string m_sOpenFile;  ///< the multi-frame file being written
};

class FakeImageUtility : public ImageUtility
{
public:
    std::int32_t GetWidth(const ImageBuffer& aImage) const override { return aImage.width; }
    std::int32_t GetHeight(const ImageBuffer& aImage) const override { return aImage.height; }
};
