// Factorisation trees: the parsed form of one rule of a rule table.
//
// Text form:   leaf      2 3 4 5 | 5w | 7d | 11d | <n> (the row of n) | <p>r (the Rader row of p)
//              split     P(a,b) | T(a,b)
//              prime     Rader(p; tree) | Rader(p; tree / inverse-tree)
//              chirp     Bluestein(p; tree / inverse-tree)
#ifndef KVTGEN_TREE_H
#define KVTGEN_TREE_H

#include <functional>
#include <memory>
#include <string>

namespace gen {

struct Tree {
    enum class Kind { Direct, Direct5w, OddSymmetric, Prime, Twiddle, Rader, Bluestein };
    Kind kind = Kind::Direct;
    int size = 0;  // N of this node
    std::shared_ptr<const Tree> first;   // a-point stage of a split; forward inner tree
    std::shared_ptr<const Tree> second;  // b-point stage of a split; inverse inner tree
    int chirpLength = 0;                 // Bluestein's zero-padded length
    int table = 0;                       // rule table a row came from (families with several)
};

using TreePtr = std::shared_ptr<const Tree>;

// Resolves a bare size written inside a rule (a factor with a row of its own).
using RowLookup = std::function<TreePtr(int size, bool raderRow)>;

// Parses the text form of a tree.  Leaves 2..5, 5w, 7d, 11d are direct; a bare
// number above 5 or a number with "r" is resolved through `lookup`.
// A prime or chirp rule without an inverse inner tree takes its forward one
// with the top-level factors in the opposite order.
TreePtr parseTree(const std::string& text, const RowLookup& lookup);

}  // namespace gen

#endif
