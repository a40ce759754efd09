// An image library that keeps pictures in memory and records the calls.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "src/platform/image_library.h"

class FakeFileSystem;

/// A file's pages are numbers, the bytes of its content in the file system that was given, so that the logic
/// finds, copies and deletes them; a loaded buffer is one pixel wide and holds its page's number as its only
/// byte.
class RecordingImageFile : public ImageFile
{
public:
    explicit RecordingImageFile(FakeFileSystem& objFiles) : m_objFiles(objFiles) {}

    /// A file of these pages, known to the file system too.
    void AddImage(const std::string& sFile, const std::vector<std::uint8_t>& aPages = {1});
    std::vector<std::uint8_t> aPagesOf(const std::string& sFile) const;

    std::vector<std::string> aCalls;  ///< "LoadFrame /a.tif 0", "SavePNG /a.png", "JPEGQuality 75", in order
    std::set<std::string> aBroken;    ///< files that don't load
    std::set<std::string> aUnwritable;  ///< targets that don't save
    std::int32_t lBrokenPage = -1;      ///< this page, from 0, of any file doesn't load
    ImageInfoTexts objTexts;            ///< as last set

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
    std::int32_t GetWidth(const ImageBuffer& aImage) const override { return aImage.lWidth; }
    std::int32_t GetHeight(const ImageBuffer& aImage) const override { return aImage.lHeight; }
};
