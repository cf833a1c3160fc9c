// The DCT-IV transform through a plan.
#include "dct4/api.h"

extern "C" KVTG_API Status kvtgDCT4_64f(const Real64* src, Real64* dst, DctPlan* plan)
{
    return dct4::Api<double>::transform(src, dst, plan);
}
