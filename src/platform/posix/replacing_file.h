// A file that is being written, and takes the place of the old one only when it is whole.
// Room: platform/posix.
#pragma once

#include <sys/types.h>

#include <string>
#include <string_view>

/// Writes to a nameless (or, where the file system has none, a temporarily named) file in the target's
/// folder. Before Commit nobody sees anything of it under the final name, and a process that dies leaves
/// nothing behind. The first failure is kept: later calls do nothing, and Error tells of it.
class ReplacingFile
{
public:
    /// Opens for host_path. A link is followed: what it points to is replaced. A folder, a device, a file
    /// that may not be written to (or that nobody may write to, even for a user who may do everything) or a
    /// folder that can't be written to is a failure. A new file gets mode less the process's mask, a
    /// replaced one keeps its mode.
    explicit ReplacingFile(const std::string& host_path, mode_t mode = 0666);
    ~ReplacingFile();
    ReplacingFile(const ReplacingFile&) = delete;
    ReplacingFile& operator=(const ReplacingFile&) = delete;

    bool Failed() const { return error_ != 0; }
    /// What the system says about the failure, as "No space left on device".
    std::string Error() const;

    /// Appends. Small writes are gathered.
    void Write(std::string_view bytes);

    /// Puts the file under its name. False after any failure; the old file is then as it was.
    bool Commit();

private:
    void Fail();  ///< keeps errno
    void Flush();
    bool Open(const std::string& folder, mode_t mode);

    std::string target_;
    std::string temporary_;  ///< "" while the file has no name
    std::string gathered_;
    int descriptor_ = -1;
    int error_ = 0;
    bool replaces_ = false;
    mode_t replaced_mode_ = 0;
};

/// The folder that a host path lies in: "." for a lone name.
std::string HostFolderOf(const std::string& host_path);

/// Writes all of it, however often the system stops short. False, with errno set, when it could not.
bool WriteAll(int descriptor, std::string_view bytes);
