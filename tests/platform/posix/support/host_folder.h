// A temporary folder for one test, and other helpers for tests of the host.
#pragma once

#include <functional>
#include <string>

/// Created empty below testing::TempDir(), and removed with its contents.
class HostFolder
{
public:
    HostFolder();
    ~HostFolder();
    HostFolder(const HostFolder&) = delete;
    HostFolder& operator=(const HostFolder&) = delete;

    const std::string& Path() const { return path_; }
    /// The path of a name in the folder. With content, creates the file and its parent folders.
    std::string File(const std::string& name) const { return path_ + "/" + name; }
    std::string File(const std::string& name, const std::string& content) const;
    std::string Subfolder(const std::string& name) const;
    /// The names in the folder, sorted and separated by spaces.
    std::string Listing() const;

private:
    std::string path_;
};

/// The bytes of a file; "(none)" if it doesn't exist.
std::string ContentOf(const std::string& host_path);

/// Sets an environment variable, or unsets it if null, and restores it at the end of the scope.
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

/// Runs work in a child process and returns its result. If the tests run as root, the child is an
/// unprivileged user.
bool RunAsOrdinaryUser(const std::function<bool()>& work);

/// Limits the size of files within the scope, so that writes fail as on a full disk.
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
