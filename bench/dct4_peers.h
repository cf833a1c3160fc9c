// FFTW's peers of the DCT-IV, shared by the benchmark program and the report
// program: REDFT11 of length n (which computes twice the DCT-IV) and the
// complex FFT of n/2, in each precision through one interface.
#ifndef KVTG_DCT4_PEERS_H
#define KVTG_DCT4_PEERS_H

#include <fftw3.h>

#include <cstddef>

namespace bench {

// which of the two a plan computes
enum class DctPeer { Redft, Fft };

template <class T>
struct DctFftw;
template <>
struct DctFftw<float> {
    using Plan = fftwf_plan;
    static Plan plan(DctPeer k, int n, float* in, float* out)
    {
        if (k == DctPeer::Redft)
            return fftwf_plan_r2r_1d(n, in, out, FFTW_REDFT11, FFTW_MEASURE);
        return fftwf_plan_dft_1d(n / 2, reinterpret_cast<fftwf_complex*>(in), reinterpret_cast<fftwf_complex*>(out),
                                 FFTW_FORWARD, FFTW_MEASURE);
    }
    static void run(DctPeer k, Plan p, float* in, float* out)
    {
        if (k == DctPeer::Redft)
            fftwf_execute_r2r(p, in, out);
        else
            fftwf_execute_dft(p, reinterpret_cast<fftwf_complex*>(in), reinterpret_cast<fftwf_complex*>(out));
    }
    static void destroy(Plan p) { fftwf_destroy_plan(p); }
    static void forget() { fftwf_forget_wisdom(); }
    static float* alloc(int count) { return fftwf_alloc_real(static_cast<std::size_t>(count)); }
    static constexpr const char* type = "32f";
};
template <>
struct DctFftw<double> {
    using Plan = fftw_plan;
    static Plan plan(DctPeer k, int n, double* in, double* out)
    {
        if (k == DctPeer::Redft)
            return fftw_plan_r2r_1d(n, in, out, FFTW_REDFT11, FFTW_MEASURE);
        return fftw_plan_dft_1d(n / 2, reinterpret_cast<fftw_complex*>(in), reinterpret_cast<fftw_complex*>(out),
                                FFTW_FORWARD, FFTW_MEASURE);
    }
    static void run(DctPeer k, Plan p, double* in, double* out)
    {
        if (k == DctPeer::Redft)
            fftw_execute_r2r(p, in, out);
        else
            fftw_execute_dft(p, reinterpret_cast<fftw_complex*>(in), reinterpret_cast<fftw_complex*>(out));
    }
    static void destroy(Plan p) { fftw_destroy_plan(p); }
    static void forget() { fftw_forget_wisdom(); }
    static double* alloc(int count) { return fftw_alloc_real(static_cast<std::size_t>(count)); }
    static constexpr const char* type = "64f";
};

}  // namespace bench

#endif
