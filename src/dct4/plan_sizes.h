// The size of a DCT-IV plan's block, for one sample type T, found without
// building anything: the mem functions walk the same tree as the plan
// operations of plan.h, with the same rules and the same rejections, and add
// up what each object takes from the arena (its record, list nodes, table and
// scratch array, each rounded to 32 bytes).  The total is the only bound that
// the arena has, so it is never less than what planning takes.  Totals are
// 32-bit and wrap as the planner's integers do; a negative one rejects the
// length.
#ifndef KVTG_DCT4_PLAN_SIZES_H
#define KVTG_DCT4_PLAN_SIZES_H

#include <cstdint>

#include "dct4/plan.h"

namespace dct4 {

template <class T>
struct PlanSizes {
    static constexpr int32_t lanes = Tables<T>::lanes;
    static constexpr int32_t width = static_cast<int32_t>(sizeof(T));

    static int32_t env1_mem(int32_t n)
    {
        if (rootRule(n) <= 5)
            return 192;
        int32_t radix = 0;
        if (divisorsIntNonTriv(&radix, n / 2) != StatusOk)
            return -1;
        const int32_t table = env2_mem(radix, n, 2 * radix, n / (2 * radix), n, wrap32(int64_t(2) * n - 1), n / radix);
        if (table < 0)
            return table;
        const int32_t spans = env3_mem(n / radix, n, wrap32(int64_t(2) * n - 1), 2 * radix, radix, n, radix);
        if (spans < 0)
            return spans;
        return wrap32(int64_t(table) + spans + kvtgAlignSize32Bytes(int64_t(n) * width) + 416);
    }

    static int32_t env2_mem(int32_t radix, int32_t, int32_t, int32_t blocks, int32_t, int32_t, int32_t)
    {
        if (blocks % lanes != 0 || Tables<T>::env4Rule(radix) == 0)
            return -1;
        return wrap32(kvtgAlignSize32Bytes(int64_t(16) * 2 * radix * (blocks / lanes)) + 448);
    }

    static int32_t env3_mem(int32_t span, int32_t n, int32_t lastIndex, int32_t radix2, int32_t radix, int32_t outN,
                            int32_t stride)
    {
        if (radix % lanes != 0)
            return -1;
        const int32_t inner = env5_mem(span, n, lastIndex, radix2, radix / lanes, outN, stride);
        return inner < 0 ? inner : wrap32(int64_t(inner) + 224);
    }

    static int32_t env5_mem(int32_t span, int32_t n, int32_t, int32_t radix2, int32_t, int32_t outN, int32_t stride)
    {
        if (spanRule(span) != 7)
            return 160;
        const int32_t inner = env7_mem(span, n, n, radix2, outN, stride);
        return inner < 0 ? inner : wrap32(int64_t(inner) + 224);
    }

    static int32_t env7_mem(int32_t n, int32_t a, int32_t b, int32_t c, int32_t d, int32_t e)
    {
        int32_t s = 0;
        if (divisorsIntNonTriv(&s, n / 2) != StatusOk || Tables<T>::env8__chooseRule(s) == 0)
            return -1;
        const int32_t inner = env9_mem(n / s, a, b, s * c, c, s, d, s * e, e);
        if (inner < 0)
            return inner;
        const int64_t table = int64_t(16) * 2 * (s - 1) * (n / (2 * s));
        return wrap32(kvtgAlignSize32Bytes(table) + inner + kvtgAlignSize32Bytes(int64_t(d) * width) + 576);
    }

    static int32_t env9_mem(int32_t span, int32_t inLen, int32_t outLen, int32_t inStride, int32_t, int32_t, int32_t total,
                            int32_t outStride, int32_t)
    {
        if (spanRule(span) != 7)
            return 160;
        const int32_t inner = env7_mem(span, inLen, outLen, inStride, total, outStride);
        return inner < 0 ? inner : wrap32(int64_t(inner) + 224);
    }
};

}  // namespace dct4

#endif
