// New files that aren't on the disk yet, to be synced together.
// Room: platform/files.
#pragma once

#include <sys/types.h>

#include <condition_variable>
#include <cstdint>
#include <map>
#include <mutex>
#include <thread>
#include <vector>

#include "src/platform/files/descriptor.h"

class SystemCalls;

/// A file that has its name but may not be on the disk.
struct UnsyncedFile {
    Descriptor file;
    Descriptor folder;  ///< that holds the name
    dev_t device = 0;
    ino_t folder_inode = 0;
    std::uint64_t size = 0;
};

/// Syncing a file on its own costs milliseconds, mostly for the file system's journal. So a few files are
/// synced one by one, which needn't wait for what other programs write, and more of them by one call for
/// their file system. So that little is left for the end of a long run, a thread syncs whatever has gathered
/// once it is large. The queue holds at most a few descriptors, however many files there were.
///
/// May be used from several threads.
class SyncQueue
{
public:
    explicit SyncQueue(SystemCalls& system);
    ~SyncQueue();  ///< flushes
    SyncQueue(const SyncQueue&) = delete;
    SyncQueue& operator=(const SyncQueue&) = delete;

    void Add(UnsyncedFile file);

    /// Waits until everything that was added is on the disk. False if the system reported a failure since the
    /// last call.
    [[nodiscard]] bool Flush();

    /// Makes the next Flush report a failure.
    void NoteFailure();

private:
    struct Batch {
        std::vector<UnsyncedFile> files;      ///< empty once there are more than a few
        std::map<dev_t, Descriptor> systems;  ///< a descriptor on each file system to be synced as a whole
        std::uint64_t bytes = 0;

        bool Empty() const { return files.empty() && systems.empty(); }
    };

    static void AddTo(Batch& batch, UnsyncedFile file);
    bool SyncBatch(Batch& batch);
    void StartInBackground();
    void WorkInBackground();

    SystemCalls& system_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::thread worker_;
    Batch gathering_;
    Batch in_background_;
    bool working_ = false;  ///< the thread has in_background_ to sync
    bool ending_ = false;
    bool failed_ = false;
};

/// Syncs a file or, with SyncFolder, the names in its folder. True also where the file system has no such
/// thing.
[[nodiscard]] bool SyncFile(SystemCalls& system, int file);
[[nodiscard]] bool SyncFolder(SystemCalls& system, int folder, int file);
