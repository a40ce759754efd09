// Asks the processor once.
#include "src/platform/image/transforms/rows/processor.h"

#include <atomic>

namespace transforms
{

static std::atomic<bool> bUnwanted = false;

bool bHasAvx2()
{
#if defined(__x86_64__)
    static const bool bCan = __builtin_cpu_supports("avx2");
    return bCan && !bUnwanted;
#else
    return false;
#endif
}

void DoWithoutAvx2(bool bWithout)
{
    bUnwanted = bWithout;
}

}  // namespace transforms
