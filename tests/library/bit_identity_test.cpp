// Two files of the library must give the same bits for every export: the
// baseline and the x86-64-v3 build, and each of them as GCC and as clang
// build it.  Both files are loaded by path into this one process (RTLD_LOCAL,
// so that each file's dispatchers reach its own kernels), and every one of
// the 1,193 exports is called on the same inputs in both:
// every flag (and illegal ones), aligned, misaligned and in place, through the
// size dispatchers and directly.  Outputs are compared bit for bit over the
// whole destination with guard space around it; two NaNs count as equal
// whatever their payloads, which IEEE arithmetic does not fix.
// A file from glibc-hwcaps/x86-64-v3/ is run only on a processor that has
// x86-64-v3; otherwise the program ends as skipped (77).
//   bit_identity_tests <first file> <second file>
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <limits>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "kvtgen.h"
#include "library_file.h"
#include "processor_level.h"

namespace {

std::set<std::string> exportsCalled;

struct Library {
    void* handle = nullptr;
    template <class F>
    F fn(const std::string& name) const
    {
        exportsCalled.insert(name);
        void* symbol = dlsym(handle, name.c_str());
        if (symbol == nullptr) {
            std::fprintf(stderr, "%s is not exported\n", name.c_str());
            std::exit(1);
        }
        return reinterpret_cast<F>(symbol);
    }
};

Library files[2];  // first, second
int namesCalled = 0;

// One 64-byte aligned block with guard space on both sides of the data.
struct Buffer {
    static constexpr std::size_t guard = 64;
    std::vector<unsigned char> storage;
    unsigned char* base;
    Buffer(std::size_t bytes) : storage(bytes + 4 * guard)
    {
        base = reinterpret_cast<unsigned char*>(
            (reinterpret_cast<std::uintptr_t>(storage.data()) + 2 * guard - 1) & ~std::uintptr_t(63));
    }
};

template <class T>
bool sameBits(T a, T b)
{
    if (std::isnan(a) && std::isnan(b))
        return true;
    return std::memcmp(&a, &b, sizeof(T)) == 0;
}

// Random samples of mixed magnitude and sign, with some exact zeros and
// values in [-1, 1] where most rounding differences would show first.
template <class T>
std::vector<T> samples(std::size_t count, unsigned seed)
{
    std::mt19937 rng(seed);
    std::uniform_real_distribution<double> unit(-1.0, 1.0);
    std::uniform_int_distribution<int> exponent(-20, 20);
    std::vector<T> v(count);
    for (std::size_t i = 0; i < count; ++i) {
        const int kind = static_cast<int>(rng() % 8);
        v[i] = kind == 0 ? T(0) : kind < 5 ? T(unit(rng)) : T(std::ldexp(unit(rng), exponent(rng)));
    }
    return v;
}

// Samples near the top of the type's range with full random mantissas: a
// Real32 kernel's products of such values exist only in Real64, and any lane
// that rounded a product or a sum in another type or order would show.
template <class T>
std::vector<T> largeSamples(std::size_t count, unsigned seed)
{
    std::mt19937 rng(seed);
    std::uniform_real_distribution<double> unit(0.5, 1.0);
    std::vector<T> v(count);
    for (std::size_t i = 0; i < count; ++i)
        v[i] = static_cast<T>((rng() % 2 ? -1 : 1) * unit(rng) * (std::numeric_limits<T>::max() / 8));
    return v;
}

// Where the arrays of a call lie: byte offsets from a 64-byte boundary, and
// whether dst is src.
struct Placement {
    int srcOffset, dstOffset;
    bool inPlace;
};

// Calls `call(lib, src, dst)` in both files on the same `input` and compares
// status and the whole destination including its guards.  `outCount` samples
// of T are the destination proper.
template <class T>
void compare(const std::string& what, const std::vector<T>& input, std::size_t outCount, const Placement& place,
             const std::function<Status(const Library&, const T*, T*)>& call)
{
    ++namesCalled;
    const std::size_t span = std::max(input.size(), outCount) * sizeof(T) + 2 * Buffer::guard + 64;
    Status status[2];
    std::vector<unsigned char> result[2];
    for (int f = 0; f < 2; ++f) {
        Buffer srcBuffer(span), dstBuffer(span);
        unsigned char* srcBytes = srcBuffer.base + Buffer::guard + place.srcOffset;
        unsigned char* dstBytes = place.inPlace ? srcBytes : dstBuffer.base + Buffer::guard + place.dstOffset;
        std::memset(dstBuffer.base, 0x7B, span);
        std::memset(srcBuffer.base, 0x7B, span);
        std::memcpy(srcBytes, input.data(), input.size() * sizeof(T));
        status[f] = call(files[f], reinterpret_cast<const T*>(srcBytes), reinterpret_cast<T*>(dstBytes));
        result[f].assign(dstBytes - Buffer::guard, dstBytes + outCount * sizeof(T) + Buffer::guard);
    }
    ASSERT_EQ(status[0], status[1]) << what << ": status differs";
    const std::size_t count = result[0].size() / sizeof(T);
    for (std::size_t i = 0; i < count; ++i) {
        T a, b;
        std::memcpy(&a, result[0].data() + i * sizeof(T), sizeof(T));
        std::memcpy(&b, result[1].data() + i * sizeof(T), sizeof(T));
        if (!sameBits(a, b)) {
            const long index = static_cast<long>(i) - static_cast<long>(Buffer::guard / sizeof(T));
            ADD_FAILURE() << what << ": output " << index << " differs: " << a << " (first file) vs " << b
                          << " (second file)";
            return;
        }
    }
}

const int kFlags[] = {ScaleFwdByN, ScaleInvByN, ScaleBySqrtN, ScaleNone, 0, 3, 16, -1};

template <class T>
std::vector<Placement> placements()
{
    // misaligned by one sample and by half a vector; in place aligned and not
    const int step = static_cast<int>(sizeof(T));
    return {{0, 0, false}, {step, 0, false}, {0, 8, false}, {8, step, false}, {0, 0, true}, {step, 0, true}};
}

std::string at(const char* what, int flag, const Placement& p)
{
    return std::string(what) + " flag " + std::to_string(flag) + " src+" + std::to_string(p.srcOffset) +
           (p.inPlace ? " in place" : " dst+" + std::to_string(p.dstOffset));
}

// Fixed-size kernels of the forms (src, dst, flag) and (src, dst, len, flag):
// complex, real forward and inverse, Hartley.  `inCount(n)` and `outCount(n)`
// give the samples of T read and written.
template <class T>
void compareSizeFamily(const std::string& prefix, const std::string& suffix, int first, int last,
                       const std::function<std::size_t(int)>& inCount, const std::function<std::size_t(int)>& outCount)
{
    using Kernel = Status (*)(const T*, T*, int32_t);
    using Dispatcher = Status (*)(const T*, T*, int32_t, int32_t);
    const std::string dispatcher = prefix + suffix;
    for (int n = first; n <= last; ++n) {
        const std::string kernel = prefix + std::to_string(n) + "_" + suffix;
        const std::vector<T> inputs[] = {samples<T>(inCount(n), static_cast<unsigned>(n)),
                                         largeSamples<T>(inCount(n), static_cast<unsigned>(n))};
        for (const std::vector<T>& input : inputs)
            for (int flag : kFlags)
                for (const Placement& p : placements<T>()) {
                    compare<T>(at(kernel.c_str(), flag, p), input, outCount(n), p,
                               [&](const Library& lib, const T* s, T* d) { return lib.fn<Kernel>(kernel)(s, d, flag); });
                    compare<T>(at(dispatcher.c_str(), flag, p) + " len " + std::to_string(n), input, outCount(n), p,
                               [&](const Library& lib, const T* s, T* d) {
                                   return lib.fn<Dispatcher>(dispatcher)(s, d, n, flag);
                               });
                }
    }
    // lengths the dispatcher refuses
    for (int n : {-1, 0, 1, 65})
        compare<T>(dispatcher + " len " + std::to_string(n), samples<T>(160, 1), 160, {0, 0, false},
                   [&](const Library& lib, const T* s, T* d) { return lib.fn<Dispatcher>(dispatcher)(s, d, n, 8); });
}

TEST(BitIdentity, VersionRecord)
{
    using Get = const LibVersion* (*)();
    const LibVersion* a = files[0].fn<Get>("kvtgenGetLibVersion")();
    const LibVersion* b = files[1].fn<Get>("kvtgenGetLibVersion")();
    ++namesCalled;
    EXPECT_EQ(0, std::memcmp(a, b, offsetof(LibVersion, libraryName)));
    EXPECT_STREQ(a->libraryName, b->libraryName);
    EXPECT_STREQ(a->versionText, b->versionText);
    EXPECT_STREQ(a->buildDateText, b->buildDateText);
}

TEST(BitIdentity, ComplexKernelsAndDispatchers)
{
    for (const char* dir : {"Fwd", "Inv"}) {
        const std::string prefix = std::string("kvtgDFT") + dir + "_CToC";
        const auto twice = [](int n) { return static_cast<std::size_t>(2 * n); };
        compareSizeFamily<float>(prefix + "_", "32fc", 2, 64, twice, twice);
        compareSizeFamily<double>(prefix + "_", "64fc", 2, 64, twice, twice);
    }
}

// Inputs where a wrong lane or a wrong sign of a zero shows at once: an
// impulse at each sample (real and imaginary part), all zeros of either sign,
// and inputs whose spectra have exact zeros (constant, alternating, real,
// imaginary, real and even), whose signs depend on the order of every
// subtraction on the way.
template <class T>
void compareComplexStructured(const std::string& prefix, const std::string& suffix)
{
    using Kernel = Status (*)(const T*, T*, int32_t);
    for (int n = 2; n <= 64; ++n) {
        const std::string kernel = prefix + std::to_string(n) + "_" + suffix;
        const std::size_t size = static_cast<std::size_t>(2 * n);
        std::vector<std::vector<T>> inputs = {std::vector<T>(size, T(0)), std::vector<T>(size, -T(0))};
        for (std::size_t i = 0; i < size; ++i) {
            std::vector<T> impulse(size, -T(0));
            impulse[i] = T(i % 3 == 0 ? -1.5 : 0.75);
            inputs.push_back(impulse);
        }
        for (const T part : {T(0), T(-1.5)}) {
            std::vector<T> constant(size), alternating(size);
            for (std::size_t i = 0; i < size; i += 2) {
                constant[i] = alternating[i] = T(0.75);
                constant[i + 1] = alternating[i + 1] = part;
                if (i % 4 == 2) {
                    alternating[i] = -alternating[i];
                    alternating[i + 1] = -alternating[i + 1];
                }
            }
            inputs.push_back(constant);
            inputs.push_back(alternating);
        }
        const std::vector<T> random = samples<T>(size, static_cast<unsigned>(n) + 1000u);
        for (int kind = 0; kind < 3; ++kind) {
            // real, imaginary, and real with x[i] = x[n - i]
            std::vector<T> x(size, kind == 1 ? T(0) : -T(0));
            for (std::size_t i = 0; i < size; i += 2)
                x[i + (kind == 1 ? 1 : 0)] = random[i];
            if (kind == 2)
                for (std::size_t i = 2; i < size; i += 2)
                    x[size - i] = x[i];
            inputs.push_back(x);
        }
        for (const std::vector<T>& input : inputs)
            for (const Placement& p : {Placement{0, 0, false}, Placement{8, 0, false}})
                compare<T>(at(kernel.c_str(), ScaleFwdByN, p), input, input.size(), p,
                           [&](const Library& lib, const T* s, T* d) { return lib.fn<Kernel>(kernel)(s, d, ScaleFwdByN); });
    }
}

TEST(BitIdentity, ComplexKernelsOnStructuredInputs)
{
    for (const char* dir : {"Fwd", "Inv"}) {
        const std::string prefix = std::string("kvtgDFT") + dir + "_CToC_";
        compareComplexStructured<float>(prefix, "32fc");
        compareComplexStructured<double>(prefix, "64fc");
    }
}

// The packed layouts hold N + 2 (CCS, even N), N + 1 (CCS, odd N) or N samples.
std::size_t packedCount(const std::string& layout, int n)
{
    return layout == "CCS" ? static_cast<std::size_t>(2 * (n / 2 + 1)) : static_cast<std::size_t>(n);
}

TEST(BitIdentity, RealKernelsAndDispatchers)
{
    for (const std::string layout : {"CCS", "Pack", "Perm"}) {
        const auto plain = [](int n) { return static_cast<std::size_t>(n); };
        const auto packed = [layout](int n) { return packedCount(layout, n); };
        compareSizeFamily<float>("kvtgDFTFwd_RTo" + layout + "_", "32f", 2, 64, plain, packed);
        compareSizeFamily<double>("kvtgDFTFwd_RTo" + layout + "_", "64f", 2, 64, plain, packed);
        compareSizeFamily<float>("kvtgDFTInv_" + layout + "ToR_", "32f", 2, 64, packed, plain);
        compareSizeFamily<double>("kvtgDFTInv_" + layout + "ToR_", "64f", 2, 64, packed, plain);
    }
}

TEST(BitIdentity, HartleyKernelsAndDispatchers)
{
    const auto plain = [](int n) { return static_cast<std::size_t>(n); };
    compareSizeFamily<float>("kvtgHartley_", "32f", 2, 64, plain, plain);
    compareSizeFamily<double>("kvtgHartley_", "64f", 2, 64, plain, plain);
}

template <class T>
void compareWalshHadamard(const std::string& suffix)
{
    using Small = Status (*)(const T*, T*, int32_t);
    using Blocked = Status (*)(const T*, T*, int32_t, uint8_t*);
    using Dispatcher = Status (*)(const T*, T*, int32_t, int32_t, uint8_t*);
    using BufferSize = Status (*)(int32_t, int32_t*);
    const std::string dispatcher = "kvtgWHT_" + suffix;
    for (int order = -1; order <= 14; ++order) {
        int32_t size[2] = {-7, -7};
        Status status[2];
        for (int f = 0; f < 2; ++f)
            status[f] = files[f].fn<BufferSize>("kvtgWHTGetBufferSize_" + suffix)(order, &size[f]);
        ++namesCalled;
        ASSERT_EQ(status[0], status[1]) << "kvtgWHTGetBufferSize_" << suffix << " order " << order;
        ASSERT_EQ(size[0], size[1]) << "kvtgWHTGetBufferSize_" << suffix << " order " << order;
        if (order < 1 || order > 13)
            continue;
        const std::size_t n = std::size_t(1) << order;
        const std::vector<T> input = samples<T>(n, static_cast<unsigned>(order));
        const std::string kernel = "kvtgWHT_" + std::to_string(order) + "_" + suffix;
        std::vector<unsigned char> work(static_cast<std::size_t>(std::max(size[0], 0)) + 64);
        uint8_t* aligned = reinterpret_cast<uint8_t*>((reinterpret_cast<std::uintptr_t>(work.data()) + 15) & ~std::uintptr_t(15));
        for (int flag : {1, 2, 4, 8, 0, 3}) {
            for (const Placement& p : placements<T>()) {
                for (uint8_t* buffer : {aligned, static_cast<uint8_t*>(nullptr)}) {
                    const std::string with = buffer ? " with a buffer" : " with none";
                    compare<T>(at(kernel.c_str(), flag, p) + with, input, n, p,
                               [&](const Library& lib, const T* s, T* d) {
                                   return order <= 7 ? lib.fn<Small>(kernel)(s, d, flag)
                                                     : lib.fn<Blocked>(kernel)(s, d, flag, buffer);
                               });
                    compare<T>(at(dispatcher.c_str(), flag, p) + " order " + std::to_string(order) + with, input, n,
                               p, [&](const Library& lib, const T* s, T* d) {
                                   return lib.fn<Dispatcher>(dispatcher)(s, d, order, flag, buffer);
                               });
                }
            }
        }
    }
}

TEST(BitIdentity, WalshHadamardEveryOrder)
{
    compareWalshHadamard<float>("32f");
    compareWalshHadamard<double>("64f");
}

template <class T>
void compareDct4(const std::string& suffix, int maxLog)
{
    using GetSize = Status (*)(int32_t, int32_t*);
    using Init = Status (*)(DctPlan**, int32_t, uint8_t*);
    using InitAlloc = Status (*)(DctPlan**, int32_t);
    using Free = Status (*)(DctPlan*);
    using Transform = Status (*)(const T*, T*, DctPlan*);
    // sizes that are not lengths of a plan: the statuses must agree
    for (int n : {-8, 0, 1, 3, 48, 1 << 27}) {
        int32_t size[2] = {-7, -7};
        Status status[2];
        for (int f = 0; f < 2; ++f)
            status[f] = files[f].fn<GetSize>("kvtgDCT4GetSize_" + suffix)(n, &size[f]);
        ASSERT_EQ(status[0], status[1]) << "kvtgDCT4GetSize_" << suffix << " n " << n;
        ASSERT_EQ(size[0], size[1]) << "kvtgDCT4GetSize_" << suffix << " n " << n;
    }
    namesCalled += 5;
    // every power of two, and lengths one more, whose plans split otherwise
    std::vector<std::pair<int, int>> lengths;
    for (int log = 1; log <= maxLog; ++log)
        lengths.push_back({1 << log, log});
    for (int log : {6, 12, 13, 16, 18})
        lengths.push_back({(1 << log) + 1, log});
    for (const auto& [n, log] : lengths) {
        int32_t size[2] = {0, 0};
        for (int f = 0; f < 2; ++f)
            ASSERT_EQ(StatusOk, files[f].fn<GetSize>("kvtgDCT4GetSize_" + suffix)(n, &size[f]));
        ASSERT_EQ(size[0], size[1]) << "kvtgDCT4GetSize_" << suffix << " n " << n;
        // a plan of each file in a block of the caller's and one from InitAlloc
        std::vector<unsigned char> blocks[2];
        DctPlan* plans[2][2] = {};
        for (int f = 0; f < 2; ++f) {
            blocks[f].resize(static_cast<std::size_t>(size[f]) + 64);
            uint8_t* block = reinterpret_cast<uint8_t*>((reinterpret_cast<std::uintptr_t>(blocks[f].data()) + 63) & ~std::uintptr_t(63));
            ASSERT_EQ(StatusOk, files[f].fn<Init>("kvtgDCT4Init_" + suffix)(&plans[f][0], n, block));
            ASSERT_EQ(StatusOk, files[f].fn<InitAlloc>("kvtgDCT4InitAlloc_" + suffix)(&plans[f][1], n));
        }
        const std::vector<T> input = samples<T>(static_cast<std::size_t>(n), static_cast<unsigned>(log));
        const std::string name = "kvtgDCT4_" + suffix + " n " + std::to_string(n);
        for (int which = 0; which < 2; ++which) {
            const std::vector<Placement> cases =
                log <= 16 ? placements<T>() : std::vector<Placement>{{0, 0, false}, {int(sizeof(T)), 8, false}};
            for (const Placement& p : cases)
                compare<T>(name + (which ? " (InitAlloc)" : " (Init)") + at("", 8, p), input,
                           static_cast<std::size_t>(n), p, [&](const Library& lib, const T* s, T* d) {
                               return lib.fn<Transform>("kvtgDCT4_" + suffix)(s, d, plans[&lib - files][which]);
                           });
        }
        // Free hands the block to kvtFree: only the InitAlloc plan goes there
        for (int f = 0; f < 2; ++f)
            EXPECT_EQ(StatusOk, files[f].fn<Free>("kvtgDCT4Free_" + suffix)(plans[f][1]));
    }
}

TEST(BitIdentity, Dct4EveryPowerOfTwoTo2To20AndOddLengths)
{
    compareDct4<float>("32f", 20);
    compareDct4<double>("64f", 20);
}

}  // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    if (argc != 3) {
        std::fprintf(stderr, "usage: bit_identity_tests <first file> <second file>\n");
        return 2;
    }
    const std::string paths[2] = {argv[1], argv[2]};
    for (int f = 0; f < 2; ++f)
        if (bench::isVariantFile(paths[f]) && !bench::processorRunsX86_64_v3()) {
            std::printf("skipped: this processor lacks x86-64-v3 (AVX2); %s cannot run here\n", paths[f].c_str());
            return 77;
        }
    for (int f = 0; f < 2; ++f) {
        files[f].handle = dlopen(paths[f].c_str(), RTLD_NOW | RTLD_LOCAL);
        if (files[f].handle == nullptr) {
            std::fprintf(stderr, "cannot load %s: %s\n", paths[f].c_str(), dlerror());
            return 1;
        }
        std::printf("%s file: %s\n", f == 0 ? "first" : "second", paths[f].c_str());
    }
    if (files[0].handle == files[1].handle) {
        std::fprintf(stderr, "both paths gave the same loaded file\n");
        return 1;
    }
    int result = RUN_ALL_TESTS();
    std::printf("%d calls compared, %zu exports\n", namesCalled, exportsCalled.size());
    if (result == 0 && testing::GTEST_FLAG(filter) == "*" && exportsCalled.size() != 1193) {
        std::fprintf(stderr, "expected all 1193 exports to be compared\n");
        result = 1;
    }
    return result;
}
