// Complex DFT: every length of both precisions and directions against a plain
// long double DFT; prints the largest error per family.
#include <cmath>
#include <complex>
#include <cstdio>
#include <random>
#include <vector>

#include "demo.h"
#include "kvtgen.h"

namespace {

template <class C>
using Dispatcher = Status (*)(const C*, C*, int32_t, int32_t);

template <class C>
double worstError(Dispatcher<C> transform, int sign)
{
    std::mt19937 engine(7);
    std::uniform_real_distribution<double> uniform(-1.0, 1.0);
    double worst = 0;
    for (int n = 2; n <= 64; ++n) {
        std::vector<C> x(static_cast<std::size_t>(n)), y(static_cast<std::size_t>(n));
        for (auto& v : x)
            v = {static_cast<decltype(v.re)>(uniform(engine)), static_cast<decltype(v.re)>(uniform(engine))};
        if (transform(x.data(), y.data(), n, ScaleNone) != StatusOk)
            return INFINITY;
        const long double pi = 3.141592653589793238462643383279502884L;
        for (int k = 0; k < n; ++k) {
            std::complex<long double> sum = 0;
            for (int j = 0; j < n; ++j) {
                const long double angle = 2 * pi * ((1LL * j * k) % n) / n;
                sum += std::complex<long double>(x[j].re, x[j].im) * std::complex<long double>(cosl(angle), sign * sinl(angle));
            }
            const double error = static_cast<double>(std::abs(sum - std::complex<long double>(y[k].re, y[k].im)) / n);
            worst = std::max(worst, error);
        }
    }
    return worst;
}

bool run()
{
    const double errors[4] = {
        worstError<Complex32>(kvtgDFTFwd_CToC_32fc, -1), worstError<Complex32>(kvtgDFTInv_CToC_32fc, 1),
        worstError<Complex64>(kvtgDFTFwd_CToC_64fc, -1), worstError<Complex64>(kvtgDFTInv_CToC_64fc, 1)};
    std::printf("complex DFT, lengths 2..64: largest error relative to N\n");
    std::printf("  Complex32 forward %.2e inverse %.2e\n", errors[0], errors[1]);
    std::printf("  Complex64 forward %.2e inverse %.2e\n", errors[2], errors[3]);
    return errors[0] < 1.7e-7 && errors[1] < 1.7e-7 && errors[2] < 9e-14 && errors[3] < 9e-14;
}

const demo::Registration registration(10, "complex", run);

}  // namespace
