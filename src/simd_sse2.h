// The core vector operations of the baseline target, SSE2 and nothing later.
// Kernels never name an intrinsic and never a width: they name the vector
// types below (`dvec`, `fvec`: the 16-byte vectors of the baseline's forms)
// and the operations, which are overloaded on the type or take it as their
// template argument (`zero<V>()`, `broadcast<V>(x)`, `set<V>(...)`,
// `load<V>(p)`).  Another target is another header with the same names.
#ifndef KVTG_SIMD_SSE2_H
#define KVTG_SIMD_SSE2_H

#include <emmintrin.h>

// The vector types are template arguments below (Lanes<fvec>, load<fvec>);
// their may-alias attribute does not take part in the argument, which is
// what GCC warns of, and the four types stay distinct by their lanes.
#pragma GCC diagnostic ignored "-Wignored-attributes"

namespace kv {

// What a vector type holds and how it is made; one specialisation per type.
template <class V>
struct Lanes;

template <class V>
constexpr int lanes = Lanes<V>::count;
// the vector type of `count` values of type Real
template <class Real, int count>
struct VectorOf;
template <class Real, int count>
using vector = typename VectorOf<Real, count>::type;
template <class V>
inline V zero() { return Lanes<V>::zero(); }
// every lane x
template <class V>
inline V broadcast(typename Lanes<V>::Real x) { return Lanes<V>::broadcast(x); }
// lane i the i-th argument
template <class V, class... Real>
inline V set(Real... x) { return Lanes<V>::set(x...); }
// a whole vector from an address of any alignment
template <class V>
inline V load(const typename Lanes<V>::Real* p) { return Lanes<V>::load(p); }

// ---- two doubles: one complex number (re, im), or two real samples
using dvec = __m128d;
template <>
struct VectorOf<double, 2> {
    using type = dvec;
};

template <>
struct Lanes<dvec> {
    using Real = double;
    static constexpr int count = 2;
    static dvec zero() { return _mm_setzero_pd(); }
    static dvec broadcast(double x) { return _mm_set1_pd(x); }
    static dvec set(double l0, double l1) { return _mm_set_pd(l1, l0); }
    static dvec load(const double* p) { return _mm_loadu_pd(p); }
};
inline void store(double* p, dvec v) { _mm_storeu_pd(p, v); }
inline dvec add(dvec a, dvec b) { return _mm_add_pd(a, b); }
inline dvec sub(dvec a, dvec b) { return _mm_sub_pd(a, b); }
inline dvec mul(dvec a, dvec b) { return _mm_mul_pd(a, b); }
// sign change of both lanes by an exclusive-or with the sign mask
inline dvec neg(dvec a) { return _mm_xor_pd(a, _mm_set1_pd(-0.0)); }
// (lo, hi) -> (-hi, lo): a complex number times i
inline dvec swapNeg(dvec a) { return _mm_xor_pd(_mm_shuffle_pd(a, a, 1), _mm_set_pd(0.0, -0.0)); }
// (lo, hi) -> (hi, lo)
inline dvec swap(dvec a) { return _mm_shuffle_pd(a, a, 1); }
// (a0, b0) and (a1, b1)
inline dvec unpackLow(dvec a, dvec b) { return _mm_unpacklo_pd(a, b); }
inline dvec unpackHigh(dvec a, dvec b) { return _mm_unpackhi_pd(a, b); }
// a store past the caches; p aligned to the vector
inline void stream(double* p, dvec v) { _mm_stream_pd(p, v); }

// ---- four floats: in the complex kernels two complex numbers (re, im, re, im)
using fvec = __m128;
template <>
struct VectorOf<float, 4> {
    using type = fvec;
};

template <>
struct Lanes<fvec> {
    using Real = float;
    static constexpr int count = 4;
    static fvec zero() { return _mm_setzero_ps(); }
    static fvec broadcast(float x) { return _mm_set1_ps(x); }
    static fvec set(float l0, float l1, float l2, float l3) { return _mm_set_ps(l3, l2, l1, l0); }
    static fvec load(const float* p) { return _mm_loadu_ps(p); }
};
inline void store(float* p, fvec v) { _mm_storeu_ps(p, v); }
inline fvec add(fvec a, fvec b) { return _mm_add_ps(a, b); }
inline fvec sub(fvec a, fvec b) { return _mm_sub_ps(a, b); }
inline fvec mul(fvec a, fvec b) { return _mm_mul_ps(a, b); }
inline fvec neg(fvec a) { return _mm_xor_ps(a, _mm_set1_ps(-0.0f)); }
// (re, im) -> (-im, re) in each half: two complex numbers times i
inline fvec swapNeg(fvec a)
{
    return _mm_xor_ps(_mm_shuffle_ps(a, a, _MM_SHUFFLE(2, 3, 0, 1)), _mm_set_ps(0.0f, -0.0f, 0.0f, -0.0f));
}
// (re, im) -> (im, re) in each half
inline fvec swap(fvec a) { return _mm_shuffle_ps(a, a, _MM_SHUFFLE(2, 3, 0, 1)); }
// lanes 0, 1 from a and lanes 2, 3 from b, as the selector of a shufps says
template <int selector>
inline fvec shuffle(fvec a, fvec b) { return _mm_shuffle_ps(a, b, selector); }
// (a0, b0, a1, b1) and (a2, b2, a3, b3)
inline fvec unpackLow(fvec a, fvec b) { return _mm_unpacklo_ps(a, b); }
inline fvec unpackHigh(fvec a, fvec b) { return _mm_unpackhi_ps(a, b); }
// the lower halves (a0, a1, b0, b1) and the upper halves (a2, a3, b2, b3)
inline fvec joinLow(fvec a, fvec b) { return _mm_movelh_ps(a, b); }
inline fvec joinHigh(fvec a, fvec b) { return _mm_movehl_ps(b, a); }
inline void stream(float* p, fvec v) { _mm_stream_ps(p, v); }

// Conversions between the precisions, lane by lane, into the type named: a
// dvec takes the lower two lanes of an fvec, an fvec from a dvec has its
// two lanes in its lower half.
template <class To, class From>
To convert(From a);
template <>
inline dvec convert<dvec, fvec>(fvec a) { return _mm_cvtps_pd(a); }
template <>
inline fvec convert<fvec, dvec>(dvec a) { return _mm_cvtpd_ps(a); }

// one complex float (8 bytes) into the lower half, the upper half zero
inline fvec loadLow(const float* p) { return _mm_loadl_pi(_mm_setzero_ps(), reinterpret_cast<const __m64*>(p)); }
// two complex floats from two places
inline fvec loadLowHigh(const float* lo, const float* hi)
{
    return _mm_loadh_pi(loadLow(lo), reinterpret_cast<const __m64*>(hi));
}
inline void storeLow(float* p, fvec v) { _mm_storel_pi(reinterpret_cast<__m64*>(p), v); }
inline void storeHigh(float* p, fvec v) { _mm_storeh_pi(reinterpret_cast<__m64*>(p), v); }
// one double from each of two places, and back
inline dvec loadLowHigh(const double* lo, const double* hi) { return _mm_loadh_pd(_mm_load_sd(lo), hi); }
inline void storeLow(double* p, dvec v) { _mm_storel_pd(p, v); }
inline void storeHigh(double* p, dvec v) { _mm_storeh_pd(p, v); }

// Aligned form: one complex double, or two complex floats, per 16-byte aligned access.
struct AlignedAccess {
    static dvec load(const double* p) { return _mm_load_pd(p); }
    static void store(double* p, dvec v) { _mm_store_pd(p, v); }
    static fvec loadPair(const float* p) { return _mm_load_ps(p); }
    static void storePair(float* p, fvec v) { _mm_store_ps(p, v); }
    // a whole vector of real samples
    static fvec loadVector(const float* p) { return _mm_load_ps(p); }
    static dvec loadVector(const double* p) { return _mm_load_pd(p); }
    static void storeVector(float* p, fvec v) { _mm_store_ps(p, v); }
    static void storeVector(double* p, dvec v) { _mm_store_pd(p, v); }
};

// Unaligned form: a complex double as two 8-byte accesses (real and imaginary
// part), two complex floats as one 16-byte unaligned access.
struct UnalignedAccess {
    static fvec loadPair(const float* p) { return _mm_loadu_ps(p); }
    static void storePair(float* p, fvec v) { _mm_storeu_ps(p, v); }
    static fvec loadVector(const float* p) { return _mm_loadu_ps(p); }
    static dvec loadVector(const double* p) { return _mm_loadu_pd(p); }
    static void storeVector(float* p, fvec v) { _mm_storeu_ps(p, v); }
    static void storeVector(double* p, dvec v) { _mm_storeu_pd(p, v); }
    static dvec load(const double* p) { return loadLowHigh(p, p + 1); }
    static void store(double* p, dvec v)
    {
        storeLow(p, v);
        storeHigh(p + 1, v);
    }
};

}  // namespace kv

#endif
