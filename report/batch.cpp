// The batched transforms (libkvtgenbatch) on 256 contiguous transforms, each
// entry point of the complex, real (CCS) and Hartley families at every length,
// against FFTW's plan_many of the same layout and, in the series marked
// "loop", against a loop of the single calls of the same level's file.  Times
// are per transform.
#include <map>
#include <string>
#include <utility>

#include "batch_cases.h"
#include "report.h"

namespace {

constexpr int batchCount = 256;

std::vector<report::Case> batchCases()
{
    // FFTW's plans do not depend on the file: planned once, for the first
    static std::map<std::pair<std::string, int>, std::function<void()>> peers;
    std::vector<report::Case> cases, loops;
    for (const bench::BatchFamily& f : bench::batchFamilies)
        for (int n = 2; n <= 64; ++n) {
            std::function<void()>& peer = peers[{f.name, n}];
            bench::BatchCase c = bench::makeBatchCase(f, n, batchCount, report::currentFile(), !peer);
            if (!peer)
                peer = c.peer;
            const std::string name = std::string("Batch ") + f.name;
            cases.push_back({name, n, c.batch, peer, batchCount});
            loops.push_back({name + " loop", n, c.batch, c.loop, batchCount});
        }
    cases.insert(cases.end(), loops.begin(), loops.end());
    return cases;
}

const report::Registration registration(
    "batch", 60,
    "per transform of 256 in one call; FFTW plan_many, fastest of three FFTW_MEASURE (\"loop\": the single calls)",
    batchCases);

}  // namespace
