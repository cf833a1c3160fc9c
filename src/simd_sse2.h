// The few 128-bit vector operations that the kernels use, on SSE2 only.
// Kernels never name an intrinsic themselves; another target means another
// header with the same functions.
#ifndef KVTG_SIMD_SSE2_H
#define KVTG_SIMD_SSE2_H

#include <emmintrin.h>

namespace kv {

using v2d = __m128d;

inline v2d add(v2d a, v2d b) { return _mm_add_pd(a, b); }
inline v2d sub(v2d a, v2d b) { return _mm_sub_pd(a, b); }
inline v2d mul(v2d a, v2d b) { return _mm_mul_pd(a, b); }
inline v2d zero2() { return _mm_setzero_pd(); }
inline v2d set1(double value) { return _mm_set1_pd(value); }
inline v2d set2(double lo, double hi) { return _mm_set_pd(hi, lo); }
// sign change of both lanes by an exclusive-or with the sign mask
inline v2d neg(v2d a) { return _mm_xor_pd(a, _mm_set1_pd(-0.0)); }
// (lo, hi) -> (-hi, lo): a complex number times i
inline v2d swapNeg(v2d a) { return _mm_xor_pd(_mm_shuffle_pd(a, a, 1), _mm_set_pd(0.0, -0.0)); }
// (lo, hi) -> (hi, lo)
inline v2d swap(v2d a) { return _mm_shuffle_pd(a, a, 1); }
// (a0, b0) and (a1, b1)
inline v2d unpackLow(v2d a, v2d b) { return _mm_unpacklo_pd(a, b); }
inline v2d unpackHigh(v2d a, v2d b) { return _mm_unpackhi_pd(a, b); }

// ---- four floats: in the complex kernels two complex numbers (re, im, re, im)
using v4f = __m128;

inline v4f add(v4f a, v4f b) { return _mm_add_ps(a, b); }
inline v4f sub(v4f a, v4f b) { return _mm_sub_ps(a, b); }
inline v4f mul(v4f a, v4f b) { return _mm_mul_ps(a, b); }
inline v4f zero4() { return _mm_setzero_ps(); }
inline v4f set1f(float value) { return _mm_set1_ps(value); }
inline v4f set4(float l0, float l1, float l2, float l3) { return _mm_set_ps(l3, l2, l1, l0); }
inline v4f neg(v4f a) { return _mm_xor_ps(a, _mm_set1_ps(-0.0f)); }
// (re, im) -> (-im, re) in each half: two complex numbers times i
inline v4f swapNeg(v4f a)
{
    return _mm_xor_ps(_mm_shuffle_ps(a, a, _MM_SHUFFLE(2, 3, 0, 1)), _mm_set_ps(0.0f, -0.0f, 0.0f, -0.0f));
}
// (re, im) -> (im, re) in each half
inline v4f swap(v4f a) { return _mm_shuffle_ps(a, a, _MM_SHUFFLE(2, 3, 0, 1)); }
// lanes 0, 1 from a and lanes 2, 3 from b, as the selector of a shufps says
template <int selector>
inline v4f shuffle(v4f a, v4f b) { return _mm_shuffle_ps(a, b, selector); }
// (a0, b0, a1, b1) and (a2, b2, a3, b3)
inline v4f unpackLow(v4f a, v4f b) { return _mm_unpacklo_ps(a, b); }
inline v4f unpackHigh(v4f a, v4f b) { return _mm_unpackhi_ps(a, b); }
// rows a, b, c, d of a 4x4 matrix become its columns
inline void transpose4(v4f& a, v4f& b, v4f& c, v4f& d)
{
    const v4f ab0 = _mm_unpacklo_ps(a, b), ab1 = _mm_unpackhi_ps(a, b);
    const v4f cd0 = _mm_unpacklo_ps(c, d), cd1 = _mm_unpackhi_ps(c, d);
    a = _mm_movelh_ps(ab0, cd0);
    b = _mm_movehl_ps(cd0, ab0);
    c = _mm_movelh_ps(ab1, cd1);
    d = _mm_movehl_ps(cd1, ab1);
}

// one complex float (8 bytes) into the lower half, the upper half zero
inline v4f loadLow(const float* p) { return _mm_loadl_pi(_mm_setzero_ps(), reinterpret_cast<const __m64*>(p)); }
// two complex floats from two places
inline v4f loadLowHigh(const float* lo, const float* hi)
{
    return _mm_loadh_pi(loadLow(lo), reinterpret_cast<const __m64*>(hi));
}
inline v4f loadPairUnaligned(const float* p) { return _mm_loadu_ps(p); }
inline void storeLow(float* p, v4f v) { _mm_storel_pi(reinterpret_cast<__m64*>(p), v); }
inline void storeHigh(float* p, v4f v) { _mm_storeh_pi(reinterpret_cast<__m64*>(p), v); }
inline void storePairUnaligned(float* p, v4f v) { _mm_storeu_ps(p, v); }

// Aligned form: one complex double, or two complex floats, per 16-byte aligned access.
struct AlignedAccess {
    static v2d load(const double* p) { return _mm_load_pd(p); }
    static void store(double* p, v2d v) { _mm_store_pd(p, v); }
    static v4f loadPair(const float* p) { return _mm_load_ps(p); }
    static void storePair(float* p, v4f v) { _mm_store_ps(p, v); }
    // a whole vector of real samples
    static v4f loadVector(const float* p) { return _mm_load_ps(p); }
    static v2d loadVector(const double* p) { return _mm_load_pd(p); }
    static void storeVector(float* p, v4f v) { _mm_store_ps(p, v); }
    static void storeVector(double* p, v2d v) { _mm_store_pd(p, v); }
};

// Unaligned form: a complex double as two 8-byte accesses (real and imaginary
// part), two complex floats as one 16-byte unaligned access.
struct UnalignedAccess {
    static v4f loadPair(const float* p) { return _mm_loadu_ps(p); }
    static void storePair(float* p, v4f v) { _mm_storeu_ps(p, v); }
    static v4f loadVector(const float* p) { return _mm_loadu_ps(p); }
    static v2d loadVector(const double* p) { return _mm_loadu_pd(p); }
    static void storeVector(float* p, v4f v) { _mm_storeu_ps(p, v); }
    static void storeVector(double* p, v2d v) { _mm_storeu_pd(p, v); }
    static v2d load(const double* p) { return _mm_loadh_pd(_mm_load_sd(p), p + 1); }
    static void store(double* p, v2d v)
    {
        _mm_storel_pd(p, v);
        _mm_storeh_pd(p + 1, v);
    }
};

}  // namespace kv

#endif
