// A file that is being written, and takes its name only when it is whole.
// Room: platform/image/base.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "src/platform/image/base/byte_reader.h"

/// Writes to a nameless (or, where the file system has none, a temporarily named) file in the target's
/// folder. Commit puts it into place; before that nobody sees a half file under the final name, and a process
/// that dies leaves nothing. The first write that fails (a full disk) sets Failed() for good.
class OutputFile
{
public:
    /// Opens for host_path. A link is followed: what it points to is replaced. A folder, a device, a
    /// read-only file or a folder that can't be written to sets Failed().
    explicit OutputFile(const std::string& host_path);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    bool Failed() const { return failed_; }

    /// Appends at the position, which moves on. Small writes are gathered.
    bool Write(Bytes bytes);
    bool WriteU8(std::uint8_t value) { return Write({&value, 1}); }
    bool WriteU16Le(std::uint16_t value);
    bool WriteU32Le(std::uint32_t value);
    bool WriteU16Be(std::uint16_t value);
    bool WriteU32Be(std::uint32_t value);

    std::uint64_t Position() const { return flushed_ + gathered_.size(); }
    /// Moves the position, also beyond the end; what is skipped reads as zeros.
    bool Seek(std::uint64_t position);
    std::uint64_t Size();
    /// Reads back what was written; the position stays. Returns how many bytes there were.
    std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> out);

    /// Puts the file under its name, with the mode of the file that it replaces. False after any failure; the
    /// old file is then as it was. Nothing more may be written afterwards.
    bool Commit();

    /// After Commit: the file's descriptor, open for reading and writing, for who goes on with the file under
    /// its name and closes it. -1 before, or when it was taken.
    int TakeDescriptor();

private:
    bool Flush();
    void Gather(Bytes& bytes, std::size_t count);
    bool WriteThrough(Bytes bytes);

    std::string target_;
    std::string temporary_;  ///< "" while the file has no name
    int descriptor_ = -1;
    bool failed_ = false;
    bool committed_ = false;
    bool replaces_ = false;
    std::uint32_t replaced_mode_ = 0;
    std::uint64_t flushed_ = 0;  ///< where the gathered bytes begin in the file
    std::vector<std::uint8_t> gathered_;
};
