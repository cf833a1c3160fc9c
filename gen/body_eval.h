// Runs the printed text of a kernel body, statement by statement, on
// concrete samples: the verifier's view of what the compiled kernel will
// compute.  A body is held against its scalar flow before it is written, so
// that a wrong lane, selector or conversion in the printing stops the
// generator instead of showing in a built file.
//
// The text is the subset the generator prints for packed real and Hartley
// bodies: `const <type> <name> = <expression>;`, `y[<k>] = <expression>;` and
// `kv::store(y + <k>, <expression>);`, over float and double scalars and the
// SIMD layer's four-lane kv::fvec and kv::dwide values.
#ifndef KVTGEN_BODY_EVAL_H
#define KVTGEN_BODY_EVAL_H

#include <map>
#include <string>
#include <vector>

namespace gen {

// The numbers the body stores, by their index in y.  `x` holds the input
// samples (each a float where the kernel is Real32: `single`), `factor` is c, and
// `Scaled` is true.  Text outside the subset stops the generator.
std::map<int, double> runBody(const std::string& text, const std::vector<double>& x, double factor, bool single);

class Graph;

// Holds a printed body against the graph of its flow: on every input, each
// number the body stores at y[slots[i]] must have the bits of the graph's
// node outputs[i] (lane 0).  Where one differs, stops the generator naming
// the kernel.
void verifyPrintedBody(const std::string& kernel, const Graph& graph, const std::vector<int>& outputs,
                       const std::vector<int>& slots, const std::string& text,
                       const std::vector<std::vector<double>>& inputs, double factor, bool single);

}  // namespace gen

#endif
