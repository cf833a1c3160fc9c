// Flows of the real DFT rules: direct, prime-factor and twiddle steps, the
// Rader step with folded multipliers, and the complex stages they use.
#ifndef KVTGEN_REAL_BUILDER_H
#define KVTGEN_REAL_BUILDER_H

#include <vector>

#include "real_flow.h"
#include "tree.h"

namespace gen::real {

// Half spectrum X[0..N/2] of the real samples x by the given tree; bin 0 and,
// for even N, bin N/2 have a zero imaginary part.
std::vector<Cx> realDft(Flow& flow, const TreePtr& tree, const std::vector<Ref>& x);

// All N outputs of a complex DFT of the given length (exponent negative).
std::vector<Cx> complexDft(Flow& flow, int size, const std::vector<Cx>& x);

// x times W_m^e = exp(-2·pi·i·e/m): free at multiples of 90 degrees, two
// products at odd multiples of 45 degrees, four otherwise.
Cx rotate(Flow& flow, Cx x, long e, long m);

// The stored values of a half spectrum in the order R0, R1, I1, ..., Rh.
std::vector<Ref> flatten(const std::vector<Cx>& bins, int n);

// Least primitive root modulo a prime.
int primitiveRoot(int p);

// Evaluates a flow in long double on the given inputs (a self-check of the
// generator against the plain definition).
std::vector<long double> evaluate(const Flow& flow, const std::vector<Ref>& outputs,
                                  const std::vector<long double>& inputs);

}  // namespace gen::real

#endif
