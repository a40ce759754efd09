// Finds a name in a folder of the host without regard to case.
// Room: platform/posix.
#pragma once

#include <chrono>
#include <map>
#include <string>
#include <unordered_map>

/// A host tells the letters' cases apart, the paths of a job don't. Each search costs a look through the
/// whole folder, and a job may make thousands of searches in a folder of thousands of names. So the names of
/// large folders are kept for twenty times as long as it took to read them: searching then costs at most a
/// twentieth of the time. What other processes do to a large folder within that moment may be seen late; what
/// this process makes is told by Add.
class FolderNames
{
public:
    /// The name in folder that equals name without regard to case, the first in order of bytes if there are
    /// several;
    /// "" when there is none. folder is a host path.
    std::string Find(const std::string& folder, const std::string& name);

    /// A file of that name is about to be made in folder.
    void Add(const std::string& folder, const std::string& name);

private:
    using Names = std::unordered_map<std::string, std::string>;  ///< lower-cased name to the name
    struct LargeFolder {
        Names names;
        std::chrono::steady_clock::time_point expiry;
    };
    std::map<std::string, LargeFolder> large_folders_;
};
