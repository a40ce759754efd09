// Sweeps folders, and reads whether to sync.
#include "src/platform/files/file_saver.h"

#include <cstdlib>
#include <string_view>
#include <utility>

#include "src/platform/files/save_target.h"
#include "src/platform/files/temporaries.h"

FileSaver::FileSaver(bool syncs, SystemCalls& system) : system_(system), syncs_(syncs), queue_(system) {}

void FileSaver::SweepOnce(const SaveTarget& target)
{
    {
        const std::lock_guard lock(mutex_);
        if (target.folder_status.st_dev == swept_device_ && target.folder_status.st_ino == swept_inode_)
            return;
        swept_device_ = target.folder_status.st_dev;
        swept_inode_ = target.folder_status.st_ino;
    }
    SweepTemporaries(system_, target.folder.Number());
}

bool IsSyncWanted()
{
    const char* value = std::getenv("VARNEL_SYNC");
    return !value || std::string_view(value) != "0";
}
