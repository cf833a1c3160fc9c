// libFuzzer target for the size dispatchers and the DCT-IV plan entry points:
// random family, length, flag,
// pointer alignment and null pointers.  A call that fails must write nothing;
// a call that succeeds must write only its own output array.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "kvtgen.h"

namespace {

constexpr std::size_t guard = 64;

struct Input {
    const std::uint8_t* data;
    std::size_t size;
    template <class T>
    T take()
    {
        T value{};
        const std::size_t n = size < sizeof(T) ? size : sizeof(T);
        std::memcpy(&value, data, n);
        data += n;
        size -= n;
        return value;
    }
};

[[noreturn]] void fail() { std::abort(); }

int samples(int len) { return len; }
int ccsElements(int len) { return len % 2 == 0 ? len + 2 : len + 1; }

// Calls one fixed-size dispatcher (complex, real or Hartley) on buffers inside
// guard bytes; `written` gives the number of elements a call may store.
template <class C>
void fixedSizeCall(Status (*transform)(const C*, C*, int32_t, int32_t), Input& in, int (*written)(int) = samples)
{
    const auto len = in.take<std::int32_t>();
    const auto flag = in.take<std::int32_t>();
    const auto layout = in.take<std::uint8_t>();
    // misaligned by whole scalars: the natural alignment of the element type
    const std::size_t srcOffset = (layout & 3) * alignof(C), dstOffset = ((layout >> 2) & 3) * alignof(C);
    const bool nullSrc = layout & 16, nullDst = layout & 32, inPlace = layout & 64;
    const std::size_t bytes = 66 * sizeof(C);
    std::vector<unsigned char> srcStore(bytes + 2 * guard + 16, 0x11), dstStore(bytes + 2 * guard + 16, 0x5A);
    for (std::size_t i = guard; i < guard + bytes; ++i)
        srcStore[i + srcOffset] = static_cast<unsigned char>(i * 7);  // finite samples
    C* src = nullSrc ? nullptr : reinterpret_cast<C*>(srcStore.data() + guard + srcOffset);
    C* dst = nullDst ? nullptr : reinterpret_cast<C*>(dstStore.data() + guard + dstOffset);
    if (inPlace && src)
        dst = src;
    const std::vector<unsigned char> srcBefore = srcStore, dstBefore = dstStore;
    const Status status = transform(src, dst, len, flag);
    const bool valid = len >= 2 && len <= 64 && src && dst &&
                       (flag == ScaleNone || flag == ScaleBySqrtN || flag == ScaleFwdByN || flag == ScaleInvByN);
    if ((status == StatusOk) != valid)
        fail();
    if (status != StatusOk) {
        if (srcStore != srcBefore || dstStore != dstBefore)
            fail();  // a failed call wrote something
        const Status expected = (len < 2 || len > 64) ? StatusBadSize : (!src || !dst) ? StatusNullArg : StatusBadFlag;
        if (status != expected)
            fail();
        return;
    }
    // only the N output samples may change
    unsigned char* out = reinterpret_cast<unsigned char*>(dst);
    std::vector<unsigned char>& store = dst == src ? srcStore : dstStore;
    const std::vector<unsigned char>& before = dst == src ? srcBefore : dstBefore;
    for (std::size_t i = 0; i < store.size(); ++i) {
        const unsigned char* p = store.data() + i;
        const bool inside = p >= out && p < out + static_cast<std::size_t>(written(len)) * sizeof(C);
        if (!inside && store[i] != before[i])
            fail();
    }
}

// Calls one Walsh-Hadamard dispatcher; the buffer is null or one of the
// reported size, 16-byte aligned.
template <class T>
void whtCall(Status (*transform)(const T*, T*, int32_t, int32_t, uint8_t*), Status (*size)(int32_t, int32_t*),
             Input& in)
{
    const auto order = in.take<std::int32_t>();
    const auto flag = in.take<std::int32_t>();
    const auto layout = in.take<std::uint8_t>();
    const std::size_t srcOffset = (layout & 3) * sizeof(T), dstOffset = ((layout >> 2) & 3) * sizeof(T);
    const bool nullSrc = layout & 16, nullDst = layout & 32, inPlace = layout & 64, ownBuffer = layout & 128;
    const bool validOrder = order >= 1 && order <= 13;
    const std::size_t n = validOrder ? std::size_t(1) << order : 16;
    std::vector<unsigned char> srcStore(n * sizeof(T) + 2 * guard + 32, 0x11), dstStore(n * sizeof(T) + 2 * guard + 32, 0x5A);
    std::int32_t bytes = 0;
    if (validOrder && size(order, &bytes) != StatusOk)
        fail();
    std::vector<std::uint64_t> bufferStore(static_cast<std::size_t>(bytes) / 8 + 4);
    T* src = nullSrc ? nullptr : reinterpret_cast<T*>(srcStore.data() + guard + srcOffset);
    T* dst = nullDst ? nullptr : reinterpret_cast<T*>(dstStore.data() + guard + dstOffset);
    if (inPlace && src)
        dst = src;
    uint8_t* buffer = ownBuffer ? nullptr : reinterpret_cast<uint8_t*>(bufferStore.data());
    const std::vector<unsigned char> srcBefore = srcStore, dstBefore = dstStore;
    const Status status = transform(src, dst, order, flag, buffer);
    const bool validFlag = flag == ScaleNone || flag == ScaleBySqrtN || flag == ScaleFwdByN || flag == ScaleInvByN;
    const Status expected = !validOrder ? StatusBadSize : (!src || !dst) ? StatusNullArg : !validFlag ? StatusBadFlag : StatusOk;
    if (status != expected)
        fail();
    std::vector<unsigned char>& store = dst == src ? srcStore : dstStore;
    const std::vector<unsigned char>& before = dst == src ? srcBefore : dstBefore;
    const unsigned char* out = reinterpret_cast<unsigned char*>(dst);
    for (std::size_t i = 0; i < store.size(); ++i) {
        const unsigned char* p = store.data() + i;
        const bool inside = status == StatusOk && p >= out && p < out + n * sizeof(T);
        if (!inside && store[i] != before[i])
            fail();  // a failed call wrote something, or a call wrote outside dst
    }
}

// DCT-IV plan entry points: a random length, a block of the reported size (or
// a null one), then a transform.  Failures write nothing to the caller's
// pointer; success stays inside the block, src and dst.
template <class T>
void dctCall(Status (*size)(int32_t, int32_t*), Status (*init)(DctPlan**, int32_t, uint8_t*),
             Status (*run)(const T*, T*, DctPlan*), Input& in)
{
    const auto choice = in.take<std::uint16_t>();
    const auto layout = in.take<std::uint8_t>();
    // mostly small lengths, some arbitrary ones
    const std::int32_t n = (choice & 0x8000) ? static_cast<std::int32_t>(choice & 0x7FFF) - 16 : (1 << (choice % 14)) + (choice & 0x100 ? 1 : 0);
    std::int32_t bytes = -1;
    const Status sized = size(n, &bytes);
    DctPlan* const marker = reinterpret_cast<DctPlan*>(&bytes);
    DctPlan* plan = marker;
    if (sized != StatusOk) {
        if (bytes != -1)
            fail();  // nothing stored on a rejected length
        // a rejected length may take part of a tree before it fails: the block
        // is scratch then, and has room for a table of the length
        std::vector<unsigned char> block(16 * static_cast<std::size_t>(n > 0 ? n : 0) + 8192, 0x33);
        if (init(&plan, n, block.data()) == StatusOk || plan != marker)
            fail();
        return;
    }
    const std::size_t offset = layout & 31;
    std::vector<unsigned char> blockStore(static_cast<std::size_t>(bytes) + offset + 2 * guard, 0x77);
    uint8_t* block = (layout & 64) ? nullptr : blockStore.data() + guard + offset;
    const Status status = init(&plan, n, block);
    if (block == nullptr) {
        if (status != StatusNullArg || plan != marker)
            fail();
        return;
    }
    if (status != StatusOk)
        fail();
    for (std::size_t i = 0; i < guard; ++i)
        if (blockStore[i] != 0x77 || blockStore[blockStore.size() - 1 - i] != 0x77)
            fail();  // the plan outgrew its reported size
    const std::size_t count = static_cast<std::size_t>(n);
    std::vector<T> src(count + 8, T(0.25)), dst(count + 8, T(7));
    const bool inPlace = layout & 128;
    if (run(src.data() + 1, inPlace ? src.data() + 1 : dst.data() + 1, plan) != StatusOk)
        fail();
    const std::vector<T>& out = inPlace ? src : dst;
    const T untouched = inPlace ? T(0.25) : T(7);
    if (out[0] != untouched || out[count + 1] != untouched)
        fail();  // a write next to the output
    for (std::size_t i = 0; i < guard; ++i)
        if (blockStore[i] != 0x77 || blockStore[blockStore.size() - 1 - i] != 0x77)
            fail();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Input in{data, size};
    switch (in.take<std::uint8_t>() % 24) {
    case 0: fixedSizeCall<Complex32>(kvtgDFTFwd_CToC_32fc, in); break;
    case 1: fixedSizeCall<Complex32>(kvtgDFTInv_CToC_32fc, in); break;
    case 2: fixedSizeCall<Complex64>(kvtgDFTFwd_CToC_64fc, in); break;
    case 3: fixedSizeCall<Complex64>(kvtgDFTInv_CToC_64fc, in); break;
    case 8: fixedSizeCall<Real32>(kvtgDFTFwd_RToCCS_32f, in, ccsElements); break;
    case 9: fixedSizeCall<Real64>(kvtgDFTFwd_RToCCS_64f, in, ccsElements); break;
    case 10: fixedSizeCall<Real32>(kvtgDFTFwd_RToPack_32f, in); break;
    case 11: fixedSizeCall<Real64>(kvtgDFTFwd_RToPack_64f, in); break;
    case 12: fixedSizeCall<Real32>(kvtgDFTFwd_RToPerm_32f, in); break;
    case 13: fixedSizeCall<Real64>(kvtgDFTFwd_RToPerm_64f, in); break;
    case 14: fixedSizeCall<Real32>(kvtgDFTInv_CCSToR_32f, in); break;
    case 15: fixedSizeCall<Real64>(kvtgDFTInv_CCSToR_64f, in); break;
    case 16: fixedSizeCall<Real32>(kvtgDFTInv_PackToR_32f, in); break;
    case 17: fixedSizeCall<Real64>(kvtgDFTInv_PackToR_64f, in); break;
    case 18: fixedSizeCall<Real32>(kvtgDFTInv_PermToR_32f, in); break;
    case 19: fixedSizeCall<Real64>(kvtgDFTInv_PermToR_64f, in); break;
    case 20: fixedSizeCall<Real32>(kvtgHartley_32f, in); break;
    case 21: fixedSizeCall<Real64>(kvtgHartley_64f, in); break;
    case 4: whtCall<Real32>(kvtgWHT_32f, kvtgWHTGetBufferSize_32f, in); break;
    case 5: whtCall<Real64>(kvtgWHT_64f, kvtgWHTGetBufferSize_64f, in); break;
    case 6:
    case 22: dctCall<Real32>(kvtgDCT4GetSize_32f, kvtgDCT4Init_32f, kvtgDCT4_32f, in); break;
    case 7:
    case 23:
    default: dctCall<Real64>(kvtgDCT4GetSize_64f, kvtgDCT4Init_64f, kvtgDCT4_64f, in); break;
    }
    return 0;
}
