// DCT-IV plans: sizes, accepted lengths, the block discipline, the allocator
// pair, and the twiddle tables at the positions that the compute stages read.
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstring>
#include <vector>

#include "counting_allocator.h"
#include "dct4/env.h"
#include "dct4/tables.h"
#include "dct4_api.h"
#include "guarded.h"
#include "kvtgen.h"

using namespace dct4;

namespace {

using Api32 = Dct<float>;
using Api64 = Dct<double>;

uint8_t* cursorOf(const uint8_t* block)
{
    uint8_t* c;
    std::memcpy(&c, block, sizeof c);
    return c;
}

TEST(DctPlanSizes, ReportedSizesOfTheTable)
{
    const struct {
        int32_t n, single, dual;
    } table[] = {{2, 256, 256},          {4, 256, 256},          {8, 256, 256},          {16, 256, 256},
                 {32, 256, 256},         {64, 1824, 2336},       {128, 2336, 3360},      {256, 3360, 5408},
                 {512, 5408, 9504},      {1024, 9504, 17696},    {2048, 17696, 34080},   {4096, 53056, 102208},
                 {8192, 104256, 202560}, {16384, 206400, 403008}, {32768, 411200, 804416}, {65536, 820288, 1606720},
                 {131072, 2165344, 4262496}, {1048576, 17303904, 34081120}, {33, 1600, 1856}, {65, 1856, 2368}};
    for (const auto& row : table) {
        int32_t s = 0, d = 0;
        EXPECT_EQ(kvtgDCT4GetSize_32f(row.n, &s), StatusOk) << row.n;
        EXPECT_EQ(kvtgDCT4GetSize_64f(row.n, &d), StatusOk) << row.n;
        EXPECT_EQ(s, row.single) << row.n;
        EXPECT_EQ(d, row.dual) << row.n;
    }
}

TEST(DctPlanSizes, AcceptedAndRejectedLengths)
{
    for (int32_t n : {1, 3, 5, 6, 7, 10, 12, 24, 48, 192, 0, -1, -64, INT_MIN, 100, 1 << 27}) {
        int32_t size = 4242;
        EXPECT_EQ(kvtgDCT4GetSize_32f(n, &size), StatusBadSize) << n;
        EXPECT_EQ(size, 4242) << "nothing stored for " << n;
    }
    int32_t size = 0;
    EXPECT_EQ(kvtgDCT4GetSize_32f(9, &size), StatusBadSize);
    EXPECT_EQ(kvtgDCT4GetSize_64f(9, &size), StatusOk);
    EXPECT_EQ(size, 1472);
    // the largest lengths, and the 32-bit wrap beyond them
    EXPECT_EQ(kvtgDCT4GetSize_32f(1 << 26, &size), StatusOk);
    EXPECT_EQ(size, 1375734400);
    EXPECT_EQ(kvtgDCT4GetSize_64f(1 << 25, &size), StatusOk);
    EXPECT_EQ(size, 1358957696);
    EXPECT_EQ(kvtgDCT4GetSize_64f(1 << 26, &size), StatusBadSize);
    EXPECT_EQ(kvtgDCT4GetSize_32f(1 << 30, &size), StatusOk);
    EXPECT_EQ(size, 536874912);
}

// A block of exactly the reported size inside guard bytes takes the whole plan.
template <class Api>
void checkBlockSuffices(int32_t n)
{
    int32_t size = 0;
    ASSERT_EQ(Api::size(n, &size), StatusOk) << n;
    for (std::size_t offset : {std::size_t(0), std::size_t(13)}) {
        Guarded<uint8_t> block(static_cast<std::size_t>(size), offset);
        DctPlan* plan = nullptr;
        ASSERT_EQ(Api::init(&plan, n, block.data()), StatusOk) << n;
        EXPECT_TRUE(block.guardsIntact()) << "plan of " << n << " outgrew its block";
        const auto root = reinterpret_cast<uintptr_t>(plan);
        EXPECT_EQ(root % 32, 0u);
        if (offset == 0) {
            EXPECT_EQ(reinterpret_cast<uint8_t*>(plan), block.data() + 64);
        }
    }
}

TEST(DctPlanBlocks, ReportedSizeCoversThePlan)
{
    for (int32_t n = 2; n <= (1 << 22); n *= 2) {
        checkBlockSuffices<Api32>(n);
        checkBlockSuffices<Api64>(n);
    }
    for (int32_t n = 33; n <= (1 << 16) + 1; n = 2 * n - 1) {
        checkBlockSuffices<Api32>(n);
        checkBlockSuffices<Api64>(n);
    }
    checkBlockSuffices<Api64>(9);
    checkBlockSuffices<Api64>(17);
}

TEST(DctPlanBlocks, LeafPlanFillsItsBlockAndRepeatsExactly)
{
    Guarded<uint8_t> block(256);
    DctPlan* plan = nullptr;
    ASSERT_EQ(kvtgDCT4Init_32f(&plan, 2, block.data()), StatusOk);
    EXPECT_EQ(cursorOf(block.data()), block.data() + 256) << "the block is used to its end";
    // a second plan in the same block is the same plan
    Guarded<uint8_t> other(53056);
    ASSERT_EQ(kvtgDCT4Init_32f(&plan, 4096, other.data()), StatusOk);
    const std::vector<uint8_t> first(other.data(), other.data() + 53056);
    ASSERT_EQ(kvtgDCT4Init_32f(&plan, 4096, other.data()), StatusOk);
    EXPECT_EQ(std::memcmp(first.data(), other.data(), first.size()), 0);
}

TEST(DctPlanBlocks, FailuresLeaveTheCallersPointer)
{
    std::vector<uint8_t> block(4096);
    DctPlan* const marker = reinterpret_cast<DctPlan*>(&block);
    for (int32_t n : {6, 12, 24, 0, -8}) {
        DctPlan* plan = marker;
        EXPECT_EQ(kvtgDCT4Init_32f(&plan, n, block.data()), StatusBadSize) << n;
        EXPECT_EQ(plan, marker);
    }
    DctPlan* plan = marker;
    EXPECT_EQ(kvtgDCT4Init_64f(nullptr, 64, block.data()), StatusNullArg);
    EXPECT_EQ(kvtgDCT4Init_64f(&plan, 64, nullptr), StatusNullArg);
    EXPECT_EQ(plan, marker);
}

template <class Api>
void checkAllocatorPair()
{
    alloc_probe::reset();
    DctPlan* plan = nullptr;
    ASSERT_EQ(Api::alloc(&plan, 4096), StatusOk);
    EXPECT_EQ(alloc_probe::record().mallocCalls, 1);
    int32_t size = 0;
    Api::size(4096, &size);
    EXPECT_EQ(alloc_probe::record().lastSize, size);
    uint8_t* const block = static_cast<uint8_t*>(alloc_probe::record().lastMalloc);
    ASSERT_EQ(Api::release(plan), StatusOk);
    EXPECT_EQ(alloc_probe::record().freeCalls, 1);
    EXPECT_EQ(alloc_probe::record().lastFree, block);
    uint8_t* cursorAtRelease;
    std::memcpy(&cursorAtRelease, alloc_probe::record().lastFreeHead, sizeof cursorAtRelease);
    EXPECT_EQ(cursorAtRelease, block + 64) << "a complete release returns the cursor to its first value";

    // an exhausted allocator: StatusNullArg, and kvtFree once with null
    alloc_probe::reset(1);
    EXPECT_EQ(Api::alloc(&plan, 64), StatusNullArg);
    EXPECT_EQ(alloc_probe::record().freeCalls, 1);
    EXPECT_EQ(alloc_probe::record().freeNullCalls, 1);

    alloc_probe::reset();
    EXPECT_EQ(Api::release(nullptr), StatusNullArg);
    EXPECT_EQ(Api::alloc(nullptr, 64), StatusNullArg);
    EXPECT_EQ(Api::alloc(&plan, 6), StatusBadSize);
    EXPECT_EQ(alloc_probe::record().mallocCalls, 0);
    EXPECT_EQ(alloc_probe::record().freeCalls, 0);
}

TEST(DctPlanAllocator, OneAllocationOneReleaseCursorRestored)
{
    checkAllocatorPair<Api32>();
    checkAllocatorPair<Api64>();
}

// ---- the tables, reached through the plan's objects
template <class Record>
Record* first(EnvList* list)
{
    return static_cast<Record*>(EnvList_get(list, 0));
}

Env4* tablePass(DctPlan* plan) { return first<Env4>(first<Env2>(reinterpret_cast<Env1*>(plan)->firstList)->firstList); }

Env8* twiddleStage(DctPlan* plan)
{
    Env5* env5 = first<Env5>(first<Env3>(reinterpret_cast<Env1*>(plan)->secondList)->firstList);
    return first<Env8>(first<Env7>(env5->firstList)->firstList);
}

constexpr long double pi = 3.141592653589793238462643383279502884L;

TEST(DctTables, RotationsOfTheTablePass)
{
    std::vector<uint8_t> block(1 << 16);
    DctPlan* plan = nullptr;
    ASSERT_EQ(kvtgDCT4Init_32f(&plan, 64, block.data()), StatusOk);
    const float* t = static_cast<const float*>(tablePass(plan)->table);
    for (int p = 0; p < 4; ++p) {
        EXPECT_NEAR(t[p], cosl(pi * (2 * p + 1) / 256), 2e-7) << "vector 0: cosines of q = 0";
        EXPECT_NEAR(t[4 + p], sinl(pi * (2 * p + 1) / 256), 2e-7) << "vector 1: their sines";
        EXPECT_NEAR(t[8 + p], cosl(pi * 15 * (2 * p + 1) / 256), 2e-7) << "vector 2: q = 7";
        EXPECT_NEAR(t[16 + p], cosl(pi * 3 * (2 * p + 1) / 256), 2e-7) << "vector 4: q = 1";
    }
    ASSERT_EQ(kvtgDCT4Init_32f(&plan, 128, block.data()), StatusOk);
    t = static_cast<const float*>(tablePass(plan)->table);
    EXPECT_NEAR(t[16 * 4], cosl(pi * (2 * 4 + 1) / 512), 2e-7) << "vector 16 starts the rows 4 to 7";
    ASSERT_EQ(kvtgDCT4Init_64f(&plan, 64, block.data()), StatusOk);
    const double* d = static_cast<const double*>(tablePass(plan)->table);
    EXPECT_EQ(tablePass(plan)->blocks, 2);
    EXPECT_NEAR(d[61], cosl(pi * 7 * 9 / 256), 1e-15) << "last cosines: rows 2, 3 of column 4";
}

TEST(DctTables, TwiddlesOfTheCompositeStage)
{
    std::vector<uint8_t> block(1 << 22);
    DctPlan* plan = nullptr;
    auto angle = [](const float* t, int vector) { return acosl(t[vector * 4]) / pi; };
    ASSERT_EQ(kvtgDCT4Init_32f(&plan, 4096, block.data()), StatusOk);  // env7 of n 128, s 8
    const float* t = static_cast<const float*>(twiddleStage(plan)->table);
    EXPECT_NEAR(angle(t, 0), 0.0078125, 1e-6);
    EXPECT_NEAR(angle(t, 12), 0.0546875, 1e-6) << "seventh pair of i = 0";
    EXPECT_NEAR(angle(t, 14), 0.0234375, 1e-6) << "first pair of i = 1";
    EXPECT_EQ(t[1], t[0]) << "broadcast";
    ASSERT_EQ(kvtgDCT4Init_32f(&plan, 8192, block.data()), StatusOk);  // n 256, s 16
    t = static_cast<const float*>(twiddleStage(plan)->table);
    EXPECT_NEAR(angle(t, 6), 0.12890625, 1e-6) << "fourth pair of section A";
    EXPECT_NEAR(angle(t, 192), 0.015625, 1e-6) << "section B behind 192 vectors of A";
    ASSERT_EQ(kvtgDCT4Init_32f(&plan, 32768, block.data()), StatusOk);  // n 1024, s 32: A first
    EXPECT_NEAR(angle(static_cast<const float*>(twiddleStage(plan)->table), 0), 1.0 / 1024, 1e-6);
    ASSERT_EQ(kvtgDCT4Init_64f(&plan, 32768, block.data()), StatusOk);  // B first in Real64
    EXPECT_NEAR(acosl(static_cast<const double*>(twiddleStage(plan)->table)[0]) / pi, 0.00390625, 1e-12);
}

TEST(DctClosures, WorkedValues)
{
    Envlambda lambda{};
    Tables<float>::envlambda___init__(&lambda, nullptr, 128, 8);
    EXPECT_EQ(Tables<float>::envlambda_at(&lambda, 0, 0, 0), 0.03125f);
    EXPECT_EQ(Tables<float>::envlambda_at(&lambda, 1, 0, 0), 0.09375f);
    EnvfCompose compose{};
    Tables<double>::envfCompose___init__(&compose, nullptr, 16, 512, 4, 8, 16);
    EXPECT_NEAR(Tables<double>::envfCompose_at(&compose, 0, 0, 0), cosl(pi / 256), 1e-16);
    EXPECT_NEAR(Tables<double>::envfCompose_at(&compose, 0, 1, 0), sinl(pi / 256), 1e-16);
    EXPECT_NEAR(Tables<double>::envfCompose_at(&compose, 0, 2, 0), cosl(3 * pi / 256), 1e-16);
    EXPECT_EQ(Tables<double>::envfCompose_at(&compose, 1, 0, 0), Tables<double>::envfCompose_at(&compose, 0, 2, 0));
    Envfsplit split{};
    split.inner = &compose;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 2; ++j)
            for (int k = 0; k < 16; ++k)
                EXPECT_EQ(Tables<double>::envfsplit_at(&split, i, j, k), Tables<double>::envfCompose_at(&compose, 2 * i + j, k, 0));
}

}  // namespace
