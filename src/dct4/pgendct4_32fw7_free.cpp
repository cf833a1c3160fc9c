// Release of a DCT-IV plan and of its block.
#include "dct4/api.h"

extern "C" KVTG_API Status kvtgDCT4Free_32f(DctPlan* plan) { return dct4::Api<float>::release(plan); }
