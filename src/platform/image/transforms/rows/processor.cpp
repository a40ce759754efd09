// Detects the processor's features once.
#include "src/platform/image/transforms/rows/processor.h"

#include <atomic>

namespace transforms
{

static std::atomic<bool> unwanted = false;

bool HasAvx2()
{
#if defined(__x86_64__)
    static const bool kCan = __builtin_cpu_supports("avx2");
    return kCan && !unwanted;
#else
    return false;
#endif
}

void DoWithoutAvx2(bool without)
{
    unwanted = without;
}

}  // namespace transforms
