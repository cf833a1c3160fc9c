#include "complex_pairs.h"

#include <algorithm>
#include <array>
#include <map>
#include <tuple>
#include <utility>

namespace gen {

namespace {
// shufps selector taking complex half `lowHalf` of a and `highHalf` of b
int selectorOf(int lowHalf, int highHalf)
{
    return (2 * lowHalf) | ((2 * lowHalf + 1) << 2) | ((2 * highHalf) << 4) | ((2 * highHalf + 1) << 6);
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
    auto fields = [](const HalfRef& r) { return std::tie(r.vector.p, r.vector.q, r.half, r.sample, r.zero); };
    if (fields(low) == fields(high))
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

// Two transforms of a stage at a time: the lower half of every vector carries
// one, the upper half the next.  A last transform without a partner is its own
// partner, so that both writes below give it the lower half.
std::vector<HalfRef> PairedBuilder::split(const Tree& tree, const std::vector<HalfRef>& x, int sign)
{
    const int a = tree.first->size, b = tree.second->size;
    auto at = [](auto& values, int i) -> auto& { return values[static_cast<std::size_t>(i)]; };
    std::vector<std::vector<HalfRef>> u(static_cast<std::size_t>(b), std::vector<HalfRef>(static_cast<std::size_t>(a)));
    walkStage(
        g_, uniform_, *tree.first, b, 2, g_.openScope(), sign,
        [&](int n2, int count, int n1) {
            return gather(at(x, splitInput(tree, n1, n2)), at(x, splitInput(tree, n1, n2 + count - 1)));
        },
        [&](int k1, Cx v, int n2, int count) {
            // the twiddles of the two halves: one rotation where they are alike
            const int partner = n2 + count - 1;
            const long long kLow = 1LL * n2 * k1, kHigh = 1LL * partner * k1;
            if (tree.kind == Tree::Kind::Twiddle && (kHigh - kLow) % (a * b) == 0)
                v = uniform_.rotate(v, kLow, a * b, sign);
            else if (tree.kind == Tree::Kind::Twiddle)
                v = multiplyHalves(v, exactRoot(kLow, a * b, sign), exactRoot(kHigh, a * b, sign));
            at(at(u, n2), k1) = {v, 0};
            at(at(u, partner), k1) = {v, partner - n2};
        },
        true);
    std::vector<HalfRef> out(static_cast<std::size_t>(a * b));
    walkStage(
        g_, uniform_, *tree.second, a, 2, g_.openScope(), sign,
        [&](int k1, int count, int n2) { return gather(at(at(u, n2), k1), at(at(u, n2), k1 + count - 1)); },
        [&](int k2, Cx v, int k1, int count) {
            const int partner = k1 + count - 1;
            at(out, splitOutput(tree, k1, k2)) = {v, 0};
            at(out, splitOutput(tree, partner, k2)) = {v, partner - k1};
        });
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
