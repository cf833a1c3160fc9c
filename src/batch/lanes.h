// The frame of the batched kernels: lanes across transforms.  A pass takes as
// many transforms as a kernel's vectors have lanes in use, transform t of the
// pass in lane t; the generated body does the single call's operations on
// those vectors, reading element j of every transform with x.get(j) and
// writing element k with y.put(k, v).  Any stride and distance take this
// path: a get gathers, a put scatters.  An element of a complex transform is
// two real numbers (Parts 2), which get and put count as 2j and 2j + 1.
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

// Real number r of the pass's transforms, one per lane; lanes past the last
// transform of the call repeat it, so that every lane computes on samples.
// Stride and distance count real numbers.
template <class V, int L, int Parts>
struct StridedIn {
    using Real = typename kv::Lanes<V>::Real;
    const Real* src;
    long stride, dist;
    int valid;

    V get(int r) const
    {
        alignas(32) Real lanes[kv::lanes<V>] = {};
        const long at = r / Parts * stride + r % Parts;
        for (int l = 0; l < L; ++l)
            lanes[l] = src[(l < valid ? l : valid - 1) * dist + at];
        return kv::load<V>(lanes);
    }
};

// Real number r of the pass's transforms, from the lanes of the pass's
// transforms only.
template <class V, int L, int Parts>
struct StridedOut {
    using Real = typename kv::Lanes<V>::Real;
    Real* dst;
    long stride, dist;
    int valid;

    void put(int r, V v) const
    {
        alignas(32) Real lanes[kv::lanes<V>];
        kv::store(lanes, v);
        const long at = r / Parts * stride + r % Parts;
        for (int l = 0; l < valid; ++l)
            dst[l * dist + at] = lanes[l];
    }
};

// Runs body(x, y) on the transforms L at a time, in their order.  A body reads
// all its elements before it writes one, and a pass's outputs reach only
// inputs of the transforms before it (an in-place call has the outputs'
// layout, which no two outputs share), so that in place works.
template <class V, int L, int Parts, class Real, class Body>
inline void run(const Real* src, Real* dst, const Layout& layout, Body body)
{
    const long ss = Parts * layout.srcStride, sd = Parts * layout.srcDist;
    const long ds = Parts * layout.dstStride, dd = Parts * layout.dstDist;
    for (long t = 0; t < layout.count; t += L) {
        const int valid = layout.count - t < L ? static_cast<int>(layout.count - t) : L;
        const StridedIn<V, L, Parts> x{src + t * sd, ss, sd, valid};
        const StridedOut<V, L, Parts> y{dst + t * dd, ds, dd, valid};
        body(x, y);
    }
}

}  // namespace kvtg_batch

#endif
