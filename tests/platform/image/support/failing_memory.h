// Lets the test program run out of memory at a chosen moment.
// Room: tests.
#pragma once

#include <cstddef>

/// While it lives, one allocation by operator new throws std::bad_alloc: the one before which before went
/// well since it was made, on any thread. One lives at a time.
class FailingMemory
{
public:
    explicit FailingMemory(std::size_t before);
    ~FailingMemory();
    FailingMemory(const FailingMemory&) = delete;
    FailingMemory& operator=(const FailingMemory&) = delete;

    /// True when so many allocations were made that one failed.
    static bool HasFailed();
};
