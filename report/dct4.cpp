// DCT-IV plans against FFTW's REDFT11 plan (which computes twice the DCT-IV)
// of the same length and precision, the fastest of three plannings.
#include <fftw3.h>

#include <cmath>
#include <memory>
#include <vector>

#include "fastest_plan.h"
#include "kvtgen.h"
#include "report.h"

namespace {

template <class T>
void addFamily(std::vector<report::Case>& cases, const char* name, Status (*alloc)(DctPlan**, int32_t),
               Status (*run)(const T*, T*, DctPlan*), Status (*release)(DctPlan*))
{
    for (int log2n = 1; log2n <= 16; ++log2n) {
        const int n = 1 << log2n;
        // arrays aligned as FFTW's own allocator aligns them, for both sides
        const auto array = [n] { return std::shared_ptr<T>(static_cast<T*>(fftw_malloc(sizeof(T) * n)), fftw_free); };
        const std::shared_ptr<T> x = array(), y = array();
        // planning with FFTW_MEASURE overwrites the input
        const auto fill = [&] {
            for (int i = 0; i < n; ++i)
                x.get()[i] = static_cast<T>(std::sin(i + 1.0));
        };
        DctPlan* raw = nullptr;
        alloc(&raw, n);
        std::shared_ptr<DctPlan> plan(raw, release);
        std::function<void()> peer;
        if constexpr (sizeof(T) == 4) {
            std::shared_ptr<fftwf_plan_s> p(
                bench::fastestPlan<fftwf_plan>(
                    [&] {
                        fftwf_plan made = fftwf_plan_r2r_1d(n, x.get(), y.get(), FFTW_REDFT11, FFTW_MEASURE);
                        fill();
                        return made;
                    },
                    [&](fftwf_plan q) { fftwf_execute_r2r(q, x.get(), y.get()); }, fftwf_destroy_plan,
                    fftwf_forget_wisdom),
                fftwf_destroy_plan);
            peer = [p, x, y] { fftwf_execute_r2r(p.get(), x.get(), y.get()); };
        } else {
            std::shared_ptr<fftw_plan_s> p(
                bench::fastestPlan<fftw_plan>(
                    [&] {
                        fftw_plan made = fftw_plan_r2r_1d(n, x.get(), y.get(), FFTW_REDFT11, FFTW_MEASURE);
                        fill();
                        return made;
                    },
                    [&](fftw_plan q) { fftw_execute_r2r(q, x.get(), y.get()); }, fftw_destroy_plan,
                    fftw_forget_wisdom),
                fftw_destroy_plan);
            peer = [p, x, y] { fftw_execute_r2r(p.get(), x.get(), y.get()); };
        }
        fill();
        cases.push_back({name, n, [plan, x, y, run] { run(x.get(), y.get(), plan.get()); }, peer});
    }
}

std::vector<report::Case> dctCases()
{
    std::vector<report::Case> cases;
    addFamily<Real32>(cases, "DCT-IV 32f", KVTG_FROM_FILE(kvtgDCT4InitAlloc_32f), KVTG_FROM_FILE(kvtgDCT4_32f), KVTG_FROM_FILE(kvtgDCT4Free_32f));
    addFamily<Real64>(cases, "DCT-IV 64f", KVTG_FROM_FILE(kvtgDCT4InitAlloc_64f), KVTG_FROM_FILE(kvtgDCT4_64f), KVTG_FROM_FILE(kvtgDCT4Free_64f));
    return cases;
}

const report::Registration registration("dct4", 50, "FFTW REDFT11 plan, fastest of three FFTW_MEASURE", dctCases);

}  // namespace
