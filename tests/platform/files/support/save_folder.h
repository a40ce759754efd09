// A folder on the disk for one test, and what tests of saves need beside it.
#pragma once

#include <sys/types.h>

#include <csignal>
#include <functional>
#include <string>
#include <vector>

#include <sys/resource.h>

/// Created empty and writable for everyone; removed with everything in it.
class SaveFolder
{
public:
    SaveFolder();
    ~SaveFolder();
    SaveFolder(const SaveFolder&) = delete;
    SaveFolder& operator=(const SaveFolder&) = delete;

    std::string Path(const std::string& name = "") const;
    /// The names in the folder, in order.
    std::vector<std::string> Names() const;

private:
    std::string path_;
};

void WriteContent(const std::string& path, const std::string& content);
/// All bytes of a file; "(none)" if there is no such file.
std::string ContentOf(const std::string& path);
mode_t ModeOf(const std::string& path);

/// Runs `work` in a separate process and returns its answer.
bool InChild(const std::function<bool()>& work);
/// The same, as a user without privileges if the tests run as root.
bool AsOrdinaryUser(const std::function<bool()>& work);

/// Within the scope no file grows beyond so many bytes: as on a full disk, writing stops short.
class FullDisk
{
public:
    explicit FullDisk(rlim_t size);
    ~FullDisk();
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit old_{};
    void (*old_handler_)(int) = nullptr;
};
