#include "body_eval.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <stdexcept>
#include <unordered_map>

#include "body_lanes.h"

namespace gen {

namespace {

// The lanes of the vector types that a declaration names.
int lanesOf(const std::string& type)
{
    if (type == "kv::fwide")
        return 8;
    if (type == "kv::fvec" || type == "kv::dwide")
        return 4;
    if (type == "kv::dvec")
        return 2;
    return type == "float" || type == "double" ? 1 : 0;
}

bool doubleType(const std::string& type)
{
    return type == "kv::dwide" || type == "kv::dvec" || type == "double" || type == "D";
}

double inPrecision(bool isDouble, double a) { return isDouble ? a : static_cast<double>(static_cast<float>(a)); }

// One IEEE operation, rounded once in the precision of its type.
double arithmetic(char op, bool isDouble, double a, double b)
{
    if (!isDouble) {
        const float x = static_cast<float>(a), y = static_cast<float>(b);
        volatile float r = op == '+' ? x + y : op == '-' ? x - y : x * y;
        return r;
    }
    volatile double r = op == '+' ? a + b : op == '-' ? a - b : a * b;
    return r;
}

class Interpreter {
public:
    Interpreter(const std::string& text, const std::vector<double>& x, double factor, bool single, int stride)
        : text_(text), x_(x), factor_(factor), single_(single), stride_(stride)
    {
    }

    std::map<int, double> run()
    {
        while (skipSpace(), pos_ < text_.size())
            statement();
        return stored_;
    }

private:
    [[noreturn]] void fail(const std::string& what) const
    {
        throw std::runtime_error("the verifier cannot read a body (" + what + ") at: " + text_.substr(pos_, 60));
    }
    void skipSpace()
    {
        while (pos_ < text_.size() && std::isspace(static_cast<unsigned char>(text_[pos_])))
            ++pos_;
    }
    bool accept(const std::string& token)
    {
        skipSpace();
        if (text_.compare(pos_, token.size(), token) != 0)
            return false;
        pos_ += token.size();
        return true;
    }
    void expect(const std::string& token)
    {
        if (!accept(token))
            fail("expected " + token);
    }
    std::string name()
    {
        skipSpace();
        const std::size_t start = pos_;
        while (pos_ < text_.size() && (std::isalnum(static_cast<unsigned char>(text_[pos_])) || text_[pos_] == '_' ||
                                        text_[pos_] == ':'))
            ++pos_;
        if (start == pos_)
            fail("expected a name");
        return text_.substr(start, pos_ - start);
    }
    long integer()
    {
        skipSpace();
        char* end = nullptr;
        const long value = std::strtol(text_.c_str() + pos_, &end, 10);
        if (end == text_.c_str() + pos_)
            fail("expected an integer");
        pos_ = static_cast<std::size_t>(end - text_.c_str());
        return value;
    }
    // `x + k` or `y + k`: the index k into the named array, a sum of
    // numbers and multiples of the stride
    long place(const char* array)
    {
        expect(array);
        expect("+");
        long index = 0;
        do {
            long term = integer();
            if (accept("*")) {
                expect("stride");
                term *= stride_;
            }
            index += term;
        } while (accept("+"));
        return index;
    }
    // the lanes of a type a declaration or a template argument names; F and D,
    // a batch's vectors, hold one transform per lane
    int typeLanes(const std::string& type) const { return type == "F" || type == "D" ? stride_ : lanesOf(type); }
    Value load(long index, int lanes, bool isDouble) const
    {
        Value value;
        value.lanes = lanes;
        value.isDouble = isDouble;
        for (int i = 0; i < lanes; ++i)
            value.v[i] = index + i < static_cast<long>(x_.size()) ? x_[static_cast<std::size_t>(index + i)] : 0;
        return value;
    }

    void statement();
    void store(const std::string& function);
    void laneMove(const std::string& move);
    Value expression();
    Value sum();
    Value product();
    Value unary();
    Value primary();
    Value call(const std::string& function);
    std::vector<Value> arguments();
    Value made(const std::string& function, const std::string& type, const std::vector<Value>& a) const;
    Value binary(char op, const Value& a, const Value& b) const;
    Value convert(bool toDouble, const Value& a) const;

    const std::string& text_;
    const std::vector<double>& x_;
    double factor_;
    bool single_;
    int stride_;
    int declared_ = 1;  // the lanes of the type of the declaration being read
    std::size_t pos_ = 0;
    std::unordered_map<std::string, Value> names_;
    std::map<int, double> stored_;
};

void Interpreter::statement()
{
    if (accept("{") || accept("}"))
        return;  // a block: its names are told apart by the order of the text
    const bool constant = accept("const");
    std::string word = name();
    if (const int lanes = typeLanes(word)) {
        declared_ = lanes;  // a declaration: the value carries its own type
        word = name();
    } else if (constant) {
        fail("a declaration of the type " + word);
    }
    if (word == "y" && accept(".put")) {
        // a batch's store: element k of every transform, one per lane
        expect("(");
        const long index = integer();
        expect(",");
        const Value v = expression();
        expect(")");
        for (int l = 0; l < stride_; ++l)
            stored_[static_cast<int>(index * stride_ + l)] = v.v[l];
    } else if (word == "y") {
        expect("[");
        const int index = static_cast<int>(integer());
        expect("]");
        expect("=");
        stored_[index] = expression().v[0];
    } else if (word == "kv::store" || endsWith(word, "::storeVector")) {
        store(word);
    } else if (word == "transposeBlock" || word == "splitEvenOdd" || word == "exchangeHalves") {
        laneMove(word);
    } else {
        for (;;) {  // one name or more: `v = a;`, `const T p = a, q = b;`
            expect("=");
            names_[word] = expression();
            if (!accept(","))
                break;
            word = name();
        }
    }
    expect(";");
}

void Interpreter::store(const std::string& function)
{
    expect("(");
    const long index = place("y");
    expect(",");
    const Value v = expression();
    expect(")");
    if (v.lanes == 1)
        fail("a scalar stored by " + function);
    for (int i = 0; i < v.lanes; ++i)
        stored_[static_cast<int>(index) + i] = v.v[i];
}

// The lane moves of src/wht/lane_moves.h on the named vectors.
void Interpreter::laneMove(const std::string& move)
{
    std::vector<Value*> v;
    expect("(");
    do {
        const auto found = names_.find(name());
        if (found == names_.end())
            fail("an unknown operand of " + move);
        v.push_back(&found->second);
    } while (accept(","));
    expect(")");
    if (!moveLanes(move, v))
        fail("a lane move " + move + " of " + std::to_string(v.size()) + " vectors");
}

Value Interpreter::expression()
{
    const Value condition = sum();
    if (!accept("?"))
        return condition;
    // the only condition printed is Scaled, which is true here
    const Value chosen = expression();
    expect(":");
    expression();
    return chosen;
}

Value Interpreter::sum()
{
    Value value = product();
    for (;;) {
        if (accept("+"))
            value = binary('+', value, product());
        else if (accept("-"))
            value = binary('-', value, product());
        else
            return value;
    }
}

Value Interpreter::product()
{
    Value value = unary();
    while (accept("*"))
        value = binary('*', value, unary());
    return value;
}

Value Interpreter::unary()
{
    if (!accept("-"))
        return primary();
    Value value = unary();
    for (int i = 0; i < value.lanes; ++i)
        value.v[i] = -value.v[i];
    return value;
}

Value Interpreter::primary()
{
    skipSpace();
    if (accept("(")) {
        const Value value = expression();
        expect(")");
        return value;
    }
    if (std::isdigit(static_cast<unsigned char>(text_[pos_])) || text_[pos_] == '.') {
        char* end = nullptr;
        Value value;
        value.v[0] = std::strtod(text_.c_str() + pos_, &end);
        pos_ = static_cast<std::size_t>(end - text_.c_str());
        value.isDouble = !accept("f");
        value.v[0] = inPrecision(value.isDouble, value.v[0]);
        return value;
    }
    if (accept("static_cast<")) {
        const bool toDouble = name() == "double";
        expect(">");
        expect("(");
        const Value value = convert(toDouble, expression());
        expect(")");
        return value;
    }
    const std::string word = name();
    if (endsWith(word, "::loadVector")) {
        // kv::AlignedAccess and kv::UnalignedAccess move 16 bytes, the
        // other classes a vector of the declared type
        expect("(");
        const long index = place("x");
        expect(")");
        const bool sixteenBytes = word.rfind("kv::", 0) == 0;
        return load(index, sixteenBytes ? (single_ ? 4 : 2) : declared_, !single_);
    }
    if (word.rfind("kv::", 0) == 0)
        return call(word);
    Value value;
    if (word == "x" && accept(".get")) {
        // a batch's load: element j of every transform, the transforms'
        // samples interleaved in x
        expect("(");
        const long index = integer();
        expect(")");
        return load(index * stride_, stride_, !single_);
    }
    if (word == "x") {
        expect("[");
        const long index = integer();
        expect("]");
        value.isDouble = !single_;
        value.v[0] = index >= 0 && static_cast<std::size_t>(index) < x_.size() ? x_[static_cast<std::size_t>(index)] : 0;
        return value;
    }
    if (word == "c" || word == "s") {
        value.isDouble = !single_;
        value.v[0] = inPrecision(value.isDouble, factor_);
        return value;
    }
    if (word == "Scaled")
        return value;
    const auto found = names_.find(word);
    if (found == names_.end())
        fail("an unknown name " + word);
    return found->second;
}

std::vector<Value> Interpreter::arguments()
{
    std::vector<Value> values;
    expect("(");
    if (accept(")"))
        return values;
    do
        values.push_back(expression());
    while (accept(","));
    expect(")");
    return values;
}

Value Interpreter::call(const std::string& function)
{
    // the template argument: a selector or mask, or the vector type
    long immediate = -1;
    std::string type;
    if (accept("<")) {
        if (std::isdigit(static_cast<unsigned char>(text_[pos_])))
            immediate = integer();
        else
            type = name();
        expect(">");
    }
    if (function == "kv::load") {
        expect("(");
        const long index = place("x");
        expect(")");
        return load(index, typeLanes(type), doubleType(type));
    }
    const std::vector<Value> a = arguments();
    Value out;
    out.lanes = 4;
    auto arity = [&](std::size_t count) {
        if (a.size() != count)
            fail(function + " with " + std::to_string(a.size()) + " operands");
    };
    if (function == "kv::add" || function == "kv::sub" || function == "kv::mul") {
        arity(2);
        return binary(function == "kv::add" ? '+' : function == "kv::sub" ? '-' : '*', a[0], a[1]);
    }
    if (function == "kv::lane") {
        arity(1);
        out = a[0];
        out.lanes = 1;
        out.v[0] = a[0].v[immediate & 3];
        return out;
    }
    if (function == "kv::permute" || function == "kv::blend") {
        arity(function == "kv::blend" ? 2 : 1);
        out.isDouble = a[0].isDouble;
        for (int i = 0; i < 4; ++i)
            out.v[i] = function == "kv::blend" ? a[(immediate >> i) & 1].v[i] : a[0].v[(immediate >> (2 * i)) & 3];
        return out;
    }
    if (function == "kv::neg") {
        arity(1);
        out = a[0];
        for (int i = 0; i < out.lanes; ++i)
            out.v[i] = -out.v[i];
        return out;
    }
    if (function == "kv::lowHalf" || function == "kv::highHalf") {
        arity(1);
        out = a[0];
        if (out.lanes == 1)
            return out;  // a number that every lane holds
        out.lanes = a[0].lanes / 2;
        for (int i = 0; i < out.lanes && function == "kv::highHalf"; ++i)
            out.v[i] = a[0].v[out.lanes + i];
        return out;
    }
    if (function == "kv::join") {
        arity(2);
        out = a[0];
        out.lanes = 2 * a[0].lanes;
        for (int i = 0; i < a[0].lanes; ++i)
            out.v[a[0].lanes + i] = a[1].v[i];
        return out;
    }
    if (function == "kv::joinLow" || function == "kv::joinHigh" || function == "kv::unpackLow" ||
        function == "kv::unpackHigh") {
        arity(2);
        return laneSelection(function, a[0], a[1]);
    }
    if (function == "kv::toDouble" || function == "kv::toFloat" || function == "kv::convert") {
        arity(1);
        return convert(function == "kv::toDouble" || (function == "kv::convert" && doubleType(type)), a[0]);
    }
    return made(function, type, a);
}

// A vector of the type named, from lanes (set), one number (broadcast) or
// none (zero).
Value Interpreter::made(const std::string& function, const std::string& type, const std::vector<Value>& a) const
{
    Value out;
    out.lanes = typeLanes(type) > 1 ? typeLanes(type) : 4;
    out.isDouble = doubleType(type);
    const std::size_t operands = function == "kv::set" ? 4 : function == "kv::broadcast" ? 1 : 0;
    if ((operands == 0 && function != "kv::zero") || a.size() != operands)
        fail("an unknown function " + function + " of " + std::to_string(a.size()) + " operands");
    for (int i = 0; i < out.lanes && operands > 0; ++i)
        out.v[i] = inPrecision(out.isDouble, a[operands == 4 ? static_cast<std::size_t>(i) : 0].v[0]);
    return out;
}

Value Interpreter::binary(char op, const Value& a, const Value& b) const
{
    Value out;
    out.isDouble = a.isDouble || b.isDouble;
    // a constant broadcast to the type's lanes may meet a value of half as
    // many (the halves of a batch's Real64 values)
    out.lanes = a.lanes == 1 ? 1 : b.lanes == 1 ? a.lanes : std::min(a.lanes, b.lanes);
    for (int i = 0; i < out.lanes; ++i)
        out.v[i] = arithmetic(op, out.isDouble, a.v[i], b.lanes == 1 ? b.v[0] : b.v[i]);
    return out;
}

Value Interpreter::convert(bool toDouble, const Value& a) const
{
    Value out = a;
    out.isDouble = toDouble;
    for (int i = 0; i < a.lanes; ++i)
        out.v[i] = inPrecision(toDouble, a.v[i]);
    return out;
}

}  // namespace

std::map<int, double> runBody(const std::string& text, const std::vector<double>& x, double factor, bool single,
                              int stride)
{
    return Interpreter(text, x, factor, single, stride).run();
}

}  // namespace gen
