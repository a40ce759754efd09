// A file system on host paths, for tests that load and save real files.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "src/platform/files/file_saver.h"
#include "tests/fakes/fake_file_system.h"

class HostFiles : public FakeFileSystem
{
public:
    FileSaver saver{false};

    std::optional<std::string> sHostPathOfExisting(const std::string& path) const override
    {
        return std::filesystem::exists(path) ? std::optional(path) : std::nullopt;
    }
    std::optional<std::string> sHostPathToWrite(const std::string& path) const override { return path; }
};
