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
// lo in the lower half; the upper half is not looked at
inline v8f widen(v4f lo) { return _mm256_castps128_ps256(lo); }
inline v4f lowHalf(v8f a) { return _mm256_castps256_ps128(a); }
template <int selector>
inline v8f permuteHalves(v8f a, v8f b) { return _mm256_permute2f128_ps(a, b, selector); }
inline v4f highHalf(v8f a) { return _mm256_extractf128_ps(a, 1); }

// lanes in reverse order
inline v4d reverse(v4d a) { return _mm256_permute4x64_pd(a, 0x1B); }
inline v8f reverse(v8f a) { return _mm256_permutevar8x32_ps(a, _mm256_set_epi32(0, 1, 2, 3, 4, 5, 6, 7)); }
// rows a, b, c, d of a 4x4 matrix become its columns
inline void transpose4(v4d& a, v4d& b, v4d& c, v4d& d)
{
    const v4d ab0 = _mm256_unpacklo_pd(a, b), ab1 = _mm256_unpackhi_pd(a, b);
    const v4d cd0 = _mm256_unpacklo_pd(c, d), cd1 = _mm256_unpackhi_pd(c, d);
    a = _mm256_permute2f128_pd(ab0, cd0, 0x20);
    b = _mm256_permute2f128_pd(ab1, cd1, 0x20);
    c = _mm256_permute2f128_pd(ab0, cd0, 0x31);
    d = _mm256_permute2f128_pd(ab1, cd1, 0x31);
}
// rows r[0..7] of an 8x8 matrix become its columns
inline void transpose8(v8f* r)
{
    const v8f t0 = _mm256_unpacklo_ps(r[0], r[1]), t1 = _mm256_unpackhi_ps(r[0], r[1]);
    const v8f t2 = _mm256_unpacklo_ps(r[2], r[3]), t3 = _mm256_unpackhi_ps(r[2], r[3]);
    const v8f t4 = _mm256_unpacklo_ps(r[4], r[5]), t5 = _mm256_unpackhi_ps(r[4], r[5]);
    const v8f t6 = _mm256_unpacklo_ps(r[6], r[7]), t7 = _mm256_unpackhi_ps(r[6], r[7]);
    const v8f u0 = _mm256_shuffle_ps(t0, t2, _MM_SHUFFLE(1, 0, 1, 0)), u1 = _mm256_shuffle_ps(t0, t2, _MM_SHUFFLE(3, 2, 3, 2));
    const v8f u2 = _mm256_shuffle_ps(t1, t3, _MM_SHUFFLE(1, 0, 1, 0)), u3 = _mm256_shuffle_ps(t1, t3, _MM_SHUFFLE(3, 2, 3, 2));
    const v8f u4 = _mm256_shuffle_ps(t4, t6, _MM_SHUFFLE(1, 0, 1, 0)), u5 = _mm256_shuffle_ps(t4, t6, _MM_SHUFFLE(3, 2, 3, 2));
    const v8f u6 = _mm256_shuffle_ps(t5, t7, _MM_SHUFFLE(1, 0, 1, 0)), u7 = _mm256_shuffle_ps(t5, t7, _MM_SHUFFLE(3, 2, 3, 2));
    r[0] = _mm256_permute2f128_ps(u0, u4, 0x20);
    r[1] = _mm256_permute2f128_ps(u1, u5, 0x20);
    r[2] = _mm256_permute2f128_ps(u2, u6, 0x20);
    r[3] = _mm256_permute2f128_ps(u3, u7, 0x20);
    r[4] = _mm256_permute2f128_ps(u0, u4, 0x31);
    r[5] = _mm256_permute2f128_ps(u1, u5, 0x31);
    r[6] = _mm256_permute2f128_ps(u2, u6, 0x31);
    r[7] = _mm256_permute2f128_ps(u3, u7, 0x31);
}
// the lower half from lo, the upper half from hi: two 16-byte aligned pieces
inline v4d loadHalves(const double* lo, const double* hi)
{
    return _mm256_insertf128_pd(_mm256_castpd128_pd256(_mm_load_pd(lo)), _mm_load_pd(hi), 1);
}
inline v8f loadHalves(const float* lo, const float* hi)
{
    return _mm256_insertf128_ps(_mm256_castps128_ps256(_mm_load_ps(lo)), _mm_load_ps(hi), 1);
}
// one 16-byte aligned piece in both halves
inline v4d broadcastHalf(const double* p) { return _mm256_broadcast_pd(reinterpret_cast<const __m128d*>(p)); }
inline v8f broadcastHalf(const float* p) { return _mm256_broadcast_ps(reinterpret_cast<const __m128*>(p)); }
// a store past the caches as two 16-byte pieces: needs 16-byte alignment only
inline void streamHalves(double* p, v4d v)
{
    _mm_stream_pd(p, lowHalf(v));
    _mm_stream_pd(p + 2, highHalf(v));
}
inline void streamHalves(float* p, v8f v)
{
    _mm_stream_ps(p, lowHalf(v));
    _mm_stream_ps(p + 4, highHalf(v));
}

// 32-byte accesses: aligned where the kernel knows it, unaligned otherwise
inline v4d load4d(const double* p) { return _mm256_loadu_pd(p); }
inline void store4d(double* p, v4d v) { _mm256_storeu_pd(p, v); }
inline v8f load8(const float* p) { return _mm256_loadu_ps(p); }
inline void store8(float* p, v8f v) { _mm256_storeu_ps(p, v); }
// the two halves of v to two places, 16 bytes each
inline void storeHalves(float* lo, float* hi, v8f v)
{
    _mm_storeu_ps(lo, lowHalf(v));
    _mm_storeu_ps(hi, highHalf(v));
}

// ---- pairs of vectors in the Walsh-Hadamard networks: a holds the samples
// whose index bit of the pair is 0, b those where it is 1.  Both moves only
// carry samples between lanes and vectors.
// a takes the lower 128-bit halves of a and b, b the upper halves: the pair's
// bit and the lane bit of the halves trade places.
inline void exchangeHalves(v8f& a, v8f& b)
{
    const v8f low = joinLow(a, b);
    b = joinHigh(a, b);
    a = low;
}
inline void exchangeHalves(v4d& a, v4d& b)
{
    const v4d low = joinLow(a, b);
    b = joinHigh(a, b);
    a = low;
}
// within each 128-bit half, a takes the even lanes of a and b, b the odd ones:
// the lowest lane bit moves between the vectors, the pair's bit into the lanes
inline void splitEvenOdd(v8f& a, v8f& b)
{
    const v8f even = shuffle<_MM_SHUFFLE(2, 0, 2, 0)>(a, b);
    b = shuffle<_MM_SHUFFLE(3, 1, 3, 1)>(a, b);
    a = even;
}
inline void splitEvenOdd(v4d& a, v4d& b)
{
    const v4d even = unpackLow(a, b);
    b = unpackHigh(a, b);
    a = even;
}

// 256-bit accesses of real samples for kernels that know their arrays to be
// aligned to 16 bytes only: unaligned moves, as fast as aligned ones wherever
// the address is a multiple of 32.
struct WideAccess {
    static v8f loadVector(const float* p) { return _mm256_loadu_ps(p); }
    static v4d loadVector(const double* p) { return _mm256_loadu_pd(p); }
    static void storeVector(float* p, v8f v) { _mm256_storeu_ps(p, v); }
    static void storeVector(double* p, v4d v) { _mm256_storeu_pd(p, v); }
};

// ---- lanes of the packed real kernels: four Real64 values in a 256-bit
// vector, four Real32 values in a 128-bit one, so that a widening or a
// narrowing maps four lanes onto four.
// lane i of the result is lane (selector >> 2i) & 3 of a
template <int selector>
inline v4d permute4(v4d a) { return _mm256_permute4x64_pd(a, selector); }
template <int selector>
inline v4f permute4(v4f a) { return _mm_permute_ps(a, selector); }
// lane i from b where bit i of the mask is set, else from a
template <int mask>
inline v4d blend(v4d a, v4d b) { return _mm256_blend_pd(a, b, mask); }
template <int mask>
inline v4f blend(v4f a, v4f b) { return _mm_blend_ps(a, b, mask); }
template <int mask>
inline v8f blend(v8f a, v8f b) { return _mm256_blend_ps(a, b, mask); }
// the sign of lane i changed where bit i of the mask is set
template <int mask>
inline v8f negLanes(v8f a)
{
    auto sign = [](int i) { return (mask >> i) & 1 ? -0.0f : 0.0f; };
    return _mm256_xor_ps(a, _mm256_set_ps(sign(7), sign(6), sign(5), sign(4), sign(3), sign(2), sign(1), sign(0)));
}
template <int i>
inline double lane(v4d a)
{
    const v2d half = i < 2 ? _mm256_castpd256_pd128(a) : _mm256_extractf128_pd(a, 1);
    return _mm_cvtsd_f64(i % 2 == 0 ? half : _mm_unpackhi_pd(half, half));
}
template <int i>
inline float lane(v4f a) { return _mm_cvtss_f32(i == 0 ? a : _mm_permute_ps(a, i)); }
// exact widening of four Real32 values, and their rounding back
inline v4d widen4(v4f a) { return _mm256_cvtps_pd(a); }
inline v4f narrow4(v4d a) { return _mm256_cvtpd_ps(a); }
inline v4f load4f(const float* p) { return _mm_loadu_ps(p); }
inline void store4f(float* p, v4f v) { _mm_storeu_ps(p, v); }

}  // namespace kv

#endif
