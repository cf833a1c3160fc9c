// Walsh-Hadamard kernels against the textbook in-place loop (built with the
// library's flags) and against the arithmetic limit of the library file the
// loader gave: N log2 N additions and subtractions, `lanes` per instruction
// (4 floats or 2 doubles in the SSE2 file, 8 or 4 in the x86-64-v3 file), two
// instructions per cycle.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "bench_report.h"
#include "kvtgen.h"
#include "library_file.h"
#include "wht_textbook.h"

namespace {

template <class T>
T* alignedSamples(int n)
{
    void* p = nullptr;
    if (posix_memalign(&p, 64, sizeof(T) * static_cast<std::size_t>(n)) != 0)
        std::abort();
    T* x = static_cast<T*>(p);
    for (int i = 0; i < n; ++i)
        x[i] = static_cast<T>(std::sin(i + 1.0));
    return x;
}

template <class T>
void benchKernel(benchmark::State& state, int order)
{
    const int n = 1 << order;
    T* x = alignedSamples<T>(n);
    T* y = alignedSamples<T>(n);
    int32_t size = 0;
    sizeof(T) == 4 ? kvtgWHTGetBufferSize_32f(order, &size) : kvtgWHTGetBufferSize_64f(order, &size);
    uint8_t* buffer = size ? reinterpret_cast<uint8_t*>(alignedSamples<double>(size / 8 + 1)) : nullptr;
    for (auto _ : state) {
        if constexpr (sizeof(T) == 4)
            kvtgWHT_32f(x, y, order, ScaleNone, buffer);
        else
            kvtgWHT_64f(x, y, order, ScaleNone, buffer);
        benchmark::DoNotOptimize(y);
        benchmark::ClobberMemory();
    }
    std::free(x);
    std::free(y);
    std::free(buffer);
}

template <class T>
void benchTextbook(benchmark::State& state, int order)
{
    const int n = 1 << order;
    T* x = alignedSamples<T>(n);
    for (auto _ : state) {
        textbookWht(x, n, T(1) / T(n));  // 1/N keeps repeated calls finite
        benchmark::DoNotOptimize(x);
        benchmark::ClobberMemory();
    }
    std::free(x);
}

}  // namespace

int main(int argc, char** argv)
{
    for (int order = 1; order <= 13; ++order) {
        benchmark::RegisterBenchmark(("kvtg/32f/" + std::to_string(order)).c_str(), benchKernel<float>, order);
        benchmark::RegisterBenchmark(("loop/32f/" + std::to_string(order)).c_str(), benchTextbook<float>, order);
        benchmark::RegisterBenchmark(("kvtg/64f/" + std::to_string(order)).c_str(), benchKernel<double>, order);
        benchmark::RegisterBenchmark(("loop/64f/" + std::to_string(order)).c_str(), benchTextbook<double>, order);
    }
    benchmark::Initialize(&argc, argv);
    bench::Collector results;
    benchmark::RunSpecifiedBenchmarks(&results);
    // the fastest of three measurements: a worker that took the core away
    // only makes the clock look slower
    const double ghz = std::max({bench::measureClockGHz(), bench::measureClockGHz(), bench::measureClockGHz()});
    const bool wide = bench::isVariantFile(bench::loadedLibraryFile());
    std::printf("\nclock (measured) %.2f GHz; library %s; limit of %d-bit vectors\n", ghz,
                bench::describeLoadedLibrary().c_str(), wide ? 256 : 128);
    for (const char* type : {"32f", "64f"}) {
        const int lanes = (type[0] == '3' ? 4 : 2) * (wide ? 2 : 1);
        std::printf("\n%-4s %6s %10s %10s %8s %10s %10s\n", type, "order", "kvtg ns", "loop ns", "speedup", "limit ns",
                    "vs limit");
        for (int order = 1; order <= 13; ++order) {
            const std::string suffix = std::string(type) + "/" + std::to_string(order);
            const double ours = results.ns("kvtg/" + suffix), loop = results.ns("loop/" + suffix);
            const double n = std::ldexp(1.0, order);
            const double limit = n * order / lanes / 2 / ghz;
            std::printf("%-4s %6d %10.1f %10.1f %7.2fx %10.1f %9.2fx\n", "", order, ours, loop, loop / ours, limit, ours / limit);
        }
    }
    benchmark::Shutdown();
    return 0;
}
