#include "complex_pairs.h"

#include <algorithm>
#include <array>
#include <map>
#include <stdexcept>
#include <utility>

#include "complex_walk.h"

namespace gen {

namespace {
// shufps selector taking complex half `lowHalf` of a and `highHalf` of b
int selectorOf(int lowHalf, int highHalf)
{
    return (2 * lowHalf) | ((2 * lowHalf + 1) << 2) | ((2 * highHalf) << 4) | ((2 * highHalf + 1) << 6);
}

bool sameValue(const HalfRef& a, const HalfRef& b)
{
    if (a.zero || b.zero)
        return a.zero && b.zero;
    if (a.sample >= 0 || b.sample >= 0)
        return a.sample == b.sample;
    return a.vector.p == b.vector.p && a.vector.q == b.vector.q && a.half == b.half;
}
}  // namespace

int PairedBuilder::pick(int a, int halfA, int b, int halfB)
{
    if (a == Graph::none && b == Graph::none)
        return Graph::none;
    if (a == Graph::none)
        a = g_.constant(Type::V4F, 0);
    if (b == Graph::none)
        b = g_.constant(Type::V4F, 0);
    return g_.shuffle(a, b, selectorOf(halfA, halfB));
}

Cx PairedBuilder::single(const HalfRef& ref)
{
    if (ref.zero)
        return {};
    if (ref.sample >= 0)
        return {g_.inputPair(ref.sample, -1), Graph::none};
    if (ref.half == 0)
        return ref.vector;
    return {pick(ref.vector.p, 1, ref.vector.p, 1), pick(ref.vector.q, 1, ref.vector.q, 1)};
}

Cx PairedBuilder::gather(const HalfRef& low, const HalfRef& high)
{
    if (sameValue(low, high))
        return single(low);
    if (low.sample >= 0 && high.sample >= 0)
        return {g_.inputPair(low.sample, high.sample), Graph::none};
    auto computed = [&](const HalfRef& ref) { return ref.sample >= 0 ? wrap(single(ref)) : ref; };
    const HalfRef a = computed(low), b = computed(high);
    return {pick(a.vector.p, a.half, b.vector.p, b.half), pick(a.vector.q, a.half, b.vector.q, b.half)};
}

Cx PairedBuilder::multiplyHalves(Cx v, Constant low, Constant high)
{
    if (low == high)
        return uniform_.multiply(v, low.real(), low.imag());
    const int re = g_.constantLanes(low.real(), low.real(), high.real(), high.real());
    const int im = g_.constantLanes(low.imag(), low.imag(), high.imag(), high.imag());
    // the constants differing per half
    return multiplyByNodes(g_, v, re, im);
}

Cx PairedBuilder::rotateHalves(Cx v, long long kLow, long long kHigh, long long n, int sign)
{
    if (((kLow - kHigh) % n + n) % n == 0)
        return uniform_.rotate(v, kLow, n, sign);
    return multiplyHalves(v, exactRoot(kLow, n, sign), exactRoot(kHigh, n, sign));
}

std::vector<HalfRef> PairedBuilder::multiplyEach(const std::vector<HalfRef>& values, int count,
                                                 const std::function<Constant(int)>& constant)
{
    std::vector<HalfRef> out = values;
    // the values of one vector, by half
    std::map<std::pair<int, int>, std::array<int, 2>> owners;
    for (int i = 0; i < count; ++i) {
        HalfRef& ref = out[static_cast<std::size_t>(i)];
        if (ref.zero)
            continue;
        if (ref.sample >= 0)
            ref = wrap(single(ref));
        owners.try_emplace({ref.vector.p, ref.vector.q}, std::array<int, 2>{-1, -1}).first->second[ref.half == 1] = i;
    }
    for (const auto& [vector, halves] : owners) {
        const int low = halves[0] >= 0 ? halves[0] : halves[1], high = halves[1] >= 0 ? halves[1] : halves[0];
        const Cx product = multiplyHalves({vector.first, vector.second}, constant(low), constant(high));
        for (int index : halves)
            if (index >= 0)
                out[static_cast<std::size_t>(index)].vector = product;
    }
    return out;
}

std::vector<HalfRef> PairedBuilder::dft(const Tree& tree, const std::vector<HalfRef>& x, int sign)
{
    return walkTree(*this, tree, x, sign);
}

// Two transforms of a stage at a time: the lower half of every vector carries
// one, the upper half the next.  A last transform without a partner is its own
// partner, so that both writes below give it the lower half.
std::vector<HalfRef> PairedBuilder::split(const Tree& tree, const std::vector<HalfRef>& x, int sign)
{
    const int a = tree.first->size, b = tree.second->size;
    const bool twiddled = tree.kind == Tree::Kind::Twiddle;
    std::vector<std::vector<HalfRef>> u(static_cast<std::size_t>(b), std::vector<HalfRef>(static_cast<std::size_t>(a)));
    // each pair of transforms below is one group of its stage for the 256-bit packing
    const int columns = g_.openScope();
    for (int n2 = 0; n2 < b; n2 += 2) {
        const int partner = std::min(n2 + 1, b - 1);
        std::vector<Cx> column;
        for (int n1 = 0; n1 < a; ++n1)
            column.push_back(gather(x[static_cast<std::size_t>(splitInput(tree, n1, n2))],
                                    x[static_cast<std::size_t>(splitInput(tree, n1, partner))]));
        g_.enterGroup(columns, n2 / 2);
        const std::vector<Cx> spectrum = uniform_.dft(*tree.first, column, sign);
        for (int k1 = 0; k1 < a; ++k1) {
            Cx v = spectrum[static_cast<std::size_t>(k1)];
            if (twiddled)
                v = rotateHalves(v, 1LL * n2 * k1, 1LL * partner * k1, a * b, sign);
            u[static_cast<std::size_t>(n2)][static_cast<std::size_t>(k1)] = {v, 0};
            u[static_cast<std::size_t>(partner)][static_cast<std::size_t>(k1)] = {v, partner - n2};
        }
        g_.leaveGroup();
    }
    std::vector<HalfRef> out(static_cast<std::size_t>(a * b));
    const int rows = g_.openScope();
    for (int k1 = 0; k1 < a; k1 += 2) {
        const int partner = std::min(k1 + 1, a - 1);
        std::vector<Cx> row;
        for (const std::vector<HalfRef>& spectrum : u)
            row.push_back(gather(spectrum[static_cast<std::size_t>(k1)], spectrum[static_cast<std::size_t>(partner)]));
        g_.enterGroup(rows, k1 / 2);
        const std::vector<Cx> v = uniform_.dft(*tree.second, row, sign);
        g_.leaveGroup();
        for (int k2 = 0; k2 < b; ++k2) {
            const Cx& bin = v[static_cast<std::size_t>(k2)];
            out[static_cast<std::size_t>(splitOutput(tree, k1, k2))] = {bin, 0};
            out[static_cast<std::size_t>(splitOutput(tree, partner, k2))] = {bin, partner - k1};
        }
    }
    return out;
}

std::vector<HalfRef> PairedBuilder::padded(const std::vector<HalfRef>& x, int length)
{
    const int p = static_cast<int>(x.size());
    std::vector<HalfRef> y(static_cast<std::size_t>(length), HalfRef::zeroValue());
    for (int k = 0; k < p; k += 2) {
        const int partner = std::min(k + 1, p - 1);
        const Cx v = gather(x[static_cast<std::size_t>(k)], x[static_cast<std::size_t>(partner)]);
        y[static_cast<std::size_t>(k)] = {v, 0};
        y[static_cast<std::size_t>(partner)] = {v, partner - k};
    }
    return y;
}

}  // namespace gen
