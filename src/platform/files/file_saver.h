// What all saves of a process share.
// Room: platform/files.
#pragma once

#include <sys/types.h>

#include <mutex>

#include "src/platform/files/sync_queue.h"
#include "src/platform/files/system_calls.h"

struct SaveTarget;

/// The program makes one and lends it to everything that saves. At its end it syncs what is still unwritten.
class FileSaver
{
public:
    /// With `syncs` false, saves leave it to the system when their files reach the disk.
    explicit FileSaver(bool syncs = true, SystemCalls& system = RealSystemCalls());
    FileSaver(const FileSaver&) = delete;
    FileSaver& operator=(const FileSaver&) = delete;

    SystemCalls& System() { return system_; }
    bool Syncs() const { return syncs_; }
    SyncQueue& Queue() { return queue_; }

    /// Waits until every file that was saved is on the disk. False if the system reported a failure since the
    /// last call.
    [[nodiscard]] bool SyncSaves() { return queue_.Flush(); }

    /// Removes temporaries of killed runs from a folder, unless it was the last one that this was done to.
    void SweepOnce(const SaveTarget& target);

private:
    SystemCalls& system_;
    const bool syncs_;
    SyncQueue queue_;
    std::mutex mutex_;
    dev_t swept_device_ = 0;
    ino_t swept_inode_ = 0;
};

/// False if the environment says VARNEL_SYNC=0.
[[nodiscard]] bool IsSyncWanted();
