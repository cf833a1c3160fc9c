// DCT-IV plans against FFTW's REDFT11 plan and FFTW's complex FFT of N/2
// (the floor of a DCT-IV: about one such FFT plus two passes of rotations),
// N = 2^6 .. 2^22, both precisions; and for the largest lengths the bandwidth
// against a plain copy of the same bytes.
#include <benchmark/benchmark.h>
#include <fftw3.h>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "bench_report.h"
#include "dct4_peers.h"
#include "fastest_plan.h"
#include "kvtgen.h"
#include "library_files.h"

namespace {

using bench::DctFftw;
using bench::DctPeer;

// The peer is the fastest of three plannings (bench::fastestPlan), made once
// per kind and length and kept for the whole run: a planning of the largest
// lengths takes seconds, and every repetition of a benchmark would repeat it.
template <class T>
void benchPeer(benchmark::State& state, DctPeer kind, int n)
{
    struct Prepared {
        T* in;
        T* out;
        typename DctFftw<T>::Plan plan;
    };
    static std::map<std::pair<DctPeer, int>, Prepared> prepared;
    auto found = prepared.find({kind, n});
    if (found == prepared.end()) {
        T* in = DctFftw<T>::alloc(n);
        T* out = DctFftw<T>::alloc(n);
        auto plan = bench::fastestPlan<typename DctFftw<T>::Plan>(
            [&] {
                auto made = DctFftw<T>::plan(kind, n, in, out);
                for (int i = 0; i < n; ++i)
                    in[i] = static_cast<T>(std::sin(i + 1.0));
                return made;
            },
            [&](typename DctFftw<T>::Plan p) { DctFftw<T>::run(kind, p, in, out); }, DctFftw<T>::destroy,
            DctFftw<T>::forget);
        found = prepared.emplace(std::make_pair(kind, n), Prepared{in, out, plan}).first;
    }
    const Prepared& p = found->second;
    for (auto _ : state) {
        DctFftw<T>::run(kind, p.plan, p.in, p.out);
        benchmark::ClobberMemory();
    }
}

using bench::LibraryFiles;

// A plan of one library file, made, run and released by that file.
template <class T>
void benchPlan(benchmark::State& state, LibraryFiles::File file, int n)
{
    const LibraryFiles& files = LibraryFiles::get();
    const std::string type = DctFftw<T>::type;
    const auto alloc = files.function<Status (*)(DctPlan**, int32_t)>(file, "kvtgDCT4InitAlloc_" + type);
    const auto run = files.function<Status (*)(const T*, T*, DctPlan*)>(file, "kvtgDCT4_" + type);
    const auto release = files.function<Status (*)(DctPlan*)>(file, "kvtgDCT4Free_" + type);
    DctPlan* plan = nullptr;
    alloc(&plan, n);
    std::vector<T> x(static_cast<std::size_t>(n)), y(x.size());
    for (int i = 0; i < n; ++i)
        x[static_cast<std::size_t>(i)] = static_cast<T>(std::sin(i + 1.0));
    for (auto _ : state) {
        run(x.data(), y.data(), plan);
        benchmark::ClobberMemory();
    }
    release(plan);
}

template <class T>
void benchCopy(benchmark::State& state, int n)
{
    std::vector<T> x(static_cast<std::size_t>(n), T(1)), y(x.size());
    for (auto _ : state) {
        std::memcpy(y.data(), x.data(), x.size() * sizeof(T));
        benchmark::ClobberMemory();
    }
}

}  // namespace

int main(int argc, char** argv)
{
    const std::vector<LibraryFiles::File> files = LibraryFiles::get().files();
    const auto ours = LibraryFiles::benchmarkName;
    for (const char* type : {"32f", "64f"}) {
        const bool single = type[0] == '3';
        for (int log2n = 6; log2n <= 22; ++log2n) {
            const int n = 1 << log2n;
            const std::string suffix = std::string(type) + "/" + std::to_string(n);
            for (LibraryFiles::File file : files)
                benchmark::RegisterBenchmark(ours(file, suffix).c_str(), single ? benchPlan<float> : benchPlan<double>,
                                             file, n);
            benchmark::RegisterBenchmark(("redft11/" + suffix).c_str(), single ? benchPeer<float> : benchPeer<double>,
                                         DctPeer::Redft, n);
            benchmark::RegisterBenchmark(("fft/" + suffix).c_str(), single ? benchPeer<float> : benchPeer<double>,
                                         DctPeer::Fft, n);
            if (log2n >= 20)
                benchmark::RegisterBenchmark(("copy/" + suffix).c_str(), single ? benchCopy<float> : benchCopy<double>, n);
        }
    }
    benchmark::Initialize(&argc, argv);
    bench::Collector results;
    benchmark::RunSpecifiedBenchmarks(&results);
    for (const char* type : {"32f", "64f"}) {
        std::printf("\n%-4s %9s %12s %12s", type, "N", "redft11 ns", "fft N/2 ns");
        for (LibraryFiles::File file : files)
            std::printf(" %9s ns %8s %8s", LibraryFiles::label(file), "vs redft", "vs fft");
        std::printf("\n");
        std::map<LibraryFiles::File, std::vector<double>> ratios;
        for (int log2n = 6; log2n <= 22; ++log2n) {
            const std::string suffix = std::string(type) + "/" + std::to_string(1 << log2n);
            const double redft = results.ns("redft11/" + suffix), fft = results.ns("fft/" + suffix);
            std::printf("%-4s %9d %12.0f %12.0f", "", 1 << log2n, redft, fft);
            for (LibraryFiles::File file : files) {
                const double kernel = results.ns(ours(file, suffix));
                if (log2n <= 20)
                    ratios[file].push_back(redft / kernel);
                std::printf(" %12.0f %7.2fx %7.2fx", kernel, redft / kernel, kernel / fft);
            }
            std::printf("\n");
        }
        for (LibraryFiles::File file : files)
            std::printf("%-4s %s geometric mean over 2^6..2^20: %.2fx REDFT11's speed\n", type,
                        LibraryFiles::label(file), bench::geometricMean(ratios[file]));
        for (int log2n = 20; log2n <= 22; ++log2n) {
            const std::string suffix = std::string(type) + "/" + std::to_string(1 << log2n);
            const double bytes = 2.0 * (1 << log2n) * (type[0] == '3' ? 4 : 8);  // read src, write dst
            std::printf("%-4s %9d  copy %6.2f GB/s", "", 1 << log2n, bytes / results.ns("copy/" + suffix));
            for (LibraryFiles::File file : files)
                std::printf(", %s %6.2f GB/s", LibraryFiles::label(file), bytes / results.ns(ours(file, suffix)));
            std::printf("\n");
        }
    }
    benchmark::Shutdown();
    return 0;
}
