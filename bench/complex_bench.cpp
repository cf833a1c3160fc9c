// Complex DFT kernels of both library files (the baseline, "sse2", and the
// x86-64-v3 build, "avx2", where this processor runs it) next to FFTW, every
// length 2..64, both precisions and directions. FFTW's plan is made with FFTW_MEASURE (the fastest of three
// plannings) and run with the new-array execute call on the same buffers as the
// kernel. After the benchmarks, a table gives the ratio per length, the
// geometric mean, and for powers of two the distance from the arithmetic limit
// of each file (real operations / 4 or 8 lanes of Real32, 2 or 4 of Real64 /
// two per cycle, at the measured clock).
#include <benchmark/benchmark.h>
#include <fftw3.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "bench_report.h"
#include "complex_counts.h"
#include "kvtgen.h"
#include "library_files.h"

namespace {

template <class C>
struct Traits;
template <>
struct Traits<Complex32> {
    using Plan = fftwf_plan;
    static Plan plan(int n, bool inverse, void* in, void* out)
    {
        return fftwf_plan_dft_1d(n, static_cast<fftwf_complex*>(in), static_cast<fftwf_complex*>(out),
                                 inverse ? FFTW_BACKWARD : FFTW_FORWARD, FFTW_MEASURE);
    }
    static void execute(Plan p, void* in, void* out)
    {
        fftwf_execute_dft(p, static_cast<fftwf_complex*>(in), static_cast<fftwf_complex*>(out));
    }
    static void destroy(Plan p) { fftwf_destroy_plan(p); }
    static void forget() { fftwf_forget_wisdom(); }
    static void* alloc(std::size_t bytes) { return fftwf_malloc(bytes); }
    static void release(void* p) { fftwf_free(p); }
};
template <>
struct Traits<Complex64> {
    using Plan = fftw_plan;
    static Plan plan(int n, bool inverse, void* in, void* out)
    {
        return fftw_plan_dft_1d(n, static_cast<fftw_complex*>(in), static_cast<fftw_complex*>(out),
                                inverse ? FFTW_BACKWARD : FFTW_FORWARD, FFTW_MEASURE);
    }
    static void execute(Plan p, void* in, void* out)
    {
        fftw_execute_dft(p, static_cast<fftw_complex*>(in), static_cast<fftw_complex*>(out));
    }
    static void destroy(Plan p) { fftw_destroy_plan(p); }
    static void forget() { fftw_forget_wisdom(); }
    static void* alloc(std::size_t bytes) { return fftw_malloc(bytes); }
    static void release(void* p) { fftw_free(p); }
};

template <class C>
using Dispatcher = Status (*)(const C*, C*, int32_t, int32_t);

template <class C>
void benchKernel(benchmark::State& state, Dispatcher<C> transform, int n)
{
    auto* in = static_cast<C*>(Traits<C>::alloc(sizeof(C) * 64));
    auto* out = static_cast<C*>(Traits<C>::alloc(sizeof(C) * 64));
    for (int i = 0; i < n; ++i)
        in[i] = {static_cast<decltype(in->re)>(std::sin(i + 1.0)), static_cast<decltype(in->re)>(std::cos(i * 0.5))};
    for (auto _ : state) {
        transform(in, out, n, ScaleNone);
        benchmark::DoNotOptimize(out);
        benchmark::ClobberMemory();
    }
    Traits<C>::release(in);
    Traits<C>::release(out);
}

template <class C>
void benchFftw(benchmark::State& state, bool inverse, int n)
{
    void* in = Traits<C>::alloc(sizeof(C) * 64);
    void* out = Traits<C>::alloc(sizeof(C) * 64);
    auto* samples = static_cast<C*>(in);
    auto plan = bench::fastestPlan<typename Traits<C>::Plan>(
        [&] {
            auto made = Traits<C>::plan(n, inverse, in, out);
            for (int i = 0; i < n; ++i)
                samples[i] = {static_cast<decltype(samples->re)>(std::sin(i + 1.0)),
                              static_cast<decltype(samples->re)>(std::cos(i * 0.5))};
            return made;
        },
        [&](typename Traits<C>::Plan p) { Traits<C>::execute(p, in, out); }, Traits<C>::destroy, Traits<C>::forget);
    for (auto _ : state) {
        Traits<C>::execute(plan, in, out);
        benchmark::DoNotOptimize(out);
        benchmark::ClobberMemory();
    }
    Traits<C>::destroy(plan);
    Traits<C>::release(in);
    Traits<C>::release(out);
}

struct Family {
    const char* name;
    bool single;
    bool inverse;
    const kvtg_counts::ComplexCount* counts;
};

const Family families[] = {
    {"Fwd32fc", true, false, kvtg_counts::forward32fc},
    {"Inv32fc", true, true, kvtg_counts::inverse32fc},
    {"Fwd64fc", false, false, kvtg_counts::forward64fc},
    {"Inv64fc", false, true, kvtg_counts::inverse64fc},
};

using bench::LibraryFiles;

void registerAll()
{
    const LibraryFiles& files = LibraryFiles::get();
    for (const Family& f : families) {
        const std::string dispatcher = std::string("kvtgDFT") + (f.inverse ? "Inv" : "Fwd") + "_CToC_" +
                                       (f.single ? "32fc" : "64fc");
        for (int n = 2; n <= 64; ++n) {
            const std::string suffix = std::string(f.name) + "/" + std::to_string(n);
            for (LibraryFiles::File file : files.files()) {
                const std::string name = LibraryFiles::benchmarkName(file, suffix);
                if (f.single)
                    benchmark::RegisterBenchmark(name.c_str(), benchKernel<Complex32>,
                                                 files.function<Dispatcher<Complex32>>(file, dispatcher), n);
                else
                    benchmark::RegisterBenchmark(name.c_str(), benchKernel<Complex64>,
                                                 files.function<Dispatcher<Complex64>>(file, dispatcher), n);
            }
            if (f.single)
                benchmark::RegisterBenchmark(("fftw/" + suffix).c_str(), benchFftw<Complex32>, f.inverse, n);
            else
                benchmark::RegisterBenchmark(("fftw/" + suffix).c_str(), benchFftw<Complex64>, f.inverse, n);
        }
    }
}

bool hasLargePrimeFactor(int n)
{
    for (int p = 17; p <= n; ++p)
        if (n % p == 0) {
            bool prime = true;
            for (int d = 2; d * d <= p; ++d)
                prime = prime && p % d != 0;
            if (prime)
                return true;
        }
    return false;
}

void printReport(const bench::Collector& results)
{
    const double ghz = bench::measureClockGHz();
    std::printf("\nclock (measured) %.2f GHz\n", ghz);
    const std::vector<LibraryFiles::File> files = LibraryFiles::get().files();
    std::map<LibraryFiles::File, std::vector<double>> allRatios;
    for (const Family& f : families) {
        std::printf("\n%-8s %4s", f.name, "N");
        for (LibraryFiles::File file : files)
            std::printf(" %8s ns", LibraryFiles::label(file));
        std::printf(" %10s", "fftw ns");
        for (LibraryFiles::File file : files)
            std::printf(" %7s %9s", LibraryFiles::label(file), "vs limit");
        std::printf("\n");
        std::map<LibraryFiles::File, std::vector<double>> ratios;
        for (int n = 2; n <= 64; ++n) {
            const std::string suffix = std::string(f.name) + "/" + std::to_string(n);
            const double theirs = results.ns("fftw/" + suffix);
            std::printf("%-8s %4d", "", n);
            for (LibraryFiles::File file : files)
                std::printf(" %11.2f", results.ns(LibraryFiles::benchmarkName(file, suffix)));
            std::printf(" %10.2f", theirs);
            for (LibraryFiles::File file : files) {
                const double ours = results.ns(LibraryFiles::benchmarkName(file, suffix));
                const double ratio = theirs / ours;
                ratios[file].push_back(ratio);
                allRatios[file].push_back(ratio);
                std::string limit;
                if ((n & (n - 1)) == 0) {
                    const auto& c = f.counts[n - 2];
                    const double lanes = (f.single ? 4 : 2) * (file == LibraryFiles::Variant ? 2 : 1);
                    const double limitNs = (c.additions + c.multiplications) / lanes / 2 / ghz;
                    char text[32];
                    std::snprintf(text, sizeof text, "%.2fx", ours / limitNs);
                    limit = text;
                }
                std::printf(" %6.2fx%s %9s", ratio, hasLargePrimeFactor(n) ? "*" : " ", limit.c_str());
            }
            std::printf("\n");
        }
        for (LibraryFiles::File file : files)
            std::printf("%-8s %s geometric mean %.2fx, lowest %.2fx   (* = prime factor >= 17)\n", f.name,
                        LibraryFiles::label(file), bench::geometricMean(ratios[file]),
                        *std::min_element(ratios[file].begin(), ratios[file].end()));
    }
    for (LibraryFiles::File file : files)
        std::printf("\nall 252 kernels, %s (%s): geometric mean %.2fx FFTW's speed\n", LibraryFiles::label(file),
                    LibraryFiles::get().path(file).c_str(), bench::geometricMean(allRatios[file]));
}

}  // namespace

int main(int argc, char** argv)
{
    registerAll();
    benchmark::Initialize(&argc, argv);
    bench::Collector collector;
    benchmark::RunSpecifiedBenchmarks(&collector);
    printReport(collector);
    benchmark::Shutdown();
    return 0;
}
