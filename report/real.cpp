// Real DFT (CCS layout) and Hartley kernels against FFTW's r2c, c2r and DHT
// plans of the same length and precision (the fastest of three plannings).
#include <fftw3.h>

#include <cmath>
#include <memory>

#include "fastest_plan.h"
#include "kvtgen.h"
#include "report.h"

namespace {

enum class Kind { Forward, Inverse, Hartley };

template <class T>
std::shared_ptr<T> samples()
{
    std::shared_ptr<T> data(static_cast<T*>(fftw_malloc(68 * sizeof(T))), fftw_free);
    for (int i = 0; i < 68; ++i)
        data.get()[i] = static_cast<T>(std::sin(i + 1.0));
    return data;
}

// The peer's plan, the fastest of three plannings; `refill` restores the
// input that planning overwrites.
template <class T, class Refill>
std::function<void()> peerOf(Kind kind, int n, std::shared_ptr<T> in, std::shared_ptr<T> out, Refill refill)
{
    if constexpr (sizeof(T) == sizeof(float)) {
        auto* c = reinterpret_cast<fftwf_complex*>(kind == Kind::Forward ? out.get() : in.get());
        auto make = [&] {
            fftwf_plan p = kind == Kind::Forward   ? fftwf_plan_dft_r2c_1d(n, in.get(), c, FFTW_MEASURE)
                           : kind == Kind::Inverse ? fftwf_plan_dft_c2r_1d(n, c, out.get(), FFTW_MEASURE)
                                                   : fftwf_plan_r2r_1d(n, in.get(), out.get(), FFTW_DHT, FFTW_MEASURE);
            refill();
            return p;
        };
        std::shared_ptr<fftwf_plan_s> plan(
            bench::fastestPlan<fftwf_plan>(make, fftwf_execute, fftwf_destroy_plan, fftwf_forget_wisdom),
            fftwf_destroy_plan);
        return [plan, in, out] { fftwf_execute(plan.get()); };
    } else {
        auto* c = reinterpret_cast<fftw_complex*>(kind == Kind::Forward ? out.get() : in.get());
        auto make = [&] {
            fftw_plan p = kind == Kind::Forward   ? fftw_plan_dft_r2c_1d(n, in.get(), c, FFTW_MEASURE)
                          : kind == Kind::Inverse ? fftw_plan_dft_c2r_1d(n, c, out.get(), FFTW_MEASURE)
                                                  : fftw_plan_r2r_1d(n, in.get(), out.get(), FFTW_DHT, FFTW_MEASURE);
            refill();
            return p;
        };
        std::shared_ptr<fftw_plan_s> plan(
            bench::fastestPlan<fftw_plan>(make, fftw_execute, fftw_destroy_plan, fftw_forget_wisdom),
            fftw_destroy_plan);
        return [plan, in, out] { fftw_execute(plan.get()); };
    }
}

template <class T>
void addFamily(std::vector<report::Case>& cases, const char* name, Status (*transform)(const T*, T*, int32_t, int32_t),
               Kind kind)
{
    for (int n = 2; n <= 64; ++n) {
        auto in = samples<T>(), out = samples<T>();
        auto refill = [in] {
            auto fresh = samples<T>();
            std::copy(fresh.get(), fresh.get() + 68, in.get());
        };
        std::function<void()> peer = peerOf<T>(kind, n, in, out, refill);
        refill();
        cases.push_back({name, n, [transform, in, out, n] { transform(in.get(), out.get(), n, ScaleNone); }, peer});
    }
}

std::vector<report::Case> realCases()
{
    std::vector<report::Case> cases;
    addFamily<Real32>(cases, "DFT RToCCS 32f", KVTG_FROM_FILE(kvtgDFTFwd_RToCCS_32f), Kind::Forward);
    addFamily<Real32>(cases, "DFT CCSToR 32f", KVTG_FROM_FILE(kvtgDFTInv_CCSToR_32f), Kind::Inverse);
    addFamily<Real64>(cases, "DFT RToCCS 64f", KVTG_FROM_FILE(kvtgDFTFwd_RToCCS_64f), Kind::Forward);
    addFamily<Real64>(cases, "DFT CCSToR 64f", KVTG_FROM_FILE(kvtgDFTInv_CCSToR_64f), Kind::Inverse);
    return cases;
}

std::vector<report::Case> hartleyCases()
{
    std::vector<report::Case> cases;
    addFamily<Real32>(cases, "Hartley 32f", KVTG_FROM_FILE(kvtgHartley_32f), Kind::Hartley);
    addFamily<Real64>(cases, "Hartley 64f", KVTG_FROM_FILE(kvtgHartley_64f), Kind::Hartley);
    return cases;
}

const report::Registration registration("real", 20, "FFTW r2c / c2r plan, fastest of three FFTW_MEASURE", realCases);
const report::Registration hartleyRegistration("hartley", 30, "FFTW DHT plan, fastest of three FFTW_MEASURE", hartleyCases);

}  // namespace
