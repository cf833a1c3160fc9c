// Shared pieces of the benchmark programs: a reporter that keeps each
// benchmark's time per iteration for a summary table, the geometric mean, a
// measurement of the core clock (and, through fastest_plan.h, the choice of
// the fastest of several FFTW plans).
#ifndef KVTG_BENCH_REPORT_H
#define KVTG_BENCH_REPORT_H

#include <benchmark/benchmark.h>

#include <chrono>
#include <cmath>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "call_timer.h"
#include "fastest_plan.h"
#include "geometric_mean.h"

namespace bench {

// Prints the usual console table and remembers ns per iteration by name: with
// --benchmark_repetitions, the fastest repetition, which leaves out the
// repetitions that another process on the machine slowed down.
class Collector : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs)
            if (run.run_type == Run::RT_Iteration && run.iterations > 0) {
                const double ns = run.GetAdjustedRealTime() * multiplierToNs(run.time_unit);
                // a benchmark with a minimum time of its own carries it in its name
                std::string name = run.benchmark_name();
                name = name.substr(0, name.find("/min_time:"));
                const auto found = times_.find(name);
                if (found == times_.end() || ns < found->second)
                    times_[name] = ns;
            }
        ConsoleReporter::ReportRuns(runs);
    }
    double ns(const std::string& name) const
    {
        const auto found = times_.find(name);
        return found == times_.end() ? NAN : found->second;
    }

private:
    static double multiplierToNs(benchmark::TimeUnit unit)
    {
        switch (unit) {
        case benchmark::kNanosecond: return 1;
        case benchmark::kMicrosecond: return 1e3;
        case benchmark::kMillisecond: return 1e6;
        case benchmark::kSecond: return 1e9;
        }
        return 1;
    }
    std::map<std::string, double> times_;
};

// Cycles per second from a chain of dependent integer multiplications, three
// cycles each.  (A chain of additions of an immediate does not do: some cores
// fold such additions at renaming and run several per cycle, which made this
// machine look like 12 GHz.)
inline double measureClockGHz()
{
    constexpr std::uint64_t steps = 100000000;
    std::uint64_t value = 1;
    const auto start = std::chrono::steady_clock::now();
    for (std::uint64_t i = 0; i < steps; i += 8) {
        asm volatile("imul $1, %0, %0\n\timul $1, %0, %0\n\timul $1, %0, %0\n\timul $1, %0, %0\n\t"
                     "imul $1, %0, %0\n\timul $1, %0, %0\n\timul $1, %0, %0\n\timul $1, %0, %0"
                     : "+r"(value));
    }
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    return 3.0 * static_cast<double>(steps) / seconds / 1e9;
}

}  // namespace bench

#endif
