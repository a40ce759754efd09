// The host's files and folders.
// Room: platform/posix.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "src/platform/file_system.h"
#include "src/platform/posix/host_path.h"

class FileSaver;

/// Pipes and devices don't count as files; only AppendLine writes to an existing one.
class PosixFileSystem : public FileSystem
{
public:
    /// `saver` outlives this object.
    explicit PosixFileSystem(FileSaver& saver, HostPaths::DriveLookup drive_folder = {})
        : paths_(std::move(drive_folder)), saver_(saver)
    {
    }

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
    HostPaths paths_;
    FileSaver& saver_;
};
