// Four transforms of two or three real numbers each, one after the other
// (rows that leave no gap): the Count vectors that hold them go to the
// stage's Count rows, number k of transform l in row k lane l, and back.
// They only move values between lanes, as the square transposes do, with
// no vector read or written past the four transforms.
#ifndef KVTG_BATCH_SHORT_ROWS_H
#define KVTG_BATCH_SHORT_ROWS_H

#include <type_traits>

#include "pair_moves.h"
#include "simd.h"

namespace kvtg_batch {

// The short rows that these moves serve: four Real32 lanes, four transforms
// a pass, two or three numbers each.
template <class V, int L, int Count>
constexpr bool shortRows = std::is_same_v<V, kv::fvec> && L == 4 && (Count == 2 || Count == 3);

// [a0 a1 b0 b1] [c0 c1 d0 d1] to [a0 b0 c0 d0] [a1 b1 c1 d1]
inline void toRows(kv::fvec (&v)[2]) { splitPairs(v[0], v[1], v[0], v[1]); }

// and back
inline void fromRows(kv::fvec (&r)[2]) { mergePairs(r[0], r[1], r[0], r[1]); }

// [a0 a1 a2 b0] [b1 b2 c0 c1] [c2 d0 d1 d2] to [a0 b0 c0 d0] [a1 b1 c1 d1] [a2 b2 c2 d2]
inline void toRows(kv::fvec (&v)[3])
{
    const kv::fvec cd = kv::shuffle<_MM_SHUFFLE(2, 1, 3, 2)>(v[1], v[2]);  // c0 c1 d0 d1
    const kv::fvec ab = kv::shuffle<_MM_SHUFFLE(1, 0, 2, 1)>(v[0], v[1]);  // a1 a2 b1 b2
    const kv::fvec first = kv::shuffle<_MM_SHUFFLE(2, 0, 3, 0)>(v[0], cd);
    v[0] = first;
    v[1] = kv::shuffle<_MM_SHUFFLE(3, 1, 2, 0)>(ab, cd);
    v[2] = kv::shuffle<_MM_SHUFFLE(3, 0, 3, 1)>(ab, v[2]);
}

// and back
inline void fromRows(kv::fvec (&r)[3])
{
    const kv::fvec ab01 = kv::unpackLow(r[0], r[1]);   // a0 a1 b0 b1
    const kv::fvec cd01 = kv::unpackHigh(r[0], r[1]);  // c0 c1 d0 d1
    const kv::fvec ab20 = kv::unpackLow(r[2], r[0]);   // a2 a0 b2 b0
    const kv::fvec ab12 = kv::unpackLow(r[1], r[2]);   // a1 a2 b1 b2
    const kv::fvec cd20 = kv::unpackHigh(r[2], r[0]);  // c2 c0 d2 d0
    const kv::fvec cd12 = kv::unpackHigh(r[1], r[2]);  // c1 c2 d1 d2
    r[0] = kv::shuffle<_MM_SHUFFLE(3, 0, 1, 0)>(ab01, ab20);
    r[1] = kv::shuffle<_MM_SHUFFLE(1, 0, 3, 2)>(ab12, cd01);
    r[2] = kv::shuffle<_MM_SHUFFLE(3, 2, 3, 0)>(cd20, cd12);
}

}  // namespace kvtg_batch

#endif
