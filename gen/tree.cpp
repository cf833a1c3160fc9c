#include "tree.h"

#include <cctype>
#include <stdexcept>

namespace gen {

namespace {

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
    [[noreturn]] void fail(const char* what)
    {
        throw std::runtime_error(std::string("rule \"") + text_ + "\": " + what);
    }

    void skipSpace()
    {
        while (pos_ < text_.size() && std::isspace(static_cast<unsigned char>(text_[pos_])))
            ++pos_;
    }

    bool accept(const std::string& word)
    {
        skipSpace();
        if (text_.compare(pos_, word.size(), word) == 0) {
            pos_ += word.size();
            return true;
        }
        return false;
    }

    void expect(const std::string& word)
    {
        if (!accept(word))
            fail(("expected " + word).c_str());
    }

    int number()
    {
        skipSpace();
        std::size_t start = pos_;
        while (pos_ < text_.size() && std::isdigit(static_cast<unsigned char>(text_[pos_])))
            ++pos_;
        if (start == pos_)
            fail("expected a number");
        return std::stoi(text_.substr(start, pos_ - start));
    }

    TreePtr split(Tree::Kind kind)
    {
        expect("(");
        auto t = std::make_shared<Tree>();
        t->kind = kind;
        t->first = parse();
        expect(",");
        t->second = parse();
        expect(")");
        t->size = t->first->size * t->second->size;
        return t;
    }

    TreePtr parse()
    {
        if (accept("P"))
            return split(Tree::Kind::Prime);
        if (accept("T"))
            return split(Tree::Kind::Twiddle);
        if (accept("Rader") || accept("Bluestein")) {
            const bool rader = text_[pos_ - 1] == 'r';
            expect("(");
            auto t = std::make_shared<Tree>();
            t->kind = rader ? Tree::Kind::Rader : Tree::Kind::Bluestein;
            t->size = number();
            expect(";");
            t->first = parse();
            if (accept("/"))
                t->second = parse();
            else
                t->second = reversedTop(t->first);
            expect(")");
            t->chirpLength = rader ? 0 : t->first->size;
            const int inner = t->first->size;
            if (rader && inner != t->size - 1)
                fail("Rader inner length must be p-1");
            if (!rader && inner < 2 * t->size - 1)
                fail("chirp length too short");
            if (t->second->size != inner)
                fail("inverse inner tree of another length");
            return t;
        }
        const int n = number();
        auto t = std::make_shared<Tree>();
        t->size = n;
        if (accept("w")) {
            if (n != 5)
                fail("w form exists for 5 only");
            t->kind = Tree::Kind::Direct5w;
            return t;
        }
        if (accept("d")) {
            if (n != 7 && n != 11)
                fail("d form exists for 7 and 11 only");
            t->kind = Tree::Kind::OddSymmetric;
            return t;
        }
        if (accept("r"))
            return lookup_(n, true);
        if (n == 2 || n == 3 || n == 5) {
            t->kind = Tree::Kind::Direct;
            return t;
        }
        if (n == 4) {  // the 4-point butterfly is T(2,2)
            auto two = std::make_shared<Tree>();
            two->kind = Tree::Kind::Direct;
            two->size = 2;
            t->kind = Tree::Kind::Twiddle;
            t->first = two;
            t->second = two;
            return t;
        }
        return lookup_(n, false);
    }

    const std::string& text_;
    const RowLookup& lookup_;
    std::size_t pos_ = 0;
};

}  // namespace

TreePtr parseTree(const std::string& text, const RowLookup& lookup)
{
    return Parser(text, lookup).parseAll();
}

TreePtr reversedTop(const TreePtr& tree)
{
    if (tree->kind != Tree::Kind::Prime && tree->kind != Tree::Kind::Twiddle)
        return tree;
    auto t = std::make_shared<Tree>(*tree);
    std::swap(t->first, t->second);
    return t;
}

std::string Tree::text() const
{
    switch (kind) {
    case Kind::Direct: return std::to_string(size);
    case Kind::Direct5w: return "5w";
    case Kind::OddSymmetric: return std::to_string(size) + "d";
    case Kind::Prime: return "P(" + first->text() + "," + second->text() + ")";
    case Kind::Twiddle: return "T(" + first->text() + "," + second->text() + ")";
    case Kind::Rader: return "Rader(" + std::to_string(size) + "; " + first->text() + ")";
    case Kind::Bluestein: return "Bluestein(" + std::to_string(size) + "; " + std::to_string(chirpLength) + ")";
    }
    return "?";
}

}  // namespace gen
