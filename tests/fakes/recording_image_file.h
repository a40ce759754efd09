// An in-memory image library that records calls.
// Room: tests/fakes.
#pragma once

#include <array>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "src/platform/image_library.h"

class FakeFileSystem;

/// Each page is one number, stored as a byte of a file in the given file system, so that the logic can find,
/// copy and delete image files. All bytes of a loaded buffer, mostly one, are the page number.
class RecordingImageFile : public ImageFile
{
public:
    explicit RecordingImageFile(FakeFileSystem& files) : files_(files) {}

    /// Adds an image file with these pages to the file system.
    void AddImage(const std::string& file, const std::vector<std::uint8_t>& pages = {1});
    std::vector<std::uint8_t> PagesOf(const std::string& file) const;

    std::vector<std::string>
        calls;  ///< all calls, such as "LoadFrame /a.tif 0", "SavePNG /a.png" or "JPEGQuality 75", in order
    std::function<void()> on_call;     ///< called in each load and save: what happens while a worker does it
    std::set<std::string> broken;      ///< files that fail to load
    std::set<std::string> unwritable;  ///< targets that fail to save
    std::int32_t broken_page = -1;     ///< page, from 0, that fails to load in any file
    int unwritable_page = -1;          ///< value of a page that AppendFrame can't write
    std::map<std::string, std::array<std::int32_t, 2>> sizes;  ///< width and height of files; others 1 x 1
    ImageInfoTexts texts;                                      ///< last value passed to SetInfo
    std::vector<std::pair<std::int32_t, std::int32_t>> smallest_sizes;  ///< in force at each load

    bool LoadImage(const std::string& file, ImageBuffer& image) override;
    bool LoadFrame(const std::string& file, std::int32_t frame_index, ImageBuffer& image) override;
    void SetSmallestSize(std::int32_t width, std::int32_t height) override
    {
        smallest_size_ = {width, height};
    }
    std::int32_t GetFrameCount(const std::string& file) override;
    bool SaveBMP(const ImageBuffer& a, const std::string& s) override { return RecordSave("SaveBMP", a, s); }
    bool SaveGIF(const ImageBuffer& a, const std::string& s) override { return RecordSave("SaveGIF", a, s); }
    bool SaveJPEG(const ImageBuffer& a, const std::string& s) override
    {
        return RecordSave("SaveJPEG", a, s);
    }
    bool SavePNG(const ImageBuffer& a, const std::string& s) override { return RecordSave("SavePNG", a, s); }
    bool SaveTIFF(const ImageBuffer& a, const std::string& s) override
    {
        return RecordSave("SaveTIFF", a, s);
    }
    bool SaveWMF(const ImageBuffer& a, const std::string& s) override { return RecordSave("SaveWMF", a, s); }
    bool SaveEMF(const ImageBuffer& a, const std::string& s) override { return RecordSave("SaveEMF", a, s); }
    bool SavePCX(const ImageBuffer& a, const std::string& s) override { return RecordSave("SavePCX", a, s); }
    bool SaveTGA(const ImageBuffer& a, const std::string& s) override { return RecordSave("SaveTGA", a, s); }
    bool SaveRAS(const ImageBuffer& a, const std::string& s) override { return RecordSave("SaveRAS", a, s); }
    bool SaveJ2K(const ImageBuffer& a, const std::string& s) override { return RecordSave("SaveJ2K", a, s); }
    bool AppendFrame(const ImageBuffer& image, bool finish) override;
    void SetJPEGQuality(std::int32_t quality) override;
    void SetTIFFCompression(std::int32_t compression) override;
    void SetMultiFrameSave(bool multi_frame_save) override;
    void SetInfo(const ImageInfoTexts& info) override;

private:
    void Record(const std::string& call);
    void Fill(ImageBuffer& image, const std::string& file, std::uint8_t page) const;
    bool RecordSave(const std::string& operation, const ImageBuffer& image, const std::string& file);

    FakeFileSystem& files_;
    std::pair<std::int32_t, std::int32_t> smallest_size_;
    bool multi_frame_save_ = false;
    std::string open_file_;  ///< the multi-frame file being written; it appears when it is finished
    std::vector<std::uint8_t> open_pages_;
    bool lost_page_ = false;
};

class FakeImageUtility : public ImageUtility
{
public:
    std::int32_t GetWidth(const ImageBuffer& image) const override { return image.width; }
    std::int32_t GetHeight(const ImageBuffer& image) const override { return image.height; }
};
