// The one walk of a complex factorisation tree, for every vector layout.
//
// A layout is a policy that says where a value of one transform lives (a
// whole vector, a half of one, a lane of one) and how the transforms of a
// stage share vectors.  It provides Value (one complex number of one
// transform), single(Value) (the value as a vector of its own), wrap(Cx) (a
// vector of one value as a Value), arithmetic() (the butterflies and sums on
// vectors), split(tree, x, sign) (a P or T split laid out in vectors),
// multiplyEach(values, count, constant) (values[i] times constant(i), i <
// count), padded(x, length) (Bluestein's input, zero-padded) and
// binZeroFirst: Rader's bin 0 is made before the other products rather than
// after.  The order in which nodes are made decides how a subtraction is
// written, so each layout keeps its own.  The walk decides the rest: the rule
// of each node of the tree, and the convolutions of Rader and Bluestein.
#ifndef KVTGEN_COMPLEX_WALK_H
#define KVTGEN_COMPLEX_WALK_H

#include <algorithm>
#include <stdexcept>
#include <vector>

#include "complex_builder.h"
#include "tree.h"

namespace gen {

template <class Layout>
using ValuesOf = std::vector<typename Layout::Value>;

// A P or T split of n = a b points: the input of transform n2 of the first
// stage at n1, and the bin of output k2 of transform k1 of the second stage
// (for P, the bin with k = k1 (mod a) and k = k2 (mod b)).
inline int splitInput(const Tree& tree, int n1, int n2)
{
    const int a = tree.first->size, b = tree.second->size;
    return tree.kind == Tree::Kind::Twiddle ? b * n1 + n2 : (b * n1 + a * n2) % (a * b);
}

inline int splitOutput(const Tree& tree, int k1, int k2)
{
    const int a = tree.first->size, b = tree.second->size;
    if (tree.kind == Tree::Kind::Twiddle)
        return k1 + a * k2;
    int k = 0;
    while (k % a != k1 || k % b != k2)
        ++k;
    return k;
}

// A stage of `total` transforms of one tree on whole vectors, `width` at a
// time, each batch one group of `scope` for the 256-bit packing.  input(t0,
// count, i) is the vector of input i of transforms t0 .. t0 + count - 1;
// output(k, v, t0, count) takes the vector of their bin k, inside the group
// where `outputInGroup`.
template <class Input, class Output>
void walkStage(Graph& graph, ComplexBuilder& arithmetic, const Tree& tree, int total, int width, int scope, int sign,
               Input input, Output output, bool outputInGroup = false)
{
    for (int t0 = 0; t0 < total; t0 += width) {
        const int count = std::min(width, total - t0);
        std::vector<Cx> x;
        for (int i = 0; i < tree.size; ++i)
            x.push_back(input(t0, count, i));
        graph.enterGroup(scope, t0 / width);
        const std::vector<Cx> y = arithmetic.dft(tree, x, sign);
        if (!outputInGroup)
            graph.leaveGroup();
        for (int k = 0; k < tree.size; ++k)
            output(k, y[static_cast<std::size_t>(k)], t0, count);
        if (outputInGroup)
            graph.leaveGroup();
    }
}

// A leaf: its butterfly on one vector per value.
template <class Layout>
ValuesOf<Layout> walkLeaf(Layout& layout, const Tree& tree, const ValuesOf<Layout>& x, int sign)
{
    std::vector<Cx> vectors;
    for (const auto& value : x)
        vectors.push_back(layout.single(value));
    ValuesOf<Layout> out;
    for (const Cx& v : layout.arithmetic().butterfly(tree, vectors, sign))
        out.push_back(layout.wrap(v));
    return out;
}

// Rader: a cyclic convolution of length p-1 over the inputs in generator order,
// with 1/(p-1) folded into the constants B[k] and x[0] carried in through bin 0.
template <class Layout>
ValuesOf<Layout> walkRader(Layout& layout, const Tree& tree, const ValuesOf<Layout>& x, int sign)
{
    const int p = tree.size, n = p - 1;
    const int g = primitiveRoot(p);
    ValuesOf<Layout> a(static_cast<std::size_t>(n));
    for (int j = 0; j < n; ++j)
        a[static_cast<std::size_t>(j)] = x[static_cast<std::size_t>(powMod(g, j, p))];
    const ValuesOf<Layout> spectrum = layout.dft(*tree.first, a, sign);

    ComplexBuilder& arithmetic = layout.arithmetic();
    const Cx x0 = layout.single(x[0]);
    const Cx a0 = layout.single(spectrum[0]);
    auto binZero = [&] { return layout.wrap(arithmetic.add(x0, arithmetic.scale(a0, -1.0L / n))); };
    const typename Layout::Value first = Layout::binZeroFirst ? binZero() : typename Layout::Value{};
    ValuesOf<Layout> product = layout.multiplyEach(spectrum, n, [&](int k) {
        return k == 0 ? Constant(-1.0L / n, 0) : raderConstant(p, k, sign);
    });
    product[0] = Layout::binZeroFirst ? first : binZero();
    const ValuesOf<Layout> cyclic = layout.dft(*tree.second, product, -sign);

    ValuesOf<Layout> out(static_cast<std::size_t>(p));
    out[0] = layout.wrap(arithmetic.add(x0, a0));
    for (int m = 0; m < n; ++m)
        out[static_cast<std::size_t>(powMod(g, (n - m) % n, p))] = cyclic[static_cast<std::size_t>(m)];
    return out;
}

// Bluestein: chirp, zero-padded convolution of length L with 1/L folded into
// the constants H[k], chirp again.  Padded zeros are never materialised.
template <class Layout>
ValuesOf<Layout> walkBluestein(Layout& layout, const Tree& tree, const ValuesOf<Layout>& x, int sign)
{
    const int p = tree.size, length = tree.chirpLength;
    auto chirp = [&](int k) { return exactRoot(1LL * k * k, 2LL * p, sign); };  // exp(sign*i*pi*k^2/p)
    const ValuesOf<Layout> y = layout.multiplyEach(layout.padded(x, length), p, chirp);
    const ValuesOf<Layout> spectrum = layout.dft(*tree.first, y, sign);
    const ValuesOf<Layout> product =
        layout.multiplyEach(spectrum, length, [&](int k) { return bluesteinFilter(p, length, k, sign); });
    ValuesOf<Layout> out = layout.multiplyEach(layout.dft(*tree.second, product, -sign), p, chirp);
    out.resize(static_cast<std::size_t>(p));
    return out;
}

// DFT of x by the tree; sign -1 gives exp(-2*pi*i*nk/N), +1 the conjugate.
template <class Layout>
ValuesOf<Layout> walkTree(Layout& layout, const Tree& tree, const ValuesOf<Layout>& x, int sign)
{
    if (static_cast<int>(x.size()) != tree.size)
        throw std::logic_error("input of the wrong length");
    switch (tree.kind) {
    case Tree::Kind::Prime:
    case Tree::Kind::Twiddle: return layout.split(tree, x, sign);
    case Tree::Kind::Rader: return walkRader(layout, tree, x, sign);
    case Tree::Kind::Bluestein: return walkBluestein(layout, tree, x, sign);
    default: return walkLeaf(layout, tree, x, sign);
    }
}

}  // namespace gen

#endif
