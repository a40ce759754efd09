// Detects which PNG kernels are compiled in and supported by this machine.
// Room: platform/image/codecs/png/filters.
#pragma once

#if defined(__x86_64__)
#define VARNEL_PNG_AVX2 1
#define VARNEL_TARGET_AVX2 __attribute__((target("avx2,bmi,bmi2,popcnt")))

struct PngUnfilters;
struct PngFilters;

/// True if the CPU has AVX2 and BMI2.
inline bool HasAvx2ForPng()
{
    return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("bmi2");
}

extern const PngUnfilters kPngUnfiltersAvx2;
extern const PngFilters kPngFiltersAvx2;
#endif
