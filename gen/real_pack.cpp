// The real packing pass: for each way of packing, the levels of the graph,
// the packs chosen on them and the packed body printed from them, with the
// cost model that decides whether a kernel takes that body.  The choice of
// packs (real_pack_choice.cpp) and the printing (real_pack_print.cpp) count
// an operand's gathering by the same plan, made here.
#include "real_pack.h"

#include <algorithm>
#include <climits>
#include <set>

#include "real_packer.h"

namespace gen::real {

namespace packing {

bool isFactor(const Graph& g, int id)
{
    const Node& n = g.node(id);
    if (n.op == Op::Param)
        return true;
    return (n.op == Op::Widen || n.op == Op::Narrow) && isFactor(g, n.a);
}

bool packable(const Graph& g, int id)
{
    const Node& n = g.node(id);
    switch (n.op) {
    case Op::Add:
    case Op::Sub:
    case Op::Mul:
    case Op::Neg:
    case Op::ZeroSub:
    case Op::Narrow: return !isFactor(g, id);
    case Op::Widen: return !isFactor(g, id);
    default: return false;
    }
}

int Packer::moveWeight(int q) const
{
    for (int m : packs[static_cast<std::size_t>(q)])
        if (m >= 0)
            return g.node(m).type == Type::F64 ? crossingMove : 1;
    return 1;
}

Source Packer::sourceOf(int id) const
{
    if (pack[static_cast<std::size_t>(id)] >= 0)
        return Source::Packed;
    const Node& n = g.node(id);
    if (n.op == Op::Input)
        return Source::Input;
    if (n.op == Op::Const)
        return Source::Const;
    if (isFactor(g, id))
        return Source::Factor;
    return Source::Scalar;
}

Packer::Plan Packer::plan(const std::vector<int>& src) const
{
    std::vector<int> real;
    for (int s : src)
        if (s >= 0)
            real.push_back(s);
    bool allConst = true, allSameFactor = true, allInputs = true;
    std::set<int> sourcePacks;
    bool allPacked = true;
    for (int s : real) {
        const Source k = sourceOf(s);
        allConst = allConst && k == Source::Const;
        allSameFactor = allSameFactor && k == Source::Factor && s == real[0];
        allInputs = allInputs && k == Source::Input;
        allPacked = allPacked && k == Source::Packed;
        if (k == Source::Packed)
            sourcePacks.insert(pack[static_cast<std::size_t>(s)]);
    }
    if (allConst)
        return {Gather::Constant, 1};
    if (allSameFactor)
        return {Gather::Broadcast, 0};
    if (allInputs) {
        int base = INT_MIN;
        bool consecutive = true;
        for (int i = 0; i < lanes && consecutive; ++i) {
            const int s = src[static_cast<std::size_t>(i)];
            if (s < 0)
                continue;
            const int b = g.node(s).index - i;
            if (base == INT_MIN)
                base = b;
            consecutive = b == base;
        }
        if (consecutive && base >= 0 && base + lanes <= inputLimit)
            return {Gather::Load, 1, base};
    }
    if (allPacked && sourcePacks.size() <= 2) {
        const int p = *sourcePacks.begin();
        auto moved = [&](int q) {
            for (int i = 0; i < lanes; ++i) {
                const int s = src[static_cast<std::size_t>(i)];
                if (s >= 0 && pack[static_cast<std::size_t>(s)] == q && lane[static_cast<std::size_t>(s)] != i)
                    return moveWeight(q);
            }
            return 0;
        };
        if (sourcePacks.size() == 1)
            return moved(p) ? Plan{Gather::Permute, moved(p), p} : Plan{Gather::InPlace, 0, p};
        const int q = *sourcePacks.rbegin();
        return {Gather::Blend, 1 + moved(p) + moved(q), p, q};
    }
    int cost = 0;
    for (int s : real) {
        const Source k = sourceOf(s);
        if (k == Source::Packed)
            cost += lane[static_cast<std::size_t>(s)] == 0 ? 0 : moveWeight(pack[static_cast<std::size_t>(s)]);
        else if (k == Source::Input)
            cost += 1;
        cost += 1;  // the insertion
    }
    return {Gather::Lanes, cost};
}

std::vector<int> Packer::operandsOf(const std::vector<int>& members, bool second) const
{
    std::vector<int> src;
    for (int m : members)
        src.push_back(m < 0 ? -1 : (second ? g.node(m).b : g.node(m).a));
    return src;
}

int scalarBodyCost(const Graph& g, const std::vector<int>& stores, const std::vector<bool>& live, const Weights& w)
{
    int cost = static_cast<int>(stores.size());
    for (int id = 0; id < g.size(); ++id)
        if (live[static_cast<std::size_t>(id)] && g.node(id).op != Op::Const && g.node(id).op != Op::Param &&
            !isFactor(g, id))
            cost += g.node(id).op == Op::Input ? 1 : w.of(g, id);
    return cost;
}

}  // namespace packing

using namespace packing;

namespace {

// One packing: chunks of neighbours in the sorted order of each bucket, or
// chunks grown greedily by the instructions they save.
PackedBody packWith(const Graph& g, const std::vector<int>& stores, const std::vector<int>& storeSlots,
                    int inputLimit, bool greedy, const Weights& w)
{
    PackedBody result;
    const std::vector<bool> live = g.liveSet(stores);
    const Levels levels = levelsOf(g, live, stores, storeSlots);
    result.scalarCost = scalarBodyCost(g, stores, live, w);

    Packer pk(g, inputLimit);
    choosePacks(pk, levels, live, greedy, w);
    if (pk.packs.empty())
        return result;

    const PrintedBody printed = printPacked(pk, levels, live, stores, storeSlots, w);
    result.cost = printed.cost;
    result.text = printed.text;
    return result;
}

}  // namespace

PackedBody packReal(const Graph& g, const std::vector<int>& stores, const std::vector<int>& storeSlots,
                    int inputLimit, const RealPacking& how)
{
    return packWith(g, stores, storeSlots, inputLimit, how.greedy, Weights{how.conversion, target().inOperations("conversion")});
}

bool searchRealPacking(const Graph& g, const std::vector<int>& stores, const std::vector<int>& storeSlots,
                       int inputLimit, RealPacking& chosen)
{
    const int conversion = scalarBodyCost(g, stores, g.liveSet(stores), Weights{1, 1}) >= longKernel ? 3 : 2;
    bool found = false;
    int best = 0;
    for (bool greedy : {false, true}) {
        const PackedBody body = packReal(g, stores, storeSlots, inputLimit, {greedy, conversion});
        if (!body.text.empty() && body.cost < body.scalarCost && (!found || body.cost < best)) {
            found = true;
            best = body.cost;
            chosen = {greedy, conversion};
        }
    }
    return found;
}

}  // namespace gen::real
