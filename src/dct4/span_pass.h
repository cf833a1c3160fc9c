// The span pass of the DCT-IV general path (env5), which runs before the
// table pass.  With src read as rows of 2r samples, each group of `lanes`
// neighbouring columns goes through one SpanTransform down the rows
// (ascending from the front, then reversed and negated from the back: the
// skew extension), and the result rows go to the root's `work` for the table
// pass.  Spans of 2 to 64 run one unrolled kernel; a longer span (rule 7)
// goes to the composite stages, which split it and come back to the kernels
// here for the pieces.
#ifndef KVTG_DCT4_SPAN_PASS_H
#define KVTG_DCT4_SPAN_PASS_H

#include <type_traits>

#include "dct4/env.h"
#include "dct4/stage_vectors.h"

namespace dct4 {

// Long spans go to the composite stages, whose pieces come back to this
// file's kernels: composite_stages.h is included at the end of this file.
template <class T, int W>
struct CompositeStages;

template <class T, int W = planLanes<T>>
struct SpanPass {
    using V = typename StageVectors<T, W>::V;
    using C = typename StageVectors<T, W>::C;
    using K = typename StageVectors<T, W>::K;
    static constexpr int lanes = StageVectors<T, W>::lanes;
    static constexpr int factor = StageVectors<T, W>::factor;

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
                kv::store(dst + (2 * p) * rowStride, z.re);
                kv::store(dst + (2 * p + 1) * rowStride, z.im);
            });
            return;
        }
        // the skew extension: samples read backwards with the opposite sign;
        // the kernel takes the sign into its arithmetic
        K::template span<S, true>(
            [=](int q) KVTG_LAMBDA_INLINE {
                if (q < S / 2)
                    return kv::load<V>(src + up + q * upStride);
                return reverse(kv::load<V>(src + down - q * downStride - (lanes - 1)));
            },
            [=](int p, C z) KVTG_LAMBDA_INLINE {
                kv::store(dst + (2 * p) * rowStride, z.re);
                kv::store(dst + (2 * p + 1) * rowStride, z.im);
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
                    return kv::load<V>(src + up + q * upStride);
                return reverse(kv::load<V>(src + down - q * downStride - (lanes - 1)));
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
            CompositeStages<T, W>::env7_compute(firstOf<Env7>(env->firstList), dst, env->stride, src, 0,
                                                env->lastIndex, env->vectors / factor);
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
};

}  // namespace dct4

#include "dct4/composite_stages.h"

#endif
