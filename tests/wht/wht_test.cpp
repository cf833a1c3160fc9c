// Walsh-Hadamard family: bit-exact against the plain stage-by-stage network,
// work buffers, the order of the tests and the allocator's calls.
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstring>
#include <vector>

#include "counting_allocator.h"
#include "guarded.h"
#include "kvtgen.h"
#include "reference.h"

namespace {

template <class T>
struct Api;
template <>
struct Api<Real32> {
    static Status transform(const Real32* s, Real32* d, int32_t order, int32_t flag, uint8_t* b)
    {
        return kvtgWHT_32f(s, d, order, flag, b);
    }
    static Status bufferSize(int32_t order, int32_t* size) { return kvtgWHTGetBufferSize_32f(order, size); }
};
template <>
struct Api<Real64> {
    static Status transform(const Real64* s, Real64* d, int32_t order, int32_t flag, uint8_t* b)
    {
        return kvtgWHT_64f(s, d, order, flag, b);
    }
    static Status bufferSize(int32_t order, int32_t* size) { return kvtgWHTGetBufferSize_64f(order, size); }
};

// The reference: stages h = 1, 2, 4, ... in the sample type, then one product.
template <class T>
std::vector<T> plainNetwork(std::vector<T> x, int32_t flag)
{
    const std::size_t n = x.size();
    for (std::size_t h = 1; h < n; h *= 2)
        for (std::size_t i = 0; i < n; ++i)
            if ((i & h) == 0) {
                const T a = x[i], b = x[i + h];
                x[i] = a + b;
                x[i + h] = a - b;
            }
    const T s = flag == ScaleNone ? T(1)
                : flag == ScaleBySqrtN ? static_cast<T>(1.0L / std::sqrt(static_cast<long double>(n)))
                                       : static_cast<T>(1.0L / n);
    for (T& v : x)
        v = v * s;
    return x;
}

int32_t bufferSize(bool single, int order)
{
    int32_t size = -1;
    EXPECT_EQ(single ? kvtgWHTGetBufferSize_32f(order, &size) : kvtgWHTGetBufferSize_64f(order, &size), StatusOk);
    return size;
}

class WhtOrders : public testing::TestWithParam<int> {};

template <class T>
void checkBitExact(int order)
{
    const std::size_t n = std::size_t(1) << order;
    const std::vector<T> x = ref::Random(static_cast<std::uint32_t>(order)).vector<T>(n);
    const int32_t size = bufferSize(sizeof(T) == 4, order);
    for (int32_t flag : {int32_t(ScaleFwdByN), int32_t(ScaleInvByN), int32_t(ScaleBySqrtN), int32_t(ScaleNone)}) {
        const std::vector<T> expected = plainNetwork(x, flag);
        // 16 bytes past a 64-byte boundary: the aligned route on an array
        // that is not a multiple of 32
        for (std::size_t srcOffset : {std::size_t(0), std::size_t(16), sizeof(T)}) {
            for (std::size_t dstOffset : {std::size_t(0), 2 * sizeof(T)}) {
                SCOPED_TRACE("flag " + std::to_string(flag) + " src+" + std::to_string(srcOffset) + " dst+" +
                             std::to_string(dstOffset));
                Guarded<T> src(n, srcOffset), dst(n, dstOffset);
                std::memcpy(src.data(), x.data(), n * sizeof(T));
                Guarded<uint8_t> buffer(static_cast<std::size_t>(size > 0 ? size : 1));
                ASSERT_EQ(Api<T>::transform(src.data(), dst.data(), order, flag, size > 0 ? buffer.data() : nullptr), StatusOk);
                ASSERT_EQ(std::memcmp(dst.data(), expected.data(), n * sizeof(T)), 0);
                EXPECT_TRUE(dst.guardsIntact());
                EXPECT_TRUE(buffer.guardsIntact()) << "write beyond the work buffer";
                // in place, with a buffer of our own
                ASSERT_EQ(Api<T>::transform(src.data(), src.data(), order, flag, nullptr), StatusOk);
                ASSERT_EQ(std::memcmp(src.data(), expected.data(), n * sizeof(T)), 0);
            }
        }
    }
}

TEST_P(WhtOrders, BitExactAgainstPlainNetwork)
{
    checkBitExact<Real32>(GetParam());
    checkBitExact<Real64>(GetParam());
}

// The caller's buffer of exactly the reported size: its last byte is written,
// nothing beyond; what it held before has no effect.
template <class T>
void checkBuffer(int order)
{
    const std::size_t n = std::size_t(1) << order;
    const int32_t size = bufferSize(sizeof(T) == 4, order);
    ASSERT_GT(size, 0);
    const std::vector<T> x = ref::Random(99).vector<T>(n);
    std::vector<T> expected(n), got(n);
    ASSERT_EQ(Api<T>::transform(x.data(), expected.data(), order, ScaleNone, nullptr), StatusOk);
    for (unsigned char stale : {0x00, 0x7F, 0xFF}) {
        Guarded<uint8_t> buffer(static_cast<std::size_t>(size), 0, 0xC3);
        std::memset(buffer.data(), stale, static_cast<std::size_t>(size));
        ASSERT_EQ(Api<T>::transform(x.data(), got.data(), order, ScaleNone, buffer.data()), StatusOk);
        EXPECT_EQ(got, expected) << "stale buffer contents changed the result";
        EXPECT_TRUE(buffer.guardsIntact());
        uint8_t last[sizeof(T)];
        std::memset(last, stale, sizeof last);
        EXPECT_NE(std::memcmp(buffer.data() + size - sizeof(T), last, sizeof(T)), 0) << "last sample of the buffer unused";
    }
}

TEST_P(WhtOrders, CallersBufferUsedToItsLastByte)
{
    if (GetParam() < 8)
        GTEST_SKIP() << "no buffer below order 8";
    checkBuffer<Real32>(GetParam());
    checkBuffer<Real64>(GetParam());
}

// One allocation and one release per call with a null buffer, none otherwise.
TEST_P(WhtOrders, AllocatorCallsPerCall)
{
    const int order = GetParam();
    const std::size_t n = std::size_t(1) << order;
    std::vector<Real32> x(n, 1.0f), y(n);
    std::vector<uint8_t> buffer(static_cast<std::size_t>(std::max(bufferSize(true, order), 16)) + 64);
    uint8_t* aligned = reinterpret_cast<uint8_t*>((reinterpret_cast<std::uintptr_t>(buffer.data()) + 63) & ~std::uintptr_t(63));
    const bool blocked = order >= 8;
    alloc_probe::reset();
    ASSERT_EQ(kvtgWHT_32f(x.data(), y.data(), order, ScaleNone, nullptr), StatusOk);
    EXPECT_EQ(alloc_probe::record().mallocCalls, blocked ? 1 : 0);
    EXPECT_EQ(alloc_probe::record().freeCalls, blocked ? 1 : 0);
    if (blocked) {
        EXPECT_EQ(alloc_probe::record().lastSize, bufferSize(true, order));
        EXPECT_EQ(alloc_probe::record().lastFree, alloc_probe::record().lastMalloc);
    }
    alloc_probe::reset();
    ASSERT_EQ(kvtgWHT_32f(x.data(), y.data(), order, ScaleNone, aligned), StatusOk);
    ASSERT_EQ(kvtgWHT_32f(x.data(), y.data(), order, 3, nullptr), StatusBadFlag);
    ASSERT_EQ(kvtgWHT_32f(nullptr, y.data(), order, ScaleNone, nullptr), StatusNullArg);
    EXPECT_EQ(alloc_probe::record().mallocCalls, 0);
    EXPECT_EQ(alloc_probe::record().freeCalls, 0);
}

INSTANTIATE_TEST_SUITE_P(AllOrders, WhtOrders, testing::Range(1, 14));

TEST(WhtFrame, OrderIsTestedFirstThenPointersThenFlag)
{
    Real32 a[16] = {}, b[16] = {};
    Real64 c[16] = {}, d[16] = {};
    for (int32_t order : {0, 14, -1, 100, INT_MIN}) {
        EXPECT_EQ(kvtgWHT_32f(nullptr, nullptr, order, -7, nullptr), StatusBadSize);
        EXPECT_EQ(kvtgWHT_64f(nullptr, nullptr, order, -7, nullptr), StatusBadSize);
        int32_t size = 12345;
        EXPECT_EQ(kvtgWHTGetBufferSize_32f(order, &size), StatusBadSize);
        EXPECT_EQ(kvtgWHTGetBufferSize_64f(order, &size), StatusBadSize);
        EXPECT_EQ(size, 12345) << "nothing stored on a bad order";
    }
    for (int32_t order : {1, 3, 4, 7, 8, 13}) {
        EXPECT_EQ(kvtgWHT_32f(nullptr, b, order, 3, nullptr), StatusNullArg) << order;
        EXPECT_EQ(kvtgWHT_64f(c, nullptr, order, 0, nullptr), StatusNullArg) << order;
        // a misaligned src with a null dst goes through the twin and still says null
        EXPECT_EQ(kvtgWHT_32f(a + 1, nullptr, order, ScaleNone, nullptr), StatusNullArg) << order;
        EXPECT_EQ(kvtgWHT_64f(c + 1, nullptr, order, ScaleNone, nullptr), StatusNullArg) << order;
    }
    for (int32_t flag : {0, 3, 5, 6, 7, 9, 12, 16, -1}) {
        for (Real32& v : b)
            v = 42.0f;
        EXPECT_EQ(kvtgWHT_32f(a, b, 4, flag, nullptr), StatusBadFlag);
        EXPECT_EQ(kvtgWHT_64f(c, d, 3, flag, nullptr), StatusBadFlag);
        for (Real32 v : b)
            EXPECT_EQ(v, 42.0f) << "a failed call wrote to dst";
    }
}

TEST(WhtFrame, BufferSizesOfTheTable)
{
    const int32_t single[13] = {0, 0, 0, 0, 0, 0, 0, 1024, 2048, 4096, 8192, 18432, 34816};
    const int32_t dual[13] = {0, 0, 0, 0, 0, 0, 0, 2048, 4096, 8192, 18432, 34816, 73728};
    for (int order = 1; order <= 13; ++order) {
        EXPECT_EQ(bufferSize(true, order), single[order - 1]) << order;
        EXPECT_EQ(bufferSize(false, order), dual[order - 1]) << order;
    }
}

TEST(WhtValues, WorkedExamples)
{
    Real32 y[8];
    const Real32 ones[2] = {1, 1};
    ASSERT_EQ(kvtgWHT_1_32f(ones, y, ScaleBySqrtN), StatusOk);
    EXPECT_EQ(y[0], 2 * 0.70710677f);
    EXPECT_EQ(y[1], 0.0f);
    const Real32 four[4] = {4, 0, 0, 0};
    ASSERT_EQ(kvtgWHT_2_32f(four, y, ScaleFwdByN), StatusOk);
    for (int k = 0; k < 4; ++k)
        EXPECT_EQ(y[k], 1.0f);
    // e1 gives 1, -1, 1, -1, ...; zeros give +0.0 everywhere
    Real64 e1[8] = {0, 1, 0, 0, 0, 0, 0, 0}, z[8];
    ASSERT_EQ(kvtgWHT_64f(e1, z, 3, ScaleNone, nullptr), StatusOk);
    for (int k = 0; k < 8; ++k)
        EXPECT_EQ(z[k], k % 2 ? -1.0 : 1.0);
    const Real64 zeros[8] = {};
    ASSERT_EQ(kvtgWHT_64f(zeros, z, 3, ScaleNone, nullptr), StatusOk);
    for (int k = 0; k < 8; ++k)
        EXPECT_FALSE(std::signbit(z[k])) << k;
}

}  // namespace
