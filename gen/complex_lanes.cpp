#include "complex_lanes.h"

#include <cmath>
#include <map>
#include <stdexcept>
#include <utility>

#include "complex_walk.h"

namespace gen {

SplitBuilder::SplitBuilder(Graph& graph, int length, int width, bool batch)
    : g_(graph), uniform_(graph), width_(width), batch_(batch)
{
    if (width != 4 && width != 8)
        throw std::logic_error("split layout of 4 or 8 lanes only");
    for (int i = 0; i < length; ++i) {
        // neighbouring samples 2j and 2j+1 come in one load: re, im, re, im
        const int first = i - i % 2;
        const int raw = g_.inputPair(first, first + 1 < length ? first + 1 : -1);
        inputs_.push_back({{raw, 2 * (i % 2)}, {raw, 2 * (i % 2) + 1}});
    }
}

std::vector<SplitRef> SplitBuilder::lanesOf(const Cx& v, int count)
{
    std::vector<SplitRef> out;
    for (int j = 0; j < count; ++j)
        out.push_back({{v.p, j}, {v.q, j}});
    return out;
}

namespace {
// multiply() of the uniform builder takes a shortcut for such a constant
bool hasZeroPart(const std::complex<long double>& c)
{
    const long double magnitude = std::abs(c);
    return std::fabs(c.imag()) <= 1e-15L * magnitude || std::fabs(c.real()) <= 1e-15L * magnitude;
}
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

Cx SplitBuilder::multiplyLanes(Cx v, const std::vector<Constant>& constants)
{
    if (width_ == 8) {
        // each half as the 128-bit kernel multiplies its vector: one constant
        // of all four lanes by the uniform code, otherwise by lane constants
        std::vector<Constant> lanes(8);
        // a lane without a constant takes the first of its group of four; a
        // group without any repeats the other
        for (std::size_t j = 0; j < 8; ++j) {
            if (j < constants.size())
                lanes[j] = constants[j];
            else if (j < 4)
                lanes[j] = constants[0];
            else
                lanes[j] = constants.size() > 4 ? constants[4] : lanes[j - 4];
        }
        std::array<bool, 2> uniform{true, true};
        for (std::size_t j = 0; j < 8; ++j)
            uniform[j / 4] = uniform[j / 4] && lanes[j] == lanes[j / 4 * 4];
        const bool special0 = uniform[0] && hasZeroPart(lanes[0]), special1 = uniform[1] && hasZeroPart(lanes[4]);
        if (uniform[0] && uniform[1] && lanes[0] == lanes[4])
            return uniform_.multiply(v, lanes[0].real(), lanes[0].imag());
        if (!special0 && !special1) {
            long double re[8], im[8];
            for (std::size_t j = 0; j < 8; ++j) {
                re[j] = lanes[j].real();
                im[j] = lanes[j].imag();
            }
            const int cosines = g_.constantLanes8(re), sines = g_.constantLanes8(im);
            return multiplyByNodes(g_, v, cosines, sines);
        }
        const std::vector<Constant> lower(lanes.begin(), lanes.begin() + 4), upper(lanes.begin() + 4, lanes.end());
        std::vector<Constant> lowerTwice = lower, upperTwice = upper;
        lowerTwice.insert(lowerTwice.end(), lower.begin(), lower.end());
        upperTwice.insert(upperTwice.end(), upper.begin(), upper.end());
        // the upper half's nodes first, in the order of graph.h's note
        const Cx upperForm = multiplyLanes(v, upperTwice);
        return joinForms(multiplyLanes(v, lowerTwice), upperForm);
    }
    bool uniform = true;
    for (const Constant& c : constants)
        uniform = uniform && c == constants[0];
    if (uniform)
        return uniform_.multiply(v, constants[0].real(), constants[0].imag());
    long double re[4], im[4];
    for (std::size_t j = 0; j < 4; ++j) {
        const Constant& c = j < constants.size() ? constants[j] : constants[0];
        re[j] = c.real();
        im[j] = c.imag();
    }
    const int cosines = g_.constantLanes(re[0], re[1], re[2], re[3]);
    const int sines = g_.constantLanes(im[0], im[1], im[2], im[3]);
    // the constants differing per lane
    return multiplyByNodes(g_, v, cosines, sines);
}

Cx SplitBuilder::twiddleHalves(Cx v, const std::vector<Constant>& twiddles, const std::array<bool, 2>& uniform,
                               const std::array<long long, 2>& k, long long n, int sign)
{
    // the form of a half: the exact shortcuts of rotate() (angle 0 or a multiple
    // of 45 degrees), or products by lane constants, which rotate() also makes
    // for any other angle
    auto exactForm = [&](int h) {
        const long long r = ((k[static_cast<std::size_t>(h)] % n) + n) % n;
        return uniform[static_cast<std::size_t>(h)] && (r == 0 || (8 * r) % n == 0);
    };
    const bool exact0 = exactForm(0), exact1 = exactForm(1);
    if (!exact0 && !exact1)
        return multiplyLanes(v, twiddles);
    if (exact0 && exact1 && ((k[0] - k[1]) % n) == 0)
        return uniform_.rotate(v, k[0], n, sign);
    // the half that is not kept repeats the kept one, so that it adds no form of its own
    std::vector<Constant> lowerLanes(twiddles.begin(), twiddles.begin() + 4);
    lowerLanes.insert(lowerLanes.end(), twiddles.begin(), twiddles.begin() + 4);
    std::vector<Constant> upperLanes(twiddles.begin() + 4, twiddles.end());
    upperLanes.resize(4, twiddles[4]);
    upperLanes.insert(upperLanes.end(), upperLanes.begin(), upperLanes.end());
    const Cx lower = exact0 ? uniform_.rotate(v, k[0], n, sign) : multiplyLanes(v, lowerLanes);
    const Cx upper = exact1 ? uniform_.rotate(v, k[1], n, sign) : multiplyLanes(v, upperLanes);
    return joinForms(lower, upper);
}

std::vector<SplitRef> SplitBuilder::multiplyEach(const std::vector<SplitRef>& values, int count,
                                                 const std::function<Constant(int)>& constant)
{
    const std::size_t w = static_cast<std::size_t>(width_);
    std::vector<SplitRef> out = values;
    // values still in the loaded layout are first gathered `width` at a time
    std::vector<int> loaded;
    for (int i = 0; i < count; ++i) {
        const SplitRef& r = out[static_cast<std::size_t>(i)];
        if (r.re.node != Graph::none && (r.re.node == r.im.node || r.re.lane != r.im.lane))
            loaded.push_back(i);
    }
    for (std::size_t start = 0; start < loaded.size(); start += w) {
        std::vector<SplitRef> group;
        for (std::size_t j = start; j < loaded.size() && j < start + w; ++j)
            group.push_back(out[static_cast<std::size_t>(loaded[j])]);
        const std::vector<SplitRef> lanes = lanesOf(gather(group), static_cast<int>(group.size()));
        for (std::size_t j = 0; j < group.size(); ++j)
            out[static_cast<std::size_t>(loaded[start + j])] = lanes[j];
    }
    std::map<std::pair<int, int>, std::array<int, 8>> owners;
    for (int i = 0; i < count; ++i) {
        const SplitRef& r = out[static_cast<std::size_t>(i)];
        if (r.re.node == Graph::none && r.im.node == Graph::none)
            continue;  // zero stays zero
        auto found = owners.find({r.re.node, r.im.node});
        if (found == owners.end())
            found = owners.emplace(std::make_pair(r.re.node, r.im.node), std::array<int, 8>{-1, -1, -1, -1, -1, -1, -1, -1})
                        .first;
        found->second[static_cast<std::size_t>(r.re.lane)] = i;
    }
    for (const auto& entry : owners) {
        // a lane without a value takes the constant of the last value of its
        // group of four (of the other group where its own has none)
        std::vector<Constant> constants;
        for (std::size_t first = 0; first < w; first += 4) {
            int any = -1;
            for (std::size_t j = first; j < first + 4; ++j)
                if (entry.second[j] >= 0)
                    any = entry.second[j];
            for (std::size_t j = first; j < first + 4; ++j) {
                const int index = entry.second[j];
                constants.push_back(index >= 0 ? constant(index) : any >= 0 ? constant(any) : Constant());
            }
        }
        if (w == 8) {
            bool lowerEmpty = true, upperEmpty = true;
            for (std::size_t j = 0; j < 4; ++j) {
                lowerEmpty = lowerEmpty && entry.second[j] < 0;
                upperEmpty = upperEmpty && entry.second[j + 4] < 0;
            }
            for (std::size_t j = 0; j < 4; ++j) {
                if (upperEmpty)
                    constants[j + 4] = constants[j];
                if (lowerEmpty)
                    constants[j] = constants[j + 4];
            }
        }
        const Cx product = multiplyLanes({entry.first.first, entry.first.second}, constants);
        for (int lane = 0; lane < width_; ++lane) {
            const int index = entry.second[static_cast<std::size_t>(lane)];
            if (index >= 0)
                out[static_cast<std::size_t>(index)] = {{product.p, lane}, {product.q, lane}};
        }
    }
    return out;
}

std::vector<SplitRef> SplitBuilder::dft(const Tree& tree, const std::vector<SplitRef>& x, int sign)
{
    return walkTree(*this, tree, x, sign);
}

std::vector<SplitRef> SplitBuilder::padded(std::vector<SplitRef> x, int length)
{
    x.resize(static_cast<std::size_t>(length));
    return x;
}

std::vector<SplitRef> SplitBuilder::split(const Tree& tree, const std::vector<SplitRef>& x, int sign)
{
    return splitRows(tree, {x}, sign)[0];
}

// The two stages of a P or T split of n = a b points, over `rows` inputs.
struct SplitBuilder::Stages {
    const Tree& tree;
    int a, b, n, rows;
    bool twiddled;

    Stages(const Tree& t, int inputs)
        : tree(t), a(t.first->size), b(t.second->size), n(a * b), rows(inputs), twiddled(t.kind == Tree::Kind::Twiddle)
    {
    }
    int inputIndex(int n1, int n2) const { return twiddled ? b * n1 + n2 : (b * n1 + a * n2) % n; }
    int outputIndex(int k1, int k2) const
    {
        if (twiddled)
            return k1 + a * k2;
        int k = 0;
        while (k % a != k1 || k % b != k2)
            ++k;
        return k;
    }
};

namespace {
bool composite(const Tree& t) { return t.kind == Tree::Kind::Prime || t.kind == Tree::Kind::Twiddle; }

std::array<bool, 2> uniformHalves(const std::vector<std::complex<long double>>& twiddles)
{
    std::array<bool, 2> uniform{true, true};
    for (std::size_t j = 0; j < twiddles.size(); ++j)
        uniform[j / 4] = uniform[j / 4] && twiddles[j] == twiddles[j / 4 * 4];
    return uniform;
}
}  // namespace

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

std::vector<std::vector<SplitRef>> SplitBuilder::transforms(const Tree& t, const std::vector<std::vector<SplitRef>>& inputs,
                                                            Apart how, int sign)
{
    if (how == Apart::Batch)
        return splitRows(t, inputs, sign);
    std::vector<std::vector<SplitRef>> spectra;
    for (const std::vector<SplitRef>& input : inputs)
        spectra.push_back(dft(t, input, sign));
    return spectra;
}

// The first stage's transforms taken apart, then the twiddles of all of them
// at once: a vector holding several columns is multiplied once.
void SplitBuilder::columnsApart(const Stages& s, const std::vector<SplitRef>& x, Apart how, int sign, Spectra& u)
{
    std::vector<std::vector<SplitRef>> column(static_cast<std::size_t>(s.b), std::vector<SplitRef>(static_cast<std::size_t>(s.a)));
    for (int n2 = 0; n2 < s.b; ++n2)
        for (int n1 = 0; n1 < s.a; ++n1)
            column[static_cast<std::size_t>(n2)][static_cast<std::size_t>(n1)] = x[static_cast<std::size_t>(s.inputIndex(n1, n2))];
    std::vector<SplitRef> all;
    for (const std::vector<SplitRef>& spectrum : transforms(*s.tree.first, column, how, sign))
        all.insert(all.end(), spectrum.begin(), spectrum.end());
    if (s.twiddled)
        all = multiplyEach(all, s.a * s.b, [&](int i) { return exactRoot(1LL * (i / s.a) * (i % s.a), s.n, sign); });
    for (int n2 = 0; n2 < s.b; ++n2)
        for (int k1 = 0; k1 < s.a; ++k1)
            u[0][static_cast<std::size_t>(n2)][static_cast<std::size_t>(k1)] = all[static_cast<std::size_t>(n2 * s.a + k1)];
}

// v times the twiddles of the transforms t0 .. t0 + count - 1 at bin k1; a
// twiddle shared by all lanes of a group of four takes the exact shortcuts.
Cx SplitBuilder::twiddleColumns(const Stages& s, Cx v, int t0, int count, int k1, int sign)
{
    std::vector<Constant> twiddles;
    for (int t = t0; t < t0 + count; ++t)
        twiddles.push_back(exactRoot(1LL * (t / s.rows) * k1, s.n, sign));
    const std::array<bool, 2> uniform = uniformHalves(twiddles);
    const long long k0 = 1LL * (t0 / s.rows) * k1, k4 = 1LL * ((t0 + 4) / s.rows) * k1;
    if (count <= 4)
        return uniform[0] ? uniform_.rotate(v, k0, s.n, sign) : multiplyLanes(v, twiddles);
    return twiddleHalves(v, twiddles, uniform, {k0, k4}, s.n, sign);
}

// The first stage `width` transforms at a time, one per lane, the rows of a
// batch side by side (row fastest), twiddled.
void SplitBuilder::columnsInLanes(const Stages& s, const std::vector<std::vector<SplitRef>>& xs, int scope, int sign,
                                  Spectra& u)
{
    for (int t0 = 0; t0 < s.b * s.rows; t0 += width_) {
        const int count = std::min(width_, s.b * s.rows - t0);
        std::vector<Cx> column(static_cast<std::size_t>(s.a));
        for (int n1 = 0; n1 < s.a; ++n1) {
            std::vector<SplitRef> group;
            for (int t = t0; t < t0 + count; ++t)
                group.push_back(xs[static_cast<std::size_t>(t % s.rows)][static_cast<std::size_t>(s.inputIndex(n1, t / s.rows))]);
            column[static_cast<std::size_t>(n1)] = gather(group);
        }
        g_.enterGroup(scope, t0 / width_);
        const std::vector<Cx> spectrum = uniform_.dft(*s.tree.first, column, sign);
        g_.leaveGroup();
        for (int k1 = 0; k1 < s.a; ++k1) {
            Cx v = spectrum[static_cast<std::size_t>(k1)];
            if (s.twiddled)
                v = twiddleColumns(s, v, t0, count, k1, sign);
            const std::vector<SplitRef> lanes = lanesOf(v, count);
            for (int t = t0; t < t0 + count; ++t)
                u[static_cast<std::size_t>(t % s.rows)][static_cast<std::size_t>(t / s.rows)][static_cast<std::size_t>(k1)] =
                    lanes[static_cast<std::size_t>(t - t0)];
        }
    }
}

// The second stage `width` transforms at a time, as the first.
void SplitBuilder::rowsInLanes(const Stages& s, const Spectra& u, int sign, std::vector<std::vector<SplitRef>>& out)
{
    const int scope = g_.openScope();
    for (int t0 = 0; t0 < s.a * s.rows; t0 += width_) {
        const int count = std::min(width_, s.a * s.rows - t0);
        std::vector<Cx> row(static_cast<std::size_t>(s.b));
        for (int n2 = 0; n2 < s.b; ++n2) {
            std::vector<SplitRef> group;
            for (int t = t0; t < t0 + count; ++t)
                group.push_back(u[static_cast<std::size_t>(t % s.rows)][static_cast<std::size_t>(n2)][static_cast<std::size_t>(t / s.rows)]);
            row[static_cast<std::size_t>(n2)] = gather(group);
        }
        g_.enterGroup(scope, t0 / width_);
        const std::vector<Cx> v = uniform_.dft(*s.tree.second, row, sign);
        g_.leaveGroup();
        for (int k2 = 0; k2 < s.b; ++k2) {
            const std::vector<SplitRef> lanes = lanesOf(v[static_cast<std::size_t>(k2)], count);
            for (int t = t0; t < t0 + count; ++t)
                out[static_cast<std::size_t>(t % s.rows)][static_cast<std::size_t>(s.outputIndex(t / s.rows, k2))] =
                    lanes[static_cast<std::size_t>(t - t0)];
        }
    }
}

// The transforms of several inputs (rows) of one tree at once.
std::vector<std::vector<SplitRef>> SplitBuilder::splitRows(const Tree& tree, const std::vector<std::vector<SplitRef>>& xs,
                                                           int sign)
{
    const Stages s(tree, static_cast<int>(xs.size()));
    // u[r][n2][k1]: the spectra of the first stage, twiddled
    Spectra u(static_cast<std::size_t>(s.rows),
              std::vector<std::vector<SplitRef>>(static_cast<std::size_t>(s.b), std::vector<SplitRef>(static_cast<std::size_t>(s.a))));
    // each block of transforms is one group of its stage for the 256-bit packing
    const int columns = g_.openScope();
    const Apart first = apart(*tree.first, s.b, s.rows);
    if (first != Apart::No)
        columnsApart(s, xs[0], first, sign, u);
    else
        columnsInLanes(s, xs, columns, sign, u);

    std::vector<std::vector<SplitRef>> out(static_cast<std::size_t>(s.rows), std::vector<SplitRef>(static_cast<std::size_t>(s.n)));
    const Apart second = apart(*tree.second, s.a, s.rows);
    if (second == Apart::No) {
        rowsInLanes(s, u, sign, out);
        return out;
    }
    std::vector<std::vector<SplitRef>> row(static_cast<std::size_t>(s.a), std::vector<SplitRef>(static_cast<std::size_t>(s.b)));
    for (int k1 = 0; k1 < s.a; ++k1)
        for (int n2 = 0; n2 < s.b; ++n2)
            row[static_cast<std::size_t>(k1)][static_cast<std::size_t>(n2)] = u[0][static_cast<std::size_t>(n2)][static_cast<std::size_t>(k1)];
    const std::vector<std::vector<SplitRef>> spectra = transforms(*tree.second, row, second, sign);
    for (int k1 = 0; k1 < s.a; ++k1)
        for (int k2 = 0; k2 < s.b; ++k2)
            out[0][static_cast<std::size_t>(s.outputIndex(k1, k2))] = spectra[static_cast<std::size_t>(k1)][static_cast<std::size_t>(k2)];
    return out;
}

}  // namespace gen
