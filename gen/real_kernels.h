// The flows of the real DFT and Hartley kernels, one per length and
// direction, and their lowering to the operation graph of one precision.
//
// The forward flow of a length follows its row; the inverse flow is the
// transpose of the forward flow of the inverse row, with the middle bins
// doubled on the way in; a Hartley kernel adds one butterfly stage to the
// forward flow (on its outputs) or to the transposed flow (on its inputs).
#ifndef KVTGEN_REAL_KERNELS_H
#define KVTGEN_REAL_KERNELS_H

#include <vector>

#include "graph.h"
#include "real_flow.h"

namespace gen::real {

// Finished flows: their inputs are the loaded values, their outputs the
// values to store before scaling.
KernelFlow forwardFlow(int n);
KernelFlow inverseFlow(int n);
KernelFlow hartleyFlow(int n);
// Whether the Hartley kernel of length n adds its stage to the forward flow.
bool hartleyForward(int n);

// Checks the three flows of length n against the plain definitions in long
// double on random inputs; throws where one differs.
void selfCheck(int n);

// The flow in one precision: in Real32 kernels sums of samples stay Real32 and
// every product by a constant is Real64, with the additions of its expression,
// rounded once where the expression ends.  Returns the graph ids to store, per
// flow output, scaled (and negated where the flow left a negative value).
struct Lowered {
    Graph graph{false};
    std::vector<int> stores;
};

Lowered lower(const KernelFlow& k, const std::vector<int>& loadSlots, bool single);

// What the units of the real DFT and Hartley kernels share, single calls and
// batches: the order of a half spectrum in each layout's array, the two
// precisions and the names of the layouts.
// Position of value j of the order R0, R1, I1, ..., Rh in a layout's array.
enum class Layout { CCS, Pack, Perm };

inline int position(Layout layout, int n, int j)
{
    if (layout == Layout::Pack || (layout == Layout::Perm && n % 2 != 0))
        return j;
    if (n % 2 == 0 && j == n - 1)  // the Nyquist value
        return layout == Layout::CCS ? n : 1;
    return j == 0 ? 0 : j + 1;
}

struct Precision {
    bool single;
    const char* suffix;  // 32f / 64f
    const char* sample;  // Real32 / Real64
    const char* scalar;  // float / double
};
inline const Precision precisions[] = {{true, "32f", "Real32", "float"}, {false, "64f", "Real64", "double"}};

struct LayoutInfo {
    Layout layout;
    const char* fwdName;  // RToCCS
    const char* invName;  // CCSToR
    const char* stem;     // ccs
};
inline const LayoutInfo layouts[] = {{Layout::CCS, "RToCCS", "CCSToR", "ccs"},
                                     {Layout::Pack, "RToPack", "PackToR", "pack"},
                                     {Layout::Perm, "RToPerm", "PermToR", "perm"}};

}  // namespace gen::real

#endif
