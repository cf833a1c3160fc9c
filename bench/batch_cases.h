// The batched transforms next to their two peers, shared by the benchmark
// program and the report: for one entry point, length and library file, the
// batch call on `count` contiguous transforms (stride 1, each transform's
// elements after the last one's), a loop of the single calls of the same
// file over the same arrays, and FFTW's plan_many with the same layout (the
// fastest of three FFTW_MEASURE plannings).
#ifndef KVTG_BENCH_BATCH_CASES_H
#define KVTG_BENCH_BATCH_CASES_H

#include <fftw3.h>

#include <cmath>
#include <functional>
#include <memory>
#include <vector>

#include "fastest_plan.h"
#include "kvtgen.h"
#include "kvtgen_batch.h"
#include "library_files.h"

namespace bench {

enum class BatchKind { ComplexForward, ComplexInverse, RealForward, RealInverse, Hartley };

struct BatchFamily {
    const char* name;  // as the report and the benchmark print it
    BatchKind kind;
    bool single;
    const char* batchCall;
    const char* singleCall;
};

const BatchFamily batchFamilies[] = {
    {"Fwd 32fc", BatchKind::ComplexForward, true, "kvtgBatchDFTFwd_CToC_32fc", "kvtgDFTFwd_CToC_32fc"},
    {"Inv 32fc", BatchKind::ComplexInverse, true, "kvtgBatchDFTInv_CToC_32fc", "kvtgDFTInv_CToC_32fc"},
    {"Fwd 64fc", BatchKind::ComplexForward, false, "kvtgBatchDFTFwd_CToC_64fc", "kvtgDFTFwd_CToC_64fc"},
    {"Inv 64fc", BatchKind::ComplexInverse, false, "kvtgBatchDFTInv_CToC_64fc", "kvtgDFTInv_CToC_64fc"},
    {"RToCCS 32f", BatchKind::RealForward, true, "kvtgBatchDFTFwd_RToCCS_32f", "kvtgDFTFwd_RToCCS_32f"},
    {"CCSToR 32f", BatchKind::RealInverse, true, "kvtgBatchDFTInv_CCSToR_32f", "kvtgDFTInv_CCSToR_32f"},
    {"RToCCS 64f", BatchKind::RealForward, false, "kvtgBatchDFTFwd_RToCCS_64f", "kvtgDFTFwd_RToCCS_64f"},
    {"CCSToR 64f", BatchKind::RealInverse, false, "kvtgBatchDFTInv_CCSToR_64f", "kvtgDFTInv_CCSToR_64f"},
    {"Hartley 32f", BatchKind::Hartley, true, "kvtgBatchHartley_32f", "kvtgHartley_32f"},
    {"Hartley 64f", BatchKind::Hartley, false, "kvtgBatchHartley_64f", "kvtgHartley_64f"},
};

// The three ways of doing one batch; each closure owns its arrays.
struct BatchCase {
    std::function<void()> batch, loop, peer;
};

namespace batch_detail {

inline bool isComplex(BatchKind k) { return k == BatchKind::ComplexForward || k == BatchKind::ComplexInverse; }

// Real numbers per transform in and out: complex elements count two, a CCS
// spectrum has the bins 0..n/2.
inline int realsIn(BatchKind k, int n)
{
    return isComplex(k) ? 2 * n : k == BatchKind::RealInverse ? n / 2 * 2 + 2 : n;
}
inline int realsOut(BatchKind k, int n)
{
    return isComplex(k) ? 2 * n : k == BatchKind::RealForward ? n / 2 * 2 + 2 : n;
}

template <class Real>
struct Buffer {
    std::shared_ptr<Real> data;
    explicit Buffer(std::size_t reals)
        : data(static_cast<Real*>(fftw_malloc(reals * sizeof(Real))), fftw_free)
    {
        fill(reals);
    }
    void fill(std::size_t reals) const
    {
        for (std::size_t i = 0; i < reals; ++i)
            data.get()[i] = static_cast<Real>(std::sin(0.37 * static_cast<double>(i) + 1.0));
    }
};

// FFTW's plan for `count` transforms of length n, rows as the batch's.
template <class Real>
std::function<void()> peerOf(BatchKind kind, int n, int count, Buffer<Real> in, Buffer<Real> out, std::size_t reals)
{
    const int din = realsIn(kind, n) / (isComplex(kind) || kind == BatchKind::RealInverse ? 2 : 1);
    const int dout = realsOut(kind, n) / (isComplex(kind) || kind == BatchKind::RealForward ? 2 : 1);
    const int sign = kind == BatchKind::ComplexInverse ? FFTW_BACKWARD : FFTW_FORWARD;
    if constexpr (sizeof(Real) == sizeof(float)) {
        float *i = in.data.get(), *o = out.data.get();
        auto* ci = reinterpret_cast<fftwf_complex*>(i);
        auto* co = reinterpret_cast<fftwf_complex*>(o);
        fftwf_r2r_kind dht = FFTW_DHT;
        auto make = [&] {
            fftwf_plan p =
                isComplex(kind) ? fftwf_plan_many_dft(1, &n, count, ci, nullptr, 1, din, co, nullptr, 1, dout, sign,
                                                      FFTW_MEASURE)
                : kind == BatchKind::RealForward
                    ? fftwf_plan_many_dft_r2c(1, &n, count, i, nullptr, 1, din, co, nullptr, 1, dout, FFTW_MEASURE)
                : kind == BatchKind::RealInverse
                    ? fftwf_plan_many_dft_c2r(1, &n, count, ci, nullptr, 1, din, o, nullptr, 1, dout, FFTW_MEASURE)
                    : fftwf_plan_many_r2r(1, &n, count, i, nullptr, 1, din, o, nullptr, 1, dout, &dht, FFTW_MEASURE);
            in.fill(reals);
            return p;
        };
        std::shared_ptr<fftwf_plan_s> plan(
            fastestPlan<fftwf_plan>(make, fftwf_execute, fftwf_destroy_plan, fftwf_forget_wisdom), fftwf_destroy_plan);
        return [plan, in, out] { fftwf_execute(plan.get()); };
    } else {
        double *i = in.data.get(), *o = out.data.get();
        auto* ci = reinterpret_cast<fftw_complex*>(i);
        auto* co = reinterpret_cast<fftw_complex*>(o);
        fftw_r2r_kind dht = FFTW_DHT;
        auto make = [&] {
            fftw_plan p =
                isComplex(kind) ? fftw_plan_many_dft(1, &n, count, ci, nullptr, 1, din, co, nullptr, 1, dout, sign,
                                                     FFTW_MEASURE)
                : kind == BatchKind::RealForward
                    ? fftw_plan_many_dft_r2c(1, &n, count, i, nullptr, 1, din, co, nullptr, 1, dout, FFTW_MEASURE)
                : kind == BatchKind::RealInverse
                    ? fftw_plan_many_dft_c2r(1, &n, count, ci, nullptr, 1, din, o, nullptr, 1, dout, FFTW_MEASURE)
                    : fftw_plan_many_r2r(1, &n, count, i, nullptr, 1, din, o, nullptr, 1, dout, &dht, FFTW_MEASURE);
            in.fill(reals);
            return p;
        };
        std::shared_ptr<fftw_plan_s> plan(
            fastestPlan<fftw_plan>(make, fftw_execute, fftw_destroy_plan, fftw_forget_wisdom), fftw_destroy_plan);
        return [plan, in, out] { fftw_execute(plan.get()); };
    }
}

// T: the element type of the entry points (Complex32, Real32, ...).
template <class Real, class T>
BatchCase makeCase(const BatchFamily& f, int n, int count, LibraryFiles::File file, bool withPeer)
{
    using Batch = Status (*)(const T*, T*, int32_t, int32_t, int32_t, int32_t, int32_t, int32_t, int32_t);
    using Single = Status (*)(const T*, T*, int32_t, int32_t);
    const LibraryFiles& files = LibraryFiles::get();
    const Batch batch = files.batchFunction<Batch>(file, f.batchCall);
    const Single single = files.function<Single>(file, f.singleCall);
    const int per = isComplex(f.kind) ? 2 : 1;
    const int din = realsIn(f.kind, n) / per, dout = realsOut(f.kind, n) / per;
    const std::size_t inReals = static_cast<std::size_t>(count) * realsIn(f.kind, n);
    const std::size_t outReals = static_cast<std::size_t>(count) * realsOut(f.kind, n);
    const Buffer<Real> in(inReals), out(outReals);
    BatchCase c;
    c.batch = [=] {
        batch(reinterpret_cast<const T*>(in.data.get()), reinterpret_cast<T*>(out.data.get()), n, count, 1, din, 1,
              dout, ScaleNone);
    };
    c.loop = [=] {
        const T* x = reinterpret_cast<const T*>(in.data.get());
        T* y = reinterpret_cast<T*>(out.data.get());
        for (int t = 0; t < count; ++t)
            single(x + static_cast<long>(t) * din, y + static_cast<long>(t) * dout, n, ScaleNone);
    };
    if (withPeer)
        c.peer = peerOf<Real>(f.kind, n, count, Buffer<Real>(inReals), Buffer<Real>(outReals), inReals);
    return c;
}

}  // namespace batch_detail

// The case of one family, length, count and file; the peer is planned only
// where asked (planning takes most of the time of a case).
inline BatchCase makeBatchCase(const BatchFamily& f, int n, int count, LibraryFiles::File file, bool withPeer)
{
    using namespace batch_detail;
    if (isComplex(f.kind))
        return f.single ? makeCase<float, Complex32>(f, n, count, file, withPeer)
                        : makeCase<double, Complex64>(f, n, count, file, withPeer);
    return f.single ? makeCase<float, Real32>(f, n, count, file, withPeer)
                    : makeCase<double, Real64>(f, n, count, file, withPeer);
}

}  // namespace bench

#endif
