/**
 * @file kvtgen_batch.h
 * @brief The public interface of libkvtgenbatch.so.1: many transforms per call.
 *
 * Each function transforms `count` signals of one length, laid out in memory
 * by a stride and a distance, and gives every transform the bits of the
 * single call of libkvtgenn8 for the same input, length and flag.  Statuses,
 * flags and sample types are those of kvtgen.h.  Link with `pkg-config
 * --libs kvtgen-batch` or the CMake target `kvtgen::batch`.
 */
#ifndef KVTGEN_BATCH_H
#define KVTGEN_BATCH_H

#include "kvtgen.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @defgroup batch Batched transforms
 * @brief Many signals per call, with the bits of the single calls.
 *
 * Transform t reads its element j at `src[t*srcDist + j*srcStride]` and
 * writes its element j at `dst[t*dstDist + j*dstStride]`, counted in elements
 * of the array's type: N elements per signal, and per spectrum N for `Pack`
 * and `Perm`, N+2 (even N) or N+1 (odd N) for `CCS`.  Rows of a matrix are
 * stride 1, distance N; its columns stride N, distance 1; overlapping
 * windows of a signal are distance = hop.
 *
 * A call checks, in this order, and on a failure writes nothing:
 * - `len` outside 2..64 or `count` below 0: ::StatusBadSize;
 * - `src` or `dst` null: ::StatusNullArg;
 * - a stride below 1 or a distance below 0, two outputs of the batch on one
 *   element, or an input that overlaps the output without having its
 *   layout (the same array, strides and distances): ::StatusBadArg;
 * - a flag other than the four: ::StatusBadFlag.
 *
 * `count` 0 is ::StatusOk and writes nothing.  In place (the same array,
 * strides and distances) works for every length and layout; inputs may
 * overlap one another.
 * @{
 */

/**
 * @name Complex DFT of many signals
 * @{
 */
/**
 * @brief `count` complex DFTs of length @p len, each with the bits of the
 * single call (kvtgDFTFwd_CToC_32fc() and its kind, for the type and direction
 * in the name).
 * @param src       the input signals.
 * @param dst       the output spectra.
 * @param len       number of points N, 2 to 64.
 * @param count     number of transforms, 0 or more.
 * @param srcStride elements between two elements of one input, 1 or more.
 * @param srcDist   elements between the first elements of two inputs, 0 or more.
 * @param dstStride elements between two elements of one output, 1 or more.
 * @param dstDist   elements between the first elements of two outputs, 0 or more.
 * @param flag      ::ScaleFwdByN, ::ScaleInvByN, ::ScaleBySqrtN or ::ScaleNone.
 * @retval StatusOk      the transforms are in @p dst.
 * @retval StatusBadSize @p len is not in 2..64 or @p count is negative.
 * @retval StatusNullArg @p src or @p dst is null.
 * @retval StatusBadArg  the layout is refused (see @ref batch).
 * @retval StatusBadFlag @p flag is not one of the four scaling flags.
 */
KVTG_API Status kvtgBatchDFTFwd_CToC_32fc(const Complex32* src, Complex32* dst, int32_t len, int32_t count,
                                          int32_t srcStride, int32_t srcDist, int32_t dstStride, int32_t dstDist,
                                          int32_t flag);
KVTG_API Status kvtgBatchDFTInv_CToC_32fc(const Complex32* src, Complex32* dst, int32_t len, int32_t count,
                                          int32_t srcStride, int32_t srcDist, int32_t dstStride, int32_t dstDist,
                                          int32_t flag);
KVTG_API Status kvtgBatchDFTFwd_CToC_64fc(const Complex64* src, Complex64* dst, int32_t len, int32_t count,
                                          int32_t srcStride, int32_t srcDist, int32_t dstStride, int32_t dstDist,
                                          int32_t flag);
KVTG_API Status kvtgBatchDFTInv_CToC_64fc(const Complex64* src, Complex64* dst, int32_t len, int32_t count,
                                          int32_t srcStride, int32_t srcDist, int32_t dstStride, int32_t dstDist,
                                          int32_t flag);
/** @} */

/**
 * @name Real DFT and Hartley transform of many signals
 * @{
 */
/**
 * @brief `count` transforms of length @p len, each with the bits of the
 * single call (kvtgDFTFwd_RToCCS_32f() and its kind, for the layout, type and
 * direction in the name).
 * @param src       the inputs: signals (forward, Hartley) or spectra (inverse).
 * @param dst       the outputs: spectra (forward) or signals (inverse, Hartley).
 * @param len       number of points N, 2 to 64.
 * @param count     number of transforms, 0 or more.
 * @param srcStride elements between two elements of one input, 1 or more.
 * @param srcDist   elements between the first elements of two inputs, 0 or more.
 * @param dstStride elements between two elements of one output, 1 or more.
 * @param dstDist   elements between the first elements of two outputs, 0 or more.
 * @param flag      ::ScaleFwdByN, ::ScaleInvByN, ::ScaleBySqrtN or ::ScaleNone.
 * @retval StatusOk      the transforms are in @p dst.
 * @retval StatusBadSize @p len is not in 2..64 or @p count is negative.
 * @retval StatusNullArg @p src or @p dst is null.
 * @retval StatusBadArg  the layout is refused (see @ref batch).
 * @retval StatusBadFlag @p flag is not one of the four scaling flags.
 */
KVTG_API Status kvtgBatchDFTFwd_RToCCS_32f(const Real32* src, Real32* dst, int32_t len, int32_t count, int32_t srcStride,
                                           int32_t srcDist, int32_t dstStride, int32_t dstDist, int32_t flag);
KVTG_API Status kvtgBatchDFTFwd_RToPack_32f(const Real32* src, Real32* dst, int32_t len, int32_t count, int32_t srcStride,
                                            int32_t srcDist, int32_t dstStride, int32_t dstDist, int32_t flag);
KVTG_API Status kvtgBatchDFTFwd_RToPerm_32f(const Real32* src, Real32* dst, int32_t len, int32_t count, int32_t srcStride,
                                            int32_t srcDist, int32_t dstStride, int32_t dstDist, int32_t flag);
KVTG_API Status kvtgBatchDFTInv_CCSToR_32f(const Real32* src, Real32* dst, int32_t len, int32_t count, int32_t srcStride,
                                           int32_t srcDist, int32_t dstStride, int32_t dstDist, int32_t flag);
KVTG_API Status kvtgBatchDFTInv_PackToR_32f(const Real32* src, Real32* dst, int32_t len, int32_t count, int32_t srcStride,
                                            int32_t srcDist, int32_t dstStride, int32_t dstDist, int32_t flag);
KVTG_API Status kvtgBatchDFTInv_PermToR_32f(const Real32* src, Real32* dst, int32_t len, int32_t count, int32_t srcStride,
                                            int32_t srcDist, int32_t dstStride, int32_t dstDist, int32_t flag);
KVTG_API Status kvtgBatchDFTFwd_RToCCS_64f(const Real64* src, Real64* dst, int32_t len, int32_t count, int32_t srcStride,
                                           int32_t srcDist, int32_t dstStride, int32_t dstDist, int32_t flag);
KVTG_API Status kvtgBatchDFTFwd_RToPack_64f(const Real64* src, Real64* dst, int32_t len, int32_t count, int32_t srcStride,
                                            int32_t srcDist, int32_t dstStride, int32_t dstDist, int32_t flag);
KVTG_API Status kvtgBatchDFTFwd_RToPerm_64f(const Real64* src, Real64* dst, int32_t len, int32_t count, int32_t srcStride,
                                            int32_t srcDist, int32_t dstStride, int32_t dstDist, int32_t flag);
KVTG_API Status kvtgBatchDFTInv_CCSToR_64f(const Real64* src, Real64* dst, int32_t len, int32_t count, int32_t srcStride,
                                           int32_t srcDist, int32_t dstStride, int32_t dstDist, int32_t flag);
KVTG_API Status kvtgBatchDFTInv_PackToR_64f(const Real64* src, Real64* dst, int32_t len, int32_t count, int32_t srcStride,
                                            int32_t srcDist, int32_t dstStride, int32_t dstDist, int32_t flag);
KVTG_API Status kvtgBatchDFTInv_PermToR_64f(const Real64* src, Real64* dst, int32_t len, int32_t count, int32_t srcStride,
                                            int32_t srcDist, int32_t dstStride, int32_t dstDist, int32_t flag);
KVTG_API Status kvtgBatchHartley_32f(const Real32* src, Real32* dst, int32_t len, int32_t count, int32_t srcStride,
                                     int32_t srcDist, int32_t dstStride, int32_t dstDist, int32_t flag);
KVTG_API Status kvtgBatchHartley_64f(const Real64* src, Real64* dst, int32_t len, int32_t count, int32_t srcStride,
                                     int32_t srcDist, int32_t dstStride, int32_t dstDist, int32_t flag);
/** @} */

/** @} */

#ifdef __cplusplus
}
#endif

#endif
