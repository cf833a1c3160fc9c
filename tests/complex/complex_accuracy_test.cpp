// Every complex kernel against a plain long double DFT.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "complex_cases.h"

using namespace cases;

namespace {

class ComplexAccuracy : public testing::TestWithParam<Param> {};

// An impulse at position j yields row j of the DFT matrix: each output is the
// coefficient of that input, which must lie within the family's bound.
template <class C>
void checkImpulses(const Family& family, int n)
{
    const auto transform = dispatcher<C>(family.inverse);
    double worst = 0;
    for (int j = 0; j < n; ++j) {
        std::vector<C> x(static_cast<std::size_t>(n)), y(static_cast<std::size_t>(n));
        x[static_cast<std::size_t>(j)].re = 1;
        ASSERT_EQ(transform(x.data(), y.data(), n, ScaleNone), StatusOk);
        for (int k = 0; k < n; ++k) {
            const ref::cplx exact = ref::root(1LL * j * k, n, family.sign());
            const ref::cplx got(y[static_cast<std::size_t>(k)].re, y[static_cast<std::size_t>(k)].im);
            const ref::cplx error = got - exact;
            worst = std::max({worst, static_cast<double>(std::fabs(error.real())), static_cast<double>(std::fabs(error.imag()))});
        }
    }
    EXPECT_LE(worst, bound(family.single, n)) << "largest coefficient error";
}

// Random input against the reference sum, error relative to the input's norm.
template <class C>
void checkRandom(const Family& family, int n)
{
    const auto transform = dispatcher<C>(family.inverse);
    const std::vector<C> x = randomSamples<C>(static_cast<std::size_t>(n), 1000u + static_cast<unsigned>(n));
    std::vector<C> y(static_cast<std::size_t>(n));
    ASSERT_EQ(transform(x.data(), y.data(), n, ScaleNone), StatusOk);
    std::vector<ref::cplx> wide(static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i)
        wide[static_cast<std::size_t>(i)] = {x[static_cast<std::size_t>(i)].re, x[static_cast<std::size_t>(i)].im};
    const std::vector<ref::cplx> exact = ref::dft(wide, family.sign());
    long double errorSq = 0, normSq = 0;
    for (int k = 0; k < n; ++k) {
        errorSq += std::norm(ref::cplx(y[static_cast<std::size_t>(k)].re, y[static_cast<std::size_t>(k)].im) - exact[static_cast<std::size_t>(k)]);
        normSq += std::norm(exact[static_cast<std::size_t>(k)]);
    }
    // each output sums N terms whose coefficients are within the bound
    EXPECT_LE(std::sqrt(static_cast<double>(errorSq / normSq)), bound(family.single) * 2);
}

TEST_P(ComplexAccuracy, ImpulseRowsMatchExactRoots)
{
    const Family& family = families[std::get<0>(GetParam())];
    const int n = std::get<1>(GetParam());
    withSampleType(family, [&](auto sample) { checkImpulses<decltype(sample)>(family, n); });
}

TEST_P(ComplexAccuracy, RandomInputMatchesLongDoubleDft)
{
    const Family& family = families[std::get<0>(GetParam())];
    const int n = std::get<1>(GetParam());
    withSampleType(family, [&](auto sample) { checkRandom<decltype(sample)>(family, n); });
}

INSTANTIATE_TEST_SUITE_P(AllKernels, ComplexAccuracy, testing::Combine(testing::Range(0, 4), testing::Range(2, 65)),
                         paramName);

}  // namespace
