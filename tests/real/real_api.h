// Entry points of the real DFT and Hartley families per sample type, and the
// plain long double definitions they are held against.
#ifndef KVTG_TEST_REAL_API_H
#define KVTG_TEST_REAL_API_H

#include <cmath>
#include <cstdint>
#include <vector>

#include "kvtgen.h"
#include "reference.h"

enum LayoutIndex { CCS = 0, Pack = 1, Perm = 2 };

template <class T>
struct RealApi;

template <>
struct RealApi<float> {
    using Fn = Status (*)(const float*, float*, int32_t, int32_t);
    static constexpr Fn forward[3] = {kvtgDFTFwd_RToCCS_32f, kvtgDFTFwd_RToPack_32f, kvtgDFTFwd_RToPerm_32f};
    static constexpr Fn inverse[3] = {kvtgDFTInv_CCSToR_32f, kvtgDFTInv_PackToR_32f, kvtgDFTInv_PermToR_32f};
    static constexpr Fn hartley = kvtgHartley_32f;
    static constexpr long double tolerance = 4e-7L;  // per coefficient, inputs of magnitude 1
};

template <>
struct RealApi<double> {
    using Fn = Status (*)(const double*, double*, int32_t, int32_t);
    static constexpr Fn forward[3] = {kvtgDFTFwd_RToCCS_64f, kvtgDFTFwd_RToPack_64f, kvtgDFTFwd_RToPerm_64f};
    static constexpr Fn inverse[3] = {kvtgDFTInv_CCSToR_64f, kvtgDFTInv_PackToR_64f, kvtgDFTInv_PermToR_64f};
    static constexpr Fn hartley = kvtgHartley_64f;
    static constexpr long double tolerance = 4e-15L;
};

// Number of elements of a layout for length n.
inline int layoutSize(int layout, int n) { return layout == CCS ? (n % 2 == 0 ? n + 2 : n + 1) : n; }

// Position of the value j of the order R0, R1, I1, ..., Rh in a layout.
inline int layoutPosition(int layout, int n, int j)
{
    const bool nyquist = n % 2 == 0 && j == n - 1;
    if (layout == Pack || (layout == Perm && n % 2 != 0))
        return j;
    if (layout == CCS)
        return nyquist ? n : (j == 0 ? 0 : j + 1);
    return nyquist ? 1 : (j == 0 ? 0 : j + 1);
}

// R0, R1, I1, ..., Rh of the forward DFT (negative exponent) of x.
inline std::vector<long double> plainHalfSpectrum(const std::vector<long double>& x)
{
    const int n = static_cast<int>(x.size());
    std::vector<long double> u;
    for (int k = 0; 2 * k <= n; ++k) {
        ref::cplx sum = 0;
        for (int t = 0; t < n; ++t)
            sum += x[static_cast<std::size_t>(t)] * ref::root(static_cast<long long>(t) * k, n, -1);
        u.push_back(sum.real());
        if (k > 0 && 2 * k < n)
            u.push_back(sum.imag());
    }
    return u;
}

// H[k] = sum of x[n] * (cos + sin)(2 pi n k / N).
inline std::vector<long double> plainHartley(const std::vector<long double>& x)
{
    const int n = static_cast<int>(x.size());
    std::vector<long double> h(x.size());
    for (int k = 0; k < n; ++k)
        for (int t = 0; t < n; ++t) {
            const ref::cplx w = ref::root(static_cast<long long>(t) * k, n, 1);
            h[static_cast<std::size_t>(k)] += x[static_cast<std::size_t>(t)] * (w.real() + w.imag());
        }
    return h;
}

#endif
