// What the processor can do.
// Room: platform/image/transforms/rows.
#pragma once

namespace transforms
{

/// True when the instructions of AVX2 may be used.
bool HasAvx2();

/// For tests: from now on they may not, or they may again where there are any.
void DoWithoutAvx2(bool without);

}  // namespace transforms
