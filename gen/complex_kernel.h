// The kernels of the complex DFT family as the generator builds them: the
// 128-bit flow of a length, which fixes its bits on every target, and the
// bodies a target makes of it (the flow as it stands, packed onto 256-bit
// vectors, or eight lanes wide), each in the form its line of the table of
// forms names.
//
// Complex32 kernels up to 5 points are scalar code on separate real and
// imaginary parts.  Complex64 kernels keep one complex sample per vector and
// carry every value as two parts p + i*q, so that a multiplication by i is
// bookkeeping and the one exchange of lanes happens per output pair, at the
// end.
#ifndef KVTGEN_COMPLEX_KERNEL_H
#define KVTGEN_COMPLEX_KERNEL_H

#include <optional>
#include <string>
#include <vector>

#include "family.h"
#include "forms.h"
#include "graph.h"
#include "tree.h"
#include "verifier.h"

namespace gen {

enum class Precision { Single, Double };

// Text of the rule of a complex length (2..64) as the table holds it
// (complex_rules.cpp).
const char* complexRuleText(int size, Precision precision);
// The parsed tree of that rule; factors with rows of their own are expanded.
TreePtr complexRule(int size, Precision precision);

struct Variant {
    Precision precision;
    bool inverse;

    const char* typeSuffix() const { return precision == Precision::Single ? "32fc" : "64fc"; }
    const char* sampleType() const { return precision == Precision::Single ? "Complex32" : "Complex64"; }
    const char* realType() const { return precision == Precision::Single ? "float" : "double"; }
    std::string direction() const { return inverse ? "Inv" : "Fwd"; }
    std::string kernelName(int n) const
    {
        return "kvtgDFT" + direction() + "_CToC_" + std::to_string(n) + "_" + typeSuffix();
    }
    Type scalarType() const { return precision == Precision::Single ? Type::F32 : Type::F64; }
};

struct Kernel {
    std::string body;  // statements of the transform
    OpCounts counts;
    bool vector = false;  // a template over the access form, taking a vector factor
    const char* layout = "scalar";
    std::string packing;  // how the 256-bit target packed the vector graph
};

// A store of a kernel's outputs: a whole vector, its lower or upper half, a
// real number, or (Wide) a 256-bit vector of a wide body.  A store of one
// 128-bit half of a 256-bit node (`half` 0 lower, 1 upper) is a Pair or Low.
struct Store {
    enum Kind { Pair, Low, High, Scalar, Wide } kind;
    int index;  // sample index (Scalar: real-number index)
    int node;
    int half = -1;
};
// The nodes the stores write.
std::vector<int> rootsOf(const std::vector<Store>& stores);

// The flow of a complex kernel, which fixes its bits: Complex32 up to 5
// points is scalar; from 6 points two complex numbers per vector (products
// of two-part values formed lazily, or after joining the value) or split
// real and imaginary vectors; Complex64 one complex number per vector,
// values carried in two parts.
enum class Flow { Scalar, Pairs, Joined, Split, Parts };
const char* const flowNames[] = {"scalar", "pairs", "joined", "split", "parts"};

Flow flowOf(const Form& form);

// The 128-bit kernel of a flow: its graph and stores.  A flow the kernel
// cannot take stops the generator.
struct NarrowKernel {
    Graph graph;
    std::vector<Store> stores;
    Kernel kernel;
};

NarrowKernel buildNarrow(const Variant& v, int n, Flow flow);
// The real additions and multiplications of a length's tree, whatever the
// vector layout: the scalar graph for Complex32, twice the vector graph of
// Complex64 (one operation per lane).
OpCounts arithmeticCounts(const Variant& v, int n);
// A kernel in the form its line of the table gives it.
Kernel buildKernel(const Variant& v, int n, const Form& form);
// The form the explorer finds for a kernel on the current target.
Form searchForm(const Variant& v, int n);

// The real outputs of a kernel: where each comes from in its graph.
OutputLanes outputLanes(const std::vector<Store>& stores, int n, bool single = true);

// A 256-bit body of a vector flow: its graph, its stores and how it is laid
// out (the kernel's `packing`).
struct WideBody {
    Graph graph;
    std::vector<Store> stores;
    std::string packing;
};

// Packing of a complex kernel's 128-bit operation graph onto 256-bit vectors.
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

// The 128-bit graph packed onto 256-bit vectors, with the kernel's stores,
// two neighbouring ones made one Wide store where they share a 256-bit node.
WideBody packNarrow(const Variant& v, const NarrowKernel& k, const PackOptions& options);

// Inputs on which every wide body of a kernel must give its flow's bits.
std::vector<std::vector<double>> checkInputs(int n);

// The eight-lane body of a split flow that gives the 128-bit graph's bits
// (none where no such body was found), with or without batches of four
// transforms.
std::optional<WideBody> exactEightLanes(const Variant& v, int n, const NarrowKernel& k, bool batch);

}  // namespace gen

#endif
