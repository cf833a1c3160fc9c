#include "body_eval.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <stdexcept>
#include <unordered_map>

#include "graph_eval.h"

namespace gen {

namespace {

// A scalar (one lane) or a vector of up to eight lanes, of floats or doubles.
struct Value {
    bool isDouble = false;
    int lanes = 1;
    double v[8] = {0, 0, 0, 0, 0, 0, 0, 0};
};

bool endsWith(const std::string& word, const std::string& end)
{
    return word.size() >= end.size() && word.compare(word.size() - end.size(), end.size(), end) == 0;
}

// unpackLow, unpackHigh: the lower (upper) lanes of each 16 bytes of a and b, interleaved.
Value unpack(bool high, const Value& a, const Value& b)
{
    Value out = a;
    const int block = a.isDouble ? 2 : 4, from = high ? block / 2 : 0;
    for (int start = 0; start < a.lanes; start += block)
        for (int i = 0; i < block / 2; ++i) {
            out.v[start + 2 * i] = a.v[start + from + i];
            out.v[start + 2 * i + 1] = b.v[start + from + i];
        }
    return out;
}

// The lane moves of src/wht/lane_moves.h on the vectors named:
// transposeBlock (four vectors of four lanes: rows become columns),
// exchangeHalves (a takes the lower halves of a and b, b the upper ones) and
// splitEvenOdd (within each 16 bytes, a takes the even lanes of a and b, b
// the odd ones); false for another move or count.
bool moveLanes(const std::string& move, const std::vector<Value*>& v)
{
    Value& a = *v[0];
    const Value was = a;
    const int lanes = a.lanes, half = lanes / 2, quarter = a.isDouble ? 1 : 2;  // quarter: half of 16 bytes
    if (move == "transposeBlock" && v.size() == 4 && lanes == 4) {
        const Value rows[4] = {*v[0], *v[1], *v[2], *v[3]};
        for (int r = 0; r < 4; ++r)
            for (int c = 0; c < 4; ++c)
                v[static_cast<std::size_t>(r)]->v[c] = rows[c].v[r];
    } else if (move == "exchangeHalves" && v.size() == 2) {
        Value& b = *v[1];
        for (int i = 0; i < half; ++i) {
            a.v[half + i] = b.v[i];
            b.v[i] = was.v[half + i];
        }
    } else if (move == "splitEvenOdd" && v.size() == 2) {
        Value& b = *v[1];
        const Value other = b;
        for (int block = 0; block < lanes; block += 2 * quarter)
            for (int i = 0; i < quarter; ++i) {
                a.v[block + i] = was.v[block + 2 * i];
                a.v[block + quarter + i] = other.v[block + 2 * i];
                b.v[block + i] = was.v[block + 2 * i + 1];
                b.v[block + quarter + i] = other.v[block + 2 * i + 1];
            }
    } else {
        return false;
    }
    return true;
}

bool doubleType(const std::string& type)
{
    return type == "kv::dwide" || type == "kv::dvec" || type == "double" || type == "D";
}

double inPrecision(bool isDouble, double a) { return isDouble ? a : static_cast<double>(static_cast<float>(a)); }

Value negated(Value value)
{
    for (int i = 0; i < value.lanes; ++i)
        value.v[i] = -value.v[i];
    return value;
}

// The kv:: functions of fixed operands and how many they take.
const std::map<std::string, std::size_t> arities = {
    {"kv::add", 2},       {"kv::sub", 2},        {"kv::mul", 2},      {"kv::neg", 1},      {"kv::lane", 1},
    {"kv::permute", 1},   {"kv::blend", 2},      {"kv::lowHalf", 1},  {"kv::highHalf", 1}, {"kv::join", 2},
    {"kv::unpackLow", 2}, {"kv::unpackHigh", 2}, {"kv::toDouble", 1}, {"kv::toFloat", 1},  {"kv::convert", 1}};

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
    // `(x + k` or `(y + k`, then `next`: the index k into the named array, a
    // sum of numbers and multiples of the stride
    long place(const char* array, const char* next)
    {
        expect("(");
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
        expect(next);
        return index;
    }
    // the lanes of a type a declaration or a template argument names (0: not
    // a type); F and D, a batch's vectors, hold one transform per lane
    int typeLanes(const std::string& type) const
    {
        static const std::map<std::string, int> lanes = {{"kv::fwide", 8}, {"kv::fvec", 4}, {"kv::dwide", 4},
                                                         {"kv::dvec", 2},  {"float", 1},    {"double", 1}};
        const auto found = lanes.find(type);
        return type == "F" || type == "D" ? stride_ : found == lanes.end() ? 0 : found->second;
    }
    Value load(long index, int lanes, bool isDouble) const
    {
        Value value{isDouble, lanes};
        for (long i = index; i < index + lanes; ++i)
            value.v[i - index] = i >= 0 && i < static_cast<long>(x_.size()) ? x_[static_cast<std::size_t>(i)] : 0;
        return value;
    }

    void statement()
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
            const long index = place("y", ",");
            const Value v = expression();
            expect(")");
            if (v.lanes == 1)
                fail("a scalar stored by " + word);
            for (int i = 0; i < v.lanes; ++i)
                stored_[static_cast<int>(index) + i] = v.v[i];
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

    void laneMove(const std::string& move)
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

    Value expression()
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

    Value sum()
    {
        Value value = product();
        for (;;) {
            if (accept("+"))
                value = binary(Op::Add, value, product());
            else if (accept("-"))
                value = binary(Op::Sub, value, product());
            else
                return value;
        }
    }

    Value product()
    {
        Value value = unary();
        while (accept("*"))
            value = binary(Op::Mul, value, unary());
        return value;
    }

    Value unary()
    {
        return accept("-") ? negated(unary()) : primary();
    }

    Value primary()
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
            const long index = place("x", ")");
            const bool sixteenBytes = word.rfind("kv::", 0) == 0;
            return load(index, sixteenBytes ? (single_ ? 4 : 2) : declared_, !single_);
        }
        if (word.rfind("kv::", 0) == 0)
            return call(word);
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
            return load(index, 1, !single_);
        }
        if (word == "c" || word == "s" || word == "Scaled") {
            // c and s hold the factor; Scaled is only a condition, true here
            Value value{!single_};
            value.v[0] = word == "Scaled" ? 0 : inPrecision(!single_, factor_);
            return value;
        }
        const auto found = names_.find(word);
        if (found == names_.end())
            fail("an unknown name " + word);
        return found->second;
    }

    std::vector<Value> arguments()
    {
        std::vector<Value> values;
        expect("(");
        while (!accept(")")) {
            if (!values.empty())
                expect(",");
            values.push_back(expression());
        }
        return values;
    }

    Value call(const std::string& function)
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
            const long index = place("x", ")");
            return load(index, typeLanes(type), doubleType(type));
        }
        const std::vector<Value> a = arguments();
        const auto arity = arities.find(function);
        if (arity == arities.end())
            return made(function, type, a);
        if (a.size() != arity->second)
            fail(function + " with " + std::to_string(a.size()) + " operands");
        Value out{false, 4};
        if (function == "kv::add" || function == "kv::sub" || function == "kv::mul")
            return binary(function == "kv::add" ? Op::Add : function == "kv::sub" ? Op::Sub : Op::Mul, a[0], a[1]);
        if (function == "kv::lane") {
            out = a[0];
            out.lanes = 1;
            out.v[0] = a[0].v[immediate & 3];
            return out;
        }
        if (function == "kv::permute" || function == "kv::blend") {
            out.isDouble = a[0].isDouble;
            for (int i = 0; i < 4; ++i)
                out.v[i] = function == "kv::blend" ? a[(immediate >> i) & 1].v[i] : a[0].v[(immediate >> (2 * i)) & 3];
            return out;
        }
        if (function == "kv::neg")
            return negated(a[0]);
        if (function == "kv::lowHalf" || function == "kv::highHalf") {
            out = a[0];
            if (out.lanes == 1)
                return out;  // a number that every lane holds
            out.lanes = a[0].lanes / 2;
            for (int i = 0; i < out.lanes && function == "kv::highHalf"; ++i)
                out.v[i] = a[0].v[out.lanes + i];
            return out;
        }
        if (function == "kv::join") {
            out = a[0];
            out.lanes = 2 * a[0].lanes;
            for (int i = 0; i < a[0].lanes; ++i)
                out.v[a[0].lanes + i] = a[1].v[i];
            return out;
        }
        if (function == "kv::toDouble" || function == "kv::toFloat" || function == "kv::convert")
            return convert(function == "kv::toDouble" || (function == "kv::convert" && doubleType(type)), a[0]);
        return unpack(function == "kv::unpackHigh", a[0], a[1]);
    }

    // A vector of the type named, from lanes (set), one number (broadcast) or
    // none (zero).
    Value made(const std::string& function, const std::string& type, const std::vector<Value>& a) const
    {
        Value out{doubleType(type), typeLanes(type) > 1 ? typeLanes(type) : 4};
        const std::size_t operands = function == "kv::set" ? 4 : function == "kv::broadcast" ? 1 : 0;
        if ((operands == 0 && function != "kv::zero") || a.size() != operands)
            fail("an unknown function " + function + " of " + std::to_string(a.size()) + " operands");
        for (int i = 0; i < out.lanes && operands > 0; ++i)
            out.v[i] = inPrecision(out.isDouble, a[operands == 4 ? static_cast<std::size_t>(i) : 0].v[0]);
        return out;
    }

    Value binary(Op op, const Value& a, const Value& b) const
    {
        Value out;
        out.isDouble = a.isDouble || b.isDouble;
        // a constant broadcast to the type's lanes may meet a value of half as
        // many (the halves of a batch's Real64 values)
        out.lanes = a.lanes == 1 ? 1 : b.lanes == 1 ? a.lanes : std::min(a.lanes, b.lanes);
        for (int i = 0; i < out.lanes; ++i)
            out.v[i] = arithmetic(op, !out.isDouble, a.v[i], b.lanes == 1 ? b.v[0] : b.v[i]);
        return out;
    }

    Value convert(bool toDouble, const Value& a) const
    {
        Value out = a;
        out.isDouble = toDouble;
        for (int i = 0; i < a.lanes; ++i)
            out.v[i] = inPrecision(toDouble, a.v[i]);
        return out;
    }

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

}  // namespace

std::map<int, double> runBody(const std::string& text, const std::vector<double>& x, double factor, bool single,
                              int stride)
{
    return Interpreter(text, x, factor, single, stride).run();
}

}  // namespace gen
