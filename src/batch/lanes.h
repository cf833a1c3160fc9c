// The frame of the batched kernels: lanes across transforms.  A pass takes as
// many transforms as a kernel's vectors have lanes in use, transform t of the
// pass in lane t; the generated body does the single call's operations on
// those vectors, reading element j of every transform with x.get(j) and
// writing element k with y.put(k, v).  Any stride and distance take this
// path: a get gathers, a put scatters.
#ifndef KVTG_BATCH_LANES_H
#define KVTG_BATCH_LANES_H

#include <cstdint>

#include "frame.h"
#include "simd.h"

namespace kvtg_batch {

// Where the transforms of a call live, counted in elements: transform t's
// element j at t * dist + j * stride from the start of its array.
struct Layout {
    long count;
    long srcStride, srcDist, dstStride, dstDist;
};

// The batched kernel of one length: checks the flag (StatusBadFlag, nothing
// written) and transforms the layout's `count` transforms.
template <class Real>
using Kernel = Status (*)(const Real* src, Real* dst, const Layout& layout, int32_t flag);

// Element j of the pass's transforms, one per lane; lanes past the last
// transform of the call repeat it, so that every lane computes on samples.
template <class V, int L>
struct StridedIn {
    using Real = typename kv::Lanes<V>::Real;
    const Real* src;
    long stride, dist;
    int valid;

    V get(int j) const
    {
        alignas(32) Real lanes[kv::lanes<V>] = {};
        for (int l = 0; l < L; ++l)
            lanes[l] = src[(l < valid ? l : valid - 1) * dist + j * stride];
        return kv::load<V>(lanes);
    }
};

// Element k of the pass's transforms, from the lanes of the pass's
// transforms only.
template <class V, int L>
struct StridedOut {
    using Real = typename kv::Lanes<V>::Real;
    Real* dst;
    long stride, dist;
    int valid;

    void put(int k, V v) const
    {
        alignas(32) Real lanes[kv::lanes<V>];
        kv::store(lanes, v);
        for (int l = 0; l < valid; ++l)
            dst[l * dist + k * stride] = lanes[l];
    }
};

// Runs body(x, y) on the transforms L at a time, in their order.  A body reads
// all its elements before it writes one, and a pass's outputs reach only
// inputs of the transforms before it (an in-place call has the outputs'
// layout, which no two outputs share), so that in place works.
template <class V, int L, class Real, class Body>
inline void run(const Real* src, Real* dst, const Layout& layout, Body body)
{
    for (long t = 0; t < layout.count; t += L) {
        const int valid = layout.count - t < L ? static_cast<int>(layout.count - t) : L;
        const StridedIn<V, L> x{src + t * layout.srcDist, layout.srcStride, layout.srcDist, valid};
        const StridedOut<V, L> y{dst + t * layout.dstDist, layout.dstStride, layout.dstDist, valid};
        body(x, y);
    }
}

}  // namespace kvtg_batch

#endif
