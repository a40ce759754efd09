// Looks up names in a host folder, ignoring case.
// Room: platform/posix.
#pragma once

#include <chrono>
#include <map>
#include <string>
#include <unordered_map>

/// Host names are case-sensitive, job paths aren't. A lookup reads the whole folder, and a job may make
/// thousands of lookups in a folder of thousands of names. So the names of large folders are cached for
/// twenty times as long as it took to read them, which bounds the cost of lookups to a twentieth of the run
/// time. Changes by other processes may show up that much later; this process reports its own through Add.
class FolderNames
{
public:
    /// The entry of folder, a host path, that equals name ignoring case; of several, the first in byte order.
    /// "" if there is none.
    std::string Find(const std::string& folder, const std::string& name);

    /// Call this before creating a file of that name in folder.
    void Add(const std::string& folder, const std::string& name);

private:
    using Names = std::unordered_map<std::string, std::string>;  ///< case-folded name to the name
    struct LargeFolder {
        Names names;
        std::chrono::steady_clock::time_point expiry;
    };
    std::map<std::string, LargeFolder> large_folders_;
};
