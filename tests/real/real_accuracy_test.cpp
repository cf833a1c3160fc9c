// Real DFT kernels against the plain definition, layout agreement, in-place
// calls and the stored zeros of CCS.
#include <gtest/gtest.h>

#include <cstring>
#include <limits>

#include "guarded.h"
#include "real_api.h"

namespace {

template <class T>
class RealAccuracy : public ::testing::Test {};
using SampleTypes = ::testing::Types<float, double>;
TYPED_TEST_SUITE(RealAccuracy, SampleTypes);

// y[t] = R0 + 2 sum (Rk cos - Ik sin) + (-1)^t Rh for the values u.
std::vector<long double> plainInverse(const std::vector<long double>& u, int n)
{
    std::vector<long double> y(static_cast<std::size_t>(n));
    for (int t = 0; t < n; ++t) {
        long double s = u[0];
        for (int k = 1; 2 * k < n; ++k) {
            const ref::cplx w = ref::root(static_cast<long long>(t) * k, n, 1);
            s += 2 * (u[static_cast<std::size_t>(2 * k - 1)] * w.real() - u[static_cast<std::size_t>(2 * k)] * w.imag());
        }
        if (n % 2 == 0)
            s += (t % 2 ? -1 : 1) * u[static_cast<std::size_t>(n - 1)];
        y[static_cast<std::size_t>(t)] = s;
    }
    return y;
}

TYPED_TEST(RealAccuracy, ForwardImpulsesAndRandomInputMatchThePlainSum)
{
    using T = TypeParam;
    ref::Random rng(11);
    for (int n = 2; n <= 64; ++n)
        for (int layout : {CCS, Pack, Perm}) {
            long double worst = 0;
            for (int t = 0; t <= n; ++t) {  // t == n: a random input
                std::vector<T> x(static_cast<std::size_t>(n), T(0));
                if (t < n)
                    x[static_cast<std::size_t>(t)] = T(1);
                else
                    x = rng.vector<T>(static_cast<std::size_t>(n));
                std::vector<long double> xl(x.begin(), x.end());
                const std::vector<long double> want = plainHalfSpectrum(xl);
                std::vector<T> out(static_cast<std::size_t>(layoutSize(layout, n)));
                ASSERT_EQ(RealApi<T>::forward[layout](x.data(), out.data(), n, ScaleNone), StatusOk);
                const long double scale = t < n ? 1.0L : n;
                for (int j = 0; j < n; ++j)
                    worst = std::max(worst, std::fabs(out[static_cast<std::size_t>(layoutPosition(layout, n, j))] -
                                                      want[static_cast<std::size_t>(j)]) / scale);
            }
            EXPECT_LE(worst, RealApi<T>::tolerance) << "length " << n << " layout " << layout;
        }
}

TYPED_TEST(RealAccuracy, InverseImpulsesMatchThePlainSum)
{
    using T = TypeParam;
    for (int n = 2; n <= 64; ++n)
        for (int layout : {CCS, Pack, Perm}) {
            long double worst = 0;
            for (int j = 0; j < n; ++j) {
                std::vector<long double> u(static_cast<std::size_t>(n), 0.0L);
                u[static_cast<std::size_t>(j)] = 1;
                std::vector<T> in(static_cast<std::size_t>(layoutSize(layout, n)), T(0));
                in[static_cast<std::size_t>(layoutPosition(layout, n, j))] = T(1);
                std::vector<T> y(static_cast<std::size_t>(n));
                ASSERT_EQ(RealApi<T>::inverse[layout](in.data(), y.data(), n, ScaleNone), StatusOk);
                const std::vector<long double> want = plainInverse(u, n);
                for (int t = 0; t < n; ++t)
                    worst = std::max(worst, std::fabs(y[static_cast<std::size_t>(t)] - want[static_cast<std::size_t>(t)]));
            }
            EXPECT_LE(worst, 2 * RealApi<T>::tolerance) << "length " << n << " layout " << layout;
        }
}

TYPED_TEST(RealAccuracy, LayoutsHoldTheSameBitsAtTheirPositions)
{
    using T = TypeParam;
    ref::Random rng(12);
    for (int n = 2; n <= 64; ++n) {
        const std::vector<T> x = rng.vector<T>(static_cast<std::size_t>(n));
        std::vector<std::vector<T>> out(3);
        for (int layout : {CCS, Pack, Perm}) {
            out[layout].assign(static_cast<std::size_t>(layoutSize(layout, n)), T(7));
            ASSERT_EQ(RealApi<T>::forward[layout](x.data(), out[layout].data(), n, ScaleBySqrtN), StatusOk);
        }
        for (int j = 0; j < n; ++j)
            for (int layout : {Pack, Perm})
                EXPECT_EQ(std::memcmp(&out[CCS][static_cast<std::size_t>(layoutPosition(CCS, n, j))],
                                      &out[layout][static_cast<std::size_t>(layoutPosition(layout, n, j))], sizeof(T)),
                          0)
                    << "length " << n << " value " << j;
        if (n % 2 == 1 || n == 2) {
            EXPECT_EQ(std::memcmp(out[Pack].data(), out[Perm].data(), sizeof(T) * n), 0) << n;
        }
        // the inverse of each layout reads the same values
        std::vector<std::vector<T>> back(3, std::vector<T>(static_cast<std::size_t>(n)));
        for (int layout : {CCS, Pack, Perm})
            ASSERT_EQ(RealApi<T>::inverse[layout](out[layout].data(), back[layout].data(), n, ScaleBySqrtN), StatusOk);
        EXPECT_EQ(std::memcmp(back[CCS].data(), back[Pack].data(), sizeof(T) * n), 0) << n;
        EXPECT_EQ(std::memcmp(back[CCS].data(), back[Perm].data(), sizeof(T) * n), 0) << n;
    }
}

TYPED_TEST(RealAccuracy, InPlaceGivesTheSameBitsAndCcsInverseKeepsTheTail)
{
    using T = TypeParam;
    ref::Random rng(13);
    for (int n = 2; n <= 64; ++n)
        for (int layout : {CCS, Pack, Perm}) {
            const std::size_t size = static_cast<std::size_t>(layoutSize(layout, n));
            const std::vector<T> x = rng.vector<T>(static_cast<std::size_t>(n));
            std::vector<T> apart(size), inPlace(size);
            std::copy(x.begin(), x.end(), inPlace.begin());
            ASSERT_EQ(RealApi<T>::forward[layout](x.data(), apart.data(), n, ScaleFwdByN), StatusOk);
            ASSERT_EQ(RealApi<T>::forward[layout](inPlace.data(), inPlace.data(), n, ScaleFwdByN), StatusOk);
            EXPECT_EQ(std::memcmp(apart.data(), inPlace.data(), sizeof(T) * size), 0) << "forward " << n;

            std::vector<T> y(static_cast<std::size_t>(n));
            ASSERT_EQ(RealApi<T>::inverse[layout](apart.data(), y.data(), n, ScaleFwdByN), StatusOk);
            std::vector<T> spectrum = apart;
            ASSERT_EQ(RealApi<T>::inverse[layout](spectrum.data(), spectrum.data(), n, ScaleFwdByN), StatusOk);
            EXPECT_EQ(std::memcmp(y.data(), spectrum.data(), sizeof(T) * n), 0) << "inverse " << n;
            for (std::size_t i = static_cast<std::size_t>(n); i < size; ++i)
                EXPECT_EQ(std::memcmp(&spectrum[i], &apart[i], sizeof(T)), 0) << "tail of " << n;
        }
}

TYPED_TEST(RealAccuracy, CcsZerosStayPositiveAndTheInverseNeverReadsThem)
{
    using T = TypeParam;
    const T nan = std::numeric_limits<T>::quiet_NaN();
    ref::Random rng(14);
    for (int n = 2; n <= 64; ++n) {
        std::vector<T> x = rng.vector<T>(static_cast<std::size_t>(n));
        x[static_cast<std::size_t>(n / 2)] = nan;
        std::vector<T> out(static_cast<std::size_t>(layoutSize(CCS, n)), T(5));
        ASSERT_EQ(RealApi<T>::forward[CCS](x.data(), out.data(), n, ScaleNone), StatusOk);
        EXPECT_EQ(out[1], T(0));
        EXPECT_FALSE(std::signbit(out[1]));
        if (n % 2 == 0) {
            EXPECT_EQ(out[static_cast<std::size_t>(n + 1)], T(0));
            EXPECT_FALSE(std::signbit(out[static_cast<std::size_t>(n + 1)]));
        }
        EXPECT_TRUE(std::isnan(out[0]));

        std::vector<T> spectrum = rng.vector<T>(static_cast<std::size_t>(layoutSize(CCS, n)));
        spectrum[1] = 0;
        if (n % 2 == 0)
            spectrum[static_cast<std::size_t>(n + 1)] = 0;
        std::vector<T> clean(static_cast<std::size_t>(n)), dirty(static_cast<std::size_t>(n));
        ASSERT_EQ(RealApi<T>::inverse[CCS](spectrum.data(), clean.data(), n, ScaleInvByN), StatusOk);
        spectrum[1] = nan;
        if (n % 2 == 0)
            spectrum[static_cast<std::size_t>(n + 1)] = nan;
        ASSERT_EQ(RealApi<T>::inverse[CCS](spectrum.data(), dirty.data(), n, ScaleInvByN), StatusOk);
        EXPECT_EQ(std::memcmp(clean.data(), dirty.data(), sizeof(T) * n), 0) << n;
    }
}

TYPED_TEST(RealAccuracy, KernelsWriteTheirLayoutAndNothingBeyond)
{
    using T = TypeParam;
    ref::Random rng(15);
    for (int n = 2; n <= 64; ++n)
        for (int layout : {CCS, Pack, Perm}) {
            const std::vector<T> x = rng.vector<T>(static_cast<std::size_t>(n));
            Guarded<T> out(static_cast<std::size_t>(layoutSize(layout, n)), sizeof(T));
            ASSERT_EQ(RealApi<T>::forward[layout](x.data(), out.data(), n, ScaleNone), StatusOk);
            EXPECT_TRUE(out.guardsIntact()) << "forward " << n;
            Guarded<T> y(static_cast<std::size_t>(n), 8);
            ASSERT_EQ(RealApi<T>::inverse[layout](out.data(), y.data(), n, ScaleNone), StatusOk);
            EXPECT_TRUE(y.guardsIntact()) << "inverse " << n;
        }
}

}  // namespace
