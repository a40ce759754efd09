// Starts programs on the host.
// Room: platform/posix.
#pragma once

#include <string>
#include <vector>

#include "src/platform/processes.h"

class FileSystem;

/// Splits a command line at spaces. Double quotes group text with spaces and are removed; "" is an empty
/// argument, and an unclosed quote extends to the end.
std::vector<std::string> CutArguments(const std::string& arguments);

/// Maps a priority to a niceness: 64 to 19, 32 to 0, 128 to -5, 256 to -10. False for any other number.
bool NicenessOfPriority(std::int32_t priority, int& niceness);

/// If the host refuses a priority, the program keeps ours.
class PosixProcessLauncher : public ProcessLauncher
{
public:
    /// file_system maps paths; it must outlive this object.
    explicit PosixProcessLauncher(const FileSystem& file_system);
    PosixProcessLauncher(const PosixProcessLauncher&) = delete;
    PosixProcessLauncher& operator=(const PosixProcessLauncher&) = delete;
    ~PosixProcessLauncher() override;

    std::unique_ptr<ChildProcess> pStart(const ProcessStart& start) override;
    /// Both use xdg-open, which every desktop provides.
    std::unique_ptr<ChildProcess> pOpenPath(const std::string& path) override;
    std::unique_ptr<ChildProcess> pOpenAddress(const std::string& address) override;
    void CollectEnded() override;

private:
    class Child;

    /// Starts a program of the host; texts begins with argument 0.
    std::unique_ptr<ChildProcess> Spawn(const std::string& host_path, std::vector<std::string> texts,
                                        std::int32_t priority);

    const FileSystem& file_system_;
    std::vector<int> left_running_;  ///< process ids of programs that we stopped waiting for
};
