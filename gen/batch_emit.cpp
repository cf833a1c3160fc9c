// The batched kernels of the companion library: lanes across transforms.
// A complex kernel is the 128-bit flow of the single call (the flow its line
// of the table of forms names) taken apart lane by lane into a scalar flow,
// each node of it the IEEE operation that one lane of the 128-bit node does
// (a lane move is no operation; a sign change of a lane is a negation).  A
// real DFT or Hartley kernel is the scalar flow of the single call, lowered to
// its precision as the single call's is.  Either is printed on vectors whose
// lane t holds transform t's value: every statement is the single call's IEEE
// operation in every lane, so that each transform of a batch gets the single
// call's bits.  The verifier runs each printed body with a check input per
// lane against the flow before the unit is written.
#include <algorithm>
#include <array>
#include <numeric>
#include <stdexcept>
#include <string>
#include <vector>

#include "batch_units.h"
#include "body_eval.h"
#include "complex_kernel.h"
#include "family.h"
#include "graph_eval.h"
#include "real_kernels.h"
#include "real_units.h"

// The real DFT and Hartley kernels.
namespace gen::real {

namespace {

// The kernel of the flow k: its loads read the elements `loadSlots` of a
// transform's input, its stores write the elements `storeSlots`, and the
// elements `zeroSlots` are exact zeros.
std::string batchUnit(const std::string& name, const std::string& what, const Precision& p, int n,
                      const KernelFlow& k, const std::vector<int>& loadSlots, const std::vector<int>& storeSlots,
                      const std::vector<int>& zeroSlots, const char* direction, int inputs)
{
    const Lowered low = lower(k, loadSlots, p.single);
    const int outputs = static_cast<int>(storeSlots.size() + zeroSlots.size());
    std::vector<int> stores(static_cast<std::size_t>(outputs), Graph::none);
    for (std::size_t i = 0; i < storeSlots.size(); ++i)
        stores[storeSlots[i]] = low.stores[i];
    // the elements of a transform's input, whether the flow reads them or not
    // (an inverse kernel does not read the zeros of a CCS spectrum)
    inputs = std::max(inputs, *std::max_element(loadSlots.begin(), loadSlots.end()) + 1);
    return batchKernelUnit(name, what, low.graph, stores, {p.single, p.single, 1, inputs, outputs},
                           [&](const std::vector<double>& x) {
                               const LaneEvaluator flow(low.graph, x, 0.375);
                               std::vector<double> y;
                               for (int s : stores)
                                   y.push_back(s == Graph::none ? 0.0 : flow.lanes(s)[0]);
                               return y;
                           },
                           direction, factorLiterals(p.type, n));
}

void emitBatchReal(const std::string& dir)
{
    for (int n = 2; n <= 64; ++n) {
        const KernelFlow fwd = forwardFlow(n), inv = inverseFlow(n), hartley = hartleyFlow(n);
        std::vector<int> identity(static_cast<std::size_t>(n));
        std::iota(identity.begin(), identity.end(), 0);
        const std::string size = std::to_string(n);
        for (const Precision& p : precisions) {
            const std::string suffix = size + "_" + p.suffix, of = " of length " + size + ", " + p.sample;
            for (const LayoutInfo& l : layouts) {
                std::vector<int> slots, zeros;
                for (int j = 0; j < n; ++j)
                    slots.push_back(position(l.layout, n, j));
                if (l.layout == Layout::CCS)
                    zeros = n % 2 == 0 ? std::vector<int>{1, n + 1} : std::vector<int>{1};
                const std::string file = std::string(l.stem) + p.suffix + "_" + size + ".cpp";
                const std::string layout = std::string(", layout ") + l.stem;
                writeIfChanged(dir + "/pgenbatchdftfwd" + file,
                               batchUnit(std::string("batchDFTFwd_") + l.fwdName + "_" + suffix,
                                         "forward real DFT" + of + layout, p, n, fwd, identity, slots, zeros,
                                         "Forward", n));
                writeIfChanged(dir + "/pgenbatchdftinv" + file,
                               batchUnit(std::string("batchDFTInv_") + l.invName + "_" + suffix,
                                         "inverse real DFT" + of + layout, p, n, inv, slots, identity, {}, "Inverse",
                                         n + static_cast<int>(zeros.size())));
            }
            writeIfChanged(dir + "/pgenbatchhartley" + std::string(p.suffix) + "_" + size + ".cpp",
                           batchUnit("batchHartley_" + suffix, "Hartley transform" + of, p, n, hartley, identity,
                                     identity, {}, "Both", n));
        }
    }
    for (const Precision& p : precisions) {
        for (const LayoutInfo& l : layouts) {
            const std::string file = std::string(l.stem) + p.suffix + ".cpp";
            writeIfChanged(dir + "/pgenbatchdftfwd" + file,
                           batchTableUnit(std::string("batchDFTFwd_") + l.fwdName + "_", p.suffix, p.scalar));
            writeIfChanged(dir + "/pgenbatchdftinv" + file,
                           batchTableUnit(std::string("batchDFTInv_") + l.invName + "_", p.suffix, p.scalar));
        }
        writeIfChanged(dir + "/pgenbatchhartley" + std::string(p.suffix) + ".cpp",
                       batchTableUnit("batchHartley_", p.suffix, p.scalar));
    }
}

}  // namespace

}  // namespace gen::real

// The complex DFT kernels, and the family.
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

LaneFlow laneFlow(const Graph& narrow)
{
    LaneFlow f;
    const std::array<int, 4> none{Graph::none, Graph::none, Graph::none, Graph::none};
    f.lanes.assign(narrow.size(), none);
    for (int id = 0; id < narrow.size(); ++id) {
        const Node& n = narrow.node(id);
        const Type scalar = n.type == Type::F32 || n.type == Type::V4F ? Type::F32 : Type::F64;
        auto make = [&](Op op, int a = -1, int b = -1, int index = -1, double value = 0.0) {
            Node lane{op, scalar};
            lane.a = a;
            lane.b = b;
            lane.index = index;
            lane.lane0 = value;
            return f.graph.raw(lane);
        };
        const int count = laneCount(n.type);
        const std::array<int, 4>& a = n.a >= 0 ? f.lanes[n.a] : none;
        const std::array<int, 4>& b = n.b >= 0 ? f.lanes[n.b] : none;
        const double values[4] = {n.lane0, n.lane1, n.lane2, n.lane3};
        for (int i = 0; i < count; ++i) {
            int& lane = f.lanes[id][i];
            if (selectsLanes(n.op)) {
                const LaneSource from = laneSource(n, i);
                lane = from.operand < 0 ? make(Op::Const) : (from.operand == 0 ? a : b)[from.lane];
                if (from.flip)
                    lane = make(Op::Neg, lane);
                continue;
            }
            // the real number the lane loads: V4F (re, im) of samples index and index2
            const int sample = i < 2 ? n.index : n.index2;
            switch (n.op) {
            case Op::Input:
                lane = count == 1   ? make(Op::Input, -1, -1, n.index)
                       : sample < 0 ? make(Op::Const)
                                    : make(Op::Input, -1, -1, 2 * sample + i % 2);
                break;
            case Op::Param: lane = make(Op::Param, -1, -1, n.index); break;
            case Op::Const: lane = make(Op::Const, -1, -1, -1, values[i]); break;
            case Op::Add:
            case Op::Sub:
            case Op::Mul: lane = make(n.op, a[i], b[i]); break;
            case Op::ZeroSub:
            case Op::Widen:
            case Op::Narrow: lane = make(n.op, a[i]); break;
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
    const std::string name = "batchDFT" + v.direction() + "_CToC_" + std::to_string(n) + "_" + v.typeSuffix();
    const NarrowKernel k = buildNarrow(v, n, flowOf(formOf(v.kernelName(n), [&] { return searchForm(v, n); })));
    const bool single = v.precision == Precision::Single;
    const LaneFlow flow = laneFlow(k.graph);
    // a Complex32 flow with Real64 products runs as many transforms as a
    // vector of Real64 values has lanes
    bool mixed = false;
    for (int id = 0; id < flow.graph.size(); ++id)
        mixed = mixed || (single && flow.graph.node(id).type == Type::F64);
    const OutputLanes outputs = outputLanes(k.stores, n, single);
    std::vector<int> stores;
    for (const auto& [node, lane] : outputs)
        stores.push_back(node < 0 ? Graph::none : flow.lanes[node][lane]);
    return batchKernelUnit(name,
                           std::string(v.inverse ? "inverse" : "forward") + " complex DFT of length " +
                               std::to_string(n) + ", " + v.sampleType(),
                           flow.graph, stores, {single, mixed, 2, 2 * n, 2 * n},
                           [&](const std::vector<double>& x) {
                               const LaneEvaluator narrow(k.graph, x, 0.375);
                               std::vector<double> y;
                               for (const auto& [node, lane] : outputs)
                                   y.push_back(node < 0 ? 0.0 : narrow.lanes(node)[lane]);
                               return y;
                           },
                           v.inverse ? "Inverse" : "Forward", factorLiterals(v.scalarType(), n));
}

void emitBatchComplex(const std::string& dir)
{
    for (Precision precision : {Precision::Single, Precision::Double})
        for (bool inverse : {false, true}) {
            const Variant v{precision, inverse};
            const std::string stem = std::string("pgenbatchdft") + (inverse ? "inv" : "fwd") + v.typeSuffix();
            for (int n = 2; n <= 64; ++n)
                writeIfChanged(dir + "/" + stem + "_" + std::to_string(n) + ".cpp", batchUnit(v, n));
            writeIfChanged(dir + "/" + stem + ".cpp",
                           batchTableUnit("batchDFT" + v.direction() + "_CToC_", v.typeSuffix(), v.realType()));
        }
}

// The batch library's kernels: the complex ones, then the real DFT and
// Hartley ones.
const FamilyRegistration batchFamily("batch", [](const std::string& dir) {
    emitBatchComplex(dir);
    real::emitBatchReal(dir);
});

}  // namespace

}  // namespace gen
