// The program's operator new, which counts down to its failure.
#include "tests/platform/image/support/failing_memory.h"

#include <atomic>
#include <cstdlib>
#include <new>

static constexpr long kNever = -1;
// How many allocations go well before one fails; below 0 none does.
static std::atomic<long> nLeft{kNever};

FailingMemory::FailingMemory(std::size_t nBefore)
{
    nLeft = static_cast<long>(nBefore);
}

FailingMemory::~FailingMemory()
{
    nLeft = kNever;
}

bool FailingMemory::bHasFailed()
{
    return nLeft < 0;
}

// Nothing when it is time to fail.
static void* pAllocate(std::size_t nBytes, std::size_t nAlignment)
{
    if (nLeft >= 0 && nLeft-- == 0)
        return nullptr;
    if (nAlignment <= alignof(std::max_align_t))
        return std::malloc(nBytes > 0 ? nBytes : 1);
    void* pBlock = nullptr;
    return posix_memalign(&pBlock, nAlignment, nBytes) == 0 ? pBlock : nullptr;
}

static void* pOrThrow(void* pBlock)
{
    if (!pBlock)
        throw std::bad_alloc();
    return pBlock;
}

void* operator new(std::size_t nBytes)
{
    return pOrThrow(pAllocate(nBytes, 0));
}
void* operator new(std::size_t nBytes, std::align_val_t nAlignment)
{
    return pOrThrow(pAllocate(nBytes, static_cast<std::size_t>(nAlignment)));
}
void* operator new(std::size_t nBytes, const std::nothrow_t&) noexcept
{
    return pAllocate(nBytes, 0);
}
void operator delete(void* pBlock) noexcept
{
    std::free(pBlock);
}
void operator delete(void* pBlock, std::size_t) noexcept
{
    std::free(pBlock);
}
void operator delete(void* pBlock, std::align_val_t) noexcept
{
    std::free(pBlock);
}
void operator delete(void* pBlock, std::size_t, std::align_val_t) noexcept
{
    std::free(pBlock);
}
