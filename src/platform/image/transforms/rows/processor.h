// Features of the processor.
// Room: platform/image/transforms/rows.
#pragma once

namespace transforms
{

/// True if AVX2 is available.
bool HasAvx2();

/// For tests: disables AVX2, or enables it again where it is available.
void DoWithoutAvx2(bool without);

}  // namespace transforms
