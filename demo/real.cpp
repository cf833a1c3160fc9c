// Real DFT round trips in the three layouts (forward with ScaleFwdByN, inverse
// with the same flag) and Hartley transforms against the plain cas sum.
#include <cmath>
#include <cstdio>
#include <random>
#include <vector>

#include "demo.h"
#include "kvtgen.h"

namespace {

using RealFn = Status (*)(const Real64*, Real64*, int32_t, int32_t);
using RealFn32 = Status (*)(const Real32*, Real32*, int32_t, int32_t);

template <class T, class Fn>
double roundTripError(const Fn (&forward)[3], const Fn (&inverse)[3])
{
    std::mt19937 engine(5);
    std::uniform_real_distribution<double> uniform(-1.0, 1.0);
    double worst = 0;
    for (int n = 2; n <= 64; ++n)
        for (int layout = 0; layout < 3; ++layout) {
            std::vector<T> x(static_cast<std::size_t>(n)), spectrum(static_cast<std::size_t>(n + 2)),
                y(static_cast<std::size_t>(n));
            for (T& v : x)
                v = static_cast<T>(uniform(engine));
            if (forward[layout](x.data(), spectrum.data(), n, ScaleFwdByN) != StatusOk ||
                inverse[layout](spectrum.data(), y.data(), n, ScaleFwdByN) != StatusOk)
                return INFINITY;
            for (int t = 0; t < n; ++t)
                worst = std::max(worst, static_cast<double>(std::fabs(y[static_cast<std::size_t>(t)] - x[static_cast<std::size_t>(t)])));
        }
    return worst;
}

template <class T>
double hartleyError(Status (*transform)(const T*, T*, int32_t, int32_t))
{
    const long double pi = 3.141592653589793238462643383279502884L;
    std::mt19937 engine(6);
    std::uniform_real_distribution<double> uniform(-1.0, 1.0);
    double worst = 0;
    for (int n = 2; n <= 64; ++n) {
        std::vector<T> x(static_cast<std::size_t>(n)), h(static_cast<std::size_t>(n));
        for (T& v : x)
            v = static_cast<T>(uniform(engine));
        if (transform(x.data(), h.data(), n, ScaleNone) != StatusOk)
            return INFINITY;
        for (int k = 0; k < n; ++k) {
            long double sum = 0;
            for (int t = 0; t < n; ++t) {
                const long double a = 2 * pi * ((t * k) % n) / n;
                sum += x[static_cast<std::size_t>(t)] * (std::cos(a) + std::sin(a));
            }
            worst = std::max(worst, static_cast<double>(std::fabs(sum - h[static_cast<std::size_t>(k)]) / n));
        }
    }
    return worst;
}

bool run()
{
    const RealFn32 f32[3] = {kvtgDFTFwd_RToCCS_32f, kvtgDFTFwd_RToPack_32f, kvtgDFTFwd_RToPerm_32f};
    const RealFn32 i32[3] = {kvtgDFTInv_CCSToR_32f, kvtgDFTInv_PackToR_32f, kvtgDFTInv_PermToR_32f};
    const RealFn f64[3] = {kvtgDFTFwd_RToCCS_64f, kvtgDFTFwd_RToPack_64f, kvtgDFTFwd_RToPerm_64f};
    const RealFn i64[3] = {kvtgDFTInv_CCSToR_64f, kvtgDFTInv_PackToR_64f, kvtgDFTInv_PermToR_64f};
    const double r32 = roundTripError<Real32>(f32, i32), r64 = roundTripError<Real64>(f64, i64);
    std::printf("real DFT, lengths 2..64, CCS/Pack/Perm: largest round-trip error\n");
    std::printf("  Real32 %.2e  Real64 %.2e\n", r32, r64);
    const double h32 = hartleyError<Real32>(kvtgHartley_32f), h64 = hartleyError<Real64>(kvtgHartley_64f);
    std::printf("Hartley, lengths 2..64: largest error relative to N\n");
    std::printf("  Real32 %.2e  Real64 %.2e\n", h32, h64);
    return r32 < 2e-6 && r64 < 4e-15 && h32 < 1e-7 && h64 < 1e-15;
}

const demo::Registration registration(20, "real", run);

}  // namespace
