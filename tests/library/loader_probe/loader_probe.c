/* Prints the path of the library file that the loader chose, then the exact
   bits of one transform of each family, so that two runs under different
   files can be compared line for line. */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "kvtgen.h"

static uint64_t state = 88172645463325252ull;
static double next(void)
{
    state ^= state << 13;
    state ^= state >> 7;
    state ^= state << 17;
    return (double)(state >> 11) / 9007199254740992.0 - 0.5;
}

static void printBits(const char* what, const void* data, size_t bytes)
{
    const unsigned char* p = data;
    uint64_t hash = 1469598103934665603ull;
    for (size_t i = 0; i < bytes; ++i)
        hash = (hash ^ p[i]) * 1099511628211ull;
    printf("%-28s %016llx\n", what, (unsigned long long)hash);
}

int main(void)
{
    Dl_info info;
    if (!dladdr(kvtgenGetLibVersion(), &info) || !info.dli_fname)
        return 1;
    printf("library file: %s\n", info.dli_fname);

    static Complex64 c64[64], y64[64];
    static Complex32 c32[64], y32[64];
    static float r32[1024], s32[1024];
    static double r64[1024], s64[1024];
    for (int i = 0; i < 64; ++i) {
        c64[i].re = next(), c64[i].im = next();
        c32[i].re = (float)next(), c32[i].im = (float)next();
    }
    for (int i = 0; i < 1024; ++i)
        r32[i] = (float)next(), r64[i] = next();
    int failures = 0;
    for (int n = 2; n <= 64; ++n) {
        char name[64];
        failures += kvtgDFTFwd_CToC_64fc(c64, y64, n, ScaleNone) != StatusOk;
        failures += kvtgDFTInv_CToC_32fc(c32, y32, n, ScaleBySqrtN) != StatusOk;
        snprintf(name, sizeof name, "complex %d", n);
        printBits(name, y64, sizeof(Complex64) * (size_t)n);
        printBits(name, y32, sizeof(Complex32) * (size_t)n);
        failures += kvtgDFTFwd_RToCCS_32f(r32, s32, n, ScaleNone) != StatusOk;
        failures += kvtgHartley_64f(r64, s64, n, ScaleNone) != StatusOk;
        snprintf(name, sizeof name, "real and Hartley %d", n);
        printBits(name, s32, sizeof(float) * (size_t)(n + 2));
        printBits(name, s64, sizeof(double) * (size_t)n);
    }
    failures += kvtgWHT_32f(r32, s32, 10, ScaleNone, NULL) != StatusOk;
    printBits("Walsh-Hadamard 2^10", s32, sizeof s32);
    DctPlan* plan = NULL;
    failures += kvtgDCT4InitAlloc_64f(&plan, 1024) != StatusOk;
    failures += kvtgDCT4_64f(r64, s64, plan) != StatusOk;
    kvtgDCT4Free_64f(plan);
    printBits("DCT-IV 1024", s64, sizeof s64);
    return failures != 0;
}
