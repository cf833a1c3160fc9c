// The batched complex DFT kernels of the companion library: lanes across
// transforms.  A kernel is the 128-bit flow of the single call (the flow its
// line of the table of forms names) taken apart lane by lane into a scalar
// flow, each node of it the IEEE operation that one lane of the 128-bit node
// does (a lane move is no operation; a sign change of a lane is a negation),
// and printed on vectors whose lane t holds transform t's value.  Every
// transform of a batch thus gets the single call's bits; the verifier runs
// each printed body with a check input per lane against the 128-bit flow.
#include <array>
#include <sstream>
#include <string>
#include <vector>

#include "batch_units.h"
#include "body_eval.h"
#include "complex_kernel.h"
#include "graph_eval.h"

namespace gen {

namespace {

// The flow of a 128-bit graph lane by lane: lanes[id][i] is the scalar node
// of lane i of node id (Graph::none: an undefined lane, read as +0).  Nodes
// are made as given, without the graph's rewrites, so that each is the
// operation its lane does.
struct LaneFlow {
    Graph graph{false};
    std::vector<std::array<int, 4>> lanes;
};

int make(Graph& g, Op op, Type type, int a = -1, int b = -1)
{
    Node n{op, type};
    n.a = a;
    n.b = b;
    return g.raw(n);
}

LaneFlow laneFlow(const Graph& narrow)
{
    LaneFlow f;
    Graph& g = f.graph;
    f.lanes.assign(static_cast<std::size_t>(narrow.size()), {Graph::none, Graph::none, Graph::none, Graph::none});
    for (int id = 0; id < narrow.size(); ++id) {
        const Node& n = narrow.node(id);
        const Type scalar = n.type == Type::F32 || n.type == Type::V4F ? Type::F32 : Type::F64;
        auto zero = [&] {
            Node z{Op::Const, scalar};
            return g.raw(z);
        };
        std::array<int, 4>& out = f.lanes[static_cast<std::size_t>(id)];
        const int count = laneCount(n.type);
        const std::array<int, 4> none{Graph::none, Graph::none, Graph::none, Graph::none};
        const std::array<int, 4>& a = n.a >= 0 ? f.lanes[static_cast<std::size_t>(n.a)] : none;
        const std::array<int, 4>& b = n.b >= 0 ? f.lanes[static_cast<std::size_t>(n.b)] : none;
        for (int i = 0; i < count; ++i) {
            int& lane = out[static_cast<std::size_t>(i)];
            if (selectsLanes(n.op)) {
                const LaneSource from = laneSource(n, i);
                lane = from.operand < 0 ? zero() : (from.operand == 0 ? a : b)[static_cast<std::size_t>(from.lane)];
                if (from.flip)
                    lane = make(g, Op::Neg, scalar, lane);
                continue;
            }
            switch (n.op) {
            case Op::Input: {
                // the real number the lane loads: V4F (re, im) of samples index and index2
                const int sample = count == 1 ? -1 : (i < 2 ? n.index : n.index2);
                Node in{Op::Input, scalar};
                in.index = count == 1 ? n.index : 2 * sample + i % 2;
                lane = count > 1 && sample < 0 ? zero() : g.raw(in);
                break;
            }
            case Op::Param: {
                Node p{Op::Param, scalar};
                p.index = n.index;
                lane = g.raw(p);
                break;
            }
            case Op::Const: {
                Node c{Op::Const, scalar};
                c.lane0 = i == 0 ? n.lane0 : i == 1 ? n.lane1 : i == 2 ? n.lane2 : n.lane3;
                lane = g.raw(c);
                break;
            }
            case Op::Add:
            case Op::Sub:
            case Op::Mul: lane = make(g, n.op, scalar, a[static_cast<std::size_t>(i)], b[static_cast<std::size_t>(i)]); break;
            case Op::ZeroSub:
            case Op::Widen:
            case Op::Narrow: lane = make(g, n.op, scalar, a[static_cast<std::size_t>(i)]); break;
            default:
                throw std::logic_error("a node the lane flow does not take apart (operation " +
                                       std::to_string(static_cast<int>(n.op)) + ")");
            }
        }
    }
    return f;
}

std::string batchUnit(const Variant& v, int n)
{
    const std::string name =
        "batchDFT" + v.direction() + "_CToC_" + std::to_string(n) + "_" + v.typeSuffix();
    const NarrowKernel k = buildNarrow(v, n, flowOf(formOf(v.kernelName(n), [&] { return searchForm(v, n); })));
    const bool single = v.precision == Precision::Single;
    const LaneFlow flow = laneFlow(k.graph);
    // a Complex32 flow with Real64 products runs as many transforms as a
    // vector of Real64 values has lanes
    bool mixed = false;
    for (int id = 0; id < flow.graph.size(); ++id)
        mixed = mixed || (single && flow.graph.node(id).type == Type::F64);
    const OutputLanes outputs = outputLanes(k.stores, n, single);
    BatchBody body;
    for (const auto& [node, lane] : outputs)
        body.stores.push_back(node < 0 ? Graph::none : flow.lanes[static_cast<std::size_t>(node)][static_cast<std::size_t>(lane)]);
    const BatchShape shape{single, mixed, 2, 2 * n, 2 * n};
    body.text = printBatchBody(flow.graph, body.stores, shape);
    verifyBatchBody(name, body.text, shape, [&](const std::vector<double>& x) {
        const LaneEvaluator narrow(k.graph, x, 0.375);
        std::vector<double> y;
        for (const auto& [node, lane] : outputs)
            y.push_back(node < 0 ? 0.0 : narrow.lanes(node)[static_cast<std::size_t>(lane)]);
        return y;
    });
    return batchKernelUnit(name, "Batched " + std::string(v.inverse ? "inverse" : "forward") + " complex DFT of length " +
                                     std::to_string(n) + ", " + v.sampleType() + ": lanes across transforms.",
                           body.text, shape, v.inverse ? "Inverse" : "Forward",
                           factorLiterals(v.scalarType(), n));
}

void emitBatchComplex(const std::string& dir)
{
    for (Precision precision : {Precision::Single, Precision::Double})
        for (bool inverse : {false, true}) {
            const Variant v{precision, inverse};
            const std::string stem = std::string("pgenbatchdft") + (inverse ? "inv" : "fwd") + v.typeSuffix();
            for (int n = 2; n <= 64; ++n)
                writeIfChanged(dir + "/" + stem + "_" + std::to_string(n) + ".cpp", batchUnit(v, n));
            const std::string table = "batchDFT" + v.direction() + "_CToC_";
            writeIfChanged(dir + "/" + stem + ".cpp", batchTableUnit(table + v.typeSuffix(), table, v.typeSuffix(),
                                                                    v.realType()));
        }
}

// The batch library's kernels: the complex ones here, the real DFT and
// Hartley ones in batch_real.cpp.
const FamilyRegistration batchFamily("batch", [](const std::string& dir) {
    emitBatchComplex(dir);
    real::emitBatchReal(dir);
});

}  // namespace

}  // namespace gen
