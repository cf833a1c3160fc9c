// DCT-IV of 2^20 samples through a plan, both types, checked at 8 bins
// against the defining sum evaluated directly in long double.
#include <cmath>
#include <cstdio>
#include <random>
#include <vector>

#include "demo.h"
#include "kvtgen.h"

namespace {

template <class T>
double relativeError(Status (*alloc)(DctPlan**, int32_t), Status (*run)(const T*, T*, DctPlan*), Status (*release)(DctPlan*))
{
    const int n = 1 << 20;
    DctPlan* plan = nullptr;
    if (alloc(&plan, n) != StatusOk)
        return INFINITY;
    std::mt19937 engine(11);
    std::uniform_real_distribution<double> uniform(-1.0, 1.0);
    std::vector<T> x(static_cast<std::size_t>(n)), y(x.size());
    for (T& v : x)
        v = static_cast<T>(uniform(engine));
    const Status status = run(x.data(), y.data(), plan);
    release(plan);
    if (status != StatusOk)
        return INFINITY;
    const long double pi = 3.141592653589793238462643383279502884L;
    long double error = 0, norm = 0;
    for (int probe = 0; probe < 8; ++probe) {
        const int k = static_cast<int>(engine() % static_cast<unsigned>(n));
        long double sum = 0;
        for (int i = 0; i < n; ++i)
            sum += x[static_cast<std::size_t>(i)] * cosl(pi / n * (i + 0.5L) * (k + 0.5L));
        error += (y[static_cast<std::size_t>(k)] - sum) * (y[static_cast<std::size_t>(k)] - sum);
        norm += sum * sum;
    }
    return static_cast<double>(sqrtl(error / norm));
}

bool run()
{
    const double e32 = relativeError<Real32>(kvtgDCT4InitAlloc_32f, kvtgDCT4_32f, kvtgDCT4Free_32f);
    const double e64 = relativeError<Real64>(kvtgDCT4InitAlloc_64f, kvtgDCT4_64f, kvtgDCT4Free_64f);
    std::printf("DCT-IV, N = 2^20: relative RMS error at 8 bins against the direct sum\n");
    std::printf("  Real32 %.2e  Real64 %.2e\n", e32, e64);
    return e32 < 1e-5 && e64 < 1e-13;
}

const demo::Registration registration(50, "dct4", run);

}  // namespace
