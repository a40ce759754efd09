// Declares a loop over a row of pixels so that it uses the best instructions available.
// Room: platform/image/transforms/rows.
#pragma once

/// Before a free function: it is compiled twice, for processors with AVX2 and for any, and the right one is
/// taken when the program is loaded. Its pointers should be __restrict, or a store of a byte may change what
/// any of them points to and nothing is vectorised. The sanitizers' run-times aren't there yet when that
/// choice is made, so they get the plain version.
#if defined(__x86_64__) && defined(__linux__) && !defined(__SANITIZE_ADDRESS__) && !defined(__clang__)
#define ROW_LOOP __attribute__((target_clones("avx2", "default")))
#else
#define ROW_LOOP
#endif

/// Before the templates and helpers that such loops are made of: they must become part of each version.
#define ROW_LOOP_PART [[gnu::always_inline]] inline
