// The composite span stages of the DCT-IV general path: a span transform too
// long for one kernel (env7), split once more by its radix s into s
// transforms of a span s times shorter on decimated input (env9), whose
// results the combine twiddles and joins (env8, combine.h).  A piece that is
// still too long is split again by a further env7, so the split nests; the
// pieces that fit run the span pass's kernels.  Every stage works on all
// column groups of the span pass at once, side by side, so that neighbouring
// groups share the cache lines of the strided reads.
#ifndef KVTG_DCT4_COMPOSITE_STAGES_H
#define KVTG_DCT4_COMPOSITE_STAGES_H

#include "dct4/combine.h"
#include "dct4/env.h"
#include "dct4/memory_policy.h"
#include "dct4/span_pass.h"

namespace dct4 {

template <class T, int W = planLanes<T>>
struct CompositeStages {
    using Memory = MemoryPolicy<T, W>;
    using Span = SpanPass<T, W>;
    static constexpr int lanes = StageVectors<T, W>::lanes;

    // A composite span transform of `groups` neighbouring column groups; group g
    // has the offsets of group 0 moved by lanes * g (the mirror offset by twice
    // that).  Row R of the result, all groups side by side, goes to
    // dst + R * dstStride.  The stage's own `work` holds its rows packed, one
    // row of all groups after the other, so that the stages below it and the
    // combine work on contiguous memory whatever the level of nesting.
    static Status env7_compute(Env7* env, T* dst, int64_t dstStride, const T* src, int32_t inOff, int32_t mirrorOff,
                               int32_t groups)
    {
        if (env->rule != 1)
            return StatusBadArg;
        T* const work = static_cast<T*>(env->work);
        const int32_t width = lanes * groups;
        // the stage of the second list runs first
        env9_compute(firstOf<Env9>(env->secondList), work, width, src, inOff, mirrorOff, groups);
        CombineStage<T, W>::env8_compute(firstOf<Env8>(env->firstList), dst, dstStride, work, width, groups);
        return StatusOk;
    }

    // The span transforms of one sub-transform for `groups` neighbouring column
    // groups: ascending rows from src + up, descending rows ending at src + down,
    // both at rowStride; result rows to dst at outStride.  Rows spread wider
    // than the cache keeps go through the scratch buffers whole, and the kernel
    // runs on them group by group.
    template <int S>
    static void spanRows(const T* src, int64_t up, int64_t down, int64_t rowStride, T* dst, int64_t outStride,
                         int32_t groups)
    {
        alignas(16) T in[Memory::scratchSamples], out[Memory::scratchSamples];
        const bool copyIn = S * rowStride * int64_t(sizeof(T)) > Memory::directReadBytes;
        const bool copyOut = S * outStride * int64_t(sizeof(T)) > Memory::directWriteBytes;
        const int32_t chunk = Memory::groupsPerChunk(S, groups);
        for (int32_t g0 = 0; g0 < groups; g0 += chunk) {
            const int32_t count = groups - g0 < chunk ? groups - g0 : chunk;
            const int32_t width = lanes * count, first = lanes * g0;
            if (copyIn) {
                // row q of the buffer: ascending row q, or the samples of descending row q in memory order
                Memory::copyRows(in, width, src + up + first, rowStride, S / 2, width);
                Memory::copyRows(in + (S / 2) * width, width,
                                 src + down - first - (width - 1) - (S / 2) * rowStride, -rowStride, S / 2, width);
            }
            for (int32_t g = 0; g < count; ++g) {
                const int32_t column = lanes * g;
                T* const to = copyOut ? out + column : dst + first + column;
                const int64_t toStride = copyOut ? width : outStride;
                if (copyIn)
                    Span::template spanGroup<S>(in, column, width, (width - 1) - column, -int64_t(width), to,
                                                toStride);
                else
                    Span::template spanGroup<S>(src, up + first + column, rowStride, down - first - column,
                                                rowStride, to, toStride);
            }
            if (copyOut)
                Memory::copyRows(dst + first, outStride, out, width, S, width);
        }
    }

    // The s sub-transforms; sub-transform t puts its row R at row R s + t of
    // dst, rows lying rowStride apart.
    static Status env9_compute(Env9* env, T* dst, int64_t rowStride, const T* src, int32_t inOff, int32_t mirrorOff,
                               int32_t groups)
    {
        if (env->rule < 1 || env->rule > 7)
            return StatusBadArg;
        const int64_t subStride = int64_t(env->radix) * rowStride;
        for (int32_t t = 0; t < env->radix; ++t) {
            const int64_t in = inOff + int64_t(t) * env->inStride0;
            if (env->rule == 7) {
                env7_compute(firstOf<Env7>(env->firstList), dst + t * rowStride, subStride, src,
                             static_cast<int32_t>(in), mirrorOff - 2 * t * env->inStride0, groups);
                continue;
            }
            if (t + 1 < env->radix && env->span * env->inStride * int64_t(sizeof(T)) > Memory::directReadBytes)
                Memory::prefetchRows(src, in + env->inStride0,
                                     int64_t(inOff) + mirrorOff - int64_t(t + 1) * env->inStride0, env->inStride,
                                     env->span, lanes * groups);
            Span::withSpan(env->rule, [&](auto size) {
                spanRows<size()>(src, in, int64_t(inOff) + mirrorOff - int64_t(t) * env->inStride0, env->inStride,
                                 dst + t * rowStride, subStride, groups);
            });
        }
        return StatusOk;
    }
};

}  // namespace dct4

#endif
