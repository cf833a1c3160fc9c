// The vector operations of the x86-64-v3 build: the 128-bit operations of the
// SSE2 layer (compiled to their VEX forms) and their 256-bit twins.  Every
// operation rounds each lane on its own, as its 128-bit form does, so a kernel
// that runs the same operations on wider vectors gives the same bits.  No
// fused multiply-add is used: the build turns contraction off and the layer
// names no FMA intrinsic.
#ifndef KVTG_SIMD_AVX2_H
#define KVTG_SIMD_AVX2_H

#include <immintrin.h>

#include "simd_sse2.h"

namespace kv {

// ---- four doubles: in the complex kernels two complex numbers (re, im, re, im)
using v4d = __m256d;

inline v4d add(v4d a, v4d b) { return _mm256_add_pd(a, b); }
inline v4d sub(v4d a, v4d b) { return _mm256_sub_pd(a, b); }
inline v4d mul(v4d a, v4d b) { return _mm256_mul_pd(a, b); }
inline v4d zero4d() { return _mm256_setzero_pd(); }
inline v4d set1d(double value) { return _mm256_set1_pd(value); }
inline v4d set4d(double l0, double l1, double l2, double l3) { return _mm256_set_pd(l3, l2, l1, l0); }
inline v4d neg(v4d a) { return _mm256_xor_pd(a, _mm256_set1_pd(-0.0)); }
// (re, im) -> (-im, re) in each half: two complex numbers times i
inline v4d swapNeg(v4d a) { return _mm256_xor_pd(_mm256_permute_pd(a, 5), _mm256_set_pd(0.0, -0.0, 0.0, -0.0)); }
// (re, im) -> (im, re) in each half
inline v4d swap(v4d a) { return _mm256_permute_pd(a, 5); }
// in each 128-bit half: (a0, b0) and (a1, b1)
inline v4d unpackLow(v4d a, v4d b) { return _mm256_unpacklo_pd(a, b); }
inline v4d unpackHigh(v4d a, v4d b) { return _mm256_unpackhi_pd(a, b); }
// the 128-bit halves: (a.lo, b.lo) and (a.hi, b.hi)
inline v4d joinLow(v4d a, v4d b) { return _mm256_permute2f128_pd(a, b, 0x20); }
inline v4d joinHigh(v4d a, v4d b) { return _mm256_permute2f128_pd(a, b, 0x31); }
inline v4d join(v2d lo, v2d hi) { return _mm256_insertf128_pd(_mm256_castpd128_pd256(lo), hi, 1); }
inline v2d lowHalf(v4d a) { return _mm256_castpd256_pd128(a); }
// halves of a and b as a vperm2f128 selects them: bits 0-1 the lower half of
// the result, bits 4-5 the upper (0, 1: halves of a; 2, 3: halves of b)
template <int selector>
inline v4d permuteHalves(v4d a, v4d b) { return _mm256_permute2f128_pd(a, b, selector); }
inline v2d highHalf(v4d a) { return _mm256_extractf128_pd(a, 1); }

// ---- eight floats: four complex numbers, or eight real parts of independent butterflies
using v8f = __m256;

inline v8f add(v8f a, v8f b) { return _mm256_add_ps(a, b); }
inline v8f sub(v8f a, v8f b) { return _mm256_sub_ps(a, b); }
inline v8f mul(v8f a, v8f b) { return _mm256_mul_ps(a, b); }
inline v8f zero8() { return _mm256_setzero_ps(); }
inline v8f set1f8(float value) { return _mm256_set1_ps(value); }
inline v8f set8(float l0, float l1, float l2, float l3, float l4, float l5, float l6, float l7)
{
    return _mm256_set_ps(l7, l6, l5, l4, l3, l2, l1, l0);
}
inline v8f neg(v8f a) { return _mm256_xor_ps(a, _mm256_set1_ps(-0.0f)); }
// (re, im) -> (-im, re) in each quarter: four complex numbers times i
inline v8f swapNeg(v8f a)
{
    return _mm256_xor_ps(_mm256_permute_ps(a, _MM_SHUFFLE(2, 3, 0, 1)),
                         _mm256_set_ps(0.0f, -0.0f, 0.0f, -0.0f, 0.0f, -0.0f, 0.0f, -0.0f));
}
inline v8f swap(v8f a) { return _mm256_permute_ps(a, _MM_SHUFFLE(2, 3, 0, 1)); }
// the selector of a shufps, in each 128-bit half
template <int selector>
inline v8f shuffle(v8f a, v8f b) { return _mm256_shuffle_ps(a, b, selector); }
inline v8f unpackLow(v8f a, v8f b) { return _mm256_unpacklo_ps(a, b); }
inline v8f unpackHigh(v8f a, v8f b) { return _mm256_unpackhi_ps(a, b); }
inline v8f joinLow(v8f a, v8f b) { return _mm256_permute2f128_ps(a, b, 0x20); }
inline v8f joinHigh(v8f a, v8f b) { return _mm256_permute2f128_ps(a, b, 0x31); }
inline v8f join(v4f lo, v4f hi) { return _mm256_insertf128_ps(_mm256_castps128_ps256(lo), hi, 1); }
inline v4f lowHalf(v8f a) { return _mm256_castps256_ps128(a); }
template <int selector>
inline v8f permuteHalves(v8f a, v8f b) { return _mm256_permute2f128_ps(a, b, selector); }
inline v4f highHalf(v8f a) { return _mm256_extractf128_ps(a, 1); }

// 32-byte accesses: aligned where the kernel knows it, unaligned otherwise
inline v4d load4d(const double* p) { return _mm256_loadu_pd(p); }
inline void store4d(double* p, v4d v) { _mm256_storeu_pd(p, v); }
inline v8f load8(const float* p) { return _mm256_loadu_ps(p); }
inline void store8(float* p, v8f v) { _mm256_storeu_ps(p, v); }

}  // namespace kv

#endif
