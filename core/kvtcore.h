/**
 * @file kvtcore.h
 * @brief The allocator pair of the library family, in libkvtcore.so.1.
 *
 * @defgroup core Allocator: libkvtcore
 * @brief kvtMalloc() and kvtFree(), which the transforms call for memory.
 *
 * libkvtcore.so.1 stands in for the allocator of the core library of the
 * family.  libkvtgenn8 calls it in three places only: kvtgDCT4InitAlloc_32f()
 * and kvtgDCT4InitAlloc_64f() take a plan's block from kvtMalloc(),
 * kvtgDCT4Free_32f() and kvtgDCT4Free_64f() give it to kvtFree(), and the
 * Walsh-Hadamard transforms of orders 8 to 13 take their work buffer from
 * kvtMalloc() and give it back within the call when they get no buffer.  A
 * program calls the pair itself for a plan block that kvtgDCT4Free_32f() is
 * to release.  `pkg-config --libs kvtgen` and the CMake target
 * `kvtgen::kvtgenn8` link it, and a program that links libkvtgenn8 ships it
 * beside it: the library file needs it at load time.
 * @{
 */
#ifndef KVTCORE_H
#define KVTCORE_H
#include <stdint.h>
#ifdef __cplusplus
extern "C" {
#endif
/**
 * @brief A block of memory.
 * @param size the number of bytes, at least 1.
 * @return a block of @p size bytes aligned to 64 bytes; null for a @p size
 *         below 1 or when there is no memory.
 */
void* kvtMalloc(int32_t size);
/**
 * @brief Releases a block.
 * @param block what kvtMalloc() returned, or null, which does nothing.
 */
void kvtFree(void* block);
#ifdef __cplusplus
}
#endif
/** @} */
#endif
