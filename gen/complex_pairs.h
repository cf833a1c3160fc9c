// Vector layout of the Complex32 kernels: two complex numbers per vector.
//
// Inside a split the independent transforms of a stage run two at a time, one
// in each half of the vectors, so every butterfly works at full width with the
// uniform code of ComplexBuilder.  Between the stages the halves are regrouped
// by one selection per vector; twiddles then differ per half.  A value of one
// transform is therefore a reference to one half of a vector.
#ifndef KVTGEN_COMPLEX_PAIRS_H
#define KVTGEN_COMPLEX_PAIRS_H

#include <functional>
#include <vector>

#include "complex_walk.h"

namespace gen {

// One complex number: a half of a computed vector pair, a sample still in
// memory, or an exact zero.
struct HalfRef {
    Cx vector;
    int half = 0;        // 0: lower complex number, 1: upper
    int sample = -1;     // >= 0: sample of src, not loaded yet
    bool zero = false;   // zero padding, never materialised

    static HalfRef memory(int index) { HalfRef r; r.sample = index; return r; }
    static HalfRef zeroValue() { HalfRef r; r.zero = true; return r; }
};

class PairedBuilder {
public:
    PairedBuilder(Graph& graph, bool materializeProducts) : g_(graph), uniform_(graph, false, materializeProducts) {}

    // DFT of one sequence whose values sit in halves of vectors.
    std::vector<HalfRef> dft(const Tree& tree, const std::vector<HalfRef>& x, int sign)
    {
        return walkTree(*this, tree, x, sign);
    }

    // A vector with `low` in its lower half and `high` in its upper half; a
    // `high` equal to `low` marks an unpaired value whose upper half is unused.
    Cx gather(const HalfRef& low, const HalfRef& high);

    // The layout of the tree walk (complex_walk.h).
    using Value = HalfRef;
    static constexpr bool binZeroFirst = false;
    ComplexBuilder& arithmetic() { return uniform_; }
    // the value in the lower half of a vector of its own
    Cx single(const HalfRef& ref);
    static HalfRef wrap(const Cx& v) { return {v}; }
    // Two transforms of a stage at a time, one in each half of the vectors.
    std::vector<HalfRef> split(const Tree& tree, const std::vector<HalfRef>& x, int sign);
    // Values that share a vector are multiplied together, by a constant per half.
    std::vector<HalfRef> multiplyEach(const std::vector<HalfRef>& values, int count,
                                      const std::function<Constant(int)>& constant);
    // Neighbouring samples share a vector.
    std::vector<HalfRef> padded(const std::vector<HalfRef>& x, int length);

private:
    int pick(int a, int halfA, int b, int halfB);
    // v times one complex constant per half
    Cx multiplyHalves(Cx v, Constant low, Constant high);

    Graph& g_;
    ComplexBuilder uniform_;
};

}  // namespace gen

#endif
