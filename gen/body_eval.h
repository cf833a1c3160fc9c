// Runs the printed text of a kernel body, statement by statement, on
// concrete samples: the verifier's view of what the compiled kernel will
// compute.  A body is held against its scalar flow before it is written, so
// that a wrong lane, selector or conversion in the printing stops the
// generator instead of showing in a built file.
//
// The text is the subset the generator prints for packed real and Hartley
// bodies, batch bodies and the Walsh-Hadamard networks: declarations and
// assignments of names, `y[<k>] = <expression>;`, stores through `y.put`,
// `kv::store` or an access class's `storeVector`, loads through `x.get`,
// `kv::load<V>` or `loadVector`, the networks' lane moves (transposeBlock,
// splitEvenOdd, exchangeHalves) and blocks, over float and double scalars and
// vectors of up to eight lanes.  An index into x or y is a sum of numbers and
// multiples of `stride`.
#ifndef KVTGEN_BODY_EVAL_H
#define KVTGEN_BODY_EVAL_H

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace gen {

// Inputs of `count` samples on which a printed body must give its flow's
// bits: zeros of both signs and impulses, where a lane taken from the wrong
// place or a zero of the other sign shows; constant and alternating samples,
// whose spectra have exact zeros; random samples, where a rounding shows; and
// samples near the top of the range, whose Real32 products exist only in
// Real64.
std::vector<std::vector<double>> verifierInputs(int count, bool single);

// How a printed body is run: c and s, the sample type, and the stride of
// its rows.
struct PrintedRun {
    double factor;
    bool single;
    int stride;
};
// The numbers a body must store, by their index in y, for an input.
using Reference = std::function<std::map<int, double>(const std::vector<double>& x)>;

// Holds a printed body against its reference on every input: where a number
// is not stored or differs in a bit, stops the generator naming the kernel.
void verifyPrintedText(const std::string& kernel, const std::string& text, const std::vector<std::vector<double>>& inputs,
                       const PrintedRun& run, const Reference& expected);

}  // namespace gen

#endif
