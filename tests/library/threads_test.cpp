// Many fixed-size calls from several threads at once, each thread with its own
// buffers, give the same bits as the same calls made one after another.  Run
// under ThreadSanitizer in CI, it also shows that the kernels share no state.
#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <thread>
#include <vector>

#include "kvtgen.h"
#include "reference.h"

namespace {

// One unit of work: a transform of one family and length on given input.
struct Job {
    std::function<std::vector<unsigned char>()> run;
};

template <class C>
Job complexJob(Status (*transform)(const C*, C*, int32_t, int32_t), int n, std::uint32_t seed)
{
    return {[=] {
        ref::Random random(seed);
        std::vector<C> x(static_cast<std::size_t>(n)), y(static_cast<std::size_t>(n));
        for (auto& c : x)
            c = {static_cast<decltype(c.re)>(random.next()), static_cast<decltype(c.re)>(random.next())};
        EXPECT_EQ(transform(x.data(), y.data(), n, ScaleBySqrtN), StatusOk);
        std::vector<unsigned char> bytes(y.size() * sizeof(C));
        std::memcpy(bytes.data(), y.data(), bytes.size());
        return bytes;
    }};
}

// Real DFT and Hartley dispatchers: N samples in, `written` elements out.
template <class T>
Job realJob(Status (*transform)(const T*, T*, int32_t, int32_t), int n, int written, std::uint32_t seed)
{
    return {[=] {
        const std::vector<T> x = ref::Random(seed).vector<T>(static_cast<std::size_t>(n + 2));
        std::vector<T> y(static_cast<std::size_t>(written));
        EXPECT_EQ(transform(x.data(), y.data(), n, ScaleFwdByN), StatusOk);
        std::vector<unsigned char> bytes(y.size() * sizeof(T));
        std::memcpy(bytes.data(), y.data(), bytes.size());
        return bytes;
    }};
}

template <class T>
Job whtJob(Status (*transform)(const T*, T*, int32_t, int32_t, uint8_t*), int order, std::uint32_t seed)
{
    return {[=] {
        const std::vector<T> x = ref::Random(seed).vector<T>(std::size_t(1) << order);
        std::vector<T> y(x.size());
        // a null buffer: each call allocates and releases its own
        EXPECT_EQ(transform(x.data(), y.data(), order, ScaleNone, nullptr), StatusOk);
        std::vector<unsigned char> bytes(y.size() * sizeof(T));
        std::memcpy(bytes.data(), y.data(), bytes.size());
        return bytes;
    }};
}

// Each call builds, runs and releases a plan of its own.
template <class T>
Job dctJob(Status (*alloc)(DctPlan**, int32_t), Status (*run)(const T*, T*, DctPlan*), Status (*release)(DctPlan*),
           int n, std::uint32_t seed)
{
    return {[=] {
        const std::vector<T> x = ref::Random(seed).vector<T>(static_cast<std::size_t>(n));
        std::vector<T> y(x.size());
        DctPlan* plan = nullptr;
        EXPECT_EQ(alloc(&plan, n), StatusOk);
        EXPECT_EQ(run(x.data(), y.data(), plan), StatusOk);
        EXPECT_EQ(release(plan), StatusOk);
        std::vector<unsigned char> bytes(y.size() * sizeof(T));
        std::memcpy(bytes.data(), y.data(), bytes.size());
        return bytes;
    }};
}

std::vector<Job> allJobs()
{
    std::vector<Job> jobs;
    for (int n = 2; n <= 64; ++n) {
        const auto seed = static_cast<std::uint32_t>(n);
        jobs.push_back(complexJob<Complex32>(kvtgDFTFwd_CToC_32fc, n, seed));
        jobs.push_back(complexJob<Complex32>(kvtgDFTInv_CToC_32fc, n, seed + 100));
        jobs.push_back(complexJob<Complex64>(kvtgDFTFwd_CToC_64fc, n, seed + 200));
        jobs.push_back(complexJob<Complex64>(kvtgDFTInv_CToC_64fc, n, seed + 300));
        const int ccs = n % 2 == 0 ? n + 2 : n + 1;
        jobs.push_back(realJob<Real32>(kvtgDFTFwd_RToCCS_32f, n, ccs, seed + 400));
        jobs.push_back(realJob<Real64>(kvtgDFTFwd_RToPerm_64f, n, n, seed + 500));
        jobs.push_back(realJob<Real32>(kvtgDFTInv_PackToR_32f, n, n, seed + 600));
        jobs.push_back(realJob<Real64>(kvtgDFTInv_CCSToR_64f, n, n, seed + 700));
        jobs.push_back(realJob<Real32>(kvtgHartley_32f, n, n, seed + 800));
        jobs.push_back(realJob<Real64>(kvtgHartley_64f, n, n, seed + 900));
    }
    for (int n : {2, 32, 64, 1024, 4096}) {
        jobs.push_back(dctJob<Real32>(kvtgDCT4InitAlloc_32f, kvtgDCT4_32f, kvtgDCT4Free_32f, n, static_cast<std::uint32_t>(n)));
        jobs.push_back(dctJob<Real64>(kvtgDCT4InitAlloc_64f, kvtgDCT4_64f, kvtgDCT4Free_64f, n, static_cast<std::uint32_t>(n) + 1));
    }
    for (int order = 1; order <= 13; ++order) {
        jobs.push_back(whtJob<Real32>(kvtgWHT_32f, order, static_cast<std::uint32_t>(order)));
        jobs.push_back(whtJob<Real64>(kvtgWHT_64f, order, static_cast<std::uint32_t>(order) + 50));
    }
    return jobs;
}

TEST(Threads, ConcurrentFixedSizeCallsMatchSequentialOnes)
{
    const std::vector<Job> jobs = allJobs();
    std::vector<std::vector<unsigned char>> expected;
    for (const Job& job : jobs)
        expected.push_back(job.run());

    constexpr int threadCount = 4, rounds = 3;
    std::vector<int> mismatches(threadCount, 0);
    std::vector<std::thread> threads;
    for (int t = 0; t < threadCount; ++t) {
        threads.emplace_back([&, t] {
            for (int round = 0; round < rounds; ++round)
                // each thread walks the jobs from its own starting point
                for (std::size_t i = 0; i < jobs.size(); ++i) {
                    const std::size_t j = (i + static_cast<std::size_t>(t) * 37) % jobs.size();
                    if (jobs[j].run() != expected[j])
                        ++mismatches[static_cast<std::size_t>(t)];
                }
        });
    }
    for (auto& thread : threads)
        thread.join();
    for (int t = 0; t < threadCount; ++t)
        EXPECT_EQ(mismatches[static_cast<std::size_t>(t)], 0) << "thread " << t;
}

}  // namespace
