// Registry of the kernel families that the generator can write, and the
// helpers every family's emitter shares.
#ifndef KVTGEN_FAMILY_H
#define KVTGEN_FAMILY_H

#include <functional>
#include <map>
#include <string>

#include "graph.h"

namespace gen {

// The vector target the kernels are written for: the 128-bit SSE2 layer of the
// baseline library or the 256-bit AVX2 layer of its x86-64-v3 twin.  Both
// targets compute the same operations in the same order; only the number of
// lanes per instruction differs.
struct Target {
    std::string name = "sse2";
    int vectorBits = 128;
    // the SIMD header that generated units include
    const char* simdHeader() const { return vectorBits == 256 ? "simd_avx2.h" : "simd_sse2.h"; }
    bool wide() const { return vectorBits == 256; }
};
// The targets the generator knows, by name (null: none of that name).
const Target* findTarget(const std::string& name);
const Target& target();
void setTarget(const Target& t);

// Writes every source file of one family into `directory`.
using FamilyEmitter = std::function<void(const std::string& directory)>;

std::map<std::string, FamilyEmitter>& familyRegistry();

struct FamilyRegistration {
    FamilyRegistration(const std::string& name, FamilyEmitter emitter)
    {
        familyRegistry()[name] = std::move(emitter);
    }
};

// The tail of a kernel's frame: calls the body without its scale products when
// the factor is one.  `call` is the body's name with its leading template
// arguments (ending in ", " or "<"), `args` its arguments.
std::string scaledCall(const std::string& call, const std::string& args, const std::string& indent);

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
// alive at once (`registerOrder` in family.cpp).  Inputs and
// parameters are printed through the callbacks; constants are written inline.
// A product by the scale factor (a parameter) is printed under the
// compile-time switch `Scaled`.
struct NodePrinter {
    std::function<std::string(const Node&)> input;
    std::function<std::string(const Node&)> param;
};
std::string printNodes(const Graph& graph, const std::vector<int>& roots, const NodePrinter& printer,
                       const std::string& indent);
// The expression that names a node's value (a variable or an inline literal).
std::string valueOf(const Graph& graph, int id);

}  // namespace gen

#endif
