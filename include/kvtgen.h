/**
 * @file kvtgen.h
 * @brief The public interface of libkvtgenn8.so.6.1.
 *
 * Fixed-size signal transforms (complex and real DFTs and Hartley transforms
 * of every length 2..64, Walsh-Hadamard transforms of orders 1..13) and a
 * planned type-IV DCT for power-of-two lengths, with a plain C interface
 * usable from C and C++.  Link with `pkg-config --libs kvtgen` or the CMake
 * target `kvtgen::kvtgenn8`.  The functions are listed by family under
 * Modules: @ref frame, @ref version, @ref complex, @ref real, @ref hartley,
 * @ref wht, @ref dct4.
 */
#ifndef KVTGEN_H
#define KVTGEN_H

#include <stdint.h>

#if defined(KVTG_BUILDING_LIBRARY)
#define KVTG_API __attribute__((visibility("default")))
#else
#define KVTG_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @defgroup frame Statuses, scaling flags and sample types
 * @brief What every transform of the library shares.
 *
 * A fixed-size transform (complex DFT, real DFT, Hartley, Walsh-Hadamard) has
 * a kernel per size, named by its size, such as
 * `kvtgDFTFwd_CToC_12_32fc(src, dst, flag)`, and a size dispatcher that takes
 * the size as an argument, such as `kvtgDFTFwd_CToC_32fc(src, dst, len, flag)`,
 * calls that kernel and gives the same bits.
 *
 * - Order of tests: the size (at a dispatcher), then null pointers, then the
 *   flag.  The first failure is returned, and a call that fails reads and
 *   writes nothing.
 * - In place: @p src and @p dst may be the same array, in every family: a
 *   kernel reads all of @p src before its first write to @p dst.
 * - Alignment: arrays of samples need only the alignment of their sample
 *   type.  Where a kernel has a faster route for arrays aligned to 16 bytes,
 *   its route for the others gives the same bits.  Only a Walsh-Hadamard
 *   work buffer must be 16-byte aligned.
 * - Threads: the fixed-size functions keep no state and take no lock; any
 *   thread may call any of them at any time, as long as no two calls at once
 *   write the same @p dst or share a work buffer.  A DCT-IV plan serves one
 *   call at a time.
 * @{
 */
/** The result of every function but kvtgenGetLibVersion(): one of the values below. */
typedef int32_t Status;
/** The values of ::Status. */
enum {
    /** The transform, query, plan or release was done. */
    StatusOk = 0,
    /** From kvtgDCT4_32f() and kvtgDCT4_64f() only: the plan is not a ready
     * plan.
     */
    StatusBadArg = -5,
    /** A length or order out of range at a size dispatcher or a size query, or
     * a DCT-IV length that no plan takes; tested before anything else.
     */
    StatusBadSize = -6,
    /** A required pointer is null (tested before the flag); from
     * kvtgDCT4InitAlloc_32f() and kvtgDCT4InitAlloc_64f() also when
     * kvtMalloc() has no memory.
     */
    StatusNullArg = -8,
    /** The flag is not exactly one of the four scaling flags; only with valid
     * pointers.
     */
    StatusBadFlag = -16
};

/**
 * The scaling flags.  A flag is one of these four values, compared for
 * equality: they are not bits to combine, and any other value gives
 * ::StatusBadFlag.  N is the number of points (2^order for Walsh-Hadamard).
 */
enum {
    /** 1/N on a forward DFT, 1 on an inverse DFT; 1/N for Hartley and
     * Walsh-Hadamard.
     */
    ScaleFwdByN = 1,
    /** 1/N on an inverse DFT, 1 on a forward DFT; 1/N for Hartley and
     * Walsh-Hadamard.
     */
    ScaleInvByN = 2,
    /** 1/sqrt(N) in every family and direction. */
    ScaleBySqrtN = 4,
    /** No scaling: the factor is 1. */
    ScaleNone = 8
};

/** An IEEE single-precision sample; `32f` in names. */
typedef float Real32;
/** An IEEE double-precision sample; `64f` in names. */
typedef double Real64;
/** A complex sample of two Real32, real part first; `32fc` in names.  Arrays interleave them. */
typedef struct { Real32 re, im; } Complex32;
/** @var Complex32::re
 * The real part. */
/** @var Complex32::im
 * The imaginary part. */
/** A complex sample of two Real64, real part first; `64fc` in names.  Arrays interleave them. */
typedef struct { Real64 re, im; } Complex64;
/** @var Complex64::re
 * The real part. */
/** @var Complex64::im
 * The imaginary part. */

/** @} */

/**
 * @defgroup version Version record
 * @brief Which library a program has loaded.
 * @{
 */

/**
 * The constant record of the library's version, the same in both library
 * files.  The values are those of this release.
 */
typedef struct {
    /** 6: major version of the library family. */
    int32_t versionMajor;
    /** 1: minor version. */
    int32_t versionMinor;
    /** 137: first number of the build tag. */
    int32_t buildMajor;
    /** 336: second number of the build tag, an integer of its own (the text of
     * versionText ends in ".56"; the two are not derived from each other).
     */
    int32_t buildMinor;
    /** "n8" and two zero bytes, inline (so also a string): the code of the
     * processor target, 64-bit x86 with 128-bit vectors; the file name is
     * "kvtgen" followed by it.
     */
    char targetCode[4];
    /** "libkvtgenn8.so.6.1": the file name, equal to the soname. */
    const char* libraryName;
    /** "6.1 build 137.56": the version as text. */
    const char* versionText;
    /** "Mar 17 2010": the build date of the release, month, day and year; fixed
     * in the record, it is not the date on which a copy was compiled.
     */
    const char* buildDateText;
} LibVersion;

/**
 * @brief The library's version record.
 *
 * Takes no argument and cannot fail.  Returns the address of the one
 * constant record, the same pointer at every call, valid while the library
 * is loaded; the caller neither writes nor frees it.
 * @return the version record; never null.
 */
KVTG_API const LibVersion* kvtgenGetLibVersion(void);

/** @} */

/**
 * @defgroup complex Complex DFT, lengths 2..64
 * @brief Forward and inverse DFTs of Complex32 and Complex64 samples.
 *
 * Forward (`Fwd`): dst[k] = s * sum over n of src[n] * e^(-2 pi i n k / N);
 * inverse (`Inv`): the same with e^(+2 pi i n k / N); k and n from 0 to N-1,
 * both arrays in natural order.  s is the factor that the flag chooses.  The
 * same flag on a forward and then an inverse call returns the input (up to
 * rounding) for ::ScaleFwdByN, ::ScaleInvByN and ::ScaleBySqrtN, and N times
 * the input for ::ScaleNone.
 * @{
 */
/**
 * @brief Complex DFT of any length 2..64: forward or inverse as the name says.
 *
 * Calls the kernel of length @p len, such as kvtgDFTFwd_CToC_12_32fc(), and
 * returns its status.
 * @param src  @p len input samples; only read.
 * @param dst  @p len output samples; may be @p src.
 * @param len  number of points, 2 to 64.
 * @param flag ::ScaleFwdByN (1/len forward, 1 inverse), ::ScaleInvByN (1
 *             forward, 1/len inverse), ::ScaleBySqrtN or ::ScaleNone.
 * @retval StatusOk      the transform is in @p dst.
 * @retval StatusBadSize @p len is not in 2..64, whatever the other arguments.
 * @retval StatusNullArg @p src or @p dst is null.
 * @retval StatusBadFlag @p flag is not one of the four scaling flags.
 *
 * Example, through the dispatcher and the kernel (examples/complex_dft.c):
 * @include complex_dft.c
 */
KVTG_API Status kvtgDFTFwd_CToC_32fc(const Complex32* src, Complex32* dst, int32_t len, int32_t flag);
/** @name Forward kernels, Complex32: kvtgDFTFwd_CToC_N_32fc, N = 2..64
 * @{ */
/**
 * @brief Complex DFT of the length N in the name: forward or inverse as the
 * name says.
 *
 * The kernel that the size dispatcher calls for N, with the same bits.
 * @param src  N input samples; only read.
 * @param dst  N output samples; may be @p src.
 * @param flag ::ScaleFwdByN (1/N forward, 1 inverse), ::ScaleInvByN (1
 *             forward, 1/N inverse), ::ScaleBySqrtN or ::ScaleNone.
 * @retval StatusOk      the transform is in @p dst.
 * @retval StatusNullArg @p src or @p dst is null.
 * @retval StatusBadFlag @p flag is not one of the four scaling flags.
 */
KVTG_API Status kvtgDFTFwd_CToC_2_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_3_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_4_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_5_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_6_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_7_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_8_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_9_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_10_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_11_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_12_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_13_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_14_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_15_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_16_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_17_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_18_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_19_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_20_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_21_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_22_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_23_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_24_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_25_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_26_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_27_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_28_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_29_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_30_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_31_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_32_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_33_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_34_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_35_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_36_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_37_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_38_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_39_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_40_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_41_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_42_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_43_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_44_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_45_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_46_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_47_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_48_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_49_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_50_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_51_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_52_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_53_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_54_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_55_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_56_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_57_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_58_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_59_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_60_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_61_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_62_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_63_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_64_32fc(const Complex32* src, Complex32* dst, int32_t flag);
/** @} */
/** @copydoc kvtgDFTFwd_CToC_32fc */
KVTG_API Status kvtgDFTFwd_CToC_64fc(const Complex64* src, Complex64* dst, int32_t len, int32_t flag);
/** @name Forward kernels, Complex64: kvtgDFTFwd_CToC_N_64fc, N = 2..64
 * @{ */
/** @copydoc kvtgDFTFwd_CToC_2_32fc */
KVTG_API Status kvtgDFTFwd_CToC_2_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_3_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_4_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_5_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_6_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_7_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_8_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_9_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_10_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_11_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_12_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_13_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_14_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_15_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_16_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_17_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_18_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_19_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_20_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_21_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_22_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_23_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_24_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_25_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_26_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_27_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_28_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_29_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_30_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_31_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_32_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_33_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_34_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_35_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_36_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_37_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_38_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_39_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_40_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_41_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_42_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_43_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_44_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_45_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_46_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_47_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_48_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_49_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_50_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_51_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_52_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_53_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_54_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_55_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_56_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_57_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_58_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_59_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_60_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_61_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_62_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_63_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_CToC_64_64fc(const Complex64* src, Complex64* dst, int32_t flag);
/** @} */
/** @copydoc kvtgDFTFwd_CToC_32fc */
KVTG_API Status kvtgDFTInv_CToC_32fc(const Complex32* src, Complex32* dst, int32_t len, int32_t flag);
/** @name Inverse kernels, Complex32: kvtgDFTInv_CToC_N_32fc, N = 2..64
 * @{ */
/** @copydoc kvtgDFTFwd_CToC_2_32fc */
KVTG_API Status kvtgDFTInv_CToC_2_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_3_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_4_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_5_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_6_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_7_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_8_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_9_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_10_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_11_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_12_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_13_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_14_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_15_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_16_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_17_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_18_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_19_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_20_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_21_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_22_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_23_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_24_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_25_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_26_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_27_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_28_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_29_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_30_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_31_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_32_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_33_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_34_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_35_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_36_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_37_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_38_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_39_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_40_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_41_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_42_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_43_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_44_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_45_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_46_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_47_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_48_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_49_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_50_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_51_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_52_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_53_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_54_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_55_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_56_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_57_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_58_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_59_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_60_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_61_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_62_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_63_32fc(const Complex32* src, Complex32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_64_32fc(const Complex32* src, Complex32* dst, int32_t flag);
/** @} */
/** @copydoc kvtgDFTFwd_CToC_32fc */
KVTG_API Status kvtgDFTInv_CToC_64fc(const Complex64* src, Complex64* dst, int32_t len, int32_t flag);
/** @name Inverse kernels, Complex64: kvtgDFTInv_CToC_N_64fc, N = 2..64
 * @{ */
/** @copydoc kvtgDFTFwd_CToC_2_32fc */
KVTG_API Status kvtgDFTInv_CToC_2_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_3_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_4_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_5_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_6_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_7_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_8_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_9_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_10_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_11_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_12_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_13_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_14_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_15_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_16_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_17_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_18_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_19_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_20_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_21_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_22_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_23_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_24_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_25_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_26_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_27_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_28_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_29_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_30_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_31_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_32_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_33_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_34_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_35_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_36_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_37_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_38_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_39_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_40_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_41_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_42_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_43_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_44_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_45_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_46_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_47_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_48_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_49_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_50_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_51_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_52_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_53_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_54_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_55_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_56_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_57_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_58_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_59_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_60_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_61_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_62_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_63_64fc(const Complex64* src, Complex64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CToC_64_64fc(const Complex64* src, Complex64* dst, int32_t flag);

/** @} */
/** @} */

/**
 * @defgroup real Real DFT, lengths 2..64, layouts CCS, Pack and Perm
 * @brief Forward DFTs of real samples into half a spectrum, and back.
 *
 * X[k] = sum over n of x[n] * e^(-2 pi i n k / N).  The samples being real,
 * X[N-k] is the conjugate of X[k], and the bins 0 to N/2 say everything.  A
 * forward function (`RToCCS`, `RToPack`, `RToPerm`) stores them, times its
 * factor, as a flat array of numbers of its precision in one of three
 * layouts; the inverse function of the layout (`CCSToR`, `PackToR`,
 * `PermToR`) reads that array and gives the samples back, times its factor.
 * With Rk = Re X[k], Ik = Im X[k], m = (N-1)/2 rounded down and, for even N,
 * h = N/2:
 *
 * | layout | elements, in this order | count |
 * |---|---|---|
 * | CCS  | R0 0 R1 I1 ... Rm Im, then for even N: Rh 0 | N+2 for even N, N+1 for odd N |
 * | Pack | R0 R1 I1 ... Rm Im, then for even N: Rh | N |
 * | Perm | even N: R0 Rh R1 I1 ... Rm Im; odd N: as Pack | N |
 *
 * For N = 4: CCS is R0 0 R1 I1 R2 0, Pack R0 R1 I1 R2, Perm R0 R2 R1 I1.  A
 * forward function stores the zeros of CCS as +0.0 whatever the input; an
 * inverse function never reads them.  Nothing in an array tells its layout.
 *
 * The inverse computes x[n] = s * (R0 + 2 * sum over k = 1..m of
 * (Rk cos(2 pi n k / N) - Ik sin(2 pi n k / N)) + t), t = (-1)^n Rh for even
 * N and 0 for odd N.  The same flag on a forward and then an inverse call of
 * one layout returns the samples (up to rounding) for ::ScaleFwdByN,
 * ::ScaleInvByN and ::ScaleBySqrtN, and N times them for ::ScaleNone.
 * @{
 */
/**
 * @brief Forward real DFT of any length 2..64 into the layout of the name
 * (CCS, Pack or Perm).
 *
 * Calls the kernel of length @p len, such as kvtgDFTFwd_RToCCS_12_32f(), and
 * returns its status.
 * @param src  @p len real samples; only read.
 * @param dst  the half spectrum: @p len + 2 numbers in CCS for even @p len,
 *             @p len + 1 for odd @p len, @p len in Pack and Perm.  It may be
 *             @p src, if that array is long enough.
 * @param len  number of samples, 2 to 64.
 * @param flag ::ScaleFwdByN (1/len), ::ScaleBySqrtN (1/sqrt(len)),
 *             ::ScaleInvByN or ::ScaleNone (both 1).
 * @retval StatusOk      the spectrum is in @p dst.
 * @retval StatusBadSize @p len is not in 2..64, whatever the other arguments.
 * @retval StatusNullArg @p src or @p dst is null.
 * @retval StatusBadFlag @p flag is not one of the four scaling flags.
 *
 * Example, into CCS and back (examples/real_dft.c):
 * @include real_dft.c
 */
KVTG_API Status kvtgDFTFwd_RToCCS_32f(const Real32* src, Real32* dst, int32_t len, int32_t flag);
/** @name Forward kernels into CCS, Real32: kvtgDFTFwd_RToCCS_N_32f, N = 2..64
 * @{ */
/**
 * @brief Forward real DFT of the length N in the name into the layout of the
 * name (CCS, Pack or Perm).
 *
 * The kernel that the size dispatcher calls for N, with the same bits.
 * @param src  N real samples; only read.
 * @param dst  the half spectrum: N + 2 numbers in CCS for even N, N + 1 for
 *             odd N, N in Pack and Perm; may be @p src if that is long enough.
 * @param flag ::ScaleFwdByN (1/N), ::ScaleBySqrtN (1/sqrt(N)), ::ScaleInvByN
 *             or ::ScaleNone (both 1).
 * @retval StatusOk      the spectrum is in @p dst.
 * @retval StatusNullArg @p src or @p dst is null.
 * @retval StatusBadFlag @p flag is not one of the four scaling flags.
 */
KVTG_API Status kvtgDFTFwd_RToCCS_2_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_3_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_4_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_5_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_6_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_7_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_8_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_9_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_10_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_11_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_12_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_13_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_14_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_15_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_16_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_17_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_18_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_19_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_20_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_21_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_22_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_23_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_24_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_25_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_26_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_27_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_28_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_29_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_30_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_31_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_32_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_33_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_34_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_35_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_36_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_37_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_38_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_39_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_40_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_41_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_42_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_43_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_44_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_45_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_46_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_47_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_48_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_49_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_50_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_51_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_52_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_53_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_54_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_55_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_56_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_57_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_58_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_59_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_60_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_61_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_62_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_63_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_64_32f(const Real32* src, Real32* dst, int32_t flag);
/** @} */
/** @copydoc kvtgDFTFwd_RToCCS_32f */
KVTG_API Status kvtgDFTFwd_RToCCS_64f(const Real64* src, Real64* dst, int32_t len, int32_t flag);
/** @name Forward kernels into CCS, Real64: kvtgDFTFwd_RToCCS_N_64f, N = 2..64
 * @{ */
/** @copydoc kvtgDFTFwd_RToCCS_2_32f */
KVTG_API Status kvtgDFTFwd_RToCCS_2_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_3_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_4_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_5_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_6_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_7_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_8_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_9_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_10_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_11_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_12_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_13_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_14_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_15_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_16_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_17_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_18_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_19_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_20_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_21_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_22_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_23_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_24_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_25_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_26_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_27_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_28_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_29_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_30_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_31_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_32_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_33_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_34_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_35_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_36_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_37_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_38_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_39_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_40_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_41_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_42_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_43_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_44_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_45_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_46_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_47_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_48_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_49_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_50_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_51_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_52_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_53_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_54_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_55_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_56_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_57_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_58_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_59_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_60_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_61_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_62_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_63_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToCCS_64_64f(const Real64* src, Real64* dst, int32_t flag);
/** @} */
/** @copydoc kvtgDFTFwd_RToCCS_32f */
KVTG_API Status kvtgDFTFwd_RToPack_32f(const Real32* src, Real32* dst, int32_t len, int32_t flag);
/** @name Forward kernels into Pack, Real32: kvtgDFTFwd_RToPack_N_32f, N = 2..64
 * @{ */
/** @copydoc kvtgDFTFwd_RToCCS_2_32f */
KVTG_API Status kvtgDFTFwd_RToPack_2_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_3_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_4_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_5_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_6_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_7_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_8_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_9_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_10_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_11_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_12_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_13_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_14_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_15_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_16_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_17_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_18_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_19_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_20_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_21_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_22_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_23_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_24_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_25_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_26_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_27_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_28_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_29_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_30_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_31_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_32_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_33_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_34_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_35_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_36_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_37_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_38_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_39_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_40_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_41_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_42_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_43_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_44_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_45_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_46_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_47_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_48_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_49_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_50_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_51_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_52_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_53_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_54_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_55_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_56_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_57_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_58_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_59_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_60_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_61_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_62_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_63_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_64_32f(const Real32* src, Real32* dst, int32_t flag);
/** @} */
/** @copydoc kvtgDFTFwd_RToCCS_32f */
KVTG_API Status kvtgDFTFwd_RToPack_64f(const Real64* src, Real64* dst, int32_t len, int32_t flag);
/** @name Forward kernels into Pack, Real64: kvtgDFTFwd_RToPack_N_64f, N = 2..64
 * @{ */
/** @copydoc kvtgDFTFwd_RToCCS_2_32f */
KVTG_API Status kvtgDFTFwd_RToPack_2_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_3_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_4_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_5_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_6_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_7_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_8_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_9_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_10_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_11_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_12_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_13_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_14_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_15_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_16_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_17_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_18_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_19_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_20_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_21_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_22_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_23_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_24_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_25_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_26_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_27_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_28_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_29_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_30_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_31_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_32_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_33_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_34_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_35_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_36_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_37_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_38_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_39_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_40_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_41_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_42_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_43_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_44_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_45_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_46_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_47_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_48_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_49_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_50_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_51_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_52_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_53_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_54_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_55_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_56_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_57_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_58_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_59_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_60_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_61_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_62_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_63_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPack_64_64f(const Real64* src, Real64* dst, int32_t flag);
/** @} */
/** @copydoc kvtgDFTFwd_RToCCS_32f */
KVTG_API Status kvtgDFTFwd_RToPerm_32f(const Real32* src, Real32* dst, int32_t len, int32_t flag);
/** @name Forward kernels into Perm, Real32: kvtgDFTFwd_RToPerm_N_32f, N = 2..64
 * @{ */
/** @copydoc kvtgDFTFwd_RToCCS_2_32f */
KVTG_API Status kvtgDFTFwd_RToPerm_2_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_3_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_4_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_5_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_6_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_7_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_8_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_9_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_10_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_11_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_12_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_13_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_14_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_15_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_16_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_17_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_18_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_19_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_20_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_21_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_22_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_23_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_24_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_25_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_26_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_27_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_28_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_29_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_30_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_31_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_32_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_33_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_34_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_35_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_36_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_37_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_38_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_39_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_40_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_41_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_42_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_43_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_44_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_45_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_46_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_47_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_48_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_49_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_50_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_51_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_52_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_53_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_54_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_55_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_56_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_57_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_58_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_59_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_60_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_61_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_62_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_63_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_64_32f(const Real32* src, Real32* dst, int32_t flag);
/** @} */
/** @copydoc kvtgDFTFwd_RToCCS_32f */
KVTG_API Status kvtgDFTFwd_RToPerm_64f(const Real64* src, Real64* dst, int32_t len, int32_t flag);
/** @name Forward kernels into Perm, Real64: kvtgDFTFwd_RToPerm_N_64f, N = 2..64
 * @{ */
/** @copydoc kvtgDFTFwd_RToCCS_2_32f */
KVTG_API Status kvtgDFTFwd_RToPerm_2_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_3_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_4_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_5_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_6_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_7_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_8_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_9_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_10_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_11_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_12_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_13_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_14_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_15_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_16_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_17_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_18_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_19_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_20_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_21_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_22_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_23_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_24_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_25_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_26_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_27_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_28_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_29_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_30_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_31_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_32_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_33_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_34_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_35_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_36_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_37_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_38_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_39_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_40_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_41_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_42_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_43_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_44_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_45_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_46_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_47_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_48_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_49_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_50_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_51_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_52_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_53_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_54_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_55_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_56_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_57_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_58_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_59_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_60_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_61_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_62_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_63_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTFwd_RToPerm_64_64f(const Real64* src, Real64* dst, int32_t flag);

/* Real DFT, inverse: a packed half spectrum back to N real samples. */
/** @} */
/**
 * @brief Inverse real DFT of any length 2..64 from the layout of the name
 * (CCS, Pack or Perm) back to real samples.
 *
 * Calls the kernel of length @p len, such as kvtgDFTInv_CCSToR_12_32f(), and
 * returns its status.
 * @param src  the half spectrum in that layout (@p len + 2 or @p len + 1
 *             numbers in CCS, of which the two zeros are not read; @p len in
 *             Pack and Perm); only read.
 * @param dst  @p len real samples; may be @p src.
 * @param len  number of samples, 2 to 64.
 * @param flag ::ScaleInvByN (1/len), ::ScaleBySqrtN (1/sqrt(len)),
 *             ::ScaleFwdByN or ::ScaleNone (both 1).
 * @retval StatusOk      the samples are in @p dst.
 * @retval StatusBadSize @p len is not in 2..64, whatever the other arguments.
 * @retval StatusNullArg @p src or @p dst is null.
 * @retval StatusBadFlag @p flag is not one of the four scaling flags.
 */
KVTG_API Status kvtgDFTInv_CCSToR_32f(const Real32* src, Real32* dst, int32_t len, int32_t flag);
/** @name Inverse kernels from CCS, Real32: kvtgDFTInv_CCSToR_N_32f, N = 2..64
 * @{ */
/**
 * @brief Inverse real DFT of the length N in the name from the layout of the
 * name (CCS, Pack or Perm) back to real samples.
 *
 * The kernel that the size dispatcher calls for N, with the same bits.
 * @param src  the half spectrum in that layout (N + 2 or N + 1 numbers in
 *             CCS, of which the two zeros are not read; N in Pack and Perm);
 *             only read.
 * @param dst  N real samples; may be @p src.
 * @param flag ::ScaleInvByN (1/N), ::ScaleBySqrtN (1/sqrt(N)), ::ScaleFwdByN
 *             or ::ScaleNone (both 1).
 * @retval StatusOk      the samples are in @p dst.
 * @retval StatusNullArg @p src or @p dst is null.
 * @retval StatusBadFlag @p flag is not one of the four scaling flags.
 */
KVTG_API Status kvtgDFTInv_CCSToR_2_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_3_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_4_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_5_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_6_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_7_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_8_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_9_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_10_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_11_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_12_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_13_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_14_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_15_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_16_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_17_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_18_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_19_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_20_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_21_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_22_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_23_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_24_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_25_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_26_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_27_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_28_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_29_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_30_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_31_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_32_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_33_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_34_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_35_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_36_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_37_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_38_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_39_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_40_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_41_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_42_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_43_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_44_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_45_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_46_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_47_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_48_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_49_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_50_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_51_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_52_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_53_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_54_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_55_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_56_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_57_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_58_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_59_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_60_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_61_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_62_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_63_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_64_32f(const Real32* src, Real32* dst, int32_t flag);
/** @} */
/** @copydoc kvtgDFTInv_CCSToR_32f */
KVTG_API Status kvtgDFTInv_CCSToR_64f(const Real64* src, Real64* dst, int32_t len, int32_t flag);
/** @name Inverse kernels from CCS, Real64: kvtgDFTInv_CCSToR_N_64f, N = 2..64
 * @{ */
/** @copydoc kvtgDFTInv_CCSToR_2_32f */
KVTG_API Status kvtgDFTInv_CCSToR_2_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_3_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_4_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_5_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_6_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_7_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_8_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_9_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_10_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_11_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_12_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_13_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_14_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_15_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_16_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_17_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_18_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_19_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_20_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_21_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_22_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_23_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_24_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_25_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_26_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_27_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_28_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_29_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_30_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_31_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_32_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_33_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_34_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_35_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_36_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_37_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_38_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_39_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_40_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_41_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_42_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_43_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_44_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_45_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_46_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_47_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_48_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_49_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_50_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_51_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_52_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_53_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_54_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_55_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_56_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_57_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_58_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_59_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_60_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_61_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_62_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_63_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_CCSToR_64_64f(const Real64* src, Real64* dst, int32_t flag);
/** @} */
/** @copydoc kvtgDFTInv_CCSToR_32f */
KVTG_API Status kvtgDFTInv_PackToR_32f(const Real32* src, Real32* dst, int32_t len, int32_t flag);
/** @name Inverse kernels from Pack, Real32: kvtgDFTInv_PackToR_N_32f, N = 2..64
 * @{ */
/** @copydoc kvtgDFTInv_CCSToR_2_32f */
KVTG_API Status kvtgDFTInv_PackToR_2_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_3_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_4_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_5_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_6_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_7_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_8_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_9_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_10_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_11_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_12_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_13_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_14_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_15_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_16_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_17_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_18_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_19_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_20_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_21_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_22_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_23_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_24_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_25_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_26_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_27_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_28_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_29_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_30_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_31_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_32_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_33_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_34_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_35_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_36_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_37_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_38_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_39_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_40_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_41_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_42_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_43_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_44_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_45_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_46_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_47_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_48_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_49_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_50_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_51_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_52_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_53_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_54_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_55_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_56_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_57_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_58_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_59_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_60_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_61_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_62_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_63_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_64_32f(const Real32* src, Real32* dst, int32_t flag);
/** @} */
/** @copydoc kvtgDFTInv_CCSToR_32f */
KVTG_API Status kvtgDFTInv_PackToR_64f(const Real64* src, Real64* dst, int32_t len, int32_t flag);
/** @name Inverse kernels from Pack, Real64: kvtgDFTInv_PackToR_N_64f, N = 2..64
 * @{ */
/** @copydoc kvtgDFTInv_CCSToR_2_32f */
KVTG_API Status kvtgDFTInv_PackToR_2_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_3_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_4_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_5_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_6_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_7_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_8_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_9_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_10_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_11_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_12_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_13_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_14_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_15_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_16_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_17_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_18_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_19_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_20_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_21_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_22_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_23_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_24_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_25_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_26_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_27_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_28_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_29_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_30_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_31_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_32_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_33_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_34_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_35_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_36_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_37_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_38_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_39_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_40_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_41_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_42_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_43_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_44_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_45_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_46_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_47_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_48_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_49_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_50_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_51_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_52_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_53_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_54_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_55_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_56_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_57_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_58_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_59_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_60_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_61_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_62_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_63_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PackToR_64_64f(const Real64* src, Real64* dst, int32_t flag);
/** @} */
/** @copydoc kvtgDFTInv_CCSToR_32f */
KVTG_API Status kvtgDFTInv_PermToR_32f(const Real32* src, Real32* dst, int32_t len, int32_t flag);
/** @name Inverse kernels from Perm, Real32: kvtgDFTInv_PermToR_N_32f, N = 2..64
 * @{ */
/** @copydoc kvtgDFTInv_CCSToR_2_32f */
KVTG_API Status kvtgDFTInv_PermToR_2_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_3_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_4_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_5_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_6_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_7_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_8_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_9_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_10_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_11_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_12_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_13_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_14_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_15_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_16_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_17_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_18_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_19_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_20_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_21_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_22_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_23_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_24_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_25_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_26_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_27_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_28_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_29_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_30_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_31_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_32_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_33_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_34_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_35_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_36_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_37_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_38_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_39_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_40_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_41_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_42_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_43_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_44_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_45_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_46_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_47_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_48_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_49_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_50_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_51_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_52_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_53_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_54_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_55_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_56_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_57_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_58_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_59_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_60_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_61_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_62_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_63_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_64_32f(const Real32* src, Real32* dst, int32_t flag);
/** @} */
/** @copydoc kvtgDFTInv_CCSToR_32f */
KVTG_API Status kvtgDFTInv_PermToR_64f(const Real64* src, Real64* dst, int32_t len, int32_t flag);
/** @name Inverse kernels from Perm, Real64: kvtgDFTInv_PermToR_N_64f, N = 2..64
 * @{ */
/** @copydoc kvtgDFTInv_CCSToR_2_32f */
KVTG_API Status kvtgDFTInv_PermToR_2_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_3_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_4_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_5_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_6_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_7_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_8_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_9_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_10_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_11_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_12_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_13_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_14_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_15_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_16_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_17_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_18_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_19_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_20_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_21_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_22_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_23_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_24_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_25_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_26_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_27_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_28_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_29_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_30_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_31_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_32_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_33_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_34_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_35_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_36_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_37_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_38_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_39_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_40_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_41_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_42_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_43_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_44_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_45_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_46_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_47_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_48_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_49_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_50_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_51_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_52_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_53_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_54_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_55_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_56_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_57_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_58_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_59_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_60_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_61_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_62_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_63_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgDFTInv_PermToR_64_64f(const Real64* src, Real64* dst, int32_t flag);

/** @} */
/** @} */

/**
 * @defgroup hartley Hartley transform, lengths 2..64
 * @brief Real samples to real values, H[k] = s * sum over n of
 * x[n] * (cos(2 pi n k / N) + sin(2 pi n k / N)).
 *
 * The transform is its own inverse up to the factor N: so ::ScaleFwdByN and
 * ::ScaleInvByN both scale by 1/N, and a transform with ::ScaleNone followed
 * by one with ::ScaleFwdByN returns the input.
 * @{
 */
/**
 * @brief Hartley transform of any length 2..64.
 *
 * Calls the kernel of length @p len, such as kvtgHartley_12_32f(), and returns
 * its status.
 * @param src  @p len real samples; only read.
 * @param dst  @p len real values; may be @p src.
 * @param len  number of samples, 2 to 64.
 * @param flag ::ScaleFwdByN or ::ScaleInvByN (1/len), ::ScaleBySqrtN
 *             (1/sqrt(len)) or ::ScaleNone (1).
 * @retval StatusOk      the transform is in @p dst.
 * @retval StatusBadSize @p len is not in 2..64, whatever the other arguments.
 * @retval StatusNullArg @p src or @p dst is null.
 * @retval StatusBadFlag @p flag is not one of the four scaling flags.
 */
KVTG_API Status kvtgHartley_32f(const Real32* src, Real32* dst, int32_t len, int32_t flag);
/** @name Kernels, Real32: kvtgHartley_N_32f, N = 2..64
 * @{ */
/**
 * @brief Hartley transform of the length N in the name.
 *
 * The kernel that the size dispatcher calls for N, with the same bits.
 * @param src  N real samples; only read.
 * @param dst  N real values; may be @p src.
 * @param flag ::ScaleFwdByN or ::ScaleInvByN (1/N), ::ScaleBySqrtN
 *             (1/sqrt(N)) or ::ScaleNone (1).
 * @retval StatusOk      the transform is in @p dst.
 * @retval StatusNullArg @p src or @p dst is null.
 * @retval StatusBadFlag @p flag is not one of the four scaling flags.
 */
KVTG_API Status kvtgHartley_2_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_3_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_4_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_5_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_6_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_7_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_8_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_9_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_10_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_11_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_12_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_13_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_14_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_15_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_16_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_17_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_18_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_19_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_20_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_21_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_22_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_23_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_24_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_25_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_26_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_27_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_28_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_29_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_30_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_31_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_32_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_33_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_34_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_35_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_36_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_37_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_38_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_39_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_40_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_41_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_42_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_43_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_44_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_45_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_46_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_47_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_48_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_49_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_50_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_51_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_52_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_53_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_54_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_55_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_56_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_57_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_58_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_59_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_60_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_61_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_62_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_63_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgHartley_64_32f(const Real32* src, Real32* dst, int32_t flag);
/** @} */
/** @copydoc kvtgHartley_32f */
KVTG_API Status kvtgHartley_64f(const Real64* src, Real64* dst, int32_t len, int32_t flag);
/** @name Kernels, Real64: kvtgHartley_N_64f, N = 2..64
 * @{ */
/** @copydoc kvtgHartley_2_32f */
KVTG_API Status kvtgHartley_2_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_3_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_4_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_5_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_6_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_7_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_8_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_9_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_10_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_11_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_12_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_13_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_14_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_15_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_16_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_17_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_18_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_19_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_20_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_21_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_22_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_23_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_24_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_25_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_26_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_27_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_28_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_29_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_30_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_31_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_32_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_33_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_34_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_35_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_36_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_37_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_38_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_39_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_40_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_41_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_42_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_43_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_44_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_45_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_46_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_47_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_48_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_49_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_50_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_51_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_52_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_53_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_54_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_55_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_56_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_57_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_58_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_59_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_60_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_61_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_62_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_63_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgHartley_64_64f(const Real64* src, Real64* dst, int32_t flag);

/** @} */
/** @} */

/**
 * @defgroup wht Walsh-Hadamard transform, orders 1..13
 * @brief N = 2^order real samples, y[k] = s * sum over n of
 * (-1)^popcount(n & k) * x[n].
 *
 * Natural (Hadamard) order on both sides: no bit reversal, no sequency
 * order.  The transform is its own inverse up to the factor N, and flags 1
 * and 2 both scale by 1/N.  Fixed-order names carry the order, not the
 * length: kvtgWHT_10_32f() transforms 1024 samples.
 *
 * Orders 8 to 13 work in a buffer of this many bytes (orders 1 to 7 need
 * none), the size that kvtgWHTGetBufferSize_32f() and
 * kvtgWHTGetBufferSize_64f() report:
 *
 * | order  | 1..7 | 8    | 9    | 10   | 11    | 12    | 13    |
 * |--------|------|------|------|------|-------|-------|-------|
 * | Real32 | 0    | 1024 | 2048 | 4096 | 8192  | 18432 | 34816 |
 * | Real64 | 0    | 2048 | 4096 | 8192 | 18432 | 34816 | 73728 |
 *
 * A caller's buffer must be at least that large and 16-byte aligned; neither
 * is checked.  One buffer serves one call at a time.  Given a null buffer, a
 * call of order 8 to 13 takes one from kvtMalloc() and gives it back to
 * kvtFree() before it returns (see @ref core), which costs an allocation at
 * every call.
 *
 * @code
 * int32_t bytes = 0;
 * kvtgWHTGetBufferSize_32f(10, &bytes);            // 4096
 * uint8_t* buffer = aligned_alloc(16, (size_t)bytes);
 * for (int block = 0; block < blocks; ++block)      // one buffer, many calls
 *     kvtgWHT_32f(x[block], y[block], 10, ScaleNone, buffer);
 * free(buffer);
 * @endcode
 * @{
 */
/**
 * @brief The size of the work buffer that the transform of an order needs.
 * @param order the order, 1 to 13.
 * @param pSize receives the size in bytes (0 for orders 1 to 7); must not be
 *              null, which is not tested.
 * @retval StatusOk      the size is in *@p pSize.
 * @retval StatusBadSize @p order is not in 1..13; *@p pSize is not written.
 */
KVTG_API Status kvtgWHTGetBufferSize_32f(int32_t order, int32_t* pSize);
/**
 * @brief Walsh-Hadamard transform of any order 1..13.
 *
 * Calls the kernel of that order, such as kvtgWHT_10_32f(), with @p buffer
 * from order 8 on, and returns its status.
 * @param src    2^order samples; only read.
 * @param dst    2^order values; may be @p src.
 * @param order  the order, 1 to 13.
 * @param flag   ::ScaleFwdByN or ::ScaleInvByN (1/N), ::ScaleBySqrtN
 *               (1/sqrt(N)) or ::ScaleNone (1).
 * @param buffer orders 8 to 13: a work buffer of the size that the query
 *               reports, 16-byte aligned, or null for one of the call's own;
 *               orders 1 to 7: not looked at.
 * @retval StatusOk      the transform is in @p dst.
 * @retval StatusBadSize @p order is not in 1..13, whatever the other arguments.
 * @retval StatusNullArg @p src or @p dst is null.
 * @retval StatusBadFlag @p flag is not one of the four scaling flags.
 */
KVTG_API Status kvtgWHT_32f(const Real32* src, Real32* dst, int32_t order, int32_t flag, uint8_t* buffer);
/** @name Kernels of orders 1..7, Real32: kvtgWHT_N_32f, N = 1..7
 * @{ */
/**
 * @brief Walsh-Hadamard transform of the order in the name, 1 to 7 (2 to 128
 * samples); no work buffer.
 * @param src  2^order samples; only read.
 * @param dst  2^order values; may be @p src.
 * @param flag ::ScaleFwdByN or ::ScaleInvByN (1/N), ::ScaleBySqrtN
 *             (1/sqrt(N)) or ::ScaleNone (1).
 * @retval StatusOk      the transform is in @p dst.
 * @retval StatusNullArg @p src or @p dst is null.
 * @retval StatusBadFlag @p flag is not one of the four scaling flags.
 */
KVTG_API Status kvtgWHT_1_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgWHT_2_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgWHT_3_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgWHT_4_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgWHT_5_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgWHT_6_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgWHT_7_32f(const Real32* src, Real32* dst, int32_t flag);
/** @} */
/** @name Kernels of orders 8..13, Real32: kvtgWHT_N_32f, N = 8..13
 * @{ */
/**
 * @brief Walsh-Hadamard transform of the order in the name, 8 to 13 (256 to
 * 8192 samples), in a work buffer.
 * @param src    2^order samples; only read.
 * @param dst    2^order values; may be @p src.
 * @param flag   ::ScaleFwdByN or ::ScaleInvByN (1/N), ::ScaleBySqrtN
 *               (1/sqrt(N)) or ::ScaleNone (1).
 * @param buffer a work buffer of the size that the query reports, 16-byte
 *               aligned, or null: the call then allocates one with kvtMalloc()
 *               and frees it with kvtFree() before it returns.
 * @retval StatusOk      the transform is in @p dst.
 * @retval StatusNullArg @p src or @p dst is null.
 * @retval StatusBadFlag @p flag is not one of the four scaling flags (nothing
 *                       is allocated).
 */
KVTG_API Status kvtgWHT_8_32f(const Real32* src, Real32* dst, int32_t flag, uint8_t* buffer);
KVTG_API Status kvtgWHT_9_32f(const Real32* src, Real32* dst, int32_t flag, uint8_t* buffer);
KVTG_API Status kvtgWHT_10_32f(const Real32* src, Real32* dst, int32_t flag, uint8_t* buffer);
KVTG_API Status kvtgWHT_11_32f(const Real32* src, Real32* dst, int32_t flag, uint8_t* buffer);
KVTG_API Status kvtgWHT_12_32f(const Real32* src, Real32* dst, int32_t flag, uint8_t* buffer);
KVTG_API Status kvtgWHT_13_32f(const Real32* src, Real32* dst, int32_t flag, uint8_t* buffer);
/** @} */
/** @copydoc kvtgWHTGetBufferSize_32f */
KVTG_API Status kvtgWHTGetBufferSize_64f(int32_t order, int32_t* pSize);
/** @copydoc kvtgWHT_32f */
KVTG_API Status kvtgWHT_64f(const Real64* src, Real64* dst, int32_t order, int32_t flag, uint8_t* buffer);
/** @name Kernels of orders 1..7, Real64: kvtgWHT_N_64f, N = 1..7
 * @{ */
/** @copydoc kvtgWHT_1_32f */
KVTG_API Status kvtgWHT_1_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgWHT_2_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgWHT_3_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgWHT_4_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgWHT_5_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgWHT_6_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgWHT_7_64f(const Real64* src, Real64* dst, int32_t flag);
/** @} */
/** @name Kernels of orders 8..13, Real64: kvtgWHT_N_64f, N = 8..13
 * @{ */
/** @copydoc kvtgWHT_8_32f */
KVTG_API Status kvtgWHT_8_64f(const Real64* src, Real64* dst, int32_t flag, uint8_t* buffer);
KVTG_API Status kvtgWHT_9_64f(const Real64* src, Real64* dst, int32_t flag, uint8_t* buffer);
KVTG_API Status kvtgWHT_10_64f(const Real64* src, Real64* dst, int32_t flag, uint8_t* buffer);
KVTG_API Status kvtgWHT_11_64f(const Real64* src, Real64* dst, int32_t flag, uint8_t* buffer);
KVTG_API Status kvtgWHT_12_64f(const Real64* src, Real64* dst, int32_t flag, uint8_t* buffer);
KVTG_API Status kvtgWHT_13_64f(const Real64* src, Real64* dst, int32_t flag, uint8_t* buffer);

/** @} */
/** @} */

/**
 * @defgroup dct4 Planned DCT-IV
 * @brief The unnormalised type-IV DCT of N real samples through a plan,
 * y[k] = sum over n of x[n] * cos(pi / N * (n + 1/2) * (k + 1/2)).
 *
 * There is no flag and no scale: the transform twice gives N/2 times the
 * input; multiply by sqrt(2/N) for the orthonormal transform.  Lengths are
 * the powers of two from 2 to 2^26 in Real32 and to 2^25 in Real64.  Other
 * lengths are refused with ::StatusBadSize, but not all of them: a power of
 * two plus one (from 33 in Real32, from 9 in Real64) gets a plan that
 * computes no DCT-IV, and 2^30 (in Real64 also 2^29) gets a size far too
 * small; the library does not guard against these.
 *
 * A plan lives in one block of memory with all its tables: when it runs,
 * nothing is allocated, no sine is computed and nothing is planned.  Its
 * life:
 * 1. kvtgDCT4GetSize_32f() gives the block's size for a length;
 * 2. kvtgDCT4Init_32f() builds the plan in a block of at least that size
 *    (any alignment), or kvtgDCT4InitAlloc_32f() takes the block from
 *    kvtMalloc() and builds the plan in it;
 * 3. kvtgDCT4_32f() transforms, any number of times;
 * 4. kvtgDCT4Free_32f() gives the block to kvtFree(): for a plan from
 *    kvtgDCT4InitAlloc_32f() or in a block from kvtMalloc().  A plan in
 *    memory of any other kind is dropped with its block: it holds nothing
 *    else.
 *
 * The plan's pointers are absolute: a plan cannot be moved or copied.  A
 * transform writes scratch space inside the plan, so one plan serves one
 * call at a time; two threads need two plans.  A plan of the `_32f`
 * functions goes only to `_32f` functions, and one of `_64f` to `_64f`;
 * nothing detects a mix.
 *
 * Example, a plan in a block from kvtMalloc() and one in the caller's own
 * memory (examples/dct4_plan.c):
 * @include dct4_plan.c
 * @{
 */

/** The handle of a plan: opaque, it points into the plan's block. */
typedef struct DctPlan DctPlan;
/**
 * @brief The size of the block that the plan of a length needs.
 * @param n     the length: a power of two, 2 to 2^26 (Real32) or 2^25
 *              (Real64).
 * @param pSize receives the size in bytes; must not be null, which is not
 *              tested.
 * @retval StatusOk      the size is in *@p pSize.
 * @retval StatusBadSize no plan takes @p n; *@p pSize is not written.
 */
KVTG_API Status kvtgDCT4GetSize_32f(int32_t n, int32_t* pSize);
/**
 * @brief Builds the plan of a length in the caller's block.
 *
 * The block needs no alignment and must hold at least the size that the
 * size query reports, which is not passed and cannot be tested.  Calling it
 * again on the same block starts over.
 * @param pPlan receives the handle, which points into @p block.
 * @param n     the length, as for the size query.
 * @param block the block, of at least that size.
 * @retval StatusOk      the plan is ready; *@p pPlan is its handle.
 * @retval StatusNullArg @p pPlan or @p block is null; nothing is written.
 * @retval StatusBadSize no plan takes @p n; *@p pPlan is not written, and the
 *                       block's contents are of no further use.
 */
KVTG_API Status kvtgDCT4Init_32f(DctPlan** pPlan, int32_t n, uint8_t* block);
/**
 * @brief Builds the plan of a length in a block that it takes from
 * kvtMalloc(); release it with the matching Free.
 * @param pPlan receives the handle.
 * @param n     the length, as for the size query.
 * @retval StatusOk      the plan is ready; *@p pPlan is its handle.
 * @retval StatusNullArg @p pPlan is null, or kvtMalloc() had no memory;
 *                       *@p pPlan is not written.
 * @retval StatusBadSize no plan takes @p n; nothing is allocated.
 */
KVTG_API Status kvtgDCT4InitAlloc_32f(DctPlan** pPlan, int32_t n);
/**
 * @brief Releases a plan: gives its block to kvtFree().
 *
 * Only for a plan from the matching InitAlloc or built in a block from
 * kvtMalloc(); the handle is of no use afterwards.
 * @param plan the handle.
 * @retval StatusOk      the block is released.
 * @retval StatusNullArg @p plan is null; nothing is done.
 */
KVTG_API Status kvtgDCT4Free_32f(DctPlan* plan);
/**
 * @brief The DCT-IV of the plan's length.
 *
 * The plan is read, and its scratch space written: one call at a time per
 * plan.
 * @param src  N samples, N the plan's length; only read; any alignment.
 * @param dst  N values; may be @p src.
 * @param plan a ready plan of this sample type.
 * @retval StatusOk      the transform is in @p dst.
 * @retval StatusNullArg @p plan, @p src or @p dst is null.
 * @retval StatusBadArg  @p plan is not a ready plan; nothing is written.
 */
KVTG_API Status kvtgDCT4_32f(const Real32* src, Real32* dst, DctPlan* plan);
/** @copydoc kvtgDCT4GetSize_32f */
KVTG_API Status kvtgDCT4GetSize_64f(int32_t n, int32_t* pSize);
/** @copydoc kvtgDCT4Init_32f */
KVTG_API Status kvtgDCT4Init_64f(DctPlan** pPlan, int32_t n, uint8_t* block);
/** @copydoc kvtgDCT4InitAlloc_32f */
KVTG_API Status kvtgDCT4InitAlloc_64f(DctPlan** pPlan, int32_t n);
/** @copydoc kvtgDCT4Free_32f */
KVTG_API Status kvtgDCT4Free_64f(DctPlan* plan);
/** @copydoc kvtgDCT4_32f */
KVTG_API Status kvtgDCT4_64f(const Real64* src, Real64* dst, DctPlan* plan);

/** @} */

#ifdef __cplusplus
}
#endif

#endif /* KVTGEN_H */
