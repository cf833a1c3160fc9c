// The DCT-IV transform through a plan, against a plain long double evaluation.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <vector>

#include "dct4/env.h"
#include "dct4_api.h"
#include "guarded.h"
#include "kvtgen.h"
#include "reference.h"

namespace {

constexpr long double pi = 3.141592653589793238462643383279502884L;

std::vector<long double> referenceDct4(const std::vector<long double>& x)
{
    const std::size_t n = x.size();
    std::vector<long double> y(n);
    for (std::size_t k = 0; k < n; ++k) {
        long double sum = 0;
        for (std::size_t i = 0; i < n; ++i)
            sum += x[i] * cosl(pi / n * (i + 0.5L) * (k + 0.5L));
        y[k] = sum;
    }
    return y;
}


class DctBaseKernels : public testing::TestWithParam<int> {};

template <class T>
void checkKernel(int n)
{
    DctPlan* plan = nullptr;
    ASSERT_EQ(Dct<T>::alloc(&plan, n), StatusOk);
    const std::vector<T> x = ref::Random(static_cast<std::uint32_t>(n)).vector<T>(static_cast<std::size_t>(n));
    const std::vector<long double> exact = referenceDct4(std::vector<long double>(x.begin(), x.end()));
    const std::size_t count = static_cast<std::size_t>(n);
    for (std::size_t srcOffset : {std::size_t(0), sizeof(T)}) {
        for (std::size_t dstOffset : {std::size_t(0), 3 * sizeof(T)}) {
            Guarded<T> src(count, srcOffset), dst(count, dstOffset);
            std::memcpy(src.data(), x.data(), count * sizeof(T));
            ASSERT_EQ(Dct<T>::run(src.data(), dst.data(), plan), StatusOk);
            long double worst = 0;
            for (std::size_t k = 0; k < count; ++k)
                worst = std::max(worst, fabsl(dst[k] - exact[k]));
            EXPECT_LE(static_cast<double>(worst), (Dct<T>::epsilon * 7) * std::sqrt(n)) << "src+" << srcOffset << " dst+" << dstOffset;
            EXPECT_TRUE(dst.guardsIntact());
            // in place gives the same bits; twice gives N/2 times the input
            std::vector<T> once(dst.data(), dst.data() + count);
            ASSERT_EQ(Dct<T>::run(src.data(), src.data(), plan), StatusOk);
            EXPECT_EQ(std::memcmp(src.data(), once.data(), count * sizeof(T)), 0);
            ASSERT_EQ(Dct<T>::run(once.data(), dst.data(), plan), StatusOk);
            for (std::size_t k = 0; k < count; ++k)
                EXPECT_NEAR(dst[k], x[k] * n / 2, (Dct<T>::epsilon * 7) * n * 4);
        }
    }
    EXPECT_EQ(Dct<T>::release(plan), StatusOk);
}

TEST_P(DctBaseKernels, AgainstPlainEvaluation)
{
    checkKernel<float>(GetParam());
    checkKernel<double>(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Lengths2To32, DctBaseKernels, testing::Values(2, 4, 8, 16, 32));

TEST(DctEntry, TestsAndWorkedValues)
{
    DctPlan* plan = nullptr;
    ASSERT_EQ(kvtgDCT4InitAlloc_64f(&plan, 2), StatusOk);
    const double e0[2] = {1, 0}, e1[2] = {0, 1};
    double y[2];
    ASSERT_EQ(kvtgDCT4_64f(e0, y, plan), StatusOk);
    EXPECT_NEAR(y[0], cosl(pi / 8), 1e-16);
    EXPECT_NEAR(y[1], sinl(pi / 8), 1e-16);
    ASSERT_EQ(kvtgDCT4_64f(e1, y, plan), StatusOk);
    EXPECT_NEAR(y[0], sinl(pi / 8), 1e-16);
    EXPECT_NEAR(y[1], -cosl(pi / 8), 1e-16);
    EXPECT_EQ(kvtgDCT4_64f(nullptr, y, plan), StatusNullArg);
    EXPECT_EQ(kvtgDCT4_64f(e0, nullptr, plan), StatusNullArg);
    EXPECT_EQ(kvtgDCT4_64f(e0, y, nullptr), StatusNullArg);
    // a root whose rule is still 0 does not fit any call
    reinterpret_cast<dct4::Env1*>(plan)->rule = 0;
    y[0] = y[1] = 42;
    EXPECT_EQ(kvtgDCT4_64f(e0, y, plan), StatusBadArg);
    EXPECT_EQ(y[0], 42);
    reinterpret_cast<dct4::Env1*>(plan)->rule = 1;
    EXPECT_EQ(kvtgDCT4Free_64f(plan), StatusOk);
}

}  // namespace
