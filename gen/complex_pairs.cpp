#include "complex_pairs.h"

#include <tuple>

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

Cx PairedBuilder::gather(const std::vector<HalfRef>& values)
{
    const HalfRef& low = values[0];
    const HalfRef& high = values.back();
    auto fields = [](const HalfRef& r) { return std::tie(r.vector.p, r.vector.q, r.half, r.sample, r.zero); };
    const bool one = fields(low) == fields(high);
    if (low.sample >= 0 && (one || high.sample >= 0))
        return {g_.inputPair(low.sample, one ? -1 : high.sample), Graph::none};
    if (one && low.half == 0)
        return low.vector;
    // a sample alone is loaded into the lower half of a vector of its own
    auto computed = [&](const HalfRef& r) { return r.sample >= 0 ? lane({g_.inputPair(r.sample, -1)}, 0) : r; };
    const HalfRef a = computed(low), b = computed(high);
    return {pick(a.vector.p, a.half, b.vector.p, b.half), pick(a.vector.q, a.half, b.vector.q, b.half)};
}

// The twiddles of the two halves: one rotation where they are alike.
Cx PairedBuilder::twiddle(Cx v, int t0, int count, int, int k1, int n, int sign)
{
    const long long kLow = 1LL * t0 * k1, kHigh = 1LL * (t0 + count - 1) * k1;
    if ((kHigh - kLow) % n == 0)
        return uniform_.rotate(v, kLow, n, sign);
    return multiplyLanes(v, {exactRoot(kLow, n, sign), exactRoot(kHigh, n, sign)});
}

}  // namespace gen
