// The operation graph: its store of hash-consed nodes, the leaves and
// constants, the smart constructors of the arithmetic with their exact
// rewrites, and what the roots need (the live set and the operation counts).
// The nodes that move lanes are made in graph_lanes.cpp.
#include "graph.h"

#include <algorithm>
#include <cstdio>
#include <stdexcept>

namespace gen {

double roundTo(Type type, long double value)
{
    return type == Type::F32 ? static_cast<double>(static_cast<float>(value)) : static_cast<double>(value);
}

std::string literal(Type scalarType, double value)
{
    const bool single = scalarType == Type::F32;
    char text[64];
    std::snprintf(text, sizeof text, single ? "%.9gf" : "%.17g", value);
    std::string s(text);
    // Make sure a literal like "1" reads as floating point (before the f of a float).
    if (s.find_first_of(".eEn") == std::string::npos)
        s.insert(s.size() - (single ? 1 : 0), ".0");
    return s;
}

namespace {
std::string keyOf(const Node& n)
{
    // the fields that make two nodes the same expression, packed without padding;
    // constants by their bits, so that +0.0 and -0.0 stay apart
    const int fields[] = {static_cast<int>(n.op), static_cast<int>(n.type), n.a, n.b, n.index, n.index2};
    const double lanes[] = {n.lane0, n.lane1, n.lane2, n.lane3};
    std::string key(reinterpret_cast<const char*>(fields), sizeof fields);
    return key.append(reinterpret_cast<const char*>(lanes), sizeof lanes);
}
}  // namespace

int Graph::make(const Node& proto, bool canonical)
{
    Node n = proto;
    if (canonical && n.op == Op::Add && n.a > n.b)
        std::swap(n.a, n.b);
    const auto [found, fresh] = memo_.emplace(keyOf(n), size());
    if (!fresh)
        return found->second;
    nodes_.push_back(n);
    if (!groupStack_.empty()) {
        groups_.resize(nodes_.size());
        groups_.back() = groupStack_;
    }
    return found->second;
}

int Graph::findSignLanes(int a, int mask) const
{
    int current = 0;
    const int base = strip(a, current), lanes = (mask & 0xFF) ^ current;
    if (lanes == 0)
        return base;
    const Node n{lanes == 0xFF ? Op::Neg : Op::SignLanes, node(base).type, base, none, lanes == 0xFF ? -1 : lanes};
    const auto found = memo_.find(keyOf(n));
    return found == memo_.end() ? -1 : found->second;
}

int Graph::constant(Type type, long double value)
{
    if (type == Type::V8F) {
        const long double lanes[8] = {value, value, value, value, value, value, value, value};
        return constantLanes8(lanes);
    }
    return constantOf(type, {value, value, value, value});
}

int Graph::constantOf(Type type, std::initializer_list<long double> values)
{
    Node n{Op::Const, type};
    double* lanes[4] = {&n.lane0, &n.lane1, &n.lane2, &n.lane3};
    for (int i = 0; i < laneCount(type); ++i)
        *lanes[i] = roundTo(type == Type::V4F ? Type::F32 : type, values.begin()[i]);
    return make(n);
}

int Graph::constantLanes8(const long double (&lanes)[8])
{
    const int lo = constantOf(Type::V4F, {lanes[0], lanes[1], lanes[2], lanes[3]});
    const int hi = constantOf(Type::V4F, {lanes[4], lanes[5], lanes[6], lanes[7]});
    return make({Op::Const, Type::V8F, lo, hi});
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
    const double all[4] = {c.lane0, c.lane1, c.lane2, c.lane3};
    return std::vector<double>(all, all + laneCount(c.type));
}

double constantLane(const Node& n, int lane)
{
    const double lanes[4] = {n.lane0, n.lane1, n.lane2, n.lane3};
    return lanes[lane];
}

int Graph::sum(int a, int b, bool subtract)
{
    if (b == none)
        return a;
    if (a == none)
        return subtract ? neg(b) : b;
    if (node(a).type != node(b).type)
        throw std::logic_error("operands of different types");
    if (steering_ && node(a).type == Type::V8F)
        return steering_->sum(*this, a, b, subtract);
    // a - (-b) = a + b, a + (-b) = a - b; (-a) - b = (-a) + (-b) = -(a + b); (-a) + b = b - a
    if (isNeg(b) && (subtract || !isNeg(a)))
        return sum(a, node(b).a, !subtract);
    if (isNeg(a) && (subtract || isNeg(b)))
        return neg(add(node(a).a, subtract ? b : node(b).a));
    if (isNeg(a))
        return sub(b, node(a).a);
    if (subtract && canonicalSub_ && a > b)
        return neg(sub(b, a));
    return make({subtract ? Op::Sub : Op::Add, node(a).type, a, b});
}

int Graph::neg(int a)
{
    if (a == none)
        return none;
    if (isNeg(a))
        return node(a).a;
    if (node(a).op == Op::SignLanes)
        return signLanes(node(a).a, ~node(a).index);
    if (!isConst(a))
        return make({Op::Neg, node(a).type, a});
    // negate only the lanes the type has (constantOf), so that unused lanes
    // stay +0.0 and equal constants keep one key
    const Node c = node(a);
    if (c.type == Type::V4D || c.type == Type::V8F) {
        const int lo = neg(c.a);
        return make({Op::Const, c.type, lo, neg(c.b)});
    }
    return constantOf(c.type, {-c.lane0, -c.lane1, -c.lane2, -c.lane3});
}

int Graph::mul(int a, int b)
{
    if (a == none || b == none)
        return none;
    if (isConst(a))
        std::swap(a, b);
    if (node(a).type != node(b).type)
        throw std::logic_error("operands of different types");
    const std::vector<double> k = isConst(b) ? constantValues(b) : std::vector<double>();
    if (!k.empty() && std::all_of(k.begin(), k.end(), [](double value) { return value == 1.0; }))
        return a;
    if (!k.empty() && std::all_of(k.begin(), k.end(), [](double value) { return value < 0; }))
        return neg(mul(a, neg(b)));
    if (isNeg(a))
        return neg(mul(node(a).a, b));
    // a product's sign is the product of its operands' signs, lane by lane
    if (node(a).op == Op::SignLanes)
        return signLanes(mul(node(a).a, b), node(a).index);
    if (node(b).op == Op::SignLanes)
        return signLanes(mul(a, node(b).a), node(b).index);
    return make({Op::Mul, node(a).type, a, b});
}

int Graph::widen(int a)
{
    if (a == none || node(a).type == Type::F64)
        return a;
    if (node(a).type != Type::F32)
        throw std::logic_error("widen of a vector");
    if (isNeg(a))
        return neg(widen(node(a).a));
    return make({Op::Widen, Type::F64, a});
}

int Graph::narrow(int a)
{
    if (a == none || node(a).type != Type::F64)
        return a;
    if (isNeg(a))
        return neg(narrow(node(a).a));
    if (node(a).op == Op::Widen)
        return node(a).a;
    return make({Op::Narrow, Type::F32, a});
}

std::vector<bool> Graph::liveSet(const std::vector<int>& roots) const
{
    std::vector<bool> live(nodes_.size(), false);
    std::vector<int> stack = roots;
    while (!stack.empty()) {
        const int id = stack.back();
        stack.pop_back();
        if (id < 0 || live[static_cast<std::size_t>(id)])
            continue;
        live[static_cast<std::size_t>(id)] = true;
        stack.push_back(node(id).a);
        stack.push_back(node(id).b);
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
        case Op::Mul: c.multiplications += node(n.a).op != Op::Param && node(n.b).op != Op::Param; break;
        case Op::Neg:
        case Op::SignLanes: ++c.signFlips; break;
        case Op::SwapNeg:
            ++c.signedExchanges;
            [[fallthrough]];
        case Op::Swap:
        case Op::Shuffle:
        case Op::Blend: ++c.exchanges; break;
        default: break;
        }
    }
    return c;
}

}  // namespace gen
