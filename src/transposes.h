// Square transposes of vectors: W vectors of W lanes, row i lane j becomes
// row j lane i.  They only move values between lanes, so that a kernel that
// reads its samples through them computes on the same bits.  One overload
// per vector type of the target, made of the SIMD layer's lane moves.
#ifndef KVTG_TRANSPOSES_H
#define KVTG_TRANSPOSES_H

#include "simd.h"

namespace kvt {

inline void transpose(kv::dvec (&r)[2])
{
    const kv::dvec low = kv::unpackLow(r[0], r[1]);
    r[1] = kv::unpackHigh(r[0], r[1]);
    r[0] = low;
}

inline void transpose(kv::fvec& a, kv::fvec& b, kv::fvec& c, kv::fvec& d)
{
    const kv::fvec ab0 = kv::unpackLow(a, b), ab1 = kv::unpackHigh(a, b);
    const kv::fvec cd0 = kv::unpackLow(c, d), cd1 = kv::unpackHigh(c, d);
    a = kv::joinLow(ab0, cd0);
    b = kv::joinHigh(ab0, cd0);
    c = kv::joinLow(ab1, cd1);
    d = kv::joinHigh(ab1, cd1);
}

inline void transpose(kv::fvec (&r)[4]) { transpose(r[0], r[1], r[2], r[3]); }

#if KVTG_VECTOR_BITS >= 256
// the 2x2 blocks within each half, then the halves across vectors
inline void transpose(kv::dwide (&r)[4])
{
    const kv::dwide t0 = kv::unpackLow(r[0], r[1]), t1 = kv::unpackHigh(r[0], r[1]);
    const kv::dwide t2 = kv::unpackLow(r[2], r[3]), t3 = kv::unpackHigh(r[2], r[3]);
    r[0] = kv::joinLow(t0, t2);
    r[1] = kv::joinLow(t1, t3);
    r[2] = kv::joinHigh(t0, t2);
    r[3] = kv::joinHigh(t1, t3);
}

// the 4x4 blocks within each half (pairs, then quads), then the halves
inline void transpose(kv::fwide (&r)[8])
{
    const kv::fwide t0 = kv::unpackLow(r[0], r[1]), t1 = kv::unpackHigh(r[0], r[1]);
    const kv::fwide t2 = kv::unpackLow(r[2], r[3]), t3 = kv::unpackHigh(r[2], r[3]);
    const kv::fwide t4 = kv::unpackLow(r[4], r[5]), t5 = kv::unpackHigh(r[4], r[5]);
    const kv::fwide t6 = kv::unpackLow(r[6], r[7]), t7 = kv::unpackHigh(r[6], r[7]);
    constexpr int low = _MM_SHUFFLE(1, 0, 1, 0), high = _MM_SHUFFLE(3, 2, 3, 2);
    const kv::fwide s0 = kv::shuffle<low>(t0, t2), s1 = kv::shuffle<high>(t0, t2);
    const kv::fwide s2 = kv::shuffle<low>(t1, t3), s3 = kv::shuffle<high>(t1, t3);
    const kv::fwide s4 = kv::shuffle<low>(t4, t6), s5 = kv::shuffle<high>(t4, t6);
    const kv::fwide s6 = kv::shuffle<low>(t5, t7), s7 = kv::shuffle<high>(t5, t7);
    r[0] = kv::joinLow(s0, s4);
    r[1] = kv::joinLow(s1, s5);
    r[2] = kv::joinLow(s2, s6);
    r[3] = kv::joinLow(s3, s7);
    r[4] = kv::joinHigh(s0, s4);
    r[5] = kv::joinHigh(s1, s5);
    r[6] = kv::joinHigh(s2, s6);
    r[7] = kv::joinHigh(s3, s7);
}
#endif

}  // namespace kvt

#endif
