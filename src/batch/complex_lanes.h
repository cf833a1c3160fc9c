// Complex transforms element by element.  Element j of a complex transform is
// two adjacent numbers (re, im) whatever the stride.  Complex32 runs lanes
// across transforms: the vector of the real parts of element j over a pass's
// transforms, and the vector of its imaginary parts, are one small load per
// transform and two lane moves, and the outputs go back the same way.
// Complex64 runs whole complex numbers, an element of one transform per 16
// bytes, one load or store each.  No stage is written, and every layout of a
// whole pass takes these paths.
#ifndef KVTG_BATCH_COMPLEX_LANES_H
#define KVTG_BATCH_COMPLEX_LANES_H

#include "frame.h"
#include "pair_moves.h"
#include "simd.h"

namespace kvtg_batch {

// Splits element `at` of the Complex32 transforms p[0..W) into (re, im)
// vectors and merges them back, one specialisation per vector type of the
// target.
template <class V>
struct ComplexLanes;

template <>
struct ComplexLanes<kv::fvec> {
    static KVTG_INLINE void load(const float* const* p, long at, kv::fvec& re, kv::fvec& im)
    {
        splitPairs(kv::loadLowHigh(p[0] + at, p[1] + at), kv::loadLowHigh(p[2] + at, p[3] + at), re, im);
    }
    static KVTG_INLINE void store(float* const* p, long at, kv::fvec re, kv::fvec im)
    {
        kv::fvec low, high;
        mergePairs(re, im, low, high);
        kv::storeLow(p[0] + at, low);
        kv::storeHigh(p[1] + at, low);
        kv::storeLow(p[2] + at, high);
        kv::storeHigh(p[3] + at, high);
    }
};

#if KVTG_VECTOR_BITS >= 256
// transforms 0, 1, 4, 5 in one vector, 2, 3, 6, 7 in the other
template <>
struct ComplexLanes<kv::fwide> {
    static KVTG_INLINE void load(const float* const* p, long at, kv::fwide& re, kv::fwide& im)
    {
        const kv::fwide a = kv::join(kv::loadLowHigh(p[0] + at, p[1] + at), kv::loadLowHigh(p[4] + at, p[5] + at));
        const kv::fwide b = kv::join(kv::loadLowHigh(p[2] + at, p[3] + at), kv::loadLowHigh(p[6] + at, p[7] + at));
        splitPairs(a, b, re, im);
    }
    static KVTG_INLINE void store(float* const* p, long at, kv::fwide re, kv::fwide im)
    {
        kv::fwide a, b;
        mergePairs(re, im, a, b);
        kv::storeLow(p[0] + at, kv::lowHalf(a));
        kv::storeHigh(p[1] + at, kv::lowHalf(a));
        kv::storeLow(p[2] + at, kv::lowHalf(b));
        kv::storeHigh(p[3] + at, kv::lowHalf(b));
        kv::storeLow(p[4] + at, kv::highHalf(a));
        kv::storeHigh(p[5] + at, kv::highHalf(a));
        kv::storeLow(p[6] + at, kv::highHalf(b));
        kv::storeHigh(p[7] + at, kv::highHalf(b));
    }
};
#endif

// The inputs of a whole pass: number r of every transform (element r / 2,
// its real part for even r, its imaginary part for odd r).  Unit: the
// elements of a transform are adjacent (stride 1), so that each element's
// place is a constant of the body.
template <class V, bool Unit>
struct ComplexIn {
    using Real = typename kv::Lanes<V>::Real;
    const Real* p[kv::lanes<V>];
    long stride;  // in numbers

    KVTG_INLINE V get(int r) const
    {
        V re, im;
        ComplexLanes<V>::load(p, (r >> 1) * (Unit ? 2 : stride), re, im);
        return r & 1 ? im : re;
    }
};

// The outputs of a whole pass.  A body puts its numbers in order, so an
// element's real parts come just before its imaginary parts, which complete
// it and write it.
template <class V, bool Unit>
struct ComplexOut {
    using Real = typename kv::Lanes<V>::Real;
    Real* p[kv::lanes<V>];
    long stride;  // in numbers
    V re = kv::zero<V>();

    KVTG_INLINE void put(int r, V v)
    {
        if (r & 1)
            ComplexLanes<V>::store(p, (r >> 1) * (Unit ? 2 : stride), re, v);
        else
            re = v;
    }
};

// Complex64 transforms on whole complex numbers: 16-byte half h of a vector
// holds an element of transform h of the pass (two transforms a pass on
// 256-bit vectors, one on 128-bit ones), as the single call's vector holds
// it.  Any stride is read and written directly, one element per half.
template <class V>
struct PairIn {
    static constexpr int transforms = kv::lanes<V> / 2;
    const double* p[transforms];
    long stride;  // in numbers

    KVTG_INLINE V get(int j) const
    {
        const long at = j * stride;
#if KVTG_VECTOR_BITS >= 256
        if constexpr (transforms == 2)
            return kv::join(kv::load<kv::dvec>(p[0] + at), kv::load<kv::dvec>(p[1] + at));
        else
#endif
            return kv::load<kv::dvec>(p[0] + at);
    }
};

// The outputs of a pass; `all`: every half's transform is written, else the
// first one only (the last pass of an odd count).
template <class V, bool all>
struct PairOut {
    static constexpr int transforms = kv::lanes<V> / 2;
    double* p[transforms];
    long stride;  // in numbers

    KVTG_INLINE void put(int k, V v)
    {
        const long at = k * stride;
#if KVTG_VECTOR_BITS >= 256
        if constexpr (transforms == 2) {
            kv::store(p[0] + at, kv::lowHalf(v));
            if constexpr (all)
                kv::store(p[1] + at, kv::highHalf(v));
        } else
#endif
            kv::store(p[0] + at, v);
    }
};

}  // namespace kvtg_batch

#endif
