#include "tree.h"

#include <cctype>
#include <stdexcept>

namespace gen {

namespace {

TreePtr make(const Tree& tree) { return std::make_shared<const Tree>(tree); }

TreePtr make(Tree::Kind kind, int size, const TreePtr& first = nullptr, const TreePtr& second = nullptr)
{
    return make(Tree{kind, size, first, second});
}

// The tree with its top-level factors in the opposite order.
TreePtr reversedTop(const TreePtr& tree)
{
    if (tree->kind != Tree::Kind::Prime && tree->kind != Tree::Kind::Twiddle)
        return tree;
    return make(Tree{tree->kind, tree->size, tree->second, tree->first, tree->chirpLength, tree->table});
}

class Parser {
public:
    Parser(const std::string& text, const RowLookup& lookup) : text_(text), lookup_(lookup) {}

    TreePtr parseAll()
    {
        TreePtr t = parse();
        skipSpace();
        if (pos_ != text_.size())
            fail("trailing text");
        return t;
    }

private:
    [[noreturn]] void fail(const std::string& what)
    {
        throw std::runtime_error("rule \"" + text_ + "\": " + what);
    }

    void skipSpace()
    {
        while (pos_ < text_.size() && std::isspace(static_cast<unsigned char>(text_[pos_])))
            ++pos_;
    }

    bool accept(const std::string& word)
    {
        skipSpace();
        if (text_.compare(pos_, word.size(), word) != 0)
            return false;
        pos_ += word.size();
        return true;
    }

    void expect(const std::string& word)
    {
        if (!accept(word))
            fail("expected " + word);
    }

    int number()
    {
        skipSpace();
        const std::size_t start = pos_;
        while (pos_ < text_.size() && std::isdigit(static_cast<unsigned char>(text_[pos_])))
            ++pos_;
        if (start == pos_)
            fail("expected a number");
        return std::stoi(text_.substr(start, pos_ - start));
    }

    TreePtr parse()
    {
        if (accept("P") || accept("T")) {
            const Tree::Kind kind = text_[pos_ - 1] == 'P' ? Tree::Kind::Prime : Tree::Kind::Twiddle;
            expect("(");
            const TreePtr first = parse();
            expect(",");
            const TreePtr second = parse();
            expect(")");
            return make(kind, first->size * second->size, first, second);
        }
        if (accept("Rader") || accept("Bluestein")) {
            const bool rader = text_[pos_ - 1] == 'r';
            expect("(");
            const int size = number();
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
            const Tree::Kind kind = rader ? Tree::Kind::Rader : Tree::Kind::Bluestein;
            return make(Tree{kind, size, first, second, rader ? 0 : inner});
        }
        const int n = number();
        if (accept("w")) {
            if (n != 5)
                fail("w form exists for 5 only");
            return make(Tree::Kind::Direct5w, n);
        }
        if (accept("d")) {
            if (n != 7 && n != 11)
                fail("d form exists for 7 and 11 only");
            return make(Tree::Kind::OddSymmetric, n);
        }
        if (accept("r"))
            return lookup_(n, true);
        if (n == 2 || n == 3 || n == 5)
            return make(Tree::Kind::Direct, n);
        if (n == 4) {  // the 4-point butterfly is T(2,2)
            const TreePtr two = make(Tree::Kind::Direct, 2);
            return make(Tree::Kind::Twiddle, 4, two, two);
        }
        return lookup_(n, false);
    }

    const std::string& text_;
    const RowLookup& lookup_;
    std::size_t pos_ = 0;
};

}  // namespace

TreePtr parseTree(const std::string& text, const RowLookup& lookup) { return Parser(text, lookup).parseAll(); }

}  // namespace gen
