// Walsh-Hadamard kernels of both library files (the baseline, "sse2", and the
// x86-64-v3 build, "avx2", where this processor runs it) against the textbook
// in-place loop (built with the baseline's flags) and against each file's
// arithmetic limit: N log2 N additions and subtractions, `lanes` per
// instruction (4 floats or 2 doubles in the SSE2 file, 8 or 4 in the
// x86-64-v3 file), two instructions per cycle.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "bench_report.h"
#include "kvtgen.h"
#include "library_files.h"
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

using bench::LibraryFiles;

template <class T>
void benchKernel(benchmark::State& state, LibraryFiles::File file, int order)
{
    using Transform = Status (*)(const T*, T*, int32_t, int32_t, uint8_t*);
    using BufferSize = Status (*)(int32_t, int32_t*);
    const char* type = sizeof(T) == 4 ? "32f" : "64f";
    const auto transform = LibraryFiles::get().function<Transform>(file, std::string("kvtgWHT_") + type);
    const auto bufferSize = LibraryFiles::get().function<BufferSize>(file, std::string("kvtgWHTGetBufferSize_") + type);
    const int n = 1 << order;
    T* x = alignedSamples<T>(n);
    T* y = alignedSamples<T>(n);
    int32_t size = 0;
    bufferSize(order, &size);
    uint8_t* buffer = size ? reinterpret_cast<uint8_t*>(alignedSamples<double>(size / 8 + 1)) : nullptr;
    for (auto _ : state) {
        transform(x, y, order, ScaleNone, buffer);
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
    const std::vector<LibraryFiles::File> files = LibraryFiles::get().files();
    const auto ours = LibraryFiles::benchmarkName;
    for (int order = 1; order <= 13; ++order) {
        for (LibraryFiles::File file : files)
            benchmark::RegisterBenchmark(ours(file, "32f/" + std::to_string(order)).c_str(), benchKernel<float>, file,
                                         order);
        benchmark::RegisterBenchmark(("loop/32f/" + std::to_string(order)).c_str(), benchTextbook<float>, order);
        for (LibraryFiles::File file : files)
            benchmark::RegisterBenchmark(ours(file, "64f/" + std::to_string(order)).c_str(), benchKernel<double>, file,
                                         order);
        benchmark::RegisterBenchmark(("loop/64f/" + std::to_string(order)).c_str(), benchTextbook<double>, order);
    }
    benchmark::Initialize(&argc, argv);
    bench::Collector results;
    benchmark::RunSpecifiedBenchmarks(&results);
    // the fastest of three measurements: a worker that took the core away
    // only makes the clock look slower
    const double ghz = std::max({bench::measureClockGHz(), bench::measureClockGHz(), bench::measureClockGHz()});
    std::printf("\nclock (measured) %.2f GHz; limit = N log2 N / lanes / 2 per cycle, lanes of each file's vectors\n",
                ghz);
    for (const char* type : {"32f", "64f"}) {
        std::printf("\n%-4s %6s %10s", type, "order", "loop ns");
        for (LibraryFiles::File file : files)
            std::printf(" %8s ns %8s %9s", LibraryFiles::label(file), "speedup", "vs limit");
        std::printf("\n");
        for (int order = 1; order <= 13; ++order) {
            const std::string suffix = std::string(type) + "/" + std::to_string(order);
            const double loop = results.ns("loop/" + suffix);
            std::printf("%-4s %6d %10.1f", "", order, loop);
            for (LibraryFiles::File file : files) {
                const int lanes = (type[0] == '3' ? 4 : 2) * (file == LibraryFiles::Variant ? 2 : 1);
                const double kernel = results.ns(ours(file, suffix));
                const double limit = std::ldexp(1.0, order) * order / lanes / 2 / ghz;
                std::printf(" %11.1f %7.2fx %8.2fx", kernel, loop / kernel, kernel / limit);
            }
            std::printf("\n");
        }
    }
    benchmark::Shutdown();
    return 0;
}
