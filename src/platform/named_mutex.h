// A lock between processes, known by its name.
// Room: platform. Real one: platform/posix. In-memory one: tests/fakes.
#pragma once

#include <string>

class NamedMutex
{
public:
    virtual ~NamedMutex() = default;
    /// Waits without limit until this process holds the lock. A lock whose owner died is free. Where no lock
    /// can be made at all (no place to keep it), it goes on without one. May be nested: one Release for each
    /// Acquire.
    virtual void Acquire(const std::string& sName) = 0;
    virtual void Release(const std::string& sName) = 0;
};
