// The DCT-IV entry points of one sample type, for tests written once for both.
#ifndef KVTG_TEST_DCT4_API_H
#define KVTG_TEST_DCT4_API_H

#include "kvtgen.h"

template <class T>
struct Dct;
template <>
struct Dct<float> {
    static Status size(int32_t n, int32_t* s) { return kvtgDCT4GetSize_32f(n, s); }
    static Status init(DctPlan** p, int32_t n, uint8_t* b) { return kvtgDCT4Init_32f(p, n, b); }
    static Status alloc(DctPlan** p, int32_t n) { return kvtgDCT4InitAlloc_32f(p, n); }
    static Status run(const float* s, float* d, DctPlan* p) { return kvtgDCT4_32f(s, d, p); }
    static Status release(DctPlan* p) { return kvtgDCT4Free_32f(p); }
    static constexpr double epsilon = 6e-8;  // half a unit in the last place
};
template <>
struct Dct<double> {
    static Status size(int32_t n, int32_t* s) { return kvtgDCT4GetSize_64f(n, s); }
    static Status init(DctPlan** p, int32_t n, uint8_t* b) { return kvtgDCT4Init_64f(p, n, b); }
    static Status alloc(DctPlan** p, int32_t n) { return kvtgDCT4InitAlloc_64f(p, n); }
    static Status run(const double* s, double* d, DctPlan* p) { return kvtgDCT4_64f(s, d, p); }
    static Status release(DctPlan* p) { return kvtgDCT4Free_64f(p); }
    static constexpr double epsilon = 1.2e-16;
};

#endif
