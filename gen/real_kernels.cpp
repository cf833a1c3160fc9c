// The flows of the real DFT and Hartley kernels (see real_kernels.h), their
// check against the plain definitions in long double, which every flow passes
// before anything is written, and their lowering to one precision.
#include "real_kernels.h"

#include <cmath>
#include <complex>
#include <random>
#include <stdexcept>
#include <string>

#include "real_builder.h"

namespace gen::real {

namespace {

// Folds the products of a built flow and counts it.
KernelFlow finish(KernelFlow k)
{
    k.outputs = foldProducts(k.flow, k.outputs);
    k.counts = countFlow(k.flow, k.outputs);
    return k;
}

// Transposed flow of the inverse row; value j is doubled first where `doubled[j]`.
KernelFlow transposedFlow(int n, const std::vector<bool>& doubled)
{
    Flow forward;
    return finish(transpose(forward, flatten(realDft(forward, inverseTree(n), forward.inputs(n)), n), n, doubled));
}

// The operations of a flow in long double.
struct Exact {
    static long double add(long double a, long double b, bool) { return a + b; }
    static long double sub(long double a, long double b, bool) { return a - b; }
    static long double mul(long double a, long double c) { return a * c; }
    static long double twice(long double a) { return 2 * a; }
};

}  // namespace

KernelFlow forwardFlow(int n)
{
    KernelFlow k;
    k.outputs = flatten(realDft(k.flow, forwardTree(n), k.flow.inputs(n)), n);
    return finish(std::move(k));
}

KernelFlow inverseFlow(int n)
{
    std::vector<bool> doubled(static_cast<std::size_t>(n), true);  // the middle bins
    doubled[0] = false;
    if (n % 2 == 0)
        doubled[n - 1] = false;
    return transposedFlow(n, doubled);
}

bool hartleyForward(int n) { return hartleyRow(n).form != Form::Transposed; }

KernelFlow hartleyFlow(int n)
{
    KernelFlow k;
    const int m = (n - 1) / 2;
    const std::vector<Ref> x = k.flow.inputs(n);
    if (hartleyForward(n)) {
        const KernelFlow f = forwardFlow(n);
        const std::vector<Ref> u = evaluate(f.flow, f.outputs, x, k.flow);
        k.outputs.assign(static_cast<std::size_t>(n), Ref{});
        k.outputs[0] = u[0];
        for (int j = 1; j <= m; ++j) {
            k.outputs[j] = k.flow.sub(u[2 * j - 1], u[2 * j]);
            k.outputs[n - j] = k.flow.add(u[2 * j - 1], u[2 * j]);
        }
        if (n % 2 == 0)
            k.outputs[n / 2] = u[n - 1];
    } else {
        std::vector<Ref> u{x[0]};
        for (int j = 1; j <= m; ++j) {
            u.push_back(k.flow.add(x[j], x[n - j]));
            u.push_back(k.flow.sub(x[n - j], x[j]));
        }
        if (n % 2 == 0)
            u.push_back(x[n / 2]);
        const KernelFlow t = transposedFlow(n, {});
        k.outputs = evaluate(t.flow, t.outputs, u, k.flow);
    }
    k.counts = countFlow(k.flow, k.outputs);
    return k;
}

void selfCheck(int n)
{
    std::mt19937 rng(1234u + static_cast<unsigned>(n));
    std::uniform_real_distribution<double> d(-1.0, 1.0);
    std::vector<long double> x(static_cast<std::size_t>(n));
    for (auto& e : x)
        e = d(rng);
    auto angle = [n](int t, int k) { return 2 * pi * ((static_cast<long>(t) * k) % n) / n; };
    auto expectClose = [n](const KernelFlow& k, const std::vector<long double>& in,
                           const std::vector<long double>& want, const std::string& what) {
        const std::vector<long double> got = evaluate(k.flow, k.outputs, in, Exact{});
        for (std::size_t i = 0; i < want.size(); ++i)
            if (std::fabs(got[i] - want[i]) > 1e-12L)
                throw std::logic_error(what + " " + std::to_string(n) + ": flow differs from the definition at value " +
                                       std::to_string(i));
    };

    // the plain sums X[k] of x[t]·W_n^(t·k)
    std::vector<std::complex<long double>> X(static_cast<std::size_t>(n));
    for (int k = 0; k < n; ++k)
        for (int t = 0; t < n; ++t)
            X[k] += x[t] * std::polar(1.0L, -angle(t, k));
    std::vector<long double> u, y, h;
    for (int k = 0; k < n; ++k) {
        if (2 * k <= n)  // forward: the half spectrum R0, R1, I1, ...
            u.push_back(X[k].real());
        if (k > 0 && 2 * k < n)
            u.push_back(X[k].imag());
        y.push_back(n * x[k]);                   // inverse: the unscaled inverse of the spectrum of x is n·x
        h.push_back(X[k].real() - X[k].imag());  // Hartley: x times cas = cos + sin
    }
    expectClose(forwardFlow(n), x, u, "forward");
    expectClose(inverseFlow(n), u, y, "inverse");
    expectClose(hartleyFlow(n), x, h, "Hartley");
}

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
    auto wide = [&](int id) { return g.node(id).type == Type::F64; };
    auto toWide = [&](int id) { return single ? g.widen(id) : id; };
    auto toNarrow = [&](int id) { return single ? g.narrow(id) : id; };
    const std::vector<int> value = k.flow.values<int>([&](int id, const Flow::Node& n, int a, int b) {
        if (uses[static_cast<std::size_t>(id)] == 0)
            return -1;
        switch (n.kind) {
        case Flow::Kind::Input: return inputIds[static_cast<std::size_t>(n.index)];
        case Flow::Kind::Mul: return g.mulConst(toWide(toNarrow(a)), n.c);  // a product starts from a rounded value
        case Flow::Kind::Double: return g.mulConst(toNarrow(a), 2.0L);
        case Flow::Kind::Add:
        case Flow::Kind::Sub: break;
        }
        const bool inWide = single && n.expr && (wide(a) || wide(b));
        const int x = inWide ? toWide(a) : toNarrow(a);
        const int y = inWide ? toWide(b) : toNarrow(b);
        return n.kind == Flow::Kind::Add ? g.add(x, y) : g.sub(x, y);
    });
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
