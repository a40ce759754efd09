// A file that is being decoded: its bytes, read when they are asked for.
// Room: platform/image/base.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "src/platform/image/base/byte_reader.h"
#include "src/platform/image_buffer.h"

/// What tells that a file is still the one that was opened.
struct FileIdentity {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::uint64_t size = 0;
    std::int64_t modified_nanoseconds = 0;
    std::int64_t changed_nanoseconds = 0;
    bool operator==(const FileIdentity&) const = default;
};

/// Reads with system calls rather than through a mapping, since a mapping of a file that another program cuts
/// short ends the process. Not copied or moved: decoders keep a reference.
class InputFile
{
public:
    /// A regular file at a host path; null for anything else.
    static std::unique_ptr<InputFile> Open(const std::string& host_path);
    /// Bytes in memory, lent for the life of the object.
    explicit InputFile(Bytes memory);
    ~InputFile();
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    std::uint64_t Size() const { return identity_.size; }
    const FileIdentity& Identity() const { return identity_; }
    static std::optional<FileIdentity> IdentityOf(const std::string& host_path);

    /// The first bytes, at most 4096: enough for every signature.
    Bytes Head();
    /// The whole file, read on the first call and kept; shorter than Size() if the file was cut meanwhile,
    /// empty if there is no memory for it or if it is larger than LargestFile of limits.h.
    Bytes All();
    /// Fills out from offset on and returns how many bytes there were.
    std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> out);

private:
    InputFile() = default;

    int descriptor_ = -1;
    FileIdentity identity_;
    Bytes memory_;     ///< set while the bytes are somebody else's, or once they have all been read
    PixelBytes read_;  ///< what All() read
    std::vector<std::uint8_t> head_;
};
