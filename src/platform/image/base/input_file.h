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
    std::uint64_t nDevice = 0;
    std::uint64_t nInode = 0;
    std::uint64_t nSize = 0;
    std::int64_t nModifiedNanoseconds = 0;
    std::int64_t nChangedNanoseconds = 0;
    bool operator==(const FileIdentity&) const = default;
};

/// Reads with system calls rather than through a mapping, since a mapping of a file that another program cuts
/// short ends the process. Not copied or moved: decoders keep a reference.
class InputFile
{
public:
    /// A regular file at a host path; null for anything else.
    static std::unique_ptr<InputFile> Open(const std::string& sHostPath);
    /// Bytes in memory, lent for the life of the object.
    explicit InputFile(Bytes aMemory);
    ~InputFile();
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    std::uint64_t Size() const { return m_objIdentity.nSize; }
    const FileIdentity& Identity() const { return m_objIdentity; }
    static std::optional<FileIdentity> IdentityOf(const std::string& sHostPath);

    /// The first bytes, at most 4096: enough for every signature.
    Bytes Head();
    /// The whole file, read on the first call and kept; shorter than Size() if the file was cut meanwhile,
    /// empty if there is no memory for it or if it is larger than nLargestFile of limits.h.
    Bytes All();
    /// Fills aOut from nOffset on and returns how many bytes there were.
    std::size_t ReadAt(std::uint64_t nOffset, std::span<std::uint8_t> aOut);

private:
    InputFile() = default;

    int m_nDescriptor = -1;
    FileIdentity m_objIdentity;
    Bytes m_aMemory;     ///< set while the bytes are somebody else's, or once they have all been read
    PixelBytes m_aRead;  ///< what All() read
    std::vector<std::uint8_t> m_aHead;
};
