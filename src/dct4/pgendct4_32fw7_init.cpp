// A DCT-IV plan built in the caller's block.
#include "dct4/api.h"

extern "C" KVTG_API Status kvtgDCT4Init_32f(DctPlan** pPlan, int32_t n, uint8_t* block)
{
    return dct4::Api<float>::init(pPlan, n, block);
}
