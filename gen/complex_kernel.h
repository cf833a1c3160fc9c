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

#include <memory>
#include <string>
#include <vector>

#include "complex_rules.h"
#include "family.h"
#include "forms.h"
#include "graph.h"
#include "graph_eval.h"
#include "wide_pairs.h"

namespace gen {

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
// real number, or (Wide) a 256-bit vector of a packed body.
struct Store {
    enum Kind { Pair, Low, High, Scalar, Wide } kind;
    int index;  // sample index (Scalar: real-number index)
    int node;
};

// The flow of a complex kernel, which fixes its bits: Complex32 up to 5
// points is scalar; from 6 points two complex numbers per vector (products
// of two-part values formed lazily, or after joining the value) or split
// real and imaginary vectors; Complex64 one complex number per vector,
// values carried in two parts.
enum class Flow { Scalar, Pairs, Joined, Split, Parts };
const char* const flowNames[] = {"scalar", "pairs", "joined", "split", "parts"};

Flow flowOf(const Form& form);

// The 128-bit kernel of a flow: its graph, stores and printer.  A flow the
// kernel cannot take stops the generator.
struct NarrowKernel {
    Graph graph;
    std::vector<Store> stores;
    std::vector<int> roots;
    NodePrinter printer;
    Kernel kernel;
};

NarrowKernel buildNarrow(const Variant& v, int n, Flow flow);
// A kernel in the form its line of the table gives it.
Kernel buildKernel(const Variant& v, int n, const Form& form);
// The form the explorer finds for a kernel on the current target.
Form searchForm(const Variant& v, int n);

// The real outputs of a kernel: where each comes from in its graph.
OutputLanes outputLanes(const std::vector<Store>& stores, int n, bool single = true);

// The 128-bit graph of a vector flow packed onto 256-bit vectors (wide_pairs.h),
// with the kernel's stores, two neighbouring ones made one Wide store where
// they share a 256-bit node.
struct PackedKernel {
    Graph graph{false};
    std::vector<Store> stores;
    int wideNodes = 0;    // 256-bit arithmetic nodes
    int narrowNodes = 0;  // 128-bit arithmetic nodes left
    int moves = 0;        // joins, half permutations and extractions
};
PackedKernel packNarrow(const Variant& v, const NarrowKernel& k, const PackOptions& options);

// Inputs on which every wide body of a kernel must give its flow's bits.
std::vector<std::vector<double>> checkInputs(int n);

// The 256-bit stores of a split-layout kernel: the node and where its halves go.
struct WideStore {
    int node;
    int lo, hi;  // first samples of the two halves; hi -1: the lower half alone
    bool pair;   // the lower half holds two samples (else one)
};

// An eight-lane graph of a kernel with the 128-bit graph's bits.
struct EightLanes {
    std::unique_ptr<Graph> graph;  // null where no such graph was found
    std::vector<WideStore> stores;
    std::vector<int> roots;         // the nodes the stores write
    int storeInstructions = 0;      // a store of two halves counts two
    bool batch = false;
};

// The eight-lane graph of a split flow that gives the 128-bit graph's bits
// (none where no such graph was found), with or without batches of four
// transforms.
EightLanes exactEightLanes(int n, const Tree& tree, int sign, bool batch, const Graph& narrow,
                           const std::vector<int>& narrowRoots, const OutputLanes& fixedLanes);
// Its body, and how it is laid out in `kernel.packing`.
std::string eightLanesBody(const EightLanes& best, NodePrinter printer, Kernel& kernel);

}  // namespace gen

#endif
