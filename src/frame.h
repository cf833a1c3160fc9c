// Shared pieces of the call frame of the fixed-size transforms: export marker,
// alignment route and the choice of the scale factor from a flag.
#ifndef KVTG_FRAME_H
#define KVTG_FRAME_H

#ifndef KVTG_BUILDING_LIBRARY
#define KVTG_BUILDING_LIBRARY 1
#endif
#include "kvtgen.h"

#include <cstdint>

// Forces a small function inline.  A unity build of many long kernels
// reaches the compiler's inlining limits, and a vector helper left out of
// line passes every vector through memory.
#define KVTG_INLINE inline __attribute__((always_inline))

namespace kvtg {

// True when both pointers lie on 16-byte boundaries (null counts as aligned).
inline bool bothAligned16(const void* a, const void* b)
{
    return ((reinterpret_cast<std::uintptr_t>(a) | reinterpret_cast<std::uintptr_t>(b)) & 15u) == 0;
}

// Which way a transform goes, for the flag table.
enum class Direction { Forward, Inverse, Both };

// Turns a flag into the factor of a kernel of the given direction.  The flag is
// compared with 8, 4, 1 and 2 in that order; any other value is rejected.
// byN and bySqrtN are the kernel's literals nearest to 1/N and 1/sqrt(N).
template <class T>
inline bool pickFactor(std::int32_t flag, Direction direction, T byN, T bySqrtN, T& factor)
{
    if (flag == ScaleNone) {
        factor = T(1);
    } else if (flag == ScaleBySqrtN) {
        factor = bySqrtN;
    } else if (flag == ScaleFwdByN) {
        factor = direction == Direction::Inverse ? T(1) : byN;
    } else if (flag == ScaleInvByN) {
        factor = direction == Direction::Forward ? T(1) : byN;
    } else {
        return false;
    }
    return true;
}

}  // namespace kvtg

#endif
