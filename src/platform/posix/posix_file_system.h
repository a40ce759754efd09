// The host's files and folders.
// Room: platform/posix.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "src/platform/file_system.h"
#include "src/platform/posix/host_path.h"

/// Pipes and devices are not files to any of these operations, except that AppendLine writes to one that
/// exists.
class PosixFileSystem : public FileSystem
{
public:
    explicit PosixFileSystem(HostPaths::DriveLookup fnDriveFolder = {}) : m_objPaths(std::move(fnDriveFolder))
    {
    }

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
    HostPaths m_objPaths;
};
