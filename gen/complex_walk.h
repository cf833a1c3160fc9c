// The one walk of a complex factorisation tree, for every vector layout.
//
// A layout is a policy that says where a value of one transform lives (a
// whole vector, a half of one, a lane of one) and how the transforms of a
// stage share vectors.  It provides Value (one complex number of one
// transform; a default Value is zero), gather(values) (a vector with
// values[j] in lane j), lane(v, j) (lane j of a vector as a Value),
// arithmetic() (the butterflies and sums on vectors), split(tree, x, sign) (a
// P or T split laid out in vectors, by walkSplit below), multiplyEach(values,
// count, constant) (values[i] times constant(i), i < count), twiddle(...) and
// twiddlePoint (walkSplitStage), and binZeroFirst: Rader's bin 0 is made
// before the other products rather than after.  The order in which nodes are
// made decides how a subtraction is written, so each layout keeps its own.
// The walk decides the rest: the rule of each node of the tree, the stages of
// its splits, and the convolutions of Rader and Bluestein.
#ifndef KVTGEN_COMPLEX_WALK_H
#define KVTGEN_COMPLEX_WALK_H

#include <algorithm>
#include <array>
#include <map>
#include <stdexcept>
#include <utility>
#include <vector>

#include "complex_builder.h"
#include "tree.h"

namespace gen {

template <class Layout>
using ValuesOf = std::vector<typename Layout::Value>;
template <class Layout>
using RowsOf = std::vector<ValuesOf<Layout>>;

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

// A stage of a P or T split of several inputs (rows) of one tree: it runs
// `width` of its transforms at a time, one per lane, the rows side by side
// (row fastest): transform t of a stage is transform t / rows of row t %
// rows, in lane t - t0 of the vectors of transforms t0 .. t0 + count - 1, and
// each batch is one group of the stage's scope for the 256-bit packing.  The
// first stage takes the rows and gives u[t][k1], bin k1 of its transform t;
// the second takes u and gives the rows' outputs.  A twiddle n2 k1 multiplies
// the values of a vector by layout.twiddle(v, t0, count, rows, k, n, sign),
// at the layout's twiddlePoint.
template <class Layout>
RowsOf<Layout> walkSplitStage(Layout& layout, Graph& graph, const Tree& tree, bool first, const RowsOf<Layout>& in,
                              int rows, int width, int firstScope, int sign)
{
    const Tree& stage = first ? *tree.first : *tree.second;
    const int a = tree.first->size, b = tree.second->size, total = (first ? b : a) * rows;
    const TwiddlePoint point = Layout::twiddlePoint;
    const bool twiddleOut = first && tree.kind == Tree::Kind::Twiddle && point != TwiddlePoint::SecondInput;
    const bool twiddleIn = !first && tree.kind == Tree::Kind::Twiddle && point == TwiddlePoint::SecondInput;
    const bool outputInGroup = first && point == TwiddlePoint::FirstInGroup;
    auto input = [&](int t, int i) {
        return first ? in[t % rows][splitInput(tree, i, t / rows)] : in[t % rows + rows * i][t / rows];
    };
    RowsOf<Layout> out(static_cast<std::size_t>(first ? total : rows),
                       ValuesOf<Layout>(static_cast<std::size_t>(first ? a : a * b)));
    auto output = [&](int t, int k) -> auto& {
        return first ? out[t][k] : out[t % rows][splitOutput(tree, t / rows, k)];
    };
    // twiddles on the inputs of the second stage have a scope of their own
    const int twiddles = !first && point == TwiddlePoint::SecondInput ? graph.openScope() : 0;
    const int scope = first ? firstScope : graph.openScope();
    for (int t0 = 0; t0 < total; t0 += width) {
        const int count = std::min(width, total - t0);
        std::vector<Cx> x;
        for (int i = 0; i < stage.size; ++i) {
            ValuesOf<Layout> group;
            for (int t = t0; t < t0 + count; ++t)
                group.push_back(input(t, i));
            x.push_back(layout.gather(group));
            if (twiddleIn) {
                graph.enterGroup(twiddles, t0);
                x.back() = layout.twiddle(x.back(), t0, count, rows, i, a * b, sign);
                graph.leaveGroup();
            }
        }
        graph.enterGroup(scope, t0 / width);
        std::vector<Cx> y = layout.arithmetic().dft(stage, x, sign);
        if (!outputInGroup)
            graph.leaveGroup();
        for (int k = 0; k < stage.size; ++k) {
            Cx& v = y[static_cast<std::size_t>(k)];
            if (twiddleOut)
                v = layout.twiddle(v, t0, count, rows, k, a * b, sign);
            for (int t = t0; t < t0 + count; ++t)
                output(t, k) = layout.lane(v, t - t0);
        }
        if (outputInGroup)
            graph.leaveGroup();
    }
    return out;
}

// A P or T split of one input, `width` transforms of a stage at a time.
template <class Layout>
ValuesOf<Layout> walkSplit(Layout& layout, Graph& graph, const Tree& tree, const ValuesOf<Layout>& x, int width,
                           int sign)
{
    const RowsOf<Layout> u = walkSplitStage(layout, graph, tree, true, {x}, 1, width, graph.openScope(), sign);
    return walkSplitStage(layout, graph, tree, false, u, 1, width, 0, sign)[0];
}

// values[i] times constant(i), i < count, in a layout of `width` lanes: the
// values of one vector are multiplied together by layout.multiplyLanes(v,
// constants), a constant per lane.  A lane without a value takes the constant
// of the last value of its group of four lanes, a group without any the
// constants of the other group.  The layout's place(value) gives the parts of
// the value's vector and its lane; values still as loaded (layout.loaded) are
// first gathered `width` at a time.
template <class Layout, class ConstantOf>
ValuesOf<Layout> multiplyInLanes(Layout& layout, ValuesOf<Layout> out, int count, ConstantOf constant, int width)
{
    const std::size_t w = static_cast<std::size_t>(width), group = std::min<std::size_t>(w, 4);
    std::vector<std::size_t> loaded;
    for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i)
        if (Layout::loaded(out[i]))
            loaded.push_back(i);
    for (std::size_t start = 0; start < loaded.size(); start += w) {
        ValuesOf<Layout> values;
        for (std::size_t j = start; j < loaded.size() && j < start + w; ++j)
            values.push_back(out[loaded[j]]);
        const Cx v = layout.gather(values);
        for (std::size_t j = 0; j < values.size(); ++j)
            out[loaded[start + j]] = layout.lane(v, static_cast<int>(j));
    }
    std::array<int, 8> noValues;
    noValues.fill(-1);
    std::map<std::pair<int, int>, std::array<int, 8>> owners;
    for (int i = 0; i < count; ++i) {
        const std::array<int, 3> place = Layout::place(out[static_cast<std::size_t>(i)]);
        if (place[0] != Graph::none || place[1] != Graph::none)  // zero stays zero
            owners.try_emplace({place[0], place[1]}, noValues).first->second[static_cast<std::size_t>(place[2])] = i;
    }
    for (const auto& [vector, lanes] : owners) {
        std::vector<Constant> constants(w);
        std::array<bool, 2> empty{true, true};
        for (std::size_t first = 0; first < w; first += group) {
            int last = -1;
            for (std::size_t j = first; j < first + group; ++j)
                last = lanes[j] >= 0 ? lanes[j] : last;
            empty[first / 4] = last < 0;
            for (std::size_t j = first; j < first + group && last >= 0; ++j)
                constants[j] = constant(lanes[j] >= 0 ? lanes[j] : last);
        }
        for (std::size_t j = 0; j < w; ++j)
            if (empty[j / 4])
                constants[j] = constants[j ^ 4];
        const Cx product = layout.multiplyLanes({vector.first, vector.second}, constants);
        for (std::size_t lane = 0; lane < w; ++lane)
            if (lanes[lane] >= 0)
                out[static_cast<std::size_t>(lanes[lane])] = layout.lane(product, static_cast<int>(lane));
    }
    return out;
}

// A leaf: its butterfly on one vector per value.
template <class Layout>
ValuesOf<Layout> walkLeaf(Layout& layout, const Tree& tree, const ValuesOf<Layout>& x, int sign)
{
    std::vector<Cx> vectors;
    for (const auto& value : x)
        vectors.push_back(layout.gather({value}));
    ValuesOf<Layout> out;
    for (const Cx& v : layout.arithmetic().butterfly(tree, vectors, sign))
        out.push_back(layout.lane(v, 0));
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
    const Cx x0 = layout.gather({x[0]});
    const Cx a0 = layout.gather({spectrum[0]});
    auto binZero = [&] { return layout.lane(arithmetic.add(x0, arithmetic.scale(a0, -1.0L / n)), 0); };
    const typename Layout::Value first = Layout::binZeroFirst ? binZero() : typename Layout::Value{};
    ValuesOf<Layout> product = layout.multiplyEach(spectrum, n, [&](int k) {
        return k == 0 ? Constant(-1.0L / n, 0) : raderConstant(p, k, sign);
    });
    product[0] = Layout::binZeroFirst ? first : binZero();
    const ValuesOf<Layout> cyclic = layout.dft(*tree.second, product, -sign);

    ValuesOf<Layout> out(static_cast<std::size_t>(p));
    out[0] = layout.lane(arithmetic.add(x0, a0), 0);
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
    ValuesOf<Layout> padded = x;
    padded.resize(static_cast<std::size_t>(length));
    const ValuesOf<Layout> y = layout.multiplyEach(padded, p, chirp);
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
