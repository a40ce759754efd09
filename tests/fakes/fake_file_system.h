// A file system in memory, which records what was done to it.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "src/platform/file_system.h"

/// Paths are compared as texts in which "\" is "/", lower-cased, without a separator at the end: "C:\Pics"
/// and "c:/pics/" are one folder. Names come back as they were given.
class FakeFileSystem : public FileSystem
{
public:
    /// The scene: folders (with all their parents) and files (with their folders).
    void AddFolder(const std::string& sPath);
    void AddFile(const std::string& sPath, const std::string& sContent = "");
    /// A folder that is a link to another one.
    void AddLink(const std::string& sPath, const std::string& sRealFolder);
    /// Nothing can be made, changed or deleted at or below this path.
    void MakeReadOnly(const std::string& sPath);
    bool bHas(const std::string& sPath) const;             ///< a file or a folder
    std::string sContent(const std::string& sPath) const;  ///< "" for no such file

    std::vector<std::string> aMadeFolders;   ///< CreateFolder calls that made one, in order
    std::vector<std::string> aDeletedFiles;  ///< DeleteFile calls that deleted, in order
    std::set<std::string> aUndeletable;      ///< paths as given, on which DeleteFile fails
    mutable int lRefusedDeletes = 0;         ///< DeleteFile calls that failed
    int lDeletesToRefuse = 0;                ///< so many DeleteFile calls fail from now on
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
        std::string sName;  ///< last component as given
        bool bFolder = false;
        std::string sContent;
        std::string sLinkTo;  ///< key of the real folder
    };
    static std::string sKey(const std::string& sPath);
    /// The key with every link on the way resolved.
    std::string sResolved(const std::string& sPath) const;
    const Entry* pFind(const std::string& sPath) const;
    bool bReadOnly(const std::string& sPath) const;

    std::map<std::string, Entry> m_aEntries;
    std::set<std::string> m_aReadOnly;
};
