// The loops of the blocked Walsh-Hadamard kernels (orders 8 to 13).  Their
// bodies are the generated networks; the loops have constant trip counts.
#ifndef KVTG_WHT_PASSES_H
#define KVTG_WHT_PASSES_H

#include <cstdint>

#include "kvtcore.h"
#include "simd.h"

namespace wht {

// Block pass: the network of `block` samples on each block of `count` samples,
// from src to dst at the same positions, unscaled.
template <class T, class V, void (*Network)(const T*, T*, V)>
inline void blockPass(const T* src, T* dst, int count, int block)
{
    for (int start = 0; start < count; start += block)
        Network(src + start, dst + start, V{});
}

// Column pass: for each vector position of a row of `rowLength` samples, the
// radix network over the rows at that position.
template <class T, class V, void (*Columns)(const T*, T*, int, V)>
inline void columnPass(const T* src, T* dst, int rowLength, int lanes, V scale)
{
    for (int position = 0; position < rowLength; position += lanes)
        Columns(src + position, dst + position, rowLength, scale);
}

// Column passes of the 256-bit file: the radix-R network on each group of R
// rows of `rowLength` samples, `count` samples in all.  Spread 2: the rows
// come in pairs as the block pass left them, the two rows of a pair in the
// halves of its vectors, so that a position of a row lies at twice that
// position within its pair.
template <class T, class V, void (*Columns)(const T*, T*, int, V), int Spread = 1>
inline void columnGroups(const T* src, T* dst, int count, int rowLength, int radix, int lanes, V scale)
{
    for (int group = 0; group < count; group += radix * rowLength)
        for (int position = 0; position < rowLength; position += lanes)
            Columns(src + group + Spread * position, dst + group + position, rowLength, scale);
}

}  // namespace wht

#endif
