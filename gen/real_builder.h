// The real DFT and Hartley rules: the tree of every length and the operation
// counts that its flow must have (real_rules.cpp), and the flows of the rules,
// complex values held as pairs of references of a real flow: direct,
// prime-factor and twiddle steps and the complex stages they use
// (real_builder.cpp), and the Rader step (real_rader.cpp).
#ifndef KVTGEN_REAL_BUILDER_H
#define KVTGEN_REAL_BUILDER_H

#include <complex>
#include <vector>

#include "real_flow.h"
#include "tree.h"

namespace gen::real {

// A rule and the counts that its flow must have: multiplications by transform
// constants, additions and subtractions, and the negations of a forward flow
// or the doublings of an inverse one.
struct RuleRow {
    const char* rule;
    int multiplications;
    int additions;
    int third;
};

// Which flow a Hartley kernel takes: the forward one (Either as well) or the
// transposed one, each with the tree of its own row.
enum class Form { Either, Forward, Transposed };

struct HartleyRow {
    Form form;
    int multiplications;
    int additions;
};

const RuleRow& forwardRow(int size);
const RuleRow& inverseRow(int size);
const HartleyRow& hartleyRow(int size);

// Parsed trees; bare lengths inside a rule resolve to the rows of the same
// table ("direct" is the direct rule of the row's own length).
// The tree of a row records its table, so that a Rader step can take the
// synthesis transforms of half its inner length from the other table.
constexpr int forwardTable = 1;
constexpr int inverseTable = 2;
TreePtr forwardTree(int size);
TreePtr inverseTree(int size);

const long double pi = 3.141592653589793238462643383279502884L;

// Half spectrum X[0..N/2] of the real samples x by the given tree; bin 0 and,
// for even N, bin N/2 have a zero imaginary part.
std::vector<Cx> realDft(Flow& flow, const TreePtr& tree, const std::vector<Ref>& x);

// The h/2 values (v[r] - i·v[r + h/2])·W_2h^r, r < h/2, of h real values (h
// even) through a complex DFT of length h/2: output j is frequency 4j + 1 of
// the length-2h transform of v.
std::vector<Cx> oddFrequencies(Flow& flow, const std::vector<Ref>& v);

// The Rader step of a real prime length (its tree's inner length p - 1).
std::vector<Cx> raderReal(Flow& f, const TreePtr& tree, const std::vector<Ref>& x);

inline Cx conj(Cx a) { return {a.re, -a.im}; }
inline Cx timesMinusI(Cx a) { return {a.im, -a.re}; }  // -i·(a + ib) = b - ia
// (a.re + i a.im)·(c + i s) as two product expressions, one product per
// statement in the order of the note in gen/graph.h.
Cx times(Flow& f, Cx a, long double c, long double s);

// Stores bin k of a length-n half spectrum, by its conjugate mirror above n/2.
void place(std::vector<Cx>& spectrum, std::vector<bool>& filled, int n, long k, Cx value);
void checkFilled(const std::vector<bool>& filled);

// The stored values of a half spectrum in the order R0, R1, I1, ..., Rh.
std::vector<Ref> flatten(const std::vector<Cx>& bins, int n);

// The powers g^j mod p, j = 0..p-2, of the least primitive root g modulo a
// prime p (g^-j is entry (p-1-j) mod (p-1)).
std::vector<long> powers(int p);

// Bin k of the length-(p-1) DFT (exponent `sign`) of the roots W_p^(g^j),
// j = 0..p-2, for that root g: the multipliers of a Rader step.
std::complex<long double> rootBin(int p, int k, int sign);

// Depth of the transposed builds that are under way: a flow built to be
// transposed writes its 45-degree rotations products first, so that after
// transposition they are additions first like every other rotation.
extern int transposedDepth;

}  // namespace gen::real

#endif
