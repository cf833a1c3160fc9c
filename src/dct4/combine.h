// The combine of the composite span stages (env8): the s sub-transforms of
// a split span, which env9 left interleaved in the stage's `work`, are
// rotated by their twiddles and joined by s-point complex DFTs, one
// frequency block after the other and all column groups side by side.  The
// table holds the twiddles as cosine and sine pairs, equal in all lanes; for
// s of 16 and 32 the DFT runs in two levels, with the pairs of two sections.
// An output that falls in the upper half of the spectrum is stored
// conjugated at its mirror, the spectrum of a real sequence being
// conjugate-symmetric.  Besides the stage itself, the combine of a run of
// frequency blocks into a buffer, which the fused sweep hands on to the
// table pass while it is still in cache.
#ifndef KVTG_DCT4_COMBINE_H
#define KVTG_DCT4_COMBINE_H

#include <type_traits>

#include "dct4/env.h"
#include "dct4/memory_policy.h"
#include "dct4/stage_vectors.h"

namespace dct4 {

template <class T, int W = planLanes<T>>
struct CombineStage {
    using Shape = StageVectors<T, W>;
    using Memory = MemoryPolicy<T, W>;
    using V = typename Shape::V;
    using C = typename Shape::C;
    using K = typename Shape::K;
    static constexpr int lanes = Shape::lanes;
    static constexpr int tableLanes = Shape::tableLanes;

    // Twiddles and the s-point DFT of one column group: the 2s rows of block i
    // from `block` at row stride `inStride`; each result C[l] goes to
    // output(l, C[l]) as soon as it is formed.
    template <int S, class Out>
    static KVTG_INLINE void combineGroup(const T* sectionA, const T* sectionB, int32_t i, const T* block,
                                         int64_t inStride, Out&& output)
    {
        constexpr int32_t pairWidth = 2 * tableLanes;
        constexpr int parts = S == 16 ? 4 : 8;  // s' of the two-level forms
        // V[t]: real part in row t, imaginary part in row s + t of the block
        const auto input = [&](int t) -> C {
            return {loadAligned<V>(block + int64_t(t) * inStride), loadAligned<V>(block + int64_t(S + t) * inStride)};
        };
        if constexpr (S <= 8) {
            const T* pairs = sectionA + int64_t(i) * (S - 1) * pairWidth;
            C v[S];
#pragma GCC unroll 8
            for (int t = 0; t < S; ++t)
                v[t] = t == 0 ? input(0) : Shape::rotate(input(t), pairs + (t - 1) * pairWidth);
            // the outputs l >= S/2 are the pairs of the upper half, stored conjugated
            K::template dft<S, true>(v);
#pragma GCC unroll 8
            for (int l = 0; l < S; ++l)
                output(l, v[l]);
        } else {
            // level B: the s' values V[j + 4t] of each j, then level A: the four D[j][l'] of each l'.
            // Both run as loops: unrolled, the kernel of s = 32 took some 10 KiB
            // of code for no gain in speed, crowding the decoded-instruction
            // cache that the fold kernels of the table pass run from.
            C d[4][parts];
            const T* pairsB = sectionB + int64_t(i) * (parts - 1) * pairWidth;
#pragma GCC unroll 1
            for (int j = 0; j < 4; ++j) {
#pragma GCC unroll 8
                for (int t = 0; t < parts; ++t)
                    d[j][t] = t == 0 ? input(j) : Shape::rotate(input(j + 4 * t), pairsB + (t - 1) * pairWidth);
                K::template dft<parts>(d[j]);
            }
            const T* pairsA = sectionA + int64_t(i) * 3 * parts * pairWidth;
#pragma GCC unroll 1
            for (int l = 0; l < parts; ++l) {
                C four[4];
#pragma GCC unroll 4
                for (int j = 0; j < 4; ++j)
                    four[j] = j == 0 ? d[0][l] : Shape::rotate(d[j][l], pairsA + (l * 3 + j - 1) * pairWidth);
                // its outputs 2 and 3 have l >= S/2: conjugated, as the upper half is stored
                K::template dft<4, true>(four);
#pragma GCC unroll 4
                for (int l2 = 0; l2 < 4; ++l2)
                    output(l + parts * l2, four[l2]);
            }
        }
    }

    template <int S>
    static void combine(Env8* env, T* dst, int64_t dstStride, const T* src, int64_t srcStride, int32_t groups)
    {
        const int32_t m = env->span;
        constexpr int32_t pairWidth = 2 * tableLanes;
        constexpr int parts = S == 16 ? 4 : 8;
        const int32_t half = m / 2;
        const T* table = static_cast<const T*>(env->table);
        // the two sections of the two-level forms; Real64 radix 32 has B in front
        const bool bFirst = S == 32 && sizeof(T) == 8;
        const int64_t aSize = int64_t(half) * 3 * parts * pairWidth, bSize = int64_t(half) * (parts - 1) * pairWidth;
        const T* sectionA = bFirst ? table + bSize : table;
        const T* sectionB = bFirst ? table : table + aSize;
        alignas(16) T in[Memory::scratchSamples], out[Memory::scratchSamples];
        const int64_t extent = int64_t(2) * env->half * dstStride * int64_t(sizeof(T));
        const bool stream = extent >= Memory::streamBytes(), direct = extent <= Memory::combineDirectBytes;
        const int32_t chunk = Memory::groupsPerChunk(2 * S, groups);
        for (int32_t g0 = 0; g0 < groups; g0 += chunk) {
            const int32_t count = groups - g0 < chunk ? groups - g0 : chunk;
            const int32_t width = lanes * count, first = lanes * g0;
            for (int32_t i = 0; i < half; ++i) {
                // the block's rows are contiguous where the row stride is the width
                const T* block = src + first + int64_t(i) * 2 * S * srcStride;
                int64_t inStride = srcStride;
                if (srcStride != width) {
                    Memory::copyRows(in, width, block, srcStride, 2 * S, width);
                    block = in;
                    inStride = width;
                }
                T* const rows = dst + first;
                // the group loop in two forms, so that no store tests the destination's kind
                const auto runGroups = [&](auto directWrite) KVTG_LAMBDA_INLINE {
                    constexpr bool straight = decltype(directWrite)::value;
                    for (int32_t g = 0; g < count; ++g) {
                        // C[l] to row pair l of the buffer, or straight to its row pair in dst
                        T* const column = straight ? rows + lanes * g : out + lanes * g;
                        // C[l] arrives conjugated for l >= S/2, where p = i + m l lies in the
                        // upper half: the conjugate of Z[p] is Z[n-1-p]
                        combineGroup<S>(sectionA, sectionB, i, block + lanes * g, inStride, [&](int l, C x) KVTG_LAMBDA_INLINE {
                            const int32_t p = i + m * l;
                            T* const row = straight ? column + 2 * (l >= S / 2 ? env->lastIndex - p : p) * dstStride
                                                    : column + 2 * l * width;
                            const int64_t next = straight ? dstStride : width;
                            storeAligned(row, x.re);
                            storeAligned(row + next, x.im);
                        });
                    }
                };
                if (direct)
                    runGroups(std::true_type());
                else
                    runGroups(std::false_type());
                if (direct)
                    continue;
                for (int l = 0; l < S; ++l) {
                    const int32_t p = i + m * l;
                    const int32_t pair = l < S / 2 ? p : env->lastIndex - p;
                    if (stream)
                        Memory::streamRows(rows + int64_t(2 * pair) * dstStride, dstStride, out + 2 * l * width, width,
                                           2, width);
                    else
                        Memory::copyRows(rows + int64_t(2 * pair) * dstStride, dstStride, out + 2 * l * width, width,
                                         2, width);
                }
            }
        }
    }

    static Status env8_compute(Env8* env, T* dst, int64_t dstStride, const T* src, int64_t srcStride, int32_t groups)
    {
        switch (env->rule) {
        case 1: combine<2>(env, dst, dstStride, src, srcStride, groups); break;
        case 2: combine<4>(env, dst, dstStride, src, srcStride, groups); break;
        case 3: combine<8>(env, dst, dstStride, src, srcStride, groups); break;
        case 4: combine<16>(env, dst, dstStride, src, srcStride, groups); break;
        case 5: combine<32>(env, dst, dstStride, src, srcStride, groups); break;
        default: return StatusBadArg;
        }
        return StatusOk;
    }

    // The combine of indices i0 .. i0+chunk-1 for all column groups: row
    // pair p of run l goes to buffer + (l chunk + p) 2 width, runs ascending
    // in p as the row pairs lie in the full array.
    template <int S>
    static void combineChunk(const Env8* env, T* buffer, int64_t runStride, const T* src, int32_t width,
                             int32_t groups, int32_t i0, int32_t chunk)
    {
        constexpr int32_t pairWidth = 2 * tableLanes;
        constexpr int parts = S == 16 ? 4 : 8;
        const int32_t half = env->span / 2;
        const T* table = static_cast<const T*>(env->table);
        const bool bFirst = S == 32 && sizeof(T) == 8;
        const int64_t aSize = int64_t(half) * 3 * parts * pairWidth, bSize = int64_t(half) * (parts - 1) * pairWidth;
        const T* sectionA = bFirst ? table + bSize : table;
        const T* sectionB = bFirst ? table : table + aSize;
        for (int32_t i = i0; i < i0 + chunk; ++i) {
            const T* block = src + int64_t(i) * 2 * S * width;
            // the mirrored row pairs n-1-i-m l descend with i
            const int64_t up = int64_t(i - i0) * 2 * width, down = int64_t(i0 + chunk - 1 - i) * 2 * width;
            for (int32_t g = 0; g < groups; ++g) {
                T* const column = buffer + lanes * g;
                combineGroup<S>(sectionA, sectionB, i, block + lanes * g, width, [&](int l, C x) KVTG_LAMBDA_INLINE {
                    T* const row = column + int64_t(l) * runStride + (l < S / 2 ? up : down);
                    storeAligned(row, x.re);
                    storeAligned(row + width, x.im);
                });
            }
        }
    }
};

}  // namespace dct4

#endif
