// Issue rates of the 256-bit instructions that the x86-64-v3 kernels are made
// of, alone and interleaved one to one with additions: how many of them the
// core starts per cycle (counter "per_cycle", at the clock that the chain of
// dependent products measures).  Where a kind and the additions together reach
// no more than the additions alone, they share the additions' ports, and every
// such instruction of a kernel costs as much as an addition.  The packing's
// cost of the complex kernels (gen/wide_packer.h) weighs these kinds, and
// that of the real ones (gen/real_packer.h) the conversions, by a fixed
// count; the rates differ from one core to the next, and this program
// shows them where the other benchmarks run.
#include <benchmark/benchmark.h>

#include <cstdint>

#include "bench_report.h"
#include "processor_level.h"

namespace {

// the 24 instructions of one step: kinds A and B on twelve independent
// registers (ymm0..ymm11), even registers A, odd registers B, two per register
#define KV_TWELVE(A, B) A(0) B(1) A(2) B(3) A(4) B(5) A(6) B(7) A(8) B(9) A(10) B(11)
#define KV_ADD(r) "vaddps %%ymm15, %%ymm" #r ", %%ymm" #r "\n\t"
#define KV_MUL(r) "vmulps %%ymm15, %%ymm" #r ", %%ymm" #r "\n\t"
#define KV_SHUFPS(r) "vshufps $0x1b, %%ymm" #r ", %%ymm" #r ", %%ymm" #r "\n\t"
#define KV_UNPACK(r) "vunpcklps %%ymm" #r ", %%ymm" #r ", %%ymm" #r "\n\t"
#define KV_PERMILPS(r) "vpermilps $0x1b, %%ymm" #r ", %%ymm" #r "\n\t"
#define KV_HALVES(r) "vperm2f128 $1, %%ymm" #r ", %%ymm" #r ", %%ymm" #r "\n\t"
#define KV_INSERT(r) "vinsertf128 $1, %%xmm15, %%ymm" #r ", %%ymm" #r "\n\t"
#define KV_INSERT_LOAD(r) "vinsertf128 $1, (%1), %%ymm" #r ", %%ymm" #r "\n\t"
#define KV_EXTRACT_STORE(r) "vextractf128 $1, %%ymm" #r ", 32(%1)\n\t"
#define KV_BLEND(r) "vblendps $0x55, %%ymm15, %%ymm" #r ", %%ymm" #r "\n\t"
// conversions between the precisions, as the Real32 kernels use them: scalar
// (from a register and from memory) and four lanes at a time
#define KV_WIDEN(r) "vcvtss2sd %%xmm15, %%xmm" #r ", %%xmm" #r "\n\t"
#define KV_WIDEN_LOAD(r) "vcvtss2sd (%1), %%xmm" #r ", %%xmm" #r "\n\t"
#define KV_NARROW(r) "vcvtsd2ss %%xmm15, %%xmm" #r ", %%xmm" #r "\n\t"
#define KV_WIDEN4(r) "vcvtps2pd %%xmm15, %%ymm" #r "\n\t"
#define KV_WIDEN4_LOAD(r) "vcvtps2pd (%1), %%ymm" #r "\n\t"
#define KV_NARROW4(r) "vcvtpd2ps %%ymm15, %%xmm" #r "\n\t"

// `steps` steps of kinds A and B; every register starts at zero, so that no
// operand is ever subnormal
#define KV_STEPS(A, B)                                                                                       \
    asm volatile("vxorps %%ymm15, %%ymm15, %%ymm15\n\t"                                                       \
                 "vxorps %%ymm0, %%ymm0, %%ymm0\n\tvxorps %%ymm1, %%ymm1, %%ymm1\n\t"                          \
                 "vxorps %%ymm2, %%ymm2, %%ymm2\n\tvxorps %%ymm3, %%ymm3, %%ymm3\n\t"                          \
                 "vxorps %%ymm4, %%ymm4, %%ymm4\n\tvxorps %%ymm5, %%ymm5, %%ymm5\n\t"                          \
                 "vxorps %%ymm6, %%ymm6, %%ymm6\n\tvxorps %%ymm7, %%ymm7, %%ymm7\n\t"                          \
                 "vxorps %%ymm8, %%ymm8, %%ymm8\n\tvxorps %%ymm9, %%ymm9, %%ymm9\n\t"                          \
                 "vxorps %%ymm10, %%ymm10, %%ymm10\n\tvxorps %%ymm11, %%ymm11, %%ymm11\n\t"                    \
                 "1:\n\t" KV_TWELVE(A, B) KV_TWELVE(A, B) "dec %0\n\tjnz 1b\n\tvzeroupper"                     \
                 : "+r"(steps)                                                                                \
                 : "r"(scratch)                                                                               \
                 : "xmm0", "xmm1", "xmm2", "xmm3", "xmm4", "xmm5", "xmm6", "xmm7", "xmm8", "xmm9", "xmm10",   \
                   "xmm11", "xmm15", "memory", "cc")

template <class Body>
void run(benchmark::State& state, Body body)
{
    if (!bench::processorRunsX86_64_v3()) {
        state.SkipWithError("the processor has no x86-64-v3 (AVX2)");
        return;
    }
    static const double clockGHz = bench::measureClockGHz();
    alignas(64) float scratch[32] = {};
    constexpr std::uint64_t steps = 4096;
    for (auto _ : state)
        body(steps, scratch);
    // instructions per second over the benchmark's own time, divided by the
    // clock: per cycle (the console still prints the rate's "/s")
    state.counters["per_cycle"] =
        benchmark::Counter(double(steps) * 24.0 / (clockGHz * 1e9), benchmark::Counter::kIsIterationInvariantRate);
}

#define KV_CASE(name, A, B)                                                               \
    void name(benchmark::State& state)                                                    \
    {                                                                                     \
        run(state, [](std::uint64_t steps, float* scratch) { KV_STEPS(A, B); });          \
    }                                                                                     \
    BENCHMARK(name)

KV_CASE(add, KV_ADD, KV_ADD);
KV_CASE(mul, KV_MUL, KV_MUL);
KV_CASE(shufps, KV_SHUFPS, KV_SHUFPS);
KV_CASE(unpcklps, KV_UNPACK, KV_UNPACK);
KV_CASE(permilps, KV_PERMILPS, KV_PERMILPS);
KV_CASE(perm2f128, KV_HALVES, KV_HALVES);
KV_CASE(insertf128, KV_INSERT, KV_INSERT);
KV_CASE(blendps, KV_BLEND, KV_BLEND);
KV_CASE(add_mul, KV_ADD, KV_MUL);
KV_CASE(add_shufps, KV_ADD, KV_SHUFPS);
KV_CASE(add_unpcklps, KV_ADD, KV_UNPACK);
KV_CASE(add_perm2f128, KV_ADD, KV_HALVES);
KV_CASE(add_insertf128, KV_ADD, KV_INSERT);
KV_CASE(add_insertf128_load, KV_ADD, KV_INSERT_LOAD);
KV_CASE(add_extractf128_store, KV_ADD, KV_EXTRACT_STORE);
KV_CASE(add_blendps, KV_ADD, KV_BLEND);
KV_CASE(cvtss2sd, KV_WIDEN, KV_WIDEN);
KV_CASE(cvtsd2ss, KV_NARROW, KV_NARROW);
KV_CASE(cvtps2pd, KV_WIDEN4, KV_WIDEN4);
KV_CASE(cvtpd2ps, KV_NARROW4, KV_NARROW4);
KV_CASE(add_cvtss2sd, KV_ADD, KV_WIDEN);
KV_CASE(add_cvtss2sd_load, KV_ADD, KV_WIDEN_LOAD);
KV_CASE(add_cvtsd2ss, KV_ADD, KV_NARROW);
KV_CASE(add_cvtps2pd, KV_ADD, KV_WIDEN4);
KV_CASE(add_cvtps2pd_load, KV_ADD, KV_WIDEN4_LOAD);
KV_CASE(add_cvtpd2ps, KV_ADD, KV_NARROW4);

}  // namespace

BENCHMARK_MAIN();
