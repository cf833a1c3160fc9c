#include "real_builder.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <stdexcept>

#include "real_rules.h"

namespace gen::real {

namespace {

const long double pi = 3.141592653589793238462643383279502884L;

Cx cadd(Flow& f, Cx a, Cx b) { return {f.add(a.re, b.re), f.add(a.im, b.im)}; }
Cx csub(Flow& f, Cx a, Cx b) { return {f.sub(a.re, b.re), f.sub(a.im, b.im)}; }
Cx conj(Cx a) { return {a.re, -a.im}; }
Cx timesMinusI(Cx a) { return {a.im, -a.re}; }  // -i·(a + ib) = b - ia
Cx timesI(Cx a) { return {-a.im, a.re}; }

// (a.re + i a.im)·(c + i s) as two product expressions, one product per
// statement in the order of the note in gen/graph.h.
Cx times(Flow& f, Cx a, long double c, long double s)
{
    const Ref imS = f.mul(a.im, s), reC = f.mul(a.re, c);
    const Ref re = f.sub(reC, imS, true);
    const Ref imC = f.mul(a.im, c), reS = f.mul(a.re, s);
    return {re, f.add(reS, imC, true)};
}

// Stores bin k of a length-n half spectrum, by its conjugate mirror above n/2.
void place(std::vector<Cx>& spectrum, std::vector<bool>& filled, int n, long k, Cx value)
{
    k %= n;
    if (2 * k > n) {
        k = n - k;
        value = conj(value);
    }
    if (filled[static_cast<std::size_t>(k)])
        throw std::logic_error("a bin is produced twice");
    filled[static_cast<std::size_t>(k)] = true;
    spectrum[static_cast<std::size_t>(k)] = value;
}

void checkFilled(const std::vector<bool>& filled)
{
    for (bool f : filled)
        if (!f)
            throw std::logic_error("a bin is never produced");
}

// q with q·g = 1 (mod p).
int inverseModulo(int g, int p)
{
    for (int q = 1; q < p; ++q)
        if (static_cast<long>(q) * g % p == 1)
            return q;
    throw std::logic_error("no inverse modulo p");
}

// Index k with k = k1 (mod a) and k = k2 (mod b), a and b coprime.
long crt(long k1, long a, long k2, long b)
{
    for (long k = k1; k < a * b; k += a)
        if (k % b == k2)
            return k;
    throw std::logic_error("factors are not coprime");
}

// Direct rule of an odd prime on real samples.
std::vector<Cx> directReal(Flow& f, const std::vector<Ref>& x)
{
    const int p = static_cast<int>(x.size());
    const int half = (p - 1) / 2;
    std::vector<Ref> e(static_cast<std::size_t>(half + 1)), d(static_cast<std::size_t>(half + 1));
    for (int n = 1; n <= half; ++n) {
        e[n] = f.add(x[n], x[p - n]);
        d[n] = f.sub(x[n], x[p - n]);
    }
    std::vector<Cx> out(static_cast<std::size_t>(half + 1));
    std::vector<Ref> sum0{x[0]};
    for (int n = 1; n <= half; ++n)
        sum0.push_back(e[n]);
    out[0].re = f.sum(sum0, false);
    for (int k = 1; k <= half; ++k) {
        std::vector<Ref> re{x[0]}, im;
        for (int n = 1; n <= half; ++n) {
            const long double angle = 2 * pi * ((static_cast<long>(n) * k) % p) / p;
            re.push_back(f.mul(e[n], std::cos(angle)));
            im.push_back(f.mul(d[n], -std::sin(angle)));
        }
        out[k] = {f.sum(re, true), f.sum(im, true)};
    }
    return out;
}

// Direct rule of an odd prime on complex samples: sums and differences of
// positions n and p-n, then two product expressions per output pair.
std::vector<Cx> directComplex(Flow& f, const std::vector<Cx>& x)
{
    const int p = static_cast<int>(x.size());
    const int half = (p - 1) / 2;
    std::vector<Cx> e(static_cast<std::size_t>(half + 1)), d(static_cast<std::size_t>(half + 1));
    for (int n = 1; n <= half; ++n) {
        e[n] = cadd(f, x[n], x[p - n]);
        d[n] = csub(f, x[n], x[p - n]);
    }
    std::vector<Cx> out(static_cast<std::size_t>(p));
    Cx acc = x[0];
    for (int n = 1; n <= half; ++n)
        acc = cadd(f, acc, e[n]);
    out[0] = acc;
    for (int k = 1; k <= half; ++k) {
        std::vector<Ref> ar{x[0].re}, ai{x[0].im}, br, bi;
        for (int n = 1; n <= half; ++n) {
            const long double angle = 2 * pi * ((static_cast<long>(n) * k) % p) / p;
            const long double c = std::cos(angle), s = std::sin(angle);
            ar.push_back(f.mul(e[n].re, c));
            ai.push_back(f.mul(e[n].im, c));
            br.push_back(f.mul(d[n].re, s));
            bi.push_back(f.mul(d[n].im, s));
        }
        const Cx a{f.sum(ar, true), f.sum(ai, true)};
        const Cx b{f.sum(br, true), f.sum(bi, true)};
        // X[k] = a - i·b, X[p-k] = a + i·b
        out[k] = cadd(f, a, timesMinusI(b));
        out[p - k] = cadd(f, a, timesI(b));
    }
    return out;
}

// Complex twiddle split: a-point transforms on b groups x[b·j + r], twiddles,
// b-point transforms; output k1 + a·k2.
std::vector<Cx> complexTwiddle(Flow& f, int a, int b, const std::vector<Cx>& x)
{
    const int n = a * b;
    std::vector<std::vector<Cx>> y(static_cast<std::size_t>(b));
    for (int r = 0; r < b; ++r) {
        std::vector<Cx> group;
        for (int j = 0; j < a; ++j)
            group.push_back(x[static_cast<std::size_t>(b * j + r)]);
        y[r] = complexDft(f, a, group);
    }
    std::vector<Cx> out(static_cast<std::size_t>(n));
    for (int k1 = 0; k1 < a; ++k1) {
        std::vector<Cx> column;
        for (int r = 0; r < b; ++r)
            column.push_back(rotate(f, y[r][k1], static_cast<long>(r) * k1, n));
        const std::vector<Cx> z = complexDft(f, b, column);
        for (int k2 = 0; k2 < b; ++k2)
            out[static_cast<std::size_t>(k1 + a * k2)] = z[k2];
    }
    return out;
}

// Complex prime-factor split: a-point transforms on b groups, then b-point
// transforms, no twiddles.
std::vector<Cx> complexPrimeFactor(Flow& f, int a, int b, const std::vector<Cx>& x)
{
    const int n = a * b;
    std::vector<std::vector<Cx>> y(static_cast<std::size_t>(b));
    for (int t = 0; t < b; ++t) {
        std::vector<Cx> g;
        for (int u = 0; u < a; ++u)
            g.push_back(x[static_cast<std::size_t>((a * t + b * u) % n)]);
        y[t] = complexDft(f, a, g);
    }
    std::vector<Cx> out(static_cast<std::size_t>(n));
    for (int k1 = 0; k1 < a; ++k1) {
        std::vector<Cx> column;
        for (int t = 0; t < b; ++t)
            column.push_back(y[t][k1]);
        const std::vector<Cx> z = complexDft(f, b, column);
        for (int k2 = 0; k2 < b; ++k2)
            out[static_cast<std::size_t>(crt(k1, a, k2, b))] = z[k2];
    }
    return out;
}

// Complex Rader scheme on the given inner length n = p - 1, used where a real
// rule needs a complex stage of a prime of 13 or more.
std::vector<Cx> complexRader(Flow& f, const std::vector<Cx>& x)
{
    const int p = static_cast<int>(x.size());
    const int n = p - 1;
    const int g = primitiveRoot(p);
    std::vector<Cx> a(static_cast<std::size_t>(n));
    long power = 1;
    for (int j = 0; j < n; ++j) {
        a[j] = x[static_cast<std::size_t>(power)];
        power = power * g % p;
    }
    const std::vector<Cx> big = complexDft(f, n, a);
    std::vector<Cx> c(static_cast<std::size_t>(n));
    for (int k = 0; k < n; ++k) {
        std::complex<long double> bk = 0;
        long t = 1;
        for (int j = 0; j < n; ++j) {
            bk += std::polar(1.0L, -2 * pi * t / p) * std::polar(1.0L, 2 * pi * ((static_cast<long>(j) * k) % n) / n);
            t = t * g % p;
        }
        bk /= n;
        const Cx v = big[k];
        Cx prod = times(f, v, bk.real(), bk.imag());
        if (k == 0)
            prod = {f.add(x[0].re, f.mul(v.re, bk.real()), true), f.add(x[0].im, f.mul(v.im, bk.real()), true)};
        c[k] = prod;
    }
    // inverse transform: conjugate in, conjugate out
    for (Cx& v : c)
        v = conj(v);
    const std::vector<Cx> back = complexDft(f, n, c);
    std::vector<Cx> out(static_cast<std::size_t>(p));
    out[0] = cadd(f, x[0], big[0]);
    long inv = 1;  // g^(-m)
    const int ginv = inverseModulo(g, p);
    for (int m = 0; m < n; ++m) {
        out[static_cast<std::size_t>(inv)] = conj(back[m]);
        inv = inv * ginv % p;
    }
    return out;
}

// Tree of length L/2 with the same stages: one factor 2 removed.
TreePtr halved(const TreePtr& tree)
{
    if (tree->size % 2 != 0)
        throw std::logic_error("halving an odd tree");
    if (tree->kind == Tree::Kind::Prime || tree->kind == Tree::Kind::Twiddle) {
        auto t = std::make_shared<Tree>(*tree);
        if (tree->second->size % 2 == 0) {
            if (tree->second->size == 2)
                return tree->first;
            t->second = halved(tree->second);
        } else {
            if (tree->first->size == 2)
                return tree->second;
            t->first = halved(tree->first);
        }
        t->size = t->first->size * t->second->size;
        return t;
    }
    throw std::logic_error("no factor 2 to remove");
}

// Forward odd-frequency transform of h real values:
// V[q] = sum over m of v[m]·W_2h^(m·(2q+1)), q = 0..ceil(h/2)-1 (the last one
// real for odd h).
std::vector<Cx> oddDft(Flow& f, const TreePtr& tree, const std::vector<Ref>& v)
{
    const int h = static_cast<int>(v.size());
    std::vector<Cx> out(static_cast<std::size_t>((h + 1) / 2));
    if (h % 2 == 1) {
        // (-1)^m turns the odd frequencies into the plain ones.
        std::vector<Ref> w(v);
        for (int m = 1; m < h; m += 2)
            w[m] = -w[m];
        const std::vector<Cx> bins = realDft(f, tree, w);
        for (int q = 0; q < (h + 1) / 2; ++q)
            out[q] = conj(bins[static_cast<std::size_t>((h - 1) / 2 - q)]);
        return out;
    }
    std::vector<Cx> z;
    for (int r = 0; r < h / 2; ++r)
        z.push_back(rotate(f, Cx{v[r], -v[r + h / 2]}, r, 2 * h));
    const std::vector<Cx> zz = complexDft(f, h / 2, z);
    std::vector<bool> filled(out.size(), false);
    for (int j = 0; j < h / 2; ++j) {
        long odd = (4L * j + 1) % (2 * h);  // frequency 2q+1
        Cx value = zz[j];
        if (odd > h) {
            odd = 2 * h - odd;
            value = conj(value);
        }
        const int q = static_cast<int>((odd - 1) / 2);
        filled[q] = true;
        out[q] = value;
    }
    checkFilled(filled);
    return out;
}

// Transposed application of a forward flow builder: runs `forward` in a
// scratch flow on fresh inputs, transposes it and copies the transposed flow
// into `f` applied to `inputs`.
// Depth of the transposed builds that are under way: a flow built to be
// transposed writes its 45-degree rotations products first, so that after
// transposition they are additions first like every other rotation.
int transposedDepth = 0;

template <class Build>
std::vector<Ref> applyTransposed(Flow& f, int inputCount, const std::vector<Ref>& inputs, Build forward)
{
    Flow scratch;
    std::vector<Ref> x;
    for (int i = 0; i < inputCount; ++i)
        x.push_back(scratch.input(i));
    ++transposedDepth;
    const std::vector<Ref> outs = forward(scratch, x);
    --transposedDepth;
    const Transposed t = transpose(scratch, outs, inputCount, {});
    return embed(f, t.flow, t.outputs, inputs);
}

std::vector<Cx> raderReal(Flow& f, const TreePtr& tree, const std::vector<Ref>& x)
{
    const int p = tree->size;
    const int L = p - 1;
    const int h = L / 2;
    const int g = primitiveRoot(p);
    std::vector<Ref> a;
    long power = 1;
    for (int j = 0; j < L; ++j) {
        a.push_back(x[static_cast<std::size_t>(power)]);
        power = power * g % p;
    }
    const std::vector<Cx> A = realDft(f, tree->first, a);

    std::vector<std::complex<long double>> B(static_cast<std::size_t>(L));
    for (int k = 0; k < L; ++k) {
        long t = 1;
        for (int j = 0; j < L; ++j) {
            B[k] += std::polar(1.0L, -2 * pi * t / p) * std::polar(1.0L, -2 * pi * ((static_cast<long>(j) * k) % L) / L);
            t = t * g % p;
        }
    }
    auto M = [&](int k) -> std::complex<long double> {
        if (k == 0)
            return -1.0L / L;
        if (k == h)
            return B[static_cast<std::size_t>(h)] / static_cast<long double>(L);
        return B[static_cast<std::size_t>(L - k)] * (2.0L / L);
    };

    std::vector<Cx> X(static_cast<std::size_t>(p / 2 + 1));
    std::vector<bool> filled(X.size(), false);
    filled[0] = true;
    X[0].re = f.add(x[0], A[0].re);
    const Ref zeroTerm = f.add(x[0], f.mul(A[0].re, M(0).real()), true);

    // products D[k] = A[k]·M[k]
    std::vector<Cx> D(static_cast<std::size_t>(h + 1));
    for (int k = 1; k < h; ++k) {
        const auto m = M(k);
        D[k] = times(f, A[k], m.real(), m.imag());
    }
    const auto mh = M(h);
    if (h % 2 == 0)
        D[h] = {f.mul(A[h].re, mh.real()), {}};
    else
        D[h] = {{}, f.mul(A[h].re, mh.imag())};

    TreePtr half = halved(tree->first);
    // A factor of the inner tree used as it stands is a row: the synthesis, a
    // transposed transform, takes that length's row from the other table.
    if ((half == tree->first->first || half == tree->first->second) && half->table != 0)
        half = half->table == forwardTable ? inverseTree(h) : forwardTree(h);

    // Each of the two syntheses has two forms: the transposed transform of
    // length h on the tree with one factor 2 removed, and the transposed inner
    // transform of length L itself fed with that half of its bins, of whose
    // outputs m and m + h (equal for the even bins, opposite for the odd ones)
    // either one serves.  Which is cheaper depends on the tree; the flow takes
    // the form of fewer operations.
    auto synthesis = [&](const std::vector<Ref>& halfBins, const std::vector<Ref>& fullBins, bool odd) {
        // the inputs as placeholders of a scratch flow, so that both forms can be counted
        std::vector<Ref> actual;
        auto placeholders = [&](Flow& s, const std::vector<Ref>& bins) {
            std::vector<Ref> out;
            for (const Ref& b : bins) {
                if (b.zero()) {
                    out.push_back({});
                    continue;
                }
                const auto known = std::find(actual.begin(), actual.end(), Ref{b.id, false});
                const int index = static_cast<int>(known - actual.begin());
                if (known == actual.end())
                    actual.push_back(Ref{b.id, false});
                const Ref in = s.input(index);
                out.push_back(b.neg ? -in : in);
            }
            return out;
        };
        Flow halfFlow;
        const std::vector<Ref> halfIn = placeholders(halfFlow, halfBins);
        const std::vector<Ref> halfOut = applyTransposed(halfFlow, h, halfIn, [&](Flow& t, const std::vector<Ref>& v) {
            if (!odd)
                return flatten(realDft(t, half, v), h);
            std::vector<Ref> flat;
            for (const Cx& c : oddDft(t, half, v)) {
                flat.push_back(c.re);
                if (flat.size() < static_cast<std::size_t>(h))
                    flat.push_back(c.im);
            }
            return flat;
        });

        Flow fullFlow;
        const std::vector<Ref> fullIn = placeholders(fullFlow, fullBins);
        const std::vector<Ref> all = applyTransposed(fullFlow, L, fullIn, [&](Flow& t, const std::vector<Ref>& v) {
            return flatten(realDft(t, tree->first, v), L);
        });
        std::vector<bool> upper(static_cast<std::size_t>(h), false);
        auto pick = [&]() {
            std::vector<Ref> out;
            for (int m = 0; m < h; ++m)
                out.push_back(upper[m] ? (odd ? -all[m + h] : all[m + h]) : all[m]);
            return out;
        };
        auto cost = [](const Flow& s, const std::vector<Ref>& outs) {
            const FlowCounts c = countFlow(s, outs);
            return c.multiplications * 10000 + c.additions;
        };
        // one output at a time moved to the other half while that saves operations
        int best = cost(fullFlow, pick());
        for (bool improved = true; improved;) {
            improved = false;
            for (int m = 0; m < h; ++m) {
                upper[m] = !upper[m];
                const int c = cost(fullFlow, pick());
                if (c < best) {
                    best = c;
                    improved = true;
                } else {
                    upper[m] = !upper[m];
                }
            }
        }
        if (best / 10000 < cost(halfFlow, halfOut) / 10000)
            return embed(f, fullFlow, pick(), actual);
        return embed(f, halfFlow, halfOut, actual);
    };

    // Real parts: the even bins; imaginary parts: the odd bins, each complex
    // bin D[k] entering as Re(D[k]·e^(iθ)) or as Im(D[k]·e^(iθ)).
    std::vector<Ref> evenBins{zeroTerm}, oddBins;
    std::vector<Ref> evenFull(static_cast<std::size_t>(L)), oddFull(static_cast<std::size_t>(L));
    evenFull[0] = zeroTerm;
    for (int k = 1; k < h; ++k) {
        if (k % 2 == 0) {
            evenBins.push_back(D[k].re);
            evenBins.push_back(D[k].im);
            evenFull[2 * k - 1] = D[k].re;
            evenFull[2 * k] = D[k].im;
        } else {
            oddBins.push_back(D[k].im);
            oddBins.push_back(-D[k].re);
            oddFull[2 * k - 1] = D[k].im;
            oddFull[2 * k] = -D[k].re;
        }
    }
    if (h % 2 == 0) {
        evenBins.push_back(D[h].re);
        evenFull[L - 1] = D[h].re;
    } else {
        oddBins.push_back(D[h].im);
        oddFull[L - 1] = D[h].im;
    }
    const std::vector<Ref> re = synthesis(evenBins, evenFull, false);
    const std::vector<Ref> im = synthesis(oddBins, oddFull, true);

    const int ginv = inverseModulo(g, p);
    long index = 1;
    for (int m = 0; m < h; ++m) {
        place(X, filled, p, index, Cx{re[m], im[m]});
        index = index * ginv % p;
    }
    checkFilled(filled);
    return X;
}

}  // namespace

std::vector<Ref> flatten(const std::vector<Cx>& bins, int n)
{
    std::vector<Ref> out{bins[0].re};
    for (int k = 1; 2 * k < n; ++k) {
        out.push_back(bins[k].re);
        out.push_back(bins[k].im);
    }
    if (n % 2 == 0)
        out.push_back(bins[static_cast<std::size_t>(n / 2)].re);
    return out;
}

int primitiveRoot(int p)
{
    for (int g = 2; g < p; ++g) {
        long v = 1;
        int order = 0;
        do {
            v = v * g % p;
            ++order;
        } while (v != 1);
        if (order == p - 1)
            return g;
    }
    throw std::logic_error("no primitive root");
}

Cx rotate(Flow& f, Cx x, long e, long m)
{
    e %= m;
    if (e < 0)
        e += m;
    if (e == 0)
        return x;
    if ((8 * e) % m == 0) {
        const long q = 8 * e / m;
        for (long turn = 0; turn < q / 2; ++turn)
            x = timesMinusI(x);
        if (q % 2 == 0)
            return x;
        // (a + ib)·(1 - i)/sqrt 2 = ((a + b) + i(b - a))/sqrt 2
        const long double r = std::sqrt(0.5L);
        if (transposedDepth % 2 == 1) {
            const Ref a = f.mul(x.re, r), b = f.mul(x.im, r);
            return {f.add(a, b), f.sub(b, a)};
        }
        return {f.mul(f.add(x.re, x.im), r), f.mul(f.sub(x.im, x.re), r)};
    }
    const long double angle = 2 * pi * e / m;
    const long double c = std::cos(angle), s = -std::sin(angle);
    return times(f, x, c, s);
}

std::vector<Cx> complexDft(Flow& f, int size, const std::vector<Cx>& x)
{
    switch (size) {
    case 1: return x;
    case 2: return {cadd(f, x[0], x[1]), csub(f, x[0], x[1])};
    case 4: {
        const Cx a = cadd(f, x[0], x[2]), b = csub(f, x[0], x[2]);
        const Cx c = cadd(f, x[1], x[3]), d = csub(f, x[1], x[3]);
        return {cadd(f, a, c), cadd(f, b, timesMinusI(d)), csub(f, a, c), cadd(f, b, timesI(d))};
    }
    case 8: return complexTwiddle(f, 4, 2, x);
    case 9: return complexTwiddle(f, 3, 3, x);
    case 16: return complexTwiddle(f, 8, 2, x);
    case 6: return complexPrimeFactor(f, 3, 2, x);
    case 10: return complexPrimeFactor(f, 5, 2, x);
    case 12: return complexPrimeFactor(f, 4, 3, x);
    case 14: return complexPrimeFactor(f, 7, 2, x);
    case 15: return complexPrimeFactor(f, 5, 3, x);
    default: break;
    }
    if (size == 3 || size == 5 || size == 7 || size == 11)
        return directComplex(f, x);
    if (size >= 13)
        return complexRader(f, x);
    throw std::logic_error("no complex stage of length " + std::to_string(size));
}

std::vector<Cx> realDft(Flow& f, const TreePtr& tree, const std::vector<Ref>& x)
{
    const int n = tree->size;
    if (static_cast<int>(x.size()) != n)
        throw std::logic_error("input length differs from the tree");
    switch (tree->kind) {
    case Tree::Kind::Direct:
    case Tree::Kind::OddSymmetric:
    case Tree::Kind::Direct5w:
        if (n == 1)
            return {Cx{x[0], {}}};
        if (n == 2)
            return {Cx{f.add(x[0], x[1]), {}}, Cx{f.sub(x[0], x[1]), {}}};
        return directReal(f, x);
    case Tree::Kind::Rader: return raderReal(f, tree, x);
    case Tree::Kind::Bluestein: throw std::logic_error("no chirp rule in the real family");
    case Tree::Kind::Prime:
    case Tree::Kind::Twiddle: break;
    }
    const bool pfa = tree->kind == Tree::Kind::Prime;
    const int a = tree->first->size;
    const int b = tree->second->size;
    std::vector<std::vector<Cx>> y(static_cast<std::size_t>(b));
    for (int t = 0; t < b; ++t) {
        std::vector<Ref> group;
        for (int u = 0; u < a; ++u)
            group.push_back(x[static_cast<std::size_t>(pfa ? (a * t + b * u) % n : b * u + t)]);
        y[t] = realDft(f, tree->first, group);
    }
    std::vector<Cx> X(static_cast<std::size_t>(n / 2 + 1));
    std::vector<bool> filled(X.size(), false);
    auto bin = [&](long k1, long k2) { return pfa ? crt(k1, a, k2, b) : k1 + a * k2; };
    for (int k1 = 0; 2 * k1 <= a; ++k1) {
        const bool realColumn = k1 == 0 || 2 * k1 == a;
        if (realColumn && (pfa || k1 == 0)) {
            std::vector<Ref> v;
            for (int t = 0; t < b; ++t)
                v.push_back(y[t][k1].re);
            const std::vector<Cx> z = realDft(f, tree->second, v);
            for (int k2 = 0; 2 * k2 <= b; ++k2)
                place(X, filled, n, bin(k1, k2), z[k2]);
            continue;
        }
        if (realColumn) {
            // twiddle step at k1 = a/2: bins a/2 + a·k2 from real values
            std::vector<Ref> v;
            for (int r = 0; r < b; ++r)
                v.push_back(y[r][k1].re);
            if (b % 2 != 0)
                throw std::logic_error("odd b at the half-frequency column");
            std::vector<Cx> z;
            for (int r = 0; r < b / 2; ++r)
                z.push_back(rotate(f, Cx{v[r], -v[r + b / 2]}, r, 2 * b));
            const std::vector<Cx> zz = complexDft(f, b / 2, z);
            for (int j = 0; j < b / 2; ++j)
                place(X, filled, n, a / 2 + 2L * a * j, zz[j]);
            continue;
        }
        std::vector<Cx> column;
        for (int t = 0; t < b; ++t)
            column.push_back(pfa ? y[t][k1] : rotate(f, y[t][k1], static_cast<long>(t) * k1, n));
        const std::vector<Cx> z = complexDft(f, b, column);
        for (int k2 = 0; k2 < b; ++k2)
            place(X, filled, n, bin(k1, k2), z[k2]);
    }
    checkFilled(filled);
    return X;
}

std::vector<long double> evaluate(const Flow& flow, const std::vector<Ref>& outputs,
                                  const std::vector<long double>& inputs)
{
    std::vector<long double> v(static_cast<std::size_t>(flow.size()));
    for (int id = 0; id < flow.size(); ++id) {
        const Flow::Node& n = flow.node(id);
        switch (n.kind) {
        case Flow::Kind::Input: v[id] = inputs[static_cast<std::size_t>(n.index)]; break;
        case Flow::Kind::Add: v[id] = v[n.a] + v[n.b]; break;
        case Flow::Kind::Sub: v[id] = v[n.a] - v[n.b]; break;
        case Flow::Kind::Mul: v[id] = v[n.a] * n.c; break;
        case Flow::Kind::Double: v[id] = 2 * v[n.a]; break;
        }
    }
    std::vector<long double> out;
    for (const Ref& r : outputs) {
        const long double value = r.zero() ? 0.0L : v[static_cast<std::size_t>(r.id)];
        out.push_back(r.neg ? -value : value);
    }
    return out;
}

}  // namespace gen::real
