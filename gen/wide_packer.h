// The state of one 256-bit packing of a 128-bit graph, shared by the steps of
// the pass: wide_seeds.cpp asks for pairs before the walk (the seeds),
// wide_pairing.cpp walks the graph in rounds of ready nodes and pairs them,
// and wide_build.cpp runs the steps and makes the nodes of the packed graph:
// 256-bit nodes, moves across halves and the stores.
#ifndef KVTGEN_WIDE_PACKER_H
#define KVTGEN_WIDE_PACKER_H

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

#include "family.h"
#include "wide_pairs.h"

namespace gen::wide {

inline bool isLeaf(const Node& n) { return n.op == Op::Input || n.op == Op::Const || n.op == Op::Param; }

class Packer {
public:
    Packer(const Graph& g, const InputSpan& span, PackOptions options)
        : g_(g), span_(span), options_(options), moveCost(target().inOperations("shuffle")),
          slots_(static_cast<std::size_t>(g.size()))
    {
    }

    PackedKernel run(const std::vector<VectorStore>& stores);

private:
    // what the pass knows of a node of the 128-bit graph
    struct Slot {
        int narrow = -1;   // its 128-bit value in the packed graph
        int wide = -1;     // the 256-bit node that computes it
        int half = -1;     // and its half there
        int partner = -1;  // the node in its other half
        std::pair<int, int> wanted{-1, -1};  // the (lower, upper) pair a seed asks for
        int waiting = 0;  // operands not yet computed
        std::vector<int> users;
    };

    const Node& node(int id) const { return g_.node(id); }
    Slot& at(int id) { return slots_[static_cast<std::size_t>(id)]; }
    const Slot& at(int id) const { return slots_[static_cast<std::size_t>(id)]; }
    bool inWide(int id) const { return at(id).wide >= 0; }
    bool assigned(int id) const { return at(id).narrow >= 0 || inWide(id); }
    bool isWanted(int id) const { return at(id).wanted.first >= 0; }
    // whether two full stores write neighbouring places
    bool neighbours(const VectorStore& a, const VectorStore& b) const
    {
        return a.full && b.full && b.offset == a.offset + laneCount(node(a.node).type);
    }

    // seeds (wide_seeds.cpp)
    void seed(const std::vector<VectorStore>& stores, const std::vector<bool>& live);
    void seedFromShapes(const std::vector<VectorStore>& stores);
    bool seedable(int x, int y, bool checkOrder) const;
    int seedFromOutputs(int lo, int hi, bool commit);
    void seedFromGroups(const std::vector<bool>& live, bool align);
    void seedAligned(const std::vector<int>& lower, const std::vector<int>& upper);

    // rounds of pairing (wide_pairing.cpp)
    void pairAll();
    // whether y is in the round (kept sorted) and not yet computed
    bool takeable(int y, const std::vector<int>& round) const
    {
        return !assigned(y) && std::binary_search(round.begin(), round.end(), y);
    }
    bool pairable(int x, int y) const;
    bool pairFree(const std::vector<int>& round, bool acrossHalves);
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
    int make(Op op, Type type, int a, int b = -1, int index = -1);
    int value128(int id);
    int value256(int lo, int hi);
    void assignNarrow(int id);
    void assignWide(int lo, int hi);
    int signFlip(int wide);
    void placed(int id);
    void placeStores(const std::vector<VectorStore>& stores);

    const Graph& g_;
    InputSpan span_;
    PackOptions options_;
    // what an instruction of the shuffle unit counts, in operations, when a
    // pair is weighed against the two nodes it replaces (the target's
    // cost.shuffle)
    const int moveCost;
    PackedKernel out_;
    std::vector<Slot> slots_;
    std::vector<int> ready_;
    std::map<std::pair<int, int>, int> wideOf_;  // (lower, upper) 128-bit nodes -> 256-bit value
    std::map<int, int> inputAt_;                 // offset of a contiguous read -> Input node
};

}  // namespace gen::wide

#endif
