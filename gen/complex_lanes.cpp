#include "complex_lanes.h"

#include <map>
#include <stdexcept>
#include <utility>

namespace gen {

namespace {
constexpr int unpackLowSelector = 256;   // (a0, b0, a1, b1)
constexpr int unpackHighSelector = 257;  // (a2, b2, a3, b3)

int selector(int a, int b, int c, int d) { return a | (b << 2) | (c << 4) | (d << 6); }
}  // namespace

SplitBuilder::SplitBuilder(Graph& graph, int length) : g_(graph), uniform_(graph)
{
    for (int i = 0; i < length; ++i) {
        // neighbouring samples 2j and 2j+1 come in one load: re, im, re, im
        const int first = i - i % 2;
        const int raw = g_.inputPair(first, first + 1 < length ? first + 1 : -1);
        inputs_.push_back({{raw, 2 * (i % 2)}, {raw, 2 * (i % 2) + 1}});
    }
}

int SplitBuilder::gatherLanes(std::array<Lane, 4> source, std::array<bool, 4> care)
{
    int firstNode = Graph::none;
    bool anyCare = false;
    for (int i = 0; i < 4; ++i) {
        if (!care[static_cast<std::size_t>(i)])
            continue;
        anyCare = true;
        if (source[static_cast<std::size_t>(i)].node != Graph::none && firstNode == Graph::none)
            firstNode = source[static_cast<std::size_t>(i)].node;
    }
    if (!anyCare)
        throw std::logic_error("gather of nothing");
    if (firstNode == Graph::none)
        return Graph::none;  // every lane that matters is zero
    const int zero = g_.constant(Type::V4F, 0);
    for (int i = 0; i < 4; ++i) {
        Lane& s = source[static_cast<std::size_t>(i)];
        if (!care[static_cast<std::size_t>(i)])
            s = {firstNode, i};  // a lane that does not matter takes its own place
        else if (s.node == Graph::none)
            s = {zero, i};
    }
    const auto& s = source;
    if (s[0].node == s[1].node && s[1].node == s[2].node && s[2].node == s[3].node) {
        if (s[0].lane == 0 && s[1].lane == 1 && s[2].lane == 2 && s[3].lane == 3)
            return s[0].node;
        return g_.shuffle(s[0].node, s[0].node, selector(s[0].lane, s[1].lane, s[2].lane, s[3].lane));
    }
    // interleavings of two vectors
    auto interleaves = [&](int from) {
        for (int i = 0; i < 4; ++i) {
            const int node = i % 2 == 0 ? s[0].node : s[1].node;
            if (care[static_cast<std::size_t>(i)] &&
                (s[static_cast<std::size_t>(i)].node != node || s[static_cast<std::size_t>(i)].lane != from + i / 2))
                return false;
        }
        return s[0].node != s[1].node;
    };
    if (care[0] && care[1] && interleaves(0))
        return g_.shuffle(s[0].node, s[1].node, unpackLowSelector);
    if (care[0] && care[1] && interleaves(2))
        return g_.shuffle(s[0].node, s[1].node, unpackHighSelector);

    // Each half from one vector: the half itself, an interleaving, or a selection.
    struct Half {
        int node;
        int first, second;  // positions of the two values in `node`
    };
    auto half = [&](const Lane& x, const Lane& y) -> Half {
        if (x.node == y.node)
            return {x.node, x.lane, y.lane};
        if (x.lane == y.lane && x.lane < 2)
            return {g_.shuffle(x.node, y.node, unpackLowSelector), 2 * x.lane, 2 * x.lane + 1};
        if (x.lane == y.lane)
            return {g_.shuffle(x.node, y.node, unpackHighSelector), 2 * (x.lane - 2), 2 * (x.lane - 2) + 1};
        return {g_.shuffle(x.node, y.node, selector(x.lane, x.lane, y.lane, y.lane)), 0, 2};
    };
    const Half low = half(s[0], s[1]);
    const Half high = half(s[2], s[3]);
    if (low.node == high.node && low.first == 0 && low.second == 1 && high.first == 2 && high.second == 3)
        return low.node;
    return g_.shuffle(low.node, high.node, selector(low.first, low.second, high.first, high.second));
}

Cx SplitBuilder::gather(const std::vector<SplitRef>& values)
{
    std::array<Lane, 4> re{}, im{};
    std::array<bool, 4> care{};
    for (std::size_t i = 0; i < values.size() && i < 4; ++i) {
        re[i] = values[i].re;
        im[i] = values[i].im;
        care[i] = true;
    }
    return {gatherLanes(re, care), gatherLanes(im, care)};
}

std::vector<SplitRef> SplitBuilder::lanesOf(const Cx& v, int count)
{
    std::vector<SplitRef> out;
    for (int j = 0; j < count; ++j)
        out.push_back({{v.p, j}, {v.q, j}});
    return out;
}

Cx SplitBuilder::multiplyLanes(Cx v, const std::vector<Constant>& constants)
{
    bool uniform = true;
    for (const Constant& c : constants)
        uniform = uniform && c == constants[0];
    if (uniform)
        return uniform_.multiply(v, constants[0].real(), constants[0].imag());
    long double re[4], im[4];
    for (std::size_t j = 0; j < 4; ++j) {
        const Constant& c = j < constants.size() ? constants[j] : constants[0];
        re[j] = c.real();
        im[j] = c.imag();
    }
    const int cosines = g_.constantLanes(re[0], re[1], re[2], re[3]);
    const int sines = g_.constantLanes(im[0], im[1], im[2], im[3]);
    // (p + iq)(c + is) = (cp - sq) + i(sp + cq), the constants differing per lane
    return {g_.sub(g_.mul(v.p, cosines), g_.mul(v.q, sines)), g_.add(g_.mul(v.p, sines), g_.mul(v.q, cosines))};
}

std::vector<SplitRef> SplitBuilder::multiplyEach(const std::vector<SplitRef>& values, int count,
                                                 const std::function<Constant(int)>& constant)
{
    std::vector<SplitRef> out = values;
    // values still in the loaded layout are first gathered four at a time
    std::vector<int> loaded;
    for (int i = 0; i < count; ++i) {
        const SplitRef& r = out[static_cast<std::size_t>(i)];
        if (r.re.node != Graph::none && (r.re.node == r.im.node || r.re.lane != r.im.lane))
            loaded.push_back(i);
    }
    for (std::size_t start = 0; start < loaded.size(); start += 4) {
        std::vector<SplitRef> group;
        for (std::size_t j = start; j < loaded.size() && j < start + 4; ++j)
            group.push_back(out[static_cast<std::size_t>(loaded[j])]);
        const std::vector<SplitRef> lanes = lanesOf(gather(group), static_cast<int>(group.size()));
        for (std::size_t j = 0; j < group.size(); ++j)
            out[static_cast<std::size_t>(loaded[start + j])] = lanes[j];
    }
    std::map<std::pair<int, int>, std::array<int, 4>> owners;
    for (int i = 0; i < count; ++i) {
        const SplitRef& r = out[static_cast<std::size_t>(i)];
        if (r.re.node == Graph::none && r.im.node == Graph::none)
            continue;  // zero stays zero
        auto found = owners.find({r.re.node, r.im.node});
        if (found == owners.end())
            found = owners.emplace(std::make_pair(r.re.node, r.im.node), std::array<int, 4>{-1, -1, -1, -1}).first;
        found->second[static_cast<std::size_t>(r.re.lane)] = i;
    }
    for (const auto& entry : owners) {
        int any = -1;
        for (int index : entry.second)
            if (index >= 0)
                any = index;
        std::vector<Constant> constants;
        for (int index : entry.second)
            constants.push_back(constant(index >= 0 ? index : any));
        const Cx product = multiplyLanes({entry.first.first, entry.first.second}, constants);
        for (int lane = 0; lane < 4; ++lane) {
            const int index = entry.second[static_cast<std::size_t>(lane)];
            if (index >= 0)
                out[static_cast<std::size_t>(index)] = {{product.p, lane}, {product.q, lane}};
        }
    }
    return out;
}

std::vector<SplitRef> SplitBuilder::dft(const Tree& tree, const std::vector<SplitRef>& x, int sign)
{
    if (static_cast<int>(x.size()) != tree.size)
        throw std::logic_error("input of the wrong length");
    switch (tree.kind) {
    case Tree::Kind::Prime:
    case Tree::Kind::Twiddle: return split(tree, x, sign);
    case Tree::Kind::Rader: return rader(tree, x, sign);
    case Tree::Kind::Bluestein: return bluestein(tree, x, sign);
    default: return leaf(tree, x, sign);
    }
}

std::vector<SplitRef> SplitBuilder::leaf(const Tree& tree, const std::vector<SplitRef>& x, int sign)
{
    std::vector<Cx> vectors;
    for (const SplitRef& ref : x)
        vectors.push_back(gather({ref}));
    std::vector<SplitRef> out;
    for (const Cx& v : uniform_.dft(tree, vectors, sign))
        out.push_back(lanesOf(v, 1)[0]);
    return out;
}

// Four transforms of a stage at a time, one per lane.
std::vector<SplitRef> SplitBuilder::split(const Tree& tree, const std::vector<SplitRef>& x, int sign)
{
    const int a = tree.first->size, b = tree.second->size, n = a * b;
    const bool twiddled = tree.kind == Tree::Kind::Twiddle;
    auto inputIndex = [&](int n1, int n2) { return twiddled ? b * n1 + n2 : (b * n1 + a * n2) % n; };
    auto outputIndex = [&](int k1, int k2) {
        if (twiddled)
            return k1 + a * k2;
        int k = 0;
        while (k % a != k1 || k % b != k2)
            ++k;
        return k;
    };

    // A stage of only one or two composite transforms would leave lanes empty:
    // each of its transforms then fills the lanes by a split of its own.
    auto alone = [](const Tree& t, int count) {
        return count <= 2 && (t.kind == Tree::Kind::Prime || t.kind == Tree::Kind::Twiddle || t.kind == Tree::Kind::Rader);
    };

    std::vector<std::vector<SplitRef>> u(static_cast<std::size_t>(b), std::vector<SplitRef>(static_cast<std::size_t>(a)));
    // each block of four transforms below is one group of its stage for the 256-bit packing
    const int columns = g_.openScope();
    if (alone(*tree.first, b)) {
        for (int n2 = 0; n2 < b; ++n2) {
            std::vector<SplitRef> column(static_cast<std::size_t>(a));
            for (int n1 = 0; n1 < a; ++n1)
                column[static_cast<std::size_t>(n1)] = x[static_cast<std::size_t>(inputIndex(n1, n2))];
            std::vector<SplitRef> spectrum = dft(*tree.first, column, sign);
            if (twiddled)
                spectrum = multiplyEach(spectrum, a, [&](int k1) { return exactRoot(1LL * n2 * k1, n, sign); });
            u[static_cast<std::size_t>(n2)] = spectrum;
        }
    } else {
        for (int n2 = 0; n2 < b; n2 += 4) {
            const int count = std::min(4, b - n2);
            std::vector<Cx> column(static_cast<std::size_t>(a));
            for (int n1 = 0; n1 < a; ++n1) {
                std::vector<SplitRef> group;
                for (int j = 0; j < count; ++j)
                    group.push_back(x[static_cast<std::size_t>(inputIndex(n1, n2 + j))]);
                column[static_cast<std::size_t>(n1)] = gather(group);
            }
            g_.enterGroup(columns, n2 / 4);
            const std::vector<Cx> spectrum = uniform_.dft(*tree.first, column, sign);
            g_.leaveGroup();
            for (int k1 = 0; k1 < a; ++k1) {
                Cx v = spectrum[static_cast<std::size_t>(k1)];
                if (twiddled) {
                    std::vector<Constant> twiddles;
                    for (int j = 0; j < count; ++j)
                        twiddles.push_back(exactRoot(1LL * (n2 + j) * k1, n, sign));
                    bool uniform = true;
                    for (const Constant& t : twiddles)
                        uniform = uniform && t == twiddles[0];
                    // a twiddle shared by all lanes takes the exact shortcuts
                    v = uniform ? uniform_.rotate(v, 1LL * n2 * k1, n, sign) : multiplyLanes(v, twiddles);
                }
                const std::vector<SplitRef> lanes = lanesOf(v, count);
                for (int j = 0; j < count; ++j)
                    u[static_cast<std::size_t>(n2 + j)][static_cast<std::size_t>(k1)] = lanes[static_cast<std::size_t>(j)];
            }
        }
    }
    std::vector<SplitRef> out(static_cast<std::size_t>(n));
    if (alone(*tree.second, a)) {
        for (int k1 = 0; k1 < a; ++k1) {
            std::vector<SplitRef> row(static_cast<std::size_t>(b));
            for (int n2 = 0; n2 < b; ++n2)
                row[static_cast<std::size_t>(n2)] = u[static_cast<std::size_t>(n2)][static_cast<std::size_t>(k1)];
            const std::vector<SplitRef> v = dft(*tree.second, row, sign);
            for (int k2 = 0; k2 < b; ++k2)
                out[static_cast<std::size_t>(outputIndex(k1, k2))] = v[static_cast<std::size_t>(k2)];
        }
        return out;
    }
    const int rows = g_.openScope();
    for (int k1 = 0; k1 < a; k1 += 4) {
        const int count = std::min(4, a - k1);
        std::vector<Cx> row(static_cast<std::size_t>(b));
        for (int n2 = 0; n2 < b; ++n2) {
            std::vector<SplitRef> group;
            for (int j = 0; j < count; ++j)
                group.push_back(u[static_cast<std::size_t>(n2)][static_cast<std::size_t>(k1 + j)]);
            row[static_cast<std::size_t>(n2)] = gather(group);
        }
        g_.enterGroup(rows, k1 / 4);
        const std::vector<Cx> v = uniform_.dft(*tree.second, row, sign);
        g_.leaveGroup();
        for (int k2 = 0; k2 < b; ++k2) {
            const std::vector<SplitRef> lanes = lanesOf(v[static_cast<std::size_t>(k2)], count);
            for (int j = 0; j < count; ++j)
                out[static_cast<std::size_t>(outputIndex(k1 + j, k2))] = lanes[static_cast<std::size_t>(j)];
        }
    }
    return out;
}

std::vector<SplitRef> SplitBuilder::rader(const Tree& tree, const std::vector<SplitRef>& x, int sign)
{
    const int p = tree.size, n = p - 1;
    const int g = primitiveRoot(p);
    std::vector<SplitRef> a(static_cast<std::size_t>(n));
    for (int j = 0; j < n; ++j)
        a[static_cast<std::size_t>(j)] = x[static_cast<std::size_t>(powMod(g, j, p))];
    const std::vector<SplitRef> spectrum = dft(*tree.first, a, sign);

    const Cx x0 = gather({x[0]});
    const Cx a0 = gather({spectrum[0]});
    std::vector<SplitRef> product = multiplyEach(spectrum, n, [&](int k) {
        return k == 0 ? Constant(-1.0L / n, 0) : raderConstant(p, k, sign);
    });
    // bin 0 of the product carries x[0] into every output
    product[0] = lanesOf(uniform_.add(x0, uniform_.scale(a0, -1.0L / n)), 1)[0];
    const std::vector<SplitRef> cyclic = dft(*tree.second, product, -sign);

    std::vector<SplitRef> out(static_cast<std::size_t>(p));
    out[0] = lanesOf(uniform_.add(x0, a0), 1)[0];
    for (int m = 0; m < n; ++m)
        out[static_cast<std::size_t>(powMod(g, (n - m) % n, p))] = cyclic[static_cast<std::size_t>(m)];
    return out;
}

std::vector<SplitRef> SplitBuilder::bluestein(const Tree& tree, const std::vector<SplitRef>& x, int sign)
{
    const int p = tree.size, length = tree.chirpLength;
    std::vector<SplitRef> y(static_cast<std::size_t>(length));
    for (int k = 0; k < p; ++k)
        y[static_cast<std::size_t>(k)] = x[static_cast<std::size_t>(k)];
    y = multiplyEach(y, p, [&](int k) { return bluesteinChirp(p, k, sign); });
    const std::vector<SplitRef> spectrum = dft(*tree.first, y, sign);
    const std::vector<SplitRef> product =
        multiplyEach(spectrum, length, [&](int k) { return bluesteinFilter(p, length, k, sign); });
    const std::vector<SplitRef> z = dft(*tree.second, product, -sign);
    std::vector<SplitRef> out = multiplyEach(z, p, [&](int k) { return bluesteinChirp(p, k, sign); });
    out.resize(static_cast<std::size_t>(p));
    return out;
}

}  // namespace gen
