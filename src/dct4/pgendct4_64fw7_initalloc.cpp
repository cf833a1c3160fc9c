// A DCT-IV plan built in a block of its own from the core allocator.
#include "dct4/api.h"

extern "C" KVTG_API Status kvtgDCT4InitAlloc_64f(DctPlan** pPlan, int32_t n)
{
    return dct4::Api<double>::initAlloc(pPlan, n);
}
