// Two reports on the real flows, families of the generator that write no
// units: "real-counts" prints where the operation counts of the flows differ
// from the rule tables, "real-types" the arithmetic types of the forward
// Real32 kernels (additions and products per precision, widenings and
// narrowings), for the work on the tables and the lowering.
#include <cstdio>
#include <sstream>
#include <string>

#include "family.h"
#include "real_kernels.h"
#include "real_rules.h"

namespace gen::real {

namespace {

struct Mismatch {
    std::string what;
    int size;
    FlowCounts got;
    int wantMul, wantAdd, wantThird;
};

std::vector<Mismatch> countMismatches(int n, const KernelFlow& fwd, const KernelFlow& inv, const KernelFlow& har)
{
    std::vector<Mismatch> list;
    const ForwardRow& f = forwardRow(n);
    if (fwd.counts.multiplications != f.multiplications || fwd.counts.additions != f.additions ||
        fwd.counts.negations != f.negations)
        list.push_back({"forward", n, fwd.counts, f.multiplications, f.additions, f.negations});
    const InverseRow& i = inverseRow(n);
    if (inv.counts.multiplications != i.multiplications || inv.counts.additions != i.additions ||
        inv.counts.doublings != i.doublings || inv.counts.negations != 0)
        list.push_back({"inverse", n, inv.counts, i.multiplications, i.additions, i.doublings});
    const HartleyRow& h = hartleyRow(n);
    if (har.counts.multiplications != h.multiplications || har.counts.additions != h.additions ||
        har.counts.negations != 0)
        list.push_back({"Hartley", n, har.counts, h.multiplications, h.additions, 0});
    return list;
}

std::string mismatchReport()
{
    std::ostringstream out;
    int count = 0;
    for (int n = 2; n <= 64; ++n) {
        selfCheck(n);
        for (const Mismatch& m : countMismatches(n, forwardFlow(n), inverseFlow(n), hartleyFlow(n))) {
            ++count;
            out << m.what << " " << m.size << ": got " << m.got.multiplications << " mul " << m.got.additions
                << " add " << (m.what == "inverse" ? m.got.doublings : m.got.negations) << " "
                << (m.what == "inverse" ? "dbl" : "neg") << " (neg " << m.got.negations << "), table "
                << m.wantMul << " / " << m.wantAdd << " / " << m.wantThird << "\n";
        }
    }
    out << count << " rows differ\n";
    return out.str();
}

const FamilyRegistration realCounts("real-counts", [](const std::string&) {
    std::fputs(mismatchReport().c_str(), stdout);
});

// Arithmetic types of the forward Real32 kernels: additions (negations
// included) and products (scaling included) per type, widenings, narrowings.
const FamilyRegistration realTypes("real-types", [](const std::string&) {
    for (int n = 2; n <= 64; ++n) {
        std::vector<int> identity;
        for (int j = 0; j < n; ++j)
            identity.push_back(j);
        const Lowered low = lower(forwardFlow(n), identity, true);
        const std::vector<bool> live = low.graph.liveSet(low.stores);
        int add32 = 0, add64 = 0, mul32 = 0, mul64 = 0, widen = 0, narrow = 0;
        for (int id = 0; id < low.graph.size(); ++id) {
            if (!live[static_cast<std::size_t>(id)])
                continue;
            const Node& node = low.graph.node(id);
            const bool wide = node.type == Type::F64;
            switch (node.op) {
            case Op::Add:
            case Op::Sub:
            case Op::ZeroSub: (wide ? add64 : add32)++; break;
            case Op::Mul: (wide ? mul64 : mul32)++; break;
            case Op::Widen: ++widen; break;
            case Op::Narrow: ++narrow; break;
            default: break;
            }
        }
        std::printf("%2d %4d %4d %4d %4d %4d %4d\n", n, add32, add64, mul32, mul64, widen, narrow);
    }
});

}  // namespace

}  // namespace gen::real
