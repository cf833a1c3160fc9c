// Two reports on the real flows, families of the generator that write no
// units: "real-counts" prints where the operation counts of the flows differ
// from the rule tables, "real-types" the arithmetic types of the forward
// Real32 kernels (additions and products per precision, widenings and
// narrowings), for the work on the tables and the lowering.
#include <cstdio>
#include <numeric>
#include <sstream>
#include <string>

#include "family.h"
#include "real_kernels.h"
#include "real_rules.h"

namespace gen::real {

namespace {

// One line per flow whose counts differ from its row of the rule tables; the
// third count is the doublings of an inverse flow (which has no negations)
// and the negations of the others.
std::string mismatchReport()
{
    std::ostringstream out;
    int count = 0;
    const auto row = [&](const char* what, int n, const FlowCounts& got, const RuleRow& want) {
        const bool inverse = std::string(what) == "inverse";
        const int third = inverse ? got.doublings : got.negations;
        if (got.multiplications == want.multiplications && got.additions == want.additions && third == want.third &&
            (!inverse || got.negations == 0))
            return;
        ++count;
        out << what << " " << n << ": got " << got.multiplications << " mul " << got.additions << " add " << third
            << (inverse ? " dbl" : " neg") << " (neg " << got.negations << "), table " << want.multiplications << " / "
            << want.additions << " / " << want.third << "\n";
    };
    for (int n = 2; n <= 64; ++n) {
        selfCheck(n);
        row("forward", n, forwardFlow(n).counts, forwardRow(n));
        row("inverse", n, inverseFlow(n).counts, inverseRow(n));
        row("Hartley", n, hartleyFlow(n).counts, {"", hartleyRow(n).multiplications, hartleyRow(n).additions, 0});
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
        std::vector<int> identity(static_cast<std::size_t>(n));
        std::iota(identity.begin(), identity.end(), 0);
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
