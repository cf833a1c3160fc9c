// Packing of a scalar real-kernel graph onto 4-lane vectors (256-bit target).
//
// The real DFT and Hartley kernels are scalar flows, and many of their
// operations are independent and of one kind (the butterflies of a stage, the
// products of a rotation, the widenings of several sums at once).  This pass
// groups up to four such operations of the same kind into one vector
// operation, Real64 values in a 256-bit vector and Real32 values in a 128-bit
// one, so that widenings and narrowings map four lanes onto four.  Every lane
// computes exactly the scalar operation of its node on the same operands, so
// the results are bit for bit those of the scalar body.  Operands whose lanes
// do not sit in place are gathered by lane permutations and blends, or built
// from scalars; the pass counts those moves and keeps the scalar body where
// packing does not save instructions.
//
// The pass chooses the packs level by level, then writes the text of the
// operand vectors, the packed operations and the packed body and counts their
// instructions as it writes them, so the cost that picks a packing is the
// cost of the text that is printed.
#ifndef KVTGEN_REAL_PACK_H
#define KVTGEN_REAL_PACK_H

#include <algorithm>
#include <string>
#include <vector>

#include "family.h"
#include "graph.h"

namespace gen::real {

struct PackedBody {
    std::string text;  // statements of the packed body, stores included
    // instructions of the packed body (moves, loads and stores included) and
    // of the scalar body, as packing::Packer::weight counts an operation
    int cost = 0, scalarCost = 0;
};

// How the pass groups a level's operations: in the order of their operands,
// four at a time, or greedily, each lane taking the operation that saves
// most; and what a scalar conversion between the precisions counts (two, or
// three in long kernels, which the ports limit).
struct RealPacking {
    bool greedy = false;
    int conversion = 2;
};

// The packed body of a kernel: `stores[i]` is stored at y[storeSlots[i]];
// inputs read x[index] and the scale factor is the parameter `c`;
// `inputLimit` is one past the highest element of x that the kernel may
// read.  The text is empty where nothing packs.
PackedBody packReal(const Graph& graph, const std::vector<int>& stores, const std::vector<int>& storeSlots,
                    int inputLimit, const RealPacking& how);
// Of the packings, the one of fewest instructions where it has fewer than
// the scalar body; false where none has.
bool searchRealPacking(const Graph& graph, const std::vector<int>& stores, const std::vector<int>& storeSlots,
                       int inputLimit, RealPacking& chosen);

namespace packing {

constexpr int lanes = 4;

// The scale factor, or a conversion of it: broadcast where a vector needs it.
bool isFactor(const Graph& g, int id);

// A kernel's graph and the packs chosen on it, made level by level.
struct Packer {
    const Graph& g;
    const std::vector<int>& stores;  // stores[i] is stored at y[storeSlots[i]]
    const std::vector<int>& storeSlots;
    const int inputLimit;
    const std::vector<bool> live;
    // per node: its level, the longest path from the loads, and its position,
    // the first store slot it feeds (the order in which a pack's members go)
    std::vector<int> level, position;
    int maxLevel = 0;
    std::vector<int> pack, lane;  // per node: its pack and lane, -1 when scalar
    std::vector<std::vector<int>> packs;  // node ids per lane, -1 for an unused lane

    const int crossingMove, scalarConversion, vectorConversion;  // see moveWeight() and weight()
    int scalarCost;  // instructions of the scalar body: its loads, operations and stores

    Packer(const Graph& graph, const std::vector<int>& stores, const std::vector<int>& storeSlots, int inputLimit,
           int scalarConversion);

    // What one operation counts, scalar or on a vector, in operations.  A
    // conversion between the precisions on a vector counts the target's
    // cost.conversion; a scalar one what the kernel's line in the table of forms
    // says (conversion=2|3): in a long kernel the ports are the limit and a scalar
    // conversion counts one more, so that packing four of them pays for more
    // moves.  In a short one the dependency chains are, and the moves that a
    // packing adds to them weigh as much as the instructions it saves.
    int weight(int id, bool vector = false) const
    {
        const Op op = g.node(id).op;
        return op != Op::Widen && op != Op::Narrow ? 1 : vector ? vectorConversion : scalarConversion;
    }

    int packOf(int id) const { return pack[static_cast<std::size_t>(id)]; }
    int laneOf(int id) const { return lane[static_cast<std::size_t>(id)]; }
    int levelOf(int id) const { return level[static_cast<std::size_t>(id)]; }
    // The highest member of a pack or chunk, which has at least one.
    static int head(const std::vector<int>& members) { return *std::max_element(members.begin(), members.end()); }
    // A move of the lanes of pack q: Real64 lanes cross the halves of a
    // 256-bit vector (the target's cost.move-across-halves, in operations);
    // Real32 lanes move within one register, as one operation.
    int moveWeight(int q) const
    {
        return g.node(head(packs[static_cast<std::size_t>(q)])).type == Type::F64 ? crossingMove : 1;
    }
    // What a move costs where scalar code reads a value out of a lane other
    // than the lowest of its pack; 0 where it reads none.
    int extraction(int id) const { return id >= 0 && packOf(id) >= 0 && laneOf(id) != 0 ? moveWeight(packOf(id)) : 0; }

    // An expression and its instructions as the weights count them.
    struct Code {
        int cost;
        std::string text;
    };
    // The operand vector whose lane i is src[i] (-1 for an unused lane): in
    // place, a permutation or a blend of packs, a load, a broadcast, or built
    // from single values.  Without `text` only its cost: the search weighs far
    // more packs than are printed.
    Code gather(const std::vector<int>& src, bool text) const;
    // The members' operation on a vector, its operands' gathering included.
    Code packed(const std::vector<int>& members, bool text = true) const;
    // The expression by which scalar code reads a value.
    std::string scalarValue(int id) const;
};

}  // namespace packing

}  // namespace gen::real

#endif
