#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <limits>
#include <vector>

namespace bench {

/// The least time of each work in milliseconds. They take turns, so that what disturbs one disturbs all.
inline std::vector<double> LeastTimes(int rounds, const std::vector<std::function<void()>>& works)
{
    using Clock = std::chrono::steady_clock;
    std::vector<double> least(works.size(), std::numeric_limits<double>::max());
    for (int round = 0; round < rounds; ++round)
        for (std::size_t i = 0; i < works.size(); ++i) {
            const auto start = Clock::now();
            works[i]();
            least[i] = std::min(least[i], std::chrono::duration<double, std::milli>(Clock::now() - start).count());
        }
    return least;
}

/// False when the ratio misses its bound; a bound of 0 is none.
inline bool Print(const char* what, double time, double bare, double bound)
{
    const double ratio = time / bare;
    std::printf("%-44s %8.1f ms / %8.1f ms = %5.2f", what, time, bare, ratio);
    const bool kept = bound == 0 || ratio <= bound;
    if (bound != 0)
        std::printf("  (at most %.2f: %s)", bound, kept ? "kept" : "MISSED");
    std::printf("\n");
    std::fflush(stdout);
    return kept;
}

} // namespace bench
