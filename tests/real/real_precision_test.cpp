// Arithmetic types of the Real32 kernels, and the operation counts of every
// flow against the rule tables.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <set>
#include <utility>

#include "real_api.h"
#include "real_counts.h"

namespace {

// A direct-rule Real32 kernel: pair sums in Real32, every product and the sum of
// products in Real64, scaled in Real64 and rounded once.
std::vector<float> directRuleModel(const std::vector<float>& x, float s, bool wideProducts)
{
    const int n = static_cast<int>(x.size());
    std::vector<float> u{(x[0] + (x[1] + x[n - 1]))};
    for (int j = 2; j <= (n - 1) / 2; ++j)
        u[0] = u[0] + (x[j] + x[n - j]);
    u[0] = u[0] * s;
    for (int k = 1; k <= (n - 1) / 2; ++k) {
        double re = x[0], im = 0;
        float reNarrow = x[0], imNarrow = 0;
        for (int j = 1; j <= (n - 1) / 2; ++j) {
            const float e = x[j] + x[n - j], d = x[j] - x[n - j];
            const ref::cplx w = ref::root(static_cast<long long>(j) * k, n, 1);
            const double c = static_cast<double>(w.real()), sn = static_cast<double>(w.imag());
            re += static_cast<double>(e) * c;
            im -= static_cast<double>(d) * sn;
            reNarrow += e * static_cast<float>(c);
            imNarrow -= d * static_cast<float>(sn);
        }
        u.push_back(wideProducts ? static_cast<float>(re * s) : reNarrow * s);
        u.push_back(wideProducts ? static_cast<float>(im * s) : imNarrow * s);
    }
    return u;
}

TEST(RealPrecision, DirectRuleKernelsRoundTheirReal64ExpressionsOnce)
{
    ref::Random rng(31);
    for (int n : {3, 5, 7, 11}) {
        int differsFromAllFloat = 0;
        for (int trial = 0; trial < 200; ++trial) {
            const std::vector<float> x = rng.vector<float>(static_cast<std::size_t>(n));
            for (int32_t flag : {ScaleNone, ScaleFwdByN, ScaleBySqrtN}) {
                const float s = flag == ScaleNone ? 1.0f
                                : flag == ScaleFwdByN ? static_cast<float>(1.0 / n)
                                                      : static_cast<float>(1.0 / std::sqrt(static_cast<double>(n)));
                std::vector<float> out(static_cast<std::size_t>(n));
                ASSERT_EQ(kvtgDFTFwd_RToPack_32f(x.data(), out.data(), n, flag), StatusOk);
                const std::vector<float> want = directRuleModel(x, s, true);
                for (int j = 0; j < n; ++j)
                    EXPECT_EQ(out[static_cast<std::size_t>(j)], want[static_cast<std::size_t>(j)])
                        << "length " << n << " value " << j;
                if (directRuleModel(x, s, false) != want)
                    ++differsFromAllFloat;
            }
        }
        EXPECT_GT(differsFromAllFloat, 0) << n;
    }
    // samples 1, 0, 0: Re X[1] is exactly 1 and Im X[1] is +0.0
    const float x[3] = {1, 0, 0};
    float ccs[4];
    ASSERT_EQ(kvtgDFTFwd_RToCCS_3_32f(x, ccs, ScaleNone), StatusOk);
    EXPECT_EQ(ccs[2], 1.0f);
    EXPECT_EQ(ccs[3], 0.0f);
    EXPECT_FALSE(std::signbit(ccs[3]));
}

TEST(RealPrecision, LargeValuesDoNotOverflowInProducts)
{
    // inverse N = 3 multiplies I1 by 1.7320508075688772: 3e38 times that only
    // fits in a Real64 product, and the result scaled by 1/3 fits Real32 again
    const float u[3] = {0, 0, 3e38f};  // Pack: R0 R1 I1
    float y[3];
    ASSERT_EQ(kvtgDFTInv_PackToR_3_32f(u, y, ScaleInvByN), StatusOk);
    EXPECT_TRUE(std::isfinite(y[1]));
    EXPECT_NEAR(y[1], -1.7320508075688772 * 1e38, 1e32);
    EXPECT_NEAR(y[2], 1.7320508075688772 * 1e38, 1e32);
}

// Lengths whose generated flows differ from the counts of the rule tables, and
// why.  Every other length must match exactly.
//  - Rader steps whose synthesis runs on the inner tree of length L (13, 29,
//    37, 41, 53, 61 and the lengths built on them: 26, 39, 52, 58, 59): of the
//    two forms of each synthesis (the transposed transform of length h on the
//    tree with a factor 2 removed, or the transposed inner transform of length
//    L on half of its bins), the flow takes the one of fewer multiplications,
//    and for these lengths that is fewer than the tables count.  The tables'
//    numbers lie between the two forms and are reached by neither.
//  - Inverse 64 (and Hartley 64, its transposed form): 6 fewer
//    multiplications and 2 fewer additions than the table.
//  - Forward 31 and 62 (two 31-point steps): 2 and 4 more multiplications.
// Negations: the forward flows carry signs to the next addition wherever they
// can, so they need no more negations than the tables and often fewer; in
// Rader steps the count follows the synthesis and is not compared.
const std::set<int> raderDeviations = {13, 26, 29, 37, 39, 41, 52, 53, 58, 59, 61};
// Lengths with a Rader step somewhere in their forward tree.
const std::set<int> raderLengths = {13, 17, 19, 23, 26, 29, 31, 34, 37, 38, 39, 41, 43, 46, 47, 51, 52, 53, 57, 58, 59, 61, 62};
const std::set<int> otherDeviations = {31, 62, 64};

TEST(RealCounts, FlowsMatchTheRuleTablesWhereNoDeviationIsListed)
{
    for (const auto& r : kvtg_real_counts::rows) {
        if (raderDeviations.count(r.size) || otherDeviations.count(r.size))
            continue;
        EXPECT_EQ(r.fwdMul, r.tableFwdMul) << "forward " << r.size;
        EXPECT_EQ(r.fwdAdd, r.tableFwdAdd) << "forward " << r.size;
        EXPECT_EQ(r.invMul, r.tableInvMul) << "inverse " << r.size;
        EXPECT_EQ(r.invAdd, r.tableInvAdd) << "inverse " << r.size;
        EXPECT_EQ(r.invDbl, r.tableInvDbl) << "inverse " << r.size;
        EXPECT_EQ(r.hartMul, r.tableHartMul) << "Hartley " << r.size;
        EXPECT_EQ(r.hartAdd, r.tableHartAdd) << "Hartley " << r.size;
    }
}

TEST(RealCounts, RaderDeviationsAreSavingsOfMultiplications)
{
    for (const auto& r : kvtg_real_counts::rows) {
        if (!raderDeviations.count(r.size))
            continue;
        EXPECT_LT(r.fwdMul, r.tableFwdMul) << "forward " << r.size;
        EXPECT_LT(r.invMul, r.tableInvMul) << "inverse " << r.size;
        EXPECT_LT(r.hartMul, r.tableHartMul) << "Hartley " << r.size;
    }
}

TEST(RealCounts, InverseAndHartleyFlowsNeedNoNegationAndForwardNegationsNeverExceedTheTable)
{
    for (const auto& r : kvtg_real_counts::rows) {
        EXPECT_EQ(r.invNeg, 0) << r.size;
        EXPECT_EQ(r.hartNeg, 0) << r.size;
        if (!raderLengths.count(r.size)) {
            EXPECT_LE(r.fwdNeg, r.tableFwdNeg) << r.size;
        }
    }
}

}  // namespace
