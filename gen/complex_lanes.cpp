#include "complex_lanes.h"

#include <cmath>

namespace gen {

SplitBuilder::SplitBuilder(Graph& graph, int length, int width, bool batch)
    : g_(graph), uniform_(graph), width_(width), batch_(batch)
{
    for (int i = 0; i < length; ++i) {
        // neighbouring samples 2j and 2j+1 come in one load: re, im, re, im
        const int first = i - i % 2;
        const int raw = g_.inputPair(first, first + 1 < length ? first + 1 : -1);
        inputs_.push_back({{raw, 2 * (i % 2)}, {raw, 2 * (i % 2) + 1}});
    }
}

namespace {
// multiply() of the uniform builder takes a shortcut for such a constant
bool hasZeroPart(const Constant& c)
{
    const long double magnitude = std::abs(c);
    return std::fabs(c.imag()) <= 1e-15L * magnitude || std::fabs(c.real()) <= 1e-15L * magnitude;
}

// whether the lanes of each group of four share one constant
std::array<bool, 2> uniformHalves(const std::vector<Constant>& lanes)
{
    std::array<bool, 2> uniform{true, true};
    for (std::size_t j = 0; j < lanes.size(); ++j)
        uniform[j / 4] = uniform[j / 4] && lanes[j] == lanes[j / 4 * 4];
    return uniform;
}

// the four lanes of group `half` twice: both halves of a vector alike
std::vector<Constant> halfTwice(const std::vector<Constant>& lanes, int half)
{
    std::vector<Constant> out(lanes.begin() + 4 * half, lanes.begin() + 4 * half + 4);
    out.insert(out.end(), out.begin(), out.end());
    return out;
}

bool composite(const Tree& t) { return t.kind == Tree::Kind::Prime || t.kind == Tree::Kind::Twiddle; }
}  // namespace

Cx SplitBuilder::joinForms(Cx lower, Cx upper)
{
    auto part = [&](int lo, int hi) {
        if (lo == Graph::none && hi == Graph::none)
            return Graph::none;
        const int zero = g_.constant(Type::V8F, 0);
        return g_.permute2(lo == Graph::none ? zero : lo, hi == Graph::none ? zero : hi, 0x30);
    };
    return {part(lower.p, upper.p), part(lower.q, upper.q)};
}

// v times one constant per lane (`width` of them).  On eight lanes each half
// is multiplied as the 128-bit kernel multiplies its vector: a constant of all
// four lanes by the uniform code, otherwise by lane constants.
Cx SplitBuilder::multiplyLanes(Cx v, const std::vector<Constant>& constants)
{
    const std::array<bool, 2> uniform = uniformHalves(constants);
    const bool eight = width_ == 8, alike = uniform[0] && uniform[1] && constants[0] == constants.back();
    if (eight && !alike && ((uniform[0] && hasZeroPart(constants[0])) || (uniform[1] && hasZeroPart(constants[4])))) {
        // the upper half's nodes first, in the order of graph.h's note
        const Cx upperForm = multiplyLanes(v, halfTwice(constants, 1));
        return joinForms(multiplyLanes(v, halfTwice(constants, 0)), upperForm);
    }
    return uniform_.multiplyLanes(v, constants);
}

// v times the twiddles of the first stage's transforms t0 .. t0 + count - 1 at
// bin k1.  Each group of four lanes takes the form the 128-bit kernel gives
// its vector: the exact shortcuts of rotate() (angle 0 or a multiple of 45
// degrees) where one twiddle serves the group, else products by lane
// constants, which rotate() also makes for any other angle; where the two
// groups differ, both forms are computed and the halves joined.
Cx SplitBuilder::twiddle(Cx v, int t0, int count, int rows, int k1, int n, int sign)
{
    std::vector<Constant> twiddles;
    for (int t = t0; t < t0 + count; ++t)
        twiddles.push_back(exactRoot(1LL * (t / rows) * k1, n, sign));
    // a lane past `count` repeats the first twiddle of its group (of the lower
    // group where its own has none), so that it adds no form of its own
    for (int j = count; j < width_; ++j)
        twiddles.push_back(twiddles[static_cast<std::size_t>(j < 4 ? 0 : count > 4 ? 4 : j - 4)]);
    const std::array<bool, 2> uniform = uniformHalves(twiddles);
    const long long k0 = 1LL * (t0 / rows) * k1, k4 = 1LL * ((t0 + 4) / rows) * k1;
    if (count <= 4)
        return uniform[0] ? uniform_.rotate(v, k0, n, sign) : multiplyLanes(v, twiddles);
    const bool exact0 = uniform[0] && (8 * k0) % n == 0, exact1 = uniform[1] && (8 * k4) % n == 0;
    if (!exact0 && !exact1)
        return multiplyLanes(v, twiddles);
    if (exact0 && exact1 && (k0 - k4) % n == 0)
        return uniform_.rotate(v, k0, n, sign);
    const Cx lower = exact0 ? uniform_.rotate(v, k0, n, sign) : multiplyLanes(v, halfTwice(twiddles, 0));
    const Cx upper = exact1 ? uniform_.rotate(v, k4, n, sign) : multiplyLanes(v, halfTwice(twiddles, 1));
    return joinForms(lower, upper);
}

// A stage of only one or two composite transforms would leave lanes empty:
// each of its transforms then fills the lanes by a split of its own.  A
// stage of four composite transforms would fill half of eight lanes: the four
// run as one batch through the stages of their own tree, each half of a
// vector holding one step of all four, as the 128-bit kernel holds it in one
// vector.
SplitBuilder::Apart SplitBuilder::apart(const Tree& t, int count, int rows) const
{
    if (rows == 1 && count <= 2 && (composite(t) || t.kind == Tree::Kind::Rader))
        return Apart::Alone;
    if (batch_ && rows == 1 && width_ == 8 && count == 4 && composite(t))
        return Apart::Batch;
    return Apart::No;
}

SplitBuilder::Rows SplitBuilder::transforms(const Tree& t, const Rows& inputs, Apart how, int sign)
{
    if (how == Apart::Batch)
        return splitRows(t, inputs, sign);
    Rows spectra;
    for (const std::vector<SplitRef>& input : inputs)
        spectra.push_back(dft(t, input, sign));
    return spectra;
}

// The first stage's transforms taken apart, then the twiddles of all of them
// at once: a vector holding several columns is multiplied once.  Returns the
// spectra by column.
SplitBuilder::Rows SplitBuilder::columnsApart(const Tree& tree, const std::vector<SplitRef>& x, Apart how, int sign)
{
    const int a = tree.first->size, b = tree.second->size;
    Rows columns(static_cast<std::size_t>(b));
    for (int n2 = 0; n2 < b; ++n2)
        for (int n1 = 0; n1 < a; ++n1)
            columns[static_cast<std::size_t>(n2)].push_back(x[static_cast<std::size_t>(splitInput(tree, n1, n2))]);
    std::vector<SplitRef> all;
    for (const std::vector<SplitRef>& spectrum : transforms(*tree.first, columns, how, sign))
        all.insert(all.end(), spectrum.begin(), spectrum.end());
    if (tree.kind == Tree::Kind::Twiddle)
        all = multiplyEach(all, a * b, [&](int i) { return exactRoot(1LL * (i / a) * (i % a), a * b, sign); });
    for (int n2 = 0; n2 < b; ++n2)
        columns[static_cast<std::size_t>(n2)].assign(all.begin() + n2 * a, all.begin() + (n2 + 1) * a);
    return columns;
}

// The transforms of several inputs (rows) of one tree at once: each stage in
// lanes (complex_walk.h), or its transforms apart.
SplitBuilder::Rows SplitBuilder::splitRows(const Tree& tree, const Rows& xs, int sign)
{
    const int a = tree.first->size, b = tree.second->size, rows = static_cast<int>(xs.size());
    // each block of transforms is one group of its stage for the 256-bit packing
    const int columns = g_.openScope();
    const Apart first = apart(*tree.first, b, rows);
    const Rows u = first != Apart::No ? columnsApart(tree, xs[0], first, sign)
                                      : walkSplitStage(*this, g_, tree, true, xs, rows, width_, columns, sign);
    const Apart second = apart(*tree.second, a, rows);
    if (second == Apart::No)
        return walkSplitStage(*this, g_, tree, false, u, rows, width_, 0, sign);
    Rows row(static_cast<std::size_t>(a));
    for (int k1 = 0; k1 < a; ++k1)
        for (int n2 = 0; n2 < b; ++n2)
            row[k1].push_back(u[n2][k1]);
    const Rows spectra = transforms(*tree.second, row, second, sign);
    Rows out(1, std::vector<SplitRef>(static_cast<std::size_t>(a * b)));
    for (int k1 = 0; k1 < a; ++k1)
        for (int k2 = 0; k2 < b; ++k2)
            out[0][splitOutput(tree, k1, k2)] = spectra[k1][k2];
    return out;
}

}  // namespace gen
