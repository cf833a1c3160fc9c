// Runs an operation graph of Complex32 vector values on concrete samples, lane
// by lane in single precision, as the printed kernel computes them.  The
// generator uses it to check that two graphs of one kernel (the 128-bit one,
// whose bits are fixed, and a 256-bit one) give the same bits.
#ifndef KVTGEN_GRAPH_EVAL_H
#define KVTGEN_GRAPH_EVAL_H

#include <array>
#include <vector>

#include "graph.h"

namespace gen {

class LaneEvaluator {
public:
    // x: the interleaved samples of src; factor: the value of every Param
    LaneEvaluator(const Graph& graph, const std::vector<float>& x, float factor);

    // lanes of a node (4 for V4F, 8 for V8F, lane 0 for a scalar)
    const std::array<float, 8>& lanes(int id) const { return values_[static_cast<std::size_t>(id)]; }

private:
    std::vector<std::array<float, 8>> values_;
};

// Whether two floats are the same bits, any two NaNs counting as equal.
bool sameBits(float a, float b);

}  // namespace gen

#endif
