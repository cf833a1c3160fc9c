// The lowering of a real kernel's flow to the operation graph of one
// precision (see real_kernels.h): the flow's additions, subtractions and
// products by constants become typed nodes, Real32 sums with Real64
// products and expressions in the single-precision kernels, and every
// output is scaled by the factor of the flag before it is stored.
#include <stdexcept>

#include "real_kernels.h"

namespace gen::real {

Lowered lower(const KernelFlow& k, const std::vector<int>& loadSlots, bool single)
{
    Lowered out;
    Graph& g = out.graph;
    const Type narrowType = single ? Type::F32 : Type::F64;
    std::vector<int> inputIds;
    for (int slot : loadSlots)
        inputIds.push_back(g.input(narrowType, slot));
    const int scale = g.param(narrowType, 0);
    const std::vector<int> uses = k.flow.useCounts(k.outputs);
    std::vector<int> value(static_cast<std::size_t>(k.flow.size()), -1);
    auto wide = [&](int id) { return g.node(id).type == Type::F64; };
    auto toWide = [&](int id) { return single ? g.widen(id) : id; };
    auto toNarrow = [&](int id) { return single ? g.narrow(id) : id; };
    for (int id = 0; id < k.flow.size(); ++id) {
        if (uses[static_cast<std::size_t>(id)] == 0)
            continue;
        const Flow::Node& n = k.flow.node(id);
        const int a = n.a >= 0 ? value[static_cast<std::size_t>(n.a)] : -1;
        const int b = n.b >= 0 ? value[static_cast<std::size_t>(n.b)] : -1;
        int v = -1;
        switch (n.kind) {
        case Flow::Kind::Input: v = inputIds[static_cast<std::size_t>(n.index)]; break;
        case Flow::Kind::Mul: v = g.mulConst(toWide(toNarrow(a)), n.c); break;  // a product starts from a rounded value
        case Flow::Kind::Double: v = g.mulConst(toNarrow(a), 2.0L); break;
        case Flow::Kind::Add:
        case Flow::Kind::Sub: {
            const bool inWide = single && n.expr && (wide(a) || wide(b));
            const int x = inWide ? toWide(a) : toNarrow(a);
            const int y = inWide ? toWide(b) : toNarrow(b);
            v = n.kind == Flow::Kind::Add ? g.add(x, y) : g.sub(x, y);
            break;
        }
        }
        value[static_cast<std::size_t>(id)] = v;
    }
    for (const Ref& r : k.outputs) {
        if (r.zero())
            throw std::logic_error("an output of a real kernel is a constant zero");
        int v = value[static_cast<std::size_t>(r.id)];
        const bool inWide = single && wide(v);
        v = g.mul(v, inWide ? g.widen(scale) : scale);
        if (r.neg)
            v = g.zeroSub(v);
        out.stores.push_back(toNarrow(v));
    }
    return out;
}

}  // namespace gen::real
