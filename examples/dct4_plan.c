/* A DCT-IV plan of 1024 points lives in one block of memory: ask for its
   size, give it a block, transform, release the block. */
#include <stdio.h>
#include <stdlib.h>

#include <kvtcore.h>
#include <kvtgen.h>

int main(void)
{
    enum { N = 1024 };
    static float x[N], y[N];
    for (int n = 0; n < N; ++n)
        x[n] = (float)((n * 37) % 101) / 101.0f;

    int32_t size = 0;
    if (kvtgDCT4GetSize_32f(N, &size) != StatusOk)
        return 1;

    /* 1. a block from kvtMalloc: kvtgDCT4Free_32f gives it back to kvtFree */
    uint8_t* block = kvtMalloc(size);
    DctPlan* plan = NULL;
    if (kvtgDCT4Init_32f(&plan, N, block) != StatusOk) {
        kvtFree(block);
        return 1;
    }
    Status status = kvtgDCT4_32f(x, y, plan);
    kvtgDCT4Free_32f(plan);
    if (status != StatusOk)
        return 1;
    const float first = y[0];

    /* 2. the caller's own memory, 16-byte aligned: the plan needs nothing
       else, so dropping the block releases it; kvtgDCT4Free_32f is not called */
    uint8_t* own = aligned_alloc(64, ((size_t)size + 63) / 64 * 64);
    if (own == NULL || kvtgDCT4Init_32f(&plan, N, own) != StatusOk || kvtgDCT4_32f(x, y, plan) != StatusOk) {
        free(own);
        return 1;
    }
    free(own);

    printf("plan block %d bytes; y[0] = %.4f both times: %s\n", (int)size, y[0], y[0] == first ? "yes" : "no");
    return y[0] == first ? 0 : 1;
}
