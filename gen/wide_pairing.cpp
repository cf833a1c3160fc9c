// The pairing of the 256-bit packing: the graph is walked in rounds of the
// nodes whose operands are computed, in the order of their ids, and each
// round pairs what it can: first the pairs that the seeds ask for, then
// partners whose operands already sit side by side, then (with moves across
// halves allowed, and only where nothing else paired) the partner of least
// cost; what finds no partner stays 128-bit.  Two nodes pair where they are
// the same operation (or an addition and a subtraction) on operands of the
// same shape, so that each half computes exactly its 128-bit node.
#include <algorithm>
#include <utility>

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
    if (a.op == Op::Input && b.op == Op::Input && span_(a) >= 0 && span_(b) == span_(a) + laneCount(a.type))
        return 0;
    return moveCost;
}

int Packer::extractCost(int id) const
{
    return id >= 0 && at(id).narrow < 0 && inWide(id) && at(id).half == 1 ? moveCost : 0;
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

// Whether two operations pair and no node uses both: such a pair would have
// to add its own two halves.
bool Packer::pairable(int x, int y) const
{
    if (!compatible(x, y))
        return false;
    for (auto [p, q] : {std::pair<int, int>{x, y}, std::pair<int, int>{y, x}})
        for (int user : at(p).users)
            if (node(user).a == q || node(user).b == q)
                return false;
    return true;
}

int Packer::pairGain(int lo, int hi) const
{
    const Node& x = node(lo);
    const Node& y = node(hi);
    // a pair of instructions of the shuffle unit (exchanges, selections,
    // moves across halves) saves one of them
    const bool shuffle = x.op == Op::Swap || x.op == Op::SwapNeg || x.op == Op::Shuffle || x.op == Op::Join ||
                         x.op == Op::Extract || x.op == Op::Permute2;
    const int own = shuffle ? moveCost : 1;
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
        for (int v : at(hi).users) {
            if (!compatible(u, v))
                continue;
            const Node& a = node(u);
            const Node& b = node(v);
            if ((a.a == lo && b.a == hi) || (a.b == lo && b.b == hi))
                return true;
        }
    return false;
}

void Packer::pairAll()
{
    while (!ready_.empty()) {
        std::sort(ready_.begin(), ready_.end());
        const std::vector<int> round = std::exchange(ready_, {});
        // 0. the pairs that the seeds ask for, as soon as both halves can be computed
        bool made = false;
        for (int x : round) {
            const auto [lo, hi] = at(x).wanted;
            if (lo >= 0 && !assigned(x) && takeable(lo == x ? hi : lo, round)) {
                assignWide(lo, hi);
                made = true;
            }
        }
        // 1. partners whose operands already sit side by side
        made = pairFree(round, false) || made;
        // 2. the cheapest partner where moves across halves are needed
        if (!made && options_.moves != PackOptions::NoMoves)
            made = pairFree(round, true);
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

// Pairs each node of the round that no seed asks for with the partner found
// for it, side by side or across halves.
bool Packer::pairFree(const std::vector<int>& round, bool acrossHalves)
{
    bool made = false;
    for (int x : round) {
        if (assigned(x) || isWanted(x))
            continue;
        const auto [lo, hi] = acrossHalves ? cheapestPartner(x, round) : sideBySidePartner(x, round);
        if (lo >= 0) {
            assignWide(lo, hi);
            made = true;
        }
    }
    return made;
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
            if (inWide(operand) && at(operand).half == h) {
                partner = at(operand).partner;
            } else if (!inWide(operand) && o.op == Op::Input && span_(o) >= 0) {
                const auto found = inputAt_.find(span_(o) + (h == 0 ? laneCount(o.type) : -laneCount(o.type)));
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
        if (!takeable(y, round) || isWanted(y) || !pairable(x, y))
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

}  // namespace gen::wide
