// The pairing of the 256-bit packing: the graph is walked in rounds of the
// nodes whose operands are computed, in the order of their ids, and each
// round pairs what it can: first the pairs that the seeds ask for, then
// partners whose operands already sit side by side, then (with moves across
// halves allowed, and only where nothing else paired) the partner of least
// cost; what finds no partner stays 128-bit.  Two nodes pair where they are
// the same operation (or an addition and a subtraction) on operands of the
// same shape, so that each half computes exactly its 128-bit node.
#include <algorithm>

#include "wide_packer.h"

namespace gen::wide {

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
    if (a.op == Op::Input && b.op == Op::Input) {
        const int sa = span_(a), sb = span_(b);
        const int lanes = a.type == Type::V2D ? 2 : 4;
        if (sa >= 0 && sb == sa + lanes)
            return 0;
    }
    return moveCost;
}

int Packer::extractCost(int id) const
{
    if (id < 0 || narrowId_[static_cast<std::size_t>(id)] >= 0)
        return 0;
    return inWide(id) && half_[static_cast<std::size_t>(id)] == 1 ? moveCost : 0;
}

bool Packer::compatible(int x, int y) const
{
    if (x == y)
        return false;
    const Node& a = node(x);
    const Node& b = node(y);
    // an addition pairs with a subtraction: see signFlip
    const bool sum = (a.op == Op::Add || a.op == Op::Sub) && (b.op == Op::Add || b.op == Op::Sub);
    if ((a.op != b.op && !sum) || a.type != b.type || a.index != b.index)
        return false;
    if ((a.a < 0) != (b.a < 0) || (a.b < 0) != (b.b < 0))
        return false;
    // an operand used twice must stay so in both halves
    return (a.a == a.b) == (b.a == b.b);
}

int Packer::pairGain(int lo, int hi) const
{
    const Node& x = node(lo);
    const Node& y = node(hi);
    // a pair of exchanges or selections saves one instruction of the shuffle unit
    const int own = onShuffleUnit(x) ? moveCost : 1;
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
    for (int u : users_[static_cast<std::size_t>(lo)])
        for (int v : users_[static_cast<std::size_t>(hi)]) {
            if (!compatible(u, v))
                continue;
            const Node& a = node(u);
            const Node& b = node(v);
            if ((a.a == lo && b.a == hi) || (a.b == lo && b.b == hi))
                return true;
        }
    return false;
}

int Packer::inputPartner(int id, int half) const
{
    // the Input node whose read lies just above (half 0: id is the lower
    // half) or just below this one's
    const Node& n = node(id);
    const int s = span_(n);
    if (s < 0)
        return -1;
    const int lanes = n.type == Type::V2D ? 2 : 4;
    auto found = inputAt_.find(half == 0 ? s + lanes : s - lanes);
    return found == inputAt_.end() ? -1 : found->second;
}

bool Packer::takeable(int y) const
{
    return inRound_[static_cast<std::size_t>(y)] && !assigned_[static_cast<std::size_t>(y)];
}

void Packer::pairAll()
{
    while (!ready_.empty()) {
        std::sort(ready_.begin(), ready_.end());
        inRound_.assign(static_cast<std::size_t>(g_.size()), false);
        for (int id : ready_)
            inRound_[static_cast<std::size_t>(id)] = true;
        const std::vector<int> round = ready_;
        ready_.clear();
        bool made = pairWanted(round);
        made = pairSideBySide(round) || made;
        if (!made && options_.crossMoves)
            made = pairAcrossHalves(round);
        if (!made)
            made = leaveNarrow(round);
        if (!made)
            giveUpWanted(round);
        for (int x : round)
            if (!assigned_[static_cast<std::size_t>(x)])
                ready_.push_back(x);
    }
}

// 0. the pairs that the outputs ask for, as soon as both halves can be computed
bool Packer::pairWanted(const std::vector<int>& round)
{
    bool made = false;
    for (int x : round) {
        const int y = wanted(x);
        if (y < 0 || assigned_[static_cast<std::size_t>(x)] || !takeable(y))
            continue;
        if (wantedHalf_[static_cast<std::size_t>(x)] == 0)
            assignWide(x, y);
        else
            assignWide(y, x);
        made = true;
    }
    return made;
}

// 1. partners whose operands already sit side by side
bool Packer::pairSideBySide(const std::vector<int>& round)
{
    bool made = false;
    for (int x : round) {
        if (assigned_[static_cast<std::size_t>(x)] || wanted(x) >= 0)
            continue;
        int bestLo = -1, bestHi = -1;
        if (sideBySidePartner(x, bestLo, bestHi)) {
            assignWide(bestLo, bestHi);
            made = true;
        }
    }
    return made;
}

// A partner of x found through an operand: the other half of the 256-bit
// node that holds the operand, or the Input node whose read lies beside its
// own; the first user of that partner that pairs with x without a move.
bool Packer::sideBySidePartner(int x, int& bestLo, int& bestHi)
{
    const Node& n = node(x);
    for (int operand : {n.a, n.b}) {
        if (operand < 0 || bestLo >= 0)
            continue;
        for (int h = 0; h < 2 && bestLo < 0; ++h) {
            int partner = -1;
            if (inWide(operand)) {
                if (half_[static_cast<std::size_t>(operand)] != h)
                    continue;
                // the other half of the same 256-bit node
                partner = partner_[static_cast<std::size_t>(operand)];
            } else if (node(operand).op == Op::Input) {
                partner = inputPartner(operand, h);
            }
            if (partner < 0)
                continue;
            const std::vector<int>& candidates =
                node(partner).op == Op::Input ? inputUsers_[partner] : users_[static_cast<std::size_t>(partner)];
            for (int y : candidates) {
                if (!takeable(y) || wanted(y) >= 0 || !compatible(x, y) || combined(x, y) || combined(y, x))
                    continue;
                const int lo = h == 0 ? x : y, hi = h == 0 ? y : x;
                const Node& l = node(lo);
                const Node& u = node(hi);
                if ((l.a < 0 || joinCost(l.a, u.a) == 0) && (l.b < 0 || joinCost(l.b, u.b) == 0)) {
                    bestLo = lo;
                    bestHi = hi;
                    break;
                }
            }
        }
    }
    return bestLo >= 0;
}

// 2. the cheapest partner where moves across halves are needed
bool Packer::pairAcrossHalves(const std::vector<int>& round)
{
    bool made = false;
    for (int x : round) {
        if (assigned_[static_cast<std::size_t>(x)] || wanted(x) >= 0)
            continue;
        int best = 1, bestLo = -1, bestHi = -1;
        for (int y : round) {
            if (!takeable(y) || wanted(y) >= 0 || !compatible(x, y) || combined(x, y) || combined(y, x))
                continue;
            for (int h = 0; h < 2; ++h) {
                const int lo = h == 0 ? x : y, hi = h == 0 ? y : x;
                const int gain = pairGain(lo, hi) - (options_.lookahead && usersPair(lo, hi) ? moveCost : 0);
                if (gain < best) {
                    best = gain;
                    bestLo = lo;
                    bestHi = hi;
                }
            }
        }
        if (bestLo >= 0 && best <= 0) {
            assignWide(bestLo, bestHi);
            made = true;
        }
    }
    return made;
}

// 3. what found no partner stays 128-bit
bool Packer::leaveNarrow(const std::vector<int>& round)
{
    bool made = false;
    for (int x : round)
        if (!assigned_[static_cast<std::size_t>(x)] && wanted(x) < 0) {
            assignNarrow(x);
            made = true;
        }
    return made;
}

// the wanted partners wait on each other: give up those pairs
void Packer::giveUpWanted(const std::vector<int>& round)
{
    for (int x : round)
        if (!assigned_[static_cast<std::size_t>(x)]) {
            const int y = wanted(x);
            wanted_[static_cast<std::size_t>(y)] = -1;
            wanted_[static_cast<std::size_t>(x)] = -1;
            assignNarrow(x);
        }
}

}  // namespace gen::wide
