// The real packing pass: the levels of the graph, the packs chosen on them
// (four at a time in the order of their operands, or greedily, each lane
// taking the operation that saves most; a pack only where it needs fewer
// instructions than its operations as scalars, its operands' gathering
// included) and the cost model that decides whether a kernel takes the body.
#include "real_pack.h"

#include <algorithm>
#include <climits>
#include <map>
#include <set>
#include <tuple>

namespace gen::real {

namespace packing {

bool isFactor(const Graph& g, int id)
{
    const Node& n = g.node(id);
    if (n.op == Op::Param)
        return true;
    return (n.op == Op::Widen || n.op == Op::Narrow) && isFactor(g, n.a);
}

Packer::Packer(const Graph& graph, const std::vector<int>& stores, const std::vector<int>& storeSlots, int inputLimit,
               Weights w)
    : g(graph), stores(stores), storeSlots(storeSlots), inputLimit(inputLimit), w(w), live(graph.liveSet(stores)),
      level(static_cast<std::size_t>(graph.size()), 0), position(static_cast<std::size_t>(graph.size()), INT_MAX),
      pack(static_cast<std::size_t>(graph.size()), -1), lane(static_cast<std::size_t>(graph.size()), -1),
      crossingMove(target().inOperations("move-across-halves"))
{
    const auto size = static_cast<std::size_t>(g.size());
    for (std::size_t id = 0; id < size; ++id) {
        const Node& n = g.node(static_cast<int>(id));
        if (!live[id] || n.op == Op::Input || n.op == Op::Param || n.op == Op::Const)
            continue;
        for (int o : {n.a, n.b})
            if (o >= 0)
                level[id] = std::max(level[id], level[static_cast<std::size_t>(o)] + 1);
        maxLevel = std::max(maxLevel, level[id]);
    }
    for (std::size_t i = 0; i < stores.size(); ++i)
        position[static_cast<std::size_t>(stores[i])] =
            std::min(position[static_cast<std::size_t>(stores[i])], storeSlots[i]);
    for (std::size_t id = size; id-- > 0;) {
        const Node& n = g.node(static_cast<int>(id));
        for (int o : {n.a, n.b})
            if (live[id] && o >= 0)
                position[static_cast<std::size_t>(o)] = std::min(position[static_cast<std::size_t>(o)], position[id]);
    }
}

int Packer::scalarCost() const
{
    int cost = static_cast<int>(stores.size());
    for (int id = 0; id < g.size(); ++id)
        if (live[static_cast<std::size_t>(id)] && g.node(id).op != Op::Const && !isFactor(g, id))
            cost += g.node(id).op == Op::Input ? 1 : w.of(g, id);
    return cost;
}

int Packer::moveWeight(int q) const
{
    for (int m : packs[static_cast<std::size_t>(q)])
        if (m >= 0)
            return g.node(m).type == Type::F64 ? crossingMove : 1;
    return 1;
}

Packer::Plan Packer::plan(const std::vector<int>& src) const
{
    std::vector<int> used;  // the operands of the used lanes
    std::set<int> sourcePacks;
    for (int s : src)
        if (s >= 0) {
            used.push_back(s);
            if (packOf(s) >= 0)
                sourcePacks.insert(packOf(s));
        }
    const auto all = [&](auto test) { return std::all_of(used.begin(), used.end(), test); };
    const auto allOf = [&](Op op) { return all([&](int s) { return g.node(s).op == op; }); };
    if (allOf(Op::Const))
        return {Gather::Lanes, 1};  // a constant vector, one load
    if (isFactor(g, used[0]) && all([&](int s) { return s == used[0]; }))
        return {Gather::Broadcast, 0};
    if (allOf(Op::Input)) {
        // one load where lane i reads x[base + i], within the kernel's input
        const auto first = std::find(src.begin(), src.end(), used[0]);
        const int base = g.node(used[0]).index - static_cast<int>(first - src.begin());
        bool consecutive = true;
        for (int i = 0; i < lanes; ++i) {
            const int s = src[static_cast<std::size_t>(i)];
            consecutive = consecutive && (s < 0 || g.node(s).index == base + i);
        }
        if (consecutive && base >= 0 && base + lanes <= inputLimit)
            return {Gather::Load, 1, base};
    }
    if (sourcePacks.size() <= 2 && all([&](int s) { return packOf(s) >= 0; })) {
        auto moved = [&](int q) { return permutation(q, src) == inPlace ? 0 : moveWeight(q); };
        const int p = *sourcePacks.begin(), q = *sourcePacks.rbegin();
        if (p == q)
            return {Gather::Permute, moved(p), p};  // no move where every lane is in place
        return {Gather::Blend, 1 + moved(p) + moved(q), p, q};
    }
    // lane by lane: an insertion each, after a move out of a packed lane or a load
    int cost = 0;
    for (int s : used)
        cost += 1 + extraction(s) + (packOf(s) < 0 && g.node(s).op == Op::Input ? 1 : 0);
    return {Gather::Lanes, cost};
}

int Packer::permutation(int q, const std::vector<int>& src) const
{
    int selector = 0;
    for (int i = 0; i < lanes; ++i) {
        const int s = src[static_cast<std::size_t>(i)];
        selector |= (s >= 0 && packOf(s) == q ? laneOf(s) : i) << (2 * i);
    }
    return selector;
}

std::vector<int> Packer::operandsOf(const std::vector<int>& members, bool second) const
{
    std::vector<int> src;
    for (int m : members)
        src.push_back(m < 0 ? -1 : (second ? g.node(m).b : g.node(m).a));
    return src;
}

int Packer::packedCost(const std::vector<int>& members) const
{
    // the members share their operation and type
    const int head = *std::max_element(members.begin(), members.end());
    int cost = w.of(g, head, true) + plan(operandsOf(members, false)).cost;
    if (g.node(head).b >= 0)
        cost += plan(operandsOf(members, true)).cost;
    return cost;
}

}  // namespace packing

using namespace packing;

namespace {

// Scalar operations (loads and stores included) from which a kernel counts
// as long.
constexpr int longKernel = 1000;

// a member and a lane of a chunk, and what the chunk saves with it there
struct Step {
    int saving = INT_MIN;
    std::size_t member = 0;
    int lane = -1;
};

// instructions that a chunk saves against scalar code (none below two members)
int saving(const Packer& pk, const std::vector<int>& chunk)
{
    int scalar = 0, count = 0;
    for (int m : chunk)
        if (m >= 0) {
            scalar += pk.w.of(pk.g, m) + pk.extraction(pk.g.node(m).a) + pk.extraction(pk.g.node(m).b);
            ++count;
        }
    return count < 2 ? 0 : scalar - pk.packedCost(chunk);
}

// Of the next few members of the sorted bucket that are not taken, the one
// and the free lane of the chunk that save most.
Step bestStep(const Packer& pk, const std::vector<int>& members, const std::vector<bool>& taken, std::size_t first,
              std::vector<int>& chunk)
{
    Step best;
    for (std::size_t c = first + 1; c < members.size() && c < first + 24; ++c) {
        if (taken[c])
            continue;
        for (int l = 0; l < lanes; ++l) {
            int& slot = chunk[static_cast<std::size_t>(l)];
            if (slot >= 0)
                continue;
            slot = members[c];
            const int sv = saving(pk, chunk);
            slot = -1;
            if (sv > best.saving)
                best = {sv, c, l};
        }
    }
    return best;
}

void addPack(Packer& pk, const std::vector<int>& chunk)
{
    const int index = static_cast<int>(pk.packs.size());
    pk.packs.push_back(chunk);
    for (int i = 0; i < lanes; ++i) {
        const int m = chunk[static_cast<std::size_t>(i)];
        if (m >= 0) {
            pk.pack[static_cast<std::size_t>(m)] = index;
            pk.lane[static_cast<std::size_t>(m)] = i;
        }
    }
}

// members whose operands sit side by side go into one vector in the order
// of those operands, so that gathering them is cheap
void sortByOperands(const Packer& pk, std::vector<int>& members)
{
    auto operandKey = [&](int o) {
        if (o < 0)
            return std::make_tuple(3, 0, 0);
        if (pk.packOf(o) >= 0)
            return std::make_tuple(0, pk.packOf(o), pk.laneOf(o));
        if (pk.g.node(o).op == Op::Input)
            return std::make_tuple(1, pk.g.node(o).index, 0);
        return std::make_tuple(2, pk.position[static_cast<std::size_t>(o)], o);
    };
    std::stable_sort(members.begin(), members.end(), [&](int x, int y) {
        return std::make_tuple(operandKey(pk.g.node(x).a), operandKey(pk.g.node(x).b)) <
               std::make_tuple(operandKey(pk.g.node(y).a), operandKey(pk.g.node(y).b));
    });
}

// chunks of four neighbours in the sorted order, each where it saves instructions
void packInOrder(Packer& pk, const std::vector<int>& members)
{
    for (std::size_t start = 0; start < members.size(); start += lanes) {
        std::vector<int> chunk(lanes, -1);
        for (std::size_t i = start; i < members.size() && i < start + lanes; ++i)
            chunk[i - start] = members[i];
        if (saving(pk, chunk) > 0)
            addPack(pk, chunk);
    }
}

// Chunks grown greedily, each seeded by the next member not taken, in the
// lane of its first operand where that is packed: all lanes filled step
// by step, each step adding the member and lane that save most, then cut
// back to the prefix of steps that saved most; dropped where none saved.
void packGreedily(Packer& pk, const std::vector<int>& members)
{
    std::vector<bool> taken(members.size(), false);
    for (std::size_t first = 0; first < members.size(); ++first) {
        if (taken[first])
            continue;
        taken[first] = true;
        std::vector<int> chunk(lanes, -1);
        chunk[static_cast<std::size_t>(std::max(pk.laneOf(pk.g.node(members[first]).a), 0))] = members[first];
        std::vector<Step> steps;
        int bestSaving = 0;
        std::size_t bestSteps = 0;
        for (int filled = 1; filled < lanes; ++filled) {
            const Step best = bestStep(pk, members, taken, first, chunk);
            if (best.lane < 0)
                break;
            chunk[static_cast<std::size_t>(best.lane)] = members[best.member];
            taken[best.member] = true;
            steps.push_back(best);
            if (best.saving > bestSaving) {
                bestSaving = best.saving;
                bestSteps = steps.size();
            }
        }
        for (std::size_t i = bestSteps; i < steps.size(); ++i) {
            taken[steps[i].member] = false;
            chunk[static_cast<std::size_t>(steps[i].lane)] = -1;
        }
        if (bestSteps != 0)
            addPack(pk, chunk);
    }
}

// Groups the live operations that a vector can do lane by lane into packs (in
// `pk`), in buckets of one level, operation, type and kind of product, each
// bucket packed on its own, level after level: the operands of a later level
// see where the earlier packs put them.
void choosePacks(Packer& pk, bool greedy)
{
    const Graph& g = pk.g;
    std::map<std::tuple<int, int, int, int>, std::vector<int>> buckets;
    for (int id = 0; id < g.size(); ++id) {
        const Node& n = g.node(id);
        const bool lanewise = n.op == Op::Add || n.op == Op::Sub || n.op == Op::Mul || n.op == Op::Neg ||
                              n.op == Op::ZeroSub || n.op == Op::Widen || n.op == Op::Narrow;
        if (!pk.live[static_cast<std::size_t>(id)] || !lanewise || isFactor(g, id))
            continue;
        int kind = 0;  // products: by a constant (1), by the scale factor (2), by a value (3)
        if (n.op == Op::Mul)
            kind = g.node(n.b).op == Op::Const ? 1 : isFactor(g, n.b) ? 2 : 3;
        buckets[{pk.level[static_cast<std::size_t>(id)], static_cast<int>(n.op), static_cast<int>(n.type), kind}]
            .push_back(id);
    }
    for (auto& [key, members] : buckets) {
        sortByOperands(pk, members);
        if (greedy)
            packGreedily(pk, members);
        else
            packInOrder(pk, members);
    }
}

}  // namespace

PackedBody packReal(const Graph& g, const std::vector<int>& stores, const std::vector<int>& storeSlots,
                    int inputLimit, const RealPacking& how)
{
    Packer pk(g, stores, storeSlots, inputLimit, {how.conversion, target().inOperations("conversion")});
    choosePacks(pk, how.greedy);
    PackedBody body = pk.packs.empty() ? PackedBody{} : printPacked(pk);
    body.scalarCost = pk.scalarCost();
    return body;
}

bool searchRealPacking(const Graph& g, const std::vector<int>& stores, const std::vector<int>& storeSlots,
                       int inputLimit, RealPacking& chosen)
{
    const int conversion = Packer(g, stores, storeSlots, inputLimit, {1, 1}).scalarCost() >= longKernel ? 3 : 2;
    int best = INT_MAX;
    for (bool greedy : {false, true}) {
        const PackedBody body = packReal(g, stores, storeSlots, inputLimit, {greedy, conversion});
        if (!body.text.empty() && body.cost < std::min(best, body.scalarCost)) {
            best = body.cost;
            chosen = {greedy, conversion};
        }
    }
    return best != INT_MAX;
}

}  // namespace gen::real
