#include "complex_builder.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "complex_walk.h"

namespace gen {

namespace {
constexpr long double pi = 3.141592653589793238462643383279502884L;

// cos + i sin of pi * num / den, with num reduced first so that the argument
// stays small and exact angles come out exact.
Constant cosSinPi(long long num, long long den)
{
    num %= 2 * den;
    if (num < 0)
        num += 2 * den;
    const long double angle = pi * static_cast<long double>(num) / static_cast<long double>(den);
    return {cosl(angle), sinl(angle)};
}

}  // namespace

long long powMod(long long base, long long exp, long long mod)
{
    long long r = 1 % mod;
    base %= mod;
    while (exp > 0) {
        if (exp & 1)
            r = r * base % mod;
        base = base * base % mod;
        exp >>= 1;
    }
    return r;
}

Constant exactRoot(long long k, long long n, int sign)
{
    k %= n;
    if (k < 0)
        k += n;
    if ((8 * k) % n == 0) {
        const long double r = 0.70710678118654752440084436210484903928L;
        static const long double cosines[8] = {1, r, 0, -r, -1, -r, 0, r};
        static const long double sines[8] = {0, r, 1, r, 0, -r, -1, -r};
        const long long octant = 8 * k / n;
        return {cosines[octant], sign * sines[octant]};
    }
    const Constant root = cosSinPi(2 * k, n);
    return {root.real(), sign * root.imag()};
}

Constant raderConstant(int p, int k, int sign)
{
    const int n = p - 1, g = primitiveRoot(p);
    Constant sum = 0;
    // w^(g^t) v^(-t k) = exp(sign*i*pi * 2(g^t n - t k p) / (p n))
    for (int t = 0; t < n; ++t)
        sum += cosSinPi(2LL * (powMod(g, t, p) * n - static_cast<long long>(t) * k * p), static_cast<long long>(p) * n);
    return {sum.real() / n, sign * sum.imag() / n};
}

Constant bluesteinFilter(int p, int length, int k, int sign)
{
    Constant sum = 0;
    for (int m = 0; m < length; ++m) {
        // conj chirp at 0 .. p - 1 and, mirrored, at length - p + 1 .. length - 1; zero between
        if (m >= p && m <= length - p)
            continue;
        // conj(chirp(mirror)) * exp(sign*2*pi*i*m*k/L)
        const long long mirror = m < p ? m : length - m;
        sum += cosSinPi(2LL * m * k * p - mirror * mirror * length, static_cast<long long>(length) * p);
    }
    return {sum.real() / length, sign * sum.imag() / length};
}

int primitiveRoot(int p)
{
    for (int g = 2; g < p; ++g) {
        int d = 1;  // the first proper divisor of p - 1 with g^d = 1
        while (d < p - 1 && ((p - 1) % d != 0 || powMod(g, d, p) != 1))
            ++d;
        if (d == p - 1)
            return g;
    }
    throw std::logic_error("no primitive root");
}

int ComplexBuilder::sumNode(int a, int b, bool subtract)
{
    if (a != Graph::none && b != Graph::none) {
        // a Real32 operand of a Real64 one (a wide product) is widened first
        const Type ta = g_.node(a).type, tb = g_.node(b).type;
        if (ta == Type::F32 && tb == Type::F64)
            a = g_.widen(a);
        else if (ta == Type::F64 && tb == Type::F32)
            b = g_.widen(b);
    }
    return subtract ? g_.sub(a, b) : g_.add(a, b);
}

int ComplexBuilder::mulNode(int a, long double c)
{
    if (a == Graph::none)
        return a;
    if (wide_)
        a = g_.widen(a);
    return g_.mulConst(a, c);
}

Cx ComplexBuilder::mulI(Cx a, int s)
{
    // i*(p + i q) = -q + i p
    if (s > 0)
        return {g_.neg(a.q), a.p};
    return {a.q, g_.neg(a.p)};
}

Cx ComplexBuilder::multiply(Cx a, long double re, long double im)
{
    const long double magnitude = std::sqrt(re * re + im * im);
    if (std::fabs(im) <= 1e-15L * magnitude)
        return scale(a, re);
    if (std::fabs(re) <= 1e-15L * magnitude)
        return mulI(scale(a, std::fabs(im)), im > 0 ? 1 : -1);
    if (materialize_ && a.p != Graph::none && a.q != Graph::none) {
        // z = p + i q;  z (re + i im) = z re + swap(z) (-im, im)
        const int z = g_.add(a.p, g_.swapNeg(a.q));
        const Type t = g_.node(z).type;
        const int cosines = g_.constant(t, re);
        const int sines = g_.constantOf(t, {-im, im, -im, im});
        // the second product first, in the order of graph.h's note
        const int swappedSines = g_.mul(g_.swapHalves(z), sines);
        return {g_.add(g_.mul(z, cosines), swappedSines), Graph::none};
    }
    // one product per statement, in the order of graph.h's note
    const int qIm = mulNode(a.q, im), pRe = mulNode(a.p, re);
    const int p = sumNode(pRe, qIm, true);
    const int qRe = mulNode(a.q, re), pIm = mulNode(a.p, im);
    return {p, sumNode(pIm, qRe, false)};
}

Cx ComplexBuilder::multiplyLanes(Cx v, const std::vector<Constant>& constants)
{
    if (std::all_of(constants.begin(), constants.end(), [&](const Constant& c) { return c == constants[0]; }))
        return multiply(v, constants[0].real(), constants[0].imag());
    long double re[8], im[8];
    for (std::size_t j = 0; j < constants.size(); ++j) {
        re[j] = constants[j].real();
        im[j] = constants[j].imag();
    }
    const bool eight = constants.size() == 8;
    const int cosines = eight ? g_.constantLanes8(re) : g_.constantOf(Type::V4F, {re[0], re[1], re[2], re[3]});
    const int sines = eight ? g_.constantLanes8(im) : g_.constantOf(Type::V4F, {im[0], im[1], im[2], im[3]});
    // (p + i q)(c + i s) = (cp - sq) + i(sp + cq), one product per statement,
    // in the order of graph.h's note
    const int qs = g_.mul(v.q, sines), pc = g_.mul(v.p, cosines);
    const int p = g_.sub(pc, qs);
    const int qc = g_.mul(v.q, cosines), ps = g_.mul(v.p, sines);
    return {p, g_.add(ps, qc)};
}

Cx ComplexBuilder::rotate(Cx a, long long k, long long n, int sign)
{
    const Constant root = exactRoot(k, n, sign);
    k = (k % n + n) % n;
    if ((8 * k) % n != 0)
        return multiply(a, root.real(), root.imag());
    switch (8 * k / n) {
    case 0: return a;
    case 2: return mulI(a, sign);
    case 4: return neg(a);
    case 6: return mulI(a, -sign);
    }
    // odd multiple of 45 degrees: r*(+-1 +- i), two products
    const bool cs = root.real() > 0, sn = root.imag() > 0;
    const int pm = cs ? a.p : g_.neg(a.p);
    const int qs = sn ? a.q : g_.neg(a.q);
    const int ps = sn ? a.p : g_.neg(a.p);
    const int qm = cs ? a.q : g_.neg(a.q);
    const long double r = std::fabs(root.real());
    return {mulNode(sumNode(pm, qs, true), r), mulNode(sumNode(ps, qm, false), r)};
}

std::vector<Cx> ComplexBuilder::dft(const Tree& tree, const std::vector<Cx>& x, int sign)
{
    return walkTree(*this, tree, x, sign);
}

std::vector<Cx> ComplexBuilder::butterfly(const Tree& tree, const std::vector<Cx>& x, int sign)
{
    switch (tree.kind) {
    case Tree::Kind::Direct:
        if (tree.size == 2)
            return {add(x[0], x[1]), sub(x[0], x[1])};
        return oddSymmetric(tree.size, x, sign, true);
    case Tree::Kind::Direct5w: return fiveW(x, sign);
    case Tree::Kind::OddSymmetric: return oddSymmetric(tree.size, x, sign, false);
    default: throw std::logic_error("not a leaf");
    }
}

std::vector<Cx> ComplexBuilder::multiplyEach(const std::vector<Cx>& values, int count,
                                             const std::function<Constant(int)>& constant)
{
    std::vector<Cx> out = values;
    for (int i = 0; i < count; ++i) {
        const Constant c = constant(i);
        out[static_cast<std::size_t>(i)] = multiply(values[static_cast<std::size_t>(i)], c.real(), c.imag());
    }
    return out;
}

// Odd-symmetric butterfly of a prime p: pairs about the middle, cosine sums A[m]
// and sine sums B[m], X[m] = A - iB and X[p-m] = A + iB (forward).  The order of
// each sum is fixed: the term of the first pair leads, x[0] joins it first (ahead
// of it when the first cosine is negative), the other pairs follow in order.
std::vector<Cx> ComplexBuilder::oddSymmetric(int p, const std::vector<Cx>& x, int sign, bool x0First)
{
    const std::size_t n = static_cast<std::size_t>(p), half = (n - 1) / 2;
    std::vector<Cx> sum(half + 1), diff(half + 1), out(n);
    for (std::size_t j = 1; j <= half; ++j) {
        sum[j] = add(x[j], x[n - j]);
        diff[j] = sub(x[j], x[n - j]);
    }
    if (x0First) {
        out[0] = x[0];
        for (std::size_t j = 1; j <= half; ++j)
            out[0] = add(out[0], sum[j]);
    } else {
        Cx acc = sum[half];
        for (std::size_t j = half - 1; j >= 1; --j)
            acc = add(sum[j], acc);
        out[0] = add(x[0], acc);
    }
    for (std::size_t m = 1; m <= half; ++m) {
        Cx a, b;
        for (std::size_t j = 1; j <= half; ++j) {
            const Constant root = cosSinPi(static_cast<long long>(2 * j * m), p);
            const long double c = root.real(), s = root.imag();
            const Cx cosTerm = scale(sum[j], std::fabs(c));
            const Cx sinTerm = scale(diff[j], std::fabs(s));
            if (j == 1) {
                a = c > 0 ? add(cosTerm, x[0]) : sub(x[0], cosTerm);
                b = s > 0 ? sinTerm : neg(sinTerm);
            } else {
                a = c > 0 ? add(a, cosTerm) : sub(a, cosTerm);
                b = s > 0 ? add(b, sinTerm) : sub(b, sinTerm);
            }
        }
        a = narrow(a);
        const Cx ib = mulI(narrow(b), sign);
        out[m] = add(a, ib);
        out[n - m] = sub(a, ib);
    }
    return out;
}

// 5-point butterfly in the form with one multiplication fewer:
// a = x0 - 0.25*(S1+S2), b = 0.559...*(S1-S2), A1 = a+b, A2 = a-b.
std::vector<Cx> ComplexBuilder::fiveW(const std::vector<Cx>& x, int sign)
{
    const Cx s1 = add(x[1], x[4]), s2 = add(x[2], x[3]);
    const Cx d1 = sub(x[1], x[4]), d2 = sub(x[2], x[3]);
    const Cx t = add(s1, s2);
    const Constant root1 = cosSinPi(2, 5), root2 = cosSinPi(4, 5);
    const long double c1 = root1.real(), sn1 = root1.imag(), c2 = root2.real(), sn2 = root2.imag();
    const Cx a = sub(x[0], scale(t, -(c1 + c2) / 2));
    const Cx b = scale(sub(s1, s2), (c1 - c2) / 2);
    const Cx a1 = add(a, b), a2 = sub(a, b);
    const Cx d2Sn2 = scale(d2, sn2), d1Sn1 = scale(d1, sn1);
    const Cx b1 = add(d1Sn1, d2Sn2);
    const Cx d2Sn1 = scale(d2, sn1), d1Sn2 = scale(d1, sn2);
    const Cx b2 = sub(d1Sn2, d2Sn1);
    const Cx ib1 = mulI(b1, sign), ib2 = mulI(b2, sign);
    return {add(x[0], t), add(a1, ib1), add(a2, ib2), sub(a2, ib2), sub(a1, ib1)};
}

std::vector<Cx> ComplexBuilder::split(const Tree& tree, const std::vector<Cx>& x, int sign)
{
    return walkSplit(*this, g_, tree, x, 1, sign);
}

}  // namespace gen
