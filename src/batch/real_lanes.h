// Real64 transforms of the real and Hartley families number by number: lane
// l of a vector holds transform l of the pass, and number r of the pass's
// transforms is one 8-byte load from each, two to a 16-byte half; an output
// goes back as one 8-byte store to each.  No stage is written, and no
// transpose moves the numbers.
#ifndef KVTG_BATCH_REAL_LANES_H
#define KVTG_BATCH_REAL_LANES_H

#include "frame.h"
#include "simd.h"

namespace kvtg_batch {

// Number `at` of transforms p[0..W) into a vector, and back.
template <class V>
struct RealLanes;

template <>
struct RealLanes<kv::dvec> {
    static KVTG_INLINE kv::dvec load(const double* const* p, long at)
    {
        return kv::loadLowHigh(p[0] + at, p[1] + at);
    }
    static KVTG_INLINE void store(double* const* p, long at, kv::dvec v)
    {
        kv::storeLow(p[0] + at, v);
        kv::storeHigh(p[1] + at, v);
    }
};

#if KVTG_VECTOR_BITS >= 256
template <>
struct RealLanes<kv::dwide> {
    static KVTG_INLINE kv::dwide load(const double* const* p, long at)
    {
        return kv::join(RealLanes<kv::dvec>::load(p, at), RealLanes<kv::dvec>::load(p + 2, at));
    }
    static KVTG_INLINE void store(double* const* p, long at, kv::dwide v)
    {
        RealLanes<kv::dvec>::store(p, at, kv::lowHalf(v));
        RealLanes<kv::dvec>::store(p + 2, at, kv::highHalf(v));
    }
};
#endif

// The inputs of a whole pass.  Unit: the numbers of a transform are adjacent
// (stride 1), so that each number's place is a constant of the body.
template <class V, bool Unit>
struct RealIn {
    const double* p[kv::lanes<V>];
    long stride;

    KVTG_INLINE V get(int r) const { return RealLanes<V>::load(p, r * (Unit ? 1 : stride)); }
};

// The outputs of a whole pass.
template <class V, bool Unit>
struct RealOut {
    double* p[kv::lanes<V>];
    long stride;

    KVTG_INLINE void put(int k, V v) { RealLanes<V>::store(p, k * (Unit ? 1 : stride), v); }
};

}  // namespace kvtg_batch

#endif
