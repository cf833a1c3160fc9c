// The lanes of the operation graph: which lane of which operand each lane of a
// selecting node reads, and the smart constructors of the nodes that move
// lanes: selections, exchanges, joins and permutations of 128-bit halves, and
// the per-lane sign changes and blends of the steered V8F graphs.  Like the
// arithmetic they rewrite only what is exact: a selection commutes with a
// sign change of all its sources, and a sign change rides on a constant.
#include "graph.h"

#include <stdexcept>

namespace gen {

int laneCount(Type type)
{
    static const int lanes[] = {1, 1, 2, 4, 4, 8};  // by Type
    return lanes[static_cast<int>(type)];
}

bool selectsLanes(Op op) { return op == Op::Neg || op >= Op::SwapNeg; }

LaneSource laneSource(const Node& n, int lane)
{
    // lanes of a 128-bit half: 4 floats or 2 doubles
    const int width = n.type == Type::V2D || n.type == Type::V4D || n.type == Type::F64 ? 2 : 4;
    const int half = lane / width * width, j = lane % width;
    switch (n.op) {
    case Op::Shuffle:
        if (n.index == 256)
            return {j % 2, half + j / 2, false};
        if (n.index == 257)
            return {j % 2, half + 2 + j / 2, false};
        return {j < 2 ? 0 : 1, half + ((n.index >> (2 * j)) & 3), false};
    case Op::Join:  // an upper half left undefined reads +0
        return lane < width ? LaneSource{0, lane, false} : LaneSource{n.b >= 0 ? 1 : -1, lane - width, false};
    case Op::Extract: return {0, width * n.index + lane, false};
    case Op::Permute2: {
        const int select = (n.index >> (lane / width * 4)) & 3;
        return {select < 2 ? 0 : 1, width * (select & 1) + j, false};
    }
    case Op::Blend: return {(n.index >> lane) & 1, lane, false};
    case Op::Neg: return {0, lane, true};
    case Op::SignLanes: return {0, lane, ((n.index >> lane) & 1) != 0};
    case Op::Swap: return {0, lane ^ 1, false};
    case Op::SwapNeg: return {0, lane ^ 1, lane % 2 == 0};
    default: throw std::logic_error("not a selection of lanes");
    }
}

int Graph::join(int lo, int hi)
{
    // like a selection, joining commutes with a sign change of both halves
    if (isNeg(lo) && (hi == none || isNeg(hi)))
        return neg(join(node(lo).a, hi == none ? none : node(hi).a));
    return make({Op::Join, node(lo).type == Type::V2D ? Type::V4D : Type::V8F, lo, hi});
}

int Graph::strip(int id, int& mask) const
{
    mask = 0;
    if (id < 0 || (node(id).op != Op::Neg && node(id).op != Op::SignLanes))
        return id;
    const Node& n = node(id);
    mask = n.op == Op::Neg ? (1 << laneCount(n.type)) - 1 : n.index;
    return n.a;
}

int Graph::signLanes(int a, int mask)
{
    if (a == none || (mask & 0xFF) == 0)
        return a;
    if (node(a).type != Type::V8F)
        throw std::logic_error("a sign change of single lanes outside V8F");
    int current = 0;
    const int base = strip(a, current), lanes = (mask & 0xFF) ^ current;
    if (lanes == 0)
        return base;
    if (lanes == 0xFF)
        return neg(base);
    if (isConst(base)) {
        const std::vector<double> values = constantValues(base);
        long double signed8[8];
        for (std::size_t i = 0; i < 8; ++i)
            signed8[i] = ((lanes >> i) & 1) ? -values[i] : values[i];
        return constantLanes8(signed8);
    }
    return make({Op::SignLanes, Type::V8F, base, none, lanes});
}

int Graph::blend(int a, int b, int mask)
{
    mask &= 0xFF;
    if (mask == 0 || a == b)
        return a;
    if (mask == 0xFF)
        return b;
    return make({Op::Blend, Type::V8F, a, b, mask});
}

int Graph::permute2(int a, int b, int select)
{
    int lo = select & 3, hi = (select >> 4) & 3;
    if (a == b) {
        lo &= 1;
        hi &= 1;
    }
    if (lo == 0 && hi == 1)
        return a;  // the halves of a in place
    if (lo == 2 && hi == 3)
        return b;
    if (isNeg(a) && isNeg(b))
        return neg(permute2(node(a).a, node(b).a, lo | (hi << 4)));
    return make({Op::Permute2, node(a).type, a, b, lo | (hi << 4)});
}

int Graph::shuffle(int a, int b, int selector)
{
    if (a == b && selector == 0xE4)  // lanes 0, 1, 2, 3 of one vector
        return a;
    if (isNeg(a) && isNeg(b))  // a selection commutes with a sign change of both sources
        return neg(shuffle(node(a).a, node(b).a, selector));
    return make({Op::Shuffle, node(a).type, a, b, selector});
}

int Graph::swapNeg(int a)
{
    if (a == none)
        return none;
    if (node(a).type != Type::V2D && node(a).type != Type::V4F)
        throw std::logic_error("exchange of a scalar");
    if (isNeg(a))
        return neg(swapNeg(node(a).a));
    // i*(x*k) = swap(x)*k' with k' = (-k1, k0): the sign change rides on the constant
    const Node& x = node(a);
    if (x.op == Op::Mul && isConst(x.b)) {
        const Node& c = node(x.b);
        const int source = x.a;
        const int constant = constantOf(c.type, {-c.lane1, c.lane0, -c.lane3, c.lane2});
        return mul(swapHalves(source), constant);
    }
    return make({Op::SwapNeg, node(a).type, a});
}

int Graph::swapHalves(int a)
{
    if (a == none)
        return none;
    if (isNeg(a))
        return neg(swapHalves(node(a).a));
    return make({Op::Swap, node(a).type, a});
}

}  // namespace gen
