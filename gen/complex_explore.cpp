// The explorer's search of the complex kernels' forms, by the cost model of
// the target's description: on the baseline the 128-bit flow of least cost,
// which every other target takes; on a 256-bit target the body of least
// time.
#include "complex_kernel.h"

namespace gen {

namespace {

// The time of a 256-bit body (the nodes its stores need and the stores), as
// the target's cost model weighs them: an operation (an arithmetic
// instruction, a selection inside the halves, a load), a move across halves,
// a load into an upper half, a store; a multiplication by i is two
// operations.
int timeCost(const Graph& g, const std::vector<Store>& stores)
{
    const Target& t = target();
    const std::vector<bool> live = g.liveSet(rootsOf(stores));
    int cost = static_cast<int>(stores.size()) * t.weight("store");
    for (int id = 0; id < g.size(); ++id) {
        const Node& n = g.node(id);
        if (!live[static_cast<std::size_t>(id)] || n.op == Op::Const || n.op == Op::Param ||
            (n.op == Op::Extract && n.index == 0) || (n.op == Op::Join && n.b < 0))
            continue;
        if (n.op == Op::Join && g.node(n.b).op == Op::Input)
            cost += t.weight("upper-half-load");
        else if (n.op == Op::Join || n.op == Op::Permute2 || n.op == Op::Extract)
            cost += t.weight("move-across-halves");
        else
            cost += t.weight("operation") * (n.op == Op::SwapNeg ? 2 : 1);
    }
    return cost;
}

// Of the 128-bit flows a kernel can take, the one of least cost, as the
// target's cost model weighs its instructions: arithmetic (sign changes
// included), selections and exchanges, loads and stores.
Flow searchFlow(const Variant& v, int n)
{
    if (v.precision == Precision::Double)
        return Flow::Parts;
    if (n < 6)
        return Flow::Scalar;
    const Target& t = target();
    Flow best = Flow::Pairs;
    int bestCost = 0;
    for (Flow flow : {Flow::Pairs, Flow::Joined, Flow::Split}) {
        const NarrowKernel k = buildNarrow(v, n, flow);
        const OpCounts& c = k.kernel.counts;
        int memoryAccesses = static_cast<int>(k.stores.size());  // the stores and the loads the outputs need
        const std::vector<bool> live = k.graph.liveSet(rootsOf(k.stores));
        for (int id = 0; id < k.graph.size(); ++id)
            memoryAccesses += live[static_cast<std::size_t>(id)] && k.graph.node(id).op == Op::Input ? 1 : 0;
        const int cost = t.weight("arithmetic") * (c.additions + c.multiplications + c.signFlips) +
                         t.weight("selection") * (c.exchanges + c.signedExchanges) +
                         t.weight("load-store") * memoryAccesses;
        if (flow == Flow::Pairs || cost < bestCost) {
            best = flow;
            bestCost = cost;
        }
    }
    return best;
}

}  // namespace

Form searchForm(const Variant& v, int n)
{
    // the flow fixes the bits: the baseline chooses it, the others take it
    const std::string& baseline = target().baseline;
    const Flow flow = baseline.empty() || baseline == target().name ? searchFlow(v, n)
                                                                      : flowOf(formOn(v.kernelName(n), baseline));
    const Form form = Form().set("flow", flowNames[static_cast<int>(flow)]);
    Form chosen = Form(form).set("body", "narrow");
    if (!target().wide() || flow == Flow::Scalar)
        return chosen;
    // A 256-bit target gives a vector flow the body of least time: of the
    // 128-bit graph as it stands, its packings and (split flows) the
    // eight-lane layouts, the first that takes it.
    const NarrowKernel k = buildNarrow(v, n, flow);
    int best = timeCost(k.graph, k.stores);
    auto consider = [&](const WideBody& body, const Form& as) {
        const int time = timeCost(body.graph, body.stores);
        if (time < best) {
            best = time;
            chosen = as;
        }
    };
    for (int seeds = PackOptions::None; seeds <= PackOptions::AlignedGroups; ++seeds)
        for (int moves = PackOptions::NoMoves; moves <= PackOptions::Lookahead; ++moves)
            consider(packNarrow(v, k, {static_cast<PackOptions::Seeds>(seeds), static_cast<PackOptions::Moves>(moves)}),
                     Form(form).set("body", "packed").set("seeds", seedsNames[seeds]).set("moves", movesNames[moves]));
    for (int batch = 0; flow == Flow::Split && batch < 2; ++batch)
        if (const std::optional<WideBody> eight = exactEightLanes(v, n, k, batch == 1))
            consider(*eight, Form(form).set("body", "eight").set("batch", batch == 1 ? "yes" : "no"));
    return chosen;
}

}  // namespace gen
