// Loads and saves through the codec table.
#include "src/platform/image/codec_image_file.h"

#include <algorithm>
#include <new>
#include <utility>

#include "src/base/path_text.h"
#include "src/base/text.h"
#include "src/platform/file_system.h"
#include "src/platform/files/output_file.h"
#include "src/platform/image/base/limits.h"
#include "src/platform/image/codecs/registry.h"
#include "src/platform/image/codecs/tiff/tiff_document.h"
#include "src/platform/image/colour/colour_profile.h"
#include "src/platform/image/metadata/metadata.h"
#include "src/platform/image/pixels/alpha.h"

/// The file that was opened last, kept for its next page.
struct CodecImageFile::OpenDocument {
    std::string host_path;
    std::unique_ptr<InputFile> file;
    std::unique_ptr<ImageDecoder> decoder;
};

CodecImageFile::CodecImageFile(const FileSystem& file_system, FileSaver& saver)
    : file_system_(file_system), saver_(saver)
{
}
CodecImageFile::~CodecImageFile() = default;

CodecImageFile::OpenDocument* CodecImageFile::Open(const std::string& file)
{
    const auto host_path = file_system_.sHostPathOfExisting(file);
    if (document_ && host_path && document_->host_path == *host_path &&
        InputFile::IdentityOf(*host_path) == document_->file->Identity())
        return document_.get();
    document_.reset();
    auto document = std::make_unique<OpenDocument>();
    document->file = host_path ? InputFile::Open(*host_path) : nullptr;
    if (!document->file)
        return nullptr;
    const Codec* codec = CodecOfContent(document->file->Head(), sLower(sExtensionOfPath(file)));
    document->decoder = codec ? codec->open(*document->file) : nullptr;
    if (!document->decoder)
        return nullptr;
    document->host_path = *host_path;
    document_ = std::move(document);
    return document_.get();
}

bool CodecImageFile::LoadImage(const std::string& file, ImageBuffer& image)
{
    return Load(file, std::nullopt, image);
}

bool CodecImageFile::LoadFrame(const std::string& file, std::int32_t frame_index, ImageBuffer& image)
{
    return Load(file, frame_index, image);
}

bool CodecImageFile::Load(const std::string& file, std::optional<std::int32_t> frame_index,
                          ImageBuffer& image)
try {
    OpenDocument* document = Open(file);
    if (!document)
        return false;
    const std::int32_t frames = document->decoder->FrameCount();
    const std::int32_t frame = frame_index ? *frame_index : document->decoder->MainFrame();
    ImageBuffer page;
    document->decoder->SetSmallestSize(smallest_size_);
    const bool done = frame >= 0 && frame < frames && document->decoder->DecodeFrame(frame, page);
    const bool whole = !document->file->ReadFailed();
    if (frames == 1 || !whole)
        document_.reset();  // fully read, or not to be relied on: give its memory back
    if (!done || !whole)
        return false;
    FinishLoaded(page);
    image = std::move(page);
    return true;
} catch (const std::bad_alloc&) {
    document_.reset();
    return false;
}

void CodecImageFile::SetSmallestSize(std::int32_t width, std::int32_t height)
{
    smallest_size_ = {std::max(width, 0), std::max(height, 0)};
}

std::int32_t CodecImageFile::GetFrameCount(const std::string& file)
try {
    OpenDocument* document = Open(file);
    return document ? document->decoder->FrameCount() : 0;
} catch (const std::bad_alloc&) {
    document_.reset();
    return 0;
}

bool CodecImageFile::Save(FileType type, const ImageBuffer& image, const std::string& file)
try {
    const Codec* codec = CodecOfType(type);
    const auto host_path = file_system_.sHostPathToWrite(file);
    if (!codec || !codec->encode || !host_path || image.width < 1 || image.height < 1)
        return false;
    const bool flatten = image.channels == 4 && !codec->holds_alpha;
    const bool convert =
        !image.icc_profile.empty() && !codec->holds_profile && !IsSrgbProfile(image.icc_profile);
    ImageBuffer own;
    if (flatten)
        own = LayOnWhite(image);
    else if (convert)
        own = image;
    if (convert)
        ConvertToSrgb(own);  // an unusable profile is dropped and the pixels stay as they are
    const ImageBuffer& picture = flatten || convert ? own : image;
    SaveSettings settings = settings_;
    settings.jpeg_quality = std::clamp(settings.jpeg_quality, 1, 100);
    OutputFile out(*host_path, saver_);
    return !out.Failed() && codec->encode(picture, settings, out) && out.Commit();
} catch (const std::bad_alloc&) {
    return false;
}

bool CodecImageFile::SaveJPEG(const ImageBuffer& image, const std::string& file)
{
    return Save(FileType::kJpeg, image, file);
}
bool CodecImageFile::SaveBMP(const ImageBuffer& image, const std::string& file)
{
    return Save(FileType::kBmp, image, file);
}
bool CodecImageFile::SaveTIFF(const ImageBuffer& image, const std::string& file)
try {
    growing_.reset();
    if (!multi_frame_save_)
        return Save(FileType::kTiff, image, file);
    const auto host_path = file_system_.sHostPathToWrite(file);
    if (!host_path || image.width < 1 || image.height < 1)
        return false;
    growing_ = TiffDocument::Begin(*host_path, image, settings_, saver_);
    return growing_ != nullptr;
} catch (const std::bad_alloc&) {
    return false;
}
bool CodecImageFile::SaveGIF(const ImageBuffer& image, const std::string& file)
{
    return Save(FileType::kGif, image, file);
}
bool CodecImageFile::SaveEMF(const ImageBuffer& image, const std::string& file)
{
    return Save(FileType::kEmf, image, file);
}
bool CodecImageFile::SaveJ2K(const ImageBuffer& image, const std::string& file)
{
    return Save(FileType::kJ2k, image, file);
}
bool CodecImageFile::SavePCX(const ImageBuffer& image, const std::string& file)
{
    return Save(FileType::kPcx, image, file);
}
bool CodecImageFile::SavePNG(const ImageBuffer& image, const std::string& file)
{
    return Save(FileType::kPng, image, file);
}
bool CodecImageFile::SaveRAS(const ImageBuffer& image, const std::string& file)
{
    return Save(FileType::kRas, image, file);
}
bool CodecImageFile::SaveTGA(const ImageBuffer& image, const std::string& file)
{
    return Save(FileType::kTga, image, file);
}
bool CodecImageFile::SaveWMF(const ImageBuffer& image, const std::string& file)
{
    return Save(FileType::kWmf, image, file);
}

bool CodecImageFile::AppendFrame(const ImageBuffer& image, bool finish)
{
    bool done = false;
    try {
        const bool nothing = image.width < 1 || image.height < 1;
        done = growing_ && (nothing ? finish : growing_->Append(image, settings_));
    } catch (const std::bad_alloc&) {
    }
    if (finish) {
        done = growing_ && growing_->Finish() && done;
        growing_.reset();
    }
    return done;
}

void CodecImageFile::SetJPEGQuality(std::int32_t quality)
{
    settings_.jpeg_quality = quality;
}

void CodecImageFile::SetTIFFCompression(std::int32_t compression)
{
    settings_.tiff_compression = compression;
}

void CodecImageFile::SetMultiFrameSave(bool multi_frame_save)
{
    multi_frame_save_ = multi_frame_save;
    if (!multi_frame_save)
        growing_.reset();
}

void CodecImageFile::SetInfo(const ImageInfoTexts& texts)
{
    settings_.texts = texts;
}
