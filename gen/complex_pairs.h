// Vector layout of the Complex32 kernels: two complex numbers per vector.
//
// Inside a split the independent transforms of a stage run two at a time, one
// in each half of the vectors, so every butterfly works at full width with the
// uniform code of ComplexBuilder.  Between the stages the halves are regrouped
// by one selection per vector; twiddles then differ per half.  A value of one
// transform is therefore a reference to one half of a vector.
#ifndef KVTGEN_COMPLEX_PAIRS_H
#define KVTGEN_COMPLEX_PAIRS_H

#include <array>
#include <functional>
#include <tuple>
#include <vector>

#include "complex_walk.h"

namespace gen {

// One complex number: a half of a computed vector pair (an exact zero has no
// vector, as zero padding has none) or a sample still in memory.
struct HalfRef {
    Cx vector;
    int half = 0;     // 0: lower complex number, 1: upper
    int sample = -1;  // >= 0: sample of src, not loaded yet

    static HalfRef memory(int index) { HalfRef r; r.sample = index; return r; }
};

class PairedBuilder {
public:
    PairedBuilder(Graph& graph, bool materializeProducts) : g_(graph), uniform_(graph, false, materializeProducts) {}

    // DFT of one sequence whose values sit in halves of vectors.
    std::vector<HalfRef> dft(const Tree& tree, const std::vector<HalfRef>& x, int sign)
    {
        return walkTree(*this, tree, x, sign);
    }

    // The layout of the tree walk (complex_walk.h).
    using Value = HalfRef;
    static constexpr bool binZeroFirst = false;
    static constexpr TwiddlePoint twiddlePoint = TwiddlePoint::FirstInGroup;
    ComplexBuilder& arithmetic() { return uniform_; }
    // Two transforms of a stage at a time, one in each half of the vectors.
    std::vector<HalfRef> split(const Tree& tree, const std::vector<HalfRef>& x, int sign)
    {
        return walkSplit(*this, g_, tree, x, 2, sign);
    }
    // Values that share a vector are multiplied together, by a constant per half.
    std::vector<HalfRef> multiplyEach(const std::vector<HalfRef>& values, int count,
                                      const std::function<Constant(int)>& constant)
    {
        return multiplyInLanes(*this, values, count, constant, 2);
    }

    // A vector with values[0] in its lower half and values[1], if given, in
    // its upper half.
    Cx gather(const std::vector<HalfRef>& values)
    {
        const HalfRef& low = values[0];
        const HalfRef& high = values.back();
        auto fields = [](const HalfRef& r) { return std::tie(r.vector.p, r.vector.q, r.half, r.sample); };
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
    static HalfRef lane(const Cx& v, int half) { return {v, half}; }
    static std::array<int, 3> place(const HalfRef& ref) { return {ref.vector.p, ref.vector.q, ref.half}; }
    static bool loaded(const HalfRef& ref) { return ref.sample >= 0; }
    // v times one complex constant per half
    Cx multiplyLanes(Cx v, const std::vector<Constant>& halves)
    {
        return uniform_.multiplyLanes(v, {halves[0], halves[0], halves[1], halves[1]});
    }
    // The twiddles of the two halves: one rotation where they are alike.
    Cx twiddle(Cx v, int t0, int count, int, int k1, int n, int sign)
    {
        const long long kLow = 1LL * t0 * k1, kHigh = 1LL * (t0 + count - 1) * k1;
        if ((kHigh - kLow) % n == 0)
            return uniform_.rotate(v, kLow, n, sign);
        return multiplyLanes(v, {exactRoot(kLow, n, sign), exactRoot(kHigh, n, sign)});
    }

private:
    // half `halfA` of a and half `halfB` of b by one shufps (none: zero)
    int pick(int a, int halfA, int b, int halfB)
    {
        if (a == Graph::none && b == Graph::none)
            return Graph::none;
        if (a == Graph::none)
            a = g_.constant(Type::V4F, 0);
        if (b == Graph::none)
            b = g_.constant(Type::V4F, 0);
        return g_.shuffle(a, b, (2 * halfA) | ((2 * halfA + 1) << 2) | ((2 * halfB) << 4) | ((2 * halfB + 1) << 6));
    }

    Graph& g_;
    ComplexBuilder uniform_;
};

}  // namespace gen

#endif
