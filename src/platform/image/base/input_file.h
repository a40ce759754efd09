// A file being decoded; its bytes are read on demand.
// Room: platform/image/base.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "src/platform/image/base/byte_reader.h"
#include "src/platform/image_buffer.h"

/// Tells whether a path still names the file that was opened.
struct FileIdentity {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::uint64_t size = 0;
    std::int64_t modified_nanoseconds = 0;
    std::int64_t changed_nanoseconds = 0;
    bool operator==(const FileIdentity&) const = default;
};

/// Reads with system calls, not through a mapping: if another program truncated a mapped file, SIGBUS would
/// end the process. Neither copied nor moved, because decoders keep a reference.
class InputFile
{
public:
    /// Opens the regular file at a host path; null for anything else.
    static std::unique_ptr<InputFile> Open(const std::string& host_path);
    /// Reads from memory that must outlive the object.
    explicit InputFile(Bytes memory);
    ~InputFile();
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    std::uint64_t Size() const { return identity_.size; }
    const FileIdentity& Identity() const { return identity_; }
    static std::optional<FileIdentity> IdentityOf(const std::string& host_path);

    /// The first 4096 bytes, or fewer if the file is shorter: enough for every signature.
    Bytes Head();
    /// The whole file, read on the first call and kept. Shorter than Size() if the file was truncated
    /// meanwhile; empty if it exceeds LargestFile() or memory runs out.
    Bytes All();
    /// Reads up to out.size() bytes at offset and returns how many there were.
    std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> out);
    /// True once the system failed to read bytes that the file had when it was opened: what was decoded since
    /// then isn't what the file holds.
    bool ReadFailed() const { return read_failed_; }

private:
    InputFile() = default;

    int descriptor_ = -1;
    bool read_failed_ = false;
    FileIdentity identity_;
    Bytes memory_;     ///< the caller's bytes, or all of the file once it has been read
    PixelBytes read_;  ///< what All() read
    std::vector<std::uint8_t> head_;
};
