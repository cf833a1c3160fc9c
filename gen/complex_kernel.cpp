#include "complex_kernel.h"

#include <sstream>
#include <stdexcept>

#include "complex_builder.h"
#include "complex_lanes.h"
#include "complex_pairs.h"

namespace gen {

namespace {

// The place of a field's value among the table's names for it; a name not
// there stops the generator.
template <std::size_t N>
int valueIndex(const Form& form, const std::string& field, const char* const (&names)[N])
{
    for (std::size_t i = 0; i < N; ++i)
        if (form.get(field) == names[i])
            return static_cast<int>(i);
    formError(form.kernel, "unknown " + field + " " + form.get(field));
}

// The loads of every flow and wide body: a real number (Complex32 scalar
// flow), a sample (Complex64), two samples or one (Complex32 vectors), 256 bits
// from an offset in real numbers.
std::string printInput(const Node& node)
{
    const std::string at = std::to_string(node.index), first = "x + " + std::to_string(2 * node.index);
    switch (node.type) {
    case Type::F32: return "x[" + at + "]";
    case Type::V2D: return "Access::load(" + first + ")";
    case Type::V4D: return "kv::load<kv::dwide>(x + " + at + ")";
    case Type::V8F: return "kv::load<kv::fwide>(x + " + at + ")";
    default: break;
    }
    if (node.index2 < 0)
        return "kv::loadLow(" + first + ")";
    if (node.index2 == node.index + 1)
        return node.index % 2 == 0 ? "Access::loadPair(" + first + ")" : "kv::load<kv::fvec>(" + first + ")";
    return "kv::loadLowHigh(" + first + ", x + " + std::to_string(2 * node.index2) + ")";
}

// The scale factor, in both halves of a 256-bit vector.
std::string printParam(const Node& node)
{
    return node.type == Type::V4D || node.type == Type::V8F ? "kv::join(c, c)" : "c";
}

std::string printStore(const Graph& graph, const Store& store, bool single)
{
    std::string value = store.node >= 0 ? valueOf(graph, store.node) : "0.0f";
    if (store.kind == Store::Scalar)
        return "y[" + std::to_string(store.index) + "] = " + value;
    if (store.half >= 0)
        value = (store.half == 0 ? "kv::lowHalf(" : "kv::highHalf(") + value + ")";
    // Complex32 by kind (Pair, Low, High); a pair from an odd sample on, or
    // from a 256-bit node, is not 16-byte aligned
    static const char* const calls[] = {"Access::storePair", "kv::storeLow", "kv::storeHigh"};
    const bool unaligned = store.kind == Store::Pair && (store.index % 2 == 1 || store.half >= 0);
    const std::string call = store.kind == Store::Wide || (single && unaligned) ? "kv::store"
                             : single                                           ? calls[store.kind]
                                                                                : "Access::store";
    return call + "(y + " + std::to_string(2 * store.index) + ", " + value + ")";
}

// The body of a kernel: all loads and arithmetic, then the stores.
std::string printBody(const Graph& graph, const std::vector<Store>& stores, bool single)
{
    std::ostringstream body;
    body << printNodes(graph, rootsOf(stores), {printInput, printParam, {}}, "    ");
    for (const Store& store : stores)
        body << "    " << printStore(graph, store, single) << ";\n";
    return body.str();
}

// The Complex32 flows on vectors: two complex numbers per vector (pairs,
// joined) or real and imaginary parts in vectors of their own (split).
void buildVectorFlow(int n, const Tree& tree, int sign, Flow flow, NarrowKernel& k)
{
    Graph& graph = k.graph;
    const int factor = graph.param(Type::V4F, 0);
    if (flow == Flow::Split) {
        SplitBuilder builder(graph, n);
        const std::vector<SplitRef> out = builder.dft(tree, builder.inputs(), sign);
        for (int i = 0; i < n; i += 2) {
            const SplitRef& first = out[static_cast<std::size_t>(i)];
            const bool pair = i + 1 < n;
            const SplitRef& second = out[static_cast<std::size_t>(pair ? i + 1 : i)];
            const int node = builder.gatherLanes({first.re, first.im, second.re, second.im}, {true, true, pair, pair});
            k.stores.push_back({pair ? Store::Pair : Store::Low, i, graph.mul(node, factor)});
        }
        return;
    }
    PairedBuilder builder(graph, flow == Flow::Joined);
    std::vector<HalfRef> x;
    for (int i = 0; i < n; ++i)
        x.push_back(HalfRef::memory(i));
    const std::vector<HalfRef> out = builder.dft(tree, x, sign);
    for (int i = 0; i < n; ++i) {
        const HalfRef& ref = out[static_cast<std::size_t>(i)];
        const HalfRef* next = i + 1 < n ? &out[static_cast<std::size_t>(i + 1)] : nullptr;
        const bool pairWithNext = next && ref.half == 0 && next->half == 1 && next->vector.p == ref.vector.p &&
                                  next->vector.q == ref.vector.q;
        if (ref.sample >= 0)
            throw std::logic_error("an output that is not computed");
        // one exchange per stored vector turns p + i*q into complex numbers
        const int node = graph.mul(graph.add(ref.vector.p, graph.swapNeg(ref.vector.q)), factor);
        k.stores.push_back({pairWithNext ? Store::Pair : ref.half == 0 ? Store::Low : Store::High, i, node});
        i += pairWithNext ? 1 : 0;
    }
}

// Complex32 up to 5 points on separate real and imaginary parts, or
// Complex64 one complex number per vector with its values in two parts.
void buildComplexFlow(int n, const Tree& tree, int sign, bool single, NarrowKernel& k)
{
    Graph& graph = k.graph;
    ComplexBuilder builder(graph, single && (n == 3 || n == 5));
    std::vector<Cx> x(static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i)
        x[static_cast<std::size_t>(i)] = single ? Cx{graph.input(Type::F32, 2 * i), graph.input(Type::F32, 2 * i + 1)}
                                                : Cx{graph.input(Type::V2D, i), Graph::none};
    const std::vector<Cx> out = builder.dft(tree, x, sign);
    const int factor = graph.param(single ? Type::F32 : Type::V2D, 0);
    for (int i = 0; i < n; ++i) {
        const Cx& value = out[static_cast<std::size_t>(i)];
        if (single) {
            k.stores.push_back({Store::Scalar, 2 * i, graph.mul(value.p, factor)});
            k.stores.push_back({Store::Scalar, 2 * i + 1, graph.mul(value.q, factor)});
        } else {
            k.stores.push_back({Store::Pair, i, graph.mul(graph.add(value.p, graph.swapNeg(value.q)), factor)});
        }
    }
}

// The 256-bit body of a vector kernel that the form names: the 128-bit graph
// packed two nodes to a 256-bit node as the form's options pair them, checked
// to give the 128-bit graph's bits, or (split flows) eight lanes wide.
WideBody wideBody(const Variant& v, int n, const NarrowKernel& k, const Form& form)
{
    if (form.get("body") == "eight") {
        if (flowOf(form) != Flow::Split)
            formError(form.kernel, "eight lanes need the split flow");
        std::optional<WideBody> eight = exactEightLanes(v, n, k, form.get("batch") == "yes");
        if (!eight)
            formError(form.kernel, "no eight-lane body gives the bits of the 128-bit flow");
        return std::move(*eight);
    }
    if (form.get("body") != "packed")
        formError(form.kernel, "unknown body " + form.get("body"));
    const auto seeds = static_cast<PackOptions::Seeds>(valueIndex(form, "seeds", seedsNames));
    WideBody packed = packNarrow(v, k, {seeds, static_cast<PackOptions::Moves>(valueIndex(form, "moves", movesNames))});
    const bool single = v.precision == Precision::Single;
    if (!sameOutputs(k.graph, outputLanes(k.stores, n, single), packed.graph, outputLanes(packed.stores, n, single),
                     checkInputs(n), 1.0 / n))
        formError(form.kernel, "its body does not give the bits of its flow on the generator's check inputs");
    return packed;
}

}  // namespace

std::vector<int> rootsOf(const std::vector<Store>& stores)
{
    std::vector<int> roots;
    for (const Store& store : stores)
        roots.push_back(store.node);
    return roots;
}

OutputLanes outputLanes(const std::vector<Store>& stores, int n, bool single)
{
    OutputLanes y(static_cast<std::size_t>(2 * n), {Graph::none, 0});
    // the lanes a store writes by kind (Pair, Low, High, Scalar, Wide), of Complex64 and of Complex32
    static const int lanes[2][5] = {{2, 2, 2, 1, 4}, {4, 2, 2, 1, 8}};
    for (const Store& store : stores) {
        const int place = store.kind == Store::Scalar ? store.index : 2 * store.index;
        const int first = (store.kind == Store::High ? 2 : 0) + (store.half == 1 ? 4 : 0);
        for (int i = 0; i < lanes[single][store.kind]; ++i)
            y[static_cast<std::size_t>(place + i)] = {store.node, first + i};
    }
    return y;
}

Flow flowOf(const Form& form)
{
    return static_cast<Flow>(valueIndex(form, "flow", flowNames));
}

OpCounts arithmeticCounts(const Variant& v, int n)
{
    const bool single = v.precision == Precision::Single;
    NarrowKernel k;
    buildComplexFlow(n, *complexRule(n, v.precision), v.inverse ? 1 : -1, single, k);
    OpCounts c = k.graph.count(rootsOf(k.stores));
    c.additions *= single ? 1 : 2;
    c.multiplications *= single ? 1 : 2;
    return c;
}

NarrowKernel buildNarrow(const Variant& v, int n, Flow flow)
{
    static const char* const layouts[] = {
        "scalar", "two complex numbers per vector", "two complex numbers per vector, joined before products",
        "split real and imaginary vectors", "one complex number per vector, values carried in two parts"};
    const bool single = v.precision == Precision::Single;
    if ((flow == Flow::Scalar) != (single && n < 6) || (flow == Flow::Parts) == single)
        throw std::runtime_error(v.kernelName(n) + ": flow " + flowNames[static_cast<int>(flow)] +
                                 " does not exist for this kernel");
    const TreePtr tree = complexRule(n, v.precision);
    NarrowKernel k;
    k.kernel.vector = flow != Flow::Scalar;
    k.kernel.layout = layouts[static_cast<int>(flow)];
    if (flow == Flow::Scalar || flow == Flow::Parts)
        buildComplexFlow(n, *tree, v.inverse ? 1 : -1, single, k);
    else
        buildVectorFlow(n, *tree, v.inverse ? 1 : -1, flow, k);
    k.kernel.counts = k.graph.count(rootsOf(k.stores));
    return k;
}

// A kernel in the form its line of the table gives it.
Kernel buildKernel(const Variant& v, int n, const Form& form)
{
    const NarrowKernel k = buildNarrow(v, n, flowOf(form));
    Kernel kernel = k.kernel;
    const bool single = v.precision == Precision::Single, narrow = form.get("body") == "narrow";
    if (!narrow && (!target().wide() || !kernel.vector))
        formError(form.kernel, "body " + form.get("body") + " needs a 256-bit target and a vector flow");
    const WideBody wide = narrow ? WideBody() : wideBody(v, n, k, form);
    kernel.body = narrow ? printBody(k.graph, k.stores, single) : printBody(wide.graph, wide.stores, single);
    kernel.packing = !narrow ? wide.packing : target().wide() && kernel.vector ? "; kept at 128 bits" : "";
    return kernel;
}

}  // namespace gen
