// The memory layer of the DCT-IV plans and the helpers shared by both sample
// types: the arena (a cursor in the first word of the plan block), the child
// lists, the sine and cosine of pi*x, the generic closure call and the radix
// ladder.
#ifndef KVTG_DCT4_OWNGENAUTOLIB_H
#define KVTG_DCT4_OWNGENAUTOLIB_H

#include <cstdint>

#include "frame.h"

namespace dct4 {

// ---- arena: the block's first word holds the address of the next free byte
int64_t kvtgAlignSize32Bytes(int64_t size);
void* kvtgArenaMalloc(uint8_t* arena, int64_t size);
void kvtgArenaFree(uint8_t* arena, void* pointer, int64_t size);

// ---- common head of every plan object and function object
struct Head {
    void (*del)(void* self);
    int32_t size;
    void* plan;  // env objects: Status (*)(void*); function objects: their `at`
    uint8_t* arena;
};

// ---- singly linked list whose head node holds the first value
struct EnvList {
    void* value;
    EnvList* next;
    uint8_t* arena;
};

EnvList* EnvList___init__(EnvList* node, uint8_t* arena);
void* EnvList_add(EnvList* head, void* value);
void* EnvList_get(EnvList* head, int32_t index);
void EnvList___del__(EnvList* head);
void EnvList_freeChildren(EnvList* head);
int64_t EnvList_add_mem(int32_t count);
// A fresh list head taken from the arena.
EnvList* newList(uint8_t* arena);
// Gives back the nodes behind the head, then the head itself.
void releaseList(EnvList* head);

// ---- trigonometry of the tables: pi*x rounded as the sample type says
float kvtgCosPi_32f(float x);
float kvtgSinPi_32f(float x);
double kvtgCosPi_64f(double x);
double kvtgSinPi_64f(double x);

// Calls the `at` of a function object through its head.
template <class T>
T owng_TFunc_IIIR_at(void* object, int32_t i, int32_t j, int32_t k)
{
    using At = T (*)(void*, int32_t, int32_t, int32_t);
    return reinterpret_cast<At>(static_cast<Head*>(object)->plan)(object, i, j, k);
}

// The largest radix of the ladder 32, 16, 8, 4, 2 whose threshold n reaches
// and that divides n.
Status divisorsIntNonTriv(int32_t* out, int32_t n);

}  // namespace dct4

#endif
