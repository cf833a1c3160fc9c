// The real packing pass: the levels of the graph, the packs chosen on them,
// the text of a packed body and of its operand vectors, with their
// instructions counted as the text is written (so that the cost that chooses
// the packs and decides for the body is that of the text), and the search
// that decides whether a kernel takes the packed body.
#include "real_pack.h"

#include <algorithm>
#include <climits>
#include <map>
#include <set>
#include <sstream>
#include <stdexcept>
#include <tuple>

namespace gen::real {

namespace packing {

bool isFactor(const Graph& g, int id)
{
    const Node& n = g.node(id);
    return n.op == Op::Param || ((n.op == Op::Widen || n.op == Op::Narrow) && isFactor(g, n.a));
}

Packer::Packer(const Graph& graph, const std::vector<int>& stores, const std::vector<int>& storeSlots, int inputLimit,
               int scalarConversion)
    : g(graph), stores(stores), storeSlots(storeSlots), inputLimit(inputLimit), live(graph.liveSet(stores)),
      level(static_cast<std::size_t>(graph.size()), 0), position(static_cast<std::size_t>(graph.size()), INT_MAX),
      pack(static_cast<std::size_t>(graph.size()), -1), lane(static_cast<std::size_t>(graph.size()), -1),
      crossingMove(target().inOperations("move-across-halves")), scalarConversion(scalarConversion),
      vectorConversion(target().inOperations("conversion")), scalarCost(static_cast<int>(stores.size()))
{
    const auto size = static_cast<std::size_t>(g.size());
    for (std::size_t id = 0; id < size; ++id) {
        const Node& n = g.node(static_cast<int>(id));
        for (int o : {n.a, n.b})  // loads, constants and the scale factor have none
            if (live[id] && o >= 0)
                level[id] = std::max(level[id], level[static_cast<std::size_t>(o)] + 1);
        maxLevel = std::max(maxLevel, level[id]);
        if (live[id] && n.op != Op::Const && !isFactor(g, static_cast<int>(id)))
            scalarCost += weight(static_cast<int>(id));  // a load counts one
    }
    for (std::size_t i = 0; i < stores.size(); ++i)
        position[static_cast<std::size_t>(stores[i])] =
            std::min(position[static_cast<std::size_t>(stores[i])], storeSlots[i]);
    for (std::size_t id = size; id-- > 0;) {
        const Node& n = g.node(static_cast<int>(id));
        for (int o : {n.a, n.b})
            if (live[id] && o >= 0)
                position[static_cast<std::size_t>(o)] = std::min(position[static_cast<std::size_t>(o)], position[id]);
    }
}

namespace {

const char* vectorName(Type scalar) { return scalar == Type::F64 ? "kv::dwide" : "kv::fvec"; }
const char* scalarName(Type scalar) { return scalar == Type::F64 ? "double" : "float"; }

// The expression of an operation on scalars, or on vectors of its type; a
// product by the scale factor is made only where the kernel scales.
std::string expression(const Graph& g, const Node& n, const std::string& a, const std::string& b, bool vector)
{
    std::string e;
    switch (n.op) {
    case Op::Add: e = vector ? "kv::add(" + a + ", " + b + ")" : a + " + " + b; break;
    case Op::Sub: e = vector ? "kv::sub(" + a + ", " + b + ")" : a + " - " + b; break;
    case Op::Mul: e = vector ? "kv::mul(" + a + ", " + b + ")" : a + " * " + b; break;
    case Op::Neg: e = vector ? "kv::neg(" + a + ")" : "-" + a; break;
    case Op::ZeroSub:
        e = vector ? std::string("kv::sub(kv::zero<") + vectorName(n.type) + ">(), " + a + ")"
                   : (n.type == Type::F32 ? "0.0f - " : "0.0 - ") + a;
        break;
    case Op::Widen: e = (vector ? "kv::toDouble(" : "static_cast<double>(") + a + ")"; break;
    case Op::Narrow: e = (vector ? "kv::toFloat(" : "static_cast<float>(") + a + ")"; break;
    default: throw std::logic_error("real packing: unexpected node");
    }
    return n.op == Op::Mul && isFactor(g, n.b) ? "Scaled ? " + e + " : " + a : e;
}

// The stores, a whole vector where its four lanes go to four neighbouring
// slots (each slot is stored once); returns their instructions.
int printStores(const Packer& pk, std::ostream& out)
{
    const std::vector<int>& stores = pk.stores;
    const std::vector<int>& slots = pk.storeSlots;
    std::vector<bool> stored(stores.size(), false);
    int cost = 0;
    for (std::size_t i = 0; i < stores.size(); ++i) {
        const int p = pk.packOf(stores[i]);
        if (p < 0 || stored[i] || pk.laneOf(stores[i]) != 0)
            continue;
        const std::vector<int>& members = pk.packs[static_cast<std::size_t>(p)];
        std::vector<std::size_t> which;  // the stores of lane j to slots[i] + j
        for (std::size_t k = 0; k < stores.size(); ++k) {
            const int j = slots[k] - slots[i];
            if (j >= 0 && j < lanes && !stored[k] && stores[k] == members[static_cast<std::size_t>(j)])
                which.push_back(k);
        }
        if (which.size() != static_cast<std::size_t>(lanes))
            continue;
        for (std::size_t k : which)
            stored[k] = true;
        out << "    kv::store(y + " << slots[i] << ", p" << p << ");\n";
        ++cost;
    }
    for (std::size_t i = 0; i < stores.size(); ++i)
        if (!stored[i]) {
            out << "    y[" << slots[i] << "] = " << pk.scalarValue(stores[i]) << ";\n";
            cost += 1 + pk.extraction(stores[i]);
        }
    return cost;
}

}  // namespace

std::string Packer::scalarValue(int id) const
{
    const Node& n = g.node(id);
    if (n.op == Op::Const)
        return literal(n.type, n.lane0);
    if (n.op == Op::Input)
        return "x[" + std::to_string(n.index) + "]";
    if (isFactor(g, id))  // the scale factor, converted where needed
        return n.op == Op::Param ? std::string("c") : std::string("static_cast<") + scalarName(n.type) + ">(c)";
    if (packOf(id) >= 0)
        return "kv::lane<" + std::to_string(laneOf(id)) + ">(p" + std::to_string(packOf(id)) + ")";
    return "t" + std::to_string(id);
}

Packer::Code Packer::gather(const std::vector<int>& src, bool text) const
{
    std::vector<int> used;  // the operands of the used lanes
    std::set<int> sourcePacks;
    int from[lanes] = {-1, -1, -1, -1};  // the pack of each lane's operand, -1 for none
    int base = 0;  // inputs where lane i reads x[base + i]
    bool consecutive = true;
    for (int i = 0; i < lanes; ++i) {
        const int s = src[static_cast<std::size_t>(i)];
        if (s < 0)
            continue;
        from[i] = packOf(s);
        base = used.empty() ? g.node(s).index - i : base;
        consecutive = consecutive && g.node(s).op == Op::Input && g.node(s).index == base + i;
        used.push_back(s);
        if (packOf(s) >= 0)
            sourcePacks.insert(packOf(s));
    }
    const std::string vector = vectorName(g.node(used[0]).type);
    const auto all = [&](auto test) { return std::all_of(used.begin(), used.end(), test); };
    if (isFactor(g, used[0]) && all([&](int s) { return s == used[0]; }))
        return {0, text ? "kv::broadcast<" + vector + ">(" + scalarValue(used[0]) + ")" : ""};
    if (consecutive && base >= 0 && base + lanes <= inputLimit)  // one load, within the kernel's input
        return {1, text ? "kv::load<" + vector + ">(x + " + std::to_string(base) + ")" : ""};
    if (sourcePacks.size() <= 2 && all([&](int s) { return packOf(s) >= 0; })) {
        // pack q with the lanes that src takes from it put in place, a move
        // where any lane is not
        const auto permuted = [&](int q) {
            int selector = 0;
            for (int i = 0; i < lanes; ++i)
                selector |= (from[i] == q ? laneOf(src[static_cast<std::size_t>(i)]) : i) << (2 * i);
            const std::string name = text ? "p" + std::to_string(q) : "";
            if (selector == 0xE4)  // every lane in place
                return Code{0, name};
            return Code{moveWeight(q), text ? "kv::permute<" + std::to_string(selector) + ">(" + name + ")" : ""};
        };
        const int p = *sourcePacks.begin(), q = *sourcePacks.rbegin();
        if (p == q)
            return permuted(p);
        int mask = 0;  // the lanes taken from q
        for (int i = 0; i < lanes; ++i)
            mask |= from[i] == q ? 1 << i : 0;
        const Code low = permuted(p), high = permuted(q);
        return {1 + low.cost + high.cost,
                text ? "kv::blend<" + std::to_string(mask) + ">(" + low.text + ", " + high.text + ")" : ""};
    }
    // single values, lane by lane, an unused lane repeating the first used
    // one: an insertion each, after a move out of a packed lane or a load; or
    // a constant vector, one load
    std::string set = text ? "kv::set<" + vector + ">(" : "";
    for (int i = 0; i < lanes && text; ++i) {
        const int s = src[static_cast<std::size_t>(i)];
        set += (i ? ", " : "") + scalarValue(s >= 0 ? s : used[0]);
    }
    int cost = 0;
    for (int s : used)
        cost += 1 + extraction(s) + (g.node(s).op == Op::Input ? 1 : 0);
    return {all([&](int s) { return g.node(s).op == Op::Const; }) ? 1 : cost, text ? set + ")" : ""};
}

Packer::Code Packer::packed(const std::vector<int>& members, bool text) const
{
    // the members share their operation and type
    const Node& n = g.node(head(members));
    std::vector<int> a, b;  // the operands per lane
    for (int m : members) {
        a.push_back(m < 0 ? -1 : g.node(m).a);
        b.push_back(m < 0 ? -1 : g.node(m).b);
    }
    const Code first = gather(a, text), second = n.b >= 0 ? gather(b, text) : Code{0, ""};
    return {weight(head(members), true) + first.cost + second.cost,
            text ? expression(g, n, first.text, second.text, true) : ""};
}

// The scalar statements of each level, read where they are used (constants,
// inputs and the scale factor) left out, then the packs of that level, which
// were made level by level; then the stores.
PackedBody printPacked(const Packer& pk)
{
    const Graph& g = pk.g;
    std::ostringstream out;
    int cost = 0;
    std::set<int> read;  // the operands that scalar code has read
    std::size_t next = 0;  // the next pack to print
    for (int l = 0; l <= pk.maxLevel; ++l) {
        for (int id = 0; id < g.size(); ++id) {
            const Node& n = g.node(id);
            if (!pk.live[static_cast<std::size_t>(id)] || pk.packOf(id) >= 0 || pk.levelOf(id) != l ||
                n.op == Op::Const || n.op == Op::Input || isFactor(g, id))
                continue;
            // a scalar statement counts its operation, a load of each input it
            // is the first to read and a move out of each lane of a pack, but
            // the lowest, that scalar code is the first to read
            cost += pk.weight(id);
            for (int o : {n.a, n.b})
                if (o >= 0 && read.insert(o).second)
                    cost += (g.node(o).op == Op::Input ? 1 : 0) + pk.extraction(o);
            out << "    const " << scalarName(n.type) << " t" << id << " = "
                << expression(g, n, n.a >= 0 ? pk.scalarValue(n.a) : "", n.b >= 0 ? pk.scalarValue(n.b) : "", false)
                << ";\n";
        }
        for (; next < pk.packs.size() && pk.levelOf(Packer::head(pk.packs[next])) == l; ++next) {
            const Packer::Code code = pk.packed(pk.packs[next]);
            cost += code.cost;
            out << "    const " << vectorName(g.node(Packer::head(pk.packs[next])).type) << " p" << next << " = "
                << code.text << ";\n";
        }
    }
    cost += printStores(pk, out);
    return {out.str(), cost};
}

}  // namespace packing

using namespace packing;

namespace {

// Scalar operations (loads and stores included) from which a kernel counts as long.
constexpr int longKernel = 1000;

// instructions that a chunk saves against scalar code (none below two members)
int saving(const Packer& pk, const std::vector<int>& chunk)
{
    int scalar = 0, count = 0;
    for (int m : chunk)
        if (m >= 0) {
            scalar += pk.weight(m) + pk.extraction(pk.g.node(m).a) + pk.extraction(pk.g.node(m).b);
            ++count;
        }
    return count < 2 ? 0 : scalar - pk.packed(chunk, false).cost;
}

void addPack(Packer& pk, const std::vector<int>& chunk)
{
    for (int i = 0; i < lanes; ++i) {
        const int m = chunk[static_cast<std::size_t>(i)];
        if (m >= 0) {
            pk.pack[static_cast<std::size_t>(m)] = static_cast<int>(pk.packs.size());
            pk.lane[static_cast<std::size_t>(m)] = i;
        }
    }
    pk.packs.push_back(chunk);
}

// members whose operands sit side by side go into one vector in the order
// of those operands, so that gathering them is cheap
void sortByOperands(const Packer& pk, std::vector<int>& members)
{
    auto operandKey = [&](int o) {
        if (o < 0)
            return std::make_tuple(3, 0, 0);
        if (pk.packOf(o) >= 0)
            return std::make_tuple(0, pk.packOf(o), pk.laneOf(o));
        if (pk.g.node(o).op == Op::Input)
            return std::make_tuple(1, pk.g.node(o).index, 0);
        return std::make_tuple(2, pk.position[static_cast<std::size_t>(o)], o);
    };
    std::stable_sort(members.begin(), members.end(), [&](int x, int y) {
        return std::make_tuple(operandKey(pk.g.node(x).a), operandKey(pk.g.node(x).b)) <
               std::make_tuple(operandKey(pk.g.node(y).a), operandKey(pk.g.node(y).b));
    });
}

// chunks of four neighbours in the sorted order, each where it saves instructions
void packInOrder(Packer& pk, const std::vector<int>& members)
{
    for (std::size_t start = 0; start < members.size(); start += lanes) {
        std::vector<int> chunk(lanes, -1);
        for (std::size_t i = start; i < members.size() && i < start + lanes; ++i)
            chunk[i - start] = members[i];
        if (saving(pk, chunk) > 0)
            addPack(pk, chunk);
    }
}

// Chunks grown greedily, each seeded by the next member not taken, in the
// lane of its first operand where that is packed: all lanes filled step
// by step, each step adding the member and lane that save most, then cut
// back to the prefix of steps that saved most; dropped where none saved.
void packGreedily(Packer& pk, const std::vector<int>& members)
{
    std::vector<bool> taken(members.size(), false);
    for (std::size_t first = 0; first < members.size(); ++first) {
        if (taken[first])
            continue;
        taken[first] = true;
        std::vector<int> chunk(lanes, -1), bestChunk;
        chunk[static_cast<std::size_t>(std::max(pk.laneOf(pk.g.node(members[first]).a), 0))] = members[first];
        std::vector<std::size_t> added;  // the members added, step by step
        int bestSaving = 0;
        for (int filled = 1; filled < lanes; ++filled) {
            // of the next few members not taken, the one and the free lane
            // that save most
            struct {
                int saving = INT_MIN, lane = -1;
                std::size_t member = 0;
            } step;
            for (std::size_t c = first + 1; c < members.size() && c < first + 24; ++c)
                for (int l = 0; l < lanes && !taken[c]; ++l) {
                    int& slot = chunk[static_cast<std::size_t>(l)];
                    if (slot >= 0)
                        continue;
                    slot = members[c];
                    const int sv = saving(pk, chunk);
                    slot = -1;
                    if (sv > step.saving)
                        step = {sv, l, c};
                }
            if (step.lane < 0)
                break;
            chunk[static_cast<std::size_t>(step.lane)] = members[step.member];
            taken[step.member] = true;
            added.push_back(step.member);
            if (step.saving > bestSaving) {
                bestSaving = step.saving;
                bestChunk = chunk;
            }
        }
        // the members of the steps cut back are free again
        for (std::size_t c : added)
            if (std::find(bestChunk.begin(), bestChunk.end(), members[c]) == bestChunk.end())
                taken[c] = false;
        if (!bestChunk.empty())
            addPack(pk, bestChunk);
    }
}

// Groups the live operations (a vector does every one of a real flow lane by
// lane) into packs (in `pk`), in buckets of one level, operation, type and
// kind of product, each bucket packed on its own, level after level: the
// operands of a later level see where the earlier packs put them.
void choosePacks(Packer& pk, bool greedy)
{
    const Graph& g = pk.g;
    std::map<std::tuple<int, int, int, int>, std::vector<int>> buckets;
    for (int id = 0; id < g.size(); ++id) {
        const Node& n = g.node(id);
        if (!pk.live[static_cast<std::size_t>(id)] || n.op == Op::Input || n.op == Op::Const || isFactor(g, id))
            continue;
        // products: by a constant (1), by the scale factor (2), by a value (3)
        const int kind = n.op != Op::Mul ? 0 : g.node(n.b).op == Op::Const ? 1 : isFactor(g, n.b) ? 2 : 3;
        buckets[{pk.levelOf(id), static_cast<int>(n.op), static_cast<int>(n.type), kind}].push_back(id);
    }
    for (auto& [key, members] : buckets) {
        sortByOperands(pk, members);
        if (greedy)
            packGreedily(pk, members);
        else
            packInOrder(pk, members);
    }
}

}  // namespace

PackedBody packReal(const Graph& g, const std::vector<int>& stores, const std::vector<int>& storeSlots,
                    int inputLimit, const RealPacking& how)
{
    Packer pk(g, stores, storeSlots, inputLimit, how.conversion);
    choosePacks(pk, how.greedy);
    PackedBody body = pk.packs.empty() ? PackedBody{} : printPacked(pk);
    body.scalarCost = pk.scalarCost;
    return body;
}

bool searchRealPacking(const Graph& g, const std::vector<int>& stores, const std::vector<int>& storeSlots,
                       int inputLimit, RealPacking& chosen)
{
    const int conversion = Packer(g, stores, storeSlots, inputLimit, 1).scalarCost >= longKernel ? 3 : 2;
    int best = INT_MAX;
    for (bool greedy : {false, true}) {
        const PackedBody body = packReal(g, stores, storeSlots, inputLimit, {greedy, conversion});
        if (!body.text.empty() && body.cost < std::min(best, body.scalarCost)) {
            best = body.cost;
            chosen = {greedy, conversion};
        }
    }
    return best != INT_MAX;
}

}  // namespace gen::real
