// Runs an operation graph on concrete samples, lane by lane, each operation
// rounded once in its node's precision as the printed kernel computes it, and
// holds two bodies of one kernel against each other: the generator's
// verifier.  A wide body (a packing, eight lanes) is printed only where it
// gives the bits of the narrow flow that fixes them on every check input.
#ifndef KVTGEN_GRAPH_EVAL_H
#define KVTGEN_GRAPH_EVAL_H

#include <array>
#include <utility>
#include <vector>

#include "graph.h"

namespace gen {

// The lanes of the nodes of a graph from values.size() on, in the order of
// their ids, for any kind of lane value: a selecting node's lanes are its
// operands' (through `flip` where the sign changes), a 256-bit constant's
// those of its 128-bit halves, and every other lane is compute(node, lane,
// a, b) of its operands' same lanes.  A missing operand reads `zero`.
template <class Lane, class Flip, class Compute>
void walkLanes(const Graph& graph, std::vector<std::array<Lane, 8>>& values, const Lane& zero, Flip flip,
               Compute compute)
{
    for (int id = static_cast<int>(values.size()); id < graph.size(); ++id) {
        const Node& n = graph.node(id);
        auto operand = [&](int which, int lane) {
            const int source = which == 0 ? n.a : which == 1 ? n.b : -1;
            return source < 0 ? zero : values[static_cast<std::size_t>(source)][static_cast<std::size_t>(lane)];
        };
        const int count = laneCount(n.type), half = count / 2;
        const bool halves = n.op == Op::Const && (n.type == Type::V4D || n.type == Type::V8F);
        std::array<Lane, 8> lanes{};
        for (int i = 0; i < count; ++i) {
            Lane& lane = lanes[static_cast<std::size_t>(i)];
            if (halves || selectsLanes(n.op)) {
                const LaneSource from = halves ? LaneSource{i / half, i % half, false} : laneSource(n, i);
                lane = from.flip ? flip(operand(from.operand, from.lane)) : operand(from.operand, from.lane);
            } else {
                lane = compute(n, i, operand(0, i), operand(1, i));
            }
        }
        values.push_back(lanes);
    }
}

// The lanes of every node of a graph.  Inputs read the real numbers of src:
// a scalar node the number at its index, a V2D node the complex sample at
// its index, a V4F node the complex samples `index` and `index2` (none: +0),
// a 256-bit node the contiguous numbers from the offset in its index.
// Values are held as doubles; a Real32 value is exactly its float.
class LaneEvaluator {
public:
    LaneEvaluator(const Graph& graph, const std::vector<double>& x, double factor);

    // lanes of a node (up to 8; lane 0 for a scalar)
    const std::array<double, 8>& lanes(int id) const { return values_[static_cast<std::size_t>(id)]; }

private:
    std::vector<std::array<double, 8>> values_;
};

// One IEEE operation of a node, Add, Sub, Mul or ZeroSub (0 - a), rounded
// once in Real32 (`single`) or Real64 as the compiled kernel rounds it.
double arithmetic(Op op, bool single, double a, double b);

// Whether two values are the same bits, any two NaNs counting as equal.
bool sameBits(double a, double b);

// Where each real number of a kernel's output comes from: a node and its lane.
using OutputLanes = std::vector<std::pair<int, int>>;

// Whether `wide` gives every output of `narrow` bit for bit on every input
// (every Param of both graphs taking `factor`).
bool sameOutputs(const Graph& narrow, const OutputLanes& narrowLanes, const Graph& wide, const OutputLanes& wideLanes,
                 const std::vector<std::vector<double>>& inputs, double factor);

}  // namespace gen

#endif
