// Files and folders as the logic sees them.
// Room: platform. Real one: platform/posix. In-memory one: tests/fakes.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

/// The names (not paths) in a folder, each list in ascending order of bytes.
struct FolderListing {
    std::vector<std::string> aFiles;       ///< regular files and links to them, dot files included
    std::vector<std::string> aSubfolders;  ///< folders and links to them, without "." and ".."
    std::set<std::string> aLinks;          ///< which of the subfolders are links
};

/// Which file a path names, and in which state. Two stamps are equal if it is the same file and it wasn't
/// changed in between.
struct FileStamp {
    std::uint64_t nDevice = 0;
    std::uint64_t nFile = 0;  ///< within the device
    std::uint64_t nSize = 0;
    std::int64_t nModified = 0;
    bool operator==(const FileStamp&) const = default;
    bool bSameFile(const FileStamp& objOther) const
    {
        return nDevice == objOther.nDevice && nFile == objOther.nFile;
    }
};

/// Lines of a text file, read on demand so that a file of any length costs little memory.
class TextReader
{
public:
    virtual ~TextReader() = default;
    /// The next line as UTF-8 without its end (CR LF or LF); nothing at the end of the file. Raises
    /// clsRaisedError when the file can't be read on.
    virtual bool ReadLine(std::string& sLine) = 0;
};

/// Lines for a text file that takes the place of the old one only when it is whole.
class TextWriter
{
public:
    virtual ~TextWriter() = default;
    /// Adds sLine and CR LF.
    virtual void WriteLine(const std::string& sLine) = 0;
    /// Puts the file into place. Raises clsRaisedError when anything could not be written; the old file is
    /// then as it was. A writer that is let go without Commit leaves nothing behind.
    virtual void Commit() = 0;
};

/// Paths are UTF-8 in the style in which the user gave them. Components are looked up exactly first and then
/// without regard to case. A name may hold any byte but "/" and "\". Nothing throws unless it says so.
class FileSystem
{
public:
    virtual ~FileSystem() = default;

    /// The host's path of an existing file or folder; nothing when there is none.
    [[nodiscard]] virtual std::optional<std::string> sHostPathOfExisting(const std::string& sPath) const = 0;

    /// The host's path at which a file of that name is to be written, whether or not it exists; nothing when
    /// the path can't name one (a drive that isn't mapped, an empty name, "*" or "?" in the last component).
    [[nodiscard]] virtual std::optional<std::string> sHostPathToWrite(const std::string& sPath) const = 0;

    [[nodiscard]] virtual bool FolderExists(const std::string& sPath) const = 0;
    [[nodiscard]] virtual bool FileExists(
        const std::string& sPath) const = 0;  ///< a regular file or a link to one

    /// Makes one folder, whose parent must exist; False when it could not.
    virtual bool CreateFolder(const std::string& sPath) = 0;

    /// False when sFolder can't be listed. Names that hold a separator ("\") are left out.
    [[nodiscard]] virtual bool ListFolder(const std::string& sFolder, FolderListing& objListing) const = 0;

    /// The path with every link resolved: one text for one folder, however it is reached. "" when there is
    /// none.
    [[nodiscard]] virtual std::string sRealPath(const std::string& sPath) const = 0;

    /// Copies a regular file over sTarget, whole or not at all.
    virtual bool CopyFile(const std::string& sSource, const std::string& sTarget) = 0;
    virtual bool DeleteFile(const std::string& sPath) = 0;
    /// Moves a file out of its folder and into the user's trash, from where it can be restored. False, with
    /// the file still in its place, if there is no trash that can take it.
    virtual bool MoveToTrash(const std::string& sPath) = 0;
    /// The stamp of a regular file or of what a link to one leads to; nothing if there is none.
    [[nodiscard]] virtual std::optional<FileStamp> objStampOf(const std::string& sPath) const = 0;
    virtual bool ClearReadOnly(const std::string& sPath) = 0;  ///< False when there is no such file

    /// Opens a text file; one that is not UTF-8 as a whole is read as Windows-1252. Raises kErrFileNotFound
    /// or kErrPathFileAccess with a description when it can't be opened.
    [[nodiscard]] virtual std::unique_ptr<TextReader> OpenForInput(const std::string& sPath) const = 0;

    /// Raises kErrPathFileAccess when no file can be made there.
    [[nodiscard]] virtual std::unique_ptr<TextWriter> OpenForOutput(const std::string& sPath) = 0;

    /// Appends sLine and LF in one write, making the file if there is none. Raises kErrPathFileAccess on
    /// failure.
    virtual void AppendLine(const std::string& sPath, const std::string& sLine) = 0;

    /// All bytes of a file as they are, and bytes added to the end of one that exists. Nothing, or False, on
    /// failure.
    [[nodiscard]] virtual std::optional<std::string> sReadBytes(const std::string& sPath) const = 0;
    [[nodiscard]] virtual bool AppendBytes(const std::string& sPath, const std::string& sBytes) = 0;

    /// Waits until every file that was saved, pictures included, is on the disk with its name. False if the
    /// system reported since the last call that one of them isn't.
    [[nodiscard]] virtual bool SyncSaves() = 0;
};
