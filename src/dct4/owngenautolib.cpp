#include "owngenautolib.h"

#include <cmath>
#include <cstring>

namespace dct4 {

int64_t kvtgAlignSize32Bytes(int64_t size) { return (size + 31) & ~int64_t(31); }

namespace {
uint8_t* cursorOf(const uint8_t* arena)
{
    uint8_t* cursor;
    std::memcpy(&cursor, arena, sizeof cursor);  // the cursor word need not be aligned
    return cursor;
}
void setCursor(uint8_t* arena, uint8_t* cursor) { std::memcpy(arena, &cursor, sizeof cursor); }
}  // namespace

void* kvtgArenaMalloc(uint8_t* arena, int64_t size)
{
    uint8_t* const cursor = cursorOf(arena);
    setCursor(arena, cursor + kvtgAlignSize32Bytes(size));
    return cursor;
}

void kvtgArenaFree(uint8_t* arena, void*, int64_t size)
{
    setCursor(arena, cursorOf(arena) - kvtgAlignSize32Bytes(size));
}

EnvList* EnvList___init__(EnvList* node, uint8_t* arena)
{
    node->value = nullptr;
    node->next = nullptr;
    node->arena = arena;
    return node;
}

void* EnvList_add(EnvList* head, void* value)
{
    EnvList* last = head;
    while (last->next != nullptr)
        last = last->next;
    if (last->value == nullptr) {
        last->value = value;
        return value;
    }
    EnvList* node = EnvList___init__(static_cast<EnvList*>(kvtgArenaMalloc(head->arena, sizeof(EnvList))), head->arena);
    last->next = node;
    node->value = value;
    return value;
}

void* EnvList_get(EnvList* head, int32_t index)
{
    int32_t count = 0;
    EnvList* node = head;
    if (index > 0) {
        while (node != nullptr) {
            ++count;
            node = node->next;
            if (count == index)
                break;
        }
    }
    if (count != index || node == nullptr)
        return nullptr;  // an index equal to the length ends on no node: nothing to read
    return node->value;
}

void EnvList___del__(EnvList* head)
{
    EnvList* node = head->next;
    while (node != nullptr) {
        EnvList* const next = node->next;
        kvtgArenaFree(head->arena, node, sizeof(EnvList));
        node = next;
    }
}

void EnvList_freeChildren(EnvList* head)
{
    for (EnvList* node = head; node != nullptr; node = node->next) {
        if (node->value == nullptr)
            continue;
        Head* const child = static_cast<Head*>(node->value);
        child->del(child);
        kvtgArenaFree(node->arena, child, child->size);
    }
}

int64_t EnvList_add_mem(int32_t count) { return count * kvtgAlignSize32Bytes(sizeof(EnvList)); }

EnvList* newList(uint8_t* arena)
{
    return EnvList___init__(static_cast<EnvList*>(kvtgArenaMalloc(arena, sizeof(EnvList))), arena);
}

void releaseList(EnvList* head)
{
    EnvList___del__(head);
    kvtgArenaFree(head->arena, head, sizeof(EnvList));
}

namespace {
constexpr double pi = 3.141592653589793;
}

float kvtgCosPi_32f(float x) { return cosf(static_cast<float>(static_cast<double>(x) * pi)); }
float kvtgSinPi_32f(float x) { return sinf(static_cast<float>(static_cast<double>(x) * pi)); }
double kvtgCosPi_64f(double x) { return cos(x * pi); }
double kvtgSinPi_64f(double x) { return sin(x * pi); }

Status divisorsIntNonTriv(int32_t* out, int32_t n)
{
    static const struct {
        int32_t threshold, radix;
    } ladder[] = {{512, 32}, {128, 16}, {32, 8}, {16, 4}, {4, 2}};
    bool reached = false;
    for (const auto& row : ladder) {
        reached = reached || n >= row.threshold;
        if (reached && n % row.radix == 0) {
            *out = row.radix;
            return StatusOk;
        }
    }
    return StatusBadSize;
}

}  // namespace dct4
