// The choice of packs of the real packing pass: the levels of the graph, and
// on each level the operations of one kind grouped into packs of up to four
// lanes, either four at a time in the order of their operands or greedily,
// each lane taking the operation that saves most.  A pack is made only where
// it needs fewer instructions than its operations as scalars, its operands'
// gathering included, as the plans of real_pack.cpp count it.
#include <algorithm>
#include <climits>
#include <map>
#include <tuple>

#include "real_packer.h"

namespace gen::real::packing {

Levels levelsOf(const Graph& g, const std::vector<bool>& live, const std::vector<int>& stores,
                const std::vector<int>& storeSlots)
{
    const int size = g.size();
    Levels levels;
    std::vector<int>& level = levels.level;
    std::vector<int>& position = levels.position;
    level.assign(static_cast<std::size_t>(size), 0);
    position.assign(static_cast<std::size_t>(size), INT_MAX);
    int& maxLevel = levels.maxLevel;
    for (int id = 0; id < size; ++id) {
        if (!live[static_cast<std::size_t>(id)])
            continue;
        const Node& n = g.node(id);
        if (n.op == Op::Input || n.op == Op::Param || n.op == Op::Const)
            continue;
        int l = 0;
        for (int o : {n.a, n.b})
            if (o >= 0)
                l = std::max(l, level[static_cast<std::size_t>(o)]);
        level[static_cast<std::size_t>(id)] = l + 1;
        maxLevel = std::max(maxLevel, l + 1);
    }
    for (std::size_t i = 0; i < stores.size(); ++i)
        position[static_cast<std::size_t>(stores[i])] =
            std::min(position[static_cast<std::size_t>(stores[i])], storeSlots[i]);
    for (int id = size - 1; id >= 0; --id) {
        if (!live[static_cast<std::size_t>(id)])
            continue;
        const Node& n = g.node(id);
        for (int o : {n.a, n.b})
            if (o >= 0)
                position[static_cast<std::size_t>(o)] =
                    std::min(position[static_cast<std::size_t>(o)], position[static_cast<std::size_t>(id)]);
    }
    return levels;
}

namespace {

// The packs of one level after another, made into the packer as they are
// chosen: the operands of a later level see where the earlier packs put them.
class PackChooser {
public:
    PackChooser(Packer& pk, const Levels& levels, const Weights& w) : pk_(pk), g_(pk.g), levels_(levels), w_(w) {}
    void packLevel(const std::vector<int>& ids, bool greedy);

private:
    // a member and a lane of a chunk, and what the chunk saves with it there
    struct Step {
        int saving = INT_MIN;
        int member = -1;
        int lane = -1;
    };

    int extraCost(int id) const;
    void sortByOperands(std::vector<int>& members) const;
    void packInOrder(const std::vector<int>& members);
    int saving(const std::vector<int>& chunk) const;
    Step bestStep(const std::vector<int>& members, const std::vector<bool>& taken, std::size_t first,
                  std::vector<int>& chunk) const;
    bool growChunk(const std::vector<int>& members, std::vector<bool>& taken, std::size_t first,
                   std::vector<int>& chunk) const;
    void packGreedily(const std::vector<int>& members);
    void addPack(const std::vector<int>& chunk);

    Packer& pk_;
    const Graph& g_;
    const Levels& levels_;
    const Weights& w_;
};

// scalar cost of reading a node's operands
int PackChooser::extraCost(int id) const
{
    int c = 0;
    const Node& n = g_.node(id);
    for (int o : {n.a, n.b})
        if (o >= 0 && pk_.pack[static_cast<std::size_t>(o)] >= 0 && pk_.lane[static_cast<std::size_t>(o)] != 0)
            c += pk_.moveWeight(pk_.pack[static_cast<std::size_t>(o)]);
    return c;
}

// members whose operands sit side by side go into one vector in the order of
// those operands, so that gathering them is cheap
void PackChooser::sortByOperands(std::vector<int>& members) const
{
    auto operandKey = [&](int o) {
        if (o < 0)
            return std::make_tuple(3, 0, 0);
        if (pk_.pack[static_cast<std::size_t>(o)] >= 0)
            return std::make_tuple(0, pk_.pack[static_cast<std::size_t>(o)], pk_.lane[static_cast<std::size_t>(o)]);
        if (g_.node(o).op == Op::Input)
            return std::make_tuple(1, g_.node(o).index, 0);
        return std::make_tuple(2, levels_.position[static_cast<std::size_t>(o)], o);
    };
    std::stable_sort(members.begin(), members.end(), [&](int x, int y) {
        return std::make_tuple(operandKey(g_.node(x).a), operandKey(g_.node(x).b)) <
               std::make_tuple(operandKey(g_.node(y).a), operandKey(g_.node(y).b));
    });
}

void PackChooser::addPack(const std::vector<int>& chunk)
{
    const int index = static_cast<int>(pk_.packs.size());
    pk_.packs.push_back(chunk);
    for (int i = 0; i < lanes; ++i)
        if (chunk[static_cast<std::size_t>(i)] >= 0) {
            pk_.pack[static_cast<std::size_t>(chunk[static_cast<std::size_t>(i)])] = index;
            pk_.lane[static_cast<std::size_t>(chunk[static_cast<std::size_t>(i)])] = i;
        }
}

// chunks of four neighbours in the sorted order, each where it saves instructions
void PackChooser::packInOrder(const std::vector<int>& members)
{
    for (std::size_t start = 0; start < members.size(); start += lanes) {
        std::vector<int> chunk(lanes, -1);
        int count = 0;
        for (std::size_t i = start; i < members.size() && i < start + lanes; ++i)
            chunk[static_cast<std::size_t>(count++)] = members[i];
        int scalar = 0;
        for (int m : chunk)
            if (m >= 0)
                scalar += w_.of(g_, m) + extraCost(m);
        int packed = w_.of(g_, chunk[0], true) + pk_.plan(pk_.operandsOf(chunk, false)).cost;
        if (g_.node(chunk[0]).b >= 0)
            packed += pk_.plan(pk_.operandsOf(chunk, true)).cost;
        if (count < 2 || packed >= scalar)
            continue;
        addPack(chunk);
    }
}

// instructions that a chunk saves against scalar code (none below two members)
int PackChooser::saving(const std::vector<int>& chunk) const
{
    int scalar = 0, count = 0, head = -1;
    for (int m : chunk)
        if (m >= 0) {
            scalar += w_.of(g_, m) + extraCost(m);
            ++count;
            head = m;
        }
    if (count < 2)
        return 0;
    int packed = w_.of(g_, head, true) + pk_.plan(pk_.operandsOf(chunk, false)).cost;
    if (g_.node(head).b >= 0)
        packed += pk_.plan(pk_.operandsOf(chunk, true)).cost;
    return scalar - packed;
}

// Of the next few members of the sorted bucket that are not taken, the one
// and the free lane of the chunk that save most.
PackChooser::Step PackChooser::bestStep(const std::vector<int>& members, const std::vector<bool>& taken,
                                        std::size_t first, std::vector<int>& chunk) const
{
    Step best;
    for (std::size_t c = first + 1; c < members.size() && c < first + 24; ++c) {
        if (taken[c])
            continue;
        for (int l = 0; l < lanes; ++l) {
            if (chunk[static_cast<std::size_t>(l)] >= 0)
                continue;
            chunk[static_cast<std::size_t>(l)] = members[c];
            const int sv = saving(chunk);
            chunk[static_cast<std::size_t>(l)] = -1;
            if (sv > best.saving) {
                best.saving = sv;
                best.member = static_cast<int>(c);
                best.lane = l;
            }
        }
    }
    return best;
}

// The chunk seeded by members[first] (taken), in the lane of its first
// operand where that is packed: all lanes filled step by step, then cut back
// to the prefix of steps that saved most.  False where no step saved.
bool PackChooser::growChunk(const std::vector<int>& members, std::vector<bool>& taken, std::size_t first,
                            std::vector<int>& chunk) const
{
    const int seed = members[first];
    const int seedSource = g_.node(seed).a;
    const int seedLane = seedSource >= 0 && pk_.pack[static_cast<std::size_t>(seedSource)] >= 0
                             ? pk_.lane[static_cast<std::size_t>(seedSource)]
                             : 0;
    chunk[static_cast<std::size_t>(seedLane)] = seed;
    std::vector<std::pair<std::size_t, int>> steps;  // (member, lane)
    int bestSaving = 0;
    std::size_t bestSteps = 0;
    for (int filled = 1; filled < lanes; ++filled) {
        const Step best = bestStep(members, taken, first, chunk);
        if (best.member < 0)
            break;
        chunk[static_cast<std::size_t>(best.lane)] = members[static_cast<std::size_t>(best.member)];
        taken[static_cast<std::size_t>(best.member)] = true;
        steps.push_back({static_cast<std::size_t>(best.member), best.lane});
        if (best.saving > bestSaving) {
            bestSaving = best.saving;
            bestSteps = steps.size();
        }
    }
    for (std::size_t i = bestSteps; i < steps.size(); ++i) {
        taken[steps[i].first] = false;
        chunk[static_cast<std::size_t>(steps[i].second)] = -1;
    }
    return bestSteps != 0;
}

// chunks grow greedily: each step adds the member and lane that save the most
// instructions against scalar code, looking at the next few members of the
// sorted bucket only
void PackChooser::packGreedily(const std::vector<int>& members)
{
    std::vector<bool> taken(members.size(), false);
    for (std::size_t first = 0; first < members.size(); ++first) {
        if (taken[first])
            continue;
        taken[first] = true;
        std::vector<int> chunk(lanes, -1);
        if (!growChunk(members, taken, first, chunk))
            continue;
        addPack(chunk);
    }
}

// The packable operations of one level, in buckets of one operation, type
// and kind of product, each bucket packed on its own.
void PackChooser::packLevel(const std::vector<int>& ids, bool greedy)
{
    std::map<std::tuple<int, int, int>, std::vector<int>> buckets;
    for (int id : ids) {
        const Node& n = g_.node(id);
        int kind = 0;  // products: by a constant (1), by the scale factor (2), by a value (3)
        if (n.op == Op::Mul)
            kind = g_.node(n.b).op == Op::Const ? 1 : isFactor(g_, n.b) ? 2 : 3;
        buckets[{static_cast<int>(n.op), static_cast<int>(n.type), kind}].push_back(id);
    }
    for (auto& [key, members] : buckets) {
        sortByOperands(members);
        if (!greedy)
            packInOrder(members);
        else
            packGreedily(members);
    }
}

}  // namespace

void choosePacks(Packer& pk, const Levels& levels, const std::vector<bool>& live, bool greedy, const Weights& w)
{
    const Graph& g = pk.g;
    std::vector<std::vector<int>> byLevel(static_cast<std::size_t>(levels.maxLevel + 1));
    for (int id = 0; id < g.size(); ++id)
        if (live[static_cast<std::size_t>(id)] && packable(g, id))
            byLevel[static_cast<std::size_t>(levels.level[static_cast<std::size_t>(id)])].push_back(id);
    PackChooser chooser(pk, levels, w);
    for (int l = 1; l <= levels.maxLevel; ++l)
        chooser.packLevel(byLevel[static_cast<std::size_t>(l)], greedy);
}

}  // namespace gen::real::packing
