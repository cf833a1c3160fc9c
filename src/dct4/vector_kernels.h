// The vector kernels of the DCT-IV general path, for `lanes` independent
// columns or rows side by side: the `SpanTransform` of sizes 2 to 64, the
// `FoldTransform` of sizes 2 to 64 and the small complex DFTs of the
// composite span stages.  Templates on the size unroll every loop at compile
// time; every constant is a compile-time literal replicated across lanes.
#ifndef KVTG_DCT4_VECTOR_KERNELS_H
#define KVTG_DCT4_VECTOR_KERNELS_H

#include <cstdint>

#include "frame.h"
#include "vector_access.h"

namespace dct4 {

constexpr long double kPi = 3.141592653589793238462643383279502884L;

template <class T, int W = planLanes<T>>
struct Complex {
    kv::vector<T, W> re, im;
};

#define KVTG_LAMBDA_INLINE __attribute__((always_inline))

template <class T, int W = planLanes<T>>
struct Kernels {
    using V = kv::vector<T, W>;
    using C = Complex<T, W>;

    static KVTG_INLINE V constant(long double x) { return kv::broadcast<V>(static_cast<T>(x)); }
    // 32-byte vectors: the x86-64-v3 build's wider kernels
    static constexpr bool wide = W * static_cast<int>(sizeof(T)) == 32;

    // cos and sin of pi K / D in every lane, computed once at load.  A
    // compiler that folds the long double cosine (GCC) makes them literals of
    // the kernels instead; one that does not (clang 14) would otherwise call
    // the math library at every rotation.  Either way they are the long double
    // values rounded to T, the same bits (the bit-identity test holds the
    // files of the two compilers against each other).
    template <int K, int D>
    struct RotationAtLoad {
        static inline const V c = constant(__builtin_cosl(kPi * K / D));
        static inline const V s = constant(__builtin_sinl(kPi * K / D));
    };

    // (re + i im) e^(i pi k / d), four products and two additions
    template <int K, int D>
    static KVTG_INLINE C rotate(C z)
    {
        V c, s;
        if constexpr (__builtin_constant_p(__builtin_cosl(kPi * K / D))) {
            c = constant(__builtin_cosl(kPi * K / D));
            s = constant(__builtin_sinl(kPi * K / D));
        } else {
            c = RotationAtLoad<K, D>::c;
            s = RotationAtLoad<K, D>::s;
        }
        return {kv::sub(kv::mul(c, z.re), kv::mul(s, z.im)), kv::add(kv::mul(s, z.re), kv::mul(c, z.im))};
    }

    // ---- SpanTransform: u[0 .. S-1] to Z[0 .. S/2-1].  The input comes from
    // in(q), the result goes to out(p, Z[p]): a kernel reads and stores where
    // its caller's data lie, and nothing is copied on the way.
    template <int S, int P = 0, class Out>
    static KVTG_INLINE void spanCombine(const C* e, const C* o, Out&& out)
    {
        if constexpr (P < S / 4) {
            const C w = rotate<2 * P + 1, S>(o[P]);
            out(P, C{kv::add(e[P].re, w.re), kv::add(e[P].im, w.im)});
            out(S / 2 - 1 - P, C{kv::sub(e[P].re, w.re), kv::sub(w.im, e[P].im)});
            spanCombine<S, P + 1>(e, o, out);
        }
    }

    // With negatedUpper, in(q) for q >= S/2 gives -u[q] instead of u[q]: the
    // descending half of a column as it lies in memory.  The recursion keeps
    // that property (the upper half of the even and of the odd inputs is the
    // upper half of the whole), and the kernels of sizes 4 and 2 take the sign
    // into their first additions, so that no separate negation is needed.
    template <int S, bool negatedUpper, class In, class Out>
    static KVTG_INLINE void span(In&& in, Out&& out)
    {
        if constexpr (S == 2) {
            // the negation is a subtraction from 0.0, so that +0.0 stays +0.0
            out(0, C{in(0), negatedUpper ? kv::sub(kv::zero<V>(), in(1)) : in(1)});
        } else if constexpr (S == 4) {
            const V c0 = constant(0.70710678118654752440084436210484903928L);
            const V u0 = in(0), u1 = in(1), u2 = in(2), u3 = in(3);
            if constexpr (negatedUpper) {
                // u2 and u3 hold -u[2] and -u[3]
                const V a = kv::mul(kv::add(u1, u3), c0), b = kv::mul(kv::sub(u1, u3), c0);
                out(0, C{kv::add(u0, a), kv::sub(b, u2)});
                out(1, C{kv::sub(u0, a), kv::add(b, u2)});
            } else {
                const V a = kv::mul(kv::sub(u1, u3), c0), b = kv::mul(kv::add(u1, u3), c0);
                out(0, C{kv::add(u0, a), kv::add(u2, b)});
                out(1, C{kv::sub(u0, a), kv::sub(b, u2)});
            }
        } else {
            V even[S / 2], odd[S / 2];
            split<S / 2>(in, even, odd);
            C e[S / 4], o[S / 4];
            // a span kernel of size S/2 holds S/2 vectors
            call<S / 2, spanArrays<S / 2, negatedUpper>>(even, e);
            call<S / 2, spanArrays<S / 2, negatedUpper>>(odd, o);
            spanCombine<S>(e, o, out);
        }
    }

    template <int S, bool negatedUpper>
    static KVTG_INLINE void spanArrays(const V* u, C* z)
    {
        span<S, negatedUpper>([u](int q) KVTG_LAMBDA_INLINE { return u[q]; },
                              [z](int p, C v) KVTG_LAMBDA_INLINE { z[p] = v; });
    }

    template <int H, int Q = 0, class In>
    static KVTG_INLINE void split(In&& in, V* even, V* odd)
    {
        if constexpr (Q < H) {
            even[Q] = in(2 * Q);
            odd[Q] = in(2 * Q + 1);
            split<H, Q + 1>(in, even, odd);
        }
    }

    // ---- FoldTransform: z[0 .. R-1] to y[q + R], q = -R .. R-1
    // The butterfly of columns J and R-1-J: a = z[J], b = z[R-1-J].
    template <int R, int J>
    static KVTG_INLINE void foldPair(C a, C b, C& plus, C& minus)
    {
        plus = {kv::add(a.re, b.re), kv::sub(a.im, b.im)};
        const C d = {kv::sub(a.re, b.re), kv::add(a.im, b.im)};
        if constexpr (R == 2) {
            const V c0 = constant(0.70710678118654752440084436210484903928L);
            const V e = kv::mul(d.re, c0), f = kv::mul(d.im, c0);
            minus = {kv::sub(e, f), kv::add(e, f)};
        } else {
            minus = rotate<2 * J + 1, 2 * R>(d);
        }
    }

    template <int R, int J = 0>
    static KVTG_INLINE void foldPairs(const C* z, C* plus, C* minus)
    {
        if constexpr (J < R / 2) {
            foldPair<R, J>(z[J], z[R - 1 - J], plus[J], minus[J]);
            foldPairs<R, J + 1>(z, plus, minus);
        }
    }

    template <int R, int T2 = 0, class Out>
    static KVTG_INLINE void interleave(const V* evenQ, const V* oddQ, Out&& out)
    {
        if constexpr (T2 < R) {
            out(2 * T2, evenQ[T2]);
            out(2 * T2 + 1, oddQ[T2]);
            interleave<R, T2 + 1>(evenQ, oddQ, out);
        }
    }

    // The rest of a fold once its pairs are formed: the two folds of half
    // size; y[k] goes to out(k, y[k]).
    template <int R, class Out>
    static KVTG_INLINE void foldHalves(const C* plus, const C* minus, Out&& out)
    {
        if constexpr (wide) {
            // each half goes out as soon as it is formed, so that its values
            // need no registers while the other half is formed
            V evenQ[R];
            call<R, fold<R / 2>>(plus, evenQ);
            halfOut<R, 0>(evenQ, out);
            V oddQ[R];
            call<R, fold<R / 2>>(minus, oddQ);
            halfOut<R, 1>(oddQ, out);
        } else {
            V evenQ[R], oddQ[R];
            // a fold kernel of size R/2 holds R vectors
            call<R, fold<R / 2>>(plus, evenQ);
            call<R, fold<R / 2>>(minus, oddQ);
            // element t + R/2 of the halves is Y[2t] and Y[2t+1]
            interleave<R>(evenQ, oddQ, out);
        }
    }

    // element t of a half is Y[2t + P]
    template <int R, int P, int T2 = 0, class Out>
    static KVTG_INLINE void halfOut(const V* half, Out&& out)
    {
        if constexpr (T2 < R) {
            out(2 * T2 + P, half[T2]);
            halfOut<R, P, T2 + 1>(half, out);
        }
    }

    // The sums and the rotated differences of the pairs, each on its own.
    template <int R, int J = 0>
    static KVTG_INLINE void foldSums(const C* z, C* plus)
    {
        if constexpr (J < R / 2) {
            const C a = z[J], b = z[R - 1 - J];
            plus[J] = {kv::add(a.re, b.re), kv::sub(a.im, b.im)};
            foldSums<R, J + 1>(z, plus);
        }
    }
    template <int R, int J = 0>
    static KVTG_INLINE void foldDifferences(const C* z, C* minus)
    {
        if constexpr (J < R / 2) {
            C plus;
            foldPair<R, J>(z[J], z[R - 1 - J], plus, minus[J]);
            foldDifferences<R, J + 1>(z, minus);
        }
    }

    template <int R>
    static KVTG_INLINE void fold(const C* z, V* y)
    {
        if constexpr (R == 1) {
            y[1] = z[0].re;  // Y[0]
            y[0] = z[0].im;  // Y[-1]
        } else if constexpr (wide && 2 * R >= outlineFrom) {
            // the kernels out of line read z from memory: the sums and their
            // half first, then the differences from z again, so that the
            // differences need no registers while the first half runs
            const auto store = [y](int k, V v) KVTG_LAMBDA_INLINE { y[k] = v; };
            C plus[R / 2];
            foldSums<R>(z, plus);
            V evenQ[R];
            call<R, fold<R / 2>>(plus, evenQ);
            halfOut<R, 0>(evenQ, store);
            C minus[R / 2];
            foldDifferences<R>(z, minus);
            V oddQ[R];
            call<R, fold<R / 2>>(minus, oddQ);
            halfOut<R, 1>(oddQ, store);
        } else {
            C plus[R / 2], minus[R / 2];
            foldPairs<R>(z, plus, minus);
            foldHalves<R>(plus, minus, [y](int k, V v) KVTG_LAMBDA_INLINE { y[k] = v; });
        }
    }

    // The halves of the larger kernels are functions of their own: inlined
    // whole, a kernel that holds 32 vectors or more keeps far more values live
    // than there are registers, and the spills cost more than the calls.
    static constexpr int outlineFrom = 32;

    template <auto Kernel, class A, class B>
    static __attribute__((noinline)) void outlined(A a, B b)
    {
        Kernel(a, b);
    }
    // A kernel that holds the given number of vectors, out of line from
    // outlineFrom on.
    template <int Vectors, auto Kernel, class A, class B>
    static KVTG_INLINE void call(A a, B b)
    {
        if constexpr (Vectors >= outlineFrom)
            outlined<Kernel>(a, b);
        else
            Kernel(a, b);
    }

    // ---- complex DFTs of positive sign: C[l] = sum_t x[t] e^(2 pi i t l / n)
    // With conjUpper, the outputs l >= N/2 come out conjugated: their last
    // subtraction runs the other way round, which costs nothing, where a
    // negation afterwards would cost one subtraction each.
    template <int N, bool conjUpper = false>
    static KVTG_INLINE void dft(C* x)
    {
        if constexpr (N == 2) {
            const C a = x[0], b = x[1];
            x[0] = {kv::add(a.re, b.re), kv::add(a.im, b.im)};
            x[1] = {kv::sub(a.re, b.re), conjUpper ? kv::sub(b.im, a.im) : kv::sub(a.im, b.im)};
        } else if constexpr (N == 4) {
            const C s02 = {kv::add(x[0].re, x[2].re), kv::add(x[0].im, x[2].im)};
            const C d02 = {kv::sub(x[0].re, x[2].re), kv::sub(x[0].im, x[2].im)};
            const C s13 = {kv::add(x[1].re, x[3].re), kv::add(x[1].im, x[3].im)};
            const C d13 = {kv::sub(x[1].re, x[3].re), kv::sub(x[1].im, x[3].im)};
            x[0] = {kv::add(s02.re, s13.re), kv::add(s02.im, s13.im)};
            x[2] = {kv::sub(s02.re, s13.re), conjUpper ? kv::sub(s13.im, s02.im) : kv::sub(s02.im, s13.im)};
            // +i (d13)
            x[1] = {kv::sub(d02.re, d13.im), kv::add(d02.im, d13.re)};
            x[3] = {kv::add(d02.re, d13.im), conjUpper ? kv::sub(d13.re, d02.im) : kv::sub(d02.im, d13.re)};
        } else {
            C even[4] = {x[0], x[2], x[4], x[6]}, odd[4] = {x[1], x[3], x[5], x[7]};
            dft<4>(even);
            dft<4>(odd);
            const V c0 = constant(0.70710678118654752440084436210484903928L);
            // odd[k] times e^(2 pi i k / 8)
            const C w1 = {kv::mul(kv::sub(odd[1].re, odd[1].im), c0), kv::mul(kv::add(odd[1].re, odd[1].im), c0)};
            const C w2 = {kv::sub(kv::zero<V>(), odd[2].im), odd[2].re};
            const C w3 = {kv::mul(kv::add(odd[3].re, odd[3].im), kv::sub(kv::zero<V>(), c0)),
                          kv::mul(kv::sub(odd[3].re, odd[3].im), c0)};
            const C w[4] = {odd[0], w1, w2, w3};
#pragma GCC unroll 4
            for (int k = 0; k < 4; ++k) {
                x[k] = {kv::add(even[k].re, w[k].re), kv::add(even[k].im, w[k].im)};
                x[k + 4] = {kv::sub(even[k].re, w[k].re),
                            conjUpper ? kv::sub(w[k].im, even[k].im) : kv::sub(even[k].im, w[k].im)};
            }
        }
    }
};

}  // namespace dct4

#endif
