// Split vector layout of the Complex32 kernels: four independent transforms
// of a stage side by side, real parts in one vector and imaginary parts in
// another.  Every butterfly then runs at full width with the uniform code of
// ComplexBuilder, a multiplication by i costs nothing, and a twiddle is four
// products and two additions for four complex numbers.  Between the stages
// the lanes are regrouped by at most three selections per vector (two per
// vector for a full 4x4 transpose, whose halves are shared).
//
// The 256-bit target runs the same layout eight lanes wide: each 8-float
// vector holds the two 4-lane vectors of the 128-bit kernel side by side, so
// that every lane computes the same expression as there.  Where the 128-bit
// kernel treats its two vectors differently (a twiddle taken by an exact
// shortcut in one and by products in the other), both forms are computed and
// the halves joined.
#ifndef KVTGEN_COMPLEX_LANES_H
#define KVTGEN_COMPLEX_LANES_H

#include <array>
#include <functional>
#include <vector>

#include "complex_walk.h"

namespace gen {

// One real number: lane `lane` of a four- or eight-float vector; node `none` is zero.
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
    // width: lanes per vector, 4 (V4F) or 8 (V8F); the inputs are 4-lane
    // loads of two samples in both.  batch: with eight lanes, a stage of four
    // composite transforms runs them as one batch through their own stages.
    SplitBuilder(Graph& graph, int length, int width = 4, bool batch = false);

    // The n input samples, loaded as pairs of neighbouring samples.
    const std::vector<SplitRef>& inputs() const { return inputs_; }
    std::vector<SplitRef> dft(const Tree& tree, const std::vector<SplitRef>& x, int sign)
    {
        return walkTree(*this, tree, x, sign);
    }

    // The layout of the tree walk (complex_walk.h).
    using Value = SplitRef;
    static constexpr bool binZeroFirst = false;
    static constexpr TwiddlePoint twiddlePoint = TwiddlePoint::FirstAfterGroup;
    ComplexBuilder& arithmetic() { return uniform_; }
    std::vector<SplitRef> split(const Tree& tree, const std::vector<SplitRef>& x, int sign)
    {
        return splitRows(tree, {x}, sign)[0];
    }
    // Values that share a vector are multiplied together, by a constant per lane.
    std::vector<SplitRef> multiplyEach(const std::vector<SplitRef>& values, int count,
                                       const std::function<Constant(int)>& constant)
    {
        return multiplyInLanes(*this, values, count, constant, width_);
    }

    // `width` complex numbers (or fewer) as a split pair of vectors.
    Cx gather(const std::vector<SplitRef>& values);
    static SplitRef lane(const Cx& v, int lane) { return {{v.p, lane}, {v.q, lane}}; }
    static std::array<int, 3> place(const SplitRef& ref) { return {ref.re.node, ref.im.node, ref.re.lane}; }
    // a value as loaded: neighbouring samples in one vector, parts side by side
    static bool loaded(const SplitRef& r)
    {
        return r.re.node != Graph::none && (r.re.node == r.im.node || r.re.lane != r.im.lane);
    }
    Cx multiplyLanes(Cx v, const std::vector<Constant>& constants);
    // v times the twiddles of transforms t0 .. t0 + count - 1 (row fastest) at bin k1
    Cx twiddle(Cx v, int t0, int count, int rows, int k1, int n, int sign);

    // A vector whose lane i holds source i; lanes with care[i] false may hold
    // anything.  On V8F (type) each half selects alike.
    int gatherLanes(std::array<Lane, 4> source, std::array<bool, 4> care, Type type = Type::V4F);
    // The same for eight lanes: a V8F value.
    int gatherLanes8(std::array<Lane, 8> source, std::array<bool, 8> care);
    // Whether gatherLanes8 makes the eight lanes by selections within the
    // halves only: lane i and lane i + 4 lie at the same place of a half.
    bool inHalfPlaces(const std::array<Lane, 8>& source, const std::array<bool, 8>& care) const;

private:
    using Rows = std::vector<std::vector<SplitRef>>;  // transforms (or inputs) of a stage
    // a V8F whose lower half is half `loHalf` of `lo` and upper half `hiHalf`
    // of `hi` (half -1: a 4-lane value; node freeHalf: a half that does not matter)
    int halves(int lo, int loHalf, int hi, int hiHalf);
    Cx joinForms(Cx lower, Cx upper);
    // the transforms of several inputs (rows) of one tree at once
    Rows splitRows(const Tree& tree, const Rows& xs, int sign);
    // how the transforms of a stage leave the lanes of one vector: not at all,
    // each by a split of its own, or as one batch of rows
    enum class Apart { No, Alone, Batch };
    Apart apart(const Tree& t, int count, int rows) const;
    Rows transforms(const Tree& t, const Rows& inputs, Apart how, int sign);
    Rows columnsApart(const Tree& tree, const std::vector<SplitRef>& x, Apart how, int sign);

    Graph& g_;
    ComplexBuilder uniform_;
    std::vector<SplitRef> inputs_;
    int width_;
    bool batch_;
};

}  // namespace gen

#endif
