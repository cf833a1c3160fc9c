// The geometric mean of speed ratios, shared by the benchmark programs and
// the report program.
#ifndef KVTG_GEOMETRIC_MEAN_H
#define KVTG_GEOMETRIC_MEAN_H

#include <cmath>
#include <vector>

namespace bench {

// Over the positive finite values (a benchmark left out by a filter is NaN).
inline double geometricMean(const std::vector<double>& values)
{
    double logSum = 0;
    int count = 0;
    for (double v : values)
        if (v > 0 && std::isfinite(v)) {
            logSum += std::log(v);
            ++count;
        }
    return count ? std::exp(logSum / count) : NAN;
}

}  // namespace bench

#endif
