// Split vector layout of the Complex32 kernels: four independent transforms
// of a stage side by side, real parts in one vector and imaginary parts in
// another.  Every butterfly then runs at full width with the uniform code of
// ComplexBuilder, a multiplication by i costs nothing, and a twiddle is four
// products and two additions for four complex numbers.  Between the stages
// the lanes are regrouped by at most three selections per vector (two per
// vector for a full 4x4 transpose, whose halves are shared).
#ifndef KVTGEN_COMPLEX_LANES_H
#define KVTGEN_COMPLEX_LANES_H

#include <array>
#include <complex>
#include <functional>
#include <vector>

#include "complex_builder.h"

namespace gen {

// One real number: lane `lane` of a four-float vector; node `none` is zero.
struct Lane {
    int node = Graph::none;
    int lane = 0;
};

// One complex number in the split layout.
struct SplitRef {
    Lane re, im;
};

class SplitBuilder {
public:
    SplitBuilder(Graph& graph, int length);

    // The n input samples, loaded as pairs of neighbouring samples.
    const std::vector<SplitRef>& inputs() const { return inputs_; }
    std::vector<SplitRef> dft(const Tree& tree, const std::vector<SplitRef>& x, int sign);

    // A vector whose lane i holds source i; lanes with care[i] false may hold anything.
    int gatherLanes(std::array<Lane, 4> source, std::array<bool, 4> care);

private:
    using Constant = std::complex<long double>;

    // Four complex numbers (or fewer: `count`) as a split pair of vectors.
    Cx gather(const std::vector<SplitRef>& values);
    std::vector<SplitRef> split(const Tree& tree, const std::vector<SplitRef>& x, int sign);
    std::vector<SplitRef> rader(const Tree& tree, const std::vector<SplitRef>& x, int sign);
    std::vector<SplitRef> bluestein(const Tree& tree, const std::vector<SplitRef>& x, int sign);
    std::vector<SplitRef> leaf(const Tree& tree, const std::vector<SplitRef>& x, int sign);
    Cx multiplyLanes(Cx v, const std::vector<Constant>& constants);
    std::vector<SplitRef> multiplyEach(const std::vector<SplitRef>& values, int count,
                                       const std::function<Constant(int)>& constant);
    static std::vector<SplitRef> lanesOf(const Cx& v, int count);

    Graph& g_;
    ComplexBuilder uniform_;
    std::vector<SplitRef> inputs_;
};

}  // namespace gen

#endif
