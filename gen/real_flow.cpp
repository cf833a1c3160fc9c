#include "real_flow.h"

#include <cmath>
#include <functional>
#include <stdexcept>

namespace gen::real {

int Flow::make(const Node& n)
{
    const auto key = std::make_tuple(static_cast<int>(n.kind) * 1000000 + n.index, n.a, n.b, n.c, n.expr);
    const auto found = memo_.find(key);
    if (found != memo_.end())
        return found->second;
    nodes_.push_back(n);
    const int id = static_cast<int>(nodes_.size()) - 1;
    memo_.emplace(key, id);
    return id;
}

Ref Flow::input(int index)
{
    Node n{Kind::Input};
    n.index = index;
    return {make(n), false};
}

Ref Flow::add(Ref x, Ref y, bool expr)
{
    if (x.zero())
        return y;
    if (y.zero())
        return x;
    Node n{Kind::Add};
    n.expr = expr;
    if (!x.neg && !y.neg) {
        if (x.id > y.id)
            std::swap(x, y);
        n.a = x.id;
        n.b = y.id;
        return {make(n), false};
    }
    if (x.neg && y.neg) {
        if (x.id > y.id)
            std::swap(x, y);
        n.a = x.id;
        n.b = y.id;
        return {make(n), true};
    }
    // one positive, one negative: positive minus negative
    n.kind = Kind::Sub;
    n.a = x.neg ? y.id : x.id;
    n.b = x.neg ? x.id : y.id;
    return {make(n), false};
}

Ref Flow::mul(Ref x, long double c)
{
    if (x.zero() || c == 0)
        return {};
    bool neg = x.neg;
    if (c < 0) {
        c = -c;
        neg = !neg;
    }
    if (c == 1)
        return {x.id, neg};
    Node n{Kind::Mul};
    n.a = x.id;
    n.c = c;
    return {make(n), neg};
}

Ref Flow::twice(Ref x)
{
    if (x.zero())
        return x;
    Node n{Kind::Double};
    n.a = x.id;
    return {make(n), x.neg};
}

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
    std::vector<bool> live(nodes_.size(), false);
    for (const Ref& r : outputs)
        if (!r.zero()) {
            ++uses[static_cast<std::size_t>(r.id)];
            live[static_cast<std::size_t>(r.id)] = true;
        }
    for (int id = size() - 1; id >= 0; --id) {
        if (!live[static_cast<std::size_t>(id)])
            continue;
        const Node& n = node(id);
        for (int operand : {n.a, n.b})
            if (operand >= 0) {
                ++uses[static_cast<std::size_t>(operand)];
                live[static_cast<std::size_t>(operand)] = true;
            }
    }
    return uses;
}

FlowCounts countFlow(const Flow& flow, const std::vector<Ref>& outputs)
{
    const std::vector<int> uses = flow.useCounts(outputs);
    FlowCounts counts;
    for (int id = 0; id < flow.size(); ++id) {
        if (uses[static_cast<std::size_t>(id)] == 0)
            continue;
        switch (flow.node(id).kind) {
        case Flow::Kind::Add:
        case Flow::Kind::Sub: ++counts.additions; break;
        case Flow::Kind::Mul: ++counts.multiplications; break;
        case Flow::Kind::Double: ++counts.doublings; break;
        case Flow::Kind::Input: break;
        }
    }
    for (const Ref& r : outputs)
        if (r.neg)
            ++counts.negations;
    return counts;
}

std::vector<Ref> foldProducts(Flow& flow, const std::vector<Ref>& outputs, bool distribute)
{
    const std::vector<int> uses = flow.useCounts(outputs);
    auto singleUse = [&](int id) { return uses[static_cast<std::size_t>(id)] == 1; };
    // A sum of products that nobody else uses: expression additions whose
    // leaves are all products.
    std::function<bool(int)> productSum = [&](int id) -> bool {
        const Flow::Node& n = flow.node(id);
        if (!singleUse(id))
            return false;
        if (n.kind == Flow::Kind::Mul)
            return true;
        if ((n.kind == Flow::Kind::Add || n.kind == Flow::Kind::Sub) && n.expr)
            return productSum(n.a) && productSum(n.b);
        return false;
    };
    Flow out;
    std::vector<Ref> copied(static_cast<std::size_t>(flow.size()));
    std::vector<bool> done(static_cast<std::size_t>(flow.size()), false);
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
        if (done[static_cast<std::size_t>(id)])
            return copied[static_cast<std::size_t>(id)];
        const Flow::Node& n = flow.node(id);
        Ref r;
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
        case Flow::Kind::Mul: {
            const Flow::Node& inner = flow.node(n.a);
            const bool sumOfProducts = (inner.kind == Flow::Kind::Add || inner.kind == Flow::Kind::Sub) && inner.expr;
            if (inner.kind == Flow::Kind::Mul && singleUse(n.a))
                r = scaled(n.a, n.c);
            else if (distribute && sumOfProducts && productSum(n.a))
                r = scaled(n.a, n.c);
            else
                r = out.mul(copy(n.a), n.c);
            break;
        }
        }
        done[static_cast<std::size_t>(id)] = true;
        copied[static_cast<std::size_t>(id)] = r;
        return r;
    };
    std::vector<Ref> result;
    for (const Ref& o : outputs) {
        if (o.zero()) {
            result.push_back(o);
            continue;
        }
        const Ref r = copy(o.id);
        result.push_back(o.neg ? -r : r);
    }
    flow = std::move(out);
    return result;
}

Transposed transpose(const Flow& flow, const std::vector<Ref>& outputs, int inputCount,
                     const std::vector<long double>& inputScale)
{
    const std::vector<int> uses = flow.useCounts(outputs);
    Transposed t;
    Flow& f = t.flow;
    t.outputs.assign(static_cast<std::size_t>(inputCount), Ref{});
    t.scaled.assign(outputs.size(), false);

    // Contributions to the adjoint of every node, in the order they arrive.
    std::vector<std::vector<Ref>> parts(static_cast<std::size_t>(flow.size()));
    // Node whose adjoint is exactly one raw input still owed its factor.
    std::vector<int> pendingInput(static_cast<std::size_t>(flow.size()), -1);
    for (std::size_t j = 0; j < outputs.size(); ++j) {
        const Ref o = outputs[j];
        if (o.zero())
            continue;
        Ref u = f.input(static_cast<int>(j));
        const long double factor = j < inputScale.size() ? inputScale[j] : 1.0L;
        const Flow::Node& target = flow.node(o.id);
        if (factor != 1) {
            if (target.kind == Flow::Kind::Mul && uses[static_cast<std::size_t>(o.id)] == 1) {
                pendingInput[static_cast<std::size_t>(o.id)] = static_cast<int>(j);
            } else {
                if (factor != 2)
                    throw std::logic_error("only the doubling is a scaled input");
                u = f.twice(u);
                t.scaled[j] = true;
            }
        }
        parts[static_cast<std::size_t>(o.id)].push_back(o.neg ? -u : u);
    }

    for (int id = flow.size() - 1; id >= 0; --id) {
        auto& mine = parts[static_cast<std::size_t>(id)];
        if (mine.empty())
            continue;
        // Plain contributions first, then products: x + c1·a + c2·b.
        std::vector<Ref> ordered;
        bool anyProduct = false;
        for (const Ref& r : mine)
            if (f.node(r.id).kind != Flow::Kind::Mul)
                ordered.push_back(r);
        for (const Ref& r : mine)
            if (f.node(r.id).kind == Flow::Kind::Mul) {
                ordered.push_back(r);
                anyProduct = true;
            }
        const Ref adj = f.sum(ordered, anyProduct);
        const Flow::Node& n = flow.node(id);
        switch (n.kind) {
        case Flow::Kind::Input: t.outputs[static_cast<std::size_t>(n.index)] = adj; break;
        case Flow::Kind::Add:
            parts[static_cast<std::size_t>(n.a)].push_back(adj);
            parts[static_cast<std::size_t>(n.b)].push_back(adj);
            break;
        case Flow::Kind::Sub:
            parts[static_cast<std::size_t>(n.a)].push_back(adj);
            parts[static_cast<std::size_t>(n.b)].push_back(-adj);
            break;
        case Flow::Kind::Mul: {
            const int pending = pendingInput[static_cast<std::size_t>(id)];
            const long double k = pending >= 0 ? n.c * inputScale[static_cast<std::size_t>(pending)] : n.c;
            parts[static_cast<std::size_t>(n.a)].push_back(f.mul(adj, k));
            break;
        }
        case Flow::Kind::Double: throw std::logic_error("a forward flow has no doubling");
        }
        mine.clear();
    }
    return t;
}

std::vector<Ref> embed(Flow& target, const Flow& source, const std::vector<Ref>& outputs,
                       const std::vector<Ref>& inputs)
{
    std::vector<Ref> map(static_cast<std::size_t>(source.size()));
    for (int id = 0; id < source.size(); ++id) {
        const Flow::Node& n = source.node(id);
        const Ref a = n.a >= 0 ? map[static_cast<std::size_t>(n.a)] : Ref{};
        const Ref b = n.b >= 0 ? map[static_cast<std::size_t>(n.b)] : Ref{};
        Ref& r = map[static_cast<std::size_t>(id)];
        switch (n.kind) {
        case Flow::Kind::Input: r = inputs[static_cast<std::size_t>(n.index)]; break;
        case Flow::Kind::Add: r = target.add(a, b, n.expr); break;
        case Flow::Kind::Sub: r = target.sub(a, b, n.expr); break;
        case Flow::Kind::Mul: r = target.mul(a, n.c); break;
        case Flow::Kind::Double: r = target.twice(a); break;
        }
    }
    std::vector<Ref> result;
    for (const Ref& o : outputs) {
        const Ref m = o.zero() ? Ref{} : map[static_cast<std::size_t>(o.id)];
        result.push_back(o.neg ? -m : m);
    }
    return result;
}

}  // namespace gen::real
