// A folder on the disk for one test, and what tests of the host need besides.
#pragma once

#include <functional>
#include <string>

/// Made empty below testing::TempDir(), and removed with all that is in it.
class HostFolder
{
public:
    HostFolder();
    ~HostFolder();
    HostFolder(const HostFolder&) = delete;
    HostFolder& operator=(const HostFolder&) = delete;

    const std::string& Path() const { return path_; }
    /// The path of a name in the folder; with a content, a file of that name with its folders.
    std::string File(const std::string& name) const { return path_ + "/" + name; }
    std::string File(const std::string& name, const std::string& content) const;
    std::string Subfolder(const std::string& name) const;
    /// The names in the folder, in order, joined by blanks.
    std::string Listing() const;

private:
    std::string path_;
};

/// All bytes of a file; "(none)" for one that isn't there.
std::string ContentOf(const std::string& host_path);

/// Sets a variable of the environment, or unsets it with null, and puts it back at the end of the scope.
class ScopedVariable
{
public:
    ScopedVariable(const char* name, const char* value);
    ~ScopedVariable();
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;

private:
    std::string name_;
    bool was_set_;
    std::string old_;
};

/// Runs work in a process of its own, as a user without privileges where the tests run as root, and gives
/// what it answered.
bool IsOrdinaryUser(const std::function<bool()>& work);

/// Files can't grow beyond so many bytes within the scope: as on a full disk, writing stops short.
class ScopedFileSizeLimit
{
public:
    explicit ScopedFileSizeLimit(unsigned long bytes);
    ~ScopedFileSizeLimit();
    ScopedFileSizeLimit(const ScopedFileSizeLimit&) = delete;
    ScopedFileSizeLimit& operator=(const ScopedFileSizeLimit&) = delete;

private:
    unsigned long old_;
    void (*old_handler_)(int);
};
