#pragma once

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <vector>

// Processor time as ratios within one run: repetitions are interleaved, so that a slow spell of the machine falls on
// both sides, and the median counts.
namespace bench {

// Of this process, so that whatever else the machine does counts less.
inline double processorSeconds()
{
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

template <class Work>
double secondsOf(Work work)
{
    const double start = processorSeconds();
    work();
    return processorSeconds() - start;
}

inline double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

inline void print(const char* what, const std::vector<double>& ratios)
{
    const auto [least, most] = std::minmax_element(ratios.begin(), ratios.end());
    std::printf("%-48s %5.2f (%.2f to %.2f)", what, median(ratios), *least, *most);
}

inline bool report(const char* what, const std::vector<double>& ratios, double limit)
{
    const bool isKept = median(ratios) <= limit;
    print(what, ratios);
    std::printf(", at most %.1f%s\n", limit, isKept ? "" : ": exceeded");
    return isKept;
}

} // namespace bench
