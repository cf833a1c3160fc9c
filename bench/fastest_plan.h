// The choice of the peer's plan, shared by the benchmark programs and the
// report program.
#ifndef KVTG_FASTEST_PLAN_H
#define KVTG_FASTEST_PLAN_H

#include <chrono>
#include <cmath>

#include "call_timer.h"

namespace bench {

// FFTW_MEASURE times its candidate algorithms once while planning, so the plan
// it settles on for a small length changes from one planning to the next (the
// Real32 DHT of length 13 ran at 19 ns with one plan and at 33 ns with
// another).  The peer is planned `tries` times with its wisdom forgotten in
// between, and the plan that runs fastest here is the one benchmarked.
// `make` plans and refills the input (planning overwrites it); `run` executes.
template <class Plan, class Make, class Run, class Destroy, class Forget>
Plan fastestPlan(Make make, Run run, Destroy destroy, Forget forget, int tries = 3)
{
    Plan best = nullptr;
    double bestNs = INFINITY;
    for (int t = 0; t < tries; ++t) {
        forget();
        Plan plan = make();
        const double ns = nanosecondsPerCall([&] { run(plan); }, std::chrono::microseconds(20), 5);
        if (ns < bestNs) {
            if (best != nullptr)
                destroy(best);
            best = plan;
            bestNs = ns;
        } else {
            destroy(plan);
        }
    }
    return best;
}

}  // namespace bench

#endif
