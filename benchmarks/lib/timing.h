// Time of a piece of work.
#pragma once

#include <algorithm>
#include <ctime>

namespace bench {

/// Seconds that this thread has computed so far. Other work on the machine doesn't count.
inline double cpuSeconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

/// Seconds of the fastest of `runs` runs: the others were disturbed.
template <class Work>
double secondsOf(int runs, Work work) {
    double best = 1e300;
    for (int i = 0; i < runs; ++i) {
        const double start = cpuSeconds();
        work();
        best = std::min(best, cpuSeconds() - start);
    }
    return best;
}

} // namespace bench
