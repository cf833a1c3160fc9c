// Runs an operation graph on concrete samples, lane by lane, each operation
// rounded once in its node's precision as the printed kernel computes it, and
// holds two bodies of one kernel against each other: the generator's
// verifier.  A wide body (a packing, eight lanes) is printed only where it
// gives the bits of the narrow flow that fixes them on every check input;
// a printed body is run from its text (verifier.cpp) and held against its flow.
#ifndef KVTGEN_VERIFIER_H
#define KVTGEN_VERIFIER_H

#include <array>
#include <functional>
#include <map>
#include <string>
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
