#include "counting_allocator.h"

#include <cstdlib>
#include <cstring>

#include "kvtcore.h"

namespace alloc_probe {
namespace {
Record current;
int failuresLeft = 0;
}  // namespace

void reset(int failures)
{
    current = Record{};
    failuresLeft = failures;
}

const Record& record() { return current; }

}  // namespace alloc_probe

// These definitions take the place of the core library's pair for the
// transform library, since the executable's dynamic symbols come first.
extern "C" void* kvtMalloc(int32_t size)
{
    using namespace alloc_probe;
    ++current.mallocCalls;
    current.lastSize = size;
    if (failuresLeft > 0) {
        --failuresLeft;
        current.lastMalloc = nullptr;
        return nullptr;
    }
    void* block = nullptr;
    if (size <= 0 || posix_memalign(&block, 64, static_cast<std::size_t>(size)) != 0)
        block = nullptr;
    current.lastMalloc = block;
    return block;
}

extern "C" void kvtFree(void* block)
{
    using namespace alloc_probe;
    ++current.freeCalls;
    if (block == nullptr)
        ++current.freeNullCalls;
    current.lastFree = block;
    if (block != nullptr)
        std::memcpy(current.lastFreeHead, block, sizeof current.lastFreeHead);
    std::free(block);
}
