// An in-memory file system.
#include "tests/fakes/fake_file_system.h"

#include <algorithm>

#include "src/base/path_text.h"
#include "src/base/raised_error.h"
#include "src/base/text.h"

namespace
{

class MemoryReader : public TextReader
{
public:
    explicit MemoryReader(std::string text) : text_(std::move(text)) {}
    bool ReadLine(std::string& line) override
    {
        if (at_ >= text_.size())
            return false;
        const std::size_t end = std::min(text_.find('\n', at_), text_.size());
        line = text_.substr(at_, end - at_);
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        at_ = end + 1;
        return true;
    }

private:
    std::string text_;
    std::size_t at_ = 0;
};

class MemoryWriter : public TextWriter
{
public:
    MemoryWriter(FakeFileSystem& files, std::string path) : files_(files), path_(std::move(path)) {}
    void WriteLine(const std::string& line) override { text_ += line + "\r\n"; }
    void Commit() override { files_.AddFile(path_, text_); }

private:
    FakeFileSystem& files_;
    std::string path_;
    std::string text_;
};

}  // namespace

std::string FakeFileSystem::Key(const std::string& path)
{
    std::string result = sReplaceAll(sLower(path), "\\", "/");
    while (result.size() > 1 && result.back() == '/')
        result.pop_back();
    return result;
}

std::string FakeFileSystem::Resolved(const std::string& path) const
{
    std::string result = Key(path);
    for (int hops = 0; hops < 20; ++hops) {
        bool replaced = false;
        for (const auto& [link, entry] : entries_) {
            if (!entry.link_to.empty() && (result == link || result.starts_with(link + "/"))) {
                result = entry.link_to + result.substr(link.size());
                replaced = true;
                break;
            }
        }
        if (!replaced)
            break;
    }
    return result;
}

const FakeFileSystem::Entry* FakeFileSystem::Find(const std::string& path) const
{
    const auto found = entries_.find(Resolved(path));
    return found == entries_.end() ? nullptr : &found->second;
}

bool FakeFileSystem::IsReadOnly(const std::string& path) const
{
    const std::string looked = Resolved(path);
    for (const std::string& root : read_only_)
        if (looked == root || looked.starts_with(root + "/"))
            return true;
    return false;
}

void FakeFileSystem::AddFolder(const std::string& path)
{
    const std::string parent = sGetParentFolderName(path);
    if (!parent.empty())
        AddFolder(parent);
    const std::string extension = sGetExtensionName(path);
    entries_.try_emplace(
        Resolved(path),
        Entry{sGetBaseName(path) + (extension.empty() ? "" : "." + extension), true, "", "", 0});
}

void FakeFileSystem::AddFile(const std::string& path, const std::string& content)
{
    AddFolder(sGetParentFolderName(path));
    Entry& entry = entries_[Resolved(path)];
    entry.is_folder = false;
    entry.content = content;
    entry.number = ++last_number_;
    if (entry.name.empty())
        entry.name = path.substr(sFolderOfPath(path).size());
}

void FakeFileSystem::AddLink(const std::string& path, const std::string& real_folder)
{
    AddFolder(path);
    AddFolder(real_folder);
    entries_[Key(path)].link_to = Key(real_folder);
}

void FakeFileSystem::MakeReadOnly(const std::string& path)
{
    read_only_.insert(Resolved(path));
}

bool FakeFileSystem::Has(const std::string& path) const
{
    return Find(path) != nullptr;
}

std::string FakeFileSystem::Content(const std::string& path) const
{
    const Entry* entry = Find(path);
    return entry ? entry->content : "";
}

std::optional<std::string> FakeFileSystem::sHostPathOfExisting(const std::string& path) const
{
    return Find(path) ? std::optional(Key(path)) : std::nullopt;
}

std::optional<std::string> FakeFileSystem::sHostPathToWrite(const std::string& path) const
{
    return path.empty() ? std::nullopt : std::optional(Key(path));
}

bool FakeFileSystem::FolderExists(const std::string& path) const
{
    const Entry* entry = Find(path);
    return entry && entry->is_folder;
}

bool FakeFileSystem::FileExists(const std::string& path) const
{
    const Entry* entry = Find(path);
    return entry && !entry->is_folder;
}

bool FakeFileSystem::CreateFolder(const std::string& path)
{
    if (path.empty() || Find(path) || IsReadOnly(path) || !FolderExists(sGetParentFolderName(path)))
        return false;
    AddFolder(path);
    made_folders.push_back(path);
    return true;
}

bool FakeFileSystem::ListFolder(const std::string& folder, FolderListing& listing) const
{
    if (!FolderExists(folder) || unlistable.contains(folder))
        return false;
    listing = {};
    const std::string root = Resolved(folder);
    const std::string prefix = root == "/" ? root : root + "/";
    for (const auto& [path, entry] : entries_) {
        const bool below = path.size() > prefix.size() && path.starts_with(prefix);
        if (!below || path.find('/', prefix.size()) != std::string::npos)
            continue;
        (entry.is_folder ? listing.aSubfolders : listing.aFiles).push_back(entry.name);
        if (!entry.link_to.empty())
            listing.aLinks.insert(entry.name);
    }
    return true;
}

std::string FakeFileSystem::sRealPath(const std::string& path) const
{
    return Find(path) ? Resolved(path) : "";
}

bool FakeFileSystem::CopyFile(const std::string& source, const std::string& target)
{
    if (fail_copies || !FileExists(source) || IsReadOnly(target) || FolderExists(target))
        return false;
    AddFile(target, Content(source));
    return true;
}

bool FakeFileSystem::DeleteFile(const std::string& path)
{
    if (deletes_to_refuse > 0 || undeletable.contains(path) || IsReadOnly(path) || !FileExists(path)) {
        deletes_to_refuse = std::max(deletes_to_refuse - 1, 0);
        ++refused_deletes;
        return false;
    }
    entries_.erase(Resolved(path));
    deleted_files.push_back(path);
    return true;
}

bool FakeFileSystem::MoveToTrash(const std::string& path)
{
    if (!has_trash || IsReadOnly(path) || !FileExists(path))
        return false;
    entries_.erase(Resolved(path));
    trashed_files.push_back(path);
    return true;
}

std::optional<FileStamp> FakeFileSystem::objStampOf(const std::string& path) const
{
    const Entry* entry = Find(path);
    return entry && !entry->is_folder ? std::optional(FileStamp{1, entry->number, entry->content.size(), 0})
                                      : std::nullopt;
}

bool FakeFileSystem::ClearReadOnly(const std::string& path)
{
    return FileExists(path);
}

std::unique_ptr<TextReader> FakeFileSystem::OpenForInput(const std::string& path) const
{
    if (!FileExists(path))
        throw clsRaisedError(kErrFileNotFound, "File not found: " + path);
    return std::make_unique<MemoryReader>(Content(path));
}

std::unique_ptr<TextWriter> FakeFileSystem::OpenForOutput(const std::string& path)
{
    if (IsReadOnly(path) || FolderExists(path) || !FolderExists(sGetParentFolderName(path)))
        throw clsRaisedError(kErrPathFileAccess, "Path/File access error: " + path);
    return std::make_unique<MemoryWriter>(*this, path);
}

void FakeFileSystem::AppendLine(const std::string& path, const std::string& line)
{
    if (IsReadOnly(path) || FolderExists(path) || !FolderExists(sGetParentFolderName(path)))
        throw clsRaisedError(kErrPathFileAccess, "Path/File access error: " + path);
    AddFile(path, Content(path) + line + "\n");
}

std::optional<std::string> FakeFileSystem::sReadBytes(const std::string& path) const
{
    return FileExists(path) ? std::optional(Content(path)) : std::nullopt;
}

bool FakeFileSystem::AppendBytes(const std::string& path, const std::string& bytes)
{
    if (IsReadOnly(path) || !FileExists(path))
        return false;
    AddFile(path, Content(path) + bytes);
    return true;
}

bool FakeFileSystem::SyncSaves()
{
    ++syncs;
    return !fail_syncs;
}
