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

WideBody packNarrow(const Variant& v, const NarrowKernel& k, const PackOptions& options)
{
    return wide::Packer(k, v.precision == Precision::Single, options).run();
}

namespace wide {

// The users of every live node and the nodes ready from the start (those
// whose operands are all leaves); then the seeds, the rounds of pairing and
// the stores.
WideBody Packer::run()
{
    const std::vector<bool> live = g_.liveSet(rootsOf(stores_));
    for (int id = 0; id < g_.size(); ++id) {
        const Node& n = node(id);
        if (n.op == Op::Input && live[static_cast<std::size_t>(id)] && span(n) >= 0)
            inputAt_[span(n)] = id;
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
    seed(live);
    pairAll();
    placeStores();
    out_.packing = "; packed for 256-bit vectors: " + std::to_string(wideNodes_) + " operations of 256 bits, " +
                   std::to_string(narrowNodes_) + " of 128 bits, " + std::to_string(moves_) + " moves across halves";
    return std::move(out_);
}

int Packer::value128(int id)
{
    int& known = at(id).narrow;
    if (known >= 0)
        return known;
    if (inWide(id)) {
        ++moves_;
        return known = out_.graph.raw({Op::Extract, node(id).type, wideNode(id), -1, half(id)});
    }
    if (!isLeaf(node(id)))
        throw std::logic_error("a value used before it is computed");
    return known = out_.graph.raw(node(id));
}

int Packer::value256(int lo, int hi)
{
    const auto found = wideOf_.find({lo, hi});
    if (found != wideOf_.end())
        return found->second;
    const Node& a = node(lo);
    const Node& b = node(hi);
    const Type type = a.type == Type::V2D ? Type::V4D : Type::V8F;
    int id = -1;
    if (a.op == Op::Param && b.op == Op::Param && a.index == b.index) {
        id = out_.graph.raw({Op::Param, type, -1, -1, a.index});
    } else if (joinCost(lo, hi) == 0 && a.op == Op::Input && b.op == Op::Input) {
        id = out_.graph.raw({Op::Input, type, -1, -1, span(a)});
    } else if (inWide(lo) && inWide(hi)) {
        const int wa = wideNode(lo), wb = wideNode(hi);
        ++moves_;
        id = out_.graph.raw({Op::Permute2, type, wa, wb, half(lo) | ((wa == wb ? half(hi) : 2 + half(hi)) << 4)});
    } else {
        // two constants merge into one; other values are joined
        const bool constants = a.op == Op::Const && b.op == Op::Const;
        const int l = value128(lo), h = value128(hi);
        moves_ += constants ? 0 : 1;
        id = out_.graph.raw({constants ? Op::Const : Op::Join, type, l, h});
    }
    wideOf_[{lo, hi}] = id;
    return id;
}

void Packer::placed(int id)
{
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
    ++narrowNodes_;
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
    auto signs = [&](double sign) {
        Node half{Op::Const, type == Type::V4D ? Type::V2D : Type::V4F};
        half.lane0 = half.lane1 = sign;
        if (half.type == Type::V4F)
            half.lane2 = half.lane3 = sign;
        return out_.graph.raw(half);
    };
    const int plusSigns = signs(1.0), minusSigns = signs(-1.0);
    const int halves = out_.graph.raw({Op::Const, type, plusSigns, minusSigns});
    return out_.graph.raw({Op::Mul, type, wide, halves});
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
    wideOf_[{lo, hi}] = out_.graph.raw(n);
    at(lo).pair = at(hi).pair = {lo, hi};
    ++wideNodes_;
    placed(lo);
    placed(hi);
}

// the stores: neighbouring full stores whose values share a 256-bit node
void Packer::placeStores()
{
    for (std::size_t i = 0; i < stores_.size(); ++i) {
        const Store& s = stores_[i];
        const Store* t = i + 1 < stores_.size() ? &stores_[i + 1] : nullptr;
        const bool wide = t && neighbours(s, *t) && inWide(s.node) && inWide(t->node) &&
                          (wideOf_.count({s.node, t->node}) || extractCost(s.node) + extractCost(t->node) > 0);
        out_.stores.push_back(wide ? Store{Store::Wide, s.index, value256(s.node, t->node)}
                                   : Store{s.kind, s.index, value128(s.node)});
        i += wide ? 1 : 0;
    }
}

}  // namespace wide

}  // namespace gen
