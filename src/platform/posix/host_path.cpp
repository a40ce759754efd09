// Splits paths at both separators, maps drives, and looks up names ignoring case.
#include "src/platform/posix/host_path.h"

#include <sys/stat.h>

#include <cstdlib>
#include <string_view>
#include <utility>
#include <vector>

#include "src/base/path_text.h"

static constexpr std::string_view kSeparators = "\\/";

static bool HasDrive(std::string_view path)
{
    return path.size() >= 2 && path[1] == ':' &&
           ((path[0] >= 'A' && path[0] <= 'Z') || (path[0] >= 'a' && path[0] <= 'z'));
}

static bool IsThere(const std::string& host_path)
{
    struct stat status {
    };
    return lstat(host_path.c_str(), &status) == 0;
}

static bool IsFolder(const std::string& host_path)
{
    struct stat status {
    };
    return stat(host_path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

static void AppendName(std::string& host_path, std::string_view name)
{
    if (!host_path.empty() && host_path.back() != '/')
        host_path += '/';
    host_path += name;
}

static std::string JoinPath(std::string folder, std::string_view name)
{
    AppendName(folder, name);
    return folder;
}

// The path's components, without empty ones and ".".
static std::vector<std::string> Components(std::string_view path)
{
    std::vector<std::string> names;
    while (!path.empty()) {
        const std::size_t end = path.find_first_of(kSeparators);
        const std::string_view name = path.substr(0, end);
        if (!name.empty() && name != ".")
            names.emplace_back(name);
        path.remove_prefix(end == std::string_view::npos ? path.size() : end + 1);
    }
    return names;
}

std::string HostPaths::DriveFolder(char drive) const
{
    const char capital = static_cast<char>(drive & ~0x20);
    const char* mapped = std::getenv((std::string("VARNEL_DRIVE_") + capital).c_str());
    if (mapped && *mapped != '\0')
        return mapped;
    return drive_folder_ ? drive_folder_(capital) : "";
}

namespace
{
/// A path's root ("/", a drive's folder, or "" for the working folder) and the rest.
struct SplitPath {
    std::string base;
    std::vector<std::string> names;
};
}  // namespace

static std::string ExactPath(const SplitPath& path)
{
    std::string host_path = path.base;
    for (const std::string& name : path.names)
        AppendName(host_path, name);
    return host_path.empty() ? "." : host_path;
}

// The exact name if it exists, otherwise one that differs only in case; "" if there is none.
static std::string NameInFolder(FolderNames& names, const std::string& folder, const std::string& name)
{
    if (IsThere(JoinPath(folder, name)))
        return name;
    return names.Find(folder.empty() ? "." : folder, name);
}

static std::optional<SplitPath> Split(const std::string& path, const std::function<std::string(char)>& drive)
{
    if (path.empty() || path.find('\0') != std::string::npos)
        return std::nullopt;
    if (HasDrive(path)) {
        const std::string folder = drive(path[0]);
        if (folder.empty())
            return std::nullopt;
        return SplitPath{folder, Components(std::string_view(path).substr(2))};
    }
    const bool rooted = kSeparators.find(path[0]) != std::string_view::npos;
    return SplitPath{rooted ? "/" : "", Components(path)};
}

std::optional<std::string> HostPaths::Existing(const std::string& path) const
{
    const auto split = Split(path, [this](char c) { return DriveFolder(c); });
    if (!split)
        return std::nullopt;
    const bool folder_asked = bEndsInSeparator(path);
    const std::string as_it_stands = ExactPath(*split);
    if (IsThere(as_it_stands))
        return !folder_asked || IsFolder(as_it_stands) ? std::optional(as_it_stands) : std::nullopt;
    std::string host_path = split->base;
    for (const std::string& name : split->names) {
        const std::string found = NameInFolder(names_, host_path, name);
        if (found.empty())
            return std::nullopt;
        AppendName(host_path, found);
    }
    // Without components nothing was looked up yet: check that the root itself exists.
    const bool fits = folder_asked ? IsFolder(host_path) : IsThere(host_path);
    return fits ? std::optional(host_path) : std::nullopt;
}

// The folder as given if it exists. Otherwise resolves it component by component; from the first missing one
// on, components are kept as given.
static std::string FolderToWrite(FolderNames& names, const SplitPath& split, bool& found)
{
    std::string folder = ExactPath(split);
    found = split.names.empty() || IsThere(folder);
    if (found)
        return split.names.empty() ? split.base : folder;
    folder = split.base;
    found = true;
    for (const std::string& name : split.names) {
        const std::string name_found = found ? NameInFolder(names, folder, name) : "";
        found = !name_found.empty();
        AppendName(folder, found ? name_found : name);
    }
    return folder;
}

std::optional<std::string> HostPaths::ToWrite(const std::string& path) const
{
    auto split = Split(path, [this](char c) { return DriveFolder(c); });
    if (!split || split->names.empty())
        return std::nullopt;
    const std::string name = std::move(split->names.back());
    split->names.pop_back();
    if (name == ".." || name.find_first_of("*?") != std::string::npos)
        return std::nullopt;

    bool folder_found = false;
    const std::string folder = FolderToWrite(names_, *split, folder_found);
    if (!folder_found)
        return JoinPath(folder, name);
    const bool any_case = HasDrive(path) || path.find('\\') != std::string::npos;
    const std::string there = any_case ? NameInFolder(names_, folder, name) : "";
    if (!there.empty())
        return JoinPath(folder, there);
    names_.Add(folder.empty() ? "." : folder, name);
    return JoinPath(folder, name);
}
