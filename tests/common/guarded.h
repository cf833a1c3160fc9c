// A sample array placed at a chosen byte offset from a 64-byte boundary, with
// guard bytes of a known pattern on both sides, to catch writes outside the
// array and to give kernels a misaligned or over-readable buffer.
#ifndef KVTG_TEST_GUARDED_H
#define KVTG_TEST_GUARDED_H

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

template <class T>
class Guarded {
public:
    static constexpr std::size_t guardBytes = 64;

    // count samples at `offset` bytes past a 64-byte boundary (0 <= offset < 64)
    Guarded(std::size_t count, std::size_t offset = 0, unsigned char pattern = 0xA5)
        : count_(count), offset_(offset), pattern_(pattern),
          storage_(guardBytes * 3 + count * sizeof(T) + 64)
    {
        fillGuards(pattern);
    }

    T* data() { return reinterpret_cast<T*>(start() + guardBytes); }
    const T* data() const { return reinterpret_cast<const T*>(const_cast<Guarded*>(this)->start() + guardBytes); }
    std::size_t size() const { return count_; }
    T& operator[](std::size_t i) { return data()[i]; }

    // Sets every guard byte, e.g. to bytes of an infinity or a NaN.
    void fillGuards(unsigned char pattern)
    {
        pattern_ = pattern;
        std::memset(start(), pattern, guardBytes);
        std::memset(reinterpret_cast<unsigned char*>(data() + count_), pattern, guardBytes);
    }
    // Sets the guard behind the array to repeated copies of a sample value.
    void fillTail(T value)
    {
        T* tail = data() + count_;
        for (std::size_t i = 0; i < guardBytes / sizeof(T); ++i)
            std::memcpy(tail + i, &value, sizeof(T));
    }
    // True when no guard byte has changed since the last fillGuards.
    bool guardsIntact() const
    {
        const unsigned char* front = const_cast<Guarded*>(this)->start();
        const unsigned char* back = reinterpret_cast<const unsigned char*>(data() + count_);
        for (std::size_t i = 0; i < guardBytes; ++i)
            if (front[i] != pattern_ || back[i] != pattern_)
                return false;
        return true;
    }

private:
    unsigned char* start()
    {
        const auto base = reinterpret_cast<std::uintptr_t>(storage_.data());
        const std::uintptr_t aligned = (base + 63) & ~std::uintptr_t(63);
        // the array itself begins at a 64-byte boundary plus offset
        return reinterpret_cast<unsigned char*>(aligned) + offset_;
    }

    std::size_t count_, offset_;
    unsigned char pattern_;
    std::vector<unsigned char> storage_;
};

#endif
