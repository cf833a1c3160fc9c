// Call frame of the real DFT family: sizes, pointers, flags, scaling, round
// trips and the sign of negated zeros.
#include <gtest/gtest.h>

#include <climits>
#include <cstring>

#include "real_api.h"

namespace {

template <class T>
class RealFrame : public ::testing::Test {};
using SampleTypes = ::testing::Types<float, double>;
TYPED_TEST_SUITE(RealFrame, SampleTypes);

constexpr int32_t badFlags[] = {0, 3, 5, 6, 7, 9, 12, 15, 16, -1};

TYPED_TEST(RealFrame, BadLengthWinsOverEverything)
{
    using T = TypeParam;
    T buffer[80] = {};
    for (int32_t len : {0, 1, 65, -1, INT_MAX, INT_MIN})
        for (int layout : {CCS, Pack, Perm}) {
            EXPECT_EQ(RealApi<T>::forward[layout](nullptr, nullptr, len, 3), StatusBadSize);
            EXPECT_EQ(RealApi<T>::inverse[layout](buffer, buffer, len, ScaleNone), StatusBadSize);
        }
}

TYPED_TEST(RealFrame, NullBeatsBadFlagAndFailedCallsWriteNothing)
{
    using T = TypeParam;
    for (int n : {2, 3, 16, 47, 64})
        for (int layout : {CCS, Pack, Perm}) {
            std::vector<T> src(80, T(1)), dst(80, T(9));
            for (auto fn : {RealApi<T>::forward[layout], RealApi<T>::inverse[layout]}) {
                EXPECT_EQ(fn(nullptr, dst.data(), n, 3), StatusNullArg);
                EXPECT_EQ(fn(src.data(), nullptr, n, 3), StatusNullArg);
                for (int32_t flag : badFlags)
                    EXPECT_EQ(fn(src.data(), dst.data(), n, flag), StatusBadFlag) << flag;
            }
            for (T v : dst)
                EXPECT_EQ(v, T(9));
        }
}

TYPED_TEST(RealFrame, FactorOneFlagsGiveTheBitsOfScaleNone)
{
    using T = TypeParam;
    ref::Random rng(21);
    for (int n = 2; n <= 64; ++n)
        for (int layout : {CCS, Pack, Perm}) {
            const std::vector<T> x = rng.vector<T>(static_cast<std::size_t>(n + 2));
            std::vector<T> a(static_cast<std::size_t>(n + 2)), b(a.size());
            RealApi<T>::forward[layout](x.data(), a.data(), n, ScaleNone);
            RealApi<T>::forward[layout](x.data(), b.data(), n, ScaleInvByN);
            EXPECT_EQ(std::memcmp(a.data(), b.data(), sizeof(T) * a.size()), 0) << n;
            RealApi<T>::inverse[layout](x.data(), a.data(), n, ScaleNone);
            RealApi<T>::inverse[layout](x.data(), b.data(), n, ScaleFwdByN);
            EXPECT_EQ(std::memcmp(a.data(), b.data(), sizeof(T) * a.size()), 0) << n;
        }
}

TYPED_TEST(RealFrame, RoundTripsPerFlag)
{
    using T = TypeParam;
    ref::Random rng(22);
    const double eps = sizeof(T) == 4 ? 2e-6 : 4e-15;
    for (int n = 2; n <= 64; ++n)
        for (int layout : {CCS, Pack, Perm})
            for (int32_t flag : {ScaleFwdByN, ScaleInvByN, ScaleBySqrtN, ScaleNone}) {
                const std::vector<T> x = rng.vector<T>(static_cast<std::size_t>(n));
                std::vector<T> spectrum(static_cast<std::size_t>(n + 2)), y(static_cast<std::size_t>(n));
                ASSERT_EQ(RealApi<T>::forward[layout](x.data(), spectrum.data(), n, flag), StatusOk);
                ASSERT_EQ(RealApi<T>::inverse[layout](spectrum.data(), y.data(), n, flag), StatusOk);
                const double gain = flag == ScaleNone ? n : 1;
                for (int t = 0; t < n; ++t)
                    EXPECT_NEAR(y[static_cast<std::size_t>(t)], gain * x[static_cast<std::size_t>(t)], gain * eps * n)
                        << "length " << n << " flag " << flag;
            }
}

TYPED_TEST(RealFrame, SmallLengthsGiveTheirWorkedValues)
{
    using T = TypeParam;
    // N = 4 with x[1] = x[3] = 0: Im X[1] is a negated zero and must be +0.0
    const T x4[4] = {T(3), T(0), T(1), T(0)};
    T ccs[6];
    ASSERT_EQ(RealApi<T>::forward[CCS](x4, ccs, 4, ScaleNone), StatusOk);
    EXPECT_EQ(ccs[3], T(0));
    EXPECT_FALSE(std::signbit(ccs[3]));
    EXPECT_EQ(ccs[0], T(4));
    EXPECT_EQ(ccs[2], T(2));
    EXPECT_EQ(ccs[4], T(4));
    // N = 2: sum and difference, Pack == Perm
    const T x2[2] = {T(5), T(2)};
    T pack[2], perm[2];
    RealApi<T>::forward[Pack](x2, pack, 2, ScaleNone);
    RealApi<T>::forward[Perm](x2, perm, 2, ScaleNone);
    EXPECT_EQ(pack[0], T(7));
    EXPECT_EQ(pack[1], T(3));
    EXPECT_EQ(std::memcmp(pack, perm, sizeof pack), 0);
    // N = 4 Perm: R0 R2 R1 I1; an alternating signal puts N·c at the Nyquist slot
    const T alt[4] = {T(1), T(-1), T(1), T(-1)};
    T p4[4];
    RealApi<T>::forward[Perm](alt, p4, 4, ScaleNone);
    EXPECT_EQ(p4[1], T(4));
    // inverse N = 4: y = (R0 + R2 + 2 R1, R0 - R2 - 2 I1, R0 + R2 - 2 R1, R0 - R2 + 2 I1)
    const T u[4] = {T(1), T(2), T(3), T(4)};  // Pack: R0 R1 I1 R2
    T y[4];
    RealApi<T>::inverse[Pack](u, y, 4, ScaleNone);
    EXPECT_EQ(y[0], T(9));
    EXPECT_EQ(y[1], T(-9));
    EXPECT_EQ(y[2], T(1));
    EXPECT_EQ(y[3], T(3));
}

TEST(RealFrameKernels, FixedSizeEntryPointsMatchTheDispatchers)
{
    const float x[8] = {1, 2, 3, 4, 5, 6, 7, 8};
    float a[10], b[10];
    ASSERT_EQ(kvtgDFTFwd_RToCCS_8_32f(x, a, ScaleFwdByN), StatusOk);
    ASSERT_EQ(kvtgDFTFwd_RToCCS_32f(x, b, 8, ScaleFwdByN), StatusOk);
    EXPECT_EQ(std::memcmp(a, b, sizeof a), 0);
    const double xd[63] = {1, -2};
    double c[63], d[63];
    ASSERT_EQ(kvtgDFTInv_PermToR_63_64f(xd, c, ScaleInvByN), StatusOk);
    ASSERT_EQ(kvtgDFTInv_PermToR_64f(xd, d, 63, ScaleInvByN), StatusOk);
    EXPECT_EQ(std::memcmp(c, d, sizeof c), 0);
    EXPECT_EQ(kvtgDFTFwd_RToPack_5_64f(nullptr, d, 77), StatusNullArg);
}

}  // namespace
