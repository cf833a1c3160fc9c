// The state that the real packing pass shares between its steps: what a node
// costs, which pack and lane holds it, and how an operand vector is gathered.
//
// real_pack.cpp chooses the packs level by level; real_pack_print.cpp prints
// the packed body and counts its instructions.  Both weigh a gathered operand
// by the same plan, so the cost that picks a packing is the cost of the text
// that is printed.
#ifndef KVTGEN_REAL_PACKER_H
#define KVTGEN_REAL_PACKER_H

#include <vector>

#include "family.h"
#include "graph.h"
#include "real_pack.h"

namespace gen::real::packing {

constexpr int lanes = 4;

// The scale factor, or a conversion of it: broadcast where a vector needs it.
bool isFactor(const Graph& g, int id);

// What one operation counts, scalar or on a vector, in operations.  A
// conversion between the precisions on a vector counts the target's
// cost.conversion; a scalar one what the kernel's line in the table of forms
// says (conversion=2|3): in a long kernel the ports are the limit and a scalar
// conversion counts one more, so that packing four of them pays for more
// moves.  In a short one the dependency chains are, and the moves that a
// packing adds to them weigh as much as the instructions it saves.
struct Weights {
    int scalarConversion;
    int vectorConversion;  // the target's cost.conversion, in operations

    int of(const Graph& g, int id, bool vector = false) const
    {
        const Op op = g.node(id).op;
        if (op != Op::Widen && op != Op::Narrow)
            return 1;
        return vector ? vectorConversion : scalarConversion;
    }
};

struct Packer {
    const Graph& g;
    int inputLimit;
    std::vector<int> pack, lane;  // per node: its pack and lane, -1 when scalar
    std::vector<std::vector<int>> packs;  // node ids per lane, -1 for an unused lane; made level by level

    // a move of Real64 lanes crosses the halves of a 256-bit vector (the
    // target's cost.move-across-halves, in operations); Real32 lanes move
    // within one register, as one operation
    const int crossingMove;

    Packer(const Graph& graph, int limit)
        : g(graph), inputLimit(limit), pack(static_cast<std::size_t>(graph.size()), -1),
          lane(static_cast<std::size_t>(graph.size()), -1), crossingMove(target().inOperations("move-across-halves"))
    {
    }

    int packOf(int id) const { return pack[static_cast<std::size_t>(id)]; }
    int laneOf(int id) const { return lane[static_cast<std::size_t>(id)]; }
    int moveWeight(int q) const;
    // Whether scalar code reads a value out of a lane other than the lowest of
    // its pack, and what that move costs.
    bool extracted(int id) const { return id >= 0 && packOf(id) >= 0 && laneOf(id) != 0; }
    int extraction(int id) const { return extracted(id) ? moveWeight(packOf(id)) : 0; }

    // How an operand vector with the given lane sources is built, and at what
    // cost in instructions.
    enum class Gather { Permute, Blend, Broadcast, Load, Lanes };
    struct Plan {
        Gather kind;
        int cost;
        int first = -1, second = -1;  // packs (Permute, Blend), or the first input slot (Load)
    };
    Plan plan(const std::vector<int>& src) const;

    // The operands a (or b, `second`) of the members of a pack, -1 for an unused lane.
    std::vector<int> operandsOf(const std::vector<int>& members, bool second) const;
    // Instructions of the members' operation on a vector, its operands' gathering included.
    int packedCost(const std::vector<int>& members, const Weights& w) const;
};

// Per node: its level, the longest path from the loads, and its position,
// the first store slot it feeds (the order in which a pack's members go).
struct Levels {
    std::vector<int> level, position;
    int maxLevel = 0;
};

// The statements of the packed body and its instructions as the weights count them.
PackedBody printPacked(const Packer& pk, const Levels& levels, const std::vector<bool>& live,
                       const std::vector<int>& stores, const std::vector<int>& storeSlots, const Weights& w);

}  // namespace gen::real::packing

#endif
