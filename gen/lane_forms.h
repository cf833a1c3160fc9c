// Bits of a lane as an expression, and sums steered to the forms of a graph
// whose bits are fixed.
//
// A lane's value is a tree of IEEE operations on the samples.  Some rewrites
// of such a tree keep every bit: x - y is x + (-y), x + y is y + x, a product
// takes the sign of its operands, a sign change is exact.  One does not:
// -(b - a) differs from a - b in the sign of an exact zero.  A lane form is a
// hash of the tree with the exact rewrites taken out (key) and the sign left
// outside (negative): two lanes with one form have the same bits.
//
// The 256-bit split kernels must give the bits of the 128-bit ones, whose
// graph chose, sum by sum, which operand's sign stays inside the rounding
// (its subtractions are ordered by node number, per 4-lane vector).
// SumOrientations records those choices by lane form and makes every sum of
// a V8F graph in the same orientation, lane by lane: a sign that falls
// outside a sum rides on a SignLanes node, and lanes of one vector that need
// different operations are blended.
#ifndef KVTGEN_LANE_FORMS_H
#define KVTGEN_LANE_FORMS_H

#include <array>
#include <cstdint>
#include <memory>
#include <utility>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "graph.h"

namespace gen {

struct LaneForm {
    std::uint64_t key = 0;
    bool negative = false;
};

// The forms of every lane of a graph's nodes, made as the graph grows.
class LaneForms {
public:
    explicit LaneForms(const Graph& graph) : graph_(graph) {}
    LaneForm form(int id, int lane);  // by value: a later call may grow the table
    const Graph& graph() const { return graph_; }

private:
    const Graph& graph_;
    std::vector<std::array<LaneForm, 8>> forms_;
};

class SumOrientations : public SumSteering {
public:
    // the sums of the given graph that its roots need
    SumOrientations(const Graph& fixed, const std::vector<int>& roots);
    int sum(Graph& graph, int a, int b, bool subtract) override;
    // `live`: the lanes of each node of the last graph steered that its
    // outputs need.  In the next graph, built by the same steps, the lanes
    // of the k-th sum that were not needed in the k-th sum of that graph
    // take whichever orientation needs fewer instructions.
    void keepLanes(const std::vector<int>& live);

private:
    // per value key: bit 0 set where the first term entered positive, bit 1 where negative
    std::unordered_map<std::uint64_t, int> seen_;
    std::unique_ptr<LaneForms> steered_;  // forms of the graph being steered
    std::unordered_set<int> materialised_;  // sign changes made as instructions for a sum
    std::vector<std::pair<int, int>> calls_;  // per sum of the graph: its node and the sum under its signs
    std::vector<int> liveByCall_;             // per sum of the graph before: the lanes needed
};

}  // namespace gen

#endif
