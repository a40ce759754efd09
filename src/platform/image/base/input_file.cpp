// Reads a file while it is decoded.
#include "src/platform/image/base/input_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <new>

#include "src/platform/image/base/limits.h"
#include "src/platform/image/base/picture_memory.h"

static constexpr std::uint64_t kHeadSize = 4096;

static FileIdentity IdentityFromStat(const struct stat& stat)
{
    const auto nanoseconds = [](const timespec& time) {
        return static_cast<std::int64_t>(time.tv_sec) * 1'000'000'000 + time.tv_nsec;
    };
    return {stat.st_dev, stat.st_ino, static_cast<std::uint64_t>(stat.st_size), nanoseconds(stat.st_mtim),
            nanoseconds(stat.st_ctim)};
}

std::unique_ptr<InputFile> InputFile::Open(const std::string& host_path)
{
    // O_NONBLOCK: opening a FIFO would wait for a writer. It is refused below.
    const int descriptor = open(host_path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0)
        return nullptr;
    std::unique_ptr<InputFile> file(new InputFile);
    file->descriptor_ = descriptor;
    struct stat status {
    };
    if (fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode))
        return nullptr;
    file->identity_ = IdentityFromStat(status);
    return file;
}

InputFile::InputFile(Bytes memory) : memory_(memory)
{
    identity_.size = memory.size();
}

InputFile::~InputFile()
{
    if (descriptor_ >= 0)
        close(descriptor_);
}

std::optional<FileIdentity> InputFile::IdentityOf(const std::string& host_path)
{
    struct stat status {
    };
    if (stat(host_path.c_str(), &status) != 0)
        return std::nullopt;
    return IdentityFromStat(status);
}

Bytes InputFile::Head()
{
    if (memory_.data())
        return memory_.first(std::min<std::size_t>(memory_.size(), kHeadSize));
    if (head_.empty()) {
        head_.resize(std::min(Size(), kHeadSize));
        head_.resize(ReadAt(0, head_));
    }
    return head_;
}

Bytes InputFile::All()
{
    if (!memory_.data() && descriptor_ >= 0) {
        if (Size() > LargestFile())
            return {};
        try {
            ResizeFresh(read_, Size());
        } catch (const std::bad_alloc&) {
            return {};
        }
        read_.resize(ReadAt(0, read_));
        memory_ = read_;
    }
    return memory_;
}

std::size_t InputFile::ReadAt(std::uint64_t offset, std::span<std::uint8_t> out)
{
    if (memory_.data()) {
        if (offset >= memory_.size())
            return 0;
        const Bytes found = memory_.subspan(offset, std::min(out.size(), memory_.size() - offset));
        std::copy(found.begin(), found.end(), out.begin());
        return found.size();
    }
    std::size_t done = 0;
    while (done < out.size()) {
        const ssize_t got =
            pread(descriptor_, out.data() + done, out.size() - done, static_cast<off_t>(offset + done));
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0) {
            read_failed_ = read_failed_ || offset + done < Size();
            break;
        }
        done += static_cast<std::size_t>(got);
    }
    return done;
}
