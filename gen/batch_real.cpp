// The batched real DFT and Hartley kernels of the companion library: lanes
// across transforms.  A kernel is the scalar flow of the single call, lowered
// to its precision as the single call's is, and printed on vectors whose lane
// t holds transform t's value: every statement is the single call's IEEE
// operation in every lane, so that each transform of a batch gets the single
// call's bits.  The verifier runs the printed body on a different input per
// lane and holds each lane against the flow before the unit is written.
#include <algorithm>
#include <string>
#include <vector>

#include "batch_units.h"
#include "family.h"
#include "graph_eval.h"
#include "real_kernels.h"
#include "real_units.h"

namespace gen::real {

namespace {

std::string batchUnit(const std::string& name, const std::string& title, const Precision& p, int n,
                      const KernelFlow& k, const std::vector<int>& loadSlots, const std::vector<int>& storeSlots,
                      const std::vector<int>& zeroSlots, const char* direction, int inputs)
{
    const Lowered low = lower(k, loadSlots, p.single);
    const int outputs = static_cast<int>(storeSlots.size() + zeroSlots.size());
    BatchBody body;
    body.stores.assign(static_cast<std::size_t>(outputs), Graph::none);
    for (std::size_t i = 0; i < storeSlots.size(); ++i)
        body.stores[static_cast<std::size_t>(storeSlots[i])] = low.stores[i];
    // the elements of a transform's input, whether the flow reads them or not
    // (an inverse kernel does not read the zeros of a CCS spectrum)
    inputs = std::max(inputs, *std::max_element(loadSlots.begin(), loadSlots.end()) + 1);
    const BatchShape shape{p.single, p.single, 1, inputs, outputs};
    body.text = printBatchBody(low.graph, body.stores, shape);
    verifyBatchBody(name, body.text, shape, [&](const std::vector<double>& x) {
        const LaneEvaluator flow(low.graph, x, 0.375);
        std::vector<double> y;
        for (int s : body.stores)
            y.push_back(s == Graph::none ? 0.0 : flow.lanes(s)[0]);
        return y;
    });
    return batchKernelUnit(name, title, body.text, shape, direction, factorLiterals(p.type, n));
}

}  // namespace

void emitBatchReal(const std::string& dir)
{
    for (int n = 2; n <= 64; ++n) {
        const KernelFlow fwd = forwardFlow(n), inv = inverseFlow(n), hartley = hartleyFlow(n);
        std::vector<int> identity;
        for (int j = 0; j < n; ++j)
            identity.push_back(j);
        const std::string size = std::to_string(n);
        for (const Precision& p : precisions) {
            const std::string suffix = size + "_" + p.suffix;
            for (const LayoutInfo& l : layouts) {
                std::vector<int> slots, zeros;
                for (int j = 0; j < n; ++j)
                    slots.push_back(position(l.layout, n, j));
                if (l.layout == Layout::CCS)
                    zeros = n % 2 == 0 ? std::vector<int>{1, n + 1} : std::vector<int>{1};
                writeIfChanged(dir + "/pgenbatchdftfwd" + l.stem + p.suffix + "_" + size + ".cpp",
                               batchUnit(std::string("batchDFTFwd_") + l.fwdName + "_" + suffix,
                                         "Batched forward real DFT of length " + size + ", " + p.sample + ", layout " +
                                             l.stem + ": lanes across transforms.",
                                         p, n, fwd, identity, slots, zeros, "Forward", n));
                writeIfChanged(dir + "/pgenbatchdftinv" + l.stem + p.suffix + "_" + size + ".cpp",
                               batchUnit(std::string("batchDFTInv_") + l.invName + "_" + suffix,
                                         "Batched inverse real DFT of length " + size + ", " + p.sample + ", layout " +
                                             l.stem + ": lanes across transforms.",
                                         p, n, inv, slots, identity, {}, "Inverse",
                                         static_cast<int>(slots.size() + zeros.size())));
            }
            writeIfChanged(dir + "/pgenbatchhartley" + std::string(p.suffix) + "_" + size + ".cpp",
                           batchUnit("batchHartley_" + suffix,
                                     "Batched Hartley transform of length " + size + ", " + p.sample +
                                         ": lanes across transforms.",
                                     p, n, hartley, identity, identity, {}, "Both", n));
        }
    }
    for (const Precision& p : precisions) {
        for (const LayoutInfo& l : layouts) {
            const std::string fwd = std::string("batchDFTFwd_") + l.fwdName + "_";
            const std::string inv = std::string("batchDFTInv_") + l.invName + "_";
            writeIfChanged(dir + "/pgenbatchdftfwd" + l.stem + p.suffix + ".cpp",
                           batchTableUnit(fwd + p.suffix, fwd, p.suffix, p.scalar));
            writeIfChanged(dir + "/pgenbatchdftinv" + l.stem + p.suffix + ".cpp",
                           batchTableUnit(inv + p.suffix, inv, p.suffix, p.scalar));
        }
        writeIfChanged(dir + "/pgenbatchhartley" + std::string(p.suffix) + ".cpp",
                       batchTableUnit(std::string("batchHartley_") + p.suffix, "batchHartley_", p.suffix, p.scalar));
    }
}

}  // namespace gen::real
