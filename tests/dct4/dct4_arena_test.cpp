// The arena and the child lists of the plan memory layer.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <vector>

#include "dct4/owngenautolib.h"

using namespace dct4;

namespace {

// A block whose cursor starts at a 32-byte boundary 64 bytes in.
struct Block {
    std::vector<uint8_t> bytes = std::vector<uint8_t>(4096 + 64);
    uint8_t* arena;
    Block()
    {
        arena = reinterpret_cast<uint8_t*>((reinterpret_cast<uintptr_t>(bytes.data()) + 31) & ~uintptr_t(31));
        uint8_t* cursor = arena + 64;
        std::memcpy(arena, &cursor, sizeof cursor);
    }
    uint8_t* cursor() const
    {
        uint8_t* c;
        std::memcpy(&c, arena, sizeof c);
        return c;
    }
};

TEST(DctArena, AlignmentOfSizes)
{
    const struct {
        int64_t size, rounded;
    } table[] = {{0, 0}, {1, 32}, {24, 32}, {32, 32}, {33, 64}, {96, 96}, {100, 128}};
    for (const auto& row : table)
        EXPECT_EQ(kvtgAlignSize32Bytes(row.size), row.rounded) << row.size;
}

TEST(DctArena, CursorMovesByRoundedSizes)
{
    Block b;
    uint8_t* start = b.cursor();
    EXPECT_EQ(kvtgArenaMalloc(b.arena, 0), start);
    EXPECT_EQ(kvtgArenaMalloc(b.arena, 0), start) << "size 0 leaves the cursor";
    uint8_t* first = static_cast<uint8_t*>(kvtgArenaMalloc(b.arena, 1));
    uint8_t* second = static_cast<uint8_t*>(kvtgArenaMalloc(b.arena, 1));
    EXPECT_EQ(second - first, 32);
    kvtgArenaFree(b.arena, nullptr, 0);
    EXPECT_EQ(b.cursor(), start + 64);
    kvtgArenaFree(b.arena, second, 1);
    kvtgArenaFree(b.arena, first, 1);
    EXPECT_EQ(b.cursor(), start) << "release in any order returns the cursor";
}

TEST(DctLists, AddGetAndRelease)
{
    Block b;
    int values[3];
    EnvList* head = newList(b.arena);
    EXPECT_EQ(EnvList_get(head, 0), nullptr) << "a fresh head holds nothing";
    uint8_t* afterHead = b.cursor();
    EXPECT_EQ(EnvList_add(head, &values[0]), &values[0]);
    EXPECT_EQ(b.cursor(), afterHead) << "the first value goes into the head";
    EnvList_add(head, &values[1]);
    EXPECT_EQ(b.cursor(), afterHead + 32);
    EnvList_add(head, &values[2]);
    EXPECT_EQ(b.cursor(), afterHead + 64);
    EXPECT_EQ(EnvList_get(head, 0), &values[0]);
    EXPECT_EQ(EnvList_get(head, 1), &values[1]);
    EXPECT_EQ(EnvList_get(head, 2), &values[2]);
    EXPECT_EQ(EnvList_get(head, -1), nullptr);
    EXPECT_EQ(EnvList_get(head, 4), nullptr);
    EXPECT_EQ(EnvList_add_mem(2), 64);
    EnvList___del__(head);
    EXPECT_EQ(b.cursor(), afterHead) << "three nodes: two given back";
}

// A child that counts its releases.
struct Child {
    Head head;
    int* released;
};
void releaseChild(void* self) { ++*static_cast<Child*>(self)->released; }

TEST(DctLists, FreeChildrenSkipsEmptyNodesAndGivesBackRecords)
{
    Block b;
    EnvList* empty = newList(b.arena);
    const uint8_t* before = b.cursor();
    EnvList_freeChildren(empty);
    EnvList_freeChildren(nullptr);
    EXPECT_EQ(b.cursor(), before);

    int released = 0;
    EnvList* head = newList(b.arena);
    uint8_t* start = b.cursor();
    for (int i = 0; i < 2; ++i) {
        Child* child = static_cast<Child*>(kvtgArenaMalloc(b.arena, sizeof(Child)));
        child->head = {releaseChild, static_cast<int32_t>(sizeof(Child)), nullptr, b.arena};
        child->released = &released;
        EnvList_add(head, child);
    }
    EnvList_freeChildren(head);
    EXPECT_EQ(released, 2);
    // taken: two records of 64 bytes and one node of 32; given back: the records
    EXPECT_EQ(b.cursor(), start + 32);
}

TEST(DctLadder, RadixOfTheLadder)
{
    const struct {
        int32_t n, radix;
    } table[] = {{512, 32}, {528, 16}, {520, 8}, {516, 4}, {514, 2}, {128, 16}, {32, 8}, {24, 4}, {4, 2}, {14, 2}, {600, 8}};
    for (const auto& row : table) {
        int32_t radix = -1;
        EXPECT_EQ(divisorsIntNonTriv(&radix, row.n), StatusOk) << row.n;
        EXPECT_EQ(radix, row.radix) << row.n;
    }
    for (int32_t n : {513, 3, 0, -4, -512}) {
        int32_t radix = 77;
        EXPECT_EQ(divisorsIntNonTriv(&radix, n), StatusBadSize) << n;
        EXPECT_EQ(radix, 77) << "nothing stored";
    }
}

TEST(DctTrig, SinglePrecisionProductGoesToTheSinglePrecisionLibrary)
{
    const float x = 3.0f / 256;
    EXPECT_EQ(kvtgCosPi_32f(x), cosf(static_cast<float>(static_cast<double>(x) * 3.141592653589793)));
    EXPECT_EQ(kvtgSinPi_64f(0.25), sin(0.25 * 3.141592653589793));
}

}  // namespace
