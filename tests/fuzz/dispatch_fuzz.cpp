// libFuzzer target for the size dispatchers: random family, length, flag,
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

// Calls one complex dispatcher on buffers inside guard bytes.
template <class C>
void complexCall(Status (*transform)(const C*, C*, int32_t, int32_t), Input& in)
{
    const auto len = in.take<std::int32_t>();
    const auto flag = in.take<std::int32_t>();
    const auto layout = in.take<std::uint8_t>();
    const std::size_t srcOffset = (layout & 3) * 4, dstOffset = ((layout >> 2) & 3) * 4;
    const bool nullSrc = layout & 16, nullDst = layout & 32, inPlace = layout & 64;
    const std::size_t bytes = 64 * sizeof(C);
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
        const bool inside = p >= out && p < out + static_cast<std::size_t>(len) * sizeof(C);
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

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Input in{data, size};
    switch (in.take<std::uint8_t>() % 6) {
    case 0: complexCall<Complex32>(kvtgDFTFwd_CToC_32fc, in); break;
    case 1: complexCall<Complex32>(kvtgDFTInv_CToC_32fc, in); break;
    case 2: complexCall<Complex64>(kvtgDFTFwd_CToC_64fc, in); break;
    case 3: complexCall<Complex64>(kvtgDFTInv_CToC_64fc, in); break;
    case 4: whtCall<Real32>(kvtgWHT_32f, kvtgWHTGetBufferSize_32f, in); break;
    default: whtCall<Real64>(kvtgWHT_64f, kvtgWHTGetBufferSize_64f, in); break;
    }
    return 0;
}
