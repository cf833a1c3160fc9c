// The core vector operations of the x86-64-v3 target: the 16-byte vectors of
// the baseline (compiled to their VEX forms) and the target's widest vectors,
// `dwide` and `fwide` (32 bytes).  Every operation rounds each lane on its
// own, as its 16-byte form does, so a kernel that runs the same operations on
// wider vectors gives the same bits.  No fused multiply-add is used: the build
// turns contraction off and the layer names no FMA intrinsic.
#ifndef KVTG_SIMD_AVX2_H
#define KVTG_SIMD_AVX2_H

#include <immintrin.h>

#include "simd_sse2.h"

namespace kv {

// ---- the 16-byte vectors: what needs more than SSE2
// lane i of the result is lane (selector >> 2i) & 3 of a
template <int selector>
inline fvec permute(fvec a) { return _mm_permute_ps(a, selector); }
// lane i from b where bit i of the mask is set, else from a
template <int mask>
inline fvec blend(fvec a, fvec b) { return _mm_blend_ps(a, b, mask); }
template <int i>
inline float lane(fvec a) { return _mm_cvtss_f32(i == 0 ? a : _mm_permute_ps(a, i)); }

// ---- four doubles: in the complex kernels two complex numbers (re, im, re, im)
using dwide = __m256d;
template <>
struct VectorOf<double, 4> {
    using type = dwide;
};

template <>
struct Lanes<dwide> {
    using Real = double;
    static constexpr int count = 4;
    static dwide zero() { return _mm256_setzero_pd(); }
    static dwide broadcast(double x) { return _mm256_set1_pd(x); }
    static dwide set(double l0, double l1, double l2, double l3) { return _mm256_set_pd(l3, l2, l1, l0); }
    static dwide load(const double* p) { return _mm256_loadu_pd(p); }
};
inline void store(double* p, dwide v) { _mm256_storeu_pd(p, v); }
inline dwide add(dwide a, dwide b) { return _mm256_add_pd(a, b); }
inline dwide sub(dwide a, dwide b) { return _mm256_sub_pd(a, b); }
inline dwide mul(dwide a, dwide b) { return _mm256_mul_pd(a, b); }
inline dwide neg(dwide a) { return _mm256_xor_pd(a, _mm256_set1_pd(-0.0)); }
// (re, im) -> (-im, re) in each half: two complex numbers times i
inline dwide swapNeg(dwide a) { return _mm256_xor_pd(_mm256_permute_pd(a, 5), _mm256_set_pd(0.0, -0.0, 0.0, -0.0)); }
// (re, im) -> (im, re) in each half
inline dwide swap(dwide a) { return _mm256_permute_pd(a, 5); }
// in each 16-byte half: (a0, b0) and (a1, b1)
inline dwide unpackLow(dwide a, dwide b) { return _mm256_unpacklo_pd(a, b); }
inline dwide unpackHigh(dwide a, dwide b) { return _mm256_unpackhi_pd(a, b); }
// the 16-byte halves: (a.lo, b.lo) and (a.hi, b.hi)
inline dwide joinLow(dwide a, dwide b) { return _mm256_permute2f128_pd(a, b, 0x20); }
inline dwide joinHigh(dwide a, dwide b) { return _mm256_permute2f128_pd(a, b, 0x31); }
inline dwide join(dvec lo, dvec hi) { return _mm256_insertf128_pd(_mm256_castpd128_pd256(lo), hi, 1); }
inline dvec lowHalf(dwide a) { return _mm256_castpd256_pd128(a); }
inline dvec highHalf(dwide a) { return _mm256_extractf128_pd(a, 1); }
// halves of a and b as a vperm2f128 selects them: bits 0-1 the lower half of
// the result, bits 4-5 the upper (0, 1: halves of a; 2, 3: halves of b)
template <int selector>
inline dwide permuteHalves(dwide a, dwide b) { return _mm256_permute2f128_pd(a, b, selector); }
// lane i of the result is lane (selector >> 2i) & 3 of a
template <int selector>
inline dwide permute(dwide a) { return _mm256_permute4x64_pd(a, selector); }
inline dwide reverse(dwide a) { return _mm256_permute4x64_pd(a, 0x1B); }
template <int mask>
inline dwide blend(dwide a, dwide b) { return _mm256_blend_pd(a, b, mask); }
template <int i>
inline double lane(dwide a)
{
    const dvec half = i < 2 ? _mm256_castpd256_pd128(a) : _mm256_extractf128_pd(a, 1);
    return _mm_cvtsd_f64(i % 2 == 0 ? half : _mm_unpackhi_pd(half, half));
}
// the 16 bytes at p (aligned to 16) in both halves
inline dwide broadcastHalf(const double* p) { return _mm256_broadcast_pd(reinterpret_cast<const __m128d*>(p)); }
// exact widening of the lanes of an fvec, and their rounding back
inline dwide toDouble(fvec a) { return _mm256_cvtps_pd(a); }
inline fvec toFloat(dwide a) { return _mm256_cvtpd_ps(a); }
template <>
inline dwide convert<dwide, fvec>(fvec a) { return toDouble(a); }
template <>
inline fvec convert<fvec, dwide>(dwide a) { return toFloat(a); }

// ---- eight floats: four complex numbers, or eight real parts of independent butterflies
using fwide = __m256;
template <>
struct VectorOf<float, 8> {
    using type = fwide;
};

template <>
struct Lanes<fwide> {
    using Real = float;
    static constexpr int count = 8;
    static fwide zero() { return _mm256_setzero_ps(); }
    static fwide broadcast(float x) { return _mm256_set1_ps(x); }
    static fwide set(float l0, float l1, float l2, float l3, float l4, float l5, float l6, float l7)
    {
        return _mm256_set_ps(l7, l6, l5, l4, l3, l2, l1, l0);
    }
    static fwide load(const float* p) { return _mm256_loadu_ps(p); }
};
inline void store(float* p, fwide v) { _mm256_storeu_ps(p, v); }
inline fwide add(fwide a, fwide b) { return _mm256_add_ps(a, b); }
inline fwide sub(fwide a, fwide b) { return _mm256_sub_ps(a, b); }
inline fwide mul(fwide a, fwide b) { return _mm256_mul_ps(a, b); }
inline fwide neg(fwide a) { return _mm256_xor_ps(a, _mm256_set1_ps(-0.0f)); }
// (re, im) -> (-im, re) in each quarter: four complex numbers times i
inline fwide swapNeg(fwide a)
{
    return _mm256_xor_ps(_mm256_permute_ps(a, _MM_SHUFFLE(2, 3, 0, 1)),
                         _mm256_set_ps(0.0f, -0.0f, 0.0f, -0.0f, 0.0f, -0.0f, 0.0f, -0.0f));
}
inline fwide swap(fwide a) { return _mm256_permute_ps(a, _MM_SHUFFLE(2, 3, 0, 1)); }
// the selector of a shufps, in each 16-byte half
template <int selector>
inline fwide shuffle(fwide a, fwide b) { return _mm256_shuffle_ps(a, b, selector); }
inline fwide unpackLow(fwide a, fwide b) { return _mm256_unpacklo_ps(a, b); }
inline fwide unpackHigh(fwide a, fwide b) { return _mm256_unpackhi_ps(a, b); }
inline fwide joinLow(fwide a, fwide b) { return _mm256_permute2f128_ps(a, b, 0x20); }
inline fwide joinHigh(fwide a, fwide b) { return _mm256_permute2f128_ps(a, b, 0x31); }
inline fwide join(fvec lo, fvec hi) { return _mm256_insertf128_ps(_mm256_castps128_ps256(lo), hi, 1); }
// lo in the lower half; the upper half is not looked at
inline fwide widen(fvec lo) { return _mm256_castps128_ps256(lo); }
inline fvec lowHalf(fwide a) { return _mm256_castps256_ps128(a); }
inline fvec highHalf(fwide a) { return _mm256_extractf128_ps(a, 1); }
inline fwide broadcastHalf(const float* p) { return _mm256_broadcast_ps(reinterpret_cast<const __m128*>(p)); }
template <int selector>
inline fwide permuteHalves(fwide a, fwide b) { return _mm256_permute2f128_ps(a, b, selector); }
inline fwide reverse(fwide a) { return _mm256_permutevar8x32_ps(a, _mm256_set_epi32(0, 1, 2, 3, 4, 5, 6, 7)); }
template <int mask>
inline fwide blend(fwide a, fwide b) { return _mm256_blend_ps(a, b, mask); }
// the sign of lane i changed where bit i of the mask is set
template <int mask>
inline fwide negLanes(fwide a)
{
    auto sign = [](int i) { return (mask >> i) & 1 ? -0.0f : 0.0f; };
    return _mm256_xor_ps(a, _mm256_set_ps(sign(7), sign(6), sign(5), sign(4), sign(3), sign(2), sign(1), sign(0)));
}

}  // namespace kv

#endif
