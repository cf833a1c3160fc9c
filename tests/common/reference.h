// Independent references for the test suites: plain O(N^2) sums in long
// double, and reproducible random inputs.
#ifndef KVTG_TEST_REFERENCE_H
#define KVTG_TEST_REFERENCE_H

#include <cmath>
#include <complex>
#include <cstdint>
#include <random>
#include <vector>

namespace ref {

using cplx = std::complex<long double>;
constexpr long double pi = 3.141592653589793238462643383279502884L;

// exp(sign * 2*pi*i * k / n) with the argument reduced exactly first.
inline cplx root(long long k, long long n, int sign)
{
    k %= n;
    if (k < 0)
        k += n;
    const long double angle = 2 * pi * static_cast<long double>(k) / static_cast<long double>(n);
    return {cosl(angle), sign * sinl(angle)};
}

// y[k] = sum x[n] exp(sign*2*pi*i*n*k/N)
inline std::vector<cplx> dft(const std::vector<cplx>& x, int sign)
{
    const long long n = static_cast<long long>(x.size());
    std::vector<cplx> y(x.size());
    for (long long k = 0; k < n; ++k) {
        cplx sum = 0;
        for (long long j = 0; j < n; ++j)
            sum += x[static_cast<std::size_t>(j)] * root(j * k, n, sign);
        y[static_cast<std::size_t>(k)] = sum;
    }
    return y;
}

// Reproducible uniform numbers in [-1, 1).
class Random {
public:
    explicit Random(std::uint32_t seed) : engine_(seed) {}
    double next() { return std::uniform_real_distribution<double>(-1.0, 1.0)(engine_); }
    template <class T>
    std::vector<T> vector(std::size_t count)
    {
        std::vector<T> v(count);
        for (auto& x : v)
            x = static_cast<T>(next());
        return v;
    }

private:
    std::mt19937 engine_;
};

}  // namespace ref

#endif
