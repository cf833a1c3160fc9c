// Registry of the kernel families that the generator can write, and the
// helpers every family's emitter shares.
#ifndef KVTGEN_FAMILY_H
#define KVTGEN_FAMILY_H

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "graph.h"

namespace gen {

// The target the kernels are written for, as its description file in
// targets/ gives it: its name (the key of its lines in the table of forms),
// the width of its vectors and the SIMD header its units include.  Every
// target computes the same operations in the same order as the 128-bit
// flows; only the number of lanes per instruction differs.
struct Target {
    std::string name = "sse2";
    int vectorBits = 128;
    std::string simdHeader = "simd_sse2.h";
    // the target's cost model: what an instruction of each class counts (the
    // description's cost.<class> lines), by which the explorer chooses forms
    // and the packing passes weigh a pack against the operations it replaces
    std::map<std::string, int> cost;
    // the first target of the list the explorer runs over, whose flows the
    // others take (empty when building)
    std::string baseline;

    bool wide() const { return vectorBits == 256; }
    // A class's weight; a class the description does not weigh stops the generator.
    int weight(const std::string& costClass) const;
    // A class's weight in operations (additions, products).
    int inOperations(const std::string& costClass) const { return weight(costClass) / weight("operation"); }
};
// Reads a target's description (lines "key = value", # comments); a width
// the generator cannot write for stops it.
Target readTarget(const std::string& path);
// The descriptions named by a list of targets (one name per line), in order.
std::vector<Target> readTargetList(const std::string& path);
const Target& target();
void setTarget(const Target& t);

// Writes every source file of one family into `directory`.
using FamilyEmitter = std::function<void(const std::string& directory)>;

std::map<std::string, FamilyEmitter>& familyRegistry();

struct FamilyRegistration {
    FamilyRegistration(const std::string& name, FamilyEmitter emitter) { familyRegistry()[name] = std::move(emitter); }
};

// The tail of a kernel's frame: calls the body without its scale products when
// the factor is one.  `call` is the body's name with its leading template
// arguments (ending in ", " or "<"), `args` its arguments.
std::string scaledCall(const std::string& call, const std::string& args, const std::string& indent);

// The literals of a kernel's scale factors 1/n and 1/sqrt(n) in its sample
// type, as kvtg::pickFactor takes them: "byN, bySqrtN".
std::string factorLiterals(Type type, int n);

// The body of a size dispatcher over the kernels of lengths 2..64, from the
// opening of its signature on: `sample` is the element type, `kernelName(n)`
// the kernel of length n.
std::string sizeDispatcher(const std::string& name, const std::string& sample,
                           const std::function<std::string(int)>& kernelName);

// Writes a file only when its content differs, so that an unchanged kernel is
// not compiled again.
void writeIfChanged(const std::string& path, const std::string& content);

// Prints the definitions of the nodes that the roots need, one C++ statement
// per node, as `const <type> t<id> = ...;`, in an order that keeps few values
// alive at once (`registerOrder` in family.cpp).  Inputs and parameters are
// printed through the callbacks; constants are written inline.  A product by
// the scale factor (a parameter) is printed under the compile-time switch
// `Scaled`.  With `lanesOf` set, the graph is a scalar flow printed lanes across
// transforms: a value of a scalar type is a vector of the type that lanesOf
// names, lane t holding transform t's value, and each operation is the SIMD
// layer's (constants broadcast, conversions kv::convert).
struct NodePrinter {
    std::function<std::string(const Node&)> input;
    std::function<std::string(const Node&)> param;
    std::function<std::string(Type)> lanesOf;
};
std::string printNodes(const Graph& graph, const std::vector<int>& roots, const NodePrinter& printer,
                       const std::string& indent);
// The expression that names a node's value (a variable or an inline literal).
std::string valueOf(const Graph& graph, int id);

}  // namespace gen

#endif
