#include "lane_forms.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <stdexcept>

#include "verifier.h"

namespace gen {

namespace {
std::uint64_t mix(std::uint64_t h, std::uint64_t v)
{
    // splitmix64 over the running hash and the next word
    std::uint64_t z = h ^ (v + 0x9e3779b97f4a7c15ULL + (h << 6) + (h >> 2));
    z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9ULL;
    z = (z ^ (z >> 27)) * 0x94d049bb133111ebULL;
    return z ^ (z >> 31);
}

enum Tag : std::uint64_t { InputTag = 1, ParamTag, ConstTag, SumTag, SumValueTag, ProductTag, ZeroSubTag, WidenTag, NarrowTag };

LaneForm constantForm(double value)
{
    const double magnitude = std::fabs(value);
    std::uint64_t bits;
    std::memcpy(&bits, &magnitude, sizeof bits);
    return {mix(ConstTag, bits), std::signbit(value)};
}

int bit(int mask, int i) { return (mask >> i) & 1; }

// The two signed terms of a sum in a fixed order (by form).
struct SumTerms {
    std::uint64_t first = 0, second = 0;
    bool firstNegative = false, secondNegative = false;
    // the sum up to its sign: equal for (x, y) and (-x, -y)
    std::uint64_t valueKey() const
    {
        return mix(mix(mix(SumValueTag, first), second), firstNegative == secondNegative ? 1 : 0);
    }
};

SumTerms sumTerms(const LaneForm& x, bool xNegative, const LaneForm& y, bool yNegative)
{
    // by key, and of two terms of one key the positive one first
    const bool swap = y.key < x.key || (y.key == x.key && xNegative && !yNegative);
    if (swap)
        return {y.key, x.key, yNegative, xNegative};
    return {x.key, y.key, xNegative, yNegative};
}

// the terms of an Add or Sub node whose operands' lanes have forms a and b
SumTerms sumTerms(const Node& n, const LaneForm& a, const LaneForm& b)
{
    return sumTerms(a, a.negative, b, b.negative != (n.op == Op::Sub));
}

// The form of lane i of a node that does not select lanes, from the forms of
// its operands' lane i.
LaneForm formOf(const Node& n, int i, const LaneForm& x, const LaneForm& y)
{
    switch (n.op) {
    case Op::Input: {
        // a V4F load holds (re, im) of sample index, then of index2 (-1: zero)
        const int sample = n.type == Type::V4F && i >= 2 ? n.index2 : n.index;
        const auto part = static_cast<std::uint64_t>(n.type == Type::V4F ? i % 2 : i);
        const std::uint64_t key = mix(mix(InputTag, static_cast<std::uint64_t>(sample)), part);
        return sample < 0 ? constantForm(0.0) : LaneForm{key, false};
    }
    case Op::Param: return {mix(ParamTag, static_cast<std::uint64_t>(n.index)), false};
    case Op::Const: return constantForm(constantLane(n, i));
    case Op::Add:
    case Op::Sub: {
        const SumTerms t = sumTerms(n, x, y);
        return {mix(mix(mix(mix(SumTag, t.first), t.second), t.firstNegative ? 1 : 0), t.secondNegative ? 1 : 0), false};
    }
    case Op::Mul:
        return {mix(mix(ProductTag, std::min(x.key, y.key)), std::max(x.key, y.key)), x.negative != y.negative};
    case Op::ZeroSub: return {mix(mix(ZeroSubTag, x.key), x.negative ? 1 : 0), false};
    case Op::Widen:
    case Op::Narrow:
        // exact, or one rounding to nearest: symmetric in the sign
        return {mix(n.op == Op::Widen ? WidenTag : NarrowTag, x.key), x.negative};
    default: throw std::logic_error("an operation without lane forms");
    }
}
}  // namespace

LaneForm LaneForms::form(int id, int lane)
{
    // first the forms of the nodes made since the last call
    // a sign change only turns the sign left outside
    auto negated = [](LaneForm f) { return LaneForm{f.key, !f.negative}; };
    walkLanes(graph_, forms_, constantForm(0.0), negated, formOf);
    return forms_[static_cast<std::size_t>(id)][static_cast<std::size_t>(lane)];
}

SumOrientations::SumOrientations(const Graph& fixed, const std::vector<int>& roots)
{
    LaneForms forms(fixed);
    const std::vector<bool> live = fixed.liveSet(roots);
    for (int id = 0; id < fixed.size(); ++id) {
        const Node& n = fixed.node(id);
        if (!live[static_cast<std::size_t>(id)] || (n.op != Op::Add && n.op != Op::Sub))
            continue;
        for (int i = 0; i < laneCount(n.type); ++i) {
            const SumTerms t = sumTerms(n, forms.form(n.a, i), forms.form(n.b, i));
            seen_[t.valueKey()] |= t.firstNegative ? 2 : 1;
        }
    }
}

void SumOrientations::keepLanes(const std::vector<int>& live)
{
    liveByCall_.clear();
    for (const auto& call : calls_)
        liveByCall_.push_back(live[static_cast<std::size_t>(call.first)] | live[static_cast<std::size_t>(call.second)]);
    steered_.reset();
}

namespace {

// The operands of a sum without their sign changes, and the signs they take
// into it, as lane masks.
struct SumOperands {
    int a0 = Graph::none, b0 = Graph::none;
    int maskA = 0, maskB = 0;  // the signs inside the sum, a subtraction's included
    int givenB = 0;            // the signs b came with (a's are maskA)
};

// How a sum is made, and at what cost in instructions.
struct SumPlan {
    int cost;
    int op;  // 0 a0 + b0, 1 a0 - b0, 2 b0 - a0; -1 a blend of kinds
    int flipA, flipB, outside;
    std::array<int, 4> kinds;  // lanes per kind: bit 1 a0 negative inside, bit 0 b0
};

// Per lane: whether the sum is made in the other orientation (its sign then
// outside), or -1 where the fixed graph has no such sum, or the lane is not
// held to it, and either will do.  The signs of a0 and b0 inside the sum
// follow: those asked for, each changed once more when the orientation turns.
std::array<int, 8> turnsOf(LaneForms& forms, const std::unordered_map<std::uint64_t, int>& seen,
                           const SumOperands& s, int held)
{
    std::array<int, 8> turn{};
    for (int i = 0; i < 8; ++i) {
        const LaneForm x = forms.form(s.a0, i), y = forms.form(s.b0, i);
        const SumTerms t = sumTerms(x, x.negative != (bit(s.maskA, i) != 0), y, y.negative != (bit(s.maskB, i) != 0));
        const auto found = seen.find(t.valueKey());
        const bool free = found == seen.end() || !bit(held, i);
        turn[static_cast<std::size_t>(i)] = free ? -1 : (found->second & (t.firstNegative ? 2 : 1)) ? 0 : 1;
    }
    return turn;
}

// a product by constants changes the sign of lanes in its constants, at no cost
bool freeFlip(const Graph& graph, int id)
{
    const Node& n = graph.node(id);
    return n.op == Op::Mul && graph.node(n.b).op == Op::Const;
}

int flipCost(const Graph& graph, const std::unordered_set<int>& materialised, int id, int mask)
{
    if (mask == 0 || freeFlip(graph, id))
        return 0;
    const int made = graph.findSignLanes(id, mask);
    return made >= 0 && materialised.count(made) ? 0 : 1;
}

int flipped(Graph& graph, int id, int mask)
{
    if (mask == 0 || !freeFlip(graph, id))
        return graph.signLanes(id, mask);
    Node n = graph.node(id);
    n.b = graph.signLanes(n.b, mask);
    return graph.raw(n);
}

// One instruction makes the sum where every lane wants the same signs
// inside, after the operands' lanes change sign (a mask each): the cheapest
// of a0 + b0, a0 - b0 and b0 - a0.
SumPlan planOneSum(const Graph& graph, const std::unordered_set<int>& materialised, const std::array<int, 8>& turn,
                   const SumOperands& s)
{
    SumPlan best{1 << 20, -1, 0, 0, 0, {}};
    const int opSigns[3][2] = {{0, 0}, {0, 1}, {1, 0}};
    for (int op = 0; op < 3; ++op) {
        SumPlan p{1, op, 0, 0, 0, {}};
        for (int i = 0; i < 8; ++i) {
            int t = turn[static_cast<std::size_t>(i)];
            if (t < 0)  // the orientation that needs fewer sign changes here
                t = ((bit(s.maskA, i) ^ opSigns[op][0]) + (bit(s.maskB, i) ^ opSigns[op][1]) <= 1) ? 0 : 1;
            p.flipA |= (bit(s.maskA, i) ^ t ^ opSigns[op][0]) << i;
            p.flipB |= (bit(s.maskB, i) ^ t ^ opSigns[op][1]) << i;
            p.outside |= t << i;
        }
        p.cost += flipCost(graph, materialised, s.a0, p.flipA) + flipCost(graph, materialised, s.b0, p.flipB);
        // of equal costs, the operands' own signs: the other sum of a
        // butterfly takes the same ones
        const bool own = p.flipA == s.maskA && p.flipB == s.givenB;
        if (p.cost < best.cost || (p.cost == best.cost && own))
            best = p;
    }
    return best;
}

// The sums of each kind of signs inside, blended lane by lane.
SumPlan planBlend(const std::array<int, 8>& turn, const SumOperands& s)
{
    SumPlan p{0, -1, 0, 0, 0, {}};
    const auto turned = std::count(turn.begin(), turn.end(), 1), kept = std::count(turn.begin(), turn.end(), 0);
    for (int i = 0; i < 8; ++i) {
        const int t = turn[static_cast<std::size_t>(i)] < 0 ? (turned > kept ? 1 : 0) : turn[static_cast<std::size_t>(i)];
        p.kinds[static_cast<std::size_t>(((bit(s.maskA, i) ^ t) << 1) | (bit(s.maskB, i) ^ t))] |= 1 << i;
        p.outside |= t << i;
    }
    for (int kind = 0; kind < 4; ++kind)
        if (p.kinds[static_cast<std::size_t>(kind)] != 0)
            p.cost += p.cost == 0 ? 1 : 2;  // a sum, and a blend after the first
    p.cost += p.kinds[3] != 0;              // -a0 - b0 needs -a0
    return p;
}

// The sum of a kind: 0 x + y, 1 x - y, 2 y - x, 3 (-x) - y.
int sumOf(Graph& graph, int kind, int x, int y)
{
    if (kind == 3)
        x = graph.neg(x);
    Node n{kind == 0 ? Op::Add : Op::Sub, Type::V8F};
    n.a = kind == 0 ? std::min(x, y) : kind == 2 ? y : x;
    n.b = kind == 0 ? std::max(x, y) : kind == 2 ? x : y;
    return graph.raw(n);
}

// The sum as the plan says, its sign outside left to the caller.
int makeSum(Graph& graph, std::unordered_set<int>& materialised, const SumPlan& best, const SumOperands& s)
{
    if (best.op >= 0) {
        // signs changed by instructions of their own, kept inside the sum
        const int x = flipped(graph, s.a0, best.flipA), y = flipped(graph, s.b0, best.flipB);
        materialised.insert(x);
        materialised.insert(y);
        return sumOf(graph, best.op, x, y);
    }
    int core = Graph::none;
    for (int kind = 0; kind < 4; ++kind) {
        const int lanes = best.kinds[static_cast<std::size_t>(kind)];
        if (lanes == 0)
            continue;
        const int made = sumOf(graph, kind, s.a0, s.b0);
        core = core == Graph::none ? made : graph.blend(core, made, lanes);
    }
    return core;
}

}  // namespace

int SumOrientations::sum(Graph& graph, int a, int b, bool subtract)
{
    if (!steered_ || &steered_->graph() != &graph) {
        steered_ = std::make_unique<LaneForms>(graph);
        materialised_.clear();
        calls_.clear();
    }
    const std::size_t call = calls_.size();
    // lanes held to the fixed orientation: all, or those the same sum of the last graph needed
    const int held = call < liveByCall_.size() ? liveByCall_[call] : 0xFF;
    SumOperands s;
    s.a0 = graph.strip(a, s.maskA);
    s.b0 = graph.strip(b, s.maskB);
    s.givenB = s.maskB;
    if (subtract)
        s.maskB ^= 0xFF;
    const std::array<int, 8> turn = turnsOf(*steered_, seen_, s, held);

    // One instruction makes the sum where every lane wants the same signs
    // inside; otherwise either the operands' lanes change sign first (a
    // mask each) or the sums of each kind are blended.  The cheaper wins.
    SumPlan best = planOneSum(graph, materialised_, turn, s);
    const SumPlan blend = planBlend(turn, s);
    if (blend.cost < best.cost)
        best = blend;

    const int core = makeSum(graph, materialised_, best, s);
    const int result = graph.signLanes(core, best.outside);
    calls_.emplace_back(result, core);
    return result;
}

}  // namespace gen
