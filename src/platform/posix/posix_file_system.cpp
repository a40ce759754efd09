// Does with the host's files what the logic asks for.
#include "src/platform/posix/posix_file_system.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <new>
#include <system_error>

#include "src/base/path_text.h"
#include "src/base/raised_error.h"
#include "src/platform/posix/descriptor.h"
#include "src/platform/posix/replacing_file.h"
#include "src/platform/posix/text_files.h"

std::optional<std::string> PosixFileSystem::sHostPathOfExisting(const std::string& sPath) const
{
    return m_objPaths.sExisting(sPath);
}

std::optional<std::string> PosixFileSystem::sHostPathToWrite(const std::string& sPath) const
{
    return bEndsInSeparator(sPath) ? std::nullopt : m_objPaths.sToWrite(sPath);
}

// The kind of what a host path leads to, links followed; 0 when there is nothing.
static mode_t nModeOf(const std::optional<std::string>& sHostPath)
{
    struct stat objStat {
    };
    return sHostPath && stat(sHostPath->c_str(), &objStat) == 0 ? objStat.st_mode : 0;
}

bool PosixFileSystem::FolderExists(const std::string& sPath) const
{
    return S_ISDIR(nModeOf(m_objPaths.sExisting(sPath)));
}

bool PosixFileSystem::FileExists(const std::string& sPath) const
{
    return S_ISREG(nModeOf(m_objPaths.sExisting(sPath)));
}

bool PosixFileSystem::CreateFolder(const std::string& sPath)
{
    const std::optional<std::string> sHostPath = m_objPaths.sToWrite(sPath);
    return sHostPath && mkdir(sHostPath->c_str(), 0777) == 0;
}

bool PosixFileSystem::ListFolder(const std::string& sFolder, FolderListing& objListing) const
{
    const std::optional<std::string> sHostPath = m_objPaths.sExisting(sFolder);
    const std::unique_ptr<DIR, int (*)(DIR*)> pFolder(sHostPath ? opendir(sHostPath->c_str()) : nullptr,
                                                      &closedir);
    if (!pFolder)
        return false;
    objListing = {};
    while (const dirent* pEntry = readdir(pFolder.get())) {
        std::string sName = pEntry->d_name;
        if (sName == "." || sName == ".." || sName.find('\\') != std::string::npos)
            continue;
        mode_t nMode = pEntry->d_type == DT_REG ? S_IFREG : pEntry->d_type == DT_DIR ? S_IFDIR : 0;
        struct stat objStat {
        };
        if (nMode == 0 && fstatat(dirfd(pFolder.get()), pEntry->d_name, &objStat, 0) == 0)
            nMode = objStat.st_mode;
        if (S_ISREG(nMode)) {
            objListing.aFiles.push_back(std::move(sName));
        } else if (S_ISDIR(nMode)) {
            // Where the file system tells no types, any folder may be a link.
            if (pEntry->d_type != DT_DIR)
                objListing.aLinks.insert(sName);
            objListing.aSubfolders.push_back(std::move(sName));
        }
    }
    std::sort(objListing.aFiles.begin(), objListing.aFiles.end());
    std::sort(objListing.aSubfolders.begin(), objListing.aSubfolders.end());
    return true;
}

std::string PosixFileSystem::sRealPath(const std::string& sPath) const
{
    const std::optional<std::string> sHostPath = m_objPaths.sExisting(sPath);
    const std::unique_ptr<char, void (*)(void*)> sReal(
        sHostPath ? realpath(sHostPath->c_str(), nullptr) : nullptr, &std::free);
    return sReal ? sReal.get() : "";
}

// Reads on to the end, handing every block to fnTake. False, with errno set, when a read fails.
template <typename Take>
static bool bReadAll(int nDescriptor, Take fnTake)
{
    std::string sBlock(256 * 1024, '\0');
    while (true) {
        const ssize_t nRead = read(nDescriptor, sBlock.data(), sBlock.size());
        if (nRead == 0)
            return true;
        if (nRead > 0)
            fnTake(std::string_view(sBlock).substr(0, static_cast<std::size_t>(nRead)));
        else if (errno != EINTR)
            return false;
    }
}

bool PosixFileSystem::CopyFile(const std::string& sSource, const std::string& sTarget)
{
    const std::optional<std::string> sFrom = m_objPaths.sExisting(sSource);
    const std::optional<std::string> sTo = sHostPathToWrite(sTarget);
    if (!sFrom || !sTo)
        return false;
    const Descriptor objSource = OpenRegularFile(*sFrom, O_RDONLY);
    struct stat objStat {
    };
    if (!objSource || fstat(objSource.nNumber(), &objStat) != 0)
        return false;
    ReplacingFile objTarget(*sTo, objStat.st_mode & 0777);
    return !objTarget.bFailed() &&
           bReadAll(objSource.nNumber(), [&](std::string_view sBytes) { objTarget.Write(sBytes); }) &&
           objTarget.Commit();
}

bool PosixFileSystem::DeleteFile(const std::string& sPath)
{
    const std::optional<std::string> sHostPath = m_objPaths.sExisting(sPath);
    return S_ISREG(nModeOf(sHostPath)) && unlink(sHostPath->c_str()) == 0;
}

bool PosixFileSystem::ClearReadOnly(const std::string& sPath)
{
    const std::optional<std::string> sHostPath = m_objPaths.sExisting(sPath);
    const mode_t nMode = nModeOf(sHostPath);
    if (!S_ISREG(nMode))
        return false;
    // Somebody else's file may be writable to us all the same.
    return (nMode & S_IWUSR) != 0 || chmod(sHostPath->c_str(), (nMode & 07777) | S_IWUSR) == 0 ||
           access(sHostPath->c_str(), W_OK) == 0;
}

std::unique_ptr<TextReader> PosixFileSystem::OpenForInput(const std::string& sPath) const
{
    const std::optional<std::string> sHostPath = m_objPaths.sExisting(sPath);
    if (!sHostPath)
        throw clsRaisedError(kErrFileNotFound, "File not found: " + sPath);
    Descriptor objFile = OpenRegularFile(*sHostPath, O_RDONLY);
    if (!objFile)
        RaisePathFileAccess(sPath, std::generic_category().message(errno));
    return std::make_unique<PosixTextReader>(objFile.nRelease(), sPath);
}

std::unique_ptr<TextWriter> PosixFileSystem::OpenForOutput(const std::string& sPath)
{
    const std::optional<std::string> sHostPath = sHostPathToWrite(sPath);
    if (!sHostPath)
        RaisePathFileAccess(sPath, "not a name for a file");
    return std::make_unique<PosixTextWriter>(*sHostPath, sPath);
}

// Appends all of it in one write, so that what several processes append stays whole. False, with errno set,
// on failure; what was written of it is then taken back, unless somebody has appended behind it.
static bool bAppend(int nDescriptor, std::string_view sBytes)
{
    ssize_t nWritten = 0;
    do
        nWritten = write(nDescriptor, sBytes.data(), sBytes.size());
    while (nWritten < 0 && errno == EINTR);
    if (nWritten == static_cast<ssize_t>(sBytes.size()))
        return true;
    if (nWritten >= 0) {
        const off_t nEnd = lseek(nDescriptor, 0, SEEK_CUR);
        struct stat objStat {
        };
        if (nWritten > 0 && fstat(nDescriptor, &objStat) == 0 && S_ISREG(objStat.st_mode) &&
            objStat.st_size == nEnd)
            (void)!ftruncate(nDescriptor, nEnd - nWritten);
        errno = ENOSPC;
    }
    return false;
}

void PosixFileSystem::AppendLine(const std::string& sPath, const std::string& sLine)
{
    const std::optional<std::string> sHostPath = sHostPathToWrite(sPath);
    if (!sHostPath)
        RaisePathFileAccess(sPath, "not a name for a file");
    // A pipe that nobody reads must not make the program wait.
    const Descriptor objFile(
        open(sHostPath->c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NOCTTY | O_NONBLOCK, 0666));
    if (!objFile || !bAppend(objFile.nNumber(), sLine + "\n"))
        RaisePathFileAccess(sPath, std::generic_category().message(errno));
}

std::optional<std::string> PosixFileSystem::sReadBytes(const std::string& sPath) const
{
    const std::optional<std::string> sHostPath = m_objPaths.sExisting(sPath);
    const Descriptor objFile = sHostPath ? OpenRegularFile(*sHostPath, O_RDONLY) : Descriptor();
    if (!objFile)
        return std::nullopt;
    try {
        std::string sBytes;
        if (!bReadAll(objFile.nNumber(), [&](std::string_view sBlock) { sBytes += sBlock; }))
            return std::nullopt;
        return sBytes;
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    }
}

bool PosixFileSystem::AppendBytes(const std::string& sPath, const std::string& sBytes)
{
    const std::optional<std::string> sHostPath = m_objPaths.sExisting(sPath);
    const Descriptor objFile = sHostPath ? OpenRegularFile(*sHostPath, O_WRONLY | O_APPEND) : Descriptor();
    return objFile && bAppend(objFile.nNumber(), sBytes);
}
