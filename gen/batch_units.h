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

// What a batched kernel computes on: its sample type, whether a Real32 flow
// has Real64 values, the real numbers per element and per transform.
struct BatchShape {
    bool single, mixed;
    int perElement, inputs, outputs;
};

// The element k of a transform that `reference` gives, for an input x of
// `inputs` elements.
using BatchReference = std::function<std::vector<double>(const std::vector<double>& x)>;

// The unit of a batched kernel: the scalar flow printed lanes across
// transforms (every node the stores need, then y.put(k, value) for the node
// stored at element k of every transform, Graph::none an exact zero), the
// printed body run with a different check input in each lane and every lane's
// stores held against the reference (a bit that differs stops the generator,
// naming the kernel), and the kernel that checks the flag and runs the body
// over a layout.  `what` names the transform in the unit's title.
std::string batchKernelUnit(const std::string& name, const std::string& what, const Graph& flow,
                            const std::vector<int>& stores, const BatchShape& shape, const BatchReference& reference,
                            const char* direction, const std::string& factors);

// The table of a batched entry point's kernels of lengths 2..64 (kernel n is
// `stem` n _ `suffix`, the table `stem` `suffix`).
std::string batchTableUnit(const std::string& stem, const std::string& suffix, const std::string& real);

}  // namespace gen

#endif
