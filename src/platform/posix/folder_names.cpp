// Reads folders and caches large ones briefly.
#include "src/platform/posix/folder_names.h"

#include <dirent.h>
#include <unistd.h>

#include <memory>

#include "src/base/case_folding.h"

static constexpr std::size_t kLargeFolder = 1000;  // names
static constexpr std::size_t kFoldersKept = 8;
static constexpr int kTimesTheReading = 20;

static std::unordered_map<std::string, std::string> ReadNames(const std::string& folder)
{
    std::unordered_map<std::string, std::string> names;
    const std::unique_ptr<DIR, int (*)(DIR*)> directory(opendir(folder.c_str()), &closedir);
    while (const dirent* entry = directory ? readdir(directory.get()) : nullptr) {
        const std::string name = entry->d_name;
        std::string& kept = names[sFoldCase(name)];
        if (kept.empty() || name < kept)
            kept = name;
    }
    return names;
}

static std::string NameIn(const std::unordered_map<std::string, std::string>& names,
                          const std::string& folded)
{
    const auto found = names.find(folded);
    return found == names.end() ? "" : found->second;
}

// The first match, uncached: most folders are small and cheap to read.
static std::string FirstMatch(const std::string& folder, const std::string& folded, std::size_t& names)
{
    std::string found;
    names = 0;
    const std::unique_ptr<DIR, int (*)(DIR*)> directory(opendir(folder.c_str()), &closedir);
    while (const dirent* entry = directory ? readdir(directory.get()) : nullptr) {
        const std::string_view name = entry->d_name;
        ++names;
        if ((found.empty() || name < found) && sFoldCase(name) == folded)
            found = name;
    }
    return found;
}

std::string FolderNames::Find(const std::string& folder, const std::string& name)
{
    const std::string folded = sFoldCase(name);
    const auto now = std::chrono::steady_clock::now();
    const auto large_folder = large_folders_.find(folder);
    if (large_folder != large_folders_.end() && now < large_folder->second.expiry) {
        const std::string found = NameIn(large_folder->second.names, folded);
        return access((folder + "/" + found).c_str(), F_OK) == 0 ? found : "";
    }
    std::size_t names = 0;
    const std::string found = FirstMatch(folder, folded, names);
    if (names < kLargeFolder)
        return found;
    if (large_folders_.size() >= kFoldersKept)
        large_folders_.clear();
    LargeFolder& large = large_folders_[folder];
    large.names = ReadNames(folder);
    const auto end = std::chrono::steady_clock::now();
    large.expiry = end + kTimesTheReading * (end - now);
    return found;
}

void FolderNames::Add(const std::string& folder, const std::string& name)
{
    const auto found = large_folders_.find(folder);
    if (found != large_folders_.end())
        found->second.names.try_emplace(sFoldCase(name), name);
}
