// Real DFT (CCS layout, forward and inverse) and Hartley kernels next to FFTW's
// r2c, c2r and DHT plans of the same length and precision, every length 2..64.
// FFTW's plans are made with FFTW_MEASURE (the fastest of three plannings) and
// run with the new-array execute calls on the same buffers. A table after the
// runs gives the ratio FFTW time / our time per length and the geometric means.
#include <benchmark/benchmark.h>
#include <fftw3.h>

#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "bench_report.h"
#include "kvtgen.h"
#include "library_files.h"

namespace {

enum class Kind { Forward, Inverse, Hartley };
const char* kindName(Kind k) { return k == Kind::Forward ? "fwd" : k == Kind::Inverse ? "inv" : "dht"; }

template <class T>
struct Fftw;
template <>
struct Fftw<float> {
    using Plan = fftwf_plan;
    static Plan plan(Kind k, int n, float* in, float* out)
    {
        auto* c = reinterpret_cast<fftwf_complex*>(k == Kind::Forward ? out : in);
        if (k == Kind::Forward)
            return fftwf_plan_dft_r2c_1d(n, in, c, FFTW_MEASURE);
        if (k == Kind::Inverse)
            return fftwf_plan_dft_c2r_1d(n, c, out, FFTW_MEASURE);
        return fftwf_plan_r2r_1d(n, in, out, FFTW_DHT, FFTW_MEASURE);
    }
    static void run(Kind k, Plan p, float* in, float* out)
    {
        if (k == Kind::Forward)
            fftwf_execute_dft_r2c(p, in, reinterpret_cast<fftwf_complex*>(out));
        else if (k == Kind::Inverse)
            fftwf_execute_dft_c2r(p, reinterpret_cast<fftwf_complex*>(in), out);
        else
            fftwf_execute_r2r(p, in, out);
    }
    static void destroy(Plan p) { fftwf_destroy_plan(p); }
    static void forget() { fftwf_forget_wisdom(); }
    static float* alloc(int count) { return fftwf_alloc_real(static_cast<std::size_t>(count)); }
    static void release(float* p) { fftwf_free(p); }
    static const char* ours(Kind k)
    {
        return k == Kind::Forward ? "kvtgDFTFwd_RToCCS_32f" : k == Kind::Inverse ? "kvtgDFTInv_CCSToR_32f" : "kvtgHartley_32f";
    }
};
template <>
struct Fftw<double> {
    using Plan = fftw_plan;
    static Plan plan(Kind k, int n, double* in, double* out)
    {
        auto* c = reinterpret_cast<fftw_complex*>(k == Kind::Forward ? out : in);
        if (k == Kind::Forward)
            return fftw_plan_dft_r2c_1d(n, in, c, FFTW_MEASURE);
        if (k == Kind::Inverse)
            return fftw_plan_dft_c2r_1d(n, c, out, FFTW_MEASURE);
        return fftw_plan_r2r_1d(n, in, out, FFTW_DHT, FFTW_MEASURE);
    }
    static void run(Kind k, Plan p, double* in, double* out)
    {
        if (k == Kind::Forward)
            fftw_execute_dft_r2c(p, in, reinterpret_cast<fftw_complex*>(out));
        else if (k == Kind::Inverse)
            fftw_execute_dft_c2r(p, reinterpret_cast<fftw_complex*>(in), out);
        else
            fftw_execute_r2r(p, in, out);
    }
    static void destroy(Plan p) { fftw_destroy_plan(p); }
    static void forget() { fftw_forget_wisdom(); }
    static double* alloc(int count) { return fftw_alloc_real(static_cast<std::size_t>(count)); }
    static void release(double* p) { fftw_free(p); }
    static const char* ours(Kind k)
    {
        return k == Kind::Forward ? "kvtgDFTFwd_RToCCS_64f" : k == Kind::Inverse ? "kvtgDFTInv_CCSToR_64f" : "kvtgHartley_64f";
    }
};

template <class T>
void fill(T* in, int count)
{
    for (int i = 0; i < count; ++i)
        in[i] = static_cast<T>(std::sin(i + 1.0));
}

using bench::LibraryFiles;

template <class T>
void benchOurs(benchmark::State& state, LibraryFiles::File file, Kind kind, int n)
{
    using Transform = Status (*)(const T*, T*, int32_t, int32_t);
    const Transform transform = LibraryFiles::get().function<Transform>(file, Fftw<T>::ours(kind));
    T* in = Fftw<T>::alloc(68);
    T* out = Fftw<T>::alloc(68);
    fill(in, 68);
    for (auto _ : state) {
        transform(in, out, n, ScaleNone);
        benchmark::DoNotOptimize(out);
        benchmark::ClobberMemory();
    }
    Fftw<T>::release(in);
    Fftw<T>::release(out);
}

template <class T>
void benchFftw(benchmark::State& state, Kind kind, int n)
{
    T* in = Fftw<T>::alloc(68);
    T* out = Fftw<T>::alloc(68);
    auto plan = bench::fastestPlan<typename Fftw<T>::Plan>(
        [&] {
            auto made = Fftw<T>::plan(kind, n, in, out);
            fill(in, 68);
            return made;
        },
        [&](typename Fftw<T>::Plan p) { Fftw<T>::run(kind, p, in, out); }, Fftw<T>::destroy, Fftw<T>::forget);
    for (auto _ : state) {
        Fftw<T>::run(kind, plan, in, out);
        benchmark::DoNotOptimize(out);
        benchmark::ClobberMemory();
    }
    Fftw<T>::destroy(plan);
    Fftw<T>::release(in);
    Fftw<T>::release(out);
}

// "fwd_32f/12": the part of a benchmark's name after "fftw/" or "kvtg-<file>/"
std::string caseName(Kind kind, const char* precision, int n)
{
    return std::string(kindName(kind)) + "_" + precision + "/" + std::to_string(n);
}

void printReport(const bench::Collector& results)
{
    const std::vector<LibraryFiles::File> files = LibraryFiles::get().files();
    for (Kind kind : {Kind::Forward, Kind::Inverse, Kind::Hartley}) {
        std::printf("\n%s: FFTW time / our time per length", kindName(kind));
        for (const char* precision : {"32f", "64f"})
            for (LibraryFiles::File file : files)
                std::printf(", %s %s", precision, LibraryFiles::label(file));
        std::printf("\n");
        std::map<std::string, std::vector<double>> all, upTo16;
        std::map<std::string, std::pair<double, int>> lowest;
        for (int n = 2; n <= 64; ++n) {
            std::printf("%3d", n);
            for (const char* precision : {"32f", "64f"})
                for (LibraryFiles::File file : files) {
                    const double ratio = results.ns("fftw/" + caseName(kind, precision, n)) /
                                         results.ns(LibraryFiles::benchmarkName(file, caseName(kind, precision, n)));
                    const std::string column = std::string(precision) + " " + LibraryFiles::label(file);
                    std::printf("  %6.2f", ratio);
                    all[column].push_back(ratio);
                    if (n <= 16)
                        upTo16[column].push_back(ratio);
                    if (lowest.count(column) == 0 || ratio < lowest[column].first)
                        lowest[column] = {ratio, n};
                }
            std::printf("\n");
        }
        for (const auto& [column, ratios] : all)
            std::printf("%s %s: geometric mean %.2fx, lengths <= 16 at least %.2fx, lowest %.2fx (length %d)\n",
                        kindName(kind), column.c_str(), bench::geometricMean(ratios),
                        *std::min_element(upTo16[column].begin(), upTo16[column].end()), lowest[column].first,
                        lowest[column].second);
    }
}

}  // namespace

int main(int argc, char** argv)
{
    for (Kind kind : {Kind::Forward, Kind::Inverse, Kind::Hartley})
        for (int n = 2; n <= 64; ++n) {
            for (LibraryFiles::File file : LibraryFiles::get().files())
                benchmark::RegisterBenchmark(LibraryFiles::benchmarkName(file, caseName(kind, "32f", n)).c_str(),
                                             benchOurs<float>, file, kind, n);
            benchmark::RegisterBenchmark(("fftw/" + caseName(kind, "32f", n)).c_str(), benchFftw<float>, kind, n);
            for (LibraryFiles::File file : LibraryFiles::get().files())
                benchmark::RegisterBenchmark(LibraryFiles::benchmarkName(file, caseName(kind, "64f", n)).c_str(),
                                             benchOurs<double>, file, kind, n);
            benchmark::RegisterBenchmark(("fftw/" + caseName(kind, "64f", n)).c_str(), benchFftw<double>, kind, n);
        }
    benchmark::Initialize(&argc, argv);
    bench::Collector collector;
    benchmark::RunSpecifiedBenchmarks(&collector);
    printReport(collector);
    benchmark::Shutdown();
    return 0;
}
