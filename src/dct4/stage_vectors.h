// The vector that the stages of the DCT-IV general path work in, measured
// against the layout of the plan, and the one piece of arithmetic that two
// stages share.  A plan's counts and tables are laid out for the 16-byte
// vector (tableLanes samples).  A stage may run on a wider vector (W lanes):
// it then takes `factor` neighbouring column groups or row blocks of the plan
// at a time, and reads two table groups per vector (or one group twice, where
// its values are equal in all lanes); the caller sees that the counts divide.
// Every stage takes its types and counts from here, so that they agree on
// what a vector holds.
#ifndef KVTG_DCT4_STAGE_VECTORS_H
#define KVTG_DCT4_STAGE_VECTORS_H

#include "dct4/tables.h"
#include "dct4/vector_kernels.h"

namespace dct4 {

template <class T, int W = planLanes<T>>
struct StageVectors {
    using V = kv::vector<T, W>;
    using C = Complex<T, W>;
    using K = Kernels<T, W>;
    static constexpr int lanes = W;
    static constexpr int tableLanes = Tables<T>::lanes;
    static constexpr int factor = lanes / tableLanes;
    static_assert(factor * tableLanes == lanes, "a vector holds whole table groups");

    // (re + i im)(c + i s) with a cosine and sine pair of a table whose
    // values are equal in all lanes (the combine's, and the fold's own)
    static KVTG_INLINE C rotate(C z, const T* pair)
    {
        const V c = tableBroadcast<V>(pair), s = tableBroadcast<V>(pair + tableLanes);
        return {kv::sub(kv::mul(c, z.re), kv::mul(s, z.im)), kv::add(kv::mul(s, z.re), kv::mul(c, z.im))};
    }
};

}  // namespace dct4

#endif
