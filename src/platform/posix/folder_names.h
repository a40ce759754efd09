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
    /// The name in sFolder that equals sName without regard to case, the first in order of bytes if there are
    /// several;
    /// "" when there is none. sFolder is a host path.
    std::string sFind(const std::string& sFolder, const std::string& sName);

    /// A file of that name is about to be made in sFolder.
    void Add(const std::string& sFolder, const std::string& sName);

private:
    using Names = std::unordered_map<std::string, std::string>;  ///< lower-cased name to the name
    struct LargeFolder {
        Names aNames;
        std::chrono::steady_clock::time_point tExpiry;
    };
    std::map<std::string, LargeFolder> m_aLargeFolders;
};
