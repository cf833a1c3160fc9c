// Hartley kernels against the definition with cas = cos + sin.
#include <gtest/gtest.h>

#include <climits>
#include <cstring>

#include "real_api.h"

namespace {

template <class T>
class Hartley : public ::testing::Test {};
using SampleTypes = ::testing::Types<float, double>;
TYPED_TEST_SUITE(Hartley, SampleTypes);

TYPED_TEST(Hartley, ImpulsesAndRandomInputMatchTheDefinition)
{
    using T = TypeParam;
    ref::Random rng(41);
    for (int n = 2; n <= 64; ++n) {
        long double worst = 0;
        for (int t = 0; t <= n; ++t) {
            std::vector<T> x(static_cast<std::size_t>(n), T(0));
            if (t < n)
                x[static_cast<std::size_t>(t)] = T(1);
            else
                x = rng.vector<T>(static_cast<std::size_t>(n));
            const std::vector<long double> want = plainHartley(std::vector<long double>(x.begin(), x.end()));
            std::vector<T> h(static_cast<std::size_t>(n));
            ASSERT_EQ(RealApi<T>::hartley(x.data(), h.data(), n, ScaleNone), StatusOk);
            for (int k = 0; k < n; ++k)
                worst = std::max(worst, std::fabs(h[static_cast<std::size_t>(k)] - want[static_cast<std::size_t>(k)]) /
                                            (t < n ? 1 : n));
        }
        EXPECT_LE(worst, 2 * RealApi<T>::tolerance) << n;
    }
}

TYPED_TEST(Hartley, ImpulseAtOneShowsThePlusSignAndTheMiddleIsTheAlternatingSum)
{
    using T = TypeParam;
    ref::Random rng(42);
    for (int n = 3; n <= 64; ++n) {
        std::vector<T> x(static_cast<std::size_t>(n), T(0)), h(static_cast<std::size_t>(n));
        x[1] = T(1);
        ASSERT_EQ(RealApi<T>::hartley(x.data(), h.data(), n, ScaleNone), StatusOk);
        // k = 1 and k = N-1 differ by the sign of sin(2 pi / N): swapped with a minus sign
        const long double a = 2 * ref::pi / n;
        EXPECT_NEAR(h[1], cosl(a) + sinl(a), 1e-6) << n;
        EXPECT_NEAR(h[static_cast<std::size_t>(n - 1)], cosl(a) - sinl(a), 1e-6) << n;
        if (n % 2 == 0) {
            x = rng.vector<T>(static_cast<std::size_t>(n));
            ASSERT_EQ(RealApi<T>::hartley(x.data(), h.data(), n, ScaleFwdByN), StatusOk);
            long double alternating = 0;
            for (int t = 0; t < n; ++t)
                alternating += (t % 2 ? -1 : 1) * static_cast<long double>(x[static_cast<std::size_t>(t)]);
            EXPECT_NEAR(h[static_cast<std::size_t>(n / 2)], alternating / n, 4 * RealApi<T>::tolerance) << n;
        }
    }
}

TYPED_TEST(Hartley, FlagsInPlaceAndFrame)
{
    using T = TypeParam;
    ref::Random rng(43);
    for (int n = 2; n <= 64; ++n) {
        const std::vector<T> x = rng.vector<T>(static_cast<std::size_t>(n));
        std::vector<T> a(static_cast<std::size_t>(n)), b(a.size());
        // flags 1 and 2 both scale by 1/N, bit for bit
        ASSERT_EQ(RealApi<T>::hartley(x.data(), a.data(), n, ScaleFwdByN), StatusOk);
        ASSERT_EQ(RealApi<T>::hartley(x.data(), b.data(), n, ScaleInvByN), StatusOk);
        EXPECT_EQ(std::memcmp(a.data(), b.data(), sizeof(T) * a.size()), 0) << n;
        // src == dst
        b = x;
        ASSERT_EQ(RealApi<T>::hartley(b.data(), b.data(), n, ScaleFwdByN), StatusOk);
        EXPECT_EQ(std::memcmp(a.data(), b.data(), sizeof(T) * a.size()), 0) << n;
        // failed calls write nothing; null beats a bad flag
        std::vector<T> untouched(a.size(), T(3));
        EXPECT_EQ(RealApi<T>::hartley(x.data(), untouched.data(), n, 3), StatusBadFlag);
        EXPECT_EQ(RealApi<T>::hartley(nullptr, untouched.data(), n, 3), StatusNullArg);
        for (T v : untouched)
            EXPECT_EQ(v, T(3));
    }
    for (int32_t len : {0, 1, 65, -1, INT_MAX})
        EXPECT_EQ(RealApi<T>::hartley(nullptr, nullptr, len, 0), StatusBadSize);
}

TEST(HartleyRoundTrip, TwiceWithScaleBySqrtNReturnsTheInput)
{
    ref::Random rng(44);
    for (int n = 2; n <= 64; ++n) {
        const std::vector<double> x = rng.vector<double>(static_cast<std::size_t>(n));
        std::vector<double> h(x.size()), y(x.size());
        ASSERT_EQ(kvtgHartley_64f(x.data(), h.data(), n, ScaleBySqrtN), StatusOk);
        ASSERT_EQ(kvtgHartley_64f(h.data(), y.data(), n, ScaleBySqrtN), StatusOk);
        for (int t = 0; t < n; ++t)
            EXPECT_NEAR(y[static_cast<std::size_t>(t)], x[static_cast<std::size_t>(t)], 1e-14) << n;
    }
    const float x2[2] = {5, 2};
    float h2[2];
    ASSERT_EQ(kvtgHartley_2_32f(x2, h2, ScaleNone), StatusOk);
    EXPECT_EQ(h2[0], 7.0f);
    EXPECT_EQ(h2[1], 3.0f);
}

}  // namespace
