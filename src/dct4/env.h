// The records of a DCT-IV plan.  Every record starts with the common head
// (del, size, plan or at, arena); the fields follow in the order that the
// constructors take them.  All integers are 32-bit signed.
#ifndef KVTG_DCT4_ENV_H
#define KVTG_DCT4_ENV_H

#include <cstdint>

#include "dct4/owngenautolib.h"

namespace dct4 {

// The root; a pointer to it is the caller's DctPlan.
struct Env1 {
    Head head;
    EnvList* children;    // envfCompose, env2, env3
    EnvList* firstList;   // env2
    EnvList* secondList;  // env3
    void* work;           // N samples (rule 6)
    int32_t rule, radix, n;
};

// Holder of the table pass.
struct Env2 {
    Head head;
    EnvList* children;  // envfsplit, env4
    EnvList* firstList; // env4
    void* table;        // always null
    int32_t rule, radix, n, radix2, blocks, outN, lastIndex, span;
    void* fn;  // the envfCompose of the root, not owned
};

// The table pass: twiddles, then the fold transforms of `lanes` rows at a time.
struct Env4 {
    Head head;
    EnvList* children;  // stays empty
    void* table;
    int32_t rule, radix, n, radix2, rowStep, blocks, outN, lastIndex, span;
    void* fn;  // the envfsplit of env2, not owned
};

// Holder of the span pass.
struct Env3 {
    Head head;
    EnvList* children;   // env5
    EnvList* firstList;  // env5
    void* table;         // always null
    int32_t rule, span, n, lastIndex, radix2, radix, outN, stride;
};

// The span pass: span transforms of `lanes` columns at a time.
struct Env5 {
    Head head;
    EnvList* children;   // env7 (rule 7)
    EnvList* firstList;  // env7 (rule 7)
    void* table;         // always null
    int32_t rule, span, n, lastIndex, radix2, vectors, outN, stride;
};

// A span transform too long for one kernel, split by a radix s.
struct Env7 {
    Head head;
    EnvList* children;    // envlambda, env8, env9
    EnvList* firstList;   // env8
    EnvList* secondList;  // env9
    void* work;           // d samples
    int32_t rule, n, radix, inLen, outLen, inStride, total, outStride;
};

// The twiddle stage of env7.
struct Env8 {
    Head head;
    EnvList* children;  // stays empty
    void* table;
    int32_t rule, radix, total, outStride, blockStride, blocks, total2, half, lastIndex, outStride2, span;
    void* fn;  // the envlambda of env7, not owned
};

// The inner transforms of env7.
struct Env9 {
    Head head;
    EnvList* children;   // env7 (rule 7)
    EnvList* firstList;  // env7 (rule 7)
    void* table;         // always null
    int32_t rule, span, inLen, outLen, inStride, inStride0, radix, total, outStride, outStride0;
};

// Function objects: closures that yield the values of the twiddle tables.
struct EnvfCompose {
    Head head;
    int32_t radix2, scale, blocks, radix, rowLength;
};

struct Envfsplit {
    Head head;
    int32_t radix2, blocks;
    void* inner;  // the envfCompose, not owned
};

struct Envlambda {
    Head head;
    int32_t n, radix;
};

// The object at the head of a list, as the record that it is: the stages
// reach their children so.
template <class Record>
inline Record* firstOf(EnvList* list)
{
    return static_cast<Record*>(EnvList_get(list, 0));
}

// Arena footprints of the records: the sizes that the plan sizes are made of.
static_assert(sizeof(Env1) <= 96 && sizeof(Env2) <= 96 && sizeof(Env3) <= 96 && sizeof(Env4) <= 96, "record size");
static_assert(sizeof(Env5) <= 96 && sizeof(Env7) <= 96 && sizeof(Env9) <= 96, "record size");
static_assert(sizeof(Env8) > 96 && sizeof(Env8) <= 128, "record size");
static_assert(sizeof(EnvfCompose) <= 64 && sizeof(Envfsplit) <= 64 && sizeof(Envlambda) <= 64, "record size");
static_assert(sizeof(EnvList) <= 32, "list node size");

}  // namespace dct4

#endif
