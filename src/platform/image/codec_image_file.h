// The real ImageFile: finds the codec, keeps a file open from page to page, saves whole files.
// Room: platform/image.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/codecs/codec.h"
#include "src/platform/image_library.h"

class FileSaver;
class FileSystem;
class TiffDocument;

class CodecImageFile : public ImageFile
{
public:
    /// file_system maps the user's paths to host paths. Both must outlive this object.
    CodecImageFile(const FileSystem& file_system, FileSaver& saver);
    ~CodecImageFile() override;

    bool LoadImage(const std::string& file, ImageBuffer& image) override;
    bool LoadFrame(const std::string& file, std::int32_t frame_index, ImageBuffer& image) override;
    void SetSmallestSize(std::int32_t width, std::int32_t height) override;
    std::int32_t GetFrameCount(const std::string& file) override;

    bool SaveBMP(const ImageBuffer& image, const std::string& file) override;
    bool SaveGIF(const ImageBuffer& image, const std::string& file) override;
    bool SaveJPEG(const ImageBuffer& image, const std::string& file) override;
    bool SavePNG(const ImageBuffer& image, const std::string& file) override;
    bool SaveTIFF(const ImageBuffer& image, const std::string& file) override;
    bool SaveWMF(const ImageBuffer& image, const std::string& file) override;
    bool SaveEMF(const ImageBuffer& image, const std::string& file) override;
    bool SavePCX(const ImageBuffer& image, const std::string& file) override;
    bool SaveTGA(const ImageBuffer& image, const std::string& file) override;
    bool SaveRAS(const ImageBuffer& image, const std::string& file) override;
    bool SaveJ2K(const ImageBuffer& image, const std::string& file) override;
    bool AppendFrame(const ImageBuffer& image, bool finish) override;

    void SetJPEGQuality(std::int32_t quality) override;
    void SetTIFFCompression(std::int32_t compression) override;
    void SetMultiFrameSave(bool multi_frame_save) override;
    void SetInfo(const ImageInfoTexts& texts) override;

private:
    struct OpenDocument;

    /// Opens a file with the codec that recognises it, or reuses the file of the previous call if it is
    /// unchanged. Null if no codec accepts it.
    OpenDocument* Open(const std::string& file);
    /// Loads a page, or the main one if none is named.
    bool Load(const std::string& file, std::optional<std::int32_t> frame_index, ImageBuffer& image);
    bool Save(FileType type, const ImageBuffer& image, const std::string& file);

    const FileSystem& file_system_;
    FileSaver& saver_;
    SaveSettings settings_;
    SmallestSize smallest_size_;
    bool multi_frame_save_ = false;
    std::unique_ptr<OpenDocument> document_;
    std::unique_ptr<TiffDocument> growing_;  ///< the file that AppendFrame adds to
};

/// The real ImageUtility.
class BufferImageUtility : public ImageUtility
{
public:
    std::int32_t GetWidth(const ImageBuffer& image) const override
    {
        return image.reduction.factor > 1 ? image.reduction.full_width : image.width;
    }
    std::int32_t GetHeight(const ImageBuffer& image) const override
    {
        return image.reduction.factor > 1 ? image.reduction.full_height : image.height;
    }
};
