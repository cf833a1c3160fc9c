#include "family.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace gen {

namespace {
Target currentTarget;
}

const Target& target() { return currentTarget; }
void setTarget(const Target& t) { currentTarget = t; }

Target readTarget(const std::string& path)
{
    std::ifstream in(path);
    if (!in)
        throw std::runtime_error("cannot read the target description " + path);
    std::map<std::string, std::string> values;
    for (std::string line; std::getline(in, line);) {
        if (line.empty() || line[0] == '#')
            continue;
        const std::size_t eq = line.find('=');
        if (eq == std::string::npos)
            throw std::runtime_error(path + ": a line that is not key = value: " + line);
        auto trim = [](std::string text) {
            const std::size_t first = text.find_first_not_of(" \t"), last = text.find_last_not_of(" \t");
            return first == std::string::npos ? std::string() : text.substr(first, last - first + 1);
        };
        values[trim(line.substr(0, eq))] = trim(line.substr(eq + 1));
    }
    Target t;
    for (const char* key : {"name", "vector-bits", "simd-header"})
        if (values[key].empty())
            throw std::runtime_error(path + ": no " + key);
    t.name = values["name"];
    t.vectorBits = std::atoi(values["vector-bits"].c_str());
    t.simdHeader = values["simd-header"];
    for (const auto& [key, value] : values)
        if (key.rfind("cost.", 0) == 0)
            t.cost[key.substr(5)] = std::atoi(value.c_str());
    if (t.vectorBits != 128 && t.vectorBits != 256)
        throw std::runtime_error(path + ": the generator writes 128-bit and 256-bit vectors only");
    return t;
}

int Target::weight(const std::string& costClass) const
{
    const auto found = cost.find(costClass);
    if (found == cost.end())
        throw std::runtime_error("the description of target " + name + " weighs no cost." + costClass);
    return found->second;
}

std::vector<Target> readTargetList(const std::string& path)
{
    std::ifstream in(path);
    if (!in)
        throw std::runtime_error("cannot read the list of targets " + path);
    const std::string folder = path.find('/') == std::string::npos ? "." : path.substr(0, path.rfind('/'));
    std::vector<Target> targets;
    for (std::string line; std::getline(in, line);)
        if (!line.empty() && line[0] != '#')
            targets.push_back(readTarget(folder + "/" + line + ".target"));
    for (Target& t : targets)
        t.baseline = targets.front().name;
    return targets;
}

std::map<std::string, FamilyEmitter>& familyRegistry()
{
    static std::map<std::string, FamilyEmitter> registry;
    return registry;
}

void writeIfChanged(const std::string& path, const std::string& content)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream old;
    old << in.rdbuf();
    if (in && old.str() == content)
        return;
    in.close();
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    if (!out)
        throw std::runtime_error("cannot write " + path);
    out << content;
}

std::string scaledCall(const std::string& call, const std::string& args, const std::string& indent)
{
    // Sanitizer builds compile one body per kernel to keep their build short.
    return "#ifndef KVTG_ONE_BODY\n" + indent + "if (c == 1) {\n" + indent + "    " + call + "false>(" + args +
           ");\n" + indent + "    return StatusOk;\n" + indent + "}\n#endif\n" + indent + call + "true>(" + args +
           ");\n";
}

std::string factorLiterals(Type type, int n)
{
    return literal(type, roundTo(type, 1.0L / n)) + ", " +
           literal(type, roundTo(type, 1.0L / std::sqrt(static_cast<long double>(n))));
}

std::string sizeDispatcher(const std::string& name, const std::string& sample,
                           const std::function<std::string(int)>& kernelName)
{
    std::ostringstream out;
    out << "extern \"C\" KVTG_API Status " << name << "(const " << sample << "* src, " << sample
        << "* dst, int32_t len, int32_t flag)\n{\n"
        << "    using Kernel = Status (*)(const " << sample << "*, " << sample << "*, int32_t);\n"
        << "    static const Kernel kernels[63] = {\n";
    for (int n = 2; n <= 64; ++n)
        out << "        " << kernelName(n) << ",\n";
    out << "    };\n"
        << "    // one unsigned comparison rejects 0, 1, negative lengths and lengths above 64\n"
        << "    const uint32_t index = static_cast<uint32_t>(len) - 2u;\n"
        << "    if (index > 62u)\n        return StatusBadSize;\n"
        << "    return kernels[index](src, dst, flag);\n}\n";
    return out.str();
}

namespace {

const char* typeName(Type type)
{
    static const char* const names[] = {"float", "double", "kv::dvec", "kv::fvec", "kv::dwide", "kv::fwide"};
    return names[static_cast<int>(type)];  // in the order of Type
}

// The run-time scale factor, as passed or converted to the other precision.
bool isFactor(const Graph& graph, int id)
{
    const Node& n = graph.node(id);
    return n.op == Op::Param || ((n.op == Op::Widen || n.op == Op::Narrow) && isFactor(graph, n.a));
}

// The operands of a node, a value used twice (a + a) given once; -1 for none.
std::array<int, 2> distinctOperands(const Node& n) { return {n.a, n.b == n.a ? -1 : n.b}; }

// The nodes that the roots need in an order that keeps few values alive at
// once: the compiler keeps the order of a straight-line body, so this order is
// what its register allocator works from.  Among the nodes whose operands are
// placed, it takes the one that adds the fewest live values (a node whose
// operands die there adds none or frees one), and among those the one whose
// operands were placed last, so that a chain is finished while its values are
// still in registers.  A load adds a value and has no operands: it waits until
// nothing better is left.  Against creation order or a depth-first walk from
// the outputs this halves the spills of the long Rader kernels.
std::vector<int> registerOrder(const Graph& graph, const std::vector<int>& roots)
{
    const std::vector<bool> live = graph.liveSet(roots);
    const std::size_t size = static_cast<std::size_t>(graph.size());
    // constants are printed inline: they hold no variable
    auto holds = [&](int id) { return id >= 0 && graph.node(id).op != Op::Const; };
    std::vector<int> usesLeft(size, 0);  // nodes (and roots) not yet placed that use a value
    std::vector<int> waiting(size, 0);   // operands of a node not yet placed
    std::vector<std::vector<int>> users(size);
    std::vector<int> ready;
    for (int id = 0; id < graph.size(); ++id) {
        if (!live[id] || !holds(id))
            continue;
        for (int operand : distinctOperands(graph.node(id)))
            if (holds(operand)) {
                ++usesLeft[operand];
                ++waiting[id];
                users[operand].push_back(id);
            }
        if (waiting[id] == 0)
            ready.push_back(id);
    }
    for (int root : roots)
        if (holds(root))
            ++usesLeft[root];

    std::vector<int> placedAt(size, -1);
    std::vector<int> order;
    while (!ready.empty()) {
        // growth: values alive after the node minus before it; recent: the
        // latest placement among its operands (-1 for a load)
        std::size_t best = 0;
        int bestGrowth = 0, bestRecent = 0;
        for (std::size_t i = 0; i < ready.size(); ++i) {
            int growth = 1, recent = -1;
            for (int operand : distinctOperands(graph.node(ready[i])))
                if (holds(operand)) {
                    recent = std::max(recent, placedAt[operand]);
                    if (usesLeft[operand] == 1)
                        --growth;
                }
            if (i == 0 || growth < bestGrowth || (growth == bestGrowth && recent > bestRecent)) {
                best = i;
                bestGrowth = growth;
                bestRecent = recent;
            }
        }
        const int id = ready[best];
        ready.erase(ready.begin() + static_cast<std::ptrdiff_t>(best));
        placedAt[id] = static_cast<int>(order.size());
        order.push_back(id);
        for (int operand : distinctOperands(graph.node(id)))
            if (holds(operand))
                --usesLeft[operand];
        for (int user : users[id])
            if (--waiting[user] == 0)
                ready.push_back(user);
    }
    // constant operands are not placed; the printer skips them anyway
    return order;
}

}  // namespace

std::string valueOf(const Graph& graph, int id)
{
    const Node& n = graph.node(id);
    if (n.op != Op::Const)
        return "t" + std::to_string(id);
    if (n.type == Type::F32 || n.type == Type::F64)
        return literal(n.type, n.lane0);
    const Type lane = n.type == Type::V4F || n.type == Type::V8F ? Type::F32 : Type::F64;
    std::string text;
    for (double value : graph.constantValues(id))  // of a 256-bit constant, the lanes of both 128-bit halves
        text += (text.empty() ? "" : ", ") + literal(lane, value);
    return std::string("kv::set<") + typeName(n.type) + ">(" + text + ")";
}

std::string printNodes(const Graph& graph, const std::vector<int>& roots, const NodePrinter& printer,
                       const std::string& indent)
{
    std::ostringstream out;
    const bool lanes = static_cast<bool>(printer.lanesOf);
    auto typeOf = [&](Type type) {
        return lanes && (type == Type::F32 || type == Type::F64) ? printer.lanesOf(type) : std::string(typeName(type));
    };
    auto operand = [&](int id) {
        const Node& n = graph.node(id);
        return lanes && n.op == Op::Const ? "kv::broadcast<" + typeOf(n.type) + ">(" + valueOf(graph, id) + ")"
                                          : valueOf(graph, id);
    };
    for (int id : registerOrder(graph, roots)) {
        const Node& n = graph.node(id);
        if (n.op == Op::Const)
            continue;
        const bool vector = lanes || (n.type != Type::F32 && n.type != Type::F64);
        std::string expr;
        const std::string a = n.a >= 0 ? operand(n.a) : "";
        const std::string b = n.b >= 0 ? operand(n.b) : "";
        const std::string ab = "(" + a + ", " + b + ")", index = std::to_string(n.index);
        switch (n.op) {
        case Op::Input: expr = printer.input(n); break;
        case Op::Param: expr = printer.param(n); break;
        case Op::Add: expr = vector ? "kv::add" + ab : a + " + " + b; break;
        case Op::Sub: expr = vector ? "kv::sub" + ab : a + " - " + b; break;
        case Op::Mul:
            expr = vector ? "kv::mul" + ab : a + " * " + b;
            // A product by the scale factor is skipped in the body for factor
            // one: multiplying by one is exact, so both bodies give the same bits.
            if (isFactor(graph, n.a) || isFactor(graph, n.b))
                expr = "Scaled ? " + expr + " : " + (isFactor(graph, n.b) ? a : b);
            break;
        case Op::Neg: expr = vector ? "kv::neg(" + a + ")" : "-" + a; break;
        case Op::ZeroSub:
            expr = vector ? "kv::sub(kv::zero<" + typeOf(n.type) + ">(), " + a + ")" : literal(n.type, 0.0) + " - " + a;
            break;
        case Op::Widen:  // the conversions, to the node's type
        case Op::Narrow: expr = (lanes ? "kv::convert<" : "static_cast<") + typeOf(n.type) + ">(" + a + ")"; break;
        case Op::SwapNeg: expr = "kv::swapNeg(" + a + ")"; break;
        case Op::Swap: expr = "kv::swap(" + a + ")"; break;
        case Op::Shuffle:
            expr = n.index == 256   ? "kv::unpackLow" + ab
                   : n.index == 257 ? "kv::unpackHigh" + ab
                                    : "kv::shuffle<" + index + ">" + ab;
            break;
        case Op::Join: expr = n.b < 0 ? "kv::widen(" + a + ")" : "kv::join" + ab; break;
        case Op::Extract: expr = std::string(n.index == 0 ? "kv::lowHalf(" : "kv::highHalf(") + a + ")"; break;
        case Op::Permute2: expr = "kv::permuteHalves<" + index + ">" + ab; break;
        case Op::SignLanes: expr = "kv::negLanes<" + index + ">(" + a + ")"; break;
        case Op::Blend: expr = "kv::blend<" + index + ">" + ab; break;
        case Op::Const: break;
        }
        out << indent << "const " << typeOf(n.type) << " t" << id << " = " << expr << ";\n";
    }
    return out.str();
}

}  // namespace gen
