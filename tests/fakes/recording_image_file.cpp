// An in-memory image library.
#include "tests/fakes/recording_image_file.h"

#include "tests/fakes/fake_file_system.h"

void RecordingImageFile::AddImage(const std::string& file, const std::vector<std::uint8_t>& pages)
{
    files_.AddFile(file, std::string(pages.begin(), pages.end()));
}

std::vector<std::uint8_t> RecordingImageFile::PagesOf(const std::string& file) const
{
    const std::string bytes = files_.Content(file);
    return {bytes.begin(), bytes.end()};
}

void RecordingImageFile::Record(const std::string& call)
{
    calls.push_back(call);
    if (on_call)
        on_call();
}

void RecordingImageFile::Fill(ImageBuffer& image, const std::string& file, std::uint8_t page) const
{
    const auto size = sizes.find(file);
    image.width = size == sizes.end() ? 1 : size->second[0];
    image.height = size == sizes.end() ? 1 : size->second[1];
    image.channels = 1;
    image.bytes.assign(static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height), page);
}

bool RecordingImageFile::LoadImage(const std::string& file, ImageBuffer& image)
{
    Record("LoadImage " + file);
    smallest_sizes.push_back(smallest_size_);
    const std::vector<std::uint8_t> pages = PagesOf(file);
    if (broken.contains(file) || !files_.FileExists(file) || pages.empty())
        return false;
    Fill(image, file, pages[0]);
    return true;
}

bool RecordingImageFile::LoadFrame(const std::string& file, std::int32_t frame_index, ImageBuffer& image)
{
    Record("LoadFrame " + file + " " + std::to_string(frame_index));
    smallest_sizes.push_back(smallest_size_);
    const std::vector<std::uint8_t> pages = PagesOf(file);
    if (broken.contains(file) || !files_.FileExists(file) || frame_index == broken_page || frame_index < 0 ||
        frame_index >= static_cast<std::int32_t>(pages.size()))
        return false;
    Fill(image, file, pages[static_cast<std::size_t>(frame_index)]);
    return true;
}

std::int32_t RecordingImageFile::GetFrameCount(const std::string& file)
{
    calls.push_back("GetFrameCount " + file);
    return broken.contains(file) ? 0 : static_cast<std::int32_t>(PagesOf(file).size());
}

bool RecordingImageFile::RecordSave(const std::string& operation, const ImageBuffer& image,
                                    const std::string& file)
{
    Record(operation + " " + file);
    if (unwritable.contains(file) || files_.FolderExists(file) || image.width < 1)
        return false;
    open_file_ = multi_frame_save_ && operation == "SaveTIFF" ? file : "";
    open_pages_ = {image.bytes[0]};
    if (open_file_.empty())
        AddImage(file, open_pages_);
    return true;
}

bool RecordingImageFile::AppendFrame(const ImageBuffer& image, bool finish)
{
    Record(std::string("AppendFrame ") + (finish ? "True" : "False"));
    const bool open = !open_file_.empty();
    if (open && image.width > 0)
        open_pages_.push_back(image.bytes[0]);
    const bool done = open && !(image.width > 0 && image.bytes[0] == unwritable_page) && !lost_page_;
    lost_page_ = open && !done;
    if (finish) {
        if (done)
            AddImage(open_file_, open_pages_);
        open_file_.clear();
        lost_page_ = false;
    }
    return done;
}

void RecordingImageFile::SetJPEGQuality(std::int32_t quality)
{
    calls.push_back("JPEGQuality " + std::to_string(quality));
}

void RecordingImageFile::SetTIFFCompression(std::int32_t compression)
{
    calls.push_back("TIFFCompression " + std::to_string(compression));
}

void RecordingImageFile::SetMultiFrameSave(bool multi_frame_save)
{
    calls.push_back(std::string("MultiFrameSave ") + (multi_frame_save ? "True" : "False"));
    multi_frame_save_ = multi_frame_save;
    if (!multi_frame_save)
        open_file_.clear();
}

void RecordingImageFile::SetInfo(const ImageInfoTexts& info)
{
    texts = info;
}
