// The batched transforms of both batch library files (the baseline, "sse2",
// and the x86-64-v3 build, "avx2", where this processor runs it), every entry
// point of the complex, real (CCS) and Hartley families and every length
// 2..64, on 256 contiguous transforms: the batch call, a loop of the single
// calls of the same level's file, and FFTW's plan_many of the same layout.
// Batches of one transform are timed against one single call as well.  After
// the benchmarks, a table per family gives the time per transform and the
// ratios, with their geometric means.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "batch_cases.h"
#include "bench_report.h"

namespace {

using bench::BatchFamily;
using bench::LibraryFiles;

constexpr int batchCount = 256;

void runClosure(benchmark::State& state, const std::function<void()>& run)
{
    for (auto _ : state) {
        run();
        benchmark::ClobberMemory();
    }
}

// A benchmark name without the spaces of the family's name.
std::string stem(const BatchFamily& f, int n)
{
    std::string name = f.name;
    name.erase(std::remove(name.begin(), name.end(), ' '), name.end());
    return name + "/" + std::to_string(n);
}

// Each benchmark runs for 20 ms unless --benchmark_min_time says otherwise:
// the program has some 5,000 of them.
void add(const std::string& name, const std::function<void()>& run)
{
    benchmark::RegisterBenchmark(name.c_str(), runClosure, run)->MinTime(0.02);
}

void registerAll()
{
    const LibraryFiles& files = LibraryFiles::get();
    for (const BatchFamily& f : bench::batchFamilies)
        for (int n = 2; n <= 64; ++n) {
            const std::string s = stem(f, n);
            for (LibraryFiles::File file : files.files()) {
                // a case plans FFTW once, with the first file
                const bench::BatchCase many = bench::makeBatchCase(f, n, batchCount, file, file == files.files()[0]);
                const bench::BatchCase one = bench::makeBatchCase(f, n, 1, file, false);
                add(LibraryFiles::benchmarkName(file, "batch/" + s), many.batch);
                add(LibraryFiles::benchmarkName(file, "loop/" + s), many.loop);
                add(LibraryFiles::benchmarkName(file, "batch1/" + s), one.batch);
                add(LibraryFiles::benchmarkName(file, "single/" + s), one.loop);
                if (many.peer)
                    add("fftw-many/" + s, many.peer);
            }
        }
}

void printFamily(const bench::Collector& results, const BatchFamily& f,
                 std::map<LibraryFiles::File, std::vector<double>>& overFftw)
{
    const std::vector<LibraryFiles::File> files = LibraryFiles::get().files();
    bool timed = false;  // a length of the family ran (--benchmark_filter)
    for (int n = 2; n <= 64; ++n)
        timed = timed || !std::isnan(results.ns("fftw-many/" + stem(f, n)));
    if (!timed)
        return;
    std::printf("\n%-11s %3s", f.name, "N");
    for (LibraryFiles::File file : files)
        std::printf(" %6s %6s %6s %7s %7s %8s", LibraryFiles::label(file), "loop", "fftw", "x fftw", "x loop",
                    "1 vs 1");
    std::printf("   (ns per transform; 1 vs 1: batch of one minus single call, ns)\n");
    std::map<LibraryFiles::File, std::vector<double>> fftw, loop;
    for (int n = 2; n <= 64; ++n) {
        const std::string s = stem(f, n);
        const double peer = results.ns("fftw-many/" + s) / batchCount;
        if (std::isnan(peer))
            continue;  // not run (--benchmark_filter)
        std::printf("%-11s %3d", "", n);
        for (LibraryFiles::File file : files) {
            const double ours = results.ns(LibraryFiles::benchmarkName(file, "batch/" + s)) / batchCount;
            const double loops = results.ns(LibraryFiles::benchmarkName(file, "loop/" + s)) / batchCount;
            const double extra = results.ns(LibraryFiles::benchmarkName(file, "batch1/" + s)) -
                                 results.ns(LibraryFiles::benchmarkName(file, "single/" + s));
            fftw[file].push_back(peer / ours);
            loop[file].push_back(loops / ours);
            overFftw[file].push_back(peer / ours);
            std::printf(" %6.2f %6.2f %6.2f %6.2fx %6.2fx %8.2f", ours, loops, peer, peer / ours, loops / ours,
                        extra);
        }
        std::printf("\n");
    }
    for (LibraryFiles::File file : files)
        if (!std::isnan(bench::geometricMean(fftw[file])))  // the file ran
            std::printf("%-11s %s: geometric mean %.2fx FFTW (lowest %.2fx), %.2fx the loop of single calls\n", f.name,
                    LibraryFiles::label(file), bench::geometricMean(fftw[file]),
                    *std::min_element(fftw[file].begin(), fftw[file].end()), bench::geometricMean(loop[file]));
}

}  // namespace

int main(int argc, char** argv)
{
    std::printf("%s", bench::describeMachineAndLibrary().c_str());
    registerAll();
    benchmark::Initialize(&argc, argv);
    bench::Collector collector;
    benchmark::RunSpecifiedBenchmarks(&collector);
    std::map<LibraryFiles::File, std::vector<double>> overFftw;
    for (const BatchFamily& f : bench::batchFamilies)
        printFamily(collector, f, overFftw);
    for (LibraryFiles::File file : LibraryFiles::get().files())
        if (!std::isnan(bench::geometricMean(overFftw[file])))
            std::printf("\nall %zu kernels, %s: geometric mean %.2fx FFTW's plan_many\n", overFftw[file].size(),
                    LibraryFiles::label(file), bench::geometricMean(overFftw[file]));
    benchmark::Shutdown();
    return 0;
}
