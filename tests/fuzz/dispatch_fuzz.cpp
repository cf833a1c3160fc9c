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

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Input in{data, size};
    switch (in.take<std::uint8_t>() % 4) {
    case 0: complexCall<Complex32>(kvtgDFTFwd_CToC_32fc, in); break;
    case 1: complexCall<Complex32>(kvtgDFTInv_CToC_32fc, in); break;
    case 2: complexCall<Complex64>(kvtgDFTFwd_CToC_64fc, in); break;
    default: complexCall<Complex64>(kvtgDFTInv_CToC_64fc, in); break;
    }
    return 0;
}
