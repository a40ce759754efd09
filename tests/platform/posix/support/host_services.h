// The services that save files, each with its own saver, which doesn't sync.
#pragma once

#include <utility>

#include "src/platform/files/file_saver.h"
#include "src/platform/posix/posix_file_system.h"
#include "src/platform/posix/posix_ini_file.h"

struct OwnSaver {
    FileSaver saver{false};
};

class HostFileSystem : OwnSaver, public PosixFileSystem
{
public:
    explicit HostFileSystem(HostPaths::DriveLookup drive_folder = {})
        : PosixFileSystem(saver, std::move(drive_folder))
    {
    }
};

class HostIniFile : OwnSaver, public PosixIniFile
{
public:
    HostIniFile() : PosixIniFile(saver) {}
};
