// An in-memory file system that records calls.
// Room: tests/fakes.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "src/platform/file_system.h"

/// Paths compare equal ignoring case, the kind of separator and a trailing separator: "C:\Pics" and
/// "c:/pics/" are the same folder. Names keep the spelling they were created with.
class FakeFileSystem : public FileSystem
{
public:
    /// Sets up folders (with all parents) and files (with their folders).
    void AddFolder(const std::string& sPath);
    void AddFile(const std::string& sPath, const std::string& sContent = "");
    /// Adds a link to a folder.
    void AddLink(const std::string& sPath, const std::string& sRealFolder);
    /// Makes creating, changing and deleting fail at and below this path.
    void MakeReadOnly(const std::string& sPath);
    bool bHas(const std::string& sPath) const;             ///< true for a file or a folder
    std::string sContent(const std::string& sPath) const;  ///< "" if the file doesn't exist

    std::vector<std::string> aMadeFolders;   ///< folders created by CreateFolder, in order
    std::vector<std::string> aDeletedFiles;  ///< files deleted by DeleteFile, in order
    std::set<std::string> aUndeletable;      ///< paths, as passed, that DeleteFile fails on
    mutable int lRefusedDeletes = 0;         ///< number of DeleteFile calls that failed
    int lDeletesToRefuse = 0;                ///< number of DeleteFile calls that will fail
    bool bFailCopies = false;

    std::optional<std::string> sHostPathOfExisting(const std::string& sPath) const override;
    std::optional<std::string> sHostPathToWrite(const std::string& sPath) const override;
    bool FolderExists(const std::string& sPath) const override;
    bool FileExists(const std::string& sPath) const override;
    bool CreateFolder(const std::string& sPath) override;
    bool ListFolder(const std::string& sFolder, FolderListing& objListing) const override;
    std::string sRealPath(const std::string& sPath) const override;
    bool CopyFile(const std::string& sSource, const std::string& sTarget) override;
    bool DeleteFile(const std::string& sPath) override;
    bool ClearReadOnly(const std::string& sPath) override;
    std::unique_ptr<TextReader> OpenForInput(const std::string& sPath) const override;
    std::unique_ptr<TextWriter> OpenForOutput(const std::string& sPath) override;
    void AppendLine(const std::string& sPath, const std::string& sLine) override;
    std::optional<std::string> sReadBytes(const std::string& sPath) const override;
    bool AppendBytes(const std::string& sPath, const std::string& sBytes) override;

private:
    struct Entry {
        std::string sName;  ///< last component with its original spelling
        bool bFolder = false;
        std::string sContent;
        std::string sLinkTo;  ///< key of the link's target
    };
    static std::string sKey(const std::string& sPath);
    /// The key with all links resolved.
    std::string sResolved(const std::string& sPath) const;
    const Entry* pFind(const std::string& sPath) const;
    bool bReadOnly(const std::string& sPath) const;

    std::map<std::string, Entry> m_aEntries;
    std::set<std::string> m_aReadOnly;
};
