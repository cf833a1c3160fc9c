// The DCT-IV transform through a plan.
#include "dct4/api.h"

extern "C" KVTG_API Status kvtgDCT4_32f(const Real32* src, Real32* dst, DctPlan* plan)
{
    return dct4::Api<float>::transform(src, dst, plan);
}
