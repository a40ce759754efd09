// Replaces operator new to make a chosen allocation fail.
#include "tests/platform/image/support/failing_memory.h"

#include <atomic>
#include <cstdlib>
#include <new>

static constexpr long kNever = -1;
// Allocations that succeed before one fails; negative for no failure.
static std::atomic<long> left{kNever};
static std::atomic<std::size_t> allocated{0};

AllocatedMemory::AllocatedMemory() : before_(allocated) {}

std::size_t AllocatedMemory::Bytes() const
{
    return allocated - before_;
}

FailingMemory::FailingMemory(std::size_t before)
{
    left = static_cast<long>(before);
}

FailingMemory::~FailingMemory()
{
    left = kNever;
}

bool FailingMemory::HasFailed()
{
    return left < 0;
}

// Null when it is time to fail.
static void* Allocate(std::size_t bytes, std::size_t alignment)
{
    if (left >= 0 && left-- == 0)
        return nullptr;
    allocated += bytes;
    if (alignment <= alignof(std::max_align_t))
        return std::malloc(bytes > 0 ? bytes : 1);
    void* block = nullptr;
    return posix_memalign(&block, alignment, bytes) == 0 ? block : nullptr;
}

static void* OrThrow(void* block)
{
    if (!block)
        throw std::bad_alloc();
    return block;
}

void* operator new(std::size_t bytes)
{
    return OrThrow(Allocate(bytes, 0));
}
void* operator new(std::size_t bytes, std::align_val_t alignment)
{
    return OrThrow(Allocate(bytes, static_cast<std::size_t>(alignment)));
}
void* operator new(std::size_t bytes, const std::nothrow_t&) noexcept
{
    return Allocate(bytes, 0);
}
void operator delete(void* block) noexcept
{
    std::free(block);
}
void operator delete(void* block, std::size_t) noexcept
{
    std::free(block);
}
void operator delete(void* block, std::align_val_t) noexcept
{
    std::free(block);
}
void operator delete(void* block, std::size_t, std::align_val_t) noexcept
{
    std::free(block);
}
