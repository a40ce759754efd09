// Simulates running out of memory at a chosen allocation, and counts what is allocated.
// Room: tests.
#pragma once

#include <cstddef>

/// During its lifetime, after `before` successful allocations on any thread, one operator new throws
/// std::bad_alloc. Only one instance may exist at a time.
class FailingMemory
{
public:
    explicit FailingMemory(std::size_t before);
    ~FailingMemory();
    FailingMemory(const FailingMemory&) = delete;
    FailingMemory& operator=(const FailingMemory&) = delete;

    /// True if the failing allocation was reached.
    static bool HasFailed();
};

/// The bytes that operator new has handed out to all threads during its lifetime.
class AllocatedMemory
{
public:
    AllocatedMemory();
    std::size_t Bytes() const;

private:
    std::size_t before_;
};
