// A cursor over a text the generator reads back: a rule of a rule table, or
// a kernel body it printed.  Spaces between tokens are skipped; what cannot be
// read stops the generator with the reader's own words and the text at hand.
#ifndef KVTGEN_TEXT_SCANNER_H
#define KVTGEN_TEXT_SCANNER_H

#include <cctype>
#include <cstdlib>
#include <stdexcept>
#include <string>

namespace gen {

struct TextScanner {
    const std::string& text;
    std::string reader;  // what a failure says first: what is being read
    std::size_t pos = 0;

    [[noreturn]] void fail(const std::string& what) const
    {
        throw std::runtime_error(reader + ": " + what + " at: " + text.substr(pos, 60));
    }
    void skipSpace()
    {
        while (pos < text.size() && std::isspace(static_cast<unsigned char>(text[pos])))
            ++pos;
    }
    bool accept(const std::string& token)
    {
        skipSpace();
        if (text.compare(pos, token.size(), token) != 0)
            return false;
        pos += token.size();
        return true;
    }
    void expect(const std::string& token)
    {
        if (!accept(token))
            fail("expected " + token);
    }
    // a name of letters, digits, '_' and ':' (qualified names whole)
    std::string name()
    {
        skipSpace();
        const std::size_t start = pos;
        while (pos < text.size() && (std::isalnum(static_cast<unsigned char>(text[pos])) || text[pos] == '_' ||
                                     text[pos] == ':'))
            ++pos;
        if (start == pos)
            fail("expected a name");
        return text.substr(start, pos - start);
    }
    long integer()
    {
        skipSpace();
        char* end = nullptr;
        const long value = std::strtol(text.c_str() + pos, &end, 10);
        if (end == text.c_str() + pos)
            fail("expected an integer");
        pos = static_cast<std::size_t>(end - text.c_str());
        return value;
    }
};

}  // namespace gen

#endif
