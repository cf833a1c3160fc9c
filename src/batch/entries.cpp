// The entry points of the batched transforms: the checks of a call, in the
// order size, pointers, layout, flag, then the batched kernel of the length
// from its family's table (the generated pgenbatch* units).
#include "kvtgen_batch.h"

#include <cstdint>

#include "batch/lanes.h"

namespace kvtg_batch {

extern const Kernel<float> batchDFTFwd_RToCCS_32f[63], batchDFTFwd_RToPack_32f[63], batchDFTFwd_RToPerm_32f[63];
extern const Kernel<float> batchDFTInv_CCSToR_32f[63], batchDFTInv_PackToR_32f[63], batchDFTInv_PermToR_32f[63];
extern const Kernel<double> batchDFTFwd_RToCCS_64f[63], batchDFTFwd_RToPack_64f[63], batchDFTFwd_RToPerm_64f[63];
extern const Kernel<double> batchDFTInv_CCSToR_64f[63], batchDFTInv_PackToR_64f[63], batchDFTInv_PermToR_64f[63];
extern const Kernel<float> batchHartley_32f[63];
extern const Kernel<double> batchHartley_64f[63];
extern const Kernel<float> batchDFTFwd_CToC_32fc[63], batchDFTInv_CToC_32fc[63];
extern const Kernel<double> batchDFTFwd_CToC_64fc[63], batchDFTInv_CToC_64fc[63];

namespace {

// Elements per transform: a signal, a Pack or Perm spectrum has N, a CCS
// spectrum the bins 0..N/2 as pairs.
enum class Elements { N, CCS };

long elementsOf(Elements e, int n) { return e == Elements::CCS ? (n % 2 == 0 ? n + 2 : n + 1) : n; }

// Euclid's greatest common divisor (std::gcd counts trailing zeros with an
// instruction encoding that the baseline file's check refuses).
long gcd(long a, long b)
{
    while (b != 0) {
        const long r = a % b;
        a = b;
        b = r;
    }
    return a;
}

// Whether two outputs (t, k) and (t', k') of the batch fall on one element:
// (t - t') dist = (k' - k) stride has a solution other than zero, whose
// smallest is |t - t'| = stride / g, |k - k'| = dist / g, g = gcd.
bool outputsCollide(long count, long elements, long stride, long dist)
{
    if (count <= 1)
        return false;
    if (dist == 0)
        return true;
    const long g = gcd(stride, dist);
    return stride / g < count && dist / g < elements;
}

// The bytes from the first element of the first transform to the end of the
// last element of the last one.
template <class T>
std::uintptr_t extentEnd(const T* p, long count, long elements, long stride, long dist)
{
    return reinterpret_cast<std::uintptr_t>(p) + sizeof(T) * static_cast<std::uintptr_t>((count - 1) * dist +
                                                                                        (elements - 1) * stride + 1);
}

// The design library's call of one transform of the same entry point.
template <class T>
using Single = Status (*)(const T*, T*, int32_t, int32_t);

// A strided batch of one transform: the single call through contiguous
// copies.  Out of line, so that its arrays do not make the frame of every
// call.
template <class T>
__attribute__((noinline)) Status stridedTransform(Single<T> single, const T* src, T* dst, int32_t len, long inputs,
                                                  long outputs, int32_t srcStride, int32_t dstStride, int32_t flag)
{
    // aligned as a vector of the widest target, which the single calls read fastest
    alignas(64) T x[66];
    alignas(64) T y[66];
    for (long j = 0; j < inputs; ++j)
        x[j] = src[j * srcStride];
    const Status status = single(x, y, len, flag);
    if (status == StatusOk)
        for (long k = 0; k < outputs; ++k)
            dst[k * dstStride] = y[k];
    return status;
}

// T: the element type of the arrays (a complex element is two Real numbers
// to the kernel).  Inline in each entry point, so that a batch of one costs
// little more than the single call.
template <class Real, class T>
KVTG_INLINE Status batchCall(const Kernel<Real> (&table)[63], Single<T> single, Elements in, Elements out,
                             const T* src, T* dst, int32_t len, int32_t count, int32_t srcStride, int32_t srcDist,
                             int32_t dstStride, int32_t dstDist, int32_t flag)
{
    if (len < 2 || len > 64 || count < 0)
        return StatusBadSize;
    if (src == nullptr || dst == nullptr)
        return StatusNullArg;
    if (srcStride < 1 || dstStride < 1 || srcDist < 0 || dstDist < 0)
        return StatusBadArg;
    const long inputs = elementsOf(in, len), outputs = elementsOf(out, len);
    if (outputsCollide(count, outputs, dstStride, dstDist))
        return StatusBadArg;
    const bool sameLayout = static_cast<const void*>(src) == static_cast<const void*>(dst) && srcStride == dstStride &&
                            srcDist == dstDist;
    if (count > 0 && !sameLayout) {
        const std::uintptr_t s = reinterpret_cast<std::uintptr_t>(src), d = reinterpret_cast<std::uintptr_t>(dst);
        if (s < extentEnd(dst, count, outputs, dstStride, dstDist) && d < extentEnd(src, count, inputs, srcStride, srcDist))
            return StatusBadArg;
    }
    // a batch of one transform is the single call, whose bits every transform
    // of a batch has, without the lanes of a pass that no other transform fills
    if (count == 1)
        return srcStride == 1 && dstStride == 1
                   ? single(src, dst, len, flag)
                   : stridedTransform(single, src, dst, len, inputs, outputs, srcStride, dstStride, flag);
    return table[len - 2](reinterpret_cast<const Real*>(src), reinterpret_cast<Real*>(dst),
                          Layout{count, srcStride, srcDist, dstStride, dstDist}, flag);
}

}  // namespace

}  // namespace kvtg_batch

using kvtg_batch::batchCall;
using kvtg_batch::Elements;

// name: the entry point, table: its kernels, single: the design library's
// call of one transform.
#define KVTG_BATCH_ENTRY(name, table, single, T, in, out)                                                          \
    extern "C" KVTG_API Status name(const T* src, T* dst, int32_t len, int32_t count, int32_t srcStride,      \
                                    int32_t srcDist, int32_t dstStride, int32_t dstDist, int32_t flag)              \
    {                                                                                                               \
        return batchCall(kvtg_batch::table, single, Elements::in, Elements::out, src, dst, len, count, srcStride,  \
                         srcDist, dstStride, dstDist, flag);                                                        \
    }

KVTG_BATCH_ENTRY(kvtgBatchDFTFwd_CToC_32fc, batchDFTFwd_CToC_32fc, kvtgDFTFwd_CToC_32fc, Complex32, N, N)
KVTG_BATCH_ENTRY(kvtgBatchDFTInv_CToC_32fc, batchDFTInv_CToC_32fc, kvtgDFTInv_CToC_32fc, Complex32, N, N)
KVTG_BATCH_ENTRY(kvtgBatchDFTFwd_CToC_64fc, batchDFTFwd_CToC_64fc, kvtgDFTFwd_CToC_64fc, Complex64, N, N)
KVTG_BATCH_ENTRY(kvtgBatchDFTInv_CToC_64fc, batchDFTInv_CToC_64fc, kvtgDFTInv_CToC_64fc, Complex64, N, N)
KVTG_BATCH_ENTRY(kvtgBatchDFTFwd_RToCCS_32f, batchDFTFwd_RToCCS_32f, kvtgDFTFwd_RToCCS_32f, Real32, N, CCS)
KVTG_BATCH_ENTRY(kvtgBatchDFTFwd_RToPack_32f, batchDFTFwd_RToPack_32f, kvtgDFTFwd_RToPack_32f, Real32, N, N)
KVTG_BATCH_ENTRY(kvtgBatchDFTFwd_RToPerm_32f, batchDFTFwd_RToPerm_32f, kvtgDFTFwd_RToPerm_32f, Real32, N, N)
KVTG_BATCH_ENTRY(kvtgBatchDFTInv_CCSToR_32f, batchDFTInv_CCSToR_32f, kvtgDFTInv_CCSToR_32f, Real32, CCS, N)
KVTG_BATCH_ENTRY(kvtgBatchDFTInv_PackToR_32f, batchDFTInv_PackToR_32f, kvtgDFTInv_PackToR_32f, Real32, N, N)
KVTG_BATCH_ENTRY(kvtgBatchDFTInv_PermToR_32f, batchDFTInv_PermToR_32f, kvtgDFTInv_PermToR_32f, Real32, N, N)
KVTG_BATCH_ENTRY(kvtgBatchDFTFwd_RToCCS_64f, batchDFTFwd_RToCCS_64f, kvtgDFTFwd_RToCCS_64f, Real64, N, CCS)
KVTG_BATCH_ENTRY(kvtgBatchDFTFwd_RToPack_64f, batchDFTFwd_RToPack_64f, kvtgDFTFwd_RToPack_64f, Real64, N, N)
KVTG_BATCH_ENTRY(kvtgBatchDFTFwd_RToPerm_64f, batchDFTFwd_RToPerm_64f, kvtgDFTFwd_RToPerm_64f, Real64, N, N)
KVTG_BATCH_ENTRY(kvtgBatchDFTInv_CCSToR_64f, batchDFTInv_CCSToR_64f, kvtgDFTInv_CCSToR_64f, Real64, CCS, N)
KVTG_BATCH_ENTRY(kvtgBatchDFTInv_PackToR_64f, batchDFTInv_PackToR_64f, kvtgDFTInv_PackToR_64f, Real64, N, N)
KVTG_BATCH_ENTRY(kvtgBatchDFTInv_PermToR_64f, batchDFTInv_PermToR_64f, kvtgDFTInv_PermToR_64f, Real64, N, N)
KVTG_BATCH_ENTRY(kvtgBatchHartley_32f, batchHartley_32f, kvtgHartley_32f, Real32, N, N)
KVTG_BATCH_ENTRY(kvtgBatchHartley_64f, batchHartley_64f, kvtgHartley_64f, Real64, N, N)
