// The entry points of the DCT-IV family for one sample type: plan size,
// plan creation in a caller's block or in an allocated one, release, and the
// transform.
#ifndef KVTG_DCT4_API_H
#define KVTG_DCT4_API_H

#include <cstring>

#include "dct4/fused_sweep.h"
#include "dct4/plan.h"
#include "dct4/plan_sizes.h"
#include "dct4/span_pass.h"
#include "dct4/table_pass.h"
#include "dct4_kernels.h"
#include "kvtcore.h"

namespace dct4 {

template <class T>
struct Api {
    using S = Stages<T>;

    static Status getSize(int32_t n, int32_t* pSize)
    {
        const int32_t total = PlanSizes<T>::env1_mem(n);
        if (total < 0)
            return StatusBadSize;
        *pSize = wrap32(int64_t(total) + 2 * kvtgAlignSize32Bytes(1));
        return StatusOk;
    }

    static Status init(DctPlan** pPlan, int32_t n, uint8_t* block)
    {
        const int64_t align = kvtgAlignSize32Bytes(1);
        if (pPlan == nullptr || block == nullptr)
            return StatusNullArg;
        // the cursor: the first multiple of 32 more than 32 bytes behind the start
        const auto address = reinterpret_cast<uintptr_t>(block);
        uint8_t* const cursor = block + 2 * align - static_cast<int64_t>(address % static_cast<uintptr_t>(align));
        std::memcpy(block, &cursor, sizeof cursor);
        Env1* root = static_cast<Env1*>(kvtgArenaMalloc(block, sizeof(Env1)));
        S::env1___init__(root, block, n);
        const Status status = S::env1_plan(root);
        if (status == StatusOk) {
            *pPlan = reinterpret_cast<DctPlan*>(root);
            return StatusOk;
        }
        root->head.del(root);
        kvtgArenaFree(block, root, sizeof(Env1));
        return status;
    }

    static Status initAlloc(DctPlan** pPlan, int32_t n)
    {
        if (pPlan == nullptr)
            return StatusNullArg;
        int32_t size = 0;
        const Status sized = getSize(n, &size);
        if (sized != StatusOk)
            return sized;
        uint8_t* block = static_cast<uint8_t*>(kvtMalloc(size));
        const Status status = init(pPlan, n, block);
        if (status != StatusOk)
            kvtFree(block);
        return status;
    }

    static Status release(DctPlan* plan)
    {
        if (plan == nullptr)
            return StatusNullArg;
        Env1* root = reinterpret_cast<Env1*>(plan);
        uint8_t* const block = root->head.arena;
        root->head.del(root);
        kvtgArenaFree(block, root, sizeof(Env1));
        kvtFree(block);
        return StatusOk;
    }

    static Status transform(const T* src, T* dst, DctPlan* plan);
};

template <class T>
struct BaseKernels;
template <>
struct BaseKernels<float> {
    static void run(int32_t rule, const float* x, float* y)
    {
        switch (rule) {
        case 1: kernel32f_2(x, y); break;
        case 2: kernel32f_4(x, y); break;
        case 3: kernel32f_8(x, y); break;
        case 4: kernel32f_16(x, y); break;
        default: kernel32f_32(x, y); break;
        }
    }
};
template <>
struct BaseKernels<double> {
    static void run(int32_t rule, const double* x, double* y)
    {
        switch (rule) {
        case 1: kernel64f_2(x, y); break;
        case 2: kernel64f_4(x, y); break;
        case 3: kernel64f_8(x, y); break;
        case 4: kernel64f_16(x, y); break;
        default: kernel64f_32(x, y); break;
        }
    }
};

template <class T>
Status Api<T>::transform(const T* src, T* dst, DctPlan* plan)
{
    if (plan == nullptr || src == nullptr || dst == nullptr)
        return StatusNullArg;
    const Env1* root = reinterpret_cast<const Env1*>(plan);
    if (root->rule >= 1 && root->rule <= 5) {
        BaseKernels<T>::run(root->rule, src, dst);
        return StatusOk;
    }
    if (root->rule != 6)
        return StatusBadArg;
    // the general path: the stage of the second list runs first
    T* const work = static_cast<T*>(root->work);
#if KVTG_VECTOR_BITS >= 256
    // The stages hang from the head nodes of their lists: read in place
    // (a list's head holds its first value), the two chains of loads from the
    // root run side by side, where two calls of EnvList_get each would order
    // them one after the other; at the shortest lengths that is a good part
    // of the time.
    const auto head = [](EnvList* list) { return list->value; };
    Env3* const spans = static_cast<Env3*>(head(root->secondList));
    Env2* const table = static_cast<Env2*>(head(root->firstList));
    Env5* const columns = spans->rule == 1 ? static_cast<Env5*>(head(spans->firstList)) : nullptr;
    Env4* const rows = table->rule == 1 ? static_cast<Env4*>(head(table->firstList)) : nullptr;
    // 32-byte vectors take two column groups or row blocks of the plan at a
    // time; a pass with a single one keeps the 16-byte vectors
    using Wide = StageVectors<T, 2 * planLanes<T>>;
    if constexpr (sizeof(T) == 8) {
        // Real64 lengths with a composite span stage: its combine and the
        // table pass run together, with the root's work as their buffer
        if (columns != nullptr && rows != nullptr && columns->rule == 7 && columns->vectors % Wide::factor == 0 &&
            rows->blocks % Wide::factor == 0 &&
            FusedSweep<T, Wide::lanes>::spanAndTable(columns, rows, dst, src, work, root->n)) {
            _mm_sfence();
            return StatusOk;
        }
    }
    if (columns != nullptr) {
        if (columns->vectors % Wide::factor == 0)
            SpanPass<T, Wide::lanes>::env5_compute(columns, work, src);
        else
            SpanPass<T>::env5_compute(columns, work, src);
    }
    if (rows != nullptr) {
        if (rows->blocks % Wide::factor == 0)
            TablePass<T, Wide::lanes>::env4_compute(rows, dst, work);
        else
            TablePass<T>::env4_compute(rows, dst, work);
    }
#else
    Env3* const spans = firstOf<Env3>(root->secondList);
    if (spans->rule == 1)
        SpanPass<T>::env5_compute(firstOf<Env5>(spans->firstList), work, src);
    Env2* const table = firstOf<Env2>(root->firstList);
    if (table->rule == 1)
        TablePass<T>::env4_compute(firstOf<Env4>(table->firstList), dst, work);
#endif
    // the stores that bypassed the caches are ordered before the return
    _mm_sfence();
    return StatusOk;
}

}  // namespace dct4

#endif
