// Appends pages to a TIFF file that isn't finished yet.
#include "src/platform/image/codecs/tiff/tiff_document.h"

#include "src/platform/image/codecs/codec.h"
#include "src/platform/image/codecs/tiff/directory/tiff_directory_writer.h"

namespace
{
/// Writes at the end of a file.
class EndOfFile : public TiffSink
{
public:
    explicit EndOfFile(OutputFile& out) : out_(out) {}
    bool Write(Bytes bytes) override { return out_.Write(bytes); }
    std::uint64_t Position() const override { return out_.Position(); }

private:
    OutputFile& out_;
};
}  // namespace

std::unique_ptr<TiffDocument> TiffDocument::Begin(const std::string& host_path, const ImageBuffer& image,
                                                  const SaveSettings& settings, FileSaver& saver,
                                                  std::uint64_t classic_end)
{
    std::unique_ptr<TiffDocument> document(new TiffDocument(host_path, saver));
    document->classic_end_ = classic_end;
    document->big_tiff_ = MaxPageBytes(image) > classic_end;
    TiffPagePlace place;
    if (document->out_.Failed() ||
        !WriteTiffFile(document->out_, image, settings, {document->big_tiff_, true, 0}, place) ||
        !document->out_.Seek(document->out_.Size()))
        return nullptr;
    document->next_pointer_ = place.next_pointer;
    document->pages_ = 1;
    return document;
}

bool TiffDocument::Append(const ImageBuffer& image, const SaveSettings& settings)
{
    const bool was_whole = !lost_page_;
    lost_page_ = true;  // unless the following ends well; it may also throw
    lost_page_ = !(was_whole && AppendPage(image, settings));
    return !lost_page_;
}

bool TiffDocument::Finish()
{
    return !lost_page_ && out_.Commit();
}

// Writes in the middle of the file and returns to its end.
bool TiffDocument::WriteAt(std::uint64_t offset, Bytes bytes)
{
    const std::uint64_t end = out_.Position();
    return out_.Seek(offset) && out_.Write(bytes) && out_.Seek(end);
}

bool TiffDocument::ReadAt(std::uint64_t offset, std::vector<std::uint8_t>& bytes)
{
    return out_.ReadAt(offset, bytes) == bytes.size();
}

bool TiffDocument::AppendPage(const ImageBuffer& image, const SaveSettings& settings)
{
    if (!big_tiff_ && out_.Position() + MaxPageBytes(image) > classic_end_ && !MakeBig())
        return false;
    EndOfFile sink(out_);
    TiffPagePlace place;
    if (!WriteTiffPage(sink, image, settings, {big_tiff_, true, pages_}, place))
        return false;
    std::vector<std::uint8_t> pointer;
    AppendNumber(pointer, place.directory, big_tiff_ ? 8 : 4);
    if (!WriteAt(next_pointer_, pointer))
        return false;
    next_pointer_ = place.next_pointer;
    ++pages_;
    return true;
}

static std::uint64_t NumberAt(const std::vector<std::uint8_t>& bytes, std::size_t at, std::uint32_t size)
{
    std::uint64_t value = 0;
    for (std::uint32_t i = size; i > 0; --i)
        value = value << 8 | bytes[at + i - 1];
    return value;
}

/// A classic directory rewritten with 64-bit offsets. The values stay where they are.
struct TiffDocument::WidenedDirectory {
    std::uint64_t directory = 0;     ///< offset of the new directory, appended to the file
    std::uint64_t next_pointer = 0;  ///< offset of the new directory's link
    std::uint64_t old_next = 0;      ///< what the classic directory linked to
};

// Appends a 64-bit version of the classic directory at old_offset, preceded by the directories it points to.
bool TiffDocument::Widen(std::uint64_t old_offset, WidenedDirectory& widened)
{
    std::vector<std::uint8_t> count_field(2);
    if (!ReadAt(old_offset, count_field))
        return false;
    const std::uint64_t count = NumberAt(count_field, 0, 2);
    std::vector<std::uint8_t> old_entries(count * 12 + 4);
    if (!ReadAt(old_offset + 2, old_entries))
        return false;
    std::vector<std::uint8_t> new_bytes;
    AppendNumber(new_bytes, count, 8);
    for (std::uint64_t i = 0; i < count; ++i) {
        const std::size_t entry = i * 12;
        const auto tag = static_cast<std::uint16_t>(NumberAt(old_entries, entry, 2));
        const auto type = static_cast<std::uint16_t>(NumberAt(old_entries, entry + 2, 2));
        const std::uint64_t values = NumberAt(old_entries, entry + 4, 4);
        const std::uint64_t size = values * TiffTypeSize(type);
        AppendNumber(new_bytes, tag, 2);
        if (PointsToTiffDirectory(tag)) {
            WidenedDirectory inner;
            if (!Widen(NumberAt(old_entries, entry + 8, 4), inner))
                return false;
            AppendNumber(new_bytes, 18, 2);
            AppendNumber(new_bytes, 1, 8);
            AppendNumber(new_bytes, inner.directory, 8);
            continue;
        }
        AppendNumber(new_bytes, type, 2);
        AppendNumber(new_bytes, values, 8);
        const std::uint64_t offset = NumberAt(old_entries, entry + 8, 4);
        if (size > 4 && size <= 8) {  // values of 5 to 8 bytes move into the entry
            std::vector<std::uint8_t> value(size);
            if (!ReadAt(offset, value))
                return false;
            value.resize(8);
            new_bytes.insert(new_bytes.end(), value.begin(), value.end());
        } else {
            AppendNumber(new_bytes, offset, 8);
        }
    }
    AppendNumber(new_bytes, 0, 8);
    if (out_.Position() % 2 != 0 && !out_.WriteU8(0))
        return false;
    widened.directory = out_.Position();
    widened.old_next = NumberAt(old_entries, count * 12, 4);
    widened.next_pointer = widened.directory + new_bytes.size() - 8;
    return out_.Write(new_bytes);
}

// Appends 64-bit versions of all directories. The header has room for either form.
bool TiffDocument::MakeBig()
{
    std::vector<std::uint8_t> first(4);
    if (!ReadAt(4, first))
        return false;
    std::uint64_t new_first = 0;
    std::uint64_t next_pointer = 0;
    for (std::uint64_t old = NumberAt(first, 0, 4); old != 0;) {
        WidenedDirectory widened;
        if (!Widen(old, widened))
            return false;
        std::vector<std::uint8_t> pointer;
        AppendNumber(pointer, widened.directory, 8);
        if (new_first == 0)
            new_first = widened.directory;
        else if (!WriteAt(next_pointer, pointer))
            return false;
        next_pointer = widened.next_pointer;
        old = widened.old_next;
    }
    if (!WriteAt(0, TiffHeaderBytes(new_first, true)))
        return false;
    next_pointer_ = next_pointer;
    big_tiff_ = true;
    return true;
}
