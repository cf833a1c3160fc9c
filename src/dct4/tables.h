// The function objects of a DCT-IV plan and the twiddle tables built from
// them, for one sample type T.  Every table entry comes from its own call of
// the math library, in the sample type's precision (a Real32 table is made in
// single precision, not rounded from double), and the tables are filled from
// start to end in the order that the compute stages read them.
#ifndef KVTG_DCT4_TABLES_H
#define KVTG_DCT4_TABLES_H

#include <cstdint>

#include "dct4/env.h"

namespace dct4 {

template <class T>
struct Trig;
template <>
struct Trig<float> {
    static float cosPi(float x) { return kvtgCosPi_32f(x); }
    static float sinPi(float x) { return kvtgSinPi_32f(x); }
};
template <>
struct Trig<double> {
    static double cosPi(double x) { return kvtgCosPi_64f(x); }
    static double sinPi(double x) { return kvtgSinPi_64f(x); }
};

// The columns in the order that the fold kernels of each radix read them.
struct ColumnOrder {
    static constexpr int32_t r1[] = {0};
    static constexpr int32_t r2[] = {0, 1};
    static constexpr int32_t r4[] = {0, 3, 1, 2};
    static constexpr int32_t r8[] = {0, 7, 1, 6, 2, 5, 3, 4};
    static constexpr int32_t r16[] = {0, 15, 1, 14, 2, 13, 3, 12, 4, 11, 5, 10, 6, 9, 7, 8};
    static constexpr int32_t r32[] = {0,  31, 16, 15, 4,  27, 20, 11, 8, 23, 24, 7,  12, 19, 28, 3,
                                      1,  30, 17, 14, 5,  26, 21, 10, 9, 22, 25, 6,  13, 18, 29, 2};

    static constexpr const int32_t* of(int32_t radix)
    {
        switch (radix) {
        case 1: return r1;
        case 2: return r2;
        case 4: return r4;
        case 8: return r8;
        case 16: return r16;
        default: return r32;
        }
    }

    // where column j of a radix comes in its order
    static constexpr int32_t position(int32_t radix, int32_t j)
    {
        int32_t c = 0;
        while (of(radix)[c] != j)
            ++c;
        return c;
    }
};

template <class T>
struct Tables {
    static constexpr int32_t lanes = 16 / static_cast<int32_t>(sizeof(T));
    using At = T (*)(void*, int32_t, int32_t, int32_t);

    static void closure___del__(void*) {}

    static EnvfCompose* envfCompose___init__(EnvfCompose* r, uint8_t* arena, int32_t radix2, int32_t scale,
                                            int32_t blocks, int32_t radix, int32_t rowLength)
    {
        r->head.size = sizeof(EnvfCompose);
        r->head.arena = arena;
        r->radix2 = radix2;
        r->scale = scale;
        r->blocks = blocks;
        r->radix = radix;
        r->rowLength = rowLength;
        r->head.del = closure___del__;
        r->head.plan = reinterpret_cast<void*>(static_cast<At>(envfCompose_at));
        return r;
    }

    static Envlambda* envlambda___init__(Envlambda* r, uint8_t* arena, int32_t n, int32_t radix)
    {
        r->head.size = sizeof(Envlambda);
        r->head.arena = arena;
        r->n = n;
        r->radix = radix;
        r->head.del = closure___del__;
        r->head.plan = reinterpret_cast<void*>(static_cast<At>(envlambda_at));
        return r;
    }

    // cos or sin of pi (2p+1)(2q+1)/(4N) for u = i*rowLength + j = 2h (+1), h = p*radix + q
    static T envfCompose_at(void* self, int32_t i, int32_t j, int32_t)
    {
        const EnvfCompose* f = static_cast<const EnvfCompose*>(self);
        const int32_t u = static_cast<int32_t>(static_cast<uint32_t>(i) * static_cast<uint32_t>(f->rowLength) +
                                               static_cast<uint32_t>(j));
        const int32_t h = u / 2;
        const int32_t p = h / f->radix, q = h % f->radix;
        const int32_t m = static_cast<int32_t>(static_cast<uint32_t>(2 * p + 1) * static_cast<uint32_t>(2 * q + 1) * 2u);
        const T x = static_cast<T>(m) / static_cast<T>(f->scale);
        return u % 2 != 0 ? Trig<T>::sinPi(x) : Trig<T>::cosPi(x);
    }

    static T envfsplit_at(void* self, int32_t i, int32_t j, int32_t k)
    {
        const Envfsplit* f = static_cast<const Envfsplit*>(self);
        return owng_TFunc_IIIR_at<T>(f->inner, lanes * i + j, k, 0);
    }

    // (i + 1/2) / (n / radix)
    static T envlambda_at(void* self, int32_t i, int32_t, int32_t)
    {
        const Envlambda* f = static_cast<const Envlambda*>(self);
        return (static_cast<T>(i) + static_cast<T>(0.5)) / static_cast<T>(f->n / f->radix);
    }

    // ---- env4: rotations of the table pass
    static int32_t env4Rule(int32_t radix)
    {
        switch (radix) {
        case 1: return 1;
        case 2: return 2;
        case 4: return 3;
        case 8: return 4;
        case 16: return 5;
        case 32: return 6;
        default: return 0;
        }
    }

    static int64_t env4TableBytes(int32_t rule, int32_t blocks) { return int64_t(blocks) * (int64_t(1) << rule) * 16; }

    static const int32_t* columnOrder(int32_t radix) { return ColumnOrder::of(radix); }

    // For each block i and column q of Q(r): a vector of cosines, then one of
    // sines, lane j for row lanes*i + j.
    static void fillEnv4(T* table, int32_t radix, int32_t blocks, void* fn)
    {
        const At at = reinterpret_cast<At>(static_cast<Head*>(fn)->plan);
        const int32_t* order = columnOrder(radix);
        for (int32_t i = 0; i < blocks; ++i)
            for (int32_t c = 0; c < radix; ++c) {
                const int32_t q = order[c];
                for (int32_t part = 0; part < 2; ++part)
                    for (int32_t j = 0; j < lanes; ++j)
                        *table++ = at(fn, i, j, 2 * q + part);
            }
    }

    // ---- env8: twiddles of a composite span transform
    static int32_t env8__chooseRule(int32_t radix)
    {
        switch (radix) {
        case 2: return 1;
        case 4: return 2;
        case 8: return 3;
        case 16: return 4;
        case 32: return 5;
        default: return 0;
        }
    }

    static int64_t env8TableBytes(int32_t rule, int32_t blocks)
    {
        static const int64_t perBlock[6] = {0, 32, 96, 224, 480, 992};
        return int64_t(blocks) * perBlock[rule];
    }

    static T lambda(void* fn, int32_t i)
    {
        if (sizeof(T) == 4)
            return owng_TFunc_IIIR_at<T>(fn, i, 0, 0);
        return reinterpret_cast<At>(static_cast<Head*>(fn)->plan)(fn, i, 0, 0);
    }

    // A pair of broadcast vectors: cos(pi x) in every lane, then sin(pi x).
    static T* storePair(T* table, T x)
    {
        for (int32_t j = 0; j < lanes; ++j)
            *table++ = Trig<T>::cosPi(x);
        for (int32_t j = 0; j < lanes; ++j)
            *table++ = Trig<T>::sinPi(x);
        return table;
    }

    // Section A of rules 4 and 5: the radix-4 pass over the whole length.
    static T* sectionA(T* table, int32_t blocks, void* fn, int32_t parts, T denominator)
    {
        for (int32_t i = 0; i < blocks; ++i)
            for (int32_t t = 0; t < parts; ++t) {
                const T y = lambda(fn, i) + static_cast<T>(t);
                for (int32_t j = 1; j <= 3; ++j)
                    table = storePair(table, y * (static_cast<T>(j) / denominator));
            }
        return table;
    }

    // Section B of rules 4 and 5 (and the whole of rules 1 to 3).
    static T* sectionB(T* table, int32_t blocks, void* fn, int32_t count, T denominator)
    {
        for (int32_t i = 0; i < blocks; ++i) {
            const T l = lambda(fn, i);
            for (int32_t j = 1; j <= count; ++j)
                table = storePair(table, l * (static_cast<T>(j) / denominator));
        }
        return table;
    }

    static void fillEnv8(T* table, int32_t rule, int32_t blocks, void* fn)
    {
        switch (rule) {
        case 1: sectionB(table, blocks, fn, 1, T(1)); break;  // 2j/s with s = 2
        case 2: sectionB(table, blocks, fn, 3, T(2)); break;  // 2j/4
        case 3: sectionB(table, blocks, fn, 7, T(4)); break;  // 2j/8
        case 4: sectionB(sectionA(table, blocks, fn, 4, T(8)), blocks, fn, 3, T(2)); break;
        default:
            if (sizeof(T) == 4)
                sectionB(sectionA(table, blocks, fn, 8, T(16)), blocks, fn, 7, T(4));
            else
                sectionA(sectionB(table, blocks, fn, 7, T(4)), blocks, fn, 8, T(16));
            break;
        }
    }
};

}  // namespace dct4

#endif
