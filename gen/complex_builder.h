// Builds the operation graph of a complex DFT from its factorisation tree.
//
// A complex value is carried as two parts, p + i*q.  In a scalar kernel p and q
// are the real and imaginary numbers; in a vector kernel each of p and q is a
// whole complex number in one vector, and the value is materialised as
// p + i*q only at the output (one exchange per output).  The same butterfly
// code serves both, since multiplication by i and by real constants act on the
// two parts in the same way.
#ifndef KVTGEN_COMPLEX_BUILDER_H
#define KVTGEN_COMPLEX_BUILDER_H

#include <complex>
#include <functional>
#include <vector>

#include "graph.h"
#include "tree.h"

namespace gen {

struct Cx {
    int p = Graph::none;
    int q = Graph::none;
};

using Constant = std::complex<long double>;

// Where a layout multiplies the twiddles of a T split (complex_walk.h): on
// the outputs of the first stage, inside the group of their transforms or
// after it, or on the inputs of the second stage, in a scope of their own.
enum class TwiddlePoint { FirstInGroup, FirstAfterGroup, SecondInput };

class ComplexBuilder {
public:
    // wideProducts: products and the sums around them are formed in Real64 and
    // rounded once at the end of each expression (the Real32 3- and 5-point).
    // materializeProducts (vector kernels): form p + i*q before a general
    // complex product, so that the product is one value again (an exchange and
    // two products) instead of four products whose two parts double the
    // additions that follow.
    ComplexBuilder(Graph& graph, bool wideProducts = false, bool materializeProducts = false)
        : g_(graph), wide_(wideProducts), materialize_(materializeProducts)
    {
    }

    // DFT of x by the tree; sign -1 gives exp(-2*pi*i*nk/N), +1 the conjugate.
    std::vector<Cx> dft(const Tree& tree, const std::vector<Cx>& x, int sign);
    // The butterfly of a leaf of a tree (2, 3, 4, 5, 5w, 7d, 11d, ...).
    std::vector<Cx> butterfly(const Tree& tree, const std::vector<Cx>& x, int sign);

    // The uniform layout of the tree walk (complex_walk.h): a value is a
    // vector (or a scalar pair) of its own.
    using Value = Cx;
    static constexpr bool binZeroFirst = true;
    static constexpr TwiddlePoint twiddlePoint = TwiddlePoint::SecondInput;
    ComplexBuilder& arithmetic() { return *this; }
    static Cx gather(const std::vector<Cx>& values) { return values[0]; }
    static Cx lane(const Cx& value, int) { return value; }
    Cx twiddle(Cx v, int t0, int, int, int k, int n, int sign) { return rotate(v, 1LL * t0 * k, n, sign); }
    std::vector<Cx> split(const Tree& tree, const std::vector<Cx>& x, int sign);
    std::vector<Cx> multiplyEach(const std::vector<Cx>& values, int count, const std::function<Constant(int)>& constant);

    Cx add(Cx a, Cx b) { return {sumNode(a.p, b.p, false), sumNode(a.q, b.q, false)}; }
    Cx sub(Cx a, Cx b) { return {sumNode(a.p, b.p, true), sumNode(a.q, b.q, true)}; }
    Cx neg(Cx a) { return {g_.neg(a.p), g_.neg(a.q)}; }
    Cx scale(Cx a, long double c) { return {mulNode(a.p, c), mulNode(a.q, c)}; }
    // s*i*a for s = +1 or -1.
    Cx mulI(Cx a, int s);
    // a * exp(sign*2*pi*i*k/n), with the exact angles done by exchanges.
    Cx rotate(Cx a, long long k, long long n, int sign);
    // a * (re + i*im) by four products (two where a part of the constant is 0).
    Cx multiply(Cx a, long double re, long double im);
    // v times one constant per lane of a V4F or V8F value (four or eight), by
    // multiply() where they are all alike, else by four products.
    Cx multiplyLanes(Cx v, const std::vector<Constant>& constants);
    Cx narrow(Cx a) { return {g_.narrow(a.p), g_.narrow(a.q)}; }

private:
    int sumNode(int a, int b, bool subtract);
    int mulNode(int a, long double c);

    std::vector<Cx> oddSymmetric(int p, const std::vector<Cx>& x, int sign, bool x0First);
    std::vector<Cx> fiveW(const std::vector<Cx>& x, int sign);

    Graph& g_;
    bool wide_;
    bool materialize_;
};

// Smallest primitive root modulo a prime.
int primitiveRoot(int p);
long long powMod(long long base, long long exp, long long mod);

// exp(sign*2*pi*i*k/n) at full precision; exact where the angle is a multiple of 45 degrees.
Constant exactRoot(long long k, long long n, int sign);
// Rader's constant B[k] = (1/(p-1)) sum_t w^(g^t) v^(-t k) for the smallest primitive root g.
Constant raderConstant(int p, int k, int sign);
// Bluestein's filter H[k] = (1/L) DFT_L(conj chirp)[k] of the chirp exp(sign*i*pi*k^2/p).
Constant bluesteinFilter(int p, int length, int k, int sign);

}  // namespace gen

#endif
