// The table pass of the DCT-IV general path (env4): from the root's `work`,
// which the span pass filled, to dst.  Row pairs are taken `lanes` at a time,
// one in each lane; each block of them is rotated by the plan's table (whose
// lanes differ, since they are rows) and goes through the FoldTransform of
// size 2r.  Its 2r outputs go to the r rows of `span` samples of dst, half
// at the front of each row and half, mirrored, at its back.  Where rows are
// long, a run of blocks first fills whole cache lines of every row in a
// buffer on the stack.  Besides the pass itself, the pass over a run of row
// blocks that the fused sweep has just combined into a buffer.
#ifndef KVTG_DCT4_TABLE_PASS_H
#define KVTG_DCT4_TABLE_PASS_H

#include "dct4/env.h"
#include "dct4/memory_policy.h"
#include "dct4/stage_vectors.h"
#include "dct4/tables.h"

namespace dct4 {

template <class T, int W = planLanes<T>>
struct TablePass {
    using Shape = StageVectors<T, W>;
    using Memory = MemoryPolicy<T, W>;
    using V = typename Shape::V;
    using C = typename Shape::C;
    using K = typename Shape::K;
    static constexpr int lanes = Shape::lanes;
    static constexpr int tableLanes = Shape::tableLanes;
    static constexpr int factor = Shape::factor;
    // samples from the table of one row block of radix R to the next
    template <int R>
    static constexpr int64_t blockTable = 2 * tableLanes * R;

    // (re + i im)(c + i s) with the rotations of a fold block of radix R, whose
    // lanes are rows: a wider vector takes its upper lanes from the next
    // block's table
    template <int R>
    static KVTG_INLINE C rotateRows(C z, const T* pair)
    {
        const V c = tableGroups<V>(pair, blockTable<R>), s = tableGroups<V>(pair + tableLanes, blockTable<R>);
        return {kv::sub(kv::mul(c, z.re), kv::mul(s, z.im)), kv::add(kv::mul(s, z.re), kv::mul(c, z.im))};
    }

    // What the first level of a fold needs per column j: where the column's
    // rotations lie in a block of the table, and the rotation of the pair
    // (j, R-1-j) by (2j+1) pi / 2R as cosine and sine vectors.
    template <int R>
    struct FoldSteps {
        alignas(16) T rotation[R / 2][2 * tableLanes];
        int32_t offset[R];
    };
    // Not constexpr: the cosine and sine of long double are constant
    // expressions for some compilers only; the table is filled once at load.
    template <int R>
    static FoldSteps<R> makeFoldSteps()
    {
        FoldSteps<R> steps{};
        for (int j = 0; j < R / 2; ++j)
            for (int l = 0; l < tableLanes; ++l) {
                // the angle as Kernels::rotate<2j+1, 2R> takes it, so that the values are the same
                steps.rotation[j][l] = static_cast<T>(__builtin_cosl(kPi * (2 * j + 1) / (2 * R)));
                steps.rotation[j][tableLanes + l] = static_cast<T>(__builtin_sinl(kPi * (2 * j + 1) / (2 * R)));
            }
        for (int j = 0; j < R; ++j)
            steps.offset[j] = 2 * tableLanes * ColumnOrder::position(R, j);
        return steps;
    }
    template <int R>
    static inline const FoldSteps<R> foldSteps = makeFoldSteps<R>();
    // FoldSteps::offset, known at compile time
    template <int R>
    struct ColumnOffsets {
        int32_t value[R];
    };
    template <int R>
    static constexpr ColumnOffsets<R> makeColumnOffsets()
    {
        ColumnOffsets<R> offsets{};
        for (int j = 0; j < R; ++j)
            offsets.value[j] = 2 * tableLanes * ColumnOrder::position(R, j);
        return offsets;
    }
    template <int R>
    static constexpr ColumnOffsets<R> columnOffsets = makeColumnOffsets<R>();
    // the wider vectors take the offsets as constants of the unrolled code
    template <int R>
    static KVTG_INLINE int32_t columnOffset(const FoldSteps<R>& steps, int32_t j)
    {
        if constexpr (factor > 1)
            return columnOffsets<R>.value[j];
        else
            return steps.offset[j];
    }

    // Columns J .. J+lanes-1 and their mirror columns R-1-J .. R-lanes-J of a
    // block: gathered, rotated and paired, one group of lanes after the other,
    // so that few values are live at a time.  Where there are more than four
    // groups (radix 32 in Real64) they run as a loop: this level is the
    // largest part of the table pass's code, and unrolled eight times it
    // crowded the decoded-instruction cache that the kernels run from; up to
    // four groups, unrolled measured faster.
    template <int R>
    static KVTG_INLINE void foldColumns(const T* table, const T* rows, int32_t rowPair, C* plus, C* minus)
    {
        if constexpr (R / 2 / lanes > 4) {
#pragma GCC unroll 1
            for (int32_t J = 0; J < R / 2; J += lanes)
                foldGroup<R>(J, table, rows, rowPair, plus, minus);
        } else {
#pragma GCC unroll 16
            for (int32_t J = 0; J < R / 2; J += lanes)
                foldGroup<R>(J, table, rows, rowPair, plus, minus);
        }
    }

    template <int R>
    static KVTG_INLINE void foldGroup(int32_t J, const T* table, const T* rows, int32_t rowPair, C* plus, C* minus)
    {
        V re[lanes], im[lanes], reMirror[lanes], imMirror[lanes];
        gatherBlock(rows + J, rowPair, re);
        gatherBlock(rows + R + J, rowPair, im);
        gatherBlock(rows + R - lanes - J, rowPair, reMirror);
        gatherBlock(rows + 2 * R - lanes - J, rowPair, imMirror);
        foldLanes<R>(J, table, re, im, reMirror, imMirror, plus, minus);
    }

    template <int R, int k = 0>
    static KVTG_INLINE void foldLanes(int32_t J, const T* table, const V* re, const V* im, const V* reMirror,
                                      const V* imMirror, C* plus, C* minus)
    {
        if constexpr (k < lanes) {
            const FoldSteps<R>& steps = foldSteps<R>;
            const int32_t column = J + k, mirror = R - 1 - J - k;
            const C a = rotateRows<R>({re[k], im[k]}, table + columnOffset<R>(steps, column));
            const C b = rotateRows<R>({reMirror[lanes - 1 - k], imMirror[lanes - 1 - k]},
                                      table + columnOffset<R>(steps, mirror));
            // the butterfly of the pair, its difference rotated by (2 column + 1) pi / 2R
            plus[column] = {kv::add(a.re, b.re), kv::sub(a.im, b.im)};
            minus[column] = Shape::rotate({kv::sub(a.re, b.re), kv::add(a.im, b.im)}, steps.rotation[column]);
            foldLanes<R, k + 1>(J, table, re, im, reMirror, imMirror, plus, minus);
        }
    }

    // The rotations and the FoldTransform of block b: y[q + R], q = -R .. R-1,
    // lane l for the row pair lanes b + l, to out(q + R, y[q + R]).
    template <int R, class Out>
    static KVTG_INLINE void foldBlock(const Env4* env, const T* table, const T* src, int32_t b, Out&& out)
    {
        const T* rows = src + int64_t(b) * factor * env->rowStep;
        // lane l takes the row pair l of the block: real parts, then imaginary parts
        if constexpr (R >= 2 * lanes) {
            C plus[R / 2], minus[R / 2];
            foldColumns<R>(table, rows, env->radix2, plus, minus);
            K::template foldHalves<R>(plus, minus, out);
        } else {
            V re[R], im[R];
            if constexpr (factor > 1 && R >= lanes) {
                // whole rows of the block, transposed
                for (int j = 0; j < R; j += lanes) {
                    gatherBlock(rows + j, env->radix2, re + j);
                    gatherBlock(rows + R + j, env->radix2, im + j);
                }
            } else {
                for (int j = 0; j < R; ++j) {
                    re[j] = gather<V>(rows + j, env->radix2);
                    im[j] = gather<V>(rows + R + j, env->radix2);
                }
            }
            C z[R];
            for (int c = 0; c < R; ++c) {
                const int j = ColumnOrder::of(R)[c];
                z[j] = rotateRows<R>({re[j], im[j]}, table + 2 * tableLanes * c);
            }
            V y[2 * R];
            K::template fold<R>(z, y);
            for (int k = 0; k < 2 * R; ++k)
                out(k, y[k]);
        }
    }

    template <int R>
    static void foldBlocks(Env4* env, T* dst, const T* src)
    {
        const T* table = static_cast<const T*>(env->table);
        const int64_t span = env->span;
        // a vector's rows take `factor` blocks of the table
        constexpr int32_t tableStep = 2 * lanes * R;
        int32_t b = 0;
        if (span * int64_t(sizeof(T)) >= Memory::stagedRowBytes) {
            // Output rows lie a span apart, at a stride that maps them onto few
            // cache sets; a run of blocks first fills whole 128-byte pieces of
            // every row in a buffer, which then go out in one piece each.
            constexpr int32_t run = Memory::stagedBlocks * lanes;
            alignas(16) T up[R][run], down[R][run];
            const bool stream = span * 2 * R * int64_t(sizeof(T)) >= Memory::streamBytes();
            for (; b + Memory::stagedBlocks <= env->blocks / factor; b += Memory::stagedBlocks) {
                for (int32_t k = 0; k < Memory::stagedBlocks; ++k)
                    foldBlock<R>(env, table + int64_t(b + k) * tableStep, src, b + k, [&](int y, V v) KVTG_LAMBDA_INLINE {
                        if (y >= R)
                            storeAligned(up[y - R] + lanes * k, v);
                        else
                            storeAligned(down[R - 1 - y] + run - lanes * (k + 1), reverse(v));
                    });
                const int64_t p = lanes * b;
                for (int q = 0; q < R; ++q) {
                    if (stream) {
                        Memory::streamRows(dst + span * q + p, 0, up[q], 0, 1, run);
                        Memory::streamRows(dst + span * (q + 1) - p - run, 0, down[q], 0, 1, run);
                    } else {
                        Memory::copyRows(dst + span * q + p, 0, up[q], 0, 1, run);
                        Memory::copyRows(dst + span * (q + 1) - p - run, 0, down[q], 0, 1, run);
                    }
                }
            }
        }
        for (; b < env->blocks / factor; ++b) {
            const int64_t p = lanes * b;
            foldBlock<R>(env, table + int64_t(b) * tableStep, src, b, [&](int y, V v) KVTG_LAMBDA_INLINE {
                if (y >= R)
                    kv::store(dst + span * (y - R) + p, v);
                else
                    kv::store(dst + span * (R - y) - 1 - p - (lanes - 1), reverse(v));
            });
        }
    }

    // The table pass on `count` row blocks from `first` on, whose rows lie
    // at `rows` as they would in the full array; with `staged`, count is
    // stagedBlocks and the output goes out as in foldBlocks.
    template <int R>
    static void foldRun(const Env4* env, T* dst, const T* rows, int32_t first, int32_t count, bool staged, bool stream)
    {
        const T* table = static_cast<const T*>(env->table);
        const int64_t span = env->span;
        constexpr int32_t tableStep = 2 * lanes * R;
        if (staged) {
            constexpr int32_t run = Memory::stagedBlocks * lanes;
            alignas(16) T up[R][run], down[R][run];
            for (int32_t k = 0; k < Memory::stagedBlocks; ++k)
                foldBlock<R>(env, table + int64_t(first + k) * tableStep, rows, k, [&](int y, V v) KVTG_LAMBDA_INLINE {
                    if (y >= R)
                        storeAligned(up[y - R] + lanes * k, v);
                    else
                        storeAligned(down[R - 1 - y] + run - lanes * (k + 1), reverse(v));
                });
            const int64_t p = lanes * int64_t(first);
            for (int q = 0; q < R; ++q) {
                if (stream) {
                    Memory::streamRows(dst + span * q + p, 0, up[q], 0, 1, run);
                    Memory::streamRows(dst + span * (q + 1) - p - run, 0, down[q], 0, 1, run);
                } else {
                    Memory::copyRows(dst + span * q + p, 0, up[q], 0, 1, run);
                    Memory::copyRows(dst + span * (q + 1) - p - run, 0, down[q], 0, 1, run);
                }
            }
            return;
        }
        for (int32_t k = 0; k < count; ++k) {
            const int64_t p = lanes * int64_t(first + k);
            foldBlock<R>(env, table + int64_t(first + k) * tableStep, rows, k, [&](int y, V v) KVTG_LAMBDA_INLINE {
                if (y >= R)
                    kv::store(dst + span * (y - R) + p, v);
                else
                    kv::store(dst + span * (R - y) - 1 - p - (lanes - 1), reverse(v));
            });
        }
    }

    static Status env4_compute(Env4* env, T* dst, const T* src)
    {
        switch (env->rule) {
        case 1: foldBlocks<1>(env, dst, src); break;
        case 2: foldBlocks<2>(env, dst, src); break;
        case 3: foldBlocks<4>(env, dst, src); break;
        case 4: foldBlocks<8>(env, dst, src); break;
        case 5: foldBlocks<16>(env, dst, src); break;
        case 6: foldBlocks<32>(env, dst, src); break;
        default: return StatusBadArg;
        }
        return StatusOk;
    }
};

}  // namespace dct4

#endif
