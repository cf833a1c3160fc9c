// The explorer's search of the complex kernels' forms: the 128-bit flow of
// fewest instructions, then on a 256-bit target the body of least cost.
#include <algorithm>

#include "complex_kernel.h"

namespace gen {

namespace {

// Cost of a kernel for the choice of layout: every instruction counts one.
int cost(const OpCounts& c, int loadsAndStores)
{
    return c.additions + c.multiplications + c.exchanges + c.signedExchanges + c.signFlips + loadsAndStores;
}

// Of the 128-bit flows a kernel can take, the one with the fewest instructions.
Flow searchFlow(const Variant& v, int n)
{
    if (v.precision == Precision::Double)
        return Flow::Parts;
    if (!pairedLayout(v, n))
        return Flow::Scalar;
    Flow best = Flow::Pairs;
    int bestCost = 0;
    for (Flow flow : {Flow::Pairs, Flow::Joined, Flow::Split}) {
        const NarrowKernel k = buildNarrow(v, n, flow);
        const int c = cost(k.kernel.counts, k.kernel.memoryAccesses);
        if (flow == Flow::Pairs || c < bestCost) {
            best = flow;
            bestCost = c;
        }
    }
    return best;
}

// The body a 256-bit target gives a vector flow: of the 128-bit graph, its
// packing of fewest instructions and (split flows) the eight-lane layouts,
// the one of least time.
void searchWideBody(const Variant& v, int n, Flow flow, Form& form)
{
    const NarrowKernel k = buildNarrow(v, n, flow);
    PackOptions options;
    const PackedKernel packed = packWideSearch(k.graph, vectorStores(v, k.stores), inputSpan(v), options);
    const auto takePacked = [&] {
        form.set("body", "packed").set("seeds", seedsName(options.seeds)).set("moves", movesName(options));
    };
    form.set("body", "narrow");
    if (flow != Flow::Split) {
        if (packed.cost < packed.narrowCost)
            takePacked();
        return;
    }
    const int narrowTime = timeCost(k.graph, k.roots, static_cast<int>(k.stores.size()));
    const int packTime = packedTime(packed);
    const TreePtr tree = complexRule(n, v.precision);
    EightLanes eight;
    for (bool batch : {false, true}) {
        EightLanes candidate = exactEightLanes(n, *tree, v.inverse ? 1 : -1, batch, k.graph, k.roots,
                                               outputLanes(k.stores, n));
        if (candidate.graph && (!eight.graph || candidate.time < eight.time))
            eight = std::move(candidate);
    }
    if (eight.graph && eight.time < std::min(narrowTime, packTime))
        form.set("body", "eight").set("batch", eight.batch ? "yes" : "no");
    else if (packTime < narrowTime)
        takePacked();
}

}  // namespace

Form searchForm(const Variant& v, int n)
{
    const Flow flow = searchFlow(v, n);
    Form form;
    form.set("flow", flowNames[static_cast<int>(flow)]);
    if (target().wide() && flow != Flow::Scalar)
        searchWideBody(v, n, flow, form);
    else
        form.set("body", "narrow");
    return form;
}

}  // namespace gen
