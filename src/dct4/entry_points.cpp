// The entry points of the DCT-IV, both sample types: the size of a plan's
// block, a plan built in the caller's block or in one from the core allocator,
// its release, and the transform (api.h).  The plan objects, their sizes and
// tables are in plan.h, plan_sizes.h and tables.h, the stages of the general
// path in a file each (span_pass.h, composite_stages.h, combine.h,
// table_pass.h, fused_sweep.h), the base kernels in the generated
// dct4_kernels.h.
#include "dct4/api.h"

extern "C" KVTG_API Status kvtgDCT4GetSize_32f(int32_t n, int32_t* pSize) { return dct4::Api<float>::getSize(n, pSize); }

extern "C" KVTG_API Status kvtgDCT4Init_32f(DctPlan** pPlan, int32_t n, uint8_t* block)
{
    return dct4::Api<float>::init(pPlan, n, block);
}

extern "C" KVTG_API Status kvtgDCT4InitAlloc_32f(DctPlan** pPlan, int32_t n)
{
    return dct4::Api<float>::initAlloc(pPlan, n);
}

extern "C" KVTG_API Status kvtgDCT4Free_32f(DctPlan* plan) { return dct4::Api<float>::release(plan); }

extern "C" KVTG_API Status kvtgDCT4_32f(const Real32* src, Real32* dst, DctPlan* plan)
{
    return dct4::Api<float>::transform(src, dst, plan);
}

extern "C" KVTG_API Status kvtgDCT4GetSize_64f(int32_t n, int32_t* pSize)
{
    return dct4::Api<double>::getSize(n, pSize);
}

extern "C" KVTG_API Status kvtgDCT4Init_64f(DctPlan** pPlan, int32_t n, uint8_t* block)
{
    return dct4::Api<double>::init(pPlan, n, block);
}

extern "C" KVTG_API Status kvtgDCT4InitAlloc_64f(DctPlan** pPlan, int32_t n)
{
    return dct4::Api<double>::initAlloc(pPlan, n);
}

extern "C" KVTG_API Status kvtgDCT4Free_64f(DctPlan* plan) { return dct4::Api<double>::release(plan); }

extern "C" KVTG_API Status kvtgDCT4_64f(const Real64* src, Real64* dst, DctPlan* plan)
{
    return dct4::Api<double>::transform(src, dst, plan);
}
