// The batched real DFT and Hartley transforms against the single calls of the
// design's library file of the same level: every transform of a batch must
// have the single call's bits, in every layout of the batch (rows, strides,
// padded and interleaved distances, windows, in place, misaligned), with
// every element that is not an output left as it was; and the checks of a
// call come in their order and write nothing.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstring>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

#include "kvtgen_batch.h"
#include "real_api.h"

namespace {

template <class T>
using BatchFn = Status (*)(const T*, T*, int32_t, int32_t, int32_t, int32_t, int32_t, int32_t, int32_t);
template <class T>
using SingleFn = Status (*)(const T*, T*, int32_t, int32_t);

// One entry point with its single call, and whether its input or output is
// a CCS spectrum (N+2 or N+1 elements) rather than N elements.
template <class T>
struct Entry {
    std::string name;
    BatchFn<T> batch;
    SingleFn<T> single;
    bool ccsIn, ccsOut;
};

// The batched entry points by sample type, in RealApi's order.
template <class T>
struct BatchApi;

template <>
struct BatchApi<float> {
    static constexpr BatchFn<float> forward[3] = {kvtgBatchDFTFwd_RToCCS_32f, kvtgBatchDFTFwd_RToPack_32f,
                                                  kvtgBatchDFTFwd_RToPerm_32f};
    static constexpr BatchFn<float> inverse[3] = {kvtgBatchDFTInv_CCSToR_32f, kvtgBatchDFTInv_PackToR_32f,
                                                  kvtgBatchDFTInv_PermToR_32f};
    static constexpr BatchFn<float> hartley = kvtgBatchHartley_32f;
};

template <>
struct BatchApi<double> {
    static constexpr BatchFn<double> forward[3] = {kvtgBatchDFTFwd_RToCCS_64f, kvtgBatchDFTFwd_RToPack_64f,
                                                   kvtgBatchDFTFwd_RToPerm_64f};
    static constexpr BatchFn<double> inverse[3] = {kvtgBatchDFTInv_CCSToR_64f, kvtgBatchDFTInv_PackToR_64f,
                                                   kvtgBatchDFTInv_PermToR_64f};
    static constexpr BatchFn<double> hartley = kvtgBatchHartley_64f;
};

template <class T>
std::vector<Entry<T>> realEntries();

// Every entry point of a sample type: the complex DFTs, or the real DFTs
// and the Hartley transform.
template <class T>
std::vector<Entry<T>> entries()
{
    if constexpr (std::is_same_v<T, Complex32>)
        return {{"complex forward", kvtgBatchDFTFwd_CToC_32fc, kvtgDFTFwd_CToC_32fc, false, false},
                {"complex inverse", kvtgBatchDFTInv_CToC_32fc, kvtgDFTInv_CToC_32fc, false, false}};
    else if constexpr (std::is_same_v<T, Complex64>)
        return {{"complex forward", kvtgBatchDFTFwd_CToC_64fc, kvtgDFTFwd_CToC_64fc, false, false},
                {"complex inverse", kvtgBatchDFTInv_CToC_64fc, kvtgDFTInv_CToC_64fc, false, false}};
    else
        return realEntries<T>();
}

template <class T>
std::vector<Entry<T>> realEntries()
{
    static const char* const names[] = {"CCS", "Pack", "Perm"};
    std::vector<Entry<T>> all;
    for (int l = 0; l < 3; ++l) {
        all.push_back({std::string("forward to ") + names[l], BatchApi<T>::forward[l], RealApi<T>::forward[l], false,
                       l == CCS});
        all.push_back({std::string("inverse from ") + names[l], BatchApi<T>::inverse[l], RealApi<T>::inverse[l],
                       l == CCS, false});
    }
    all.push_back({"Hartley", BatchApi<T>::hartley, RealApi<T>::hartley, false, false});
    return all;
}

int elements(bool ccs, int n) { return ccs ? layoutSize(CCS, n) : n; }

// A batch's layout: strides and distances as multiples or sums of the
// element counts, an offset of the arrays in elements (misaligned), and
// whether the output is the input array.
struct Shape {
    const char* name;
    int srcStride, dstStride;
    int srcDistPad, dstDistPad;  // distance = count * stride of the elements + pad; -1: interleaved
    bool inPlace;
    int offset;
};

const Shape shapes[] = {
    {"rows", 1, 1, 0, 0, false, 0},          {"padded rows, misaligned", 1, 1, 3, 5, false, 1},
    {"strided", 3, 2, 1, 0, false, 0},       {"interleaved channels", 1, 1, -1, -1, false, 0},
    {"in place, rows", 1, 1, 0, 0, true, 0}, {"in place, interleaved, misaligned", 1, 1, -1, -1, true, 3},
    {"rows in, padded rows out", 1, 1, 0, 1, false, 0},
};

// The distance of a shape for `elements` elements per transform.
int distanceOf(int stride, int pad, int elements) { return pad < 0 ? 1 : stride * elements + pad; }
int strideOf(int stride, int pad, int count) { return pad < 0 ? count : stride; }

template <class T>
T sample(std::mt19937& random)
{
    const double re = std::uniform_real_distribution<double>(-2.0, 2.0)(random);
    if constexpr (std::is_same_v<T, Complex32> || std::is_same_v<T, Complex64>) {
        const double im = std::uniform_real_distribution<double>(-2.0, 2.0)(random);
        return {static_cast<decltype(T::re)>(re), static_cast<decltype(T::re)>(im)};
    } else {
        return static_cast<T>(re);
    }
}

template <class T>
void checkBatch(const Entry<T>& e, int n, int count, const Shape& s, int32_t flag)
{
    const int in = elements(e.ccsIn, n), out = elements(e.ccsOut, n);
    const int common = std::max(in, out);
    const int ss = strideOf(s.srcStride, s.srcDistPad, count), ds = strideOf(s.dstStride, s.dstDistPad, count);
    const int sd = distanceOf(s.srcStride, s.srcDistPad, s.inPlace ? common : in);
    const int dd = s.inPlace ? sd : distanceOf(s.dstStride, s.dstDistPad, out);
    const int inStride = ss, outStride = s.inPlace ? ss : ds;
    const std::size_t size = static_cast<std::size_t>(s.offset + count * std::max(sd, dd) + common * std::max(ss, ds) + 8);
    std::mt19937 random(static_cast<unsigned>(n * 131 + count));
    std::vector<T> src(size), dst(size);
    std::memset(static_cast<void*>(dst.data()), 0xE5, sizeof(T) * size);  // a pattern no output has by chance
    for (T& v : src)
        v = sample<T>(random);
    std::vector<T> before = s.inPlace ? src : dst;
    T* input = src.data() + s.offset;
    T* output = s.inPlace ? input : dst.data() + s.offset;
    ASSERT_EQ(e.batch(input, output, n, count, inStride, sd, outStride, dd, flag), StatusOk)
        << e.name << " n=" << n << " count=" << count << " " << s.name;
    std::vector<bool> written(size, false);
    std::vector<T> x(static_cast<std::size_t>(in)), y(static_cast<std::size_t>(out));
    for (int t = 0; t < count; ++t) {
        const T* from = (s.inPlace ? before.data() + s.offset : input) + static_cast<long>(t) * sd;
        for (int j = 0; j < in; ++j)
            x[static_cast<std::size_t>(j)] = from[static_cast<long>(j) * inStride];
        ASSERT_EQ(e.single(x.data(), y.data(), n, flag), StatusOk);
        for (int k = 0; k < out; ++k) {
            const long at = s.offset + static_cast<long>(t) * dd + static_cast<long>(k) * outStride;
            written[static_cast<std::size_t>(at)] = true;
            const T got = (s.inPlace ? src : dst)[static_cast<std::size_t>(at)];
            ASSERT_EQ(std::memcmp(&got, &y[static_cast<std::size_t>(k)], sizeof(T)), 0)
                << e.name << " n=" << n << " count=" << count << " " << s.name << " flag=" << flag
                << ": transform " << t << ", element " << k << " differs from the single call";
        }
    }
    const std::vector<T>& after = s.inPlace ? src : dst;
    for (std::size_t i = 0; i < size; ++i) {
        if (!written[i]) {
            ASSERT_EQ(std::memcmp(&after[i], &before[i], sizeof(T)), 0)
                << e.name << " n=" << n << " " << s.name << ": element " << i << " outside the outputs changed";
        }
    }
}

template <class T>
void everyLength()
{
    const int32_t flags[] = {ScaleFwdByN, ScaleInvByN, ScaleBySqrtN, ScaleNone};
    for (const Entry<T>& e : entries<T>())
        for (int n = 2; n <= 64; ++n)
            for (const Shape& s : shapes)
                for (int count : {1, 3, 8, 19, 70}) {
                    checkBatch(e, n, count, s, flags[(n + count) % 4]);
                    if (::testing::Test::HasFatalFailure())
                        return;
                }
}

// `count` elements that end where an unreadable page begins, so that a read
// or a write past the last element stops the test.
template <class T>
class AtPageEnd {
public:
    explicit AtPageEnd(std::size_t count)
    {
        const std::size_t page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
        bytes_ = (count * sizeof(T) + page - 1) / page * page + page;
        base_ = mmap(nullptr, bytes_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        EXPECT_NE(base_, MAP_FAILED);
        mprotect(static_cast<char*>(base_) + bytes_ - page, page, PROT_NONE);
        data_ = reinterpret_cast<T*>(static_cast<char*>(base_) + bytes_ - page - count * sizeof(T));
    }
    ~AtPageEnd() { munmap(base_, bytes_); }
    T* data() const { return data_; }

private:
    void* base_;
    std::size_t bytes_;
    T* data_;
};

// Dense rows (distance = elements) in arrays that end at an unreadable page:
// the kernels that read a whole vector from each row must stop short of the
// end, and every transform keeps the single call's bits.
template <class T>
void rowsAtTheEndOfMemory()
{
    for (const Entry<T>& e : entries<T>())
        for (int n : {2, 3, 4, 5, 7, 13, 64})
            for (int count : {2, 8, 9, 16, 17, 33}) {
                const int in = elements(e.ccsIn, n), out = elements(e.ccsOut, n);
                const AtPageEnd<T> src(static_cast<std::size_t>(count * in)), dst(static_cast<std::size_t>(count * out));
                std::mt19937 random(static_cast<unsigned>(n + count));
                for (int i = 0; i < count * in; ++i)
                    src.data()[i] = sample<T>(random);
                ASSERT_EQ(e.batch(src.data(), dst.data(), n, count, 1, in, 1, out, ScaleNone), StatusOk);
                std::vector<T> y(static_cast<std::size_t>(out));
                for (int t = 0; t < count; ++t) {
                    ASSERT_EQ(e.single(src.data() + t * in, y.data(), n, ScaleNone), StatusOk);
                    ASSERT_EQ(std::memcmp(y.data(), dst.data() + t * out, sizeof(T) * out), 0)
                        << e.name << " n=" << n << " count=" << count << ": transform " << t;
                }
            }
}

TEST(Batch, RowsThatEndAtAnUnreadablePage)
{
    rowsAtTheEndOfMemory<Complex32>();
    rowsAtTheEndOfMemory<Complex64>();
    rowsAtTheEndOfMemory<float>();
    rowsAtTheEndOfMemory<double>();
}

TEST(Batch, EveryTransformHasTheSingleCallsBitsComplex32) { everyLength<Complex32>(); }
TEST(Batch, EveryTransformHasTheSingleCallsBitsComplex64) { everyLength<Complex64>(); }
TEST(Batch, EveryTransformHasTheSingleCallsBits32) { everyLength<float>(); }
TEST(Batch, EveryTransformHasTheSingleCallsBits64) { everyLength<double>(); }

TEST(Batch, OverlappingInputWindowsAndEveryFlag)
{
    // a short-time transform: windows of 32 at a hop of 8 along one signal
    for (int32_t flag : {ScaleFwdByN, ScaleInvByN, ScaleBySqrtN, ScaleNone})
        for (const Entry<double>& e : entries<double>()) {
            if (e.ccsIn)
                continue;
            const int n = 32, hop = 8, count = 13, out = elements(e.ccsOut, n);
            std::vector<double> signal(static_cast<std::size_t>(hop * (count - 1) + n));
            std::mt19937 random(7);
            for (double& v : signal)
                v = sample<double>(random);
            std::vector<double> spectra(static_cast<std::size_t>(count * out)), y(static_cast<std::size_t>(out));
            ASSERT_EQ(e.batch(signal.data(), spectra.data(), n, count, 1, hop, 1, out, flag), StatusOk);
            for (int t = 0; t < count; ++t) {
                ASSERT_EQ(e.single(signal.data() + t * hop, y.data(), n, flag), StatusOk);
                EXPECT_EQ(std::memcmp(spectra.data() + t * out, y.data(), sizeof(double) * out), 0) << e.name << " " << t;
            }
        }
}

// A refused call: its status, and nothing written.
struct Refusal {
    const char* what;
    int len, count, srcStride, srcDist, dstStride, dstDist, flag;
    long dstOffset;  // where dst starts, in elements from src; large: another array
    bool nullSrc;
    Status expected;
};

const Refusal refusals[] = {
    {"length 1", 1, 2, 1, 16, 1, 18, ScaleNone, 1000, false, StatusBadSize},
    {"length 65", 65, 2, 1, 65, 1, 67, ScaleNone, 1000, false, StatusBadSize},
    {"negative count", 16, -1, 1, 16, 1, 18, ScaleNone, 1000, false, StatusBadSize},
    {"bad size before a null pointer", 0, 2, 1, 16, 1, 18, ScaleNone, 1000, true, StatusBadSize},
    {"null source", 16, 2, 1, 16, 1, 18, ScaleNone, 1000, true, StatusNullArg},
    {"null before a bad stride", 16, 2, 0, 16, 1, 18, 3, 1000, true, StatusNullArg},
    {"source stride 0", 16, 2, 0, 16, 1, 18, ScaleNone, 1000, false, StatusBadArg},
    {"destination stride 0", 16, 2, 1, 16, 0, 18, ScaleNone, 1000, false, StatusBadArg},
    {"negative distance", 16, 2, 1, -16, 1, 18, ScaleNone, 1000, false, StatusBadArg},
    {"two outputs on one element: distance 0", 16, 2, 1, 16, 1, 0, ScaleNone, 1000, false, StatusBadArg},
    {"two outputs on one element: rows too close", 16, 3, 1, 16, 1, 17, ScaleNone, 1000, false, StatusBadArg},
    {"two outputs on one element: stride and distance", 16, 4, 1, 16, 3, 2, ScaleNone, 1000, false, StatusBadArg},
    {"output overlapping the input, shifted", 16, 2, 1, 18, 1, 18, ScaleNone, 1, false, StatusBadArg},
    {"in the same array, another distance", 16, 2, 1, 18, 1, 20, ScaleNone, 0, false, StatusBadArg},
    {"bad layout before a bad flag", 16, 2, 1, 16, 1, 0, 3, 1000, false, StatusBadArg},
    {"flag 3", 16, 2, 1, 16, 1, 18, 3, 1000, false, StatusBadFlag},
    {"flag 0 with count 0", 16, 0, 1, 16, 1, 18, 0, 1000, false, StatusBadFlag},
    // a batch of one contiguous transform takes a shorter path to the single call
    {"one transform, length 65", 65, 1, 1, 65, 1, 67, ScaleNone, 1000, false, StatusBadSize},
    {"one transform, null source", 16, 1, 1, 16, 1, 18, ScaleNone, 1000, true, StatusNullArg},
    {"one transform, negative distance", 16, 1, 1, 16, 1, -1, ScaleNone, 1000, false, StatusBadArg},
    {"one transform overlapping its output, shifted", 16, 1, 1, 16, 1, 18, ScaleNone, 15, false, StatusBadArg},
    {"one transform in place, another distance", 16, 1, 1, 18, 1, 20, ScaleNone, 0, false, StatusBadArg},
    {"one transform, flag 3", 16, 1, 1, 16, 1, 18, 3, 1000, false, StatusBadFlag},
};

TEST(Batch, RefusedCallsInTheirOrderWriteNothing)
{
    for (const Refusal& r : refusals) {
        std::vector<float> memory(4000, 1.5f);
        const std::vector<float> before = memory;
        const float* src = r.nullSrc ? nullptr : memory.data() + 100;
        float* dst = memory.data() + 100 + r.dstOffset;
        EXPECT_EQ(kvtgBatchDFTFwd_RToCCS_32f(src, dst, r.len, r.count, r.srcStride, r.srcDist, r.dstStride, r.dstDist,
                                             r.flag),
                  r.expected)
            << r.what;
        EXPECT_EQ(memory, before) << r.what << ": a refused call wrote";
    }
}

TEST(Batch, CountZeroWritesNothing)
{
    std::vector<double> memory(64, 2.5);
    EXPECT_EQ(kvtgBatchHartley_64f(memory.data(), memory.data() + 1, 16, 0, 1, 16, 1, 16, ScaleNone), StatusOk);
    EXPECT_EQ(memory, std::vector<double>(64, 2.5));
}

TEST(Batch, TheBatchFileIsOfTheSingleCallsLevel)
{
    Dl_info batch{}, single{};
    ASSERT_NE(dladdr(reinterpret_cast<void*>(&kvtgBatchHartley_32f), &batch), 0);
    ASSERT_NE(dladdr(reinterpret_cast<void*>(&kvtgHartley_32f), &single), 0);
    const std::string b = batch.dli_fname, s = single.dli_fname;
    std::printf("batch file: %s\n", b.c_str());
    EXPECT_EQ(b.find("glibc-hwcaps/") != std::string::npos, s.find("glibc-hwcaps/") != std::string::npos);
}

}  // namespace
