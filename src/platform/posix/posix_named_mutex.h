// A lock between processes as an advisory lock on a file.
// Room: platform/posix.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "src/platform/named_mutex.h"
#include "src/platform/posix/descriptor.h"

/// The lock file lies in the first of the folders in which it can be opened or made, so that all processes of
/// a machine, whoever's they are, meet at the same one. The system frees the lock when its owner ends, in
/// whatever way. Links are refused, and nothing is ever written to the file: whoever puts something else in
/// its place gains nothing.
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
        Descriptor file;  ///< holds nothing where no lock could be made
    };
    std::vector<std::string> folders_;
    std::map<std::string, Held> held_;
};
