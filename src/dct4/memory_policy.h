// How the stages of the DCT-IV general path move their rows through the
// memory hierarchy, and every size that decides it: the scratch buffers on
// the stack and the copies of whole rows through them, the stores that
// bypass the caches, the prefetch of rows that lie far apart, the staged
// output runs of the table pass and the gaps between the runs of the fused
// sweep's buffer.  Nothing here computes a value of the transform: a stage
// asks where its rows should go, and moves them with these helpers.  The
// numbers are the machine's, not the transform's; they are kept together so
// that they can be measured and changed in one place.
#ifndef KVTG_DCT4_MEMORY_POLICY_H
#define KVTG_DCT4_MEMORY_POLICY_H

#include <cstdint>

#include <unistd.h>

#include "dct4/stage_vectors.h"

namespace dct4 {

template <class T, int W = planLanes<T>>
struct MemoryPolicy {
    using V = typename StageVectors<T, W>::V;
    static constexpr int lanes = StageVectors<T, W>::lanes;
    static constexpr int factor = StageVectors<T, W>::factor;

    // Scratch of the composite stages, on the stack: the rows that one kernel
    // call touches, for as many column groups as fit.  Rows of the arrays lie
    // at large power-of-two strides; moving whole rows through this buffer
    // uses every cache line once, instead of once per column group.
    static constexpr int32_t scratchSamples = 2048;

    static KVTG_INLINE void copyRows(T* to, int64_t toStride, const T* from, int64_t fromStride, int32_t rows,
                                     int32_t width)
    {
        for (int32_t row = 0; row < rows; ++row)
            for (int32_t k = 0; k < width; k += lanes) {
                V v = kv::load<V>(from + row * fromStride + k);
                // keeps the compiler from making a call of memcpy out of short rows
                asm("" : "+x"(v));
                kv::store(to + row * toStride + k, v);
            }
    }

    // Destinations from this size on are written past the caches: a stage
    // that writes more than the last-level cache holds leaves little of it
    // there for the next one, and fetching lines only to overwrite them costs
    // more than the misses.  Below that size the output of a stage is read
    // again from cache (on a machine with a 260 MiB last level, streaming the
    // stages of the Real32 transform of 2^20 points made it 2.8x slower).
    // The size is the processor's, read once; where it cannot be read, 8 MiB.
    static int64_t streamBytes()
    {
        static const int64_t bytes = [] {
            const long lastLevel = sysconf(_SC_LEVEL3_CACHE_SIZE);
            return lastLevel > 0 ? int64_t(lastLevel) : int64_t(8) << 20;
        }();
        return bytes;
    }

    // copyRows into memory that the caches would not keep anyway: the stores
    // bypass them (where the destination is aligned), so that no line is
    // first read only to be overwritten.
    static KVTG_INLINE void streamRows(T* to, int64_t toStride, const T* from, int64_t fromStride, int32_t rows,
                                       int32_t width)
    {
        if (reinterpret_cast<uintptr_t>(to) % 16 != 0 || (toStride * int64_t(sizeof(T))) % 16 != 0) {
            copyRows(to, toStride, from, fromStride, rows, width);
            return;
        }
        for (int32_t row = 0; row < rows; ++row)
            for (int32_t k = 0; k < width; k += lanes)
                stream(to + row * toStride + k, loadAligned<V>(from + row * fromStride + k));
    }

    // Column groups per pass through a scratch buffer of `rows` rows.
    static int32_t groupsPerChunk(int32_t rows, int32_t groups)
    {
        const int32_t fit = scratchSamples / (rows * lanes);
        return fit < groups ? (fit > 0 ? fit : 1) : groups;
    }

    // Rows that span at most this many bytes stay in cache from one column
    // group to the next and are used where they lie; the bound for the rows
    // that are written is lower, since partly written lines must stay as well.
    static constexpr int64_t directReadBytes = int64_t(128) << 10, directWriteBytes = int64_t(32) << 10;
    // The combine writes whole row pairs, all column groups of one before the
    // next, and goes straight to its destination up to twice that.
    static constexpr int64_t combineDirectBytes = 2 * directWriteBytes;

    // Asks for the input rows of the next sub-transform while this one runs:
    // they lie far apart, in pages of their own, where no hardware stream
    // detection finds them.
    static void prefetchRows(const T* src, int64_t up, int64_t down, int64_t rowStride, int32_t span, int32_t width)
    {
        const int64_t bytes = int64_t(width) * int64_t(sizeof(T));
        for (int32_t q = 0; q < span / 2; ++q) {
            const char* ascending = reinterpret_cast<const char*>(src + up + q * rowStride);
            const char* descending = reinterpret_cast<const char*>(src + down - (q + span / 2) * rowStride - (width - 1));
            // every line that a row touches: each 64 bytes from its start, and its last byte
            for (int64_t b = 0; b < bytes; b += 64) {
                _mm_prefetch(ascending + b, _MM_HINT_T0);
                _mm_prefetch(descending + b, _MM_HINT_T0);
            }
            _mm_prefetch(ascending + bytes - 1, _MM_HINT_T0);
            _mm_prefetch(descending + bytes - 1, _MM_HINT_T0);
        }
    }

    // Blocks per staged run of the table pass: a run fills 128 bytes, two
    // cache lines, of each output row (one line per run measured 10 to 15
    // percent slower from 2^15 on, four lines slower again).
    static constexpr int32_t stagedBlocks = 128 / (lanes * static_cast<int32_t>(sizeof(T)));
    // Output rows from this length on take the staged runs.  A 32-byte vector
    // fills a quarter of a run per block, and staging paid from rows of 1 KiB
    // on (N = 4096 in Real64: 10 percent); not below that, nor with runs of
    // four lines.
    static constexpr int64_t stagedRowBytes = factor > 1 ? 1024 : 2048;

    // Samples between the runs of the fused sweep's buffer, two lines: runs a
    // power of two apart would share their cache sets, and the combine writes
    // all runs at once.  Where the buffer has no room for them, the stages run
    // one after the other (packed runs measured 4 percent slower than that).
    static constexpr int64_t runGap = 128 / int64_t(sizeof(T));
};

}  // namespace dct4

#endif
