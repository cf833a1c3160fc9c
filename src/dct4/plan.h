// Construction, planning and release of the DCT-IV plan objects, for one
// sample type T (float: four lanes per vector, double: two), and the rules
// that choose each object's stage.
//
// Two walks cover the same tree: the plan operations here build it in the
// arena, the mem functions of plan_sizes.h add up its bytes without building
// anything; both reject the same lengths.  Planning is depth first, so the
// arena order follows the tree, and a complete release returns the cursor to
// where the root began.
#ifndef KVTG_DCT4_PLAN_H
#define KVTG_DCT4_PLAN_H

#include <cstdint>

#include "dct4/env.h"
#include "dct4/tables.h"

namespace dct4 {

// 32-bit wrap-around of the planner's integer arithmetic.
inline int32_t wrap32(int64_t value) { return static_cast<int32_t>(static_cast<uint32_t>(static_cast<uint64_t>(value))); }

// Rule of env5 and env9 by span: a kernel for 2..64, a further env7 otherwise.
inline int32_t spanRule(int32_t span)
{
    switch (span) {
    case 2: return 1;
    case 4: return 2;
    case 8: return 3;
    case 16: return 4;
    case 32: return 5;
    case 64: return 6;
    default: return 7;
    }
}

inline int32_t rootRule(int32_t n)
{
    switch (n) {
    case 2: return 1;
    case 4: return 2;
    case 8: return 3;
    case 16: return 4;
    case 32: return 5;
    default: return 6;
    }
}

template <class T>
struct Stages : Tables<T> {
    static constexpr int32_t lanes = Tables<T>::lanes;
    static constexpr int32_t width = static_cast<int32_t>(sizeof(T));
    using Plan = Status (*)(void*);

    template <class Record>
    static Record* take(uint8_t* arena)
    {
        return static_cast<Record*>(kvtgArenaMalloc(arena, sizeof(Record)));
    }

    template <class Record>
    static void setHead(Record* r, uint8_t* arena, void (*del)(void*), void* plan)
    {
        r->head.size = static_cast<int32_t>(sizeof(Record));
        r->head.arena = arena;
        r->head.del = del;
        r->head.plan = plan;
    }

    static void chain(EnvList* owner, EnvList* view, void* object) { EnvList_add(view, EnvList_add(owner, object)); }

    // The first steps of every constructor: size and arena, rule 0.
    template <class Record>
    static void begin(Record* r, uint8_t* arena)
    {
        r->head.size = static_cast<int32_t>(sizeof(Record));
        r->head.arena = arena;
        r->rule = 0;
    }

    // The last step of every constructor: the two operations of the head.
    template <class Record>
    static Record* finish(Record* r, void (*del)(void*), Status (*plan)(void*))
    {
        r->head.del = del;
        r->head.plan = reinterpret_cast<void*>(plan);
        return r;
    }

    // ---- constructors: size and arena, rule 0, pointers null, list heads, del and plan last
    static Env1* env1___init__(Env1* r, uint8_t* arena, int32_t n)
    {
        begin(r, arena);
        r->children = r->firstList = r->secondList = nullptr;
        r->work = nullptr;
        r->n = n;
        r->firstList = newList(arena);
        r->secondList = newList(arena);
        r->children = newList(arena);
        return finish(r, env1___del__, env1_plan);
    }

    static Env2* env2___init__(Env2* r, uint8_t* arena, int32_t radix, int32_t n, int32_t radix2, int32_t blocks,
                               int32_t outN, int32_t lastIndex, int32_t span, void* fn)
    {
        begin(r, arena);
        r->children = r->firstList = nullptr;
        r->table = nullptr;
        r->radix = radix;
        r->n = n;
        r->radix2 = radix2;
        r->blocks = blocks;
        r->outN = outN;
        r->lastIndex = lastIndex;
        r->span = span;
        r->fn = fn;
        r->firstList = newList(arena);
        r->children = newList(arena);
        return finish(r, env2___del__, env2_plan);
    }

    static Env3* env3___init__(Env3* r, uint8_t* arena, int32_t span, int32_t n, int32_t lastIndex, int32_t radix2,
                               int32_t radix, int32_t outN, int32_t stride)
    {
        begin(r, arena);
        r->children = r->firstList = nullptr;
        r->table = nullptr;
        r->span = span;
        r->n = n;
        r->lastIndex = lastIndex;
        r->radix2 = radix2;
        r->radix = radix;
        r->outN = outN;
        r->stride = stride;
        r->firstList = newList(arena);
        r->children = newList(arena);
        return finish(r, env3___del__, env3_plan);
    }

    static Env5* env5___init__(Env5* r, uint8_t* arena, int32_t span, int32_t n, int32_t lastIndex, int32_t radix2,
                               int32_t vectors, int32_t outN, int32_t stride)
    {
        begin(r, arena);
        r->children = r->firstList = nullptr;
        r->table = nullptr;
        r->span = span;
        r->n = n;
        r->lastIndex = lastIndex;
        r->radix2 = radix2;
        r->vectors = vectors;
        r->outN = outN;
        r->stride = stride;
        r->firstList = newList(arena);
        r->children = newList(arena);
        return finish(r, env5___del__, env5_plan);
    }

    static Env7* env7___init__(Env7* r, uint8_t* arena, int32_t n, int32_t inLen, int32_t outLen, int32_t inStride,
                               int32_t total, int32_t outStride)
    {
        begin(r, arena);
        r->children = r->firstList = r->secondList = nullptr;
        r->work = nullptr;
        r->n = n;
        r->inLen = inLen;
        r->outLen = outLen;
        r->inStride = inStride;
        r->total = total;
        r->outStride = outStride;
        r->firstList = newList(arena);
        r->secondList = newList(arena);
        r->children = newList(arena);
        return finish(r, env7___del__, env7_plan);
    }

    static Env8* env8___init__(Env8* r, uint8_t* arena, int32_t radix, int32_t total, int32_t outStride,
                               int32_t blockStride, int32_t blocks, int32_t total2, int32_t half, int32_t lastIndex,
                               int32_t outStride2, int32_t span, void* fn)
    {
        begin(r, arena);
        r->children = nullptr;
        r->table = nullptr;
        r->radix = radix;
        r->total = total;
        r->outStride = outStride;
        r->blockStride = blockStride;
        r->blocks = blocks;
        r->total2 = total2;
        r->half = half;
        r->lastIndex = lastIndex;
        r->outStride2 = outStride2;
        r->span = span;
        r->fn = fn;
        r->children = newList(arena);
        return finish(r, env8___del__, env8_plan);
    }

    static Env9* env9___init__(Env9* r, uint8_t* arena, int32_t span, int32_t inLen, int32_t outLen, int32_t inStride,
                               int32_t inStride0, int32_t radix, int32_t total, int32_t outStride, int32_t outStride0)
    {
        begin(r, arena);
        r->children = r->firstList = nullptr;
        r->table = nullptr;
        r->span = span;
        r->inLen = inLen;
        r->outLen = outLen;
        r->inStride = inStride;
        r->inStride0 = inStride0;
        r->radix = radix;
        r->total = total;
        r->outStride = outStride;
        r->outStride0 = outStride0;
        r->firstList = newList(arena);
        r->children = newList(arena);
        return finish(r, env9___del__, env9_plan);
    }

    // ---- release: array, firstList, secondList, children's objects, children's nodes
    static void releaseAll(void* array, uint8_t* arena, int64_t arrayBytes, bool hasArray, EnvList* first,
                           EnvList* second, EnvList* children)
    {
        if (hasArray)
            kvtgArenaFree(arena, array, arrayBytes);
        if (first)
            releaseList(first);
        if (second)
            releaseList(second);
        EnvList_freeChildren(children);
        releaseList(children);
    }

    static void env1___del__(void* self)
    {
        Env1* r = static_cast<Env1*>(self);
        const bool leaf = r->rule >= 1 && r->rule <= 5;
        const int64_t bytes = leaf ? 0 : int64_t(r->n) * width;
        releaseAll(r->work, r->head.arena, bytes, leaf || r->rule == 6, r->firstList, r->secondList, r->children);
    }
    static void env2___del__(void* self)
    {
        Env2* r = static_cast<Env2*>(self);
        releaseAll(r->table, r->head.arena, 0, r->rule == 1, r->firstList, nullptr, r->children);
    }
    static void env3___del__(void* self)
    {
        Env3* r = static_cast<Env3*>(self);
        releaseAll(r->table, r->head.arena, 0, r->rule == 1, r->firstList, nullptr, r->children);
    }
    static void env4___del__(void* self)
    {
        Env4* r = static_cast<Env4*>(self);
        const bool has = r->rule >= 1 && r->rule <= 6;
        releaseAll(r->table, r->head.arena, has ? Tables<T>::env4TableBytes(r->rule, r->blocks) : 0, has, nullptr, nullptr,
                   r->children);
    }
    static void env5___del__(void* self)
    {
        Env5* r = static_cast<Env5*>(self);
        releaseAll(r->table, r->head.arena, 0, r->rule >= 1 && r->rule <= 7, r->firstList, nullptr, r->children);
    }
    static void env7___del__(void* self)
    {
        Env7* r = static_cast<Env7*>(self);
        releaseAll(r->work, r->head.arena, int64_t(r->total) * width, r->rule == 1, r->firstList, r->secondList,
                   r->children);
    }
    static void env8___del__(void* self)
    {
        Env8* r = static_cast<Env8*>(self);
        const bool has = r->rule >= 1 && r->rule <= 5;
        releaseAll(r->table, r->head.arena, has ? Tables<T>::env8TableBytes(r->rule, r->blocks) : 0, has, nullptr, nullptr,
                   r->children);
    }
    static void env9___del__(void* self)
    {
        Env9* r = static_cast<Env9*>(self);
        releaseAll(r->table, r->head.arena, 0, r->rule >= 1 && r->rule <= 7, r->firstList, nullptr, r->children);
    }

    static Status runPlan(EnvList* list)
    {
        Head* child = static_cast<Head*>(EnvList_get(list, 0));
        return reinterpret_cast<Plan>(child->plan)(child);
    }

    // ---- plan operations
    static Status env1_plan(void* self)
    {
        Env1* r = static_cast<Env1*>(self);
        uint8_t* arena = r->head.arena;
        const int32_t n = r->n;
        r->rule = rootRule(n);
        if (r->rule <= 5) {
            r->work = nullptr;
            return StatusOk;
        }
        int32_t radix = 0;
        if (divisorsIntNonTriv(&radix, n / 2) != StatusOk)
            return StatusBadSize;
        r->radix = radix;
        Env2* env2 = take<Env2>(arena);
        EnvfCompose* compose = take<EnvfCompose>(arena);
        Tables<T>::envfCompose___init__(compose, arena, 2 * radix, wrap32(int64_t(8) * n), n / (2 * radix), radix,
                                        2 * radix);
        EnvList_add(r->children, compose);
        env2___init__(env2, arena, radix, n, 2 * radix, n / (2 * radix), n, wrap32(int64_t(2) * n - 1), n / radix, compose);
        chain(r->children, r->firstList, env2);
        if (runPlan(r->firstList) != StatusOk)
            return StatusBadSize;
        Env3* env3 = take<Env3>(arena);
        env3___init__(env3, arena, n / radix, n, wrap32(int64_t(2) * n - 1), 2 * radix, radix, n, radix);
        chain(r->children, r->secondList, env3);
        if (runPlan(r->secondList) != StatusOk)
            return StatusBadSize;
        r->work = kvtgArenaMalloc(arena, int64_t(n) * width);
        return StatusOk;
    }

    static Status env2_plan(void* self)
    {
        Env2* r = static_cast<Env2*>(self);
        uint8_t* arena = r->head.arena;
        r->rule = r->blocks % lanes == 0 ? 1 : 0;
        if (r->rule != 1)
            return StatusBadSize;
        Env4* env4 = take<Env4>(arena);
        Envfsplit* split = take<Envfsplit>(arena);
        setHead(split, arena, Tables<T>::closure___del__, reinterpret_cast<void*>(Tables<T>::envfsplit_at));
        split->radix2 = 2 * r->radix;
        split->blocks = r->blocks / lanes;
        split->inner = r->fn;
        EnvList_add(r->children, split);
        setHead(env4, arena, env4___del__, reinterpret_cast<void*>(static_cast<Plan>(env4_plan)));
        env4->rule = 0;
        env4->table = nullptr;
        env4->radix = r->radix;
        env4->n = r->n;
        env4->radix2 = r->radix2;
        env4->rowStep = lanes * r->radix2;
        env4->blocks = r->blocks / lanes;
        env4->outN = r->outN;
        env4->lastIndex = r->lastIndex;
        env4->span = r->span;
        env4->fn = split;
        env4->children = newList(arena);
        chain(r->children, r->firstList, env4);
        return runPlan(r->firstList) == StatusOk ? StatusOk : StatusBadSize;
    }

    static Status env3_plan(void* self)
    {
        Env3* r = static_cast<Env3*>(self);
        uint8_t* arena = r->head.arena;
        r->rule = r->radix % lanes == 0 ? 1 : 0;
        if (r->rule != 1)
            return StatusBadSize;
        Env5* env5 = take<Env5>(arena);
        env5___init__(env5, arena, r->span, r->n, r->lastIndex, r->radix2, r->radix / lanes, r->outN, r->stride);
        chain(r->children, r->firstList, env5);
        return runPlan(r->firstList) == StatusOk ? StatusOk : StatusBadSize;
    }

    static Status env5_plan(void* self)
    {
        Env5* r = static_cast<Env5*>(self);
        r->rule = spanRule(r->span);
        if (r->rule != 7)
            return StatusOk;
        Env7* env7 = take<Env7>(r->head.arena);
        // the second integer field goes in twice: the third argument is N, not lastIndex
        env7___init__(env7, r->head.arena, r->span, r->n, r->n, r->radix2, r->outN, r->stride);
        chain(r->children, r->firstList, env7);
        return runPlan(r->firstList) == StatusOk ? StatusOk : StatusBadSize;
    }

    static Status env7_plan(void* self)
    {
        Env7* r = static_cast<Env7*>(self);
        uint8_t* arena = r->head.arena;
        r->rule = 1;
        int32_t s = 0;
        if (divisorsIntNonTriv(&s, r->n / 2) != StatusOk)
            return StatusBadSize;
        r->radix = s;
        Env8* env8 = take<Env8>(arena);
        Envlambda* lambda = take<Envlambda>(arena);
        Tables<T>::envlambda___init__(lambda, arena, r->n, s);
        EnvList_add(r->children, lambda);
        const int32_t d = r->total, e = r->outStride;
        env8___init__(env8, arena, s, d, e, 2 * e * s, r->n / (2 * s), d, r->n / 2, r->n - 1, e, r->n / s, lambda);
        chain(r->children, r->firstList, env8);
        if (runPlan(r->firstList) != StatusOk)
            return StatusBadSize;
        Env9* env9 = take<Env9>(arena);
        env9___init__(env9, arena, r->n / s, r->inLen, r->outLen, s * r->inStride, r->inStride, s, d, s * e, e);
        chain(r->children, r->secondList, env9);
        if (runPlan(r->secondList) != StatusOk)
            return StatusBadSize;
        r->work = kvtgArenaMalloc(arena, int64_t(d) * width);
        return StatusOk;
    }

    static Status env9_plan(void* self)
    {
        Env9* r = static_cast<Env9*>(self);
        r->rule = spanRule(r->span);
        if (r->rule != 7)
            return StatusOk;
        Env7* env7 = take<Env7>(r->head.arena);
        env7___init__(env7, r->head.arena, r->span, r->inLen, r->outLen, r->inStride, r->total, r->outStride);
        chain(r->children, r->firstList, env7);
        return runPlan(r->firstList) == StatusOk ? StatusOk : StatusBadSize;
    }

    static Status env4_plan(void* self)
    {
        Env4* r = static_cast<Env4*>(self);
        r->rule = Tables<T>::env4Rule(r->radix);
        if (r->rule == 0)
            return StatusBadSize;
        r->table = kvtgArenaMalloc(r->head.arena, Tables<T>::env4TableBytes(r->rule, r->blocks));
        Tables<T>::fillEnv4(static_cast<T*>(r->table), r->radix, r->blocks, r->fn);
        return StatusOk;
    }

    static Status env8_plan(void* self)
    {
        Env8* r = static_cast<Env8*>(self);
        r->rule = Tables<T>::env8__chooseRule(r->radix);
        if (r->rule == 0)
            return StatusBadSize;
        r->table = kvtgArenaMalloc(r->head.arena, Tables<T>::env8TableBytes(r->rule, r->blocks));
        Tables<T>::fillEnv8(static_cast<T*>(r->table), r->rule, r->blocks, r->fn);
        return StatusOk;
    }
};

}  // namespace dct4

#endif
