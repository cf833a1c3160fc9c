// Emitter of the DCT-IV base kernels, N = 2, 4, 8, 16, 32, both sample types.
//
// Each kernel is the factorisation y = Fold(Twiddle(Span(g))) with a fixed
// split N = S r: a `SpanTransform` of size S on each of the r columns of the
// skew-extended input, a rotation of each value by pi(2j+1)(2p+1)/(4N), and a
// `FoldTransform` of size 2r for each p.  N = 4 takes its two rotations as
// three lifting steps each.  The graph keeps the order of every operation.
#include <algorithm>
#include <cmath>
#include <sstream>
#include <string>
#include <vector>

#include "family.h"

namespace gen {

namespace {

constexpr long double pi = 3.141592653589793238462643383279502884L;
const long double halfSqrt2 = 0.70710678118654752440084436210484903928L;

struct Value {
    int re = Graph::none, im = Graph::none;
};

struct DctBuilder {
    Graph& g;
    Type type;

    int mul(int a, long double c) { return g.mulConst(a, c); }

    // (re + i im) e^(i angle): c re - s im, s re + c im
    Value rotate(Value v, long double angle)
    {
        const long double c = cosl(angle), s = sinl(angle);
        // one product per statement, in the order of graph.h's note
        const int imS = mul(v.im, s), reC = mul(v.re, c);
        const int re = g.sub(reC, imS);
        const int imC = mul(v.im, c), reS = mul(v.re, s);
        return {re, g.add(reS, imC)};
    }

    // SpanTransform of size S: S/2 complex values at the odd half-frequencies.
    std::vector<Value> span(const std::vector<int>& u)
    {
        const int size = static_cast<int>(u.size());
        if (size == 2)
            return {{u[0], u[1]}};
        if (size == 4) {
            const int a = mul(g.sub(u[1], u[3]), halfSqrt2);
            const int b = mul(g.add(u[1], u[3]), halfSqrt2);
            return {{g.add(u[0], a), g.add(u[2], b)}, {g.sub(u[0], a), g.sub(b, u[2])}};
        }
        std::vector<int> even, odd;
        for (int q = 0; q < size; ++q)
            (q % 2 ? odd : even).push_back(u[q]);
        const std::vector<Value> e = span(even), o = span(odd);
        std::vector<Value> z(size / 2);
        for (int p = 0; p < size / 4; ++p) {
            const Value w = rotate(o[p], pi * (2 * p + 1) / size);
            z[p] = {g.add(e[p].re, w.re), g.add(e[p].im, w.im)};
            // conj(E - W)
            z[size / 2 - 1 - p] = {g.sub(e[p].re, w.re), g.sub(w.im, e[p].im)};
        }
        return z;
    }

    // FoldTransform of r complex values: Y[q] for q = -r .. r-1, as a map q -> node.
    std::vector<int> fold(const std::vector<Value>& z)
    {
        const int r = static_cast<int>(z.size());
        if (r == 1)
            return {z[0].im, z[0].re};  // Y[-1], Y[0]
        std::vector<Value> plus(r / 2), minus(r / 2);
        for (int j = 0; j < r / 2; ++j) {
            const Value a = z[j], b = z[r - 1 - j];
            plus[j] = {g.add(a.re, b.re), g.sub(a.im, b.im)};
            const Value d = {g.sub(a.re, b.re), g.add(a.im, b.im)};
            if (r == 2) {
                // by pi/4: both parts times sqrt(1/2) first, then their difference and sum
                const int e = mul(d.re, halfSqrt2), f = mul(d.im, halfSqrt2);
                minus[j] = {g.sub(e, f), g.add(e, f)};
            } else {
                minus[j] = rotate(d, pi * (2 * j + 1) / (2 * r));
            }
        }
        const std::vector<int> evenQ = fold(plus), oddQ = fold(minus);
        std::vector<int> y(2 * r);  // index q + r: the even q from the sums, the odd q from the differences
        for (int t = 0; t < r; ++t) {
            y[2 * t] = evenQ[t];
            y[2 * t + 1] = oddQ[t];
        }
        return y;
    }

    // The whole kernel with the split n = span * radix.
    std::vector<int> kernel(int spanSize, int radix)
    {
        const int n = spanSize * radix;
        std::vector<int> x(n), out(n);
        for (int i = 0; i < n; ++i)
            x[i] = g.input(type, i);
        auto skew = [&](int m) { return m < n ? x[m] : g.neg(x[2 * n - 1 - m]); };
        std::vector<std::vector<Value>> columns;
        for (int j = 0; j < radix; ++j) {
            std::vector<int> u;
            for (int q = 0; q < spanSize; ++q)
                u.push_back(skew(2 * radix * q + j));
            columns.push_back(span(u));
        }
        for (int p = 0; p < spanSize / 2; ++p) {
            std::vector<Value> z;
            for (int j = 0; j < radix; ++j)
                z.push_back(rotate(columns[j][p], pi * (2 * j + 1) * (2 * p + 1) / (4.0L * n)));
            const std::vector<int> y = fold(z);
            for (int q = -radix; q < radix; ++q)
                out[q >= 0 ? spanSize * q + p : spanSize * (-q) - 1 - p] = y[q + radix];
        }
        return out;
    }

    // N = 4: each rotation as three lifting steps.
    std::vector<int> liftingKernel()
    {
        std::vector<int> x;
        for (int i = 0; i < 4; ++i)
            x.push_back(g.input(type, i));
        const long double t1 = tanl(7 * pi / 32), s1 = sinl(7 * pi / 16), t2 = tanl(5 * pi / 32), s2 = sinl(5 * pi / 16);
        const int a = g.sub(x[0], mul(x[3], t1));
        const int b = g.sub(x[1], mul(x[2], t2));
        const int c = g.add(x[3], mul(a, s1));
        const int d = g.add(x[2], mul(b, s2));
        const int a2 = g.sub(a, mul(c, t1));
        const int b2 = g.sub(b, mul(d, t2));
        const int e = mul(g.sub(c, d), halfSqrt2);
        const int f = mul(g.add(a2, b2), halfSqrt2);
        return {g.add(c, d), g.add(e, f), g.sub(e, f), g.sub(a2, b2)};
    }
};

std::string kernelFunction(Type type, int n)
{
    Graph graph(false);
    DctBuilder builder{graph, type};
    // the split of each length, N = S r: S = 2, 4, 4, 16 for N = 2, 8, 16, 32
    const int span = n == 32 ? 16 : std::min(n, 4);
    const std::vector<int> out = n == 4 ? builder.liftingKernel() : builder.kernel(span, n / span);
    NodePrinter printer{[](const Node& node) { return "x[" + std::to_string(node.index) + "]"; }, nullptr, nullptr};
    const OpCounts counts = graph.count(out);
    const char* real = type == Type::F32 ? "float" : "double";
    std::ostringstream text;
    text << "// N = " << n << ": " << counts.multiplications << " multiplications, " << counts.additions
         << " additions and subtractions.\n"
         << "inline void kernel" << (type == Type::F32 ? "32f" : "64f") << "_" << n << "(const " << real << "* x, " << real
         << "* y)\n{\n"
         << printNodes(graph, out, printer, "    ");
    for (int k = 0; k < n; ++k)
        text << "    y[" << k << "] = " << valueOf(graph, out[k]) << ";\n";
    text << "}\n\n";
    return text.str();
}

const FamilyRegistration registration("dct4", [](const std::string& directory) {
    std::ostringstream out;
    out << "// Generated by kvtgen; do not edit.\n// The unrolled DCT-IV kernels of lengths 2 to 32.\n"
        << "#pragma once\n\nnamespace dct4 {\n\n";
    for (Type type : {Type::F32, Type::F64})
        for (int n : {2, 4, 8, 16, 32})
            out << kernelFunction(type, n);
    out << "}  // namespace dct4\n";
    writeIfChanged(directory + "/dct4_kernels.h", out.str());
});

}  // namespace

}  // namespace gen
