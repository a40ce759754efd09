// Caches the settings file until it changes, and replaces it under a lock.
#include "src/platform/posix/posix_ini_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <ctime>
#include <filesystem>

#include "src/base/number_text.h"
#include "src/base/text.h"
#include "src/platform/files/descriptor.h"
#include "src/platform/files/output_file.h"
#include "src/platform/posix/ini_text.h"

// A settings file has a few kilobytes; anything larger than this is something else.
static constexpr off_t kLargestFile = 16 * 1024 * 1024;

std::optional<std::string> PosixIniFile::ReadText(const std::string& ini_file) const
{
    const Descriptor file = OpenRegularFile(ini_file, O_RDONLY);
    if (!file)
        return errno == ENOENT ? std::optional(std::string()) : std::nullopt;
    struct stat status {
    };
    if (fstat(file.Number(), &status) != 0 || status.st_size > kLargestFile)
        return std::nullopt;
    std::string bytes(static_cast<std::size_t>(status.st_size), '\0');
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t got = read(file.Number(), bytes.data() + done, bytes.size() - done);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            return std::nullopt;
        if (got == 0)
            break;
        done += static_cast<std::size_t>(got);
    }
    bytes.resize(done);
    return IniTextOf(bytes);
}

static bool IsSameFile(const struct stat& left, const struct stat& right)
{
    return left.st_dev == right.st_dev && left.st_ino == right.st_ino && left.st_size == right.st_size &&
           left.st_mtim.tv_sec == right.st_mtim.tv_sec && left.st_mtim.tv_nsec == right.st_mtim.tv_nsec;
}

const std::string& PosixIniFile::Text(const std::string& ini_file) const
{
    struct stat status {
    };
    const bool exists = stat(ini_file.c_str(), &status) == 0;
    if (!exists || ini_file != kept_file_ || !IsSameFile(status, kept_)) {
        kept_text_ = exists ? ReadText(ini_file).value_or("") : "";
        kept_file_ = ini_file;
        kept_ = status;
    }
    return kept_text_;
}

std::string PosixIniFile::GetPrivateProfileString(const std::string& section, const std::string& key,
                                                  const std::string& fallback, std::int32_t buffer_size,
                                                  const std::string& ini_file) const
{
    return sFirstLetters(IniValue(Text(ini_file), section, key).value_or(fallback), buffer_size - 1);
}

std::int32_t PosixIniFile::GetPrivateProfileInt(const std::string& section, const std::string& key,
                                                std::int32_t fallback, const std::string& ini_file) const
{
    const std::optional<std::string> value = IniValue(Text(ini_file), section, key);
    return value ? lLeadingNumber(*value) : fallback;
}

// A new file in a folder shared by a group is shared by the group, too.
static mode_t ModeForNewFile(int folder)
{
    struct stat status {
    };
    return fstat(folder, &status) == 0 ? 0600 | (status.st_mode & 0066) : 0600;
}

static std::string FolderOf(const std::string& host_path)
{
    const std::string folder = std::filesystem::path(host_path).parent_path().string();
    return folder.empty() ? "." : folder;
}

// Other users can lock the folder, too, if they can list it: don't let them stall us. Without the lock, as on
// a file system that has none, the file is still replaced as a whole.
static void LockForAWhile(int folder)
{
    constexpr int kAttempts = 200;
    constexpr timespec kPause{0, 10'000'000};
    for (int n = 0; n < kAttempts && flock(folder, LOCK_EX | LOCK_NB) != 0; ++n) {
        if (errno != EWOULDBLOCK && errno != EINTR)
            return;
        nanosleep(&kPause, nullptr);
    }
}

bool PosixIniFile::WritePrivateProfileString(const std::string& section, const std::string& key,
                                             const std::string& value, const std::string& ini_file)
{
    const std::string folder_path = FolderOf(ini_file);
    std::error_code ignored;  // opening the folder tells
    std::filesystem::create_directories(folder_path, ignored);
    const Descriptor folder(open(folder_path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!folder)
        return false;
    LockForAWhile(folder.Number());  // released with the descriptor

    const std::optional<std::string> old_text = ReadText(ini_file);
    if (!old_text)
        return false;
    const bool is_new = access(ini_file.c_str(), F_OK) != 0;
    const std::string new_text = IniTextWith(*old_text, section, key, value);
    if (!is_new && new_text == *old_text)
        return true;
    OutputFile file(ini_file, saver_);
    file.SetMode(ModeForNewFile(folder.Number()));
    return file.WriteText(new_text) && file.Commit();
}
