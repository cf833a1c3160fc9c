/* Stand-in for the family's core allocator: the pair the transform library imports. */
#ifndef KVTCORE_H
#define KVTCORE_H
#include <stdint.h>
#ifdef __cplusplus
extern "C" {
#endif
/* Returns a block of `size` bytes aligned to 64 bytes, or null. */
void* kvtMalloc(int32_t size);
/* Releases what kvtMalloc returned; null is accepted. */
void kvtFree(void* block);
#ifdef __cplusplus
}
#endif
#endif
