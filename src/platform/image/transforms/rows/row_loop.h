// Compiles a row loop for several instruction sets.
// Room: platform/image/transforms/rows.
#pragma once

/// Put before a free function to compile it twice, with and without AVX2; the loader picks one. Make its
/// pointers __restrict: a byte store may otherwise alias anything, and nothing is vectorised. The sanitizers'
/// run-times aren't up yet when the loader picks, so their builds get the plain version.
#if defined(__x86_64__) && defined(__linux__) && !defined(__SANITIZE_ADDRESS__) && !defined(__clang__)
#define ROW_LOOP __attribute__((target_clones("avx2", "default")))
#else
#define ROW_LOOP
#endif

/// Put before the templates and helpers of such loops: they must be inlined into each version.
#define ROW_LOOP_PART [[gnu::always_inline]] inline
