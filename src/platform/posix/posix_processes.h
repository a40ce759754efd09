// Starts programs of the host.
// Room: platform/posix.
#pragma once

#include <string>
#include <vector>

#include "src/platform/processes.h"

class FileSystem;

/// The arguments of a text: cut at blanks; double quotes hold together what has blanks and are left out. ""
/// is an argument that is empty; a quote that isn't closed reaches to the end.
std::vector<std::string> CutArguments(const std::string& arguments);

/// The niceness for a priority: 64 is 19, 32 is 0, 128 is -5, 256 is -10; false for any other number.
bool NicenessOfPriority(std::int32_t priority, int& niceness);

/// A priority that the host refuses leaves the program at its own.
class PosixProcessLauncher : public ProcessLauncher
{
public:
    /// Borrows the file system, which knows where a path leads.
    explicit PosixProcessLauncher(const FileSystem& file_system);
    PosixProcessLauncher(const PosixProcessLauncher&) = delete;
    PosixProcessLauncher& operator=(const PosixProcessLauncher&) = delete;
    ~PosixProcessLauncher() override;

    std::unique_ptr<ChildProcess> pStart(const ProcessStart& start) override;
    void CollectEnded() override;

private:
    class Child;

    const FileSystem& file_system_;
    std::vector<int> left_running_;  ///< process numbers of programs that were let go
};
