// The real packing pass: the levels of the graph, the packs chosen on them
// and the search that decides whether a kernel takes the packed body.
#include "real_pack.h"

#include <algorithm>
#include <climits>
#include <map>
#include <tuple>

namespace gen::real {

namespace packing {

bool isFactor(const Graph& g, int id)
{
    const Node& n = g.node(id);
    return n.op == Op::Param || ((n.op == Op::Widen || n.op == Op::Narrow) && isFactor(g, n.a));
}

Packer::Packer(const Graph& graph, const std::vector<int>& stores, const std::vector<int>& storeSlots, int inputLimit,
               int scalarConversion)
    : g(graph), stores(stores), storeSlots(storeSlots), inputLimit(inputLimit), live(graph.liveSet(stores)),
      level(static_cast<std::size_t>(graph.size()), 0), position(static_cast<std::size_t>(graph.size()), INT_MAX),
      pack(static_cast<std::size_t>(graph.size()), -1), lane(static_cast<std::size_t>(graph.size()), -1),
      crossingMove(target().inOperations("move-across-halves")), scalarConversion(scalarConversion),
      vectorConversion(target().inOperations("conversion")), scalarCost(static_cast<int>(stores.size()))
{
    const auto size = static_cast<std::size_t>(g.size());
    for (std::size_t id = 0; id < size; ++id) {
        const Node& n = g.node(static_cast<int>(id));
        for (int o : {n.a, n.b})  // loads, constants and the scale factor have none
            if (live[id] && o >= 0)
                level[id] = std::max(level[id], level[static_cast<std::size_t>(o)] + 1);
        maxLevel = std::max(maxLevel, level[id]);
        if (live[id] && n.op != Op::Const && !isFactor(g, static_cast<int>(id)))
            scalarCost += weight(static_cast<int>(id));  // a load counts one
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

}  // namespace packing

using namespace packing;

namespace {

// Scalar operations (loads and stores included) from which a kernel counts as long.
constexpr int longKernel = 1000;

// instructions that a chunk saves against scalar code (none below two members)
int saving(const Packer& pk, const std::vector<int>& chunk)
{
    int scalar = 0, count = 0;
    for (int m : chunk)
        if (m >= 0) {
            scalar += pk.weight(m) + pk.extraction(pk.g.node(m).a) + pk.extraction(pk.g.node(m).b);
            ++count;
        }
    return count < 2 ? 0 : scalar - pk.packed(chunk, false).cost;
}

void addPack(Packer& pk, const std::vector<int>& chunk)
{
    for (int i = 0; i < lanes; ++i) {
        const int m = chunk[static_cast<std::size_t>(i)];
        if (m >= 0) {
            pk.pack[static_cast<std::size_t>(m)] = static_cast<int>(pk.packs.size());
            pk.lane[static_cast<std::size_t>(m)] = i;
        }
    }
    pk.packs.push_back(chunk);
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
        std::vector<int> chunk(lanes, -1), bestChunk;
        chunk[static_cast<std::size_t>(std::max(pk.laneOf(pk.g.node(members[first]).a), 0))] = members[first];
        std::vector<std::size_t> added;  // the members added, step by step
        int bestSaving = 0;
        for (int filled = 1; filled < lanes; ++filled) {
            // of the next few members not taken, the one and the free lane
            // that save most
            struct {
                int saving = INT_MIN, lane = -1;
                std::size_t member = 0;
            } step;
            for (std::size_t c = first + 1; c < members.size() && c < first + 24; ++c)
                for (int l = 0; l < lanes && !taken[c]; ++l) {
                    int& slot = chunk[static_cast<std::size_t>(l)];
                    if (slot >= 0)
                        continue;
                    slot = members[c];
                    const int sv = saving(pk, chunk);
                    slot = -1;
                    if (sv > step.saving)
                        step = {sv, l, c};
                }
            if (step.lane < 0)
                break;
            chunk[static_cast<std::size_t>(step.lane)] = members[step.member];
            taken[step.member] = true;
            added.push_back(step.member);
            if (step.saving > bestSaving) {
                bestSaving = step.saving;
                bestChunk = chunk;
            }
        }
        // the members of the steps cut back are free again
        for (std::size_t c : added)
            if (std::find(bestChunk.begin(), bestChunk.end(), members[c]) == bestChunk.end())
                taken[c] = false;
        if (!bestChunk.empty())
            addPack(pk, bestChunk);
    }
}

// Groups the live operations (a vector does every one of a real flow lane by
// lane) into packs (in `pk`), in buckets of one level, operation, type and
// kind of product, each bucket packed on its own, level after level: the
// operands of a later level see where the earlier packs put them.
void choosePacks(Packer& pk, bool greedy)
{
    const Graph& g = pk.g;
    std::map<std::tuple<int, int, int, int>, std::vector<int>> buckets;
    for (int id = 0; id < g.size(); ++id) {
        const Node& n = g.node(id);
        if (!pk.live[static_cast<std::size_t>(id)] || n.op == Op::Input || n.op == Op::Const || isFactor(g, id))
            continue;
        // products: by a constant (1), by the scale factor (2), by a value (3)
        const int kind = n.op != Op::Mul ? 0 : g.node(n.b).op == Op::Const ? 1 : isFactor(g, n.b) ? 2 : 3;
        buckets[{pk.levelOf(id), static_cast<int>(n.op), static_cast<int>(n.type), kind}].push_back(id);
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
    Packer pk(g, stores, storeSlots, inputLimit, how.conversion);
    choosePacks(pk, how.greedy);
    PackedBody body = pk.packs.empty() ? PackedBody{} : printPacked(pk);
    body.scalarCost = pk.scalarCost;
    return body;
}

bool searchRealPacking(const Graph& g, const std::vector<int>& stores, const std::vector<int>& storeSlots,
                       int inputLimit, RealPacking& chosen)
{
    const int conversion = Packer(g, stores, storeSlots, inputLimit, 1).scalarCost >= longKernel ? 3 : 2;
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
