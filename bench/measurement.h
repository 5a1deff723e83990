// Helpers of all measurements: a check for success, the processor time of processes, and the median.
#pragma once

#include <sys/resource.h>

#include <algorithm>
#include <stdexcept>
#include <vector>

namespace Bench {

/// Throws std::runtime_error unless `succeeded`.
inline void requireSuccess(bool succeeded, const char* what)
{
    if (!succeeded)
        throw std::runtime_error(what);
}

/// Returns the processor time in seconds, the kernel's included.
inline double processorSeconds(const rusage& used)
{
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
    };
    return seconds(used.ru_utime) + seconds(used.ru_stime);
}

inline double median(std::vector<double> values)
{
    std::ranges::sort(values);
    return values[values.size() / 2];
}

} // namespace Bench
