// The operation graph: its store of hash-consed nodes, the leaves and
// constants, the smart constructors of the arithmetic with their exact
// rewrites, and what the roots need (the live set and the operation counts).
// The nodes that move lanes are made in graph_lanes.cpp.
#include "graph.h"

#include <cmath>
#include <cstdio>
#include <cstring>
#include <stdexcept>

namespace gen {

double roundTo(Type type, long double value)
{
    if (type == Type::F32)
        return static_cast<double>(static_cast<float>(value));
    return static_cast<double>(value);
}

std::string literal(Type scalarType, double value)
{
    char text[64];
    if (scalarType == Type::F32) {
        std::snprintf(text, sizeof text, "%.9gf", value);
    } else {
        std::snprintf(text, sizeof text, "%.17g", value);
    }
    std::string s(text);
    // Make sure a literal like "1" reads as floating point.
    if (s.find_first_of(".eEn") == std::string::npos) {
        if (scalarType == Type::F32)
            s.insert(s.size() - 1, ".0");
        else
            s += ".0";
    }
    return s;
}

namespace {
std::string keyOf(const Node& n)
{
    // the fields that make two nodes the same expression, packed without padding
    std::string key;
    auto append = [&key](const void* field, std::size_t size) {
        key.append(static_cast<const char*>(field), size);
    };
    append(&n.op, sizeof n.op);
    append(&n.type, sizeof n.type);
    append(&n.a, sizeof n.a);
    append(&n.b, sizeof n.b);
    append(&n.index, sizeof n.index);
    append(&n.index2, sizeof n.index2);
    append(&n.lane0, sizeof n.lane0);
    append(&n.lane1, sizeof n.lane1);
    append(&n.lane2, sizeof n.lane2);
    append(&n.lane3, sizeof n.lane3);
    return key;
}

bool isCommutative(Op op) { return op == Op::Add || op == Op::Mul; }
}  // namespace

int Graph::make(const Node& proto, bool canonical)
{
    Node n = proto;
    if (canonical && isCommutative(n.op) && n.a > n.b && n.op == Op::Add)
        std::swap(n.a, n.b);
    const std::string key = keyOf(n);
    auto found = memo_.find(key);
    if (found != memo_.end())
        return found->second;
    nodes_.push_back(n);
    const int id = static_cast<int>(nodes_.size()) - 1;
    memo_.emplace(key, id);
    if (!groupStack_.empty()) {
        groups_.resize(nodes_.size());
        groups_.back() = groupStack_;
    }
    return id;
}

int Graph::find(const Node& node) const
{
    const auto found = memo_.find(keyOf(node));
    return found == memo_.end() ? -1 : found->second;
}

int Graph::input(Type type, int index)
{
    Node n{Op::Input, type};
    n.index = index;
    return make(n);
}

int Graph::param(Type type, int index)
{
    Node n{Op::Param, type};
    n.index = index;
    return make(n);
}

int Graph::inputPair(int first, int second)
{
    Node n{Op::Input, Type::V4F};
    n.index = first;
    n.index2 = second;
    return make(n);
}

int Graph::constant(Type type, long double value)
{
    if (type == Type::V4F)
        return constantLanes(value, value, value, value);
    if (type == Type::V8F) {
        const long double lanes[8] = {value, value, value, value, value, value, value, value};
        return constantLanes8(lanes);
    }
    Node n{Op::Const, type};
    n.lane0 = roundTo(type == Type::V2D ? Type::F64 : type, value);
    n.lane1 = type == Type::V2D ? n.lane0 : 0.0;
    return make(n);
}

int Graph::constantLanes(long double l0, long double l1, long double l2, long double l3)
{
    Node n{Op::Const, Type::V4F};
    n.lane0 = roundTo(Type::F32, l0);
    n.lane1 = roundTo(Type::F32, l1);
    n.lane2 = roundTo(Type::F32, l2);
    n.lane3 = roundTo(Type::F32, l3);
    return make(n);
}

int Graph::constantLanes8(const long double (&lanes)[8])
{
    Node n{Op::Const, Type::V8F};
    n.a = constantLanes(lanes[0], lanes[1], lanes[2], lanes[3]);
    n.b = constantLanes(lanes[4], lanes[5], lanes[6], lanes[7]);
    return make(n);
}

std::vector<double> Graph::constantValues(int id) const
{
    const Node& c = node(id);
    if (c.type == Type::V4D || c.type == Type::V8F) {
        std::vector<double> values = constantValues(c.a);
        const std::vector<double> upper = constantValues(c.b);
        values.insert(values.end(), upper.begin(), upper.end());
        return values;
    }
    const int lanes = c.type == Type::V4F ? 4 : c.type == Type::V2D ? 2 : 1;
    const double all[4] = {c.lane0, c.lane1, c.lane2, c.lane3};
    return std::vector<double>(all, all + lanes);
}

int Graph::constantPair(long double lo, long double hi)
{
    Node n{Op::Const, Type::V2D};
    n.lane0 = static_cast<double>(lo);
    n.lane1 = static_cast<double>(hi);
    return make(n);
}

static void requireSameType(const Node& x, const Node& y)
{
    if (x.type != y.type)
        throw std::logic_error("operands of different types");
}

int Graph::add(int a, int b)
{
    if (a == none)
        return b;
    if (b == none)
        return a;
    requireSameType(node(a), node(b));
    if (steering_ && node(a).type == Type::V8F)
        return steering_->sum(*this, a, b, false);
    if (isNeg(a) && isNeg(b))
        return neg(add(node(a).a, node(b).a));
    if (isNeg(b))
        return sub(a, node(b).a);
    if (isNeg(a))
        return sub(b, node(a).a);
    Node n{Op::Add, node(a).type};
    n.a = a;
    n.b = b;
    return make(n);
}

int Graph::sub(int a, int b)
{
    if (b == none)
        return a;
    if (a == none)
        return neg(b);
    requireSameType(node(a), node(b));
    if (steering_ && node(a).type == Type::V8F)
        return steering_->sum(*this, a, b, true);
    if (isNeg(b))
        return add(a, node(b).a);
    if (isNeg(a))
        return neg(add(node(a).a, b));
    if (canonicalSub_ && a > b)
        return neg(sub(b, a));
    Node n{Op::Sub, node(a).type};
    n.a = a;
    n.b = b;
    return make(n);
}

int Graph::neg(int a)
{
    if (a == none)
        return none;
    if (isNeg(a))
        return node(a).a;
    if (node(a).op == Op::SignLanes)
        return signLanes(node(a).a, ~node(a).index);
    if (isConst(a)) {
        // negate only the lanes the type has, so that unused lanes stay +0.0
        // and equal constants keep one key
        Node c = node(a);
        if (c.type == Type::V4D || c.type == Type::V8F) {
            c.a = neg(c.a);
            c.b = neg(c.b);
            return make(c);
        }
        c.lane0 = -c.lane0;
        if (c.type == Type::V2D || c.type == Type::V4F)
            c.lane1 = -c.lane1;
        if (c.type == Type::V4F) {
            c.lane2 = -c.lane2;
            c.lane3 = -c.lane3;
        }
        return make(c);
    }
    Node n{Op::Neg, node(a).type};
    n.a = a;
    return make(n);
}

int Graph::zeroSub(int a)
{
    Node n{Op::ZeroSub, node(a).type};
    n.a = a;
    return make(n);
}

int Graph::mul(int a, int b)
{
    if (a == none || b == none)
        return none;
    if (isConst(a))
        std::swap(a, b);
    requireSameType(node(a), node(b));
    if (isConst(b)) {
        bool allOne = true, allNegative = true;
        for (double value : constantValues(b)) {
            allOne = allOne && value == 1.0;
            allNegative = allNegative && value < 0;
        }
        if (allOne)
            return a;
        if (allNegative)
            return neg(mul(a, neg(b)));
    }
    if (isNeg(a))
        return neg(mul(node(a).a, b));
    // a product's sign is the product of its operands' signs, lane by lane
    if (node(a).op == Op::SignLanes)
        return signLanes(mul(node(a).a, b), node(a).index);
    if (node(b).op == Op::SignLanes)
        return signLanes(mul(a, node(b).a), node(b).index);
    Node n{Op::Mul, node(a).type};
    n.a = a;
    n.b = b;
    return make(n);
}

int Graph::mulConst(int a, long double value)
{
    if (a == none)
        return none;
    return mul(a, constant(node(a).type, value));
}

int Graph::widen(int a)
{
    if (a == none)
        return none;
    const Node& x = node(a);
    if (x.type == Type::F64)
        return a;
    if (x.type != Type::F32)
        throw std::logic_error("widen of a vector");
    if (x.op == Op::Neg)
        return neg(widen(x.a));
    Node n{Op::Widen, Type::F64};
    n.a = a;
    return make(n);
}

int Graph::narrow(int a)
{
    if (a == none)
        return none;
    const Node& x = node(a);
    if (x.type != Type::F64)
        return a;
    if (x.op == Op::Neg)
        return neg(narrow(x.a));
    if (x.op == Op::Widen)
        return x.a;
    Node n{Op::Narrow, Type::F32};
    n.a = a;
    return make(n);
}

std::vector<bool> Graph::liveSet(const std::vector<int>& roots) const
{
    std::vector<bool> live(nodes_.size(), false);
    std::vector<int> stack;
    for (int r : roots)
        if (r >= 0)
            stack.push_back(r);
    while (!stack.empty()) {
        const int id = stack.back();
        stack.pop_back();
        if (live[static_cast<std::size_t>(id)])
            continue;
        live[static_cast<std::size_t>(id)] = true;
        const Node& n = node(id);
        if (n.a >= 0)
            stack.push_back(n.a);
        if (n.b >= 0)
            stack.push_back(n.b);
    }
    return live;
}

OpCounts Graph::count(const std::vector<int>& roots) const
{
    OpCounts c;
    const std::vector<bool> live = liveSet(roots);
    for (int id = 0; id < size(); ++id) {
        if (!live[static_cast<std::size_t>(id)])
            continue;
        const Node& n = node(id);
        switch (n.op) {
        case Op::Add:
        case Op::Sub: ++c.additions; break;
        case Op::Mul:
            if (node(n.b).op == Op::Param || node(n.a).op == Op::Param)
                ++c.scaleProducts;
            else
                ++c.multiplications;
            break;
        case Op::Neg:
        case Op::SignLanes: ++c.signFlips; break;
        case Op::Blend: ++c.exchanges; break;
        case Op::ZeroSub: ++c.negations; break;
        case Op::Widen: ++c.widenings; break;
        case Op::Narrow: ++c.narrowings; break;
        case Op::SwapNeg:
            ++c.exchanges;
            ++c.signedExchanges;
            break;
        case Op::Swap:
        case Op::Shuffle: ++c.exchanges; break;
        default: break;
        }
    }
    return c;
}

}  // namespace gen
