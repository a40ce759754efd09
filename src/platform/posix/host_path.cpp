// Takes paths apart at both separators, maps drives, and finds names in any case.
#include "src/platform/posix/host_path.h"

#include <sys/stat.h>

#include <cstdlib>
#include <string_view>
#include <utility>
#include <vector>

#include "src/base/path_text.h"

static constexpr std::string_view kSeparators = "\\/";

static bool bHasDrive(std::string_view sPath)
{
    return sPath.size() >= 2 && sPath[1] == ':' &&
           ((sPath[0] >= 'A' && sPath[0] <= 'Z') || (sPath[0] >= 'a' && sPath[0] <= 'z'));
}

static bool bIsThere(const std::string& sHostPath)
{
    struct stat objStat {
    };
    return lstat(sHostPath.c_str(), &objStat) == 0;
}

static bool bIsFolder(const std::string& sHostPath)
{
    struct stat objStat {
    };
    return stat(sHostPath.c_str(), &objStat) == 0 && S_ISDIR(objStat.st_mode);
}

static void AppendName(std::string& sHostPath, std::string_view sName)
{
    if (!sHostPath.empty() && sHostPath.back() != '/')
        sHostPath += '/';
    sHostPath += sName;
}

static std::string sJoined(std::string sFolder, std::string_view sName)
{
    AppendName(sFolder, sName);
    return sFolder;
}

// The names between the separators, without the empty ones and ".".
static std::vector<std::string> aComponents(std::string_view sPath)
{
    std::vector<std::string> aNames;
    while (!sPath.empty()) {
        const std::size_t nEnd = sPath.find_first_of(kSeparators);
        const std::string_view sName = sPath.substr(0, nEnd);
        if (!sName.empty() && sName != ".")
            aNames.emplace_back(sName);
        sPath.remove_prefix(nEnd == std::string_view::npos ? sPath.size() : nEnd + 1);
    }
    return aNames;
}

std::string HostPaths::sDriveFolder(char cDrive) const
{
    const char cCapital = static_cast<char>(cDrive & ~0x20);
    const char* sMapped = std::getenv((std::string("VARNEL_DRIVE_") + cCapital).c_str());
    if (sMapped && *sMapped != '\0')
        return sMapped;
    return m_fnDriveFolder ? m_fnDriveFolder(cCapital) : "";
}

namespace
{
/// Where a path begins ("/", a drive's folder, or "" for the working folder), and what follows.
struct SplitPath {
    std::string sBase;
    std::vector<std::string> aNames;
};
}  // namespace

static std::string sExact(const SplitPath& objPath)
{
    std::string sHostPath = objPath.sBase;
    for (const std::string& sName : objPath.aNames)
        AppendName(sHostPath, sName);
    return sHostPath.empty() ? "." : sHostPath;
}

// One step down: the name as it stands if it is there, else one that differs in case only; "" for none.
static std::string sNameInFolder(FolderNames& objNames, const std::string& sFolder, const std::string& sName)
{
    if (bIsThere(sJoined(sFolder, sName)))
        return sName;
    return objNames.sFind(sFolder.empty() ? "." : sFolder, sName);
}

static std::optional<SplitPath> objSplit(const std::string& sPath,
                                         const std::function<std::string(char)>& fnDrive)
{
    if (sPath.empty() || sPath.find('\0') != std::string::npos)
        return std::nullopt;
    if (bHasDrive(sPath)) {
        const std::string sFolder = fnDrive(sPath[0]);
        if (sFolder.empty())
            return std::nullopt;
        return SplitPath{sFolder, aComponents(std::string_view(sPath).substr(2))};
    }
    const bool bRooted = kSeparators.find(sPath[0]) != std::string_view::npos;
    return SplitPath{bRooted ? "/" : "", aComponents(sPath)};
}

std::optional<std::string> HostPaths::sExisting(const std::string& sPath) const
{
    const auto objPath = objSplit(sPath, [this](char c) { return sDriveFolder(c); });
    if (!objPath)
        return std::nullopt;
    const bool bFolderAsked = bEndsInSeparator(sPath);
    const std::string sAsItStands = sExact(*objPath);
    if (bIsThere(sAsItStands))
        return !bFolderAsked || bIsFolder(sAsItStands) ? std::optional(sAsItStands) : std::nullopt;
    std::string sHostPath = objPath->sBase;
    for (const std::string& sName : objPath->aNames) {
        const std::string sFound = sNameInFolder(m_objNames, sHostPath, sName);
        if (sFound.empty())
            return std::nullopt;
        AppendName(sHostPath, sFound);
    }
    // All names were found on the way, and still nothing is there: the base itself is missing.
    const bool bFits = bFolderAsked ? bIsFolder(sHostPath) : bIsThere(sHostPath);
    return bFits ? std::optional(sHostPath) : std::nullopt;
}

// The folder as it stands if it is there, else its names one by one: from the first that isn't found on, they
// stay as they stand.
static std::string sFolderToWrite(FolderNames& objNames, const SplitPath& objFolder, bool& bFound)
{
    std::string sFolder = sExact(objFolder);
    bFound = objFolder.aNames.empty() || bIsThere(sFolder);
    if (bFound)
        return objFolder.aNames.empty() ? objFolder.sBase : sFolder;
    sFolder = objFolder.sBase;
    bFound = true;
    for (const std::string& sName : objFolder.aNames) {
        const std::string sNameFound = bFound ? sNameInFolder(objNames, sFolder, sName) : "";
        bFound = !sNameFound.empty();
        AppendName(sFolder, bFound ? sNameFound : sName);
    }
    return sFolder;
}

std::optional<std::string> HostPaths::sToWrite(const std::string& sPath) const
{
    auto objPath = objSplit(sPath, [this](char c) { return sDriveFolder(c); });
    if (!objPath || objPath->aNames.empty())
        return std::nullopt;
    const std::string sName = std::move(objPath->aNames.back());
    objPath->aNames.pop_back();
    if (sName == ".." || sName.find_first_of("*?") != std::string::npos)
        return std::nullopt;

    bool bFolderFound = false;
    const std::string sFolder = sFolderToWrite(m_objNames, *objPath, bFolderFound);
    if (!bFolderFound)
        return sJoined(sFolder, sName);
    const bool bAnyCase = bHasDrive(sPath) || sPath.find('\\') != std::string::npos;
    const std::string sThere = bAnyCase ? sNameInFolder(m_objNames, sFolder, sName) : "";
    if (!sThere.empty())
        return sJoined(sFolder, sThere);
    m_objNames.Add(sFolder.empty() ? "." : sFolder, sName);
    return sJoined(sFolder, sName);
}
