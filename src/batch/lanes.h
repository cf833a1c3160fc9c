// The frame of the batched kernels: lanes across transforms.  A pass takes as
// many transforms as a kernel's vectors have lanes in use, transform t of the
// pass in lane t; the generated body does the single call's operations on
// those vectors, reading real number r of every transform with x.get(r) and
// writing number k with y.put(k, v), both on a stage that holds the pass's
// numbers lanes across transforms.  An element of a complex transform is two
// real numbers (PerElement is 2), its numbers 2j and 2j + 1.  Complex64
// kernels run whole complex numbers instead (runPairs): their body reads
// element j of the pass's transforms with x.get(j), one per 16 bytes.
#ifndef KVTG_BATCH_LANES_H
#define KVTG_BATCH_LANES_H

#include <cstdint>
#include <cstring>
#include <type_traits>

#include "complex_lanes.h"
#include "complex_rows.h"
#include "frame.h"
#include "real_lanes.h"
#include "short_rows.h"
#include "simd.h"
#include "transposes.h"

namespace kvtg_batch {

// Where the transforms of a call live, counted in elements: transform t's
// element j at t * dist + j * stride from the start of its array.
struct Layout {
    long count;
    long srcStride, srcDist, dstStride, dstDist;
};

// The batched kernel of one length: checks the flag (StatusBadFlag, nothing
// written) and transforms the layout's `count` transforms.
template <class Real>
using Kernel = Status (*)(const Real* src, Real* dst, const Layout& layout, int32_t flag);

// The pass's real numbers staged lanes across transforms: row r holds real
// number r of every transform of the pass.  A body reads and writes whole
// vectors of it.
template <class V, int Rows>
struct Staged {
    using Real = typename kv::Lanes<V>::Real;
    alignas(32) Real rows[Rows][kv::lanes<V>];

    V get(int r) const { return kv::load<V>(rows[r]); }
    void put(int r, V v) { kv::store(rows[r], v); }
};

// Block b of W real numbers (W the vector's lanes): the blocks cover the
// transform's `count` numbers, the last one ending at the last number (it
// overlaps the one before when W does not divide count).
template <int W>
constexpr int blockAt(int b, int count)
{
    return b + W <= count ? b : count - W;
}

// Calls f(at) for the blocks of W numbers that cover Count numbers, at
// their first numbers.  Short transforms take their few blocks unrolled, with
// constant positions in the stage; longer ones loop.
template <int W, int Count, class F>
inline void forBlocks(F f)
{
    if constexpr (Count <= 16) {
#pragma GCC unroll 16
        for (int b = 0; b < Count; b += W)
            f(Count < W ? 0 : blockAt<W>(b, Count));
    } else {
        for (int b = 0; b < Count; b += W)
            f(blockAt<W>(b, Count));
    }
}

// Transforms whose Count real numbers lie in a row each (stride 1): the
// pass's L rows go into the stage W numbers at a time through a transpose.
// Lanes past L read the last transform again.  Transforms shorter than a
// vector read a whole vector from the start of each row, which the caller
// allows only where that stays inside the call's input; the numbers past
// Count go unused.  Four short rows one after the other are the Count
// vectors they fill (short_rows.h).
template <class V, int L, int Count, int Rows>
inline void stageRows(Staged<V, Rows>& in, const typename kv::Lanes<V>::Real* src, long dist)
{
    constexpr int W = kv::lanes<V>;
    static_assert(Rows >= W && Rows >= Count, "a stage holds a whole block");
    if constexpr (shortRows<V, L, Count>) {
        if (dist == Count) {
            V v[Count];
            for (int i = 0; i < Count; ++i)
                v[i] = kv::load<V>(src + i * W);
            toRows(v);
            for (int i = 0; i < Count; ++i)
                kv::store(in.rows[i], v[i]);
            return;
        }
    }
    forBlocks<W, Count>([&](int at) {
        V r[W];
#pragma GCC unroll 8
        for (int l = 0; l < W; ++l)
            r[l] = kv::load<V>(src + (l < L ? l : L - 1) * dist + at);
        kvt::transpose(r);
#pragma GCC unroll 8
        for (int i = 0; i < W; ++i)
            kv::store(in.rows[at + i], r[i]);
    });
}

// The stage's rows back into the L transforms' rows, W numbers at a time;
// transforms shorter than a vector write their Count numbers only, four
// short rows one after the other the Count vectors they fill.
template <class V, int L, int Count, int Rows>
inline void unstageRows(const Staged<V, Rows>& out, typename kv::Lanes<V>::Real* dst, long dist)
{
    using Real = typename kv::Lanes<V>::Real;
    constexpr int W = kv::lanes<V>;
    if constexpr (shortRows<V, L, Count>) {
        if (dist == Count) {
            V r[Count];
            for (int i = 0; i < Count; ++i)
                r[i] = kv::load<V>(out.rows[i]);
            fromRows(r);
            for (int i = 0; i < Count; ++i)
                kv::store(dst + i * W, r[i]);
            return;
        }
    }
    forBlocks<W, Count>([&](int at) {
        V r[W];
#pragma GCC unroll 8
        for (int i = 0; i < W; ++i)
            r[i] = i < Count ? kv::load<V>(out.rows[at + i]) : kv::zero<V>();
        kvt::transpose(r);
#pragma GCC unroll 8
        for (int l = 0; l < L; ++l)
            if constexpr (Count < W) {
                alignas(32) Real row[W];
                kv::store(row, r[l]);
                std::memcpy(dst + l * dist, row, Count * sizeof(Real));
            } else {
                kv::store(dst + l * dist + at, r[l]);
            }
    });
}

// Any other layout, and a pass of fewer than L transforms: element j of
// transform l at l * dist + j * stride, one number at a time.  Lanes past the
// `valid` transforms read the last one again, so that every lane computes on
// samples.
template <class V, int PerElement, int Count, int Rows>
inline void stageStrided(Staged<V, Rows>& in, const typename kv::Lanes<V>::Real* src, long stride, long dist,
                         int valid)
{
    constexpr int W = kv::lanes<V>;
    const typename kv::Lanes<V>::Real* from[W];
    for (int l = 0; l < W; ++l)
        from[l] = src + (l < valid ? l : valid - 1) * dist;
    long at = 0;
    for (int r = 0; r < Count; r += PerElement, at += stride)
        for (int p = 0; p < PerElement; ++p)
#pragma GCC unroll 8
            for (int l = 0; l < W; ++l)
                in.rows[r + p][l] = from[l][at + p];
}

// The stage's lanes of the `valid` transforms back, one number at a time.
template <class V, int PerElement, int Count, int Rows>
inline void unstageStrided(const Staged<V, Rows>& out, typename kv::Lanes<V>::Real* dst, long stride, long dist,
                           int valid)
{
    for (int l = 0; l < valid; ++l, dst += dist) {
        long at = 0;
        for (int r = 0; r < Count; r += PerElement, at += stride)
            for (int p = 0; p < PerElement; ++p)
                dst[at + p] = out.rows[r + p][l];
    }
}

// Whole passes read and written directly: In<V, Unit> and Out<V, Unit>
// (complex_lanes.h, real_lanes.h) hold a pointer to each transform of the
// pass and the stride, and with Unit a transform's elements are adjacent (the
// stride `unit` numbers), so that each element's place is a constant of the
// body.  The first `count` transforms, a multiple of the vector's lanes, a
// pass of W at a time; dist and stride count numbers.
template <template <class, bool> class In, template <class, bool> class Out, class V, bool Unit, class Real,
          class Body>
inline void directPasses(const Real* src, Real* dst, long count, long ss, long sd, long ds, long dd, Body& body)
{
    constexpr int W = kv::lanes<V>;
    In<V, Unit> x;
    Out<V, Unit> y;
    x.stride = ss;
    y.stride = ds;
    for (long t = 0; t < count; t += W) {
#pragma GCC unroll 8
        for (int l = 0; l < W; ++l) {
            x.p[l] = src + (t + l) * sd;
            y.p[l] = dst + (t + l) * dd;
        }
        body(x, y);
    }
}

template <template <class, bool> class In, template <class, bool> class Out, class V, class Real, class Body>
inline void runDirect(const Real* src, Real* dst, long count, long unit, long ss, long sd, long ds, long dd,
                      Body& body)
{
    if (ss == unit && ds == unit)
        directPasses<In, Out, V, true>(src, dst, count, ss, sd, ds, dd, body);
    else
        directPasses<In, Out, V, false>(src, dst, count, ss, sd, ds, dd, body);
}

// Whole passes of Complex32 rows without a gap on eight lanes: `count`
// transforms of N elements, a multiple of eight.
template <int N, class Body>
inline void rowPasses(const float* src, float* dst, long count, Body& body)
{
#if KVTG_VECTOR_BITS >= 256
    for (long t = 0; t < count; t += 8) {
        ComplexRowsIn<N> x{src + t * 2 * N};
        ComplexRowsOut<N> y;
        y.p = dst + t * 2 * N;
        body(x, y);
    }
#endif
}

// Runs body(x, y) on the transforms L at a time, in their order, each
// transform reading In real numbers and writing Out (PerElement per element).  A
// pass stages all its inputs before the body runs and writes its outputs
// after, and its outputs reach only inputs of the transforms before it (an
// in-place call has the outputs' layout, which no two outputs share), so that
// in place works.  Whole passes of complex transforms, and of short Real64
// ones, read and write their numbers directly (complex_lanes.h,
// real_lanes.h): a body reads all its inputs before its first output, so
// that holds for them too.  Other whole passes over rows (stride 1) move
// through transposes, any other pass number by number.
template <class V, int L, int PerElement, int In, int Out, class Real, class Body>
inline void run(const Real* src, Real* dst, const Layout& layout, Body body)
{
    constexpr int W = kv::lanes<V>;
    const long ss = PerElement * layout.srcStride, sd = PerElement * layout.srcDist;
    const long ds = PerElement * layout.dstStride, dd = PerElement * layout.dstDist;
    // Rows shorter than a vector are read a vector at a time only where the
    // rows leave no gap (what lies past a row is the next row's input) and
    // up to the last pass whose last read ends inside the call's input;
    // four short rows without a gap read just their numbers.
    const long lastRows = In >= W || (shortRows<V, L, In> && sd == In)
                              ? layout.count
                              : ((layout.count - 1) * sd + In - W) / (sd > 0 ? sd : 1) - L + 1;
    const bool rowsIn = layout.srcStride == 1 && (In >= W || (sd > 0 && sd <= In)), rowsOut = layout.dstStride == 1;
    // Complex passes that fill their vectors and hold up to 256 numbers (64
    // on eight lanes, whose element loads take more lane moves than a
    // transpose) skip the stage; the larger ones spill so many values that
    // the stage's transposes cost less (on a Zen 4 core the direct path is
    // 1.1-2x faster below these sizes and up to 1.7x slower above them).
    constexpr bool direct = PerElement == 2 && L == W && (W <= 4 ? In * W <= 256 : In <= 12);
    // Whole passes of Real64 transforms of the real and Hartley families skip
    // the stage too, on two lanes and on four where a transform moves at most
    // 16 numbers in and out (on a Zen 4 core the 8-byte accesses are 1.0-1.9x
    // faster than the stage's transposes on two lanes, 1.0-2.9x below 16
    // numbers on four, and up to 1.4x slower above that)
    constexpr bool real =
        PerElement == 1 && std::is_same_v<Real, double> && L == W && (W == 2 || (In <= 16 && Out <= 16));
    // Complex32 rows without a gap, in and out, on eight lanes move 16 bytes
    // at a time up to 25 elements (complex_rows.h; on a Zen 4 core 1.1-2.3x
    // faster than the element loads and the stage below that, about as fast
    // up to 28, and up to 1.3x slower at some longer lengths)
    constexpr bool rows = PerElement == 2 && std::is_same_v<Real, float> && L == W && W == 8 && In == Out && In <= 50;
    long t = 0;
    bool whole = false;
    if constexpr (rows) {
        if (ss == 2 && ds == 2 && sd == In && dd == In) {
            t = layout.count - layout.count % L;
            rowPasses<In / 2>(src, dst, t, body);
            whole = true;
        }
    }
    if constexpr (direct) {
        if (!whole) {
            t = layout.count - layout.count % L;
            runDirect<ComplexIn, ComplexOut, V>(src, dst, t, 2, ss, sd, ds, dd, body);
        }
    } else if constexpr (real) {
        t = layout.count - layout.count % L;
        runDirect<RealIn, RealOut, V>(src, dst, t, 1, ss, sd, ds, dd, body);
    }
    for (; t < layout.count; t += L) {
        const int valid = layout.count - t < L ? static_cast<int>(layout.count - t) : L;
        Staged<V, (In > W ? In : W)> x;
        Staged<V, (Out > W ? Out : W)> y;
        if (rowsIn && valid == L && t <= lastRows)
            stageRows<V, L, In>(x, src + t * sd, sd);
        else
            stageStrided<V, PerElement, In>(x, src + t * sd, ss, sd, valid);
        body(x, y);
        if (rowsOut && valid == L)
            unstageRows<V, L, Out>(y, dst + t * dd, dd);
        else
            unstageStrided<V, PerElement, Out>(y, dst + t * dd, ds, dd, valid);
    }
}

// Runs body(x, y) on the transforms, a pass of PairIn<V>::transforms at a
// time, in their order; a pass reads all its inputs before its first output
// (the body puts its outputs last), so that in place works.  A last pass of
// fewer transforms reads the last one in every half and writes it once.
template <class V, class Body>
inline void runPairs(const double* src, double* dst, const Layout& layout, Body body)
{
    constexpr int P = PairIn<V>::transforms;
    const long sd = 2 * layout.srcDist, dd = 2 * layout.dstDist;
    PairIn<V> x;
    PairOut<V, true> y;
    x.stride = 2 * layout.srcStride;
    y.stride = 2 * layout.dstStride;
    long t = 0;
    for (; t + P <= layout.count; t += P) {
#pragma GCC unroll 2
        for (int h = 0; h < P; ++h) {
            x.p[h] = src + (t + h) * sd;
            y.p[h] = dst + (t + h) * dd;
        }
        body(x, y);
    }
    if constexpr (P > 1) {
        if (t < layout.count) {
            PairOut<V, false> last;
            last.stride = y.stride;
            for (int h = 0; h < P; ++h) {
                x.p[h] = src + t * sd;
                last.p[h] = dst + t * dd;
            }
            body(x, last);
        }
    }
}

}  // namespace kvtg_batch

#endif
