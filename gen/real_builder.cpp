// The real transform of a tree (the direct rule of a small odd prime, the
// prime-factor and twiddle splits: real transforms on the groups, then real or
// complex transforms on the columns of their bins), the shared helpers, and the
// complex stages that real rules use inside (length 2, direct odd
// primes, splits, and the complex Rader scheme of a prime of 13 or more).
#include "real_builder.h"

#include <cmath>
#include <complex>
#include <numeric>
#include <stdexcept>

#include "complex_builder.h"

namespace gen::real {

Cx times(Flow& f, Cx a, long double c, long double s)
{
    const Ref imS = f.mul(a.im, s), reC = f.mul(a.re, c);
    const Ref re = f.sub(reC, imS, true);
    const Ref imC = f.mul(a.im, c), reS = f.mul(a.re, s);
    return {re, f.add(reS, imC, true)};
}

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

namespace {

// ---- complex stages ------------------------------------------------------------

Cx cadd(Flow& f, Cx a, Cx b) { return {f.add(a.re, b.re), f.add(a.im, b.im)}; }
Cx csub(Flow& f, Cx a, Cx b) { return {f.sub(a.re, b.re), f.sub(a.im, b.im)}; }
Cx timesI(Cx a) { return {-a.im, a.re}; }

// Index k with k = k1 (mod a) and k = k2 (mod b), a and b coprime.
long crt(long k1, long a, long k2, long b)
{
    for (long k = k1; k < a * b; k += a)
        if (k % b == k2)
            return k;
    throw std::logic_error("factors are not coprime");
}

// x times W_m^e = exp(-2·pi·i·e/m): free at multiples of 90 degrees, two
// products at odd multiples of 45 degrees, four otherwise.
Cx rotate(Flow& f, Cx x, long e, long m)
{
    e = (e % m + m) % m;
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
    return times(f, x, std::cos(angle), -std::sin(angle));
}

// All N outputs of a complex DFT of the given length (exponent negative).
std::vector<Cx> complexDft(Flow& f, int size, const std::vector<Cx>& x);

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
    out[0] = x[0];
    for (int n = 1; n <= half; ++n)
        out[0] = cadd(f, out[0], e[n]);
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

// Complex split of n = a·b: a-point transforms on b groups, then b-point
// transforms on the columns of their bins, twiddled unless the split is
// prime-factor (a and b coprime).
std::vector<Cx> complexSplit(Flow& f, int a, int b, bool pfa, const std::vector<Cx>& x)
{
    const int n = a * b;
    std::vector<std::vector<Cx>> y(static_cast<std::size_t>(b));
    for (int t = 0; t < b; ++t) {
        std::vector<Cx> group;
        for (int u = 0; u < a; ++u)
            group.push_back(x[static_cast<std::size_t>(pfa ? (a * t + b * u) % n : b * u + t)]);
        y[t] = complexDft(f, a, group);
    }
    std::vector<Cx> out(static_cast<std::size_t>(n));
    for (int k1 = 0; k1 < a; ++k1) {
        std::vector<Cx> column;
        for (int t = 0; t < b; ++t)
            column.push_back(pfa ? y[t][k1] : rotate(f, y[t][k1], static_cast<long>(t) * k1, n));
        const std::vector<Cx> z = complexDft(f, b, column);
        for (int k2 = 0; k2 < b; ++k2)
            out[static_cast<std::size_t>(pfa ? crt(k1, a, k2, b) : k1 + a * k2)] = z[k2];
    }
    return out;
}

// Complex Rader scheme on the given inner length n = p - 1, used where a real
// rule needs a complex stage of a prime of 13 or more.
std::vector<Cx> complexRader(Flow& f, const std::vector<Cx>& x)
{
    const int p = static_cast<int>(x.size());
    const int n = p - 1;
    const std::vector<long> power = powers(p);
    std::vector<Cx> a;
    for (long i : power)
        a.push_back(x[static_cast<std::size_t>(i)]);
    const std::vector<Cx> big = complexDft(f, n, a);
    std::vector<Cx> c(static_cast<std::size_t>(n));
    for (int k = 0; k < n; ++k) {
        const std::complex<long double> bk = rootBin(p, k, 1) / static_cast<long double>(n);
        const Cx v = times(f, big[k], bk.real(), k == 0 ? 0 : bk.imag());
        // bin 0 adds x[0] (its multiplier is real); inverse transform: conjugate in, conjugate out
        c[k] = conj(k == 0 ? Cx{f.add(x[0].re, v.re, true), f.add(x[0].im, v.im, true)} : v);
    }
    const std::vector<Cx> back = complexDft(f, n, c);
    std::vector<Cx> out(static_cast<std::size_t>(p));
    out[0] = cadd(f, x[0], big[0]);
    for (int m = 0; m < n; ++m)
        out[static_cast<std::size_t>(power[(n - m) % n])] = conj(back[m]);  // at g^(-m)
    return out;
}

std::vector<Cx> complexDft(Flow& f, int size, const std::vector<Cx>& x)
{
    switch (size) {
    case 1: return x;
    case 2: return {cadd(f, x[0], x[1]), csub(f, x[0], x[1])};
    }
    int p = 2;  // the least prime factor
    while (size % p != 0)
        ++p;
    if (p == size)
        return size < 13 ? directComplex(f, x) : complexRader(f, x);
    // prime-factor on the least factor coprime to the rest, else twiddled on the least prime
    for (int b = p; b < size; ++b)
        if (size % b == 0 && std::gcd(b, size / b) == 1)
            return complexSplit(f, size / b, b, true, x);
    return complexSplit(f, size / p, p, false, x);
}

// ---- real stages ---------------------------------------------------------------

// Direct rule of an odd prime (or of length 1) on real samples.
std::vector<Cx> directReal(Flow& f, const std::vector<Ref>& x)
{
    const int p = static_cast<int>(x.size());
    const int half = (p - 1) / 2;
    std::vector<Ref> e{x[0]}, d{Ref{}};  // e[0] for the sum of bin 0
    for (int n = 1; n <= half; ++n) {
        e.push_back(f.add(x[n], x[p - n]));
        d.push_back(f.sub(x[n], x[p - n]));
    }
    std::vector<Cx> out(static_cast<std::size_t>(half + 1));
    out[0].re = f.sum(e, false);
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

std::vector<long> powers(int p)
{
    const int g = primitiveRoot(p);
    std::vector<long> out{1};
    while (static_cast<int>(out.size()) < p - 1)
        out.push_back(out.back() * g % p);
    return out;
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
        std::vector<Cx> column;
        std::vector<Ref> reals;
        for (int t = 0; t < b; ++t) {
            column.push_back(y[t][k1]);
            reals.push_back(y[t][k1].re);
        }
        std::vector<Cx> z;
        long step = 1;  // z[j] is bin (k1, step·j)
        if (k1 == 0 || (pfa && 2 * k1 == a)) {
            z = realDft(f, tree->second, reals);
        } else if (2 * k1 == a) {
            // twiddle step at k1 = a/2: bins a/2 + 2a·j are the odd frequencies 4j + 1 of the real column
            if (b % 2 != 0)
                throw std::logic_error("odd b at the half-frequency column");
            z = oddFrequencies(f, reals);
            step = 2;
        } else {
            if (!pfa)
                for (int t = 0; t < b; ++t)
                    column[t] = rotate(f, column[t], static_cast<long>(t) * k1, n);
            z = complexDft(f, b, column);
        }
        for (std::size_t j = 0; j < z.size(); ++j)
            place(X, filled, n, bin(k1, step * static_cast<long>(j)), z[j]);
    }
    checkFilled(filled);
    return X;
}

std::vector<Cx> oddFrequencies(Flow& f, const std::vector<Ref>& v)
{
    const std::size_t h = v.size();
    std::vector<Cx> z;
    for (std::size_t r = 0; r < h / 2; ++r)
        z.push_back(rotate(f, Cx{v[r], -v[r + h / 2]}, static_cast<long>(r), static_cast<long>(2 * h)));
    return complexDft(f, static_cast<int>(h / 2), z);
}

std::complex<long double> rootBin(int p, int k, int sign)
{
    std::complex<long double> sum = 0;
    const std::vector<long> t = powers(p);
    for (int j = 0; j < p - 1; ++j) {
        const long double inner = sign * 2 * pi * ((static_cast<long>(j) * k) % (p - 1)) / (p - 1);
        sum += std::polar(1.0L, -2 * pi * t[j] / p) * std::polar(1.0L, inner);
    }
    return sum;
}

}  // namespace gen::real
