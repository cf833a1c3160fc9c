// The lane moves of the Walsh-Hadamard networks, made of the SIMD layer's
// core operations.  They only carry samples between lanes and vectors, so
// every addition of a network keeps its two operands and the bits do not
// depend on the width.
#ifndef KVTG_WHT_LANE_MOVES_H
#define KVTG_WHT_LANE_MOVES_H

#include "simd.h"
#include "transposes.h"

namespace wht {

// Rows a, b, c, d of a 4x4 block become its columns.
inline void transposeBlock(kv::fvec& a, kv::fvec& b, kv::fvec& c, kv::fvec& d) { kvt::transpose(a, b, c, d); }

#if KVTG_VECTOR_BITS >= 256
// Pairs of wide vectors: a holds the samples whose index bit of the pair is
// 0, b those where it is 1.
// a takes the lower 16-byte halves of a and b, b the upper halves: the pair's
// bit and the lane bit of the halves trade places.
template <class V>
inline void exchangeHalves(V& a, V& b)
{
    const V low = kv::joinLow(a, b);
    b = kv::joinHigh(a, b);
    a = low;
}
// within each 16-byte half, a takes the even lanes of a and b, b the odd ones:
// the lowest lane bit moves between the vectors, the pair's bit into the lanes
inline void splitEvenOdd(kv::fwide& a, kv::fwide& b)
{
    const kv::fwide even = kv::shuffle<_MM_SHUFFLE(2, 0, 2, 0)>(a, b);
    b = kv::shuffle<_MM_SHUFFLE(3, 1, 3, 1)>(a, b);
    a = even;
}
inline void splitEvenOdd(kv::dwide& a, kv::dwide& b)
{
    const kv::dwide even = kv::unpackLow(a, b);
    b = kv::unpackHigh(a, b);
    a = even;
}

// Wide accesses for kernels that know their arrays to be aligned to 16 bytes
// only: unaligned moves, as fast as aligned ones wherever the address is a
// multiple of the vector's size.
struct WideAccess {
    static kv::fwide loadVector(const float* p) { return kv::load<kv::fwide>(p); }
    static kv::dwide loadVector(const double* p) { return kv::load<kv::dwide>(p); }
    static void storeVector(float* p, kv::fwide v) { kv::store(p, v); }
    static void storeVector(double* p, kv::dwide v) { kv::store(p, v); }
};
#endif

}  // namespace wht

#endif
