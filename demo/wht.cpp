// Walsh-Hadamard: every order of both types against a plain O(N^2) sum of
// (-1)^popcount(n & k) x[n] in long double.
#include <bitset>
#include <cmath>
#include <cstdio>
#include <random>
#include <vector>

#include "demo.h"
#include "kvtgen.h"

namespace {

template <class T>
double worstError(Status (*transform)(const T*, T*, int32_t, int32_t, uint8_t*))
{
    std::mt19937 engine(3);
    std::uniform_real_distribution<double> uniform(-1.0, 1.0);
    double worst = 0;
    for (int order = 1; order <= 11; ++order) {
        const int n = 1 << order;
        std::vector<T> x(static_cast<std::size_t>(n)), y(static_cast<std::size_t>(n));
        for (T& v : x)
            v = static_cast<T>(uniform(engine));
        if (transform(x.data(), y.data(), order, ScaleNone, nullptr) != StatusOk)
            return INFINITY;
        for (int k = 0; k < n; ++k) {
            long double sum = 0;
            for (int j = 0; j < n; ++j)
                sum += (std::bitset<16>(static_cast<unsigned>(j & k)).count() % 2 ? -1.0L : 1.0L) * x[static_cast<std::size_t>(j)];
            worst = std::max(worst, static_cast<double>(std::fabs(sum - y[static_cast<std::size_t>(k)]) / std::sqrt(n)));
        }
    }
    return worst;
}

bool run()
{
    const double e32 = worstError<Real32>(kvtgWHT_32f), e64 = worstError<Real64>(kvtgWHT_64f);
    std::printf("Walsh-Hadamard, orders 1..11: largest error relative to sqrt(N)\n");
    std::printf("  Real32 %.2e  Real64 %.2e\n", e32, e64);
    return e32 < 1e-5 && e64 < 1e-13;
}

const demo::Registration registration(40, "wht", run);

}  // namespace
