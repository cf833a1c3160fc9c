// DCT-IV plans against FFTW's REDFT11 plan (which computes twice the DCT-IV)
// of the same length and precision, the fastest of three plannings.
#include <fftw3.h>

#include <cmath>
#include <memory>
#include <type_traits>
#include <vector>

#include "dct4_peers.h"
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
        using Peer = bench::DctFftw<T>;
        std::shared_ptr<std::remove_pointer_t<typename Peer::Plan>> p(
            bench::fastestPlan<typename Peer::Plan>(
                [&] {
                    auto made = Peer::plan(bench::DctPeer::Redft, n, x.get(), y.get());
                    fill();
                    return made;
                },
                [&](typename Peer::Plan q) { Peer::run(bench::DctPeer::Redft, q, x.get(), y.get()); }, Peer::destroy,
                Peer::forget),
            Peer::destroy);
        const std::function<void()> peer = [p, x, y] { Peer::run(bench::DctPeer::Redft, p.get(), x.get(), y.get()); };
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
