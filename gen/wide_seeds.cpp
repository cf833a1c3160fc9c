// The seeds of the 256-bit packing: pairs asked for before the graph is
// walked, which the walk makes as soon as both halves can be computed.  They
// come from neighbouring outputs, from the outputs whose computations share
// the most shape, or from the same steps of neighbouring parallel transforms
// (the groups the builders mark), and reach down through the operands as far
// as the two computations have the same shape.  A pair is asked for only where
// neither half needs the other and no node uses both.
#include <algorithm>

#include "wide_packer.h"

namespace gen::wide {

void Packer::seed(const std::vector<VectorStore>& stores, const std::vector<bool>& live)
{
    if (options_.seeds == PackOptions::Neighbours) {
        // full stores to neighbouring places, two by two
        for (std::size_t i = 0; i + 1 < stores.size(); ++i)
            if (neighbours(stores[i], stores[i + 1])) {
                seedFromOutputs(stores[i].node, stores[i + 1].node, true);
                ++i;
            }
    }
    if (options_.seeds == PackOptions::Groups || options_.seeds == PackOptions::AlignedGroups)
        seedFromGroups(live, options_.seeds == PackOptions::AlignedGroups);
    if (options_.seeds == PackOptions::Shapes)
        seedFromShapes(stores);
}

// outputs paired by the size of the computation they share in shape,
// neighbours first among equals
void Packer::seedFromShapes(const std::vector<VectorStore>& stores)
{
    std::vector<std::pair<int, std::pair<std::size_t, std::size_t>>> candidates;
    for (std::size_t i = 0; i < stores.size(); ++i)
        for (std::size_t j = i + 1; j < stores.size(); ++j)
            if (stores[i].full && stores[j].full) {
                const int size = seedFromOutputs(stores[i].node, stores[j].node, false);
                if (size > 0)
                    candidates.push_back({-size, {i, j}});
            }
    std::sort(candidates.begin(), candidates.end());  // largest first; among equals by (i, j)
    std::vector<bool> used(stores.size(), false);
    for (const auto& candidate : candidates) {
        const auto [i, j] = candidate.second;
        if (!used[i] && !used[j] && seedFromOutputs(stores[i].node, stores[j].node, true) > 0)
            used[i] = used[j] = true;
    }
}

// Whether x and y may be asked for as a pair: two operations that pair, not
// asked for yet, that no node uses together and (`checkOrder`) of which
// neither needs the other.
bool Packer::seedable(int x, int y, bool checkOrder) const
{
    if (x < 0 || y < 0 || isLeaf(node(x)) || isLeaf(node(y)) || isWanted(x) || isWanted(y) ||
        !pairable(x, y))
        return false;
    // a node's operands come before it
    return !checkOrder || !g_.liveSet({std::max(x, y)})[static_cast<std::size_t>(std::min(x, y))];
}

// Two outputs want to be computed side by side; so do the operands of two
// paired nodes, as far down as the two computations have the same shape.
// Returns the number of pairs; `commit` false only counts them.
int Packer::seedFromOutputs(int lo, int hi, bool commit)
{
    std::vector<std::pair<int, int>> stack{{lo, hi}};
    std::vector<int> claimed;
    int pairs = 0;
    while (!stack.empty()) {
        const auto [x, y] = stack.back();
        stack.pop_back();
        if (!seedable(x, y, commit) || std::count(claimed.begin(), claimed.end(), x) ||
            std::count(claimed.begin(), claimed.end(), y))
            continue;
        ++pairs;
        if (commit)
            at(x).wanted = at(y).wanted = {x, y};
        else
            claimed.insert(claimed.end(), {x, y});
        const Node& a = node(x);
        const Node& b = node(y);
        stack.push_back({a.a, b.a});
        if (a.b != a.a)
            stack.push_back({a.b, b.b});
    }
    return pairs;
}

// The transforms of a stage are the same computation on other data: the
// k-th node made for transform 2j pairs with the k-th node made for
// transform 2j + 1 (the lower half takes the even transform, so that
// neighbouring samples meet in the loads and stores).  Outer stages first;
// inner transforms pair what the outer ones leave.
void Packer::seedFromGroups(const std::vector<bool>& live, bool align)
{
    std::map<std::pair<int, int>, std::vector<int>> members;
    std::map<int, int> depthOf;
    for (int id = 0; id < g_.size(); ++id) {
        if (!live[static_cast<std::size_t>(id)] || isLeaf(node(id)))
            continue;
        const auto& groups = g_.groupsOf(id);
        for (std::size_t d = 0; d < groups.size(); ++d) {
            members[groups[d]].push_back(id);
            depthOf.emplace(groups[d].first, static_cast<int>(d));
        }
    }
    std::vector<std::pair<int, int>> scopes;  // (depth, scope)
    for (const auto& [scope, depth] : depthOf)
        scopes.push_back({depth, scope});
    std::sort(scopes.begin(), scopes.end());
    for (const auto& [depth, scope] : scopes) {
        for (int group = 0;; group += 2) {
            const auto lower = members.find({scope, group});
            const auto upper = members.find({scope, group + 1});
            if (lower == members.end() && upper == members.end() && !members.count({scope, group + 2}))
                break;
            if (lower == members.end() || upper == members.end())
                continue;
            const std::vector<int>& l = lower->second;
            const std::vector<int>& u = upper->second;
            if (align) {
                seedAligned(l, u);
                continue;
            }
            for (std::size_t k = 0; k < std::min(l.size(), u.size()); ++k)
                if (seedable(l[k], u[k], true))
                    at(l[k]).wanted = at(u[k]).wanted = {l[k], u[k]};
        }
    }
}

// The steps of two transforms lined up by the longest common sequence of
// operations: a step that one of them has and the other not (a twiddle of one
// lane, a part that is zero) does not shift the pairs after it.
void Packer::seedAligned(const std::vector<int>& l, const std::vector<int>& u)
{
    const std::size_t rows = l.size() + 1, cols = u.size() + 1;
    std::vector<int> common(rows * cols, 0);
    for (std::size_t i = l.size(); i-- > 0;)
        for (std::size_t j = u.size(); j-- > 0;)
            common[i * cols + j] = compatible(l[i], u[j]) ? common[(i + 1) * cols + j + 1] + 1
                                                           : std::max(common[(i + 1) * cols + j], common[i * cols + j + 1]);
    for (std::size_t i = 0, j = 0; i < l.size() && j < u.size();) {
        if (compatible(l[i], u[j]) && common[i * cols + j] == common[(i + 1) * cols + j + 1] + 1) {
            if (seedable(l[i], u[j], true))
                at(l[i]).wanted = at(u[j]).wanted = {l[i], u[j]};
            ++i;
            ++j;
        } else if (common[(i + 1) * cols + j] >= common[i * cols + j + 1]) {
            ++i;
        } else {
            ++j;
        }
    }
}

}  // namespace gen::wide
