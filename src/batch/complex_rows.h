// Complex32 transforms of N elements whose rows leave no gap (stride 1,
// distance N) both in and out, on 256-bit vectors: a pass's eight transforms
// are one run of complex numbers, read and written 16 bytes at a time.
// Within each 128-bit half of a vector, four transforms go in lanes in the
// order 0, 2, 1, 3: transforms 2s and 2s + 1 (pair s) are 2N complex
// numbers, element j of the first at place j and of the second at place
// N + j, two places to a 16-byte block.  Place i of both pairs is one lane move of their blocks i / 2, and
// the real and imaginary parts of element j two more of places j and N + j
// (the complex lanes' split).  The lower half holds transforms 0 to 3, the
// upper one 4 to 7.
#ifndef KVTG_BATCH_COMPLEX_ROWS_H
#define KVTG_BATCH_COMPLEX_ROWS_H

#include "frame.h"
#include "pair_moves.h"
#include "simd.h"

#if KVTG_VECTOR_BITS >= 256
namespace kvtg_batch {

// Block h of pair 0 at p + 4h, of pair 1 at p + 4N + 4h: the lower 128-bit
// half's, and the upper half's 8N numbers on (transforms 4 to 7).
template <int N>
struct RowBlocks {
    static KVTG_INLINE kv::fwide load(const float* p)
    {
        return kv::join(kv::load<kv::fvec>(p), kv::load<kv::fvec>(p + 8 * N));
    }
    static KVTG_INLINE void store(float* p, kv::fwide v)
    {
        kv::store(p, kv::lowHalf(v));
        kv::store(p + 8 * N, kv::highHalf(v));
    }
};

// Place i of a pair, in pair 0's lanes 0 and 1 and pair 1's 2 and 3, from
// the two pairs' blocks that hold it.
KVTG_INLINE kv::fwide place(kv::fwide pair0, kv::fwide pair1, int i)
{
    return i & 1 ? kv::shuffle<_MM_SHUFFLE(3, 2, 3, 2)>(pair0, pair1)
                 : kv::shuffle<_MM_SHUFFLE(1, 0, 1, 0)>(pair0, pair1);
}

template <int N>
struct ComplexRowsIn {
    using V = kv::fwide;
    const float* p;  // the pass's first transform

    KVTG_INLINE V placed(int i) const
    {
        return place(RowBlocks<N>::load(p + 4 * (i >> 1)), RowBlocks<N>::load(p + 4 * N + 4 * (i >> 1)), i);
    }
    KVTG_INLINE V get(int r) const
    {
        V re, im;
        splitPairs(placed(r >> 1), placed(N + (r >> 1)), re, im);
        return r & 1 ? im : re;
    }
};

// A body puts its numbers in order: element j's imaginary part fills places
// j and N + j, and a block is written by the element that fills its second
// place (one of them, as no element fills both places of a block).
template <int N>
struct ComplexRowsOut {
    using V = kv::fwide;
    float* p;
    V re = kv::zero<V>();
    V places[2 * N];

    // the element whose output fills place i
    static constexpr int element(int i) { return i < N ? i : i - N; }

    KVTG_INLINE void put(int r, V v)
    {
        if (!(r & 1)) {
            re = v;
            return;
        }
        const int j = r >> 1;
        mergePairs(re, v, places[j], places[N + j]);
        if (element(j ^ 1) <= j)
            write(j >> 1);
        if (element((N + j) ^ 1) <= j)
            write((N + j) >> 1);
    }
    // block h of both pairs from its places 2h and 2h + 1
    KVTG_INLINE void write(int h)
    {
        const V a = places[2 * h], b = places[2 * h + 1];
        RowBlocks<N>::store(p + 4 * h, kv::shuffle<_MM_SHUFFLE(1, 0, 1, 0)>(a, b));
        RowBlocks<N>::store(p + 4 * N + 4 * h, kv::shuffle<_MM_SHUFFLE(3, 2, 3, 2)>(a, b));
    }
};

}  // namespace kvtg_batch
#endif

#endif
