// How the DCT-IV stages move their vectors to and from memory, on the SIMD
// layer's vectors of either width.  The plan lays its buffers and tables out
// for 16-byte vectors: a 16-byte vector accesses them aligned, a wider one
// unaligned (as fast wherever the address is a multiple of its size), and a
// table group of four values serves a wide vector twice or as the halves of
// two groups.
#ifndef KVTG_DCT4_VECTOR_ACCESS_H
#define KVTG_DCT4_VECTOR_ACCESS_H

#include <cstdint>
#include <utility>

#include "simd.h"

namespace dct4 {

// the lanes of the plan's layout: one 16-byte vector
template <class T>
constexpr int planLanes = 16 / static_cast<int>(sizeof(T));

template <class V>
using RealOf = typename kv::Lanes<V>::Real;

// 16-byte vectors: an access where the plan aligns its data to 16 bytes
template <class V>
inline V loadAligned(const RealOf<V>* p) { return kv::AlignedAccess::loadVector(p); }
inline void storeAligned(float* p, kv::fvec v) { kv::AlignedAccess::storeVector(p, v); }
inline void storeAligned(double* p, kv::dvec v) { kv::AlignedAccess::storeVector(p, v); }
// a store past the caches
inline void stream(float* p, kv::fvec v) { kv::stream(p, v); }
inline void stream(double* p, kv::dvec v) { kv::stream(p, v); }
// lanes in reverse order
inline kv::fvec reverse(kv::fvec v) { return kv::shuffle<0x1B>(v, v); }
inline kv::dvec reverse(kv::dvec v) { return kv::swap(v); }
// a vector of a plan table (16-byte groups): one group
template <class V>
inline V tableGroups(const RealOf<V>* p, int64_t) { return loadAligned<V>(p); }
// a group of equal values
template <class V>
inline V tableBroadcast(const RealOf<V>* p) { return loadAligned<V>(p); }

#if KVTG_VECTOR_BITS >= 256
// Wider vectors: unaligned accesses, streams 16 bytes at a time, and a table
// group in both halves or two groups side by side.
template <>
inline kv::fwide loadAligned<kv::fwide>(const float* p) { return kv::load<kv::fwide>(p); }
template <>
inline kv::dwide loadAligned<kv::dwide>(const double* p) { return kv::load<kv::dwide>(p); }
inline void storeAligned(float* p, kv::fwide v) { kv::store(p, v); }
inline void storeAligned(double* p, kv::dwide v) { kv::store(p, v); }
template <class V>
inline void streamHalves(RealOf<V>* p, V v)
{
    kv::stream(p, kv::lowHalf(v));
    kv::stream(p + kv::lanes<V> / 2, kv::highHalf(v));
}
inline void stream(float* p, kv::fwide v) { streamHalves(p, v); }
inline void stream(double* p, kv::dwide v) { streamHalves(p, v); }
inline kv::fwide reverse(kv::fwide v) { return kv::reverse(v); }
inline kv::dwide reverse(kv::dwide v) { return kv::reverse(v); }
// the group at p in the lower lanes and the one at p + next in the upper
template <>
inline kv::fwide tableGroups<kv::fwide>(const float* p, int64_t next)
{
    return kv::join(kv::AlignedAccess::loadVector(p), kv::AlignedAccess::loadVector(p + next));
}
template <>
inline kv::dwide tableGroups<kv::dwide>(const double* p, int64_t next)
{
    return kv::join(kv::AlignedAccess::loadVector(p), kv::AlignedAccess::loadVector(p + next));
}
template <>
inline kv::fwide tableBroadcast<kv::fwide>(const float* p) { return kv::broadcastHalf(p); }
template <>
inline kv::dwide tableBroadcast<kv::dwide>(const double* p) { return kv::broadcastHalf(p); }
#endif

// lane l from p[l * stride]
template <class V, std::size_t... l>
inline V gatherLanes(const RealOf<V>* p, int stride, std::index_sequence<l...>)
{
    return kv::set<V>(p[static_cast<int>(l) * stride]...);
}
template <class V>
inline V gather(const RealOf<V>* p, int stride)
{
    return gatherLanes<V>(p, stride, std::make_index_sequence<kv::lanes<V>>());
}

// out[k] lane l = p[l * stride + k], k < lanes: the rows transposed
inline void gatherBlock(const float* p, int stride, kv::fvec* out)
{
    kv::fvec a = kv::load<kv::fvec>(p), b = kv::load<kv::fvec>(p + stride), c = kv::load<kv::fvec>(p + 2 * stride),
             d = kv::load<kv::fvec>(p + 3 * stride);
    const kv::fvec ab0 = kv::unpackLow(a, b), ab1 = kv::unpackHigh(a, b);
    const kv::fvec cd0 = kv::unpackLow(c, d), cd1 = kv::unpackHigh(c, d);
    out[0] = kv::joinLow(ab0, cd0);
    out[1] = kv::joinHigh(ab0, cd0);
    out[2] = kv::joinLow(ab1, cd1);
    out[3] = kv::joinHigh(ab1, cd1);
}
inline void gatherBlock(const double* p, int stride, kv::dvec* out)
{
    const kv::dvec a = kv::load<kv::dvec>(p), b = kv::load<kv::dvec>(p + stride);
    out[0] = kv::unpackLow(a, b);
    out[1] = kv::unpackHigh(a, b);
}

#if KVTG_VECTOR_BITS >= 256
inline void gatherBlock(const double* p, int stride, kv::dwide* out)
{
    const kv::dwide a = kv::load<kv::dwide>(p), b = kv::load<kv::dwide>(p + stride);
    const kv::dwide c = kv::load<kv::dwide>(p + 2 * stride), d = kv::load<kv::dwide>(p + 3 * stride);
    const kv::dwide ab0 = kv::unpackLow(a, b), ab1 = kv::unpackHigh(a, b);
    const kv::dwide cd0 = kv::unpackLow(c, d), cd1 = kv::unpackHigh(c, d);
    out[0] = kv::joinLow(ab0, cd0);
    out[1] = kv::joinLow(ab1, cd1);
    out[2] = kv::joinHigh(ab0, cd0);
    out[3] = kv::joinHigh(ab1, cd1);
}
inline void gatherBlock(const float* p, int stride, kv::fwide* r)
{
#pragma GCC unroll 8
    for (int k = 0; k < 8; ++k)
        r[k] = kv::load<kv::fwide>(p + k * stride);
    const kv::fwide t0 = kv::unpackLow(r[0], r[1]), t1 = kv::unpackHigh(r[0], r[1]);
    const kv::fwide t2 = kv::unpackLow(r[2], r[3]), t3 = kv::unpackHigh(r[2], r[3]);
    const kv::fwide t4 = kv::unpackLow(r[4], r[5]), t5 = kv::unpackHigh(r[4], r[5]);
    const kv::fwide t6 = kv::unpackLow(r[6], r[7]), t7 = kv::unpackHigh(r[6], r[7]);
    constexpr int low = _MM_SHUFFLE(1, 0, 1, 0), high = _MM_SHUFFLE(3, 2, 3, 2);
    const kv::fwide u0 = kv::shuffle<low>(t0, t2), u1 = kv::shuffle<high>(t0, t2);
    const kv::fwide u2 = kv::shuffle<low>(t1, t3), u3 = kv::shuffle<high>(t1, t3);
    const kv::fwide u4 = kv::shuffle<low>(t4, t6), u5 = kv::shuffle<high>(t4, t6);
    const kv::fwide u6 = kv::shuffle<low>(t5, t7), u7 = kv::shuffle<high>(t5, t7);
    r[0] = kv::joinLow(u0, u4);
    r[1] = kv::joinLow(u1, u5);
    r[2] = kv::joinLow(u2, u6);
    r[3] = kv::joinLow(u3, u7);
    r[4] = kv::joinHigh(u0, u4);
    r[5] = kv::joinHigh(u1, u5);
    r[6] = kv::joinHigh(u2, u6);
    r[7] = kv::joinHigh(u3, u7);
}
#endif

}  // namespace dct4

#endif
