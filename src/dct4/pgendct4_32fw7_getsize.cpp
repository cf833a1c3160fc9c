// Size of the block of a DCT-IV plan.
#include "dct4/api.h"

extern "C" KVTG_API Status kvtgDCT4GetSize_32f(int32_t n, int32_t* pSize) { return dct4::Api<float>::getSize(n, pSize); }
