// Time per call of a short function: the fastest of several rounds, each of a
// number of calls calibrated to last at least a given time.  Shared by the
// benchmark programs and the report program.
#ifndef KVTG_CALL_TIMER_H
#define KVTG_CALL_TIMER_H

#include <algorithm>
#include <chrono>
#include <cmath>

namespace bench {

template <class Run>
double nanosecondsPerCall(Run&& run, std::chrono::microseconds round, int rounds)
{
    using clock = std::chrono::steady_clock;
    long calls = 1;
    for (;;) {
        const auto start = clock::now();
        for (long i = 0; i < calls; ++i)
            run();
        if (clock::now() - start > round || calls > (1L << 24))
            break;
        calls *= 2;
    }
    double best = INFINITY;
    for (int r = 0; r < rounds; ++r) {
        const auto start = clock::now();
        for (long i = 0; i < calls; ++i)
            run();
        best = std::min(best, std::chrono::duration<double, std::nano>(clock::now() - start).count() / calls);
    }
    return best;
}

}  // namespace bench

#endif
