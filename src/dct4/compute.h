// The run-time side of the DCT-IV general path: the span pass (env5, with the
// composite span stages env7, env9, env8 where a span has no kernel) from src
// into `work`, and the table pass (env4) from `work` to dst.
#ifndef KVTG_DCT4_COMPUTE_H
#define KVTG_DCT4_COMPUTE_H

#include <type_traits>

#include "dct4/combine.h"
#include "dct4/env.h"
#include "dct4/memory_policy.h"
#include "dct4/stage_vectors.h"
#include "dct4/tables.h"

namespace dct4 {

// W is the vector's lanes: by default those of the 16-byte vector that the
// plan's counts and tables are laid out for (stage_vectors.h).
template <class T, int W = Vec<T>::lanes>
struct Compute {
    using Shape = StageVectors<T, W>;
    using Memory = MemoryPolicy<T, W>;
    using VT = typename Shape::VT;
    using V = typename Shape::V;
    using C = typename Shape::C;
    using K = typename Shape::K;
    static constexpr int lanes = Shape::lanes;
    static constexpr int tableLanes = Shape::tableLanes;
    static constexpr int factor = Shape::factor;

    // One SpanTransform of size S on a group of columns: ascending reads at
    // src + up + q * upStride, descending (reversed, negated) at
    // src + down - q * downStride; row R stored at dst + R * rowStride.
    template <int S>
    static void spanGroup(const T* src, int64_t up, int64_t upStride, int64_t down, int64_t downStride, T* dst,
                          int64_t rowStride)
    {
        if constexpr (factor > 1 && S >= 2 * K::outlineFrom) {
            // The kernel's halves out of line read the even and the odd
            // samples straight from src, instead of from arrays that the
            // caller fills: sample 2q + 1 lies one stride further up, or one
            // further down in the descending half.
            C e[S / 4], o[S / 4];
            spanHalf<S / 2>(src, up, 2 * upStride, down, 2 * downStride, e);
            spanHalf<S / 2>(src, up + upStride, 2 * upStride, down - downStride, 2 * downStride, o);
            K::template spanCombine<S>(e, o, [=](int p, C z) KVTG_LAMBDA_INLINE {
                VT::store(dst + (2 * p) * rowStride, z.re);
                VT::store(dst + (2 * p + 1) * rowStride, z.im);
            });
            return;
        }
        // the skew extension: samples read backwards with the opposite sign;
        // the kernel takes the sign into its arithmetic
        K::template span<S, true>(
            [=](int q) KVTG_LAMBDA_INLINE {
                if (q < S / 2)
                    return VT::load(src + up + q * upStride);
                return VT::reverse(VT::load(src + down - q * downStride - (lanes - 1)));
            },
            [=](int p, C z) KVTG_LAMBDA_INLINE {
                VT::store(dst + (2 * p) * rowStride, z.re);
                VT::store(dst + (2 * p + 1) * rowStride, z.im);
            });
    }

    // A SpanTransform of size H, read as spanGroup reads, to z.
    template <int H>
    static __attribute__((noinline)) void spanHalf(const T* src, int64_t up, int64_t upStride, int64_t down,
                                                   int64_t downStride, C* z)
    {
        K::template span<H, true>(
            [=](int q) KVTG_LAMBDA_INLINE {
                if (q < H / 2)
                    return VT::load(src + up + q * upStride);
                return VT::reverse(VT::load(src + down - q * downStride - (lanes - 1)));
            },
            [z](int p, C v) KVTG_LAMBDA_INLINE { z[p] = v; });
    }

    // Runs run(size) with the span of a rule of env5 or env9 as a constant:
    // rules 1 to 6 stand for 2 to 64.
    template <class Run>
    static void withSpan(int32_t rule, Run&& run)
    {
        switch (rule) {
        case 1: run(std::integral_constant<int, 2>()); break;
        case 2: run(std::integral_constant<int, 4>()); break;
        case 3: run(std::integral_constant<int, 8>()); break;
        case 4: run(std::integral_constant<int, 16>()); break;
        case 5: run(std::integral_constant<int, 32>()); break;
        default: run(std::integral_constant<int, 64>()); break;
        }
    }

    static Status env5_compute(Env5* env, T* dst, const T* src)
    {
        if (env->rule < 1 || env->rule > 7)
            return StatusBadArg;
        if (env->rule == 7) {
            // all column groups at once: each stage runs its groups side by side,
            // so that neighbouring groups share the cache lines of their strided reads
            env7_compute(firstOf<Env7>(env->firstList), dst, env->stride, src, 0, env->lastIndex,
                         env->vectors / factor);
            return StatusOk;
        }
        for (int32_t b = 0; b < env->vectors / factor; ++b) {
            const int32_t column = lanes * b;
            withSpan(env->rule, [&](auto size) {
                spanGroup<size()>(src, column, env->radix2, env->lastIndex - column, env->radix2, dst + column,
                                  env->stride);
            });
        }
        return StatusOk;
    }

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
                    spanGroup<S>(in, column, width, (width - 1) - column, -int64_t(width), to, toStride);
                else
                    spanGroup<S>(src, up + first + column, rowStride, down - first - column, rowStride, to, toStride);
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
            withSpan(env->rule, [&](auto size) {
                spanRows<size()>(src, in, int64_t(inOff) + mirrorOff - int64_t(t) * env->inStride0, env->inStride,
                                 dst + t * rowStride, subStride, groups);
            });
        }
        return StatusOk;
    }
};

}  // namespace dct4

#endif
