#include "graph_eval.h"

#include <cmath>
#include <cstring>
#include <stdexcept>

namespace gen {

namespace {
float flipSign(float v)
{
    std::uint32_t bits;
    std::memcpy(&bits, &v, sizeof bits);
    bits ^= 0x80000000u;
    std::memcpy(&v, &bits, sizeof bits);
    return v;
}
}  // namespace

bool sameBits(float a, float b)
{
    if (std::isnan(a) && std::isnan(b))
        return true;
    return std::memcmp(&a, &b, sizeof a) == 0;
}

LaneEvaluator::LaneEvaluator(const Graph& graph, const std::vector<float>& x, float factor)
    : values_(static_cast<std::size_t>(graph.size()))
{
    auto sample = [&](int index) { return index >= 0 && static_cast<std::size_t>(index) < x.size() ? x[static_cast<std::size_t>(index)] : 0.0f; };
    for (int id = 0; id < graph.size(); ++id) {
        const Node& n = graph.node(id);
        std::array<float, 8>& out = values_[static_cast<std::size_t>(id)];
        out.fill(0.0f);
        const int count = laneCount(n.type);
        const std::array<float, 8> none{};
        const std::array<float, 8>& a = n.a >= 0 ? values_[static_cast<std::size_t>(n.a)] : none;
        const std::array<float, 8>& b = n.b >= 0 ? values_[static_cast<std::size_t>(n.b)] : none;
        if (selectsLanes(n.op)) {
            for (int i = 0; i < count; ++i) {
                const LaneSource from = laneSource(n, i);
                const float v = from.operand < 0 ? 0.0f : (from.operand == 0 ? a : b)[static_cast<std::size_t>(from.lane)];
                out[static_cast<std::size_t>(i)] = from.flip ? flipSign(v) : v;
            }
            continue;
        }
        switch (n.op) {
        case Op::Input:
            if (n.type == Type::V4F) {
                out = {sample(2 * n.index), sample(2 * n.index + 1), n.index2 >= 0 ? sample(2 * n.index2) : 0.0f,
                       n.index2 >= 0 ? sample(2 * n.index2 + 1) : 0.0f};
            } else if (n.type == Type::F32) {
                out[0] = sample(n.index);
            } else {
                throw std::logic_error("an input the evaluator does not know");
            }
            break;
        case Op::Param:
            out.fill(factor);
            break;
        case Op::Const:
            if (n.type == Type::V8F) {
                for (int i = 0; i < 4; ++i) {
                    out[static_cast<std::size_t>(i)] = a[static_cast<std::size_t>(i)];
                    out[static_cast<std::size_t>(i + 4)] = b[static_cast<std::size_t>(i)];
                }
            } else {
                const double lanes[4] = {n.lane0, n.lane1, n.lane2, n.lane3};
                for (int i = 0; i < count; ++i)
                    out[static_cast<std::size_t>(i)] = static_cast<float>(n.type == Type::V4F ? lanes[i] : n.lane0);
            }
            break;
        case Op::Add:
        case Op::Sub:
        case Op::Mul:
            for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
                // volatile: one rounding per operation, as the kernel's instructions make it
                volatile float r = n.op == Op::Add ? a[i] + b[i] : n.op == Op::Sub ? a[i] - b[i] : a[i] * b[i];
                out[i] = r;
            }
            break;
        case Op::ZeroSub:
            for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
                volatile float r = 0.0f - a[i];
                out[i] = r;
            }
            break;
        default:
            throw std::logic_error("an operation the evaluator does not know");
        }
    }
}

}  // namespace gen
