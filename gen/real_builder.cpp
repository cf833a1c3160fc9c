// The real transform of a tree: the direct rule of a small odd prime, the
// prime-factor and twiddle splits (real transforms on the groups, then real
// or complex transforms on the columns of their bins), the Rader step
// (real_rader.cpp), and the shared helpers of the builders.  Also the stored
// order of a half spectrum.
#include "real_builder.h"

#include <cmath>
#include <stdexcept>

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

long crt(long k1, long a, long k2, long b)
{
    for (long k = k1; k < a * b; k += a)
        if (k % b == k2)
            return k;
    throw std::logic_error("factors are not coprime");
}

namespace {

// Direct rule of an odd prime on real samples.
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

std::vector<long> powers(int g, int p)
{
    std::vector<long> out{1};
    while (static_cast<int>(out.size()) < p - 1)
        out.push_back(out.back() * g % p);
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
        std::vector<Cx> column;
        std::vector<Ref> reals;
        for (int t = 0; t < b; ++t) {
            column.push_back(y[t][k1]);
            reals.push_back(y[t][k1].re);
        }
        if (k1 == 0 || (pfa && 2 * k1 == a)) {
            const std::vector<Cx> z = realDft(f, tree->second, reals);
            for (int k2 = 0; 2 * k2 <= b; ++k2)
                place(X, filled, n, bin(k1, k2), z[k2]);
        } else if (2 * k1 == a) {
            // twiddle step at k1 = a/2: bins a/2 + a·k2 are the odd frequencies of the real column
            if (b % 2 != 0)
                throw std::logic_error("odd b at the half-frequency column");
            const std::vector<Cx> z = oddFrequencies(f, reals);
            for (int j = 0; j < b / 2; ++j)
                place(X, filled, n, a / 2 + 2L * a * j, z[j]);
        } else {
            if (!pfa)
                for (int t = 0; t < b; ++t)
                    column[t] = rotate(f, column[t], static_cast<long>(t) * k1, n);
            const std::vector<Cx> z = complexDft(f, b, column);
            for (int k2 = 0; k2 < b; ++k2)
                place(X, filled, n, bin(k1, k2), z[k2]);
        }
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

}  // namespace gen::real
