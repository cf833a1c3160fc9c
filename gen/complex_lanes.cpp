#include "complex_lanes.h"

#include <cmath>
#include <map>
#include <stdexcept>
#include <utility>

#include "complex_walk.h"

namespace gen {

namespace {
constexpr int unpackLowSelector = 256;   // (a0, b0, a1, b1)
constexpr int unpackHighSelector = 257;  // (a2, b2, a3, b3)

int selector(int a, int b, int c, int d) { return a | (b << 2) | (c << 4) | (d << 6); }
}  // namespace

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

int SplitBuilder::gatherLanes(std::array<Lane, 4> source, std::array<bool, 4> care)
{
    return gatherFour(source, care, Type::V4F);
}

int SplitBuilder::gatherFour(std::array<Lane, 4> source, std::array<bool, 4> care, Type type)
{
    int firstNode = Graph::none;
    bool anyCare = false;
    for (int i = 0; i < 4; ++i) {
        if (!care[static_cast<std::size_t>(i)])
            continue;
        anyCare = true;
        if (source[static_cast<std::size_t>(i)].node != Graph::none && firstNode == Graph::none)
            firstNode = source[static_cast<std::size_t>(i)].node;
    }
    if (!anyCare)
        throw std::logic_error("gather of nothing");
    if (firstNode == Graph::none)
        return Graph::none;  // every lane that matters is zero
    const int zero = g_.constant(type, 0);
    for (int i = 0; i < 4; ++i) {
        Lane& s = source[static_cast<std::size_t>(i)];
        if (!care[static_cast<std::size_t>(i)])
            s = {firstNode, i};  // a lane that does not matter takes its own place
        else if (s.node == Graph::none)
            s = {zero, i};
    }
    const auto& s = source;
    if (s[0].node == s[1].node && s[1].node == s[2].node && s[2].node == s[3].node) {
        if (s[0].lane == 0 && s[1].lane == 1 && s[2].lane == 2 && s[3].lane == 3)
            return s[0].node;
        return g_.shuffle(s[0].node, s[0].node, selector(s[0].lane, s[1].lane, s[2].lane, s[3].lane));
    }
    // interleavings of two vectors
    auto interleaves = [&](int from) {
        for (int i = 0; i < 4; ++i) {
            const int node = i % 2 == 0 ? s[0].node : s[1].node;
            if (care[static_cast<std::size_t>(i)] &&
                (s[static_cast<std::size_t>(i)].node != node || s[static_cast<std::size_t>(i)].lane != from + i / 2))
                return false;
        }
        return s[0].node != s[1].node;
    };
    if (care[0] && care[1] && interleaves(0))
        return g_.shuffle(s[0].node, s[1].node, unpackLowSelector);
    if (care[0] && care[1] && interleaves(2))
        return g_.shuffle(s[0].node, s[1].node, unpackHighSelector);

    // Each half from one vector: the half itself, an interleaving, or a selection.
    struct Half {
        int node;
        int first, second;  // positions of the two values in `node`
    };
    auto half = [&](const Lane& x, const Lane& y) -> Half {
        if (x.node == y.node)
            return {x.node, x.lane, y.lane};
        if (x.lane == y.lane && x.lane < 2)
            return {g_.shuffle(x.node, y.node, unpackLowSelector), 2 * x.lane, 2 * x.lane + 1};
        if (x.lane == y.lane)
            return {g_.shuffle(x.node, y.node, unpackHighSelector), 2 * (x.lane - 2), 2 * (x.lane - 2) + 1};
        return {g_.shuffle(x.node, y.node, selector(x.lane, x.lane, y.lane, y.lane)), 0, 2};
    };
    const Half low = half(s[0], s[1]);
    const Half high = half(s[2], s[3]);
    if (low.node == high.node && low.first == 0 && low.second == 1 && high.first == 2 && high.second == 3)
        return low.node;
    return g_.shuffle(low.node, high.node, selector(low.first, low.second, high.first, high.second));
}

namespace {
constexpr int freeHalf = -2;  // a half whose lanes do not matter
}  // namespace

bool SplitBuilder::inHalfPlaces(const std::array<Lane, 8>& source, const std::array<bool, 8>& care) const
{
    for (std::size_t i = 0; i < 4; ++i) {
        if (!care[i] || !care[i + 4])
            continue;
        const Lane& lo = source[i];
        const Lane& hi = source[i + 4];
        if ((lo.node == Graph::none) != (hi.node == Graph::none))
            return false;
        if (lo.node != Graph::none && lo.lane % 4 != hi.lane % 4)
            return false;
    }
    return true;
}

int SplitBuilder::halves(int lo, int loHalf, int hi, int hiHalf)
{
    auto wide = [&](int id) { return g_.node(id).type == Type::V8F; };
    if (lo == freeHalf && hi == freeHalf)
        throw std::logic_error("a vector of nothing");
    if (lo == freeHalf) {
        if (!wide(hi))
            return g_.join(hi, hi);
        return hiHalf == 1 ? hi : g_.permute2(hi, hi, 0x01);
    }
    if (hi == freeHalf) {
        if (!wide(lo))
            return g_.join(lo, Graph::none);
        return loHalf == 0 ? lo : g_.permute2(lo, lo, 0x01);
    }
    if (wide(lo) && wide(hi))
        return g_.permute2(lo, hi, loHalf | ((2 + hiHalf) << 4));
    if (!wide(lo) && !wide(hi))
        return g_.join(lo, hi);
    if (!wide(lo))
        return g_.permute2(g_.join(lo, Graph::none), hi, (2 + hiHalf) << 4);
    return g_.permute2(lo, g_.join(hi, Graph::none), loHalf | (2 << 4));
}

int SplitBuilder::gatherLanes8(std::array<Lane, 8> source, std::array<bool, 8> care)
{
    bool anyCare = false, allZero = true, identity = true;
    int firstNode = Graph::none;
    for (std::size_t i = 0; i < 8; ++i) {
        if (!care[i])
            continue;
        anyCare = true;
        const Lane& s = source[i];
        allZero = allZero && s.node == Graph::none;
        if (firstNode == Graph::none)
            firstNode = s.node;
        identity = identity && s.node != Graph::none && s.node == firstNode && s.lane == static_cast<int>(i) &&
                   g_.node(s.node).type == Type::V8F;
    }
    if (!anyCare)
        throw std::logic_error("gather of nothing");
    if (allZero)
        return Graph::none;
    if (identity)
        return firstNode;
    if (!inHalfPlaces(source, care)) {
        // each half by itself, then the halves joined
        std::array<bool, 8> lowCare = care, highCare = care;
        for (std::size_t i = 0; i < 4; ++i) {
            lowCare[i + 4] = false;
            highCare[i] = false;
        }
        const int zero = g_.constant(Type::V8F, 0);
        bool anyLow = false, anyHigh = false;
        for (std::size_t i = 0; i < 4; ++i) {
            anyLow = anyLow || care[i];
            anyHigh = anyHigh || care[i + 4];
        }
        int lower = anyLow ? gatherLanes8(source, lowCare) : zero;
        int upper = anyHigh ? gatherLanes8(source, highCare) : zero;
        if (lower == Graph::none)
            lower = zero;
        if (upper == Graph::none)
            upper = zero;
        return g_.permute2(lower, upper, 0x30);
    }
    // Lanes i and i + 4 come from the same place of a half: a vector with the
    // two source halves side by side serves both, and the selections of the
    // 4-lane gather then work on both halves at once.
    std::array<Lane, 4> virtualSource{};
    std::array<bool, 4> virtualCare{};
    for (std::size_t i = 0; i < 4; ++i) {
        const bool lowCares = care[i], highCares = care[i + 4];
        if (!lowCares && !highCares)
            continue;
        virtualCare[i] = true;
        const Lane& lo = source[i];
        const Lane& hi = source[i + 4];
        const Lane& given = lowCares ? lo : hi;
        if (given.node == Graph::none) {
            virtualSource[i] = {Graph::none, static_cast<int>(i)};
            continue;
        }
        auto halfOf = [&](const Lane& l) { return g_.node(l.node).type == Type::V8F ? l.lane / 4 : -1; };
        const int node = halves(lowCares ? lo.node : freeHalf, lowCares ? halfOf(lo) : 0, highCares ? hi.node : freeHalf,
                                highCares ? halfOf(hi) : 0);
        virtualSource[i] = {node, given.lane % 4};
    }
    return gatherFour(virtualSource, virtualCare, Type::V8F);
}

namespace {
// the first N entries of a vector as an array
template <std::size_t N, class T>
std::array<T, N> firstOf(const std::vector<T>& values)
{
    std::array<T, N> out{};
    for (std::size_t i = 0; i < N; ++i)
        out[i] = values[i];
    return out;
}
}  // namespace

int SplitBuilder::gatherWidth(const std::vector<Lane>& source, const std::vector<bool>& care)
{
    if (width_ == 4)
        return gatherLanes(firstOf<4>(source), firstOf<4>(care));
    return gatherLanes8(firstOf<8>(source), firstOf<8>(care));
}

Cx SplitBuilder::gather(const std::vector<SplitRef>& values)
{
    const std::size_t w = static_cast<std::size_t>(width_);
    std::vector<Lane> re(w), im(w);
    std::vector<bool> care(w, false);
    for (std::size_t i = 0; i < values.size() && i < w; ++i) {
        re[i] = values[i].re;
        im[i] = values[i].im;
        care[i] = true;
    }
    return {gatherWidth(re, care), gatherWidth(im, care)};
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

// `width` transforms of a stage at a time, one per lane; the transforms of
// all rows of a batch side by side, row fastest.
std::vector<std::vector<SplitRef>> SplitBuilder::splitRows(const Tree& tree, const std::vector<std::vector<SplitRef>>& xs,
                                                           int sign)
{
    const int a = tree.first->size, b = tree.second->size, n = a * b;
    const int rows = static_cast<int>(xs.size());
    const bool twiddled = tree.kind == Tree::Kind::Twiddle;
    auto inputIndex = [&](int n1, int n2) { return twiddled ? b * n1 + n2 : (b * n1 + a * n2) % n; };
    auto outputIndex = [&](int k1, int k2) {
        if (twiddled)
            return k1 + a * k2;
        int k = 0;
        while (k % a != k1 || k % b != k2)
            ++k;
        return k;
    };
    auto composite = [](const Tree& t) { return t.kind == Tree::Kind::Prime || t.kind == Tree::Kind::Twiddle; };
    // A stage of only one or two composite transforms would leave lanes empty:
    // each of its transforms then fills the lanes by a split of its own.
    auto alone = [&](const Tree& t, int count) {
        return rows == 1 && count <= 2 && (composite(t) || t.kind == Tree::Kind::Rader);
    };
    // A stage of four composite transforms would fill half of eight lanes:
    // the four run as one batch through the stages of their own tree, each
    // half of a vector holding one step of all four, as the 128-bit kernel
    // holds it in one vector.
    auto batched = [&](const Tree& t, int count) { return batch_ && rows == 1 && width_ == 8 && count == 4 && composite(t); };
    // the transforms of a stage taken one at a time or as one batch
    auto transforms = [&](const Tree& t, const std::vector<std::vector<SplitRef>>& inputs, bool asBatch) {
        if (asBatch)
            return splitRows(t, inputs, sign);
        std::vector<std::vector<SplitRef>> spectra;
        for (const std::vector<SplitRef>& input : inputs)
            spectra.push_back(dft(t, input, sign));
        return spectra;
    };
    auto uniformHalves = [&](const std::vector<Constant>& twiddles) {
        std::array<bool, 2> uniform{true, true};
        for (std::size_t j = 0; j < twiddles.size(); ++j)
            uniform[j / 4] = uniform[j / 4] && twiddles[j] == twiddles[j / 4 * 4];
        return uniform;
    };

    // u[r][n2][k1]: the spectra of the first stage, twiddled
    std::vector<std::vector<std::vector<SplitRef>>> u(
        static_cast<std::size_t>(rows),
        std::vector<std::vector<SplitRef>>(static_cast<std::size_t>(b), std::vector<SplitRef>(static_cast<std::size_t>(a))));
    // each block of transforms below is one group of its stage for the 256-bit packing
    const int columns = g_.openScope();
    if (alone(*tree.first, b) || batched(*tree.first, b)) {
        std::vector<std::vector<SplitRef>> column(static_cast<std::size_t>(b), std::vector<SplitRef>(static_cast<std::size_t>(a)));
        for (int n2 = 0; n2 < b; ++n2)
            for (int n1 = 0; n1 < a; ++n1)
                column[static_cast<std::size_t>(n2)][static_cast<std::size_t>(n1)] = xs[0][static_cast<std::size_t>(inputIndex(n1, n2))];
        const std::vector<std::vector<SplitRef>> spectra = transforms(*tree.first, column, batched(*tree.first, b));
        // the twiddles of all columns at once: a vector holding several columns is multiplied once
        std::vector<SplitRef> all;
        for (const std::vector<SplitRef>& spectrum : spectra)
            all.insert(all.end(), spectrum.begin(), spectrum.end());
        if (twiddled)
            all = multiplyEach(all, a * b, [&](int i) { return exactRoot(1LL * (i / a) * (i % a), n, sign); });
        for (int n2 = 0; n2 < b; ++n2)
            for (int k1 = 0; k1 < a; ++k1)
                u[0][static_cast<std::size_t>(n2)][static_cast<std::size_t>(k1)] = all[static_cast<std::size_t>(n2 * a + k1)];
    } else {
        for (int t0 = 0; t0 < b * rows; t0 += width_) {
            const int count = std::min(width_, b * rows - t0);
            std::vector<Cx> column(static_cast<std::size_t>(a));
            for (int n1 = 0; n1 < a; ++n1) {
                std::vector<SplitRef> group;
                for (int t = t0; t < t0 + count; ++t)
                    group.push_back(xs[static_cast<std::size_t>(t % rows)][static_cast<std::size_t>(inputIndex(n1, t / rows))]);
                column[static_cast<std::size_t>(n1)] = gather(group);
            }
            g_.enterGroup(columns, t0 / width_);
            const std::vector<Cx> spectrum = uniform_.dft(*tree.first, column, sign);
            g_.leaveGroup();
            for (int k1 = 0; k1 < a; ++k1) {
                Cx v = spectrum[static_cast<std::size_t>(k1)];
                if (twiddled) {
                    std::vector<Constant> twiddles;
                    for (int t = t0; t < t0 + count; ++t)
                        twiddles.push_back(exactRoot(1LL * (t / rows) * k1, n, sign));
                    // a twiddle shared by all lanes of a group of four takes the exact shortcuts
                    const std::array<bool, 2> uniform = uniformHalves(twiddles);
                    const long long k0 = 1LL * (t0 / rows) * k1, k4 = 1LL * ((t0 + 4) / rows) * k1;
                    if (count <= 4)
                        v = uniform[0] ? uniform_.rotate(v, k0, n, sign) : multiplyLanes(v, twiddles);
                    else
                        v = twiddleHalves(v, twiddles, uniform, {k0, k4}, n, sign);
                }
                const std::vector<SplitRef> lanes = lanesOf(v, count);
                for (int t = t0; t < t0 + count; ++t)
                    u[static_cast<std::size_t>(t % rows)][static_cast<std::size_t>(t / rows)][static_cast<std::size_t>(k1)] =
                        lanes[static_cast<std::size_t>(t - t0)];
            }
        }
    }

    std::vector<std::vector<SplitRef>> out(static_cast<std::size_t>(rows), std::vector<SplitRef>(static_cast<std::size_t>(n)));
    if (alone(*tree.second, a) || batched(*tree.second, a)) {
        std::vector<std::vector<SplitRef>> row(static_cast<std::size_t>(a), std::vector<SplitRef>(static_cast<std::size_t>(b)));
        for (int k1 = 0; k1 < a; ++k1)
            for (int n2 = 0; n2 < b; ++n2)
                row[static_cast<std::size_t>(k1)][static_cast<std::size_t>(n2)] = u[0][static_cast<std::size_t>(n2)][static_cast<std::size_t>(k1)];
        const std::vector<std::vector<SplitRef>> spectra = transforms(*tree.second, row, batched(*tree.second, a));
        for (int k1 = 0; k1 < a; ++k1)
            for (int k2 = 0; k2 < b; ++k2)
                out[0][static_cast<std::size_t>(outputIndex(k1, k2))] = spectra[static_cast<std::size_t>(k1)][static_cast<std::size_t>(k2)];
        return out;
    }
    const int rowScope = g_.openScope();
    for (int t0 = 0; t0 < a * rows; t0 += width_) {
        const int count = std::min(width_, a * rows - t0);
        std::vector<Cx> row(static_cast<std::size_t>(b));
        for (int n2 = 0; n2 < b; ++n2) {
            std::vector<SplitRef> group;
            for (int t = t0; t < t0 + count; ++t)
                group.push_back(u[static_cast<std::size_t>(t % rows)][static_cast<std::size_t>(n2)][static_cast<std::size_t>(t / rows)]);
            row[static_cast<std::size_t>(n2)] = gather(group);
        }
        g_.enterGroup(rowScope, t0 / width_);
        const std::vector<Cx> v = uniform_.dft(*tree.second, row, sign);
        g_.leaveGroup();
        for (int k2 = 0; k2 < b; ++k2) {
            const std::vector<SplitRef> lanes = lanesOf(v[static_cast<std::size_t>(k2)], count);
            for (int t = t0; t < t0 + count; ++t)
                out[static_cast<std::size_t>(t % rows)][static_cast<std::size_t>(outputIndex(t / rows, k2))] =
                    lanes[static_cast<std::size_t>(t - t0)];
        }
    }
    return out;
}

}  // namespace gen
