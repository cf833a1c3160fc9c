// The text of a packed real kernel body, and its instructions: scalar
// statements and vector statements level by level, each pack after the
// scalars of its level, every operand vector gathered as its plan says
// (in place, by a permutation or a blend of packs, by a load, a broadcast or
// from single values), then the stores, a whole vector where its four lanes
// go to four neighbouring slots.  The instructions are counted as the text
// is written, so that the cost that decides for the body is that of the text.
#include <algorithm>
#include <set>
#include <sstream>
#include <stdexcept>

#include "real_pack.h"

namespace gen::real::packing {

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

class BodyPrinter {
public:
    explicit BodyPrinter(const Packer& pk) : pk_(pk), g_(pk.g) {}

    // The scalar statements of each level, read where they are used
    // (constants, inputs and the scale factor) left out, then the packs of
    // that level, which were made level by level; then the stores.
    PackedBody print()
    {
        std::size_t next = 0;  // the next pack to print
        const auto levelOfNext = [&] {
            const std::vector<int>& members = pk_.packs[next];
            return pk_.level[static_cast<std::size_t>(*std::max_element(members.begin(), members.end()))];
        };
        for (int l = 0; l <= pk_.maxLevel; ++l) {
            for (int id = 0; id < g_.size(); ++id) {
                const Node& n = g_.node(id);
                if (pk_.live[static_cast<std::size_t>(id)] && pk_.packOf(id) < 0 &&
                    pk_.level[static_cast<std::size_t>(id)] == l && n.op != Op::Const && n.op != Op::Input &&
                    !isFactor(g_, id))
                    printScalar(id);
            }
            for (; next < pk_.packs.size() && levelOfNext() == l; ++next)
                printPack(static_cast<int>(next));
        }
        printStores();
        return {out_.str(), cost_};
    }

private:
    std::string scalarValue(int id) const
    {
        const Node& n = g_.node(id);
        if (n.op == Op::Const)
            return literal(n.type, n.lane0);
        if (n.op == Op::Input)
            return "x[" + std::to_string(n.index) + "]";
        if (isFactor(g_, id))  // the scale factor, converted where needed
            return n.op == Op::Param ? std::string("c") : std::string("static_cast<") + scalarName(n.type) + ">(c)";
        if (pk_.packOf(id) >= 0)
            return "kv::lane<" + std::to_string(pk_.laneOf(id)) + ">(p" + std::to_string(pk_.packOf(id)) + ")";
        return "t" + std::to_string(id);
    }

    std::string permuteText(int p, const std::vector<int>& src) const
    {
        const int selector = pk_.permutation(p, src);
        if (selector == Packer::inPlace)
            return "p" + std::to_string(p);
        return "kv::permute<" + std::to_string(selector) + ">(p" + std::to_string(p) + ")";
    }

    std::string gatherText(const std::vector<int>& src, Type type) const
    {
        const Packer::Plan pl = pk_.plan(src);
        const int any = *std::find_if(src.begin(), src.end(), [](int s) { return s >= 0; });
        switch (pl.kind) {
        case Packer::Gather::Permute: return permuteText(pl.first, src);
        case Packer::Gather::Blend: {
            int mask = 0;
            for (int i = 0; i < lanes; ++i) {
                const int s = src[static_cast<std::size_t>(i)];
                if (s >= 0 && pk_.packOf(s) == pl.second)
                    mask |= 1 << i;
            }
            return "kv::blend<" + std::to_string(mask) + ">(" + permuteText(pl.first, src) + ", " +
                   permuteText(pl.second, src) + ")";
        }
        case Packer::Gather::Load:
            return std::string("kv::load<") + vectorName(type) + ">(x + " + std::to_string(pl.first) + ")";
        case Packer::Gather::Broadcast:
            return std::string("kv::broadcast<") + vectorName(type) + ">(" + scalarValue(any) + ")";
        case Packer::Gather::Lanes: {
            std::string text = std::string("kv::set<") + vectorName(type) + ">(";
            for (int i = 0; i < lanes; ++i) {
                const int s = src[static_cast<std::size_t>(i)];
                text += (i ? ", " : "") + scalarValue(s >= 0 ? s : any);
            }
            return text + ")";
        }
        }
        return "";
    }

    // A scalar statement counts its operation, a load of each input it is the
    // first to read and a move out of each lane of a pack, but the lowest,
    // that scalar code is the first to read.
    void printScalar(int id)
    {
        const Node& n = g_.node(id);
        cost_ += pk_.w.of(g_, id);
        for (int o : {n.a, n.b}) {
            if (o >= 0 && g_.node(o).op == Op::Input && inputsRead_.insert(o).second)
                ++cost_;
            if (pk_.extracted(o) && extractions_.insert({pk_.packOf(o), pk_.laneOf(o)}).second)
                cost_ += pk_.moveWeight(pk_.packOf(o));
        }
        out_ << "    const " << scalarName(n.type) << " t" << id << " = "
             << expression(g_, n, n.a >= 0 ? scalarValue(n.a) : "", n.b >= 0 ? scalarValue(n.b) : "", false) << ";\n";
    }

    void printPack(int p)
    {
        const std::vector<int>& members = pk_.packs[static_cast<std::size_t>(p)];
        const Node& n = g_.node(*std::max_element(members.begin(), members.end()));
        // a conversion reads the other precision
        const Type operandType = n.op == Op::Widen ? Type::F32 : n.op == Op::Narrow ? Type::F64 : n.type;
        const std::string a = gatherText(pk_.operandsOf(members, false), operandType);
        const std::string b = n.b >= 0 ? gatherText(pk_.operandsOf(members, true), operandType) : "";
        cost_ += pk_.packedCost(members);
        out_ << "    const " << vectorName(n.type) << " p" << p << " = " << expression(g_, n, a, b, true) << ";\n";
    }

    // stores: a whole vector where its four lanes go to four neighbouring slots
    void printStores()
    {
        const std::vector<int>& stores = pk_.stores;
        const std::vector<int>& storeSlots = pk_.storeSlots;
        std::vector<bool> stored(stores.size(), false);
        for (std::size_t i = 0; i < stores.size(); ++i) {
            const int p = pk_.packOf(stores[i]);
            if (p < 0 || stored[i] || pk_.laneOf(stores[i]) != 0)
                continue;
            const int base = storeSlots[i];
            std::vector<std::size_t> which;  // the stores of the pack's lanes to base, base + 1, ...
            for (int j = 0; j < lanes; ++j) {
                const int m = pk_.packs[static_cast<std::size_t>(p)][static_cast<std::size_t>(j)];
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
            out_ << "    kv::store(y + " << base << ", p" << p << ");\n";
            ++cost_;
        }
        for (std::size_t i = 0; i < stores.size(); ++i)
            if (!stored[i]) {
                out_ << "    y[" << storeSlots[i] << "] = " << scalarValue(stores[i]) << ";\n";
                cost_ += 1 + pk_.extraction(stores[i]);
            }
    }

    const Packer& pk_;
    const Graph& g_;
    std::ostringstream out_;
    int cost_ = 0;
    std::set<int> inputsRead_;
    std::set<std::pair<int, int>> extractions_;  // lanes of packs read by scalar code
};

}  // namespace

PackedBody printPacked(const Packer& pk) { return BodyPrinter(pk).print(); }

}  // namespace gen::real::packing
