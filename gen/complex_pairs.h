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
#include <vector>

#include "complex_walk.h"

namespace gen {

// One complex number: a half of a computed vector pair, a sample still in
// memory, or an exact zero (no vector, as zero padding is).
struct HalfRef {
    Cx vector;
    int half = 0;        // 0: lower complex number, 1: upper
    int sample = -1;     // >= 0: sample of src, not loaded yet
    bool zero = false;   // not made by the builder any more (its zeros have no vector)

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
    Cx gather(const std::vector<HalfRef>& values);
    static HalfRef lane(const Cx& v, int half) { return {v, half}; }
    static std::array<int, 3> place(const HalfRef& ref) { return {ref.vector.p, ref.vector.q, ref.half}; }
    static bool loaded(const HalfRef& ref) { return ref.sample >= 0; }
    // v times one complex constant per half
    Cx multiplyLanes(Cx v, const std::vector<Constant>& halves)
    {
        return uniform_.multiplyLanes(v, {halves[0], halves[0], halves[1], halves[1]});
    }
    Cx twiddle(Cx v, int t0, int count, int rows, int k1, int n, int sign);

private:
    int pick(int a, int halfA, int b, int halfB);

    Graph& g_;
    ComplexBuilder uniform_;
};

}  // namespace gen

#endif
