// The SIMD layer of the target this unit is compiled for: the 128-bit SSE2
// layer in the baseline library, the 256-bit AVX2 layer (which also carries
// the 128-bit operations) in its x86-64-v3 twin.
#ifndef KVTG_SIMD_H
#define KVTG_SIMD_H

#if defined(KVTG_TARGET_AVX2)
#include "simd_avx2.h"
#else
#include "simd_sse2.h"
#endif

#endif
