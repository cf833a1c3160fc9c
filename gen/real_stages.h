// Helpers that the builders of real flows share: complex values as pairs of
// references, the placing of bins in a half spectrum, index arithmetic modulo
// a prime or a product of coprime factors, and the Rader step of a real
// length (real_rader.cpp) that the real transform (real_builder.cpp) and the
// complex stages (real_complex_stages.cpp) meet in.
#ifndef KVTGEN_REAL_STAGES_H
#define KVTGEN_REAL_STAGES_H

#include <vector>

#include "real_builder.h"

namespace gen::real {

const long double pi = 3.141592653589793238462643383279502884L;

inline Cx cadd(Flow& f, Cx a, Cx b) { return {f.add(a.re, b.re), f.add(a.im, b.im)}; }
inline Cx csub(Flow& f, Cx a, Cx b) { return {f.sub(a.re, b.re), f.sub(a.im, b.im)}; }
inline Cx conj(Cx a) { return {a.re, -a.im}; }
inline Cx timesMinusI(Cx a) { return {a.im, -a.re}; }  // -i·(a + ib) = b - ia
inline Cx timesI(Cx a) { return {-a.im, a.re}; }
// (a.re + i a.im)·(c + i s) as two product expressions, one product per
// statement in the order of the note in gen/graph.h.
Cx times(Flow& f, Cx a, long double c, long double s);

// Stores bin k of a length-n half spectrum, by its conjugate mirror above n/2.
void place(std::vector<Cx>& spectrum, std::vector<bool>& filled, int n, long k, Cx value);
void checkFilled(const std::vector<bool>& filled);

// q with q·g = 1 (mod p).
int inverseModulo(int g, int p);

// Index k with k = k1 (mod a) and k = k2 (mod b), a and b coprime.
long crt(long k1, long a, long k2, long b);

// Depth of the transposed builds that are under way: a flow built to be
// transposed writes its 45-degree rotations products first, so that after
// transposition they are additions first like every other rotation.
extern int transposedDepth;

// The Rader step of a real prime length (its tree's inner length p - 1).
std::vector<Cx> raderReal(Flow& f, const TreePtr& tree, const std::vector<Ref>& x);

}  // namespace gen::real

#endif
