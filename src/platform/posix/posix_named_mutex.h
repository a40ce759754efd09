// A lock between processes: an advisory lock on a file.
// Room: platform/posix.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "src/platform/files/descriptor.h"
#include "src/platform/named_mutex.h"

/// The lock file is in the first folder where it can be opened or created, so all processes on the machine
/// use the same one, whatever their user. The system releases the lock when its owner ends, however that
/// happens. Links are refused and nothing is written to the file, so replacing it gains an attacker nothing.
class PosixNamedMutex : public NamedMutex
{
public:
    explicit PosixNamedMutex(std::vector<std::string> folders = {"/run/lock", "/var/lock", "/tmp"})
        : folders_(std::move(folders))
    {
    }

    void Acquire(const std::string& name) override;
    void Release(const std::string& name) override;

private:
    struct Held {
        int times = 0;
        Descriptor file;  ///< empty if no lock file could be opened
    };
    std::vector<std::string> folders_;
    std::map<std::string, Held> held_;
};
