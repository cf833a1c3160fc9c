// Emitter of the complex DFT family: one unit per kernel (with its unaligned
// form) and one unit per size dispatcher.
//
// Complex32 kernels are scalar code on separate real and imaginary parts.
// Complex64 kernels keep one complex sample per vector and carry every value as
// two parts p + i*q, so that a multiplication by i is bookkeeping and the one
// exchange of lanes happens per output pair, at the end.
#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <stdexcept>
#include <sstream>
#include <string>
#include <vector>

#include "complex_builder.h"
#include "complex_lanes.h"
#include "complex_pairs.h"
#include "complex_rules.h"
#include "graph_eval.h"
#include "lane_forms.h"
#include "family.h"
#include "wide_pairs.h"

namespace gen {

namespace {

struct Variant {
    Precision precision;
    bool inverse;

    const char* typeSuffix() const { return precision == Precision::Single ? "32fc" : "64fc"; }
    const char* sampleType() const { return precision == Precision::Single ? "Complex32" : "Complex64"; }
    const char* realType() const { return precision == Precision::Single ? "float" : "double"; }
    std::string direction() const { return inverse ? "Inv" : "Fwd"; }
    std::string kernelName(int n) const
    {
        return "kvtgDFT" + direction() + "_CToC_" + std::to_string(n) + "_" + typeSuffix();
    }
    std::string unalignedName(int n) const
    {
        return "owngDFT" + direction() + "_CToC_" + std::to_string(n) + "_" + typeSuffix() + "_unaligned";
    }
    std::string dispatcherName() const { return "kvtgDFT" + direction() + "_CToC_" + typeSuffix(); }
    // Unit names follow the family: pgendftfwd32fcw7 and so on.
    std::string unitStem() const
    {
        return std::string("pgendft") + (inverse ? "inv" : "fwd") + typeSuffix() + "w7";
    }
    Type scalarType() const { return precision == Precision::Single ? Type::F32 : Type::F64; }
};

// Which of the three kernel shapes a size takes.
enum class Shape {
    ScalarOnly,       // Complex32 2..5: no alignment test
    TwoBodies,        // Complex64 2..4: aligned and unaligned body in one function
    SeparateForm,     // aligned kernel plus an owng unaligned form
};

Shape shapeOf(const Variant& v, int n)
{
    if (v.precision == Precision::Single)
        return n <= 5 ? Shape::ScalarOnly : Shape::SeparateForm;
    return n <= 4 ? Shape::TwoBodies : Shape::SeparateForm;
}

struct Kernel {
    std::string body;  // statements of the transform
    OpCounts counts;
    bool vector = false;  // a template over the access form, taking a vector factor
    int memoryAccesses = 0;
    const char* layout = "scalar";
    std::string packing;  // how the 256-bit target packed the vector graph
};

// Complex32 from length 6 works on pairs of complex numbers per vector.
bool pairedLayout(const Variant& v, int n) { return v.precision == Precision::Single && n >= 6; }

// Kernel text from a graph: all loads and arithmetic, then the stores.
struct Store {
    enum Kind { Pair, Low, High, Scalar } kind;
    int index;  // sample index (Scalar: real-number index)
    int node;
};

std::string printInputPair(const Node& node)
{
    const std::string first = "x + " + std::to_string(2 * node.index);
    if (node.index2 < 0)
        return "kv::loadLow(" + first + ")";
    if (node.index2 == node.index + 1)
        return node.index % 2 == 0 ? "Access::loadPair(" + first + ")" : "kv::loadPairUnaligned(" + first + ")";
    return "kv::loadLowHigh(" + first + ", x + " + std::to_string(2 * node.index2) + ")";
}

std::string printStore(const Graph& graph, const Store& store)
{
    const std::string value = store.node >= 0 ? valueOf(graph, store.node) : "0.0f";
    const std::string place = "y + " + std::to_string(2 * store.index);
    switch (store.kind) {
    case Store::Pair:
        return store.index % 2 == 0 ? "Access::storePair(" + place + ", " + value + ")"
                                    : "kv::storePairUnaligned(" + place + ", " + value + ")";
    case Store::Low: return "kv::storeLow(" + place + ", " + value + ")";
    case Store::High: return "kv::storeHigh(" + place + ", " + value + ")";
    case Store::Scalar: return "y[" + std::to_string(store.index) + "] = " + value;
    }
    return "";
}

// Builds a Complex32 kernel in one of the two vector layouts: two complex
// numbers per vector (pairs) or real and imaginary parts in vectors of their
// own (split).  Returns the stores of the outputs.
void buildVectorLayout(int n, const Tree& tree, int sign, Graph& graph, std::vector<Store>& stores, bool splitLayout,
                       bool materialize)
{
    const int factor = graph.param(Type::V4F, 0);
    if (splitLayout) {
        SplitBuilder builder(graph, n);
        const std::vector<SplitRef> out = builder.dft(tree, builder.inputs(), sign);
        for (int k = 0; k < n; k += 2) {
            const SplitRef& first = out[static_cast<std::size_t>(k)];
            const bool pair = k + 1 < n;
            const SplitRef& second = out[static_cast<std::size_t>(pair ? k + 1 : k)];
            const int node = builder.gatherLanes({first.re, first.im, second.re, second.im}, {true, true, pair, pair});
            stores.push_back({pair ? Store::Pair : Store::Low, k, graph.mul(node, factor)});
        }
        return;
    }
    PairedBuilder builder(graph, materialize);
    std::vector<HalfRef> x;
    for (int i = 0; i < n; ++i)
        x.push_back(HalfRef::memory(i));
    const std::vector<HalfRef> out = builder.dft(tree, x, sign);
    for (int k = 0; k < n; ++k) {
        const HalfRef& ref = out[static_cast<std::size_t>(k)];
        const bool pairWithNext = k + 1 < n && ref.half == 0 && out[static_cast<std::size_t>(k + 1)].half == 1 &&
                                  out[static_cast<std::size_t>(k + 1)].vector.p == ref.vector.p &&
                                  out[static_cast<std::size_t>(k + 1)].vector.q == ref.vector.q;
        if (ref.sample >= 0 || ref.zero)
            throw std::logic_error("an output that is not computed");
        // one exchange per stored vector turns p + i*q into complex numbers
        const int node = graph.mul(graph.add(ref.vector.p, graph.swapNeg(ref.vector.q)), factor);
        if (pairWithNext) {
            stores.push_back({Store::Pair, k, node});
            ++k;
        } else {
            stores.push_back({ref.half == 0 ? Store::Low : Store::High, k, node});
        }
    }
}

// The body of a vector kernel for the 256-bit target: the 128-bit graph packed
// two nodes to a 256-bit node where that pays, neighbouring samples loaded and
// stored 32 bytes at a time.  Given `time`, the packed body whatever it costs,
// and its timeCost there.
std::string wideBody(const Variant& v, const Graph& graph, const std::vector<Store>& stores, NodePrinter printer,
                     Kernel& kernel, int* time = nullptr)
{
    const bool single = v.precision == Precision::Single;
    std::vector<VectorStore> outputs;
    for (const Store& store : stores) {
        const bool full = !single || store.kind == Store::Pair;
        outputs.push_back({store.node, 2 * store.index, full});
    }
    const InputSpan span = [single](const Node& n) {
        if (!single)
            return 2 * n.index;
        return n.index2 == n.index + 1 ? 2 * n.index : -1;
    };
    const PackedKernel packed = packWide(graph, outputs, span);
    if (!time && packed.cost >= packed.narrowCost) {
        kernel.packing = "; kept at 128 bits (" + std::to_string(packed.narrowCost) + " instructions against " +
                         std::to_string(packed.cost) + " packed)";
        return std::string();
    }
    const NodePrinter narrow = printer;
    printer.input = [narrow, single](const Node& n) {
        if (n.type == Type::V4D || n.type == Type::V8F)
            return std::string(single ? "kv::load8(x + " : "kv::load4d(x + ") + std::to_string(n.index) + ")";
        return narrow.input(n);
    };
    printer.param = [narrow](const Node& n) {
        if (n.type == Type::V4D || n.type == Type::V8F)
            return "kv::join(" + narrow.param(n) + ", " + narrow.param(n) + ")";
        return narrow.param(n);
    };
    std::vector<int> roots;
    for (const PackedStore& store : packed.stores)
        roots.push_back(store.node);
    if (time)
        *time = timeCost(packed.graph, roots, static_cast<int>(packed.stores.size()));
    std::ostringstream body;
    body << printNodes(packed.graph, roots, printer, "    ");
    for (const PackedStore& store : packed.stores) {
        const Store& first = stores[static_cast<std::size_t>(store.first)];
        const std::string place = "y + " + std::to_string(2 * first.index);
        const std::string value = valueOf(packed.graph, store.node);
        if (store.wide)
            body << "    " << (single ? "kv::store8(" : "kv::store4d(") << place << ", " << value << ");\n";
        else if (!single)
            body << "    Access::store(" << place << ", " << value << ");\n";
        else
            body << "    " << printStore(packed.graph, {first.kind, first.index, store.node}) << ";\n";
    }
    kernel.packing = "; packed for 256-bit vectors: " + std::to_string(packed.wideNodes) + " operations of 256 bits, " +
                     std::to_string(packed.narrowNodes) + " of 128 bits, " + std::to_string(packed.moves) +
                     " moves across halves; " + std::to_string(packed.cost) + " instructions against " +
                     std::to_string(packed.narrowCost);
    return body.str();
}

// Where each real number of a kernel's output comes from: a node and its lane.
using OutputLanes = std::vector<std::pair<int, int>>;

OutputLanes outputLanes(const std::vector<Store>& stores, int n)
{
    OutputLanes y(static_cast<std::size_t>(2 * n), {Graph::none, 0});
    for (const Store& store : stores) {
        const int lanes = store.kind == Store::Pair ? 4 : 2;
        const int first = store.kind == Store::High ? 2 : 0;
        for (int i = 0; i < lanes; ++i)
            y[static_cast<std::size_t>(2 * store.index + i)] = {store.node, first + i};
    }
    return y;
}

// Inputs on which the 256-bit graph of a kernel must give the 128-bit graph's
// bits: zeros of both signs, impulses and inputs with exact zeros in their
// spectra, where a zero of the other sign shows, and random samples, where a
// rounding shows.
std::vector<std::vector<float>> checkInputs(int n)
{
    std::vector<std::vector<float>> inputs = {std::vector<float>(2 * n, 0.0f), std::vector<float>(2 * n, -0.0f)};
    for (int i = 0; i < 2 * n; ++i) {
        std::vector<float> impulse(2 * n, -0.0f);
        impulse[static_cast<std::size_t>(i)] = i % 3 == 0 ? -1.5f : 0.75f;
        inputs.push_back(impulse);
    }
    // constant, alternating, real, imaginary and even inputs
    const float pattern[][2] = {{1.0f, 0.0f}, {0.75f, -1.5f}, {-0.0f, 2.0f}};
    for (const auto& p : pattern) {
        std::vector<float> constant(2 * n), alternating(2 * n);
        for (int i = 0; i < n; ++i) {
            const float sign = i % 2 == 0 ? 1.0f : -1.0f;
            constant[static_cast<std::size_t>(2 * i)] = p[0];
            constant[static_cast<std::size_t>(2 * i + 1)] = p[1];
            alternating[static_cast<std::size_t>(2 * i)] = sign * p[0];
            alternating[static_cast<std::size_t>(2 * i + 1)] = sign * p[1];
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
        std::vector<float> x(2 * n, part == 1 ? 0.0f : -0.0f);
        for (int i = 0; i < n; ++i)
            x[static_cast<std::size_t>(2 * i + (part == 1 ? 1 : 0))] = next();
        if (part == 2)
            for (int i = 1; i < n; ++i)
                x[static_cast<std::size_t>(2 * (n - i))] = x[static_cast<std::size_t>(2 * i)];
        inputs.push_back(x);
    }
    for (int r = 0; r < 4; ++r) {
        std::vector<float> random(2 * n);
        for (float& value : random)
            value = next();
        inputs.push_back(random);
    }
    return inputs;
}

// The 256-bit stores of a split-layout kernel: the node and where its halves go.
struct WideStore {
    int node;
    int lo, hi;  // first samples of the two halves; hi -1: the lower half alone
    bool pair;   // the lower half holds two samples (else one)
};

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
    struct Unit {
        int first;  // sample index of its first complex number
        std::array<Lane, 4> lanes;
        std::array<bool, 4> care;
    };
    std::vector<Unit> units;
    for (int k = 0; k < n; k += 2) {
        const SplitRef& a = out[static_cast<std::size_t>(k)];
        const bool pair = k + 1 < n;
        const SplitRef& b = out[static_cast<std::size_t>(pair ? k + 1 : k)];
        units.push_back({k, {a.re, a.im, b.re, b.im}, {true, true, pair, pair}});
    }
    auto lanesOf = [](const Unit& lo, const Unit* hi) {
        std::array<Lane, 8> lanes{};
        std::array<bool, 8> care{};
        for (std::size_t i = 0; i < 4; ++i) {
            lanes[i] = lo.lanes[i];
            care[i] = lo.care[i];
            if (hi) {
                lanes[i + 4] = hi->lanes[i];
                care[i + 4] = hi->care[i];
            }
        }
        return std::make_pair(lanes, care);
    };
    auto full = [](const Unit& u) { return u.care[2]; };

    std::vector<WideStore> stores;
    std::vector<bool> stored(units.size(), false);
    for (std::size_t u = 0; u < units.size(); ++u) {
        if (stored[u])
            continue;
        stored[u] = true;
        int partner = -1;
        if (full(units[u])) {
            // the next pair first: one 32-byte store
            for (std::size_t v = u + 1; v < units.size() && partner < 0; ++v) {
                if (stored[v] || !full(units[v]))
                    continue;
                const auto lanes = lanesOf(units[u], &units[v]);
                if (builder.inHalfPlaces(lanes.first, lanes.second))
                    partner = static_cast<int>(v);
            }
        }
        if (partner >= 0) {
            stored[static_cast<std::size_t>(partner)] = true;
            const auto lanes = lanesOf(units[u], &units[static_cast<std::size_t>(partner)]);
            const int node = graph.mul(builder.gatherLanes8(lanes.first, lanes.second), factor);
            stores.push_back({node, units[u].first, units[static_cast<std::size_t>(partner)].first, true});
        } else {
            const auto lanes = lanesOf(units[u], nullptr);
            const int node = graph.mul(builder.gatherLanes8(lanes.first, lanes.second), factor);
            stores.push_back({node, units[u].first, -1, full(units[u])});
        }
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

// Whether two graphs of a kernel give the same bits: every output lane has
// the same form (the same operations up to exact rewrites), and on the check
// inputs the same value.
bool sameOutputs(const Graph& fixed, const OutputLanes& fixedLanes, const Graph& other, const OutputLanes& otherLanes)
{
    LaneForms fixedForms(fixed), otherForms(other);
    for (std::size_t i = 0; i < fixedLanes.size(); ++i) {
        const LaneForm& f = fixedForms.form(fixedLanes[i].first, fixedLanes[i].second);
        const LaneForm& g = otherForms.form(otherLanes[i].first, otherLanes[i].second);
        if (f.key != g.key || f.negative != g.negative)
            return false;
    }
    const int n = static_cast<int>(fixedLanes.size() / 2);
    for (const std::vector<float>& x : checkInputs(n)) {
        const float factor = 1.0f / static_cast<float>(n);
        const LaneEvaluator runFixed(fixed, x, factor), runOther(other, x, factor);
        for (std::size_t i = 0; i < fixedLanes.size(); ++i) {
            const float expected = runFixed.lanes(fixedLanes[i].first)[static_cast<std::size_t>(fixedLanes[i].second)];
            const float got = runOther.lanes(otherLanes[i].first)[static_cast<std::size_t>(otherLanes[i].second)];
            if (!sameBits(expected, got))
                return false;
        }
    }
    return true;
}

// Stores a 256-bit split kernel makes: a store of two halves counts two.
int storeCount(const std::vector<WideStore>& stores)
{
    int count = 0;
    for (const WideStore& store : stores)
        count += store.hi >= 0 && store.hi != store.lo + 2 ? 2 : 1;
    return count;
}

// An eight-lane graph of a kernel with the 128-bit graph's bits, and its time.
struct EightLanes {
    std::unique_ptr<Graph> graph;  // null where no such graph was found
    std::vector<WideStore> stores;
    int time = 0;
    bool batch = false;
};

// Every sum in the orientation the 128-bit graph gave it, lane by lane.  A
// first build holds every lane to it; from the lanes of that graph that reach
// the outputs, a second build holds only those.  The second is taken where it
// gives the 128-bit graph's bits, else the first.
EightLanes exactEightLanes(int n, const Tree& tree, int sign, bool batch, const Graph& narrow,
                           const std::vector<int>& narrowRoots, const OutputLanes& fixedLanes)
{
    SumOrientations orientations(narrow, narrowRoots);
    auto first = std::make_unique<Graph>();
    first->steerSums(&orientations);
    std::vector<WideStore> firstStores = buildEightLanes(*first, n, tree, sign, batch);
    orientations.keepLanes(liveLanes(*first, firstStores));
    auto second = std::make_unique<Graph>();
    second->steerSums(&orientations);
    std::vector<WideStore> secondStores = buildEightLanes(*second, n, tree, sign, batch);
    EightLanes out;
    out.batch = batch;
    if (sameOutputs(narrow, fixedLanes, *second, outputLanes(secondStores, n))) {
        out.graph = std::move(second);
        out.stores = std::move(secondStores);
    } else if (sameOutputs(narrow, fixedLanes, *first, outputLanes(firstStores, n))) {
        out.graph = std::move(first);
        out.stores = std::move(firstStores);
    } else {
        return out;
    }
    out.graph->steerSums(nullptr);
    std::vector<int> roots;
    for (const WideStore& store : out.stores)
        roots.push_back(store.node);
    out.time = timeCost(*out.graph, roots, storeCount(out.stores));
    return out;
}

// The body of a split-layout Complex32 kernel for the 256-bit target, eight
// lanes wide, and its time in `cost`; empty where no eight-lane graph gives
// the 128-bit graph's bits.
std::string splitWideBody(int n, const Tree& tree, int sign, NodePrinter printer, Kernel& kernel,
                          const Graph& narrow, const std::vector<Store>& narrowStores, int& cost)
{
    // of the layouts with and without batches of four transforms, the one of
    // less time; where neither gives the 128-bit graph's bits, none
    std::vector<int> narrowRoots;
    for (const Store& store : narrowStores)
        narrowRoots.push_back(store.node);
    const OutputLanes fixedLanes = outputLanes(narrowStores, n);
    EightLanes best;
    for (bool batch : {false, true}) {
        EightLanes candidate = exactEightLanes(n, tree, sign, batch, narrow, narrowRoots, fixedLanes);
        if (candidate.graph && (!best.graph || candidate.time < best.time))
            best = std::move(candidate);
    }
    if (!best.graph)
        return std::string();
    const Graph& graph = *best.graph;
    const std::vector<WideStore>& stores = best.stores;
    cost = best.time;

    printer.param = [](const Node&) { return std::string("kv::join(c, c)"); };
    std::vector<int> roots;
    for (const WideStore& store : stores)
        roots.push_back(store.node);
    std::ostringstream body;
    body << printNodes(graph, roots, printer, "    ");
    int wide = 0, halves = 0, alone = 0;
    for (const WideStore& store : stores) {
        const std::string value = valueOf(graph, store.node);
        const std::string lo = "y + " + std::to_string(2 * store.lo);
        if (store.hi == store.lo + 2) {
            body << "    kv::store8(" << lo << ", " << value << ");\n";
            ++wide;
        } else if (store.hi >= 0) {
            body << "    kv::storeHalves(" << lo << ", y + " << 2 * store.hi << ", " << value << ");\n";
            ++halves;
        } else {
            body << "    " << (store.pair ? "kv::storePairUnaligned(" : "kv::storeLow(") << lo << ", kv::lowHalf(" << value
                 << "));\n";
            ++alone;
        }
    }
    const OpCounts counts = graph.count(roots);
    kernel.packing = std::string("; eight lanes for 256-bit vectors") + (best.batch ? ", four transforms batched" : "") + ": " +
                     std::to_string(counts.additions) + " additions, " +
                     std::to_string(counts.multiplications) + " multiplications, " + std::to_string(counts.exchanges) +
                     " selections; outputs in " + std::to_string(wide) + " 32-byte stores, " + std::to_string(halves) +
                     " split and " + std::to_string(alone) + " single";
    return body.str();
}

// Cost of a kernel for the choice of layout: every instruction counts one.
int cost(const OpCounts& c, int loadsAndStores)
{
    return c.additions + c.multiplications + c.exchanges + c.signedExchanges + c.signFlips + loadsAndStores;
}

// How a vector kernel is laid out: Complex32 in split vectors or in pairs;
// products of two-part values formed lazily or after materialising the value.
struct Form {
    bool split = false;
    bool materialize = false;
};

// packForWide false: the 128-bit body only, for the choice of form (whose
// counts are the 128-bit graph's on every target)
Kernel buildKernel(const Variant& v, int n, Form form, bool packForWide = true);

// Of the forms a kernel can take, the one with the fewest instructions.
Kernel buildKernel(const Variant& v, int n)
{
    if (v.precision == Precision::Single && !pairedLayout(v, n))
        return buildKernel(v, n, Form{});
    // Complex64 keeps its values in two parts up to the outputs
    if (v.precision == Precision::Double)
        return buildKernel(v, n, Form{});
    const std::vector<Form> forms = {{false, false}, {false, true}, {true, false}};
    Form best = forms[0];
    int bestCost = 0;
    for (const Form& form : forms) {
        const Kernel k = buildKernel(v, n, form, false);
        const int c = cost(k.counts, k.memoryAccesses);
        if (&form == &forms[0] || c < bestCost) {
            best = form;
            bestCost = c;
        }
    }
    return buildKernel(v, n, best);
}

Kernel buildKernel(const Variant& v, int n, Form form, bool packForWide)
{
    const bool split = form.split;
    const TreePtr tree = complexRule(n, v.precision);
    const int sign = v.inverse ? 1 : -1;
    Graph graph;
    std::vector<Store> stores;
    NodePrinter printer;
    Kernel kernel;
    if (pairedLayout(v, n)) {
        kernel.vector = true;
        kernel.layout = split ? "split real and imaginary vectors"
                        : form.materialize ? "two complex numbers per vector, joined before products"
                                           : "two complex numbers per vector";
        buildVectorLayout(n, *tree, sign, graph, stores, split, form.materialize);
        printer.input = printInputPair;
    } else if (v.precision == Precision::Single) {
        ComplexBuilder builder(graph, n == 3 || n == 5);
        std::vector<Cx> x(static_cast<std::size_t>(n));
        for (int i = 0; i < n; ++i)
            x[static_cast<std::size_t>(i)] = {graph.input(Type::F32, 2 * i), graph.input(Type::F32, 2 * i + 1)};
        const std::vector<Cx> out = builder.dft(*tree, x, sign);
        const int factor = graph.param(Type::F32, 0);
        for (int k = 0; k < n; ++k) {
            stores.push_back({Store::Scalar, 2 * k, graph.mul(out[static_cast<std::size_t>(k)].p, factor)});
            stores.push_back({Store::Scalar, 2 * k + 1, graph.mul(out[static_cast<std::size_t>(k)].q, factor)});
        }
        printer.input = [](const Node& node) { return "x[" + std::to_string(node.index) + "]"; };
    } else {
        kernel.vector = true;
        kernel.layout = form.materialize ? "one complex number per vector, two parts joined before products"
                                         : "one complex number per vector, values carried in two parts";
        ComplexBuilder builder(graph);
        builder.materializeProducts(form.materialize);
        std::vector<Cx> x(static_cast<std::size_t>(n));
        for (int i = 0; i < n; ++i)
            x[static_cast<std::size_t>(i)] = {graph.input(Type::V2D, i), Graph::none};
        const std::vector<Cx> out = builder.dft(*tree, x, sign);
        const int factor = graph.param(Type::V2D, 0);
        for (const Cx& value : out)
            stores.push_back({Store::Pair, static_cast<int>(stores.size()), graph.mul(graph.add(value.p, graph.swapNeg(value.q)), factor)});
        printer.input = [](const Node& node) {
            return "Access::load(x + " + std::to_string(2 * node.index) + ")";
        };
    }
    printer.param = [](const Node&) { return std::string("c"); };

    std::vector<int> roots;
    for (const Store& store : stores)
        roots.push_back(store.node);
    kernel.counts = graph.count(roots);
    const std::vector<bool> live = graph.liveSet(roots);
    for (int id = 0; id < graph.size(); ++id)
        if (live[static_cast<std::size_t>(id)] && graph.node(id).op == Op::Input)
            ++kernel.memoryAccesses;
    kernel.memoryAccesses += static_cast<int>(stores.size());
    if (kernel.vector && target().wide() && packForWide && split) {
        // of the 128-bit graph, its packed form and the eight-lane layout, the
        // one of least timeCost
        const int narrowTime = timeCost(graph, roots, static_cast<int>(stores.size()));
        Kernel packed = kernel, eight = kernel;
        int packedTime = 0, eightTime = 0;
        packed.body = wideBody(v, graph, stores, printer, packed, &packedTime);
        eight.body = splitWideBody(n, *tree, sign, printer, eight, graph, stores, eightTime);
        if (!eight.body.empty() && eightTime < std::min(narrowTime, packedTime))
            return eight;
        if (packedTime < narrowTime)
            return packed;
        kernel.packing = "; kept at 128 bits (time " + std::to_string(narrowTime) + " against " +
                         std::to_string(packedTime) + " packed" +
                         (eight.body.empty() ? std::string() : " and " + std::to_string(eightTime) + " eight lanes") + ")";
    } else if (kernel.vector && target().wide() && packForWide) {
        kernel.body = wideBody(v, graph, stores, printer, kernel);
        if (!kernel.body.empty())
            return kernel;
    }
    std::ostringstream body;
    body << printNodes(graph, roots, printer, "    ");
    for (const Store& store : stores) {
        if (v.precision == Precision::Double)
            body << "    Access::store(y + " << 2 * store.index << ", " << valueOf(graph, store.node) << ");\n";
        else
            body << "    " << printStore(graph, store) << ";\n";
    }
    kernel.body = body.str();
    return kernel;
}

std::string factorLiterals(const Variant& v, int n)
{
    const Type t = v.scalarType();
    return literal(t, roundTo(t, 1.0L / n)) + ", " + literal(t, roundTo(t, 1.0L / std::sqrt(static_cast<long double>(n))));
}

std::string kernelUnit(const Variant& v, int n, const Kernel& kernel)
{
    const Shape shape = shapeOf(v, n);
    const std::string real = v.realType();
    const std::string sample = v.sampleType();
    const std::string args = "const " + sample + "* src, " + sample + "* dst, int32_t flag";
    const std::string dir = v.inverse ? "kvtg::Direction::Inverse" : "kvtg::Direction::Forward";
    const bool vector = kernel.vector;
    const bool floatVector = vector && v.precision == Precision::Single;

    std::ostringstream out;
    out << "// Generated by kvtgen; do not edit.\n"
        << "// " << (v.inverse ? "Inverse" : "Forward") << " complex DFT of length " << n << ", " << sample
        << ", rule " << complexRuleText(n, v.precision) << ".\n"
        << "// Layout: " << kernel.layout << kernel.packing << ". Vector or scalar operations: " << kernel.counts.additions
        << " additions, " << kernel.counts.multiplications << " multiplications, " << kernel.counts.exchanges
        << " exchanges.\n"
        << "#include \"frame.h\"\n";
    if (vector)
        out << "#include \"" << target().simdHeader() << "\"\n";
    out << "\nnamespace {\n\n";
    if (vector) {
        out << "template <class Access, bool Scaled>\n"
            << "inline void transform(const " << real << "* x, " << real << "* y, " << (floatVector ? "kv::v4f" : "kv::v2d")
            << " c)\n{\n";
    } else {
        out << "template <bool Scaled>\ninline void transform(const float* x, float* y, float c)\n{\n";
    }
    out << kernel.body << "}\n\n";
    // The tests of the frame, then the transform: shared by every body.
    out << (vector ? "template <class Access>\n" : "") << "inline Status run(" << args << ")\n{\n"
        << "    if (src == nullptr || dst == nullptr)\n        return StatusNullArg;\n"
        << "    " << real << " c;\n"
        << "    if (!kvtg::pickFactor<" << real << ">(flag, " << dir << ", " << factorLiterals(v, n) << ", c))\n"
        << "        return StatusBadFlag;\n"
        << scaledCall(vector ? "transform<Access, " : "transform<",
                      "reinterpret_cast<const " + real + "*>(src), reinterpret_cast<" + real + "*>(dst), " +
                          (floatVector ? "kv::set1f(c)" : vector ? "kv::set1(c)" : "c"),
                      "    ")
        << "    return StatusOk;\n}\n\n";
    const std::string text = out.str();
    std::ostringstream tail;
    tail << "}  // namespace\n\n";
    const std::string aligned = vector ? "run<kv::AlignedAccess>" : "run";
    const std::string unaligned = vector ? "run<kv::UnalignedAccess>" : "run";
    switch (shape) {
    case Shape::ScalarOnly:
        tail << "extern \"C\" KVTG_API Status " << v.kernelName(n) << "(" << args << ")\n{\n"
             << "    return run(src, dst, flag);\n}\n";
        break;
    case Shape::TwoBodies:
        tail << "extern \"C\" KVTG_API Status " << v.kernelName(n) << "(" << args << ")\n{\n"
             << "    if (!kvtg::bothAligned16(src, dst))\n        return " << unaligned << "(src, dst, flag);\n"
             << "    return " << aligned << "(src, dst, flag);\n}\n";
        break;
    case Shape::SeparateForm:
        tail << "extern \"C\" Status " << v.unalignedName(n) << "(" << args << ");\n\n"
             << "extern \"C\" Status " << v.unalignedName(n) << "(" << args << ")\n{\n"
             << "    return " << unaligned << "(src, dst, flag);\n}\n\n"
             << "extern \"C\" KVTG_API Status " << v.kernelName(n) << "(" << args << ")\n{\n"
             << "    if (!kvtg::bothAligned16(src, dst))\n        return " << v.unalignedName(n) << "(src, dst, flag);\n"
             << "    return " << aligned << "(src, dst, flag);\n}\n";
        break;
    }
    return text + tail.str();
}

std::string dispatcherUnit(const Variant& v)
{
    const std::string sample = v.sampleType();
    std::ostringstream out;
    out << "// Generated by kvtgen; do not edit.\n"
        << "// Size dispatcher of the " << (v.inverse ? "inverse" : "forward") << " complex DFT, " << sample << ".\n"
        << "#include \"frame.h\"\n\n"
        << sizeDispatcher(v.dispatcherName(), sample, [&](int n) { return v.kernelName(n); });
    return out.str();
}

// The real additions and multiplications of a length's tree, whatever the
// vector layout: the scalar graph for Complex32, twice the vector graph of
// Complex64 (one operation per lane).
OpCounts arithmeticCounts(const Variant& v, int n)
{
    if (v.precision == Precision::Double) {
        OpCounts c = buildKernel(v, n).counts;
        c.additions *= 2;
        c.multiplications *= 2;
        return c;
    }
    Graph graph;
    ComplexBuilder builder(graph);
    std::vector<Cx> x(static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i)
        x[static_cast<std::size_t>(i)] = {graph.input(Type::F32, 2 * i), graph.input(Type::F32, 2 * i + 1)};
    std::vector<int> roots;
    for (const Cx& value : builder.dft(*complexRule(n, v.precision), x, v.inverse ? 1 : -1)) {
        roots.push_back(value.p);
        roots.push_back(value.q);
    }
    return graph.count(roots);
}

void emitComplex(const std::string& directory)
{
    // The operation counts of every kernel, for benchmarks and tests to hold
    // the kernels against: {length, additions, multiplications, exchanges}.
    std::ostringstream counts;
    counts << "// Generated by kvtgen; do not edit.\n"
           << "// Real additions and multiplications of each complex length's tree, and the\n"
           << "// exchanges (shuffles) of its kernel.\n"
           << "#pragma once\nnamespace kvtg_counts {\nstruct ComplexCount { int n, additions, multiplications, exchanges; };\n";
    for (Precision precision : {Precision::Single, Precision::Double}) {
        for (bool inverse : {false, true}) {
            const Variant v{precision, inverse};
            counts << "inline const ComplexCount " << (inverse ? "inverse" : "forward") << v.typeSuffix() << "[] = {\n";
            for (int n = 2; n <= 64; ++n) {
                const Kernel kernel = buildKernel(v, n);
                writeIfChanged(directory + "/" + v.unitStem() + "_" + std::to_string(n) + ".cpp", kernelUnit(v, n, kernel));
                const OpCounts c = arithmeticCounts(v, n);
                counts << "    {" << n << ", " << c.additions << ", " << c.multiplications << ", " << kernel.counts.exchanges
                       << "},\n";
            }
            counts << "};\n";
            writeIfChanged(directory + "/" + v.unitStem() + ".cpp", dispatcherUnit(v));
        }
    }
    counts << "}  // namespace kvtg_counts\n";
    writeIfChanged(directory + "/complex_counts.h", counts.str());
}

const FamilyRegistration registration("complex", emitComplex);

}  // namespace

}  // namespace gen
