#include "wide_pairs.h"

#include <algorithm>
#include <map>
#include <stdexcept>
#include <utility>

namespace gen {

namespace {

Type wideType(Type t)
{
    if (t == Type::V2D)
        return Type::V4D;
    if (t == Type::V4F)
        return Type::V8F;
    throw std::logic_error("no 256-bit form of a scalar");
}

bool isLeaf(const Node& n) { return n.op == Op::Input || n.op == Op::Const || n.op == Op::Param; }

using Options = PackOptions;

// Whether a node's instruction runs on the shuffle unit: exchanges,
// selections, moves across halves, loads into an upper half.
bool onShuffleUnit(const Node& n)
{
    return n.op == Op::Swap || n.op == Op::SwapNeg || n.op == Op::Shuffle || n.op == Op::Join ||
           n.op == Op::Extract || n.op == Op::Permute2 ||
           (n.op == Op::Input && n.index2 >= 0 && n.index2 != n.index + 1);
}

// What an instruction on the shuffle unit counts.  On the cores measured
// (bench/ports_bench) the exchanges as the compiler writes them (vpermilps,
// vpermilpd), the interleavings and the moves across halves issue on one port
// only, one that the additions use as well, so they come at half the rate of
// an addition (selections, vshufps, at the full rate, are counted the same);
// a kernel whose moves across halves outnumber the instructions that the
// 256-bit operations save runs slower than its 128-bit form (Complex32 of 19
// points: 1.5x).
constexpr int moveCost = 2;

// Cost of the nodes that the roots need: one per instruction, `moveCost` for
// one on the shuffle unit (a multiplication by i is an exchange and a sign
// change).  What holds no value of its own (constants, the free lower-half
// extraction) costs nothing.
int instructions(const Graph& g, const std::vector<int>& roots)
{
    const std::vector<bool> live = g.liveSet(roots);
    int count = 0;
    for (int id = 0; id < g.size(); ++id) {
        if (!live[static_cast<std::size_t>(id)])
            continue;
        const Node& n = g.node(id);
        if (n.op == Op::Const || n.op == Op::Param || (n.op == Op::Extract && n.index == 0))
            continue;
        count += (onShuffleUnit(n) ? moveCost : 1) + (n.op == Op::SwapNeg ? 1 : 0);
    }
    return count;
}

class Packer {
public:
    Packer(const Graph& g, const InputSpan& span, Options options) : g_(g), span_(span), options_(options)
    {
        const std::size_t size = static_cast<std::size_t>(g.size());
        narrowId_.assign(size, -1);
        wideId_.assign(size, -1);
        half_.assign(size, -1);
        partner_.assign(size, -1);
        wanted_.assign(size, -1);
        wantedHalf_.assign(size, -1);
        assigned_.assign(size, false);
        users_.resize(size);
    }

    PackedKernel run(const std::vector<VectorStore>& stores);

private:
    const Node& node(int id) const { return g_.node(id); }
    bool inWide(int id) const { return wideId_[static_cast<std::size_t>(id)] >= 0; }
    bool available(int id) const { return id < 0 || isLeaf(node(id)) || assigned_[static_cast<std::size_t>(id)]; }

    int value128(int id);
    int value256(int lo, int hi);
    int joinCost(int lo, int hi) const;
    int extractCost(int id) const;
    bool compatible(int x, int y) const;
    // Cost of computing x and y as one 256-bit node minus the cost of two
    // 128-bit nodes; x in the lower half.
    int pairGain(int lo, int hi) const;
    bool usersPair(int lo, int hi) const;
    int inputPartner(int id, int half) const;

    bool combined(int x, int y) const;
    bool dependsOn(int later, int earlier) const;
    int seedFromOutputs(int lo, int hi, bool commit);
    void seedFromGroups(const std::vector<bool>& live, bool align);
    bool seedPair(int lo, int hi);

    void assignNarrow(int id);
    void assignWide(int lo, int hi);
    int signFlip(int wide);
    void placed(int id);

    const Graph& g_;
    InputSpan span_;
    Options options_;
    PackedKernel out_;
    std::vector<int> narrowId_;  // the node's 128-bit value in the packed graph
    std::vector<int> wideId_;    // the 256-bit node that computes it
    std::vector<int> half_;      // and its half there
    std::vector<int> partner_;   // the node in its other half
    std::vector<int> wanted_;    // the partner that the outputs ask for (-1: none)
    std::vector<int> wantedHalf_;
    std::vector<bool> assigned_;
    std::vector<std::vector<int>> users_;
    std::vector<int> waiting_;   // operands not yet computed
    std::vector<int> ready_;
    std::map<std::pair<int, int>, int> wideOf_;  // (lower, upper) 128-bit nodes -> 256-bit value
    std::map<int, int> inputAt_;                 // offset of a contiguous read -> Input node
};

int Packer::value128(int id)
{
    int& known = narrowId_[static_cast<std::size_t>(id)];
    if (known >= 0)
        return known;
    Node n = node(id);
    if (inWide(id)) {
        Node e{Op::Extract, n.type};
        e.a = wideId_[static_cast<std::size_t>(id)];
        e.index = half_[static_cast<std::size_t>(id)];
        ++out_.moves;
        known = out_.graph.raw(e);
        return known;
    }
    if (!isLeaf(n))
        throw std::logic_error("a value used before it is computed");
    known = out_.graph.raw(n);
    return known;
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

// Whether a node uses x and y together: such a pair would have to add its
// own two halves.
bool Packer::combined(int x, int y) const
{
    for (int user : users_[static_cast<std::size_t>(x)]) {
        const Node& u = node(user);
        if (u.a == y || u.b == y)
            return true;
    }
    return false;
}

bool Packer::dependsOn(int later, int earlier) const
{
    // operands are made before their users, so only nodes above `earlier` can lead to it
    std::vector<int> stack{later};
    std::vector<bool> seen(static_cast<std::size_t>(later + 1), false);
    while (!stack.empty()) {
        const int id = stack.back();
        stack.pop_back();
        if (id == earlier)
            return true;
        if (id < earlier || seen[static_cast<std::size_t>(id)])
            continue;
        seen[static_cast<std::size_t>(id)] = true;
        const Node& n = node(id);
        for (int operand : {n.a, n.b})
            if (operand >= earlier)
                stack.push_back(operand);
    }
    return false;
}

// Two outputs want to be computed side by side; so do the operands of two
// paired nodes, as far down as the two computations have the same shape.
// Returns the number of pairs; `commit` false only counts them.
int Packer::seedFromOutputs(int lo, int hi, bool commit)
{
    std::vector<std::pair<int, int>> stack{{lo, hi}};
    std::vector<int> claimed;
    int pairs = 0;
    auto taken = [&](int id) {
        return wanted_[static_cast<std::size_t>(id)] >= 0 || std::find(claimed.begin(), claimed.end(), id) != claimed.end();
    };
    while (!stack.empty()) {
        const auto [x, y] = stack.back();
        stack.pop_back();
        if (x < 0 || y < 0 || x == y || isLeaf(node(x)) || isLeaf(node(y)))
            continue;
        if (taken(x) || taken(y) || !compatible(x, y) || combined(x, y) || combined(y, x))
            continue;
        if (commit && (x > y ? dependsOn(x, y) : dependsOn(y, x)))
            continue;
        ++pairs;
        if (commit) {
            wanted_[static_cast<std::size_t>(x)] = y;
            wantedHalf_[static_cast<std::size_t>(x)] = 0;
            wanted_[static_cast<std::size_t>(y)] = x;
            wantedHalf_[static_cast<std::size_t>(y)] = 1;
        } else {
            claimed.push_back(x);
            claimed.push_back(y);
        }
        const Node& a = node(x);
        const Node& b = node(y);
        stack.push_back({a.a, b.a});
        if (a.b != a.a)
            stack.push_back({a.b, b.b});
    }
    return pairs;
}

bool Packer::seedPair(int lo, int hi)
{
    if (lo == hi || isLeaf(node(lo)) || isLeaf(node(hi)))
        return false;
    if (wanted_[static_cast<std::size_t>(lo)] >= 0 || wanted_[static_cast<std::size_t>(hi)] >= 0)
        return false;
    if (!compatible(lo, hi) || combined(lo, hi) || combined(hi, lo))
        return false;
    if (lo > hi ? dependsOn(lo, hi) : dependsOn(hi, lo))
        return false;
    wanted_[static_cast<std::size_t>(lo)] = hi;
    wantedHalf_[static_cast<std::size_t>(lo)] = 0;
    wanted_[static_cast<std::size_t>(hi)] = lo;
    wantedHalf_[static_cast<std::size_t>(hi)] = 1;
    return true;
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
    for (int id = 0; id < g_.size(); ++id) {
        if (!live[static_cast<std::size_t>(id)] || isLeaf(node(id)))
            continue;
        const auto& groups = g_.groupsOf(id);
        for (std::size_t d = 0; d < groups.size(); ++d) {
            members[groups[d]].push_back(id);
            depthOf.emplace(groups[d].first, static_cast<int>(d));
        }
    }
    std::vector<std::pair<int, int>> scopes;  // (depth, scope)
    for (const auto& [scope, depth] : depthOf)
        scopes.push_back({depth, scope});
    std::sort(scopes.begin(), scopes.end());
    for (const auto& entry : scopes) {
        const int scope = entry.second;
        for (int group = 0;; group += 2) {
            const auto lower = members.find({scope, group});
            const auto upper = members.find({scope, group + 1});
            if (lower == members.end() && upper == members.end() && !members.count({scope, group + 2}))
                break;
            if (lower == members.end() || upper == members.end())
                continue;
            if (!align) {
                const std::size_t count = std::min(lower->second.size(), upper->second.size());
                for (std::size_t k = 0; k < count; ++k)
                    seedPair(lower->second[k], upper->second[k]);
                continue;
            }
            // the steps of the two transforms lined up by the longest common
            // sequence of operations: a step that one of them has and the
            // other not (a twiddle of one lane, a part that is zero) does not
            // shift the pairs after it
            const std::vector<int>& l = lower->second;
            const std::vector<int>& u = upper->second;
            const std::size_t rows = l.size() + 1, cols = u.size() + 1;
            std::vector<int> common(rows * cols, 0);
            for (std::size_t i = l.size(); i-- > 0;)
                for (std::size_t j = u.size(); j-- > 0;)
                    common[i * cols + j] = compatible(l[i], u[j]) ? common[(i + 1) * cols + j + 1] + 1
                                                                   : std::max(common[(i + 1) * cols + j], common[i * cols + j + 1]);
            for (std::size_t i = 0, j = 0; i < l.size() && j < u.size();) {
                if (compatible(l[i], u[j]) && common[i * cols + j] == common[(i + 1) * cols + j + 1] + 1) {
                    seedPair(l[i], u[j]);
                    ++i;
                    ++j;
                } else if (common[(i + 1) * cols + j] >= common[i * cols + j + 1]) {
                    ++i;
                } else {
                    ++j;
                }
            }
        }
    }
}

int Packer::value256(int lo, int hi)
{
    auto found = wideOf_.find({lo, hi});
    if (found != wideOf_.end())
        return found->second;
    const Node& a = node(lo);
    const Node& b = node(hi);
    const Type type = wideType(a.type);
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
        const int wa = wideId_[static_cast<std::size_t>(lo)], wb = wideId_[static_cast<std::size_t>(hi)];
        const int ha = half_[static_cast<std::size_t>(lo)], hb = half_[static_cast<std::size_t>(hi)];
        Node p{Op::Permute2, type};
        p.a = wa;
        p.b = wb;
        p.index = ha | ((wa == wb ? hb : 2 + hb) << 4);
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
    assigned_[static_cast<std::size_t>(id)] = true;
    for (int user : users_[static_cast<std::size_t>(id)])
        if (--waiting_[static_cast<std::size_t>(user)] == 0)
            ready_.push_back(user);
}

void Packer::assignNarrow(int id)
{
    Node n = node(id);
    if (n.a >= 0)
        n.a = value128(n.a);
    if (n.b >= 0)
        n.b = value128(n.b);
    narrowId_[static_cast<std::size_t>(id)] = out_.graph.raw(n);
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
    n.type = wideType(x.type);
    if (x.a >= 0)
        n.a = value256(x.a, y.a);
    if (x.b >= 0)
        n.b = x.b == x.a ? n.a : value256(x.b, y.b);
    if (x.op != y.op)
        n.b = signFlip(n.b);
    const int id = out_.graph.raw(n);
    wideId_[static_cast<std::size_t>(lo)] = id;
    half_[static_cast<std::size_t>(lo)] = 0;
    wideId_[static_cast<std::size_t>(hi)] = id;
    half_[static_cast<std::size_t>(hi)] = 1;
    partner_[static_cast<std::size_t>(lo)] = hi;
    partner_[static_cast<std::size_t>(hi)] = lo;
    wideOf_[{lo, hi}] = id;
    ++out_.wideNodes;
    placed(lo);
    placed(hi);
}

PackedKernel Packer::run(const std::vector<VectorStore>& stores)
{
    std::vector<int> roots;
    for (const VectorStore& s : stores)
        roots.push_back(s.node);
    const std::vector<bool> live = g_.liveSet(roots);
    waiting_.assign(static_cast<std::size_t>(g_.size()), 0);
    for (int id = 0; id < g_.size(); ++id) {
        if (!live[static_cast<std::size_t>(id)])
            continue;
        const Node& n = node(id);
        if (n.op == Op::Input) {
            const int s = span_(n);
            if (s >= 0)
                inputAt_[s] = id;
        }
        if (isLeaf(n))
            continue;
        for (int operand : {n.a, n.b == n.a ? -1 : n.b})
            if (operand >= 0 && !isLeaf(node(operand))) {
                ++waiting_[static_cast<std::size_t>(id)];
                users_[static_cast<std::size_t>(operand)].push_back(id);
            }
        if (waiting_[static_cast<std::size_t>(id)] == 0)
            ready_.push_back(id);
    }
    // users of leaves, for the search of partners through inputs
    std::map<int, std::vector<int>> leafUsers;
    for (int id = 0; id < g_.size(); ++id) {
        if (!live[static_cast<std::size_t>(id)] || isLeaf(node(id)))
            continue;
        for (int operand : {node(id).a, node(id).b})
            if (operand >= 0 && node(operand).op == Op::Input)
                leafUsers[operand].push_back(id);
    }

    if (options_.seeds == Options::Neighbours) {
        for (std::size_t i = 0; i + 1 < stores.size(); ++i) {
            const VectorStore& a = stores[i];
            const VectorStore& b = stores[i + 1];
            const int lanes = node(a.node).type == Type::V2D ? 2 : 4;
            if (a.full && b.full && b.offset == a.offset + lanes) {
                seedFromOutputs(a.node, b.node, true);
                ++i;
            }
        }
    }
    if (options_.seeds == Options::Groups || options_.seeds == Options::AlignedGroups)
        seedFromGroups(live, options_.seeds == Options::AlignedGroups);
    if (options_.seeds == Options::Shapes) {
        // outputs paired by the size of the computation they share in shape,
        // neighbours first among equals
        std::vector<std::pair<int, std::pair<int, int>>> candidates;
        for (std::size_t i = 0; i < stores.size(); ++i)
            for (std::size_t j = i + 1; j < stores.size(); ++j)
                if (stores[i].full && stores[j].full) {
                    const int size = seedFromOutputs(stores[i].node, stores[j].node, false);
                    if (size > 0)
                        candidates.push_back({-size, {static_cast<int>(i), static_cast<int>(j)}});
                }
        std::stable_sort(candidates.begin(), candidates.end(),
                         [](const auto& a, const auto& b) { return a.first < b.first; });
        std::vector<bool> used(stores.size(), false);
        for (const auto& candidate : candidates) {
            const auto [i, j] = candidate.second;
            if (used[static_cast<std::size_t>(i)] || used[static_cast<std::size_t>(j)])
                continue;
            if (seedFromOutputs(stores[static_cast<std::size_t>(i)].node, stores[static_cast<std::size_t>(j)].node, true) > 0) {
                used[static_cast<std::size_t>(i)] = true;
                used[static_cast<std::size_t>(j)] = true;
            }
        }
    }

    while (!ready_.empty()) {
        std::sort(ready_.begin(), ready_.end());
        std::vector<bool> isReady(static_cast<std::size_t>(g_.size()), false);
        for (int id : ready_)
            isReady[static_cast<std::size_t>(id)] = true;
        const std::vector<int> round = ready_;
        ready_.clear();
        auto takeable = [&](int y) { return isReady[static_cast<std::size_t>(y)] && !assigned_[static_cast<std::size_t>(y)]; };
        bool made = false;
        auto wanted = [&](int x) { return wanted_[static_cast<std::size_t>(x)]; };
        // 0. the pairs that the outputs ask for, as soon as both halves can be computed
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
        // 1. partners whose operands already sit side by side
        for (int x : round) {
            if (assigned_[static_cast<std::size_t>(x)] || wanted(x) >= 0)
                continue;
            const Node& n = node(x);
            int bestLo = -1, bestHi = -1;
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
                        node(partner).op == Op::Input ? leafUsers[partner] : users_[static_cast<std::size_t>(partner)];
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
            if (bestLo >= 0) {
                assignWide(bestLo, bestHi);
                made = true;
            }
        }
        if (!made && options_.crossMoves) {
            // 2. the cheapest partner where moves across halves are needed
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
        }
        if (!made) {
            // 3. what found no partner stays 128-bit
            for (int x : round)
                if (!assigned_[static_cast<std::size_t>(x)] && wanted(x) < 0) {
                    assignNarrow(x);
                    made = true;
                }
        }
        if (!made) {
            // the wanted partners wait on each other: give up those pairs
            for (int x : round)
                if (!assigned_[static_cast<std::size_t>(x)]) {
                    const int y = wanted(x);
                    wanted_[static_cast<std::size_t>(y)] = -1;
                    wanted_[static_cast<std::size_t>(x)] = -1;
                    assignNarrow(x);
                }
        }
        for (int x : round)
            if (!assigned_[static_cast<std::size_t>(x)])
                ready_.push_back(x);
    }

    // the stores: neighbouring full stores whose values share a 256-bit node
    for (std::size_t i = 0; i < stores.size(); ++i) {
        const VectorStore& s = stores[i];
        if (i + 1 < stores.size()) {
            const VectorStore& t = stores[i + 1];
            const int lanes = node(s.node).type == Type::V2D ? 2 : 4;
            if (s.full && t.full && t.offset == s.offset + lanes && !isLeaf(node(s.node)) && !isLeaf(node(t.node)) &&
                inWide(s.node) && inWide(t.node) &&
                (wideOf_.count({s.node, t.node}) || extractCost(s.node) + extractCost(t.node) > 0)) {
                out_.stores.push_back({value256(s.node, t.node), true, static_cast<int>(i)});
                ++i;
                continue;
            }
        }
        out_.stores.push_back({value128(s.node), false, static_cast<int>(i)});
    }
    std::vector<int> packedRoots;
    for (const PackedStore& s : out_.stores)
        packedRoots.push_back(s.node);
    out_.cost = instructions(out_.graph, packedRoots) + static_cast<int>(out_.stores.size());
    std::vector<int> narrowRoots;
    for (const VectorStore& s : stores)
        narrowRoots.push_back(s.node);
    out_.narrowCost = instructions(g_, narrowRoots) + static_cast<int>(stores.size());
    return std::move(out_);
}

}  // namespace

int timeCost(const Graph& g, const std::vector<int>& roots, int stores)
{
    const std::vector<bool> live = g.liveSet(roots);
    int cost = stores;
    for (int id = 0; id < g.size(); ++id) {
        const Node& n = g.node(id);
        if (!live[static_cast<std::size_t>(id)] || n.op == Op::Const || n.op == Op::Param ||
            (n.op == Op::Extract && n.index == 0) || (n.op == Op::Join && n.b < 0))
            continue;
        if (n.op == Op::Join && g.node(n.b).op == Op::Input)
            cost += 3;
        else if (n.op == Op::Join || n.op == Op::Permute2 || n.op == Op::Extract)
            cost += 4;
        else
            cost += 2 + (n.op == Op::SwapNeg ? 2 : 0);
    }
    return cost;
}

PackedKernel packWide(const Graph& narrow, const std::vector<VectorStore>& stores, const InputSpan& span,
                      const PackOptions& options)
{
    Packer packer(narrow, span, options);
    return packer.run(stores);
}

PackedKernel packWideSearch(const Graph& narrow, const std::vector<VectorStore>& stores, const InputSpan& span,
                            PackOptions& chosen)
{
    PackedKernel best;
    for (Options::Seeds seeds : {Options::None, Options::Neighbours, Options::Shapes, Options::Groups,
                                  Options::AlignedGroups})
        for (int moves = 0; moves < 3; ++moves) {
            const Options options{seeds, moves > 0, moves > 1};
            PackedKernel packed = packWide(narrow, stores, span, options);
            if (best.stores.empty() || packed.cost < best.cost) {
                best = std::move(packed);
                chosen = options;
            }
        }
    return best;
}

const char* seedsName(PackOptions::Seeds seeds)
{
    static const char* const names[] = {"none", "neighbours", "shapes", "groups", "aligned-groups"};
    return names[seeds];
}

const char* movesName(const PackOptions& options)
{
    return options.lookahead ? "lookahead" : options.crossMoves ? "across" : "none";
}

bool parsePackOptions(const std::string& seeds, const std::string& moves, PackOptions& options)
{
    options = PackOptions{};
    bool known = false;
    for (int s = PackOptions::None; s <= PackOptions::AlignedGroups; ++s)
        if (seeds == seedsName(static_cast<PackOptions::Seeds>(s))) {
            options.seeds = static_cast<PackOptions::Seeds>(s);
            known = true;
        }
    options.crossMoves = moves == "across" || moves == "lookahead";
    options.lookahead = moves == "lookahead";
    return known && (options.crossMoves || moves == "none");
}

}  // namespace gen
