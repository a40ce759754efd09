// Named temporaries of saves, and the removal of those that a killed process left behind.
// Room: platform/files.
#pragma once

#include <sys/types.h>

#include <string>

#include "src/platform/files/descriptor.h"

class SystemCalls;

// A temporary needs a name while it replaces an existing file, and all along on a file system without
// nameless files. Its name is hidden and one of a fixed list, which is the same in every folder: a sweep
// looks up a few names and needn't list the folder. The process that writes a temporary holds its lock. So
// a process that gets the lock knows that the owner is gone.

/// The temporary number `slot` of a user, such as ".varnel-1000-0-6f0c3a91d2b84e57.tmp". The last part is a
/// checksum, so that no file that a user named by hand is taken for a temporary.
[[nodiscard]] std::string TemporaryName(uid_t user, unsigned slot);

/// Creates an empty locked temporary, open for reading and writing. Empty, with errno set, on failure.
[[nodiscard]] Descriptor CreateTemporary(SystemCalls& system, int folder, mode_t mode, std::string& name);

/// Locks a nameless file and gives it the name of a temporary. False, with errno set, on failure.
[[nodiscard]] bool NameTemporary(SystemCalls& system, int file, int folder, std::string& name);

/// Removes this user's temporaries in a folder whose owner is gone.
void SweepTemporaries(SystemCalls& system, int folder);
