// The shared pieces of the batched kernels: a scalar flow printed lanes
// across transforms, held lane by lane against its reference, in its unit.
#include "batch_units.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <map>
#include <sstream>

#include "body_eval.h"
#include "family.h"

namespace gen {

namespace {

// The vectors of a batch on the current target: D for Real64 values, F for
// Real32 ones (16 bytes where a Real32 flow keeps its Real64 values in one
// vector each).
std::string doubles() { return target().wide() ? "kv::dwide" : "kv::dvec"; }
std::string floats(bool narrow) { return target().wide() && !narrow ? "kv::fwide" : "kv::fvec"; }
int doubleLanes() { return target().vectorBits / 64; }

// Whether the Real64 values of a Real32 flow take two vectors each, so that a
// pass runs as many transforms as a Real32 vector has lanes: on targets whose
// Real32 vector has a 16-byte half to widen, for complex transforms (read
// element by element) and for real ones of at least a vector's numbers in and
// out.  Shorter real ones move fewer numbers through a transpose of half the
// size (on a Zen 4 core, lengths 2-7 run up to 1.4x faster on four lanes, the
// longer ones 1.05-1.5x faster on eight).
bool halves(const BatchShape& shape)
{
    const int floatLanes = 2 * doubleLanes();
    return target().wide() && shape.single && shape.mixed &&
           (shape.perElement == 2 || (shape.inputs >= floatLanes && shape.outputs >= floatLanes));
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
    auto make = [&](Op op, Type type, int a, int b, int index) {
        Node n{op, type};
        n.a = a;
        n.b = b;
        n.index = index;
        return g.raw(n);
    };
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
                at[id][half] = make(Op::Widen, Type::F64, make(Op::Extract, Type::V4F, of(n.a, 0), -1, half), -1, -1);
        } else if (n.op == Op::Narrow) {
            const int low = make(Op::Narrow, Type::V4F, of(n.a, 0), -1, -1);
            const int high = make(Op::Narrow, Type::V4F, of(n.a, 1), -1, -1);
            at[id][0] = at[id][1] = make(Op::Join, Type::F32, low, high, -1);
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
    NodePrinter printer;
    printer.input = [](const Node& node) { return "x.get(" + std::to_string(node.index) + ")"; };
    printer.param = [](const Node&) { return std::string("c"); };
    printer.lanesOf = [](Type type) { return std::string(type == Type::F64 ? "D" : "F"); };
    std::vector<int> roots;
    std::copy_if(stores.begin(), stores.end(), std::back_inserter(roots), [](int s) { return s != Graph::none; });
    std::string text = printNodes(flow, roots, printer, "    ");
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

// Runs the printed body with a different check input in each lane and holds
// every lane's stores against the reference.
void verifyBatchBody(const std::string& kernel, const std::string& text, const BatchShape& shape, int lanes,
                     const BatchReference& reference)
{
    const int inputs = shape.inputs;
    const std::vector<std::vector<double>> samples = verifierInputs(inputs, shape.single);
    std::vector<std::vector<double>> interleaved;
    for (std::size_t first = 0; first < samples.size(); ++first) {
        std::vector<double> x(static_cast<std::size_t>(inputs * lanes));
        for (int l = 0; l < lanes; ++l)
            for (int j = 0; j < inputs; ++j)
                x[j * lanes + l] = samples[(first + l) % samples.size()][j];
        interleaved.push_back(x);
    }
    const auto expected = [&](const std::vector<double>& x) {
        std::map<int, double> values;
        for (int l = 0; l < lanes; ++l) {
            std::vector<double> lane;
            for (int j = 0; j < inputs; ++j)
                lane.push_back(x[j * lanes + l]);
            const std::vector<double> y = reference(lane);
            for (int k = 0; k < shape.outputs; ++k)
                values[k * lanes + l] = y[k];
        }
        return values;
    };
    verifyPrintedText(kernel + " (lanes across transforms)", text, interleaved, {0.375, shape.single, lanes}, expected);
}

}  // namespace

std::string batchKernelUnit(const std::string& name, const std::string& what, const Graph& narrowFlow,
                            const std::vector<int>& narrowStores, const BatchShape& shape,
                            const BatchReference& reference, const char* direction, const std::string& factors)
{
    const bool single = shape.single;
    // a Real32 kernel runs as many transforms as a Real64 vector has lanes
    // where its flow keeps each Real64 value in one vector
    const bool narrowFloats = single && shape.mixed && !halves(shape);
    std::vector<int> stores = narrowStores;
    const Graph flow = halves(shape) ? splitDoubles(narrowFlow, stores) : narrowFlow;
    const std::string body = printBatchBody(flow, stores, single);
    verifyBatchBody(name, body, shape, single && !narrowFloats ? 2 * doubleLanes() : doubleLanes(), reference);
    // the vectors and the body in a class of the kernel's own, since the units
    // of a unity build share their namespaces
    const std::string real = single ? "float" : "double", lane = single ? "L::F" : "L::D";
    const std::string run = "run<" + lane + ", kv::lanes<" + (narrowFloats ? "L::D" : lane) + ">, " +
                            std::to_string(shape.perElement) + ", " + std::to_string(shape.inputs) + ", " +
                            std::to_string(shape.outputs) + ">(src, dst, layout, ";
    std::ostringstream out;
    out << "// Generated by kvtgen; do not edit.\n// Batched " << what
        << ": lanes across transforms.\n#include \"batch/lanes.h\"\n\n"
        << "namespace kvtg_batch {\n\nnamespace {\n\n"
        << "struct " << name << "Lanes {\n"
        << "using F = " << floats(narrowFloats) << ";\nusing D = " << doubles() << ";\n\n"
        << "template <bool Scaled, class In, class Out>\nstatic void body(const In& x, Out& y, " << (single ? "F" : "D")
        << " c)\n{\n" << body << "}\n};\n\n}  // namespace\n\n"
        << "Status " << name << "(const " << real << "* src, " << real << "* dst, const Layout& layout, int32_t flag)\n{\n"
        << "    using L = " << name << "Lanes;\n"
        << "    " << real << " c;\n"
        << "    if (!kvtg::pickFactor<" << real << ">(flag, kvtg::Direction::" << direction << ", " << factors
        << ", c))\n        return StatusBadFlag;\n"
        << "#ifndef KVTG_ONE_BODY\n    if (c == 1) {\n"
        << "        " << run << "[](const auto& x, auto& y) { L::body<false>(x, y, kv::broadcast<" << lane
        << ">(" << (single ? "1.0f" : "1.0") << ")); });\n"
        << "        return StatusOk;\n    }\n#endif\n"
        << "    " << run << "[c](const auto& x, auto& y) { L::body<true>(x, y, kv::broadcast<" << lane << ">(c)); });\n"
        << "    return StatusOk;\n}\n\n}  // namespace kvtg_batch\n";
    return out.str();
}

std::string batchTableUnit(const std::string& stem, const std::string& suffix, const std::string& real)
{
    std::ostringstream out;
    out << "// Generated by kvtgen; do not edit.\n// The kernels of " << stem << suffix << ", lengths 2..64.\n"
        << "#include \"batch/lanes.h\"\n\nnamespace kvtg_batch {\n\n";
    for (int n = 2; n <= 64; ++n)
        out << "Status " << stem << n << "_" << suffix << "(const " << real << "*, " << real
            << "*, const Layout&, int32_t);\n";
    out << "\nextern const Kernel<" << real << "> " << stem << suffix << "[63] = {\n";
    for (int n = 2; n <= 64; ++n)
        out << "    " << stem << n << "_" << suffix << ",\n";
    out << "};\n\n}  // namespace kvtg_batch\n";
    return out.str();
}

}  // namespace gen
