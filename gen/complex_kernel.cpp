#include "complex_kernel.h"

#include <sstream>
#include <stdexcept>

#include "complex_builder.h"
#include "complex_lanes.h"
#include "complex_pairs.h"

namespace gen {

namespace {

std::string printInputPair(const Node& node)
{
    const std::string first = "x + " + std::to_string(2 * node.index);
    if (node.index2 < 0)
        return "kv::loadLow(" + first + ")";
    if (node.index2 == node.index + 1)
        return node.index % 2 == 0 ? "Access::loadPair(" + first + ")" : "kv::load<kv::fvec>(" + first + ")";
    return "kv::loadLowHigh(" + first + ", x + " + std::to_string(2 * node.index2) + ")";
}

std::string printStore(const Graph& graph, const Store& store)
{
    const std::string value = store.node >= 0 ? valueOf(graph, store.node) : "0.0f";
    const std::string place = "y + " + std::to_string(2 * store.index);
    switch (store.kind) {
    case Store::Pair:
        return store.index % 2 == 0 ? "Access::storePair(" + place + ", " + value + ")"
                                    : "kv::store(" + place + ", " + value + ")";
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

}  // namespace

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
            return std::string(single ? "kv::load<kv::fwide>(x + " : "kv::load<kv::dwide>(x + ") + std::to_string(n.index) + ")";
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
            body << "    " << "kv::store(" << place << ", " << value << ");\n";
        else if (!single)
            body << "    Access::store(" << place << ", " << value << ");\n";
        else
            body << "    " << printStore(packed.graph, {first.kind, first.index, store.node}) << ";\n";
    }
    kernel.packing = "; packed for 256-bit vectors: " + std::to_string(packed.wideNodes) + " operations of 256 bits, " +
                     std::to_string(packed.narrowNodes) + " of 128 bits, " + std::to_string(packed.moves) +
                     " moves across halves";
    return body.str();
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

OutputLanes outputLanes(const std::vector<Store>& stores, int n, bool single)
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

Flow flowOf(const Form& form)
{
    const std::string& name = form.get("flow");
    for (int f = 0; f < 5; ++f)
        if (name == flowNames[f])
            return static_cast<Flow>(f);
    formError(form.kernel, "unknown flow " + name);
}

namespace {

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

}  // namespace

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

namespace {

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

}  // namespace

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

}  // namespace gen
