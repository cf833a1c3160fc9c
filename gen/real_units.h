// What the units of the real DFT and Hartley kernels share, single calls and
// batches: the order of a half spectrum in each layout's array, the two
// precisions and the names of the layouts.
#ifndef KVTGEN_REAL_UNITS_H
#define KVTGEN_REAL_UNITS_H

namespace gen::real {

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
