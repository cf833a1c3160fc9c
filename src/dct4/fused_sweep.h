// The outermost combine and the table pass in one sweep, for the lengths
// whose span pass has a composite stage.  The combine of frequency index i
// writes the row pairs i + m l and their mirrors n-1-i-m l; `chunk`
// neighbouring indices from a multiple of the lanes on thus give whole row
// blocks of the table pass, s runs of `chunk` row pairs.  Done chunk by
// chunk, these runs go to a buffer that stays in cache, and the table pass
// takes them from there at once, instead of the whole array going out to
// memory and being read back.  Every value comes from the same operations as
// in the two stages run one after the other; only the order of the blocks
// differs.
#ifndef KVTG_DCT4_FUSED_SWEEP_H
#define KVTG_DCT4_FUSED_SWEEP_H

#include "dct4/combine.h"
#include "dct4/composite_stages.h"
#include "dct4/env.h"
#include "dct4/memory_policy.h"
#include "dct4/table_pass.h"

namespace dct4 {

template <class T, int W = planLanes<T>>
struct FusedSweep {
    using Memory = MemoryPolicy<T, W>;
    using Composite = CompositeStages<T, W>;
    using Combine = CombineStage<T, W>;
    using Table = TablePass<T, W>;
    static constexpr int lanes = StageVectors<T, W>::lanes;
    static constexpr int tableLanes = StageVectors<T, W>::tableLanes;
    static constexpr int factor = StageVectors<T, W>::factor;

    // Row pairs per chunk: a staged run of the table pass where the combine
    // has that many indices.  0 where the stages do not line up so (other
    // radices than those of the power-of-two lengths, counts that do not
    // divide, a buffer too small for the runs and their gaps).
    static int32_t fusedChunk(const Env8* merge, const Env4* fold, int32_t width, int64_t bufferSamples)
    {
        if (merge->rule < 3 || merge->rule > 5 || fold->rule != 6 || fold->radix2 != 2 * width)
            return 0;
        const int32_t s = merge->radix, m = merge->span, n = merge->lastIndex + 1;
        if (s != (1 << merge->rule) || int64_t(m) * s != n || fold->span != n ||
            int64_t(fold->blocks) * tableLanes * 2 != n || fold->blocks % factor != 0)
            return 0;
        const int32_t chunk = m / 2 < Memory::stagedBlocks * lanes ? m / 2 : Memory::stagedBlocks * lanes;
        // rows long enough for the staged output take whole staged runs
        const bool staged = int64_t(fold->span) * int64_t(sizeof(T)) >= Memory::stagedRowBytes;
        if (chunk <= 0 || chunk % lanes != 0 || (m / 2) % chunk != 0 ||
            (staged && chunk != Memory::stagedBlocks * lanes) ||
            int64_t(s) * (int64_t(chunk) * 2 * width + Memory::runGap) > bufferSamples)
            return 0;
        return chunk;
    }

    // The span pass of rule 7 and the table pass: the outermost composite
    // stage's inner transforms as usual, then its combine and the table pass
    // together, chunk by chunk, through `buffer` (bufferSamples long, free
    // for the call).  False, with nothing done, where fusedChunk declines;
    // the caller sees that `factor` divides the column groups.
    static bool spanAndTable(Env5* columns, Env4* fold, T* dst, const T* src, T* buffer, int64_t bufferSamples)
    {
        if (columns->rule != 7)
            return false;
        Env7* const outer = firstOf<Env7>(columns->firstList);
        if (outer->rule != 1)
            return false;
        Env8* const merge = firstOf<Env8>(outer->firstList);
        const int32_t groups = columns->vectors / factor, width = lanes * groups;
        const int32_t chunk = fusedChunk(merge, fold, width, bufferSamples);
        if (chunk == 0)
            return false;
        T* const work = static_cast<T*>(outer->work);
        Composite::env9_compute(firstOf<Env9>(outer->secondList), work, width, src, 0, columns->lastIndex, groups);
        constexpr int R = 32;
        const int64_t span = fold->span;
        const bool staged =
            chunk == Memory::stagedBlocks * lanes && span * int64_t(sizeof(T)) >= Memory::stagedRowBytes;
        const bool stream = span * 2 * R * int64_t(sizeof(T)) >= Memory::streamBytes();
        const int32_t s = merge->radix, m = merge->span;
        const int64_t runStride = int64_t(chunk) * 2 * width + Memory::runGap;
        for (int32_t i0 = 0; i0 < m / 2; i0 += chunk) {
            switch (merge->rule) {
            case 3: Combine::template combineChunk<8>(merge, buffer, runStride, work, width, groups, i0, chunk); break;
            case 4: Combine::template combineChunk<16>(merge, buffer, runStride, work, width, groups, i0, chunk); break;
            default:
                Combine::template combineChunk<32>(merge, buffer, runStride, work, width, groups, i0, chunk);
                break;
            }
            for (int32_t l = 0; l < s; ++l) {
                // the first row pair of run l: i0 + m l, or the mirror of the chunk's last index
                const int32_t pair = l < s / 2 ? i0 + m * l : merge->lastIndex - (i0 + chunk - 1) - m * l;
                Table::template foldRun<R>(fold, dst, buffer + int64_t(l) * runStride, pair / lanes, chunk / lanes,
                                           staged, stream);
            }
        }
        return true;
    }
};

}  // namespace dct4

#endif
