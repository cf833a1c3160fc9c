// The verifier: runs an operation graph on the check inputs, lane by lane,
// and holds a wide body against its narrow flow.
#include "graph_eval.h"

#include <cmath>
#include <cstring>
#include <stdexcept>

namespace gen {

double arithmetic(Op op, bool single, double a, double b)
{
    // volatile: no wider intermediate, no contraction
    if (single) {
        const float x = static_cast<float>(a), y = static_cast<float>(b);
        volatile float r = op == Op::Add ? x + y : op == Op::Sub ? x - y : op == Op::Mul ? x * y : 0.0f - x;
        return r;
    }
    volatile double r = op == Op::Add ? a + b : op == Op::Sub ? a - b : op == Op::Mul ? a * b : 0.0 - a;
    return r;
}

bool sameBits(double a, double b)
{
    return (std::isnan(a) && std::isnan(b)) || std::memcmp(&a, &b, sizeof a) == 0;
}

LaneEvaluator::LaneEvaluator(const Graph& graph, const std::vector<double>& x, double factor)
{
    auto sample = [&](long index) {
        return index >= 0 && static_cast<std::size_t>(index) < x.size() ? x[static_cast<std::size_t>(index)] : 0.0;
    };
    auto flip = [](double v) { return std::copysign(v, std::signbit(v) ? 1.0 : -1.0); };
    values_.reserve(static_cast<std::size_t>(graph.size()));
    walkLanes(graph, values_, 0.0, flip, [&](const Node& n, int i, double a, double b) {
        const bool single = n.type == Type::F32 || n.type == Type::V4F || n.type == Type::V8F;
        switch (n.op) {
        case Op::Input:
            if (n.type == Type::V2D)
                return sample(2 * n.index + i);
            if (n.type == Type::V4F)
                return sample(2 * (i < 2 ? n.index : n.index2) + i % 2);
            return sample(n.index + i);
        case Op::Param: return single ? static_cast<double>(static_cast<float>(factor)) : factor;
        case Op::Const: return constantLane(n, i);
        case Op::Add:
        case Op::Sub:
        case Op::Mul:
        case Op::ZeroSub: return arithmetic(n.op, single, a, b);
        case Op::Widen: return a;
        case Op::Narrow: return static_cast<double>(static_cast<float>(a));
        default: throw std::logic_error("an operation the evaluator does not know");
        }
    });
}

bool sameOutputs(const Graph& narrow, const OutputLanes& narrowLanes, const Graph& wide, const OutputLanes& wideLanes,
                 const std::vector<std::vector<double>>& inputs, double factor)
{
    if (narrowLanes.size() != wideLanes.size())
        return false;
    // an output no node holds is an exact zero in both
    auto value = [](const LaneEvaluator& run, std::pair<int, int> output) {
        return output.first < 0 ? 0.0 : run.lanes(output.first)[static_cast<std::size_t>(output.second)];
    };
    for (const std::vector<double>& x : inputs) {
        const LaneEvaluator runNarrow(narrow, x, factor), runWide(wide, x, factor);
        for (std::size_t i = 0; i < narrowLanes.size(); ++i)
            if (!sameBits(value(runNarrow, narrowLanes[i]), value(runWide, wideLanes[i])))
                return false;
    }
    return true;
}

}  // namespace gen
