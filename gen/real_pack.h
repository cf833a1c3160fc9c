// Packing of a scalar real-kernel graph onto 4-lane vectors (256-bit target).
//
// The real DFT and Hartley kernels are scalar flows: one operation, one
// number.  Many of their operations are independent and of one kind (the
// butterflies of a stage, the products of a rotation, the widenings of
// several sums at once).  This pass groups up to four such operations of the
// same kind into one vector operation, Real64 values in a 256-bit vector and
// Real32 values in a 128-bit one, so that widenings and narrowings map four
// lanes onto four.  Every lane computes exactly the scalar operation of its
// node on the same operands, so the results are bit for bit those of the
// scalar body.  Operands whose lanes do not sit in place are gathered by lane
// permutations and blends, or built from scalars; the pass counts those moves
// and keeps the scalar body where packing does not save instructions.
#ifndef KVTGEN_REAL_PACK_H
#define KVTGEN_REAL_PACK_H

#include <string>
#include <vector>

#include "graph.h"

namespace gen::real {

struct PackedBody {
    std::string text;  // statements of the packed body, stores included
    // instructions of the packed body (moves, loads and stores included) and
    // of the scalar body; a conversion between the precisions counts two, or
    // three when scalar in a long kernel
    int cost = 0;
    int scalarCost = 0;
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

}  // namespace gen::real

#endif
