#include "tree.h"

#include <utility>

#include "text_scanner.h"

namespace gen {

namespace {

TreePtr make(Tree::Kind kind, int size, const TreePtr& first = nullptr, const TreePtr& second = nullptr,
             int chirpLength = 0)
{
    return std::make_shared<const Tree>(Tree{kind, size, first, second, chirpLength});
}

// The tree with its top-level factors in the opposite order.
TreePtr reversedTop(const TreePtr& tree)
{
    if (tree->kind != Tree::Kind::Prime && tree->kind != Tree::Kind::Twiddle)
        return tree;
    Tree reversed = *tree;
    std::swap(reversed.first, reversed.second);
    return std::make_shared<const Tree>(reversed);
}

struct Parser : TextScanner {
    const RowLookup& lookup;

    TreePtr parse()
    {
        if (accept("P") || accept("T")) {
            const Tree::Kind kind = text[pos - 1] == 'P' ? Tree::Kind::Prime : Tree::Kind::Twiddle;
            expect("(");
            const TreePtr first = parse();
            expect(",");
            const TreePtr second = parse();
            expect(")");
            return make(kind, first->size * second->size, first, second);
        }
        if (accept("Rader") || accept("Bluestein")) {
            const bool rader = text[pos - 1] == 'r';
            expect("(");
            const int size = static_cast<int>(integer());
            expect(";");
            const TreePtr first = parse();
            const TreePtr second = accept("/") ? parse() : reversedTop(first);
            expect(")");
            const int inner = first->size;
            if (rader && inner != size - 1)
                fail("Rader inner length must be p-1");
            if (!rader && inner < 2 * size - 1)
                fail("chirp length too short");
            if (second->size != inner)
                fail("inverse inner tree of another length");
            return make(rader ? Tree::Kind::Rader : Tree::Kind::Bluestein, size, first, second, rader ? 0 : inner);
        }
        const int n = static_cast<int>(integer());
        if (accept("w") || accept("d")) {
            const bool w = text[pos - 1] == 'w';
            if (w ? n != 5 : n != 7 && n != 11)
                fail(w ? "w form exists for 5 only" : "d form exists for 7 and 11 only");
            return make(w ? Tree::Kind::Direct5w : Tree::Kind::OddSymmetric, n);
        }
        if (accept("r"))
            return lookup(n, true);
        if (n == 2 || n == 3 || n == 5)
            return make(Tree::Kind::Direct, n);
        if (n == 4) {  // the 4-point butterfly is T(2,2)
            const TreePtr two = make(Tree::Kind::Direct, 2);
            return make(Tree::Kind::Twiddle, 4, two, two);
        }
        return lookup(n, false);
    }
};

}  // namespace

TreePtr parseTree(const std::string& text, const RowLookup& lookup)
{
    Parser parser{{text, "rule \"" + text + "\""}, lookup};
    const TreePtr tree = parser.parse();
    parser.skipSpace();
    if (parser.pos != text.size())
        parser.fail("trailing text");
    return tree;
}

}  // namespace gen
