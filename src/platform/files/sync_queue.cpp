// Gathers files and syncs them in batches.
#include "src/platform/files/sync_queue.h"

#include <cerrno>
#include <system_error>
#include <utility>

#include "src/platform/files/system_calls.h"

static constexpr std::size_t kMostSingleFiles = 8;
static constexpr std::uint64_t kBackgroundBytes = 16 << 20;

// What a file system answers that has nothing to sync, or knows no such call.
static bool MeansUnsupported(int error)
{
    return error == EINVAL || error == ENOSYS || error == EOPNOTSUPP || error == EROFS;
}

bool SyncFile(SystemCalls& system, int file)
{
    return system.Sync(file) == 0 || MeansUnsupported(errno);
}

bool SyncFolder(SystemCalls& system, int folder, int file)
{
    if (system.Sync(folder) == 0 || MeansUnsupported(errno))
        return true;
    // A folder that the user may not list isn't open for reading, and can't be synced by itself.
    return errno == EBADF && system.SyncFileSystem(file) == 0;
}

SyncQueue::SyncQueue(SystemCalls& system) : system_(system) {}

SyncQueue::~SyncQueue()
{
    (void)Flush();
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
    }
    changed_.notify_all();
    if (worker_.joinable())
        worker_.join();
}

void SyncQueue::AddTo(Batch& batch, UnsyncedFile file)
{
    batch.bytes += file.size;
    if (batch.systems.empty() && batch.files.size() < kMostSingleFiles) {
        batch.files.push_back(std::move(file));
        return;
    }
    for (UnsyncedFile& other : batch.files)
        batch.systems.try_emplace(other.device, std::move(other.file));
    batch.files.clear();
    batch.systems.try_emplace(file.device, std::move(file.file));
}

void SyncQueue::Add(UnsyncedFile file)
{
    const std::lock_guard lock(mutex_);
    AddTo(gathering_, std::move(file));
    if (gathering_.bytes >= kBackgroundBytes && !working_)
        StartInBackground();
}

void SyncQueue::StartInBackground()
{
    if (!worker_.joinable()) {
        try {
            worker_ = std::thread([this] { WorkInBackground(); });
        } catch (const std::system_error&) {
            return;  // what gathers is left for Flush
        }
    }
    in_background_ = std::exchange(gathering_, {});
    working_ = true;
    changed_.notify_all();
}

void SyncQueue::WorkInBackground()
{
    std::unique_lock lock(mutex_);
    while (true) {
        changed_.wait(lock, [this] { return working_ || ending_; });
        if (!working_)
            return;
        lock.unlock();
        const bool done = SyncBatch(in_background_);
        lock.lock();
        in_background_ = {};
        failed_ = failed_ || !done;
        working_ = false;
        changed_.notify_all();
    }
}

static bool IsDeleted(int file)
{
    struct stat status {
    };
    return fstat(file, &status) == 0 && status.st_nlink == 0;
}

bool SyncQueue::SyncBatch(Batch& batch)
{
    bool done = true;
    std::erase_if(batch.files, [](const UnsyncedFile& file) { return IsDeleted(file.file.Number()); });
    for (const UnsyncedFile& file : batch.files)
        done = SyncFile(system_, file.file.Number()) && done;
    const UnsyncedFile* last = nullptr;
    for (const UnsyncedFile& file : batch.files) {
        if (last && last->device == file.device && last->folder_inode == file.folder_inode)
            continue;
        done = SyncFolder(system_, file.folder.Number(), file.file.Number()) && done;
        last = &file;
    }
    for (const auto& [device, file] : batch.systems)
        done = (system_.SyncFileSystem(file.Number()) == 0 || MeansUnsupported(errno)) && done;
    return done;
}

bool SyncQueue::Flush()
{
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return !working_; });
    Batch batch = std::exchange(gathering_, {});
    const bool done = SyncBatch(batch);
    return !std::exchange(failed_, false) && done;
}

void SyncQueue::NoteFailure()
{
    const std::lock_guard lock(mutex_);
    failed_ = true;
}
