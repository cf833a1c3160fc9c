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

// One complex double per 16-byte aligned access.
struct AlignedAccess {
    static v2d load(const double* p) { return _mm_load_pd(p); }
    static void store(double* p, v2d v) { _mm_store_pd(p, v); }
};

// The same sample as two 8-byte accesses, real and imaginary part.
struct UnalignedAccess {
    static v2d load(const double* p) { return _mm_loadh_pd(_mm_load_sd(p), p + 1); }
    static void store(double* p, v2d v)
    {
        _mm_storel_pd(p, v);
        _mm_storeh_pd(p + 1, v);
    }
};

}  // namespace kv

#endif
