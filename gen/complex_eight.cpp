// The eight-lane form of the split Complex32 kernels on 256-bit vectors:
// each 8-float vector holds two vectors of the 128-bit kernel side by side,
// every sum made in the orientation the 128-bit graph gave it.
#include <array>

#include "complex_kernel.h"
#include "complex_lanes.h"
#include "lane_forms.h"

namespace gen {

// Inputs on which the 256-bit graph of a kernel must give the 128-bit graph's
// bits: zeros of both signs, impulses and inputs with exact zeros in their
// spectra, where a zero of the other sign shows, and random samples, where a
// rounding shows.
std::vector<std::vector<double>> checkInputs(int n)
{
    const std::size_t size = static_cast<std::size_t>(2 * n);
    std::vector<std::vector<double>> inputs = {std::vector<double>(size, 0.0), std::vector<double>(size, -0.0)};
    for (std::size_t i = 0; i < size; ++i) {
        inputs.emplace_back(size, -0.0);
        inputs.back()[i] = i % 3 == 0 ? -1.5f : 0.75f;
    }
    // constant and alternating inputs, then real, imaginary and even ones
    const float pattern[][2] = {{1.0f, 0.0f}, {0.75f, -1.5f}, {-0.0f, 2.0f}};
    for (const auto& p : pattern)
        for (bool alternating : {false, true}) {
            inputs.emplace_back(size);
            for (std::size_t i = 0; i < size; ++i)
                inputs.back()[i] = alternating && i % 4 >= 2 ? -p[i % 2] : p[i % 2];
        }
    unsigned state = 12345u + static_cast<unsigned>(n);
    auto next = [&] {
        state = state * 1664525u + 1013904223u;
        return static_cast<float>(static_cast<int>(state >> 8) - (1 << 23)) / static_cast<float>(1 << (state % 13));
    };
    for (int part = 0; part < 7; ++part) {
        // real, imaginary, real with x[i] = x[n - i], then four of random samples
        std::vector<double> x(size, part == 1 ? 0.0 : -0.0);
        for (std::size_t i = 0; i < size; ++i)
            if (part > 2 || i % 2 == (part == 1 ? 1u : 0u))
                x[i] = next();
        for (int i = 1; part == 2 && i < n; ++i)
            x[static_cast<std::size_t>(2 * (n - i))] = x[static_cast<std::size_t>(2 * i)];
        inputs.push_back(x);
    }
    return inputs;
}

namespace {

// Builds the eight-lane graph of a kernel into `graph` (each vector the two
// vectors of the 128-bit kernel side by side); returns its stores.  Outputs go
// out as four complex numbers per vector where their lanes can be gathered
// inside the halves: two neighbouring pairs in one 32-byte store, or two pairs
// from apart in two 16-byte stores; a pair that fits no other goes out alone.
std::vector<Store> buildEightLanes(Graph& graph, int n, const Tree& tree, int sign, bool batch)
{
    SplitBuilder builder(graph, n, 8, batch);
    const std::vector<SplitRef> out = builder.dft(tree, builder.inputs(), sign);
    const int factor = graph.param(Type::V8F, 0);
    // unit u: samples 2u and 2u + 1 (or 2u alone), in the lower half of a
    // vector and unit `hi` in its upper half (hi == u: the lower half alone)
    const std::size_t units = static_cast<std::size_t>(n + 1) / 2;
    auto full = [&](std::size_t u) { return static_cast<int>(2 * u + 1) < n; };
    auto lanesOf = [&](std::size_t u, std::size_t hi) {
        std::array<Lane, 8> lanes{};
        std::array<bool, 8> care{};
        for (std::size_t i = 0; i < (hi == u ? 4u : 8u); ++i) {
            const std::size_t unit = i < 4 ? u : hi, k = 2 * unit + (i % 4 >= 2 && full(unit) ? 1 : 0);
            lanes[i] = i % 2 == 0 ? out[k].re : out[k].im;
            care[i] = i % 4 < 2 || full(unit);
        }
        return std::make_pair(lanes, care);
    };

    std::vector<Store> stores;
    std::vector<bool> stored(units, false);
    for (std::size_t u = 0; u < units; ++u) {
        if (stored[u])
            continue;
        // the next pair first: one 32-byte store
        std::size_t partner = u;
        for (std::size_t v = u + 1; full(u) && partner == u && v < units; ++v) {
            const auto lanes = lanesOf(u, v);
            if (!stored[v] && full(v) && builder.inHalfPlaces(lanes.first, lanes.second))
                partner = v;
        }
        stored[u] = stored[partner] = true;
        const auto lanes = lanesOf(u, partner);
        const int node = graph.mul(builder.gatherLanes8(lanes.first, lanes.second), factor);
        const int lo = static_cast<int>(2 * u), hi = static_cast<int>(2 * partner);
        if (hi == lo + 2) {
            stores.push_back({Store::Wide, lo, node});
            continue;
        }
        stores.push_back({full(u) ? Store::Pair : Store::Low, lo, node, 0});
        if (hi != lo)
            stores.push_back({Store::Pair, hi, node, 1});
    }
    return stores;
}

// The lanes of each node that the outputs need, as masks.
std::vector<int> liveLanes(const Graph& graph, const OutputLanes& outputs)
{
    std::vector<int> live(static_cast<std::size_t>(graph.size()), 0);
    for (const auto& [node, lane] : outputs)
        if (node >= 0)
            live[static_cast<std::size_t>(node)] |= 1 << lane;
    for (int id = graph.size() - 1; id >= 0; --id) {
        const int mask = live[static_cast<std::size_t>(id)];
        const Node& n = graph.node(id);
        if (mask == 0 || n.op == Op::Const || n.op == Op::Input || n.op == Op::Param)
            continue;
        for (int lane = 0; lane < 8; ++lane) {
            if (!((mask >> lane) & 1))
                continue;
            if (selectsLanes(n.op)) {
                const LaneSource from = laneSource(n, lane);
                if (from.operand >= 0)
                    live[static_cast<std::size_t>(from.operand == 0 ? n.a : n.b)] |= 1 << from.lane;
            } else {
                for (int operand : {n.a, n.b})
                    if (operand >= 0)
                        live[static_cast<std::size_t>(operand)] |= 1 << lane;
            }
        }
    }
    return live;
}

}  // namespace

// Every sum in the orientation the 128-bit graph gave it, lane by lane.  A
// first build holds every lane to it; from the lanes of that graph that reach
// the outputs, a second build holds only those.  The second is taken where it
// gives the 128-bit graph's bits, else the first.
std::optional<WideBody> exactEightLanes(const Variant& v, int n, const NarrowKernel& k, bool batch)
{
    const TreePtr tree = complexRule(n, v.precision);
    const OutputLanes fixedLanes = outputLanes(k.stores, n);
    SumOrientations orientations(k.graph, rootsOf(k.stores));
    auto build = [&] {
        WideBody e;
        e.graph.steerSums(&orientations);
        e.stores = buildEightLanes(e.graph, n, *tree, v.inverse ? 1 : -1, batch);
        return e;
    };
    // the 128-bit graph's bits: every output lane of the same form (the same
    // operations up to exact rewrites), and on the check inputs the same value
    auto exact = [&](const WideBody& e) {
        const OutputLanes lanes = outputLanes(e.stores, n);
        LaneForms fixedForms(k.graph), forms(e.graph);
        for (std::size_t i = 0; i < lanes.size(); ++i) {
            const LaneForm f = fixedForms.form(fixedLanes[i].first, fixedLanes[i].second);
            const LaneForm g = forms.form(lanes[i].first, lanes[i].second);
            if (f.key != g.key || f.negative != g.negative)
                return false;
        }
        return sameOutputs(k.graph, fixedLanes, e.graph, lanes, checkInputs(n), 1.0f / static_cast<float>(n));
    };
    WideBody first = build();
    orientations.keepLanes(liveLanes(first.graph, outputLanes(first.stores, n)));
    WideBody second = build();
    const bool useSecond = exact(second);
    if (!useSecond && !exact(first))
        return std::nullopt;
    std::optional<WideBody> out = std::move(useSecond ? second : first);
    out->graph.steerSums(nullptr);
    const OpCounts counts = out->graph.count(rootsOf(out->stores));
    int stores[3] = {0, 0, 0};  // 32-byte stores, stores of a lower half, of an upper half
    for (const Store& store : out->stores)
        ++stores[store.half + 1];
    out->packing = std::string("; eight lanes for 256-bit vectors") + (batch ? ", four transforms batched" : "") +
                   ": " + std::to_string(counts.additions) + " additions, " + std::to_string(counts.multiplications) +
                   " multiplications, " + std::to_string(counts.exchanges) + " selections; outputs in " +
                   std::to_string(stores[0]) + " 32-byte stores, " + std::to_string(stores[2]) + " split and " +
                   std::to_string(stores[1] - stores[2]) + " single";
    return out;
}

}  // namespace gen
