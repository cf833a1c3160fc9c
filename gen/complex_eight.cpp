// The eight-lane form of the split Complex32 kernels on 256-bit vectors:
// each 8-float vector holds two vectors of the 128-bit kernel side by side,
// every sum made in the orientation the 128-bit graph gave it.
#include <array>
#include <sstream>

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
    std::vector<std::vector<double>> inputs = {std::vector<double>(2 * n, 0.0), std::vector<double>(2 * n, -0.0)};
    for (int i = 0; i < 2 * n; ++i) {
        std::vector<double> impulse(2 * n, -0.0);
        impulse[static_cast<std::size_t>(i)] = i % 3 == 0 ? -1.5f : 0.75f;
        inputs.push_back(impulse);
    }
    // constant, alternating, real, imaginary and even inputs
    const float pattern[][2] = {{1.0f, 0.0f}, {0.75f, -1.5f}, {-0.0f, 2.0f}};
    for (const auto& p : pattern) {
        std::vector<double> constant(2 * n), alternating(2 * n);
        for (std::size_t i = 0; i < constant.size(); ++i) {
            constant[i] = p[i % 2];
            alternating[i] = i % 4 < 2 ? p[i % 2] : -p[i % 2];
        }
        inputs.push_back(constant);
        inputs.push_back(alternating);
    }
    unsigned state = 12345u + static_cast<unsigned>(n);
    auto next = [&] {
        state = state * 1664525u + 1013904223u;
        return static_cast<float>(static_cast<int>(state >> 8) - (1 << 23)) / static_cast<float>(1 << (state % 13));
    };
    for (int part = 0; part < 3; ++part) {
        // real, imaginary, and real with x[i] = x[n - i]
        std::vector<double> x(2 * n, part == 1 ? 0.0 : -0.0);
        for (int i = 0; i < n; ++i)
            x[static_cast<std::size_t>(2 * i + (part == 1 ? 1 : 0))] = next();
        if (part == 2)
            for (int i = 1; i < n; ++i)
                x[static_cast<std::size_t>(2 * (n - i))] = x[static_cast<std::size_t>(2 * i)];
        inputs.push_back(x);
    }
    for (int r = 0; r < 4; ++r) {
        std::vector<double> random(2 * n);
        for (double& value : random)
            value = next();
        inputs.push_back(random);
    }
    return inputs;
}

namespace {

// Builds the eight-lane graph of a kernel into `graph` (each vector the two
// vectors of the 128-bit kernel side by side); returns its stores.  Outputs go
// out as four complex numbers per vector where their lanes can be gathered
// inside the halves: two neighbouring pairs in one 32-byte store, or two pairs
// from apart in two 16-byte stores; a pair that fits no other goes out alone.
std::vector<WideStore> buildEightLanes(Graph& graph, int n, const Tree& tree, int sign, bool batch)
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
        for (std::size_t h = 0; h < (hi == u ? 1u : 2u); ++h) {
            const std::size_t k = 2 * (h == 0 ? u : hi), next = full(k / 2) ? k + 1 : k;
            const std::array<Lane, 4> four{out[k].re, out[k].im, out[next].re, out[next].im};
            for (std::size_t i = 0; i < 4; ++i) {
                lanes[4 * h + i] = four[i];
                care[4 * h + i] = i < 2 || full(k / 2);
            }
        }
        return std::make_pair(lanes, care);
    };

    std::vector<WideStore> stores;
    std::vector<bool> stored(units, false);
    for (std::size_t u = 0; u < units; ++u) {
        if (stored[u])
            continue;
        // the next pair first: one 32-byte store
        std::size_t partner = u;
        for (std::size_t v = u + 1; full(u) && partner == u && v < units; ++v) {
            if (stored[v] || !full(v))
                continue;
            const auto lanes = lanesOf(u, v);
            if (builder.inHalfPlaces(lanes.first, lanes.second))
                partner = v;
        }
        stored[u] = stored[partner] = true;
        const auto lanes = lanesOf(u, partner);
        const int node = graph.mul(builder.gatherLanes8(lanes.first, lanes.second), factor);
        stores.push_back({node, static_cast<int>(2 * u), partner == u ? -1 : static_cast<int>(2 * partner), full(u)});
    }
    return stores;
}

// The lanes of each node that the stores need, as masks.
std::vector<int> liveLanes(const Graph& graph, const std::vector<WideStore>& stores)
{
    std::vector<int> live(static_cast<std::size_t>(graph.size()), 0);
    for (const WideStore& store : stores)
        live[static_cast<std::size_t>(store.node)] |= (store.pair ? 0xF : 0x3) | (store.hi >= 0 ? 0xF0 : 0);
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

OutputLanes outputLanes(const std::vector<WideStore>& stores, int n)
{
    OutputLanes y(static_cast<std::size_t>(2 * n), {Graph::none, 0});
    for (const WideStore& store : stores) {
        for (int i = 0; i < (store.pair ? 4 : 2); ++i)
            y[static_cast<std::size_t>(2 * store.lo + i)] = {store.node, i};
        for (int i = 0; store.hi >= 0 && i < 4; ++i)
            y[static_cast<std::size_t>(2 * store.hi + i)] = {store.node, 4 + i};
    }
    return y;
}

}  // namespace

// Every sum in the orientation the 128-bit graph gave it, lane by lane.  A
// first build holds every lane to it; from the lanes of that graph that reach
// the outputs, a second build holds only those.  The second is taken where it
// gives the 128-bit graph's bits, else the first.
EightLanes exactEightLanes(int n, const Tree& tree, int sign, bool batch, const Graph& narrow,
                           const std::vector<int>& narrowRoots, const OutputLanes& fixedLanes)
{
    SumOrientations orientations(narrow, narrowRoots);
    auto build = [&] {
        EightLanes e;
        e.graph = std::make_unique<Graph>();
        e.graph->steerSums(&orientations);
        e.stores = buildEightLanes(*e.graph, n, tree, sign, batch);
        e.batch = batch;
        return e;
    };
    // the 128-bit graph's bits: every output lane of the same form (the same
    // operations up to exact rewrites), and on the check inputs the same value
    auto exact = [&](const EightLanes& e) {
        const OutputLanes lanes = outputLanes(e.stores, n);
        LaneForms fixedForms(narrow), forms(*e.graph);
        for (std::size_t i = 0; i < lanes.size(); ++i) {
            const LaneForm f = fixedForms.form(fixedLanes[i].first, fixedLanes[i].second);
            const LaneForm g = forms.form(lanes[i].first, lanes[i].second);
            if (f.key != g.key || f.negative != g.negative)
                return false;
        }
        return sameOutputs(narrow, fixedLanes, *e.graph, lanes, checkInputs(n), 1.0f / static_cast<float>(n));
    };
    EightLanes first = build();
    orientations.keepLanes(liveLanes(*first.graph, first.stores));
    EightLanes second = build();
    EightLanes out = exact(second) ? std::move(second) : exact(first) ? std::move(first) : EightLanes{};
    if (!out.graph)
        return out;
    out.graph->steerSums(nullptr);
    for (const WideStore& store : out.stores) {
        out.roots.push_back(store.node);
        out.storeInstructions += store.hi >= 0 && store.hi != store.lo + 2 ? 2 : 1;  // two halves: two stores
    }
    return out;
}

// The body of a split-layout Complex32 kernel for the 256-bit target, eight
// lanes wide, from its graph.
std::string eightLanesBody(const EightLanes& best, NodePrinter printer, Kernel& kernel)
{
    const Graph& graph = *best.graph;
    const std::vector<WideStore>& stores = best.stores;
    printer.param = [](const Node&) { return std::string("kv::join(c, c)"); };
    std::ostringstream body;
    body << printNodes(graph, best.roots, printer, "    ");
    int wide = 0, halves = 0, alone = 0;
    for (const WideStore& store : stores) {
        const std::string value = valueOf(graph, store.node);
        const std::string lo = "y + " + std::to_string(2 * store.lo);
        if (store.hi == store.lo + 2) {
            body << "    kv::store(" << lo << ", " << value << ");\n";
            ++wide;
        } else if (store.hi >= 0) {
            body << "    kv::store(" << lo << ", kv::lowHalf(" << value << "));\n    kv::store(y + " << 2 * store.hi
                 << ", kv::highHalf(" << value << "));\n";
            ++halves;
        } else {
            body << "    " << (store.pair ? "kv::store(" : "kv::storeLow(") << lo << ", kv::lowHalf(" << value
                 << "));\n";
            ++alone;
        }
    }
    const OpCounts counts = graph.count(best.roots);
    kernel.packing = std::string("; eight lanes for 256-bit vectors") + (best.batch ? ", four transforms batched" : "") + ": " +
                     std::to_string(counts.additions) + " additions, " +
                     std::to_string(counts.multiplications) + " multiplications, " + std::to_string(counts.exchanges) +
                     " selections; outputs in " + std::to_string(wide) + " 32-byte stores, " + std::to_string(halves) +
                     " split and " + std::to_string(alone) + " single";
    return body.str();
}

}  // namespace gen
