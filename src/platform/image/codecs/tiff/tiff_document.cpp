// Appends pages to a TIFF file in place.
#include "src/platform/image/codecs/tiff/tiff_document.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>
#include <vector>

#include "src/platform/files/file_saver.h"
#include "src/platform/files/output_file.h"
#include "src/platform/image/codecs/codec.h"
#include "src/platform/image/codecs/tiff/directory/tiff_directory_writer.h"

static bool WriteWhole(int descriptor, std::uint64_t offset, Bytes bytes)
{
    while (!bytes.empty()) {
        const ssize_t written = pwrite(descriptor, bytes.data(), bytes.size(), static_cast<off_t>(offset));
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        offset += static_cast<std::uint64_t>(written);
        bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
    return true;
}

static bool ReadWhole(int descriptor, std::uint64_t offset, std::vector<std::uint8_t>& bytes)
{
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t got =
            pread(descriptor, bytes.data() + done, bytes.size() - done, static_cast<off_t>(offset + done));
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            return false;
        done += static_cast<std::size_t>(got);
    }
    return true;
}

namespace
{
/// Appends to a file.
class EndOfFile : public TiffSink
{
public:
    EndOfFile(int descriptor, std::uint64_t position) : descriptor_(descriptor), position_(position) {}
    bool Write(Bytes bytes) override
    {
        if (!WriteWhole(descriptor_, position_, bytes))
            return false;
        position_ += bytes.size();
        return true;
    }
    std::uint64_t Position() const override { return position_; }

private:
    int descriptor_;
    std::uint64_t position_;
};
}  // namespace

std::unique_ptr<TiffDocument> TiffDocument::Begin(const std::string& host_path, const ImageBuffer& image,
                                                  const SaveSettings& settings, FileSaver& saver,
                                                  std::uint64_t classic_end)
{
    std::unique_ptr<TiffDocument> document(new TiffDocument(saver));
    document->classic_end_ = classic_end;
    document->big_tiff_ = MaxPageBytes(image) > classic_end;
    OutputFile out(host_path, saver);
    TiffPagePlace place;
    if (out.Failed() || !WriteTiffFile(out, image, settings, {document->big_tiff_, true, 0}, place))
        return nullptr;
    document->end_ = out.Size();
    document->next_pointer_ = place.next_pointer;
    document->pages_ = 1;
    document->file_ = out.CommitAndKeepOpen();
    if (!document->file_)
        return nullptr;
    return document;
}

TiffDocument::~TiffDocument()
{
    if (file_ && pages_ > 1)
        saver_.QueueAgain(std::move(file_));
}

bool TiffDocument::WriteAt(std::uint64_t offset, Bytes bytes) const
{
    return WriteWhole(file_.Number(), offset, bytes);
}

bool TiffDocument::Append(const ImageBuffer& image, const SaveSettings& settings)
{
    const auto forget_what_is_behind = [this] {
        // If truncating fails, the file keeps unreferenced bytes, which readers ignore.
        if (ftruncate(file_.Number(), static_cast<off_t>(end_)) != 0)
            return;
    };
    try {
        if (AppendPage(image, settings))
            return true;
    } catch (...) {
        forget_what_is_behind();
        throw;
    }
    forget_what_is_behind();
    return false;
}

bool TiffDocument::AppendPage(const ImageBuffer& image, const SaveSettings& settings)
{
    if (!big_tiff_ && end_ + MaxPageBytes(image) > classic_end_ && !MakeBig())
        return false;
    EndOfFile sink(file_.Number(), end_);
    TiffPagePlace place;
    if (!WriteTiffPage(sink, image, settings, {big_tiff_, true, pages_}, place))
        return false;
    std::vector<std::uint8_t> pointer;
    AppendNumber(pointer, place.directory, big_tiff_ ? 8 : 4);
    if (!WriteAt(next_pointer_, pointer))
        return false;
    next_pointer_ = place.next_pointer;
    end_ = sink.Position();
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

namespace
{
/// A classic directory rewritten with 64-bit offsets. The values stay where they are.
struct WidenedDirectory {
    std::uint64_t directory = 0;     ///< offset of the new directory, appended to the file
    std::uint64_t next_pointer = 0;  ///< offset of the new directory's link
    std::uint64_t old_next = 0;      ///< what the classic directory linked to
};
}  // namespace

// Appends a 64-bit version of the classic directory at old_offset, preceded by the directories it points to.
static bool Widen(int descriptor, std::uint64_t old_offset, EndOfFile& sink, WidenedDirectory& widened)
{
    std::vector<std::uint8_t> count_field(2);
    if (!ReadWhole(descriptor, old_offset, count_field))
        return false;
    const std::uint64_t count = NumberAt(count_field, 0, 2);
    std::vector<std::uint8_t> old_entries(count * 12 + 4);
    if (!ReadWhole(descriptor, old_offset + 2, old_entries))
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
            if (!Widen(descriptor, NumberAt(old_entries, entry + 8, 4), sink, inner))
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
            if (!ReadWhole(descriptor, offset, value))
                return false;
            value.resize(8);
            new_bytes.insert(new_bytes.end(), value.begin(), value.end());
        } else {
            AppendNumber(new_bytes, offset, 8);
        }
    }
    AppendNumber(new_bytes, 0, 8);
    if (sink.Position() % 2 != 0) {
        const std::uint8_t fill = 0;
        if (!sink.Write({&fill, 1}))
            return false;
    }
    widened.directory = sink.Position();
    widened.old_next = NumberAt(old_entries, count * 12, 4);
    widened.next_pointer = widened.directory + new_bytes.size() - 8;
    return sink.Write(new_bytes);
}

// Appends 64-bit versions of all directories. The header has room for either form, so a single write then
// switches from the old chain to the new one.
bool TiffDocument::MakeBig()
{
    std::vector<std::uint8_t> first(4);
    if (!ReadWhole(file_.Number(), 4, first))
        return false;
    EndOfFile sink(file_.Number(), end_);
    std::uint64_t new_first = 0;
    std::uint64_t next_pointer = 0;
    for (std::uint64_t old = NumberAt(first, 0, 4); old != 0;) {
        WidenedDirectory widened;
        if (!Widen(file_.Number(), old, sink, widened))
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
    end_ = sink.Position();
    next_pointer_ = next_pointer;
    big_tiff_ = true;
    return true;
}
