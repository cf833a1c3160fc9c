// What the batched kernels of every family share: the vectors of a batch on
// the current target, the printing of a scalar flow lanes across transforms
// (x.get, y.put), its verification lane by lane, and the units.
#ifndef KVTGEN_BATCH_UNITS_H
#define KVTGEN_BATCH_UNITS_H

#include <functional>
#include <string>
#include <vector>

#include "graph.h"

namespace gen {

// A scalar flow printed lanes across transforms: the node stored at each
// element of a transform (Graph::none: an exact zero) and the statements.
struct BatchBody {
    std::vector<int> stores;
    std::string text;
};

// What a batched kernel computes on: its sample type, whether a Real32 flow
// has Real64 values, the real numbers per element and per transform.
struct BatchShape {
    bool single, mixed;
    int perElement, inputs, outputs;
};

// How many transforms a pass takes: the lanes of the vector of the sample
// type, or of a Real64 vector where a Real32 flow keeps its Real64 values in
// one vector each (batch_units.cpp, `halves`).
int batchLanes(const BatchShape& shape);

// The statements of a batched body: every node the stores need, then
// y.put(k, value) for element k of every transform.
std::string printBatchBody(const Graph& flow, const std::vector<int>& stores, const BatchShape& shape);

// The element k of a transform that `reference` gives, for an input x of
// `inputs` elements.
using BatchReference = std::function<std::vector<double>(const std::vector<double>& x)>;

// Runs the printed body with a different check input in each lane and holds
// every lane's stores against the reference; stops the generator naming the
// kernel where one bit differs.
void verifyBatchBody(const std::string& kernel, const std::string& text, const BatchShape& shape,
                     const BatchReference& reference);

// The unit of a batched kernel: its body and the kernel that checks the flag
// and runs the body over a layout.
std::string batchKernelUnit(const std::string& name, const std::string& title, const std::string& body,
                            const BatchShape& shape, const char* direction, const std::string& factors);

// The table of a batched entry point's kernels of lengths 2..64 (kernel n is
// `stem` n _ `suffix`).
std::string batchTableUnit(const std::string& table, const std::string& stem, const std::string& suffix,
                           const std::string& real);

namespace real {
// Writes the batched real DFT and Hartley kernels and their tables.
void emitBatchReal(const std::string& dir);
}  // namespace real

}  // namespace gen

#endif
