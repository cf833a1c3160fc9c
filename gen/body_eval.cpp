#include "body_eval.h"

#include <cctype>
#include <cstdlib>
#include <stdexcept>
#include <unordered_map>

#include "forms.h"
#include "graph_eval.h"

namespace gen {

namespace {

// A scalar (one lane) or a four-lane vector, of floats or doubles.
struct Value {
    bool isDouble = false;
    int lanes = 1;
    double v[4] = {0, 0, 0, 0};
};

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
    Interpreter(const std::string& text, const std::vector<double>& x, double factor, bool single)
        : text_(text), x_(x), factor_(factor), single_(single)
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
    // `x + k` or `y + k`: the index k into the named array
    long place(const char* array)
    {
        expect(array);
        expect("+");
        return integer();
    }

    void statement();
    Value expression();
    Value sum();
    Value product();
    Value unary();
    Value primary();
    Value call(const std::string& function);
    std::vector<Value> arguments();
    Value binary(char op, const Value& a, const Value& b) const;
    Value convert(bool toDouble, const Value& a) const;

    const std::string& text_;
    const std::vector<double>& x_;
    double factor_;
    bool single_;
    std::size_t pos_ = 0;
    std::unordered_map<std::string, Value> names_;
    std::map<int, double> stored_;
};

void Interpreter::statement()
{
    if (accept("const")) {
        name();  // the type: the value carries its own
        const std::string target = name();
        expect("=");
        names_[target] = expression();
    } else if (accept("y[")) {
        const int index = static_cast<int>(integer());
        expect("]");
        expect("=");
        stored_[index] = expression().v[0];
    } else {
        const std::string function = name();
        if (function != "kv::store")
            fail("a statement of " + function);
        expect("(");
        const long index = place("y");
        expect(",");
        const Value v = expression();
        expect(")");
        for (int i = 0; i < 4; ++i)
            stored_[static_cast<int>(index) + i] = v.v[i];
    }
    expect(";");
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
    if (word.rfind("kv::", 0) == 0)
        return call(word);
    Value value;
    if (word == "x") {
        expect("[");
        const long index = integer();
        expect("]");
        value.isDouble = !single_;
        value.v[0] = index >= 0 && static_cast<std::size_t>(index) < x_.size() ? x_[static_cast<std::size_t>(index)] : 0;
        return value;
    }
    if (word == "c") {
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
        Value value;
        value.lanes = 4;
        value.isDouble = type == "kv::dwide";
        for (int i = 0; i < 4; ++i)
            value.v[i] = index + i < static_cast<long>(x_.size()) ? x_[static_cast<std::size_t>(index + i)] : 0;
        return value;
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
    if (function == "kv::toDouble" || function == "kv::toFloat") {
        arity(1);
        return convert(function == "kv::toDouble", a[0]);
    }
    out.isDouble = type == "kv::dwide";
    if (function == "kv::set") {
        arity(4);
        for (int i = 0; i < 4; ++i)
            out.v[i] = inPrecision(out.isDouble, a[static_cast<std::size_t>(i)].v[0]);
    } else if (function == "kv::broadcast") {
        arity(1);
        for (double& lane : out.v)
            lane = inPrecision(out.isDouble, a[0].v[0]);
    } else if (function != "kv::zero") {
        fail("an unknown function " + function);
    }
    return out;
}

Value Interpreter::binary(char op, const Value& a, const Value& b) const
{
    Value out;
    out.isDouble = a.isDouble || b.isDouble;
    out.lanes = a.lanes;
    for (int i = 0; i < a.lanes; ++i)
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

std::map<int, double> runBody(const std::string& text, const std::vector<double>& x, double factor, bool single)
{
    return Interpreter(text, x, factor, single).run();
}

void verifyPrintedBody(const std::string& kernel, const Graph& graph, const std::vector<int>& outputs,
                       const std::vector<int>& slots, const std::string& text,
                       const std::vector<std::vector<double>>& inputs, double factor, bool single)
{
    for (const std::vector<double>& x : inputs) {
        const LaneEvaluator flow(graph, x, factor);
        const std::map<int, double> stored = runBody(text, x, factor, single);
        for (std::size_t i = 0; i < outputs.size(); ++i) {
            const auto found = stored.find(slots[i]);
            if (found == stored.end())
                formError(kernel, "its body does not store y[" + std::to_string(slots[i]) + "]");
            if (!sameBits(flow.lanes(outputs[i])[0], found->second))
                formError(kernel, "its body does not give the bits of its flow at y[" + std::to_string(slots[i]) +
                                      "] on the generator's check inputs");
        }
    }
}

}  // namespace gen
