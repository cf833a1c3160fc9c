// Batch library: every entry point of libkvtgenbatch runs batches of 37
// transforms at lengths 8, 13 and 64 with each of the four flags, inputs and
// outputs at padded distances; each transform must have the bits of the single
// call of libkvtgenn8 on the same input, and the padding between outputs must
// be left as it was.
#include <cstdio>
#include <cstring>
#include <iterator>
#include <random>
#include <vector>

#include "demo.h"
#include "kvtgen_batch.h"

namespace {

template <class T>
using BatchFn = Status (*)(const T*, T*, int32_t, int32_t, int32_t, int32_t, int32_t, int32_t, int32_t);
template <class T>
using SingleFn = Status (*)(const T*, T*, int32_t, int32_t);

// The elements of one signal or spectrum of n points: n, or a CCS spectrum's
// n + 2 (even n) or n + 1 (odd n).
enum class Size { N, CCS };

int elements(Size size, int n) { return size == Size::N ? n : n % 2 == 0 ? n + 2 : n + 1; }

// A batched entry point and the single call it must agree with.
template <class T>
struct Pair {
    const char* name;
    BatchFn<T> batch;
    SingleFn<T> single;
    Size in, out;
};

// pairs each batched function with the single call of the same name
#define KVTG_DEMO_PAIR(name, in, out) {"kvtgBatch" #name, kvtgBatch##name, kvtg##name, Size::in, Size::out}

const Pair<Complex32> complex32[] = {KVTG_DEMO_PAIR(DFTFwd_CToC_32fc, N, N), KVTG_DEMO_PAIR(DFTInv_CToC_32fc, N, N)};
const Pair<Complex64> complex64[] = {KVTG_DEMO_PAIR(DFTFwd_CToC_64fc, N, N), KVTG_DEMO_PAIR(DFTInv_CToC_64fc, N, N)};
const Pair<Real32> real32[] = {
    KVTG_DEMO_PAIR(DFTFwd_RToCCS_32f, N, CCS), KVTG_DEMO_PAIR(DFTFwd_RToPack_32f, N, N),
    KVTG_DEMO_PAIR(DFTFwd_RToPerm_32f, N, N),  KVTG_DEMO_PAIR(DFTInv_CCSToR_32f, CCS, N),
    KVTG_DEMO_PAIR(DFTInv_PackToR_32f, N, N),  KVTG_DEMO_PAIR(DFTInv_PermToR_32f, N, N),
    KVTG_DEMO_PAIR(Hartley_32f, N, N)};
const Pair<Real64> real64[] = {
    KVTG_DEMO_PAIR(DFTFwd_RToCCS_64f, N, CCS), KVTG_DEMO_PAIR(DFTFwd_RToPack_64f, N, N),
    KVTG_DEMO_PAIR(DFTFwd_RToPerm_64f, N, N),  KVTG_DEMO_PAIR(DFTInv_CCSToR_64f, CCS, N),
    KVTG_DEMO_PAIR(DFTInv_PackToR_64f, N, N),  KVTG_DEMO_PAIR(DFTInv_PermToR_64f, N, N),
    KVTG_DEMO_PAIR(Hartley_64f, N, N)};

#undef KVTG_DEMO_PAIR

constexpr int count = 37;
constexpr int lengths[] = {8, 13, 64};
constexpr int32_t flags[] = {ScaleFwdByN, ScaleInvByN, ScaleBySqrtN, ScaleNone};

double draw(std::mt19937& engine) { return std::uniform_real_distribution<double>(-1.0, 1.0)(engine); }
void randomize(Real32& v, std::mt19937& engine) { v = static_cast<Real32>(draw(engine)); }
void randomize(Real64& v, std::mt19937& engine) { v = draw(engine); }
void randomize(Complex32& v, std::mt19937& engine)
{
    v.re = static_cast<Real32>(draw(engine));
    v.im = static_cast<Real32>(draw(engine));
}
void randomize(Complex64& v, std::mt19937& engine)
{
    v.re = draw(engine);
    v.im = draw(engine);
}

// One batch of one entry point: true if every transform has the single call's
// bits and the elements between the outputs are untouched.
template <class T>
bool sameBits(const Pair<T>& pair, int n, int32_t flag, std::mt19937& engine)
{
    const int in = elements(pair.in, n), out = elements(pair.out, n);
    const int srcDist = in + 3, dstDist = out + 5;  // 3 and 5 unused elements after each
    std::vector<T> src(static_cast<std::size_t>(count * srcDist)), dst(static_cast<std::size_t>(count * dstDist));
    std::vector<T> single(static_cast<std::size_t>(out));
    for (T& v : src)
        randomize(v, engine);
    for (T& v : dst)
        randomize(v, engine);
    const std::vector<T> before = dst;
    if (pair.batch(src.data(), dst.data(), n, count, 1, srcDist, 1, dstDist, flag) != StatusOk)
        return false;
    const std::size_t outputBytes = single.size() * sizeof(T), paddingBytes = static_cast<std::size_t>(dstDist - out) * sizeof(T);
    for (int t = 0; t < count; ++t) {
        const T* output = dst.data() + t * dstDist;
        if (pair.single(src.data() + t * srcDist, single.data(), n, flag) != StatusOk ||
            std::memcmp(single.data(), output, outputBytes) != 0 ||
            std::memcmp(output + out, before.data() + t * dstDist + out, paddingBytes) != 0)
            return false;
    }
    return true;
}

// Every entry point of a table at every length and flag; prints the ones that differ.
template <class T, std::size_t size>
bool allSameBits(const Pair<T> (&table)[size], std::mt19937& engine)
{
    bool ok = true;
    for (const Pair<T>& pair : table)
        for (int n : lengths)
            for (int32_t flag : flags)
                if (!sameBits(pair, n, flag, engine)) {
                    std::printf("  %s, length %d, flag %d: not the single call's bits\n", pair.name, n, flag);
                    ok = false;
                }
    return ok;
}

bool run()
{
    std::mt19937 engine(8);
    bool ok = allSameBits(complex32, engine);
    ok = allSameBits(complex64, engine) && ok;
    ok = allSameBits(real32, engine) && ok;
    ok = allSameBits(real64, engine) && ok;
    const std::size_t entryPoints = std::size(complex32) + std::size(complex64) + std::size(real32) + std::size(real64);
    std::printf("batch library: %zu entry points, lengths 8, 13, 64, all four flags, %d transforms at padded distances\n",
                entryPoints, count);
    std::printf("  every transform the single call's bits, the padding untouched: %s\n", ok ? "yes" : "no");
    return ok;
}

const demo::Registration registration(60, "batch", run);

}  // namespace
