// Operation graph of one straight-line kernel.
//
// Every node is one arithmetic operation on a scalar (Real32/Real64) or on a
// 128-bit vector: two doubles (V2D) or four floats (V4F, in the complex kernels
// two complex numbers, real part first).  Graphs of the 256-bit target also
// hold V4D and V8F values, each two 128-bit values side by side
// (packNarrow, gen/complex_kernel.h).  Nodes are created through smart constructors that
// hash-cons equal expressions and apply only rewrites that are exact in IEEE
// arithmetic: a negation is merged into the addition or subtraction that
// consumes it, a multiplication by 1 disappears, a negative constant becomes a
// positive one with a negation.  Nothing is reassociated.
//
// The order in which nodes are made is part of the kernel: a sum takes its
// operands in the order of their ids, and a subtraction is oriented by which
// operand came first (see canonicalSubtraction), so that two orders of making
// the same nodes give kernels that differ in the sign of zero results.  (The
// real family's flows, gen/real_flow.h, order their sums by id too.)  C++
// leaves the order of one call's arguments to the compiler, and GCC and clang
// take them in opposite orders, so no call of a builder takes two arguments
// that both make nodes: those are made in statements of their own, the last
// argument first, the order the kernels have always been generated in.  The
// generated text is then the same whichever compiler built the generator.
#ifndef KVTGEN_GRAPH_H
#define KVTGEN_GRAPH_H

#include <cstdint>
#include <initializer_list>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace gen {

enum class Type : std::uint8_t { F32, F64, V2D, V4F, V4D, V8F };
enum class Op : std::uint8_t {
    Input,    // sample slot `index` of src
    Param,    // run-time value named `index` (the scale factor)
    Const,    // literal; V2D constants have two lanes
    Add,
    Sub,
    Mul,
    Neg,      // sign change, printed as a unary minus or a sign-mask xor
    ZeroSub,  // +0.0 - a, kept as a subtraction so that zero results are +0.0
    Widen,    // Real32 -> Real64, exact
    Narrow,   // Real64 -> Real32, one rounding
    // Neg and the operations from here on only select lanes (selectsLanes)
    SwapNeg,  // (re, im) -> (-im, re) per complex number: multiplication by i
    Swap,     // (re, im) -> (im, re) per complex number
    Shuffle,  // V4F: lanes 0,1 from a and lanes 2,3 from b, chosen by the selector in `index`
    // 256-bit values only (V4D, V8F); a 256-bit Const names its 128-bit halves in a and b
    Join,      // 128-bit a in the lower half, 128-bit b in the upper half
    Extract,   // the 128-bit half `index` (0 lower, 1 upper) of a
    Permute2,  // halves of a and b as the immediate `index` of a vperm2f128 selects them
    // V8F values of a graph whose sums are steered (SumSteering) only
    SignLanes,  // sign change of the lanes whose bits are set in the mask `index`
    Blend,      // lane i from b where bit i of `index` is set, else from a
};

struct Node {
    Op op;
    Type type;
    int a = -1, b = -1;  // operands
    int index = -1;
    int index2 = -1;  // V4F input: the sample loaded into the upper half (-1: none)
    // the lanes of a 128-bit or scalar constant, already rounded to the node's type
    double lane0 = 0.0, lane1 = 0.0, lane2 = 0.0, lane3 = 0.0;
};

// Lane `lane` of a 128-bit or scalar constant.
double constantLane(const Node& n, int lane);

// Lanes of a value of the type: 1 for a scalar.
int laneCount(Type type);

// Where lane `lane` of a selecting node comes from: lane `lane` of operand
// `operand` (0: a, 1: b; -1: an undefined lane, read as +0), its sign changed
// when `flip` is set.  For Shuffle, Join, Extract, Permute2, Blend, Neg,
// SignLanes, Swap and SwapNeg.
struct LaneSource {
    int operand, lane;
    bool flip;
};
LaneSource laneSource(const Node& n, int lane);
// Whether laneSource applies to the node.
bool selectsLanes(Op op);

class Graph;

// Makes the sums of a graph's V8F values in forms of its own choosing: a
// graph with a steering hands it every addition and subtraction of two V8F
// values (after the zero operands are taken out).
class SumSteering {
public:
    virtual ~SumSteering() = default;
    virtual int sum(Graph& graph, int a, int b, bool subtract) = 0;
};

// Operation counts of a graph restricted to what its outputs need.
struct OpCounts {
    int additions = 0;        // Add and Sub
    int multiplications = 0;  // Mul by a constant (not by a Param: the scale factor)
    int signFlips = 0;        // Neg and SignLanes
    int exchanges = 0;        // SwapNeg, Swap, Shuffle and Blend
    int signedExchanges = 0;  // SwapNeg alone: a shuffle and a sign-mask operation
};

class Graph {
public:
    // canonicalSubtraction: rewrite b - a as -(a - b) when a was made first, so that
    // the two orders of a difference share one node.  Exact up to the sign of a zero.
    explicit Graph(bool canonicalSubtraction = true) : canonicalSub_(canonicalSubtraction) {}

    static constexpr int none = -1;  // an exact zero that has not been materialised

    int input(Type type, int index) { return make({Op::Input, type, -1, -1, index}); }
    int param(Type type, int index) { return make({Op::Param, type, -1, -1, index}); }
    int constant(Type type, long double value);
    // a 128-bit or scalar constant of the given lanes (as many as the type
    // has, the others ignored), each rounded to the type
    int constantOf(Type type, std::initializer_list<long double> values);
    // V8F constant: two V4F constants side by side
    int constantLanes8(const long double (&lanes)[8]);
    // The lanes of a constant, as many as its type has.
    std::vector<double> constantValues(int id) const;
    // V4F input: sample `first` in the lower half, `second` (or nothing) in the upper half
    int inputPair(int first, int second) { return make({Op::Input, Type::V4F, -1, -1, first, second}); }
    // V4F selection: lanes (a[s0], a[s1], b[s2], b[s3]) with the selector s0|s1<<2|s2<<4|s3<<6;
    // selector 256 interleaves the lower halves (a0, b0, a1, b1), 257 the upper ones.  On V8F
    // values the same selection is made in each 128-bit half.
    int shuffle(int a, int b, int selector);
    // 256-bit values from 128-bit halves: lo and hi side by side (hi none: the
    // upper half is left undefined), and the halves of a and b as a vperm2f128
    // with immediate `select` chooses them.
    int join(int lo, int hi);
    int permute2(int a, int b, int select);

    int add(int a, int b) { return sum(a, b, false); }
    int sub(int a, int b) { return sum(a, b, true); }
    int neg(int a);
    int zeroSub(int a) { return make({Op::ZeroSub, node(a).type, a}); }
    int mul(int a, int b);
    // a times the constant `value` in every lane
    int mulConst(int a, long double value) { return a == none ? none : mul(a, constant(node(a).type, value)); }
    int widen(int a);
    int narrow(int a);
    int swapNeg(int a);
    int swapHalves(int a);  // (re, im) -> (im, re) per complex number

    // A node as given, without rewrites or reordering of operands (hash-consed
    // all the same): the wide packing copies nodes whose rewrites are done.
    int raw(const Node& node) { return make(node, false); }

    // Sums of V8F values through `steering` (kept by the caller, outliving
    // the graph's construction).  Sign changes of single lanes then ride on
    // SignLanes nodes, which products pass on and sums take in.
    void steerSums(SumSteering* steering) { steering_ = steering; }
    // a with the sign of the lanes in `mask` changed (V8F)
    int signLanes(int a, int mask);
    // lanes from b where the mask has a bit, else from a (V8F)
    int blend(int a, int b, int mask);
    // The node signLanes(a, mask) would give, or -1 where it would make a new one.
    int findSignLanes(int a, int mask) const;
    // The node under a sign change of some lanes, and the mask of those lanes.
    int strip(int id, int& mask) const;

    const Node& node(int id) const { return nodes_[static_cast<std::size_t>(id)]; }
    int size() const { return static_cast<int>(nodes_.size()); }

    // Groups of parallel computation: a builder opens a scope for the
    // independent transforms of a stage and marks the nodes made for the
    // transform `group` of it.  The 256-bit packing pairs the same steps of
    // neighbouring groups; the marks change nothing in the graph itself.
    int openScope() { return scopes_++; }
    void enterGroup(int scope, int group) { groupStack_.push_back({scope, group}); }
    void leaveGroup() { groupStack_.pop_back(); }
    // (scope, group) marks of a node, outermost first; empty when it was made
    // outside every group (or first made in another one)
    const std::vector<std::pair<int, int>>& groupsOf(int id) const
    {
        static const std::vector<std::pair<int, int>> none;
        return static_cast<std::size_t>(id) < groups_.size() ? groups_[static_cast<std::size_t>(id)] : none;
    }

    // Marks the nodes that the given roots depend on.
    std::vector<bool> liveSet(const std::vector<int>& roots) const;
    OpCounts count(const std::vector<int>& roots) const;

private:
    int make(const Node& node, bool canonical = true);
    // a + b or a - b, with the rewrites of both
    int sum(int a, int b, bool subtract);
    bool isNeg(int id) const { return id >= 0 && nodes_[static_cast<std::size_t>(id)].op == Op::Neg; }
    bool isConst(int id) const { return id >= 0 && nodes_[static_cast<std::size_t>(id)].op == Op::Const; }

    std::vector<Node> nodes_;
    std::unordered_map<std::string, int> memo_;
    bool canonicalSub_;
    SumSteering* steering_ = nullptr;
    int scopes_ = 0;
    std::vector<std::pair<int, int>> groupStack_;
    std::vector<std::vector<std::pair<int, int>>> groups_;
};

// Rounds a long double to the precision of a type, as a double value.
double roundTo(Type type, long double value);

// C++ literal text of a number in a type: exact round-trip digits.
std::string literal(Type scalarType, double value);

}  // namespace gen

#endif
