// Names, locks and removes temporaries.
#include "src/platform/files/temporaries.h"

#include <array>
#include <cerrno>
#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <random>

#include "src/platform/files/system_calls.h"

// How many names a sweep looks up beyond the last one that it found. More processes than this may save in one
// folder at a time; after a kill of all of them, their temporaries still follow one another closely.
static constexpr unsigned kSweepAhead = 16;
// Later attempts take random numbers: someone else may occupy the names in a folder that is shared.
static constexpr unsigned kOrderedSlots = 256;
static constexpr unsigned kMostAttempts = kOrderedSlots + 16;

// FNV-1a.
static std::uint64_t Checksum(const char* text)
{
    std::uint64_t sum = 0xCBF29CE484222325;
    for (; *text != '\0'; ++text)
        sum = (sum ^ static_cast<unsigned char>(*text)) * 0x100000001B3;
    return sum;
}

std::string TemporaryName(uid_t user, unsigned slot)
{
    std::array<char, 64> name{};
    std::snprintf(name.data(), name.size(), ".varnel-%u-%u", static_cast<unsigned>(user), slot);
    const std::uint64_t sum = Checksum(name.data());
    std::string result = name.data();
    std::snprintf(name.data(), name.size(), "-%016" PRIx64 ".tmp", sum);
    return result + name.data();
}

static unsigned SlotOfAttempt(unsigned attempt)
{
    return attempt < kOrderedSlots ? attempt : std::random_device()();
}

static bool IsStill(int file, int folder, const std::string& name)
{
    struct stat open_file {
    };
    struct stat named {
    };
    return fstat(file, &open_file) == 0 && fstatat(folder, name.c_str(), &named, AT_SYMLINK_NOFOLLOW) == 0 &&
           open_file.st_dev == named.st_dev && open_file.st_ino == named.st_ino;
}

enum class Leftover { None, InUse, Removed };

// A file that its owner has already renamed into place is locked under another name: check the name once the
// lock is held.
static Leftover RemoveLeftover(SystemCalls& system, int folder, const std::string& name)
{
    const Descriptor file(
        system.Open(folder, name.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0));
    if (!file)
        return errno == ENOENT ? Leftover::None : Leftover::InUse;
    struct stat status {
    };
    if (fstat(file.Number(), &status) != 0 || !S_ISREG(status.st_mode) || system.Lock(file.Number()) != 0)
        return Leftover::InUse;
    if (!IsStill(file.Number(), folder, name))
        return Leftover::None;
    return system.Unlink(folder, name.c_str()) == 0 ? Leftover::Removed : Leftover::InUse;
}

// True unless a sweep came between the creation and the lock. A file system without locks is never swept.
static bool LockCreated(SystemCalls& system, const Descriptor& file, int folder, const std::string& name)
{
    if (system.Lock(file.Number()) != 0)
        return errno != EWOULDBLOCK;
    return IsStill(file.Number(), folder, name);
}

Descriptor CreateTemporary(SystemCalls& system, int folder, mode_t mode, std::string& name)
{
    for (unsigned attempt = 0; attempt < kMostAttempts; ++attempt) {
        name = TemporaryName(geteuid(), SlotOfAttempt(attempt));
        for (bool again = true; again;) {
            Descriptor file(
                system.Open(folder, name.c_str(), O_CREAT | O_EXCL | O_RDWR | O_NOFOLLOW | O_CLOEXEC, mode));
            if (file && LockCreated(system, file, folder, name))
                return file;
            if (!file && errno != EEXIST)
                return {};
            again = !file && RemoveLeftover(system, folder, name) == Leftover::Removed;
        }
    }
    errno = EEXIST;
    return {};
}

bool NameTemporary(SystemCalls& system, int file, int folder, std::string& name)
{
    (void)system.Lock(file);  // where it fails, no sweep gets the lock either
    for (unsigned attempt = 0; attempt < kMostAttempts; ++attempt) {
        name = TemporaryName(geteuid(), SlotOfAttempt(attempt));
        do {
            if (system.GiveName(file, folder, name.c_str()) == 0)
                return true;
            if (errno != EEXIST)
                return false;
        } while (RemoveLeftover(system, folder, name) == Leftover::Removed);
    }
    errno = EEXIST;
    return false;
}

void SweepTemporaries(SystemCalls& system, int folder)
{
    unsigned end = kSweepAhead;
    for (unsigned slot = 0; slot < end && slot < kOrderedSlots; ++slot)
        if (RemoveLeftover(system, folder, TemporaryName(geteuid(), slot)) != Leftover::None)
            end = slot + 1 + kSweepAhead;
}
