// The batched real DFT and Hartley kernels of the companion library: lanes
// across transforms.  A kernel is the scalar flow of the single call, lowered
// to its precision as the single call's is, and printed on vectors whose lane
// t holds transform t's value: every statement is the single call's IEEE
// operation in every lane, so that each transform of a batch gets the single
// call's bits.  The verifier runs the printed body on a different input per
// lane and holds each lane against the flow before the unit is written.
#include <algorithm>
#include <numeric>
#include <string>
#include <vector>

#include "batch_units.h"
#include "family.h"
#include "graph_eval.h"
#include "real_kernels.h"
#include "real_units.h"

namespace gen::real {

namespace {

// The kernel of the flow k: its loads read the elements `loadSlots` of a
// transform's input, its stores write the elements `storeSlots`, and the
// elements `zeroSlots` are exact zeros.
std::string batchUnit(const std::string& name, const std::string& what, const Precision& p, int n,
                      const KernelFlow& k, const std::vector<int>& loadSlots, const std::vector<int>& storeSlots,
                      const std::vector<int>& zeroSlots, const char* direction, int inputs)
{
    const Lowered low = lower(k, loadSlots, p.single);
    const int outputs = static_cast<int>(storeSlots.size() + zeroSlots.size());
    std::vector<int> stores(static_cast<std::size_t>(outputs), Graph::none);
    for (std::size_t i = 0; i < storeSlots.size(); ++i)
        stores[storeSlots[i]] = low.stores[i];
    // the elements of a transform's input, whether the flow reads them or not
    // (an inverse kernel does not read the zeros of a CCS spectrum)
    inputs = std::max(inputs, *std::max_element(loadSlots.begin(), loadSlots.end()) + 1);
    return batchKernelUnit(name, what, low.graph, stores, {p.single, p.single, 1, inputs, outputs},
                           [&](const std::vector<double>& x) {
                               const LaneEvaluator flow(low.graph, x, 0.375);
                               std::vector<double> y;
                               for (int s : stores)
                                   y.push_back(s == Graph::none ? 0.0 : flow.lanes(s)[0]);
                               return y;
                           },
                           direction, factorLiterals(p.type, n));
}

}  // namespace

void emitBatchReal(const std::string& dir)
{
    for (int n = 2; n <= 64; ++n) {
        const KernelFlow fwd = forwardFlow(n), inv = inverseFlow(n), hartley = hartleyFlow(n);
        std::vector<int> identity(static_cast<std::size_t>(n));
        std::iota(identity.begin(), identity.end(), 0);
        const std::string size = std::to_string(n);
        for (const Precision& p : precisions) {
            const std::string suffix = size + "_" + p.suffix, of = " of length " + size + ", " + p.sample;
            for (const LayoutInfo& l : layouts) {
                std::vector<int> slots, zeros;
                for (int j = 0; j < n; ++j)
                    slots.push_back(position(l.layout, n, j));
                if (l.layout == Layout::CCS)
                    zeros = n % 2 == 0 ? std::vector<int>{1, n + 1} : std::vector<int>{1};
                const std::string file = std::string(l.stem) + p.suffix + "_" + size + ".cpp";
                const std::string layout = std::string(", layout ") + l.stem;
                writeIfChanged(dir + "/pgenbatchdftfwd" + file,
                               batchUnit(std::string("batchDFTFwd_") + l.fwdName + "_" + suffix,
                                         "forward real DFT" + of + layout, p, n, fwd, identity, slots, zeros,
                                         "Forward", n));
                writeIfChanged(dir + "/pgenbatchdftinv" + file,
                               batchUnit(std::string("batchDFTInv_") + l.invName + "_" + suffix,
                                         "inverse real DFT" + of + layout, p, n, inv, slots, identity, {}, "Inverse",
                                         n + static_cast<int>(zeros.size())));
            }
            writeIfChanged(dir + "/pgenbatchhartley" + std::string(p.suffix) + "_" + size + ".cpp",
                           batchUnit("batchHartley_" + suffix, "Hartley transform" + of, p, n, hartley, identity,
                                     identity, {}, "Both", n));
        }
    }
    for (const Precision& p : precisions) {
        for (const LayoutInfo& l : layouts) {
            const std::string file = std::string(l.stem) + p.suffix + ".cpp";
            writeIfChanged(dir + "/pgenbatchdftfwd" + file,
                           batchTableUnit(std::string("batchDFTFwd_") + l.fwdName + "_", p.suffix, p.scalar));
            writeIfChanged(dir + "/pgenbatchdftinv" + file,
                           batchTableUnit(std::string("batchDFTInv_") + l.invName + "_", p.suffix, p.scalar));
        }
        writeIfChanged(dir + "/pgenbatchhartley" + std::string(p.suffix) + ".cpp",
                       batchTableUnit("batchHartley_", p.suffix, p.scalar));
    }
}

}  // namespace gen::real
