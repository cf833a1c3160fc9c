#include "real_flow.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <stdexcept>

namespace gen::real {

int Flow::make(const Node& n)
{
    const auto key = std::make_tuple(static_cast<int>(n.kind) * 1000000 + n.index, n.a, n.b, n.c, n.expr);
    const auto [found, added] = memo_.emplace(key, size());
    if (added)
        nodes_.push_back(n);
    return found->second;
}

Ref Flow::input(int index) { return {make({Kind::Input, -1, -1, 0, false, index}), false}; }

std::vector<Ref> Flow::inputs(int count)
{
    std::vector<Ref> x;
    for (int i = 0; i < count; ++i)
        x.push_back(input(i));
    return x;
}

Ref Flow::add(Ref x, Ref y, bool expr)
{
    if (x.zero())
        return y;
    if (y.zero())
        return x;
    // two values of one sign: their sum, in the order of their ids
    if (x.neg == y.neg)
        return {make({Kind::Add, std::min(x.id, y.id), std::max(x.id, y.id), 0, expr}), x.neg};
    // one positive, one negative: positive minus negative
    return {make({Kind::Sub, x.neg ? y.id : x.id, x.neg ? x.id : y.id, 0, expr}), false};
}

Ref Flow::mul(Ref x, long double c)
{
    if (x.zero() || c == 0)
        return {};
    if (c == 1 || c == -1)
        return c < 0 ? -x : x;
    return {make({Kind::Mul, x.id, -1, c < 0 ? -c : c}), (c < 0) != x.neg};
}

Ref Flow::twice(Ref x) { return x.zero() ? x : Ref{make({Kind::Double, x.id}), x.neg}; }

Ref Flow::sum(const std::vector<Ref>& terms, bool expr)
{
    Ref acc;
    for (const Ref& t : terms)
        acc = add(acc, t, expr);
    return acc;
}

std::vector<int> Flow::useCounts(const std::vector<Ref>& outputs) const
{
    std::vector<int> uses(nodes_.size(), 0);
    for (const Ref& r : outputs)
        if (!r.zero())
            ++uses[static_cast<std::size_t>(r.id)];
    for (int id = size() - 1; id >= 0; --id)
        if (uses[static_cast<std::size_t>(id)] > 0)
            for (int operand : {node(id).a, node(id).b})
                if (operand >= 0)
                    ++uses[static_cast<std::size_t>(operand)];
    return uses;
}

FlowCounts countFlow(const Flow& flow, const std::vector<Ref>& outputs)
{
    const std::vector<int> uses = flow.useCounts(outputs);
    FlowCounts counts;
    int unused = 0;  // what an input counts to
    // the count of each kind, in the order of Flow::Kind
    int* const countOf[] = {&unused, &counts.additions, &counts.additions, &counts.multiplications, &counts.doublings};
    for (int id = 0; id < flow.size(); ++id)
        *countOf[static_cast<int>(flow.node(id).kind)] += uses[static_cast<std::size_t>(id)] > 0;
    counts.negations =
        static_cast<int>(std::count_if(outputs.begin(), outputs.end(), [](const Ref& r) { return r.neg; }));
    return counts;
}

std::vector<Ref> foldProducts(Flow& flow, const std::vector<Ref>& outputs)
{
    const std::vector<int> uses = flow.useCounts(outputs);
    auto singleUse = [&](int id) { return uses[static_cast<std::size_t>(id)] == 1; };
    // A product or a sum of products that nobody else uses: expression
    // additions (the only nodes marked `expr`) whose leaves are all products.
    std::function<bool(int)> productSum = [&](int id) -> bool {
        const Flow::Node& n = flow.node(id);
        return singleUse(id) && (n.kind == Flow::Kind::Mul || (n.expr && productSum(n.a) && productSum(n.b)));
    };
    Flow out;
    std::vector<std::optional<Ref>> copied(static_cast<std::size_t>(flow.size()));
    std::function<Ref(int)> copy;
    std::function<Ref(int, long double)> scaled = [&](int id, long double k) -> Ref {
        const Flow::Node& n = flow.node(id);
        if (n.kind == Flow::Kind::Mul) {
            if (flow.node(n.a).kind == Flow::Kind::Mul && singleUse(n.a))
                return scaled(n.a, n.c * k);
            return out.mul(copy(n.a), n.c * k);
        }
        const Ref a = scaled(n.a, k);
        const Ref b = scaled(n.b, k);
        return n.kind == Flow::Kind::Add ? out.add(a, b, true) : out.sub(a, b, true);
    };
    copy = [&](int id) -> Ref {
        std::optional<Ref>& r = copied[static_cast<std::size_t>(id)];
        if (r)
            return *r;
        const Flow::Node& n = flow.node(id);
        switch (n.kind) {
        case Flow::Kind::Input: r = out.input(n.index); break;
        case Flow::Kind::Add:
        case Flow::Kind::Sub: {
            // the second operand first, in the order of the note in gen/graph.h
            const Ref b = copy(n.b);
            const Ref a = copy(n.a);
            r = n.kind == Flow::Kind::Add ? out.add(a, b, n.expr) : out.sub(a, b, n.expr);
            break;
        }
        case Flow::Kind::Double: r = out.twice(copy(n.a)); break;
        case Flow::Kind::Mul: r = productSum(n.a) ? scaled(n.a, n.c) : out.mul(copy(n.a), n.c); break;
        }
        return *r;
    };
    std::vector<Ref> result;
    for (const Ref& o : outputs) {
        const Ref r = o.zero() ? o : copy(o.id);
        result.push_back(o.neg ? -r : r);
    }
    flow = std::move(out);
    return result;
}

KernelFlow transpose(const Flow& flow, const std::vector<Ref>& outputs, int inputCount,
                     const std::vector<bool>& doubled)
{
    const std::vector<int> uses = flow.useCounts(outputs);
    KernelFlow t;
    Flow& f = t.flow;
    t.outputs.assign(static_cast<std::size_t>(inputCount), Ref{});

    // Contributions to the adjoint of every node, in the order they arrive.
    std::vector<std::vector<Ref>> parts(static_cast<std::size_t>(flow.size()));
    // The factor still owed by a product whose adjoint is exactly one raw input.
    std::vector<long double> owed(static_cast<std::size_t>(flow.size()), 1.0L);
    for (std::size_t j = 0; j < outputs.size(); ++j) {
        const Ref o = outputs[j];
        if (o.zero())
            continue;
        Ref u = f.input(static_cast<int>(j));
        if (j < doubled.size() && doubled[j]) {
            if (flow.node(o.id).kind == Flow::Kind::Mul && uses[static_cast<std::size_t>(o.id)] == 1)
                owed[static_cast<std::size_t>(o.id)] = 2;
            else
                u = f.twice(u);
        }
        parts[static_cast<std::size_t>(o.id)].push_back(o.neg ? -u : u);
    }

    for (int id = flow.size() - 1; id >= 0; --id) {
        auto& mine = parts[static_cast<std::size_t>(id)];
        if (mine.empty())
            continue;
        // Plain contributions first, then products: x + c1·a + c2·b.
        const auto products = std::stable_partition(
            mine.begin(), mine.end(), [&](const Ref& r) { return f.node(r.id).kind != Flow::Kind::Mul; });
        const Ref adj = f.sum(mine, products != mine.end());
        const Flow::Node& n = flow.node(id);
        switch (n.kind) {
        case Flow::Kind::Input: t.outputs[static_cast<std::size_t>(n.index)] = adj; break;
        case Flow::Kind::Add:
        case Flow::Kind::Sub:
            parts[static_cast<std::size_t>(n.a)].push_back(adj);
            parts[static_cast<std::size_t>(n.b)].push_back(n.kind == Flow::Kind::Add ? adj : -adj);
            break;
        case Flow::Kind::Mul:
            parts[static_cast<std::size_t>(n.a)].push_back(f.mul(adj, n.c * owed[static_cast<std::size_t>(id)]));
            break;
        case Flow::Kind::Double: throw std::logic_error("a forward flow has no doubling");
        }
        mine.clear();
    }
    return t;
}

}  // namespace gen::real
