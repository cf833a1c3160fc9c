// Whether this processor can run the x86-64-v3 file of the library, tested as
// glibc's loader tests it before it takes a file from glibc-hwcaps/x86-64-v3/:
// the features of x86-64-v2 (SSE3, SSSE3, SSE4.1, SSE4.2, POPCNT, CMPXCHG16B,
// LAHF) and those that x86-64-v3 adds (AVX, AVX2, BMI1, BMI2, F16C, FMA,
// LZCNT, MOVBE, OSXSAVE), with the operating system saving the vector
// registers.  Read from cpuid, which GCC and clang both provide; the
// compilers' __builtin_cpu_supports differ in the names they know (clang 14
// has no "x86-64-v3", "f16c", "lzcnt" or "movbe").
#ifndef KVTG_BENCH_PROCESSOR_LEVEL_H
#define KVTG_BENCH_PROCESSOR_LEVEL_H

#include <cpuid.h>

namespace bench {

inline bool processorRunsX86_64_v3()
{
    unsigned eax = 0, ebx = 0, ecx = 0, edx = 0;
    if (__get_cpuid_max(0, nullptr) < 7 || !__get_cpuid(1, &eax, &ebx, &ecx, &edx))
        return false;
    const unsigned leaf1 = bit_SSE3 | bit_SSSE3 | bit_SSE4_1 | bit_SSE4_2 | bit_POPCNT | bit_CMPXCHG16B | bit_AVX |
                           bit_F16C | bit_FMA | bit_MOVBE | bit_OSXSAVE;
    if ((ecx & leaf1) != leaf1)
        return false;
    // the XMM and YMM state enabled in XCR0 (bits 1 and 2); xgetbv is there
    // since OSXSAVE is
    unsigned xcr0 = 0, xcr0High = 0;
    __asm__("xgetbv" : "=a"(xcr0), "=d"(xcr0High) : "c"(0));
    if ((xcr0 & 6u) != 6u)
        return false;
    const unsigned leaf7 = bit_BMI | bit_AVX2 | bit_BMI2;
    if (!__get_cpuid_count(7, 0, &eax, &ebx, &ecx, &edx) || (ebx & leaf7) != leaf7)
        return false;
    const unsigned extended = bit_LAHF_LM | bit_LZCNT;
    return __get_cpuid(0x80000001u, &eax, &ebx, &ecx, &edx) && (ecx & extended) == extended;
}

}  // namespace bench

#endif
