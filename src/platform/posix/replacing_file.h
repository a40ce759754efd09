// A file that is being written, and takes the place of the old one only when it is whole.
// Room: platform/posix.
#pragma once

#include <sys/types.h>

#include <string>
#include <string_view>

/// Writes to a nameless (or, where the file system has none, a temporarily named) file in the target's
/// folder. Before Commit nobody sees anything of it under the final name, and a process that dies leaves
/// nothing behind. The first failure is kept: later calls do nothing, and sError tells of it.
class ReplacingFile
{
public:
    /// Opens for sHostPath. A link is followed: what it points to is replaced. A folder, a device, a file
    /// that may not be written to (or that nobody may write to, even for a user who may do everything) or a
    /// folder that can't be written to is a failure. A new file gets nMode less the process's mask, a
    /// replaced one keeps its mode.
    explicit ReplacingFile(const std::string& sHostPath, mode_t nMode = 0666);
    ~ReplacingFile();
    ReplacingFile(const ReplacingFile&) = delete;
    ReplacingFile& operator=(const ReplacingFile&) = delete;

    bool bFailed() const { return m_nError != 0; }
    /// What the system says about the failure, as "No space left on device".
    std::string sError() const;

    /// Appends. Small writes are gathered.
    void Write(std::string_view sBytes);

    /// Puts the file under its name. False after any failure; the old file is then as it was.
    bool Commit();

private:
    void Fail();  ///< keeps errno
    void Flush();
    bool bOpen(const std::string& sFolder, mode_t nMode);

    std::string m_sTarget;
    std::string m_sTemporary;  ///< "" while the file has no name
    std::string m_sGathered;
    int m_nDescriptor = -1;
    int m_nError = 0;
    bool m_bReplaces = false;
    mode_t m_nReplacedMode = 0;
};

/// The folder that a host path lies in: "." for a lone name.
std::string sHostFolderOf(const std::string& sHostPath);

/// Writes all of it, however often the system stops short. False, with errno set, when it could not.
bool bWriteAll(int nDescriptor, std::string_view sBytes);
