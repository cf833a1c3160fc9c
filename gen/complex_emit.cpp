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
#include "forms.h"
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

// The outputs of a vector kernel as the 256-bit packing sees them, and where
// its inputs read from (-1: not a contiguous 16-byte read).
std::vector<VectorStore> vectorStores(const Variant& v, const std::vector<Store>& stores)
{
    std::vector<VectorStore> outputs;
    for (const Store& store : stores)
        outputs.push_back({store.node, 2 * store.index, v.precision != Precision::Single || store.kind == Store::Pair});
    return outputs;
}

InputSpan inputSpan(const Variant& v)
{
    const bool single = v.precision == Precision::Single;
    return [single](const Node& n) {
        if (!single)
            return 2 * n.index;
        return n.index2 == n.index + 1 ? 2 * n.index : -1;
    };
}

// The body of a vector kernel for the 256-bit target: the 128-bit graph packed
// two nodes to a 256-bit node as `packed` pairs them, neighbouring samples
// loaded and stored 32 bytes at a time.
std::string packedBody(const Variant& v, const PackedKernel& packed, const std::vector<Store>& stores,
                       NodePrinter printer, Kernel& kernel)
{
    const bool single = v.precision == Precision::Single;
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

// The time of a packed kernel, as the 256-bit target's cost model counts it.
int packedTime(const PackedKernel& packed)
{
    std::vector<int> roots;
    for (const PackedStore& store : packed.stores)
        roots.push_back(store.node);
    return timeCost(packed.graph, roots, static_cast<int>(packed.stores.size()));
}

// Where a store puts the lanes of its node among the kernel's real outputs.
void placeStore(const Store& store, bool single, OutputLanes& y)
{
    if (store.kind == Store::Scalar) {
        y[static_cast<std::size_t>(store.index)] = {store.node, 0};
        return;
    }
    const int lanes = !single || store.kind != Store::Pair ? 2 : 4;
    const int first = store.kind == Store::High ? 2 : 0;
    for (int i = 0; i < lanes; ++i)
        y[static_cast<std::size_t>(2 * store.index + i)] = {store.node, first + i};
}

OutputLanes outputLanes(const std::vector<Store>& stores, int n, bool single = true)
{
    OutputLanes y(static_cast<std::size_t>(2 * n), {Graph::none, 0});
    for (const Store& store : stores)
        placeStore(store, single, y);
    return y;
}

// The same for a packed kernel: a 256-bit store writes its lanes from the
// place of its first 128-bit store on.
OutputLanes outputLanes(const PackedKernel& packed, const std::vector<Store>& stores, int n, bool single)
{
    OutputLanes y(static_cast<std::size_t>(2 * n), {Graph::none, 0});
    for (const PackedStore& store : packed.stores) {
        const Store& first = stores[static_cast<std::size_t>(store.first)];
        if (!store.wide) {
            placeStore({first.kind, first.index, store.node}, single, y);
            continue;
        }
        for (int i = 0; i < (single ? 8 : 4); ++i)
            y[static_cast<std::size_t>(2 * first.index + i)] = {store.node, i};
    }
    return y;
}

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
bool sameEightLanes(const Graph& fixed, const OutputLanes& fixedLanes, const Graph& other, const OutputLanes& otherLanes)
{
    LaneForms fixedForms(fixed), otherForms(other);
    for (std::size_t i = 0; i < fixedLanes.size(); ++i) {
        const LaneForm& f = fixedForms.form(fixedLanes[i].first, fixedLanes[i].second);
        const LaneForm& g = otherForms.form(otherLanes[i].first, otherLanes[i].second);
        if (f.key != g.key || f.negative != g.negative)
            return false;
    }
    const int n = static_cast<int>(fixedLanes.size() / 2);
    return sameOutputs(fixed, fixedLanes, other, otherLanes, checkInputs(n), 1.0f / static_cast<float>(n));
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
    if (sameEightLanes(narrow, fixedLanes, *second, outputLanes(secondStores, n))) {
        out.graph = std::move(second);
        out.stores = std::move(secondStores);
    } else if (sameEightLanes(narrow, fixedLanes, *first, outputLanes(firstStores, n))) {
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
// lanes wide, from its graph.
std::string eightLanesBody(const EightLanes& best, NodePrinter printer, Kernel& kernel)
{
    const Graph& graph = *best.graph;
    const std::vector<WideStore>& stores = best.stores;
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

// The flow of a complex kernel, which fixes its bits: Complex32 up to 5
// points is scalar; from 6 points two complex numbers per vector (products
// of two-part values formed lazily, or after joining the value) or split
// real and imaginary vectors; Complex64 one complex number per vector,
// values carried in two parts.
enum class Flow { Scalar, Pairs, Joined, Split, Parts };
const char* const flowNames[] = {"scalar", "pairs", "joined", "split", "parts"};

Flow flowOf(const Form& form)
{
    const std::string& name = form.get("flow");
    for (int f = 0; f < 5; ++f)
        if (name == flowNames[f])
            return static_cast<Flow>(f);
    formError(form.kernel, "unknown flow " + name);
}

// The 128-bit kernel of a flow: its graph, stores and printer.
struct NarrowKernel {
    Graph graph;
    std::vector<Store> stores;
    std::vector<int> roots;
    NodePrinter printer;
    Kernel kernel;
};

void buildScalarFlow(const Variant& v, int n, const Tree& tree, NarrowKernel& k)
{
    Graph& graph = k.graph;
    ComplexBuilder builder(graph, n == 3 || n == 5);
    std::vector<Cx> x(static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i)
        x[static_cast<std::size_t>(i)] = {graph.input(Type::F32, 2 * i), graph.input(Type::F32, 2 * i + 1)};
    const std::vector<Cx> out = builder.dft(tree, x, v.inverse ? 1 : -1);
    const int factor = graph.param(Type::F32, 0);
    for (int i = 0; i < n; ++i) {
        k.stores.push_back({Store::Scalar, 2 * i, graph.mul(out[static_cast<std::size_t>(i)].p, factor)});
        k.stores.push_back({Store::Scalar, 2 * i + 1, graph.mul(out[static_cast<std::size_t>(i)].q, factor)});
    }
    k.printer.input = [](const Node& node) { return "x[" + std::to_string(node.index) + "]"; };
}

void buildPartsFlow(const Variant& v, int n, const Tree& tree, NarrowKernel& k)
{
    Graph& graph = k.graph;
    k.kernel.vector = true;
    k.kernel.layout = "one complex number per vector, values carried in two parts";
    ComplexBuilder builder(graph);
    std::vector<Cx> x(static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i)
        x[static_cast<std::size_t>(i)] = {graph.input(Type::V2D, i), Graph::none};
    const std::vector<Cx> out = builder.dft(tree, x, v.inverse ? 1 : -1);
    const int factor = graph.param(Type::V2D, 0);
    for (const Cx& value : out)
        k.stores.push_back({Store::Pair, static_cast<int>(k.stores.size()),
                            graph.mul(graph.add(value.p, graph.swapNeg(value.q)), factor)});
    k.printer.input = [](const Node& node) { return "Access::load(x + " + std::to_string(2 * node.index) + ")"; };
}

NarrowKernel buildNarrow(const Variant& v, int n, Flow flow)
{
    const bool paired = flow == Flow::Pairs || flow == Flow::Joined || flow == Flow::Split;
    const bool single = v.precision == Precision::Single;
    if ((flow == Flow::Scalar) != (single && n < 6) || (flow == Flow::Parts) == single || (paired && n < 6))
        throw std::runtime_error(v.kernelName(n) + ": flow " + flowNames[static_cast<int>(flow)] +
                                 " does not exist for this kernel");
    const TreePtr tree = complexRule(n, v.precision);
    NarrowKernel k;
    if (paired) {
        k.kernel.vector = true;
        k.kernel.layout = flow == Flow::Split    ? "split real and imaginary vectors"
                          : flow == Flow::Joined ? "two complex numbers per vector, joined before products"
                                                 : "two complex numbers per vector";
        buildVectorLayout(n, *tree, v.inverse ? 1 : -1, k.graph, k.stores, flow == Flow::Split, flow == Flow::Joined);
        k.printer.input = printInputPair;
    } else if (single) {
        buildScalarFlow(v, n, *tree, k);
    } else {
        buildPartsFlow(v, n, *tree, k);
    }
    k.printer.param = [](const Node&) { return std::string("c"); };
    for (const Store& store : k.stores)
        k.roots.push_back(store.node);
    k.kernel.counts = k.graph.count(k.roots);
    const std::vector<bool> live = k.graph.liveSet(k.roots);
    for (int id = 0; id < k.graph.size(); ++id)
        if (live[static_cast<std::size_t>(id)] && k.graph.node(id).op == Op::Input)
            ++k.kernel.memoryAccesses;
    k.kernel.memoryAccesses += static_cast<int>(k.stores.size());
    return k;
}

// The 128-bit body of a kernel.
std::string narrowBody(const Variant& v, const NarrowKernel& k)
{
    std::ostringstream body;
    body << printNodes(k.graph, k.roots, k.printer, "    ");
    for (const Store& store : k.stores) {
        if (v.precision == Precision::Double)
            body << "    Access::store(y + " << 2 * store.index << ", " << valueOf(k.graph, store.node) << ");\n";
        else
            body << "    " << printStore(k.graph, store) << ";\n";
    }
    return body.str();
}

// A kernel in the form its line of the table gives it.
Kernel buildKernel(const Variant& v, int n, const Form& form)
{
    NarrowKernel k = buildNarrow(v, n, flowOf(form));
    Kernel kernel = k.kernel;
    const std::string& body = form.get("body");
    if (body != "narrow" && (!target().wide() || !kernel.vector))
        formError(form.kernel, "body " + body + " needs a 256-bit target and a vector flow");
    if (body == "packed") {
        PackOptions options;
        if (!parsePackOptions(form.get("seeds"), form.get("moves"), options))
            formError(form.kernel, "unknown packing " + form.get("seeds") + "/" + form.get("moves"));
        const PackedKernel packed = packWide(k.graph, vectorStores(v, k.stores), inputSpan(v), options);
        const bool single = v.precision == Precision::Single;
        verifyBody(form.kernel, k.graph, outputLanes(k.stores, n, single), packed.graph,
                   outputLanes(packed, k.stores, n, single), checkInputs(n), 1.0 / n);
        kernel.body = packedBody(v, packed, k.stores, k.printer, kernel);
    } else if (body == "eight") {
        if (flowOf(form) != Flow::Split)
            formError(form.kernel, "eight lanes need the split flow");
        const EightLanes eight = exactEightLanes(n, *complexRule(n, v.precision), v.inverse ? 1 : -1,
                                                 form.get("batch") == "yes", k.graph, k.roots,
                                                 outputLanes(k.stores, n));
        if (!eight.graph)
            formError(form.kernel, "no eight-lane body gives the bits of the 128-bit flow");
        kernel.body = eightLanesBody(eight, k.printer, kernel);
    } else if (body == "narrow") {
        kernel.body = narrowBody(v, k);
        if (target().wide() && kernel.vector)
            kernel.packing = "; kept at 128 bits";
    } else {
        formError(form.kernel, "unknown body " + body);
    }
    return kernel;
}

// ---- the search of the explorer

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
OpCounts arithmeticCounts(const Variant& v, int n, const Kernel& kernel)
{
    if (v.precision == Precision::Double) {
        OpCounts c = kernel.counts;
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
                const Kernel kernel =
                    buildKernel(v, n, formOf(v.kernelName(n), [&] { return searchForm(v, n); }));
                writeIfChanged(directory + "/" + v.unitStem() + "_" + std::to_string(n) + ".cpp", kernelUnit(v, n, kernel));
                const OpCounts c = arithmeticCounts(v, n, kernel);
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
