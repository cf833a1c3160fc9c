// Test-side stand-in for kvtMalloc/kvtFree: the test executable defines both,
// so the library's calls land here.  It counts calls, remembers the last
// pointers, and can be told to fail.
#ifndef KVTG_TEST_COUNTING_ALLOCATOR_H
#define KVTG_TEST_COUNTING_ALLOCATOR_H

#include <cstdint>

namespace alloc_probe {

struct Record {
    int mallocCalls = 0;
    int freeCalls = 0;
    int freeNullCalls = 0;
    std::int32_t lastSize = 0;
    void* lastMalloc = nullptr;
    void* lastFree = nullptr;
    unsigned char lastFreeHead[8] = {};  // first bytes of the last non-null block given to kvtFree
};

// Clears the counters; the next `failures` allocations return null.
void reset(int failures = 0);
const Record& record();

}  // namespace alloc_probe

#endif
