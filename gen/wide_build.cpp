// The 256-bit packing pass and the nodes of the packed graph: a 256-bit node
// for each pair, a 128-bit copy of each node left unpaired, and the moves
// between the two: a 128-bit value taken out of its half, two 128-bit values
// joined or their halves permuted, constants of two halves merged, the scale
// factor broadcast, and an addition paired with a subtraction through a
// product by (+1 | -1).  Last the stores, one 256-bit store where two
// neighbouring full stores share a 256-bit node.
//
// The pairing of the 256-bit packing.  First the seeds: pairs asked for
// before the graph is walked, which the walk makes as soon as both halves can
// be computed.  They come from neighbouring outputs, from the outputs whose
// computations share the most shape, or from the same steps of neighbouring
// parallel transforms (the groups the builders mark); those from outputs reach
// down through the operands as far as the two computations have the same
// shape.  A pair is asked for only where neither half needs the other and no
// node uses both.
//
// Then the graph is walked in rounds of the nodes whose operands are
// computed, in the order of their ids, and each round pairs what it can:
// first the pairs that the seeds ask for, then partners whose operands
// already sit side by side, then (with moves across halves allowed, and only
// where nothing else paired) the partner of least cost; what finds no partner
// stays 128-bit.  Two nodes pair where they are the same operation (or an
// addition and a subtraction) on operands of the same shape, so that each
// half computes exactly its 128-bit node.
#include <algorithm>
#include <set>
#include <stdexcept>
#include <utility>

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

// Outputs asked for as pairs: full stores to neighbouring places two by two,
// or (shapes) any two full stores by the size of the computation they share
// in shape, largest first and among equals in the order of the stores.
void Packer::seed(const std::vector<bool>& live)
{
    if (options_.seeds == PackOptions::Groups || options_.seeds == PackOptions::AlignedGroups)
        return seedFromGroups(live, options_.seeds == PackOptions::AlignedGroups);
    std::vector<std::pair<int, std::pair<std::size_t, std::size_t>>> outputs;  // (-size, the two stores)
    for (std::size_t i = 0; i + 1 < stores_.size(); ++i) {
        if (options_.seeds == PackOptions::Neighbours && neighbours(stores_[i], stores_[i + 1])) {
            outputs.push_back({0, {i, i + 1}});
            ++i;
        }
        for (std::size_t j = i + 1; options_.seeds == PackOptions::Shapes && j < stores_.size(); ++j)
            if (full(stores_[i]) && full(stores_[j])) {
                const int size = seedFromOutputs(stores_[i].node, stores_[j].node, false);
                if (size > 0)
                    outputs.push_back({-size, {i, j}});
            }
    }
    std::sort(outputs.begin(), outputs.end());
    for (const auto& [size, pair] : outputs)
        seedFromOutputs(stores_[pair.first].node, stores_[pair.second].node, true);
}

// Whether x and y may be asked for as a pair: two operations that pair, not
// asked for yet, that no node uses together and (`checkOrder`) of which
// neither needs the other.
bool Packer::seedable(int x, int y, bool checkOrder) const
{
    // a node's operands come before it
    return x >= 0 && y >= 0 && !isLeaf(node(x)) && !isLeaf(node(y)) && !isWanted(x) && !isWanted(y) && pairable(x, y) &&
           (!checkOrder || !g_.liveSet({std::max(x, y)})[static_cast<std::size_t>(std::min(x, y))]);
}

// Two outputs want to be computed side by side; so do the operands of two
// paired nodes, as far down as the two computations have the same shape.
// Returns the number of pairs; `commit` false only counts them.
int Packer::seedFromOutputs(int lo, int hi, bool commit)
{
    std::vector<std::pair<int, int>> stack{{lo, hi}};
    std::vector<int> claimed;
    int pairs = 0;
    while (!stack.empty()) {
        const auto [x, y] = stack.back();
        stack.pop_back();
        if (!seedable(x, y, commit) || std::count(claimed.begin(), claimed.end(), x) ||
            std::count(claimed.begin(), claimed.end(), y))
            continue;
        ++pairs;
        if (commit)
            at(x).wanted = at(y).wanted = {x, y};
        else
            claimed.insert(claimed.end(), {x, y});
        const Node& a = node(x);
        const Node& b = node(y);
        stack.push_back({a.a, b.a});
        if (a.b != a.a)
            stack.push_back({a.b, b.b});
    }
    return pairs;
}

// The transforms of a stage are the same computation on other data: the
// k-th node made for transform 2j pairs with the k-th node made for
// transform 2j + 1 (the lower half takes the even transform, so that
// neighbouring samples meet in the loads and stores).  Outer stages first;
// inner transforms pair what the outer ones leave.
void Packer::seedFromGroups(const std::vector<bool>& live, bool align)
{
    std::map<std::pair<int, int>, std::vector<int>> members;
    std::map<int, int> depthOf;
    std::set<std::pair<int, int>> scopes;  // (depth, scope), a scope at the depth its first node has
    for (int id = 0; id < g_.size(); ++id) {
        if (!live[static_cast<std::size_t>(id)] || isLeaf(node(id)))
            continue;
        const auto& groups = g_.groupsOf(id);
        for (std::size_t d = 0; d < groups.size(); ++d) {
            members[groups[d]].push_back(id);
            if (depthOf.emplace(groups[d].first, static_cast<int>(d)).second)
                scopes.insert({static_cast<int>(d), groups[d].first});
        }
    }
    for (const auto& [depth, scope] : scopes)
        for (auto lower = members.lower_bound({scope, 0}); lower != members.end() && lower->first.first == scope;
             ++lower) {
            const auto upper = members.find({scope, lower->first.second + 1});
            if (lower->first.second % 2 == 0 && upper != members.end())
                seedSteps(lower->second, upper->second, align);
        }
}

// The steps of two transforms paired in order (the k-th with the k-th), or
// (`align`) lined up by the longest common sequence of operations: a step
// that one of them has and the other not (a twiddle of one lane, a part that
// is zero) does not shift the pairs after it.  In order is the same walk with
// only the k-th step matching the k-th.
void Packer::seedSteps(const std::vector<int>& l, const std::vector<int>& u, bool align)
{
    const auto match = [&](std::size_t i, std::size_t j) { return align ? compatible(l[i], u[j]) : i == j; };
    const std::size_t rows = l.size() + 1, cols = u.size() + 1;
    std::vector<int> common(rows * cols, 0);
    for (std::size_t i = l.size(); i-- > 0;)
        for (std::size_t j = u.size(); j-- > 0;)
            common[i * cols + j] = match(i, j) ? common[(i + 1) * cols + j + 1] + 1
                                               : std::max(common[(i + 1) * cols + j], common[i * cols + j + 1]);
    for (std::size_t i = 0, j = 0; i < l.size() && j < u.size();) {
        if (match(i, j) && common[i * cols + j] == common[(i + 1) * cols + j + 1] + 1) {
            if (seedable(l[i], u[j], true))
                at(l[i]).wanted = at(u[j]).wanted = {l[i], u[j]};
            ++i;
            ++j;
        } else if (common[(i + 1) * cols + j] >= common[i * cols + j + 1]) {
            ++i;
        } else {
            ++j;
        }
    }
}

int Packer::joinCost(int lo, int hi) const
{
    if (wideOf_.count({lo, hi}))
        return 0;
    const Node& a = node(lo);
    const Node& b = node(hi);
    if (a.op == Op::Const && b.op == Op::Const)
        return 0;
    if (a.op == Op::Param && b.op == Op::Param && a.index == b.index)
        return 1;  // one broadcast, shared by every product by the factor
    if (a.op == Op::Input && b.op == Op::Input && span(a) >= 0 && span(b) == span(a) + laneCount(a.type))
        return 0;
    return moveCost;
}

int Packer::extractCost(int id) const
{
    return id >= 0 && at(id).narrow < 0 && inWide(id) && half(id) == 1 ? moveCost : 0;
}

bool Packer::compatible(int x, int y) const
{
    const Node& a = node(x);
    const Node& b = node(y);
    // an addition pairs with a subtraction (see signFlip); an operand used
    // twice must stay so in both halves
    const bool sum = (a.op == Op::Add || a.op == Op::Sub) && (b.op == Op::Add || b.op == Op::Sub);
    return x != y && (a.op == b.op || sum) && a.type == b.type && a.index == b.index && (a.a < 0) == (b.a < 0) &&
           (a.b < 0) == (b.b < 0) && (a.a == a.b) == (b.a == b.b);
}

// Whether two operations pair and no node uses both: such a pair would have
// to add its own two halves.  (A node that uses both is a user of each.)
bool Packer::pairable(int x, int y) const
{
    for (int user : at(x).users)
        if (node(user).a == y || node(user).b == y)
            return false;
    return compatible(x, y);
}

int Packer::pairGain(int lo, int hi) const
{
    const Node& x = node(lo);
    const Node& y = node(hi);
    // a pair of instructions of the shuffle unit (exchanges, selections) saves
    // one of them
    const int own = x.op == Op::Swap || x.op == Op::SwapNeg || x.op == Op::Shuffle ? moveCost : 1;
    int wide = own + (x.op != y.op ? 1 : 0), narrow = 2 * own;
    for (auto [ox, oy] : {std::pair<int, int>{x.a, y.a}, std::pair<int, int>{x.b == x.a ? -1 : x.b, y.b}}) {
        if (ox < 0)
            continue;
        wide += joinCost(ox, oy);
        narrow += extractCost(ox) + extractCost(oy);
    }
    return wide - narrow;
}

// Whether a user of lo and a user of hi can be paired with the same operand
// slots: a pair paid for with moves then serves the next pair for free.
bool Packer::usersPair(int lo, int hi) const
{
    for (int u : at(lo).users)
        for (int v : at(hi).users)
            if (((node(u).a == lo && node(v).a == hi) || (node(u).b == lo && node(v).b == hi)) && compatible(u, v))
                return true;
    return false;
}

void Packer::pairAll()
{
    while (!ready_.empty()) {
        std::sort(ready_.begin(), ready_.end());
        const std::vector<int> round = std::exchange(ready_, {});
        // 0. the pairs that the seeds ask for, as soon as both halves can be
        // computed; for the nodes no seed asks for, 1. partners whose operands
        // already sit side by side, 2. the partner of least cost where moves
        // across halves are needed
        auto pairEach = [&](int step) {
            bool made = false;
            for (int x : round) {
                if (assigned(x) || isWanted(x) != (step == 0))
                    continue;
                const auto [lo, hi] = step == 0   ? at(x).wanted
                                      : step == 1 ? sideBySidePartner(x, round)
                                                  : cheapestPartner(x, round);
                if (lo >= 0 && (step > 0 || takeable(lo == x ? hi : lo, round))) {
                    assignWide(lo, hi);
                    made = true;
                }
            }
            return made;
        };
        bool made = pairEach(0);
        made = pairEach(1) || made;
        if (!made && options_.moves != PackOptions::NoMoves)
            made = pairEach(2);
        // 3. where nothing paired, what found no partner stays 128-bit; where
        // all that is left are wanted partners that wait on each other, those
        // pairs are given up
        const bool giveUp = !made && std::none_of(round.begin(), round.end(), [&](int x) {
            return !assigned(x) && !isWanted(x);
        });
        for (int x : round) {
            if (made || assigned(x) || (isWanted(x) && !giveUp))
                continue;
            if (giveUp) {
                const auto [lo, hi] = at(x).wanted;
                at(lo).wanted = at(hi).wanted = {-1, -1};
            }
            assignNarrow(x);
        }
        for (int x : round)
            if (!assigned(x))
                ready_.push_back(x);
    }
}

// A partner of x found through an operand: the other half of the 256-bit
// node that holds the operand, or the Input node whose read lies just above
// (h 0: the operand is the lower half) or just below the operand's; the first
// user of that partner that pairs with x without a move.
std::pair<int, int> Packer::sideBySidePartner(int x, const std::vector<int>& round) const
{
    const Node& n = node(x);
    for (int operand : {n.a, n.b})
        for (int h = 0; h < 2 && operand >= 0; ++h) {
            const Node& o = node(operand);
            int partner = -1;
            if (inWide(operand) && half(operand) == h) {
                partner = h == 0 ? at(operand).pair.second : at(operand).pair.first;
            } else if (!inWide(operand) && o.op == Op::Input && span(o) >= 0) {
                const auto found = inputAt_.find(span(o) + (h == 0 ? laneCount(o.type) : -laneCount(o.type)));
                partner = found == inputAt_.end() ? -1 : found->second;
            }
            if (partner < 0)
                continue;
            for (int y : at(partner).users) {
                if (!takeable(y, round) || isWanted(y) || !pairable(x, y))
                    continue;
                const int lo = h == 0 ? x : y, hi = h == 0 ? y : x;
                const Node& l = node(lo);
                const Node& u = node(hi);
                if ((l.a < 0 || joinCost(l.a, u.a) == 0) && (l.b < 0 || joinCost(l.b, u.b) == 0))
                    return {lo, hi};
            }
        }
    return {-1, -1};
}

// The partner of x and the halves of least cost, where that cost is no more
// than two 128-bit nodes.
std::pair<int, int> Packer::cheapestPartner(int x, const std::vector<int>& round) const
{
    int best = 1;
    std::pair<int, int> chosen{-1, -1};
    for (int y : round) {
        if (assigned(y) || isWanted(y) || !pairable(x, y))
            continue;
        for (int h = 0; h < 2; ++h) {
            const int lo = h == 0 ? x : y, hi = h == 0 ? y : x;
            const int gain =
                pairGain(lo, hi) - (options_.moves == PackOptions::Lookahead && usersPair(lo, hi) ? moveCost : 0);
            if (gain < best) {
                best = gain;
                chosen = {lo, hi};
            }
        }
    }
    return chosen;
}

}  // namespace wide

}  // namespace gen
