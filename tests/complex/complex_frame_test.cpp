// The call frame of the complex family: order of the tests, status values,
// the flag table and the promise that a failed call writes nothing.
#include <gtest/gtest.h>

#include <climits>
#include <cmath>

#include "complex_cases.h"

using namespace cases;

namespace {

template <class C>
void expectBadSizeWhatever(const Family& family, int32_t len)
{
    const auto transform = dispatcher<C>(family.inverse);
    C buffer[2] = {};
    EXPECT_EQ(transform(nullptr, nullptr, len, ScaleNone), StatusBadSize);
    EXPECT_EQ(transform(nullptr, buffer, len, 3), StatusBadSize);
    EXPECT_EQ(transform(buffer, buffer, len, -1), StatusBadSize);
    EXPECT_EQ(transform(buffer, buffer, len, ScaleNone), StatusBadSize);
}

TEST(ComplexFrame, BadLengthWinsOverEveryOtherFault)
{
    for (const Family& family : families) {
        for (int32_t len : {0, 1, 65, 66, 128, -1, -2, INT_MAX, INT_MIN}) {
            SCOPED_TRACE(std::string(family.name) + " len " + std::to_string(len));
            if (family.single)
                expectBadSizeWhatever<Complex32>(family, len);
            else
                expectBadSizeWhatever<Complex64>(family, len);
        }
    }
}

class ComplexFrame : public testing::TestWithParam<Param> {};

// Every failing call leaves dst exactly as it was.
template <class C>
void checkFailures(const Family& family, int n)
{
    const auto transform = dispatcher<C>(family.inverse);
    const std::vector<C> x = randomSamples<C>(static_cast<std::size_t>(n), 7);
    for (std::size_t dstOffset : {0u, 8u}) {
        Guarded<C> src(static_cast<std::size_t>(n)), dst(static_cast<std::size_t>(n), dstOffset, 0x5C);
        std::memcpy(src.data(), x.data(), x.size() * sizeof(C));
        std::memset(dst.data(), 0x5C, x.size() * sizeof(C));
        const std::vector<unsigned char> before(reinterpret_cast<unsigned char*>(dst.data()),
                                                reinterpret_cast<unsigned char*>(dst.data() + n));
        for (int32_t flag : {0, 3, 5, 6, 7, 9, 12, 15, 16, -1, INT_MIN})
            EXPECT_EQ(transform(src.data(), dst.data(), n, flag), StatusBadFlag) << "flag " << flag;
        // a null pointer wins over a bad flag, also when the other pointer is misaligned
        Guarded<C> misaligned(static_cast<std::size_t>(n), 8);
        for (int32_t flag : {int32_t(ScaleNone), int32_t(0), int32_t(-1)}) {
            EXPECT_EQ(transform(nullptr, dst.data(), n, flag), StatusNullArg);
            EXPECT_EQ(transform(src.data(), nullptr, n, flag), StatusNullArg);
            EXPECT_EQ(transform(nullptr, nullptr, n, flag), StatusNullArg);
            EXPECT_EQ(transform(misaligned.data(), nullptr, n, flag), StatusNullArg);
            EXPECT_EQ(transform(nullptr, misaligned.data(), n, flag), StatusNullArg);
        }
        EXPECT_EQ(std::memcmp(before.data(), dst.data(), before.size()), 0) << "a failed call wrote to dst";
        EXPECT_TRUE(dst.guardsIntact());
    }
}

// The factor of a flag is one last multiplication: y(flag) = y(none) * c, bit
// for bit, with c the nearest sample-precision value to 1/N or 1/sqrt(N).
template <class C>
void checkFlagFactors(const Family& family, int n)
{
    using T = decltype(C::re);
    const auto transform = dispatcher<C>(family.inverse);
    const std::vector<C> x = randomSamples<C>(static_cast<std::size_t>(n), 11);
    std::vector<C> plain(x.size()), scaled(x.size());
    ASSERT_EQ(transform(x.data(), plain.data(), n, ScaleNone), StatusOk);
    const T byN = static_cast<T>(1.0L / n), bySqrt = static_cast<T>(1.0L / std::sqrt(static_cast<long double>(n)));
    const struct {
        int32_t flag;
        T factor;
    } table[] = {{ScaleFwdByN, family.inverse ? T(1) : byN},
                 {ScaleInvByN, family.inverse ? byN : T(1)},
                 {ScaleBySqrtN, bySqrt},
                 {ScaleNone, T(1)}};
    for (const auto& row : table) {
        ASSERT_EQ(transform(x.data(), scaled.data(), n, row.flag), StatusOk);
        for (int k = 0; k < n; ++k) {
            const C& p = plain[static_cast<std::size_t>(k)];
            const C& s = scaled[static_cast<std::size_t>(k)];
            ASSERT_EQ(s.re, static_cast<T>(p.re * row.factor)) << "flag " << row.flag << " bin " << k;
            ASSERT_EQ(s.im, static_cast<T>(p.im * row.factor)) << "flag " << row.flag << " bin " << k;
        }
    }
}

// Forward then inverse with one flag returns the input, times N for ScaleNone.
template <class C>
void checkRoundTrips(int n, bool single)
{
    const auto forward = dispatcher<C>(false);
    const auto inverse = dispatcher<C>(true);
    const std::vector<C> x = randomSamples<C>(static_cast<std::size_t>(n), 13);
    std::vector<C> spectrum(x.size()), back(x.size());
    for (int32_t flag : {int32_t(ScaleFwdByN), int32_t(ScaleInvByN), int32_t(ScaleBySqrtN), int32_t(ScaleNone)}) {
        ASSERT_EQ(forward(x.data(), spectrum.data(), n, flag), StatusOk);
        ASSERT_EQ(inverse(spectrum.data(), back.data(), n, flag), StatusOk);
        const double gain = flag == ScaleNone ? n : 1;
        for (int k = 0; k < n; ++k) {
            EXPECT_NEAR(back[static_cast<std::size_t>(k)].re, gain * x[static_cast<std::size_t>(k)].re, 8 * gain * bound(single));
            EXPECT_NEAR(back[static_cast<std::size_t>(k)].im, gain * x[static_cast<std::size_t>(k)].im, 8 * gain * bound(single));
        }
    }
}

TEST_P(ComplexFrame, FailedCallsWriteNothingAndNullBeatsFlag)
{
    const Family& family = families[std::get<0>(GetParam())];
    const int n = std::get<1>(GetParam());
    withSampleType(family, [&](auto sample) { checkFailures<decltype(sample)>(family, n); });
}

TEST_P(ComplexFrame, EachFlagIsOneLastMultiplication)
{
    const Family& family = families[std::get<0>(GetParam())];
    const int n = std::get<1>(GetParam());
    withSampleType(family, [&](auto sample) { checkFlagFactors<decltype(sample)>(family, n); });
}

TEST_P(ComplexFrame, ForwardThenInverseRoundTripsPerFlag)
{
    const Family& family = families[std::get<0>(GetParam())];
    const int n = std::get<1>(GetParam());
    if (family.inverse)
        GTEST_SKIP() << "covered by the forward family";
    if (family.single)
        checkRoundTrips<Complex32>(n, true);
    else
        checkRoundTrips<Complex64>(n, false);
}

INSTANTIATE_TEST_SUITE_P(AllKernels, ComplexFrame, testing::Combine(testing::Range(0, 4), testing::Range(2, 65)),
                         paramName);

TEST(LibraryVersion, RecordAsBuilt)
{
    const LibVersion* v = kvtgenGetLibVersion();
    ASSERT_NE(v, nullptr);
    EXPECT_EQ(v, kvtgenGetLibVersion()) << "one static record";
    EXPECT_EQ(v->versionMajor, 6);
    EXPECT_EQ(v->versionMinor, 1);
    EXPECT_EQ(v->buildMajor, 137);
    EXPECT_EQ(v->buildMinor, 336) << "kept apart from the text's .56";
    EXPECT_EQ(std::memcmp(v->targetCode, "n8\0\0", 4), 0);
    EXPECT_STREQ(v->libraryName, "libkvtgenn8.so.6.1");
    EXPECT_STREQ(v->versionText, "6.1 build 137.56");
    EXPECT_STREQ(v->buildDateText, "Mar 17 2010");
    // the target code is the part of the name between "libkvtgen" and ".so"
    EXPECT_EQ(std::string(v->libraryName).substr(9, 2), std::string(v->targetCode));
    EXPECT_EQ(offsetof(LibVersion, targetCode), 16u);
    EXPECT_EQ(offsetof(LibVersion, libraryName), 24u);
}

}  // namespace
