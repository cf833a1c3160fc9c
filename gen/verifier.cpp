// The verifier: runs an operation graph on the check inputs lane by lane,
// and a printed body from its text, and holds each against its flow.
#include "verifier.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <tuple>
#include <unordered_map>

#include "forms.h"
#include "text_scanner.h"

namespace gen {

double arithmetic(Op op, bool single, double a, double b)
{
    // volatile: no wider intermediate, no contraction
    if (single) {
        const float x = static_cast<float>(a), y = static_cast<float>(b);
        volatile float r = op == Op::Add ? x + y : op == Op::Sub ? x - y : op == Op::Mul ? x * y : 0.0f - x;
        return r;
    }
    volatile double r = op == Op::Add ? a + b : op == Op::Sub ? a - b : op == Op::Mul ? a * b : 0.0 - a;
    return r;
}

bool sameBits(double a, double b)
{
    return (std::isnan(a) && std::isnan(b)) || std::memcmp(&a, &b, sizeof a) == 0;
}

LaneEvaluator::LaneEvaluator(const Graph& graph, const std::vector<double>& x, double factor)
{
    auto sample = [&](long index) {
        return index >= 0 && static_cast<std::size_t>(index) < x.size() ? x[static_cast<std::size_t>(index)] : 0.0;
    };
    auto flip = [](double v) { return std::copysign(v, std::signbit(v) ? 1.0 : -1.0); };
    values_.reserve(static_cast<std::size_t>(graph.size()));
    walkLanes(graph, values_, 0.0, flip, [&](const Node& n, int i, double a, double b) {
        const bool single = n.type == Type::F32 || n.type == Type::V4F || n.type == Type::V8F;
        switch (n.op) {
        case Op::Input:
            if (n.type == Type::V2D)
                return sample(2 * n.index + i);
            if (n.type == Type::V4F)
                return sample(2 * (i < 2 ? n.index : n.index2) + i % 2);
            return sample(n.index + i);
        case Op::Param: return single ? static_cast<double>(static_cast<float>(factor)) : factor;
        case Op::Const: return constantLane(n, i);
        case Op::Add:
        case Op::Sub:
        case Op::Mul:
        case Op::ZeroSub: return arithmetic(n.op, single, a, b);
        case Op::Widen: return a;
        case Op::Narrow: return static_cast<double>(static_cast<float>(a));
        default: throw std::logic_error("an operation the evaluator does not know");
        }
    });
}

bool sameOutputs(const Graph& narrow, const OutputLanes& narrowLanes, const Graph& wide, const OutputLanes& wideLanes,
                 const std::vector<std::vector<double>>& inputs, double factor)
{
    if (narrowLanes.size() != wideLanes.size())
        return false;
    // an output no node holds is an exact zero in both
    auto value = [](const LaneEvaluator& run, std::pair<int, int> output) {
        return output.first < 0 ? 0.0 : run.lanes(output.first)[static_cast<std::size_t>(output.second)];
    };
    for (const std::vector<double>& x : inputs) {
        const LaneEvaluator runNarrow(narrow, x, factor), runWide(wide, x, factor);
        for (std::size_t i = 0; i < narrowLanes.size(); ++i)
            if (!sameBits(value(runNarrow, narrowLanes[i]), value(runWide, wideLanes[i])))
                return false;
    }
    return true;
}

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

double inPrecision(bool isDouble, double a) { return isDouble ? a : static_cast<double>(static_cast<float>(a)); }

// `out` holding `lanes` lanes, lane k of them lane(k)
template <class Lane>
Value fill(Value out, int lanes, Lane lane)
{
    out.lanes = lanes;
    for (int k = 0; k < lanes; ++k)
        out.v[k] = lane(k);
    return out;
}

Value scalar(bool isDouble, double number)
{
    return fill(Value{isDouble}, 1, [&](int) { return inPrecision(isDouble, number); });
}

Value negated(const Value& a)
{
    return fill(a, a.lanes, [&](int k) { return -a.v[k]; });
}

Value convert(bool toDouble, const Value& a)
{
    Value out = a;
    out.isDouble = toDouble;
    return fill(out, a.lanes, [&](int k) { return inPrecision(toDouble, a.v[k]); });
}

// lowHalf, highHalf; a scalar's halves are itself, a number that every lane holds
Value half(bool high, const Value& a)
{
    const int lanes = a.lanes / 2;
    return a.lanes == 1 ? a : fill(a, lanes, [&](int k) { return a.v[(high ? lanes : 0) + k]; });
}

Value binary(Op op, const Value& a, const Value& b)
{
    // a constant broadcast to the type's lanes may meet a value of half as
    // many (the halves of a batch's Real64 values)
    const Value out{a.isDouble || b.isDouble, a.lanes == 1 ? 1 : b.lanes == 1 ? a.lanes : std::min(a.lanes, b.lanes)};
    return fill(out, out.lanes,
                [&](int k) { return arithmetic(op, !out.isDouble, a.v[k], b.lanes == 1 ? b.v[0] : b.v[k]); });
}

// A call of a kv:: function: its template argument (a selector or mask, or
// a vector type: its lanes and whether they are doubles) and its operands.
struct Call {
    long immediate = -1;
    int lanes = 0;
    bool isDouble = false;
    std::vector<Value> a;
};

// A vector of the call's type from lanes (kv::set), one number (kv::broadcast) or none (kv::zero).
Value made(const Call& c)
{
    const Value out{c.isDouble, c.lanes > 1 ? c.lanes : 4};
    return c.a.empty() ? out : fill(out, out.lanes, [&](int k) {
        return inPrecision(out.isDouble, c.a[c.a.size() > 1 ? static_cast<std::size_t>(k) : 0].v[0]);
    });
}

// unpackLow, unpackHigh: the lower (upper) lanes of each 16 bytes of a and b, interleaved.
Value unpack(bool high, const Value& a, const Value& b)
{
    const int block = a.isDouble ? 2 : 4, from = high ? block / 2 : 0;
    return fill(a, a.lanes, [&](int k) { return (k % 2 ? b : a).v[k - k % block + from + k % block / 2]; });
}

// The kv:: functions of fixed operand count: how many operands they take and what they give.
struct Function {
    std::size_t operands;
    Value (*run)(const Call&);
};
const std::unordered_map<std::string, Function> functions = {
    {"kv::add", {2, [](const Call& c) { return binary(Op::Add, c.a[0], c.a[1]); }}},
    {"kv::sub", {2, [](const Call& c) { return binary(Op::Sub, c.a[0], c.a[1]); }}},
    {"kv::mul", {2, [](const Call& c) { return binary(Op::Mul, c.a[0], c.a[1]); }}},
    {"kv::neg", {1, [](const Call& c) { return negated(c.a[0]); }}},
    {"kv::lane", {1, [](const Call& c) { return fill(c.a[0], 1, [&](int) { return c.a[0].v[c.immediate & 3]; }); }}},
    {"kv::permute", {1, [](const Call& c) {
         return fill(Value{c.a[0].isDouble}, 4, [&](int k) { return c.a[0].v[(c.immediate >> (2 * k)) & 3]; });
     }}},
    {"kv::blend", {2, [](const Call& c) {
         return fill(Value{c.a[0].isDouble}, 4, [&](int k) { return c.a[(c.immediate >> k) & 1].v[k]; });
     }}},
    {"kv::lowHalf", {1, [](const Call& c) { return half(false, c.a[0]); }}},
    {"kv::highHalf", {1, [](const Call& c) { return half(true, c.a[0]); }}},
    {"kv::join", {2, [](const Call& c) {
         const int lanes = c.a[0].lanes;
         return fill(c.a[0], 2 * lanes, [&](int k) { return k < lanes ? c.a[0].v[k] : c.a[1].v[k - lanes]; });
     }}},
    {"kv::unpackLow", {2, [](const Call& c) { return unpack(false, c.a[0], c.a[1]); }}},
    {"kv::unpackHigh", {2, [](const Call& c) { return unpack(true, c.a[0], c.a[1]); }}},
    {"kv::toDouble", {1, [](const Call& c) { return convert(true, c.a[0]); }}},
    {"kv::toFloat", {1, [](const Call& c) { return convert(false, c.a[0]); }}},
    {"kv::convert", {1, [](const Call& c) { return convert(c.isDouble, c.a[0]); }}},
    {"kv::swap", {1, [](const Call& c) { return fill(c.a[0], c.a[0].lanes, [&](int k) { return c.a[0].v[k ^ 1]; }); }}},
    {"kv::swapNeg", {1, [](const Call& c) {
         return fill(c.a[0], c.a[0].lanes, [&](int k) { return k % 2 ? c.a[0].v[k - 1] : -c.a[0].v[k + 1]; });
     }}},
    {"kv::set", {0, made}},  // as many operands as the type has lanes
    {"kv::broadcast", {1, made}},
    {"kv::zero", {0, made}},
};

// Runs a body's text, statement by statement: `x` holds the input samples
// (each a float where the kernel is Real32: `single`), `factor` is c and s,
// `Scaled` is true.  Text outside the subset stops the generator.
struct Interpreter : TextScanner {
    const std::vector<double>& x;
    double factor;
    bool single;
    int stride;
    int declared = 1;  // the lanes of the type of the declaration being read
    std::unordered_map<std::string, Value> names{};
    std::map<int, double> stored{};  // the numbers the body stores, by their index in y

    std::map<int, double> run()
    {
        while (skipSpace(), pos < text.size())
            statement();
        return stored;
    }

    // `open`, an integer, `close`
    long between(const char* open, const char* close)
    {
        expect(open);
        const long value = integer();
        expect(close);
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
                term *= stride;
            }
            index += term;
        } while (accept("+"));
        expect(next);
        return index;
    }
    // the lanes of a type a declaration or a template argument names (0: not
    // a type) and whether they are doubles; F and D, a batch's vectors, hold
    // one transform per lane
    std::pair<int, bool> typeOf(const std::string& type) const
    {
        static const std::unordered_map<std::string, std::pair<int, bool>> types = {
            {"kv::fwide", {8, false}}, {"kv::fvec", {4, false}}, {"kv::dwide", {4, true}}, {"kv::dvec", {2, true}},
            {"float", {1, false}},     {"double", {1, true}},    {"F", {0, false}},        {"D", {0, true}}};
        const auto found = types.find(type);
        if (found == types.end())
            return {0, false};
        return {type == "F" || type == "D" ? stride : found->second.first, found->second.second};
    }
    Value load(long index, int lanes, bool isDouble) const
    {
        return fill(Value{isDouble}, lanes, [&](int k) {
            const long i = index + k;
            return i >= 0 && i < static_cast<long>(x.size()) ? x[static_cast<std::size_t>(i)] : 0;
        });
    }
    void store(long index, const Value& value, int lanes)
    {
        for (int k = 0; k < lanes; ++k)
            stored[static_cast<int>(index) + k] = value.v[k];
    }

    void statement()
    {
        if (accept("{") || accept("}"))
            return;  // a block: its names are told apart by the order of the text
        const bool constant = accept("const");
        std::string word = name();
        if (const int lanes = typeOf(word).first) {
            declared = lanes;  // a declaration: the value carries its own type
            word = name();
        } else if (constant) {
            fail("a declaration of the type " + word);
        }
        if (word == "y" && accept(".put")) {
            // a batch's store: element k of every transform, one per lane
            const long index = between("(", ",");
            store(index * stride, expression(), stride);
            expect(")");
        } else if (word == "y") {
            const long index = between("[", "]");
            expect("=");
            store(index, expression(), 1);
        } else if (word == "kv::store" || endsWith(word, "::storeVector")) {
            const long index = place("y", ",");
            const Value value = expression();
            expect(")");
            if (value.lanes == 1)
                fail("a scalar stored by " + word);
            store(index, value, value.lanes);
        } else if (word == "transposeBlock" || word == "splitEvenOdd" || word == "exchangeHalves") {
            laneMove(word);
        } else {
            for (;;) {  // one name or more: `v = a;`, `const T p = a, q = b;`
                expect("=");
                names[word] = expression();
                if (!accept(","))
                    break;
                word = name();
            }
        }
        expect(";");
    }

    // The lane moves of src/wht/lane_moves.h on the vectors named:
    // transposeBlock (four vectors of four lanes: rows become columns),
    // exchangeHalves (a takes the lower halves of a and b, b the upper ones)
    // and splitEvenOdd (within each 16 bytes, a takes the even lanes of a and
    // b, b the odd ones).
    void laneMove(const std::string& move)
    {
        std::vector<Value*> v;
        expect("(");
        do {
            const auto found = names.find(name());
            if (found == names.end())
                fail("an unknown operand of " + move);
            v.push_back(&found->second);
        } while (accept(","));
        expect(")");
        const int lanes = v[0]->lanes, half = lanes / 2, quarter = v[0]->isDouble ? 1 : 2;  // quarter: half of 16 bytes
        const bool transpose = move == "transposeBlock";
        if (transpose ? v.size() != 4 || lanes != 4 : v.size() != 2)
            fail("a lane move " + move + " of " + std::to_string(v.size()) + " vectors");
        std::vector<Value> was;
        for (const Value* value : v)
            was.push_back(*value);
        // lane k of vector r from lane `lane` of vector `from`
        for (int r = 0; r < static_cast<int>(v.size()); ++r)
            for (int k = 0; k < lanes; ++k) {
                const int pair = k % (2 * quarter);  // the lane within its 16 bytes
                const int from = transpose ? k : move == "exchangeHalves" ? k / half : pair / quarter;
                const int lane = transpose ? r : move == "exchangeHalves" ? r * half + k % half
                                                                           : k - pair + 2 * (pair % quarter) + r;
                v[static_cast<std::size_t>(r)]->v[k] = was[static_cast<std::size_t>(from)].v[lane];
            }
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
            const bool add = accept("+");
            if (!add && !accept("-"))
                return value;
            value = binary(add ? Op::Add : Op::Sub, value, product());
        }
    }

    Value product()
    {
        Value value = unary();
        while (accept("*"))
            value = binary(Op::Mul, value, unary());
        return value;
    }

    Value unary() { return accept("-") ? negated(unary()) : primary(); }

    Value primary()
    {
        skipSpace();
        if (accept("(")) {
            const Value value = expression();
            expect(")");
            return value;
        }
        if (std::isdigit(static_cast<unsigned char>(text[pos])) || text[pos] == '.') {
            char* end = nullptr;
            const double number = std::strtod(text.c_str() + pos, &end);
            pos = static_cast<std::size_t>(end - text.c_str());
            return scalar(!accept("f"), number);
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
        // kv::AlignedAccess and kv::UnalignedAccess load 16 bytes, the other
        // classes a vector of the declared type
        if (endsWith(word, "::loadVector"))
            return load(place("x", ")"), word.rfind("kv::", 0) == 0 ? (single ? 4 : 2) : declared, !single);
        if (word.rfind("kv::", 0) == 0)
            return call(word);
        // a batch's load: element j of every transform, the transforms' samples interleaved in x
        if (word == "x" && accept(".get"))
            return load(between("(", ")") * stride, stride, !single);
        if (word == "x")
            return load(between("[", "]"), 1, !single);
        // c and s hold the factor; Scaled is only a condition, true here
        if (word == "c" || word == "s" || word == "Scaled")
            return scalar(!single, word == "Scaled" ? 0 : factor);
        const auto found = names.find(word);
        if (found == names.end())
            fail("an unknown name " + word);
        return found->second;
    }

    Value call(const std::string& function)
    {
        Call c;
        if (accept("<")) {
            if (std::isdigit(static_cast<unsigned char>(text[pos])))
                c.immediate = integer();
            else
                std::tie(c.lanes, c.isDouble) = typeOf(name());
            expect(">");
        }
        if (function == "kv::load")
            return load(place("x", ")"), c.lanes, c.isDouble);
        expect("(");
        while (!accept(")")) {
            if (!c.a.empty())
                expect(",");
            c.a.push_back(expression());
        }
        const auto found = functions.find(function);
        if (found == functions.end() ||
            c.a.size() != (function == "kv::set" ? static_cast<std::size_t>(c.lanes) : found->second.operands))
            fail("an unknown function " + function + " of " + std::to_string(c.a.size()) + " operands");
        return found->second.run(c);
    }
};

}  // namespace

std::vector<std::vector<double>> verifierInputs(int count, bool single)
{
    const std::size_t n = static_cast<std::size_t>(count);
    std::vector<std::vector<double>> inputs = {std::vector<double>(n, 0.0), std::vector<double>(n, -0.0)};
    for (std::size_t i = 0; i < n; ++i) {
        inputs.push_back(std::vector<double>(n, -0.0));
        inputs.back()[i] = i % 3 == 0 ? -1.5 : 0.75;
    }
    inputs.push_back(std::vector<double>(n, 0.75));
    inputs.push_back(inputs.back());  // alternating
    for (std::size_t i = 1; i < n; i += 2)
        inputs.back()[i] = -0.75;
    unsigned state = 4321u + static_cast<unsigned>(count);
    auto next = [&] {
        state = state * 1664525u + 1013904223u;
        return static_cast<double>(static_cast<int>(state >> 8) - (1 << 23)) / static_cast<double>(1 << (state % 13));
    };
    const double large = single ? 4.0e37 : 2.0e307;
    for (int r = 0; r < 5; ++r) {
        inputs.emplace_back(n);
        for (double& value : inputs.back())
            value = inPrecision(!single, r < 3 ? next() : next() / (1 << 23) * large);
    }
    return inputs;
}

void verifyPrintedText(const std::string& kernel, const std::string& text,
                       const std::vector<std::vector<double>>& inputs, const PrintedRun& run, const Reference& expected)
{
    for (const std::vector<double>& x : inputs) {
        Interpreter body{{text, "the verifier cannot read a body"}, x, run.factor, run.single, run.stride};
        const std::map<int, double> stored = body.run();
        for (const auto& [index, value] : expected(x)) {
            const auto found = stored.find(index);
            if (found == stored.end())
                formError(kernel, "its body does not store y[" + std::to_string(index) + "]");
            if (!sameBits(value, found->second))
                formError(kernel, "its body does not give the bits of its flow at y[" + std::to_string(index) +
                                      "] on the generator's check inputs");
        }
    }
}

}  // namespace gen
