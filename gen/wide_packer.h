// The state of one 256-bit packing of a 128-bit graph, shared by the steps of
// the pass: wide_pairs.cpp runs them and holds the cost model, wide_seeds.cpp
// asks for pairs before the walk (the seeds), wide_pairing.cpp walks the graph
// in rounds of ready nodes and pairs them, and wide_build.cpp makes the nodes
// of the packed graph: 256-bit nodes, moves across halves and the stores.
#ifndef KVTGEN_WIDE_PACKER_H
#define KVTGEN_WIDE_PACKER_H

#include <map>
#include <utility>
#include <vector>

#include "family.h"
#include "wide_pairs.h"

namespace gen::wide {

using Options = PackOptions;

// The 256-bit type of two 128-bit values side by side.
Type wideType(Type t);

inline bool isLeaf(const Node& n) { return n.op == Op::Input || n.op == Op::Const || n.op == Op::Param; }

// Whether a node's instruction runs on the shuffle unit: exchanges,
// selections, moves across halves, loads into an upper half.
bool onShuffleUnit(const Node& n);


class Packer {
public:
    Packer(const Graph& g, const InputSpan& span, Options options)
        : g_(g), span_(span), options_(options), moveCost(target().inOperations("shuffle"))
    {
        const std::size_t size = static_cast<std::size_t>(g.size());
        narrowId_.assign(size, -1);
        wideId_.assign(size, -1);
        half_.assign(size, -1);
        partner_.assign(size, -1);
        wanted_.assign(size, -1);
        wantedHalf_.assign(size, -1);
        assigned_.assign(size, false);
        users_.resize(size);
    }

    PackedKernel run(const std::vector<VectorStore>& stores);

private:
    const Node& node(int id) const { return g_.node(id); }
    bool inWide(int id) const { return wideId_[static_cast<std::size_t>(id)] >= 0; }
    int wanted(int id) const { return wanted_[static_cast<std::size_t>(id)]; }

    // the users of every live node, and the nodes ready from the start (wide_pairs.cpp)
    void findUsers(const std::vector<bool>& live);

    // seeds (wide_seeds.cpp)
    void seed(const std::vector<VectorStore>& stores, const std::vector<bool>& live);
    void seedFromNeighbours(const std::vector<VectorStore>& stores);
    void seedFromShapes(const std::vector<VectorStore>& stores);
    bool combined(int x, int y) const;
    bool dependsOn(int later, int earlier) const;
    int seedFromOutputs(int lo, int hi, bool commit);
    void seedFromGroups(const std::vector<bool>& live, bool align);
    void seedAligned(const std::vector<int>& lower, const std::vector<int>& upper);
    bool seedPair(int lo, int hi);

    // rounds of pairing (wide_pairing.cpp)
    void pairAll();
    bool takeable(int y) const;
    bool pairWanted(const std::vector<int>& round);
    bool pairSideBySide(const std::vector<int>& round);
    bool sideBySidePartner(int x, int& bestLo, int& bestHi);
    bool pairAcrossHalves(const std::vector<int>& round);
    bool leaveNarrow(const std::vector<int>& round);
    void giveUpWanted(const std::vector<int>& round);
    int joinCost(int lo, int hi) const;
    int extractCost(int id) const;
    bool compatible(int x, int y) const;
    // Cost of computing x and y as one 256-bit node minus the cost of two
    // 128-bit nodes; x in the lower half.
    int pairGain(int lo, int hi) const;
    bool usersPair(int lo, int hi) const;
    int inputPartner(int id, int half) const;

    // nodes of the packed graph (wide_build.cpp)
    int value128(int id);
    int value256(int lo, int hi);
    void assignNarrow(int id);
    void assignWide(int lo, int hi);
    int signFlip(int wide);
    void placed(int id);
    void placeStores(const std::vector<VectorStore>& stores);

    const Graph& g_;
    InputSpan span_;
    Options options_;
    // what an instruction of the shuffle unit counts, in operations, when a
    // pair is weighed against the two nodes it replaces (the target's
    // cost.shuffle)
    const int moveCost;
    PackedKernel out_;
    std::vector<int> narrowId_;  // the node's 128-bit value in the packed graph
    std::vector<int> wideId_;    // the 256-bit node that computes it
    std::vector<int> half_;      // and its half there
    std::vector<int> partner_;   // the node in its other half
    std::vector<int> wanted_;    // the partner that the outputs ask for (-1: none)
    std::vector<int> wantedHalf_;
    std::vector<bool> assigned_;
    std::vector<std::vector<int>> users_;
    std::map<int, std::vector<int>> inputUsers_;  // users of Input nodes, for the search of partners through inputs
    std::vector<int> waiting_;   // operands not yet computed
    std::vector<int> ready_;
    std::vector<bool> inRound_;  // the nodes of the round being paired
    std::map<std::pair<int, int>, int> wideOf_;  // (lower, upper) 128-bit nodes -> 256-bit value
    std::map<int, int> inputAt_;                 // offset of a contiguous read -> Input node
};

}  // namespace gen::wide

#endif
