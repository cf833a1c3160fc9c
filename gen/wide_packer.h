// The state of one 256-bit packing of a complex kernel's 128-bit graph, shared
// by the steps of the pass (wide_build.cpp): the seeds asked for before the
// walk, the rounds of ready nodes paired, and the nodes of the packed graph:
// 256-bit nodes, moves across halves and the stores.
#ifndef KVTGEN_WIDE_PACKER_H
#define KVTGEN_WIDE_PACKER_H

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

#include "complex_kernel.h"

namespace gen::wide {

inline bool isLeaf(const Node& n) { return n.op == Op::Input || n.op == Op::Const || n.op == Op::Param; }

class Packer {
public:
    Packer(const NarrowKernel& k, bool single, PackOptions options)
        : g_(k.graph), stores_(k.stores), single_(single), options_(options),
          moveCost(target().inOperations("shuffle")), out_{Graph(false), {}, {}},
          slots_(static_cast<std::size_t>(g_.size()))
    {
    }

    WideBody run();

private:
    // what the pass knows of a node of the 128-bit graph
    struct Slot {
        int narrow = -1;                     // its 128-bit value in the packed graph
        std::pair<int, int> pair{-1, -1};    // the (lower, upper) pair computed as one 256-bit node
        std::pair<int, int> wanted{-1, -1};  // the pair a seed asks for
        int waiting = 0;  // operands not yet computed
        std::vector<int> users;
    };

    const Node& node(int id) const { return g_.node(id); }
    Slot& at(int id) { return slots_[static_cast<std::size_t>(id)]; }
    const Slot& at(int id) const { return slots_[static_cast<std::size_t>(id)]; }
    bool inWide(int id) const { return at(id).pair.first >= 0; }
    // the 256-bit node that computes a paired node, and the node's half there
    int wideNode(int id) const { return wideOf_.at(at(id).pair); }
    int half(int id) const { return at(id).pair.second == id ? 1 : 0; }
    bool assigned(int id) const { return at(id).narrow >= 0 || inWide(id); }
    bool isWanted(int id) const { return at(id).wanted.first >= 0; }
    // Where a 128-bit Input node reads its four floats or two doubles from:
    // the offset in real numbers of a contiguous 16-byte read, or -1 where it
    // reads something else (a half, or two separate places).
    int span(const Node& n) const { return !single_ || n.index2 == n.index + 1 ? 2 * n.index : -1; }
    // Whether a store writes a whole 128-bit vector (all of Complex64's do):
    // only two such stores to neighbouring places can become one 256-bit store.
    bool full(const Store& s) const { return !single_ || s.kind == Store::Pair; }
    bool neighbours(const Store& a, const Store& b) const
    {
        return full(a) && full(b) && 2 * b.index == 2 * a.index + laneCount(node(a.node).type);
    }

    // seeds, then rounds of pairing
    void seed(const std::vector<bool>& live);
    bool seedable(int x, int y, bool checkOrder) const;
    int seedFromOutputs(int lo, int hi, bool commit);
    void seedFromGroups(const std::vector<bool>& live, bool align);
    void seedSteps(const std::vector<int>& lower, const std::vector<int>& upper, bool align);
    void pairAll();
    // whether y is in the round (kept sorted) and not yet computed
    bool takeable(int y, const std::vector<int>& round) const
    {
        return !assigned(y) && std::binary_search(round.begin(), round.end(), y);
    }
    bool pairable(int x, int y) const;
    std::pair<int, int> sideBySidePartner(int x, const std::vector<int>& round) const;
    std::pair<int, int> cheapestPartner(int x, const std::vector<int>& round) const;
    int joinCost(int lo, int hi) const;
    int extractCost(int id) const;
    bool compatible(int x, int y) const;
    // Cost of computing x and y as one 256-bit node minus the cost of two
    // 128-bit nodes; x in the lower half.
    int pairGain(int lo, int hi) const;
    bool usersPair(int lo, int hi) const;

    // nodes of the packed graph (wide_build.cpp)
    int value128(int id);
    int value256(int lo, int hi);
    void assignNarrow(int id);
    void assignWide(int lo, int hi);
    int signFlip(int wide);
    void placed(int id);
    void placeStores();

    const Graph& g_;
    const std::vector<Store>& stores_;
    const bool single_;
    PackOptions options_;
    // what an instruction of the shuffle unit counts, in operations, when a
    // pair is weighed against the two nodes it replaces (the target's
    // cost.shuffle)
    const int moveCost;
    WideBody out_;
    int wideNodes_ = 0;    // 256-bit arithmetic nodes
    int narrowNodes_ = 0;  // 128-bit arithmetic nodes left
    int moves_ = 0;        // joins, half permutations and extractions
    std::vector<Slot> slots_;
    std::vector<int> ready_;
    std::map<std::pair<int, int>, int> wideOf_;  // (lower, upper) 128-bit nodes -> 256-bit value
    std::map<int, int> inputAt_;                 // offset of a contiguous read -> Input node
};

}  // namespace gen::wide

#endif
