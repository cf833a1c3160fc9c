// The text of a packed real kernel body, and its instructions: scalar
// statements and vector statements level by level, each pack after the
// scalars of its level, every operand vector gathered as its plan says
// (in place, by a permutation or a blend of packs, by a load, a broadcast or
// from single values), then the stores, a whole vector where its four lanes
// go to four neighbouring slots.  The instructions are counted as the text
// is written, so that the cost that decides for the body is that of the text.
#include <algorithm>
#include <map>
#include <set>
#include <sstream>
#include <stdexcept>

#include "real_packer.h"

namespace gen::real::packing {

namespace {

const char* vectorName(Type scalar) { return scalar == Type::F64 ? "kv::dwide" : "kv::fvec"; }
const char* scalarName(Type scalar) { return scalar == Type::F64 ? "double" : "float"; }

class BodyPrinter {
public:
    BodyPrinter(const Packer& pk, const Levels& levels, const std::vector<bool>& live, const Weights& w)
        : pk_(pk), g_(pk.g), levels_(levels), live_(live), w_(w)
    {
    }
    PrintedBody print(const std::vector<int>& stores, const std::vector<int>& storeSlots);

private:
    std::string scalarValue(int id) const;
    std::string permuteText(int p, const std::vector<int>& src) const;
    std::string gatherText(const std::vector<int>& src, Type type) const;
    void findScalarReads();
    void printScalar(int id);
    void printPack(int p);
    void printLevels();
    void printStores(const std::vector<int>& stores, const std::vector<int>& storeSlots);

    const Packer& pk_;
    const Graph& g_;
    const Levels& levels_;
    const std::vector<bool>& live_;
    const Weights& w_;
    std::ostringstream out_;
    int cost_ = 0;
    int scalarOps_ = 0;
    std::set<std::pair<int, int>> extractions_;  // lanes of packs read by scalar code
    std::vector<bool> readByScalar_;
};

std::string BodyPrinter::scalarValue(int id) const
{
    const Node& n = g_.node(id);
    if (n.op == Op::Const)
        return literal(n.type, n.lane0);
    if (n.op == Op::Input)
        return "x[" + std::to_string(n.index) + "]";
    if (isFactor(g_, id))  // the scale factor, converted where needed
        return n.op == Op::Param ? std::string("c") : std::string("static_cast<") + scalarName(n.type) + ">(c)";
    const int p = pk_.pack[static_cast<std::size_t>(id)];
    if (p >= 0)
        return "kv::lane<" + std::to_string(pk_.lane[static_cast<std::size_t>(id)]) + ">(p" + std::to_string(p) +
               ")";
    return "t" + std::to_string(id);
}

std::string BodyPrinter::permuteText(int p, const std::vector<int>& src) const
{
    int selector = 0;
    for (int i = 0; i < lanes; ++i) {
        const int s = src[static_cast<std::size_t>(i)];
        const int from = s >= 0 && pk_.pack[static_cast<std::size_t>(s)] == p ? pk_.lane[static_cast<std::size_t>(s)] : i;
        selector |= from << (2 * i);
    }
    if (selector == 0xE4)
        return "p" + std::to_string(p);
    return "kv::permute<" + std::to_string(selector) + ">(p" + std::to_string(p) + ")";
}

std::string BodyPrinter::gatherText(const std::vector<int>& src, Type type) const
{
    const Packer::Plan pl = pk_.plan(src);
    int any = -1;
    for (int s : src)
        if (s >= 0) {
            any = s;
            break;
        }
    switch (pl.kind) {
    case Packer::Gather::InPlace: return "p" + std::to_string(pl.first);
    case Packer::Gather::Permute: return permuteText(pl.first, src);
    case Packer::Gather::Blend: {
        int mask = 0;
        for (int i = 0; i < lanes; ++i) {
            const int s = src[static_cast<std::size_t>(i)];
            if (s >= 0 && pk_.pack[static_cast<std::size_t>(s)] == pl.second)
                mask |= 1 << i;
        }
        return "kv::blend<" + std::to_string(mask) + ">(" + permuteText(pl.first, src) + ", " +
               permuteText(pl.second, src) + ")";
    }
    case Packer::Gather::Load: return std::string("kv::load<") + vectorName(type) + ">(x + " + std::to_string(pl.first) + ")";
    case Packer::Gather::Broadcast: {
        const std::string f = g_.node(any).op == Op::Param ? "c" : std::string("static_cast<") + scalarName(type) + ">(c)";
        return std::string("kv::broadcast<") + vectorName(type) + ">(" + f + ")";
    }
    case Packer::Gather::Constant:
    case Packer::Gather::Lanes: {
        std::string text = std::string("kv::set<") + vectorName(type) + ">(";
        for (int i = 0; i < lanes; ++i) {
            const int s = src[static_cast<std::size_t>(i)] >= 0 ? src[static_cast<std::size_t>(i)] : any;
            text += (i ? ", " : "") + scalarValue(s);
        }
        return text + ")";
    }
    }
    return "";
}

// the values that scalar statements read
void BodyPrinter::findScalarReads()
{
    readByScalar_.assign(static_cast<std::size_t>(g_.size()), false);
    for (int id = 0; id < g_.size(); ++id) {
        if (!live_[static_cast<std::size_t>(id)] || pk_.pack[static_cast<std::size_t>(id)] >= 0)
            continue;
        for (int o : {g_.node(id).a, g_.node(id).b})
            if (o >= 0)
                readByScalar_[static_cast<std::size_t>(o)] = true;
    }
}

void BodyPrinter::printScalar(int id)
{
    const Node& n = g_.node(id);
    std::string expr;
    const std::string a = n.a >= 0 ? scalarValue(n.a) : "";
    const std::string b = n.b >= 0 ? scalarValue(n.b) : "";
    for (int o : {n.a, n.b})
        if (o >= 0 && pk_.pack[static_cast<std::size_t>(o)] >= 0 && pk_.lane[static_cast<std::size_t>(o)] != 0)
            extractions_.insert({pk_.pack[static_cast<std::size_t>(o)], pk_.lane[static_cast<std::size_t>(o)]});
    switch (n.op) {
    case Op::Input: expr = "x[" + std::to_string(n.index) + "]"; break;
    case Op::Param: expr = "c"; break;
    case Op::Add: expr = a + " + " + b; break;
    case Op::Sub: expr = a + " - " + b; break;
    case Op::Mul:
        expr = a + " * " + b;
        if (isFactor(g_, n.b))
            expr = "Scaled ? " + expr + " : " + a;
        break;
    case Op::Neg: expr = "-" + a; break;
    case Op::ZeroSub: expr = (n.type == Type::F32 ? "0.0f - " : "0.0 - ") + a; break;
    case Op::Widen: expr = "static_cast<double>(" + a + ")"; break;
    case Op::Narrow: expr = "static_cast<float>(" + a + ")"; break;
    default: throw std::logic_error("real packing: unexpected node");
    }
    if (n.op != Op::Param && !isFactor(g_, id) && (n.op != Op::Input || readByScalar_[static_cast<std::size_t>(id)]))
        scalarOps_ += n.op == Op::Input ? 1 : w_.of(g_, id);
    out_ << "    const " << scalarName(n.type) << " t" << id << " = " << expr << ";\n";
}

void BodyPrinter::printPack(int p)
{
    const std::vector<int>& members = pk_.packs[static_cast<std::size_t>(p)];
    const int head = *std::max_element(members.begin(), members.end());
    const Node& n = g_.node(head);
    const Type operandType = n.op == Op::Widen ? Type::F32 : n.op == Op::Narrow ? Type::F64 : n.type;
    const std::string a = gatherText(pk_.operandsOf(members, false), operandType);
    cost_ += w_.of(g_, head, true) + pk_.plan(pk_.operandsOf(members, false)).cost;
    std::string b;
    if (n.b >= 0) {
        b = gatherText(pk_.operandsOf(members, true), operandType);
        cost_ += pk_.plan(pk_.operandsOf(members, true)).cost;
    }
    std::string expr;
    switch (n.op) {
    case Op::Add: expr = "kv::add(" + a + ", " + b + ")"; break;
    case Op::Sub: expr = "kv::sub(" + a + ", " + b + ")"; break;
    case Op::Mul:
        expr = "kv::mul(" + a + ", " + b + ")";
        if (isFactor(g_, n.b))
            expr = "Scaled ? " + expr + " : " + a;
        break;
    case Op::Neg: expr = "kv::neg(" + a + ")"; break;
    case Op::ZeroSub:
        expr = std::string("kv::sub(kv::zero<") + vectorName(n.type) + ">(), " + a + ")";
        break;
    case Op::Widen: expr = "kv::toDouble(" + a + ")"; break;
    case Op::Narrow: expr = "kv::toFloat(" + a + ")"; break;
    default: throw std::logic_error("real packing: unexpected packed node");
    }
    out_ << "    const " << vectorName(n.type) << " p" << p << " = " << expr << ";\n";
}

// scalar nodes in level order, packs after the scalars of their level's operands
void BodyPrinter::printLevels()
{
    const int maxLevel = levels_.maxLevel;
    std::vector<std::vector<int>> scalarsByLevel(static_cast<std::size_t>(maxLevel + 1));
    for (int id = 0; id < g_.size(); ++id) {
        if (!live_[static_cast<std::size_t>(id)] || pk_.pack[static_cast<std::size_t>(id)] >= 0)
            continue;
        const Node& n = g_.node(id);
        if (n.op == Op::Const || n.op == Op::Input || isFactor(g_, id))  // read where they are used
            continue;
        scalarsByLevel[static_cast<std::size_t>(levels_.level[static_cast<std::size_t>(id)])].push_back(id);
    }
    std::vector<std::vector<int>> packsByLevel(static_cast<std::size_t>(maxLevel + 1));
    for (std::size_t p = 0; p < pk_.packs.size(); ++p) {
        const int head = *std::max_element(pk_.packs[p].begin(), pk_.packs[p].end());
        packsByLevel[static_cast<std::size_t>(levels_.level[static_cast<std::size_t>(head)])].push_back(static_cast<int>(p));
    }
    for (int l = 0; l <= maxLevel; ++l) {
        for (int id : scalarsByLevel[static_cast<std::size_t>(l)])
            printScalar(id);
        for (int p : packsByLevel[static_cast<std::size_t>(l)])
            printPack(p);
    }
}

// stores: a whole vector where its four lanes go to four neighbouring slots
void BodyPrinter::printStores(const std::vector<int>& stores, const std::vector<int>& storeSlots)
{
    std::vector<bool> stored(stores.size(), false);
    for (std::size_t i = 0; i < stores.size(); ++i) {
        const int p = pk_.pack[static_cast<std::size_t>(stores[i])];
        if (p < 0 || stored[i])
            continue;
        const std::vector<int>& members = pk_.packs[static_cast<std::size_t>(p)];
        if (pk_.lane[static_cast<std::size_t>(stores[i])] != 0)
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
        out_ << "    " << "kv::store(y + " << base
             << ", p" << p << ");\n";
        ++cost_;
    }
    for (std::size_t i = 0; i < stores.size(); ++i) {
        if (stored[i])
            continue;
        const int s = stores[i];
        out_ << "    y[" << storeSlots[i] << "] = " << scalarValue(s) << ";\n";
        cost_ += 1 + (pk_.pack[static_cast<std::size_t>(s)] >= 0 && pk_.lane[static_cast<std::size_t>(s)] != 0
                          ? pk_.moveWeight(pk_.pack[static_cast<std::size_t>(s)])
                          : 0);
    }
}

PrintedBody BodyPrinter::print(const std::vector<int>& stores, const std::vector<int>& storeSlots)
{
    findScalarReads();
    printLevels();
    for (int id = 0; id < g_.size(); ++id)
        if (readByScalar_[static_cast<std::size_t>(id)] && g_.node(id).op == Op::Input)
            ++scalarOps_;
    cost_ += scalarOps_;
    for (const auto& e : extractions_)
        cost_ += pk_.moveWeight(e.first);
    printStores(stores, storeSlots);
    return {out_.str(), cost_};
}

}  // namespace

PrintedBody printPacked(const Packer& pk, const Levels& levels, const std::vector<bool>& live,
                        const std::vector<int>& stores, const std::vector<int>& storeSlots, const Weights& w)
{
    BodyPrinter printer(pk, levels, live, w);
    return printer.print(stores, storeSlots);
}

}  // namespace gen::real::packing
