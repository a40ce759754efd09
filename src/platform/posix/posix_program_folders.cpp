// Finds the program's folders from the environment, the executable and the user's home.
#include "src/platform/posix/posix_program_folders.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

namespace fs = std::filesystem;

static std::string Environment(const char* name)
{
    const char* value = std::getenv(name);
    std::string result = value ? value : "";
    while (result.size() > 1 && result.back() == '/')
        result.pop_back();
    return result;
}

static std::string Home()
{
    const std::string from_environment = Environment("HOME");
    if (!from_environment.empty())
        return from_environment;
    const passwd* user = getpwuid(getuid());
    return user && user->pw_dir ? user->pw_dir : "/";
}

// A user folder: the variable's value if it is an absolute path, otherwise below_home in the home folder.
static std::string UserFolder(const char* variable, const char* below_home)
{
    const std::string set = Environment(variable);
    return (fs::path(set).is_absolute() ? fs::path(set) : fs::path(Home()) / below_home).string();
}

static bool IsFolder(const fs::path& path)
{
    std::error_code ignored;
    return fs::is_directory(path, ignored);
}

std::string PosixProgramFolders::RunningProgram()
{
    std::error_code error;
    const fs::path path = fs::read_symlink("/proc/self/exe", error);
    return error ? "" : path.string();
}

std::string PosixProgramFolders::sSettingsFolder() const
{
    if (settings_.empty())
        settings_ = Environment("VARNEL_SETTINGS_DIR");
    if (settings_.empty() && IsFolder(shared_settings_) &&
        access(shared_settings_.c_str(), R_OK | W_OK | X_OK) == 0)
        settings_ = shared_settings_;
    if (settings_.empty())
        settings_ = UserFolder("XDG_CONFIG_HOME", ".config") + "/varnel";
    return settings_;
}

// Copies under a temporary name first, so that another process never sees half a file. A file that is there
// already, which the user may have edited, stays.
static void CopyIfMissing(const fs::path& source, const fs::path& target)
{
    std::error_code error;
    if (fs::exists(target, error))
        return;
    const fs::path part = target.string() + "." + std::to_string(getpid());
    fs::create_directories(target.parent_path(), error);
    fs::copy_file(source, part, error);
    if (!error)
        fs::rename(part, target, error);
    if (error)
        fs::remove(part, error);
}

// Brings what is missing of an installation into the user's folder. False if there is no such folder then.
static bool Fill(const fs::path& target, const fs::path& source)
{
    std::error_code error;
    for (fs::recursive_directory_iterator file(source, error), end; !error && file != end;
         file.increment(error))
        if (file->is_regular_file(error))
            CopyIfMissing(file->path(), target / file->path().lexically_relative(source));
    return IsFolder(target);
}

std::string PosixProgramFolders::sOwnFolder() const
{
    if (own_.empty())
        own_ = Environment("VARNEL_HOME");
    const fs::path program = fs::path(executable_).parent_path();
    if (own_.empty() && IsFolder(program / "Languages"))
        own_ = program.string();
    if (own_.empty()) {
        const fs::path shipped = program.parent_path() / "share" / "varnel";
        own_ = UserFolder("XDG_DATA_HOME", ".local/share") + "/varnel";
        if (IsFolder(shipped) && !Fill(own_, shipped))
            own_ = shipped.string();
    }
    return own_;
}

std::string PosixProgramFolders::sHomeFolder() const
{
    return Home();
}
