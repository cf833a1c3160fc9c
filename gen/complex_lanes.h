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
#include <complex>
#include <functional>
#include <vector>

#include "complex_builder.h"

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
    std::vector<SplitRef> dft(const Tree& tree, const std::vector<SplitRef>& x, int sign);

    // The layout of the tree walk (complex_walk.h).
    using Value = SplitRef;
    using Constant = std::complex<long double>;
    static constexpr bool binZeroFirst = false;
    ComplexBuilder& arithmetic() { return uniform_; }
    // the value in lane 0 of a split pair of its own
    Cx single(const SplitRef& ref) { return gather({ref}); }
    static SplitRef wrap(const Cx& v) { return {{v.p, 0}, {v.q, 0}}; }
    static SplitRef zero() { return {}; }
    std::vector<SplitRef> split(const Tree& tree, const std::vector<SplitRef>& x, int sign);
    // Values that share a vector are multiplied together, by a constant per lane.
    std::vector<SplitRef> multiplyEach(const std::vector<SplitRef>& values, int count,
                                       const std::function<Constant(int)>& constant);
    static std::vector<SplitRef> padded(std::vector<SplitRef> x, int length);

    // A vector whose lane i holds source i; lanes with care[i] false may hold anything.
    int gatherLanes(std::array<Lane, 4> source, std::array<bool, 4> care);
    // The same for eight lanes: a V8F value.
    int gatherLanes8(std::array<Lane, 8> source, std::array<bool, 8> care);
    // Whether gatherLanes8 makes the eight lanes by selections within the
    // halves only: lane i and lane i + 4 lie at the same place of a half.
    bool inHalfPlaces(const std::array<Lane, 8>& source, const std::array<bool, 8>& care) const;

private:
    // `width` complex numbers (or fewer) as a split pair of vectors.
    Cx gather(const std::vector<SplitRef>& values);
    int gatherWidth(const std::vector<Lane>& source, const std::vector<bool>& care);
    // 4-lane selections on nodes of `type`; on V8F each half selects alike
    int gatherFour(std::array<Lane, 4> source, std::array<bool, 4> care, Type type);
    // a V8F whose lower half is half `loHalf` of `lo` and upper half `hiHalf`
    // of `hi` (half -1: a 4-lane value; node none: a half that does not matter)
    int halves(int lo, int loHalf, int hi, int hiHalf);
    // v times exp(sign 2 pi i k / n), k per half of an 8-lane vector as the
    // 128-bit kernel does it: `twiddles` hold the lanes' constants, `uniform`
    // says which halves take the exact form of one constant (k) instead
    Cx twiddleHalves(Cx v, const std::vector<Constant>& twiddles, const std::array<bool, 2>& uniform,
                     const std::array<long long, 2>& k, long long n, int sign);
    Cx joinForms(Cx lower, Cx upper);
    // the transforms of several inputs (rows) of one tree at once
    std::vector<std::vector<SplitRef>> splitRows(const Tree& tree, const std::vector<std::vector<SplitRef>>& xs, int sign);
    // how the transforms of a stage leave the lanes of one vector: not at all,
    // each by a split of its own, or as one batch of rows
    enum class Apart { No, Alone, Batch };
    struct Stages;  // the two stages of a split
    using Spectra = std::vector<std::vector<std::vector<SplitRef>>>;
    Apart apart(const Tree& t, int count, int rows) const;
    std::vector<std::vector<SplitRef>> transforms(const Tree& t, const std::vector<std::vector<SplitRef>>& inputs, Apart how,
                                                  int sign);
    void columnsApart(const Stages& s, const std::vector<SplitRef>& x, Apart how, int sign, Spectra& u);
    void columnsInLanes(const Stages& s, const std::vector<std::vector<SplitRef>>& xs, int scope, int sign, Spectra& u);
    Cx twiddleColumns(const Stages& s, Cx v, int t0, int count, int k1, int sign);
    void rowsInLanes(const Stages& s, const Spectra& u, int sign, std::vector<std::vector<SplitRef>>& out);
    Cx multiplyLanes(Cx v, const std::vector<Constant>& constants);
    static std::vector<SplitRef> lanesOf(const Cx& v, int count);

    Graph& g_;
    ComplexBuilder uniform_;
    std::vector<SplitRef> inputs_;
    int width_;
    bool batch_;
};

}  // namespace gen

#endif
