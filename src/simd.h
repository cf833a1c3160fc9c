// The SIMD layer of the target this unit is compiled for: the build names
// the target's header (KVTG_SIMD_HEADER) and the width of its vectors
// (KVTG_VECTOR_BITS), as its description in targets/ gives them.  A unit
// compiled outside the library gets the baseline's 128-bit layer.
#ifndef KVTG_SIMD_H
#define KVTG_SIMD_H

#if !defined(KVTG_SIMD_HEADER)
#define KVTG_SIMD_HEADER "simd_sse2.h"
#endif
#if !defined(KVTG_VECTOR_BITS)
#define KVTG_VECTOR_BITS 128
#endif
#include KVTG_SIMD_HEADER

#endif
