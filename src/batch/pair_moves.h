// Lane moves of pairs: two vectors that hold pairs of numbers (x0 y0 x1 y1 |
// x2 y2 x3 y3, in each 128-bit half) split into the vector of the pairs'
// first numbers and the vector of their second numbers, and merge back.  The
// complex lanes split (re, im) elements this way, and the short rows split
// transforms of two numbers.
#ifndef KVTG_BATCH_PAIR_MOVES_H
#define KVTG_BATCH_PAIR_MOVES_H

#include "frame.h"
#include "simd.h"

namespace kvtg_batch {

// a = x0 y0 x1 y1, b = x2 y2 x3 y3 to first = x0 x1 x2 x3, second = y0 y1 y2 y3
template <class V>
KVTG_INLINE void splitPairs(V a, V b, V& first, V& second)
{
    first = kv::shuffle<_MM_SHUFFLE(2, 0, 2, 0)>(a, b);
    second = kv::shuffle<_MM_SHUFFLE(3, 1, 3, 1)>(a, b);
}

// and back
template <class V>
KVTG_INLINE void mergePairs(V first, V second, V& a, V& b)
{
    a = kv::unpackLow(first, second);
    b = kv::unpackHigh(first, second);
}

}  // namespace kvtg_batch

#endif
