// The 256-bit packing pass and the nodes of the packed graph: a 256-bit node
// for each pair, a 128-bit copy of each node left unpaired, and the moves
// between the two: a 128-bit value taken out of its half, two 128-bit values
// joined or their halves permuted, constants of two halves merged, the scale
// factor broadcast, and an addition paired with a subtraction through a
// product by (+1 | -1).  Last the stores, one 256-bit store where two
// neighbouring full stores share a 256-bit node.
#include <stdexcept>

#include "wide_packer.h"

namespace gen {

PackedKernel packWide(const Graph& narrow, const std::vector<VectorStore>& stores, const InputSpan& span,
                      const PackOptions& options)
{
    return wide::Packer(narrow, span, options).run(stores);
}

namespace wide {

PackedKernel Packer::run(const std::vector<VectorStore>& stores)
{
    std::vector<int> roots;
    for (const VectorStore& s : stores)
        roots.push_back(s.node);
    const std::vector<bool> live = g_.liveSet(roots);
    findUsers(live);
    seed(stores, live);
    pairAll();
    placeStores(stores);
    return std::move(out_);
}

// The users of every live node and the nodes ready from the start: those
// whose operands are all leaves.
void Packer::findUsers(const std::vector<bool>& live)
{
    for (int id = 0; id < g_.size(); ++id) {
        const Node& n = node(id);
        if (n.op == Op::Input && live[static_cast<std::size_t>(id)] && span_(n) >= 0)
            inputAt_[span_(n)] = id;
        if (!live[static_cast<std::size_t>(id)] || isLeaf(n))
            continue;
        for (int operand : {n.a, n.b == n.a ? -1 : n.b})
            if (operand >= 0) {
                at(operand).users.push_back(id);
                at(id).waiting += isLeaf(node(operand)) ? 0 : 1;
            }
        if (at(id).waiting == 0)
            ready_.push_back(id);
    }
}

int Packer::value128(int id)
{
    int& known = at(id).narrow;
    if (known >= 0)
        return known;
    Node n = node(id);
    if (inWide(id)) {
        Node e{Op::Extract, n.type};
        e.a = at(id).wide;
        e.index = at(id).half;
        ++out_.moves;
        known = out_.graph.raw(e);
        return known;
    }
    if (!isLeaf(n))
        throw std::logic_error("a value used before it is computed");
    known = out_.graph.raw(n);
    return known;
}

int Packer::value256(int lo, int hi)
{
    auto found = wideOf_.find({lo, hi});
    if (found != wideOf_.end())
        return found->second;
    const Node& a = node(lo);
    const Node& b = node(hi);
    const Type type = a.type == Type::V2D ? Type::V4D : Type::V8F;
    int id = -1;
    if (a.op == Op::Const && b.op == Op::Const) {
        Node c{Op::Const, type};
        c.a = value128(lo);
        c.b = value128(hi);
        id = out_.graph.raw(c);
    } else if (a.op == Op::Param && b.op == Op::Param && a.index == b.index) {
        Node p{Op::Param, type};
        p.index = a.index;
        id = out_.graph.raw(p);
    } else if (joinCost(lo, hi) == 0 && a.op == Op::Input && b.op == Op::Input) {
        Node in{Op::Input, type};
        in.index = span_(a);
        id = out_.graph.raw(in);
    } else if (inWide(lo) && inWide(hi)) {
        Node p{Op::Permute2, type};
        p.a = at(lo).wide;
        p.b = at(hi).wide;
        p.index = at(lo).half | ((p.a == p.b ? at(hi).half : 2 + at(hi).half) << 4);
        ++out_.moves;
        id = out_.graph.raw(p);
    } else {
        Node j{Op::Join, type};
        j.a = value128(lo);
        j.b = value128(hi);
        ++out_.moves;
        id = out_.graph.raw(j);
    }
    wideOf_[{lo, hi}] = id;
    return id;
}

void Packer::placed(int id)
{
    at(id).assigned = true;
    for (int user : at(id).users)
        if (--at(user).waiting == 0)
            ready_.push_back(user);
}

void Packer::assignNarrow(int id)
{
    Node n = node(id);
    if (n.a >= 0)
        n.a = value128(n.a);
    if (n.b >= 0)
        n.b = value128(n.b);
    at(id).narrow = out_.graph.raw(n);
    ++out_.narrowNodes;
    placed(id);
}

// An addition in one half and a subtraction in the other run as the lower
// half's operation with the second operand's upper half negated: c + (-d) is
// c - d and c - (-d) is c + d exactly in IEEE arithmetic, zeros' signs
// included.  The negation is a product by (+1 | -1), exact as well, on an
// arithmetic unit rather than the shuffle unit.  Such pairs arise where the
// graph wrote b - a as -(a - b) in one transform and not in its neighbour,
// since that depends on which operand the graph made first.
int Packer::signFlip(int wide)
{
    const Type type = out_.graph.node(wide).type;
    const Type half = type == Type::V4D ? Type::V2D : Type::V4F;
    Node plus{Op::Const, half}, minus{Op::Const, half};
    plus.lane0 = plus.lane1 = 1.0;
    minus.lane0 = minus.lane1 = -1.0;
    if (half == Type::V4F) {
        plus.lane2 = plus.lane3 = 1.0;
        minus.lane2 = minus.lane3 = -1.0;
    }
    Node signs{Op::Const, type};
    signs.a = out_.graph.raw(plus);
    signs.b = out_.graph.raw(minus);
    Node product{Op::Mul, type};
    product.a = wide;
    product.b = out_.graph.raw(signs);
    return out_.graph.raw(product);
}

void Packer::assignWide(int lo, int hi)
{
    const Node& x = node(lo);
    const Node& y = node(hi);
    Node n = x;
    n.type = x.type == Type::V2D ? Type::V4D : Type::V8F;
    if (x.a >= 0)
        n.a = value256(x.a, y.a);
    if (x.b >= 0)
        n.b = x.b == x.a ? n.a : value256(x.b, y.b);
    if (x.op != y.op)
        n.b = signFlip(n.b);
    const int id = out_.graph.raw(n);
    at(lo).wide = at(hi).wide = id;
    at(lo).half = 0;
    at(hi).half = 1;
    at(lo).partner = hi;
    at(hi).partner = lo;
    wideOf_[{lo, hi}] = id;
    ++out_.wideNodes;
    placed(lo);
    placed(hi);
}

// the stores: neighbouring full stores whose values share a 256-bit node
void Packer::placeStores(const std::vector<VectorStore>& stores)
{
    for (std::size_t i = 0; i < stores.size(); ++i) {
        const VectorStore& s = stores[i];
        const VectorStore* t = i + 1 < stores.size() ? &stores[i + 1] : nullptr;
        if (t && neighbours(s, *t) && inWide(s.node) && inWide(t->node) &&
            (wideOf_.count({s.node, t->node}) || extractCost(s.node) + extractCost(t->node) > 0)) {
            out_.stores.push_back({value256(s.node, t->node), true, static_cast<int>(i)});
            ++i;
            continue;
        }
        out_.stores.push_back({value128(s.node), false, static_cast<int>(i)});
    }
}

}  // namespace wide

}  // namespace gen
