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
    void AddFolder(const std::string& path);
    void AddFile(const std::string& path, const std::string& content = "");
    /// Adds a link to a folder.
    void AddLink(const std::string& path, const std::string& real_folder);
    /// Makes creating, changing and deleting fail at and below this path.
    void MakeReadOnly(const std::string& path);
    bool Has(const std::string& path) const;             ///< true for a file or a folder
    std::string Content(const std::string& path) const;  ///< "" if the file doesn't exist

    std::vector<std::string> made_folders;   ///< folders created by CreateFolder, in order
    std::vector<std::string> deleted_files;  ///< files deleted by DeleteFile, in order
    std::set<std::string> undeletable;       ///< paths, as passed, that DeleteFile fails on
    mutable int refused_deletes = 0;         ///< number of DeleteFile calls that failed
    int deletes_to_refuse = 0;               ///< number of DeleteFile calls that will fail
    std::vector<std::string> trashed_files;  ///< files moved to the trash, in order
    bool has_trash = true;
    std::set<std::string>
        unlistable;  ///< folders, as passed without a trailing separator, that can't be read
    bool fail_copies = false;
    int syncs = 0;  ///< number of SyncSaves calls
    bool fail_syncs = false;

    std::optional<std::string> sHostPathOfExisting(const std::string& path) const override;
    std::optional<std::string> sHostPathToWrite(const std::string& path) const override;
    bool FolderExists(const std::string& path) const override;
    bool FileExists(const std::string& path) const override;
    bool CreateFolder(const std::string& path) override;
    bool ListFolder(const std::string& folder, FolderListing& listing) const override;
    std::string sRealPath(const std::string& path) const override;
    bool CopyFile(const std::string& source, const std::string& target) override;
    bool DeleteFile(const std::string& path) override;
    bool MoveToTrash(const std::string& path) override;
    std::optional<FileStamp> objStampOf(const std::string& path) const override;
    bool ClearReadOnly(const std::string& path) override;
    std::unique_ptr<TextReader> OpenForInput(const std::string& path) const override;
    std::unique_ptr<TextWriter> OpenForOutput(const std::string& path) override;
    void AppendLine(const std::string& path, const std::string& line) override;
    std::optional<std::string> sReadBytes(const std::string& path) const override;
    bool AppendBytes(const std::string& path, const std::string& bytes) override;
    bool SyncSaves() override;

private:
    struct Entry {
        std::string name;  ///< last component with its original spelling
        bool is_folder = false;
        std::string content;
        std::string link_to;       ///< key of the link's target
        std::uint64_t number = 0;  ///< another one each time the file is written
    };
    static std::string Key(const std::string& path);
    /// The key with all links resolved.
    std::string Resolved(const std::string& path) const;
    const Entry* Find(const std::string& path) const;
    bool IsReadOnly(const std::string& path) const;

    std::map<std::string, Entry> entries_;
    std::uint64_t last_number_ = 0;
    std::set<std::string> read_only_;
};
