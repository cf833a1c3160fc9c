// Complex DFT kernels against FFTW plans of the same length and precision (the
// fastest of three plannings).
#include <fftw3.h>

#include <cmath>
#include <memory>

#include "fastest_plan.h"
#include "kvtgen.h"
#include "report.h"

namespace {

template <class C>
std::shared_ptr<C> samples()
{
    std::shared_ptr<C> data(static_cast<C*>(fftw_malloc(64 * sizeof(C))), fftw_free);
    for (int i = 0; i < 64; ++i)
        data.get()[i] = {static_cast<decltype(C::re)>(std::sin(i + 1.0)), static_cast<decltype(C::re)>(std::cos(0.5 * i))};
    return data;
}

template <class C>
void addFamily(std::vector<report::Case>& cases, const char* name, Status (*transform)(const C*, C*, int32_t, int32_t),
               bool inverse)
{
    for (int n = 2; n <= 64; ++n) {
        auto in = samples<C>(), out = samples<C>();
        // planning overwrites the input: each planning restores it
        auto refill = [in] {
            auto fresh = samples<C>();
            std::copy(fresh.get(), fresh.get() + 64, in.get());
        };
        const int sign = inverse ? FFTW_BACKWARD : FFTW_FORWARD;
        std::function<void()> peer;
        if constexpr (sizeof(C) == sizeof(Complex32)) {
            auto* i = reinterpret_cast<fftwf_complex*>(in.get());
            auto* o = reinterpret_cast<fftwf_complex*>(out.get());
            std::shared_ptr<fftwf_plan_s> plan(
                bench::fastestPlan<fftwf_plan>(
                    [&] {
                        fftwf_plan p = fftwf_plan_dft_1d(n, i, o, sign, FFTW_MEASURE);
                        refill();
                        return p;
                    },
                    [&](fftwf_plan p) { fftwf_execute_dft(p, i, o); }, fftwf_destroy_plan, fftwf_forget_wisdom),
                fftwf_destroy_plan);
            peer = [plan, in, out, i, o] { fftwf_execute_dft(plan.get(), i, o); };
        } else {
            auto* i = reinterpret_cast<fftw_complex*>(in.get());
            auto* o = reinterpret_cast<fftw_complex*>(out.get());
            std::shared_ptr<fftw_plan_s> plan(
                bench::fastestPlan<fftw_plan>(
                    [&] {
                        fftw_plan p = fftw_plan_dft_1d(n, i, o, sign, FFTW_MEASURE);
                        refill();
                        return p;
                    },
                    [&](fftw_plan p) { fftw_execute_dft(p, i, o); }, fftw_destroy_plan, fftw_forget_wisdom),
                fftw_destroy_plan);
            peer = [plan, in, out, i, o] { fftw_execute_dft(plan.get(), i, o); };
        }
        refill();
        cases.push_back({name, n, [transform, in, out, n] { transform(in.get(), out.get(), n, ScaleNone); }, peer});
    }
}

std::vector<report::Case> complexCases()
{
    std::vector<report::Case> cases;
    addFamily<Complex32>(cases, "DFT Fwd 32fc", KVTG_FROM_FILE(kvtgDFTFwd_CToC_32fc), false);
    addFamily<Complex32>(cases, "DFT Inv 32fc", KVTG_FROM_FILE(kvtgDFTInv_CToC_32fc), true);
    addFamily<Complex64>(cases, "DFT Fwd 64fc", KVTG_FROM_FILE(kvtgDFTFwd_CToC_64fc), false);
    addFamily<Complex64>(cases, "DFT Inv 64fc", KVTG_FROM_FILE(kvtgDFTInv_CToC_64fc), true);
    return cases;
}

const report::Registration registration("complex", 10, "FFTW complex plan, fastest of three FFTW_MEASURE", complexCases);

}  // namespace
