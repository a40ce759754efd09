// Image work away from the window's thread.
// Room: platform/qt/link.
#pragma once

#include <functional>
#include <string>
#include <type_traits>

#include "src/platform/image_library.h"
#include "src/platform/image_transform.h"

/// Runs work while a window goes on drawing.
class Background
{
public:
    virtual ~Background() = default;
    /// Returns when the work is done, having let the window handle its events meanwhile. Without a window,
    /// just does the work. What the work throws is thrown here. Works that overlap, because one begins in an
    /// event of another, are done one after the other.
    virtual void Run(const std::function<void()>& work) = 0;
};

/// An image library whose loads and saves run in the background, so that they don't stall the window. Their
/// results come in order, as without it.
class BackgroundImageFile final : public ImageFile
{
public:
    BackgroundImageFile(ImageFile& library, Background& background)
        : library_(library), background_(background)
    {
    }

    bool LoadImage(const std::string& file, ImageBuffer& image) override
    {
        return Pass([&] { return library_.LoadImage(file, image); });
    }
    bool LoadFrame(const std::string& file, std::int32_t frame, ImageBuffer& image) override
    {
        return Pass([&] { return library_.LoadFrame(file, frame, image); });
    }
    void SetSmallestSize(std::int32_t width, std::int32_t height) override
    {
        library_.SetSmallestSize(width, height);
    }
    std::int32_t GetFrameCount(const std::string& file) override
    {
        return Pass([&] { return library_.GetFrameCount(file); });
    }
    bool SaveBMP(const ImageBuffer& image, const std::string& file) override
    {
        return Save(&ImageFile::SaveBMP, image, file);
    }
    bool SaveGIF(const ImageBuffer& image, const std::string& file) override
    {
        return Save(&ImageFile::SaveGIF, image, file);
    }
    bool SaveJPEG(const ImageBuffer& image, const std::string& file) override
    {
        return Save(&ImageFile::SaveJPEG, image, file);
    }
    bool SavePNG(const ImageBuffer& image, const std::string& file) override
    {
        return Save(&ImageFile::SavePNG, image, file);
    }
    bool SaveTIFF(const ImageBuffer& image, const std::string& file) override
    {
        return Save(&ImageFile::SaveTIFF, image, file);
    }
    bool SaveWMF(const ImageBuffer& image, const std::string& file) override
    {
        return Save(&ImageFile::SaveWMF, image, file);
    }
    bool SaveEMF(const ImageBuffer& image, const std::string& file) override
    {
        return Save(&ImageFile::SaveEMF, image, file);
    }
    bool SavePCX(const ImageBuffer& image, const std::string& file) override
    {
        return Save(&ImageFile::SavePCX, image, file);
    }
    bool SaveTGA(const ImageBuffer& image, const std::string& file) override
    {
        return Save(&ImageFile::SaveTGA, image, file);
    }
    bool SaveRAS(const ImageBuffer& image, const std::string& file) override
    {
        return Save(&ImageFile::SaveRAS, image, file);
    }
    bool SaveJ2K(const ImageBuffer& image, const std::string& file) override
    {
        return Save(&ImageFile::SaveJ2K, image, file);
    }
    bool AppendFrame(const ImageBuffer& image, bool finish) override
    {
        return Pass([&] { return library_.AppendFrame(image, finish); });
    }

    void SetJPEGQuality(std::int32_t quality) override { library_.SetJPEGQuality(quality); }
    void SetTIFFCompression(std::int32_t compression) override { library_.SetTIFFCompression(compression); }
    void SetMultiFrameSave(bool multi_frame) override { library_.SetMultiFrameSave(multi_frame); }
    void SetInfo(const ImageInfoTexts& texts) override { library_.SetInfo(texts); }

private:
    template <typename Work>
    std::invoke_result_t<const Work&> Pass(const Work& work)
    {
        std::invoke_result_t<const Work&> result{};
        background_.Run([&] { result = work(); });
        return result;
    }
    bool Save(bool (ImageFile::*save)(const ImageBuffer&, const std::string&), const ImageBuffer& image,
              const std::string& file)
    {
        return Pass([&] { return (library_.*save)(image, file); });
    }

    ImageFile& library_;
    Background& background_;
};

/// The same for operations.
class BackgroundImageTransform final : public ImageTransform
{
public:
    BackgroundImageTransform(ImageTransform& operations, Background& background)
        : operations_(operations), background_(background)
    {
    }

    OperationResult Apply(const OperationCall& call, const ImageBuffer& source, ImageBuffer& result) override
    {
        OperationResult outcome = OperationResult::Failed;
        background_.Run([&] { outcome = operations_.Apply(call, source, result); });
        return outcome;
    }
    void GetMaskBytes(const ImageBuffer& image, ImageBuffer& mask) override
    {
        background_.Run([&] { operations_.GetMaskBytes(image, mask); });
    }

private:
    ImageTransform& operations_;
    Background& background_;
};
