/*
 * kvtgen.h - public interface of libkvtgenn8.so.6.1
 *
 * Fixed-size signal transforms (complex and real DFT, Hartley, Walsh-Hadamard)
 * and a planned type-IV DCT.  Plain C ABI, usable from C and C++.
 *
 * Every fixed-size entry tests its arguments in one order: the size (at the
 * size-taking dispatcher), then null pointers, then the flag.  A call that
 * fails writes nothing.
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

/* ---- result codes ------------------------------------------------------ */
typedef int32_t Status;
enum {
    StatusOk = 0,        /* the transform was done */
    StatusBadArg = -5,   /* a DCT-IV plan does not fit the call */
    StatusBadSize = -6,  /* length or order out of range */
    StatusNullArg = -8,  /* a required pointer is null */
    StatusBadFlag = -16  /* the flag is not exactly one of the four below */
};

/* ---- scaling flags: compared for equality, never used as a mask -------- */
enum {
    ScaleFwdByN = 1,  /* forward transform scaled by 1/N */
    ScaleInvByN = 2,  /* inverse transform scaled by 1/N */
    ScaleBySqrtN = 4, /* both directions scaled by 1/sqrt(N) */
    ScaleNone = 8     /* no scaling */
};

/* ---- sample types ------------------------------------------------------ */
typedef float Real32;
typedef double Real64;
typedef struct { Real32 re, im; } Complex32;
typedef struct { Real64 re, im; } Complex64;

/* ---- library version record ------------------------------------------- */
typedef struct {
    int32_t versionMajor;
    int32_t versionMinor;
    int32_t buildMajor;
    int32_t buildMinor;
    char targetCode[4];        /* inline, zero padded */
    const char* libraryName;
    const char* versionText;
    const char* buildDateText;
} LibVersion;

KVTG_API const LibVersion* kvtgenGetLibVersion(void);

/* ---- complex DFT, lengths 2..64 ---------------------------------------- */
/* dispatchers take the length; kernels are named by their length */
KVTG_API Status kvtgDFTFwd_CToC_32fc(const Complex32* src, Complex32* dst, int32_t len, int32_t flag);
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
KVTG_API Status kvtgDFTFwd_CToC_64fc(const Complex64* src, Complex64* dst, int32_t len, int32_t flag);
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
KVTG_API Status kvtgDFTInv_CToC_32fc(const Complex32* src, Complex32* dst, int32_t len, int32_t flag);
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
KVTG_API Status kvtgDFTInv_CToC_64fc(const Complex64* src, Complex64* dst, int32_t len, int32_t flag);
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

/* ---- real DFT, lengths 2..64, layouts CCS / Pack / Perm ---------------- */
/* (declarations of the real family go here) */

/* ---- Hartley transform, lengths 2..64 ---------------------------------- */
/* (declarations of the Hartley family go here) */

/* ---- Walsh-Hadamard transform, orders 1..13 ---------------------------- */
/* orders 1..13 (N = 2^order); orders 8..13 take a work buffer of the size that
   kvtgWHTGetBufferSize_* reports, 16-byte aligned, or null for one of their own;
   flags 1 and 2 both scale by 1/N */
KVTG_API Status kvtgWHTGetBufferSize_32f(int32_t order, int32_t* pSize);
KVTG_API Status kvtgWHT_32f(const Real32* src, Real32* dst, int32_t order, int32_t flag, uint8_t* buffer);
KVTG_API Status kvtgWHT_1_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgWHT_2_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgWHT_3_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgWHT_4_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgWHT_5_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgWHT_6_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgWHT_7_32f(const Real32* src, Real32* dst, int32_t flag);
KVTG_API Status kvtgWHT_8_32f(const Real32* src, Real32* dst, int32_t flag, uint8_t* buffer);
KVTG_API Status kvtgWHT_9_32f(const Real32* src, Real32* dst, int32_t flag, uint8_t* buffer);
KVTG_API Status kvtgWHT_10_32f(const Real32* src, Real32* dst, int32_t flag, uint8_t* buffer);
KVTG_API Status kvtgWHT_11_32f(const Real32* src, Real32* dst, int32_t flag, uint8_t* buffer);
KVTG_API Status kvtgWHT_12_32f(const Real32* src, Real32* dst, int32_t flag, uint8_t* buffer);
KVTG_API Status kvtgWHT_13_32f(const Real32* src, Real32* dst, int32_t flag, uint8_t* buffer);
KVTG_API Status kvtgWHTGetBufferSize_64f(int32_t order, int32_t* pSize);
KVTG_API Status kvtgWHT_64f(const Real64* src, Real64* dst, int32_t order, int32_t flag, uint8_t* buffer);
KVTG_API Status kvtgWHT_1_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgWHT_2_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgWHT_3_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgWHT_4_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgWHT_5_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgWHT_6_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgWHT_7_64f(const Real64* src, Real64* dst, int32_t flag);
KVTG_API Status kvtgWHT_8_64f(const Real64* src, Real64* dst, int32_t flag, uint8_t* buffer);
KVTG_API Status kvtgWHT_9_64f(const Real64* src, Real64* dst, int32_t flag, uint8_t* buffer);
KVTG_API Status kvtgWHT_10_64f(const Real64* src, Real64* dst, int32_t flag, uint8_t* buffer);
KVTG_API Status kvtgWHT_11_64f(const Real64* src, Real64* dst, int32_t flag, uint8_t* buffer);
KVTG_API Status kvtgWHT_12_64f(const Real64* src, Real64* dst, int32_t flag, uint8_t* buffer);
KVTG_API Status kvtgWHT_13_64f(const Real64* src, Real64* dst, int32_t flag, uint8_t* buffer);

/* ---- planned DCT-IV ---------------------------------------------------- */
/* A plan lives in one block of memory; the handle points into it.  Lengths:
   powers of two from 2 (up to 2^26 in Real32, 2^25 in Real64).  The transform
   is the unnormalised DCT-IV: twice gives N/2 times the input. */
typedef struct DctPlan DctPlan;
KVTG_API Status kvtgDCT4GetSize_32f(int32_t n, int32_t* pSize);
KVTG_API Status kvtgDCT4Init_32f(DctPlan** pPlan, int32_t n, uint8_t* block);
KVTG_API Status kvtgDCT4InitAlloc_32f(DctPlan** pPlan, int32_t n);
KVTG_API Status kvtgDCT4Free_32f(DctPlan* plan);
KVTG_API Status kvtgDCT4_32f(const Real32* src, Real32* dst, DctPlan* plan);
KVTG_API Status kvtgDCT4GetSize_64f(int32_t n, int32_t* pSize);
KVTG_API Status kvtgDCT4Init_64f(DctPlan** pPlan, int32_t n, uint8_t* block);
KVTG_API Status kvtgDCT4InitAlloc_64f(DctPlan** pPlan, int32_t n);
KVTG_API Status kvtgDCT4Free_64f(DctPlan* plan);
KVTG_API Status kvtgDCT4_64f(const Real64* src, Real64* dst, DctPlan* plan);

#ifdef __cplusplus
}
#endif

#endif /* KVTGEN_H */
