// The general path of the DCT-IV (lengths from 64): against a plain long
// double evaluation up to 4096 and against FFTW's REDFT11 (which is twice the
// DCT-IV) up to 2^20; twice gives N/2 times the input; in place, misaligned,
// the 2^k+1 lengths, and two plans on two threads.
#include <gtest/gtest.h>
#include <fftw3.h>

#include <cmath>
#include <cstring>
#include <thread>
#include <vector>

#include "dct4_api.h"
#include "guarded.h"
#include "kvtgen.h"
#include "reference.h"

namespace {

constexpr long double pi = 3.141592653589793238462643383279502884L;

// y[k] = sum x[n] cos(pi (2n+1)(2k+1) / 4N), with the cosines of one table
std::vector<long double> plainDct4(const std::vector<long double>& x)
{
    const std::size_t n = x.size(), period = 8 * n;
    std::vector<long double> cosines(period);
    for (std::size_t m = 0; m < period; ++m)
        cosines[m] = cosl(2 * pi * m / period);
    std::vector<long double> y(n);
    for (std::size_t k = 0; k < n; ++k) {
        long double sum = 0;
        for (std::size_t i = 0; i < n; ++i)
            sum += x[i] * cosines[((2 * i + 1) * (2 * k + 1)) % period];
        y[k] = sum;
    }
    return y;
}

std::vector<long double> fftwDct4(const std::vector<long double>& x)
{
    const int n = static_cast<int>(x.size());
    std::vector<double> in(x.begin(), x.end()), out(x.size());
    fftw_plan plan = fftw_plan_r2r_1d(n, in.data(), out.data(), FFTW_REDFT11, FFTW_ESTIMATE);
    fftw_execute(plan);
    fftw_destroy_plan(plan);
    std::vector<long double> y(x.size());
    for (std::size_t k = 0; k < y.size(); ++k)
        y[k] = out[k] / 2;
    return y;
}


template <class T>
double relativeRms(const std::vector<T>& got, const std::vector<long double>& exact)
{
    long double error = 0, norm = 0;
    for (std::size_t k = 0; k < got.size(); ++k) {
        error += (got[k] - exact[k]) * (got[k] - exact[k]);
        norm += exact[k] * exact[k];
    }
    return static_cast<double>(sqrtl(error / norm));
}

class DctGeneral : public testing::TestWithParam<int> {};

template <class T>
void checkLength(int log2n)
{
    const int n = 1 << log2n;
    const std::size_t count = static_cast<std::size_t>(n);
    DctPlan* plan = nullptr;
    ASSERT_EQ(Dct<T>::alloc(&plan, n), StatusOk);
    const std::vector<T> x = ref::Random(static_cast<std::uint32_t>(log2n)).vector<T>(count);
    const std::vector<long double> wide(x.begin(), x.end());
    const std::vector<long double> exact = n <= 4096 ? plainDct4(wide) : fftwDct4(wide);
    // rounding grows with the number of stages
    const double bound = Dct<T>::epsilon * 3 * log2n + (n > 4096 ? 4e-16 * log2n : 0);
    std::vector<T> y(count);
    ASSERT_EQ(Dct<T>::run(x.data(), y.data(), plan), StatusOk);
    EXPECT_LE(relativeRms(y, exact), bound) << "N = " << n;
    // misaligned and in place give the same bits
    Guarded<T> src(count, sizeof(T)), dst(count, 3 * sizeof(T));
    std::memcpy(src.data(), x.data(), count * sizeof(T));
    ASSERT_EQ(Dct<T>::run(src.data(), dst.data(), plan), StatusOk);
    EXPECT_EQ(std::memcmp(dst.data(), y.data(), count * sizeof(T)), 0);
    EXPECT_TRUE(dst.guardsIntact());
    ASSERT_EQ(Dct<T>::run(src.data(), src.data(), plan), StatusOk);
    EXPECT_EQ(std::memcmp(src.data(), y.data(), count * sizeof(T)), 0);
    // twice: N/2 times the input
    std::vector<T> back(count);
    ASSERT_EQ(Dct<T>::run(y.data(), back.data(), plan), StatusOk);
    std::vector<long double> scaled(count);
    for (std::size_t i = 0; i < count; ++i)
        scaled[i] = x[i] * (n / 2.0L);
    EXPECT_LE(relativeRms(back, scaled), 2 * bound) << "N = " << n;
    EXPECT_EQ(Dct<T>::release(plan), StatusOk);
}

TEST_P(DctGeneral, AgreesWithTheDefinition)
{
    checkLength<float>(GetParam());
    checkLength<double>(GetParam());
}

INSTANTIATE_TEST_SUITE_P(PowersOfTwo, DctGeneral, testing::Range(6, 21));

// 2^k+1 lengths run and stay inside src, dst and the plan block.
template <class T>
void checkOddLength(int n)
{
    int32_t size = 0;
    ASSERT_EQ(Dct<T>::size(n, &size), StatusOk) << n;
    Guarded<uint8_t> block(static_cast<std::size_t>(size), 5);
    DctPlan* plan = nullptr;
    ASSERT_EQ(Dct<T>::init(&plan, n, block.data()), StatusOk) << n;
    Guarded<T> src(static_cast<std::size_t>(n)), dst(static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i)
        src[static_cast<std::size_t>(i)] = static_cast<T>(i % 7);
    EXPECT_EQ(Dct<T>::run(src.data(), dst.data(), plan), StatusOk) << n;
    EXPECT_TRUE(src.guardsIntact() && dst.guardsIntact() && block.guardsIntact()) << n;
}

// Up to 2^20+1, so that every way a composite stage has of moving its rows
// (in place, through the stack buffers, past the caches) meets these lengths.
TEST(DctOddLengths, RunInsideTheirArrays)
{
    for (int n = 33; n <= (1 << 20) + 1; n = 2 * n - 1)
        checkOddLength<float>(n);
    for (int n = 9; n <= (1 << 20) + 1; n = 2 * n - 1)
        checkOddLength<double>(n);
}

TEST(DctThreads, TwoPlansOnTwoThreads)
{
    const int n = 1 << 14;
    const std::vector<double> x = ref::Random(5).vector<double>(static_cast<std::size_t>(n));
    std::vector<double> expected(x.size());
    DctPlan* reference = nullptr;
    ASSERT_EQ(kvtgDCT4InitAlloc_64f(&reference, n), StatusOk);
    ASSERT_EQ(kvtgDCT4_64f(x.data(), expected.data(), reference), StatusOk);
    kvtgDCT4Free_64f(reference);
    int mismatches[2] = {0, 0};
    std::vector<std::thread> threads;
    for (int t = 0; t < 2; ++t)
        threads.emplace_back([&, t] {
            DctPlan* plan = nullptr;
            if (kvtgDCT4InitAlloc_64f(&plan, n) != StatusOk) {
                ++mismatches[t];
                return;
            }
            std::vector<double> y(x.size());
            for (int round = 0; round < 20; ++round) {
                kvtgDCT4_64f(x.data(), y.data(), plan);
                mismatches[t] += y != expected;
            }
            kvtgDCT4Free_64f(plan);
        });
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(mismatches[0] + mismatches[1], 0);
}

}  // namespace
