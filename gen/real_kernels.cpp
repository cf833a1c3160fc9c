// The flows of the real DFT and Hartley kernels (see real_kernels.h), and
// their check against the plain definitions in long double, which every
// flow passes before anything is written.
#include "real_kernels.h"

#include <cmath>
#include <random>
#include <stdexcept>
#include <string>

#include "real_builder.h"
#include "real_rules.h"

namespace gen::real {

namespace {

const long double pi = 3.141592653589793238462643383279502884L;

// Transposed flow of the inverse row; `scale[j]` multiplies value j first.
KernelFlow transposedFlow(int n, const std::vector<long double>& scale)
{
    Flow forward;
    std::vector<Ref> x;
    for (int i = 0; i < n; ++i)
        x.push_back(forward.input(i));
    const std::vector<Ref> u = flatten(realDft(forward, inverseTree(n), x), n);
    Transposed t = transpose(forward, u, n, scale);
    KernelFlow k;
    k.flow = std::move(t.flow);
    k.outputs = foldProducts(k.flow, t.outputs, true);
    k.counts = countFlow(k.flow, k.outputs);
    return k;
}

}  // namespace

KernelFlow forwardFlow(int n)
{
    KernelFlow k;
    std::vector<Ref> x;
    for (int i = 0; i < n; ++i)
        x.push_back(k.flow.input(i));
    k.outputs = foldProducts(k.flow, flatten(realDft(k.flow, forwardTree(n), x), n), true);
    k.counts = countFlow(k.flow, k.outputs);
    return k;
}

KernelFlow inverseFlow(int n)
{
    std::vector<long double> scale(static_cast<std::size_t>(n), 2.0L);
    scale[0] = 1;
    if (n % 2 == 0)
        scale[static_cast<std::size_t>(n - 1)] = 1;
    return transposedFlow(n, scale);
}

bool hartleyForward(int n) { return hartleyRow(n).form != Form::Transposed; }

KernelFlow hartleyFlow(int n)
{
    KernelFlow k;
    const int m = (n - 1) / 2;
    std::vector<Ref> x;
    for (int i = 0; i < n; ++i)
        x.push_back(k.flow.input(i));
    if (hartleyForward(n)) {
        const KernelFlow f = forwardFlow(n);
        const std::vector<Ref> u = embed(k.flow, f.flow, f.outputs, x);
        k.outputs.assign(static_cast<std::size_t>(n), Ref{});
        k.outputs[0] = u[0];
        for (int j = 1; j <= m; ++j) {
            k.outputs[static_cast<std::size_t>(j)] = k.flow.sub(u[2 * j - 1], u[2 * j]);
            k.outputs[static_cast<std::size_t>(n - j)] = k.flow.add(u[2 * j - 1], u[2 * j]);
        }
        if (n % 2 == 0)
            k.outputs[static_cast<std::size_t>(n / 2)] = u[static_cast<std::size_t>(n - 1)];
    } else {
        std::vector<Ref> u{x[0]};
        for (int j = 1; j <= m; ++j) {
            u.push_back(k.flow.add(x[j], x[n - j]));
            u.push_back(k.flow.sub(x[n - j], x[j]));
        }
        if (n % 2 == 0)
            u.push_back(x[static_cast<std::size_t>(n / 2)]);
        const KernelFlow t = transposedFlow(n, {});
        k.outputs = embed(k.flow, t.flow, t.outputs, u);
    }
    k.counts = countFlow(k.flow, k.outputs);
    return k;
}

// ---- self-check against the definitions -------------------------------------

namespace {

std::vector<long double> randomInputs(int n, unsigned seed)
{
    std::mt19937 rng(seed);
    std::uniform_real_distribution<double> d(-1.0, 1.0);
    std::vector<long double> v(static_cast<std::size_t>(n));
    for (auto& e : v)
        e = d(rng);
    return v;
}

// Half spectrum values R0, R1, I1, ... of x by the plain sum.
std::vector<long double> plainSpectrum(const std::vector<long double>& x)
{
    const int n = static_cast<int>(x.size());
    std::vector<long double> u;
    for (int k = 0; 2 * k <= n; ++k) {
        long double re = 0, im = 0;
        for (int t = 0; t < n; ++t) {
            const long double a = 2 * pi * ((static_cast<long>(t) * k) % n) / n;
            re += x[static_cast<std::size_t>(t)] * std::cos(a);
            im -= x[static_cast<std::size_t>(t)] * std::sin(a);
        }
        u.push_back(re);
        if (k > 0 && 2 * k < n)
            u.push_back(im);
    }
    return u;
}

void expectClose(const std::vector<long double>& got, const std::vector<long double>& want, const std::string& what)
{
    for (std::size_t i = 0; i < want.size(); ++i)
        if (std::fabs(got[i] - want[i]) > 1e-12L)
            throw std::logic_error(what + ": flow differs from the definition at value " + std::to_string(i));
}

}  // namespace

void selfCheck(int n)
{
    const std::vector<long double> x = randomInputs(n, 1234u + static_cast<unsigned>(n));
    const std::vector<long double> u = plainSpectrum(x);
    const KernelFlow fwd = forwardFlow(n);
    expectClose(evaluate(fwd.flow, fwd.outputs, x), u, "forward " + std::to_string(n));

    // inverse: y[n] = R0 + 2·sum(Rk cos - Ik sin) + (-1)^n Rh
    std::vector<long double> y(static_cast<std::size_t>(n));
    for (int t = 0; t < n; ++t) {
        long double s = u[0];
        for (int k = 1; 2 * k < n; ++k) {
            const long double a = 2 * pi * ((static_cast<long>(t) * k) % n) / n;
            s += 2 * (u[static_cast<std::size_t>(2 * k - 1)] * std::cos(a) - u[static_cast<std::size_t>(2 * k)] * std::sin(a));
        }
        if (n % 2 == 0)
            s += (t % 2 ? -1 : 1) * u[static_cast<std::size_t>(n - 1)];
        y[static_cast<std::size_t>(t)] = s;
    }
    const KernelFlow inv = inverseFlow(n);
    expectClose(evaluate(inv.flow, inv.outputs, u), y, "inverse " + std::to_string(n));

    std::vector<long double> h(static_cast<std::size_t>(n));
    for (int k = 0; k < n; ++k)
        for (int t = 0; t < n; ++t) {
            const long double a = 2 * pi * ((static_cast<long>(t) * k) % n) / n;
            h[static_cast<std::size_t>(k)] += x[static_cast<std::size_t>(t)] * (std::cos(a) + std::sin(a));
        }
    const KernelFlow har = hartleyFlow(n);
    expectClose(evaluate(har.flow, har.outputs, x), h, "Hartley " + std::to_string(n));
}

}  // namespace gen::real
