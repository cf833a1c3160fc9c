// The lane selections of the split layout: a vector whose lanes hold given
// lanes of other vectors, by as few selections as the 128-bit (and, within
// the halves, the 256-bit) shuffles allow.
#include <algorithm>
#include <stdexcept>

#include "complex_lanes.h"

namespace gen {

namespace {
constexpr int unpackLowSelector = 256;   // (a0, b0, a1, b1)
constexpr int unpackHighSelector = 257;  // (a2, b2, a3, b3)

int selector(int a, int b, int c, int d) { return a | (b << 2) | (c << 4) | (d << 6); }
}  // namespace

int SplitBuilder::gatherLanes(std::array<Lane, 4> source, std::array<bool, 4> care, Type type)
{
    if (std::find(care.begin(), care.end(), true) == care.end())
        throw std::logic_error("gather of nothing");
    int firstNode = Graph::none;
    for (std::size_t i = 0; i < 4 && firstNode == Graph::none; ++i)
        if (care[i])
            firstNode = source[i].node;
    if (firstNode == Graph::none)
        return Graph::none;  // every lane that matters is zero
    const int zero = g_.constant(type, 0);
    for (std::size_t i = 0; i < 4; ++i) {
        Lane& s = source[i];
        if (!care[i])
            s = {firstNode, static_cast<int>(i)};  // a lane that does not matter takes its own place
        else if (s.node == Graph::none)
            s = {zero, static_cast<int>(i)};
    }
    const auto& s = source;
    if (s[0].node == s[1].node && s[1].node == s[2].node && s[2].node == s[3].node) {
        if (s[0].lane == 0 && s[1].lane == 1 && s[2].lane == 2 && s[3].lane == 3)
            return s[0].node;
        return g_.shuffle(s[0].node, s[0].node, selector(s[0].lane, s[1].lane, s[2].lane, s[3].lane));
    }
    // interleavings of two vectors
    auto interleaves = [&](int from) {
        for (std::size_t i = 0; i < 4; ++i)
            if (care[i] && (s[i].node != s[i % 2].node || s[i].lane != from + static_cast<int>(i / 2)))
                return false;
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
        if (x.lane == y.lane) {
            const int unpack = x.lane < 2 ? unpackLowSelector : unpackHighSelector;
            return {g_.shuffle(x.node, y.node, unpack), 2 * (x.lane % 2), 2 * (x.lane % 2) + 1};
        }
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
    if (std::find(care.begin(), care.end(), true) == care.end())
        throw std::logic_error("gather of nothing");
    bool identity = true;
    int firstNode = Graph::none;  // stays none where every lane that matters is zero
    for (std::size_t i = 0; i < 8; ++i) {
        const Lane& s = source[i];
        if (care[i] && firstNode == Graph::none)
            firstNode = s.node;
        identity = identity && (!care[i] || (s.node != Graph::none && s.node == firstNode &&
                                             s.lane == static_cast<int>(i) && g_.node(s.node).type == Type::V8F));
    }
    if (firstNode == Graph::none)
        return Graph::none;
    if (identity)
        return firstNode;
    if (!inHalfPlaces(source, care)) {
        // each half by itself, then the halves joined
        const int zero = g_.constant(Type::V8F, 0);
        int part[2];
        for (std::size_t h = 0; h < 2; ++h) {
            std::array<bool, 8> partCare{};
            std::copy(care.begin() + 4 * h, care.begin() + 4 * h + 4, partCare.begin() + 4 * h);
            const bool any = std::find(partCare.begin(), partCare.end(), true) != partCare.end();
            const int node = any ? gatherLanes8(source, partCare) : Graph::none;
            part[h] = node == Graph::none ? zero : node;
        }
        return g_.permute2(part[0], part[1], 0x30);
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
        if (given.node == Graph::none)
            continue;  // a zero lane, as the source is by default
        auto halfOf = [&](const Lane& l) { return g_.node(l.node).type == Type::V8F ? l.lane / 4 : -1; };
        const int node = halves(lowCares ? lo.node : freeHalf, lowCares ? halfOf(lo) : 0, highCares ? hi.node : freeHalf,
                                highCares ? halfOf(hi) : 0);
        virtualSource[i] = {node, given.lane % 4};
    }
    return gatherLanes(virtualSource, virtualCare, Type::V8F);
}

Cx SplitBuilder::gather(const std::vector<SplitRef>& values)
{
    std::array<Lane, 8> re{}, im{};
    std::array<bool, 8> care{};
    for (std::size_t i = 0; i < values.size(); ++i) {
        re[i] = values[i].re;
        im[i] = values[i].im;
        care[i] = true;
    }
    if (width_ == 8)
        return {gatherLanes8(re, care), gatherLanes8(im, care)};
    const std::array<bool, 4> four{care[0], care[1], care[2], care[3]};
    return {gatherLanes({re[0], re[1], re[2], re[3]}, four), gatherLanes({im[0], im[1], im[2], im[3]}, four)};
}

}  // namespace gen
