// The batched kernels of the companion library: lanes across transforms.
// A Complex32 kernel is the 128-bit flow of the single call (the flow its line
// of the table of forms names) taken apart lane by lane into a scalar flow,
// each node of it the IEEE operation that one lane of the 128-bit node does
// (a lane move is no operation; a sign change of a lane is a negation).  A
// real DFT or Hartley kernel is the scalar flow of the single call, lowered to
// its precision as the single call's is.  Either is printed on vectors whose
// lane t holds transform t's value: every statement is the single call's IEEE
// operation in every lane, so that each transform of a batch gets the single
// call's bits.  A Complex64 kernel is the 128-bit flow itself, each 16 bytes
// of a vector holding one transform's complex number, as the single call's
// vector holds it: no lane moves between the numbers of an element, and the
// same bits.  The verifier runs each printed body with a check input per
// transform against the flow before the unit is written.
#include <array>
#include <functional>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "complex_kernel.h"
#include "family.h"
#include "real_kernels.h"
#include "verifier.h"

namespace gen {

namespace {

// What a batched kernel computes on: its sample type, whether a Real32 flow
// has Real64 values, the real numbers per element and per transform's input;
// and what it must give: output k of a transform is the lane outputs[k] of
// the reference graph run on the transform's input (a node < 0: zero).
struct BatchShape {
    bool single, mixed;
    int perElement, inputs;
    const Graph& reference;
    OutputLanes outputs;
};

// Whether the Real64 values of a Real32 flow take two vectors each, so that a
// pass runs as many transforms as a Real32 vector has lanes: on targets whose
// Real32 vector has a 16-byte half to widen, for complex transforms (read
// element by element) and for real ones of at least a vector's numbers in and
// out.  Shorter real ones move fewer numbers through a transpose of half the
// size (on a Zen 4 core, lengths 2-7 run up to 1.4x faster on four lanes, the
// longer ones 1.05-1.5x faster on eight).
bool halves(const BatchShape& shape)
{
    const int floatLanes = target().vectorBits / 32;
    return target().wide() && shape.single && shape.mixed &&
           (shape.perElement == 2 ||
            (shape.inputs >= floatLanes && static_cast<int>(shape.outputs.size()) >= floatLanes));
}

// A Real32 flow's Real64 values in two halves: each Real64 node becomes one
// node on the lower half of the lanes and one on the upper half.  A widening
// takes the lower or the upper 16 bytes of its Real32 vector, a narrowing
// joins the two halves' results; every lane still does its own operation on
// its own values.  `stores` are renamed to the new graph's nodes.
Graph splitDoubles(const Graph& flow, std::vector<int>& stores)
{
    Graph g{false};
    // the node of each flow node on the lower ([0]) and the upper ([1]) half
    std::vector<std::array<int, 2>> at(flow.size(), {Graph::none, Graph::none});
    auto of = [&](int id, int half) { return id < 0 ? id : at[id][half]; };
    for (int id = 0; id < flow.size(); ++id) {
        const Node& n = flow.node(id);
        auto copy = [&](int half) {
            Node c = n;
            c.a = of(n.a, half);
            c.b = of(n.b, half);
            return g.raw(c);
        };
        if (n.op == Op::Widen) {
            for (int half : {0, 1})
                at[id][half] = g.raw({Op::Widen, Type::F64, g.raw({Op::Extract, Type::V4F, of(n.a, 0), -1, half})});
        } else if (n.op == Op::Narrow) {
            const int low = g.raw({Op::Narrow, Type::V4F, of(n.a, 0)});
            const int high = g.raw({Op::Narrow, Type::V4F, of(n.a, 1)});
            at[id][0] = at[id][1] = g.raw({Op::Join, Type::F32, low, high});
        } else if (n.type == Type::F64 && n.op != Op::Const) {
            at[id] = {copy(0), copy(1)};
        } else {
            at[id][0] = at[id][1] = copy(0);
        }
    }
    for (int& s : stores)
        s = of(s, 0);
    return g;
}

// The statements of a batched body: every node the stores need, then
// y.put(k, value) for element k of every transform.
std::string printBatchBody(const Graph& flow, const std::vector<int>& stores, bool single)
{
    const NodePrinter printer{[](const Node& node) { return "x.get(" + std::to_string(node.index) + ")"; },
                             [](const Node&) { return std::string("c"); },
                             [](Type type) { return std::string(type == Type::F64 ? "D" : "F"); }};
    std::string text = printNodes(flow, stores, printer, "    ");  // (an exact zero, Graph::none, is no root)
    const std::string vector = single ? "F" : "D";
    for (std::size_t k = 0; k < stores.size(); ++k) {
        const int s = stores[k];
        std::string value = s == Graph::none ? "kv::zero<" + vector + ">()" : valueOf(flow, s);
        if (s != Graph::none && flow.node(s).op == Op::Const)
            value = "kv::broadcast<" + vector + ">(" + value + ")";
        text += "    y.put(" + std::to_string(k) + ", " + value + ");\n";
    }
    return text;
}

// Runs the printed body with a different check input for each transform and
// holds every transform's stores against the reference.  A vector of `lanes`
// lanes holds `per` consecutive numbers of each of lanes / per transforms:
// number r of transform t is at (r / per) * lanes + t * per + r % per.
void verifyBatchBody(const std::string& kernel, const std::string& text, const BatchShape& shape, int lanes,
                     int per = 1)
{
    const int inputs = shape.inputs, transforms = lanes / per;
    auto at = [&](int r, int t) { return static_cast<std::size_t>(r / per * lanes + t * per + r % per); };
    const std::vector<std::vector<double>> samples = verifierInputs(inputs, shape.single);
    std::vector<std::vector<double>> interleaved;
    for (std::size_t first = 0; first < samples.size(); ++first) {
        std::vector<double> x(static_cast<std::size_t>(inputs * lanes));
        for (int t = 0; t < transforms; ++t)
            for (int j = 0; j < inputs; ++j)
                x[at(j, t)] = samples[(first + t) % samples.size()][j];
        interleaved.push_back(x);
    }
    const auto expected = [&](const std::vector<double>& x) {
        std::map<int, double> values;
        for (int t = 0; t < transforms; ++t) {
            std::vector<double> lane;
            for (int j = 0; j < inputs; ++j)
                lane.push_back(x[at(j, t)]);
            const LaneEvaluator reference(shape.reference, lane, 0.375);
            for (std::size_t k = 0; k < shape.outputs.size(); ++k) {
                const auto [node, from] = shape.outputs[k];
                values[static_cast<int>(at(static_cast<int>(k), t))] = node < 0 ? 0.0 : reference.lanes(node)[from];
            }
        }
        return values;
    };
    verifyPrintedText(kernel + " (lanes across transforms)", text, interleaved, {0.375, shape.single, lanes}, expected);
}

// The text of a batched kernel's unit: the vectors and the body in a class of
// the kernel's own, since the units of a unity build share their namespaces
// (F the vector of Real32 values, D of Real64 ones, c the scale factor in a
// vector of the body's type), and the kernel, which checks the flag and runs
// the body over the layout with `run` (its text up to the body's lambda).
std::string unitText(const std::string& name, const std::string& what, int n, const char* direction, bool single,
                     const std::string& floats, const std::string& run, const std::string& body)
{
    const std::string real = single ? "float" : "double", lane = single ? "L::F" : "L::D";
    std::ostringstream out;
    out << "// Generated by kvtgen; do not edit.\n// Batched " << what
        << ": lanes across transforms.\n#include \"batch/lanes.h\"\n\n"
        << "namespace kvtg_batch {\n\nnamespace {\n\n"
        << "struct " << name << "Lanes {\n"
        << "using F = " << floats << ";\nusing D = " << (target().wide() ? "kv::dwide" : "kv::dvec") << ";\n\n"
        << "template <bool Scaled, class In, class Out>\nstatic void body(const In& x, Out& y, " << (single ? "F" : "D")
        << " c)\n{\n" << body << "}\n};\n\n}  // namespace\n\n"
        << "Status " << name << "(const " << real << "* src, " << real << "* dst, const Layout& layout, int32_t flag)\n{\n"
        << "    using L = " << name << "Lanes;\n"
        << "    " << real << " c;\n"
        << "    if (!kvtg::pickFactor<" << real << ">(flag, kvtg::Direction::" << direction << ", "
        << factorLiterals(single ? Type::F32 : Type::F64, n) << ", c))\n        return StatusBadFlag;\n"
        << "#ifndef KVTG_ONE_BODY\n    if (c == 1) {\n"
        << "        " << run << "[](const auto& x, auto& y) { L::body<false>(x, y, kv::broadcast<" << lane
        << ">(" << (single ? "1.0f" : "1.0") << ")); });\n"
        << "        return StatusOk;\n    }\n#endif\n"
        << "    " << run << "[c](const auto& x, auto& y) { L::body<true>(x, y, kv::broadcast<" << lane << ">(c)); });\n"
        << "    return StatusOk;\n}\n\n}  // namespace kvtg_batch\n";
    return out.str();
}

// The unit of a batched kernel: its flow printed lanes across transforms and
// verified lane by lane (a bit that differs stops the generator, naming the
// kernel), and the kernel that runs the body over a layout.  `narrowStores`
// names the node stored at each element of a transform (Graph::none: an
// exact zero); `what` names the transform of length n in the title.
std::string batchKernelUnit(const std::string& name, const std::string& what, int n, const char* direction,
                            const Graph& narrowFlow, const std::vector<int>& narrowStores, const BatchShape& shape)
{
    const bool single = shape.single;
    // a Real32 kernel runs as many transforms as a Real64 vector has lanes
    // where its flow keeps each Real64 value in one vector
    const bool narrowFloats = single && shape.mixed && !halves(shape);
    std::vector<int> stores = narrowStores;
    const Graph flow = halves(shape) ? splitDoubles(narrowFlow, stores) : narrowFlow;
    const std::string body = printBatchBody(flow, stores, single);
    verifyBatchBody(name, body, shape, target().vectorBits / (single && !narrowFloats ? 32 : 64));
    // F holds 16 bytes where a Real32 flow keeps its Real64 values in one vector each
    const std::string lane = single ? "L::F" : "L::D";
    const std::string run = "run<" + lane + ", kv::lanes<" + (narrowFloats ? "L::D" : lane) + ">, " +
                            std::to_string(shape.perElement) + ", " + std::to_string(shape.inputs) + ", " +
                            std::to_string(shape.outputs.size()) + ">(src, dst, layout, ";
    return unitText(name, what, n, direction, single,
                    target().wide() && !narrowFloats ? "kv::fwide" : "kv::fvec", run, body);
}

// Writes the units of a batched entry point: the kernel of length n, named
// `stem` n _ `suffix`, as `unit` writes it, into the file `file` _ n, and the
// table of the kernels of lengths 2..64, `stem` `suffix`, into `file`.
void writeEntry(const std::string& dir, const std::string& file, const std::string& stem, const std::string& suffix,
                const std::string& real, const std::function<std::string(const std::string& name, int n)>& unit)
{
    std::string declarations, list;
    for (int n = 2; n <= 64; ++n) {
        const std::string name = stem + std::to_string(n) + "_" + suffix;
        writeIfChanged(dir + "/" + file + "_" + std::to_string(n) + ".cpp", unit(name, n));
        declarations += "Status " + name + "(const " + real + "*, " + real + "*, const Layout&, int32_t);\n";
        list += "    " + name + ",\n";
    }
    writeIfChanged(dir + "/" + file + ".cpp",
                   "// Generated by kvtgen; do not edit.\n// The kernels of " + stem + suffix + ", lengths 2..64.\n" +
                       "#include \"batch/lanes.h\"\n\nnamespace kvtg_batch {\n\n" + declarations +
                       "\nextern const Kernel<" + real + "> " + stem + suffix + "[63] = {\n" + list +
                       "};\n\n}  // namespace kvtg_batch\n");
}

// The complex DFT kernels.

// The flow of a 128-bit graph lane by lane: lanes[id][i] is the scalar node
// of lane i of node id (Graph::none: an undefined lane, read as +0).  Nodes
// are made as given, without the graph's rewrites, so that each is the
// operation its lane does.
struct LaneFlow {
    Graph graph{false};
    std::vector<std::array<int, 4>> lanes;
};

LaneFlow laneFlow(const Graph& narrow)
{
    LaneFlow f;
    const std::array<int, 4> none{Graph::none, Graph::none, Graph::none, Graph::none};
    f.lanes.assign(narrow.size(), none);
    for (int id = 0; id < narrow.size(); ++id) {
        const Node& n = narrow.node(id);
        const Type scalar = n.type == Type::F32 || n.type == Type::V4F ? Type::F32 : Type::F64;
        auto make = [&](Op op, int a = -1, int b = -1, int index = -1, double value = 0.0) {
            return f.graph.raw({op, scalar, a, b, index, -1, value});
        };
        const int count = laneCount(n.type);
        const std::array<int, 4>& a = n.a >= 0 ? f.lanes[n.a] : none;
        const std::array<int, 4>& b = n.b >= 0 ? f.lanes[n.b] : none;
        for (int i = 0; i < count; ++i) {
            int& lane = f.lanes[id][i];
            // the real number the lane loads: V4F (re, im) of samples index and index2
            const int sample = i < 2 ? n.index : n.index2;
            if (selectsLanes(n.op)) {
                const LaneSource from = laneSource(n, i);
                lane = from.operand < 0 ? make(Op::Const) : (from.operand == 0 ? a : b)[from.lane];
                if (from.flip)
                    lane = make(Op::Neg, lane);
            } else if (n.op == Op::Input) {
                lane = count == 1   ? make(Op::Input, -1, -1, n.index)
                       : sample < 0 ? make(Op::Const)
                                    : make(Op::Input, -1, -1, 2 * sample + i % 2);
            } else if (n.op == Op::Param || n.op == Op::Const) {
                lane = make(n.op, -1, -1, n.index, constantLane(n, i));
            } else if (n.op == Op::Add || n.op == Op::Sub || n.op == Op::Mul || n.op == Op::ZeroSub ||
                       n.op == Op::Widen || n.op == Op::Narrow) {
                lane = make(n.op, a[i], b[i]);  // b: -1 in every lane for one operand
            } else {
                throw std::logic_error("a node the lane flow does not take apart (operation " +
                                       std::to_string(static_cast<int>(n.op)) + ")");
            }
        }
    }
    return f;
}

// A Complex64 flow on whole complex numbers: the 128-bit flow itself, each
// 16-byte half of a vector holding one transform's complex number (two
// transforms a pass on 256-bit vectors, one on 128-bit ones).  Every node
// does in each half what it does in the single call's vector, and a 128-bit
// lane move stays in its half, so each transform gets the single call's bits.
// `roots` are renamed to the new graph's nodes.
Graph pairedFlow(const Graph& narrow, std::vector<int>& roots)
{
    if (!target().wide())
        return narrow;
    Graph g{false};
    std::vector<int> at(static_cast<std::size_t>(narrow.size()));
    for (int id = 0; id < narrow.size(); ++id) {
        Node n = narrow.node(id);
        if (n.type != Type::V2D)
            throw std::logic_error("a Complex64 flow with a value of another type");
        if (n.op == Op::Const) {
            n.a = n.b = g.raw(n);  // a 256-bit constant: its two 128-bit halves
        } else {
            n.a = n.a < 0 ? n.a : at[n.a];
            n.b = n.b < 0 ? n.b : at[n.b];
        }
        n.type = Type::V4D;
        at[id] = g.raw(n);
    }
    for (int& r : roots)
        r = at[r];
    return g;
}

// The batched kernel of a Complex64 flow on whole complex numbers: x.get(j)
// holds element j of each transform of the pass in a half, y.put(k, v)
// writes element k of each.
std::string pairedUnit(const std::string& name, const std::string& what, int n, const char* direction,
                       const NarrowKernel& k, const BatchShape& shape)
{
    std::vector<int> roots;
    for (const Store& s : k.stores) {
        if (s.kind != Store::Pair || s.node < 0)
            throw std::logic_error("a Complex64 store of a part of a vector");
        roots.push_back(s.node);
    }
    const Graph flow = pairedFlow(k.graph, roots);
    const NodePrinter printer{[](const Node& node) { return "x.get(" + std::to_string(node.index) + ")"; },
                              [](const Node&) { return std::string("c"); },
                              {}};
    std::string body = printNodes(flow, roots, printer, "    ");
    for (std::size_t i = 0; i < roots.size(); ++i)
        body += "    y.put(" + std::to_string(k.stores[i].index) + ", " + valueOf(flow, roots[i]) + ");\n";
    const int lanes = target().vectorBits / 64;
    verifyBatchBody(name, body, shape, lanes, 2);
    return unitText(name, what, n, direction, false, "kv::fvec", "runPairs<L::D>(src, dst, layout, ", body);
}

std::string batchUnit(const Variant& v, const std::string& name, int n)
{
    const NarrowKernel k = buildNarrow(v, n, flowOf(formOf(v.kernelName(n), [&] { return searchForm(v, n); })));
    const std::string what = std::string(v.inverse ? "inverse" : "forward") + " complex DFT of length " +
                             std::to_string(n) + ", " + v.sampleType();
    const char* direction = v.inverse ? "Inverse" : "Forward";
    if (v.precision == Precision::Double)
        return pairedUnit(name, what, n, direction, k,
                          {false, false, 2, 2 * n, k.graph, outputLanes(k.stores, n, false)});
    const LaneFlow flow = laneFlow(k.graph);
    // a Complex32 flow with Real64 products runs as many transforms as a
    // vector of Real64 values has lanes
    bool mixed = false;
    for (int id = 0; id < flow.graph.size(); ++id)
        mixed = mixed || flow.graph.node(id).type == Type::F64;
    const OutputLanes outputs = outputLanes(k.stores, n, true);
    std::vector<int> stores;
    for (const auto& [node, lane] : outputs)
        stores.push_back(node < 0 ? Graph::none : flow.lanes[node][lane]);
    return batchKernelUnit(name, what, n, direction, flow.graph, stores, {true, mixed, 2, 2 * n, k.graph, outputs});
}

void emitBatchComplex(const std::string& dir)
{
    for (Precision precision : {Precision::Single, Precision::Double})
        for (bool inverse : {false, true}) {
            const Variant v{precision, inverse};
            writeEntry(dir, std::string("pgenbatchdft") + (inverse ? "inv" : "fwd") + v.typeSuffix(),
                       "batchDFT" + v.direction() + "_CToC_", v.typeSuffix(), v.realType(),
                       [&](const std::string& name, int n) { return batchUnit(v, name, n); });
        }
}

}  // namespace

}  // namespace gen

// The real DFT and Hartley kernels.
namespace gen::real {

namespace {

// The kernel of length n of the flow k between a transform's n samples and
// its spectrum in the layout `l` (Hartley, with l null: Pack, the values in
// order); `inverse` reads the spectrum.  A CCS spectrum holds the imaginary
// parts of R0 and of the Nyquist value too, as exact zeros.
std::string batchUnit(const std::string& name, const Precision& p, int n, const KernelFlow& k, const LayoutInfo* l,
                      bool inverse)
{
    const Layout layout = l != nullptr ? l->layout : Layout::Pack;
    std::vector<int> samples, slots;
    for (int j = 0; j < n; ++j) {
        samples.push_back(j);
        slots.push_back(position(layout, n, j));
    }
    const int spectrum = layout != Layout::CCS ? n : n % 2 == 0 ? n + 2 : n + 1;
    const Lowered low = lower(k, inverse ? slots : samples, p.single);
    std::vector<int> stores(static_cast<std::size_t>(inverse ? n : spectrum), Graph::none);
    for (int i = 0; i < n; ++i)
        stores[(inverse ? samples : slots)[i]] = low.stores[i];
    OutputLanes outputs;
    for (int s : stores)
        outputs.emplace_back(s, 0);
    const std::string of = " of length " + std::to_string(n) + ", " + p.sample;
    const std::string what = l == nullptr ? "Hartley transform" + of
                                          : (inverse ? "inverse real DFT" : "forward real DFT") + of + ", layout " +
                                                l->stem;
    return batchKernelUnit(name, what, n, l == nullptr ? "Both" : inverse ? "Inverse" : "Forward", low.graph, stores,
                           {p.single, p.single, 1, inverse ? spectrum : n, low.graph, outputs});
}

void emitBatchReal(const std::string& dir)
{
    std::vector<KernelFlow> fwd, inv, hartley;  // of length n at n - 2
    for (int n = 2; n <= 64; ++n) {
        fwd.push_back(forwardFlow(n));
        inv.push_back(inverseFlow(n));
        hartley.push_back(hartleyFlow(n));
    }
    for (const Precision& p : precisions) {
        // the units `file`_n and the table `file` of the kernels `stem` n _ p.suffix
        auto entry = [&](const std::string& file, const std::string& stem, const std::vector<KernelFlow>& flows,
                         const LayoutInfo* l, bool inverse) {
            writeEntry(dir, file + p.suffix, stem, p.suffix, p.scalar, [&](const std::string& name, int n) {
                return batchUnit(name, p, n, flows[n - 2], l, inverse);
            });
        };
        for (const LayoutInfo& l : layouts) {
            entry(std::string("pgenbatchdftfwd") + l.stem, std::string("batchDFTFwd_") + l.fwdName + "_", fwd, &l,
                  false);
            entry(std::string("pgenbatchdftinv") + l.stem, std::string("batchDFTInv_") + l.invName + "_", inv, &l,
                  true);
        }
        entry("pgenbatchhartley", "batchHartley_", hartley, nullptr, false);
    }
}

// The batch library's kernels: the complex ones, then the real DFT and
// Hartley ones.
const FamilyRegistration batchFamily("batch", [](const std::string& dir) {
    emitBatchComplex(dir);
    emitBatchReal(dir);
});

}  // namespace

}  // namespace gen::real
