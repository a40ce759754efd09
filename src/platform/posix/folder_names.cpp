// Reads folders, and remembers the large ones for a moment.
#include "src/platform/posix/folder_names.h"

#include <dirent.h>
#include <unistd.h>

#include <memory>

#include "src/base/text.h"

static constexpr std::size_t kLargeFolder = 1000;  // names
static constexpr std::size_t kFoldersKept = 8;
static constexpr int kTimesTheReading = 20;

static std::unordered_map<std::string, std::string> ReadNames(const std::string& sFolder)
{
    std::unordered_map<std::string, std::string> aNames;
    const std::unique_ptr<DIR, int (*)(DIR*)> pFolder(opendir(sFolder.c_str()), &closedir);
    while (const dirent* pEntry = pFolder ? readdir(pFolder.get()) : nullptr) {
        const std::string sName = pEntry->d_name;
        std::string& sKept = aNames[sLower(sName)];
        if (sKept.empty() || sName < sKept)
            sKept = sName;
    }
    return aNames;
}

static std::string sNameIn(const std::unordered_map<std::string, std::string>& aNames,
                           const std::string& sLowered)
{
    const auto itFound = aNames.find(sLowered);
    return itFound == aNames.end() ? "" : itFound->second;
}

// The first name that fits, without keeping any: most folders are small, and a look through one is cheap.
static std::string sFirstMatch(const std::string& sFolder, const std::string& sLowered, std::size_t& nNames)
{
    std::string sFound;
    nNames = 0;
    const std::unique_ptr<DIR, int (*)(DIR*)> pFolder(opendir(sFolder.c_str()), &closedir);
    while (const dirent* pEntry = pFolder ? readdir(pFolder.get()) : nullptr) {
        const std::string_view sName = pEntry->d_name;
        ++nNames;
        if (sName.size() == sLowered.size() && (sFound.empty() || sName < sFound) &&
            sLower(sName) == sLowered)
            sFound = sName;
    }
    return sFound;
}

std::string FolderNames::sFind(const std::string& sFolder, const std::string& sName)
{
    const std::string sLowered = sLower(sName);
    const auto tNow = std::chrono::steady_clock::now();
    const auto itFolder = m_aLargeFolders.find(sFolder);
    if (itFolder != m_aLargeFolders.end() && tNow < itFolder->second.tExpiry) {
        const std::string sFound = sNameIn(itFolder->second.aNames, sLowered);
        return access((sFolder + "/" + sFound).c_str(), F_OK) == 0 ? sFound : "";
    }
    std::size_t nNames = 0;
    const std::string sFound = sFirstMatch(sFolder, sLowered, nNames);
    if (nNames < kLargeFolder)
        return sFound;
    if (m_aLargeFolders.size() >= kFoldersKept)
        m_aLargeFolders.clear();
    LargeFolder& objFolder = m_aLargeFolders[sFolder];
    objFolder.aNames = ReadNames(sFolder);
    const auto tEnd = std::chrono::steady_clock::now();
    objFolder.tExpiry = tEnd + kTimesTheReading * (tEnd - tNow);
    return sFound;
}

void FolderNames::Add(const std::string& sFolder, const std::string& sName)
{
    const auto itFolder = m_aLargeFolders.find(sFolder);
    if (itFolder != m_aLargeFolders.end())
        itFolder->second.aNames.try_emplace(sLower(sName), sName);
}
