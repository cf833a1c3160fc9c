#include "real_pack.h"

#include <algorithm>
#include <climits>
#include <map>
#include <set>
#include <stdexcept>
#include <sstream>
#include <tuple>

namespace gen::real {

namespace {

constexpr int lanes = 4;

bool isFactor(const Graph& g, int id)
{
    const Node& n = g.node(id);
    if (n.op == Op::Param)
        return true;
    return (n.op == Op::Widen || n.op == Op::Narrow) && isFactor(g, n.a);
}

bool packable(const Graph& g, int id)
{
    const Node& n = g.node(id);
    switch (n.op) {
    case Op::Add:
    case Op::Sub:
    case Op::Mul:
    case Op::Neg:
    case Op::ZeroSub:
    case Op::Narrow: return !isFactor(g, id);
    case Op::Widen: return !isFactor(g, id);
    default: return false;
    }
}

// What one operation counts, scalar or on a vector.  A conversion between
// the precisions counts two: on the cores measured (bench/ports_bench) it
// starts at one per cycle, scalar or four lanes at once, half the rate of an
// addition, and takes an addition's place beside them.  In a long kernel the
// ports are the limit and a scalar conversion counts one more, so that
// packing four of them pays for more moves.  In a short one the dependency
// chains are, and the moves that a packing adds to them weigh as much as the
// instructions it saves.
struct Weights {
    int scalarConversion = 2;

    int of(const Graph& g, int id, bool vector = false) const
    {
        const Op op = g.node(id).op;
        if (op != Op::Widen && op != Op::Narrow)
            return 1;
        return vector ? 2 : scalarConversion;
    }
};

// Scalar operations (loads and stores included) from which a kernel counts
// as long.
constexpr int longKernel = 1000;

// What a lane's operand is, for the choice of how to gather a vector operand.
enum class Source { Packed, Input, Const, Factor, Scalar };

struct Packer {
    const Graph& g;
    int inputLimit;
    std::vector<int> pack, lane;  // per node: its pack and lane, -1 when scalar
    std::vector<std::vector<int>> packs;  // node ids per lane, -1 for an unused lane
    std::set<std::pair<int, int>> extracted;  // lanes of packs read by scalar code

    Packer(const Graph& graph, int limit)
        : g(graph), inputLimit(limit), pack(static_cast<std::size_t>(graph.size()), -1),
          lane(static_cast<std::size_t>(graph.size()), -1)
    {
    }

    // a move of Real64 lanes crosses the halves of a 256-bit vector and costs
    // about two simple instructions; Real32 lanes move within one register
    int moveWeight(int q) const
    {
        for (int m : packs[static_cast<std::size_t>(q)])
            if (m >= 0)
                return g.node(m).type == Type::F64 ? 2 : 1;
        return 1;
    }

    Source sourceOf(int id) const
    {
        if (pack[static_cast<std::size_t>(id)] >= 0)
            return Source::Packed;
        const Node& n = g.node(id);
        if (n.op == Op::Input)
            return Source::Input;
        if (n.op == Op::Const)
            return Source::Const;
        if (isFactor(g, id))
            return Source::Factor;
        return Source::Scalar;
    }

    // How an operand vector with the given lane sources is built, and at what
    // cost in instructions.
    enum class Gather { InPlace, Permute, Blend, Constant, Broadcast, Load, Lanes };
    struct Plan {
        Gather kind;
        int cost;
        int first = -1, second = -1;  // packs (InPlace, Permute, Blend), or the first input slot (Load)
    };

    Plan plan(const std::vector<int>& src) const
    {
        std::vector<int> real;
        for (int s : src)
            if (s >= 0)
                real.push_back(s);
        bool allConst = true, allSameFactor = true, allInputs = true;
        std::set<int> sourcePacks;
        bool allPacked = true;
        for (int s : real) {
            const Source k = sourceOf(s);
            allConst = allConst && k == Source::Const;
            allSameFactor = allSameFactor && k == Source::Factor && s == real[0];
            allInputs = allInputs && k == Source::Input;
            allPacked = allPacked && k == Source::Packed;
            if (k == Source::Packed)
                sourcePacks.insert(pack[static_cast<std::size_t>(s)]);
        }
        if (allConst)
            return {Gather::Constant, 1};
        if (allSameFactor)
            return {Gather::Broadcast, 0};
        if (allInputs) {
            int base = INT_MIN;
            bool consecutive = true;
            for (int i = 0; i < lanes && consecutive; ++i) {
                const int s = src[static_cast<std::size_t>(i)];
                if (s < 0)
                    continue;
                const int b = g.node(s).index - i;
                if (base == INT_MIN)
                    base = b;
                consecutive = b == base;
            }
            if (consecutive && base >= 0 && base + lanes <= inputLimit)
                return {Gather::Load, 1, base};
        }
        if (allPacked && sourcePacks.size() <= 2) {
            const int p = *sourcePacks.begin();
            auto moved = [&](int q) {
                for (int i = 0; i < lanes; ++i) {
                    const int s = src[static_cast<std::size_t>(i)];
                    if (s >= 0 && pack[static_cast<std::size_t>(s)] == q && lane[static_cast<std::size_t>(s)] != i)
                        return moveWeight(q);
                }
                return 0;
            };
            if (sourcePacks.size() == 1)
                return moved(p) ? Plan{Gather::Permute, moved(p), p} : Plan{Gather::InPlace, 0, p};
            const int q = *sourcePacks.rbegin();
            return {Gather::Blend, 1 + moved(p) + moved(q), p, q};
        }
        int cost = 0;
        for (int s : real) {
            const Source k = sourceOf(s);
            if (k == Source::Packed)
                cost += lane[static_cast<std::size_t>(s)] == 0 ? 0 : moveWeight(pack[static_cast<std::size_t>(s)]);
            else if (k == Source::Input)
                cost += 1;
            cost += 1;  // the insertion
        }
        return {Gather::Lanes, cost};
    }
};

// Instructions of the scalar body: its loads, operations and stores.
int scalarBodyCost(const Graph& g, const std::vector<int>& stores, const std::vector<bool>& live, const Weights& w)
{
    int cost = static_cast<int>(stores.size());
    for (int id = 0; id < g.size(); ++id)
        if (live[static_cast<std::size_t>(id)] && g.node(id).op != Op::Const && g.node(id).op != Op::Param &&
            !isFactor(g, id))
            cost += g.node(id).op == Op::Input ? 1 : w.of(g, id);
    return cost;
}

const char* vectorName(Type scalar) { return scalar == Type::F64 ? "kv::v4d" : "kv::v4f"; }
const char* scalarName(Type scalar) { return scalar == Type::F64 ? "double" : "float"; }

// One packing: chunks of neighbours in the sorted order of each bucket, or
// chunks grown greedily by the instructions they save.
PackedBody packWith(const Graph& g, const std::vector<int>& stores, const std::vector<int>& storeSlots,
                    int inputLimit, bool greedy, const Weights& w)
{
    PackedBody result;
    const std::vector<bool> live = g.liveSet(stores);
    const int size = g.size();

    // level: longest path from the loads; position: the first store a node feeds
    std::vector<int> level(static_cast<std::size_t>(size), 0), position(static_cast<std::size_t>(size), INT_MAX);
    int maxLevel = 0;
    for (int id = 0; id < size; ++id) {
        if (!live[static_cast<std::size_t>(id)])
            continue;
        const Node& n = g.node(id);
        if (n.op == Op::Input || n.op == Op::Param || n.op == Op::Const)
            continue;
        int l = 0;
        for (int o : {n.a, n.b})
            if (o >= 0)
                l = std::max(l, level[static_cast<std::size_t>(o)]);
        level[static_cast<std::size_t>(id)] = l + 1;
        maxLevel = std::max(maxLevel, l + 1);
    }
    for (std::size_t i = 0; i < stores.size(); ++i)
        position[static_cast<std::size_t>(stores[i])] =
            std::min(position[static_cast<std::size_t>(stores[i])], storeSlots[i]);
    for (int id = size - 1; id >= 0; --id) {
        if (!live[static_cast<std::size_t>(id)])
            continue;
        const Node& n = g.node(id);
        for (int o : {n.a, n.b})
            if (o >= 0)
                position[static_cast<std::size_t>(o)] =
                    std::min(position[static_cast<std::size_t>(o)], position[static_cast<std::size_t>(id)]);
    }

    const int scalarCost = scalarBodyCost(g, stores, live, w);
    result.scalarCost = scalarCost;

    Packer pk(g, inputLimit);
    std::vector<std::vector<int>> byLevel(static_cast<std::size_t>(maxLevel + 1));
    for (int id = 0; id < size; ++id)
        if (live[static_cast<std::size_t>(id)] && packable(g, id))
            byLevel[static_cast<std::size_t>(level[static_cast<std::size_t>(id)])].push_back(id);

    auto operandsOf = [&](const std::vector<int>& members, bool second) {
        std::vector<int> src;
        for (int m : members)
            src.push_back(m < 0 ? -1 : (second ? g.node(m).b : g.node(m).a));
        return src;
    };
    auto extraCost = [&](int id) {  // scalar cost of reading a node's operands
        int c = 0;
        const Node& n = g.node(id);
        for (int o : {n.a, n.b})
            if (o >= 0 && pk.pack[static_cast<std::size_t>(o)] >= 0 && pk.lane[static_cast<std::size_t>(o)] != 0)
                c += pk.moveWeight(pk.pack[static_cast<std::size_t>(o)]);
        return c;
    };

    int cost = 0;
    for (int l = 1; l <= maxLevel; ++l) {
        std::map<std::tuple<int, int, int>, std::vector<int>> buckets;
        for (int id : byLevel[static_cast<std::size_t>(l)]) {
            const Node& n = g.node(id);
            int kind = 0;  // products: by a constant (1), by the scale factor (2), by a value (3)
            if (n.op == Op::Mul)
                kind = g.node(n.b).op == Op::Const ? 1 : isFactor(g, n.b) ? 2 : 3;
            buckets[{static_cast<int>(n.op), static_cast<int>(n.type), kind}].push_back(id);
        }
        for (auto& [key, members] : buckets) {
            // members whose operands sit side by side go into one vector in
            // the order of those operands, so that gathering them is cheap
            auto operandKey = [&](int o) {
                if (o < 0)
                    return std::make_tuple(3, 0, 0);
                if (pk.pack[static_cast<std::size_t>(o)] >= 0)
                    return std::make_tuple(0, pk.pack[static_cast<std::size_t>(o)], pk.lane[static_cast<std::size_t>(o)]);
                if (g.node(o).op == Op::Input)
                    return std::make_tuple(1, g.node(o).index, 0);
                return std::make_tuple(2, position[static_cast<std::size_t>(o)], o);
            };
            std::stable_sort(members.begin(), members.end(), [&](int x, int y) {
                return std::make_tuple(operandKey(g.node(x).a), operandKey(g.node(x).b)) <
                       std::make_tuple(operandKey(g.node(y).a), operandKey(g.node(y).b));
            });
            if (!greedy) {
                for (std::size_t start = 0; start < members.size(); start += lanes) {
                    std::vector<int> chunk(lanes, -1);
                    int count = 0;
                    for (std::size_t i = start; i < members.size() && i < start + lanes; ++i)
                        chunk[static_cast<std::size_t>(count++)] = members[i];
                    int scalar = 0;
                    for (int m : chunk)
                        if (m >= 0)
                            scalar += w.of(g, m) + extraCost(m);
                    int packed = w.of(g, chunk[0], true) + pk.plan(operandsOf(chunk, false)).cost;
                    if (g.node(chunk[0]).b >= 0)
                        packed += pk.plan(operandsOf(chunk, true)).cost;
                    if (count < 2 || packed >= scalar)
                        continue;
                    const int index = static_cast<int>(pk.packs.size());
                    pk.packs.push_back(chunk);
                    for (int i = 0; i < count; ++i) {
                        pk.pack[static_cast<std::size_t>(chunk[static_cast<std::size_t>(i)])] = index;
                        pk.lane[static_cast<std::size_t>(chunk[static_cast<std::size_t>(i)])] = i;
                    }
                }
                continue;
            }
            // chunks grow greedily: each step adds the member and lane that
            // save the most instructions against scalar code, looking at the
            // next few members of the sorted bucket only
            auto saving = [&](const std::vector<int>& chunk) {
                int scalar = 0, count = 0, head = -1;
                for (int m : chunk)
                    if (m >= 0) {
                        scalar += w.of(g, m) + extraCost(m);
                        ++count;
                        head = m;
                    }
                if (count < 2)
                    return 0;
                int packed = w.of(g, head, true) + pk.plan(operandsOf(chunk, false)).cost;
                if (g.node(head).b >= 0)
                    packed += pk.plan(operandsOf(chunk, true)).cost;
                return scalar - packed;
            };
            std::vector<bool> taken(members.size(), false);
            for (std::size_t first = 0; first < members.size(); ++first) {
                if (taken[first])
                    continue;
                taken[first] = true;
                std::vector<int> chunk(lanes, -1);
                const int seed = members[first];
                const int seedSource = g.node(seed).a;
                const int seedLane = seedSource >= 0 && pk.pack[static_cast<std::size_t>(seedSource)] >= 0
                                         ? pk.lane[static_cast<std::size_t>(seedSource)]
                                         : 0;
                chunk[static_cast<std::size_t>(seedLane)] = seed;
                // fill all lanes, then keep the prefix of steps that saved most
                std::vector<std::pair<std::size_t, int>> steps;  // (member, lane)
                int bestSaving = 0;
                std::size_t bestSteps = 0;
                for (int filled = 1; filled < lanes; ++filled) {
                    int best = INT_MIN, bestMember = -1, bestLane = -1;
                    for (std::size_t c = first + 1; c < members.size() && c < first + 24; ++c) {
                        if (taken[c])
                            continue;
                        for (int l = 0; l < lanes; ++l) {
                            if (chunk[static_cast<std::size_t>(l)] >= 0)
                                continue;
                            chunk[static_cast<std::size_t>(l)] = members[c];
                            const int sv = saving(chunk);
                            chunk[static_cast<std::size_t>(l)] = -1;
                            if (sv > best) {
                                best = sv;
                                bestMember = static_cast<int>(c);
                                bestLane = l;
                            }
                        }
                    }
                    if (bestMember < 0)
                        break;
                    chunk[static_cast<std::size_t>(bestLane)] = members[static_cast<std::size_t>(bestMember)];
                    taken[static_cast<std::size_t>(bestMember)] = true;
                    steps.push_back({static_cast<std::size_t>(bestMember), bestLane});
                    if (best > bestSaving) {
                        bestSaving = best;
                        bestSteps = steps.size();
                    }
                }
                for (std::size_t i = bestSteps; i < steps.size(); ++i) {
                    taken[steps[i].first] = false;
                    chunk[static_cast<std::size_t>(steps[i].second)] = -1;
                }
                if (bestSteps == 0)
                    continue;
                const int index = static_cast<int>(pk.packs.size());
                pk.packs.push_back(chunk);
                for (int i = 0; i < lanes; ++i)
                    if (chunk[static_cast<std::size_t>(i)] >= 0) {
                        pk.pack[static_cast<std::size_t>(chunk[static_cast<std::size_t>(i)])] = index;
                        pk.lane[static_cast<std::size_t>(chunk[static_cast<std::size_t>(i)])] = i;
                    }
            }
        }
    }
    if (pk.packs.empty())
        return result;

    // ---- text ----
    std::ostringstream out;
    auto scalarValue = [&](int id) -> std::string {
        const Node& n = g.node(id);
        if (n.op == Op::Const)
            return literal(n.type, n.lane0);
        if (n.op == Op::Input)
            return "x[" + std::to_string(n.index) + "]";
        if (isFactor(g, id))  // the scale factor, converted where needed
            return n.op == Op::Param ? std::string("c") : std::string("static_cast<") + scalarName(n.type) + ">(c)";
        const int p = pk.pack[static_cast<std::size_t>(id)];
        if (p >= 0)
            return "kv::lane<" + std::to_string(pk.lane[static_cast<std::size_t>(id)]) + ">(p" + std::to_string(p) +
                   ")";
        return "t" + std::to_string(id);
    };
    auto permuteText = [&](int p, const std::vector<int>& src) {
        int selector = 0;
        for (int i = 0; i < lanes; ++i) {
            const int s = src[static_cast<std::size_t>(i)];
            const int from = s >= 0 && pk.pack[static_cast<std::size_t>(s)] == p ? pk.lane[static_cast<std::size_t>(s)] : i;
            selector |= from << (2 * i);
        }
        if (selector == 0xE4)
            return "p" + std::to_string(p);
        return "kv::permute4<" + std::to_string(selector) + ">(p" + std::to_string(p) + ")";
    };
    auto gatherText = [&](const std::vector<int>& src, Type type) -> std::string {
        const Packer::Plan pl = pk.plan(src);
        int any = -1;
        for (int s : src)
            if (s >= 0) {
                any = s;
                break;
            }
        const bool d = type == Type::F64;
        switch (pl.kind) {
        case Packer::Gather::InPlace: return "p" + std::to_string(pl.first);
        case Packer::Gather::Permute: return permuteText(pl.first, src);
        case Packer::Gather::Blend: {
            int mask = 0;
            for (int i = 0; i < lanes; ++i) {
                const int s = src[static_cast<std::size_t>(i)];
                if (s >= 0 && pk.pack[static_cast<std::size_t>(s)] == pl.second)
                    mask |= 1 << i;
            }
            return "kv::blend<" + std::to_string(mask) + ">(" + permuteText(pl.first, src) + ", " +
                   permuteText(pl.second, src) + ")";
        }
        case Packer::Gather::Load: return std::string(d ? "kv::load4d(x + " : "kv::load4f(x + ") + std::to_string(pl.first) + ")";
        case Packer::Gather::Broadcast: {
            const std::string f = g.node(any).op == Op::Param ? "c" : std::string("static_cast<") + scalarName(type) + ">(c)";
            return std::string(d ? "kv::set1d(" : "kv::set1f(") + f + ")";
        }
        case Packer::Gather::Constant:
        case Packer::Gather::Lanes: {
            std::string text = d ? "kv::set4d(" : "kv::set4(";
            for (int i = 0; i < lanes; ++i) {
                const int s = src[static_cast<std::size_t>(i)] >= 0 ? src[static_cast<std::size_t>(i)] : any;
                text += (i ? ", " : "") + scalarValue(s);
            }
            return text + ")";
        }
        }
        return "";
    };

    // scalar nodes in level order, packs after the scalars of their level's operands
    std::vector<std::vector<int>> scalarsByLevel(static_cast<std::size_t>(maxLevel + 1));
    std::vector<bool> readByScalar(static_cast<std::size_t>(size), false);
    for (int id = 0; id < size; ++id) {
        if (!live[static_cast<std::size_t>(id)] || pk.pack[static_cast<std::size_t>(id)] >= 0)
            continue;
        for (int o : {g.node(id).a, g.node(id).b})
            if (o >= 0)
                readByScalar[static_cast<std::size_t>(o)] = true;
    }
    for (int id = 0; id < size; ++id) {
        if (!live[static_cast<std::size_t>(id)] || pk.pack[static_cast<std::size_t>(id)] >= 0)
            continue;
        const Node& n = g.node(id);
        if (n.op == Op::Const || n.op == Op::Input || isFactor(g, id))  // read where they are used
            continue;
        scalarsByLevel[static_cast<std::size_t>(level[static_cast<std::size_t>(id)])].push_back(id);
    }
    std::vector<std::vector<int>> packsByLevel(static_cast<std::size_t>(maxLevel + 1));
    for (std::size_t p = 0; p < pk.packs.size(); ++p) {
        const int head = *std::max_element(pk.packs[p].begin(), pk.packs[p].end());
        packsByLevel[static_cast<std::size_t>(level[static_cast<std::size_t>(head)])].push_back(static_cast<int>(p));
    }
    std::set<std::pair<int, int>> extractions;
    int scalarOps = 0;
    for (int l = 0; l <= maxLevel; ++l) {
        for (int id : scalarsByLevel[static_cast<std::size_t>(l)]) {
            const Node& n = g.node(id);
            std::string expr;
            const std::string a = n.a >= 0 ? scalarValue(n.a) : "";
            const std::string b = n.b >= 0 ? scalarValue(n.b) : "";
            for (int o : {n.a, n.b})
                if (o >= 0 && pk.pack[static_cast<std::size_t>(o)] >= 0 && pk.lane[static_cast<std::size_t>(o)] != 0)
                    extractions.insert({pk.pack[static_cast<std::size_t>(o)], pk.lane[static_cast<std::size_t>(o)]});
            switch (n.op) {
            case Op::Input: expr = "x[" + std::to_string(n.index) + "]"; break;
            case Op::Param: expr = "c"; break;
            case Op::Add: expr = a + " + " + b; break;
            case Op::Sub: expr = a + " - " + b; break;
            case Op::Mul:
                expr = a + " * " + b;
                if (isFactor(g, n.b))
                    expr = "Scaled ? " + expr + " : " + a;
                break;
            case Op::Neg: expr = "-" + a; break;
            case Op::ZeroSub: expr = (n.type == Type::F32 ? "0.0f - " : "0.0 - ") + a; break;
            case Op::Widen: expr = "static_cast<double>(" + a + ")"; break;
            case Op::Narrow: expr = "static_cast<float>(" + a + ")"; break;
            default: throw std::logic_error("real packing: unexpected node");
            }
            if (n.op != Op::Param && !isFactor(g, id) && (n.op != Op::Input || readByScalar[static_cast<std::size_t>(id)]))
                scalarOps += n.op == Op::Input ? 1 : w.of(g, id);
            out << "    const " << scalarName(n.type) << " t" << id << " = " << expr << ";\n";
        }
        for (int p : packsByLevel[static_cast<std::size_t>(l)]) {
            const std::vector<int>& members = pk.packs[static_cast<std::size_t>(p)];
            const int head = *std::max_element(members.begin(), members.end());
            const Node& n = g.node(head);
            const Type operandType = n.op == Op::Widen ? Type::F32 : n.op == Op::Narrow ? Type::F64 : n.type;
            const std::string a = gatherText(operandsOf(members, false), operandType);
            cost += w.of(g, head, true) + pk.plan(operandsOf(members, false)).cost;
            std::string b;
            if (n.b >= 0) {
                b = gatherText(operandsOf(members, true), operandType);
                cost += pk.plan(operandsOf(members, true)).cost;
            }
            std::string expr;
            switch (n.op) {
            case Op::Add: expr = "kv::add(" + a + ", " + b + ")"; break;
            case Op::Sub: expr = "kv::sub(" + a + ", " + b + ")"; break;
            case Op::Mul:
                expr = "kv::mul(" + a + ", " + b + ")";
                if (isFactor(g, n.b))
                    expr = "Scaled ? " + expr + " : " + a;
                break;
            case Op::Neg: expr = "kv::neg(" + a + ")"; break;
            case Op::ZeroSub:
                expr = std::string(n.type == Type::F64 ? "kv::sub(kv::zero4d(), " : "kv::sub(kv::zero4(), ") + a + ")";
                break;
            case Op::Widen: expr = "kv::widen4(" + a + ")"; break;
            case Op::Narrow: expr = "kv::narrow4(" + a + ")"; break;
            default: throw std::logic_error("real packing: unexpected packed node");
            }
            out << "    const " << vectorName(n.type) << " p" << p << " = " << expr << ";\n";
        }
    }
    for (int id = 0; id < size; ++id)
        if (readByScalar[static_cast<std::size_t>(id)] && g.node(id).op == Op::Input)
            ++scalarOps;
    cost += scalarOps;
    for (const auto& e : extractions)
        cost += pk.moveWeight(e.first);

    // stores: a whole vector where its four lanes go to four neighbouring slots
    std::vector<bool> stored(stores.size(), false);
    std::map<int, int> slotOfStore;
    for (std::size_t i = 0; i < stores.size(); ++i) {
        const int p = pk.pack[static_cast<std::size_t>(stores[i])];
        if (p < 0 || stored[i])
            continue;
        const std::vector<int>& members = pk.packs[static_cast<std::size_t>(p)];
        if (pk.lane[static_cast<std::size_t>(stores[i])] != 0)
            continue;
        const int base = storeSlots[i];
        std::vector<std::size_t> which;
        for (int j = 0; j < lanes; ++j) {
            const int m = members[static_cast<std::size_t>(j)];
            for (std::size_t k = 0; k < stores.size() && m >= 0; ++k)
                if (!stored[k] && stores[k] == m && storeSlots[k] == base + j) {
                    which.push_back(k);
                    break;
                }
        }
        if (which.size() != static_cast<std::size_t>(lanes))
            continue;
        for (std::size_t k : which)
            stored[k] = true;
        out << "    " << (g.node(stores[i]).type == Type::F64 ? "kv::store4d(y + " : "kv::store4f(y + ") << base
            << ", p" << p << ");\n";
        ++cost;
    }
    for (std::size_t i = 0; i < stores.size(); ++i) {
        if (stored[i])
            continue;
        const int s = stores[i];
        out << "    y[" << storeSlots[i] << "] = " << scalarValue(s) << ";\n";
        cost += 1 + (pk.pack[static_cast<std::size_t>(s)] >= 0 && pk.lane[static_cast<std::size_t>(s)] != 0
                         ? pk.moveWeight(pk.pack[static_cast<std::size_t>(s)])
                         : 0);
    }
    result.cost = cost;
    result.text = out.str();
    return result;
}

}  // namespace

PackedBody packReal(const Graph& g, const std::vector<int>& stores, const std::vector<int>& storeSlots,
                    int inputLimit, const RealPacking& how)
{
    Weights w;
    w.scalarConversion = how.conversion;
    return packWith(g, stores, storeSlots, inputLimit, how.greedy, w);
}

bool searchRealPacking(const Graph& g, const std::vector<int>& stores, const std::vector<int>& storeSlots,
                       int inputLimit, RealPacking& chosen)
{
    const int conversion = scalarBodyCost(g, stores, g.liveSet(stores), Weights{1}) >= longKernel ? 3 : 2;
    bool found = false;
    int best = 0;
    for (bool greedy : {false, true}) {
        const PackedBody body = packReal(g, stores, storeSlots, inputLimit, {greedy, conversion});
        if (!body.text.empty() && body.cost < body.scalarCost && (!found || body.cost < best)) {
            found = true;
            best = body.cost;
            chosen = {greedy, conversion};
        }
    }
    return found;
}

}  // namespace gen::real
