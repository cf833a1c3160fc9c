// Linear flow of a real-valued kernel, before any arithmetic type is chosen.
//
// A flow is a graph of additions, subtractions and multiplications by positive
// constants over the input samples.  Values are handled as references that carry
// a pending sign: a negative reference is a value whose sign has not been
// applied, and the next addition absorbs it by choosing between + and -.  Only
// when a finished output is still negative does a kernel need a negation.
//
// An addition may be marked as part of a product expression (a sum of products,
// a rotation, x - 0.5·y): in a Real32 kernel such an addition runs in Real64
// with its products and the expression is rounded to Real32 once at its end.
#ifndef KVTGEN_REAL_FLOW_H
#define KVTGEN_REAL_FLOW_H

#include <cstdint>
#include <map>
#include <tuple>
#include <vector>

namespace gen::real {

struct Ref {
    int id = -1;  // -1: an exact zero
    bool neg = false;

    bool zero() const { return id < 0; }
    Ref operator-() const { return {id, id >= 0 && !neg}; }
    bool operator==(const Ref& o) const { return id == o.id && neg == o.neg; }
};

// A complex value as two references.
struct Cx {
    Ref re, im;
};

class Flow {
public:
    enum class Kind : std::uint8_t { Input, Add, Sub, Mul, Double };
    struct Node {
        Kind kind;
        int a = -1;
        int b = -1;
        long double c = 0;  // Mul: the positive constant
        bool expr = false;  // Add/Sub: belongs to the expression of its products
        int index = -1;     // Input: position in the input vector
    };

    Ref input(int index);
    std::vector<Ref> inputs(int count);  // inputs 0..count-1
    Ref add(Ref x, Ref y, bool expr = false);
    Ref sub(Ref x, Ref y, bool expr = false) { return add(x, -y, expr); }
    // Multiplication by a constant; the sign of the constant goes to the
    // reference.
    Ref mul(Ref x, long double c);
    // Multiplication by the exact 2.0 of an inverse kernel's input; never merged.
    Ref twice(Ref x);

    // Sum of terms in the given order, every addition marked as `expr`.
    Ref sum(const std::vector<Ref>& terms, bool expr);

    const Node& node(int id) const { return nodes_[static_cast<std::size_t>(id)]; }
    int size() const { return static_cast<int>(nodes_.size()); }

    // Nodes that the outputs depend on, and how often each is used by them.
    std::vector<int> useCounts(const std::vector<Ref>& outputs) const;

    // The value of every node, in the order of the ids: make(id, node, a, b)
    // from the values of its operands (T{} where it has none).
    template <class T, class Make>
    std::vector<T> values(Make make) const
    {
        std::vector<T> v(nodes_.size());
        for (int id = 0; id < size(); ++id) {
            const Node& n = node(id);
            v[static_cast<std::size_t>(id)] = make(id, n, n.a >= 0 ? v[static_cast<std::size_t>(n.a)] : T{},
                                                   n.b >= 0 ? v[static_cast<std::size_t>(n.b)] : T{});
        }
        return v;
    }

private:
    int make(const Node& n);
    std::vector<Node> nodes_;
    std::map<std::tuple<int, int, int, long double, bool>, int> memo_;
};

// Operation counts of a flow restricted to what the outputs need.
struct FlowCounts {
    int multiplications = 0;
    int additions = 0;
    int negations = 0;  // outputs that are still negative
    int doublings = 0;
};
FlowCounts countFlow(const Flow& flow, const std::vector<Ref>& outputs);

// A flow with its outputs, and their counts where the flow is finished.
struct KernelFlow {
    Flow flow;
    std::vector<Ref> outputs;
    FlowCounts counts;
};

// Rewrites a flow so that two constants meeting on one value become one: a
// product of a product that nobody else uses is one product with the
// constants multiplied out, and a constant applied to a sum of products that
// nobody else uses is distributed over the products (k·(c1·a + c2·b) becomes
// (k·c1)·a + (k·c2)·b).  Each saves a multiplication.
std::vector<Ref> foldProducts(Flow& flow, const std::vector<Ref>& outputs);

// The transposed flow: inputs of the result are the outputs of `flow` (their
// signs included), outputs are the adjoints of the inputs of `flow`
// (`inputCount` of them).  Every fan-out becomes an addition and every
// addition a fan-out; products stay.  `doubled[i]` doubles input i of the
// transposed flow first (the middle bins of the inverse kernels); where such
// an input's only use is one product, the 2 is merged into that product's
// constant instead.
KernelFlow transpose(const Flow& flow, const std::vector<Ref>& outputs, int inputCount,
                     const std::vector<bool>& doubled);

// The outputs of `flow` computed over values of T from `inputs` (input i
// of the flow being inputs[i]) by ops.add(a, b, expr), ops.sub(a, b, expr),
// ops.mul(a, c) and ops.twice(a), T{} standing for a zero.  With a Flow as
// `ops`, copies the flow into it.
template <class T, class Ops>
std::vector<T> evaluate(const Flow& flow, const std::vector<Ref>& outputs, const std::vector<T>& inputs, Ops&& ops)
{
    const std::vector<T> values = flow.values<T>([&](int, const Flow::Node& n, T a, T b) {
        switch (n.kind) {
        case Flow::Kind::Input: return inputs[static_cast<std::size_t>(n.index)];
        case Flow::Kind::Add: return ops.add(a, b, n.expr);
        case Flow::Kind::Sub: return ops.sub(a, b, n.expr);
        case Flow::Kind::Mul: return ops.mul(a, n.c);
        case Flow::Kind::Double: break;
        }
        return ops.twice(a);
    });
    std::vector<T> out;
    for (const Ref& r : outputs) {
        const T v = r.zero() ? T{} : values[static_cast<std::size_t>(r.id)];
        out.push_back(r.neg ? -v : v);
    }
    return out;
}

}  // namespace gen::real

#endif
