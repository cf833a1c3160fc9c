// The 256-bit packing pass: the run of its steps for one set of options and
// the names of the options in the table of forms.  Seeds, pairing and the nodes
// of the packed graph are steps of their own (see wide_packer.h).
#include "wide_pairs.h"

#include <stdexcept>
#include <utility>

#include "wide_packer.h"

namespace gen {

namespace wide {

Type wideType(Type t)
{
    if (t == Type::V2D)
        return Type::V4D;
    if (t == Type::V4F)
        return Type::V8F;
    throw std::logic_error("no 256-bit form of a scalar");
}

bool onShuffleUnit(const Node& n)
{
    return n.op == Op::Swap || n.op == Op::SwapNeg || n.op == Op::Shuffle || n.op == Op::Join ||
           n.op == Op::Extract || n.op == Op::Permute2 ||
           (n.op == Op::Input && n.index2 >= 0 && n.index2 != n.index + 1);
}

void Packer::findUsers(const std::vector<bool>& live)
{
    waiting_.assign(static_cast<std::size_t>(g_.size()), 0);
    for (int id = 0; id < g_.size(); ++id) {
        if (!live[static_cast<std::size_t>(id)])
            continue;
        const Node& n = node(id);
        if (n.op == Op::Input) {
            const int s = span_(n);
            if (s >= 0)
                inputAt_[s] = id;
        }
        if (isLeaf(n))
            continue;
        for (int operand : {n.a, n.b == n.a ? -1 : n.b})
            if (operand >= 0 && !isLeaf(node(operand))) {
                ++waiting_[static_cast<std::size_t>(id)];
                users_[static_cast<std::size_t>(operand)].push_back(id);
            }
        if (waiting_[static_cast<std::size_t>(id)] == 0)
            ready_.push_back(id);
    }
    for (int id = 0; id < g_.size(); ++id) {
        if (!live[static_cast<std::size_t>(id)] || isLeaf(node(id)))
            continue;
        for (int operand : {node(id).a, node(id).b})
            if (operand >= 0 && node(operand).op == Op::Input)
                inputUsers_[operand].push_back(id);
    }
}

PackedKernel Packer::run(const std::vector<VectorStore>& stores)
{
    std::vector<int> roots;
    for (const VectorStore& s : stores)
        roots.push_back(s.node);
    const std::vector<bool> live = g_.liveSet(roots);
    findUsers(live);
    seed(stores, live);
    pairAll();
    placeStores(stores);
    return std::move(out_);
}

}  // namespace wide

using wide::Options;

PackedKernel packWide(const Graph& narrow, const std::vector<VectorStore>& stores, const InputSpan& span,
                      const PackOptions& options)
{
    wide::Packer packer(narrow, span, options);
    return packer.run(stores);
}

const char* seedsName(PackOptions::Seeds seeds)
{
    static const char* const names[] = {"none", "neighbours", "shapes", "groups", "aligned-groups"};
    return names[seeds];
}

const char* movesName(const PackOptions& options)
{
    return options.lookahead ? "lookahead" : options.crossMoves ? "across" : "none";
}

bool parsePackOptions(const std::string& seeds, const std::string& moves, PackOptions& options)
{
    options = PackOptions{};
    bool known = false;
    for (int s = PackOptions::None; s <= PackOptions::AlignedGroups; ++s)
        if (seeds == seedsName(static_cast<PackOptions::Seeds>(s))) {
            options.seeds = static_cast<PackOptions::Seeds>(s);
            known = true;
        }
    options.crossMoves = moves == "across" || moves == "lookahead";
    options.lookahead = moves == "lookahead";
    return known && (options.crossMoves || moves == "none");
}

}  // namespace gen
