#include "graph_eval.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <stdexcept>

#include "forms.h"

namespace gen {

namespace {

bool singlePrecision(Type type) { return type == Type::F32 || type == Type::V4F || type == Type::V8F; }

double flipSign(double v) { return std::copysign(v, std::signbit(v) ? 1.0 : -1.0); }

// One IEEE operation, rounded once in the precision of its node (volatile:
// no wider intermediate, no contraction).
double arithmetic(Op op, bool single, double a, double b)
{
    if (single) {
        const float x = static_cast<float>(a), y = static_cast<float>(b);
        volatile float r = op == Op::Add ? x + y : op == Op::Sub ? x - y : op == Op::Mul ? x * y : 0.0f - x;
        return r;
    }
    volatile double r = op == Op::Add ? a + b : op == Op::Sub ? a - b : op == Op::Mul ? a * b : 0.0 - a;
    return r;
}

}  // namespace

bool sameBits(double a, double b)
{
    if (std::isnan(a) && std::isnan(b))
        return true;
    return std::memcmp(&a, &b, sizeof a) == 0;
}

void LaneEvaluator::input(const Node& n, std::array<double, 8>& out, const std::vector<double>& x) const
{
    auto sample = [&](long index) {
        return index >= 0 && static_cast<std::size_t>(index) < x.size() ? x[static_cast<std::size_t>(index)] : 0.0;
    };
    switch (n.type) {
    case Type::F32:
    case Type::F64: out[0] = sample(n.index); break;
    case Type::V2D: out = {sample(2 * n.index), sample(2 * n.index + 1)}; break;
    case Type::V4F:
        out = {sample(2 * n.index), sample(2 * n.index + 1), n.index2 >= 0 ? sample(2 * n.index2) : 0.0,
               n.index2 >= 0 ? sample(2 * n.index2 + 1) : 0.0};
        break;
    case Type::V4D:
    case Type::V8F:
        for (int i = 0; i < laneCount(n.type); ++i)
            out[static_cast<std::size_t>(i)] = sample(n.index + i);
        break;
    }
}

LaneEvaluator::LaneEvaluator(const Graph& graph, const std::vector<double>& x, double factor)
    : values_(static_cast<std::size_t>(graph.size()))
{
    for (int id = 0; id < graph.size(); ++id) {
        const Node& n = graph.node(id);
        std::array<double, 8>& out = values_[static_cast<std::size_t>(id)];
        out.fill(0.0);
        const std::size_t count = static_cast<std::size_t>(laneCount(n.type));
        const bool single = singlePrecision(n.type);
        const std::array<double, 8> none{};
        const std::array<double, 8>& a = n.a >= 0 ? values_[static_cast<std::size_t>(n.a)] : none;
        const std::array<double, 8>& b = n.b >= 0 ? values_[static_cast<std::size_t>(n.b)] : none;
        if (selectsLanes(n.op)) {
            for (std::size_t i = 0; i < count; ++i) {
                const LaneSource from = laneSource(n, static_cast<int>(i));
                const double v = from.operand < 0 ? 0.0 : (from.operand == 0 ? a : b)[static_cast<std::size_t>(from.lane)];
                out[i] = from.flip ? flipSign(v) : v;
            }
            continue;
        }
        switch (n.op) {
        case Op::Input: input(n, out, x); break;
        case Op::Param:
            out.fill(single ? static_cast<double>(static_cast<float>(factor)) : factor);
            break;
        case Op::Const:
            if (n.type == Type::V8F || n.type == Type::V4D) {
                // a 256-bit constant names its 128-bit halves
                const std::size_t half = count / 2;
                for (std::size_t i = 0; i < half; ++i) {
                    out[i] = a[i];
                    out[i + half] = b[i];
                }
            } else {
                const double lanes[4] = {n.lane0, n.lane1, n.lane2, n.lane3};
                for (std::size_t i = 0; i < count; ++i)
                    out[i] = n.type == Type::V4F || n.type == Type::V2D ? lanes[i] : n.lane0;
            }
            break;
        case Op::Add:
        case Op::Sub:
        case Op::Mul:
        case Op::ZeroSub:
            for (std::size_t i = 0; i < count; ++i)
                out[i] = arithmetic(n.op, single, a[i], b[i]);
            break;
        case Op::Widen: out[0] = a[0]; break;
        case Op::Narrow: out[0] = static_cast<float>(a[0]); break;
        default: throw std::logic_error("an operation the evaluator does not know");
        }
    }
}

bool sameOutputs(const Graph& narrow, const OutputLanes& narrowLanes, const Graph& wide, const OutputLanes& wideLanes,
                 const std::vector<std::vector<double>>& inputs, double factor)
{
    if (narrowLanes.size() != wideLanes.size())
        return false;
    for (const std::vector<double>& x : inputs) {
        const LaneEvaluator runNarrow(narrow, x, factor), runWide(wide, x, factor);
        for (std::size_t i = 0; i < narrowLanes.size(); ++i) {
            const auto [fixedNode, fixedLane] = narrowLanes[i];
            const auto [node, lane] = wideLanes[i];
            // an output no node holds is an exact zero in both
            const double expected = fixedNode < 0 ? 0.0 : runNarrow.lanes(fixedNode)[static_cast<std::size_t>(fixedLane)];
            const double got = node < 0 ? 0.0 : runWide.lanes(node)[static_cast<std::size_t>(lane)];
            if (!sameBits(expected, got))
                return false;
        }
    }
    return true;
}

void verifyBody(const std::string& kernel, const Graph& narrow, const OutputLanes& narrowLanes, const Graph& wide,
                const OutputLanes& wideLanes, const std::vector<std::vector<double>>& inputs, double factor)
{
    if (!sameOutputs(narrow, narrowLanes, wide, wideLanes, inputs, factor))
        formError(kernel, "its body does not give the bits of its flow on the generator's check inputs");
}

}  // namespace gen
