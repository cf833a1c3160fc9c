// The constant version record of this build.
#include "frame.h"

namespace {
const LibVersion libraryVersion = {
    6, 1, 137, 336, {'n', '8', '\0', '\0'}, "libkvtgenn8.so.6.1", "6.1 build 137.56", "Mar 17 2010",
};
}

extern "C" KVTG_API const LibVersion* kvtgenGetLibVersion(void)
{
    return &libraryVersion;
}
