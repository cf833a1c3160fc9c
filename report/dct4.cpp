// DCT-IV plans against FFTW's REDFT11 plan (which computes twice the DCT-IV)
// of the same length and precision.
#include <fftw3.h>

#include <cmath>
#include <memory>
#include <vector>

#include "kvtgen.h"
#include "report.h"

namespace {

template <class T>
void addFamily(std::vector<report::Case>& cases, const char* name, Status (*alloc)(DctPlan**, int32_t),
               Status (*run)(const T*, T*, DctPlan*), Status (*release)(DctPlan*))
{
    for (int log2n = 1; log2n <= 16; ++log2n) {
        const int n = 1 << log2n;
        auto x = std::make_shared<std::vector<T>>(static_cast<std::size_t>(n));
        auto y = std::make_shared<std::vector<T>>(static_cast<std::size_t>(n));
        for (int i = 0; i < n; ++i)
            (*x)[static_cast<std::size_t>(i)] = static_cast<T>(std::sin(i + 1.0));
        DctPlan* raw = nullptr;
        alloc(&raw, n);
        std::shared_ptr<DctPlan> plan(raw, release);
        std::function<void()> peer;
        if constexpr (sizeof(T) == 4) {
            std::shared_ptr<fftwf_plan_s> p(fftwf_plan_r2r_1d(n, x->data(), y->data(), FFTW_REDFT11, FFTW_MEASURE),
                                            fftwf_destroy_plan);
            peer = [p, x, y] { fftwf_execute_r2r(p.get(), x->data(), y->data()); };
        } else {
            std::shared_ptr<fftw_plan_s> p(fftw_plan_r2r_1d(n, x->data(), y->data(), FFTW_REDFT11, FFTW_MEASURE),
                                           fftw_destroy_plan);
            peer = [p, x, y] { fftw_execute_r2r(p.get(), x->data(), y->data()); };
        }
        for (int i = 0; i < n; ++i)
            (*x)[static_cast<std::size_t>(i)] = static_cast<T>(std::sin(i + 1.0));
        cases.push_back({name, n, [plan, x, y, run] { run(x->data(), y->data(), plan.get()); }, peer});
    }
}

std::vector<report::Case> dctCases()
{
    std::vector<report::Case> cases;
    addFamily<Real32>(cases, "DCT-IV 32f", KVTG_FROM_FILE(kvtgDCT4InitAlloc_32f), KVTG_FROM_FILE(kvtgDCT4_32f), KVTG_FROM_FILE(kvtgDCT4Free_32f));
    addFamily<Real64>(cases, "DCT-IV 64f", KVTG_FROM_FILE(kvtgDCT4InitAlloc_64f), KVTG_FROM_FILE(kvtgDCT4_64f), KVTG_FROM_FILE(kvtgDCT4Free_64f));
    return cases;
}

const report::Registration registration("dct4", 50, "FFTW REDFT11 plan, FFTW_MEASURE", dctCases);

}  // namespace
