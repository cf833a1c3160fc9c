#include "kvtcore.h"
#include <stdlib.h>

void* kvtMalloc(int32_t size)
{
    if (size <= 0)
        return NULL;
    void* block = NULL;
    if (posix_memalign(&block, 64, (size_t)size) != 0)
        return NULL;
    return block;
}

void kvtFree(void* block)
{
    free(block);
}
