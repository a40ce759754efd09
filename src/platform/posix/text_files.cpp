// Splits blocks into lines, and writes lines to a file that atomically replaces the old one.
#include "src/platform/posix/text_files.h"

#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "src/base/raised_error.h"
#include "src/base/text_encoding.h"

static constexpr std::size_t kBlockSize = 256 * 1024;
// A longer line isn't text and would fill the memory.
static constexpr std::size_t kLongestLine = 256 * 1024 * 1024;
static constexpr std::string_view kMarkUtf8 = "\xEF\xBB\xBF";

void RaisePathFileAccess(const std::string& path, const std::string& reason)
{
    throw clsRaisedError(kErrPathFileAccess, "Path/File access error: " + path + " (" + reason + ")");
}

PosixTextReader::PosixTextReader(int descriptor, std::string name)
    : descriptor_(descriptor), name_(std::move(name))
{
    try {
        utf8_ = IsWholeFileUtf8();
        buffer_.clear();
        position_ = 0;
        if (Fill() && buffer_.starts_with(kMarkUtf8))
            begin_ = kMarkUtf8.size();
    } catch (...) {
        close(descriptor_);
        throw;
    }
}

PosixTextReader::~PosixTextReader()
{
    close(descriptor_);
}

bool PosixTextReader::Fill()
{
    const std::size_t old = buffer_.size();
    buffer_.resize(old + kBlockSize);
    ssize_t got = 0;
    do
        got = pread(descriptor_, buffer_.data() + old, kBlockSize, position_);
    while (got < 0 && errno == EINTR);
    const int error = errno;
    buffer_.resize(old + static_cast<std::size_t>(got > 0 ? got : 0));
    if (got < 0)
        RaisePathFileAccess(name_, std::generic_category().message(error));
    position_ += got;
    return got > 0;
}

// The length of the bytes without an incomplete UTF-8 character at the end.
static std::size_t WithoutCutCharacter(std::string_view bytes)
{
    for (std::size_t back = 1; back <= 3 && back <= bytes.size(); ++back) {
        const auto byte = static_cast<unsigned char>(bytes[bytes.size() - back]);
        if ((byte & 0xC0) == 0x80)
            continue;
        const std::size_t length = byte >= 0xF0 ? 4 : byte >= 0xE0 ? 3 : byte >= 0xC0 ? 2 : 1;
        return length > back ? bytes.size() - back : bytes.size();
    }
    return bytes.size();
}

bool PosixTextReader::IsWholeFileUtf8()
{
    while (Fill()) {
        const std::size_t whole = WithoutCutCharacter(buffer_);
        if (!bIsUtf8(std::string_view(buffer_).substr(0, whole)))
            return false;
        buffer_.erase(0, whole);
    }
    return buffer_.empty();
}

bool PosixTextReader::ReadLine(std::string& line)
{
    std::size_t end = buffer_.find('\n', begin_);
    while (end == std::string::npos) {
        buffer_.erase(0, begin_);
        begin_ = 0;
        const std::size_t searched = buffer_.size();
        if (searched > kLongestLine)
            RaisePathFileAccess(name_, "line too long");
        if (!Fill())
            break;
        end = buffer_.find('\n', searched);
    }
    if (end == std::string::npos && begin_ == buffer_.size())
        return false;

    std::string_view found = std::string_view(buffer_).substr(begin_, end - begin_);
    begin_ = end == std::string::npos ? buffer_.size() : end + 1;
    if (found.ends_with('\r'))
        found.remove_suffix(1);
    if (utf8_)
        line.assign(found);
    else
        line = sUtf8FromWindows1252(found);
    return true;
}

PosixTextWriter::PosixTextWriter(const std::string& host_path, std::string name, FileSaver& saver)
    : file_(host_path, saver), name_(std::move(name))
{
    if (file_.Failed())
        RaisePathFileAccess(name_, file_.ErrorText());
}

void PosixTextWriter::WriteLine(const std::string& line)
{
    file_.WriteText(line);
    file_.WriteText("\r\n");
}

void PosixTextWriter::Commit()
{
    if (!file_.Commit())
        RaisePathFileAccess(name_, file_.ErrorText());
}
