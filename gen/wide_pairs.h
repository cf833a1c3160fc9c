// Packing of a complex kernel's 128-bit operation graph onto 256-bit vectors
// (packNarrow, complex_kernel.h).
//
// The 256-bit target runs the kernels of the 128-bit graph unchanged in their
// arithmetic: the pass pairs isomorphic 128-bit nodes (same operation, same
// selector, operands that sit side by side) into one 256-bit node whose lower
// half is one of them and whose upper half the other.  Every lane then computes
// exactly the operation the 128-bit graph gives it, with the same operands in
// the same order, so the results are bit for bit the same.  Constants of the
// two halves merge into one 256-bit constant and the scale factor is
// broadcast.  Where the halves of an operand do not line up the pass inserts
// a move across halves (an insertion, a half permutation or an extraction),
// and it leaves a node 128-bit where a pair would need more moves than it
// saves instructions.  Which of its packings a kernel takes, and whether it
// takes one at all, is the explorer's choice by the target's cost model.
#ifndef KVTGEN_WIDE_PAIRS_H
#define KVTGEN_WIDE_PAIRS_H

namespace gen {

// How the pass pairs nodes: the pairs asked for from the start (none, pairs
// asked for by neighbouring outputs, the outputs whose computations share the
// most shape, or the same steps of neighbouring parallel transforms by their
// order or lined up by the longest common sequence of steps), and whether it
// makes pairs whose operands need moves across halves (counting one move less
// where their users pair too: lookahead).  The names are those of the table
// of forms.
struct PackOptions {
    enum Seeds { None, Neighbours, Shapes, Groups, AlignedGroups } seeds = None;
    enum Moves { NoMoves, Across, Lookahead } moves = NoMoves;
};
inline const char* const seedsNames[] = {"none", "neighbours", "shapes", "groups", "aligned-groups"};
inline const char* const movesNames[] = {"none", "across", "lookahead"};

}  // namespace gen

#endif
