// A file that is being written and takes its name only once it is whole. Every save goes through here.
// Room: platform/files.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "src/platform/files/save_target.h"

class FileSaver;

/// Writes to a nameless file in the target's folder, or to a hidden one where nameless files don't work;
/// Commit puts it under its name. Until then, and after any failure, an older file of that name is as it was,
/// and nothing else is left. A killed process leaves a hidden file at most, which the next save into the
/// folder removes.
///
/// A file that replaces another one keeps its permission bits (without the set-user, set-group and sticky
/// bits), its access control list and, where this user may do that, its owner and group. Other hard links to
/// the old file keep the old contents.
///
/// The first failure is kept: later calls do nothing.
class OutputFile
{
public:
    /// A link at `host_path` is followed if that is safe (see FindSaveTarget), also one to a file that
    /// doesn't exist yet. Fails for anything but a regular file, for a file that the user may not write to or
    /// protected from everyone (even if the user is root), and in a folder that can't be written to. A new
    /// file gets `mode` less the process's mask. `saver` outlives this object.
    OutputFile(const std::string& host_path, FileSaver& saver, mode_t mode = 0666);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    bool Failed() const { return error_ != 0; }
    /// The system's message about the failure, such as "No space left on device".
    std::string ErrorText() const;
    /// Whether there was a file to replace when this one was opened.
    bool Replaces() const { return target_.exists; }

    /// Writes at the position and advances it. Small writes are gathered.
    bool Write(std::span<const std::uint8_t> bytes);
    bool WriteText(std::string_view text);
    bool WriteU8(std::uint8_t value) { return Write({&value, 1}); }
    bool WriteU16Le(std::uint16_t value);
    bool WriteU32Le(std::uint32_t value);
    bool WriteU16Be(std::uint16_t value);
    bool WriteU32Be(std::uint32_t value);

    std::uint64_t Position() const { return flushed_ + gathered_.size(); }
    /// Moves the position, also beyond the end; a gap reads as zeros.
    bool Seek(std::uint64_t position);
    std::uint64_t Size();
    /// Reads back what was written, without moving the position. Returns the number of bytes there were.
    std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> out);

    /// Gives a new file exactly these permission bits, whatever the process's mask.
    void SetMode(mode_t mode) { new_mode_ = mode & 0777; }

    /// Puts the file under its name. A file that replaces another one is then on the disk; a new one is
    /// queued to be synced. Nothing may be written afterwards.
    [[nodiscard]] bool Commit();

private:
    int WhyNotReplaceable() const;
    void Fail();  ///< keeps errno
    bool Flush();
    void Gather(std::span<const std::uint8_t>& bytes, std::size_t count);
    bool WriteThrough(std::span<const std::uint8_t> bytes);
    bool PutIntoPlace();
    bool Replace();
    bool ReportsNoLateFailure();
    bool TakeOverAttributes();
    void QueueForSync();

    FileSaver& saver_;
    SaveTarget target_;
    std::string temporary_;  ///< the file's name while it has one that isn't the target's
    Descriptor file_;
    int error_ = 0;
    mode_t new_mode_ = 0;        ///< 0: what the system gives new files
    std::uint64_t flushed_ = 0;  ///< where the gathered bytes begin in the file
    std::vector<std::uint8_t> gathered_;
};
